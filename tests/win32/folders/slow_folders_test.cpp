#include "shell/win32/folder_browser.h"
#include "win32/folders/folder_room.h"
#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

constexpr const wchar_t* kShare = LR"(\\server\share)";

/// A computer of the network that answers when the test lets it.
class SlowServer {
public:
    void answer() const { ::SetEvent(door_.get()); }
    [[nodiscard]] ShellFolderSource::Reader folders() {
        return [this](const std::wstring& path) {
            FolderLook look;
            if (!path.starts_with(kShare)) return look;
            ::WaitForSingleObject(door_.get(), 20000);
            if (path == kShare) look.folders = {{L"data", false, false, 1}, {L"more", false, false, 2}};
            return look;
        };
    }
    [[nodiscard]] ShellFolderContents::Reader contents() {
        return [this](const std::wstring& path) {
            ShellFolderContents::Files files;
            if (!path.starts_with(kShare)) return files;
            ::WaitForSingleObject(door_.get(), 20000);
            return ShellFolderContents::Files{{L"data", true}, {L"more", true}, {L"notes.txt"}};
        };
    }

private:
    UniqueHandle door_{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
};

class SlowFolders : public testing::Test {
protected:
    SlowFolders() {
        host_ = makeWindow(L"STATIC", WS_OVERLAPPEDWINDOW | WS_VISIBLE, nullptr, 640, 420);
        const HWND frame = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 10, 10, 600, 360, host_.get(),
                                             reinterpret_cast<HMENU>(77), nullptr, nullptr);
        EXPECT_NE(frame, nullptr);
        WenFolderBrowser::Events events;
        events.folderChanged = [this](const std::optional<std::wstring>&, FolderState state) {
            states_.push_back(state);
        };
        events.namesSelected = [](const std::wstring&) {};
        EXPECT_TRUE(browser_.createInstead(host_.get(), 77, std::move(events)));
    }
    // Before the control goes, which waits for its threads.
    void TearDown() override { server_.answer(); }
    [[nodiscard]] ShownTree tree() const { return ShownTree(browser_.tree()); }
    [[nodiscard]] std::wstring row(int number) const {
        std::wstring text(100, L'\0');
        LVITEMW item{};
        item.pszText = text.data();
        item.cchTextMax = 100;
        ::SendMessageW(browser_.list(), LVM_GETITEMTEXTW, static_cast<WPARAM>(number), reinterpret_cast<LPARAM>(&item));
        return item.pszText;
    }
    [[nodiscard]] LRESULT rows() const { return ::SendMessageW(browser_.list(), LVM_GETITEMCOUNT, 0, 0); }
    /// The item of the share, whatever is written behind its name.
    [[nodiscard]] HTREEITEM share() const {
        const HTREEITEM computer = tree().in(tree().root(), ShellFolderSource().computer().name);
        for (HTREEITEM each = tree().next(TVGN_CHILD, computer); each != nullptr; each = tree().next(TVGN_NEXT, each)) {
            if (tree().text(each).starts_with(kShare)) return each;
        }
        return nullptr;
    }

    SlowServer server_;
    TestWindow host_;
    WenFolderBrowser browser_{server_.folders(), server_.contents()};
    std::vector<FolderState> states_;
};

TEST_F(SlowFolders, DoNotKeepTheDialogWaiting) {
    const ULONGLONG begin = ::GetTickCount64();
    EXPECT_TRUE(browser_.SelectFolder(LR"(\\server\share\data)"));
    EXPECT_LT(::GetTickCount64() - begin, 5000U);  // the server would take twenty seconds
    ASSERT_FALSE(states_.empty());
    EXPECT_EQ(states_.back(), FolderState::Reading);
    ASSERT_NE(share(), nullptr);
    EXPECT_EQ(tree().text(share()), LR"(\\server\share (reading...))");
    server_.answer();
    EXPECT_TRUE(waitUntil([this] { return states_.back() == FolderState::There; }));
    EXPECT_EQ(browser_.SelectedFolder(), LR"(\\server\share\data)");
    EXPECT_EQ(tree().text(share()), kShare);
    EXPECT_EQ(tree().textsIn(share()), (Texts{L"data", L"more"}));
    EXPECT_TRUE(waitUntil([this] { return rows() == 3; }));
    EXPECT_EQ(row(2), L"notes.txt");
}

