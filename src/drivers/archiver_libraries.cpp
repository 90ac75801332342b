#include "drivers/archiver_libraries.h"

#include "drivers/bound_library.h"
#include "drivers/missing_library.h"
#include "shell/paths.h"

namespace tovar {

ArchiverLibraries::ArchiverLibraries(ModuleLoader& loader, const LibraryFinder& finder, const TextCodec& ansi,
                                     const SystemPaths& system)
    : loader_(loader), finder_(finder), ansi_(ansi), system_(system), missing_(std::make_unique<MissingLibrary>()) {}

std::wstring ArchiverLibraries::pathOf(std::wstring_view library) const {
    const auto loaded = loaded_.find(upperCase(library));
    return loaded != loaded_.end() ? loaded->second.path : finder_.find(library);
}

ArchiverLibrary* ArchiverLibraries::get(const DriverDescription& description) {
    std::wstring key = upperCase(description.library);
    if (const auto loaded = loaded_.find(key); loaded != loaded_.end()) {
        return loaded->second.library.get();
    }
    std::wstring path = finder_.find(description.library);
    std::unique_ptr<Module> module = path.empty() ? nullptr : loader_.load(path);
    if (!module) {
        return nullptr;
    }
    auto library = std::make_unique<BoundLibrary>(std::move(module), description, ansi_, system_);
    ArchiverLibrary* const bound = library.get();
    loaded_.emplace(std::move(key), Loaded{std::move(path), std::move(library)});
    return bound;
}

ArchiverLibrary& ArchiverLibraries::getOrMissing(const DriverDescription& description) {
    ArchiverLibrary* const library = get(description);
    return library != nullptr ? *library : *missing_;
}

}  // namespace tovar
