#include <gtest/gtest.h>

#include "archivers/formats/arj/arj_reader.h"
#include "archivers/formats/arj/volume_set.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/arj_builder.h"

/// Sets of several volumes.
namespace archiver::test {
namespace {

constexpr std::uint8_t kMoreFollow = 0x04;
constexpr std::uint8_t kContinued = 0x14;
constexpr std::uint8_t kContinuing = 0x18;
constexpr std::uint8_t kBoth = 0x1C;

using Names = std::vector<std::string>;

std::string volume(const std::vector<ArjFile>& files, bool last = false) {
    return arjArchive({.flags = last ? std::uint8_t{0} : kMoreFollow}, files);
}

ArjFile part(std::string name, std::string content, std::uint8_t flags, std::uint32_t position) {
    return {
        .name = std::move(name), .content = std::move(content), .firstPart = 34, .flags = flags, .position = position};
}

/// "one", then "split" over three volumes, then "two" and "three"; "end" in a volume of its own.
class ArjVolumes : public testing::Test {
protected:
    void SetUp() override {
        write("set.arj", volume({{.name = "one", .content = "1"}, part("split", "abc", kContinued, 0)}));
        write("set.a01", volume({part("split", "defg", kBoth, 3)}));
        write("set.a02", volume({part("split", "hi", kContinuing, 7),
                                 {.name = "two", .content = "2"},
                                 {.name = "three", .content = "3"}}));
        write("set.a03", volume({{.name = "end", .content = "4"}}, true));
    }

    void write(const char* name, std::string_view bytes) const { folder_.write(name, bytes); }
    void remove(const char* name) const { std::filesystem::remove(folder_.path() / name); }
    [[nodiscard]] OpenResult open(const char* name = "set.arj") const { return openArj(folder_.path() / name); }

