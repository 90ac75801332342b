#include "shell/win32/folder_tree_view.h"

#include <shlobj.h>

#include <array>
#include <optional>

#include "shell/win32/form_fonts.h"
#include "win32/folders/folder_room.h"
#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

using Reports = std::vector<std::optional<std::wstring>>;

/// The control in a window, with folders of the test's own on the disk.
class FolderTreeView : public testing::Test {
protected:
    FolderTreeView() {
        host_ = makeWindow(L"STATIC", WS_OVERLAPPEDWINDOW | WS_VISIBLE, nullptr, 420, 520);
        const bool created =
            view_.create(host_.get(), {10, 10, 390, 470}, 77, [this] { reported_.push_back(view_.SelectedFolder()); });
        if (!created) ADD_FAILURE() << "the control was not created";
    }

    [[nodiscard]] ShownTree tree() const { return ShownTree(view_.tree()); }
    /// The computer: the one item below the root that has no folder.
    HTREEITEM computer() {
        const std::wstring name = ShellFolderSource().computer().name;
        return tree().in(tree().root(), name);
    }
    [[nodiscard]] bool shows(HTREEITEM item, const Texts& names) const { return tree().textsIn(item) == names; }

    TemporaryFolder room_;
    TestWindow host_;
    WenFolderTreeView view_;
    Reports reported_;
};

TEST_F(FolderTreeView, ShowsDesktopDocumentsComputerAndDrives) {
    const HTREEITEM root = tree().root();
    EXPECT_EQ(tree().text(root), ShellFolderSource().desktop().name);
    EXPECT_FALSE(tree().text(root).empty());
    ASSERT_NE(computer(), nullptr);
    EXPECT_TRUE(tree().isExpanded(root));
    EXPECT_TRUE(tree().isExpanded(computer()));
    EXPECT_NE(tree().in(root, ShellFolderSource().documents().name), nullptr);
    const std::size_t drives = tree().textsIn(computer()).size();
    std::size_t letters = 0;
    for (DWORD left = ::GetLogicalDrives(); left != 0; left &= left - 1) ++letters;
    EXPECT_GE(letters, 1U);
    EXPECT_EQ(drives, letters);
    EXPECT_EQ(tree().caret(), nullptr);
    EXPECT_TRUE(reported_.empty());
}

TEST_F(FolderTreeView, SelectsAFolderHoweverDeep) {
    ASSERT_TRUE(makeFolder(room_ / L"a"));
    ASSERT_TRUE(makeFolder(room_ / LR"(a\b)"));
    ASSERT_TRUE(makeFolder(room_ / LR"(a\b\c)"));
    EXPECT_TRUE(view_.SelectFolder(room_ / LR"(a\b\c)"));
    EXPECT_EQ(view_.SelectedFolder(), room_ / LR"(a\b\c)");
    EXPECT_EQ(reported_, Reports{room_ / LR"(a\b\c)"});
    EXPECT_EQ(tree().text(tree().caret()), L"c");
    EXPECT_TRUE(tree().isVisible(tree().caret()));
}

TEST_F(FolderTreeView, TakesOtherWaysOfWritingAPath) {
    ASSERT_TRUE(makeFolder(room_ / L"A long name of a folder"));
    const std::wstring path = room_ / L"A long name of a folder";
    std::array<wchar_t, MAX_PATH> brief{};
    ASSERT_NE(::GetShortPathNameW(path.c_str(), brief.data(), MAX_PATH), 0U);
    std::wstring slashes = path + L'\\';
    for (wchar_t& each : slashes) each = each == L'\\' ? L'/' : each;
    for (const std::wstring& written : {path + L'\\', slashes, std::wstring(brief.data()), extended(path),
                                        room_ / LR"(.\x\..\A LONG NAME OF A FOLDER)"}) {
        view_.SelectFolder(L"C:\\");
        EXPECT_TRUE(view_.SelectFolder(written));
        EXPECT_EQ(view_.SelectedFolder(), path);
    }
}

TEST_F(FolderTreeView, SelectsTheNearestFolderAboveAMissingOne) {
    EXPECT_FALSE(view_.SelectFolder(room_ / LR"(missing\more)"));
    EXPECT_EQ(view_.SelectedFolder(), room_.path());
    EXPECT_FALSE(view_.SelectFolder(L""));
    EXPECT_FALSE(view_.SelectFolder(std::wstring(L"C:\\a\0b", 6)));
    EXPECT_EQ(view_.SelectedFolder(), room_.path());
}

