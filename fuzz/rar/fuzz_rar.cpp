#include <zlib.h>

#include <string>

#include "archivers/formats/little_endian.h"
#include "archivers/formats/rar/rar_reader.h"
#include "fuzz/exhaust.h"
#include "fuzz/memory_file.h"

/// Opens, lists and unpacks any bytes as a RAR archive. Seeds: the archives of tests/data/rar.
namespace archiver {
namespace {

using little_endian::load16;
using little_endian::load32;

std::uint32_t sumOf(const std::string& bytes, std::size_t at, std::size_t size) {
    return static_cast<std::uint32_t>(
        ::crc32(0, reinterpret_cast<const Bytef*>(bytes.data() + at), static_cast<uInt>(size)));
}

/// Makes the checksums of headers right, as no random change would get past them.
void repairOld(std::string& bytes) {
    for (std::size_t at = 7; at < bytes.size() && bytes.size() - at >= 7;) {
        const std::size_t size = load16(bytes.data() + at + 5);
        if (size < 7 || bytes.size() - at < size) return;
        little_endian::store16(bytes.data() + at, static_cast<std::uint16_t>(sumOf(bytes, at + 2, size - 2) & 0xFFFF));
        const bool data = (load16(bytes.data() + at + 3) & 0x8000) != 0 && size >= 11;
        const std::size_t packed = data ? load32(bytes.data() + at + 7) : 0;
        if (bytes.size() - at - size < packed) return;
        at += size + packed;
    }
}

/// Takes a number of 7 bits a byte; moves `at` behind it.
std::uint64_t numberAt(const std::string& bytes, std::size_t& at) {
    std::uint64_t value = 0;
    for (int shift = 0; shift < 63 && at < bytes.size(); shift += 7) {
        const auto byte = static_cast<unsigned char>(bytes[at++]);
        value |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
        if ((byte & 0x80) == 0) break;
    }
    return value;
}

void repairNew(std::string& bytes) {
    for (std::size_t at = 8; at < bytes.size() && bytes.size() - at >= 7;) {
        std::size_t field = at + 4;
        const std::uint64_t size = numberAt(bytes, field);
        if (bytes.size() - field < size) return;
        const std::size_t end = field + static_cast<std::size_t>(size);
        little_endian::store32(bytes.data() + at, sumOf(bytes, at + 4, end - at - 4));
        numberAt(bytes, field);
        const std::uint64_t flags = numberAt(bytes, field);
        if ((flags & 1) != 0) numberAt(bytes, field);
        const std::uint64_t packed = (flags & 2) != 0 ? numberAt(bytes, field) : 0;
        if (bytes.size() - end < packed) return;
        at = end + static_cast<std::size_t>(packed);
    }
}

void exhaustRar(const std::string& bytes) {
    fuzz::exhaust(openRar(
        std::make_unique<fuzz::MemoryFile>(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()), {}));
}

}  // namespace
}  // namespace archiver

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    archiver::exhaustRar(bytes);
    if (size < 8) return 0;
    if (bytes[6] == 0)
        archiver::repairOld(bytes);
    else
        archiver::repairNew(bytes);
    archiver::exhaustRar(bytes);
    return 0;
}
