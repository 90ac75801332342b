#include "front/win32/class_factory.h"

#include "front/win32/com_support.h"
#include "front/win32/tovar_object.h"

namespace tovar {

HRESULT ClassFactory::create(REFCLSID classId, REFIID iid, void** object) noexcept {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (!IsEqualCLSID(classId, CLSID_cTovar)) return CLASS_E_CLASSNOTAVAILABLE;
    return comMethod([&] {
        const ComOwner<ClassFactory> made(new ClassFactory);
        return made->QueryInterface(iid, object);
    });
}

STDMETHODIMP ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    return cTovar::create(iid, object);
}

STDMETHODIMP ClassFactory::LockServer(BOOL lock) {
    if (lock != FALSE) {
        ServerLock::lock();
    } else {
        ServerLock::unlock();
    }
    return S_OK;
}

}  // namespace tovar
