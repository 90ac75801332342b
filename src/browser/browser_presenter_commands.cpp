#include <algorithm>

#include "browser/browser_presenter.h"
#include "browser/member_exports.h"
#include "shell/scoped_flag.h"

// The commands of the archive browser: which of them are there, and what they do.
namespace tovar {
namespace {

constexpr BrowserCommand kAlwaysSeen[] = {mnuEdit, Add, Extract, GoUp};

}  // namespace

bool BrowserPresenter::isEnabled(BrowserCommand command) const {
    const bool open = current_.has_value();
    switch (actionOf(command)) {
        case mnuEdit:
        case mnuEditSelect:
        case kFind:
        case kFindNext:
        case kFindPrevious:
            return open;
        case mnuView:
        case mnuViewStyle:
        case mnuViewStyleLargeIcons:
        case mnuViewStyleSmallIcons:
        case mnuViewStyleList:
        case mnuViewStyleDetails:
        case mnuViewStyleExactDetails:
            return true;
        case mnuEditExtract:
            return open && !isBusy() && offers(mnuEditExtract);
        case mnuEditAdd:
        case kAddFolder:
            return open && !isBusy() && driver_.description().changeable && offers(actionOf(command));
        case kPaste:
            return open && !isBusy() && driver_.description().changeable && offers(kPaste) && actions_->canPaste();
        case mnuEditDelete:
            return open && !isBusy() && selectedRows_ != 0 && driver_.description().changeable && offers(mnuEditDelete);
        case kCopy:
            return open && !isBusy() && selectedRows_ != 0 && exports() != nullptr;
        case kOpen:
            return rowToOpen().has_value();
        case mnuEditSelectAll:
        case mnuEditSelectInvert:
            return open && contents_.rowCount() != 0;
        case GoUp:
            return open && folders_.parent(*current_).has_value();
        case kRefresh:
        case mnuEditExit:
            return open && !isBusy();
        default:
            return false;
    }
}

bool BrowserPresenter::isFolderCommandEnabled(BrowserCommand command) const {
    return current_ && (command == kOpen || (command == mnuEditExtract && isEnabled(mnuEditExtract)));
}

bool BrowserPresenter::offers(BrowserCommand command) const { return actions_ != nullptr && actions_->offers(command); }

// Where the keyboard is, when that row is selected; else the selected row nearest to the top.
std::optional<std::uint32_t> BrowserPresenter::rowToOpen() const {
    if (!current_ || selectedRows_ == 0) return std::nullopt;
    const std::vector<std::uint32_t> rows = view_.selectedRows();
    if (rows.empty()) return std::nullopt;
    const auto focused = view_.focusedRow();
    const std::uint32_t row = focused && std::ranges::binary_search(rows, *focused) ? *focused : rows.front();
    if (row >= contents_.rowCount()) return std::nullopt;
    const bool canOpen = contents_.folderAt(row).has_value() || (!isBusy() && offers(kOpen));
    return canOpen ? std::optional(row) : std::nullopt;
}

std::vector<ArchiveMember> BrowserPresenter::selectedMembers() const {
    std::vector<ArchiveMember> members;
    const std::vector<std::uint32_t> rows = view_.selectedRows();
    members.reserve(rows.size());
    for (const std::uint32_t row : rows) {
        if (row < contents_.rowCount()) {
            members.push_back({contents_.folderAt(row), contents_.entryAt(row).value_or(0)});
        }
    }
    return members;
}

bool BrowserPresenter::work(const std::function<bool(const ArchiveScene&)>& run) {
    bool changed = false;
    {
        const ScopedFlag working(working_);
        updateCommands();
        try {
            changed = run({view_.hWnd(), driver_, archiveFile_, folders_, *current_});
        } catch (...) {
            // The window goes on without what the command had still to do.
        }
    }
    if (view_.hWnd() == nullptr) return false;
    updateCommands();
    settleDrop();
    return changed;
}

void BrowserPresenter::cancelWork() noexcept {
    closing_ = true;
    if (working_) actions_->cancel();
}

void BrowserPresenter::onCommand(BrowserCommand command) {
    const BrowserCommand action = actionOf(command);
    if (ordering_ || !isEnabled(action)) return;
    if (const auto style = viewStyleOf(action)) {
        setViewStyle(*style);
        return;
    }
    switch (action) {
        case kOpen:
            onRowOpened(*rowToOpen());
            break;
        case mnuEditExtract:
            extract(selectedMembers());
            break;
        case mnuEditAdd:
            change([this](const ArchiveScene& scene) { return actions_->addFiles(scene); });
            break;
        case kAddFolder:
            change([this](const ArchiveScene& scene) { return actions_->addFolder(scene); });
            break;
        case kPaste:
            change([this](const ArchiveScene& scene) { return actions_->paste(scene); });
            break;
        case mnuEditDelete:
            deleteSelected();
            break;
        case kCopy:
            copySelected();
            break;
        case mnuEditSelectAll:
            selectRows([this](Breather* breather) { return view_.selectAll(breather); });
            break;
        case mnuEditSelectInvert:
            selectRows([this](Breather* breather) { return view_.invertSelection(breather); });
            break;
        case GoUp:
            onGoUp();
            break;
        case kRefresh:
            refresh();
            break;
        case mnuEditExit:
            exit();
            break;
        default:
            break;
    }
}

void BrowserPresenter::onFolderCommand(BrowserCommand command, Folder folder) {
    if (ordering_ || !isFolderCommandEnabled(command) || folder >= folders_.size()) return;
    if (command == kOpen) {
        if (folder != *current_) selectAndShow(folder, Expand::Yes);
    } else if (folder == FolderModel::kRoot) {
        extract({});  // everything
    } else {
        extract({{.folder = folder}});
    }
}

void BrowserPresenter::extract(const std::vector<ArchiveMember>& members) {
    work([&](const ArchiveScene& scene) {
        actions_->extract(scene, members);
        return false;
    });
}

void BrowserPresenter::deleteSelected() {
    const std::vector<ArchiveMember> members = selectedMembers();
    if (members.empty()) return;
    change([&](const ArchiveScene& scene) { return actions_->deleteMembers(scene, members); });
}

void BrowserPresenter::onFilesDropped(const std::vector<std::wstring>& paths) {
    if (!takesFiles()) return;
    change([&](const ArchiveScene& scene) { return actions_->addPaths(scene, paths); });
}

void BrowserPresenter::change(const std::function<bool(const ArchiveScene&)>& run) {
    if (work(run)) refreshChanged();
}

void BrowserPresenter::refreshChanged() {
    if (!files_.attributes(archiveFile_)) emptied_ = true;
    refresh();
}

MemberExports* BrowserPresenter::exports() const noexcept {
    return actions_ == nullptr ? nullptr : actions_->exports();
}

void BrowserPresenter::copySelected() {
    const std::vector<ArchiveMember> members = selectedMembers();
    if (members.empty()) return;
    work([&](const ArchiveScene& scene) {
        exports()->copy(scene, members);
        return false;
    });
}

void BrowserPresenter::onDragBegun(DragButton button) {
    if (ordering_ || !isEnabled(kCopy)) return;
    const std::vector<ArchiveMember> members = selectedMembers();
    if (members.empty()) return;
    view_.watchShell(true);
    work([&](const ArchiveScene& scene) {
        exports()->drag(scene, members, button);
        return false;
    });
}

void BrowserPresenter::onShellNotify(const std::wstring& first, const std::wstring& second) {
    MemberExports* const out = exports();
    if (out == nullptr) return;
    out->onShellNotify(first, second);
    if (out->hasDrop() && !isBusy()) view_.finishDropSoon();
}

void BrowserPresenter::onFinishDrop() {
    MemberExports* const out = exports();
    if (out == nullptr || !current_ || isBusy() || !out->hasDrop()) return;
    work([&](const ArchiveScene& scene) {
        out->finishDrop(scene);
        return false;
    });
}

void BrowserPresenter::settleDrop() {
    const MemberExports* const out = exports();
    if (out == nullptr || isBusy()) return;
    view_.watchShell(out->awaitsDrop());
    if (out->hasDrop()) view_.finishDropSoon();
}

void BrowserPresenter::refresh() {
    if (current_) fill(folders_.key(*current_));
}

void BrowserPresenter::exit() {
    current_.reset();
    selectedRows_ = 0;
    contents_.clear();
    folders_.clear();
    view_.clear();
    updateCommands();
    view_.close();
}

void BrowserPresenter::setViewStyle(ViewStyle style) {
    if (style == viewStyle_) return;
    std::vector<std::uint32_t> newRows;
    const bool exact = style == ViewStyle::ExactDetails;
    if (order(contents_.rowCount(), [&] { newRows = contents_.setExact(exact); })) {
        viewStyle_ = style;
        if (!newRows.empty()) view_.moveRows(newRows);
        view_.setViewStyle(style);
    }
    showWanted();
}

void BrowserPresenter::updateCommands() {
    for (const BrowserCommand command : kAlwaysSeen) view_.enable(command, isEnabled(command));
}

}  // namespace tovar
