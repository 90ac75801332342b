#pragma once
#include <memory>
#include <string>
#include <string_view>

namespace tovar {

/// A loaded library; unloaded with the object.
class Module {
public:
    virtual ~Module() = default;
    /// @return the address of an exported function, or null. Names are case-sensitive.
    [[nodiscard]] virtual void* find(const char* name) const = 0;
};

/// Loads libraries by their full path, never by a bare name: the system's search order is the finder's business.
class ModuleLoader {
public:
    virtual ~ModuleLoader() = default;
    /// @return null when the file cannot be loaded; shows no message of the system
    [[nodiscard]] virtual std::unique_ptr<Module> load(const std::wstring& fullPath) = 0;
};

/// The system's own loader.
[[nodiscard]] std::unique_ptr<ModuleLoader> systemModuleLoader();

/// The file that holds a library on this system: "UnZip32.dll" is "UnZip32.so" where libraries are shared objects.
[[nodiscard]] std::wstring moduleFileName(std::wstring_view library);

}  // namespace tovar
