#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace archiver {

/// Which part of a member's name a pattern is compared with.
enum class PatternScope : std::uint8_t {
    kByPattern,  ///< the whole path when the pattern has a separator, else the last part
    kWholePath,
    kLastPart,
};

/// The words of a text: blanks, tabs and line ends part them, double quotes group and are removed; there is no escape.
std::vector<std::string> splitWords(std::string_view text);

/// Patterns that choose members by name. "*" stands for any characters but a separator, "?" for one; case is ignored,
/// and "/" equals "\". A ".*" at the end also matches a name without a dot, so "*.*" is everything. A pattern that
/// ends in a separator, or in "/*" or "/*.*", chooses all that lies below that folder, at any depth.
class WildcardSet {
public:
    /// @param patterns  UTF-8, several patterns parted by blanks; none at all is everything
    explicit WildcardSet(std::string_view patterns = {}, PatternScope scope = PatternScope::kByPattern);

    [[nodiscard]] bool matchesAll() const noexcept { return all_; }

    /// Time is proportional to the length of the name for a given pattern. Not const: a work buffer is kept, so that
    /// no call allocates once the buffer has grown.
    [[nodiscard]] bool matches(std::string_view utf8Name);

private:
    struct Pattern {
        std::u32string text;       ///< folded, with "/" as separator
        bool wholePath = false;    ///< else the last part
        bool belowFolder = false;  ///< the text is a folder with its separator; all that starts so is chosen
        bool dotOptional = false;  ///< the text ends in ".*", which may be missing
    };
    static Pattern compile(std::string_view word, PatternScope scope);
    static bool matches(const Pattern& pattern, std::u32string_view path, std::u32string_view lastPart);

    std::vector<Pattern> patterns_;
    std::u32string name_;
    bool all_ = false;
};

}  // namespace archiver
