#include "front/win32/name_lists.h"

#include <algorithm>
#include <string_view>

#include "front/win32/dispatch_host.h"
#include "front/win32/variant_values.h"

namespace tovar {
namespace {

constexpr std::int64_t kMostNames = 1 << 24;
constexpr std::wstring_view kLineEnd = L"\r\n";

/// Gathers names as lines.
class Lines {
public:
    explicit Lines(LCID locale) : locale_(locale) {}

    /// Takes one element.
    HRESULT add(const VARIANT& element) {
        const VARIANT* const value = valueOf(element);
        if (value == nullptr) return DISP_E_TYPEMISMATCH;
        const VARTYPE type = V_VT(value) & ~VT_BYREF;
        // A number, a date or nothing at all is no name: more likely the caller's mistake.
        if (type != VT_BSTR && type != VT_DISPATCH) return DISP_E_TYPEMISMATCH;
        UniqueBstr text;
        const HRESULT result = readText(*value, locale_, text);
        if (FAILED(result)) return result;
        const std::wstring_view name = viewOf(text.get());
        if (name.empty() || name.find_first_of(kLineEnd) != name.npos) return DISP_E_TYPEMISMATCH;
        if (!text_.empty()) text_ += kLineEnd;
        text_ += name;
        return S_OK;
    }

    [[nodiscard]] const std::wstring& text() const noexcept { return text_; }

private:
    LCID locale_;
    std::wstring text_;
};

HRESULT addArray(SAFEARRAY* array, VARTYPE type, Lines& lines) {
    if (array == nullptr || ::SafeArrayGetDim(array) != 1) return DISP_E_TYPEMISMATCH;
    if (type != VT_BSTR && type != VT_VARIANT) return DISP_E_TYPEMISMATCH;
    VARTYPE held = VT_EMPTY;
    if (FAILED(::SafeArrayGetVartype(array, &held)) || held != type) return DISP_E_TYPEMISMATCH;
    LONG first = 0, last = 0;
    HRESULT result = ::SafeArrayGetLBound(array, 1, &first);
    if (SUCCEEDED(result)) result = ::SafeArrayGetUBound(array, 1, &last);
    if (SUCCEEDED(result) && static_cast<std::int64_t>(last) - first >= kMostNames) result = DISP_E_OVERFLOW;
    for (std::int64_t at = first; SUCCEEDED(result) && at <= last; ++at) {
        LONG index = static_cast<LONG>(at);
        Variant element;
        if (type == VT_VARIANT) {
            result = ::SafeArrayGetElement(array, &index, element.get());
        } else {
            V_VT(element.get()) = VT_BSTR;
            V_BSTR(element.get()) = nullptr;
            result = ::SafeArrayGetElement(array, &index, &V_BSTR(element.get()));
        }
        if (SUCCEEDED(result)) result = lines.add(*element);
    }
    return result;
}

/// @return whether the object has such a property that can be read
bool readProperty(IDispatch& object, const wchar_t* name, LCID locale, Variant& value) noexcept {
    DISPID id = DISPID_UNKNOWN;
    if (!findMember(object, name, id)) return false;
    DISPPARAMS none{};
    return SUCCEEDED(object.Invoke(id, IID_NULL, locale, DISPATCH_PROPERTYGET, &none, value.get(), nullptr, nullptr));
}

HRESULT addNumbered(IDispatch& object, std::int64_t count, LCID locale, Lines& lines) {
    if (count < 0) return DISP_E_TYPEMISMATCH;
    if (count > kMostNames) return DISP_E_OVERFLOW;
    for (std::int64_t at = 0; at < count; ++at) {
        Variant element;
        if (!readProperty(object, std::to_wstring(at).c_str(), locale, element)) return DISP_E_TYPEMISMATCH;
        if (const HRESULT result = lines.add(*element); FAILED(result)) return result;
    }
    return S_OK;
}

ComOwner<IEnumVARIANT> enumeratorOf(IDispatch& object, LCID locale) noexcept {
    DISPPARAMS none{};
    Variant value;
    if (FAILED(object.Invoke(DISPID_NEWENUM, IID_NULL, locale, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none,
                             value.get(), nullptr, nullptr))) {
        return nullptr;
    }
    const bool isObject = value->vt == VT_UNKNOWN || value->vt == VT_DISPATCH;
    void* found = nullptr;
    if (!isObject || V_UNKNOWN(value.get()) == nullptr ||
        FAILED(V_UNKNOWN(value.get())->QueryInterface(IID_IEnumVARIANT, &found))) {
        return nullptr;
    }
    return ComOwner<IEnumVARIANT>(static_cast<IEnumVARIANT*>(found));
}

HRESULT addObject(IDispatch& object, LCID locale, Lines& lines) {
    Variant length;
    if (readProperty(object, L"length", locale, length)) {
        const auto count = integerOf(*length);
        return count ? addNumbered(object, *count, locale, lines) : DISP_E_TYPEMISMATCH;
    }
    const ComOwner<IEnumVARIANT> elements = enumeratorOf(object, locale);
    if (elements == nullptr) {  // a single object with a value, such as one entry
        Variant single;
        V_VT(single.get()) = VT_DISPATCH;
        V_DISPATCH(single.get()) = shareObject(&object).release();
        return lines.add(*single);
    }
    for (std::int64_t count = 0;; ++count) {
        Variant element;
        const HRESULT next = elements->Next(1, element.get(), nullptr);
        if (next != S_OK) return FAILED(next) ? next : S_OK;
        if (count >= kMostNames) return DISP_E_OVERFLOW;
        if (const HRESULT result = lines.add(*element); FAILED(result)) return result;
    }
}

}  // namespace

HRESULT readNames(const VARIANT& argument, LCID locale, UniqueBstr& text) {
    const VARIANT* const value = valueOf(argument);
    if (value == nullptr) return DISP_E_TYPEMISMATCH;
    const VARTYPE type = V_VT(value) & ~VT_BYREF;
    const bool reference = V_ISBYREF(value);
    if (type == VT_BSTR) {
        std::wstring joined;
        for (const std::wstring& name : namesOf(reference ? *V_BSTRREF(value) : V_BSTR(value))) {
            if (!joined.empty()) joined += kLineEnd;
            joined += name;
        }
        text = makeBstr(joined);
        return S_OK;
    }
    Lines lines(locale);
    HRESULT result = DISP_E_TYPEMISMATCH;
    if ((type & VT_ARRAY) != 0) {
        result = addArray(reference ? *V_ARRAYREF(value) : V_ARRAY(value), type & VT_TYPEMASK, lines);
    } else if (type == VT_DISPATCH) {
        IDispatch* const object = reference ? *V_DISPATCHREF(value) : V_DISPATCH(value);
        if (object != nullptr) result = addObject(*object, locale, lines);
    }
    if (FAILED(result)) return result;
    if (lines.text().empty()) return E_INVALIDARG;
    text = makeBstr(lines.text());
    return S_OK;
}

std::vector<std::wstring> namesOf(BSTR text) {
    std::vector<std::wstring> names;
    std::wstring_view rest = viewOf(text);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of(kLineEnd), rest.size());
        if (end > 0) names.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return names;
}

}  // namespace tovar
