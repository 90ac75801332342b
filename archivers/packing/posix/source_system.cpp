#include "archivers/packing/source_system.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <string_view>

#include "archivers/formats/legacy_text.h"
#include "archivers/formats/utf8.h"

namespace archiver {
namespace {

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

std::optional<SourceFacts> factsAt(int folder, const char* name) noexcept {
    struct stat there {};
    if (::fstatat(folder, name, &there, AT_SYMLINK_NOFOLLOW) != 0) return std::nullopt;
    SourceFacts facts;
    const bool link = S_ISLNK(there.st_mode);
    if (link && ::fstatat(folder, name, &there, 0) != 0) {
        facts.kind = SourceKind::kOther;
        return facts;
    }
    if (S_ISDIR(there.st_mode)) {
        facts.kind = link ? SourceKind::kFolderLink : SourceKind::kFolder;
        facts.attributes = attribute::kFolder;
    } else if (S_ISREG(there.st_mode)) {
        facts.size = static_cast<std::uint64_t>(there.st_size);
        if ((there.st_mode & 0222) == 0) facts.attributes = attribute::kReadOnly;
    } else {
        facts.kind = SourceKind::kOther;
    }
    facts.written = Moment{there.st_mtim.tv_sec, static_cast<std::uint32_t>(there.st_mtim.tv_nsec)};
    facts.accessed = Moment{there.st_atim.tv_sec, static_cast<std::uint32_t>(there.st_atim.tv_nsec)};
    return facts;
}

class PosixSources final : public SourceSystem {
public:
    [[nodiscard]] std::filesystem::path absolute(const std::filesystem::path& path) override {
        std::error_code failure;
        std::filesystem::path full = std::filesystem::absolute(path, failure).lexically_normal();
        if (failure) return path;
        if (!full.has_filename() && full.has_relative_path()) full = full.parent_path();
        return full;
    }

    [[nodiscard]] bool ignoresCase() const noexcept override { return false; }

    [[nodiscard]] std::optional<SourceFacts> find(const std::filesystem::path& path) override {
        return factsAt(AT_FDCWD, path.c_str());
    }

    ReturnCode list(const std::filesystem::path& folder, std::vector<ListedSource>& names) override {
        const std::unique_ptr<DIR, CloseFolder> opened(::opendir(folder.c_str()));
        if (!opened) return errno == ENOENT || errno == ENOTDIR ? kNotExist : kCannotRead;
        for (;;) {
            errno = 0;
            const dirent* const entry = ::readdir(opened.get());
            if (entry == nullptr) return errno == 0 ? kOk : kCannotRead;
            const std::string_view name = entry->d_name;
            if (name == "." || name == "..") continue;
            // One that has vanished meanwhile is none.
            if (auto facts = factsAt(::dirfd(opened.get()), entry->d_name)) names.push_back({name, *facts});
        }
    }

    [[nodiscard]] InputFileResult open(const std::filesystem::path& file) override { return openInputFile(file); }
    bool removeFile(const std::filesystem::path& file) override { return ::unlink(file.c_str()) == 0; }
    bool removeFolder(const std::filesystem::path& folder) override { return ::rmdir(folder.c_str()) == 0; }
};

}  // namespace

std::string utf8OfPath(const std::filesystem::path& path) {
    const std::string& bytes = path.native();
    if (isUtf8(bytes)) return bytes;
    std::string utf8;
    appendLegacyText(bytes, LegacyPage::kAnsi, utf8);
    return utf8;
}

SourceSystem& systemSources() noexcept {
    static PosixSources system;
    return system;
}

}  // namespace archiver
