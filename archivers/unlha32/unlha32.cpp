#include "archivers/commands/command_runner.h"
#include "archivers/commands/library_settings.h"
#include "archivers/formats/lzh/lzh_reader.h"
#include "archivers/unlha32/lha_language.h"

#define ARCHIVER_PREFIX Unlha
#include "archivers/convention/exports.h"

namespace {
constexpr archiver::LibraryDescription kDescription{.prefix = "Unlha",
                                                    .title = "UnLha32",
                                                    .version = 267,
                                                    .open = &archiver::openLzh,
                                                    .command = &archiver::runLanguage<archiver::kLhaLanguage>,
                                                    .configure = &archiver::configureLibrary};
archiver::LibraryCore core(kDescription);
}  // namespace

archiver::LibraryCore& archiver::library() noexcept { return core; }
