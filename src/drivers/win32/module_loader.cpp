#include "drivers/module_loader.h"

#include <windows.h>

#include "drivers/win32/full_path.h"
#include "shell/win32/handles.h"
#include "shell/win32/system_calls.h"

namespace tovar {
namespace {

class WindowsModule final : public Module {
public:
    explicit WindowsModule(UniqueLibrary library) noexcept : library_(std::move(library)) {}

    void* find(const char* name) const override {
        return reinterpret_cast<void*>(::GetProcAddress(library_.get(), name));
    }

private:
    UniqueLibrary library_;
};

class WindowsModuleLoader final : public ModuleLoader {
public:
    std::unique_ptr<Module> load(const std::wstring& fullPath) override {
        if (!isFullPath(fullPath) || !isSystemText(fullPath)) {
            return nullptr;
        }
        const QuietSystem quiet;
        // What the library itself needs is looked for beside it, not in the host's folder.
        UniqueLibrary library(::LoadLibraryExW(fullPath.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
        return library ? std::make_unique<WindowsModule>(std::move(library)) : nullptr;
    }
};

}  // namespace

std::unique_ptr<ModuleLoader> systemModuleLoader() { return std::make_unique<WindowsModuleLoader>(); }

std::wstring moduleFileName(std::wstring_view library) { return std::wstring(library); }

}  // namespace tovar
