#include <gtest/gtest.h>

#include <random>

#include "archivers/formats/rar/rar_reader.h"
#include "formats/support/damage.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_rar/support/packed_member.h"
#include "formats_rar/support/rar_builder.h"

/// Archives that are no longer what they were.
namespace archiver::test {
namespace {

constexpr const char* kFixtures[] = {
    "rar/rar.rar",           "rar/rar5_blake2.rar",         "rar/rar5_compressed.rar",
    "rar/rar5_hardlink.rar", "rar/rar5_multiple_files.rar", "rar/rar5_multiple_files_solid.rar",
    "rar/rar5_stored.rar",   "rar/rar5_symlink.rar",        "rar/rar_compress_best.rar",
    "rar/rar_subblock.rar",  "rar/rar_unicode.rar"};

/// Those, and one of our own whose members are packed solid and with everything that there is.
std::vector<std::pair<std::string, std::string>> fixtures() {
    std::vector<std::pair<std::string, std::string>> all;
    for (const char* name : kFixtures) all.emplace_back(name, readFile(dataFile(name)));
    all.emplace_back("solid group", oldRar(solidGroup()));
    return all;
}

/// Lists and unpacks everything.
Outcome exhaust(const std::string& bytes) { return test::exhaust(openRar(inMemory(bytes), {}), bytes.size() / 7); }

/// Whether a cut there leaves whole blocks: archives of the old layout need no end mark.
bool isBetweenBlocks(const std::string& whole, std::size_t size) {
    if (whole[6] != 0 || size < 7) return false;
    for (std::size_t at = 7; at <= size;) {
        if (at == size) return true;
        const auto byte = [&](std::size_t index) { return std::size_t{static_cast<unsigned char>(whole[at + index])}; };
        const std::size_t header = byte(5) | byte(6) << 8;
        const bool data = (byte(4) & 0x80) != 0;
        at += header + (data ? byte(7) | byte(8) << 8 | byte(9) << 16 : 0);
    }
    return false;
}

TEST(RarDamage, CutsShow) {
    for (const auto& [name, whole] : fixtures()) {
        ASSERT_TRUE(exhaust(whole).faultless) << name;
        for (std::size_t size = 0; size < whole.size(); size += 97) {
            EXPECT_TRUE(!exhaust(whole.substr(0, size)).faultless || isBetweenBlocks(whole, size)) << name << size;
        }
    }
}

TEST(RarDamage, FlippedBytesShow) {
    for (const auto& [name, whole] : fixtures()) {
        const Outcome good = exhaust(whole);
        for (std::size_t at = 0; at < whole.size(); at += 101) {
            for (const int bits : {0x01, 0x80, 0xFF}) {
                std::string bytes = whole;
                bytes[at] = static_cast<char>(bytes[at] ^ bits);
                const Outcome outcome = exhaust(bytes);
                // Without an error everything is as it was: the bytes of service blocks and of links mean nothing here.
                if (outcome.faultless) {
                    EXPECT_TRUE(outcome.contents == good.contents) << name << ' ' << at << ' ' << bits;
                }
            }
        }
    }
}

TEST(RarDamage, OfHeadersNeverGoesUnnoticed) {
    for (const std::string& whole :
         {oldRar({{.name = "a.txt", .content = "content"}}),
          newRar({{.name = "a.txt", .content = "content", .extra = newRarRecord(3, rarNumber(3) + "time")}})}) {
        for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
            std::string bytes = whole;
            bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ 1 << bit % 8);
            EXPECT_FALSE(exhaust(bytes).faultless) << bit;
        }
    }
}

TEST(RarDamage, OfPackedBytesEndsInACode) {
    // Headers stay right, so that the decoders see all that may come.
    std::mt19937 random(99);
    for (int round = 0; round < 1000; ++round) {
        std::string packed(1 + random() % 300, '\0');
        for (char& byte : packed) byte = static_cast<char>(random());
        const auto method = static_cast<std::uint8_t>(1 + random() % 5);
        const std::uint32_t size = 1 + random() % 100000;
        EXPECT_FALSE(exhaust(oldRar({{.name = "a",
                                      .packed = packed,
                                      .method = static_cast<std::uint8_t>(0x30 + method),
                                      .originalSize = size,
                                      .crc = 1}}))
                         .faultless);
        EXPECT_FALSE(exhaust(newRar({{.name = "a",
                                      .packed = packed,
                                      .compression = static_cast<std::uint64_t>(method) << 7,
                                      .originalSize = size,
                                      .crc = 1}}))
                         .faultless);
    }
}

TEST(RarDamage, OfSizesTakesNoMemory) {
    const std::uint64_t huge = std::uint64_t{1} << 61;
    EXPECT_FALSE(exhaust(newRar({{.name = "a", .content = "x", .originalSize = huge}})).faultless);
    EXPECT_FALSE(exhaust(newRar({{.name = "a", .content = "x", .compression = 1 << 7 | 9 << 10, .originalSize = huge}}))
                     .faultless);
    EXPECT_FALSE(
        exhaust(oldRar({{.name = "a", .content = "x", .method = 0x33, .originalSize = 0xFFFFFFFF}})).faultless);
}

TEST(RarDamage, OfRandomBytesIsNoArchive) {
    std::mt19937 random(12345);
    for (int round = 0; round < 20; ++round) {
        std::string bytes(random() % 200000, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        EXPECT_EQ(openRar(inMemory(bytes), {}).code, kFileStyle);
    }
}

}  // namespace
}  // namespace archiver::test
