#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace archiver {

/// A regular expression for names: characters, "." for any, "[a-z]" and "[^a-z]", "*", "+", "?", "|", "(...)", and "\"
/// in front of a character that stands for itself. It is compared with a whole text, whatever the case of letters; "/"
/// and "\\" both stand for a separator. "^" in front and "$" at the end are allowed and say nothing new.
///
/// A comparison takes time in proportion to the length of the text times that of the expression, whatever they are.
class Expression {
public:
    /// @return nullopt for a text that is no expression, or nests or repeats too deeply
    static std::optional<Expression> compile(std::string_view utf8);

    [[nodiscard]] bool matches(std::string_view utf8Text) const;

private:
    friend class ExpressionCompiler;

    using Range = std::pair<char32_t, char32_t>;
    struct Step {
        enum class Kind : std::uint8_t { kClass, kSplit, kEnd };
        Kind kind = Kind::kEnd;
        bool negated = false;       ///< of a class
        std::vector<Range> ranges;  ///< of a class, folded
        std::size_t next = 0;       ///< of a class and a split
        std::size_t other = 0;      ///< of a split
    };
    struct States;

    void enter(std::size_t step, States& states) const;
    [[nodiscard]] static bool takes(const Step& step, char32_t character);

    std::vector<Step> steps_;
    std::size_t first_ = 0;
};

}  // namespace archiver
