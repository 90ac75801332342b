#include <gtest/gtest.h>

#include "archivers/formats/zip/zip_reader.h"
#include "formats/support/allocations.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/zip_builder.h"

/// Archives that zip, 7zz and Python made, beside what 7zz says of them.
namespace archiver::test {
namespace {

std::vector<std::string> listed(const Listing& listing) {
    std::vector<std::string> result;
    for (const Member& member : listing.members) result.push_back(zipLine(member));
    return result;
}

class ZipListing : public testing::TestWithParam<const char*> {};

TEST_P(ZipListing, IsWhatTheOtherProgramSays) {
    const std::string name = std::string("zip/") + GetParam() + ".zip";
    const std::vector<std::string> expected = lines(readFile(dataFile(name + ".txt")));
    ASSERT_FALSE(expected.empty());
    const Listing listing = walk(openZip(dataFile(name)));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    EXPECT_EQ(listed(listing), expected);
}

INSTANTIATE_TEST_SUITE_P(Archives, ZipListing,
                         testing::Values("zip", "zip64", "stream", "comment", "7zz", "methods", "utf8", "trailing",
                                         "adjusted", "python", "zipcrypto", "aes"),
                         [](const auto& each) { return "Of_" + std::string(each.param); });

TEST(ZipListing, OfAnArchiveWithBytesPutInFront) {
    const auto expected = lines(readFile(dataFile("zip/zip.zip.txt")));
    EXPECT_EQ(listed(walk(openZip(dataFile("zip/prefixed.zip")))), expected);
}

TEST(ZipListing, OfAnEmptyArchive) {
    const Listing listing = walk(openZip(dataFile("zip/empty.zip")));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    EXPECT_TRUE(listing.members.empty());
}

TEST(ZipListing, RefusesTheLastOfSeveralVolumes) {
    const OpenResult opened = openZip(dataFile("zip/last-volume.zip"));
    EXPECT_FALSE(opened.reader);
    EXPECT_EQ(opened.code, kNotSupport);
}

TEST(ZipListing, GivesAttributes) {
    const Listing listing = walk(openZip(dataFile("zip/zip.zip")));
    ASSERT_EQ(listing.members.size(), 7U);
    EXPECT_EQ(listing.members[0].attributes, 0);                     // readme.txt, 755
    EXPECT_EQ(listing.members[2].attributes, attribute::kFolder);    // docs/
    EXPECT_EQ(listing.members[6].attributes, attribute::kReadOnly);  // docs/empty.txt, 444
    for (const Member& member : listing.members) EXPECT_EQ(member.osType, os_type::kUnix);
}

TEST(ZipListing, GivesTimesOfTheExtendedTimestamp) {
    const Listing listing = walk(openZip(dataFile("zip/zip.zip")));
    ASSERT_EQ(listing.members.size(), 7U);
    ASSERT_TRUE(listing.members[3].written.has_value());
    EXPECT_EQ(listing.members[3].written->seconds, 1325375998);  // 2011-12-31 23:59:58 UTC
    EXPECT_FALSE(listing.members[3].created.has_value());
    EXPECT_FALSE(listing.members[3].accessed.has_value());
}

TEST(ZipListing, GivesTimesOfTheNtfsField) {
    const Listing listing = walk(openZip(dataFile("zip/7zz.zip")));
    ASSERT_EQ(listing.members.size(), 2U);
    for (const Member& member : listing.members) {
        ASSERT_TRUE(member.written.has_value());
        EXPECT_TRUE(member.accessed.has_value());
    }
    EXPECT_EQ(listing.members[0].written->seconds, 1325375998);
    EXPECT_EQ(listing.members[1].written->seconds, 990120658);
}

TEST(ZipListing, KnowsTheArchiveAsAWhole) {
    const OpenResult plain = openZip(dataFile("zip/zip.zip"));
    ASSERT_TRUE(plain.reader);
    EXPECT_EQ(plain.reader->facts().fileSize, readFile(dataFile("zip/zip.zip")).size());
    EXPECT_EQ(plain.reader->facts().osType, os_type::kUnix);
    EXPECT_EQ(plain.reader->facts().archiveType, 0);
    EXPECT_FALSE(plain.reader->facts().selfExtracting);
    for (const char* name : {"zip/prefixed.zip", "zip/adjusted.zip"}) {
        const OpenResult prefixed = openZip(dataFile(name));
        ASSERT_TRUE(prefixed.reader);
        EXPECT_TRUE(prefixed.reader->facts().selfExtracting) << name;
        EXPECT_EQ(prefixed.reader->facts().osType, os_type::kUnix) << name;
    }
    const OpenResult empty = openZip(dataFile("zip/empty.zip"));
    ASSERT_TRUE(empty.reader);
    EXPECT_EQ(empty.reader->facts().osType, os_type::kUnknown);
}

TEST(ZipListing, StartsAgain) {
    const OpenResult opened = openZip(dataFile("zip/zip.zip"));
    ASSERT_TRUE(opened.reader);
    const auto first = listed(walk(*opened.reader));
    Member member;
    EXPECT_EQ(opened.reader->next(member), kNoMoreEntries);
    ASSERT_EQ(opened.reader->restart(), kOk);
    EXPECT_EQ(listed(walk(*opened.reader)), first);
    ASSERT_EQ(opened.reader->restart(), kOk);
    ASSERT_EQ(opened.reader->next(member), kOk);
    ASSERT_EQ(opened.reader->restart(), kOk);
    EXPECT_EQ(listed(walk(*opened.reader)), first);
}

TEST(ZipListing, TakesNoMemoryMemberByMember) {
    const std::string time = ZipBuilder::field(0x5455, std::string("\x01") + ZipBuilder::number32(5));
    ZipBuilder builder;
    for (int index = 10000; index < 20000; ++index) {
        builder.add({.name = "a name too long for a small string/" + std::to_string(index), .extra = time});
        builder.add({.name = "日本語/" + std::to_string(index) + ".txt", .flags = 0x800});
    }
    const OpenResult opened = openZip(inMemory(builder.build()));
    ASSERT_TRUE(opened.reader);
    Member member;
    for (int index = 0; index < 2; ++index) ASSERT_EQ(opened.reader->next(member), kOk);
    const std::size_t before = allocationCount();
    std::size_t members = 2;
    while (opened.reader->next(member) == kOk) ++members;
    EXPECT_EQ(allocationCount(), before);
    EXPECT_EQ(members, 20000U);
}

}  // namespace
}  // namespace archiver::test
