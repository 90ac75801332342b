#include "shell/work_folder.h"

#include <gtest/gtest.h>

#include "shell/fakes/fake_shell.h"
#include "shell/fakes/fake_text_codec.h"

namespace tovar {
namespace {

using Log = std::vector<std::wstring>;

class WorkFolderTest : public testing::Test {
protected:
    WorkFolderTest() { shell.files.addFolder(LR"(C:\Temp)"); }

    test::FakeShell shell;
    test::FakeTextCodec codec;
    WorkFolder folder{shell.operations, shell.files, shell.paths};
};

TEST_F(WorkFolderTest, IsUnknownAtFirst) { EXPECT_EQ(folder.path(), L""); }

TEST_F(WorkFolderTest, BecomesTheSystemsTemporaryFolder) {
    shell.files.clearLog();
    folder.resetToTempFolder();
    EXPECT_EQ(folder.path(), LR"(C:\Temp\)");
    EXPECT_TRUE(shell.files.log().empty()) << "neither created nor given attributes";
}

TEST_F(WorkFolderTest, AddsTheSeparatorToTheTemporaryFolder) {
    shell.paths.temp = std::wstring(L"C:\\Temp\0rest", 12);
    EXPECT_EQ(folder.TempFolderPath(), LR"(C:\Temp\)");
}

TEST_F(WorkFolderTest, TempFolderPathRaisesTheSystemsError) {
    shell.paths.tempFolderError = 8;
    try {
        static_cast<void>(folder.TempFolderPath());
        FAIL() << "nothing was raised";
    } catch (const SystemError& error) {
        EXPECT_EQ(error.code(), 8u);
    }
}

TEST_F(WorkFolderTest, StaysEmptyWithoutTemporaryFolder) {
    shell.paths.tempFolderError = 8;
    folder.resetToTempFolder();
    EXPECT_EQ(folder.path(), L"");
    EXPECT_EQ(folder.WriteTempListFile(L"a.txt", codec), L"");
}

TEST_F(WorkFolderTest, SetTempDirCreatesAReadOnlyHiddenFolder) {
    folder.SetTempDir(LR"(C:\Work)");
    EXPECT_EQ(folder.path(), L"C:\\Work\\");
    EXPECT_EQ(shell.files.calls(L"createFolder"), (Log{L"C:\\Work\\"}));
    ASSERT_NE(shell.files.find(LR"(C:\Work)"), nullptr);
    EXPECT_EQ(shell.files.find(LR"(C:\Work)")->status.attributes,
              attribute::kReadOnly | attribute::kHidden | attribute::kFolder);
}

TEST_F(WorkFolderTest, SetTempDirTakesTheShortName) {
    shell.files.addFolder(LR"(C:\Long name)");
    shell.paths.shortNames[LR"(C:\Long name)"] = LR"(C:\LONGNA~1)";
    folder.SetTempDir(LR"(C:\Long name)");
    EXPECT_EQ(folder.path(), L"C:\\LONGNA~1\\");
}

TEST_F(WorkFolderTest, SetTempDirAcceptsAnExistingFolder) {
    shell.files.addFolder(LR"(C:\Work)");
    folder.SetTempDir(LR"(C:\Work)");
    EXPECT_EQ(folder.path(), L"C:\\Work\\");
    EXPECT_EQ(shell.files.find(LR"(C:\Work)")->status.attributes,
              attribute::kReadOnly | attribute::kHidden | attribute::kFolder);
}

TEST_F(WorkFolderTest, SetTempDirAcceptsAMissingParent) {
    folder.SetTempDir(LR"(C:\none\Work)");
    EXPECT_EQ(folder.path(), L"C:\\none\\Work\\");
    EXPECT_EQ(shell.files.find(LR"(C:\none)"), nullptr) << "one level only";
}

TEST_F(WorkFolderTest, SetTempDirIgnoresFailures) {
    shell.files.fail(L"createFolder", LR"(C:\Work)", test::FakeFileSystem::kAccessDenied);
    shell.files.fail(L"setAttributes", LR"(C:\Work)", test::FakeFileSystem::kAccessDenied);
    folder.SetTempDir(LR"(C:\Work)");
    EXPECT_EQ(folder.path(), L"C:\\Work\\");
    EXPECT_TRUE(shell.messages.shown.empty());
}

TEST_F(WorkFolderTest, AnotherObjectResetsWhatSetTempDirChose) {
    folder.SetTempDir(LR"(C:\Work)");
    folder.resetToTempFolder();
    EXPECT_EQ(folder.path(), LR"(C:\Temp\)");
}

TEST_F(WorkFolderTest, MakeTempFileNameCreatesAnEmptyFile) {
    const std::wstring name = folder.MakeTempFileName(LR"(C:\Temp)", L"VTL");
    EXPECT_EQ(name, LR"(C:\Temp\VTL1.TMP)");
    ASSERT_NE(shell.files.find(name), nullptr);
    EXPECT_EQ(shell.files.find(name)->bytes, "");
}

TEST_F(WorkFolderTest, MakeTempFileNameIsEmptyForAMissingFolder) {
    EXPECT_EQ(folder.MakeTempFileName(LR"(C:\none)", L"VTL"), L"");
    EXPECT_TRUE(shell.paths.log.empty()) << "nothing is created";
}

TEST_F(WorkFolderTest, MakeTempFileNameRaisesTheSystemsError) {
    shell.paths.createTempFileError = 80;
    try {
        folder.MakeTempFileName(LR"(C:\Temp)", L"VTL");
        FAIL() << "nothing was raised";
    } catch (const SystemError& error) {
        EXPECT_EQ(error.code(), 80u);
    }
}

TEST_F(WorkFolderTest, WriteTempListFileWritesTheTextAndCrLf) {
    folder.SetTempDir(LR"(C:\Work)");
    const std::wstring name = folder.WriteTempListFile(L"a.txt", codec);
    EXPECT_EQ(name, LR"(C:\Work\VTL1.TMP)");
    EXPECT_EQ(shell.files.find(name)->bytes, "a.txt\r\n");
}

TEST_F(WorkFolderTest, WriteTempListFileWritesWhatTheLibraryReads) {
    folder.SetTempDir(LR"(C:\Work)");
    const std::wstring one = folder.WriteTempListFile(L"\u00E4.txt", codec);
    const std::wstring other = folder.WriteTempListFile(L"\u00E4.txt", Utf8Codec());
    EXPECT_EQ(shell.files.find(one)->bytes, "\xE4.txt\r\n");
    EXPECT_EQ(shell.files.find(other)->bytes, "\xC3\xA4.txt\r\n");
}

TEST_F(WorkFolderTest, WriteTempListFileReportsANameThatTheLibraryCannotRead) {
    folder.SetTempDir(LR"(C:\Work)");
    try {
        folder.WriteTempListFile(L"\u8868.txt", codec);
        FAIL() << "nothing was raised";
    } catch (const SystemError& error) {
        EXPECT_EQ(error.code(), 1113u);
    }
    EXPECT_TRUE(shell.paths.log.empty()) << "nothing is created";
}

TEST_F(WorkFolderTest, AListFileThatCannotBeWrittenStaysEmpty) {
    folder.SetTempDir(LR"(C:\Work)");
    shell.files.fail(L"writeFile", LR"(C:\Work\VTL1.TMP)", 112);
    const std::wstring name = folder.WriteTempListFile(L"a.txt", codec);
    EXPECT_EQ(name, LR"(C:\Work\VTL1.TMP)");
    EXPECT_EQ(shell.files.find(name)->bytes, "");
}

class BuildListFileTextTest : public WorkFolderTest {
protected:
    BuildListFileTextTest() {
        shell.files.addFolder(LR"(C:\base\dir)");
        shell.files.addFolder(LR"(C:\base\my dir)");
        shell.files.addFile(LR"(C:\base\file.txt)");
        shell.files.addFile(LR"(C:\base\my file.txt)");
        shell.files.addFile(LR"(C:\base\x,y.txt)");
        shell.files.addFile(LR"(C:\base\dir\inner.txt)");
    }

