#include <string>

#include "archivers/formats/little_endian.h"
#include "archivers/formats/lzh/lzh_reader.h"
#include "fuzz/exhaust.h"
#include "fuzz/memory_file.h"

/// Opens, lists and unpacks any bytes as an LZH archive. Seeds: the archives of tests/data/lzh.
namespace archiver {
namespace {

/// Makes the sums of headers of levels 0 and 1 right, as few random changes would get past them.
void repair(std::string& bytes) {
    for (std::size_t at = 0; bytes.size() - at >= 22;) {
        const auto size = static_cast<unsigned char>(bytes[at]);
        if (size < 20 || bytes[at + 20] > 1 || bytes.size() - at < size + std::size_t{2}) return;
        unsigned sum = 0;
        for (std::size_t index = 2; index < size + std::size_t{2}; ++index) {
            sum += static_cast<unsigned char>(bytes[at + index]);
        }
        bytes[at + 1] = static_cast<char>(sum & 0xFF);
        const std::size_t packed = little_endian::load32(bytes.data() + at + 7);
        at += size + std::size_t{2};
        if (bytes.size() - at < packed) return;
        at += packed;
    }
}

void exhaustLzh(const std::string& bytes) {
    fuzz::exhaust(
        openLzh(std::make_unique<fuzz::MemoryFile>(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size())));
}

}  // namespace
}  // namespace archiver

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    archiver::exhaustLzh(bytes);
    archiver::repair(bytes);
    archiver::exhaustLzh(bytes);
    return 0;
}
