#include <gtest/gtest.h>

#include <algorithm>

#include "shell/win32/pending_messages.h"
#include "win32/browser/browser_fixture.h"

namespace tovar::test {
namespace {

class ManyFolders : public BrowserFixture {
protected:
    static std::wstring numbered(int number) {
        std::wstring digits = std::to_wstring(number);
        return L"folder_" + std::wstring(5 - digits.size(), L'0') + digits;
    }
};

TEST_F(ManyFolders, ShowsFiftyThousandInOneFolder) {
    constexpr int kCount = 50000;
    std::vector<std::wstring> storedNames;
    for (int i = 0; i < kCount; ++i) storedNames.push_back(L"all/" + numbered(i) + L"/x.txt");
    open(storedNames);
    EXPECT_EQ(names(), Texts{L"all"});

    enterAddress(L"a.zip\\all\\");
    runPendingMessages();
    EXPECT_EQ(rowCount(), kCount);
    EXPECT_EQ(cell(0, 0), L"folder_00000");
    EXPECT_EQ(cell(kCount - 1, 0), L"folder_49999");
    const auto all = itemsIn(root()).at(0);
    EXPECT_TRUE(isExpanded(all));
    const auto inside = itemsIn(all);
    ASSERT_EQ(inside.size(), static_cast<std::size_t>(kCount));
    EXPECT_EQ(textOfItem(inside.back()), L"folder_49999");

    ::SendMessageW(window(), WM_COMMAND, mnuEditSelectAll, 0);
    runPendingMessages();
    EXPECT_EQ(status(), L"50000 Objects are selected.");
    send(LV1, LVM_ENSUREVISIBLE, 40000, FALSE);
    focus(40000);
    const LRESULT top = send(LV1, LVM_GETTOPINDEX);
    ::SendMessageW(window(), WM_COMMAND, mnuEditSelectInvert, 0);
    runPendingMessages();
    EXPECT_EQ(status(), L"0 Objects are selected.");
    EXPECT_TRUE(selectedRows().empty());
    EXPECT_EQ(send(LV1, LVM_GETTOPINDEX), top);
    EXPECT_EQ(send(LV1, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED), 40000);
    ::SendMessageW(window(), WM_COMMAND, mnuEditSelectAll, 0);
    runPendingMessages();
    selectItem(inside.back());
    runPendingMessages();
    EXPECT_EQ(names(), Texts{L"x.txt"});
    EXPECT_EQ(address(), L"a.zip\\all\\folder_49999\\");

    ::SendMessageW(window(), WM_COMMAND, kRefresh, 0);
    runPendingMessages();
    EXPECT_EQ(address(), L"a.zip\\all\\folder_49999\\");
    EXPECT_EQ(selectedFolder(), L"folder_49999");
    clickGoUp();
    runPendingMessages();
    EXPECT_EQ(rowCount(), kCount);
    EXPECT_TRUE(selectedRows().empty());
}

// Some lists forget what they have when they take these styles.
TEST_F(ManyFolders, KeepsSelectionAndFocusInEveryStyle) {
    constexpr int kCount = 25000;
    std::vector<std::wstring> storedNames;
    for (int i = 0; i < kCount; ++i) storedNames.push_back(numbered(i) + L".txt");
    open(storedNames);
    const std::vector<int> rows{0, 7, 24999};
    for (const int row : rows) select(row);
    focus(7);
    const auto expectTheSame = [&] {
        EXPECT_EQ(rowCount(), kCount);
        EXPECT_EQ(selectedRows(), rows);
        EXPECT_EQ(send(LV1, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED), 7);
        EXPECT_EQ(cell(0, 0), L"folder_00000.txt");
        EXPECT_EQ(cell(kCount - 1, 0), L"folder_24999.txt");
        EXPECT_EQ(status(), L"3 Objects are selected.");
    };
    for (const auto style : {mnuViewStyleSmallIcons, mnuViewStyleDetails, mnuViewStyleList, mnuViewStyleSmallIcons,
                             mnuViewStyleLargeIcons, mnuViewStyleExactDetails}) {
        SCOPED_TRACE(style);
        ::SendMessageW(window(), WM_COMMAND, style, 0);
        runPendingMessages();
        expectTheSame();
    }
    ::SendMessageW(window(), WM_COMMAND, mnuEditSelectAll, 0);
    runPendingMessages();
    ::SendMessageW(window(), WM_COMMAND, mnuViewStyleList, 0);
    runPendingMessages();
    EXPECT_EQ(selectedRows().size(), static_cast<std::size_t>(kCount));
    EXPECT_EQ(status(), L"25000 Objects are selected.");
}

TEST_F(ManyFolders, GoesDownTwoThousandAndUpAgain) {
    constexpr int kDepth = 2000;
    std::wstring path;
    for (int i = 0; i < kDepth; ++i) path += L"d/";
    open({path + L"deep.txt", L"top.txt"});
    EXPECT_EQ(names(), (Texts{L"d", L"top.txt"}));

    std::wstring key = path;
    std::replace(key.begin(), key.end(), L'/', L'\\');
    enterAddress(L"a.zip\\" + key);
    runPendingMessages();
    EXPECT_EQ(names(), Texts{L"deep.txt"});
    EXPECT_EQ(address(), L"a.zip\\" + key);
    int above = 0;
    for (HTREEITEM item = treeItem(TVGN_CARET); item != root(); item = treeItem(TVGN_PARENT, item)) ++above;
    EXPECT_EQ(above, kDepth);

    ::SendMessageW(window(), WM_COMMAND, kRefresh, 0);
    runPendingMessages();
    EXPECT_EQ(address(), L"a.zip\\" + key);
    for (int i = 0; i < 10; ++i) clickGoUp();
    EXPECT_EQ(address(), L"a.zip\\" + key.substr(0, key.size() - 20));
    EXPECT_EQ(names(), Texts{L"d"});
    ::RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

TEST_F(ManyFolders, ShowsAnAddressOfSixtyThousandCharacters) {
    const std::wstring part(300, L'p');
    std::wstring path, key;
    for (int i = 0; i < 200; ++i) {
        path += part + L"/";
        key += part + L"\\";
    }
    open({path + L"deep.txt"}, L"\\" + key);
    EXPECT_EQ(names(), Texts{L"deep.txt"});
    EXPECT_EQ(address(), L"a.zip\\" + key);
    clickGoUp();
    EXPECT_EQ(address(), L"a.zip\\" + key.substr(0, key.size() - 301));
}

TEST_F(ManyFolders, FindsAFolderThatDiffersFromAThousandOthersInCaseOnly) {
    std::vector<std::wstring> storedNames;
    for (int i = 0; i < 1024; ++i) {
        std::wstring name = L"abcdefghij";
        for (std::size_t letter = 0; letter < name.size(); ++letter) {
            if ((i >> letter & 1) != 0) name[letter] = static_cast<wchar_t>(name[letter] - L'a' + L'A');
        }
        storedNames.push_back(name + L"/" + std::to_wstring(i));
    }
    open(storedNames);
    EXPECT_EQ(rowCount(), 1024);
    enterAddress(L"a.zip\\ABcDEFghiJ\\");
    EXPECT_EQ(names(), Texts{L"571"});
}

}  // namespace
}  // namespace tovar::test
