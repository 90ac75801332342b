#include "shell/new_folder_presenter.h"

#include "shell/paths.h"

namespace tovar {
namespace {

// What else the file system refuses it says itself when the folder is made.
constexpr std::wstring_view kRejected = LR"(\/:?'<>)";

}  // namespace

void NewFolderPresenter::onLoad() {
    newFolder_.clear();
    view_.setName(L"");
    onNameChanged(L"");
}

void NewFolderPresenter::onNameChanged(std::wstring_view name) {
    name_ = name;
    view_.enableOk(!name_.empty());
}

void NewFolderPresenter::onEnter() {
    if (!name_.empty()) onOk();
}

void NewFolderPresenter::onOk() {
    if (name_.find_first_of(kRejected) != name_.npos) {
        view_.warn(L"New folder " + SingleQuote(name_) + L" is impossible.");
        return;
    }
    newFolder_ = name_;
    view_.close();
}

void NewFolderPresenter::onCancel() {
    newFolder_.clear();
    view_.close();
}

}  // namespace tovar
