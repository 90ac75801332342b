#include "archivers/formats/arj/text_lines.h"

#include <gtest/gtest.h>

namespace archiver::arj {
namespace {

/// What arrives when a text is given in pieces of one size.
std::string converted(std::string_view text, std::size_t piece) {
    std::string result;
    const DataSink sink = [&](const char* bytes, std::size_t size) {
        EXPECT_GT(size, 0U);
        result.append(bytes, size);
        return true;
    };
    TextLines lines(sink);
    while (!text.empty()) {
        const std::string_view now = text.substr(0, piece);
        EXPECT_TRUE(lines(now.data(), now.size()));
        text.remove_prefix(now.size());
    }
    return result;
}

TEST(ArjTextLines, EndWithReturnAndLineFeed) {
    for (const std::size_t piece : {1, 2, 3, 100}) {
        EXPECT_EQ(converted("one\ntwo\n\nthree", piece), "one\r\ntwo\r\n\r\nthree");
        EXPECT_EQ(converted("\n", piece), "\r\n");
        EXPECT_EQ(converted("none", piece), "none");
    }
}

TEST(ArjTextLines, KeepReturnsThatAreThere) {
    for (const std::size_t piece : {1, 2, 3, 100}) {
        EXPECT_EQ(converted("one\r\ntwo\rthree\n", piece), "one\r\ntwo\rthree\r\n");
    }
}

TEST(ArjTextLines, TakeLongTexts) {
    std::string text, expected;
    for (int line = 0; line < 100000; ++line) {
        text += "\n\nx";
        expected += "\r\n\r\nx";
    }
    EXPECT_TRUE(converted(text, text.size()) == expected);
    EXPECT_TRUE(converted(text, 8191) == expected);
}

TEST(ArjTextLines, StopWithTheSink) {
    const DataSink sink = [](const char*, std::size_t) { return false; };
    TextLines lines(sink);
    EXPECT_FALSE(lines("a", 1));
}

}  // namespace
}  // namespace archiver::arj
