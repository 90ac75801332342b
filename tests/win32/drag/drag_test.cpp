// Members that the user's hand drags out of the browser.

#include <ostream>

#include "win32/drag/support/drag_fixture.h"

namespace tovar::test {
namespace {

namespace fs = std::filesystem;

constexpr POINT kBeside{850, 100};

const Members& members() {
    static const Members all{{"docs/in.txt", "in a folder"},
                             {"docs/sub/deep.txt", "deeper"},
                             {"-x.txt", "a switch?"},
                             {"@list.txt", "a list?"},
                             {"a b,c.txt", "blank and comma"}};
    return all;
}
Contents all() { return {members().begin(), members().end()}; }

class Drag : public DragFixture {
protected:
    /// Drags the first row, and with it all that are selected.
    void dragTo(POINT place, Pointer::End end = Pointer::End::Drop) {
        const Pointer pointer = Pointer::drag(placeOf(0), place, end, [this] { return ownItems() != 0; });
        EXPECT_TRUE(waitUntil([&] { return pointer.isDone(); }));
        runMessages();
    }
};

class DragOfKind : public Drag, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(DragOfKind, IntoAFolder) {
    show(GetParam(), members());
    const DropWindow shellFolder(target, Taking::Folder, kBeside);
    ASSERT_TRUE(shellFolder.isReady());
    std::wstring caption, list;
    const Question question([&](HWND dialog) {
        list = textOf(::GetDlgItem(dialog, IDC_TXT_LIST));
        caption = textOf(::GetDlgItem(dialog, IDC_LBL_QUESTION));
        answer(IDYES)(dialog);
    });
    selectAll();
    dragTo(shellFolder.middle());
    ASSERT_TRUE(waitUntil([&] { return question.done(); }));
    EXPECT_EQ(caption, L"Extract following files and folders ?");
    EXPECT_EQ(list, L"docs/*.*\r\n-x.txt\r\n@list.txt\r\n\"a b,c.txt\"\r\n");
    EXPECT_TRUE(waitUntil([&] { return contentsBelow(target) == all(); }))
        << testing::PrintToString(contentsBelow(target));
    EXPECT_EQ(shellFolder.drops(), 1);
    EXPECT_TRUE(waitUntil([&] { return ownItems() == 0; }));
    EXPECT_TRUE(boxes.seen.empty()) << testing::PrintToString(boxes.seen.front().text);
}

TEST_P(DragOfKind, AsStreams) {
    show(GetParam(), members());
    const DropWindow other(target, Taking::Streams, kBeside);
    ASSERT_TRUE(other.isReady());
    selectAll();
    dragTo(other.middle());
    EXPECT_TRUE(waitUntil([&] { return contentsBelow(target) == all(); }))
        << testing::PrintToString(contentsBelow(target));
    EXPECT_TRUE(waitUntil([&] { return ownItems() == 0; }));
    EXPECT_TRUE(boxes.seen.empty()) << testing::PrintToString(boxes.seen.front().text);
}

INSTANTIATE_TEST_SUITE_P(Kinds, DragOfKind, testing::Values(L"a.zip", L"a.tar", L"a.lzh"), [](const auto& each) {
    const std::wstring name = each.param;
    return std::string(name.begin() + 2, name.end());
});

TEST_F(Drag, UnpacksNothingWhenTheUserDeclines) {
    show(L"a.zip", members());
    const DropWindow shellFolder(target, Taking::Folder, kBeside);
    const Question question(answer(IDCANCEL));
    selectAll();
    dragTo(shellFolder.middle());
    ASSERT_TRUE(waitUntil([&] { return question.done(); }));
    EXPECT_TRUE(fs::is_empty(target)) << testing::PrintToString(contentsBelow(target));
    EXPECT_TRUE(waitUntil([&] { return ownItems() == 0; }));
}

TEST_F(Drag, EndsWithEscape) {
    show(L"a.zip", members());
    const DropWindow shellFolder(target, Taking::Folder, kBeside);
    const Question question(answer(IDYES));
    selectAll();
    dragTo(shellFolder.middle(), Pointer::End::Escape);
    EXPECT_TRUE(waitUntil([&] { return ownItems() == 0; }));
    EXPECT_EQ(question.times(), 0);
    EXPECT_EQ(shellFolder.drops(), 0);
    EXPECT_TRUE(fs::is_empty(target));
}

TEST_F(Drag, UnpacksNothingIntoTheRecycleBin) {
    show(L"a.zip", members());
    const fs::path bin = folder / L"Recycled";
    fs::create_directory(bin);
    const DropWindow shellFolder(bin, Taking::Folder, kBeside);
    const Question question(answer(IDYES));
    selectAll();
    dragTo(shellFolder.middle());
    ASSERT_TRUE(waitUntil([&] { return shellFolder.drops() == 1 && ownItems() == 0; }));
    EXPECT_EQ(question.times(), 0);
    EXPECT_TRUE(fs::is_empty(bin));
}

TEST_F(Drag, SaysSoWhenTheFolderVanishesBeforeTheAnswer) {
    show(L"a.zip", members());
    const DropWindow shellFolder(target, Taking::Folder, kBeside);
    const Question question([&](HWND dialog) {
        EXPECT_TRUE(fs::remove(target)) << "the placeholder is not in it any more";
        answer(IDYES)(dialog);
    });
    selectAll();
    dragTo(shellFolder.middle());
    ASSERT_TRUE(waitUntil([&] { return question.done(); }));
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, L"The folder is not there any more.");
    EXPECT_EQ(boxes.seen[0].title, L"Extraction Message");
    EXPECT_FALSE(fs::exists(target));
}

TEST_F(Drag, LeavesNothingOfADropThatNoShellTellsOf) {
    show(L"a.zip", members());
    const DropWindow editor(target, Taking::Path, kBeside);
    selectAll();
    dragTo(editor.middle());
    ASSERT_TRUE(waitUntil([&] { return editor.drops() == 1; }));
    EXPECT_EQ(ownItems(), 1U) << "it may still look at the file";
    browser().close();
    EXPECT_TRUE(waitUntil([&] { return ownItems() == 0; }));
}

TEST_F(Drag, GoesOnlyOnceToWhoTakesBothWays) {
    show(L"a.zip", members());
    const DropWindow greedy(target, Taking::Both, kBeside);
    const Question question(answer(IDYES));
    selectAll();
    dragTo(greedy.middle());
    EXPECT_TRUE(waitUntil([&] { return contentsBelow(target) == all(); }))
        << testing::PrintToString(contentsBelow(target));
    EXPECT_TRUE(waitUntil([&] { return ownItems() == 0; }));
    EXPECT_EQ(question.times(), 0);
}

TEST_F(Drag, FromAFolderInTheArchive) {
    show(L"a.zip", members());
    browser().openRow(0);
    ASSERT_EQ(browser().names(), (Texts{L"sub", L"in.txt"}));
    const DropWindow other(target, Taking::Streams, kBeside);
    selectAll();
    dragTo(other.middle());
    EXPECT_TRUE(waitUntil([&] {
        return contentsBelow(target) == Contents{{"in.txt", "in a folder"}, {"sub/deep.txt", "deeper"}};
    })) << testing::PrintToString(contentsBelow(target));
    EXPECT_TRUE(waitUntil([&] { return ownItems() == 0; }));
}

TEST_F(Drag, ToAnotherProgram) {
    show(L"a.zip", members());
    Helper helper(L"take 850 100 \"" + target.native() + L'"', folder / L"ready");
    ASSERT_TRUE(helper.isStarted());
    selectAll();
    dragTo({910, 160});
    EXPECT_TRUE(waitUntil([&] { return contentsBelow(target) == all(); }))
        << testing::PrintToString(contentsBelow(target));
    EXPECT_EQ(helper.end(), 0U);
    EXPECT_TRUE(waitUntil([&] { return ownItems() == 0; }));
}

}  // namespace
}  // namespace tovar::test
