#include "archivers/commands/command_runner.h"
#include "archivers/commands/library_settings.h"
#include "archivers/formats/zip/zip_reader.h"
#include "archivers/unzip32/unzip_language.h"

#define ARCHIVER_PREFIX UnZip
#include "archivers/convention/exports.h"

namespace {
constexpr archiver::LibraryDescription kDescription{.prefix = "UnZip",
                                                    .title = "UnZip32",
                                                    .version = 540,
                                                    .open = &archiver::openZip,
                                                    .command = &archiver::runLanguage<archiver::kUnZipLanguage>,
                                                    .configure = &archiver::configureLibrary};
archiver::LibraryCore core(kDescription);
}  // namespace

archiver::LibraryCore& archiver::library() noexcept { return core; }
