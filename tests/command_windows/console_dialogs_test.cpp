#include "archivers/commands/console_dialogs.h"

#include <gtest/gtest.h>

#include <deque>

namespace archiver {
namespace {

/// Types the given lines; then the input is at its end.
class FakeTerminal final : public Terminal {
public:
    FakeTerminal(std::deque<std::string> lines, std::string& shown) : lines_(std::move(lines)), shown_(shown) {}
    void write(std::string_view utf8) override { shown_ += utf8; }
    std::optional<std::string> readLine() override { return next("<line>"); }
    std::optional<std::string> readHidden() override { return next("<hidden>"); }

private:
    std::optional<std::string> next(const char* way) {
        shown_ += way;
        if (lines_.empty()) return std::nullopt;
        std::string line = lines_.front();
        lines_.pop_front();
        return line;
    }

    std::deque<std::string> lines_;
    std::string& shown_;
};

struct Console {
    explicit Console(std::deque<std::string> lines)
        : dialogs(std::make_unique<FakeTerminal>(std::move(lines), shown)) {}
    std::string shown;
    ConsoleDialogs dialogs;
};

Member memberOf(const char* name, std::uint64_t size = 0) {
    Member member;
    member.name = name;
    member.originalSize = size;
    return member;
}

ReplaceAnswer replaceAnswer(std::deque<std::string> lines) {
    const Member member = memberOf("a.txt");
    Console console(std::move(lines));
    return console.dialogs.askReplace({"a.txt", 1, std::nullopt, member});
}

TEST(ConsoleDialogs, UnderstandEveryAnswer) {
    EXPECT_EQ(replaceAnswer({"y"}), ReplaceAnswer::kYes);
    EXPECT_EQ(replaceAnswer({"n"}), ReplaceAnswer::kNo);
    EXPECT_EQ(replaceAnswer({"a"}), ReplaceAnswer::kAll);
    EXPECT_EQ(replaceAnswer({"o"}), ReplaceAnswer::kNone);
    EXPECT_EQ(replaceAnswer({"r"}), ReplaceAnswer::kNumber);
    EXPECT_EQ(replaceAnswer({"c"}), ReplaceAnswer::kCancel);
    EXPECT_EQ(replaceAnswer({"  Yes"}), ReplaceAnswer::kYes);
}

TEST(ConsoleDialogs, AskAgainUntilTheyUnderstand) {
    EXPECT_EQ(replaceAnswer({"x", "", "  ", "n"}), ReplaceAnswer::kNo);
}

TEST(ConsoleDialogs, TakeTheEndOfTheInputForCancel) {
    EXPECT_EQ(replaceAnswer({}), ReplaceAnswer::kCancel);
    EXPECT_EQ(replaceAnswer({"x"}), ReplaceAnswer::kCancel);
}

TEST(ConsoleDialogs, ShowBothFiles) {
    const Member member = memberOf("a.txt", 2048);
    Console console({"n"});
    console.dialogs.askReplace({"out/a.txt", 1, std::nullopt, member});
    EXPECT_EQ(console.shown,
              "out/a.txt\n"
              "  The file there: 1 byte, unknown\n"
              "  In the archive: 2,048 bytes (2.00 KB), unknown\n"
              "Replace the file? (y)es, (n)o, yes to (a)ll, n(o) to all, (r)ename, (c)ancel: <line>");
}

TEST(ConsoleDialogs, AskForThePasswordUnseen) {
    Console console({"secret"});
    EXPECT_EQ(console.dialogs.askPassword("a.zip", memberOf("b.txt"), 1), "secret");
    EXPECT_EQ(console.shown, "a.zip: password for b.txt: <hidden>\n");
}

TEST(ConsoleDialogs, TellThatThePasswordWasWrong) {
    Console console({"better"});
    EXPECT_EQ(console.dialogs.askPassword("a.zip", memberOf("b\x1B.txt"), 2), "better");
    EXPECT_EQ(console.shown,
              "The last password was wrong.\n"
              "a.zip: password for b\xEF\xBF\xBD.txt: <hidden>\n");
}

TEST(ConsoleDialogs, TakeAnEmptyPasswordForNone) {
    Console empty({""});
    EXPECT_EQ(empty.dialogs.askPassword("a.zip", memberOf("b"), 1), std::nullopt);
    Console ended({});
    EXPECT_EQ(ended.dialogs.askPassword("a.zip", memberOf("b"), 1), std::nullopt);
}

TEST(ConsoleDialogs, AskForDiskSpace) {
    Console console({"y"});
    EXPECT_TRUE(console.dialogs.askDiskSpace(2048, 1));
    EXPECT_EQ(console.shown,
              "There is not enough free space on the disk.\n"
              "  Needed: 2,048 bytes (2.00 KB)\n"
              "  Available: 1 byte\n"
              "Continue all the same? (y)es, (n)o: <line>");
    EXPECT_FALSE(Console({"n"}).dialogs.askDiskSpace(2, 1));
    EXPECT_FALSE(Console({"c"}).dialogs.askDiskSpace(2, 1));
    EXPECT_FALSE(Console({}).dialogs.askDiskSpace(2, 1));
}

TEST(ConsoleDialogs, SayNoWithoutATerminal) {
    ConsoleDialogs dialogs(nullptr);
    const Member member = memberOf("a");
    EXPECT_EQ(dialogs.askReplace({"a", 1, std::nullopt, member}), ReplaceAnswer::kNo);
    EXPECT_EQ(dialogs.askPassword("a.zip", member, 1), std::nullopt);
    EXPECT_FALSE(dialogs.askDiskSpace(2, 1));
}

TEST(ConsoleDialogs, GoOnWithoutShowingProgress) {
    Console console({});
    EXPECT_TRUE(console.dialogs.progress({}));
    EXPECT_EQ(console.shown, "");
}

}  // namespace
}  // namespace archiver
