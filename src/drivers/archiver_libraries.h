#pragma once
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "drivers/ace_library.h"
#include "drivers/archiver_library.h"
#include "drivers/driver_description.h"
#include "drivers/library_finder.h"
#include "drivers/module_loader.h"
#include "shell/text_codec.h"

namespace tovar {

/// The archiver libraries of the process: each is found, loaded and bound once, and stays loaded for the life of this
/// object.
class ArchiverLibraries {
public:
    /// All arguments outlive this object.
    /// @param ansi  codec of the process's ANSI code page, for libraries that know no UTF-8
    ArchiverLibraries(ModuleLoader& loader, const LibraryFinder& finder, const TextCodec& ansi,
                      const SystemPaths& system);

    /// @param library  file name, such as "UnZip32.dll"
    /// @return full path of the library: that of the loaded one, else that of the one that would be loaded; empty when
    ///         there is none
    [[nodiscard]] std::wstring pathOf(std::wstring_view library) const;

    /// @return null when the library is not found or cannot be loaded; looked for again at the next call then
    [[nodiscard]] ArchiverLibrary* get(const DriverDescription& description);

    /// Like get, but in place of null a library whose functions all fail and whose version is 1, that of an unusable
    /// one.
    [[nodiscard]] ArchiverLibrary& getOrMissing(const DriverDescription& description);

    /// The library of ACE archives, which has an interface of its own, likewise.
    /// @return one whose functions all fail when there is none
    [[nodiscard]] AceLibrary& getAceOrMissing(const DriverDescription& description);

private:
    struct Loaded {
        std::wstring path;
        std::unique_ptr<ArchiverLibrary> library;
        std::unique_ptr<AceLibrary> ace;  ///< in its place
    };

    /// @return null when the library is not found or cannot be loaded
    std::unique_ptr<Module> load(std::wstring_view library, std::wstring& path);

    ModuleLoader& loader_;
    const LibraryFinder& finder_;
    const TextCodec& ansi_;
    const SystemPaths& system_;
    std::map<std::wstring, Loaded, std::less<>> loaded_;
    std::unique_ptr<ArchiverLibrary> missing_;
    std::unique_ptr<AceLibrary> missingAce_;
};

}  // namespace tovar
