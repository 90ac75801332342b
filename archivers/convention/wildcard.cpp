#include "archivers/convention/wildcard.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <utility>

#include "archivers/formats/letter_case.h"
#include "archivers/formats/utf8.h"

namespace archiver {

namespace {

constexpr char32_t kSeparator = U'/';

/// One step of the FNV-1a hash, over whole characters.
constexpr std::uint32_t kHashStart = 2166136261;
constexpr std::uint32_t hashed(std::uint32_t hash, char32_t character) noexcept {
    return (hash ^ static_cast<std::uint32_t>(character)) * 16777619;
}

/// Appends the text with its case folded and with one kind of separator.
void foldInto(std::string_view utf8, std::u32string& text) {
    while (!utf8.empty()) {
        const DecodedCharacter next = decodeCharacter(utf8);
        text.push_back(next.value == U'\\' ? kSeparator : foldCase(next.value));
        utf8.remove_prefix(next.length);
    }
}

std::u32string_view withoutLeadingSeparators(std::u32string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kSeparator), text.size()));
    return text;
}

std::u32string_view withoutTrailingSeparators(std::u32string_view text) {
    text.remove_suffix(text.size() - (text.find_last_not_of(kSeparator) + 1));
    return text;
}

std::u32string_view lastPartOf(std::u32string_view text) {
    text = withoutTrailingSeparators(text);
    return text.substr(text.find_last_of(kSeparator) + 1);
}

/// Compares one character of a name with a class, such as "[a-z]".
/// @param at  index of the "["; set to behind the "]" when the class holds the character
/// @return nullopt when it is no class, as its "]" is missing
std::optional<bool> matchesClass(std::u32string_view pattern, std::size_t& at, char32_t character) {
    std::size_t next = at + 1;
    const bool negated = next < pattern.size() && (pattern[next] == U'!' || pattern[next] == U'^');
    if (negated) ++next;
    bool found = false;
    // A "]" in the first place is a character like others.
    for (const std::size_t first = next; next < pattern.size(); ++next) {
        if (pattern[next] == U']' && next > first) {
            if (found == negated || character == kSeparator) return false;
            at = next + 1;
            return true;
        }
        const char32_t from = pattern[next];
        const bool range = next + 2 < pattern.size() && pattern[next + 1] == U'-' && pattern[next + 2] != U']';
        if (range) next += 2;
        found = found || (character >= from && character <= pattern[next]);
    }
    return std::nullopt;
}

