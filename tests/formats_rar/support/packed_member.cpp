#include "formats_rar/support/packed_member.h"

#include <random>

#include "archivers/formats/rar/rar_reader.h"
#include "formats/support/files.h"

namespace archiver::test {

OldRarFile member(OldPacker& packer, const std::string& name, std::uint16_t flags) {
    return {.name = name, .content = packer.content(), .packed = packer.packed(), .flags = flags, .method = 0x33};
}

Unpacked unpackFirst(const std::vector<OldRarFile>& files) {
    const OpenResult opened = openRar(inMemory(oldRar(files)), {});
    if (!opened.reader) return {{}, opened.code};
    Member first;
    const ReturnCode code = opened.reader->next(first);
    return code == kOk ? unpack(*opened.reader) : Unpacked{{}, code};
}

std::string noise(std::size_t size, unsigned seed) {
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    return bytes;
}

std::string prose(std::size_t size) {
    static constexpr const char* kWords[] = {"the ",  "quick ", "brown ", "fox, ", "jumps ",
                                             "over ", "a ",     "lazy ",  "dog.\n"};
    std::mt19937 random(7);
    std::string text;
    while (text.size() < size) text += kWords[random() % std::size(kWords)];
    text.resize(size);
    return text;
}

}  // namespace archiver::test
