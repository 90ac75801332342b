#include "archivers/commands/win32/owner_window.h"

#include <gtest/gtest.h>

#include <future>
#include <stdexcept>
#include <thread>

#include "archivers/commands/command_dialogs.h"
#include "win32/commands/host_window.h"

namespace archiver {
namespace {

using testing::HostWindow;

TEST(OwnerWindow, IsDisabledWhileTheObjectLives) {
    const HostWindow host;
    {
        const OwnerWindow owner(host.child());
        EXPECT_EQ(owner.window(), host.child());
        EXPECT_FALSE(::IsWindowEnabled(host.child()));
        EXPECT_TRUE(::IsWindowEnabled(host.window()));  // what it is part of stays
    }
    EXPECT_TRUE(::IsWindowEnabled(host.child()));
}

TEST(OwnerWindow, IsEnabledAgainAfterAnError) {
    const HostWindow host;
    EXPECT_THROW(
        {
            const OwnerWindow owner(host.window());
            EXPECT_FALSE(::IsWindowEnabled(host.window()));
            throw std::runtime_error("early end");
        },
        std::runtime_error);
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
}

TEST(OwnerWindow, StaysDisabledWhenItWas) {
    const HostWindow host;
    ::EnableWindow(host.child(), FALSE);
    { const OwnerWindow owner(host.child()); }
    EXPECT_FALSE(::IsWindowEnabled(host.child()));
}

TEST(OwnerWindow, IsNoneWhenItIsNoWindow) {
    EXPECT_EQ(OwnerWindow(nullptr).window(), nullptr);
    HWND gone = nullptr;
    {
        const HostWindow host;
        gone = host.child();
    }
    const OwnerWindow owner(gone);
    EXPECT_EQ(owner.window(), nullptr);
    EXPECT_FALSE(owner.gone());
}

TEST(OwnerWindow, MayGoMeanwhile) {
    const HostWindow host;
    const OwnerWindow owner(host.child());
    EXPECT_FALSE(owner.gone());
    ::DestroyWindow(host.child());
    EXPECT_TRUE(owner.gone());
}

TEST(OwnerWindow, GivesTheFocusBack) {
    const HostWindow host;
    ASSERT_EQ(::GetFocus(), host.edit());
    {
        const OwnerWindow owner(host.window());
        ::SetFocus(nullptr);
    }
    EXPECT_EQ(::GetFocus(), host.edit());
}

TEST(OwnerWindow, LeavesTheFocusWhereTheUserHasPutIt) {
    const HostWindow host;
    const HostWindow other({500, 300, 700, 400});
    ::SetForegroundWindow(host.window());
    ::SetFocus(host.edit());
    {
        const OwnerWindow owner(host.child());
        ::SetForegroundWindow(other.window());
        ::SetFocus(other.edit());
    }
    EXPECT_EQ(::GetFocus(), other.edit());
}

TEST(OwnerWindow, IsNoneWhenItsThreadWaits) {
    std::promise<HWND> made;
    std::promise<void> done;
    std::thread other([&] {
        const HostWindow host;
        made.set_value(host.window());
        done.get_future().wait();
        EXPECT_TRUE(::IsWindowEnabled(host.window()));
    });
    EXPECT_EQ(OwnerWindow(made.get_future().get()).window(), nullptr);
    done.set_value();
    other.join();
}

TEST(CommandDialogs, DisableTheOwnerWithoutAnyWindowToo) {
    const HostWindow host;
    DialogSettings settings;
    settings.owner = host.child();
    settings.showProgress = false;
    std::unique_ptr<CommandDialogs> dialogs = makeCommandDialogs(settings);
    EXPECT_FALSE(::IsWindowEnabled(host.child()));
    dialogs.reset();
    EXPECT_TRUE(::IsWindowEnabled(host.child()));
}

TEST(CommandDialogs, AskNothingWithoutAnOwner) {
    const std::unique_ptr<CommandDialogs> dialogs = makeCommandDialogs(DialogSettings{});
    const Member member;
    EXPECT_TRUE(dialogs->progress({}));
    EXPECT_EQ(dialogs->askReplace({"a", 1, std::nullopt, member}), ReplaceAnswer::kNo);
    EXPECT_EQ(dialogs->askPassword("a.zip", member, 1), std::nullopt);
    EXPECT_FALSE(dialogs->askDiskSpace(2, 1));
    EXPECT_EQ(consoleOwner(), nullptr);
}

}  // namespace
}  // namespace archiver
