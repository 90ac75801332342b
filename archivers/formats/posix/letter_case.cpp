#include "archivers/formats/letter_case.h"

#include <clocale>
#include <cwctype>

namespace archiver {
namespace {

/// A locale that knows the letters of all scripts, whatever locale the process has.
class Letters {
public:
    Letters() noexcept : locale_(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {}
    Letters(const Letters&) = delete;
    Letters& operator=(const Letters&) = delete;
    ~Letters() {
        if (locale_ != nullptr) freelocale(locale_);
    }
    /// Null when the system has none.
    [[nodiscard]] locale_t get() const noexcept { return locale_; }

private:
    locale_t locale_;
};

/// Freed when its module is unloaded.
locale_t letters() noexcept {
    static const Letters letters;
    return letters.get();
}

}  // namespace

char32_t foldCase(char32_t character) noexcept {
    if (character < 0x80) {
        return character >= U'a' && character <= U'z' ? character - (U'a' - U'A') : character;
    }
    const locale_t locale = letters();
    return locale == nullptr ? character : static_cast<char32_t>(towupper_l(static_cast<wint_t>(character), locale));
}

char32_t lowerCase(char32_t character) noexcept {
    if (character < 0x80) {
        return character >= U'A' && character <= U'Z' ? character + (U'a' - U'A') : character;
    }
    const locale_t locale = letters();
    return locale == nullptr ? character : static_cast<char32_t>(towlower_l(static_cast<wint_t>(character), locale));
}

}  // namespace archiver
