#include <gtest/gtest.h>

#include "win32/browser/browser_fixture.h"

namespace tovar::test {
namespace {

class AddressBoxTest : public BrowserFixture {
protected:
    [[nodiscard]] std::pair<DWORD, DWORD> caret() const {
        DWORD start = 0, end = 0;
        ::SendMessageW(edit(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        return {start, end};
    }
    void chooseFromHistory(int index) const {
        send(cmbURL, CB_SETCURSEL, static_cast<WPARAM>(index));
        ::SendMessageW(window(), WM_COMMAND, MAKEWPARAM(cmbURL, CBN_SELENDOK),
                       reinterpret_cast<LPARAM>(control(cmbURL)));
    }
};

TEST_F(AddressBoxTest, GoesToTheAddressThatWasEntered) {
    open({L"a/b/1"});
    enterAddress(L"a.zip\\a\\b\\");
    EXPECT_EQ(selectedFolder(), L"b");
    EXPECT_EQ(names(), Texts{L"1"});
    EXPECT_EQ(address(), L"a.zip\\a\\b\\");
}

TEST_F(AddressBoxTest, MovesTheCaretToTheEnd) {
    open({L"a/1"}, L"\\a\\");
    ::SendMessageW(edit(), EM_SETSEL, 0, 0);
    press(edit(), VK_RETURN);
    EXPECT_EQ(caret(), (std::pair<DWORD, DWORD>{8, 8}));
}

TEST_F(AddressBoxTest, PutsTheAddressBackWhenThereIsNoSuchFolder) {
    open({L"a/1"}, L"\\a\\");
    enterAddress(L"a.zip\\nothing\\");
    EXPECT_EQ(address(), L"a.zip\\a\\");
    EXPECT_EQ(names(), Texts{L"1"});
}

TEST_F(AddressBoxTest, PutsTheAddressBackOnEscape) {
    open({L"a/1"}, L"\\a\\");
    ::SetWindowTextW(edit(), L"half typed");
    press(edit(), VK_ESCAPE);
    EXPECT_EQ(address(), L"a.zip\\a\\");
}

TEST_F(AddressBoxTest, KeepsAHistoryOfFoldersEachOnce) {
    open({L"a/1", L"b/2"});
    selectItem(itemsIn(root())[1]);
    selectItem(itemsIn(root())[0]);
    selectItem(root());
    EXPECT_EQ(send(cmbURL, CB_GETCOUNT), 3);
    EXPECT_EQ(send(cmbURL, CB_GETCURSEL), 0);
    selectItem(itemsIn(root())[1]);
    EXPECT_EQ(send(cmbURL, CB_GETCOUNT), 3);
    EXPECT_EQ(send(cmbURL, CB_GETCURSEL), 1);
}

TEST_F(AddressBoxTest, GoesToAnAddressFromTheHistory) {
    open({L"a/1"});
    selectItem(itemsIn(root())[0]);
    chooseFromHistory(0);
    EXPECT_EQ(selectedFolder(), L"a.zip");
    chooseFromHistory(1);
    EXPECT_EQ(selectedFolder(), L"a");
    EXPECT_EQ(address(), L"a.zip\\a\\");
}

TEST_F(AddressBoxTest, TakesNoCharacterForTheKeysItKnows) {
    open({L"a"});
    ::SetWindowTextW(edit(), L"");
    for (const wchar_t key : {L'\r', L'\x1B', L'\t'}) ::SendMessageW(edit(), WM_CHAR, static_cast<WPARAM>(key), 0);
    EXPECT_EQ(address(), L"");
    ::SendMessageW(edit(), WM_CHAR, L'x', 0);
    EXPECT_EQ(address(), L"x");
}

}  // namespace
}  // namespace tovar::test
