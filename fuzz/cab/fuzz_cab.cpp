#include "archivers/formats/cab/cab_reader.h"
#include "fuzz/exhaust.h"
#include "fuzz/memory_file.h"

/// Opens, lists and unpacks any bytes as a cabinet. Seeds: those of tests/data/cab.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    archiver::fuzz::exhaust(archiver::openCab(std::make_unique<archiver::fuzz::MemoryFile>(bytes, size), {}));
    return 0;
}
