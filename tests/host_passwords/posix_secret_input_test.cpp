#include "host/console/posix/posix_secret_input.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <thread>

namespace tovar::host {
namespace {

/// A terminal of the system without a screen: what a user types is written to `user_`, what they see is read there.
class PosixSecretInputTest : public testing::Test {
protected:
    void SetUp() override {
        user_ = ::posix_openpt(O_RDWR | O_NOCTTY);
        ASSERT_GE(user_, 0);
        ASSERT_EQ(::grantpt(user_), 0);
        ASSERT_EQ(::unlockpt(user_), 0);
        program_ = ::open(::ptsname(user_), O_RDWR | O_NOCTTY);
        ASSERT_GE(program_, 0);
        ASSERT_TRUE(echoes());
    }
    void TearDown() override {
        ::close(program_);
        ::close(user_);
    }

    [[nodiscard]] bool echoes() const {
        termios state{};
        EXPECT_EQ(::tcgetattr(program_, &state), 0);
        return (state.c_lflag & ECHO) != 0;
    }
    /// The answer to a question; the user types once nothing of it is seen any more.
    std::optional<std::wstring> answerTo(std::string keys) {
        std::thread user([this, &keys] {
            while (echoes()) std::this_thread::yield();
            EXPECT_EQ(::write(user_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
        });
        auto answer = PosixSecretInput(program_).ask("a.ace: password: ");
        user.join();
        EXPECT_TRUE(echoes()) << "as before";
        return answer;
    }
    [[nodiscard]] std::string seen() const {
        std::string text;
        pollfd waiting{user_, POLLIN, 0};
        char bytes[256];
        while (::poll(&waiting, 1, 0) == 1 && (waiting.revents & POLLIN) != 0) {
            const ssize_t count = ::read(user_, bytes, sizeof bytes);
            if (count <= 0) break;
            text.append(bytes, static_cast<std::size_t>(count));
        }
        return text;
    }

private:
    int user_ = -1, program_ = -1;
};

TEST_F(PosixSecretInputTest, ReadsALineThatIsNotSeen) {
    EXPECT_EQ(answerTo("secret\n"), L"secret");
    EXPECT_EQ(seen(), "a.ace: password: \r\n");
}

TEST_F(PosixSecretInputTest, TakesLettersOfEveryAlphabet) {
    EXPECT_EQ(answerTo("p\xC3\xA4ss\xD0\xBF\n"), L"p\x00E4ss\x043F");
}

TEST_F(PosixSecretInputTest, LetsTheUserMendTheLine) {
    EXPECT_EQ(answerTo("ab\x7F"
                       "c\n"),
              L"ac")
        << "the key that rubs out";
    EXPECT_EQ(answerTo("wrong\x15right\n"), L"right") << "the key that takes back the line";
}

TEST_F(PosixSecretInputTest, GivesNothingWhenTheUserInterrupts) { EXPECT_EQ(answerTo("sec\x03"), std::nullopt); }

TEST_F(PosixSecretInputTest, GivesNothingAtTheEndOfTheInput) { EXPECT_EQ(answerTo("\x04"), std::nullopt); }

TEST_F(PosixSecretInputTest, GivesAnEmptyLine) { EXPECT_EQ(answerTo("\n"), L""); }

TEST(PosixSecretInput, GivesNothingWithoutATerminal) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    EXPECT_EQ(PosixSecretInput(ends[0]).ask("?"), std::nullopt);
    ::close(ends[0]);
    ::close(ends[1]);
}

}  // namespace
}  // namespace tovar::host
