#include "host/sample/host_presenter.h"

#include <algorithm>

namespace tovar::host {

bool HostPresenter::showFolder(const std::filesystem::path& folder) {
    std::vector<FolderItem> items;
    if (!reader_.read(folder, items)) {
        view_.showStatus(L"The folder " + folder.wstring() + L" cannot be read.");
        return false;
    }
    std::sort(items.begin(), items.end(), [](const FolderItem& a, const FolderItem& b) {
        return a.isFolder != b.isFolder ? a.isFolder : a.name < b.name;
    });
    folder_ = folder;
    items_ = std::move(items);
    view_.showFolder(folder_.wstring(), items_);
    view_.showStatus(std::to_wstring(items_.size()) + L" items");
    return true;
}

void HostPresenter::open(std::size_t index) {
    if (index >= items_.size()) return;
    const auto path = folder_ / items_[index].name;
    if (items_[index].isFolder) {
        showFolder(path);
    } else {
        openFile(path);
    }
}

void HostPresenter::goUp() {
    if (folder_.has_relative_path()) showFolder(folder_.parent_path());
}

bool HostPresenter::openFile(const std::filesystem::path& file) {
    const auto name = file.filename().wstring();
    if (component_.isBusy()) {
        view_.showStatus(L"Close the archive that is open first.");
        return false;
    }
    // The component tells the user itself why it refuses a kind; a host only has to ask with messages on.
    if (!component_.canOpenArchive(file.wstring(), true)) {
        view_.showStatus(name + L" is not opened as an archive.");
        return false;
    }
    if (!component_.openArchive(file.wstring(), file.parent_path().wstring())) {
        view_.showStatus(name + L" could not be opened.");
        return false;
    }
    view_.showStatus(name + L" is open.");
    return true;
}

void HostPresenter::compress(const std::vector<std::size_t>& indexes) {
    if (!component_.canCreateArchive()) {
        view_.showStatus(L"No library that creates archives is there.");
        return;
    }
    std::wstring list;
    for (const auto index : indexes) {
        if (index >= items_.size()) continue;
        if (!list.empty()) list += L"\r\n";
        list += items_[index].name;
    }
    if (list.empty()) {
        view_.showStatus(L"Select the files to compress first.");
        return;
    }
    const std::filesystem::path first(list.substr(0, list.find(L'\r')));
    const auto archive = folder_ / (first.stem().wstring() + L".zip");
    component_.createArchive(archive.wstring(), folder_.wstring(), list);
    showFolder(folder_);
}

}  // namespace tovar::host
