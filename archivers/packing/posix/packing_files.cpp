#include "archivers/packing/packing_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "archivers/unpacking/posix/descriptor.h"
#include "archivers/unpacking/posix/error_codes.h"

namespace archiver {
namespace {

/// Where the folder of a file is, for calls that need it by itself.
std::filesystem::path folderOf(const std::filesystem::path& file) {
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

class PosixNewFile final : public NewFile {
public:
    explicit PosixNewFile(Descriptor file) : file_(std::move(file)) {}

    ReturnCode write(std::uint64_t offset, std::span<const char> bytes) override {
        while (!bytes.empty()) {
            const ssize_t written = ::pwrite(file_.number(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) return codeOfWriting(errno);
            bytes = bytes.subspan(static_cast<std::size_t>(written));
            offset += static_cast<std::uint64_t>(written);
        }
        return kOk;
    }

    ReturnCode cut(std::uint64_t size) override {
        return ::ftruncate(file_.number(), static_cast<off_t>(size)) == 0 ? kOk : codeOfWriting(errno);
    }
    ReturnCode flush() override { return ::fsync(file_.number()) == 0 ? kOk : codeOfWriting(errno); }

private:
    Descriptor file_;
};

class PosixPackingFiles final : public PackingFiles {
public:
    [[nodiscard]] std::filesystem::path resolve(const std::filesystem::path& archive) override {
        std::error_code failure;
        std::filesystem::path full = std::filesystem::weakly_canonical(archive, failure);
        if (failure) full = std::filesystem::absolute(archive, failure);
        return failure ? archive : full;
    }

    ReturnCode checkReplaceable(const std::filesystem::path& archive) override {
        struct stat there {};
        if (::stat(archive.c_str(), &there) != 0) return kOk;  // making the new one tells what is wrong
        if (!S_ISREG(there.st_mode)) return kArcFileOpen;
        return (there.st_mode & 0222) == 0 || ::access(archive.c_str(), W_OK) != 0 ? kArcReadOnly : kOk;
    }

    ReturnCode create(const std::filesystem::path& file, std::unique_ptr<NewFile>& made) override {
        Descriptor opened(::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
        if (!opened.isOpen()) return codeOfCreating(errno);
        made = std::make_unique<PosixNewFile>(std::move(opened));
        return kOk;
    }

    void keepAttributes(const std::filesystem::path& from, const std::filesystem::path& to) override {
        struct stat there {};
        if (::stat(from.c_str(), &there) == 0) static_cast<void>(::chmod(to.c_str(), there.st_mode & 0777));
    }

    ReturnCode rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
        if (::rename(from.c_str(), to.c_str()) != 0) return codeOfWriting(errno);
        // The name is on the disk when its folder is; a file system that cannot flush one does it by itself.
        const Descriptor folder(::open(folderOf(to).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (folder.isOpen()) static_cast<void>(::fsync(folder.number()));
        return kOk;
    }

    ReturnCode remove(const std::filesystem::path& file) override {
        return ::unlink(file.c_str()) == 0 || errno == ENOENT ? kOk : kArcFileOpen;
    }
};

}  // namespace

PackingFiles& systemPackingFiles() noexcept {
    static PosixPackingFiles files;
    return files;
}

}  // namespace archiver
