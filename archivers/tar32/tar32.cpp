#include "archivers/commands/command_runner.h"
#include "archivers/commands/library_settings.h"
#include "archivers/formats/tar/tar_format.h"
#include "archivers/tar32/tar_language.h"

#define ARCHIVER_PREFIX Tar
#include "archivers/convention/exports.h"

namespace {
constexpr archiver::LibraryDescription kDescription{.prefix = "Tar",
                                                    .title = "Tar32",
                                                    .version = 228,
                                                    .open = &archiver::openTar,
                                                    .attributeStyle = archiver::AttributeStyle::kLetters,
                                                    .command = &archiver::runLanguage<archiver::kTarLanguage>,
                                                    .configure = &archiver::configureLibrary};
archiver::LibraryCore core(kDescription);
}  // namespace

archiver::LibraryCore& archiver::library() noexcept { return core; }

extern "C" {
/// @return 0 other, 1 TAR, 2 TARGZ, 3 TARZ, 4 GZ, 5 Z, 6 TARBZ2, 7 BZ2; -1 when the file can not be read
ARCHIVER_DECLARE(GetFileCount, GetArchiveType);
ARCHIVER_DEFINE(std::int32_t, GetArchiveType)(const char* fileName) { return core.archiveType(fileName); }
}
