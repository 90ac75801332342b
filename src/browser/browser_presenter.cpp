#include "browser/browser_presenter.h"

#include <utility>

#include "browser/member_exports.h"
#include "shell/letter_case.h"
#include "shell/paths.h"
#include "shell/scoped_flag.h"

namespace tovar {
namespace {

std::wstring withoutEvery(std::wstring_view text, std::wstring_view part) {
    std::wstring rest;
    std::size_t start = 0;
    for (std::size_t found; !part.empty() && (found = text.find(part, start)) != text.npos;
         start = found + part.size()) {
        rest += text.substr(start, found - start);
    }
    rest += text.substr(start);
    return rest;
}

bool startsAlike(std::wstring_view text, std::wstring_view beginning) {
    return text.size() >= beginning.size() && foldCase(text.substr(0, beginning.size())) == foldCase(beginning);
}

}  // namespace

BrowserPresenter::BrowserPresenter(BrowserView& view, const BrowserPorts& ports, std::wstring_view archiveFile)
    : view_(view),
      driver_(ports.driver),
      files_(ports.files),
      regional_(ports.regional),
      actions_(ports.actions),
      archiveFile_(archiveFile),
      archiveName_(FileNamePart(archiveFile)),
      formerOwner_(ports.driver.hWnd()),
      contents_(ports.driver, folders_, ports.desktop, ports.regional),
      pauses_(*this, ports.breather) {}

void BrowserPresenter::Pauses::begin() { breather_->begin(); }

bool BrowserPresenter::Pauses::breathe() {
    return breather_->breathe() && presenter_.view_.hWnd() != nullptr && !presenter_.closing_ && !presenter_.wanted_ &&
           !presenter_.selectedByUser_;
}

void BrowserPresenter::onLoad() {
    view_.setTitle(archiveName_);
    updateCommands();
    view_.setStatus({});
}

void BrowserPresenter::onUnload() {
    cancelWork();
    if (MemberExports* const out = exports()) out->cancel();
    contents_.clear();
    current_.reset();
    driver_.setHWnd(formerOwner_);
}

bool BrowserPresenter::fill(std::wstring_view folderKey) {
    if (isBusy() || closing_ || view_.hWnd() == nullptr) return false;
    {
        const ScopedFlag filling(filling_);
        const std::wstring wanted(folderKey);
        current_.reset();
        selectedRows_ = 0;
        contents_.clear();
        folders_.clear();
        view_.clear();
        updateCommands();
        driver_.setHWnd(view_.hWnd());
        const std::uint32_t entryCount = list();
        if (view_.hWnd() == nullptr || closing_) return false;
        try {
            folders_.build(archiveName_, driver_.entries(), pauses_.get());
        } catch (const WorkAbandoned&) {
            return false;
        }
        view_.showFolders();
        selectAndShow(folders_.find(wanted).value_or(FolderModel::kRoot), Expand::Yes);
        if (!current_ || closing_) return false;
        showArchiveStatus(entryCount);
    }
    updateCommands();  // now that the archive is free for them
    settleDrop();
    return true;
}

std::uint32_t BrowserPresenter::list() {
    struct Lent {
        ArchiveDriver& driver;
        ~Lent() { driver.setBreather(nullptr); }
    } const lent{driver_};
    if (emptied_ && !files_.attributes(archiveFile_)) {
        driver_.forgetListing();
        return 0;
    }
    driver_.setBreather(pauses_.get());
    return driver_.SetArcFile(archiveFile_);
}

bool BrowserPresenter::order(std::size_t rows, const std::function<void()>& run) {
    contents_.setBreather(rows > kOrderedAtOnce ? pauses_.get() : nullptr);
    wanted_.reset();
    bool ordered = false;
    {
        const ScopedFlag ordering(ordering_);
        try {
            run();
            ordered = true;
        } catch (const WorkAbandoned&) {
            // Somebody wants something else: see below, and showWanted.
        }
    }
    if (view_.hWnd() == nullptr) return false;
    if (closing_ && !filling_) view_.close();
    return ordered && !closing_;
}

void BrowserPresenter::showWanted() {
    if (const auto folder = std::exchange(wanted_, std::nullopt); folder && current_ && !closing_) showFolder(*folder);
}

bool BrowserPresenter::takesLongToShow(Folder folder) const {
    return contents_.sorting() && folder < folders_.size() &&
           folders_.children(folder).size() + folders_.files(folder).size() > kOrderedAtOnce;
}

void BrowserPresenter::onFolderSelected(Folder folder) {
    if (ordering_) {
        wanted_ = folder;
        return;
    }
    if (current_ && folder != *current_ && folder < folders_.size()) showFolder(folder);
}

void BrowserPresenter::onGoUp() {
    if (!current_ || ordering_) return;
    if (const auto parent = folders_.parent(*current_)) selectAndShow(*parent, Expand::No);
}

void BrowserPresenter::onRowOpened(std::uint32_t row) {
    if (row >= contents_.rowCount() || ordering_) return;
    if (const auto folder = contents_.folderAt(row)) {
        selectAndShow(*folder, Expand::No);
    } else if (const auto entry = contents_.entryAt(row); entry && !isBusy() && offers(kOpen)) {
        work([&](const ArchiveScene& scene) {
            actions_->openMember(scene, *entry);
            return false;
        });
    }
}

void BrowserPresenter::onRowsSelected(std::uint32_t count) {
    if (!current_) return;
    selectedByUser_ = selecting_;
    selectedRows_ = count;
    view_.setStatus(std::to_wstring(count) + L" Objects are selected.");
    updateCommands();
}

void BrowserPresenter::onHeaderClicked(std::size_t column) {
    if (!current_ || ordering_ || column >= contents_.columns().size()) return;
    std::vector<std::uint32_t> newRows;
    if (order(contents_.rowCount(), [&] { newRows = contents_.sortBy(column); })) view_.moveRows(newRows);
    showWanted();
}

void BrowserPresenter::selectRows(const std::function<std::uint32_t(Breather*)>& select) {
    const std::uint32_t rows = contents_.rowCount();
    std::uint32_t selected = 0;
    bool whole = false;
    {
        const ScopedFlag selecting(selecting_);
        whole = order(rows, [&] { selected = select(rows > kOrderedAtOnce ? pauses_.get() : nullptr); });
    }
    selectedByUser_ = false;
    if (whole) {
        onRowsSelected(selected);
    } else if (current_ && !closing_) {
        updateCommands();
    }
    showWanted();
}

void BrowserPresenter::selectAndShow(Folder folder, Expand expand) {
    current_ = folder;  // what the tree tells of the selection is no news then
    view_.selectFolder(folder, expand == Expand::Yes);
    showFolder(folder);
}

void BrowserPresenter::showFolder(Folder folder) {
    std::optional<Folder> next = folder;
    while (next) {
        current_ = *next;
        const std::size_t rows = folders_.children(*next).size() + folders_.files(*next).size();
        const bool shown = order(rows, [&] { contents_.show(*next); });
        if (!current_ || closing_) return;
        next = std::exchange(wanted_, std::nullopt);
        if (!next && !shown) return;
    }
    view_.showContents();
    if (selectedRows_ != 0) onRowsSelected(0);
    showAddress();
    updateCommands();
}

bool BrowserPresenter::showMember(const MemberPlace& place) {
    if (!current_ || ordering_ || place.folder >= folders_.size()) return false;
    if (place.folder != *current_) selectAndShow(place.folder, Expand::No);
    if (current_ != place.folder) return false;
    const auto row = contents_.rowOf(place.item);
    if (!row) return false;
    view_.showRow(*row);
    onRowsSelected(1);
    return true;
}

std::optional<MemberPlace> BrowserPresenter::currentPlace() const {
    if (!current_) return std::nullopt;
    const auto row = view_.focusedRow();
    if (!row || *row >= contents_.rowCount()) return std::nullopt;
    return MemberPlace{*current_, contents_.itemAt(*row)};
}

void BrowserPresenter::showAddress() {
    const std::wstring address = archiveName_ + folders_.key(*current_);
    const auto [index, isNew] = addresses_.put(address);
    if (isNew) view_.addAddress(address);
    view_.chooseAddress(index);
}

void BrowserPresenter::onAddressEntered(std::wstring_view text) {
    if (text.empty()) return;
    view_.moveAddressCaretToEnd();
    if (!current_ || ordering_) return;
    const std::wstring key = withoutEvery(text, archiveName_);
    // An address that names no folder, or the one shown, leaves the folder as it is; the box shows again where the user
    // is, however the address was written.
    const bool isHere = foldCase(key) == foldCase(folders_.key(*current_));
    const auto folder = isHere ? std::nullopt : folderOfAddress(text, key);
    if (folder && *folder != *current_) {
        selectAndShow(*folder, Expand::Yes);
    } else {
        showAddress();
    }
}

void BrowserPresenter::onAddressAbandoned() {
    if (current_) showAddress();
}

// What is no key may still be a path as people write it, with the archive's name or full path before it or not.
std::optional<Folder> BrowserPresenter::folderOfAddress(std::wstring_view text, std::wstring_view key) const {
    if (const auto folder = folders_.find(key)) return folder;
    std::wstring_view path = trimBlanks(text);
    if (startsAlike(path, archiveFile_)) {
        path.remove_prefix(archiveFile_.size());
    } else if (startsAlike(path, archiveName_)) {
        path.remove_prefix(archiveName_.size());
    } else if (path.empty()) {
        return std::nullopt;
    }
    return folders_.findWritten(path);
}

void BrowserPresenter::showArchiveStatus(std::uint32_t entryCount) {
    const FileStatus status = files_.status(archiveFile_).value_or(FileStatus{});
    std::wstring text =
        L"Archive has " + std::to_wstring(entryCount) + L" files " + groupedNumber(status.size, regional_) + L" Bytes ";
    if (status.modifiedDate.month != 0) {
        text += yearMonthDayText(status.modifiedDate, regional_) + L' ' +
                hourMinuteSecondText(status.modifiedTime, regional_);
    }
    view_.setStatus(text);
}

}  // namespace tovar
