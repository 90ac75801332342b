#include "front/win32/type_library.h"

#include "shell/win32/module_instance.h"
#include "shell/win32/system_calls.h"

namespace tovar {

std::wstring modulePath() { return moduleFile(moduleInstance()); }

ComOwner<ITypeInfo> loadTypeInfo(REFGUID id, HRESULT& result) {
    ITypeLib* library = nullptr;
    result = ::LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, &library);
    if (FAILED(result)) return nullptr;
    const ComOwner<ITypeLib> owner(library);
    ITypeInfo* info = nullptr;
    result = library->GetTypeInfoOfGuid(id, &info);
    return ComOwner<ITypeInfo>(SUCCEEDED(result) ? info : nullptr);
}

HRESULT handOutTypeInfo(REFGUID id, ITypeInfo** info) noexcept {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    return comMethod([&] {
        HRESULT result = S_OK;
        *info = loadTypeInfo(id, result).release();
        return result;
    });
}

}  // namespace tovar
