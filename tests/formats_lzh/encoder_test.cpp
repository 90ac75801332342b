#include <gtest/gtest.h>

#include <random>

#include "archivers/formats/huffman_lz/block_encoder.h"
#include "archivers/formats/lzh/block_unpacker.h"
#include "archivers/formats/lzh/lzh_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_lzh/support/lzh_builder.h"

/// Packing into blocks, read back by the unpacker of LZH.
namespace archiver::test {
namespace {

using huffman_lz::BlockEncoder;
using huffman_lz::PackedBits;

std::string packed(const std::string& bytes, const char* method, std::size_t piece = ~std::size_t{0}) {
    const huffman_lz::BlockShape shape = *lzh::blockShapeOf(method);
    BlockEncoder encoder(shape);
    const std::span all(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    PackedBits whole;
    for (std::size_t at = 0; at < all.size();) {
        const std::size_t history = std::min(at, BlockEncoder::windowOf(shape));
        const std::size_t count = std::min(piece, all.size() - at);
        PackedBits bits;
        encoder.encode(all.subspan(at - history, history + count), history, bits);
        whole.append(bits);
        at += count;
    }
    whole.fillByte();
    return whole.takeBytes();
}

void expectUnpacked(const std::string& packedBytes, const std::string& bytes, const char* method) {
    const OpenResult opened =
        openLzh(inMemory(lzhArchive({{.name = "a", .content = bytes, .method = method, .packed = packedBytes}})));
    ASSERT_EQ(opened.code, kOk);
    const Unpacked unpacked = unpack(*opened.reader, "a");
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes.size(), bytes.size());
    EXPECT_TRUE(unpacked.bytes == bytes);
}

std::string randomBytes(std::size_t size, unsigned kinds = 256, unsigned seed = 1) {
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random() % kinds);
    return bytes;
}

/// Words of different frequency.
std::string text(std::size_t size) {
    std::mt19937 random(5);
    std::string bytes;
    while (bytes.size() < size) {
        const std::uint32_t word = random() % 400 * (random() % 5) / 4;
        bytes += 'w';
        bytes += std::to_string(word * word);
        bytes += random() % 9 == 0 ? ".\r\n" : " ";
    }
    bytes.resize(size);
    return bytes;
}

class LzhEncoder : public testing::TestWithParam<const char*> {
protected:
    static void expectRoundTrip(const std::string& bytes) {
        expectUnpacked(packed(bytes, GetParam()), bytes, GetParam());
    }
};

TEST_P(LzhEncoder, PacksOneAndTwoBytes) {
    expectRoundTrip("a");
    expectRoundTrip("aa");
    expectRoundTrip("ab");
    expectRoundTrip("aaa");
    expectRoundTrip(std::string(4, '\0'));
    expectRoundTrip("\xFF\xFE\xFF");
}

TEST_P(LzhEncoder, PacksEqualBytes) {
    for (const std::size_t size : {255, 256, 257, 258, 259, 260, 511, 512, 513, 65535, 65536, 65537, 300000}) {
        SCOPED_TRACE(size);
        const std::string bytes(size, 'x');
        expectRoundTrip(bytes);
        EXPECT_LT(packed(bytes, GetParam()).size(), 40 + size / 500);
    }
}

TEST_P(LzhEncoder, PacksBytesWithoutOrder) {
    // Nothing repeats itself: little more than the bytes come out.
    for (const std::size_t size : {3, 255, 8191, 8192, 8193, 65535, 65536, 65537, 200000}) {
        SCOPED_TRACE(size);
        const std::string bytes = randomBytes(size);
        expectRoundTrip(bytes);
        EXPECT_LT(packed(bytes, GetParam()).size(), size + 200 + size / 100);
    }
}

TEST_P(LzhEncoder, FillsBlocksToTheMostSymbols) {
    // Two kinds of bytes without order: one block holds them best, as far as its count of symbols reaches.
    for (const std::size_t size : {65535, 65536, 131070, 131071}) {
        SCOPED_TRACE(size);
        expectRoundTrip(randomBytes(size, 200));
    }
}

TEST_P(LzhEncoder, RefersToTheEdgeOfTheWindow) {
    const std::size_t window = BlockEncoder::windowOf(*lzh::blockShapeOf(GetParam()));
    const std::string unique = randomBytes(window + 600, 256, 9);
    for (const std::size_t distance : {window - 2, window - 1, window, window + 1}) {
        SCOPED_TRACE(distance);
        const std::string bytes = unique.substr(0, distance) + unique.substr(0, 300);
        expectRoundTrip(bytes);
        const std::size_t alone = packed(unique.substr(0, distance), GetParam()).size();
        if (distance < window) {
            EXPECT_LT(packed(bytes, GetParam()).size(), alone + 40);
        } else if (distance > window) {
            EXPECT_GT(packed(bytes, GetParam()).size(), alone + 200);
        }
    }
}

TEST_P(LzhEncoder, PacksTextInPiecesAsWellAsInOne) {
    const std::string bytes = text(700000);
    const std::string whole = packed(bytes, GetParam());
    const std::string pieces = packed(bytes, GetParam(), 100001);
    expectUnpacked(whole, bytes, GetParam());
    expectUnpacked(pieces, bytes, GetParam());
    EXPECT_LT(whole.size(), bytes.size() / 2);
    EXPECT_LT(pieces.size(), whole.size() + whole.size() / 50);
}

TEST_P(LzhEncoder, PartsWhatDiffersIntoBlocks) {
    // Codes that fit all of it would take 6.6 bits a byte; those of each third take little more than 5.
    std::string bytes = randomBytes(30000, 32);
    for (const char byte : randomBytes(30000, 32, 3)) bytes += static_cast<char>(byte + 100);
    for (const char byte : randomBytes(30000, 32, 4)) bytes += static_cast<char>(byte - 100);
    expectRoundTrip(bytes);
    EXPECT_LT(packed(bytes, GetParam()).size(), std::size_t{90000} * 11 / 16);
}

TEST_P(LzhEncoder, LimitsCodesTo16Bits) {
    // Frequencies that follow the Fibonacci numbers make codes as long as they can be.
    std::string bytes;
    std::size_t count = 1;
    std::size_t next = 1;
    for (int kind = 0; kind < 22; ++kind) {
        bytes.append(count, static_cast<char>('A' + kind));
        count = std::exchange(next, count + next);
    }
    std::shuffle(bytes.begin(), bytes.end(), std::mt19937(2));
    expectRoundTrip(bytes);
}

TEST_P(LzhEncoder, PacksManyKindsOfRandomData) {
    std::mt19937 random(11);
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        std::string bytes;
        const std::size_t size = random() % 20000;
        while (bytes.size() < size) {
            if (random() % 3 == 0 && !bytes.empty()) {
                std::size_t from = random() % bytes.size();
                for (unsigned left = random() % 600; left > 0; --left) bytes += bytes[from++];
            } else {
                bytes += randomBytes(random() % 50, 1 + random() % 256, round);
            }
        }
        if (!bytes.empty()) expectRoundTrip(bytes);
    }
}

INSTANTIATE_TEST_SUITE_P(Methods, LzhEncoder, testing::Values("-lh5-", "-lh6-", "-lh7-"),
                         [](const auto& each) { return std::string(each.param).substr(1, 3); });

}  // namespace
}  // namespace archiver::test
