#include "archivers/formats/tar/utf8_locale.h"

#include <locale.h>

namespace archiver::tar {

Utf8Locale::Utf8Locale() {
    for (const char* name : {"C.UTF-8", "C.utf8", "en_US.UTF-8"}) {
        locale_ = ::newlocale(LC_CTYPE_MASK, name, nullptr);
        if (locale_ != nullptr) return;
    }
}

Utf8Locale::~Utf8Locale() {
    if (locale_ != nullptr) ::freelocale(static_cast<locale_t>(locale_));
}

Utf8Locale::Scope::Scope(const Utf8Locale& locale) noexcept {
    if (locale.locale_ != nullptr) previous_ = ::uselocale(static_cast<locale_t>(locale.locale_));
}

Utf8Locale::Scope::~Scope() {
    if (previous_ != nullptr) ::uselocale(static_cast<locale_t>(previous_));
}

}  // namespace archiver::tar
