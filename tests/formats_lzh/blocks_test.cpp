#include <gtest/gtest.h>

#include <random>

#include "archivers/formats/lzh/lzh_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/bit_writer.h"
#include "formats_lzh/support/lzh_builder.h"

/// Methods -lh4- to -lh7- and -lhx-: one scheme in several sizes.
namespace archiver::test {
namespace {

struct Shape {
    const char* method;
    int field;          ///< bits of the number of position codes
    int positions;      ///< position codes that there are
    std::size_t reach;  ///< the farthest distance
};

std::ostream& operator<<(std::ostream& to, const Shape& shape) { return to << shape.method; }

class LzhBlocks : public testing::TestWithParam<Shape> {
protected:
    [[nodiscard]] static Unpacked decoded(const std::string& packed, const std::string& expected) {
        const LzhFile file{.name = "a", .content = expected, .level = 2, .method = GetParam().method, .packed = packed};
        const OpenResult opened = openLzh(inMemory(lzhArchive({file})));
        return unpack(*opened.reader, "a");
    }

    static void expectDecoded(const BitWriter& bits, const std::string& expected) {
        const Unpacked unpacked = decoded(bits.bytes(), expected);
        EXPECT_EQ(unpacked.code, kOk);
        EXPECT_EQ(unpacked.bytes.size(), expected.size());
        EXPECT_TRUE(unpacked.bytes == expected);
    }

    /// a: 0, b: 10, match of 3: 110, match of 256: 111.
    static BitWriter& putLiterals(BitWriter& bits, std::uint32_t symbols) {
        // Codes of the lengths: 2 (many zeros), 3 (length 1), 4 (length 2), 5 (length 3); two bits each, from 00 on.
        bits.put(symbols, 16).put("00110 000 000 010 00 010 010 010");
        return bits.put("111111110 00 001001101 01 10 00 010001001 11 00 011101000 11");
    }

    /// Distance 1: 0, the farthest positions: 1 and as many bits as they need.
    static BitWriter& putPositions(BitWriter& bits) {
        bits.put(static_cast<std::uint32_t>(GetParam().positions), GetParam().field).put("001");
        for (int position = 1; position < GetParam().positions - 1; ++position) bits.put("000");
        return bits.put("001");
    }

