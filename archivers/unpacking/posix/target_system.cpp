#include "archivers/unpacking/target_system.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

#include "archivers/unpacking/posix/error_codes.h"
#include "archivers/unpacking/posix/folder_cache.h"
#include "archivers/unpacking/posix/posix_file.h"

namespace archiver {
namespace {

class PosixTarget final : public TargetFolder {
public:
    explicit PosixTarget(Descriptor root) : folders_(std::move(root)) {}

    [[nodiscard]] std::optional<ExistingItem> find(const std::filesystem::path& name) override;
    ReturnCode makeFolder(const std::filesystem::path& name, bool& made) override;
    ReturnCode createFile(const std::filesystem::path& name, std::uint64_t expectedSize, bool replace,
                          std::unique_ptr<OutputFile>& file) override;
    ReturnCode makeSymbolicLink(const std::filesystem::path& name, const std::filesystem::path& to,
                                bool replace) override;
    ReturnCode makeHardLink(const std::filesystem::path& name, const std::filesystem::path& existing,
                            bool replace) override;
    ReturnCode copyFile(const std::filesystem::path& name, const std::filesystem::path& existing, bool replace,
                        const std::function<bool()>& goOn) override;
    ReturnCode setProperties(const std::filesystem::path& name, const ItemProperties& properties) override;
    [[nodiscard]] std::optional<std::uint64_t> freeSpace() override;

private:
    /// @return kOk; else kFileOpen for a name that leads elsewhere, or for folders that are not there or are links
    ReturnCode placeOf(const std::filesystem::path& name, PosixPlace& place);

