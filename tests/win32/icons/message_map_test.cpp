#include "shell/win32/message_map.h"

#include <gtest/gtest.h>

namespace tovar::test {
namespace {

struct Handlers {
    int commands = 0;
    void onCommand() { ++commands; }
    LRESULT onNotify(NMHDR& header) { return static_cast<LRESULT>(header.code) + 1; }
    std::optional<LRESULT> onMessage(WPARAM wParam, LPARAM lParam) {
        return wParam == 0 ? std::nullopt : std::optional<LRESULT>(lParam);
    }
};

TEST(MessageMap, RunsTheCommandOfTheRightControlAndNotification) {
    static constexpr CommandRoute<Handlers> routes[] = {{7, BN_CLICKED, &Handlers::onCommand}};
    Handlers handlers;
    EXPECT_TRUE(dispatchCommand(handlers, routes, MAKEWPARAM(7, BN_CLICKED)));
    EXPECT_FALSE(dispatchCommand(handlers, routes, MAKEWPARAM(7, BN_DOUBLECLICKED)));
    EXPECT_FALSE(dispatchCommand(handlers, routes, MAKEWPARAM(8, BN_CLICKED)));
    EXPECT_EQ(handlers.commands, 1);
}

TEST(MessageMap, AnswersTheNotificationOfTheRightControl) {
    static constexpr NotifyRoute<Handlers> routes[] = {{7, 30, &Handlers::onNotify}};
    Handlers handlers;
    NMHDR header{nullptr, 7, 30};
    EXPECT_EQ(dispatchNotify(handlers, routes, reinterpret_cast<LPARAM>(&header)), 31);
    header.idFrom = 8;
    EXPECT_EQ(dispatchNotify(handlers, routes, reinterpret_cast<LPARAM>(&header)), std::nullopt);
}

TEST(MessageMap, LeavesAMessageToTheSystemWhenItsHandlerSaysSo) {
    static constexpr MessageRoute<Handlers> routes[] = {{WM_APP, &Handlers::onMessage}};
    Handlers handlers;
    EXPECT_EQ(dispatchMessage(handlers, routes, WM_APP, 1, 5), 5);
    EXPECT_EQ(dispatchMessage(handlers, routes, WM_APP, 0, 5), std::nullopt);
    EXPECT_EQ(dispatchMessage(handlers, routes, WM_APP + 1, 1, 5), std::nullopt);
}

}  // namespace
}  // namespace tovar::test