TEST_F(FolderTreeView, TellsThatTheComputerIsNoFolder) {
    view_.SelectFolder(L"C:\\");
    tree().select(computer());
    EXPECT_EQ(reported_, (Reports{L"C:\\", std::nullopt}));
}

TEST_F(FolderTreeView, HasButtonsOnlyWhereThereAreFolders) {
    ASSERT_TRUE(makeFolder(room_ / L"empty"));
    ASSERT_TRUE(makeFolder(room_ / L"files"));
    ASSERT_TRUE(makeFile(room_ / LR"(files\a.txt)"));
    ASSERT_TRUE(makeFolder(room_ / L"full"));
    ASSERT_TRUE(makeFolder(room_ / LR"(full\inside)"));
    view_.SelectFolder(room_.path());
    ASSERT_TRUE(tree().toggle(tree().caret()));
    const HTREEITEM room = tree().caret();
    ASSERT_TRUE(shows(room, {L"empty", L"files", L"full"}));
    EXPECT_FALSE(tree().hasButton(tree().in(room, L"empty")));
    EXPECT_FALSE(tree().hasButton(tree().in(room, L"files")));
    EXPECT_TRUE(tree().hasButton(tree().in(room, L"full")));
    EXPECT_TRUE(tree().textsIn(tree().in(room, L"full")).empty());
    ASSERT_TRUE(tree().toggle(tree().in(room, L"full")));
    EXPECT_TRUE(shows(tree().in(room, L"full"), {L"inside"}));
}

TEST_F(FolderTreeView, SortsNumbersByTheirValue) {
    for (const wchar_t* name : {L"10", L"9", L"b", L"A"}) ASSERT_TRUE(makeFolder(room_ / name));
    view_.SelectFolder(room_.path());
    ASSERT_TRUE(tree().toggle(tree().caret()));
    EXPECT_TRUE(shows(tree().caret(), {L"9", L"10", L"A", L"b"}));
}

TEST_F(FolderTreeView, FollowsWhatHappensOnTheDisk) {
    ASSERT_TRUE(makeFolder(room_ / L"m"));
    view_.SelectFolder(room_ / L"m");
    const HTREEITEM room = tree().next(TVGN_PARENT, tree().caret());
    ASSERT_TRUE(makeFolder(room_ / L"a"));
    EXPECT_TRUE(waitUntil([&] { return shows(room, {L"a", L"m"}); }));
    ASSERT_TRUE(::MoveFileW((room_ / L"m").c_str(), (room_ / L"n").c_str()));
    EXPECT_TRUE(waitUntil([&] { return shows(room, {L"a", L"n"}); }));
    EXPECT_EQ(view_.SelectedFolder(), room_ / L"n");
    EXPECT_EQ(reported_.back(), room_ / L"n");
    ASSERT_TRUE(::RemoveDirectoryW((room_ / L"n").c_str()));
    EXPECT_TRUE(waitUntil([&] { return shows(room, {L"a"}); }));
    EXPECT_EQ(view_.SelectedFolder(), room_.path());
    EXPECT_EQ(reported_.back(), room_.path());
}

TEST_F(FolderTreeView, ShowsAButtonOnceTheSelectedFolderHasFolders) {
    ASSERT_TRUE(makeFolder(room_ / L"a"));
    view_.SelectFolder(room_ / L"a");
    const HTREEITEM a = tree().caret();
    EXPECT_FALSE(tree().hasButton(a));
    ASSERT_TRUE(makeFolder(room_ / LR"(a\b)"));
    EXPECT_TRUE(waitUntil([&] { return tree().hasButton(a); }));
    EXPECT_TRUE(view_.SelectFolder(room_ / LR"(a\b)"));
    EXPECT_TRUE(shows(a, {L"b"}));
}

