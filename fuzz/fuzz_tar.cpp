#include "archivers/formats/tar/tar_format.h"
#include "fuzz/exhaust.h"
#include "fuzz/memory_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    archiver::fuzz::exhaust(archiver::openTar(std::make_unique<archiver::fuzz::MemoryFile>(bytes, size), "file.tgz"));
    return 0;
}
