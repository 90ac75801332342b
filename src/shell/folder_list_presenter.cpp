#include "shell/folder_list_presenter.h"

#include <unordered_set>
#include <utility>

#include "shell/letter_case.h"
#include "shell/text_split.h"

namespace tovar {
namespace {

constexpr std::wstring_view kLineEnd = L"\r\n";

}  // namespace

void FolderListPresenter::showFolder(std::optional<std::wstring> path) {
    folder_ = path.value_or(std::wstring());
    files_.clear();
    // Before it is listed, so that nothing that happens meanwhile is missed.
    contents_.watch(folder_);
    if (!folder_.empty()) contents_.list(folder_, files_);
    display_.showRows(static_cast<std::uint32_t>(files_.size()));
    onSelectionChanged();
}

std::optional<std::uint32_t> FolderListPresenter::findName(std::wstring_view beginning, std::uint32_t start) const {
    const std::wstring wanted = foldCase(beginning);
    for (std::size_t step = 0; step < files_.size(); ++step) {
        const std::size_t row = (std::size_t{start} + step) % files_.size();
        const std::wstring_view name = files_[row].name;
        if (foldCase(name.substr(0, beginning.size())) == wanted) return static_cast<std::uint32_t>(row);
    }
    return std::nullopt;
}

void FolderListPresenter::onSelectionChanged() {
    std::wstring names;
    for (const std::uint32_t row : display_.selectedRows()) {
        if (row >= files_.size()) continue;
        if (!names.empty()) names += kLineEnd;
        names += files_[row].name;
    }
    if (names == selected_) return;
    selected_ = names;
    display_.namesSelected(selected_);
}

void FolderListPresenter::onOpened(std::uint32_t row) {
    if (row >= files_.size() || !files_[row].folder) return;
    std::wstring path = folder_;
    if (!path.ends_with(L'\\')) path += L'\\';
    display_.folderOpened(path + files_[row].name);
}

void FolderListPresenter::onTick() {
    if (contents_.takeChange()) refresh();
}

void FolderListPresenter::refresh() {
    if (folder_.empty()) return;
    const std::wstring before = selected_;
    const auto names = splitText(before, kLineEnd);
    const std::unordered_set<std::wstring_view> kept(names.begin(), names.end());
    files_.clear();
    contents_.list(folder_, files_);
    std::vector<std::uint32_t> rows;
    for (std::size_t row = 0; row < files_.size(); ++row) {
        if (kept.contains(files_[row].name)) rows.push_back(static_cast<std::uint32_t>(row));
    }
    display_.showRows(static_cast<std::uint32_t>(files_.size()));
    display_.selectRows(rows);
    onSelectionChanged();
}

}  // namespace tovar
