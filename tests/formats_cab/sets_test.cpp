#include <gtest/gtest.h>

#include "archivers/formats/cab/cab_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_cab/support/cab_builder.h"

namespace archiver::test {
namespace {

constexpr std::uint16_t kFromPrevious = 0xFFFD;
constexpr std::uint16_t kToNext = 0xFFFE;

/// "whole" in the first, "long" in both, "last" in the second; the folder goes over from one to the other in the middle
/// of a block.
Cabinet firstOfTwo() {
    return {.folders = {{.members = {{.name = "whole", .content = "whole"},
                                     {.name = "long", .content = "abcdef", .folder = kToNext}},
                         .blocks = std::vector<CabBlock>{{"wholeabc", 0}}}},
            .next = "two.cab"};
}

Cabinet secondOfTwo() {
    return {.folders = {{.members = {{.name = "long", .content = "abcdef", .offset = 5, .folder = kFromPrevious},
                                     {.name = "last", .content = "last", .offset = 11}},
                         .blocks = std::vector<CabBlock>{{"deflast", 15}}},
                        {.members = {{.name = "own", .content = "own"}}}},
            .index = 1,
            .previous = "one.cab"};
}

TEST(CabSets, AreJoinedFromEitherEnd) {
    const TemporaryFolder folder;
    const auto one = folder.write("one.cab", cabinetBytes(firstOfTwo()));
    const auto two = folder.write("two.cab", cabinetBytes(secondOfTwo()));
    for (const auto& path : {one, two}) {
        const OpenResult opened = openCab(path);
        ASSERT_EQ(opened.code, kOk);
        const Listing listing = walk(*opened.reader);
        EXPECT_EQ(listing.names(), (std::vector<std::string>{"whole", "long", "last", "own"}));
        EXPECT_EQ(listing.members.at(1).packedSize, 6U);  // of 8 and 7 bytes
        EXPECT_EQ(listing.members.at(3).packedSize, 3U);
        EXPECT_EQ(unpack(*opened.reader, "whole").bytes, "whole");
        EXPECT_EQ(unpack(*opened.reader, "long").bytes, "abcdef");
        EXPECT_EQ(unpack(*opened.reader, "last").bytes, "last");
        EXPECT_EQ(unpack(*opened.reader, "own").bytes, "own");
    }
}

TEST(CabSets, MayBeOfCabinetsThatShareNothing) {
    const TemporaryFolder folder;
    const auto one = folder.write(
        "one.cab", cabinetBytes({.folders = {{.members = {{.name = "a", .content = "1"}}}}, .next = "TWO.CAB"}));
    folder.write(
        "two.cab",
        cabinetBytes({.folders = {{.members = {{.name = "b", .content = "22"}}}}, .index = 1, .previous = "one.cab"}));
    const OpenResult opened = openCab(one);
    const Listing listing = walk(*opened.reader);
    EXPECT_EQ(listing.names(), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(listing.members.at(1).packedSize, 2U);
    EXPECT_EQ(unpack(*opened.reader, "b").bytes, "22");
}

TEST(CabSets, ThatLackTheNextGiveWhatTheyHave) {
    const TemporaryFolder folder;
    // The block that goes on is not there as a whole, so nothing of it can be had.
    Cabinet first = firstOfTwo();
    first.folders[0].blocks = std::vector<CabBlock>{{std::string(32768, 'w'), 32768}, {"abc", 0}};
    first.folders[0].members[0].content = std::string(32768, 'w');
    const OpenResult opened = openCab(folder.write("one.cab", cabinetBytes(first)));
    ASSERT_EQ(opened.code, kOk);
    EXPECT_EQ(unpack(*opened.reader, "whole").code, kOk);
    EXPECT_EQ(unpack(*opened.reader, "long").code, kArcFileOpen);
}

TEST(CabSets, ThatLackThePreviousGiveWhatTheyHave) {
    const TemporaryFolder folder;
    const OpenResult opened = openCab(folder.write("two.cab", cabinetBytes(secondOfTwo())));
    ASSERT_EQ(opened.code, kOk);
    EXPECT_EQ(unpack(*opened.reader, "long").code, kCannotRead);
    EXPECT_EQ(unpack(*opened.reader, "own").bytes, "own");
}

TEST(CabSets, DoNotTakeStrangers) {
    const TemporaryFolder folder;
    const auto one = folder.write("one.cab", cabinetBytes(firstOfTwo()));
    Cabinet otherSet = secondOfTwo();
    otherSet.setId = 1;
    Cabinet otherIndex = secondOfTwo();
    otherIndex.index = 2;
    for (const std::string& bytes : {cabinetBytes(otherSet), cabinetBytes(otherIndex), std::string("no cabinet")}) {
        folder.write("two.cab", bytes);
        EXPECT_EQ(walk(openCab(one)).names(), (std::vector<std::string>{"whole", "long"}));
    }
}

TEST(CabSets, AreOnlyLookedForBesideTheFirst) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / "inner");
    folder.write("two.cab", cabinetBytes(secondOfTwo()));
    Cabinet first = firstOfTwo();
    for (const char* name : {"../two.cab", "..\\two.cab", "..", "/", "C:\\"}) {
        first.next = name;
        const auto one = folder.write(std::filesystem::path("inner") / "one.cab", cabinetBytes(first));
        EXPECT_EQ(walk(openCab(one)).names(), (std::vector<std::string>{"whole", "long"})) << name;
    }
}

TEST(CabSets, MayNotGoInCircles) {
    const TemporaryFolder folder;
    Cabinet cabinet = firstOfTwo();
    cabinet.next = cabinet.previous = "one.cab";
    EXPECT_EQ(walk(openCab(folder.write("one.cab", cabinetBytes(cabinet)))).names(),
              (std::vector<std::string>{"whole", "long"}));
}

}  // namespace
}  // namespace archiver::test
