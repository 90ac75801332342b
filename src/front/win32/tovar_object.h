#pragma once
#include <windows.h>

#include <ocidl.h>

#include <array>
#include <atomic>
#include <memory>

#include "front/tovar.h"
#include "front/win32/archive_object.h"
#include "front/win32/com_support.h"
#include "front/win32/component.h"
#include "front/win32/method_table.h"
#include "front/win32/server_lock.h"
#include "tovar_idl.h"

namespace tovar {

/// The public class. Every method answers E_POINTER for a missing place for its result, and RPC_E_WRONG_THREAD on
/// another thread than the one that made the object.
class cTovar final : public ITovar, public IProvideClassInfo, public ISupportErrorInfo {
public:
    /// Makes an object for IClassFactory::CreateInstance.
    static HRESULT create(REFIID iid, void** object) noexcept;

    cTovar(const cTovar&) = delete;
    cTovar& operator=(const cTovar&) = delete;

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    // IDispatch
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override;

    // ITovar
    STDMETHODIMP IsBusy(VARIANT_BOOL* result) override;
    STDMETHODIMP SetFont(BSTR sFontName, LONG hFont, VARIANT* result) override;
    STDMETHODIMP Configure() override;
    STDMETHODIMP CanCreateArchive(VARIANT_BOOL* result) override;
    STDMETHODIMP CreateArchive(BSTR sArcFile, BSTR sArcDir, BSTR sArcList, IDispatch* fParent,
                               VARIANT_BOOL* result) override;
    STDMETHODIMP OpenArchive(BSTR sArcFile, BSTR sArcDir, IDispatch* fParent, VARIANT_BOOL* result) override;
    STDMETHODIMP CanOpenArchive(BSTR sArcFile, LONG* nArcMode, VARIANT_BOOL bMsg, VARIANT_BOOL* result) override;
    STDMETHODIMP SetTempDir(BSTR sTempDir) override;

    // IProvideClassInfo
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override;

    // ISupportErrorInfo
    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override;

private:
    explicit cTovar(std::shared_ptr<Component> component);
    ~cTovar() = default;

    class Running;

    template <class Body>
    HRESULT call(Body body) noexcept;
    [[nodiscard]] std::array<DispatchPart, 2> parts() noexcept;

    ServerLock lock_;  // the last to go
    std::shared_ptr<Component> component_;
    TovarOperations operations_;
    TovarArchive archive_;
    const DWORD thread_;
    std::atomic<ULONG> references_ = 1;
    ULONG calls_ = 0;  ///< of its methods that run; each holds a reference
};

}  // namespace tovar
