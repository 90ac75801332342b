#include "archivers/formats/cab/cab_reader.h"

#define ARCHIVER_PREFIX Cab
#include "archivers/convention/exports.h"

namespace {
constexpr archiver::LibraryDescription kDescription{
    .prefix = "Cab", .version = 98, .open = &archiver::openCab, .separator = '\\'};
archiver::LibraryCore core(kDescription);
}  // namespace

archiver::LibraryCore& archiver::library() noexcept { return core; }
