#include "drivers/library_texts.h"

#include <utility>

namespace tovar {

void LibraryTexts::enter() {
    if (users_++ == 0 && setUnicodeMode_ != nullptr) {
        speaksUtf8_ = setUnicodeMode_(1) != 0;
    }
}

void LibraryTexts::leave() {
    if (--users_ == 0 && setUnicodeMode_ != nullptr) {
        setUnicodeMode_(0);
        speaksUtf8_ = false;
    }
}

const TextCodec& LibraryTexts::codec() const {
    if (speaksUtf8_) {
        return utf8_;
    }
    return ansi_;
}

std::optional<std::string> LibraryTexts::encode(std::wstring_view text) const {
    std::optional<std::string> bytes = codec().encode(text);
    // A NUL would end the text early and let the call mean something else.
    return bytes && bytes->find('\0') == std::string::npos ? std::move(bytes) : std::nullopt;
}

std::optional<std::string> LibraryTexts::encodeFileName(std::wstring_view fileName, std::size_t ansiLimit) const {
    // Libraries that know the ANSI code page only are old ones: they copy names into buffers of the convention's size.
    const std::size_t limit = speaksUtf8_ ? std::string::npos : ansiLimit;
    std::optional<std::string> name = encode(fileName);
    if (!name || name->size() > limit) {
        const std::optional<std::wstring> shortName = system_.shortPathName(std::wstring(fileName));
        name = shortName ? encode(*shortName) : std::nullopt;
    }
    return name && name->size() <= limit ? name : std::nullopt;
}

}  // namespace tovar
