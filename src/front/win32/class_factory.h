#pragma once
#include <windows.h>

#include "front/win32/server_lock.h"
#include "shell/win32/com_object.h"

namespace tovar {

/// Makes objects of the public class.
class ClassFactory final : public ComObject<IClassFactory, IID_IClassFactory> {
public:
    /// For DllGetClassObject. @return CLASS_E_CLASSNOTAVAILABLE for any class but cTovar
    static HRESULT create(REFCLSID classId, REFIID iid, void** object) noexcept;

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
    STDMETHODIMP LockServer(BOOL lock) override;

private:
    ClassFactory() = default;

    ServerLock lock_;
};

}  // namespace tovar
