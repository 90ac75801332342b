#include <gtest/gtest.h>

#include "archivers/unpacking/free_room.h"
#include "unpacking/fakes/unpack_scene.h"

namespace archiver::test {
namespace {

FakeMember claiming(std::string name, std::uint64_t size) {
    FakeMember member = file(std::move(name), "tiny");
    member.member.originalSize = size;
    member.code = kFileCrc;
    return member;
}

TEST(DiskSpace, IsCountedBeforeAnythingIsWritten) {
    UnpackScene scene({file("a", "12345"), file("b", "12345"), folder("c/")});
    scene.target.room = 9;
    EXPECT_EQ(scene.unpack(), kDiskSpace);
    EXPECT_EQ(scene.events.spaceQuestions, Lines{"10 of 9"});
    EXPECT_TRUE(scene.events.reports.empty());
    EXPECT_TRUE(scene.target.names().empty());
}

TEST(DiskSpace, MayBeTriedNevertheless) {
    UnpackScene scene({file("a", "12345"), file("b", "12345")});
    scene.target.room = 9;
    scene.events.goOnWithoutSpace = true;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.spaceQuestions.size(), 1U);
    EXPECT_EQ(scene.target.names(), (Lines{"a", "b"}));
}

TEST(DiskSpace, ThatIsEnoughIsNoQuestion) {
    UnpackScene scene({file("a", "12345"), file("b", "12345")});
    scene.target.room = 10;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_TRUE(scene.events.spaceQuestions.empty());
    EXPECT_EQ(scene.target.spaceQuestions, 1U);
}

TEST(DiskSpace, ThatCannotBeToldIsNoQuestion) {
    UnpackScene scene({claiming("a", UINT64_MAX)});
    EXPECT_EQ(scene.unpack(), kFileCrc);
    EXPECT_TRUE(scene.events.spaceQuestions.empty());
}

TEST(DiskSpace, IsNotLookedAtUnlessWanted) {
    UnpackScene scene({file("a", "12345")});
    scene.options.checkDiskSpace = false;
    scene.target.room = 1;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.spaceQuestions, 0U);
}

TEST(DiskSpace, IsNotNeededForWhatIsNotWritten) {
    UnpackScene scene({file("a", "12345"), file("b", "12345"), file("c", "12345")});
    scene.options.existing = ExistingFiles::kKeep;
    scene.options.skipHiddenAndSystem = true;
    scene.chosen = [](const Member& member) { return member.name != "c"; };
    scene.target.put("a", "old");
    scene.target.room = 5;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_TRUE(scene.events.spaceQuestions.empty());
    EXPECT_EQ(scene.target.at("b"), "12345");
}

TEST(DiskSpace, AClaimBeyondAllDisksIsAskedAboutAndNotTried) {
    UnpackScene scene({claiming("a", std::uint64_t{1} << 63), claiming("b", std::uint64_t{1} << 63)});
    scene.target.room = 1000;
    EXPECT_EQ(scene.unpack(), kDiskSpace);
    // The sum stays at what the numbers hold.
    EXPECT_EQ(scene.events.spaceQuestions, Lines{"18446744073709551615 of 1000"});
    EXPECT_EQ(scene.target.files, 0U);
}

TEST(DiskSpace, IsCheckedMemberByMemberWhereHeadersAreFarApart) {
    UnpackScene scene({file("a", "12345"), claiming("b", std::uint64_t{1} << 63), file("c")});
    scene.reader.archive.listedByHeaders = false;
    scene.target.room = 100;
    EXPECT_EQ(scene.unpack(), kDiskSpace);
    EXPECT_EQ(scene.events.spaceQuestions, Lines{"9223372036854775808 of 100"});
    EXPECT_EQ(scene.events.reports, (Lines{"unpacked a > a", "failed b > b 8005"}));
    EXPECT_EQ(scene.reader.restarts, 0U);
}

// Also when members before it are still being written by other threads.
TEST(DiskSpace, ThatIsMissingEndsTheRunAtOnce) {
    std::vector<FakeMember> members;
    for (int number = 0; number < 200; ++number) members.push_back(file(std::to_string(number) + ".txt"));
    members.push_back(claiming("b", std::uint64_t{1} << 63));
    members.push_back(folder("c/"));
    members.push_back(file("d/e"));
    UnpackScene scene(members);
    scene.reader.archive.listedByHeaders = false;
    scene.options.threads = 4;
    scene.target.room = 1 << 20;
    EXPECT_EQ(scene.unpack(), kDiskSpace);
    EXPECT_EQ(scene.events.reports.back(), "failed b > b 8005");
    EXPECT_EQ(scene.summary.unpacked, 200U);
    EXPECT_EQ(scene.target.names().size(), 200U) << "neither c nor d";
}

TEST(DiskSpace, IsAskedAboutOnceInARun) {
    UnpackScene scene({claiming("a", 500), claiming("b", 600), file("c")});
    scene.reader.archive.listedByHeaders = false;
    scene.target.room = 100;
    scene.events.goOnWithoutSpace = true;
    EXPECT_EQ(scene.unpack(), kFileCrc);
    EXPECT_EQ(scene.events.spaceQuestions, Lines{"500 of 100"});
    EXPECT_EQ(scene.target.at("c"), "content");
}

TEST(DiskSpace, IsTheTotalOfTheProgress) {
    UnpackScene scene({file("a", "12345"), file("b", "123")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.totals.back(), 8U);
    UnpackScene solid({file("a", "12345"), file("b", "123")});
    solid.reader.archive.listedByHeaders = false;
    EXPECT_EQ(solid.unpack(), kOk);
    EXPECT_EQ(solid.events.totals, std::vector<std::uint64_t>{0});
}

TEST(PlausibleSize, IsWhatPackedBytesCanComeTo) {
    Member member;
    member.packedSize = 10;
    member.originalSize = 10'000;
    EXPECT_EQ(plausibleSize(member), 10'000U);
    member.originalSize = 20'000;
    EXPECT_EQ(plausibleSize(member), 0U);
    member.packedSize = 0;
    member.originalSize = UINT64_MAX;
    EXPECT_EQ(plausibleSize(member), 0U);
}

}  // namespace
}  // namespace archiver::test
