#include "archivers/formats/rar/rar_reader.h"

#define ARCHIVER_PREFIX Unrar
#include "archivers/convention/exports.h"

namespace {
constexpr archiver::LibraryDescription kDescription{
    .prefix = "Unrar", .version = 40, .open = &archiver::openRar, .separator = '\\'};
archiver::LibraryCore core(kDescription);
}  // namespace

archiver::LibraryCore& archiver::library() noexcept { return core; }