TEST_F(FolderTreeView, LetsAWatchedFolderBeDeleted) {
    ASSERT_TRUE(makeFolder(room_ / L"a"));
    ASSERT_TRUE(makeFolder(room_ / LR"(a\b)"));
    view_.SelectFolder(room_ / LR"(a\b)");
    const HTREEITEM room = tree().next(TVGN_PARENT, tree().next(TVGN_PARENT, tree().caret()));
    ASSERT_TRUE(::RemoveDirectoryW((room_ / LR"(a\b)").c_str()));
    ASSERT_TRUE(::RemoveDirectoryW((room_ / L"a").c_str()));
    EXPECT_TRUE(waitUntil([&] { return tree().textsIn(room).empty(); }));
    EXPECT_EQ(view_.SelectedFolder(), room_.path());
}

TEST_F(FolderTreeView, LooksAnewOnF5) {
    ASSERT_TRUE(makeFolder(room_ / L"a"));
    view_.SelectFolder(room_ / L"a");
    const HTREEITEM room = tree().next(TVGN_PARENT, tree().caret());
    ASSERT_TRUE(makeFolder(room_ / L"b"));
    tree().press(VK_F5);
    EXPECT_TRUE(shows(room, {L"a", L"b"}));
}

TEST_F(FolderTreeView, IsUsedByTheKeyboard) {
    ASSERT_TRUE(makeFolder(room_ / L"a"));
    ASSERT_TRUE(makeFolder(room_ / LR"(a\b)"));
    view_.SelectFolder(room_ / L"a");
    tree().press(VK_RIGHT);
    EXPECT_TRUE(tree().isExpanded(tree().caret()));
    tree().press(VK_DOWN);
    EXPECT_EQ(view_.SelectedFolder(), room_ / LR"(a\b)");
    tree().press(VK_LEFT);
    EXPECT_EQ(view_.SelectedFolder(), room_ / L"a");
    tree().press(VK_SUBTRACT);
    EXPECT_FALSE(tree().isExpanded(tree().caret()));
}

TEST_F(FolderTreeView, SelectsAFolderThatIsClosedOverTheSelection) {
    ASSERT_TRUE(makeFolder(room_ / L"a"));
    ASSERT_TRUE(makeFolder(room_ / LR"(a\b)"));
    view_.SelectFolder(room_ / LR"(a\b)");
    ASSERT_TRUE(tree().toggle(tree().next(TVGN_PARENT, tree().caret())));
    EXPECT_EQ(view_.SelectedFolder(), room_ / L"a");
    EXPECT_EQ(reported_, (Reports{room_ / LR"(a\b)", room_ / L"a"}));
}

