#include "browser/win32/browser_factory.h"

#include <gtest/gtest.h>
#include <objbase.h>

#include "browser/win32/system_file_types.h"
#include "shell/win32/system_icons.h"
#include "win32/browser/browser_fixture.h"

namespace tovar::test {
namespace {

constexpr wchar_t kFolder[] = L"C:\\windows\\";

TEST(BrowserFactory, MakesAWindowWithTheDesktopsIcons) {
    FakeFileSystem files;
    FakeMessageBoxes messages;
    FakeDriver driver({L"docs/a.txt", L"b.txt"});
    int timesUnloaded = 0;
    WindowsBrowserFactory factory(files, messages);
    auto browser = factory.create({L"C:\\files\\a.zip", &driver, kFolder, L""}, [&] { ++timesUnloaded; });
    ASSERT_NE(browser, nullptr);
    EXPECT_TRUE(browser->FillControl(L"\\"));
    const auto window = static_cast<HWND>(browser->hWnd());
    EXPECT_EQ(::SendMessageW(::GetDlgItem(window, LV1), LVM_GETITEMCOUNT, 0, 0), 2);
    std::array<wchar_t, 128> type{};
    LVITEMW item{};
    item.iSubItem = 4;
    item.pszText = type.data();
    item.cchTextMax = static_cast<int>(type.size());
    ::SendMessageW(::GetDlgItem(window, LV1), LVM_GETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(type.data(), ShellTypeName(kFolder));
    EXPECT_STRNE(type.data(), L"");
    browser->unload();
    EXPECT_EQ(timesUnloaded, 1);
}

TEST(SystemFileTypes, KnowFilesByTheirNames) {
    SystemFileTypes types(kFolder);
    EXPECT_EQ(types.ofFile(L"no such file.txt").name, FileTypeName(L"x.txt"));
    EXPECT_EQ(types.ofFile(std::wstring(300, L'n') + L".txt").name, FileTypeName(L"x.txt"));
    EXPECT_EQ(types.ofFile(L"no such file.txt").icon,
              SystemIconIndex(L"x.txt", SHGFI_SMALLICON | SHGFI_USEFILEATTRIBUTES));
}

TEST(SystemFileTypes, TakeTheFolderFromTheWorkFolder) {
    SystemFileTypes types(kFolder);
    EXPECT_EQ(types.ofFolder().name, ShellTypeName(kFolder));
    EXPECT_EQ(types.ofFolder().icon, SystemIconIndex(kFolder, SHGFI_SMALLICON));
    EXPECT_EQ(types.openFolderIcon(), SystemIconIndex(kFolder, SHGFI_SMALLICON | SHGFI_OPENICON));
}

TEST(SystemFileTypes, KnowFoldersWithoutAWorkFolder) {
    for (const wchar_t* workFolder : {L"", L"C:\\no\\such\\folder\\"}) {
        SystemFileTypes types(workFolder);
        EXPECT_EQ(types.ofFolder().name, ShellTypeName(kFolder));
        EXPECT_EQ(types.ofFolder().icon, SystemIconIndex(kFolder, SHGFI_SMALLICON));
    }
}

}  // namespace
}  // namespace tovar::test
