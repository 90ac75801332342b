#include <gtest/gtest.h>

#include <new>

#include "unpacking/fakes/unpack_scene.h"

namespace archiver::test {
namespace {

FakeMember damaged(std::string name, ReturnCode code) {
    FakeMember member = file(std::move(name), "half");
    member.code = code;
    return member;
}

class Damage : public testing::TestWithParam<unsigned> {
protected:
    static void prepare(UnpackScene& scene) {
        scene.options.threads = GetParam();
        scene.reader.detaches = GetParam() > 1;
    }
};
INSTANTIATE_TEST_SUITE_P(Threads, Damage, testing::Values(1U, 4U));

TEST_P(Damage, LeavesNoFileAndTheOthersGoOn) {
    UnpackScene scene({file("a"), damaged("b", kFileCrc), damaged("c", kMethod), file("d")});
    prepare(scene);
    EXPECT_EQ(scene.unpack(), kFileCrc);
    EXPECT_EQ(scene.target.names(), (Lines{"a", "d"}));
    EXPECT_EQ(scene.events.reports,
              (Lines{"unpacked a > a", "failed b > b 800C", "failed c > c 8009", "unpacked d > d"}));
    EXPECT_EQ(scene.target.unfinished, 0);
    EXPECT_EQ(scene.summary.bytes, 14U);
    EXPECT_EQ(scene.summary.failed, 2U);
}

TEST_P(Damage, OfTheArchiveEndsTheRunWithWhatWasGoodKept) {
    UnpackScene scene({folder("x/"), file("x/a"), symbolicLink("l", "x/a"), file("b")});
    prepare(scene);
    scene.reader.endAt = 3;
    scene.reader.end = kHeaderBroken;
    EXPECT_EQ(scene.unpack(), kHeaderBroken);
    EXPECT_EQ(scene.target.names(), (Lines{"l", "x", "x/a"}));
    EXPECT_EQ(scene.target.propertiesSet, Lines{"x"});
}

TEST_P(Damage, ATargetThatTakesNoFilesFailsEachMember) {
    UnpackScene scene({file("a"), file("b", "")});
    prepare(scene);
    scene.target.creates = kCannotWrite;
    EXPECT_EQ(scene.unpack(), kCannotWrite);
    EXPECT_EQ(scene.events.reports, (Lines{"failed a > a 8013", "failed b > b 8013"}));
}

TEST_P(Damage, AFullDiskEndsTheRun) {
    UnpackScene scene({file("a", "12345"), file("b", "12345"), file("c", "12345"), folder("d/")});
    prepare(scene);
    scene.options.threads = 1;
    scene.target.put("b", "old");
    scene.target.writable = 7;
    EXPECT_EQ(scene.unpack(), kDiskSpace);
    EXPECT_EQ(scene.events.reports, (Lines{"unpacked a > a", "failed b > b 8005"}));
    EXPECT_EQ(scene.target.at("b"), "old");
    EXPECT_EQ(scene.target.names(), (Lines{"a", "b"}));
    EXPECT_EQ(scene.target.unfinished, 0);
}

TEST(Damage, AFullDiskEndsTheThreadsToo) {
    std::vector<FakeMember> members;
    for (std::size_t number = 0; number < 5000; ++number) members.push_back(file(nameOf("f", number), "12345"));
    UnpackScene scene(std::move(members));
    scene.options.threads = 4;
    scene.reader.detaches = true;
    scene.target.writable = 5 * 100;
    EXPECT_EQ(scene.unpack(), kDiskSpace);
    EXPECT_EQ(scene.target.names().size(), 100U);
    EXPECT_EQ(scene.target.unfinished, 0);
    EXPECT_LT(scene.reader.reads, 2000U);
    // All files that are there were told.
    EXPECT_EQ(scene.summary.unpacked, 100U);
}

TEST_P(Damage, NoMemoryIsACode) {
    UnpackScene scene({file("a"), file("b")});
    prepare(scene);
    scene.reader.onPiece = [] { throw std::bad_alloc(); };
    EXPECT_EQ(scene.unpack(), kEnoughMemory);
    EXPECT_EQ(scene.events.reports, (Lines{"failed a > a 801E", "failed b > b 801E"}));
}

TEST(Damage, NoMemoryOnTheWayIsACode) {
    UnpackScene scene({file("a"), file("b")});
    scene.chosen = [](const Member& member) -> bool {
        if (member.name == "b") throw std::bad_alloc();
        return true;
    };
    EXPECT_EQ(scene.unpack(), kEnoughMemory);
}

TEST(Damage, SpecialMembersAreRefused) {
    FakeMember device = file("dev/null", "");
    device.member.kind = MemberKind::kSpecial;
    UnpackScene scene({device, file("a")});
    EXPECT_EQ(scene.unpack(), kUnknownType);
    EXPECT_EQ(scene.events.reports, (Lines{"refused dev/null 8008", "unpacked a > a"}));
    EXPECT_EQ(scene.summary.refused, 1U);
}

TEST(Damage, ANameOfNothingIsRefused) {
    UnpackScene scene({file("..", "x"), file("", "y"), file("a")});
    EXPECT_EQ(scene.unpack(), kNotFilename);
    EXPECT_EQ(scene.events.reports, (Lines{"refused .. 802B", "refused  802B", "unpacked a > a"}));
}

}  // namespace
}  // namespace archiver::test
