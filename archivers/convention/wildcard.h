#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace archiver {

/// Which part of a member's name a pattern is compared with. Patterns without a separator are compared with the last
/// part, but for kWholePath.
enum class PatternScope : std::uint8_t {
    kByPattern,  ///< a pattern with a separator with the whole path
    kWholePath,
    kLastPart,       ///< of the pattern as well
    kFirstParts,     ///< a pattern with a separator with as many first parts as it has: "docs/x" chooses "docs/x/a"
    kFolderAndLast,  ///< its folders with the first parts, its last part with the last one: "docs/a" chooses "docs/x/a"
};

/// How patterns are read.
struct PatternRules {
    PatternScope scope = PatternScope::kByPattern;
    /// "[ab]", "[a-z]", "[!a-z]" stand for one character, "[[]" for "[". A name that is like the pattern to the letter
    /// is chosen as well: lists of names do not mark their brackets.
    bool classes = false;
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
    /// @param patterns  UTF-8, one each; empty ones do not count
    WildcardSet(std::span<const std::string> patterns, PatternRules rules);

    [[nodiscard]] bool matchesAll() const noexcept { return all_; }

    /// Time is proportional to the length of the name and to the number of patterns with "*", "?" or classes; plain
    /// names and folders cost nothing each. Not const: a work buffer is kept, so that no call allocates once the buffer
    /// has grown.
    [[nodiscard]] bool matches(std::string_view utf8Name);

private:
    struct Pattern {
        std::u32string text;       ///< folded, with "/" as separator
        bool wholePath = false;    ///< else the last part
        bool belowFolder = false;  ///< the text is a folder with its separator; all that starts so is chosen
        bool folderAndLast =
            false;                 ///< `text` up to its last separator as with belowFolder, the rest with the last part
        bool dotOptional = false;  ///< the text ends in ".*", which may be missing
    };

    /// A text whose hash was computed on the way.
    struct HashedText {
        std::u32string_view text;
        std::uint32_t hash;
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::u32string_view text) const noexcept;
        std::size_t operator()(const HashedText& hashed) const noexcept { return hashed.hash; }
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(std::u32string_view one, std::u32string_view other) const noexcept { return one == other; }
        bool operator()(std::u32string_view one, const HashedText& other) const noexcept { return one == other.text; }
        bool operator()(const HashedText& one, std::u32string_view other) const noexcept { return one.text == other; }
    };
    using Names = std::unordered_set<std::u32string, Hash, Equal>;

    void add(std::string_view word);
    void addName(const Pattern& pattern);
    [[nodiscard]] bool isPlain(std::u32string_view text) const noexcept;
    [[nodiscard]] bool isNamed(std::u32string_view path, std::u32string_view lastPart) const;
    [[nodiscard]] bool matches(const Pattern& pattern, std::u32string_view path, std::u32string_view lastPart) const;

    PatternRules rules_;
    Names paths_;      ///< plain patterns for whole paths
    Names lastParts_;  ///< plain patterns for last parts
    Names folders_;    ///< plain folders, with their separator
    std::vector<Pattern> patterns_;
    std::u32string name_;
    bool all_ = false;
};

}  // namespace archiver
