#include "archivers/unpacking/posix/posix_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <ctime>
#include <utility>

#include "archivers/unpacking/posix/error_codes.h"

namespace archiver {
namespace {

class PosixFile final : public OutputFile {
public:
    explicit PosixFile(PosixPlace place) : place_(std::move(place)) {}
    ~PosixFile() override {
        if (made_) remove();
    }
    PosixFile(const PosixFile&) = delete;
    PosixFile& operator=(const PosixFile&) = delete;

    ReturnCode open(bool replace) {
        if (create(place_.name)) return kOk;
        if (errno != EEXIST || !replace) return codeOfCreating(errno);
        if (isFolder(place_)) return kSameNameFile;
        do {
            beside_ = temporaryName();
        } while (!create(beside_) && errno == EEXIST);
        return made_ ? kOk : codeOfCreating(errno);
    }

    // Room is not taken in advance: what a header says is a claim, and file systems of today give room late anyway.
    ReturnCode write(std::span<const char> bytes) override {
        while (!bytes.empty()) {
            const ssize_t written = ::write(file_.number(), bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) return codeOfWriting(errno);
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        }
        return kOk;
    }

    ReturnCode commit(const ItemProperties& properties) override {
        if (properties.attributes && (*properties.attributes & attribute::kReadOnly) != 0) protect();
        setTimes(file_.number(), properties);
        // Some file systems find out only now that there is no room.
        if (!file_.close()) return codeOfWriting(errno);
        const int folder = place_.folder->number();
        if (!beside_.empty() && ::renameat(folder, beside_.c_str(), folder, place_.name.c_str()) != 0) {
            return codeOfWriting(errno);
        }
        made_ = false;
        return kOk;
    }

private:
    bool create(const std::string& name) noexcept {
        file_ = Descriptor(::openat(place_.folder->number(), name.c_str(),
                                    O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
        made_ = file_.isOpen();
        return made_;
    }

    void protect() const noexcept {
        struct stat made {};
        if (::fstat(file_.number(), &made) == 0) {
            static_cast<void>(::fchmod(file_.number(), made.st_mode & 07777 & ~mode_t{0222}));
        }
    }

    /// Removes the file, unless another one has taken its name meanwhile.
    void remove() const noexcept {
        const int folder = place_.folder->number();
        const char* const name = beside_.empty() ? place_.name.c_str() : beside_.c_str();
        struct stat mine {
        }, there{};
        if (file_.isOpen() && ::fstat(file_.number(), &mine) == 0 &&
            ::fstatat(folder, name, &there, AT_SYMLINK_NOFOLLOW) == 0 &&
            (mine.st_dev != there.st_dev || mine.st_ino != there.st_ino)) {
            return;
        }
        ::unlinkat(folder, name, 0);
    }

    PosixPlace place_;
    std::string beside_;  ///< the name it has until commit; empty: its own
    Descriptor file_;
    bool made_ = false;  ///< it is there and not yet whole
};

timespec specOf(const std::optional<Moment>& moment) noexcept {
    timespec spec{};
    spec.tv_nsec = UTIME_OMIT;
    if (moment && moment->nanoseconds < 1'000'000'000) {
        spec.tv_sec = static_cast<std::time_t>(moment->seconds);
        spec.tv_nsec = static_cast<long>(moment->nanoseconds);
    }
    return spec;
}

}  // namespace

std::string temporaryName() {
    static std::atomic<unsigned> next{0};
    return ".tovarex-" + std::to_string(::getpid()) + "-" + std::to_string(next++) + ".tmp";
}

bool isFolder(const PosixPlace& place) noexcept {
    struct stat there {};
    return ::fstatat(place.folder->number(), place.name.c_str(), &there, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(there.st_mode);
}

std::unique_ptr<OutputFile> createPosixFile(PosixPlace place, bool replace, ReturnCode& code) {
    auto file = std::make_unique<PosixFile>(std::move(place));
    code = file->open(replace);
    if (code != kOk) return nullptr;
    return file;
}

void setTimes(int descriptor, const ItemProperties& properties) noexcept {
    if (!properties.written && !properties.accessed) return;
    const timespec times[] = {specOf(properties.accessed), specOf(properties.written)};
    static_cast<void>(::futimens(descriptor, times));
}

}  // namespace archiver
