#include "archivers/commands/command_runner.h"
#include "archivers/commands/library_settings.h"
#include "archivers/formats/arj/arj_reader.h"
#include "archivers/unarj32j/arj_language.h"

#define ARCHIVER_PREFIX Unarj
#include "archivers/convention/exports.h"

namespace {
constexpr archiver::LibraryDescription kDescription{.prefix = "Unarj",
                                                    .title = "UnArj32j",
                                                    .version = 120,
                                                    .open = &archiver::openArj,
                                                    .separator = '\\',
                                                    .command = &archiver::runLanguage<archiver::kArjLanguage>,
                                                    .configure = &archiver::configureLibrary};
archiver::LibraryCore core(kDescription);
}  // namespace

archiver::LibraryCore& archiver::library() noexcept { return core; }
