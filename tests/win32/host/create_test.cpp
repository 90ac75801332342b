#include "win32/host/host_fixture.h"

namespace tovar::test {
namespace {

/// The buttons whose dialogs the component does not have yet.
class SampleHostButtons : public HostFixture {
protected:
    static Texts windowsOfThisThread() {
        Texts names;
        ::EnumThreadWindows(
            ::GetCurrentThreadId(),
            [](HWND each, LPARAM result) WINAPI -> BOOL {
                if (::IsWindowVisible(each)) reinterpret_cast<Texts*>(result)->push_back(windowText(each));
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&names));
        return names;
    }
};

TEST_F(SampleHostButtons, CompressNeedsALibraryThatCreates) {
    select(L"small.zip");
    click(L"&Compress");
    EXPECT_EQ(status(), L"No library that creates archives is there.");
    EXPECT_TRUE(boxes.seen.empty());
}

TEST_F(SampleHostButtons, CompressShowsNothingYetAndCreatesNothing) {
    const recording::Session session;
    stop();
    libraries.recorded(L"InfoZip32.dll");
    start();
    click(L"&Compress");
    EXPECT_EQ(status(), L"Select the files to compress first.");
    select(L"small.tar.gz");
    const Texts before = windowsOfThisThread();
    click(L"&Compress");
    EXPECT_EQ(windowsOfThisThread(), before);
    EXPECT_TRUE(boxes.seen.empty());
    EXPECT_TRUE(::IsWindowEnabled(window));
    EXPECT_EQ(rows(), (Texts{L"small.tar.gz", L"small.zip"})) << "small.tar.zip is not made";
    EXPECT_EQ(status(), L"2 items") << "the folder is shown again";
    EXPECT_TRUE(session.log().empty()) << "only its presence counts";
    doubleClick(L"small.zip");
    EXPECT_TRUE(browser().isVisible());
    stop();
}

TEST_F(SampleHostButtons, ConfigureShowsNothingYet) {
    const Texts before = windowsOfThisThread();
    click(L"Con&figure");
    EXPECT_EQ(windowsOfThisThread(), before);
    EXPECT_TRUE(::IsWindowEnabled(window));
    doubleClick(L"small.zip");
    click(L"Con&figure");
    EXPECT_TRUE(browser().isVisible());
    EXPECT_TRUE(boxes.seen.empty());
}

TEST_F(SampleHostButtons, OpenDoesNothingWithoutASelection) {
    click(L"&Open");
    EXPECT_FALSE(browser().isThere());
    EXPECT_TRUE(boxes.seen.empty());
}

}  // namespace
}  // namespace tovar::test
