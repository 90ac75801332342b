#include "archivers/cab32/expression.h"

#include <gtest/gtest.h>

namespace archiver {
namespace {

struct ExpressionCase {
    const char* name;
    const char* expression;
    const char* text;
    bool matches;
};

class Expressions : public ::testing::TestWithParam<ExpressionCase> {};

TEST_P(Expressions, AreComparedWithTheWholeText) {
    const std::optional<Expression> expression = Expression::compile(GetParam().expression);
    ASSERT_TRUE(expression.has_value());
    EXPECT_EQ(expression->matches(GetParam().text), GetParam().matches);
}

constexpr ExpressionCase kCases[] = {
    {"Characters", "abc", "abc", true},
    {"Case", "aBc", "AbC", true},
    {"CaseOfOtherLetters", "\xC3\x84pfel", "\xC3\xA4PFEL", true},
    {"Longer", "abc", "abcd", false},
    {"Shorter", "abc", "ab", false},
    {"Empty", "", "", true},
    {"EmptyAndText", "", "a", false},
    {"Any", "a.c", "axc", true},
    {"AnyWideCharacter", "a.c",
     "a\xE8\xA1\xA8"
     "c",
     true},
    {"AnyNeedsOne", "a.c", "ac", false},
    {"Class", "[a-c]x", "bx", true},
    {"ClassNot", "[a-c]x", "dx", false},
    {"ClassNegated", "[^a-c]x", "dx", true},
    {"ClassNegatedNot", "[^a-c]x", "ax", false},
    {"ClassWithBracket", "[]x]", "]", true},
    {"ClassWithHyphenAtItsEnd", "[a-]", "-", true},
    {"StarNone", "ab*c", "ac", true},
    {"StarMany", "ab*c", "abbbc", true},
    {"Plus", "ab+c", "abbc", true},
    {"PlusNone", "ab+c", "ac", false},
    {"Question", "ab?c", "ac", true},
    {"QuestionTwo", "ab?c", "abbc", false},
    {"SeveralSigns", "ab+?c", "ac", true},
    {"Either", "a|bc", "bc", true},
    {"EitherNot", "a|bc", "ac", false},
    {"EitherOfThree", "a|b|c", "c", true},
    {"EitherNothing", "a|", "", true},
    {"Group", "(ab)+c", "ababc", true},
    {"GroupEither", "(a|b)*", "abba", true},
    {"GroupEmptyRepeated", "(a*)*b", "aab", true},
    {"Escaped", R"(a\.b)", "axb", false},
    {"EscapedDot", R"(a\.b)", "a.b", true},
    {"Anchors", "^abc$", "abc", true},
    {"EscapedDollar", R"(a\$)", "a$", true},
    {"DollarBehindEscapedBackslash", R"(a\\$)", R"(a\)", true},
    {"SlashForBackslash", "docs/a", R"(docs\a)", true},
    {"BackslashForSlash", R"(docs\\a)", "docs/a", true},
};
INSTANTIATE_TEST_SUITE_P(Cases, Expressions, ::testing::ValuesIn(kCases),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(Expressions, WithMistakesAreNone) {
    for (const char* text : {"(", ")", "a)", "(a", "[", "[a", "[^", "*", "+a", "a|*", "\\", "(?a)"}) {
        EXPECT_FALSE(Expression::compile(text).has_value()) << text;
    }
    EXPECT_FALSE(Expression::compile(std::string(5000, 'a')).has_value()) << "too long";
    EXPECT_FALSE(Expression::compile(std::string(100, '(') + "a" + std::string(100, ')')).has_value()) << "too deep";
}

// Others would take longer than the universe has.
TEST(Expressions, AreFastWhateverTheyAre) {
    std::string nested = "a*";
    for (int depth = 0; depth < 50; ++depth) nested = "(" + nested + ")*";
    const std::optional<Expression> expression = Expression::compile(nested + "b");
    ASSERT_TRUE(expression.has_value());
    EXPECT_FALSE(expression->matches(std::string(3000, 'a')));
    EXPECT_TRUE(expression->matches(std::string(3000, 'a') + "b"));
    std::string optional;
    for (int count = 0; count < 1000; ++count) optional += "a?";
    EXPECT_TRUE(Expression::compile(optional)->matches(std::string(1000, 'a')));
    EXPECT_FALSE(Expression::compile(optional)->matches(std::string(1001, 'a')));
}

}  // namespace
}  // namespace archiver