    /// A distance above half of the farthest.
    static BitWriter& putFar(BitWriter& bits, std::size_t distance) {
        const int extra = GetParam().positions - 2;
        const std::size_t value = distance - 1 - (std::size_t{1} << extra);
        return bits.put("1").put(static_cast<std::uint32_t>(value >> 8), extra - 8).put(value & 0xFF, 8);
    }
};

TEST_P(LzhBlocks, ReachAsFarAsTheWindow) {
    // Farther than what is given on in one piece, so that the window was moved.
    const std::size_t literals = GetParam().reach + 200000;
    std::string expected;
    std::mt19937 random(7);
    BitWriter bits;
    while (expected.size() < literals) {
        putPositions(putLiterals(bits, 50000));
        for (int index = 0; index < 50000; ++index) {
            const bool b = (random() & 1) != 0;
            bits.put(b ? "10" : "0");
            expected += b ? 'b' : 'a';
        }
    }
    putPositions(putLiterals(bits, 3));
    bits.put("111");
    putFar(bits, GetParam().reach).put("110");
    putFar(bits, GetParam().reach / 2 + 1).put("110 0");
    for (const auto& [length, distance] :
         {std::pair{256, GetParam().reach}, {3, GetParam().reach / 2 + 1}, {3, std::size_t{1}}}) {
        for (int index = 0; index < length; ++index) expected += expected[expected.size() - distance];
    }
    expectDecoded(bits, expected);
}

TEST_P(LzhBlocks, FindBlanksBeforeTheStart) {
    BitWriter bits;
    putPositions(putLiterals(bits, 4));
    bits.put("110 0").put("0").put("110");
    putFar(bits, GetParam().reach).put("111 0");
    expectDecoded(bits, "   a   " + std::string(256, ' '));
}

TEST_P(LzhBlocks, CopyFromBlanksIntoTheData) {
    // Single position 1: always two back. One blank, then the first letter, in turn.
    BitWriter bits;
    putLiterals(bits, 2).put(0, GetParam().field).put(1, GetParam().field).put("0 110");
    expectDecoded(bits, "a a ");
}

TEST_P(LzhBlocks, RefusePositionsThatTheMethodDoesNotHave) {
    const auto positions = static_cast<std::uint32_t>(GetParam().positions);
    BitWriter many;
    putLiterals(many, 10).put(positions + 1, GetParam().field).put("001 001").put(0, 32).put(0, 32);
    BitWriter single;
    putLiterals(single, 10).put(0, GetParam().field).put(positions, GetParam().field).put(0, 32).put(0, 32);
    for (const BitWriter& bits : {many, single}) {
        const Unpacked unpacked = decoded(bits.bytes(), "aaaaaaaaaa");
        EXPECT_EQ(unpacked.code, kHuffmanCode);
        EXPECT_EQ(unpacked.bytes, "");
    }
}

TEST_P(LzhBlocks, RefuseTablesThatAreNotFull) {
    BitWriter few;
    putLiterals(few, 10).put(2, GetParam().field).put("001 010").put(0, 32).put(0, 32);
    BitWriter many;
    putLiterals(many, 10).put(3, GetParam().field).put("001 001 010").put(0, 32).put(0, 32);
    for (const BitWriter& bits : {few, many}) {
        EXPECT_EQ(decoded(bits.bytes(), "aaaaaaaaaa").code, kHuffmanCode);
    }
}

TEST_P(LzhBlocks, EndWhenTheDataEnds) {
    BitWriter bits;
    putPositions(putLiterals(bits, 60000));
    for (int index = 0; index < 100; ++index) bits.put("10");
    const Unpacked unpacked = decoded(bits.bytes(), std::string(50000, 'b'));
    EXPECT_EQ(unpacked.code, kHuffmanCode);
    EXPECT_EQ(unpacked.bytes.substr(0, 100), std::string(100, 'b')) << "what came before";
    EXPECT_LE(unpacked.bytes.size(), 1000U);
    EXPECT_EQ(decoded("", "abc").code, kHuffmanCode);
}

TEST_P(LzhBlocks, TellACutFile) {
    BitWriter bits;
    putPositions(putLiterals(bits, 60000));
    for (int index = 0; index < 60000; ++index) bits.put("10");
    const std::string whole = lzhArchive({{.name = "a",
                                           .content = std::string(60000, 'b'),
                                           .level = 2,
                                           .method = GetParam().method,
                                           .packed = bits.bytes()}},
                                         false);
    for (const std::size_t missing : {1, 100, 14000}) {
        const OpenResult opened = openLzh(inMemory(whole.substr(0, whole.size() - missing)));
        EXPECT_EQ(unpack(*opened.reader, "a").code, kCannotRead) << missing;
    }
}

TEST_P(LzhBlocks, StopWhenTheSinkDoes) {
    // One block of one letter takes no bits; 65,536 symbols are spelled 0.
    BitWriter bits;
    for (int block = 0; block < 8; ++block) {
        bits.put(0, 16).put(0, 10).put(0, 9).put('a', 9).put(0, GetParam().field).put(0, GetParam().field);
    }
    const OpenResult opened = openLzh(inMemory(lzhArchive(
        {{.name = "a", .content = std::string(8 * 65536, 'a'), .method = GetParam().method, .packed = bits.bytes()}})));
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    int calls = 0;
    EXPECT_EQ(opened.reader->read([&](const char*, std::size_t) { return ++calls < 2; }), kUserCancel);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(opened.reader->restart(), kOk);
    const Unpacked whole = unpack(*opened.reader, "a");
    EXPECT_EQ(whole.code, kOk);
    EXPECT_TRUE(whole.bytes == std::string(8 * 65536, 'a'));
}

INSTANTIATE_TEST_SUITE_P(Methods, LzhBlocks,
                         testing::Values(Shape{"-lh4-", 4, 14, 8192}, Shape{"-lh5-", 4, 14, 8192},
                                         Shape{"-lh6-", 5, 16, 32768}, Shape{"-lh7-", 5, 17, 65536},
                                         Shape{"-lhx-", 5, 20, 524288}),
                         [](const auto& each) { return std::string(each.param.method).substr(1, 3); });

TEST(LzhBlocksInTurn, LeaveNothingToTheNext) {
    // A large window first: the next members find blanks before their start, not what was there.
    BitWriter first;
    first.put(1000, 16).put(0, 10).put(0, 9).put('a', 9).put(0, 10);
    const auto member = [](const char* name, const char* method, int field) {
        BitWriter bits;
        bits.put(1, 16).put(0, 10).put(0, 9).put(256, 9).put(0, field).put(0, field);
        return LzhFile{.name = name, .content = "   ", .method = method, .packed = bits.bytes()};
    };
    const OpenResult archive = openLzh(inMemory(
        lzhArchive({{.name = "a", .content = std::string(1000, 'a'), .method = "-lhx-", .packed = first.bytes()},
                    member("b", "-lh5-", 4),
                    member("c", "-lh7-", 5),
                    {.name = "d", .content = "dd"}})));
    const auto members = unpackDetached(*archive.reader);
    ASSERT_EQ(members.size(), 4U);
    for (const auto& each : members) EXPECT_EQ(each.unpacked.code, kOk) << each.name;
    EXPECT_EQ(members[1].unpacked.bytes, "   ");
    EXPECT_EQ(members[2].unpacked.bytes, "   ");
}

}  // namespace
}  // namespace archiver::test
