#include <gtest/gtest.h>

#include <cstring>
#include <future>
#include <stdexcept>

#include "convention/fake_library.h"

namespace archiver {
namespace {

/// What the fake command does, and with which arguments it was called.
struct FakeCommand {
    std::function<std::int32_t(const CommandContext&, CommandOutput&)> act;
    int calls = 0;
};
FakeCommand fakeCommand;

std::int32_t runFake(const CommandContext& context, CommandOutput& output) {
    ++fakeCommand.calls;
    return fakeCommand.act(context, output);
}

constexpr LibraryDescription kCommanded{
    .prefix = "Fake", .version = 100, .open = &testing::FakeDisk::open, .command = &runFake};

class LibraryCommand : public testing::LibraryTest {
protected:
    ~LibraryCommand() override { fakeCommand = {}; }
    void act(std::function<std::int32_t(const CommandContext&, CommandOutput&)> action) {
        fakeCommand = {std::move(action), 0};
    }

    LibraryCore commanded{kCommanded, utf8Codec()};
    WindowHandle window = reinterpret_cast<WindowHandle>(std::uintptr_t{0x1234});
    char output[64] = "untouched";
};

TEST_F(LibraryCommand, IsRefusedWithoutALanguage) {
    for (const char* line : {"", " -x -i --j a.zip", "l a.zip", static_cast<const char*>(nullptr)}) {
        char text[200];
        std::memset(text, '#', sizeof text);
        EXPECT_EQ(library.run(window, line, text, sizeof text), 0x8023);
        EXPECT_STREQ(text, "Fake: commands are not supported by this version.\r\n");
    }
    EXPECT_EQ(library.running(), 0);
}

TEST_F(LibraryCommand, CutsItsTextToTheBuffer) {
    EXPECT_EQ(library.run(nullptr, "x", output, 5), 0x8023);
    EXPECT_EQ(std::string(output, 10), std::string("Fake\0ched\0", 10));
    EXPECT_EQ(library.run(nullptr, "x", output, 1), 0x8023);
    EXPECT_STREQ(output, "");
}

TEST_F(LibraryCommand, WritesNothingWithoutABuffer) {
    EXPECT_EQ(library.run(nullptr, "x", output, 0), 0x8023);
    EXPECT_STREQ(output, "untouched");
    EXPECT_EQ(library.run(nullptr, "x", nullptr, 100), 0x8023);
    EXPECT_EQ(library.run(nullptr, nullptr, nullptr, 0), 0x8023);
}

TEST_F(LibraryCommand, HasNothingToDoWithMemory) {
    std::uint32_t written = 42;
    EXPECT_EQ(library.extractMem(nullptr, "x", nullptr, 0, nullptr, nullptr, &written), 0x8023);
    EXPECT_EQ(written, 0U);
    written = 42;
    EXPECT_EQ(library.compressMem(&written), 0x8023);
    EXPECT_EQ(written, 0U);
    EXPECT_EQ(library.extractMem(nullptr, nullptr, nullptr, 100, nullptr, nullptr, nullptr), 0x8023);
    EXPECT_EQ(library.compressMem(nullptr), 0x8023);
}

TEST_F(LibraryCommand, HasNothingToConfigure) { EXPECT_EQ(library.configDialog(nullptr), 0); }

TEST_F(LibraryCommand, ConfiguresOverAWindowOnly) {
    static WindowHandle asked = nullptr;
    static std::string askedTitle;
    static constexpr LibraryDescription description{
        .prefix = "Fake", .title = "Fake32", .configure = [](WindowHandle owner, const char* title) noexcept {
            asked = owner;
            askedTitle = title;
            return true;
        }};
    LibraryCore configured(description, utf8Codec());
    EXPECT_EQ(configured.queryFunctionList(17), 1);
    EXPECT_EQ(configured.configDialog(nullptr), 0);
    EXPECT_EQ(asked, nullptr);
    EXPECT_EQ(configured.configDialog(window), 1);
    EXPECT_EQ(asked, window);
    EXPECT_EQ(askedTitle, "Fake32");
    EXPECT_EQ(configured.running(), 0);
}

TEST_F(LibraryCommand, GetsItsLineAndWindow) {
    act([&](const CommandContext& context, CommandOutput& text) {
        EXPECT_EQ(context.commandLine, "x a.zip \xE8\xA1\xA8");
        EXPECT_EQ(context.window, window);
        text.text("done \xE8\xA1\xA8");
        return 7;
    });
    EXPECT_EQ(commanded.run(window, "x a.zip \xE8\xA1\xA8", output, sizeof output), 7);
    EXPECT_STREQ(output, "done \xE8\xA1\xA8");
    EXPECT_EQ(fakeCommand.calls, 1);
}

TEST_F(LibraryCommand, GetsAnEmptyLineForNone) {
    act([](const CommandContext& context, CommandOutput&) {
        EXPECT_EQ(context.commandLine, "");
        return 0;
    });
    EXPECT_EQ(commanded.run(nullptr, nullptr, output, sizeof output), 0);
    EXPECT_STREQ(output, "") << "text of an earlier command does not stay";
}

TEST_F(LibraryCommand, TurnsExceptionsIntoCodes) {
    act([](const CommandContext&, CommandOutput&) -> std::int32_t { throw std::bad_alloc(); });
    EXPECT_EQ(commanded.run(nullptr, "x", output, sizeof output), 0x801E);
    EXPECT_STREQ(output, "");
    act([](const CommandContext&, CommandOutput&) -> std::int32_t { throw std::runtime_error("broken"); });
    EXPECT_EQ(commanded.run(nullptr, "x", output, sizeof output), 0x801A);
    EXPECT_EQ(commanded.running(), 0) << "the next one may run";
}

/// Everything that a busy library turns away.
void expectBusy(LibraryCore& library) {
    char text[64];
    std::uint32_t written = 42;
    EXPECT_EQ(library.running(), 1);
    EXPECT_EQ(library.run(nullptr, "x", text, sizeof text), 0x801F);
    EXPECT_STREQ(text, "A command is running already.\r\n");
    EXPECT_EQ(library.run(nullptr, "x", nullptr, 0), 0x801F);
    EXPECT_EQ(library.extractMem(nullptr, "x", nullptr, 0, nullptr, nullptr, &written), 0x801F);
    EXPECT_EQ(written, 0U);
    EXPECT_EQ(library.compressMem(&written), 0x801F);
    EXPECT_EQ(library.configDialog(nullptr), 0x801F);
    EXPECT_EQ(library.setBackGroundMode(0), 0);
    EXPECT_EQ(library.setCursorMode(1), 0);
    EXPECT_EQ(library.setCursorInterval(10), 0);
    EXPECT_EQ(library.setUnicodeMode(1), 0);
    EXPECT_EQ(library.setOwnerWindow(&library), 0);
    EXPECT_EQ(library.clearOwnerWindow(), 0);
}

LibraryCore* calledBack = nullptr;
int callbackCalls = 0;
Bool ARCHIVER_CALL busyCallback(WindowHandle, std::uint32_t, std::uint32_t, ExtractingInfoEx*) {
    ++callbackCalls;
    expectBusy(*calledBack);
    return 0;
}

TEST_F(LibraryCommand, TurnsAwayASecondFromItsProgressCallback) {
    calledBack = &commanded;
    callbackCalls = 0;
    ASSERT_EQ(commanded.setOwnerWindowEx(window, &busyCallback), 1);
    act([&](const CommandContext& context, CommandOutput&) {
        EXPECT_EQ(context.progress.window, window);
        ExtractingInfoEx progress{};
        return context.progress.callback(context.progress.window, 0, 0, &progress);
    });
    EXPECT_EQ(commanded.run(nullptr, "x", output, sizeof output), 0);
    EXPECT_EQ(callbackCalls, 1);
    EXPECT_EQ(fakeCommand.calls, 1);
    EXPECT_EQ(commanded.running(), 0);
    EXPECT_EQ(commanded.backGroundMode(), 1);
    EXPECT_EQ(commanded.cursorMode(), 0);
    EXPECT_EQ(commanded.cursorInterval(), 80);
}

TEST_F(LibraryCommand, TurnsAwayASecondFromAnotherThread) {
    std::promise<void> started;
    std::promise<void> mayEnd;
    act([&](const CommandContext&, CommandOutput&) {
        started.set_value();
        mayEnd.get_future().wait();
        return 0;
    });
    std::future<std::int32_t> first =
        std::async(std::launch::async, [&] { return commanded.run(nullptr, "x", nullptr, 0); });
    started.get_future().wait();
    expectBusy(commanded);
    EXPECT_EQ(commanded.checkArchive("a.zip", 1), 1) << "looking at archives goes on";
    mayEnd.set_value();
    EXPECT_EQ(first.get(), 0);
    EXPECT_EQ(commanded.running(), 0);
    EXPECT_EQ(fakeCommand.calls, 1);
}

TEST_F(LibraryCommand, KnowsItsOwner) {
    ProgressOwner seen;
    act([&](const CommandContext& context, CommandOutput&) {
        seen = context.progress;
        return 0;
    });
    const auto ownerNow = [&] {
        commanded.run(nullptr, "", nullptr, 0);
        return seen;
    };
    EXPECT_EQ(ownerNow().window, nullptr);
    EXPECT_EQ(commanded.setOwnerWindow(nullptr), 0);
    EXPECT_EQ(commanded.setOwnerWindow(window), 1);
    EXPECT_EQ(ownerNow().window, window);
    EXPECT_EQ(ownerNow().callback, nullptr);
    EXPECT_EQ(commanded.killOwnerWindowEx(window), 0) << "there is no callback";
    EXPECT_EQ(commanded.clearOwnerWindow(), 1);
    EXPECT_EQ(ownerNow().window, nullptr);
    EXPECT_EQ(commanded.setOwnerWindowEx(window, nullptr), 0);
    EXPECT_EQ(commanded.setOwnerWindowEx(window, &busyCallback), 1);
    EXPECT_EQ(ownerNow().callback, &busyCallback);
    EXPECT_EQ(commanded.killOwnerWindowEx(output), 0) << "another window's";
    EXPECT_EQ(commanded.killOwnerWindowEx(window), 1);
    EXPECT_EQ(ownerNow().callback, nullptr);
}

}  // namespace
}  // namespace archiver
