#pragma once
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "archivers/formats/archive_reader.h"

namespace archiver {

/// What stands at a place that is to be packed. A link to a file counts as the file that it leads to.
enum class SourceKind : std::uint8_t {
    kFile,
    kFolder,
    kFolderLink,  ///< a symbolic link, junction or mounted folder that leads to a folder
    kOther,       ///< a device, a pipe, a link that leads nowhere: nothing that can be packed
};

/// What the system tells of a place.
struct SourceFacts {
    SourceKind kind = SourceKind::kFile;
    std::uint64_t size = 0;       ///< bytes of a file when it was looked at; 0 for a folder
    std::uint8_t attributes = 0;  ///< attribute bits; elsewhere than in Windows those that the file's mode stands for
    std::optional<Moment> written, created, accessed;
};

/// A file or folder that is to be packed.
struct SourceItem {
    std::filesystem::path path;  ///< absolute, in the form that the system takes at any length
    std::string name;            ///< in the archive: UTF-8, "/" between its parts and behind a folder's name
    SourceFacts facts;

    [[nodiscard]] bool isFolder() const noexcept { return facts.kind == SourceKind::kFolder; }
};

/// The UTF-8 form of a path, with "/" between its parts. A name that is no text in the system's encoding is read in a
/// code page, so that it stays a name, and no two fall together.
std::string utf8OfPath(const std::filesystem::path& path);

}  // namespace archiver
