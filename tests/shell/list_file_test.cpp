#include "shell/list_file.h"

#include <gtest/gtest.h>

#include "shell/fakes/fake_shell.h"
#include "shell/fakes/fake_text_codec.h"

namespace tovar {
namespace {

class ListFileTest : public testing::Test {
protected:
    ListFileTest() {
        shell.files.addFolder(LR"(C:\Work)");
        folder.SetTempDir(LR"(C:\Work)");
    }

    SystemErrorCode errorOf(std::wstring_view text) {
        try {
            const ListFile list(text, codec, folder, shell.files);
        } catch (const SystemError& error) {
            return error.code();
        }
        return 0;
    }

    test::FakeShell shell;
    test::FakeTextCodec codec;
    WorkFolder folder{shell.operations, shell.files, shell.paths};
};

TEST_F(ListFileTest, HoldsTheTextUnchangedAndGoesWithTheObject) {
    {
        const ListFile list(L"docs/*.*\r\n\"a b/c.txt\"\r\n", codec, folder, shell.files);
        EXPECT_EQ(list.argument(), LR"(@C:\Work\VTL1.TMP)");
        ASSERT_NE(shell.files.find(LR"(C:\Work\VTL1.TMP)"), nullptr);
        EXPECT_EQ(shell.files.find(LR"(C:\Work\VTL1.TMP)")->bytes, "docs/*.*\r\n\"a b/c.txt\"\r\n\r\n");
    }
    EXPECT_EQ(shell.files.find(LR"(C:\Work\VTL1.TMP)"), nullptr);
}

TEST_F(ListFileTest, IsNamedByItsShortPathWhereTheLongOneWouldNeedQuotes) {
    shell.files.addFolder(LR"(C:\My Work)");
    shell.paths.shortNames[LR"(C:\My Work\VTL1.TMP)"] = LR"(C:\MYWORK~1\VTL1.TMP)";
    folder.SetTempDir(LR"(C:\My Work)");
    EXPECT_EQ(ListFile(L"a", codec, folder, shell.files).argument(), LR"(@C:\MYWORK~1\VTL1.TMP)");
    EXPECT_EQ(ListFile(L"a", codec, folder, shell.files).argument(), LR"(@"C:\My Work\VTL2.TMP")") << "no short one";
}

TEST_F(ListFileTest, IsNotLeftEmpty) {
    shell.files.fail(L"writeFile", LR"(C:\Work\VTL1.TMP)", 112);
    EXPECT_EQ(errorOf(L"a.txt"), 5U);
    EXPECT_EQ(shell.files.find(LR"(C:\Work\VTL1.TMP)"), nullptr);
}

TEST_F(ListFileTest, NeedsAWorkFolder) {
    folder.SetTempDir(LR"(C:\none\Work)");
    EXPECT_EQ(errorOf(L"a.txt"), 2U);
}

TEST_F(ListFileTest, NeedsAFormForEveryName) {
    EXPECT_EQ(errorOf(L"\x8868.txt"), 1113U);
    EXPECT_TRUE(shell.paths.log.empty()) << "nothing is created";
}

TEST_F(ListFileTest, TellsWhyItCouldNotBeMade) {
    shell.paths.createTempFileError = 80;
    EXPECT_EQ(errorOf(L"a.txt"), 80U);
}

}  // namespace
}  // namespace tovar
