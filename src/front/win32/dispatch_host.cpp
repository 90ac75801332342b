#include "front/win32/dispatch_host.h"

#include <limits>

#include "front/win32/variant_values.h"

namespace tovar {

WindowHandle DispatchHost::hWnd() {
    Variant value;
    if (!read(L"hWnd", value)) return nullptr;
    const std::optional<std::int64_t> number = integerOf(*value);
    if (!number || *number < std::numeric_limits<LONG>::min() || *number > std::numeric_limits<ULONG>::max()) {
        return nullptr;
    }
    return handleOf(static_cast<LONG>(*number));
}

std::optional<double> DispatchHost::Width() {
    Variant value;
    return read(L"Width", value) ? numberOf(*value) : std::nullopt;
}

std::optional<double> DispatchHost::Height() {
    Variant value;
    return read(L"Height", value) ? numberOf(*value) : std::nullopt;
}

bool DispatchHost::read(const wchar_t* name, Variant& value) const noexcept {
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(object_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id))) return false;
    DISPPARAMS none{};
    HRESULT result = DISP_E_MEMBERNOTFOUND;
    for (const WORD flags : {DISPATCH_PROPERTYGET, DISPATCH_METHOD}) {  // some hosts have functions of these names
        result = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &none, value.get(), nullptr, nullptr);
        if (result != DISP_E_MEMBERNOTFOUND) break;
    }
    return SUCCEEDED(result);
}

}  // namespace tovar
