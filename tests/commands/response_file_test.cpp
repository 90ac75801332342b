#include "archivers/commands/response_file.h"

#include <gtest/gtest.h>

#include "commands/latin1_codec.h"
#include "commands/scratch_folder.h"

namespace archiver {
namespace {

using std::string_view_literals::operator""sv;
using Names = std::vector<std::string>;

struct ResponseCase {
    const char* name;
    std::string_view bytes;
    Names expected;
};

class ResponseWords : public ::testing::TestWithParam<ResponseCase> {};

TEST_P(ResponseWords, AreNames) {
    EXPECT_EQ(responseWords(GetParam().bytes, testing::Latin1Codec()), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Files, ResponseWords,
    ::testing::Values(
        ResponseCase{"Empty", "", {}}, ResponseCase{"OneARow", "a.txt\r\ndocs/b.txt\r\n", {"a.txt", "docs/b.txt"}},
        ResponseCase{"NoLastLineEnd", "a.txt\r\nb.txt", {"a.txt", "b.txt"}},
        ResponseCase{"LineFeedsAlone", "a.txt\nb.txt\n", {"a.txt", "b.txt"}},
        ResponseCase{"EmptyRows", "\r\n\r\na\r\n\r\n", {"a"}}, ResponseCase{"FolderRow", "docs/*.*\r\n", {"docs/*.*"}},
        ResponseCase{"Quoted", "\"docs/a b.txt\"\r\n\"c,d\"\r\n", {"docs/a b.txt", "c,d"}},
        ResponseCase{"EmptyQuotes", "\"\"\r\na", {"a"}}, ResponseCase{"BlanksPart", "a b\tc", {"a", "b", "c"}},
        ResponseCase{"NotNested", "@other.txt\r\n", {"@other.txt"}},
        ResponseCase{"CodePage", "\xE4\xF6.txt", {"\xC3\xA4\xC3\xB6.txt"}},
        ResponseCase{"Utf8Mark", "\xEF\xBB\xBF\xC3\xA4.txt\r\n", {"\xC3\xA4.txt"}},
        ResponseCase{"Utf8MarkAlone", "\xEF\xBB\xBF", {}},
        ResponseCase{"Utf16Mark", "\xFF\xFE\xE4\0.\0t\0\r\0\n\0\x3D\xD8\x00\xDE"sv, {"\xC3\xA4.t", "\xF0\x9F\x98\x80"}},
        ResponseCase{"Utf16LoneSurrogate", "\xFF\xFE\x3D\xD8\x41\0"sv, {"\xEF\xBF\xBD\x41"}},
        ResponseCase{"Utf16OddByte", "\xFF\xFE\x41\0\x42"sv, {"A"}}, ResponseCase{"Nul", "a\0b\r\n"sv, {"a", "b"}},
        ResponseCase{"OpenQuote", "\"a b\r\n", {"a b\r\n"}}),
    [](const auto& each) { return std::string(each.param.name); });

class ResponseFile : public ::testing::Test {
protected:
    static ReturnCode codeOf(const std::filesystem::path& file) {
        const auto read = readResponseFile(file, testing::Latin1Codec());
        const auto* const code = std::get_if<ReturnCode>(&read);
        return code == nullptr ? kOk : *code;
    }
    testing::ScratchFolder folder_{"response-file"};
};

TEST_F(ResponseFile, IsRead) {
    folder_.write("list", "a.txt\r\n\"b c.txt\"\r\n");
    const auto read = readResponseFile("list", testing::Latin1Codec());
    ASSERT_TRUE(std::holds_alternative<Names>(read));
    EXPECT_EQ(std::get<Names>(read), (Names{"a.txt", "b c.txt"}));
}

TEST_F(ResponseFile, MayBeEmpty) {
    folder_.write("list", "");
    EXPECT_EQ(codeOf("list"), kOk);
}

TEST_F(ResponseFile, MustBeThere) {
    EXPECT_EQ(codeOf("no such list"), 0x802A);
    EXPECT_EQ(codeOf(""), 0x802A);
    EXPECT_EQ(codeOf(folder_.path()), 0x802A) << "a folder";
}

TEST_F(ResponseFile, HasALargestSize) {
    folder_.write("list", "a");
    std::filesystem::resize_file("list", kLargestResponseFile + 1);
    EXPECT_EQ(codeOf("list"), 0x802A);
}

}  // namespace
}  // namespace archiver
