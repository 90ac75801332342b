#include <gtest/gtest.h>

#include <set>

#include "archivers/formats/utf8.h"
#include "convention/fake_library.h"

namespace archiver {
namespace {

using testing::file;

/// Stands for an ANSI code page: Latin-1 without the letter a-umlaut.
class Latin1Codec final : public TextCodec {
public:
    Written encode(std::string_view utf8, char* buffer, std::size_t size) const noexcept override {
        std::size_t length = 0;
        for (; !utf8.empty() && length + 1 < size; ++length) {
            const DecodedCharacter next = decodeCharacter(utf8);
            buffer[length] = next.value > 0xFF || next.value == 0xE4 ? '_' : static_cast<char>(next.value);
            utf8.remove_prefix(next.length);
        }
        buffer[length] = '\0';
        return {length, utf8.empty()};
    }
    [[nodiscard]] std::string decode(std::string_view text) const override {
        std::string utf8;
        for (const char byte : text) {
            appendUtf8(char32_t{static_cast<unsigned char>(byte)}, utf8);
        }
        return utf8;
    }
    [[nodiscard]] std::filesystem::path decodePath(std::string_view text) const override {
        const std::string utf8 = decode(text);
        return std::u8string(utf8.begin(), utf8.end());
    }
};
const Latin1Codec latin1;

class Library : public testing::LibraryTest {
protected:
    LibraryCore ansi{testing::kFakeLibrary, latin1};
};

TEST_F(Library, TellsItsVersion) {
    EXPECT_EQ(library.version(), 123);
    EXPECT_EQ(library.subVersion(), 7);
}

TEST_F(Library, KeepsItsModes) {
    EXPECT_EQ(library.backGroundMode(), 1);
    EXPECT_EQ(library.setBackGroundMode(0), 1);
    EXPECT_EQ(library.backGroundMode(), 0);
    EXPECT_EQ(library.setBackGroundMode(-1), 1);
    EXPECT_EQ(library.backGroundMode(), 1) << "a Bool is 0 or 1";
    EXPECT_EQ(library.cursorMode(), 0);
    EXPECT_EQ(library.setCursorMode(2), 1);
    EXPECT_EQ(library.cursorMode(), 1);
    EXPECT_EQ(library.cursorInterval(), 80);
    EXPECT_EQ(library.setCursorInterval(0xFFFF), 1);
    EXPECT_EQ(library.cursorInterval(), 0xFFFF);
    EXPECT_EQ(library.running(), 0);
}

TEST_F(Library, ListsExactlyWhatItHas) {
    const std::set<std::int32_t> implemented = {1,  2,  3,  4,  5,  6,  7,  8,  16, 18, 19, 23, 24, 25, 26, 31, 32,
                                                33, 34, 40, 41, 42, 43, 44, 45, 46, 47, 48, 57, 58, 59, 60, 61, 62,
                                                63, 64, 65, 66, 67, 68, 69, 70, 71, 72, 82, 83, 84, 85, 86};
    for (std::int32_t function = -2; function < 300; ++function) {
        EXPECT_EQ(library.queryFunctionList(function), implemented.count(function) ? 1 : 0) << function;
    }
    EXPECT_EQ(library.queryFunctionList(INT32_MIN), 0);
    EXPECT_EQ(library.queryFunctionList(INT32_MAX), 0);
}

TEST_F(Library, ListsCommandsWhenItHasALanguage) {
    static constexpr LibraryDescription commanded{
        .prefix = "Fake", .version = 100, .command = [](const CommandContext&, CommandOutput&) {
            return std::int32_t{0};
        }};
    EXPECT_EQ(LibraryCore(commanded).queryFunctionList(0), 1);
}

TEST_F(Library, SpeaksTheCodePageUntilToldOtherwise) {
    disk.add("\xC3\xB6.zip").members = {file("d/\xC3\xB6\xC3\xA4\xE8\xA1\xA8.txt")};
    const ArchiveHandle handle = ansi.openArchive(nullptr, "\xF6.zip", 0);
    ASSERT_NE(handle, nullptr);
    ASSERT_EQ(ansi.findFirst(handle, "\xF6*", &info), 0);
    EXPECT_STREQ(info.fileName, "d/\xF6__.txt");
    char name[32];
    EXPECT_EQ(ansi.fileName(handle, name, sizeof name), 0);
    EXPECT_STREQ(name, "d/\xF6__.txt");
    EXPECT_EQ(ansi.checkArchive("\xF6.zip", 1), 1);
    EXPECT_EQ(ansi.fileCount("\xF6.zip"), 1);
}

TEST_F(Library, SpeaksUtf8InUnicodeMode) {
    disk.add("\xC3\xB6.zip").members = {file("d/\xC3\xB6\xC3\xA4\xE8\xA1\xA8.txt")};
    EXPECT_EQ(ansi.setUnicodeMode(1), 1);
    EXPECT_EQ(ansi.openArchive(nullptr, "\xF6.zip", 0), nullptr);
    const ArchiveHandle handle = ansi.openArchive(nullptr, "\xC3\xB6.zip", 0);
    ASSERT_NE(handle, nullptr);
    ASSERT_EQ(ansi.findFirst(handle, "\xC3\xB6*", &info), 0);
    EXPECT_STREQ(info.fileName, "d/\xC3\xB6\xC3\xA4\xE8\xA1\xA8.txt");
    EXPECT_EQ(ansi.checkArchive("\xC3\xB6.zip", 1), 1);
    EXPECT_EQ(ansi.checkArchive("\xF6.zip", 1), 0);

    EXPECT_EQ(ansi.setUnicodeMode(0), 1);
    ASSERT_EQ(ansi.findFirst(handle, "*.*", &info), 0);
    EXPECT_STREQ(info.fileName, "d/\xF6__.txt") << "open archives follow";
}

}  // namespace
}  // namespace archiver
