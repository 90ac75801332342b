#include "browser/name_pattern.h"

#include "shell/letter_case.h"

namespace tovar {
namespace {

/// Most names are plain; they need no help of the system.
void foldInto(std::wstring& folded, const CompactText& name) {
    name.copyTo(folded);
    for (wchar_t& each : folded) {
        if (each >= 0x80) {
            folded = foldCase(folded);
            return;
        }
        if (each >= L'A' && each <= L'Z') each = static_cast<wchar_t>(each - L'A' + L'a');
    }
}

}  // namespace

NamePattern::NamePattern(std::wstring_view text)
    : text_(text == L"*.*" ? L"*" : foldCase(text)), wild_(text_.find_first_of(L"*?") != std::wstring::npos) {}

bool NamePattern::matches(const CompactText& name, std::uint64_t& charactersRead) const {
    if (empty()) return false;
    foldInto(folded_, name);
    charactersRead += name.size();
    return wild_ ? fitsWhole(folded_, charactersRead) : isContainedIn(folded_, charactersRead);
}

bool NamePattern::isContainedIn(std::wstring_view name, std::uint64_t& charactersRead) const {
    for (std::size_t start = name.find(text_.front());
         start != std::wstring_view::npos && start + text_.size() <= name.size();
         start = name.find(text_.front(), start + 1)) {
        std::size_t alike = 1;
        while (alike < text_.size() && text_[alike] == name[start + alike]) ++alike;
        if (alike == text_.size()) return true;
        charactersRead += alike;
    }
    return false;
}

// After a mismatch only the last "*" is given one character more: whatever an earlier one could take, the last one can.
bool NamePattern::fitsWhole(std::wstring_view name, std::uint64_t& charactersRead) const {
    constexpr std::size_t kNone = std::wstring::npos;
    std::size_t inText = 0, inName = 0, afterStar = kNone, takenByStar = 0;
    while (inName < name.size()) {
        ++charactersRead;
        if (inText < text_.size() && text_[inText] == L'*') {
            afterStar = ++inText;
            takenByStar = inName;
        } else if (inText < text_.size() && (text_[inText] == L'?' || text_[inText] == name[inName])) {
            ++inText;
            ++inName;
        } else if (afterStar != kNone) {
            inText = afterStar;
            inName = ++takenByStar;
        } else {
            return false;
        }
    }
    return text_.find_first_not_of(L'*', inText) == kNone;
}

}  // namespace tovar