    FolderCache folders_;
};

/// Makes a link by `make(name)`, which answers as system calls do, and lets it take the place of what stands there.
template <class Make>
ReturnCode makeLink(const PosixPlace& place, bool replace, const Make& make) {
    if (make(place.name.c_str()) == 0) return kOk;
    if (errno != EEXIST || !replace) return codeOfLinking(errno);
    if (isFolder(place)) return kSameNameFile;
    std::string beside;
    do {
        beside = temporaryName();
        if (make(beside.c_str()) == 0) break;
        if (errno != EEXIST) return codeOfLinking(errno);
    } while (true);
    const int folder = place.folder->number();
    const ReturnCode code =
        ::renameat(folder, beside.c_str(), folder, place.name.c_str()) == 0 ? kOk : codeOfWriting(errno);
    // Two names of one file stay both when one is to replace the other.
    ::unlinkat(folder, beside.c_str(), 0);
    return code;
}

ReturnCode PosixTarget::placeOf(const std::filesystem::path& name, PosixPlace& place) {
    const std::string_view text = name.native();
    const std::size_t separator = text.rfind('/');
    const bool inTarget = separator == text.npos;
    const std::string_view part = inTarget ? text : text.substr(separator + 1);
    if (!isPlainPart(part) || separator == 0) return kFileOpen;
    FolderResult above = folders_.open(inTarget ? std::string_view() : text.substr(0, separator));
    if (!above.folder) return codeOfFolder(above.error) == kMakeDirectory ? kFileOpen : codeOfFolder(above.error);
    place = {std::move(above.folder), std::string(part)};
    return kOk;
}

std::optional<ExistingItem> PosixTarget::find(const std::filesystem::path& name) {
    PosixPlace place;
    struct stat there {};
    if (placeOf(name, place) != kOk ||
        ::fstatat(place.folder->number(), place.name.c_str(), &there, AT_SYMLINK_NOFOLLOW) != 0) {
        return std::nullopt;
    }
    ExistingItem item;
    if (S_ISDIR(there.st_mode)) item.kind = ExistingItem::Kind::kFolder;
    if (S_ISLNK(there.st_mode)) item.kind = ExistingItem::Kind::kLink;
    if (S_ISREG(there.st_mode)) item.size = static_cast<std::uint64_t>(there.st_size);
    item.written = Moment{there.st_mtim.tv_sec, static_cast<std::uint32_t>(there.st_mtim.tv_nsec)};
    item.readOnly = !S_ISLNK(there.st_mode) && (there.st_mode & 0222) == 0;
    return item;
}

ReturnCode PosixTarget::makeFolder(const std::filesystem::path& name, bool& made) {
    const FolderResult result = folders_.make(name.native());
    made = result.made;
    return result.folder ? kOk : codeOfFolder(result.error);
}

ReturnCode PosixTarget::createFile(const std::filesystem::path& name, std::uint64_t, bool replace,
                                   std::unique_ptr<OutputFile>& file) {
    PosixPlace place;
    ReturnCode code = placeOf(name, place);
    if (code == kOk) file = createPosixFile(std::move(place), replace, code);
    return code;
}

ReturnCode PosixTarget::makeSymbolicLink(const std::filesystem::path& name, const std::filesystem::path& to,
                                         bool replace) {
    PosixPlace place;
    if (const ReturnCode code = placeOf(name, place); code != kOk) return code;
    return makeLink(place, replace,
                    [&](const char* link) { return ::symlinkat(to.c_str(), place.folder->number(), link); });
}

ReturnCode PosixTarget::makeHardLink(const std::filesystem::path& name, const std::filesystem::path& existing,
                                     bool replace) {
    PosixPlace place, from;
    if (const ReturnCode code = placeOf(name, place); code != kOk) return code;
    if (const ReturnCode code = placeOf(existing, from); code != kOk) return code;
    struct stat there {};
    if (::fstatat(from.folder->number(), from.name.c_str(), &there, AT_SYMLINK_NOFOLLOW) != 0 ||
        !S_ISREG(there.st_mode)) {
        return kNotExist;
    }
    return makeLink(place, replace, [&](const char* link) {
        return ::linkat(from.folder->number(), from.name.c_str(), place.folder->number(), link, 0);
    });
}

ReturnCode PosixTarget::copyFile(const std::filesystem::path& name, const std::filesystem::path& existing, bool replace,
                                 const std::function<bool()>& goOn) {
    PosixPlace from;
    if (const ReturnCode code = placeOf(existing, from); code != kOk) return code;
    const Descriptor source(
        ::openat(from.folder->number(), from.name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat facts {};
    if (!source.isOpen() || ::fstat(source.number(), &facts) != 0 || !S_ISREG(facts.st_mode)) return kNotExist;

    std::unique_ptr<OutputFile> copy;
    if (const ReturnCode code = createFile(name, 0, replace, copy); code != kOk) return code;
    std::array<char, 1 << 16> piece;
    for (;;) {
        if (!goOn()) return kUserCancel;
        const ssize_t got = ::read(source.number(), piece.data(), piece.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return kCannotRead;
        if (got == 0) break;
        const ReturnCode code = copy->write(std::span(piece).first(static_cast<std::size_t>(got)));
        if (code != kOk) return code;
    }
    ItemProperties properties;
    properties.written = Moment{facts.st_mtim.tv_sec, static_cast<std::uint32_t>(facts.st_mtim.tv_nsec)};
    if ((facts.st_mode & 0222) == 0) properties.attributes = attribute::kReadOnly;
    return copy->commit(properties);
}

// A folder's write protection stays out: elsewhere it protects nothing, here nobody could remove what is in it.
ReturnCode PosixTarget::setProperties(const std::filesystem::path& name, const ItemProperties& properties) {
    const FolderResult result = folders_.open(name.native());
    if (!result.folder) return codeOfFolder(result.error);
    setTimes(result.folder->number(), properties);
    return kOk;
}

std::optional<std::uint64_t> PosixTarget::freeSpace() {
    struct statvfs facts {};
    if (::fstatvfs(folders_.root()->number(), &facts) != 0) return std::nullopt;
    return std::uint64_t{facts.f_bavail} * facts.f_frsize;
}

class PosixSystem final : public TargetSystem {
public:
    ReturnCode open(const std::filesystem::path& folder, std::unique_ptr<TargetFolder>& target) override {
        std::error_code failure;
        std::filesystem::create_directories(folder, failure);
        // The user's own path may lead through links.
        Descriptor root = openFolderAt(AT_FDCWD, folder.c_str(), true);
        if (!root.isOpen()) return failure == std::errc::no_space_on_device ? kDiskSpace : kMakeDirectory;
        target = std::make_unique<PosixTarget>(std::move(root));
        return kOk;
    }

    [[nodiscard]] std::string webMark(const std::filesystem::path&) override { return {}; }
};

}  // namespace

TargetSystem& systemTarget() noexcept {
    static PosixSystem system;
    return system;
}

}  // namespace archiver
