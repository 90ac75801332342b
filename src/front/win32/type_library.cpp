#include "front/win32/type_library.h"

#include <string>

#include "shell/win32/module_instance.h"

namespace tovar {

std::wstring modulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = ::GetModuleFileNameW(moduleInstance(), path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

ComOwner<ITypeInfo> loadTypeInfo(REFGUID id, HRESULT& result) {
    ITypeLib* library = nullptr;
    result = ::LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, &library);
    if (FAILED(result)) return nullptr;
    const ComOwner<ITypeLib> owner(library);
    ITypeInfo* info = nullptr;
    result = library->GetTypeInfoOfGuid(id, &info);
    return ComOwner<ITypeInfo>(SUCCEEDED(result) ? info : nullptr);
}

}  // namespace tovar
