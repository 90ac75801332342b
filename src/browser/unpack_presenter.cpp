#include "browser/unpack_presenter.h"

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
    const bool there = !folder.empty() && job_.paths.IsFolder(folder);
    if (there) {
        folder_ = folder;
        view_.showFolder(folder_);
    }
    allowStart(there);
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
    if (!ready_) return;
    if (!job_.paths.IsFolder(folder_)) {  // it has gone since it was selected
        allowStart(false);
        tell(kNotFound);
        return;
    }
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
