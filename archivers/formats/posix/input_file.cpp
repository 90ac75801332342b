#include "archivers/formats/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <limits>

namespace archiver {
namespace {

class PosixFile final : public InputFile {
public:
    PosixFile() = default;
    ~PosixFile() override {
        if (descriptor_ >= 0) ::close(descriptor_);
    }
    PosixFile(const PosixFile&) = delete;
    PosixFile& operator=(const PosixFile&) = delete;

    bool open(const std::filesystem::path& file) noexcept {
        // Without waiting: the other end of a pipe may never come, and it is refused anyway.
        descriptor_ = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        return descriptor_ >= 0;
    }

    /// @return whether this is a file with contents of its own
    bool inspect() noexcept {
        struct stat status {};
        if (::fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode)) return false;
        size_ = static_cast<std::uint64_t>(status.st_size);
        modified_ = {status.st_mtim.tv_sec, static_cast<std::uint32_t>(status.st_mtim.tv_nsec)};
        return true;
    }

    [[nodiscard]] std::uint64_t size() const noexcept override { return size_; }
    [[nodiscard]] Moment modified() const noexcept override { return modified_; }

    [[nodiscard]] std::optional<std::size_t> readAt(std::uint64_t offset,
                                                    std::span<char> into) const noexcept override {
        std::size_t done = 0;
        while (done < into.size()) {
            if (offset + done > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max())) break;
            const ssize_t got =
                ::pread(descriptor_, into.data() + done, into.size() - done, static_cast<off_t>(offset + done));
            if (got < 0 && errno == EINTR) continue;
            if (got < 0) return std::nullopt;
            if (got == 0) break;
            done += static_cast<std::size_t>(got);
        }
        return done;
    }

private:
    int descriptor_ = -1;
    std::uint64_t size_ = 0;
    Moment modified_;
};

}  // namespace

InputFileResult openInputFile(const std::filesystem::path& file) {
    auto opened = std::make_unique<PosixFile>();  // first, for want of memory must leave no file open
    if (!opened->open(file)) return {nullptr, errno == ENOENT || errno == ENOTDIR ? kNotFindArcFile : kArcFileOpen};
    if (!opened->inspect()) return {nullptr, kArcFileOpen};
    return {std::move(opened), kOk};
}

}  // namespace archiver
