#include "archivers/formats/arj/arj_reader.h"

#define ARCHIVER_PREFIX Unarj
#include "archivers/convention/exports.h"

namespace {
constexpr archiver::LibraryDescription kDescription{
    .prefix = "Unarj", .version = 120, .open = &archiver::openArj, .separator = '\\'};
archiver::LibraryCore core(kDescription);
}  // namespace

archiver::LibraryCore& archiver::library() noexcept { return core; }
