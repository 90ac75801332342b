#include "shell/select_presenter.h"

#include <algorithm>
#include <utility>

#include "shell/paths.h"
#include "shell/text_split.h"

namespace tovar {
namespace {

constexpr std::wstring_view kLineEnd = L"\r\n";

}  // namespace

void SelectPresenter::onLoad() {
    const std::wstring first = folder_.empty() ? LR"(C:\)" : std::exchange(folder_, {});
    canceled_ = true;
    fileList_.clear();
    names_.clear();
    view_.enableOk(false);
    view_.showFolder(first);
}

void SelectPresenter::onFolderChanged(std::optional<std::wstring> folder, FolderState state) {
    // The same folder again only is in another state.
    if (std::exchange(folder_, std::move(folder).value_or(std::wstring())) != folder_) names_.clear();
    view_.enableOk(state == FolderState::There && !folder_.empty() && paths_.IsFolder(folder_));
}

void SelectPresenter::onOk() {
    // Asked now and not at every change of a selection that may be very large.
    fileList_ = existingNames();
    canceled_ = false;
    view_.close();
}

void SelectPresenter::onCancel() {
    canceled_ = true;
    view_.close();
}

std::wstring SelectPresenter::existingNames() const {
    std::wstring kept;
    if (folder_.empty()) return kept;
    const std::wstring above = AddTrailingSeparator(folder_);
    for (const std::wstring_view name : splitText(names_, kLineEnd)) {
        if (name.empty()) continue;
        const std::wstring path = std::wstring(above).append(name);
        if (!paths_.IsFolder(path) && !paths_.IsPlainFile(path)) continue;
        if (!kept.empty()) kept += kLineEnd;
        kept += name;
    }
    return kept;
}

SelectLayout SelectPresenter::layOut(int width, int height, const SelectBox& button, int margin, int gap) {
    const int top = std::max(height - margin - button.height, 0);
    SelectBox cancel{width - margin - button.width, top, button.width, button.height};
    SelectBox ok{cancel.left - gap - button.width, top, button.width, button.height};
    SelectBox browser{margin, margin, std::max(width - 2 * margin, 0), std::max(top - 2 * margin, 0)};
    return {browser, ok, cancel};
}

}  // namespace tovar
