#include "archivers/formats/zip/zip_reader.h"
#include "fuzz/exhaust.h"
#include "fuzz/memory_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    archiver::OpenResult opened = archiver::openZip(std::make_unique<archiver::fuzz::MemoryFile>(bytes, size));
    if (opened.reader) opened.reader->setPassword("secret");  // of the seeds
    archiver::fuzz::exhaust(opened);
    return 0;
}
