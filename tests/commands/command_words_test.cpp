#include "archivers/commands/command_words.h"

#include <gtest/gtest.h>

namespace archiver {
namespace {

using std::string_view_literals::operator""sv;
using Texts = std::vector<std::string>;

struct WordsCase {
    const char* name;
    std::string_view line;
    Texts expected;
};

class CommandWords : public ::testing::TestWithParam<WordsCase> {};

TEST_P(CommandWords, AreParted) {
    Texts texts;
    for (const CommandWord& word : commandWords(GetParam().line)) texts.push_back(word.text);
    EXPECT_EQ(texts, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, CommandWords,
    ::testing::Values(
        WordsCase{"Empty", "", {}}, WordsCase{"Blanks", " \t\r\n ", {}}, WordsCase{"Blank", "a b", {"a", "b"}},
        WordsCase{"EveryKindOfBlank", "a\tb\rc\nd\r\ne", {"a", "b", "c", "d", "e"}},
        WordsCase{"TwoBlanks", " -x -u  A.rar", {"-x", "-u", "A.rar"}}, WordsCase{"Quoted", R"("a b" c)", {"a b", "c"}},
        WordsCase{"QuotedLineEnd", "\"a\r\nb\" c", {"a\r\nb", "c"}},
        WordsCase{"QuotesInside", R"(C:\my" dir\"x y)", {R"(C:\my dir\x)", "y"}},
        WordsCase{"BackslashBeforeTheQuote", R"("C:\my dir\" y)", {R"(C:\my dir\)", "y"}},
        WordsCase{"EmptyQuotes", R"(a "" b)", {"a", "", "b"}}, WordsCase{"OpenQuote", R"(a "b c)", {"a", "b c"}},
        WordsCase{"OpenQuoteAlone", "\"", {""}}, WordsCase{"Nul", "a\0b"sv, {"a", "b"}},
        WordsCase{"NulEndsQuotes", "\"a\0b c\""sv, {"a", "b", "c"}},
        WordsCase{"ApostropheIsNoQuote", "'a b'", {"'a", "b'"}}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(CommandWordsDetails, KnowsQuotesAndPlaces) {
    const std::vector<CommandWord> words = commandWords(R"(  x "a b" c"d")");
    ASSERT_EQ(words.size(), 3U);
    EXPECT_EQ(words[0].offset, 2U);
    EXPECT_FALSE(words[0].quoted);
    EXPECT_EQ(words[1].offset, 4U);
    EXPECT_TRUE(words[1].quoted);
    EXPECT_EQ(words[2].offset, 10U);
    EXPECT_TRUE(words[2].quoted);
}

TEST(CommandWordsDetails, TakesAHugeLine) {
    std::string line;
    for (int count = 0; count < 1'000'000; ++count) line += "\"a b\" ";
    EXPECT_EQ(commandWords(line).size(), 1'000'000U);
    EXPECT_EQ(commandWords(std::string(10'000'000, 'x')).at(0).text.size(), 10'000'000U);
}

TEST(RestOfLine, DropsBlanksAround) {
    EXPECT_EQ(restOfLine("-l  C:\\a b.zip \r\n", 2), "C:\\a b.zip");
    EXPECT_EQ(restOfLine("-l", 2), "");
    EXPECT_EQ(restOfLine("-l", 9), "");
    EXPECT_EQ(restOfLine("-l  \t", 2), "");
}

TEST(FolderWord, EndsInASeparator) {
    for (const char* word : {"C:\\dir\\", "dir/", "C:", "\\", "/"}) EXPECT_TRUE(isFolderWord(word)) << word;
    for (const char* word : {"", "dir", "C:\\dir", "*.*"}) EXPECT_FALSE(isFolderWord(word)) << word;
}

}  // namespace
}  // namespace archiver
