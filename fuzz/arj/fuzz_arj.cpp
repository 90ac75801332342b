#include <cstdlib>
#include <string>

#include "archivers/formats/arj/arj_reader.h"
#include "archivers/formats/arj/checksum.h"
#include "archivers/formats/little_endian.h"
#include "archivers/formats/utf8.h"
#include "fuzz/exhaust.h"
#include "fuzz/memory_file.h"

/// Opens, lists and unpacks any bytes as an ARJ archive. Seeds: the archives of tests/data/arj.
namespace archiver {
namespace {

using little_endian::load16;
using little_endian::load32;
using little_endian::store32;

/// Makes the checksums of headers right, as no random change would get past them.
void repair(std::string& bytes) {
    std::size_t at = 0;
    for (bool first = true; bytes.size() - at >= 4 && load16(bytes.data() + at) == 0xEA60; first = false) {
        const std::size_t size = load16(bytes.data() + at + 2);
        at += 4;
        if (size < 30 || bytes.size() - at < size + 6) return;
        const std::size_t packed = first ? 0 : load32(bytes.data() + at + 12);
        store32(bytes.data() + at + size, arj::crc32Of(0, bytes.data() + at, size));
        at += size + 4;
        for (std::size_t extended = load16(bytes.data() + at); extended != 0; extended = load16(bytes.data() + at)) {
            at += 2;
            if (bytes.size() - at < extended + 6) return;
            store32(bytes.data() + at + extended, arj::crc32Of(0, bytes.data() + at, extended));
            at += extended + 4;
        }
        at += 2;
        if (bytes.size() - at < packed) return;
        at += packed;
    }
}

void exhaustArj(const std::string& bytes, ArjArchive::Chapters chapters) {
    const OpenResult opened = openArj(
        std::make_unique<fuzz::MemoryFile>(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()), {});
    if (opened.reader) {
        auto& reader = static_cast<ArjArchive&>(*opened.reader);
        reader.setPassword("secret");
        reader.setChapters(chapters);
        if (!isUtf8(reader.comment())) std::abort();
    }
    fuzz::exhaust(opened);
}

}  // namespace
}  // namespace archiver

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    archiver::exhaustArj(bytes, archiver::ArjArchive::Chapters::kNewest);
    archiver::repair(bytes);
    archiver::exhaustArj(bytes, archiver::ArjArchive::Chapters::kAll);
    return 0;
}
