// Adding files to archives.

#include "browser_changes/change_fixture.h"

namespace tovar {
namespace {

using Texts = std::vector<std::wstring>;
using Names = std::vector<std::string>;

class AddFiles : public test::ChangeFixture {};

TEST_F(AddFiles, AsksWithTheirNumber) {
    list<cUnZip>({"x"});
    confirmations.agrees = false;
    EXPECT_FALSE(changes.add(scene(), {LR"(C:\base\a.txt)", LR"(C:\base\dir)"}));
    EXPECT_EQ(confirmations.messages,
              Texts{L"Compress 2 files and folders ?\r\nIf files already exist, they will be overwritten."});
    EXPECT_EQ(confirmations.captions, Texts{L"Compressing..."});
    EXPECT_TRUE(desktop.operations.empty()) << "declined";
    EXPECT_TRUE(library.calls.empty());
    expectClean();
}

TEST_F(AddFiles, PlacesThemInTheFolderShown) {
    list<cUnZip>({"docs/my notes/x"});
    EXPECT_TRUE(changes.add(scene(L"\\docs\\my notes\\"), {LR"(C:\base\a.txt)", LR"(C:\base\dir)"}));
    EXPECT_EQ(filesInTemp,
              (Texts{LR"(C:\Temp\VTL1.TMP\docs\my notes\a.txt)", LR"(C:\Temp\VTL1.TMP\docs\my notes\dir\c.txt)",
                     LR"(C:\Temp\VTL1.TMP\docs\my notes\dir\deep\d.txt)"}));
    ASSERT_EQ(library.calls.size(), 1U);
    EXPECT_EQ(library.calls[0].archive, R"(C:\out\new.zip)");
    EXPECT_EQ(library.calls[0].slots,
              (Names{R"(docs\my notes\a.txt)", R"(docs\my notes\a.txt)", R"(docs\my notes\dir\*.*)"}));
    EXPECT_EQ(library.calls[0].options.systemAndHidden, 1);
    EXPECT_EQ(library.calls[0].options.recurse, 1);
    EXPECT_EQ(library.calls[0].options.level, '6');
    expectClean();
}

TEST_F(AddFiles, CopiesWithoutAQuestion) {
    list<cUnZip>({"x"});
    EXPECT_TRUE(changes.add(scene(), {LR"(C:\base\a.txt)", LR"(C:\base\b.txt)"}));
    ASSERT_EQ(desktop.operations.size(), 1U);
    EXPECT_EQ(desktop.operations[0].function, FileFunction::Copy);
    EXPECT_EQ(desktop.operations[0].flags, 532);
    EXPECT_EQ(desktop.operations[0].sources, std::wstring(L"a.txt\0b.txt\0\0", 13));
    EXPECT_EQ(desktop.operations[0].target, std::wstring(L"C:\\Temp\\VTL1.TMP\\\0\0", 19));
    EXPECT_EQ(desktop.operations[0].owner, &confirmations.window);
}

TEST_F(AddFiles, HandsAResponseFileToTheLzhLibrary) {
    listLzh<cUnLHA>({"x"});
    files.addFile(LR"(C:\base\my file)");
    files.addFile(LR"(C:\base\p,q)");
    files.addFile(LR"(C:\base\@r)");
    files.addFile(LR"(C:\base\-s)");
    EXPECT_TRUE(changes.add(
        scene(), {LR"(C:\base\my file)", LR"(C:\base\p,q)", LR"(C:\base\@r)", LR"(C:\base\-s)", LR"(C:\base\dir)"}));
    EXPECT_EQ(lines(), Texts{LR"(a -r2 -a1 -x1 C:\out\new.lzh @C:\Temp\VTL2.TMP)"});
    EXPECT_EQ(listBytes, "\"my file\"\r\n\"p,q\"\r\n@r\r\n-s\r\ndir\r\n");
    EXPECT_EQ(currentFolder, LR"(C:\Temp\VTL1.TMP\)") << "what the list is relative to";
    EXPECT_TRUE(library.calls.empty());
    expectClean();
}

TEST_F(AddFiles, TellsWhatTheLzhLibraryAnswersAndListsAgain) {
    listLzh<cUnLHA>({"x"});
    commands.runAnswer = 0x8020;
    EXPECT_TRUE(changes.add(scene(), {LR"(C:\base\a.txt)"}));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, L"LHA Message");
    EXPECT_EQ(messages.shown[0].text, dynamic_cast<CommonDriver&>(*driver).ErrString());
    expectClean();
}

TEST_F(AddFiles, CleansUpWhenTheZipLibraryFails) {
    list<cUnZip>({"x"});
    library.answers = {15};
    EXPECT_TRUE(changes.add(scene(), {LR"(C:\base\a.txt)"}));
    EXPECT_EQ(boxes(), L"[Compression Error|Could't Open To Write Error]");
    expectClean();
}

TEST_F(AddFiles, CleansUpWhenCopyingFails) {
    list<cUnZip>({"x"});
    desktop.result.code = 5;
    EXPECT_FALSE(changes.add(scene(), {LR"(C:\base\a.txt)"}));
    EXPECT_EQ(boxes(), L"[ZIP Message|The files could not be copied into the folder for temporary files.]");
    EXPECT_TRUE(library.calls.empty());
    expectClean();
}

TEST_F(AddFiles, RemovesCopiesThatAreReadOnly) {
    list<cUnZip>({"x"});
    files.addFile(LR"(C:\base\dir\locked)", "1", attribute::kReadOnly | attribute::kHidden);
    EXPECT_TRUE(changes.add(scene(), {LR"(C:\base\dir)"}));
    EXPECT_NE(std::ranges::find(filesInTemp, LR"(C:\Temp\VTL1.TMP\dir\locked)"), filesInTemp.end());
    expectClean();
    EXPECT_NE(files.find(LR"(C:\base\dir\locked)"), nullptr);
}

TEST_F(AddFiles, DoesNotFollowLinksWhenCopiesGo) {
    list<cUnZip>({"x"});
    library.whileRunning = [this](ZipEvents&) { files.addFolder(LR"(C:\Temp\VTL1.TMP\link)").link = true; };
    EXPECT_TRUE(changes.add(scene(), {LR"(C:\base\a.txt)"}));
    for (const std::wstring& path : files.calls(L"listFolder")) EXPECT_EQ(path.find(L"link"), path.npos) << "followed";
    expectClean();
}

TEST_F(AddFiles, TellsWhenThereIsNoFolderForCopies) {
    list<cUnZip>({"x"});
    files.fail(L"createFolder", LR"(C:\Temp\VTL1.TMP)", 5);
    information.errorTexts[5] = L"Access denied.";
    EXPECT_FALSE(changes.add(scene(), {LR"(C:\base\a.txt)"}));
    EXPECT_EQ(boxes(), L"[ZIP Message|Access denied.]");
    expectClean();
}

TEST_F(AddFiles, RefusesFoldersThatLeadOut) {
    list<cUnZip>({"../../evil/x", "aux/y"});
    EXPECT_FALSE(changes.add(scene(L"\\..\\..\\evil\\"), {LR"(C:\base\a.txt)"}));
    EXPECT_FALSE(changes.add(scene(L"\\aux\\"), {LR"(C:\base\a.txt)"}));
    EXPECT_EQ(messages.shown.size(), 2U);
    EXPECT_TRUE(desktop.operations.empty());
    expectClean();
}

TEST_F(AddFiles, RefusesTwoOfOneName) {
    list<cUnZip>({"x"});
    EXPECT_FALSE(changes.add(scene(), {LR"(C:\base\a.txt)", LR"(C:\other\A.TXT)"}));
    EXPECT_EQ(boxes(),
              L"[ZIP Message|\"C:\\other\\A.TXT\" has the same name as another one. Add one of them at a time.]");
    EXPECT_TRUE(confirmations.messages.empty());
    EXPECT_TRUE(library.calls.empty());
    expectClean();
}

TEST_F(AddFiles, LeavesTheArchiveItselfOut) {
    list<cUnZip>({"x"});
    EXPECT_FALSE(changes.add(scene(), {LR"(c:\OUT\new.zip)"}));
    EXPECT_EQ(boxes(), L"[ZIP Message|An archive cannot be added to itself.]");
    EXPECT_TRUE(confirmations.messages.empty());
    EXPECT_TRUE(changes.add(scene(), {LR"(c:\OUT\new.zip)", LR"(C:\base\a.txt)"}));
    EXPECT_EQ(filesInTemp, Texts{LR"(C:\Temp\VTL1.TMP\a.txt)"});
    EXPECT_EQ(confirmations.messages,
              Texts{L"Compress 1 files and folders ?\r\nIf files already exist, they will be overwritten."});
}

TEST_F(AddFiles, LeavesTheArchiveOutOfAFolderThatHoldsIt) {
    list<cUnZip>({"x"});
    files.addFile(archive, "the archive itself");
    files.addFile(LR"(C:\out\new.zip.txt)");
    files.addFile(LR"(C:\out\more\new.zip)");
    EXPECT_TRUE(changes.add(scene(), {LR"(c:\Out)", LR"(C:\base\a.txt)"}));
    EXPECT_EQ(filesInTemp, (Texts{LR"(C:\Temp\VTL1.TMP\Out\more\new.zip)", LR"(C:\Temp\VTL1.TMP\Out\new.zip.txt)",
                                  LR"(C:\Temp\VTL1.TMP\a.txt)"}));
    ASSERT_EQ(library.calls.size(), 1U);
    EXPECT_EQ(library.calls[0].slots, (Names{R"(Out\*.*)", R"(Out\*.*)", "a.txt"}));
    EXPECT_TRUE(messages.shown.empty());
    expectClean();
}

TEST_F(AddFiles, LeavesTheArchiveOutOfAFolderFarAboveIt) {
    archive = LR"(C:\far\down\below\new.zip)";
    list<cUnZip>({"x"});
    files.addFile(archive, "the archive itself");
    files.addFile(LR"(C:\far\1.txt)");
    files.addFile(LR"(C:\far\down\2.txt)");
    files.addFile(LR"(C:\far\down\below\3.txt)");
    files.addFile(LR"(C:\far\downs\below\new.zip)");
    EXPECT_TRUE(changes.add(scene(), {LR"(C:\far\)"}));
    EXPECT_EQ(filesInTemp,
              (Texts{LR"(C:\Temp\VTL1.TMP\far\1.txt)", LR"(C:\Temp\VTL1.TMP\far\down\2.txt)",
                     LR"(C:\Temp\VTL1.TMP\far\down\below\3.txt)", LR"(C:\Temp\VTL1.TMP\far\downs\below\new.zip)"}));
    expectClean();
}

TEST_F(AddFiles, RefusesAFolderThatHoldsTheCopies) {
    list<cUnZip>({"x"});
    EXPECT_FALSE(changes.add(scene(), {LR"(C:\base\a.txt)", LR"(c:\temp)"}));
    EXPECT_EQ(
        boxes(),
        L"[ZIP Message|\"c:\\temp\" holds the folder for temporary files, and cannot be added as a whole. Add what "
        L"is in it.]");
    EXPECT_TRUE(confirmations.messages.empty());
    EXPECT_TRUE(desktop.operations.empty());
}

TEST_F(AddFiles, RefusesAWholeDrive) {
    list<cUnZip>({"x"});
    EXPECT_FALSE(changes.add(scene(), {LR"(D:\)"}));
    EXPECT_EQ(boxes(), L"[ZIP Message|\"D:\\\" has no name that it could have in the archive. Add what is in it.]");
    EXPECT_TRUE(confirmations.messages.empty());
}

TEST_F(AddFiles, TellsWhatVanishedBeforeTheAnswer) {
    list<cUnZip>({"x"});
    confirmations.whileAsking = [this] { files.deleteFile(LR"(C:\base\b.txt)"); };
    EXPECT_FALSE(changes.add(scene(), {LR"(C:\base\a.txt)", LR"(C:\base\b.txt)"}));
    EXPECT_EQ(boxes(), L"[ZIP Message|\"C:\\base\\b.txt\" is not there any more. Nothing was added.]");
    EXPECT_EQ(messages.shown[0].owner, &confirmations.window);
    EXPECT_TRUE(desktop.operations.empty());
    EXPECT_TRUE(library.calls.empty());
    expectClean();
}

TEST_F(AddFiles, LeavesAReadOnlyArchiveAsItIs) {
    list<cUnZip>({"x"});
    files.addFile(archive, "", attribute::kReadOnly);
    EXPECT_FALSE(changes.add(scene(), {LR"(C:\base\a.txt)"}));
    EXPECT_FALSE(changes.remove(scene(), {file(0)}));
    EXPECT_EQ(boxes(),
              L"[ZIP Message|The archive is read-only. It was not changed.]"
              L"[ZIP Message|The archive is read-only. It was not changed.]");
    EXPECT_TRUE(confirmations.messages.empty());
    EXPECT_TRUE(desktop.operations.empty());
    EXPECT_TRUE(library.calls.empty());
}

TEST_F(AddFiles, TakesAPathThatComesTwiceOnce) {
    list<cUnZip>({"x"});
    EXPECT_TRUE(changes.add(scene(), {LR"(C:\base\dir)", LR"(C:\BASE\dir\)"}));
    EXPECT_EQ(confirmations.messages,
              Texts{L"Compress 1 files and folders ?\r\nIf files already exist, they will be overwritten."});
    ASSERT_EQ(library.calls.size(), 1U);
    EXPECT_EQ(library.calls[0].slots, (Names{R"(dir\*.*)", R"(dir\*.*)"}));
}

TEST_F(AddFiles, BeginsBesideTheArchiveAndThenWhereTheyWereLast) {
    list<cUnZip>({"x"});
    EXPECT_FALSE(changes.pickAndAdd(scene(), Pick::Files)) << "none were chosen";
    questions.answer = {LR"(C:\base\a.txt)"};
    EXPECT_TRUE(changes.pickAndAdd(scene(), Pick::Files));
    EXPECT_TRUE(changes.pickAndAdd(scene(), Pick::Files));
    EXPECT_EQ(questions.folders, (Texts{LR"(C:\out)", LR"(C:\out)", LR"(C:\base)"}));
    EXPECT_EQ(confirmations.messages.size(), 2U);
}

TEST_F(AddFiles, OfNothingAsksNothing) {
    list<cUnZip>({"x"});
    EXPECT_FALSE(changes.add(scene(), {}));
    EXPECT_TRUE(confirmations.messages.empty());
}

}  // namespace
}  // namespace tovar
