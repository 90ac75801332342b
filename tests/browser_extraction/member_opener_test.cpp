#include "browser/member_opener.h"

#include "browser_extraction/fakes/extraction_fixture.h"
#include "shell/fakes/fake_programs.h"

namespace tovar {
namespace {

using Paths = std::vector<std::wstring>;

class MemberOpenerTest : public test::ExtractionFixture {
protected:
    MemberOpenerTest() { drive<cUnZip>(); }

    /// Opens the member of an archive that holds this one only.
    /// @param unpackedTo  the file that the library makes; empty: none
    bool open(const std::string& storedName, const std::wstring& unpackedTo) {
        library.members = {test::LibraryMember{.name = storedName}};
        driver->SetArcFile(archive);
        folders.build(L"a.xyz", driver->entries());
        library.whileRunning = [this, unpackedTo] {
            const std::wstring command = this->line();
            if (const std::size_t at = command.find(L" @"); at != command.npos) {
                shell.files.readFile(command.substr(at + 2), listed);
            }
            if (!unpackedTo.empty()) shell.files.addFile(unpackedTo, "content");
        };
        return opener.open({owner, *driver, archive, folders, FolderModel::kRoot}, 0);
    }
    [[nodiscard]] bool isThere(const std::wstring& path) const { return shell.files.find(path) != nullptr; }

