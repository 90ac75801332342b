#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "archivers/formats/arj/arj_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/arj_builder.h"
#include "formats_arj/support/bit_writer.h"

/// Methods 1 to 3: blocks with Huffman codes of their own.
namespace archiver::test {
namespace {

Unpacked decoded(const std::string& packed, const std::string& expected, std::uint8_t method = 1) {
    const OpenResult archive =
        openArj(inMemory(arjArchive({}, {{.name = "a", .content = expected, .packed = packed, .method = method}})), {});
    return unpack(*archive.reader, "a");
}

void expectDecoded(const std::string& packed, const std::string& expected, std::uint8_t method = 1) {
    const Unpacked unpacked = decoded(packed, expected, method);
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes.size(), expected.size());
    EXPECT_TRUE(unpacked.bytes == expected);
}

/// Codes of the lengths: 2 (many zeros), 3 (length 1), 4 (length 2), 5 (length 3); two bits each, from 00 on.
constexpr const char* kLengthCodes = "00110 000 000 010 00 010 010 010";
/// a: 0, b: 10, match of 3: 110, match of 256: 111.
constexpr const char* kLiterals = "111111110 00 001001101 01 10 00 010001001 11 00 011101000 11";
/// Distance 1: 0, distance 2: 10, distances from 16385 on: 11 and 14 bits.
constexpr const char* kPositions = "10000 001 010 000 000 000 000 000 000 000 000 000 000 000 000 000 010";

BitWriter block(std::uint32_t symbols) {
    BitWriter bits;
    bits.put(symbols, 16).put(kLengthCodes).put(kLiterals).put(kPositions);
    return bits;
}

TEST(ArjBlocks, GiveLiteralsAndMatches) {
    for (const std::uint8_t method : {1, 2, 3}) {
        BitWriter bits = block(5);
        bits.put("0 10").put("110 10").put("10").put("110 0");  // a b, 3 from 2 back, b, 3 from 1 back
        expectDecoded(bits.bytes(),
                      "ababa"
                      "b"
                      "bbb",
                      method);
    }
}

TEST(ArjBlocks, FollowEachOther) {
    BitWriter bits = block(1);
    bits.put("0").put(2, 16).put(kLengthCodes).put(kLiterals).put(kPositions).put("10 111 10");
    std::string expected = "ab";
    while (expected.size() < 2 + 256) expected += expected[expected.size() - 2];
    expectDecoded(bits.bytes(), expected);
}

TEST(ArjBlocks, ReachFarBack) {
    // 20,000 bytes, then 3 from 16,385 back and 256 from 20,000 back.
    BitWriter bits = block(20002);
    std::string expected;
    std::mt19937 random(7);
    for (int index = 0; index < 20000; ++index) {
        const bool b = (random() & 1) != 0;
        bits.put(b ? "10" : "0");
        expected += b ? 'b' : 'a';
    }
    bits.put("110 11").put(0, 14).put("111 11").put(20000 - 16385, 14);
    for (int index = 0; index < 3; ++index) expected += expected[expected.size() - 16385];
    for (int index = 0; index < 256; ++index) expected += expected[expected.size() - 20000];
    expectDecoded(bits.bytes(), expected);
}

TEST(ArjBlocks, HaveCodesOfUpTo16Bits) {
    BitWriter bits;
    bits.put(17, 16);
    // Codes of the lengths: 2 to 16 with 4 bits, 17 and 18 with 5.
    bits.put(19, 5).put("000 000 100 00");
    for (int code = 3; code <= 16; ++code) bits.put(4, 3);
    bits.put("101 101");
    // Lengths 1 to 15 for a to o, 16 for p and q.
    bits.put(97 + 17, 9).put("0000").put(97 - 20, 9);
    for (std::uint32_t length = 1; length <= 14; ++length) bits.put(length + 2 - 2, 4);
    bits.put("11110 11111 11111");
    bits.put("00000 00000");  // positions: always the first
    std::string expected;
    for (int letter = 16; letter >= 0; --letter) {
        if (letter == 16)
            bits.put("1111111111111111");
        else
            bits.put(std::string(static_cast<std::size_t>(letter), '1') + "0");
        expected += static_cast<char>('a' + letter);
    }
    expectDecoded(bits.bytes(), expected);
}

TEST(ArjBlocks, MayConsistOfOneSymbol) {
    // All symbols are "x", which takes no bits: 65,536 of them, as the count is 0, and one in a second block.
    BitWriter bits;
    for (const std::uint32_t count : {0U, 1U}) {
        bits.put(count, 16).put("00000 00000").put(0, 9).put('x', 9).put("00000 00000");
    }
    expectDecoded(bits.bytes(), std::string(65537, 'x'));
}

TEST(ArjBlocks, MayHaveOneDistance) {
    BitWriter bits;
    bits.put(3, 16).put(kLengthCodes).put(kLiterals).put("00000 00001");  // always two back
    bits.put("0 10 110");
    expectDecoded(bits.bytes(), "ababa");
}

TEST(ArjBlocks, HaveZeroRunsOfEveryKind) {
    // Codes of the lengths: 0, 1, 2 with 2 bits (00, 01, 10), 3 with 2 bits (11).
    BitWriter bits;
    bits.put(2, 16).put("00100 010 010 010 00 010");
    // 20 + 12 zeros, one, 18, 3, then length 1 for symbols 55 and 57, with one zero in between.
    bits.put(58, 9).put("10").put(12, 9).put("00").put("01 1111").put("01 0001").put("11").put("00").put("11");
    bits.put("00000 00000").put("1 0");
    // 32 + 1 + 18 + 4 = 55
    expectDecoded(bits.bytes(), std::string{57, 55});
}

TEST(ArjBlocks, MayEndInTheMiddle) {
    // The block promises more symbols than the member has bytes, and the last match is longer than the rest.
    BitWriter bits = block(500);
    bits.put("0 111 0");
    expectDecoded(bits.bytes(), std::string(100, 'a'));
}

TEST(ArjBlocks, NeedNoBitsBehindTheirLast) {
    BitWriter bits = block(3);
    bits.put("0 10 10");
    std::string packed = bits.bytes();
    expectDecoded(packed, "abb");
    packed += "foreign bytes that are ignored";
    expectDecoded(packed, "abb");
}

struct DamageCase {
    const char* what;
    std::function<void(BitWriter&)> write;
};

TEST(ArjBlocks, RefuseTablesThatMakeNoSense) {
    const DamageCase cases[] = {
        {"too many length codes", [](BitWriter& b) { b.put(20, 5); }},
        {"single length code out of range", [](BitWriter& b) { b.put("00000").put(19, 5); }},
        {"length code of 17 bits", [](BitWriter& b) { b.put("00001 111 11111111110"); }},
        {"length codes too few", [](BitWriter& b) { b.put("00011 000 000 010 00"); }},
        {"length codes too many", [](BitWriter& b) { b.put("00011 001 001 001 00"); }},
        {"no length codes", [](BitWriter& b) { b.put("00011 000 000 000 00"); }},
        {"gap alone", [](BitWriter& b) { b.put("00011 000 000 000 11"); }},
        {"too many literals", [](BitWriter& b) { b.put(kLengthCodes).put(511, 9); }},
        {"single literal out of range", [](BitWriter& b) { b.put(kLengthCodes).put(0, 9).put(510, 9); }},
        {"zero run beyond the literals", [](BitWriter& b) { b.put(kLengthCodes).put(510, 9).put("00").put(491, 9); }},
        {"literals too few", [](BitWriter& b) { b.put(kLengthCodes).put(2, 9).put("01 10"); }},
        {"literals too many", [](BitWriter& b) { b.put(kLengthCodes).put(3, 9).put("01 01 01"); }},
        {"no literals", [](BitWriter& b) { b.put(kLengthCodes).put(1, 9).put("00").put(0, 9); }},
        {"too many positions", [](BitWriter& b) { b.put(kLengthCodes).put(kLiterals).put(18, 5); }},
        {"single position out of range",
         [](BitWriter& b) { b.put(kLengthCodes).put(kLiterals).put("00000").put(17, 5); }},
        {"positions too few", [](BitWriter& b) { b.put(kLengthCodes).put(kLiterals).put("00010 001 010"); }},
        {"positions too many", [](BitWriter& b) { b.put(kLengthCodes).put(kLiterals).put("00011 001 001 010"); }},
        {"position code of 17 bits",
         [](BitWriter& b) { b.put(kLengthCodes).put(kLiterals).put("00001 111 11111111110"); }},
    };
    for (const DamageCase& each : cases) {
        BitWriter bits;
        bits.put(10, 16);
        each.write(bits);
        const Unpacked unpacked = decoded(bits.bytes() + std::string(100, '\0'), "aaaaaaaaaa");
        EXPECT_EQ(unpacked.code, kHuffmanCode) << each.what;
        EXPECT_EQ(unpacked.bytes, "") << each.what;
    }
}

TEST(ArjBlocks, RefuseMatchesBeforeTheStart) {
    EXPECT_EQ(decoded(block(2).put("110 0").bytes(), "aaa").code, kHuffmanCode);
    const Unpacked unpacked = decoded(block(2).put("0 110 10").bytes(), "aaaa");
    EXPECT_EQ(unpacked.code, kHuffmanCode);
    EXPECT_EQ(unpacked.bytes, "a") << "what came before";
    EXPECT_EQ(decoded(block(2).put("0 110 0").bytes(), "aaaa").code, kOk);
}

TEST(ArjBlocks, EndWhenTheDataEnds) {
    BitWriter bits = block(60000);
    for (int index = 0; index < 100; ++index) bits.put("10");
    // Zero bits follow; a few of them are taken for what they say.
    const Unpacked unpacked = decoded(bits.bytes(), std::string(50000, 'b'));
    EXPECT_EQ(unpacked.code, kHuffmanCode);
    EXPECT_LE(unpacked.bytes.size(), 1000U);
    EXPECT_EQ(decoded("", "abc").code, kHuffmanCode);
}

TEST(ArjBlocks, TellACutFile) {
    BitWriter bits = block(60000);
    for (int index = 0; index < 60000; ++index) bits.put("10");
    const std::string whole =
        arjArchive({}, {{.name = "a", .content = std::string(60000, 'b'), .packed = bits.bytes(), .method = 1}}, false);
    for (const std::size_t missing : {100, 5000, 14000}) {
        const OpenResult archive = openArj(inMemory(whole.substr(0, whole.size() - missing)), {});
        const Unpacked unpacked = unpack(*archive.reader, "a");
        EXPECT_EQ(unpacked.code, kCannotRead) << missing;
        // Two bits a byte, and a few zero bits behind the last one.
        EXPECT_NEAR(static_cast<double>(unpacked.bytes.size()), 60000.0 - 4.0 * static_cast<double>(missing), 300.0);
    }
}

/// All literals and match lengths, in codes of 9 bits but for the two longest matches; all distances.
class RandomBlocks {
public:
    explicit RandomBlocks(unsigned seed) : random_(seed) {}

