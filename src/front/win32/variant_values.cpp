#include "front/win32/variant_values.h"

#include <cmath>
#include <cstring>

namespace tovar {
namespace {

/// References lead to variants that hold references; more than this is a circle.
constexpr int kMostReferences = 16;

/// Follows VT_BYREF|VT_VARIANT to what is no such reference. Null when it leads nowhere.
VARIANT* follow(VARIANT& argument) noexcept {
    VARIANT* target = &argument;
    for (int i = 0; i < kMostReferences; ++i) {
        if (V_VT(target) != (VT_BYREF | VT_VARIANT)) {
            return (V_VT(target) & VT_BYREF) != 0 && V_BYREF(target) == nullptr ? nullptr : target;
        }
        target = V_VARIANTREF(target);
        if (target == nullptr) return nullptr;
    }
    return nullptr;
}

const VARIANT* follow(const VARIANT& argument) noexcept { return follow(const_cast<VARIANT&>(argument)); }

HRESULT convert(const VARIANT& argument, LCID locale, VARTYPE type, Variant& value) noexcept {
    const VARIANT* const source = follow(argument);
    if (source == nullptr) return DISP_E_TYPEMISMATCH;
    // Read as nothing, and as text the conversion would answer a number for it.
    const VARTYPE held = V_VT(source) & ~VT_BYREF;
    if (held == VT_ERROR || held == VT_NULL) return DISP_E_TYPEMISMATCH;
    if (held == VT_DISPATCH && *(V_ISBYREF(source) ? V_DISPATCHREF(source) : &V_DISPATCH(source)) == nullptr) {
        return DISP_E_TYPEMISMATCH;
    }
    const HRESULT result = ::VariantChangeTypeEx(value.get(), const_cast<VARIANT*>(source), locale, 0, type);
    if (SUCCEEDED(result) || result == DISP_E_OVERFLOW || result == E_OUTOFMEMORY) return result;
    return DISP_E_TYPEMISMATCH;
}

/// Size of the numbers that a typed reference can lead to; 0 for other types.
std::size_t numberSize(VARTYPE type) noexcept {
    switch (type) {
        case VT_I1:
        case VT_UI1:
            return 1;
        case VT_I2:
        case VT_UI2:
            return 2;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
            return 4;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
            return 8;
        default:
            return 0;
    }
}

/// @return whether the number survives the way to the type and back
bool makeOfType(LONG number, LCID locale, VARTYPE type, Variant& value) noexcept {
    Variant source;
    V_VT(source.get()) = VT_I4;
    V_I4(source.get()) = number;
    LONG again = 0;
    return SUCCEEDED(::VariantChangeTypeEx(value.get(), source.get(), locale, 0, type)) &&
           SUCCEEDED(readLong(*value, locale, again)) && again == number;
}

HRESULT writeTyped(VARIANT& reference, LCID locale, LONG number) noexcept {
    const VARTYPE type = V_VT(&reference) & ~VT_BYREF;
    if (type != VT_BSTR && numberSize(type) == 0) return DISP_E_TYPEMISMATCH;
    Variant value;
    if (!makeOfType(number, locale, type, value)) return DISP_E_OVERFLOW;
    if (type == VT_BSTR) {
        ::SysFreeString(*V_BSTRREF(&reference));
        *V_BSTRREF(&reference) = V_BSTR(value.get());
        V_VT(value.get()) = VT_EMPTY;
    } else {
        std::memcpy(V_BYREF(&reference), &V_I8(value.get()), numberSize(type));
    }
    return S_OK;
}

HRESULT writeVariant(VARIANT& target, LCID locale, LONG number) noexcept {
    Variant value;
    const VARTYPE type = V_VT(&target);
    if ((type != VT_BSTR && numberSize(type) == 0) || !makeOfType(number, locale, type, value)) {
        ::VariantClear(value.get());
        V_VT(value.get()) = VT_I4;
        V_I4(value.get()) = number;
    }
    return ::VariantCopy(&target, value.get());
}

}  // namespace

const VARIANT* valueOf(const VARIANT& argument) noexcept { return follow(argument); }

bool isMissing(const VARIANT& argument) noexcept {
    const VARIANT* const value = follow(argument);
    return value != nullptr && V_VT(value) == VT_ERROR && V_ERROR(value) == DISP_E_PARAMNOTFOUND;
}

HRESULT readText(const VARIANT& argument, LCID locale, UniqueBstr& text) noexcept {
    Variant value;
    const HRESULT result = convert(argument, locale, VT_BSTR, value);
    if (FAILED(result)) return result;
    text.reset(V_BSTR(value.get()));
    V_VT(value.get()) = VT_EMPTY;
    return S_OK;
}

HRESULT readBoolean(const VARIANT& argument, LCID locale, VARIANT_BOOL& flag) noexcept {
    Variant value;
    const HRESULT result = convert(argument, locale, VT_BOOL, value);
    if (SUCCEEDED(result)) flag = V_BOOL(value.get());
    return result;
}

HRESULT readLong(const VARIANT& argument, LCID locale, LONG& number) noexcept {
    Variant value;
    const HRESULT result = convert(argument, locale, VT_I4, value);
    if (SUCCEEDED(result)) number = V_I4(value.get());
    return result;
}

HRESULT readHandle(const VARIANT& argument, LCID locale, LONG& handle) noexcept {
    const HRESULT result = readLong(argument, locale, handle);
    if (result != DISP_E_OVERFLOW) return result;
    Variant value;
    const HRESULT unsignedResult = convert(argument, locale, VT_UI4, value);
    if (SUCCEEDED(unsignedResult)) handle = static_cast<LONG>(V_UI4(value.get()));
    return unsignedResult;
}

HRESULT readObject(const VARIANT& argument, ComOwner<IDispatch>& object) noexcept {
    const VARIANT* const value = follow(argument);
    if (value == nullptr) return DISP_E_TYPEMISMATCH;
    const bool reference = V_ISBYREF(value);
    switch (V_VT(value) & ~VT_BYREF) {
        case VT_EMPTY:
        case VT_NULL:
            return S_OK;
        case VT_ERROR:
            return isMissing(argument) ? S_OK : DISP_E_TYPEMISMATCH;
        case VT_DISPATCH:
            object = shareObject(reference ? *V_DISPATCHREF(value) : V_DISPATCH(value));
            return S_OK;
        case VT_UNKNOWN: {
            IUnknown* const unknown = reference ? *V_UNKNOWNREF(value) : V_UNKNOWN(value);
            if (unknown == nullptr) return S_OK;
            void* found = nullptr;
            if (FAILED(unknown->QueryInterface(IID_IDispatch, &found))) return DISP_E_TYPEMISMATCH;
            object.reset(static_cast<IDispatch*>(found));
            return S_OK;
        }
        default:
            return DISP_E_TYPEMISMATCH;
    }
}

HRESULT writeLong(VARIANT& argument, LCID locale, LONG number) noexcept {
    VARIANT* const target = follow(argument);
    if (target == nullptr) return DISP_E_TYPEMISMATCH;
    if (V_ISBYREF(target)) return writeTyped(*target, locale, number);
    return target == &argument ? S_OK : writeVariant(*target, locale, number);
}

std::optional<std::int64_t> integerOf(const VARIANT& value) noexcept {
    Variant converted;
    if (FAILED(convert(value, LOCALE_USER_DEFAULT, VT_I8, converted))) return std::nullopt;
    return V_I8(converted.get());
}

std::optional<double> numberOf(const VARIANT& value) noexcept {
    Variant converted;
    if (FAILED(convert(value, LOCALE_USER_DEFAULT, VT_R8, converted))) return std::nullopt;
    if (!std::isfinite(V_R8(converted.get()))) return std::nullopt;
    return V_R8(converted.get());
}

}  // namespace tovar
