#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "shell/posix/posix_system_paths.h"
#include "shell/posix/posix_text.h"

namespace tovar {
namespace {

TEST(PosixText, ReturnsEveryByte) {
    std::string bytes;
    for (int value = 1; value <= 255; ++value) bytes += static_cast<char>(value);
    EXPECT_EQ(toPosixName(fromPosixName(bytes)), bytes);
}

TEST(PosixText, KnowsUtf8) {
    EXPECT_EQ(fromPosixName("a\xC3\xA4\xE8\xA1\xA8\xF0\x9F\x93\xA6"), L"a\u00E4\u8868\U0001F4E6");
    EXPECT_EQ(toPosixName(L"a\u00E4\u8868\U0001F4E6"), "a\xC3\xA4\xE8\xA1\xA8\xF0\x9F\x93\xA6");
}

TEST(PosixText, KeepsBytesThatFormNoCharacter) {
    const std::wstring text = fromPosixName("\xC3(\xFF");
    ASSERT_EQ(text.size(), 3u);
    EXPECT_EQ(static_cast<unsigned>(text[0]), 0xDCC3u);
    EXPECT_EQ(text[1], L'(');
    EXPECT_EQ(static_cast<unsigned>(text[2]), 0xDCFFu);
    EXPECT_EQ(toPosixName(text), "\xC3(\xFF");
}

class PosixSystemPathsTest : public testing::Test {
protected:
    ~PosixSystemPathsTest() override { std::filesystem::current_path(before_); }

    PosixSystemPaths paths;

private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

TEST_F(PosixSystemPathsTest, ChangesTheCurrentFolder) {
    EXPECT_EQ(paths.setCurrentFolder(L"/usr"), 0u);
    EXPECT_EQ(paths.currentFolder(), L"/usr");
    EXPECT_EQ(paths.setCurrentFolder(L"/none/such"), static_cast<SystemErrorCode>(ENOENT));
    EXPECT_EQ(paths.setCurrentFolder(std::wstring(L"/\0x", 3)), static_cast<SystemErrorCode>(EINVAL));
    EXPECT_EQ(paths.currentFolder(), L"/usr");
}

TEST_F(PosixSystemPathsTest, HasNoDrivesShortNamesOrSearch) {
    EXPECT_NE(paths.setCurrentDrive(L'C'), 0u);
    EXPECT_FALSE(paths.shortPathName(L"/usr"));
    EXPECT_EQ(paths.searchPath(L"sh"), L"");
}

TEST_F(PosixSystemPathsTest, TakesTheTemporaryFolderFromTheEnvironment) {
    const char* value = std::getenv("TMPDIR");
    const std::string before = value == nullptr ? "" : value;
    ::setenv("TMPDIR", "/var/tmp", 1);
    EXPECT_EQ(paths.tempFolder(), L"/var/tmp/");
    ::setenv("TMPDIR", "", 1);
    EXPECT_EQ(paths.tempFolder(), L"/tmp/");
    ::unsetenv("TMPDIR");
    EXPECT_EQ(paths.tempFolder(), L"/tmp/");
    if (value != nullptr) ::setenv("TMPDIR", before.c_str(), 1);
}

TEST_F(PosixSystemPathsTest, CreatesTemporaryFiles) {
    const std::wstring one = paths.createTempFile(paths.tempFolder(), L"VTLonger");
    const std::wstring other = paths.createTempFile(paths.tempFolder(), L"VTLonger");
    EXPECT_NE(one, other);
    EXPECT_TRUE(std::filesystem::is_empty(toPosixName(one)));
    const std::wstring name = one.substr(paths.tempFolder().size());
    EXPECT_TRUE(name.starts_with(L"VTL"));
    EXPECT_TRUE(name.ends_with(L".TMP"));
    const std::wstring number = name.substr(3, name.size() - 7);
    EXPECT_FALSE(number.empty());
    EXPECT_EQ(number.find_first_not_of(L"0123456789abcdef"), number.npos);
    EXPECT_TRUE(std::filesystem::remove(toPosixName(one)));
    EXPECT_TRUE(std::filesystem::remove(toPosixName(other)));
}

TEST_F(PosixSystemPathsTest, RaisesTheErrorOfATemporaryFile) {
    try {
        paths.createTempFile(L"/none/such", L"VTL");
        FAIL() << "nothing was raised";
    } catch (const SystemError& error) {
        EXPECT_EQ(error.code(), static_cast<SystemErrorCode>(ENOENT));
    }
}

}  // namespace
}  // namespace tovar