/// Goes back to the last "*" only: one before it could not do better, as neither goes beyond its folder.
bool matchesGlob(std::u32string_view pattern, std::u32string_view text, bool classes) {
    std::size_t at = 0;
    std::size_t in = 0;
    std::size_t star = std::u32string_view::npos;  // behind the last "*" of this part
    std::size_t starIn = 0;
    const auto takesOne = [&] {
        if (at == pattern.size()) return false;
        if (classes && pattern[at] == U'[') {
            const std::optional<bool> matched = matchesClass(pattern, at, text[in]);
            if (matched) return *matched;
        }
        const bool same = pattern[at] == text[in] || (pattern[at] == U'?' && text[in] != kSeparator);
        if (same) ++at;
        return same;
    };
    while (in < text.size()) {
        if (at < pattern.size() && pattern[at] == U'*') {
            star = ++at;
            starIn = in;
        } else if (takesOne()) {
            if (text[in] == kSeparator) star = std::u32string_view::npos;
            ++in;
        } else if (star != std::u32string_view::npos && text[starIn] != kSeparator) {
            at = star;
            in = ++starIn;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(U'*', at) == std::u32string_view::npos;
}

/// The first parts of a path, as many as there are separators in `folder`; nothing when it has fewer.
std::u32string_view foldersLike(std::u32string_view folder, std::u32string_view path) {
    std::size_t end = 0;
    for (auto count = std::count(folder.begin(), folder.end(), kSeparator); count > 0; --count) {
        const std::size_t separator = path.find(kSeparator, end);
        if (separator == std::u32string_view::npos) {
            return {};
        }
        end = separator + 1;
    }
    return path.substr(0, end);
}

}  // namespace

std::vector<std::string> splitWords(std::string_view text) {
    std::vector<std::string> words;
    std::string word;
    bool inWord = false;
    bool quoted = false;
    for (const char character : text) {
        const bool blank = character == ' ' || character == '\t' || character == '\r' || character == '\n';
        if (character == '"') {
            quoted = !quoted;
            inWord = true;
        } else if (!blank || quoted) {
            word.push_back(character);
            inWord = true;
        } else if (inWord) {
            words.push_back(std::move(word));
            word.clear();
            inWord = false;
        }
    }
    if (inWord) {
        words.push_back(std::move(word));
    }
    return words;
}

WildcardSet::WildcardSet(std::string_view patterns, PatternScope scope)
    : WildcardSet(splitWords(patterns), PatternRules{scope, false}) {}

WildcardSet::WildcardSet(std::span<const std::string> patterns, PatternRules rules) : rules_(rules) {
    all_ = std::all_of(patterns.begin(), patterns.end(), [](const std::string& word) { return word.empty(); });
    for (const std::string& word : patterns) {
        if (!word.empty()) add(word);
    }
}

void WildcardSet::add(std::string_view word) {
    std::u32string folded;
    foldInto(word, folded);
    std::u32string_view text = folded;
    Pattern pattern;
    if (rules_.scope == PatternScope::kLastPart) {
        text = lastPartOf(text);
    } else if (text.find(kSeparator) != std::u32string_view::npos) {
        // What lies below a folder is meant at every depth: callers write a chosen folder so.
        for (const std::u32string_view ending : {U"/*.*", U"/*", U"/"}) {
            if (text.ends_with(ending)) {
                text.remove_suffix(ending.size() - 1);
                pattern.belowFolder = true;
                break;
            }
        }
        text = withoutLeadingSeparators(text);
        pattern.wholePath = true;
        pattern.folderAndLast = rules_.scope == PatternScope::kFolderAndLast && !pattern.belowFolder &&
                                text.find(kSeparator) != std::u32string_view::npos;
    } else {
        pattern.wholePath = rules_.scope == PatternScope::kWholePath;
    }
    all_ = all_ || text == U"*" || text == U"*.*" || (pattern.belowFolder && text.empty());
    pattern.text = text;
    pattern.dotOptional = !pattern.belowFolder && text.ends_with(U".*");
    if (!pattern.folderAndLast) addName(pattern);
    if (!isPlain(pattern.text) || pattern.folderAndLast) patterns_.push_back(pattern);
    if (rules_.scope == PatternScope::kFirstParts && pattern.wholePath && !pattern.belowFolder) {
        pattern.text.push_back(kSeparator);
        pattern.belowFolder = true;
        pattern.dotOptional = false;
        addName(pattern);
        if (!isPlain(pattern.text)) patterns_.push_back(std::move(pattern));
    }
}

/// Patterns with classes are kept as names, too.
void WildcardSet::addName(const Pattern& pattern) {
    if (pattern.text.find_first_of(U"*?") != std::u32string::npos) return;
    Names& wholeNames = pattern.belowFolder ? folders_ : paths_;
    (pattern.wholePath ? wholeNames : lastParts_).insert(pattern.text);
}

bool WildcardSet::isPlain(std::u32string_view text) const noexcept {
    return text.find_first_of(rules_.classes ? U"*?[" : U"*?") == std::u32string_view::npos;
}

bool WildcardSet::matches(std::string_view utf8Name) {
    if (all_) {
        return true;
    }
    name_.clear();
    foldInto(utf8Name, name_);
    const std::u32string_view path = withoutLeadingSeparators(name_);
    const std::u32string_view lastPart = lastPartOf(path);
    return isNamed(path, lastPart) || std::any_of(patterns_.begin(), patterns_.end(), [&](const Pattern& pattern) {
               return matches(pattern, path, lastPart);
           });
}

bool WildcardSet::isNamed(std::u32string_view path, std::u32string_view lastPart) const {
    if (!lastParts_.empty() && lastParts_.contains(lastPart)) return true;
    if (paths_.empty() && folders_.empty()) return false;
    const std::size_t end = withoutTrailingSeparators(path).size();
    std::uint32_t hash = kHashStart;
    for (std::size_t at = 0; at < path.size(); ++at) {
        if (at == end && paths_.contains(HashedText{path.substr(0, end), hash})) return true;
        hash = hashed(hash, path[at]);
        if (path[at] == kSeparator && folders_.contains(HashedText{path.substr(0, at + 1), hash})) return true;
    }
    return end == path.size() && paths_.contains(HashedText{path, hash});
}

bool WildcardSet::matches(const Pattern& pattern, std::u32string_view path, std::u32string_view lastPart) const {
    const std::u32string_view text = pattern.text;
    if (pattern.belowFolder || pattern.folderAndLast) {
        const std::u32string_view folder = text.substr(0, text.find_last_of(kSeparator) + 1);
        const std::u32string_view folders = foldersLike(folder, path);
        if (folders.empty() || !matchesGlob(folder, folders, rules_.classes)) return false;
        if (pattern.belowFolder) return true;
    }
    std::u32string_view name = pattern.wholePath ? withoutTrailingSeparators(path) : lastPart;
    std::u32string_view glob = text;
    if (pattern.folderAndLast) {
        name = lastPart;
        glob.remove_prefix(text.find_last_of(kSeparator) + 1);
    }
    if (matchesGlob(glob, name, rules_.classes)) {
        return true;
    }
    return pattern.dotOptional && lastPart.find(U'.') == std::u32string_view::npos &&
           matchesGlob(glob.substr(0, glob.size() - 2), name, rules_.classes);
}

std::size_t WildcardSet::Hash::operator()(std::u32string_view text) const noexcept {
    return std::accumulate(text.begin(), text.end(), kHashStart, hashed);
}

}  // namespace archiver
