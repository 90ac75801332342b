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

std::vector<OldRarFile> solidGroup() {
    OldPacker packer;
    std::vector<OldRarFile> files;
    const auto add = [&](const char* name, std::uint16_t flags) { files.push_back(member(packer, name, flags)); };
    packer.codes().text(prose(3000)).match(1000, 50).match(700, 40);
    packer.filter({.number = 0, .ahead = 1, .length = 4, .registers = {{0, 1}}, .program = standIn(kDeltaSize)});
    packer.text("x\xFF\xFF\xFF\xFF").endFile(true);
    add("codes", 0);
    files.back().content.replace(files.back().content.size() - 4, 4, "\1\2\3\4");
    packer.text("no block").matchAtLast(1, 100).matchAgain().match(3100, 90).endFile();
    add("same codes", kSolid);
    packer.ppmd(6, 1, 0x41).text(prose(2000)).ppmdMatch(4000, 200).endFile();
    add("ppmd", kSolid);
    packer.samePpmd().text(prose(2500) + "AAA").ppmdMatch(5000, 100).endBlock().sameCodes().text("back").endFile(true);
    add("same ppmd", kSolid);
    packer.matchAgain().filter({.number = 1, .registers = {{0, 1}}}).text("\xFF\xFF\xFF\xFF").endFile();
    add("same program", kSolid);
    files.back().content.replace(files.back().content.size() - 4, 4, "\1\2\3\4");
    return files;
}

}  // namespace archiver::test
