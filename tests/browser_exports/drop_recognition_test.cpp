#include "browser/drop_recognition.h"

#include <gtest/gtest.h>

#include "shell/fakes/fake_shell.h"

namespace tovar {
namespace {

class RecogniseDrop : public testing::Test {
protected:
    RecogniseDrop() { shell_.files.addFile(LR"(C:\Temp\Stand-in)"); }

    std::optional<DropPlace> recognise(const std::wstring& first, const std::wstring& second = {}) {
        return recogniseDrop(LR"(C:\Temp\Stand-in)", first, second, shell_.operations);
    }
    void add(const std::wstring& path) { shell_.files.addFile(path); }

    test::FakeShell shell_;
};

TEST_F(RecogniseDrop, KnowsThePlaceholderInAnotherFolder) {
    add(LR"(D:\x\Stand-in)");
    EXPECT_EQ(recognise(LR"(D:\x\Stand-in)"), (DropPlace{LR"(D:\x\Stand-in)", true}));
}

TEST_F(RecogniseDrop, KnowsItWhateverTheCase) {
    add(LR"(D:\x\STAND-IN)");
    EXPECT_EQ(recognise(LR"(D:\x\STAND-IN)"), (DropPlace{LR"(D:\x\STAND-IN)", true}));
}

TEST_F(RecogniseDrop, LooksAtTheSecondPathFailingTheFirst) {
    add(LR"(D:\x\Stand-in)");
    EXPECT_EQ(recognise(LR"(C:\Temp\Stand-in)", LR"(D:\x\Stand-in)"), (DropPlace{LR"(D:\x\Stand-in)", true}));
    EXPECT_EQ(recognise(L"", LR"(D:\x\Stand-in)"), (DropPlace{LR"(D:\x\Stand-in)", true}));
}

TEST_F(RecogniseDrop, PrefersTheFirstPath) {
    add(LR"(D:\x\Stand-in)");
    add(LR"(D:\y\Stand-in)");
    EXPECT_EQ(recognise(LR"(D:\y\Stand-in)", LR"(D:\x\Stand-in)"), (DropPlace{LR"(D:\y\Stand-in)", true}));
}

TEST_F(RecogniseDrop, KnowsNoOtherFile) {
    add(LR"(D:\x\Stand-in.txt)");
    add(LR"(D:\x\My Stand-in)");
    EXPECT_EQ(recognise(LR"(D:\x\Stand-in.txt)", LR"(D:\x\My Stand-in)"), std::nullopt);
}

TEST_F(RecogniseDrop, KnowsNothingThatDoesNotExist) { EXPECT_EQ(recognise(LR"(D:\x\Stand-in)"), std::nullopt); }

TEST_F(RecogniseDrop, KnowsNoFolderOfTheName) {
    shell_.files.addFolder(LR"(D:\x\Stand-in)");
    EXPECT_EQ(recognise(LR"(D:\x\Stand-in)"), std::nullopt);
}

TEST_F(RecogniseDrop, LeavesTheFolderForTemporaryFilesOut) {
    EXPECT_EQ(recognise(LR"(C:\Temp\Stand-in)"), std::nullopt);
    EXPECT_EQ(recognise(LR"(c:\TEMP\stand-in)"), std::nullopt);
}

TEST_F(RecogniseDrop, LeavesItOutInItsLongForm) {
    add(LR"(C:\Temporary files\Stand-in)");
    shell_.paths.shortNames = {{LR"(C:\Temporary files\)", LR"(C:\TEMP\)"}};
    EXPECT_EQ(recognise(LR"(C:\Temporary files\Stand-in)"), std::nullopt);
}

TEST_F(RecogniseDrop, TakesAFolderInsideTheOneForTemporaryFiles) {
    add(LR"(C:\Temp\x\Stand-in)");
    EXPECT_EQ(recognise(LR"(C:\Temp\x\Stand-in)"), (DropPlace{LR"(C:\Temp\x\Stand-in)", true}));
}

TEST_F(RecogniseDrop, IgnoresTheRecycleBin) {
    add(LR"(C:\Recycled\Stand-in)");
    EXPECT_EQ(recognise(LR"(C:\Recycled\Stand-in)"), (DropPlace{LR"(C:\Recycled\Stand-in)", false}));
}

TEST_F(RecogniseDrop, IgnoresTheRecycleBinOfLaterSystems) {
    add(LR"(C:\$Recycle.Bin\S-1-5-21\Stand-in)");
    EXPECT_EQ(recognise(LR"(C:\$Recycle.Bin\S-1-5-21\Stand-in)"),
              (DropPlace{LR"(C:\$Recycle.Bin\S-1-5-21\Stand-in)", false}));
}

TEST_F(RecogniseDrop, TakesTheSecondPathWhereTheFirstIsInTheRecycleBin) {
    add(LR"(C:\RECYCLED\Stand-in)");
    add(LR"(D:\x\Stand-in)");
    EXPECT_EQ(recognise(LR"(C:\RECYCLED\Stand-in)", LR"(D:\x\Stand-in)"), (DropPlace{LR"(D:\x\Stand-in)", true}));
}

TEST_F(RecogniseDrop, KnowsNothingWithoutPaths) { EXPECT_EQ(recognise(L"", L""), std::nullopt); }

}  // namespace
}  // namespace tovar
