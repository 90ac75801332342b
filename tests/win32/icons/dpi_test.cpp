#include "shell/win32/dpi.h"

#include <gtest/gtest.h>

#include "shell/win32/handles.h"
#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

TEST(Dpi, ScalesLengths) {
    EXPECT_EQ(scaled(5, 96), 5);
    EXPECT_EQ(scaled(5, 192), 10);
    EXPECT_EQ(scaled(3, 144), 5);  // 4.5
    EXPECT_EQ(scaled(0, 144), 0);
}

TEST(Dpi, IsThatOfTheScreen) {
    const TestWindow window = makeWindow(L"STATIC", WS_POPUP);
    const HDC screen = ::GetDC(nullptr);
    EXPECT_EQ(dpiOf(window.get()), ::GetDeviceCaps(screen, LOGPIXELSX));
    ::ReleaseDC(nullptr, screen);
}

TEST(Dpi, MakesTheFontOfMessages) {
    const TestWindow window = makeWindow(L"STATIC", WS_POPUP);
    const UniqueFont font(createMessageFont(dpiOf(window.get())));
    ASSERT_NE(font, nullptr);
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    LOGFONTW description{};
    ::GetObjectW(font.get(), sizeof description, &description);
    EXPECT_STREQ(description.lfFaceName, metrics.lfMessageFont.lfFaceName);
    EXPECT_EQ(description.lfHeight, metrics.lfMessageFont.lfHeight);
}

}  // namespace
}  // namespace tovar::test
