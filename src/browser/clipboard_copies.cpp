#include "browser/clipboard_copies.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "shell/paths.h"

namespace tovar {

ClipboardCopies::~ClipboardCopies() {
    watch_.stop();
    try {
        if (copies_ && holding() == Holding::Ours) lists_.ClearClipboard();
    } catch (const std::exception&) {
        // The names stay there, and lead nowhere.
    }
}

bool ClipboardCopies::put(std::shared_ptr<const MemberCopies> copies, const std::vector<std::wstring>& paths) {
    const std::shared_ptr<const MemberCopies> former = std::exchange(copies_, std::move(copies));
    if (lists_.PutFilesOnClipboard(paths)) {
        watch_.start([this] { onChanged(); });
        return true;
    }
    copies_ = former;
    onChanged();  // it may have been emptied
    return false;
}

ClipboardCopies::Holding ClipboardCopies::holding() {
    if (!clipboard_.hasFiles()) return Holding::Others;
    std::vector<std::wstring> paths;
    try {
        if (lists_.GetFilesFromClipboard(paths) == 0) return Holding::Unknown;
    } catch (const EmptyFileList&) {
        return Holding::Others;
    }
    const std::wstring folder = upperCase(copies_->folder());
    return upperCase(paths.front()).starts_with(folder) ? Holding::Ours : Holding::Others;
}

void ClipboardCopies::onChanged() noexcept {
    try {
        // Somebody who reads it holds it for a moment: what is there stays as it is then.
        if (!copies_ || holding() != Holding::Others) return;
        copies_.reset();
        watch_.stop();
    } catch (const std::exception&) {
        // For want of memory they go with the component.
    }
}

}  // namespace tovar
