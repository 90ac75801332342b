#include "shell/win32/list_view.h"

#include <gtest/gtest.h>

#include <array>

#include "shell/fakes/fake_message_boxes.h"
#include "shell/win32/subclass.h"
#include "shell/win32/system_icons.h"
#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

class ListViewTest : public testing::Test {
protected:
    ListViewTest() {
        INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES};
        ::InitCommonControlsEx(&classes);
        list_ = makeWindow(WC_LISTVIEWW, WS_POPUP | LVS_REPORT);
    }
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::SendMessageW(list_.get(), message, wParam, lParam);
    }
    [[nodiscard]] HIMAGELIST images(WPARAM which) const {
        return reinterpret_cast<HIMAGELIST>(send(LVM_GETIMAGELIST, which));
    }
    void insertRows(int count) {
        std::array<wchar_t, 2> text{L'x'};
        for (int row = 0; row < count; ++row) {
            LVITEMW item{};
            item.mask = LVIF_TEXT;
            item.iItem = row;
            item.pszText = text.data();
            send(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        }
    }

    TestWindow list_;
    FakeMessageBoxes messages_;
};

TEST_F(ListViewTest, SharesImageLists) {
    EXPECT_EQ(::GetWindowLongPtrW(list_.get(), GWL_STYLE) & 0x40, 0);
    ShareImageLists(list_.get());
    EXPECT_EQ(::GetWindowLongPtrW(list_.get(), GWL_STYLE) & 0x40, 0x40);
    const LONG_PTR style = ::GetWindowLongPtrW(list_.get(), GWL_STYLE);
    ShareImageLists(list_.get());
    EXPECT_EQ(::GetWindowLongPtrW(list_.get(), GWL_STYLE), style);
}

TEST_F(ListViewTest, ShowsTheSystemsIcons) {
    ShareImageLists(list_.get());
    AttachSystemImageList(list_.get(), true);
    ASSERT_NE(SystemImageList(1), nullptr);
    ASSERT_NE(SystemImageList(0), nullptr);
    EXPECT_EQ(images(LVSIL_SMALL), SystemImageList(1));
    EXPECT_EQ(images(LVSIL_NORMAL), SystemImageList(0));
    AttachSystemImageList(list_.get(), false);
    EXPECT_EQ(images(LVSIL_SMALL), nullptr);
    EXPECT_EQ(images(LVSIL_NORMAL), nullptr);
}

TEST_F(ListViewTest, LeavesTheSystemsImageListsAliveWhenItGoes) {
    ShareImageLists(list_.get());
    AttachSystemImageList(list_.get(), true);
    list_.reset();
    EXPECT_GT(::ImageList_GetImageCount(SystemImageList(1)), 0);
}

TEST_F(ListViewTest, LetsNobodyReplaceItsImageListsOnceSubclassed) {
    ShareImageLists(list_.get());
    AttachSystemImageList(list_.get(), true);
    ASSERT_TRUE(Subclass(list_.get(), &ListViewWindowProc, nullptr, messages_));
    EXPECT_EQ(send(LVM_SETIMAGELIST, LVSIL_SMALL, 0), 0);
    EXPECT_EQ(send(LVM_SETIMAGELIST, LVSIL_NORMAL, 0), 0);
    EXPECT_EQ(images(LVSIL_SMALL), SystemImageList(1));
    EXPECT_EQ(images(LVSIL_NORMAL), SystemImageList(0));
}

// Looks at the window's properties when it is as good as gone.
HANDLE oldProcedureAtTheEnd, objectAtTheEnd;
WNDPROC innerProcedure;
LRESULT CALLBACK watchTheEnd(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCDESTROY) {
        oldProcedureAtTheEnd = ::GetPropW(window, L"OldWndProc");
        objectAtTheEnd = ::GetPropW(window, L"ObjectPtr");
    }
    return ::CallWindowProcW(innerProcedure, window, message, wParam, lParam);
}

TEST_F(ListViewTest, RemovesItsPropertiesWhenItIsDestroyed) {
    innerProcedure = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(list_.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&watchTheEnd)));
    ASSERT_TRUE(Subclass(list_.get(), &ListViewWindowProc, this, messages_));
    ASSERT_NE(::GetPropW(list_.get(), L"OldWndProc"), nullptr);
    ASSERT_NE(::GetPropW(list_.get(), L"ObjectPtr"), nullptr);
    oldProcedureAtTheEnd = objectAtTheEnd = this;
    list_.reset();
    EXPECT_EQ(oldProcedureAtTheEnd, nullptr);
    EXPECT_EQ(objectAtTheEnd, nullptr);
}

TEST_F(ListViewTest, TakesItems) {
    insertRows(1);
    std::array<wchar_t, 8> text{L"changed"};
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.pszText = text.data();
    EXPECT_TRUE(SetListItem(list_.get(), item));
    std::array<wchar_t, 16> read{};
    item.pszText = read.data();
    item.cchTextMax = static_cast<int>(read.size());
    send(LVM_GETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_STREQ(read.data(), L"changed");
    item.iItem = 5;
    EXPECT_FALSE(SetListItem(list_.get(), item));
}

TEST_F(ListViewTest, CountsSelectedRows) {
    insertRows(3);
    EXPECT_EQ(SelectedCount(list_.get()), 0U);
    LVITEMW item{};
    item.stateMask = item.state = LVIS_SELECTED;
    send(LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&item));
    send(LVM_SETITEMSTATE, 2, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(SelectedCount(list_.get()), 2U);
}

}  // namespace
}  // namespace tovar::test
