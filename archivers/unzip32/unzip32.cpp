#include "archivers/formats/zip/zip_reader.h"

#define ARCHIVER_PREFIX UnZip
#include "archivers/convention/exports.h"

namespace {
constexpr archiver::LibraryDescription kDescription{.prefix = "UnZip", .version = 540, .open = &archiver::openZip};
archiver::LibraryCore core(kDescription);
}  // namespace

archiver::LibraryCore& archiver::library() noexcept { return core; }
