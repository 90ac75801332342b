#include "archivers/commands/progress_notifier.h"

#include <gtest/gtest.h>

#include <vector>

#include "commands/latin1_codec.h"

namespace archiver {
namespace {

constexpr LibraryDescription kLibrary{.prefix = "Fake", .title = "Fake32", .version = 100};

struct Told {
    WindowHandle window;
    std::uint32_t state;
    ExtractingInfoEx info;
};
std::vector<Told> told;
Bool answer = 0;
std::chrono::steady_clock::time_point now;

Bool ARCHIVER_CALL record(WindowHandle window, std::uint32_t, std::uint32_t state, ExtractingInfoEx* info) {
    told.push_back({window, state, *info});
    return answer;
}

std::chrono::steady_clock::time_point fakeClock() { return now; }

class Notifier : public ::testing::Test {
protected:
    Notifier() {
        told.clear();
        answer = 0;
        now = std::chrono::steady_clock::time_point() + std::chrono::hours(1);
        member_.name = "docs/\xC3\xA4.txt";
        member_.originalSize = 1000;
        member_.packedSize = 250;
        member_.crc = 0x1A2B3C4D;
        member_.osType = 2;
        member_.dosDate = 0x2AB1;
        member_.dosTime = 0x8BDD;
        member_.attributes = attribute::kArchive;
        member_.method = "Deflate";
    }
    UnpackProgress after(std::uint64_t bytes) {
        UnpackProgress progress;
        progress.member = &member_;
        progress.file = "out.txt";
        progress.memberBytes = bytes;
        return progress;
    }

    WindowHandle window_ = reinterpret_cast<WindowHandle>(std::uintptr_t{0x1234});
    testing::Latin1Codec codec_;
    Member member_;
    ProgressNotifier notifier_{{window_, &record}, kLibrary, codec_, false, &fakeClock};
};

TEST_F(Notifier, TellsOfTheArchive) {
    EXPECT_TRUE(notifier_.opened("my.zip", 4711));
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].window, window_);
    EXPECT_EQ(told[0].state, 3U);
    EXPECT_EQ(told[0].info.info.fileSize, 4711U);
    EXPECT_STREQ(told[0].info.info.sourceFileName, "my.zip");
    EXPECT_STREQ(told[0].info.info.destFileName, "");
}

TEST_F(Notifier, TellsOfAMember) {
    EXPECT_TRUE(notifier_.begins(member_, "out.txt"));
    ASSERT_EQ(told.size(), 1U);
    const ExtractingInfoEx& info = told[0].info;
    EXPECT_EQ(told[0].state, 0U);
    EXPECT_EQ(info.info.fileSize, 1000U);
    EXPECT_EQ(info.info.writeSize, 0U);
    EXPECT_STREQ(info.info.sourceFileName, "docs/\xE4.txt");
    EXPECT_STREQ(info.info.destFileName, "out.txt");
    EXPECT_EQ(info.compressedSize, 250U);
    EXPECT_EQ(info.crc, 0x1A2B3C4DU);
    EXPECT_EQ(info.osType, 2U);
    EXPECT_EQ(info.ratio, 250);
    EXPECT_EQ(info.date, 0x2AB1);
    EXPECT_EQ(info.time, 0x8BDD);
    EXPECT_STREQ(info.attribute, "a--w");
    EXPECT_STREQ(info.mode, "Deflate");
}

TEST_F(Notifier, TellsOfBytesButNotTooOften) {
    notifier_.begins(member_, "out.txt");
    now += std::chrono::milliseconds(49);
    EXPECT_TRUE(notifier_.progress(after(100)));
    EXPECT_EQ(told.size(), 1U);
    now += std::chrono::milliseconds(1);
    EXPECT_TRUE(notifier_.progress(after(200)));
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[1].state, 1U);
    EXPECT_EQ(told[1].info.info.writeSize, 200U);
    EXPECT_TRUE(notifier_.progress(after(300)));
    EXPECT_EQ(told.size(), 2U);
}

TEST_F(Notifier, FollowsMembersThatTakeTurns) {
    Member other = member_;
    other.name = "other.txt";
    notifier_.begins(member_, "out.txt");
    notifier_.begins(other, "other");
    now += std::chrono::seconds(1);
    notifier_.progress(after(7));
    ASSERT_EQ(told.size(), 3U);
    EXPECT_STREQ(told[1].info.info.sourceFileName, "other.txt");
    EXPECT_STREQ(told[2].info.info.sourceFileName, "docs/\xE4.txt");
    EXPECT_STREQ(told[2].info.info.destFileName, "out.txt");
}

TEST_F(Notifier, ClampsSizes) {
    member_.originalSize = UINT64_MAX;
    notifier_.begins(member_, "");
    now += std::chrono::seconds(1);
    notifier_.progress(after(UINT64_MAX));
    EXPECT_EQ(told.at(0).info.info.fileSize, 0xFFFFFFFFU);
    EXPECT_EQ(told.at(1).info.info.writeSize, 0xFFFFFFFFU);
}

TEST_F(Notifier, CutsLongNames) {
    member_.name = std::string(600, 'n');
    notifier_.begins(member_, std::string(600, 'f'));
    EXPECT_EQ(std::string(told.at(0).info.info.sourceFileName), std::string(512, 'n'));
    EXPECT_EQ(std::string(told.at(0).info.info.destFileName), std::string(512, 'f'));
}

TEST_F(Notifier, CancelsByANonZeroAnswer) {
    answer = 1;
    EXPECT_FALSE(notifier_.opened("my.zip", 1));
    EXPECT_FALSE(notifier_.begins(member_, ""));
    now += std::chrono::seconds(1);
    EXPECT_FALSE(notifier_.progress(after(1)));
    answer = -1;
    EXPECT_FALSE(notifier_.begins(member_, ""));
}

TEST_F(Notifier, CancelsByZeroWhenInverted) {
    ProgressNotifier inverted({window_, &record}, kLibrary, codec_, true, &fakeClock);
    EXPECT_FALSE(inverted.begins(member_, ""));
    answer = 1;
    EXPECT_TRUE(inverted.begins(member_, ""));
}

TEST_F(Notifier, TellsTheEnd) {
    notifier_.ended();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].state, 2U);
}

TEST_F(Notifier, CallsBackWithoutAWindow) {
    ProgressNotifier windowless({nullptr, &record}, kLibrary, codec_, false, &fakeClock);
    windowless.begins(member_, "");
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].window, nullptr);
}

TEST_F(Notifier, DoesNothingWithoutAnOwner) {
    ProgressNotifier none({}, kLibrary, codec_, false, &fakeClock);
    EXPECT_TRUE(none.opened("my.zip", 1));
    EXPECT_TRUE(none.begins(member_, ""));
    EXPECT_TRUE(none.progress(after(1)));
    none.ended();
    EXPECT_TRUE(told.empty());
}

}  // namespace
}  // namespace archiver
