#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>

#include "archivers/formats/lzh/lzh_reader.h"
#include "formats/support/damage.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_lzh/support/lzh_builder.h"

/// Archives that are no longer what they were.
namespace archiver::test {
namespace {

/// Lists and unpacks everything.
Outcome exhaust(const std::string& bytes) { return test::exhaust(openLzh(inMemory(bytes)), bytes.size() / 22); }

void expectCutsToShow(const std::string& whole, std::size_t step) {
    const Outcome good = exhaust(whole);
    for (std::size_t size = 0; size < whole.size(); size += step) {
        const Outcome outcome = exhaust(whole.substr(0, size));
        // Only where a member ends can nothing be missed: the end mark need not be there.
        if (!outcome.faultless) continue;
        for (const auto& [name, bytes] : outcome.contents) {
            ASSERT_TRUE(good.contents.contains(name)) << size;
            EXPECT_TRUE(bytes == good.contents.at(name)) << size;
        }
    }
}

void expectFlipsToShow(const std::string& whole, std::size_t step) {
    const Outcome good = exhaust(whole);
    for (std::size_t at = 0; at < whole.size(); at += step) {
        for (const int bits : {0x01, 0x80, 0xFF}) {
            std::string bytes = whole;
            bytes[at] = static_cast<char>(bytes[at] ^ bits);
            const Outcome outcome = exhaust(bytes);
            if (!outcome.faultless || outcome.contents == good.contents) continue;
            // A name that nothing checks, a method that is one of several that store: the data is still the same.
            for (const auto& [name, content] : outcome.contents) {
                const bool known = std::any_of(good.contents.begin(), good.contents.end(),
                                               [&](const auto& each) { return each.second == content; });
                EXPECT_TRUE(known) << at << ' ' << bits;
            }
        }
    }
}

constexpr const char* kFixtures[] = {"lh1.lzh",        "lh4.lzh",
                                     "lh5-level3.lzh", "lh6-level2.lzh",
                                     "lh7-level1.lzh", "lz4.lzs",
                                     "lz5.lzs",        "lzs.lzs",
                                     "pm0.pma",        "pm1.pma",
                                     "pm2.pma",        "mac-lh5-level1.lzh",
                                     "osk-level2.lzh", "unix-folders-level1.lzh"};

TEST(LzhDamage, CutsShow) {
    for (const char* name : kFixtures) {
        SCOPED_TRACE(name);
        expectCutsToShow(readFile(dataFile(std::string("lzh/") + name)), 97);
    }
}

TEST(LzhDamage, FlippedBytesShow) {
    for (const char* name : kFixtures) {
        SCOPED_TRACE(name);
        expectFlipsToShow(readFile(dataFile(std::string("lzh/") + name)), 101);
    }
}

TEST(LzhDamage, OfCheckedHeadersNeverGoesUnnoticed) {
    for (const int level : {0, 1, 2, 3}) {
        LzhFile file{.name = "a.txt", .content = "content", .level = level, .extended = {{0x3F, "comment"}}};
        file.headerCrc = level > 0;
        const std::string whole = lzhArchive({file});
        // The mark of the extended header that holds the CRC; without it there is none to check.
        const std::size_t mark = level == 1 ? 32 : level == 2 ? 26 : 32;
        for (std::size_t bit = 0; bit < (whole.size() - 1) * 8; ++bit) {
            if (level > 0 && bit / 8 == mark) continue;
            std::string bytes = whole;
            bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ 1 << bit % 8);
            EXPECT_FALSE(exhaust(bytes).faultless) << level << ' ' << bit;
        }
    }
}

TEST(LzhDamage, OfPackedDataEndsInACode) {
    std::mt19937 random(99);
    constexpr const char* kMethods[] = {"-lh1-", "-lh4-", "-lh5-", "-lh6-", "-lh7-",
                                        "-lhx-", "-lz5-", "-lzs-", "-pm1-", "-pm2-"};
    for (int round = 0; round < 3000; ++round) {
        std::string packed(random() % 200, '\0');
        for (char& byte : packed) byte = static_cast<char>(random());
        const std::string bytes = lzhArchive({{.name = "a",
                                               .method = kMethods[random() % std::size(kMethods)],
                                               .packed = packed,
                                               .originalSize = 1 + random() % 100000,
                                               .crc = 1}});
        const OpenResult opened = openLzh(inMemory(bytes));
        Member member;
        ASSERT_EQ(opened.reader->next(member), kOk);
        const Unpacked unpacked = unpack(*opened.reader);
        EXPECT_TRUE(unpacked.code == kHuffmanCode || unpacked.code == kFileCrc) << unpacked.code;
        EXPECT_EQ(opened.reader->next(member), kNoMoreEntries);
    }
}

TEST(LzhDamage, OfRandomBytesAreNoArchives) {
    std::mt19937 random(12345);
    for (int round = 0; round < 20; ++round) {
        std::string bytes(random() % 200000, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        EXPECT_EQ(openLzh(inMemory(bytes)).code, kFileStyle);
    }
}

TEST(LzhDamage, InSamplesShows) {
    const char* const folder = std::getenv("TOVAREX_SAMPLES");
    if (folder == nullptr || *folder == '\0') GTEST_SKIP();
    const std::string whole = readFile(std::filesystem::path(folder) / "made" / "lh5.lzh");
    expectCutsToShow(whole, 97 * 3);
    expectFlipsToShow(whole, 101 * 3);
}

}  // namespace
}  // namespace archiver::test
