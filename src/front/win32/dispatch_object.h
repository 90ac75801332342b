#pragma once
#include <windows.h>

#include <oleauto.h>

#include <atomic>

#include "front/win32/com_support.h"
#include "front/win32/late_binding.h"
#include "front/win32/server_lock.h"
#include "front/win32/type_library.h"

namespace tovar {

/// A COM object of one dual interface, from a table of its members. May be used on any thread: what is handed out over
/// it does not change.
template <class Interface>
class DispatchObject : public Interface, public ISupportErrorInfo {
public:
    DispatchObject(const DispatchObject&) = delete;
    DispatchObject& operator=(const DispatchObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) || IsEqualIID(iid, id_)) {
            *object = static_cast<Interface*>(this);
        } else if (IsEqualIID(iid, IID_ISupportErrorInfo)) {
            *object = static_cast<ISupportErrorInfo*>(this);
        } else {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = 1;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        if (index != 0) return DISP_E_BADINDEX;
        return handOutTypeInfo(id_, info);
    }
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
        if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
        const DispatchPart parts[] = {{rows_, this}};
        return idsOfNames(parts, {names, count}, ids);
    }
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override {
        const ComOwner<Interface> alive = shareObject<Interface>(this);
        const DispatchPart parts[] = {{rows_, this}};
        return invokeMethod(parts, id, iid, locale, flags, parameters, result, exception, badArgument);
    }

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override { return IsEqualIID(iid, id_) ? S_OK : S_FALSE; }

protected:
    DispatchObject(REFIID id, std::span<const MethodRow> rows) : id_(id), rows_(rows) {}
    virtual ~DispatchObject() = default;

private:
    ServerLock lock_;
    REFIID id_;
    std::span<const MethodRow> rows_;
    std::atomic<ULONG> references_ = 1;
};

}  // namespace tovar
