#include "front/win32/dispatch_host.h"

#include <dispex.h>

#include <limits>

#include "front/win32/variant_values.h"

namespace tovar {

bool findMember(IDispatch& object, const wchar_t* name, DISPID& id) noexcept {
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    if (SUCCEEDED(object.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id))) return true;
    // Not every script engine answers that for its objects, and some tell "hwnd" from "hWnd".
    void* found = nullptr;
    if (FAILED(object.QueryInterface(__uuidof(IDispatchEx), &found))) return false;
    const ComOwner<IDispatchEx> extended(static_cast<IDispatchEx*>(found));
    const UniqueBstr text(::SysAllocString(name));
    return text && SUCCEEDED(extended->GetDispID(text.get(), fdexNameCaseInsensitive, &id));
}

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
    DISPID id = DISPID_UNKNOWN;
    if (!findMember(*object_, name, id)) return false;
    DISPPARAMS none{};
    HRESULT result = DISP_E_MEMBERNOTFOUND;
    for (const WORD flags : {DISPATCH_PROPERTYGET, DISPATCH_METHOD}) {  // some hosts have functions of these names
        result = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &none, value.get(), nullptr, nullptr);
        if (result != DISP_E_MEMBERNOTFOUND) break;
    }
    return SUCCEEDED(result);
}

}  // namespace tovar
