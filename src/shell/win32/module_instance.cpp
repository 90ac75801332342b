#include "shell/win32/module_instance.h"

namespace tovar {

HINSTANCE moduleInstance() noexcept {
    static const char anchor = 0;
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<const wchar_t*>(&anchor), &module);
    return module;
}

}  // namespace tovar
