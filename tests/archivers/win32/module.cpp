#include "archivers/module.h"

#include <windows.h>

#include <string>

namespace archiver::testing {

Module::Module(const char* name) : handle_(::LoadLibraryW((programFolder() / (std::string(name) + ".dll")).c_str())) {}

Module::~Module() {
    if (handle_ != nullptr) {
        ::FreeLibrary(static_cast<HMODULE>(handle_));
    }
}

void* Module::find(const char* name) const {
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(handle_), name));
}

std::filesystem::path programFolder() {
    wchar_t name[MAX_PATH];
    const DWORD length = ::GetModuleFileNameW(nullptr, name, MAX_PATH);
    return std::filesystem::path(name, name + length).parent_path();
}

}  // namespace archiver::testing
