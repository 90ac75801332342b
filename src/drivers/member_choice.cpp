#include "drivers/member_choice.h"

#include <algorithm>

#include "shell/letter_case.h"

namespace tovar {
namespace {

constexpr wchar_t kSeparator = L'\\';

/// The form in which names are compared.
std::wstring comparable(std::wstring_view text) {
    std::wstring folded = foldCase(text);
    std::ranges::replace(folded, L'/', kSeparator);
    while (!folded.empty() && folded.front() == kSeparator) folded.erase(0, 1);
    return folded;
}

bool matches(std::wstring_view pattern, std::wstring_view text) {
    std::size_t at = 0, from = 0;
    std::size_t star = pattern.npos, starFrom = 0;
    while (from < text.size()) {
        if (at < pattern.size() && pattern[at] == L'*') {
            star = at++;
            starFrom = from;
        } else if (at < pattern.size() && (pattern[at] == L'?' || pattern[at] == text[from])) {
            ++at;
            ++from;
        } else if (star != pattern.npos) {
            at = star + 1;
            from = ++starFrom;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(L'*', at) == pattern.npos;
}

/// The DOS rule: ".*" at the end of a pattern also stands for no extension at all.
bool matchesName(std::wstring_view pattern, std::wstring_view name) {
    if (matches(pattern, name)) return true;
    return pattern.ends_with(L".*") && name.find(L'.') == name.npos &&
           matches(pattern.substr(0, pattern.size() - 2), name);
}

}  // namespace

MemberChoice::MemberChoice(std::wstring_view text) {
    std::wstring word;
    bool quoted = false;
    for (const wchar_t character : text) {
        if (character == L'"') {
            quoted = !quoted;
        } else if (character == L'\r' || character == L'\n' || (!quoted && (character == L' ' || character == L'\t'))) {
            add(std::move(word));
            word.clear();
            if (character == L'\n') quoted = false;  // no name goes on in the next line
        } else {
            word += character;
        }
    }
    add(std::move(word));
}

void MemberChoice::add(std::wstring word) {
    word = comparable(word);
    if (word.empty()) return;
    if (word == L"*.*" || word == L"*") {
        patterns_.push_back(L"*");
    } else if (const std::size_t end = word.rfind(kSeparator);
               end != word.npos &&
               (word.substr(end + 1) == L"*.*" || word.substr(end + 1) == L"*" || end + 1 == word.size()) &&
               word.find_first_of(L"*?") >= end) {
        folders_.insert(word.substr(0, end));
    } else if (word.find_first_of(L"*?") != word.npos) {
        patterns_.push_back(std::move(word));
    } else {
        paths_.insert(std::move(word));
    }
    all_ = false;
}

bool MemberChoice::contains(std::wstring_view path) const {
    if (all_) return true;
    const std::wstring name = comparable(path);
    if (paths_.contains(name)) return true;
    if (!folders_.empty()) {
        for (std::size_t end = 0; end != name.npos; ++end) {
            end = name.find(kSeparator, end);
            if (folders_.contains(name.substr(0, end))) return true;
            if (end == name.npos) break;
        }
    }
    const std::wstring_view whole = name;
    const std::wstring_view base = whole.substr(whole.rfind(kSeparator) + 1);
    return std::ranges::any_of(patterns_, [&](const std::wstring& pattern) {
        return matchesName(pattern, pattern.find(kSeparator) == pattern.npos ? base : whole);
    });
}

}  // namespace tovar
