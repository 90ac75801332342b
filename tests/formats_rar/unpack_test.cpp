#include <gtest/gtest.h>

#include "archivers/formats/rar/prefix_code.h"
#include "archivers/formats/rar/rar_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_rar/support/old_packer.h"
#include "formats_rar/support/packed_member.h"

/// Members of the old layout, packed step by step.
namespace archiver::test {
namespace {

void expectGood(OldPacker& packer) {
    const OldRarFile file = member(packer);
    const Unpacked unpacked = unpackFirst({file});
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_TRUE(unpacked.bytes == file.content);
}

ReturnCode codeOf(OldPacker& packer) { return unpackFirst({member(packer)}).code; }

TEST(RarUnpack, Literals) {
    std::string all;
    for (int value = 0; value < 256; ++value) all += static_cast<char>(value);
    for (const int longest : {9, 15}) {
        OldPacker packer;
        expectGood(packer.codes(longest).text(all + all).endFile());
    }
}

TEST(RarUnpack, MatchesOfAllKinds) {
    OldPacker packer;
    packer.codes().text("abcdefghijklmnop").match(16, 3).match(1, 30).match(5, 258).matchAgain();
    packer.matchAtLast(0, 2).matchAtLast(2, 257).matchAtLast(1, 31).matchAgain();
    for (const std::uint32_t distance : {1, 4, 5, 8, 9, 16, 17, 32, 64, 65, 128, 200, 256}) packer.shortMatch(distance);
    packer.matchAtLast(3, 10).text("end").endFile();
    expectGood(packer);
}

TEST(RarUnpack, MatchAgainWithoutAMatchIsNothing) {
    OldPacker packer;
    packer.codes().text("a");
    expectGood(packer.symbol(258).text("b").endFile());
}

TEST(RarUnpack, DistancesUpToTheWholeWindow) {
    OldPacker packer;
    packer.codes().text(noise(70000, 1));
    for (std::uint32_t size = 70000; size < (4U << 20) + 70000; size += 255) packer.match(65000, 255);
    for (std::uint32_t distance = 1; distance <= 4U << 20; distance *= 2) {
        for (const std::uint32_t near : {distance - 1, distance, distance + 1}) {
            if (near > 0 && near <= 4U << 20) packer.text("x").match(near, 5 + 20);
        }
    }
    expectGood(packer.endFile());
}

TEST(RarUnpack, LowBitsOfDistancesThatRepeat) {
    OldPacker packer;
    packer.codes().text(noise(2000, 2)).match(0x123, 4).match(0x223, 4, true);
    for (std::uint32_t count = 0; count < 15; ++count) packer.match(0x103 + 16 * count, 4);
    expectGood(packer.match(0x104, 4).match(7, 4).endFile());
}

TEST(RarUnpack, LowBitsOfDistancesAreForgottenInANewBlock) {
    OldPacker packer;
    packer.codes().text(noise(2000, 2)).match(0x123, 4).match(0x223, 4, true);
    expectGood(packer.endBlock().sameCodes().match(0x104, 4).endBlock().codes(15).match(0x301, 4, true).endFile());
}

TEST(RarUnpack, ManyBlocks) {
    OldPacker packer;
    packer.codes().text("one");
    for (int count = 0; count < 20; ++count)
        packer.endBlock().sameCodes().text("two").endBlock().codes(15).text("three");
    expectGood(packer.endFile());
}

TEST(RarUnpack, Ppmd) {
    for (const unsigned order : {2U, 5U, 16U, 64U}) {
        OldPacker packer;
        expectGood(packer.ppmd(order, 1).text(prose(20000)).endFile());
    }
}

TEST(RarUnpack, PpmdThatFillsItsMemory) {
    OldPacker packer;
    expectGood(packer.ppmd(16, 1).text(noise(20000, 3) + prose(20000)).endFile());
}

TEST(RarUnpack, PpmdEscapes) {
    std::string all;
    for (int value = 0; value < 256; ++value) all += static_cast<char>(value);
    for (const std::optional<std::uint8_t> escape : {std::optional<std::uint8_t>(), {0x61}}) {
        OldPacker packer;
        packer.ppmd(6, 2, escape).text(all + prose(3000)).ppmdMatch(2, 32).ppmdMatch(3000, 287).ppmdRun(4).ppmdRun(259);
        packer.endBlock().samePpmd().text(all).endBlock();
        expectGood(packer.codes().text("x").match(300, 40).endBlock().samePpmd().text(all + "aaa").endFile());
    }
}

TEST(RarUnpack, MembersAboveTheWindowThatMixBothKindsOfBlocks) {
    OldPacker packer;
    const std::string text = prose(3000);
    for (int round = 0; round < 6; ++round) {
        packer.codes().text(text);
        for (int count = 0; count < 4000; ++count) packer.match(2999, 255);
        packer.endBlock().ppmd(4, 1).text(text);
        for (int count = 0; count < 2000; ++count) packer.ppmdMatch(2500, 287);
        if (round < 5) packer.endBlock();
    }
    packer.endFile();
    expectGood(packer);
}

TEST(RarUnpack, LaterVersionsOfTheOldLayout) {
    OldPacker packer;
    OldRarFile file = member(packer.codes().text("abc").endFile());
    file.version = 36;
    EXPECT_EQ(unpackFirst({file}).code, kOk);
    file.version = 50;
    EXPECT_EQ(unpackFirst({file}).code, kMethod);
}

TEST(RarUnpack, NeedsNoMarkOfTheEnd) {
    OldPacker packer;
    expectGood(packer.codes().text("abcdefgh"));
}

TEST(RarUnpack, RefusesMatchesFromBeforeTheStart) {
    // What they are copied from was packed by the same packer, but is of no member that this one goes on with.
    OldPacker packer;
    packer.codes().text(prose(5000)).endFile();
    packer.packed();
    packer.content();
    for (const std::uint32_t distance : {2U, 100U, 5000U}) {
        EXPECT_EQ(codeOf(packer.codes().text("a").match(distance, 5).endFile()), kHuffmanCode) << distance;
        EXPECT_EQ(codeOf(packer.ppmd(4, 1).text("a").ppmdMatch(distance, 32).endFile()), kHuffmanCode) << distance;
    }
    EXPECT_EQ(codeOf(packer.ppmd(4, 1).ppmdRun(4).endFile()), kHuffmanCode);
}

TEST(RarUnpack, RefusesCutBytes) {
    OldPacker packer;
    OldRarFile file = member(packer.codes().text("abc").endBlock().ppmd(4, 1).text(prose(500)).endFile());
    const std::string packed = *file.packed;
    // The last four bytes are the range coder's rest and the end's mark, which the content needs nothing of.
    for (std::size_t size = 0; size + 8 < packed.size(); ++size) {
        file.packed = packed.substr(0, size);
        EXPECT_EQ(unpackFirst({file}).code, kHuffmanCode) << size;
    }
}

TEST(RarUnpack, RefusesAWrongSizeAndAWrongChecksum) {
    OldPacker packer;
    OldRarFile file = member(packer.codes().text("abcabc").endFile());
    file.originalSize = 7;
    EXPECT_EQ(unpackFirst({file}).code, kHuffmanCode);
    file.originalSize = 5;
    EXPECT_EQ(unpackFirst({file}).code, kFileCrc);
    file.originalSize = 6;
    file.crc = 1;
    EXPECT_EQ(unpackFirst({file}).code, kFileCrc);
}

TEST(RarUnpack, RefusesPpmdWithoutAModel) {
    OldPacker packer;
    OldRarFile file = member(packer.codes().text("abc").endFile());
    file.packed = std::string("\x80\0\0\0\0\0\0\0", 8);
    EXPECT_EQ(unpackFirst({file}).code, kHuffmanCode);
    file.packed = std::string("\xA0\0\0\0\0\0\0\0", 8);  // order 1
    EXPECT_EQ(unpackFirst({file}).code, kHuffmanCode);
}

TEST(RarUnpack, RefusesPpmdWithTooMuchMemory) {
    OldPacker packer;
    OldRarFile file = member(packer.codes().text("abc").endFile());
    file.packed = std::string("\xA3\xC0\0\0\0\0\0\0", 8);  // 193 MiB
    EXPECT_EQ(unpackFirst({file}).code, kEnoughMemory);
}

TEST(RarPrefixCodes, WithMoreCodesThanBitsAreRefused) {
    rar::PrefixCode code;
    EXPECT_TRUE(code.build(std::vector<std::uint8_t>{1, 2, 2}));
    EXPECT_TRUE(code.build(std::vector<std::uint8_t>{1}));
    EXPECT_TRUE(code.build(std::vector<std::uint8_t>{0, 0}));
    EXPECT_TRUE(code.build(std::vector<std::uint8_t>{15, 15, 1}));
    EXPECT_FALSE(code.build(std::vector<std::uint8_t>{1, 1, 15}));
    EXPECT_FALSE(code.build(std::vector<std::uint8_t>{1, 2, 2, 2}));
}

// Filters among packed bytes.

/// Bytes that the filter for one channel of delta turns into "0123456789".
const std::string kDeltaPacked = "\xD0" + std::string(9, '\xFF');
const std::string kDeltaContent = "0123456789";

OldFilter delta(std::uint32_t ahead = 0) {
    return {.number = 0, .ahead = ahead, .length = 10, .registers = {{0, 1}}, .program = standIn(kDeltaSize)};
}

struct Filtered {
    explicit Filtered(OldPacker& packer) : file(member(packer)) {}
    Filtered& expect(const std::string& content) {
        file.content = content;
        const Unpacked unpacked = unpackFirst({file});
        EXPECT_EQ(unpacked.code, kOk);
        EXPECT_EQ(unpacked.bytes, content);
        return *this;
    }
    OldRarFile file;
};

TEST(RarUnpackFilters, AreUndoneAtTheirPlace) {
    for (const std::uint32_t ahead : {0U, 5U, 257U, 258U, 1000U}) {
        const std::string before = prose(ahead);
        OldPacker codes;
        Filtered(codes.codes().filter(delta(ahead)).text(before + kDeltaPacked + "rest").endFile())
            .expect(before + kDeltaContent + "rest");
        OldPacker ppmd;
        Filtered(ppmd.ppmd(4, 1).filter(delta(ahead)).text(before + kDeltaPacked + "rest").endFile())
            .expect(before + kDeltaContent + "rest");
    }
}

TEST(RarUnpackFilters, UseProgramsOfBefore) {
    OldPacker packer;
    packer.codes().filter(delta()).text(kDeltaPacked);
    packer.filter({.number = 2, .length = 5, .program = standIn(kCallsSize)}).text(std::string("\xE8\x0B\0\0\0", 5));
    packer.filter({.number = 1, .registers = {{0, 1}}}).text(kDeltaPacked);
    packer.filter({.registers = {{0, 1}}}).text(kDeltaPacked);
    packer.filter({.number = 2}).text(std::string("\xE8\x30\0\0\0", 5)).endFile();
    Filtered(packer).expect(kDeltaContent + std::string("\xE8\0\0\0\0", 5) + kDeltaContent + kDeltaContent +
                            std::string("\xE8\x0C\0\0\0", 5));
}

TEST(RarUnpackFilters, OfOnePlaceAreUndoneOneAfterTheOther) {
    // Delta twice: the sums of sums.
    OldPacker packer;
    packer.codes().filter({.number = 0, .length = 4, .registers = {{0, 1}}, .program = standIn(kDeltaSize)});
    packer.filter({.number = 1, .registers = {{0, 1}}}).text("\xFF\xFF\xFF\xFF").endFile();
    Filtered(packer).expect(std::string("\xFF\xFD\xFA\xF6"));
}

TEST(RarUnpackFilters, LeaveTheWindowAsItWas) {
    OldPacker packer;
    packer.codes().filter(delta()).text(kDeltaPacked).match(10, 10).endFile();
    Filtered(packer).expect(kDeltaContent + kDeltaPacked);
}

TEST(RarUnpackFilters, AcrossTheEndOfTheWindow) {
    OldPacker packer;
    const std::string start = prose(3000);
    packer.codes().text(start);
    std::string expected = start;
    while (expected.size() < (4U << 20) - 505) {
        packer.match(3000, 255);
        for (int count = 0; count < 255; ++count) expected += expected[expected.size() - 3000];
    }
    const std::string packed(100000, '\xFF');
    packer.filter({.number = 0, .length = 100000, .registers = {{0, 1}}, .program = standIn(kDeltaSize)}).text("\xFF");
    for (int count = 0; count < 99999 / 129; ++count) packer.match(1, 129);
    packer.text(std::string(99999 % 129, '\xFF')).endFile();
    for (int count = 1; count <= 100000; ++count) expected += static_cast<char>(count);
    Filtered(packer).expect(expected);
}

TEST(RarUnpackFilters, ThatAreNotKnownAreRefused) {
    std::string program = "\x03program";
    program[0] = 0;
    for (std::size_t at = 1; at < program.size(); ++at) program[0] = static_cast<char>(program[0] ^ program[at]);
    OldPacker packer;
    EXPECT_EQ(codeOf(packer.codes().filter({.number = 0, .length = 3, .program = program}).text("abc").endFile()),
              kMethod);
    OldPacker other;
    OldFilter otherLength = delta();
    otherLength.registers = {{0, 1}, {4, 9}};
    EXPECT_EQ(codeOf(other.codes().filter(otherLength).text(kDeltaPacked).endFile()), kMethod);
}

TEST(RarUnpackFilters, ThatMakeNoSenseAreRefused) {
    const auto refused = [](const OldFilter& filter) {
        OldPacker packer;
        return codeOf(packer.codes().filter(filter).text(kDeltaPacked).endFile()) == kHuffmanCode;
    };
    OldFilter filter = delta();
    filter.program[5] = 1;
    EXPECT_TRUE(refused(filter)) << "sum of the program";
    filter = delta();
    filter.length = 11;
    EXPECT_TRUE(refused(filter)) << "beyond the end";
    EXPECT_TRUE(refused(delta(1))) << "beyond the end";
    EXPECT_TRUE(refused(delta((5U << 20)))) << "beyond the window";
    filter = delta();
    filter.registers.clear();
    EXPECT_TRUE(refused(filter)) << "no channel";
    filter = delta();
    filter.number = 2;
    EXPECT_TRUE(refused(filter)) << "the second program without the first";
    filter = delta();
    filter.program.clear();
    EXPECT_TRUE(refused(filter)) << "no program";

    OldPacker overlap;
    overlap.codes().filter(delta()).filter({.number = 1, .ahead = 5, .registers = {{0, 1}}});
    EXPECT_EQ(codeOf(overlap.text(kDeltaPacked + kDeltaPacked).endFile()), kHuffmanCode);
    OldPacker many;
    many.codes().filter(delta());
    for (int count = 0; count < 8; ++count) many.filter({.number = 1, .registers = {{0, 1}}});
    EXPECT_EQ(codeOf(many.text(kDeltaPacked).endFile()), kHuffmanCode);
}

}  // namespace
}  // namespace archiver::test
