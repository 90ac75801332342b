#include "archivers/cab32/cab_language.h"
#include "archivers/commands/command_runner.h"
#include "archivers/commands/library_settings.h"
#include "archivers/formats/cab/cab_reader.h"

#define ARCHIVER_PREFIX Cab
#include "archivers/convention/exports.h"

namespace {
constexpr archiver::LibraryDescription kDescription{.prefix = "Cab",
                                                    .title = "Cab32",
                                                    .version = 98,
                                                    .open = &archiver::openCab,
                                                    .separator = '\\',
                                                    .command = &archiver::runLanguage<archiver::kCabLanguage>,
                                                    .configure = &archiver::configureLibrary};
archiver::LibraryCore core(kDescription);
}  // namespace

archiver::LibraryCore& archiver::library() noexcept { return core; }
