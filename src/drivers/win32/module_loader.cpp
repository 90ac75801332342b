#include "drivers/module_loader.h"

#include <windows.h>

#include "shell/win32/handles.h"

namespace tovar {
namespace {

/// Keeps the system from asking for a missing disk or library in a box of its own, on this thread only.
class SilentLoading {
public:
    SilentLoading() noexcept { ::SetThreadErrorMode(::GetThreadErrorMode() | SEM_FAILCRITICALERRORS, &previous_); }
    ~SilentLoading() { ::SetThreadErrorMode(previous_, nullptr); }
    SilentLoading(const SilentLoading&) = delete;
    SilentLoading& operator=(const SilentLoading&) = delete;

private:
    DWORD previous_ = 0;
};

class WindowsModule final : public Module {
public:
    explicit WindowsModule(UniqueLibrary library) noexcept : library_(std::move(library)) {}

    void* find(const char* name) const override {
        return reinterpret_cast<void*>(::GetProcAddress(library_.get(), name));
    }

private:
    UniqueLibrary library_;
};

bool isFullPath(const std::wstring& path) {
    const bool drive = path.size() > 3 && path[1] == L':' && (path[2] == L'\\' || path[2] == L'/');
    return drive || path.starts_with(L"\\\\");
}

class WindowsModuleLoader final : public ModuleLoader {
public:
    std::unique_ptr<Module> load(const std::wstring& fullPath) override {
        if (!isFullPath(fullPath)) {
            return nullptr;
        }
        const SilentLoading silent;
        // What the library itself needs is looked for beside it, not in the host's folder.
        UniqueLibrary library(::LoadLibraryExW(fullPath.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
        return library ? std::make_unique<WindowsModule>(std::move(library)) : nullptr;
    }
};

}  // namespace

std::unique_ptr<ModuleLoader> systemModuleLoader() { return std::make_unique<WindowsModuleLoader>(); }

std::wstring moduleFileName(std::wstring_view library) { return std::wstring(library); }

}  // namespace tovar
