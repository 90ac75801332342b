#include <gtest/gtest.h>

#include <limits>

#include "shell/fakes/fake_shell.h"

namespace tovar {
namespace {

class ScanFolderTest : public testing::Test {
protected:
    ScanFolderTest() {
        shell.files.addFile(LR"(C:\d\one.txt)", "12345");
        shell.files.addFile(LR"(C:\d\hidden.sys)", "123", attribute::kHidden | attribute::kSystem);
        shell.files.addFile(LR"(C:\d\.profile)", "1");
        shell.files.addFile(LR"(C:\d\sub\two.txt)", "1234567");
        shell.files.addFile(LR"(C:\d\sub\deep\three.txt)", "12");
    }

    void scan(const std::wstring& folder, bool recurse) {
        shell.operations.ScanFolder(folder, L"*.*", fileCount, totalBytes, recurse);
    }

    test::FakeShell shell;
    std::int32_t fileCount = 0;
    float totalBytes = 0;
};

TEST_F(ScanFolderTest, CountsFilesOfEveryAttribute) {
    scan(LR"(C:\d\)", false);
    EXPECT_EQ(fileCount, 3);
    EXPECT_EQ(totalBytes, 9.0f);
}

TEST_F(ScanFolderTest, GoesIntoFolders) {
    scan(LR"(C:\d\)", true);
    EXPECT_EQ(fileCount, 5);
    EXPECT_EQ(totalBytes, 18.0f);
}

TEST_F(ScanFolderTest, AddsToTheCallersCounters) {
    fileCount = 10;
    totalBytes = 100;
    scan(LR"(C:\d\)", false);
    EXPECT_EQ(fileCount, 13);
    EXPECT_EQ(totalBytes, 109.0f);
}

TEST_F(ScanFolderTest, DoesNotLookAtThePattern) {
    shell.operations.ScanFolder(LR"(C:\d\)", L"*.none", fileCount, totalBytes, true);
    EXPECT_EQ(fileCount, 5);
}

TEST_F(ScanFolderTest, LeavesFoldersWithALeadingDotOut) {
    shell.files.addFile(LR"(C:\d\.cache\big.bin)", std::string(1000, 'x'));
    scan(LR"(C:\d\)", true);
    EXPECT_EQ(fileCount, 5);
    EXPECT_EQ(totalBytes, 18.0f);
}

TEST_F(ScanFolderTest, GoesIntoFoldersInTheOrderFound) {
    shell.files.addFile(LR"(C:\e\z\1.txt)");
    shell.files.addFile(LR"(C:\e\a\2.txt)");
    shell.files.clearLog();
    scan(LR"(C:\e\)", true);
    EXPECT_EQ(shell.files.calls(L"listFolder"), (std::vector<std::wstring>{LR"(C:\e\)", LR"(C:\e\z\)", LR"(C:\e\a\)"}));
}

TEST_F(ScanFolderTest, DoesNotFollowLinks) {
    shell.files.addFolder(LR"(C:\d\loop)").link = true;
    shell.files.addFile(LR"(C:\d\loop\inside.txt)", "123");
    scan(LR"(C:\d\)", true);
    EXPECT_EQ(fileCount, 5);
}

TEST_F(ScanFolderTest, AddsNothingForAFolderThatCannotBeListed) {
    scan(LR"(C:\none\)", true);
    EXPECT_EQ(fileCount, 0);
    EXPECT_EQ(totalBytes, 0.0f);
}

TEST_F(ScanFolderTest, GoesOnPastAFolderThatCannotBeListed) {
    shell.files.fail(L"listFolder", LR"(C:\d\sub\deep\)", test::FakeFileSystem::kAccessDenied);
    scan(LR"(C:\d\)", true);
    EXPECT_EQ(fileCount, 4);
}

// Single precision has 24 bits: 16,777,216 and 1 make 16,777,216.
TEST_F(ScanFolderTest, KeepsTheTotalInSinglePrecision) {
    shell.files.addFileOfSize(LR"(C:\s\a.bin)", 16777216);
    shell.files.addFileOfSize(LR"(C:\s\b.bin)", 1);
    shell.files.addFileOfSize(LR"(C:\s\c.bin)", 1);
    scan(LR"(C:\s\)", true);
    EXPECT_EQ(fileCount, 3);
    EXPECT_EQ(totalBytes, 16777216.0f);
}

TEST_F(ScanFolderTest, TakesSizesBeyond32Bits) {
    shell.files.addFileOfSize(LR"(C:\s\a.bin)", 0x200000000);
    scan(LR"(C:\s\)", true);
    EXPECT_EQ(totalBytes, 8589934592.0f);
}

TEST_F(ScanFolderTest, StopsCountingAtTheCountersEnd) {
    fileCount = std::numeric_limits<std::int32_t>::max() - 1;
    scan(LR"(C:\d\)", false);
    EXPECT_EQ(fileCount, 2147483647);
}

}  // namespace
}  // namespace tovar