TEST_F(SlowFolders, AreShownWhenTheyAnswer) {
    server_.answer();
    EXPECT_TRUE(browser_.SelectFolder(kShare));
    ASSERT_TRUE(waitUntil([this] { return states_.back() == FolderState::There; }));
    ASSERT_TRUE(waitUntil([this] { return rows() == 3; }));
}

TEST_F(SlowFolders, SayInTheListThatTheyAreRead) {
    browser_.SelectFolder(kShare);
    ASSERT_NE(share(), nullptr);
    tree().select(share());
    EXPECT_EQ(rows(), 1);
    EXPECT_EQ(row(0), L"Reading...");
    server_.answer();
    EXPECT_TRUE(waitUntil([this] { return rows() == 3; }));
    EXPECT_EQ(row(0), L"data");
}

TEST_F(SlowFolders, LetTheUserGoElsewhereMeanwhile) {
    browser_.SelectFolder(LR"(\\server\share\data)");
    EXPECT_TRUE(browser_.SelectFolder(L"C:\\"));
    EXPECT_EQ(states_.back(), FolderState::There);
    EXPECT_EQ(browser_.SelectedFolder(), L"C:\\");
}

class FolderBrowserBar : public SlowFolders {
protected:
    void drag(int by) const {
        ::SendMessageW(browser_.bar(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 50));
        ::SendMessageW(browser_.bar(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(2 + by, 50));
        ::SendMessageW(browser_.bar(), WM_LBUTTONUP, 0, MAKELPARAM(2, 50));
    }
    [[nodiscard]] int barLeft() const { return placeOf(browser_.bar()).left; }
};

TEST_F(FolderBrowserBar, LiesBetweenTreeAndFiles) {
    EXPECT_EQ(placeOf(browser_.tree()).right, barLeft());
    EXPECT_EQ(placeOf(browser_.bar()).right, placeOf(browser_.list()).left);
    EXPECT_EQ(textOf(browser_.bar()), L"Width of the folder tree");
}

TEST_F(FolderBrowserBar, IsDraggedWithTheMouse) {
    const int before = barLeft();
    drag(60);
    EXPECT_EQ(barLeft(), before + 60);
    EXPECT_EQ(placeOf(browser_.tree()).right, before + 60);
    EXPECT_EQ(placeOf(browser_.bar()).right, placeOf(browser_.list()).left);
    drag(-9999);
    EXPECT_GT(placeOf(browser_.tree()).right - placeOf(browser_.tree()).left, 40);
}

TEST_F(FolderBrowserBar, KeepsItsPlaceWhenTheWindowGrows) {
    drag(-40);
    const int before = barLeft();
    const HWND window = ::GetParent(browser_.list());
    ::SetWindowPos(window, nullptr, 0, 0, 800, 360, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(barLeft(), before);
    EXPECT_EQ(placeOf(browser_.list()).right - placeOf(window).left, 800);
}

TEST_F(FolderBrowserBar, FitsTheTreeToItsTextsByADoubleClick) {
    ::SendMessageW(browser_.bar(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(2, 50));
    const int fitted = placeOf(browser_.tree()).right - placeOf(browser_.tree()).left;
    EXPECT_EQ(::GetWindowLongPtrW(browser_.tree(), GWL_STYLE) & WS_HSCROLL, 0);
    drag(-30);
    EXPECT_NE(::GetWindowLongPtrW(browser_.tree(), GWL_STYLE) & WS_HSCROLL, 0) << fitted;
}

}  // namespace
}  // namespace tovar::test
