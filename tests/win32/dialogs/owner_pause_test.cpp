#include "shell/win32/owner_pause.h"

#include <gtest/gtest.h>

#include <optional>

#include "win32/dialogs/work_dialogs.h"

namespace tovar::test {
namespace {

TEST(OwnerPause, KeepsTheTopLevelWindowFromInput) {
    const HostWindow host;
    {
        const OwnerPause pause(host.child());
        EXPECT_FALSE(::IsWindowEnabled(host.window()));
    }
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
}

TEST(OwnerPause, EndsWhenTold) {
    const HostWindow host;
    OwnerPause pause(host.window());
    pause.resume();
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
    ::EnableWindow(host.window(), FALSE);
    pause.resume();
    EXPECT_FALSE(::IsWindowEnabled(host.window())) << "the second time it is not its business";
}

TEST(OwnerPause, LeavesAWindowDisabledThatWasSoBefore) {
    const HostWindow host;
    ::EnableWindow(host.window(), FALSE);
    { const OwnerPause pause(host.window()); }
    EXPECT_FALSE(::IsWindowEnabled(host.window()));
}

TEST(OwnerPause, NeedsNoWindow) {
    OwnerPause pause(nullptr);
    pause.resume();
    pause.returnFocus();
}

TEST(OwnerPause, OutlivesTheWindow) {
    std::optional<HostWindow> host(std::in_place);
    OwnerPause pause(host->window());
    host.reset();
    pause.resume();
    pause.returnFocus();
}

TEST(OwnerPause, GivesTheFocusBack) {
    const HostWindow host;
    ASSERT_EQ(::GetFocus(), host.edit());
    OwnerPause pause(host.child());
    ::SetFocus(nullptr);
    pause.resume();
    pause.returnFocus();
    EXPECT_EQ(::GetFocus(), host.edit());
}

TEST(OwnerPause, GivesTheFocusToTheWindowWhenTheControlIsGone) {
    const HostWindow host;
    OwnerPause pause(host.child());
    ::DestroyWindow(host.edit());
    const HostWindow other;
    pause.resume();
    pause.returnFocus();
    EXPECT_EQ(::GetActiveWindow(), host.window());
}

TEST(OwnerPause, GivesNoFocusToAWindowThatStaysDisabled) {
    const HostWindow host;
    ::EnableWindow(host.window(), FALSE);
    const HostWindow other;
    OwnerPause pause(host.window());
    pause.resume();
    pause.returnFocus();
    EXPECT_EQ(::GetActiveWindow(), other.window());
}

}  // namespace
}  // namespace tovar::test
