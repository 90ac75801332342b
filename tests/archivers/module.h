#pragma once
#include <filesystem>

namespace archiver::testing {

/// A loaded module; unloaded with the object.
class Module {
public:
    /// @param name  without its extension; the file lies beside the test program
    explicit Module(const char* name);
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    ~Module();

    [[nodiscard]] bool loaded() const { return handle_ != nullptr; }
    /// @return null when the module exports no such name
    [[nodiscard]] void* find(const char* name) const;

private:
    void* handle_;
};

/// The folder of the test program.
std::filesystem::path programFolder();

}  // namespace archiver::testing
