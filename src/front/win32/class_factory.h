#pragma once
#include <windows.h>

#include <unknwn.h>

#include <atomic>

#include "front/win32/server_lock.h"

namespace tovar {

/// Makes objects of the public class.
class ClassFactory final : public IClassFactory {
public:
    /// For DllGetClassObject. @return CLASS_E_CLASSNOTAVAILABLE for any class but cTovar
    static HRESULT create(REFCLSID classId, REFIID iid, void** object) noexcept;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
    STDMETHODIMP LockServer(BOOL lock) override;

private:
    ClassFactory() = default;
    ~ClassFactory() = default;

    ServerLock lock_;
    std::atomic<ULONG> references_ = 1;
};

}  // namespace tovar
