#pragma once
#include <windows.h>

#include <oaidl.h>

namespace tovar::host {

/// What a host passes as `fParent`: an object with the properties hWnd, Width and Height, read by name. Width and
/// Height are given in pixels here; any other unit would do.
class HostObject final : public IDispatch {
public:
    explicit HostObject(HWND window) : window_(window) {}
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;

    // IUnknown. The object lives on its owner, so the count only serves the callers' habits.
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override { return --references_; }

    // IDispatch
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override;

private:
    HWND window_;
    ULONG references_ = 1;
};

}  // namespace tovar::host
