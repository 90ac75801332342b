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
    changed_ = false;
    ask();
    if (!reading_) return;
    display_.showRows(1);
    onSelectionChanged();
}

void FolderListPresenter::ask() {
    std::optional<FolderContents::Files> files = contents_.look(folder_);
    reading_ = !files;
    if (files) show(std::move(*files));
}

/// What was selected remains so as far as it is still there.
void FolderListPresenter::show(FolderContents::Files files) {
    const std::wstring before = selected_;
    const auto names = splitText(before, kLineEnd);
    const std::unordered_set<std::wstring_view> kept(names.begin(), names.end());
    const bool hadFiles = !files_.empty();
    files_ = std::move(files);
    std::vector<std::uint32_t> rows;
    for (std::size_t row = 0; hadFiles && row < files_.size(); ++row) {
        if (kept.contains(files_[row].name)) rows.push_back(static_cast<std::uint32_t>(row));
    }
    display_.showRows(static_cast<std::uint32_t>(files_.size()));
    if (!rows.empty()) display_.selectRows(rows);
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
    if (reading_) {
        if (std::optional<FolderContents::Files> files = contents_.takeLate()) {
            reading_ = false;
            show(std::move(*files));
        }
    }
    changed_ |= contents_.takeChange();
    if (changed_ && !reading_) refresh();
}

void FolderListPresenter::refresh() {
    if (folder_.empty() || reading_) return;
    changed_ = false;
    ask();
}

}  // namespace tovar
