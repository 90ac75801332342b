#include <cstdlib>
#include <string>

#include "archivers/formats/ace/ace_reader.h"
#include "archivers/formats/ace/checksum.h"
#include "archivers/formats/ace/headers.h"
#include "archivers/formats/little_endian.h"
#include "archivers/formats/utf8.h"
#include "fuzz/memory_file.h"

/// Opens, lists and unpacks any bytes as an ACE archive, and the same bytes as every further volume of it. Seeds: the
/// archives of tests/data/ace.
namespace archiver {
namespace {

/// Enough for any part of a decoder, and little enough for many runs a second.
constexpr std::size_t kMostUnpacked = 1 << 20;

/// Makes the checksums of headers right, as no random change would get past them.
void repair(std::string& bytes) {
    constexpr std::size_t kUnchecked = 4, kTypeOffset = 4, kPackedSizeOffset = 7;
    std::size_t at = 0;
    while (bytes.size() - at >= kPackedSizeOffset + 4) {
        const std::size_t size = ace::headerSize(bytes.data() + at);
        if (size > bytes.size() - at) return;
        const std::uint32_t sum = ace::checksum({bytes.data() + at + kUnchecked, size - kUnchecked});
        little_endian::store16(bytes.data() + at, static_cast<std::uint16_t>(sum & 0xFFFF));
        const std::size_t packed =
            bytes[at + kTypeOffset] == 0 ? 0 : little_endian::load32(bytes.data() + at + kPackedSizeOffset);
        at += size;
        if (packed > bytes.size() - at) return;
        at += packed;
    }
}

void demand(bool held) {
    if (!held) std::abort();
}

void exhaust(const std::string& bytes) {
    int volumes = 0;
    const AceOpenResult opened = openAceReader("a.ace", [&](const std::filesystem::path&) -> InputFileResult {
        if (++volumes > 20) return {nullptr, kNotFindArcFile};
        return {std::make_unique<fuzz::MemoryFile>(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()),
                kOk};
    });
    demand((opened.reader != nullptr) == (opened.code == kOk));
    if (!opened.reader) return;
    opened.reader->setPassword("secret");
    for (const bool backwards : {false, true}) {
        demand(opened.reader->restart() == kOk);
        Member member;
        while (opened.reader->next(member) == kOk) {
            demand(isUtf8(member.name));
            if (backwards && member.name.size() % 2 == 0) continue;  // passes some over
            std::uint64_t size = 0;
            const ReturnCode code = opened.reader->read([&](const char*, std::size_t count) {
                size += count;
                return size < kMostUnpacked;
            });
            demand(size <= member.originalSize);
            demand(code != kOk || size == member.originalSize || (member.attributes & attribute::kFolder) != 0);
        }
    }
}

}  // namespace
}  // namespace archiver

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The first byte says how to go about it.
    if (size == 0) return 0;
    std::string bytes(reinterpret_cast<const char*>(data), size);
    if ((bytes[0] & 1) == 0) archiver::repair(bytes);
    archiver::exhaust(bytes);
    return 0;
}