    std::wstring build(std::wstring_view names, std::wstring_view suffix) {
        return folder.BuildListFileText(LR"(C:\base)", names, suffix);
    }
};

TEST_F(BuildListFileTextTest, MarksFoldersAndDropsWhatIsGone) {
    EXPECT_EQ(build(L"dir\r\nfile.txt\r\ngone.txt", L"\\"), L"dir\\\r\nfile.txt");
}

TEST_F(BuildListFileTextTest, LeavesFoldersUnmarkedWithoutSuffix) {
    EXPECT_EQ(build(L"dir\r\nfile.txt", L""), L"dir\r\nfile.txt");
}

TEST_F(BuildListFileTextTest, QuotesBlanksAndCommas) {
    EXPECT_EQ(build(L"my file.txt\r\nx,y.txt", L""), L"\"my file.txt\"\r\n\"x,y.txt\"");
}

TEST_F(BuildListFileTextTest, QuotesAFolderWithItsSuffix) { EXPECT_EQ(build(L"my dir", L"\\"), L"\"my dir\\\""); }

TEST_F(BuildListFileTextTest, TrimsBlanks) { EXPECT_EQ(build(L"  file.txt \r\n dir", L"\\"), L"file.txt\r\ndir\\"); }

TEST_F(BuildListFileTextTest, KeepsNamesRelative) { EXPECT_EQ(build(LR"(dir\inner.txt)", L"\\"), LR"(dir\inner.txt)"); }

TEST_F(BuildListFileTextTest, AnEmptyLineNamesTheBaseFolder) {
    EXPECT_EQ(build(L"file.txt\r\n", L"\\"), L"file.txt\r\n\\");
    EXPECT_EQ(build(L"\r\nfile.txt", L"\\"), L"\\\r\nfile.txt");
}

TEST_F(BuildListFileTextTest, AnEmptyLineWithoutSuffixIsAnEmptyLine) {
    EXPECT_EQ(build(L"file.txt\r\n", L""), L"file.txt\r\n");
    EXPECT_EQ(build(L"\r\nfile.txt", L""), L"\r\nfile.txt");
}

TEST_F(BuildListFileTextTest, NoNamesMakeNoText) {
    EXPECT_EQ(build(L"", L"\\"), L"");
    EXPECT_EQ(build(L"gone.txt", L"\\"), L"");
}

TEST_F(BuildListFileTextTest, TakesABaseFolderWithSeparator) {
    EXPECT_EQ(folder.BuildListFileText(LR"(C:\base\)", L"file.txt", L""), L"file.txt");
}

}  // namespace
}  // namespace tovar
