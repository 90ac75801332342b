#include "browser/opened_copies.h"

#include <gtest/gtest.h>

#include "shell/fakes/fake_file_system.h"

namespace tovar {
namespace {

class OpenedCopiesTest : public testing::Test {
protected:
    OpenedCopiesTest() { files.addFolder(work); }

    void unpacked(const std::wstring& path, std::size_t madeFolders = 0) {
        files.addFile(work + path, "content");
        copies.add(work, path, madeFolders);
    }
    [[nodiscard]] bool isThere(const std::wstring& path) const { return files.find(work + path) != nullptr; }
    /// Another run of the host.
    void laterRun() {
        OpenedCopies later(files);
        later.removeRecorded(work);
    }

    test::FakeFileSystem files;
    const std::wstring work = L"C:\\Temp\\";
    OpenedCopies copies{files};
};

TEST_F(OpenedCopiesTest, Go) {
    unpacked(L"a.txt");
    unpacked(L"b c.txt");
    files.addFile(work + L"foreign.txt");
    copies.remove();
    EXPECT_FALSE(isThere(L"a.txt"));
    EXPECT_FALSE(isThere(L"b c.txt"));
    EXPECT_TRUE(isThere(L"foreign.txt"));
    EXPECT_FALSE(isThere(L"TovarEx.opened")) << "nothing is left to be remembered";
}

TEST_F(OpenedCopiesTest, GoWhenTheyAreReadOnly) {
    unpacked(L"a.txt");
    files.setAttributes(work + L"a.txt", attribute::kReadOnly);
    copies.remove();
    EXPECT_FALSE(isThere(L"a.txt"));
}

TEST_F(OpenedCopiesTest, TakeTheFoldersAlongThatWereMadeForThem) {
    files.addFolder(work + L"old");
    unpacked(LR"(docs\sub\a.txt)", 2);
    unpacked(LR"(docs\b.txt)", 0);
    unpacked(LR"(docs\sub\c.txt)", 0);
    unpacked(LR"(old\new\d.txt)", 1);
    copies.remove();
    EXPECT_FALSE(isThere(L"docs"));
    EXPECT_FALSE(isThere(LR"(old\new)"));
    EXPECT_TRUE(isThere(L"old")) << "it was there before";
}

TEST_F(OpenedCopiesTest, LeaveFoldersThatOthersUse) {
    unpacked(LR"(docs\a.txt)", 1);
    files.addFile(work + LR"(docs\foreign.txt)");
    copies.remove();
    EXPECT_FALSE(isThere(LR"(docs\a.txt)"));
    EXPECT_TRUE(isThere(LR"(docs\foreign.txt)"));
}

TEST_F(OpenedCopiesTest, InUseGoAtTheNextChance) {
    unpacked(LR"(docs\a.txt)", 1);
    files.fail(L"deleteFile", work + LR"(docs\a.txt)", 32);
    copies.remove();
    EXPECT_TRUE(isThere(LR"(docs\a.txt)"));
    files.fail(L"deleteFile", work + LR"(docs\a.txt)", 0);
    copies.remove();
    EXPECT_FALSE(isThere(L"docs"));
    EXPECT_FALSE(isThere(L"TovarEx.opened"));
}

TEST_F(OpenedCopiesTest, InUseGoInALaterRun) {
    unpacked(LR"(docs\a b.txt)", 1);
    files.addFile(work + LR"(docs\a b.txt)", "content").status.modifiedDate = {2001, 5, 17};
    copies.add(work, LR"(docs\a b.txt)", 0);
    files.fail(L"deleteFile", work + LR"(docs\a b.txt)", 32);
    copies.remove();
    ASSERT_NE(files.find(work + L"TovarEx.opened"), nullptr);
    EXPECT_EQ(files.find(work + L"TovarEx.opened")->bytes, "1|7|2001 5 17 0 0 0|docs\\a b.txt\r\n");
    laterRun();
    EXPECT_TRUE(isThere(LR"(docs\a b.txt)")) << "still in use";
    files.fail(L"deleteFile", work + LR"(docs\a b.txt)", 0);
    laterRun();
    EXPECT_FALSE(isThere(L"docs"));
    EXPECT_FALSE(isThere(L"TovarEx.opened"));
}

TEST_F(OpenedCopiesTest, StayWhenSomeoneHasWorkedOnThemSince) {
    files.addFile(work + L"TovarEx.opened", "0|7|2001 5 17 0 0 0|a.txt\r\n");
    files.addFile(work + L"a.txt", "longer content").status.modifiedDate = {2001, 5, 17};
    laterRun();
    EXPECT_TRUE(isThere(L"a.txt"));
    EXPECT_FALSE(isThere(L"TovarEx.opened")) << "it is a user's file now";
}

TEST_F(OpenedCopiesTest, AreNothingThatARecordMakesUp) {
    files.addFile(LR"(C:\secret.txt)", "content");
    files.addFile(work + L"keep", "content");
    for (const char* const line :
         {R"(0|7|0 0 0 0 0 0|..\secret.txt)", R"(0|7|0 0 0 0 0 0|C:\secret.txt)", R"(0|7|0 0 0 0 0 0|\secret.txt)",
          "99999999999999999999|7|0 0 0 0 0 0|keep", "-1|7|0 0 0 0 0 0|keep", "1|7|0 0 0 0 0 0|keep", "keep",
          "0|7|keep", "0|7|0 0 0 0 0 0|", "", "\xFF\xFE|||", "0||0 0 0 0 0 0|keep"}) {
        files.addFile(work + L"TovarEx.opened", std::string(line) + "\r\n");
        laterRun();
        EXPECT_NE(files.find(LR"(C:\secret.txt)"), nullptr) << line;
        EXPECT_TRUE(isThere(L"keep")) << line;
        EXPECT_NE(files.find(LR"(C:\Temp)"), nullptr) << line;
    }
}

TEST_F(OpenedCopiesTest, OfTwoRunsAreBothRemembered) {
    files.addFile(work + L"TovarEx.opened", "0|7|0 0 0 0 0 0|other.txt\r\n");
    files.addFile(work + L"other.txt", "content");
    files.fail(L"deleteFile", work + L"other.txt", 32);
    unpacked(L"a.txt");
    files.fail(L"deleteFile", work + L"a.txt", 32);
    copies.remove();
    ASSERT_NE(files.find(work + L"TovarEx.opened"), nullptr);
    EXPECT_EQ(files.find(work + L"TovarEx.opened")->bytes, "0|7|0 0 0 0 0 0|a.txt\r\n0|7|0 0 0 0 0 0|other.txt\r\n");
}

TEST_F(OpenedCopiesTest, NeedAWorkFolder) {
    copies.add(L"", L"a.txt", 0);
    copies.removeRecorded(L"");
    copies.remove();
    EXPECT_TRUE(files.calls(L"deleteFile").empty());
    EXPECT_TRUE(files.calls(L"writeFile").empty());
}

}  // namespace
}  // namespace tovar
