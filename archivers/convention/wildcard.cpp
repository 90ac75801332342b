#include "archivers/convention/wildcard.h"

#include <algorithm>

#include "archivers/convention/system.h"
#include "archivers/formats/utf8.h"

namespace archiver {

namespace {

constexpr char32_t kSeparator = U'/';

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

/// Goes back to the last "*" only: one before it could not do better, as neither goes beyond its folder.
bool matchesGlob(std::u32string_view pattern, std::u32string_view text) {
    std::size_t at = 0;
    std::size_t in = 0;
    std::size_t star = std::u32string_view::npos;  // behind the last "*" of this part
    std::size_t starIn = 0;
    while (in < text.size()) {
        const bool separator = text[in] == kSeparator;
        if (at < pattern.size() && pattern[at] == U'*') {
            star = ++at;
            starIn = in;
        } else if (at < pattern.size() && (pattern[at] == text[in] || (pattern[at] == U'?' && !separator))) {
            ++at;
            ++in;
            if (separator) {
                star = std::u32string_view::npos;
            }
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

WildcardSet::WildcardSet(std::string_view patterns, PatternScope scope) {
    for (const std::string& word : splitWords(patterns)) {
        if (!word.empty()) {
            patterns_.push_back(compile(word, scope));
        }
    }
    all_ = patterns_.empty() || std::any_of(patterns_.begin(), patterns_.end(), [](const Pattern& pattern) {
               return pattern.text == U"*" || pattern.text == U"*.*" || (pattern.belowFolder && pattern.text.empty());
           });
}

WildcardSet::Pattern WildcardSet::compile(std::string_view word, PatternScope scope) {
    std::u32string folded;
    foldInto(word, folded);
    std::u32string_view text = folded;
    Pattern pattern;
    if (scope == PatternScope::kLastPart) {
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
    } else {
        pattern.wholePath = scope == PatternScope::kWholePath;
    }
    pattern.text = text;
    pattern.dotOptional = !pattern.belowFolder && text.ends_with(U".*");
    return pattern;
}

bool WildcardSet::matches(std::string_view utf8Name) {
    if (all_) {
        return true;
    }
    name_.clear();
    foldInto(utf8Name, name_);
    const std::u32string_view path = withoutLeadingSeparators(name_);
    const std::u32string_view lastPart = lastPartOf(path);
    return std::any_of(patterns_.begin(), patterns_.end(),
                       [&](const Pattern& pattern) { return matches(pattern, path, lastPart); });
}

bool WildcardSet::matches(const Pattern& pattern, std::u32string_view path, std::u32string_view lastPart) {
    const std::u32string_view text = pattern.text;
    if (pattern.belowFolder) {
        const std::u32string_view folders = foldersLike(text, path);
        return !folders.empty() && matchesGlob(text, folders);
    }
    const std::u32string_view name = pattern.wholePath ? withoutTrailingSeparators(path) : lastPart;
    if (matchesGlob(text, name)) {
        return true;
    }
    return pattern.dotOptional && lastPart.find(U'.') == std::u32string_view::npos &&
           matchesGlob(text.substr(0, text.size() - 2), name);
}

}  // namespace archiver
