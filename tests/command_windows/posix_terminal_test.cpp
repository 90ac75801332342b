#include "archivers/commands/posix/posix_terminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <thread>

#include "archivers/commands/command_dialogs.h"
#include "archivers/commands/library_settings.h"
#include "archivers/commands/owner_message.h"

namespace archiver {
namespace {

/// A terminal of the system without a screen: what a user types is written to `user`, what they see is read there.
class PosixTerminalTest : public ::testing::Test {
protected:
    void SetUp() override {
        user_ = ::posix_openpt(O_RDWR | O_NOCTTY);
        ASSERT_GE(user_, 0);
        ASSERT_EQ(::grantpt(user_), 0);
        ASSERT_EQ(::unlockpt(user_), 0);
        program_ = ::open(::ptsname(user_), O_RDWR | O_NOCTTY);
        ASSERT_GE(program_, 0);
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
    void type(std::string_view keys) const {
        ASSERT_EQ(::write(user_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    }
    /// Types once nothing of it is seen any more.
    std::thread typeHidden(std::string keys) const {
        return std::thread([this, keys = std::move(keys)] {
            while (echoes()) std::this_thread::yield();
            type(keys);
        });
    }
    /// What is on the screen up to now; the terminal gives it out at once.
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
    std::optional<std::string> hidden(const std::string& keys) const {
        PosixTerminal terminal(program_, false);
        std::thread user = typeHidden(keys);
        const std::optional<std::string> answer = terminal.readHidden();
        user.join();
        return answer;
    }

    int user_ = -1;
    int program_ = -1;
};

TEST_F(PosixTerminalTest, ReadsALine) {
    type("yes\nno\n");
    PosixTerminal terminal(program_, false);
    EXPECT_EQ(terminal.readLine(), "yes");
    EXPECT_EQ(terminal.readLine(), "no");
}

TEST_F(PosixTerminalTest, TellsTheEndOfTheInput) {
    type("\x04");
    EXPECT_EQ(PosixTerminal(program_, false).readLine(), std::nullopt);
}

TEST_F(PosixTerminalTest, WritesToTheScreen) {
    PosixTerminal(program_, false).write("Password: ");
    EXPECT_EQ(seen(), "Password: ");
}

TEST_F(PosixTerminalTest, HidesWhatIsTyped) {
    ASSERT_TRUE(echoes());
    EXPECT_EQ(hidden("secret\n"), "secret");
    EXPECT_EQ(seen(), "");
    EXPECT_TRUE(echoes());
}

TEST_F(PosixTerminalTest, EndsHiddenInputWithReturn) { EXPECT_EQ(hidden("secret\r"), "secret"); }

TEST_F(PosixTerminalTest, TakesBackWholeCharacters) {
    EXPECT_EQ(hidden("a\xC3\xA4\x7F"
                     "b\x08"
                     "c\n"),
              "ac");
    EXPECT_EQ(hidden("\x7Fx\n"), "x");
    EXPECT_EQ(hidden("wrong\x15right\n"), "right");
}

TEST_F(PosixTerminalTest, IsInterruptedWithoutStayingSilent) {
    EXPECT_EQ(hidden("sec\x03"), std::nullopt);
    EXPECT_TRUE(echoes());
    EXPECT_EQ(hidden("sec\x04"), std::nullopt);
    EXPECT_TRUE(echoes());
}

TEST_F(PosixTerminalTest, TakesNoMoreThanTheLongestPassword) {
    EXPECT_EQ(hidden(std::string(300, 'x') + "\xC3\xA4\n"), std::string(255, 'x'));
}

TEST(PosixTerminal, HasNothingHiddenToReadFromAFile) {
    const int file = ::open("/dev/null", O_RDWR);
    ASSERT_GE(file, 0);
    EXPECT_EQ(PosixTerminal(file, true).readHidden(), std::nullopt);
}

TEST(PosixDialogs, AskNothingWithoutTheConsoleAsOwner) {
    DialogSettings settings;
    int anything = 0;
    for (const WindowHandle owner : {WindowHandle{nullptr}, WindowHandle{&anything}}) {
        settings.owner = owner;
        const std::unique_ptr<CommandDialogs> dialogs = makeCommandDialogs(settings);
        Member member;
        EXPECT_TRUE(dialogs->progress({}));
        EXPECT_EQ(dialogs->askReplace({"a", 1, std::nullopt, member}), ReplaceAnswer::kNo);
        EXPECT_EQ(dialogs->askPassword("a.zip", member, 1), std::nullopt);
        EXPECT_FALSE(dialogs->askDiskSpace(2, 1));
    }
    EXPECT_NE(consoleOwner(), nullptr);
}

TEST(PosixSettings, AreTheDefaults) {
    EXPECT_EQ(loadLibrarySettings("UnZip32"), LibrarySettings{});
    EXPECT_FALSE(storeLibrarySettings("UnZip32", {false, 1}));
    EXPECT_FALSE(configureLibrary(nullptr, "UnZip32"));
}

TEST(PosixOwnerMessage, ReachesNobody) {
    EXPECT_EQ(ownerMessage(), 0U);
    EXPECT_FALSE(sendOwnerMessage(consoleOwner(), OwnerState::kBegin, nullptr));
}

}  // namespace
}  // namespace archiver
