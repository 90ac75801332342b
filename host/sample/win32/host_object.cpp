#include "host/sample/win32/host_object.h"

#include <cwchar>

namespace tovar::host {
namespace {

enum Property : DISPID { kHWnd = 1, kWidth = 2, kHeight = 3 };

struct NamedProperty {
    const wchar_t* name;
    DISPID id;
};
constexpr NamedProperty kProperties[] = {{L"hWnd", kHWnd}, {L"Width", kWidth}, {L"Height", kHeight}};

}  // namespace

STDMETHODIMP HostObject::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IDispatch)) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP HostObject::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
}

STDMETHODIMP HostObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
    for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
    for (const auto& property : kProperties) {
        if (_wcsicmp(names[0], property.name) == 0) ids[0] = property.id;
    }
    return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

STDMETHODIMP HostObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) {
    if ((flags & DISPATCH_PROPERTYGET) == 0) return DISP_E_MEMBERNOTFOUND;
    if (result == nullptr) return E_POINTER;
    RECT frame{};
    ::GetWindowRect(window_, &frame);
    result->vt = VT_I4;
    switch (id) {
        case kHWnd:
            result->lVal = static_cast<LONG>(reinterpret_cast<LONG_PTR>(window_));  // handles fit in 32 bits
            return S_OK;
        case kWidth:
            result->lVal = frame.right - frame.left;
            return S_OK;
        case kHeight:
            result->lVal = frame.bottom - frame.top;
            return S_OK;
        default:
            result->vt = VT_EMPTY;
            return DISP_E_MEMBERNOTFOUND;
    }
}

}  // namespace tovar::host
