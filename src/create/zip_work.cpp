#include "create/zip_work.h"

#include <optional>

#include "shell/text_split.h"

namespace tovar {
namespace {

constexpr std::wstring_view kLineEnd = L"\r\n";
constexpr std::wstring_view kAllFiles = L"*.*";
constexpr std::size_t kPortion = 256;  ///< names or folders between two questions

bool endsWithSeparator(std::wstring_view text) { return text.ends_with(L'\\') || (text.ends_with(L'/')); }

class Counter {
public:
    Counter(ZipWork& work, const FileSystem& files, const std::function<bool()>& goesOn)
        : work_(work), files_(files), goesOn_(goesOn) {}

    /// @return false when nobody wants to know any more
    [[nodiscard]] bool wanted() { return ++asked_ % kPortion != 0 || goesOn_(); }

    void addFile(std::uint64_t bytes) {
        ++work_.files;
        work_.bytes += bytes;
    }

    /// Everything below a folder.
    /// @param folder  with a separator at its end
    [[nodiscard]] bool addFolder(const std::wstring& folder) {
        std::vector<std::wstring> waiting{folder};
        std::vector<FolderEntry> entries;
        while (!waiting.empty()) {
            if (!wanted()) return false;
            const std::wstring current = std::move(waiting.back());
            waiting.pop_back();
            entries.clear();
            if (files_.listFolder(current, entries) != 0) continue;
            for (const FolderEntry& entry : entries) {
                if ((entry.attributes & attribute::kFolder) == 0) {
                    addFile(entry.size);
                } else if (!entry.link && entry.name != L"." && entry.name != L"..") {
                    // A link can lead back to a folder above it, and the count would never end.
                    waiting.push_back(current + entry.name + current.back());
                }
            }
        }
        return true;
    }

private:
    ZipWork& work_;
    const FileSystem& files_;
    const std::function<bool()>& goesOn_;
    std::size_t asked_ = 0;
};

}  // namespace

ZipWork gatherZipWork(const ZipCommand& command, std::wstring_view list, const std::wstring& base,
                      const FileSystem& files, const std::function<bool()>& goesOn) {
    ZipWork work;
    if (command.action == ZipAction::Repair) return work;
    Counter counter(work, files, goesOn);
    for (const std::wstring_view line : splitText(list, kLineEnd)) {
        if (line.empty()) continue;
        std::wstring name(line);
        if (command.action != ZipAction::Delete) {
            if (!counter.wanted()) return work;
            const std::optional<FileStatus> status = files.status(base + name);
            const bool folder = status && (status->attributes & attribute::kFolder) != 0;
            if (folder && !endsWithSeparator(name)) name += base.empty() ? L'\\' : base.back();
            if (endsWithSeparator(name)) {
                if (!counter.addFolder(base + name)) return work;
                name += kAllFiles;
            } else if (status) {
                counter.addFile(status->size);
            }
            if (command.folderInfo) name.insert(0, base);
        }
        work.names.push_back(std::move(name));
    }
    if (command.action == ZipAction::Delete) work.bytes = work.names.size();
    return work;
}

}  // namespace tovar
