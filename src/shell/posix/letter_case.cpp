#include "shell/letter_case.h"

#include <clocale>
#include <cwctype>
#include <memory>
#include <type_traits>

namespace tovar {
namespace {

struct FreeLocale {
    void operator()(locale_t locale) const noexcept { ::freelocale(locale); }
};
using UniqueLocale = std::unique_ptr<std::remove_pointer_t<locale_t>, FreeLocale>;

std::wstring mapped(std::wstring_view text, const char* mapping) {
    static const UniqueLocale unicode(::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr));
    std::wstring result(text);
    if (unicode == nullptr) return result;
    const wctrans_t transformation = ::wctrans_l(mapping, unicode.get());
    for (wchar_t& each : result) {
        each = static_cast<wchar_t>(::towctrans_l(static_cast<wint_t>(each), transformation, unicode.get()));
    }
    return result;
}

}  // namespace

std::wstring foldCase(std::wstring_view text) { return mapped(text, "tolower"); }

std::wstring raiseCase(std::wstring_view text) { return mapped(text, "toupper"); }

}  // namespace tovar
