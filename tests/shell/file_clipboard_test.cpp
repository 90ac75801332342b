#include "shell/file_clipboard.h"

#include <gtest/gtest.h>

#include "shell/fakes/fake_clipboard.h"
#include "shell/fakes/fake_text_codec.h"

namespace tovar::test {
namespace {

using Paths = std::vector<std::wstring>;
using Log = std::vector<std::string>;

class FileClipboardTest : public testing::Test {
protected:
    static std::string block(const std::string& list) { return std::string{20} + std::string(19, '\0') + list; }

    FakeClipboard clipboard_;
    FakeTextCodec codec_;
    FileClipboard files_{clipboard_, codec_};
    Paths paths_{L"before"};
};

TEST_F(FileClipboardTest, SaysWhetherThereAreFilesWithoutOpening) {
    EXPECT_FALSE(files_.hasFiles());
    clipboard_.files = "something";
    EXPECT_TRUE(files_.hasFiles());
    EXPECT_TRUE(clipboard_.log.empty());
}

TEST_F(FileClipboardTest, PutsAListThere) {
    EXPECT_TRUE(files_.PutFilesOnClipboard({L"C:\\a"}));
    EXPECT_EQ(clipboard_.log, (Log{"open", "empty", "put", "close"}));
    EXPECT_EQ(clipboard_.files, block(std::string("C:\\a\0\0", 6)));
}

TEST_F(FileClipboardTest, PutsNothingWhileAnotherProgramHoldsIt) {
    clipboard_.locked = true;
    clipboard_.files = "old";
    EXPECT_FALSE(files_.PutFilesOnClipboard({L"C:\\a"}));
    EXPECT_EQ(clipboard_.log, Log{"open"});
    EXPECT_EQ(clipboard_.files, "old");
}

TEST_F(FileClipboardTest, LeavesItEmptyWithoutMemory) {
    clipboard_.full = true;
    clipboard_.files = "old";
    EXPECT_FALSE(files_.PutFilesOnClipboard({L"C:\\a"}));
    EXPECT_EQ(clipboard_.log, (Log{"open", "empty", "put", "close"}));
    EXPECT_FALSE(clipboard_.files);
}

TEST_F(FileClipboardTest, TakesAListFromThere) {
    clipboard_.files = block(std::string("C:\\a\0D:\\b c\0\0", 13));
    EXPECT_EQ(files_.GetFilesFromClipboard(paths_), 2);
    EXPECT_EQ(paths_, (Paths{L"C:\\a", L"D:\\b c"}));
    EXPECT_EQ(clipboard_.log, (Log{"open", "take", "close"}));
}

TEST_F(FileClipboardTest, TakesNothingWhereThereAreNoFiles) {
    EXPECT_EQ(files_.GetFilesFromClipboard(paths_), 0);
    EXPECT_EQ(paths_, Paths{L"before"});
    EXPECT_TRUE(clipboard_.log.empty());
}

TEST_F(FileClipboardTest, TakesNothingWhileAnotherProgramHoldsIt) {
    clipboard_.files = block(std::string("a\0\0", 3));
    clipboard_.locked = true;
    EXPECT_EQ(files_.GetFilesFromClipboard(paths_), 0);
    EXPECT_EQ(paths_, Paths{L"before"});
    EXPECT_EQ(clipboard_.log, Log{"open"});
}

TEST_F(FileClipboardTest, TakesNothingFromADamagedList) {
    clipboard_.files = "damaged";
    EXPECT_EQ(files_.GetFilesFromClipboard(paths_), 0);
    EXPECT_EQ(paths_, Paths{L"before"});
    EXPECT_EQ(clipboard_.log.back(), "close");
}

TEST_F(FileClipboardTest, RaisesAnErrorForAListOfNoFiles) {
    clipboard_.files = block(std::string(1, '\0'));
    EXPECT_THROW(files_.GetFilesFromClipboard(paths_), EmptyFileList);
    EXPECT_EQ(clipboard_.log, (Log{"open", "take", "close"}));
    EXPECT_EQ(paths_, Paths{L"before"});
}

TEST_F(FileClipboardTest, ClearsIt) {
    clipboard_.files = "old";
    files_.ClearClipboard();
    EXPECT_EQ(clipboard_.log, (Log{"open", "empty", "close"}));
    EXPECT_FALSE(clipboard_.files);
    clipboard_.log.clear();
    clipboard_.locked = true;
    files_.ClearClipboard();
    EXPECT_EQ(clipboard_.log, Log{"open"});
}

}  // namespace
}  // namespace tovar::test