    void addBlock(std::uint32_t symbols) {
        bits_.put(symbols, 16);
        // Codes of the lengths: 10 and 11 with 1 bit; three are left out after the third.
        bits_.put("01100 000 000 000 11 000 000 000 000 001 001");
        bits_.put(510, 9).put(std::string(508, '1') + "00");
        bits_.put(17, 5);
        for (int position = 0; position < 17; ++position) bits_.put(position < 15 ? 4 : 5, 3);
        for (std::uint32_t symbol = 0; symbol < symbols; ++symbol) addSymbol();
    }

    [[nodiscard]] const std::string& packed() const { return bits_.bytes(); }
    [[nodiscard]] const std::string& expected() const { return expected_; }

private:
    void addSymbol() {
        const std::uint32_t kind = random_() % 8;
        if (expected_.empty() || kind < 5) {
            const std::uint32_t byte = random_() % 256;
            bits_.put(byte + 4, 9);
            expected_ += static_cast<char>(byte);
            return;
        }
        const std::uint32_t length = kind == 5 ? 3 + random_() % 254 : 3 + random_() % 10;
        std::uint32_t reach = kind == 6 ? 20 : 26624;
        if (expected_.size() < reach) reach = static_cast<std::uint32_t>(expected_.size());
        addMatch(length, 1 + random_() % reach);
    }

    void addMatch(std::uint32_t length, std::uint32_t distance) {
        const std::uint32_t symbol = length - 3 + 256;
        if (symbol >= 508)
            bits_.put(symbol - 508, 8);
        else
            bits_.put(symbol + 4, 9);
        int position = 0;
        while ((distance - 1) >> position != 0) ++position;
        if (position < 15)
            bits_.put(static_cast<std::uint32_t>(position), 4);
        else
            bits_.put(static_cast<std::uint32_t>(position - 15 + 30), 5);
        if (position > 1) bits_.put(distance - 1 - (1U << (position - 1)), position - 1);
        for (std::uint32_t index = 0; index < length; ++index) expected_ += expected_[expected_.size() - distance];
    }

    std::mt19937 random_;
    BitWriter bits_;
    std::string expected_;
};

TEST(ArjBlocks, GiveWhatWasPacked) {
    for (unsigned seed = 1; seed <= 3; ++seed) {
        RandomBlocks random(seed);
        for (const std::uint32_t symbols : {1U, 2U, 20000U, 3U, 30000U, 12345U}) random.addBlock(symbols);
        expectDecoded(random.packed(), random.expected());
    }
}

}  // namespace
}  // namespace archiver::test