TEST_F(FolderTreeView, ShowsHiddenFoldersAsTheDesktopDoes) {
    ASSERT_TRUE(makeFolder(room_ / L"hidden"));
    ASSERT_TRUE(::SetFileAttributesW((room_ / L"hidden").c_str(), FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN));
    const bool takesIt = (::GetFileAttributesW((room_ / L"hidden").c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0;
    if (!takesIt) GTEST_SKIP() << "this file system keeps no such attribute";
    SHELLSTATEW state{};
    ::SHGetSetSettings(&state, SSF_SHOWALLOBJECTS, FALSE);
    view_.SelectFolder(room_.path());
    ASSERT_TRUE(tree().toggle(tree().caret()));
    EXPECT_EQ(tree().in(tree().caret(), L"hidden") != nullptr, state.fShowAllObjects != 0);
    EXPECT_TRUE(view_.SelectFolder(room_ / L"hidden"));
    EXPECT_TRUE(tree().isGhost(tree().caret()));
}

TEST_F(FolderTreeView, ShowsNamesThatTheCodePageCannotHold) {
    const std::wstring name = L"\x65E5\x672C \x0416 \x00E9 \xD83D\xDCC1";
    ASSERT_TRUE(makeFolder(room_ / name));
    EXPECT_TRUE(view_.SelectFolder(room_ / name));
    EXPECT_EQ(tree().text(tree().caret()), name);
    EXPECT_EQ(view_.SelectedFolder(), room_ / name);
}

TEST_F(FolderTreeView, GoesBeyondTheLengthOfOrdinaryPaths) {
    std::wstring path = room_.path();
    while (path.size() < 600) {
        path += L'\\' + std::wstring(100, L'x');
        ASSERT_TRUE(makeFolder(path));
    }
    EXPECT_TRUE(view_.SelectFolder(path));
    EXPECT_EQ(view_.SelectedFolder(), path);
    ASSERT_TRUE(makeFolder(path + LR"(\new)"));
    EXPECT_TRUE(waitUntil([&] { return tree().hasButton(tree().caret()); }));
    tree().press(VK_RIGHT);
    EXPECT_TRUE(shows(tree().caret(), {L"new"}));
}

TEST_F(FolderTreeView, HoldsThousandsOfFoldersWithoutWaiting) {
    const ManyFolders many(room_.path());
    const ULONGLONG begin = ::GetTickCount64();
    EXPECT_TRUE(view_.SelectFolder(many.path() + LR"(\104999)"));
    ::UpdateWindow(view_.tree());
    EXPECT_LT(::GetTickCount64() - begin, 2000U);
    EXPECT_EQ(view_.SelectedFolder(), many.path() + LR"(\104999)");
    EXPECT_GE(tree().count(), 5000);
    for (const wchar_t* name : {L"100000", L"102500", L"104999"}) {
        ASSERT_TRUE(::RemoveDirectoryW((many.path() + L'\\' + name).c_str()));
    }
    const ULONGLONG removal = ::GetTickCount64();
    tree().press(VK_F5);
    EXPECT_LT(::GetTickCount64() - removal, 2000U);
    EXPECT_EQ(view_.SelectedFolder(), many.path());
    const HTREEITEM first = tree().next(TVGN_CHILD, tree().caret());
    EXPECT_EQ(tree().text(first), L"100001");
    // What goes with the test is not to be followed.
    host_.reset();
}

TEST_F(FolderTreeView, OpensALinkToTheFolderThatHoldsItStepByStep) {
    const auto isThere = [this](const wchar_t* name) {
        return ::GetFileAttributesW((room_ / name).c_str()) != INVALID_FILE_ATTRIBUTES;
    };
    if (!runBelow(room_.path(), L"ln -s . loop")) GTEST_SKIP() << "links are made below Wine only";
    ASSERT_TRUE(waitUntil([&] { return isThere(L"loop"); }));
    EXPECT_TRUE(view_.SelectFolder(room_ / LR"(loop\loop)"));
    EXPECT_EQ(view_.SelectedFolder(), room_ / LR"(loop\loop)");
    EXPECT_TRUE(tree().hasButton(tree().caret()));
    EXPECT_EQ(tree().next(TVGN_CHILD, tree().caret()), nullptr);
    runBelow(room_.path(), L"rm loop");
    EXPECT_TRUE(waitUntil([&] { return !isThere(L"loop"); }));
}

TEST_F(FolderTreeView, FollowsItsWindowsSize) {
    ::SetWindowPos(view_.hwnd(), nullptr, 0, 0, 200, 100, SWP_NOZORDER);
    const RECT place = placeOf(view_.tree());
    EXPECT_EQ(place.right - place.left, 200);
    EXPECT_EQ(place.bottom - place.top, 100);
}

TEST_F(FolderTreeView, HasTheHostsFontANameAndTheFocus) {
    FormFonts fonts;
    ApplyFont(host_.get(), L"Courier New", fonts);
    EXPECT_EQ(faceOf(view_.tree()), L"Courier New");
    EXPECT_EQ(textOf(view_.tree()), L"Folders");
    ::SetFocus(view_.hwnd());
    EXPECT_EQ(::GetFocus(), view_.tree());
    EXPECT_EQ(::GetDlgCtrlID(view_.hwnd()), 77);
}

TEST_F(FolderTreeView, GoesWithItsParentAndCanBeCreatedAgain) {
    view_.SelectFolder(room_.path());
    host_.reset();
    EXPECT_EQ(view_.hwnd(), nullptr);
    host_ = makeWindow(L"STATIC", WS_OVERLAPPEDWINDOW | WS_VISIBLE, nullptr, 420, 520);
    reported_.clear();
    ASSERT_TRUE(
        view_.create(host_.get(), {0, 0, 300, 300}, 1, [this] { reported_.push_back(view_.SelectedFolder()); }));
    EXPECT_EQ(view_.SelectedFolder(), std::nullopt);
    EXPECT_TRUE(view_.SelectFolder(room_.path()));
    EXPECT_EQ(reported_, Reports{room_.path()});
}

}  // namespace
}  // namespace tovar::test