    test::FakePrograms programs;
    ProgramLauncher launcher{programs, pump};
    OpenedCopies copies{shell.files};
    FolderModel folders;
    MemberOpener opener{{extraction, workFolder, shell.operations, shell.files, shell.messages, launcher, copies}};
};

TEST_F(MemberOpenerTest, UnpacksIntoTheWorkFolderAndOpensIt) {
    EXPECT_TRUE(open("a.txt", LR"(C:\Temp\a.txt)"));
    EXPECT_EQ(line(), LR"( -x -i --j C:\a.xyz C:\Temp\ a.txt)");
    EXPECT_EQ(library.owners.back(), owner);
    EXPECT_EQ(programs.opened, Paths{LR"(C:\Temp\a.txt)"});
    copies.remove();
    EXPECT_FALSE(isThere(LR"(C:\Temp\a.txt)"));
}

TEST_F(MemberOpenerTest, NamesTheMemberWithSlashesAndQuotes) {
    EXPECT_TRUE(open("docs/sub/a b.txt", LR"(C:\Temp\docs\sub\a b.txt)"));
    EXPECT_EQ(line(), LR"( -x -i --j C:\a.xyz C:\Temp\ "docs/sub/a b.txt")");
    EXPECT_EQ(programs.opened, Paths{LR"(C:\Temp\docs\sub\a b.txt)"});
    open("x,y.txt", L"");
    EXPECT_EQ(line(), LR"( -x -i --j C:\a.xyz C:\Temp\ "x,y.txt")");
}

TEST_F(MemberOpenerTest, FindsWhatALibraryPutsThereWithoutItsFolders) {
    EXPECT_TRUE(open("docs/a.txt", LR"(C:\Temp\a.txt)"));
    EXPECT_EQ(programs.opened, Paths{LR"(C:\Temp\a.txt)"});
}

TEST_F(MemberOpenerTest, OpensTheFormWithUnderscoresThatSomeLibrariesWrite) {
    EXPECT_TRUE(open("my long name.txt", LR"(C:\Temp\my_long_name.txt)"));
    EXPECT_EQ(programs.opened, Paths{LR"(C:\Temp\my_long_name.txt)"});
    copies.remove();
    EXPECT_FALSE(isThere(LR"(C:\Temp\my_long_name.txt)"));
}

TEST_F(MemberOpenerTest, LeavesTheBlanksOfTheWorkFolderAlone) {
    shell.files.addFolder(LR"(C:\My Work)");
    workFolder.SetTempDir(LR"(C:\My Work)");
    EXPECT_TRUE(open("a b.txt", LR"(C:\My Work\a_b.txt)"));
    EXPECT_EQ(line(), LR"( -x -i --j C:\a.xyz "C:\My Work\" "a b.txt")");
    EXPECT_EQ(programs.opened, Paths{LR"(C:\My Work\a_b.txt)"});
}

TEST_F(MemberOpenerTest, DeletesWhatLiesThereFirst) {
    shell.files.addFile(LR"(C:\Temp\a b.txt)", "old");
    shell.files.addFile(LR"(C:\Temp\a_b.txt)", "old", attribute::kReadOnly);
    EXPECT_FALSE(open("a b.txt", L"")) << "nothing was unpacked";
    EXPECT_FALSE(isThere(LR"(C:\Temp\a b.txt)"));
    EXPECT_FALSE(isThere(LR"(C:\Temp\a_b.txt)"));
    EXPECT_TRUE(programs.opened.empty());
    EXPECT_TRUE(shell.messages.shown.empty()) << "silently not opened";
}

TEST_F(MemberOpenerTest, OpensProgramsLikeEverythingElse) {
    EXPECT_TRUE(open("setup.exe", LR"(C:\Temp\setup.exe)"));
    EXPECT_EQ(programs.opened, Paths{LR"(C:\Temp\setup.exe)"});
    EXPECT_TRUE(shell.messages.shown.empty());
}

TEST_F(MemberOpenerTest, TakesFoldersAwayThatWereMadeForTheMember) {
    shell.files.addFolder(LR"(C:\Temp\docs)");
    EXPECT_TRUE(open("docs/sub/a.txt", LR"(C:\Temp\docs\sub\a.txt)"));
    copies.remove();
    EXPECT_FALSE(isThere(LR"(C:\Temp\docs\sub)"));
    EXPECT_TRUE(isThere(LR"(C:\Temp\docs)"));
}

TEST_F(MemberOpenerTest, TellsALibraryOfNamesThatMeanSomethingElseByAList) {
    for (const char* const name : {"-o", "@list.txt", "!x"}) {
        open(name, L"");
        EXPECT_EQ(line().substr(0, 34), LR"( -x -i --j C:\a.xyz C:\Temp\ @C:\T)") << name;
        EXPECT_EQ(listed, std::string(name) + "\r\n");
    }
    drive<cUnTar>();
    open("-o", L"");
    EXPECT_EQ(line().substr(0, 6), L" xvfoa");
}

TEST_F(MemberOpenerTest, NeverTouchesAnythingOutsideTheWorkFolder) {
    shell.files.addFile(LR"(C:\evil.txt)", "old");
    shell.files.addFile(LR"(C:\Temp\inner\x)", "old");
    for (const char* const name : {"../evil.txt", "inner/../../evil.txt", "C:/evil.txt", "//evil.txt"}) {
        open(name, L"");
        EXPECT_TRUE(isThere(LR"(C:\evil.txt)")) << name;
    }
    EXPECT_TRUE(isThere(LR"(C:\Temp\inner\x)"));
    EXPECT_TRUE(programs.opened.empty());
}

TEST_F(MemberOpenerTest, OpensNothingThatCannotBeAFile) {
    for (const char* const name : {"NUL", "docs/con.txt", "a*.txt", "a?"}) {
        library.calls.clear();
        EXPECT_FALSE(open(name, L"")) << name;
        EXPECT_EQ(line(), L"") << name;
    }
}

TEST_F(MemberOpenerTest, OpensWhatIsThereAfterAnErrorOfItsLibrary) {
    library.runAnswer = 0x8016;
    EXPECT_TRUE(open("a.txt", LR"(C:\Temp\a.txt)"));
    ASSERT_EQ(shell.messages.shown.size(), 1U);
    EXPECT_EQ(shell.messages.shown[0].text, L"CRC error in archive file");
}

TEST_F(MemberOpenerTest, OpensNothingWhenTheWindowHasGone) {
    library.members = {test::LibraryMember{.name = "a.txt"}};
    driver->SetArcFile(archive);
    library.whileRunning = [this] {
        shell.files.addFile(LR"(C:\Temp\a.txt)");
        extraction.cancel();
    };
    EXPECT_FALSE(opener.open({owner, *driver, archive, folders, FolderModel::kRoot}, 0));
    EXPECT_TRUE(programs.opened.empty());
    copies.remove();
    EXPECT_FALSE(isThere(LR"(C:\Temp\a.txt)"));
}

TEST_F(MemberOpenerTest, NeedsAWorkFolder) {
    shell.paths.tempFolderError = 8;
    workFolder.resetToTempFolder();
    EXPECT_FALSE(open("a.txt", L""));
    EXPECT_EQ(line(), L"");
}

TEST_F(MemberOpenerTest, TellsWhenTheListCannotBeWritten) {
    shell.paths.createTempFileError = 5;
    shell.information.errorTexts[5] = L"Access denied.";
    EXPECT_FALSE(open("-x", L""));
    ASSERT_EQ(shell.messages.shown.size(), 1U);
    EXPECT_EQ(shell.messages.shown[0].text, L"Access denied.");
    EXPECT_EQ(shell.messages.shown[0].title, L"Extraction Message");
}

}  // namespace
}  // namespace tovar
