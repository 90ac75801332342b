#include "archivers/convention/command_output.h"

#include <gtest/gtest.h>

#include <string>

namespace archiver {
namespace {

TEST(CommandOutput, IsAnEmptyTextAtFirst) {
    char buffer[4] = "###";
    const CommandOutput output(utf8Codec(), buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "");
    EXPECT_TRUE(output.unused());
    EXPECT_FALSE(output.full());
}

TEST(CommandOutput, AppendsTextsAndBytes) {
    char buffer[32];
    CommandOutput output(utf8Codec(), buffer, sizeof buffer);
    output.text("one ");
    output.bytes("\xFF\xFE ", 3);
    output.text("");
    output.text("\xE8\xA1\xA8");
    EXPECT_STREQ(buffer, "one \xFF\xFE \xE8\xA1\xA8");
    EXPECT_FALSE(output.unused());
}

TEST(CommandOutput, KeepsWhatFits) {
    char buffer[12];
    std::string(12, '#').copy(buffer, 12);
    CommandOutput output(utf8Codec(), buffer, 6);
    output.text("abc");
    output.text("\xE8\xA1\xA8");
    EXPECT_STREQ(buffer, "abc") << "no part of a character";
    EXPECT_TRUE(output.full());
    output.text("d");
    output.bytes("e", 1);
    EXPECT_STREQ(buffer, "abc") << "nothing behind a text that was cut";
    EXPECT_EQ(std::string(buffer + 6, 6), "######");
}

TEST(CommandOutput, CutsBytes) {
    char buffer[8];
    std::string(8, '#').copy(buffer, 8);
    CommandOutput output(utf8Codec(), buffer, 4);
    output.bytes("abcdef", 6);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_TRUE(output.full());
    EXPECT_EQ(std::string(buffer + 4, 4), "####");
}

TEST(CommandOutput, IsFullWithoutRoom) {
    char buffer[2] = "#";
    CommandOutput one(utf8Codec(), buffer, 1);
    EXPECT_STREQ(buffer, "");
    EXPECT_TRUE(one.full());
    one.text("a");
    EXPECT_FALSE(one.unused());
    buffer[0] = '#';
    CommandOutput none(utf8Codec(), buffer, 0);
    none.text("a");
    none.bytes("b", 1);
    EXPECT_EQ(buffer[0], '#');
    CommandOutput nowhere(utf8Codec(), nullptr, 100);
    EXPECT_TRUE(nowhere.full());
    nowhere.text("a");
    nowhere.bytes("b", 1);
}

}  // namespace
}  // namespace archiver
