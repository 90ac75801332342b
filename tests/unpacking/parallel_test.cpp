#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <set>
#include <thread>

#include "unpacking/fakes/unpack_scene.h"

namespace archiver::test {
namespace {

TEST(Parallel, KeepsTheOrderOfReports) {
    std::vector<FakeMember> members;
    Lines expected;
    for (std::size_t number = 0; number < 3000; ++number) {
        const std::string name = nameOf("f", number);
        members.push_back(file(name, std::string(static_cast<std::size_t>(number * 7919 % 5000), 'x')));
        if (number % 10 == 3) {
            members.back().code = kFileCrc;
            expected.push_back("failed " + name + " > " + name + " 800C");
        } else {
            expected.push_back("unpacked " + name + " > " + name);
        }
    }
    UnpackScene scene(std::move(members));
    scene.reader.detaches = true;
    scene.options.threads = 8;
    EXPECT_EQ(scene.unpack(), kFileCrc);
    EXPECT_EQ(scene.events.reports, expected);
    EXPECT_EQ(scene.reader.detached, 3000U);
    EXPECT_EQ(scene.target.names().size(), 2700U);
    EXPECT_EQ(scene.target.at("f1"), std::string(2919, 'x'));
}

// Each of the two large members waits for the other to be on its way.
TEST(Parallel, UnpacksSeveralAtOnce) {
    FakeMember one = file("a", "");
    one.member.originalSize = one.zeros = std::uint64_t{65536};
    FakeMember other = one;
    other.member.name = "b";
    one.member.packedSize = other.member.packedSize = std::uint64_t{1} << 20;
    UnpackScene scene({one, other});
    scene.reader.detaches = true;
    scene.options.threads = 2;
    std::mutex mutex;
    std::condition_variable changed;
    std::set<std::thread::id> threads;
    scene.reader.onPiece = [&] {
        std::unique_lock lock(mutex);
        threads.insert(std::this_thread::get_id());
        changed.notify_all();
        changed.wait(lock, [&] { return threads.size() == 2; });
    };
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_FALSE(threads.contains(std::this_thread::get_id()));
}

TEST(Parallel, WritesBesideAReaderThatGoesInOrder) {
    std::vector<FakeMember> members;
    for (std::size_t number = 0; number < 500; ++number) members.push_back(file(nameOf("f", number), "12345"));
    members.push_back(file("large", ""));
    members.back().member.originalSize = members.back().zeros = std::uint64_t{3} << 20;
    UnpackScene scene(std::move(members));
    scene.options.threads = 4;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.names().size(), 501U);
    EXPECT_EQ(scene.target.item("large").size, std::uint64_t{3} << 20);
    EXPECT_EQ(scene.summary.bytes, 2500U + (std::uint64_t{3} << 20));
    EXPECT_EQ(scene.reader.detached, 0U);
}

TEST(Parallel, ReadsOnTheCallersThreadWhenAskedTo) {
    UnpackScene scene({file("a"), file("b")});
    scene.reader.detaches = true;
    scene.options.threads = 1;
    const std::thread::id own = std::this_thread::get_id();
    scene.reader.onPiece = [own] { EXPECT_EQ(std::this_thread::get_id(), own); };
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.reader.detached, 0U);
}

// Members that claim much are held back, so that few of them are in memory at a time.
TEST(Parallel, BoundsWhatIsInTheLineByItsClaims) {
    std::vector<FakeMember> members;
    for (std::size_t number = 0; number < 100; ++number) {
        FakeMember member = file(nameOf("f", number), "x");
        member.member.originalSize = member.member.packedSize = std::uint64_t{16} << 20;
        members.push_back(member);
    }
    UnpackScene scene(std::move(members));
    scene.reader.detaches = true;
    scene.options.threads = 2;
    scene.options.checkDiskSpace = false;
    std::size_t most = 0;
    scene.events.onBegin = [&](const Member&) {
        most = std::max<std::size_t>(most, scene.events.begun.size() - scene.events.reports.size());
        return true;
    };
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_LE(most, 5U);
    EXPECT_EQ(scene.summary.unpacked, 100U);
}

// A single compressed file can be larger than its trailer says, and need not say anything.
TEST(Parallel, MembersMayBeLargerThanTheirHeadersSay) {
    FakeMember more = file("a", "0123456789");
    more.member.originalSize = 5;
    more.zeros = std::uint64_t{1} << 20;
    FakeMember unknown = file("b", "0123456789");
    unknown.member.originalSize = 0;
    UnpackScene scene({more, unknown, file("c", "")});
    scene.options.threads = 4;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.item("a").size, 10 + (std::uint64_t{1} << 20));
    EXPECT_EQ(scene.target.at("a").substr(0, 12), std::string("0123456789\0\0", 12));
    EXPECT_EQ(scene.target.at("b"), "0123456789");
    EXPECT_EQ(scene.target.at("c"), "");
    EXPECT_EQ(scene.summary.bytes, 20 + (std::uint64_t{1} << 20));
}

// It is written by a thread of its own; in what is seen nothing differs.
TEST(Parallel, LargeMembersAreWrittenWhileTheyAreUnpacked) {
    constexpr std::uint64_t kSize = std::uint64_t{40} << 20;
    const auto large = [] {
        FakeMember member = file("large", "start");
        member.zeros = kSize;
        member.member.originalSize = 5 + kSize;
        member.member.packedSize = 1000;
        return member;
    };
    UnpackScene scene({large(), file("after")});
    scene.options.threads = 4;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.item("large").size, 5 + kSize);
    EXPECT_EQ(scene.target.at("large").substr(0, 6), std::string("start\0", 6));
    EXPECT_EQ(scene.target.at("after"), "content");
    EXPECT_EQ(scene.target.unfinished, 0);

    UnpackScene full({large(), file("after")});
    full.options.threads = 4;
    full.target.writable = std::uint64_t{10} << 20;
    EXPECT_EQ(full.unpack(), kDiskSpace);
    EXPECT_EQ(full.target.names(), std::vector<std::string>());
    EXPECT_EQ(full.target.unfinished, 0);
}

}  // namespace
}  // namespace archiver::test
