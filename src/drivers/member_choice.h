#pragma once
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace tovar {

/// Which members of an archive are meant, by the words of a command line or a list file, for drivers whose libraries
/// choose none themselves. Case does not count, "/" and "\" are equal. A word is
/// - "*.*" or "*": every member;
/// - "docs/*.*" or "docs/*": all that lies below docs, at any depth, and docs itself;
/// - a pattern of "*" and "?": members of that name, in any folder when it has no separator, else of that path;
/// - anything else: the member of that path.
class MemberChoice {
public:
    /// @param text  words between blanks and line ends; double quotes hold blanks together. No word at all: every
    /// member
    explicit MemberChoice(std::wstring_view text);

    /// @param path  of a member, no separator at its end
    [[nodiscard]] bool contains(std::wstring_view path) const;

private:
    void add(std::wstring word);

    bool all_ = true;  ///< no word was there
    std::unordered_set<std::wstring> paths_;
    std::unordered_set<std::wstring> folders_;  ///< without separator at the end
    std::vector<std::wstring> patterns_;
};

}  // namespace tovar
