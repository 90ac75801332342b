#include "archivers/unpacking/target_name.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "archivers/formats/letter_case.h"
#include "archivers/formats/utf8.h"
#include "archivers/unpacking/device_name.h"

namespace archiver {
namespace {

constexpr std::size_t kLongestPart = 255;
constexpr std::size_t kLongestName = 32'000;

// "\" parts names for POSIX too, where a file's name may hold it: archives made under Windows have it as their
// separator, and a name that hid folders and ".." in one part would come to life when the folder is next seen by
// Windows.
constexpr std::string_view kSeparators = "/\\";

bool isSeparator(char character) noexcept { return kSeparators.find(character) != kSeparators.npos; }

bool isLetter(char character) noexcept {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// Marks that turn the direction of writing hide a name's real extension.
bool turnsWriting(char32_t character) noexcept {
    return (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}

bool isAllowed(char32_t character, NameRules rules) noexcept {
    if (character < 0x20 || character == 0x7F) return false;
    if (rules == NameRules::kPosix) return true;
    if (character < 0x80) return std::u32string_view(U"<>:\"|?*").find(character) == std::u32string_view::npos;
    return !turnsWriting(character);
}

/// Takes one separator or more away. @return how many
std::size_t dropSeparators(std::string_view& name) noexcept {
    const std::size_t count = std::min(name.find_first_not_of(kSeparators), name.size());
    name.remove_prefix(count);
    return count;
}

/// Takes "UNC" and the separator behind it away, which stand in a name that starts with "\\?\".
void dropNetworkMark(std::string_view& name) noexcept {
    if (name.size() < 4 || !isSeparator(name[3])) return;
    const auto is = [&](std::size_t at, char capital) { return (name[at] & ~0x20) == capital; };
    if (is(0, 'U') && is(1, 'N') && is(2, 'C')) name.remove_prefix(4);
}

/// Takes away what makes a name absolute: separators, drives, "\\?\" and "\\.\", as often as they follow each other.
/// Server and share of a network name stay as folders, so that the members of two of them do not fall together.
/// @return whether there was any
bool dropRoot(std::string_view& name, NameRules rules) noexcept {
    bool dropped = false;
    for (;;) {
        const std::size_t separators = dropSeparators(name);
        dropped |= separators != 0;
        if (rules == NameRules::kPosix) return dropped;
        if (separators >= 2 && name.size() >= 2 && (name[0] == '?' || name[0] == '.') && isSeparator(name[1])) {
            name.remove_prefix(2);
            dropNetworkMark(name);
        } else if (name.size() >= 2 && isLetter(name[0]) && name[1] == ':') {
            name.remove_prefix(2);
            dropped = true;
        } else if (separators == 0) {
            return dropped;
        }
    }
}

/// Makes one name; parts come in their order.
class NameMaker {
public:
    NameMaker(const NameWishes& wishes, NameRules rules) : wishes_(wishes), rules_(rules) {}

    /// @return false when the part is too long
    bool append(std::string_view part) {
        if (!name_.empty()) name_ += '/';
        const std::size_t start = name_.size();
        appendCharacters(part);
        if (rules_ == NameRules::kWindows) {
            closeEnd(start);
            markDevice(part, start);
        }
        return name_.size() - start <= kLongestPart || lengthOf(std::string_view(name_).substr(start)) <= kLongestPart;
    }

    [[nodiscard]] bool isShort() const noexcept {
        return name_.size() <= kLongestName || lengthOf(name_) <= kLongestName;
    }
    [[nodiscard]] std::string& name() noexcept { return name_; }
    [[nodiscard]] bool renamed() const noexcept { return renamed_; }

private:
    void appendCharacters(std::string_view part) {
        while (!part.empty()) {
            const DecodedCharacter next = decodeCharacter(part);
            part.remove_prefix(next.length);
            if (!next.valid || !isAllowed(next.value, rules_)) {
                name_ += '_';
                renamed_ = true;
            } else if (next.value == U' ' && wishes_.blanksToUnderscores) {
                name_ += '_';
            } else {
                appendUtf8(wishes_.lowerCase ? lowerCase(next.value) : next.value, name_);
            }
        }
    }

    /// Windows leaves dots and blanks at the end of a part away when it makes the file.
    void closeEnd(std::size_t start) {
        for (std::size_t at = name_.size(); at > start && (name_[at - 1] == '.' || name_[at - 1] == ' '); --at) {
            name_[at - 1] = '_';
            renamed_ = true;
        }
    }

    /// Both as given and as made: small letters can turn a name into one.
    void markDevice(std::string_view part, std::size_t start) {
        if (!isDeviceName(part) && !isDeviceName(std::string_view(name_).substr(start))) return;
        name_.insert(start, 1, '_');
        renamed_ = true;
    }

    [[nodiscard]] std::size_t lengthOf(std::string_view text) const noexcept {
        if (rules_ == NameRules::kPosix) return text.size();
        std::size_t units = 0;
        for (const char each : text) {
            const auto byte = static_cast<unsigned char>(each);
            if ((byte & 0xC0) != 0x80) units += byte >= 0xF0 ? 2 : 1;
        }
        return units;
    }

    NameWishes wishes_;
    NameRules rules_;
    std::string name_;
    bool renamed_ = false;
};

}  // namespace

TargetName targetNameOf(std::string_view memberName, const NameWishes& wishes, NameRules rules) {
    std::string_view left = memberName;
    bool leads = dropRoot(left, rules);  // out of the target, if it were followed
    bool staysThere = false;
    NameMaker maker(wishes, rules);
    std::string_view last;
    while (!left.empty()) {
        const std::string_view part = left.substr(0, left.find_first_of(kSeparators));
        left.remove_prefix(std::min(part.size() + 1, left.size()));
        if (part.empty()) continue;
        if (part == ".") {
            staysThere = true;
        } else if (part == "..") {
            leads = true;
        } else if (wishes.flat) {
            last = part;
        } else if (!maker.append(part)) {
            return {kLongFileName, {}, false};
        }
    }
    if (!last.empty() && !maker.append(last)) return {kLongFileName, {}, false};
    if (!maker.isShort()) return {kLongFileName, {}, false};
    if (maker.name().empty() && (leads || !staysThere)) return {kNotFilename, {}, false};
    const bool renamed = maker.renamed() || (leads && !wishes.flat);
    return {kOk, std::move(maker.name()), renamed};
}

std::string foldedKey(std::string_view name) {
    std::string key;
    key.reserve(name.size());
    while (!name.empty()) {
        const DecodedCharacter next = decodeCharacter(name);
        if (next.valid) {
            appendUtf8(foldCase(next.value), key);
        } else {
            key.append(name.substr(0, next.length));
        }
        name.remove_prefix(next.length);
    }
    return key;
}

}  // namespace archiver
