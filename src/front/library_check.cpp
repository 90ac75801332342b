#include "front/library_check.h"

#include <stdexcept>

namespace tovar {
namespace {

/// @return the text of a library that is there; empty when its version has no text: such a one is left aside
std::wstring versionText(const std::wstring& path, const PathOperations& paths) {
    try {
        return paths.FileVersionText(path);
    } catch (const std::overflow_error&) {
        return {};
    }
}

}  // namespace

std::wstring CheckLibrary(std::wstring_view library, CommonDriver& driver, std::uint16_t minimumVersion,
                          const ArchiverLibraries& libraries, const PathOperations& paths) {
    const std::wstring path = libraries.pathOf(library);
    if (path.empty()) return {};
    const std::uint16_t version = driver.Version();
    if (version == kUnusableVersion || version < minimumVersion) return {};
    return versionText(path, paths);
}

std::wstring CheckKind(const KindRow& row, const DriverServices& services, const PathOperations& paths) {
    if (row.reads() && row.makeDriver == nullptr) return {};
    if (!row.minimumVersion) return versionText(services.libraries.pathOf(row.library), paths);
    const std::unique_ptr<ArchiveDriver> driver = row.makeDriver(services);
    auto* const common = dynamic_cast<CommonDriver*>(driver.get());
    if (common == nullptr) return {};
    return CheckLibrary(row.library, *common, *row.minimumVersion, services.libraries, paths);
}

LibraryVersions CheckArchiverLibraries(const DriverServices& services, const PathOperations& paths) {
    LibraryVersions versions;
    // Libraries with a version of their own come first, those whose presence is enough after them.
    for (const bool versioned : {true, false}) {
        for (const KindRow& row : kindTable()) {
            if (row.minimumVersion.has_value() != versioned) continue;
            const std::wstring& text = versions[row.bit] = CheckKind(row, services, paths);
            if (row.creationBit != kind::kNone) versions[row.creationBit] = text;
        }
    }
    return versions;
}

ArchiveKind availabilityMask(const LibraryVersions& versions) noexcept {
    ArchiveKind mask = kind::kNone;
    for (const auto& [bit, text] : versions) {
        if (!text.empty()) mask |= bit;
    }
    return mask;
}

}  // namespace tovar
