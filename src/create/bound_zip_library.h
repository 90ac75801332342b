#pragma once
#include <memory>
#include <string_view>

#include "create/zip_library.h"
#include "drivers/library_finder.h"
#include "drivers/module_loader.h"

namespace tovar {

/// The exported functions of a loaded "InfoZip32.dll". Texts go over in UTF-8 where it exports ZpSetUnicodeMode.
class BoundZipLibrary final : public ZipLibrary {
public:
    /// @param ansi  codec of the ANSI code page; outlives the library, as `system` does
    BoundZipLibrary(std::unique_ptr<Module> module, const TextCodec& ansi, const SystemPaths& system);

    /// Whether every function that a run needs is there.
    [[nodiscard]] bool complete() const noexcept;

    [[nodiscard]] LibraryTexts& texts() override { return texts_; }
    std::int32_t run(const archiver::zip_abi::Options& options, const archiver::zip_abi::Command& command,
                     ZipEvents& events) override;

private:
    /// Null where the library lacks the function.
    struct Functions {
        archiver::zip_abi::fn::Init* init;
        archiver::zip_abi::fn::SetOptions* setOptions;
        archiver::zip_abi::fn::Archive* archive;
        archiver::fn::SetBool* setUnicodeMode;
    };
    class Calls;

    static Functions bind(const Module& module);

    std::unique_ptr<Module> module_;
    Functions functions_;
    LibraryTexts texts_;
};

/// Finds and loads the zip library when it is first needed, by its full path, and keeps it.
class FoundZipLibraries final : public ZipLibraries {
public:
    static constexpr std::wstring_view kLibrary = L"InfoZip32.dll";

    /// All arguments outlive the object.
    FoundZipLibraries(ModuleLoader& loader, const LibraryFinder& finder, const TextCodec& ansi,
                      const SystemPaths& system)
        : loader_(loader), finder_(finder), ansi_(ansi), system_(system) {}

    [[nodiscard]] ZipLibrary* get() override;

private:
    ModuleLoader& loader_;
    const LibraryFinder& finder_;
    const TextCodec& ansi_;
    const SystemPaths& system_;
    std::unique_ptr<BoundZipLibrary> library_;
};

}  // namespace tovar
