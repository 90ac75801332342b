#include "archivers/commands/command_runner.h"
#include "archivers/commands/library_settings.h"
#include "archivers/formats/rar/rar_reader.h"
#include "archivers/unrar32/rar_language.h"

#define ARCHIVER_PREFIX Unrar
#include "archivers/convention/exports.h"

namespace {
constexpr archiver::LibraryDescription kDescription{.prefix = "Unrar",
                                                    .title = "UnRar32",
                                                    .version = 40,
                                                    .open = &archiver::openRar,
                                                    .separator = '\\',
                                                    .command = &archiver::runLanguage<archiver::kRarLanguage>,
                                                    .configure = &archiver::configureLibrary};
archiver::LibraryCore core(kDescription);
}  // namespace

archiver::LibraryCore& archiver::library() noexcept { return core; }
