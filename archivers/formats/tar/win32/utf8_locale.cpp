#include "archivers/formats/tar/utf8_locale.h"

namespace archiver::tar {

Utf8Locale::Utf8Locale() = default;
Utf8Locale::~Utf8Locale() = default;
Utf8Locale::Scope::Scope(const Utf8Locale& /*locale*/) noexcept {}
Utf8Locale::Scope::~Scope() = default;

}  // namespace archiver::tar
