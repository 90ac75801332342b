#include "win32/create/pack_controls.h"
#include "win32/host/host_fixture.h"
#include "win32/settings/config_controls.h"

namespace tovar::test {
namespace {

/// The buttons behind which there are dialogs of the component.
class SampleHostButtons : public HostFixture {};

TEST_F(SampleHostButtons, CompressNeedsALibraryThatCreates) {
    select(L"small.zip");
    click(L"&Compress");
    EXPECT_EQ(status(), L"No library that creates archives is there.");
    EXPECT_TRUE(boxes.seen.empty());
}

TEST_F(SampleHostButtons, CompressShowsThePackDialog) {
    const recording::Session session;
    stop();
    libraries.recorded(L"InfoZip32.dll");
    start();
    click(L"&Compress");
    EXPECT_EQ(status(), L"Select the files to compress first.");
    select(L"small.tar.gz");
    const PackDialogUser user([&](HWND dialog) {
        const PackControls controls{dialog};
        EXPECT_EQ(textOf(dialog), L"Compress Files");
        EXPECT_EQ(controls.names(), Texts{L"small.tar.gz"});
        EXPECT_EQ(controls.text(IDC_TXT_ARC_FILE), folder / L"small.tar.zip");
        controls.press(IDOK);
    });
    click(L"&Compress");
    EXPECT_EQ(user.times(), 1);
    EXPECT_TRUE(boxes.seen.empty());
    EXPECT_TRUE(::IsWindowEnabled(window));
    EXPECT_EQ(status(), L"2 items") << "the folder is shown again";
    const std::vector<std::string> log = session.log();
    EXPECT_TRUE(std::ranges::any_of(log, [](const std::string& line) {
        return line.starts_with("ZpArchive 2 ") && line.ends_with(R"("small.tar.gz" "small.tar.gz")");
    }));
    doubleClick(L"small.zip");
    EXPECT_TRUE(browser().isVisible());
    stop();
}

TEST_F(SampleHostButtons, ConfigureSwitchesLibrariesOff) {
    const ConfigDialogUser user([&](HWND dialog) {
        const ConfigControls controls{dialog};
        EXPECT_EQ(controls.checked(), "0001000010");
        EXPECT_EQ(::GetWindow(dialog, GW_OWNER), window);
        EXPECT_FALSE(::IsWindowEnabled(window));
        controls.click(IDC_CHK_UNPACKER);
        controls.press(IDOK);
    });
    click(L"Con&figure");
    EXPECT_EQ(user.times(), 1);
    EXPECT_TRUE(::IsWindowEnabled(window));
    EXPECT_TRUE(boxes.seen.empty());
    doubleClick(L"small.zip");
    EXPECT_FALSE(browser().isThere());
    EXPECT_EQ(status(), L"small.zip is not opened as an archive.");
    doubleClick(L"small.tar.gz");
    EXPECT_TRUE(browser().isVisible());
}

TEST_F(SampleHostButtons, ConfigureEndsWithTheWindow) {
    const ConfigDialogUser user([&](HWND dialog) {
        ::DestroyWindow(window);
        EXPECT_FALSE(::IsWindow(dialog));
    });
    click(L"Con&figure");
    EXPECT_EQ(user.times(), 1);
    EXPECT_FALSE(::IsWindow(window));
}

TEST_F(SampleHostButtons, ConfigureKeepsAWindowThatIsToBeClosed) {
    const ConfigDialogUser user([&](HWND dialog) {
        ::SendMessageW(window, WM_CLOSE, 0, 0);
        EXPECT_TRUE(::IsWindow(dialog));
        ConfigControls{dialog}.press(IDCANCEL);
    });
    click(L"Con&figure");
    EXPECT_EQ(user.times(), 1);
    EXPECT_TRUE(waitUntil([&] { return !::IsWindow(window); }));
}

TEST_F(SampleHostButtons, OpenDoesNothingWithoutASelection) {
    click(L"&Open");
    EXPECT_FALSE(browser().isThere());
    EXPECT_TRUE(boxes.seen.empty());
}

}  // namespace
}  // namespace tovar::test
