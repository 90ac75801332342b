#include "archivers/convention/entry_record.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "convention/fake_archive.h"

namespace archiver {
namespace {

using testing::file;

constexpr LibraryDescription kSlash{.prefix = "Fake", .version = 100};
constexpr LibraryDescription kLetters{
    .prefix = "Fake", .version = 100, .attributeStyle = AttributeStyle::kLetters, .separator = '\\'};

/// A record between guard bytes, every byte wrong at first.
struct Guarded {
    Guarded() { std::memset(this, 0xA5, sizeof *this); }
    [[nodiscard]] bool guardsHold() const {
        const std::string guard(sizeof before, '\xA5');
        return std::memcmp(before, guard.data(), guard.size()) == 0 &&
               std::memcmp(after, guard.data(), guard.size()) == 0;
    }
    char before[16];
    IndividualInfo info;
    char after[16];
};

/// Whether a text field is zero from its NUL to its end.
template <std::size_t kSize>
bool isDefined(const char (&field)[kSize]) {
    const std::size_t length = ::strnlen(field, kSize);
    return length < kSize && std::string(field + length, kSize - length) == std::string(kSize - length, '\0');
}

TEST(FillRecord, CopiesEveryField) {
    Guarded record;
    fillRecord(file("docs/read me.txt").member, kSlash, utf8Codec(), record.info);
    EXPECT_EQ(record.info.originalSize, 1000U);
    EXPECT_EQ(record.info.compressedSize, 250U);
    EXPECT_EQ(record.info.crc, 0x1A2B3C4DU);
    EXPECT_EQ(record.info.flag, 0U);
    EXPECT_EQ(record.info.osType, 2U);
    EXPECT_EQ(record.info.ratio, 250);
    EXPECT_EQ(record.info.date, 0x2AB1);
    EXPECT_EQ(record.info.time, 0x8BDD);
    EXPECT_STREQ(record.info.fileName, "docs/read me.txt");
    EXPECT_STREQ(record.info.attribute, "a--w");
    EXPECT_STREQ(record.info.mode, "Deflate");
    EXPECT_TRUE(record.guardsHold());
}

TEST(FillRecord, LeavesNoByteUndefined) {
    Guarded record;
    fillRecord(file("a").member, kSlash, utf8Codec(), record.info);
    EXPECT_TRUE(isDefined(record.info.fileName));
    EXPECT_TRUE(isDefined(record.info.attribute));
    EXPECT_TRUE(isDefined(record.info.mode));
    EXPECT_EQ(std::string(record.info.padding, 3), std::string(3, '\0'));
}

TEST(FillRecord, CutsALongName) {
    Guarded record;
    fillRecord(file(std::string(512, 'n')).member, kSlash, utf8Codec(), record.info);
    EXPECT_EQ(std::string(record.info.fileName), std::string(512, 'n'));
    fillRecord(file(std::string(40000, 'n')).member, kSlash, utf8Codec(), record.info);
    EXPECT_EQ(std::string(record.info.fileName), std::string(512, 'n'));
    EXPECT_TRUE(record.guardsHold());
    EXPECT_EQ(std::string(record.info.padding, 3), std::string(3, '\0'));
}

TEST(FillRecord, CutsALongNameAtACharacter) {
    Guarded record;
    fillRecord(file(std::string(511, 'n') + "\xC3\xA4").member, kSlash, utf8Codec(), record.info);
    EXPECT_EQ(std::string(record.info.fileName), std::string(511, 'n'));
    EXPECT_TRUE(isDefined(record.info.fileName));
}

TEST(FillRecord, CutsALongMethod) {
    testing::FakeArchive::FakeMember made = file("a");
    made.member.method = "Deflated";
    Guarded record;
    fillRecord(made.member, kSlash, utf8Codec(), record.info);
    EXPECT_STREQ(record.info.mode, "Deflate");
    EXPECT_TRUE(record.guardsHold());
}

TEST(FillRecord, ClampsSizes) {
    testing::FakeArchive::FakeMember made = file("a");
    made.member.originalSize = 0xFFFFFFFF;
    made.member.packedSize = 0x100000000;
    Guarded record;
    fillRecord(made.member, kSlash, utf8Codec(), record.info);
    EXPECT_EQ(record.info.originalSize, 0xFFFFFFFFU);
    EXPECT_EQ(record.info.compressedSize, 0xFFFFFFFFU);
    EXPECT_EQ(record.info.ratio, 1000);
}

TEST(FillRecord, WritesTheSeparatorOfTheLibrary) {
    Guarded record;
    fillRecord(file("a/b\\c/").member, kLetters, utf8Codec(), record.info);
    EXPECT_STREQ(record.info.fileName, "a\\b\\c\\");
    fillRecord(file("a/b\\c/").member, kSlash, utf8Codec(), record.info);
    EXPECT_STREQ(record.info.fileName, "a/b\\c/");
}

struct AttributeCase {
    const char* name;
    std::uint8_t bits;
    const char* folderFirst;
    const char* letters;
};

class AttributeText : public ::testing::TestWithParam<AttributeCase> {};

TEST_P(AttributeText, HasAPlaceForEach) {
    testing::FakeArchive::FakeMember made = file("a");
    made.member.attributes = GetParam().bits;
    Guarded record;
    fillRecord(made.member, kSlash, utf8Codec(), record.info);
    EXPECT_STREQ(record.info.attribute, GetParam().folderFirst);
    fillRecord(made.member, kLetters, utf8Codec(), record.info);
    EXPECT_STREQ(record.info.attribute, GetParam().letters);
}

INSTANTIATE_TEST_SUITE_P(
    Bits, AttributeText,
    ::testing::Values(AttributeCase{"None", 0x00, "---w", "----"}, AttributeCase{"ReadOnly", 0x01, "----", "---R"},
                      AttributeCase{"Hidden", 0x02, "--hw", "--H-"}, AttributeCase{"System", 0x04, "-s-w", "-S--"},
                      AttributeCase{"Folder", 0x10, "d--w", "----"}, AttributeCase{"Archive", 0x20, "a--w", "A---"},
                      AttributeCase{"FolderAndArchive", 0x30, "d--w", "A---"},
                      AttributeCase{"All", 0x37, "dsh-", "ASHR"}),
    [](const auto& each) { return std::string(each.param.name); });

struct RatioCase {
    const char* name;
    std::uint64_t packed, original;
    std::uint16_t expected;
};

class RatioOf : public ::testing::TestWithParam<RatioCase> {};

TEST_P(RatioOf, IsPerMille) { EXPECT_EQ(ratioOf(GetParam().packed, GetParam().original), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(
    Sizes, RatioOf,
    ::testing::Values(
        RatioCase{"Empty", 0, 0, 0}, RatioCase{"PackedOfNothing", 12, 0, 0}, RatioCase{"Half", 50, 100, 500},
        RatioCase{"RoundsDown", 2, 3, 666}, RatioCase{"SameSize", 7, 7, 1000}, RatioCase{"Grown", 101, 100, 1010},
        RatioCase{"HighestIn32Bits", 4294967, 4294968, 999}, RatioCase{"Above32Bits", 4294968, 8589936, 500},
        RatioCase{"PackedAbove4Mb", 5000000, 10000000, 500}, RatioCase{"Large", 3000000000, 4000000000, 750},
        RatioCase{"Above4Gb", 6000000000000, 8000000000000, 750}, RatioCase{"AtTheClamp", 32767, 1000, 32767},
        RatioCase{"AboveTheClamp", 32768, 1000, 32767}, RatioCase{"FarAboveTheClamp", 4000000, 1, 32767},
        RatioCase{"ClaimsOfExabytes", UINT64_MAX, UINT64_MAX, 1000},
        RatioCase{"HalfOfExabytes", UINT64_MAX / 2, UINT64_MAX, 499}, RatioCase{"ExabytesOfOne", UINT64_MAX, 1, 32767},
        RatioCase{"OneOfExabytes", 1, UINT64_MAX, 0}),
    [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace archiver
