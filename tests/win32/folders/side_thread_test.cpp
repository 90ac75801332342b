#include "shell/win32/side_thread.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "win32/folders/folder_room.h"

namespace tovar::test {
namespace {

/// A door that work waits at until it is opened.
class Door {
public:
    void open() const { ::SetEvent(event_.get()); }
    void wait() const { ::WaitForSingleObject(event_.get(), 20000); }

private:
    UniqueHandle event_{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
};

std::string failed() { return "failed"; }
using Work = SideWork<std::string>;

TEST(SideWork, AnswersAtOnceWhatIsKnownAtOnce) {
    Work work(&failed);
    EXPECT_EQ(work.ask(
                  1, [] { return std::string("known"); }, 10000),
              "known");
    EXPECT_TRUE(work.takeAnswers().empty());
}

TEST(SideWork, AnswersLateWhatTakesLong) {
    const Door door;
    Work work(&failed);
    const auto question = [&door] {
        door.wait();
        return std::string("late");
    };
    EXPECT_FALSE(work.ask(7, question, 1));
    EXPECT_TRUE(work.isOpen(7));
    EXPECT_TRUE(work.takeAnswers().empty());
    door.open();
    std::vector<std::pair<std::uint32_t, std::string>> answers;
    ASSERT_TRUE(waitUntil([&] {
        answers = work.takeAnswers();
        return !answers.empty();
    }));
    EXPECT_EQ(answers.front(), (std::pair<std::uint32_t, std::string>{7, "late"}));
    EXPECT_FALSE(work.isOpen(7));
}

TEST(SideWork, WorksInAnotherThread) {
    const DWORD own = ::GetCurrentThreadId();
    Work work(&failed);
    const auto question = [own] { return std::string(::GetCurrentThreadId() == own ? "here" : "there"); };
    EXPECT_EQ(work.ask(1, question, 10000), "there");
}

TEST(SideWork, ForgetsAQuestionThatIsDropped) {
    const Door door;
    Work work(&failed);
    const auto question = [&door] {
        door.wait();
        return std::string("unwanted");
    };
    EXPECT_FALSE(work.ask(1, question, 1));
    work.drop(1);
    EXPECT_FALSE(work.isOpen(1));
    door.open();
    EXPECT_EQ(work.ask(
                  1, [] { return std::string("wanted"); }, 10000),
              "wanted");
    EXPECT_TRUE(work.takeAnswers().empty());
}

TEST(SideWork, AnswersTheFailureWhereAQuestionThrows) {
    Work work(&failed);
    EXPECT_EQ(work.ask(
                  1, []() -> std::string { throw 1; }, 10000),
              "failed");
}

TEST(SideWork, TurnsQuestionsAwayWhenFarTooManyAreOpen) {
    const Door door;
    Work work(&failed);
    const auto question = [&door] {
        door.wait();
        return std::string("late");
    };
    std::uint32_t asked = 0;
    while (!work.ask(asked, question, 0) && asked < 100) ++asked;
    EXPECT_EQ(asked, 24U);
    door.open();
}

TEST(SideWork, EndsItsThreadsBeforeItGoes) {
    const Door door;
    bool ended = false;
    std::thread opener;
    {
        Work work(&failed);
        const auto question = [&] {
            door.wait();
            ended = true;
            return std::string();
        };
        EXPECT_FALSE(work.ask(1, question, 1));
        opener = std::thread([&door] { door.open(); });
    }
    EXPECT_TRUE(ended);
    opener.join();
}

}  // namespace
}  // namespace tovar::test
