// Members that the user copies to the clipboard.

#include "win32/drag/support/drag_fixture.h"

namespace tovar::test {
namespace {

namespace fs = std::filesystem;

class Copy : public DragFixture {
protected:
    void copy() const {
        selectAll();
        ::PostMessageW(browser().window(), WM_COMMAND, MAKEWPARAM(kCopy, 0), 0);
    }
    /// The clipboard's list of files, as another program sees it.
    [[nodiscard]] std::vector<fs::path> pasted() const {
        const fs::path names = folder / L"names.txt";
        EXPECT_EQ(Helper(L"paste \"" + names.native() + L'"', {}).end(), 0U);
        std::vector<fs::path> paths;
        std::ifstream stream(names, std::ios::binary);
        for (std::string line; std::getline(stream, line);) {
            paths.emplace_back(std::u8string(line.begin(), line.end()));
        }
        stream.close();
        fs::remove(names);
        return paths;
    }
    static void putSomethingElseThere() {
        ASSERT_TRUE(waitUntil([] { return ::OpenClipboard(nullptr) != FALSE; }));
        ::EmptyClipboard();
        ::CloseClipboard();
    }
};

class CopyOfKind : public Copy, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(CopyOfKind, ForAnotherProgram) {
    show(GetParam(), {{"docs/in.txt", "in a folder"}, {"@list.txt", "a list?"}, {"a b,c.txt", "blank and comma"}});
    copy();
    ASSERT_TRUE(waitUntil([] { return ::IsClipboardFormatAvailable(CF_HDROP) != FALSE; }));
    const std::vector<fs::path> paths = pasted();
    ASSERT_EQ(paths.size(), 3U);
    fs::copy(paths[0], target / L"docs", fs::copy_options::recursive);
    for (const fs::path& path : {paths[1], paths[2]}) fs::copy(path, target / path.filename());
    EXPECT_EQ(contentsBelow(target),
              (Contents{{"docs/in.txt", "in a folder"}, {"@list.txt", "a list?"}, {"a b,c.txt", "blank and comma"}}));
    EXPECT_EQ(ownItems(), 1U);
    putSomethingElseThere();
    EXPECT_TRUE(waitUntil([&] { return ownItems() == 0; }));
    EXPECT_TRUE(boxes.seen.empty());
}

INSTANTIATE_TEST_SUITE_P(Kinds, CopyOfKind, testing::Values(L"a.zip", L"a.tar", L"a.lzh"), [](const auto& each) {
    const std::wstring name = each.param;
    return std::string(name.begin() + 2, name.end());
});

TEST_F(Copy, LeavesNoNamesThatLeadNowhereWhenTheComponentGoes) {
    show(L"a.zip", {{"a.txt", "content"}});
    copy();
    ASSERT_TRUE(waitUntil([] { return ::IsClipboardFormatAvailable(CF_HDROP) != FALSE; }));
    browser().close();
    runMessages();
    EXPECT_EQ(ownItems(), 1U) << "what is copied outlives the window";
    release();
    EXPECT_FALSE(::IsClipboardFormatAvailable(CF_HDROP));
    EXPECT_EQ(ownItems(), 0U);
}

TEST_F(Copy, SaysSoWhenAnotherProgramHoldsTheClipboard) {
    putSomethingElseThere();
    show(L"a.zip", {{"a.txt", "content"}});
    Helper helper(L"hold \"" + (folder / L"x") + L'"', folder / L"ready");
    ASSERT_TRUE(helper.isStarted());
    copy();
    ASSERT_TRUE(waitUntil([&] { return !boxes.seen.empty(); }));
    EXPECT_EQ(boxes.seen[0].text, L"Another program uses the clipboard. Try it again.");
    EXPECT_EQ(boxes.seen[0].title, L"Extraction Message");
    EXPECT_EQ(helper.end(), 0U);
    EXPECT_TRUE(waitUntil([&] { return ownItems() == 0; }));
    EXPECT_FALSE(::IsClipboardFormatAvailable(CF_HDROP));
}

}  // namespace
}  // namespace tovar::test
