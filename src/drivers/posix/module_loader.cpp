#include "drivers/module_loader.h"

#include <dlfcn.h>

#include "shell/posix/posix_text.h"

namespace tovar {
namespace {

class PosixModule final : public Module {
public:
    explicit PosixModule(void* handle) noexcept : handle_(handle) {}
    ~PosixModule() override { ::dlclose(handle_); }
    PosixModule(const PosixModule&) = delete;
    PosixModule& operator=(const PosixModule&) = delete;

    void* find(const char* name) const override { return ::dlsym(handle_, name); }

private:
    void* handle_;
};

class PosixModuleLoader final : public ModuleLoader {
public:
    std::unique_ptr<Module> load(const std::wstring& fullPath) override {
        if (!fullPath.starts_with(L'/') || fullPath.find(L'\0') != fullPath.npos) {
            return nullptr;  // dlopen would go and search for a bare name
        }
        void* const handle = ::dlopen(toPosixName(fullPath).c_str(), RTLD_NOW | RTLD_LOCAL);
        return handle != nullptr ? std::make_unique<PosixModule>(handle) : nullptr;
    }
};

}  // namespace

std::unique_ptr<ModuleLoader> systemModuleLoader() { return std::make_unique<PosixModuleLoader>(); }

std::wstring moduleFileName(std::wstring_view library) {
    constexpr std::wstring_view kWindowsEnding = L".dll";
    std::wstring name(library);
    if (name.ends_with(kWindowsEnding)) {
        name.replace(name.size() - kWindowsEnding.size(), kWindowsEnding.size(), L".so");
    }
    return name;
}

}  // namespace tovar
