#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "archivers/formats/arj/arj_reader.h"
#include "formats/support/damage.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/arj_builder.h"

/// Archives that are no longer what they were.
namespace archiver::test {
namespace {

/// Lists and unpacks everything.
Outcome exhaust(const std::string& bytes) {
    const OpenResult opened = openArj(inMemory(bytes), {});
    if (opened.reader) static_cast<ArjArchive&>(*opened.reader).setPassword("secret");
    return test::exhaust(opened, bytes.size() / 30);
}

void expectCutsToShow(const std::string& whole, std::size_t step) {
    for (std::size_t size = 0; size < whole.size(); size += step) {
        // Only where a member ends can nothing be missed: the end mark need not be there.
        const bool betweenMembers = whole.compare(size, 2, "\x60\xEA") == 0 && size != 0;
        EXPECT_TRUE(!exhaust(whole.substr(0, size)).faultless || betweenMembers) << size;
    }
}

void expectFlipsToShow(const std::string& whole, std::size_t step) {
    const Outcome good = exhaust(whole);
    ASSERT_TRUE(good.faultless);
    for (std::size_t at = 0; at < whole.size(); at += step) {
        for (const int bits : {0x01, 0x80, 0xFF}) {
            std::string bytes = whole;
            bytes[at] = static_cast<char>(bytes[at] ^ bits);
            const Outcome outcome = exhaust(bytes);
            // Without an error everything is as it was: some bits at the end of packed data mean nothing.
            if (outcome.faultless) {
                EXPECT_TRUE(outcome.contents == good.contents) << at << ' ' << bits;
            }
        }
    }
}

TEST(ArjDamage, CutsShow) {
    expectCutsToShow(readFile(dataFile("arj/methods.arj")), 97);
    expectCutsToShow(readFile(dataFile("arj/garbled.arj")), 1);
}

TEST(ArjDamage, FlippedBytesShow) {
    expectFlipsToShow(readFile(dataFile("arj/methods.arj")), 101);
    expectFlipsToShow(readFile(dataFile("arj/garbled.arj")), 1);
}

TEST(ArjDamage, OfHeadersNeverGoesUnnoticed) {
    const std::string whole = arjArchive(
        {.comment = "comment", .extended = arjExtended("extended")},
        {{.name = "a.txt", .content = "content", .comment = "comment", .extended = arjExtended("extended")}});
    for (std::size_t bit = 0; bit < (whole.size() - kArjEnd.size()) * 8; ++bit) {
        std::string bytes = whole;
        bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ 1 << bit % 8);
        EXPECT_FALSE(exhaust(bytes).faultless) << bit;
    }
}

TEST(ArjDamage, OfPackedDataEndsInACode) {
    // Headers stay right, so that the decoders see all that may come.
    std::mt19937 random(99);
    for (int round = 0; round < 3000; ++round) {
        std::string packed(random() % 200, '\0');
        for (char& byte : packed) byte = static_cast<char>(random());
        // Blocks that begin with few symbols and small tables get farther.
        if (packed.size() > 4 && round % 2 == 0) packed[2] = static_cast<char>(packed[2] & 0x0F);
        const std::string bytes = arjArchive({}, {{.name = "a",
                                                   .packed = packed,
                                                   .method = static_cast<std::uint8_t>(1 + random() % 4),
                                                   .originalSize = 1 + random() % 100000,
                                                   .crc = 1}});
        const OpenResult opened = openArj(inMemory(bytes), {});
        Member member;
        ASSERT_EQ(opened.reader->next(member), kOk);
        const Unpacked unpacked = unpack(*opened.reader);
        EXPECT_TRUE(unpacked.code == kHuffmanCode || unpacked.code == kFileCrc) << unpacked.code;
        EXPECT_EQ(opened.reader->next(member), kNoMoreEntries);
    }
}

TEST(ArjDamage, OfRandomBytesAreNoArchives) {
    std::mt19937 random(12345);
    for (int round = 0; round < 20; ++round) {
        std::string bytes(random() % 200000, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        EXPECT_EQ(openArj(inMemory(bytes), {}).code, kFileStyle);
    }
}

TEST(ArjDamage, InSamplesShows) {
    const char* const folder = std::getenv("TOVAREX_SAMPLES");
    if (folder == nullptr || *folder == '\0') GTEST_SKIP();
    for (const char* name : {"plain.arj", "fastest.arj", "encrypted.arj"}) {
        const std::string whole = readFile(std::filesystem::path(folder) / "made" / name);
        expectCutsToShow(whole, 97 * 11);
        expectFlipsToShow(whole, 101 * 11);
    }
}

}  // namespace
}  // namespace archiver::test
