#include "shell/file_clipboard.h"

#include <limits>
#include <utility>

#include "shell/file_drop.h"

namespace tovar {
namespace {

/// The clipboard, open as long as this lives.
class OpenClipboard {
public:
    explicit OpenClipboard(Clipboard& clipboard) : clipboard_(clipboard), isOpen_(clipboard.open()) {}
    ~OpenClipboard() {
        if (isOpen_) clipboard_.close();
    }
    OpenClipboard(const OpenClipboard&) = delete;
    OpenClipboard& operator=(const OpenClipboard&) = delete;

    explicit operator bool() const noexcept { return isOpen_; }

private:
    Clipboard& clipboard_;
    bool isOpen_;
};

}  // namespace

bool FileClipboard::PutFilesOnClipboard(const std::vector<std::wstring>& paths) {
    const OpenClipboard open(clipboard_);
    if (!open) return false;
    clipboard_.empty();
    return clipboard_.putFiles(buildFileDrop(paths, codec_));
}

int FileClipboard::GetFilesFromClipboard(std::vector<std::wstring>& paths) {
    if (!clipboard_.hasFiles()) return 0;
    std::optional<std::string> block;
    {
        const OpenClipboard open(clipboard_);
        if (!open) return 0;
        block = clipboard_.takeFiles();
    }
    if (!block) return 0;
    std::optional<std::vector<std::wstring>> found = readFileDrop(*block, codec_);
    if (!found || found->size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return 0;
    if (found->empty()) throw EmptyFileList();
    paths = std::move(*found);
    return static_cast<int>(paths.size());
}

void FileClipboard::ClearClipboard() {
    const OpenClipboard open(clipboard_);
    if (open) clipboard_.empty();
}

}  // namespace tovar
