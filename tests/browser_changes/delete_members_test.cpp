// Deleting members of archives.

#include "browser_changes/change_fixture.h"

namespace tovar {
namespace {

using Texts = std::vector<std::wstring>;
using Names = std::vector<std::string>;

class DeleteMembers : public test::ChangeFixture {};

TEST_F(DeleteMembers, AsksWithTheList) {
    list<cUnZip>({"docs/a.txt", "b c.txt"});
    confirmations.agrees = false;
    EXPECT_FALSE(changes.remove(scene(), {folder(L"\\docs\\"), file(1)}));
    EXPECT_EQ(confirmations.messages,
              Texts{L"Delete the following files/folders ? \r\n\r\ndocs/*.*\r\n\"b c.txt\"\r\n"});
    EXPECT_EQ(confirmations.captions, Texts{L"Deleting..."});
    EXPECT_TRUE(library.calls.empty()) << "declined";
    EXPECT_TRUE(messages.shown.empty());
    expectClean();
}

TEST_F(DeleteMembers, HandsFilesAndThenFoldersToTheZipEngine) {
    list<cUnZip>({"docs/a.txt", "b c.txt", "@d", "-e", "x,y"});
    EXPECT_TRUE(changes.remove(scene(), {folder(L"\\docs\\"), file(1), file(2), file(3), file(4)}));
    ASSERT_EQ(library.calls.size(), 1U);
    EXPECT_EQ(library.calls[0].archive, R"(C:\out\new.zip)");
    EXPECT_EQ(library.calls[0].options.deleteEntries, 1);
    EXPECT_EQ(library.calls[0].slots, (Names{"b c.txt", "b c.txt", "@d", "-e", "x,y", "docs/*.*"}));
    EXPECT_EQ(progress.owner, &confirmations.window);
    EXPECT_TRUE(lines().empty());
    expectClean();
}

TEST_F(DeleteMembers, ListsNothingAgainWhenTheZipLibraryFails) {
    list<cUnZip>({"a.txt"});
    library.answers = {15};
    EXPECT_FALSE(changes.remove(scene(), {file(0)}));
    EXPECT_EQ(boxes(), L"[Compression Error|Could't Open To Write Error]") << "an archive that is read-only";
    expectClean();
}

TEST_F(DeleteMembers, HandsAResponseFileToTheLzhLibrary) {
    listLzh<cUnLHA>({"docs/a.txt", "b c.txt", "@d", "-e", "x,y"});
    EXPECT_TRUE(changes.remove(scene(), {folder(L"\\docs\\"), file(1), file(2), file(3), file(4)}));
    EXPECT_EQ(lines(), Texts{LR"(d C:\out\new.lzh @C:\Temp\VTL1.TMP)"});
    EXPECT_EQ(listBytes, "docs/*.*\r\n\"b c.txt\"\r\n@d\r\n-e\r\n\"x,y\"\r\n\r\n");
    EXPECT_EQ(commands.owners.back(), &confirmations.window);
    EXPECT_NE(driver->hWnd(), &confirmations.window) << "it goes with the dialog";
    EXPECT_TRUE(library.calls.empty());
    expectClean();
}

TEST_F(DeleteMembers, SparesFilesOfTheSameNameInOtherFolders) {
    listLzh<cUnLHA>({"a.txt", "docs/A.TXT", "b.txt"});
    EXPECT_TRUE(changes.remove(scene(), {file(0)}));
    EXPECT_TRUE(changes.remove(scene(), {file(2)}));
    EXPECT_TRUE(changes.remove(scene(), {file(1)})) << "its path says which it is";
    EXPECT_EQ(lines(), (Texts{LR"(d -p1 C:\out\new.lzh @C:\Temp\VTL1.TMP)", LR"(d C:\out\new.lzh @C:\Temp\VTL2.TMP)",
                              LR"(d C:\out\new.lzh @C:\Temp\VTL3.TMP)"}));
}

TEST_F(DeleteMembers, TellsWhatTheLzhLibraryAnswers) {
    listLzh<cUnLHA>({"a.txt"});
    commands.runAnswer = 0x8011;
    EXPECT_FALSE(changes.remove(scene(), {file(0)}));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, L"LHA Message");
    EXPECT_EQ(messages.shown[0].text, dynamic_cast<CommonDriver&>(*driver).ErrString());
    EXPECT_FALSE(messages.shown[0].text.empty());
    EXPECT_EQ(messages.shown[0].owner, &confirmations.window);
    expectClean();
}

TEST_F(DeleteMembers, RunsNothingWithoutAList) {
    listLzh<cUnLHA>({"a.txt"});
    files.fail(L"writeFile", LR"(C:\Temp\VTL1.TMP)", 112);
    EXPECT_FALSE(changes.remove(scene(), {file(0)}));
    EXPECT_TRUE(lines().empty()) << "an empty list means every member to some libraries";
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, L"LHA Message");
    expectClean();
}

TEST_F(DeleteMembers, OfNothingAsksNothing) {
    list<cUnZip>({"a.txt"});
    EXPECT_FALSE(changes.remove(scene(), {}));
    EXPECT_TRUE(confirmations.messages.empty());
}

TEST_F(DeleteMembers, OfAnotherKindAsksNothing) {
    list<cUnRAR>({"a.txt"});
    EXPECT_FALSE(changes.remove(scene(), {file(0)}));
    EXPECT_FALSE(changes.add(scene(), {LR"(C:\base\a.txt)"}));
    EXPECT_FALSE(changes.pickAndAdd(scene(), Pick::Files));
    EXPECT_TRUE(confirmations.messages.empty());
    EXPECT_TRUE(questions.folders.empty());
}

TEST_F(DeleteMembers, TurnsAwayAnotherChangeMeanwhile) {
    list<cUnZip>({"a.txt"});
    library.whileRunning = [this](ZipEvents&) {
        EXPECT_FALSE(changes.remove(scene(), {file(0)}));
        EXPECT_FALSE(changes.pickAndAdd(scene(), Pick::Files));
    };
    EXPECT_TRUE(changes.remove(scene(), {file(0)}));
    EXPECT_EQ(confirmations.messages.size(), 1U);
    EXPECT_TRUE(questions.folders.empty());
}

}  // namespace
}  // namespace tovar
