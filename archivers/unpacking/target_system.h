#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "archivers/formats/archive_reader.h"
#include "archivers/unpacking/target_name.h"

namespace archiver {

/// What stands at a place in the target.
struct ExistingItem {
    enum class Kind : std::uint8_t { kFile, kFolder, kLink };  ///< kLink: symbolic link, junction, anything like it
    Kind kind = Kind::kFile;
    std::uint64_t size = 0;
    std::optional<Moment> written;
    bool readOnly = false;
};

/// What a finished file or folder is given.
struct ItemProperties {
    std::optional<Moment> written, created, accessed;
    std::optional<std::uint8_t> attributes;  ///< attribute bits; none: the system's own
    std::string_view webMark;                ///< where a downloaded archive came from, as TargetSystem::webMark gave it
};

/// A file that is being written. Until commit, what was at its place is untouched; without commit nothing stays behind.
class OutputFile {
public:
    virtual ~OutputFile() = default;
    /// @return kOk, kDiskSpace, kCannotWrite
    virtual ReturnCode write(std::span<const char> bytes) = 0;
    /// Gives the file its properties and its name. With `replace` a file or a link that stands there gives way in that
    /// moment, also a write-protected one; without it, or when a folder stands there, the answer is kSameNameFile.
    virtual ReturnCode commit(const ItemProperties& properties) = 0;
};

/// The folder that members are unpacked into. Names below it have "/" between their parts and have been made safe; no
/// function follows a link or junction that stands below the target: such a place answers kMakeDirectory or kFileOpen.
/// Files may be created, written and committed by several threads at once.
class TargetFolder {
public:
    virtual ~TargetFolder() = default;

    [[nodiscard]] virtual std::optional<ExistingItem> find(const std::filesystem::path& name) = 0;
    /// With the folders above it; kOk when it is there. @param made  set when it was not there
    virtual ReturnCode makeFolder(const std::filesystem::path& name, bool& made) = 0;
    /// @param expectedSize  bytes that are likely to come, 0 when not known; a hint, never trusted
    virtual ReturnCode createFile(const std::filesystem::path& name, std::uint64_t expectedSize, bool replace,
                                  std::unique_ptr<OutputFile>& file) = 0;
    /// @param to       relative to the link's own folder, with "/" between its parts, ".." only in front
    /// @param replace  a file or a link that stands there gives way once the new link is made
    /// @return kNotSupport where the system has no links or does not let us
    virtual ReturnCode makeSymbolicLink(const std::filesystem::path& name, const std::filesystem::path& to,
                                        bool replace) = 0;
    /// @param existing  name below the target, a file of this run
    /// @param replace   as for a symbolic link
    /// @return kNotSupport as for a symbolic link
    virtual ReturnCode makeHardLink(const std::filesystem::path& name, const std::filesystem::path& existing,
                                    bool replace) = 0;
    /// Copies a file of this run, with its times and attributes, in place of a link that the system does not have.
    /// @param goOn  asked at least once a MiB; false ends the copy with kUserCancel and leaves nothing behind
    virtual ReturnCode copyFile(const std::filesystem::path& name, const std::filesystem::path& existing, bool replace,
                                const std::function<bool()>& goOn) = 0;
    /// For folders, once all is written in them.
    virtual ReturnCode setProperties(const std::filesystem::path& name, const ItemProperties& properties) = 0;
    /// What its names must be harmless for.
    [[nodiscard]] virtual NameRules nameRules() const { return kSystemNameRules; }
    /// Bytes that may still be written; nullopt when that cannot be told.
    [[nodiscard]] virtual std::optional<std::uint64_t> freeSpace() = 0;
};

/// The file system, as the unpacker sees it.
class TargetSystem {
public:
    virtual ~TargetSystem() = default;
    /// Makes the folder when it is not there, with those above it.
    /// @return kOk; kMakeDirectory when that fails or a file stands there
    virtual ReturnCode open(const std::filesystem::path& folder, std::unique_ptr<TargetFolder>& target) = 0;
    /// The mark of a downloaded archive; empty when it has none or the system knows none.
    [[nodiscard]] virtual std::string webMark(const std::filesystem::path& archive) = 0;
};

/// The system's own.
TargetSystem& systemTarget() noexcept;

}  // namespace archiver
