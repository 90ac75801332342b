#include "drivers/archiver_libraries.h"

#include "drivers/bound_ace_library.h"
#include "drivers/bound_library.h"
#include "drivers/missing_library.h"
#include "shell/paths.h"

namespace tovar {

ArchiverLibraries::ArchiverLibraries(ModuleLoader& loader, const LibraryFinder& finder, const TextCodec& ansi,
                                     const SystemPaths& system)
    : loader_(loader),
      finder_(finder),
      ansi_(ansi),
      system_(system),
      missing_(std::make_unique<MissingLibrary>()),
      missingAce_(std::make_unique<MissingAceLibrary>()) {}

std::wstring ArchiverLibraries::pathOf(std::wstring_view library) const {
    const auto loaded = loaded_.find(upperCase(library));
    return loaded != loaded_.end() ? loaded->second.path : finder_.find(library);
}

ArchiverLibrary* ArchiverLibraries::get(const DriverDescription& description) {
    std::wstring key = upperCase(description.library);
    if (const auto loaded = loaded_.find(key); loaded != loaded_.end()) {
        return loaded->second.library.get();
    }
    std::wstring path;
    std::unique_ptr<Module> module = load(description.library, path);
    if (!module) {
        return nullptr;
    }
    auto library = std::make_unique<BoundLibrary>(std::move(module), description, ansi_, system_);
    ArchiverLibrary* const bound = library.get();
    loaded_.emplace(std::move(key), Loaded{std::move(path), std::move(library), nullptr});
    return bound;
}

ArchiverLibrary& ArchiverLibraries::getOrMissing(const DriverDescription& description) {
    ArchiverLibrary* const library = get(description);
    return library != nullptr ? *library : *missing_;
}

AceLibrary& ArchiverLibraries::getAceOrMissing(const DriverDescription& description) {
    std::wstring key = upperCase(description.library);
    if (const auto loaded = loaded_.find(key); loaded != loaded_.end()) {
        return loaded->second.ace ? *loaded->second.ace : *missingAce_;
    }
    std::wstring path;
    std::unique_ptr<Module> module = load(description.library, path);
    if (!module) {
        return *missingAce_;
    }
    auto library = std::make_unique<BoundAceLibrary>(std::move(module), ansi_, system_);
    AceLibrary& bound = *library;
    loaded_.emplace(std::move(key), Loaded{std::move(path), nullptr, std::move(library)});
    return bound;
}

std::unique_ptr<Module> ArchiverLibraries::load(std::wstring_view library, std::wstring& path) {
    path = finder_.find(library);
    return path.empty() ? nullptr : loader_.load(path);
}

}  // namespace tovar
