#include "browser/unpack_presenter.h"

#include <utility>

#include "drivers/extract_lines.h"
#include "shell/list_file.h"
#include "shell/paths.h"

namespace tovar {
namespace {

constexpr std::wstring_view kCaption = L"Extract files in ";
constexpr std::wstring_view kTitle = L"Extraction Message";
constexpr std::wstring_view kAllMembers = L"*.*";
constexpr SystemErrorCode kNotFound = 2;  ///< in Windows and elsewhere

}  // namespace

void UnpackPresenter::onLoad() {
    const bool mayOverwrite = job_.driver.description().extract.overwriteOption;
    view_.setCaption(std::wstring(kCaption) + job_.archiveFile);
    // Where there is no choice, the mark says what happens: such libraries write over what is there.
    view_.check(overwrite_ || !mayOverwrite, keepFolders_);
    view_.enableOverwrite(mayOverwrite);
    view_.setPattern(pattern_);
    view_.enableSelected(!members_.empty());
    onScope(members_.empty() ? MemberScope::All : MemberScope::Selected);
    view_.choose(scope_);
    allowStart(false);
    if (!folder_.empty()) view_.showInTree(folder_);
}

void UnpackPresenter::onFolderSelected(const std::wstring& folder) {
    // The tree may tell of the same folder again while it is followed.
    if (waitsFor_ && waitsFor_->starts && waitsFor_->folder == folder) return;
    waitsFor_.reset();
    if (folder.empty()) {
        allowStart(false);
    } else {
        ask({folder, false});
    }
}

void UnpackPresenter::ask(Wanted wanted) {
    if (const std::optional<bool> there = view_.askForFolder(wanted.folder)) {
        answer(wanted, *there);
        return;
    }
    allowStart(false);
    waitsFor_ = std::move(wanted);
}

void UnpackPresenter::onFolderAnswer(bool there) {
    if (!waitsFor_) return;
    const Wanted wanted = *std::exchange(waitsFor_, std::nullopt);
    answer(wanted, there);
}

void UnpackPresenter::answer(const Wanted& wanted, bool there) {
    allowStart(there);
    if (wanted.starts) {
        // It may have gone since it was selected.
        if (there) {
            start();
        } else {
            tell(kNotFound);
        }
    } else if (there) {
        folder_ = wanted.folder;
        view_.showFolder(folder_);
    }
}

void UnpackPresenter::onScope(MemberScope scope) {
    scope_ = scope;
    view_.enablePattern(scope == MemberScope::Matching);
}

void UnpackPresenter::onNewFolder() {
    if (!ready_) return;
    std::wstring parent = folder_;
    const std::wstring name = view_.promptNewFolder(parent);
    if (!name.empty()) view_.showInTree(parent + name);
}

void UnpackPresenter::onOk() {
    if (ready_) ask({folder_, true});
}

void UnpackPresenter::start() {
    if (scope_ != MemberScope::Selected) {
        run(scope_ == MemberScope::All ? std::wstring(kAllMembers) : pattern_);
        return;
    }
    try {
        const ListFile list(members_, job_.driver.listCodec(), job_.workFolder, job_.files);
        run(list.argument());
    } catch (const SystemError& error) {
        tell(error.code());
    }
}

void UnpackPresenter::run(const std::wstring& members) {
    view_.hide();
    job_.extraction.RunExtract(job_.driver, {.owner = job_.owner,
                                             .command = command(),
                                             .archive = job_.archiveFile,
                                             .folder = StripTrailingSeparator(folder_),
                                             .members = members});
    view_.close();
}

std::wstring UnpackPresenter::command() const {
    const ExtractWords& words = job_.driver.description().extract;
    const bool overwrite = overwrite_ && words.overwriteOption;
    return extractCommand(words, {.keepFolders = keepFolders_,
                                  .existing = overwrite ? ExistingFiles::Overwrite : ExistingFiles::AsUsual,
                                  .listed = scope_ == MemberScope::Selected});
}

void UnpackPresenter::allowStart(bool allowed) {
    ready_ = allowed;
    view_.enableOk(allowed);
    view_.enableNewFolder(allowed);
}

void UnpackPresenter::tell(SystemErrorCode error) {
    job_.messages.show(view_.hWnd(), job_.paths.SystemErrorText(error), kTitle, MessageIcon::Exclamation);
}

}  // namespace tovar
