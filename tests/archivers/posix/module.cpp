#include "archivers/module.h"

#include <dlfcn.h>

#include <string>

namespace archiver::testing {

Module::Module(const char* name)
    : handle_(::dlopen((programFolder() / (std::string(name) + ".so")).c_str(), RTLD_NOW | RTLD_LOCAL)) {}

Module::~Module() {
    if (handle_ != nullptr) {
        ::dlclose(handle_);
    }
}

void* Module::find(const char* name) const { return ::dlsym(handle_, name); }

std::filesystem::path programFolder() { return std::filesystem::read_symlink("/proc/self/exe").parent_path(); }

}  // namespace archiver::testing
