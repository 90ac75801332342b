#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "unpacking/fakes/unpack_scene.h"

namespace archiver::test {
namespace {

FakeMember large(std::string name, std::uint64_t bytes = std::uint64_t{1} << 40) {
    FakeMember member = file(std::move(name), "");
    member.member.originalSize = member.zeros = bytes;
    return member;
}

class Cancel : public testing::TestWithParam<unsigned> {
protected:
    static void prepare(UnpackScene& scene) {
        scene.options.threads = GetParam();
        scene.reader.detaches = GetParam() > 1;
    }
    static void expectNothingHalf(const UnpackScene& scene) {
        EXPECT_EQ(scene.summary.code, kUserCancel);
        EXPECT_EQ(scene.target.unfinished, 0);
    }
};
INSTANTIATE_TEST_SUITE_P(Threads, Cancel, testing::Values(1U, 4U));

TEST_P(Cancel, AtTheBeginningOfAMember) {
    UnpackScene scene({file("a"), file("b"), file("c")});
    prepare(scene);
    scene.events.onBegin = [](const Member& member) { return member.name != "b"; };
    scene.unpack();
    expectNothingHalf(scene);
    EXPECT_EQ(scene.target.at("b"), "(none)");
    EXPECT_EQ(scene.target.at("c"), "(none)");
}

// The member would go on for hours: only a cancel that reaches it ends the test.
TEST_P(Cancel, AmidstALargeMember) {
    UnpackScene scene({file("a"), large("b"), file("c")});
    prepare(scene);
    scene.target.put("b", "old");
    scene.events.onProgress = [](const UnpackProgress& progress) { return progress.memberBytes < 1'000'000; };
    scene.unpack();
    expectNothingHalf(scene);
    EXPECT_EQ(scene.target.at("b"), "old");
    EXPECT_EQ(scene.target.at("a"), "content");
    EXPECT_EQ(scene.events.reports.front(), "unpacked a > a");
}

TEST_P(Cancel, WhileEveryThreadIsBusy) {
    UnpackScene scene({large("a"), large("b"), large("c"), large("d"), large("e"), large("f")});
    prepare(scene);
    scene.events.onProgress = [](const UnpackProgress& progress) { return progress.bytes < 10'000'000; };
    scene.unpack();
    expectNothingHalf(scene);
    EXPECT_TRUE(scene.target.names().empty());
    EXPECT_TRUE(scene.events.reports.empty());
}

TEST_P(Cancel, WhileCounting) {
    std::vector<FakeMember> members(1000, file("a"));
    UnpackScene scene(std::move(members));
    prepare(scene);
    scene.events.onProgress = [](const UnpackProgress&) { return false; };
    scene.unpack();
    expectNothingHalf(scene);
    EXPECT_TRUE(scene.target.names().empty());
}

TEST_P(Cancel, AtTheEndOfAMember) {
    UnpackScene scene({file("a"), file("b"), symbolicLink("l", "a")});
    prepare(scene);
    scene.events.onProgress = [](const UnpackProgress& progress) { return progress.members < 2; };
    scene.unpack();
    expectNothingHalf(scene);
    EXPECT_EQ(scene.target.at("l"), "(none)");
    // What was finished is told and stays.
    EXPECT_EQ(scene.events.reports, (Lines{"unpacked a > a", "unpacked b > b"}));
}

TEST_P(Cancel, TellsEveryFileThatIsThere) {
    std::vector<FakeMember> members;
    for (std::size_t number = 0; number < 3000; ++number) members.push_back(file(nameOf("f", number)));
    UnpackScene scene(std::move(members));
    prepare(scene);
    scene.events.onProgress = [](const UnpackProgress& progress) { return progress.members < 100; };
    scene.unpack();
    expectNothingHalf(scene);
    EXPECT_EQ(scene.target.names().size(), scene.events.reports.size());
    EXPECT_GE(scene.events.reports.size(), 100U);
    EXPECT_LT(scene.events.reports.size(), 3000U);
}

TEST(Cancel, OnTheWayOverASolidMember) {
    UnpackScene scene({large("a"), file("b")});
    scene.reader.archive.listedByHeaders = false;
    scene.chosen = [](const Member& member) { return member.name == "b"; };
    scene.events.onProgress = [](const UnpackProgress&) { return false; };
    EXPECT_EQ(scene.unpack(), kUserCancel);
}

TEST(Cancel, AmidstATest) {
    UnpackScene scene({large("a"), large("b"), large("c")});
    scene.reader.detaches = true;
    scene.events.onProgress = [](const UnpackProgress& progress) { return progress.bytes < 1'000'000; };
    EXPECT_EQ(scene.test(), kUserCancel);
    EXPECT_TRUE(scene.events.reports.empty());
}

// The thread's member ends only when progress has been told many times meanwhile.
TEST(Progress, GoesOnWhileAThreadIsBusy) {
    UnpackScene scene({large("a", 10), file("b")});
    scene.options.threads = 2;
    scene.reader.detaches = true;
    std::atomic<std::size_t> told{0};
    scene.reader.onPiece = [&told] {
        while (told < 5) std::this_thread::yield();
    };
    scene.events.onProgress = [&told](const UnpackProgress& progress) {
        told += progress.member != nullptr && progress.member->name == "a" ? 1 : 0;
        return true;
    };
    EXPECT_EQ(scene.unpack(), kOk);
}

TEST(Progress, GoesOnWhileAReaderGivesNothing) {
    class SlowReader final : public ArchiveReader {
    public:
        ArchiveFacts archive;
        std::function<bool()> enough;
        bool given = false;
        [[nodiscard]] const ArchiveFacts& facts() const override { return archive; }
        ReturnCode next(Member& member) override {
            if (std::exchange(given, true)) return kNoMoreEntries;
            member.name = "a";
            return kOk;
        }
        ReturnCode restart() override {
            given = false;
            return kOk;
        }
        ReturnCode read(const DataSink& sink) override {
            while (!enough()) {
                if (!sink("", 0)) return kUserCancel;
            }
            return kOk;
        }
    } reader;
    FakeTarget target;
    RecordingEvents events(kFakeTargetPath);
    UnpackOptions options;
    options.target = kFakeTargetPath;
    reader.enough = [&events] { return events.progresses >= 5; };
    EXPECT_EQ(unpackMembers(reader, {}, options, {}, target, events).code, kOk);
    EXPECT_EQ(events.reports, Lines{"unpacked a > a"});
}

TEST(Progress, IsToldAtTheEndOfEveryMember) {
    UnpackScene scene({file("a", "12"), file("b", "345")});
    Lines told;
    scene.events.onProgress = [&told](const UnpackProgress& progress) {
        if (progress.members > 0) {
            told.push_back(progress.member->name + " " + std::to_string(progress.memberBytes) + " " +
                           std::to_string(progress.bytes) + " " + std::to_string(progress.members));
        }
        return true;
    };
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(told, (Lines{"a 2 2 1", "b 3 5 2"}));
}

}  // namespace
}  // namespace archiver::test