    const TemporaryFolder folder_;
};

TEST_F(ArjVolumes, AreOneArchive) {
    const OpenResult archive = open();
    ASSERT_TRUE(archive.reader);
    const Listing listing = walk(*archive.reader);
    EXPECT_EQ(listing.names(), (Names{"one", "split", "two", "three", "end"}));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    for (const auto& [name, content] : {std::pair{"one", "1"}, {"split", "abcdefghi"}, {"two", "2"}, {"end", "4"}}) {
        const Unpacked unpacked = unpack(*archive.reader, name);
        EXPECT_EQ(unpacked.code, kOk) << name;
        EXPECT_EQ(unpacked.bytes, content);
    }
}

TEST_F(ArjVolumes, MakeOneMemberOfItsParts) {
    const Listing listing = walk(open());
    ASSERT_EQ(listing.members.size(), 5U);
    const Member& split = listing.members[1];
    EXPECT_EQ(split.originalSize, 9U);
    EXPECT_EQ(split.packedSize, 9U);
    EXPECT_EQ(split.crc, crc32OneBitAtATime("abcdefghi"));
}

TEST_F(ArjVolumes, AreReadWhileTheyAreWalked) {
    const OpenResult archive = open();
    Member member;
    std::string all;
    while (archive.reader->next(member) == kOk) all += unpack(*archive.reader).bytes;
    EXPECT_EQ(all, "1abcdefghi234");
}

TEST_F(ArjVolumes, MayBeWalkedAgain) {
    const OpenResult archive = open();
    const Names expected{"one", "split", "two", "three", "end"};
    EXPECT_EQ(walk(*archive.reader).names(), expected);
    EXPECT_EQ(archive.reader->restart(), kOk);
    Member member;
    for (int count = 0; count < 3; ++count) EXPECT_EQ(archive.reader->next(member), kOk);
    EXPECT_EQ(archive.reader->restart(), kOk);
    EXPECT_EQ(walk(*archive.reader).names(), expected);
}

TEST_F(ArjVolumes, ThatAreMissingEndTheWalk) {
    remove("set.a03");
    const Listing listing = walk(open());
    EXPECT_EQ(listing.names(), (Names{"one", "split", "two", "three"}));
    EXPECT_EQ(listing.end, kArcFileOpen);
}

TEST_F(ArjVolumes, ThatAreMissingLeaveTheMemberListed) {
    remove("set.a02");
    const OpenResult archive = open();
    const Listing listing = walk(*archive.reader);
    EXPECT_EQ(listing.names(), (Names{"one", "split"}));
    EXPECT_EQ(listing.end, kArcFileOpen);
    EXPECT_EQ(listing.members[1].originalSize, 7U) << "of the parts that are there";
    const Unpacked unpacked = unpack(*archive.reader, "split");
    EXPECT_EQ(unpacked.code, kArcFileOpen);
    EXPECT_EQ(unpacked.bytes, "");
    EXPECT_EQ(unpack(*archive.reader, "one").bytes, "1");
}

TEST_F(ArjVolumes, ThatAreMissingAreBridgedByTheWholeSize) {
    ArjFile first = part("split", "abc", kContinued, 0);
    first.firstPart = 46;
    first.wholeSize = 1234;
    write("set.arj", volume({first}));
    remove("set.a01");
    const Listing listing = walk(open());
    ASSERT_EQ(listing.members.size(), 1U);
    EXPECT_EQ(listing.members[0].originalSize, 1234U);
}

TEST_F(ArjVolumes, NeedNoFlagInTheMainHeaderWhenAMemberGoesOn) {
    write("set.arj", volume({part("split", "abc", kContinued, 0)}, true));
    EXPECT_EQ(walk(open()).names(), (Names{"split", "two", "three", "end"}));
}

TEST_F(ArjVolumes, MayBeginInTheMiddle) {
    const OpenResult archive = open("set.a02");
    ASSERT_TRUE(archive.reader);
    const Listing listing = walk(*archive.reader);
    EXPECT_EQ(listing.names(), (Names{"split", "two", "three", "end"}));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    EXPECT_EQ(unpack(*archive.reader, "split").code, kCannotRead);
    EXPECT_EQ(unpack(*archive.reader, "three").bytes, "3");
}

TEST_F(ArjVolumes, OfAnotherSetDoNotFit) {
    write("set.a01", volume({part("other", "defg", kBoth, 3)}));
    const OpenResult archive = open();
    EXPECT_EQ(unpack(*archive.reader, "split").code, kCannotRead);
    write("set.a01", volume({part("split", "defg", kBoth, 4)}));
    EXPECT_EQ(unpack(*open().reader, "split").code, kCannotRead) << "another place";
    write("set.a01", volume({part("split", "defg", 0x10, 3)}));
    EXPECT_EQ(unpack(*open().reader, "split").code, kCannotRead) << "no part of anything";
}

TEST_F(ArjVolumes, ThatAreDamagedSaySo) {
    write("set.a01", "no archive");
    const OpenResult archive = open();
    EXPECT_EQ(unpack(*archive.reader, "split").code, kHeaderBroken);
    archive.reader->restart();
    EXPECT_EQ(walk(*archive.reader).end, kHeaderBroken);
    write("set.a01", volume({}));
    EXPECT_EQ(unpack(*open().reader, "split").code, kHeaderBroken);
}

TEST_F(ArjVolumes, TellWhichPartIsWrong) {
    ArjFile second = part("split", "defg", kBoth, 3);
    second.crc = 1;
    write("set.a01", volume({second}));
    const Unpacked unpacked = unpack(*open().reader, "split");
    EXPECT_EQ(unpacked.code, kFileCrc);
    EXPECT_EQ(unpacked.bytes, "abcdefg");
}

TEST_F(ArjVolumes, MayBeGarbled) {
    constexpr std::uint8_t kGarbled = 0x01;
    ArjFile first = part("split", "abc", kContinued | kGarbled, 0);
    first.packed = garbled("abc", "secret", 9);
    first.modifier = 9;
    ArjFile second = part("split", "defg", kContinuing | kGarbled, 3);
    second.packed = garbled("defg", "secret", 77);
    second.modifier = 77;
    write("set.arj", volume({first}));
    write("set.a01", volume({second}, true));
    const OpenResult archive = open();
    EXPECT_EQ(unpack(*archive.reader, "split").code, kPasswordFile);
    static_cast<ArjArchive&>(*archive.reader).setPassword("secret");
    EXPECT_EQ(unpack(*archive.reader, "split").bytes, "abcdefg");
}

TEST_F(ArjVolumes, OfASelfExtractorFollowIt) {
    write("setup.exe", "MZ program" + volume({{.name = "one", .content = "1"}}));
    write("setup.a01", volume({{.name = "two", .content = "2"}}, true));
    EXPECT_EQ(walk(open("setup.exe")).names(), (Names{"one", "two"}));
}

TEST_F(ArjVolumes, MayHaveNamesInAnyCase) {
    write("UPPER.ARJ", volume({{.name = "one"}}));
    write("UPPER.A01", volume({{.name = "two"}}));
    write("UPPER.a02", volume({{.name = "three"}}, true));
    EXPECT_EQ(walk(open("UPPER.ARJ")).names(), (Names{"one", "two", "three"}));
}

TEST_F(ArjVolumes, HaveTheirOwnChapters) {
    write("set.arj", volume({{.name = "one", .firstChapter = 1, .lastChapter = 1}}));
    write("set.a01", arjArchive({.lastChapter = 2}, {{.name = "old", .firstChapter = 1, .lastChapter = 1},
                                                     {.name = "new", .firstChapter = 2, .lastChapter = 2}}));
    remove("set.a02");
    EXPECT_EQ(walk(open()).names(), (Names{"one", "new"}));
}

TEST_F(ArjVolumes, GoOnBehindNumber99) {
    for (int number = 0; number < 103; ++number) {
        const std::string text = std::to_string(number);
        const std::string extension = number == 0    ? "arj"
                                      : number < 10  ? "a0" + text
                                      : number < 100 ? "a" + text
                                                     : text;
        write(("many." + extension).c_str(), volume({{.name = text}}, number == 102));
    }
    const Listing listing = walk(open("many.arj"));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    ASSERT_EQ(listing.members.size(), 103U);
    EXPECT_EQ(listing.members[102].name, "102");
}

TEST_F(ArjVolumes, MayHoldOneMemberInAllOfThem) {
    std::string content;
    for (int number = 0; number < 60; ++number) {
        const std::string text = "part " + std::to_string(number) + ';';
        const std::string extension = number == 0 ? "arj" : (number < 10 ? "a0" : "a") + std::to_string(number);
        const std::uint8_t flags = number == 0 ? kContinued : number == 59 ? kContinuing : kBoth;
        write(("one." + extension).c_str(),
              volume({part("all", text, flags, static_cast<std::uint32_t>(content.size()))}, number == 59));
        content += text;
    }
    const OpenResult archive = open("one.arj");
    const Listing listing = walk(*archive.reader);
    EXPECT_EQ(listing.names(), Names{"all"});
    EXPECT_EQ(listing.end, kNoMoreEntries);
    EXPECT_EQ(unpack(*archive.reader, "all").bytes, content);
}

TEST(ArjVolumesWithoutAName, AreNotLookedFor) {
    const OpenResult archive = openArj(inMemory(volume({part("split", "abc", kContinued, 0)})), {});
    EXPECT_EQ(unpack(*archive.reader, "split").code, kArcFileOpen);
    EXPECT_EQ(walk(*archive.reader).end, kArcFileOpen);
}

struct VolumeName {
    const char* first;
    std::size_t index;
    const char* expected;
    const char* otherCase;
};

TEST(ArjVolumeNames, CountOn) {
    for (const VolumeName& each : {
             VolumeName{"dir.x/a.arj", 1, "dir.x/a.a01", "dir.x/a.A01"},
             VolumeName{"a.ARJ", 9, "a.A09", "a.a09"},
             VolumeName{"a.arj", 10, "a.a10", "a.A10"},
             VolumeName{"a.arj", 99, "a.a99", "a.A99"},
             VolumeName{"a.arj", 100, "a.100", "a.100"},
             VolumeName{"a.arj", 999, "a.999", "a.999"},
             VolumeName{"a.arj", 1000, "", ""},
             VolumeName{"a.exe", 1, "a.a01", "a.A01"},
             VolumeName{"a.EXE", 1, "a.A01", "a.a01"},
             VolumeName{"a", 1, "a.a01", "a.A01"},
             VolumeName{"a.b.c", 2, "a.b.a02", "a.b.A02"},
             VolumeName{"a.a05", 1, "a.a06", "a.A06"},
             VolumeName{"a.A98", 2, "a.100", "a.100"},
             VolumeName{"a.100", 1, "a.101", "a.101"},
             VolumeName{"a.998", 2, "", ""},
             VolumeName{"a.001", 1, "a.a01", "a.A01"},
             VolumeName{"a.b05", 1, "a.a01", "a.A01"},
             VolumeName{"a.a5", 1, "a.a01", "a.A01"},
             VolumeName{"a.a055", 1, "a.a01", "a.A01"},
             VolumeName{"", 1, "", ""},
         }) {
        EXPECT_EQ(arj::volumePath(each.first, each.index, false), each.expected) << each.first << each.index;
        EXPECT_EQ(arj::volumePath(each.first, each.index, true), each.otherCase) << each.first << each.index;
    }
    EXPECT_EQ(arj::volumePath("a.arj", ~std::size_t{0}, false), "");
}

}  // namespace
}  // namespace archiver::test
