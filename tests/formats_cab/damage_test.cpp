#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>

#include "archivers/formats/cab/cab_reader.h"
#include "formats/support/damage.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_cab/support/cab_builder.h"

/// Cabinets that are no longer what they were.
namespace archiver::test {
namespace {

/// Lists and unpacks everything.
Outcome exhaust(const std::string& bytes) {
    Outcome outcome = test::exhaust(openCab(inMemory(bytes), {}), bytes.size() / 18);
    if (outcome.opened) {
        EXPECT_EQ(outcome.end, kNoMoreEntries);
    }
    return outcome;
}

void expectCutsToShow(const std::string& whole, std::size_t step) {
    for (std::size_t size = 0; size < whole.size(); size += step) {
        EXPECT_FALSE(exhaust(whole.substr(0, size)).faultless) << size;
    }
}

/// Blocks have checksums, headers have none: what is unpacked without an error is as it was from the data on.
void expectFlipsToShow(const std::string& whole, std::size_t dataStart, std::size_t step) {
    const Outcome good = exhaust(whole);
    ASSERT_TRUE(good.faultless);
    for (std::size_t at = 0; at < whole.size(); at += step) {
        for (const int bits : {0x01, 0x80, 0xFF}) {
            std::string bytes = whole;
            bytes[at] = static_cast<char>(bytes[at] ^ bits);
            const Outcome outcome = exhaust(bytes);
            if (at >= dataStart && outcome.faultless) {
                EXPECT_EQ(outcome.contents, good.contents) << at << ' ' << bits;
            }
            for (const auto& [name, content] : outcome.contents) {
                if (at < dataStart) break;
                EXPECT_EQ(content, good.contents.at(name)) << at << ' ' << bits;
            }
        }
    }
}

TEST(CabDamage, CutsShow) {
    for (const char* name : {"cab/mszip_lzx_qtm.cab", "cab/normal_2files_2folders.cab"}) {
        SCOPED_TRACE(name);
        expectCutsToShow(readFile(dataFile(name)), 1);
    }
    expectCutsToShow(cabinetBytes({.folders = {{.members = {{.name = "a", .content = std::string(70000, 'a')}}}}}), 97);
}

TEST(CabDamage, FlippedBytesShow) {
    expectFlipsToShow(readFile(dataFile("cab/mszip_lzx_qtm.cab")), 0x86, 1);
    const Cabinet large{.folders = {{.members = {{.name = "a", .content = std::string(70000, 'a')}}}}};
    const std::string bytes = cabinetBytes(large);
    expectFlipsToShow(bytes, bytes.find('\0', 36 + 8 + 16) + 1, 101);
}

TEST(CabDamage, OfPackedDataEndsInACode) {
    std::mt19937 random(99);
    for (int round = 0; round < 1500; ++round) {
        std::string packed(1 + random() % 200, '\0');
        for (char& byte : packed) byte = static_cast<char>(random());
        constexpr std::uint16_t kMethods[] = {1, 0x0F03, 0x1503, 0x0A02, 0x1502};
        const std::uint16_t method = kMethods[random() % std::size(kMethods)];
        if (method == 1) packed = "CK" + packed;
        const auto size = static_cast<std::uint16_t>(1 + random() % 32768);
        const OpenResult opened =
            openCab(inMemory(cabinetBytes({.folders = {{.members = {{.name = "a", .length = size}},
                                                        .method = method,
                                                        .blocks = std::vector<CabBlock>{{packed, size}}}}})),
                    {});
        ASSERT_EQ(opened.code, kOk);
        Member member;
        ASSERT_EQ(opened.reader->next(member), kOk);
        EXPECT_LE(unpack(*opened.reader).bytes.size(), size);
        EXPECT_EQ(opened.reader->next(member), kNoMoreEntries);
    }
}

TEST(CabDamage, OfRandomBytesAreNoArchives) {
    std::mt19937 random(12345);
    for (int round = 0; round < 20; ++round) {
        std::string bytes(random() % 200000, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        EXPECT_EQ(openCab(inMemory(bytes), {}).code, kFileStyle);
    }
}

TEST(CabDamage, InSamplesShows) {
    const char* const folder = std::getenv("TOVAREX_SAMPLES");
    if (folder == nullptr || *folder == '\0') GTEST_SKIP();
    const std::string whole = readFile(std::filesystem::path(folder) / "made" / "mszip.cab");
    expectCutsToShow(whole, 97 * 23);
    expectFlipsToShow(whole, 400, 101 * 23);
}

}  // namespace
}  // namespace archiver::test
