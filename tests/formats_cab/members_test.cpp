#include <gtest/gtest.h>

#include "archivers/formats/cab/cab_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_cab/support/cab_builder.h"

namespace archiver::test {
namespace {

Listing listingOf(const Cabinet& cabinet) { return walk(openCab(inMemory(cabinetBytes(cabinet)), {})); }

Member memberOf(const CabMember& member) {
    const Listing listing = listingOf({.folders = {{.members = {member}}}});
    EXPECT_EQ(listing.members.size(), 1U);
    return listing.members.empty() ? Member{} : listing.members[0];
}

TEST(CabMembers, KeepTheirSeparators) {
    EXPECT_EQ(memberOf({.name = "dir\\a.txt"}).name, "dir\\a.txt");
    EXPECT_EQ(memberOf({.name = "dir/a.txt"}).name, "dir/a.txt");
    EXPECT_EQ(memberOf({.name = "..\\a.txt"}).name, "..\\a.txt");
}

TEST(CabMembers, MayHaveNamesInUtf8) {
    EXPECT_EQ(memberOf({.name = "gr\xC3\xBC\xC3\x9F", .attributes = 0xA0}).name, "gr\xC3\xBC\xC3\x9F");
}

TEST(CabMembers, HaveOtherNamesInTheAnsiPage) {
    if (!westernCodePages()) GTEST_SKIP();
    EXPECT_EQ(memberOf({.name = "gr\xFC\xDF"}).name, "gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(memberOf({.name = "\xC3\xBC"}).name, "\xC3\x83\xC2\xBC");
    EXPECT_EQ(memberOf({.name = "\xFC", .attributes = 0xA0}).name, "\xC3\xBC");
}

TEST(CabMembers, HaveDosTimesAndAttributes) {
    const Member member = memberOf({.name = "a", .attributes = 0x67});
    EXPECT_EQ(member.dosDate, 0x2AB1);
    EXPECT_EQ(member.dosTime, 0x8BDD);
    EXPECT_EQ(member.attributes, 0x27);
    EXPECT_EQ(member.method, "None");
    const Member last = memberOf({.name = "a", .date = 0xFFFF, .time = 0xFFFF});
    EXPECT_EQ(last.dosDate, 0xFFFF);
    EXPECT_EQ(last.dosTime, 0xFFFF);
}

TEST(CabMembers, MayStandForFolders) {
    EXPECT_EQ(memberOf({.name = "dir\\"}).attributes, attribute::kFolder | attribute::kArchive);
    EXPECT_EQ(memberOf({.name = "dir\\", .content = "1"}).attributes, attribute::kArchive);
}

TEST(CabMembers, ShareThePackedBytesOfTheirFolder) {
    CabFolder packed{
        .members = {{.name = "a", .content = std::string(100, 'a')}, {.name = "b", .content = std::string(300, 'b')}},
        .method = 1,
        .blocks = std::vector<CabBlock>{{std::string(200, 'x'), 400}}};
    const Listing listing = listingOf({.folders = {packed, {.members = {{.name = "c", .content = "content"}}}}});
    ASSERT_EQ(listing.members.size(), 3U);
    EXPECT_EQ(listing.members[0].packedSize, 50U);
    EXPECT_EQ(listing.members[1].packedSize, 150U);
    EXPECT_EQ(listing.members[2].packedSize, 7U);
}

TEST(CabMembers, ComeInTheOrderOfTheirData) {
    const Cabinet cabinet{.folders = {{.members = {{.name = "second", .content = "abc", .offset = 3},
                                                   {.name = "first", .content = "def", .offset = 0}}}}};
    const OpenResult opened = openCab(inMemory(cabinetBytes(cabinet)), {});
    EXPECT_EQ(walk(*opened.reader).names(), (std::vector<std::string>{"first", "second"}));
    EXPECT_EQ(unpack(*opened.reader, "first").bytes, "abc");
    EXPECT_EQ(unpack(*opened.reader, "second").bytes, "def");
}

TEST(CabMembers, OfAnUnknownMethodAreListed) {
    const Cabinet cabinet{.folders = {{.members = {{.name = "a", .content = "1"}}, .method = 5}}};
    const OpenResult opened = openCab(inMemory(cabinetBytes(cabinet)), {});
    EXPECT_EQ(walk(*opened.reader).members.at(0).method, "Unknown");
    EXPECT_EQ(unpack(*opened.reader, "a").code, kMethod);
}

TEST(CabMembers, WithAWindowThatNoneHasAreRefused) {
    const Cabinet cabinet{.folders = {{.members = {{.name = "a", .content = "1"}}, .method = 0x1F03}}};
    const OpenResult opened = openCab(inMemory(cabinetBytes(cabinet)), {});
    EXPECT_EQ(unpack(*opened.reader, "a").code, kMethod);
}

}  // namespace
}  // namespace archiver::test
