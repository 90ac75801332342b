#include <gtest/gtest.h>

#include "shell/fakes/fake_shell.h"
#include "shell/fakes/fake_text_codec.h"

namespace tovar {
namespace {

const std::wstring kFile = LR"(C:\list.txt)";

struct ReadCase {
    const char* name;
    std::string_view bytes;
    std::wstring_view expected;
};
class ReadTextFileTest : public testing::TestWithParam<ReadCase> {};
TEST_P(ReadTextFileTest, EndsEveryLineWithCrLf) {
    test::FakeShell shell;
    shell.files.addFile(kFile, std::string(GetParam().bytes));
    EXPECT_EQ(shell.operations.ReadTextFile(kFile, test::FakeTextCodec()), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(Files, ReadTextFileTest,
                         testing::Values(ReadCase{"LastLineWithEnd", "a\r\nb\r\n", L"a\r\nb\r\n"},
                                         ReadCase{"LastLineWithoutEnd", "a\r\nb", L"a\r\nb\r\n"},
                                         ReadCase{"OneLine", "a", L"a\r\n"},
                                         ReadCase{"EmptyLines", "\r\n\r\na", L"\r\n\r\na\r\n"},
                                         ReadCase{"LineFeeds", "a\nb\n", L"a\r\nb\r\n"},
                                         ReadCase{"CarriageReturns", "a\rb\r", L"a\r\nb\r\n"},
                                         ReadCase{"BytesOfTheCodec", "\xE4\r\n", L"\u00E4\r\n"},
                                         ReadCase{"EmptyFile", "", L""}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(ReadTextFile, IsEmptyForAMissingFile) {
    test::FakeShell shell;
    EXPECT_EQ(shell.operations.ReadTextFile(kFile, test::FakeTextCodec()), L"");
}

TEST(ReadTextFile, IsEmptyWhenReadingFails) {
    test::FakeShell shell;
    shell.files.addFile(kFile, "a\r\n");
    shell.files.fail(L"readFile", kFile, 23);
    EXPECT_EQ(shell.operations.ReadTextFile(kFile, test::FakeTextCodec()), L"");
}

TEST(WriteTextFile, AppendsCrLf) {
    test::FakeShell shell;
    EXPECT_TRUE(shell.operations.WriteTextFile(kFile, L"a\r\nb\u00E9", test::FakeTextCodec()));
    EXPECT_EQ(shell.files.find(kFile)->bytes, "a\r\nb\xE9\r\n");
}

TEST(WriteTextFile, ReplacesWhatWasThere) {
    test::FakeShell shell;
    shell.files.addFile(kFile, "a much longer text");
    EXPECT_TRUE(shell.operations.WriteTextFile(kFile, L"", test::FakeTextCodec()));
    EXPECT_EQ(shell.files.find(kFile)->bytes, "\r\n");
}

TEST(WriteTextFile, IsFalseWhenTheFileCannotBeWritten) {
    test::FakeShell shell;
    shell.files.fail(L"writeFile", kFile, test::FakeFileSystem::kAccessDenied);
    EXPECT_FALSE(shell.operations.WriteTextFile(kFile, L"a", test::FakeTextCodec()));
    EXPECT_FALSE(shell.operations.WriteTextFile(LR"(C:\none\list.txt)", L"a", test::FakeTextCodec()));
}

TEST(WriteTextFile, LeavesTheFileAloneForATextWithoutBytes) {
    test::FakeShell shell;
    shell.files.addFile(kFile, "before");
    EXPECT_FALSE(shell.operations.WriteTextFile(kFile, L"\u8868", test::FakeTextCodec()));
    EXPECT_EQ(shell.files.find(kFile)->bytes, "before");
}

}  // namespace
}  // namespace tovar
