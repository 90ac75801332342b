#include "archivers/formats/lzh/lzh_reader.h"

#define ARCHIVER_PREFIX Unlha
#include "archivers/convention/exports.h"

namespace {
constexpr archiver::LibraryDescription kDescription{.prefix = "Unlha", .version = 267, .open = &archiver::openLzh};
archiver::LibraryCore core(kDescription);
}  // namespace

archiver::LibraryCore& archiver::library() noexcept { return core; }
