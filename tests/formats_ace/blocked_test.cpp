#include "archivers/formats/ace/blocked.h"

#include <gtest/gtest.h>

#include "formats/support/listing.h"
#include "formats_ace/support/ace_builder.h"
#include "formats_ace/support/bit_writer.h"
#include "formats_ace/support/memory_disk.h"

namespace archiver::test {
namespace {

/// Code that stands in one part of a member, and what follows it.
constexpr unsigned kMode = 283;

AceFile packed(const BitWriter& bits, std::string content) {
    return {.name = "x", .content = std::move(content), .packed = bits.bytes(), .method = 2};
}

Unpacked unpackOne(const AceFile& file) { return unpack(*openBytes(aceArchive({}, {file})), "x"); }

void expectContent(const BitWriter& bits, const std::string& content) {
    const Unpacked unpacked = unpackOne(packed(bits, content));
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes, content);
}

void putDelta(BitWriter& bits, unsigned planes, unsigned length) { bits.put(1, 8).put(planes, 8).put(length, 17); }
void putProgram(BitWriter& bits, bool wide) { bits.put(2, 8).put(wide ? 1 : 0, 8); }

std::string restored(std::string bytes, std::uint64_t offset, bool wide, std::size_t done) {
    EXPECT_EQ(ace::restoreAddresses(bytes, offset, wide), done);
    return bytes;
}

TEST(AceProgramCode, GetsItsAddressesBack) {
    using namespace std::string_literals;
    // A call to 0x1000 from offset 0x100, in 32 and in 16 bits.
    EXPECT_EQ(restored("\xE8\x00\x10\x00\x00"s, 0x100, true, 5), "\xE8\x00\x0F\x00\x00"s);
    EXPECT_EQ(restored("\xE8\x00\x10\x00\x00"s, 0x100, false, 5), "\xE8\x00\x0F\x00\x00"s);
    EXPECT_EQ(restored("\xE8\x00\x00\x00\x00"s, 1, true, 5), "\xE8\xFF\xFF\xFF\xFF"s);
    EXPECT_EQ(restored("\xE8\x00\x00\x00\x00"s, 1, false, 5), "\xE8\xFF\xFF\x00\x00"s);
    // A jump has 16 bits in both.
    EXPECT_EQ(restored("\xE9\x00\x00\x00\x00"s, 1, true, 5), "\xE9\xFF\xFF\x00\x00"s);
    EXPECT_EQ(restored("\xE9\x00\x00\x00\x00"s, 1, false, 5), "\xE9\xFF\xFF\x00\x00"s);
    // The opcode's own offset counts; addresses are not looked into.
    EXPECT_EQ(restored("..\xE8\xE8\xE8\xE8\xE8"s, 0, true, 7), "..\xE8\xE6\xE8\xE8\xE8"s);
    EXPECT_EQ(restored("\xE9\x10\x00\xE9\x10\x00\x00\x00"s, 0, false, 8), "\xE9\x10\x00\xE9\x0D\x00\x00\x00"s);
    // Offsets above 4 GiB wrap.
    EXPECT_EQ(restored("\xE8\x05\x00\x00\x00"s, 0x100000001, true, 5), "\xE8\x04\x00\x00\x00"s);
}

TEST(AceProgramCode, WaitsForWholeAddresses) {
    using namespace std::string_literals;
    EXPECT_EQ(restored("ab\xE8\x01\x01\x01"s, 0, true, 2), "ab\xE8\x01\x01\x01"s);
    EXPECT_EQ(restored("ab\xE9\x01\x01\x01"s, 0, false, 2), "ab\xE9\x01\x01\x01"s);
    EXPECT_EQ(restored("\xE8"s, 0, true, 0), "\xE8"s);
    EXPECT_EQ(restored(""s, 0, true, 0), ""s);
    EXPECT_EQ(restored("abc"s, 0, true, 3), "abc"s);
}

TEST(AceDeltas, AreSummedUpAndPutTogether) {
    std::string block("\x01\x01\x01\x10\x10\xFF\x05", 7);
    // Sums from 9: 10 11 12 28 44 43 48; three planes of two bytes, and one byte over.
    std::string bytes(7, '?');
    std::uint8_t last = 9;
    ace::restoreDeltas(block, last, 3, bytes);
    EXPECT_EQ(bytes, std::string("\x0A\x0C\x2C\x30\x0B\x1C\x2B", 7));
    EXPECT_EQ(last, 48);
    std::string one("\x02", 1);
    std::string oneByte(1, '?');
    ace::restoreDeltas(one, last, 1, oneByte);
    EXPECT_EQ(oneByte, "2");
}

TEST(AceBlocked, IsLz77WithoutInstructions) {
    BitWriter bits;
    Lz77Writer().block(bits, 3, {'a', 'b', 261}, {3}).literals(bits, "ab").match(bits, 1, 3);
    expectContent(bits, "abababa");
}

TEST(AceBlocked, DeltaTakesWholeBlocks) {
    BitWriter bits;
    Lz77Writer writer;
    writer.block(bits, 1 + 1 + 8 + 1 + 1, {1, 'x', kMode}, {0});
    writer.literal(bits, 'x').modeChange(bits);
    putDelta(bits, 2, 4);
    for (int i = 0; i < 8; ++i) writer.literal(bits, 1);  // two blocks: 1 2 3 4 and 5 6 7 8
    writer.modeChange(bits);
    bits.put(0, 8);
    writer.literal(bits, 'x');
    expectContent(bits, "x\x01\x03\x02\x04\x05\x07\x06\x08x");
}

TEST(AceBlocked, InstructionInsideADeltaBlockComesAfterIt) {
    BitWriter bits;
    Lz77Writer writer;
    writer.block(bits, 1 + 2 + 1 + 2 + 1, {1, 'x', kMode}, {0});
    writer.modeChange(bits);
    putDelta(bits, 1, 4);
    writer.literal(bits, 1).literal(bits, 1).modeChange(bits);
    bits.put(0, 8);
    writer.literal(bits, 1).literal(bits, 1).literal(bits, 'x');
    expectContent(bits, "\x01\x02\x03\x04x");
}

TEST(AceBlocked, DeltaBlockAtTheEndIsCut) {
    BitWriter bits;
    Lz77Writer writer;
    writer.block(bits, 1 + 4, {1, kMode}, {0});
    writer.modeChange(bits);
    putDelta(bits, 1, 4);
    for (int i = 0; i < 4; ++i) writer.literal(bits, 1);
    expectContent(bits, "\x01\x02\x03");
}

TEST(AceBlocked, MatchesSeeDeltasAsTheyWerePacked) {
    BitWriter bits;
    Lz77Writer writer;
    writer.block(bits, 1 + 3 + 1 + 1, {1, kMode, 262}, {1});
    writer.modeChange(bits);
    putDelta(bits, 1, 3);
    for (int i = 0; i < 3; ++i) writer.literal(bits, 1);
    writer.modeChange(bits);
    bits.put(0, 8);
    writer.match(bits, 2, 1);
    expectContent(bits, "\x01\x02\x03\x01\x01\x01");
}

/// Program code in two parts with an opcode across the border.
void putSplitCode(BitWriter& bits, const std::function<void()>& secondMode) {
    Lz77Writer writer;
    writer.block(bits, 1 + 3 + 1 + 6, {0, 0x10, 'x', 0xE8, kMode}, {0});
    writer.modeChange(bits);
    putProgram(bits, true);
    writer.literals(bits, std::string("x\xE8\x10", 3)).modeChange(bits);
    secondMode();
    writer.literals(bits, std::string("\0\0\0xxx", 6));
}

TEST(AceBlocked, OpcodeAtTheEndOfCodeGoesToTheNextPart) {
    BitWriter wide;
    putSplitCode(wide, [&] { putProgram(wide, true); });
    expectContent(wide, std::string("x\xE8\x0F\0\0\0xxx", 9));
    BitWriter narrow;
    putSplitCode(narrow, [&] { putProgram(narrow, false); });
    expectContent(narrow, std::string("x\xE8\x0F\0\0\0xxx", 9));
    BitWriter plain;
    putSplitCode(plain, [&] { plain.put(0, 8); });
    expectContent(plain, std::string("x\xE8\x10\0\0\0xxx", 9));
    BitWriter delta;
    putSplitCode(delta, [&] { putDelta(delta, 1, 6); });
    expectContent(delta, std::string("x\xE8\x10\0\0\0x\xF0h", 9));
}

TEST(AceBlocked, OpcodeAtTheEndOfTheMemberStays) {
    BitWriter bits;
    Lz77Writer writer;
    writer.block(bits, 1 + 5, {1, 'x', 0xE8, kMode}, {0});
    writer.modeChange(bits);
    putProgram(bits, true);
    writer.literals(bits, "x\xE8\x01\x01\x01");
    expectContent(bits, "x\xE8\x01\x01\x01");
}

TEST(AceBlocked, CodeIsRestoredOverPieces) {
    // A call in every five bytes, for longer than any piece: each address is 5 and becomes 5 less its offset.
    constexpr std::uint32_t kCalls = 40'000;
    BitWriter bits;
    Lz77Writer writer;
    writer.block(bits, 1 + 5, {0, 5, 0xE8, kMode}, {0});
    writer.modeChange(bits);
    putProgram(bits, true);
    writer.literals(bits, std::string("\xE8\x05\0\0\0", 5));
    for (std::uint32_t made = 5; made < 5 * kCalls; made += 257) {
        writer.block(bits, 1, {distanceSymbol(4)}, {255}).match(bits, 4, 255);
    }
    std::string content;
    for (std::uint32_t i = 0; i < kCalls; ++i) {
        content += '\xE8';
        content += littleEndian(5 - 5 * i, 4);
    }
    const Unpacked unpacked = unpackOne(packed(bits, content));
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_TRUE(unpacked.bytes == content);
}

TEST(AceBlocked, DamageShows) {
    const auto codeOf = [](const std::function<void(BitWriter&)>& instruction) {
        BitWriter bits;
        Lz77Writer writer;
        writer.block(bits, 2 + 10, {'a', kMode}, {0}).literal(bits, 'a').modeChange(bits);
        instruction(bits);
        writer.literals(bits, std::string(10, 'a'));
        return unpackOne(packed(bits, std::string(11, 'a'))).code;
    };
    EXPECT_EQ(codeOf([](BitWriter& bits) { bits.put(0, 8); }), kOk);
    EXPECT_EQ(codeOf([](BitWriter& bits) { bits.put(8, 8); }), kFileCrc);
    EXPECT_EQ(codeOf([](BitWriter& bits) { bits.put(255, 8); }), kFileCrc);
    EXPECT_EQ(codeOf([](BitWriter& bits) { putDelta(bits, 0, 5); }), kFileCrc);
    EXPECT_EQ(codeOf([](BitWriter& bits) { putDelta(bits, 1, 0); }), kFileCrc);
    EXPECT_EQ(codeOf([](BitWriter& bits) { putDelta(bits, 6, 5); }), kFileCrc);
    EXPECT_NE(codeOf([](BitWriter& bits) { putDelta(bits, 1, 100'000); }), kOk);
}

TEST(AceBlocked, InstructionsOnlyComeToAnEnd) {
    BitWriter bits;
    Lz77Writer writer;
    for (int i = 0; i < 1000; ++i) {
        writer.block(bits, 1, {kMode}, {0}).modeChange(bits);
        bits.put(0, 8);
    }
    EXPECT_NE(unpackOne(packed(bits, "a")).code, kOk);
}

}  // namespace
}  // namespace archiver::test
