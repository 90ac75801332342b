#include "shell/posix/posix_file_system.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <memory>

#include "shell/paths.h"
#include "shell/posix/posix_text.h"

namespace tovar {
namespace {

constexpr std::size_t kPieceSize = 65536;
constexpr mode_t kWriteBits = S_IWUSR | S_IWGRP | S_IWOTH;

SystemErrorCode lastError() noexcept { return static_cast<SystemErrorCode>(errno); }

bool isSystemText(const std::wstring& text) noexcept { return text.find(L'\0') == text.npos; }

class FileDescriptor {
public:
    explicit FileDescriptor(int number) noexcept : number_(number) {}
    ~FileDescriptor() {
        if (number_ >= 0) ::close(number_);
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    [[nodiscard]] int get() const noexcept { return number_; }

private:
    int number_;
};

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

FileAttributes attributesOf(const struct stat& data, std::wstring_view name) noexcept {
    FileAttributes attributes = S_ISDIR(data.st_mode) ? attribute::kFolder : attribute::kArchive;
    if ((data.st_mode & kWriteBits) == 0) attributes |= attribute::kReadOnly;
    if (name.starts_with(L'.') && name != L"." && name != L"..") attributes |= attribute::kHidden;
    return attributes;
}

bool statusOf(const std::wstring& path, struct stat& data) {
    return isSystemText(path) && ::stat(toPosixName(path).c_str(), &data) == 0;
}

std::wstring nameOf(const std::wstring& path) { return FileNamePart(StripTrailingSeparator(path)); }

// Opens a plain file only: a pipe or device could make the caller wait for ever. -1 on failure.
int openFile(const std::wstring& path, int flags, SystemErrorCode& error) {
    const int file = ::open(toPosixName(path).c_str(), flags | O_NONBLOCK | O_CLOEXEC, 0666);
    struct stat data {};
    if (file < 0 || ::fstat(file, &data) != 0) {
        error = lastError();
    } else {
        error = S_ISREG(data.st_mode) ? 0 : EACCES;
    }
    return file;
}

}  // namespace

std::optional<FileAttributes> PosixFileSystem::attributes(const std::wstring& path) const {
    struct stat data {};
    if (!statusOf(path, data)) return std::nullopt;
    return attributesOf(data, nameOf(path));
}

std::optional<FileStatus> PosixFileSystem::status(const std::wstring& path) const {
    struct stat data {};
    std::tm local{};
    if (!statusOf(path, data)) return std::nullopt;
    FileStatus status;
    status.attributes = attributesOf(data, nameOf(path));
    status.size = static_cast<std::uint64_t>(data.st_size);
    if (::localtime_r(&data.st_mtime, &local) != nullptr) {
        status.modifiedDate = {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday};
        status.modifiedTime = {local.tm_hour, local.tm_min, std::min(local.tm_sec, 59)};
    }
    return status;
}

SystemErrorCode PosixFileSystem::setAttributes(const std::wstring& path, FileAttributes attributes) {
    if (!isSystemText(path)) return EINVAL;
    struct stat data {};
    if (!statusOf(path, data)) return lastError();
    // Windows lets everybody write into a read-only folder; here the permission would forbid it.
    if (S_ISDIR(data.st_mode)) return 0;
    const bool readOnly = (attributes & attribute::kReadOnly) != 0;
    const mode_t mode = readOnly ? data.st_mode & ~kWriteBits : data.st_mode | S_IWUSR;
    return ::chmod(toPosixName(path).c_str(), mode & 07777) == 0 ? 0 : lastError();
}

SystemErrorCode PosixFileSystem::createFolder(const std::wstring& path) {
    if (!isSystemText(path)) return EINVAL;
    return ::mkdir(toPosixName(path).c_str(), 0777) == 0 ? 0 : lastError();
}

SystemErrorCode PosixFileSystem::listFolder(const std::wstring& folder, std::vector<FolderEntry>& entries) const {
    if (!isSystemText(folder)) return EINVAL;
    const std::unique_ptr<DIR, CloseFolder> listing(::opendir(toPosixName(folder).c_str()));
    if (!listing) return lastError();
    for (errno = 0; const dirent* found = ::readdir(listing.get()); errno = 0) {
        struct stat data {};
        FolderEntry entry;
        entry.name = fromPosixName(found->d_name);
        if (::fstatat(::dirfd(listing.get()), found->d_name, &data, AT_SYMLINK_NOFOLLOW) != 0) continue;
        entry.link = S_ISLNK(data.st_mode);
        // A link counts as what it leads to; one that leads nowhere is a small file.
        if (entry.link) ::fstatat(::dirfd(listing.get()), found->d_name, &data, 0);
        entry.attributes = attributesOf(data, entry.name);
        entry.size = S_ISREG(data.st_mode) ? static_cast<std::uint64_t>(data.st_size) : 0;
        entries.push_back(std::move(entry));
    }
    return lastError();
}

SystemErrorCode PosixFileSystem::readFile(const std::wstring& path, std::string& bytes) const {
    bytes.clear();
    if (!isSystemText(path)) return EINVAL;
    SystemErrorCode error = 0;
    const FileDescriptor file(openFile(path, O_RDONLY, error));
    if (error != 0) return error;
    std::string piece(kPieceSize, '\0');
    for (;;) {
        const ssize_t length = ::read(file.get(), piece.data(), piece.size());
        if (length == 0) return 0;
        if (length > 0) {
            bytes.append(piece, 0, static_cast<std::size_t>(length));
        } else if (errno != EINTR) {
            return lastError();
        }
    }
}

SystemErrorCode PosixFileSystem::writeFile(const std::wstring& path, std::string_view bytes) {
    if (!isSystemText(path)) return EINVAL;
    SystemErrorCode error = 0;
    const FileDescriptor file(openFile(path, O_WRONLY | O_CREAT, error));
    if (error != 0) return error;
    if (::ftruncate(file.get(), 0) != 0) return lastError();
    while (!bytes.empty()) {
        const ssize_t length = ::write(file.get(), bytes.data(), bytes.size());
        if (length >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(length));
        } else if (errno != EINTR) {
            return lastError();
        }
    }
    return 0;
}

SystemErrorCode PosixFileSystem::deleteFile(const std::wstring& path) {
    if (!isSystemText(path)) return EINVAL;
    return ::unlink(toPosixName(path).c_str()) == 0 ? 0 : lastError();
}

SystemErrorCode PosixFileSystem::removeFolder(const std::wstring& path) {
    if (!isSystemText(path)) return EINVAL;
    return ::rmdir(toPosixName(path).c_str()) == 0 ? 0 : lastError();
}

}  // namespace tovar
