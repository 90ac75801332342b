#include "create/pack_presenter.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "shell/current_folder.h"
#include "shell/list_file.h"
#include "shell/paths.h"
#include "shell/scoped_flag.h"
#include "shell/text_split.h"

namespace tovar {
namespace {

constexpr std::wstring_view kTitle = L"Compress Files";
constexpr std::wstring_view kLhaTitle = L"LHA Message";
constexpr std::wstring_view kCabTitle = L"CAB Message";
constexpr std::wstring_view kOutside = L"Only files in this folder and below it can be added:\r\n";
constexpr std::wstring_view kLineEnd = L"\r\n";
constexpr SystemErrorCode kNotFound = 2;  ///< in Windows and elsewhere

constexpr std::array<std::wstring_view, 4> kActions = {L"Add Files (add/replace)", L"Update Files (add/update)",
                                                       L"Freshen Existing Files", L"Move Files"};
constexpr std::array<PackLevel, 3> kLevels = {
    {{L"High Level", 9}, {L"Medium Level", 6}, {L"Low Level (just copy)", 0}}};
constexpr int kMediumLevel = 1;

/// What sets the packers apart in the dialog.
struct PackerRow {
    Packer packer;
    ArchiveKind bit;
    std::wstring_view text;
    bool action, level;
    std::array<bool, kPackOptions> options;
    std::wstring_view title, filter;  ///< of the dialog for the archive's name
};
constexpr PackerRow kPackers[] = {
    {Packer::Zip,
     kind::kCreateZip,
     L"Zip",
     true,
     true,
     {true, true, true, true, true},
     L"Create Zip File",
     L"All Files (*.*)|*.*|Zip Files (*.zip)|*.zip"},
    {Packer::Lha,
     kind::kCreateLzh,
     L"Lha",
     true,
     false,
     {true, false, false, true, false},
     L"Create LHA File",
     L"All Files (*.*)|*.*|LHA Files (*.lzh)|*.lzh"},
    {Packer::Cab,
     kind::kCreateCab,
     L"Cab",
     false,
     false,
     {true, false, false, false, false},
     L"Create CAB File",
     L"All Files (*.*)|*.*|CAB Files (*.cab)|*.cab"},
};

const PackerRow* rowOf(Packer packer) {
    for (const PackerRow& row : kPackers) {
        if (row.packer == packer) return &row;
    }
    return nullptr;
}

std::wstring joined(const std::vector<std::wstring>& names) {
    std::wstring list;
    for (const std::wstring& name : names) {
        if (!list.empty()) list += kLineEnd;
        list += name;
    }
    return list;
}

}  // namespace

void PackPresenter::onLoad() {
    fillLists();
    archive_ = job_.archiveFile;
    view_.setArchive(archive_);
    for (const std::wstring_view name : splitText(job_.fileList, kLineEnd)) {
        if (!name.empty()) names_.emplace_back(name);
    }
    view_.setNames(names_);
    view_.selectLevel(kMediumLevel);
    onLevel(kMediumLevel);
    // Who packs a folder wants what is in its folders too: without them the archive would lack files that nobody
    // misses until they are gone.
    const std::wstring base = AddTrailingSeparator(job_.baseFolder);
    const bool folders =
        std::ranges::any_of(names_, [&](const std::wstring& name) { return job_.paths.IsFolder(base + name); });
    view_.checkOption(PackOption::Recurse, folders);
    onOption(PackOption::Recurse, folders);
    const int first = firstPacker();
    if (first >= 0) view_.selectPacker(first);
    onPacker(first);
}

void PackPresenter::fillLists() {
    std::vector<std::wstring_view> texts;
    for (const PackerRow& row : kPackers) {
        if ((job_.effective & row.bit) == 0) continue;
        const auto index = static_cast<int>(texts.size());
        (row.packer == Packer::Zip ? zipIndex_ : row.packer == Packer::Lha ? lhaIndex_ : cabIndex_) = index;
        texts.push_back(row.text);
    }
    view_.fillPackers(texts);
    view_.fillActions({kActions.begin(), kActions.end()});
    view_.fillLevels({kLevels.begin(), kLevels.end()});
}

int PackPresenter::firstPacker() const {
    const std::wstring extension = upperCase(ExtensionPart(FileNamePart(job_.archiveFile)));
    for (const PackerRow& row : kPackers) {
        if (indexOf(row.packer) >= 0 && extension == upperCase(extensionOf(row.packer))) return indexOf(row.packer);
    }
    return zipIndex_ >= 0 || lhaIndex_ >= 0 || cabIndex_ >= 0 ? 0 : -1;
}

void PackPresenter::onPacker(int index) {
    packerIndex_ = index;
    view_.selectAction(0);
    onAction(0);
    const PackerRow* const row = rowOf(packer());
    view_.enableAction(row != nullptr && row->action);
    view_.enableLevel(row != nullptr && row->level);
    for (std::size_t option = 0; option < kPackOptions; ++option) {
        view_.enableOption(static_cast<PackOption>(option), row != nullptr && row->options[option]);
    }
    std::wstring path = withExtensionOf(packer(), archive_);
    if (path == archive_) return;
    archive_ = std::move(path);
    view_.setArchive(archive_);
}

void PackPresenter::onLevel(int index) noexcept {
    const auto level = static_cast<std::size_t>(index);
    if (level < kLevels.size()) choice_.level = kLevels[level].level;
}

void PackPresenter::onOption(PackOption option, bool checked) noexcept {
    choice_.options[static_cast<std::size_t>(option)] = checked;
}

void PackPresenter::onBrowse() {
    const PackerRow* const row = rowOf(packer());
    if (row == nullptr) return;
    const std::wstring chosen = view_.askArchive(
        {.title = row->title, .filter = row->filter, .extension = extensionOf(row->packer), .archive = archive_});
    if (chosen.empty()) return;
    archive_ = chosen;
    view_.setArchive(archive_);
}

void PackPresenter::onPickNames() {
    const std::wstring base = AddTrailingSeparator(job_.baseFolder);
    std::unordered_set<std::wstring> known(names_.begin(), names_.end());
    bool outside = false;
    for (const std::wstring& path : view_.askNames(job_.baseFolder)) {
        // Names in an archive are relative to its base folder.
        if (path.size() <= base.size() || upperCase(path.substr(0, base.size())) != upperCase(base)) {
            outside = true;
            continue;
        }
        std::wstring name = path.substr(base.size());
        if (known.insert(name).second) names_.push_back(std::move(name));
    }
    view_.setNames(names_);
    if (outside) tell(std::wstring(kOutside) + job_.baseFolder, kTitle);
}

void PackPresenter::onRemoveNames(const std::vector<int>& indexes) {
    std::vector<std::wstring> kept;
    std::size_t next = 0;
    for (std::size_t each = 0; each < names_.size(); ++each) {
        const bool removed = next < indexes.size() && static_cast<std::size_t>(indexes[next]) == each;
        if (removed) {
            ++next;
        } else {
            kept.push_back(std::move(names_[each]));
        }
    }
    names_ = std::move(kept);
    view_.setNames(names_);
}

void PackPresenter::onOk() {
    if (running_ || packer() == Packer::None) return;
    const ScopedFlag running(running_);
    view_.hide();
    createFolder();
    switch (packer()) {
        case Packer::Zip:
            packZip();
            break;
        case Packer::Lha:
            packByDriver(job_.drivers.lha(), lhaSwitches(choice_), L"", kLhaTitle);
            break;
        default:
            packByDriver(job_.drivers.cab(), cabSwitches(choice_), L"\\", kCabTitle);
            break;
    }
    view_.close();
}

void PackPresenter::packZip() {
    const std::wstring list = joined(names_);
    const std::optional<bool> result = job_.zip.run({.owner = job_.owner,
                                                     .command = zipPackLine(choice_),
                                                     .archive = archive_,
                                                     .files = list,
                                                     .baseFolder = job_.baseFolder});
    if (result.has_value() && choice_.has(PackOption::FullMessage)) {
        view_.showMessages(job_.owner, job_.zip.report().log);
    }
    if (result.value_or(false)) writeBack();
}

void PackPresenter::packByDriver(CommonDriver& driver, const std::wstring& switches, std::wstring_view folderSuffix,
                                 std::wstring_view title) {
    try {
        const std::wstring list = job_.workFolder.BuildListFileText(job_.baseFolder, joined(names_), folderSuffix);
        // Some libraries take an empty list for everything that is there.
        if (list.empty()) throw SystemError(kNotFound);
        const ListFile file(list, driver.listCodec(), job_.workFolder, job_.files);
        const CurrentFolder current(job_.system, job_.baseFolder);
        driver.setHWnd(job_.owner);
        driver.setCursorMode(false);
        driver.setBackGroundMode(true);
        driver.setCommandLine(packLine(switches, archive_, job_.baseFolder, file.argument()));
    } catch (const SystemError& error) {
        tell(job_.paths.SystemErrorText(error.code()), title);
        return;
    }
    if (driver.ReturnCode() == 0) {
        writeBack();
    } else {
        tell(driver.ErrString(), title);
    }
}

/// With all folders that are missing above it. What cannot be made shows up as the library's own error.
void PackPresenter::createFolder() {
    std::vector<std::wstring> missing;
    for (std::wstring path = archive_;;) {
        const std::wstring folder = ParentPath(StripTrailingSeparator(path));
        if (folder.empty() || folder.size() >= path.size() || job_.paths.IsFolder(folder)) break;
        missing.push_back(folder);
        path = folder;
    }
    while (!missing.empty()) {
        job_.files.createFolder(missing.back());
        missing.pop_back();
    }
}

void PackPresenter::writeBack() {
    job_.archiveFile = archive_;
    job_.fileList = joined(names_);
}

Packer PackPresenter::packer() const noexcept {
    for (const PackerRow& row : kPackers) {
        if (packerIndex_ >= 0 && packerIndex_ == indexOf(row.packer)) return row.packer;
    }
    return Packer::None;
}

int PackPresenter::indexOf(Packer packer) const noexcept {
    switch (packer) {
        case Packer::Zip:
            return zipIndex_;
        case Packer::Lha:
            return lhaIndex_;
        case Packer::Cab:
            return cabIndex_;
        default:
            return -1;
    }
}

void PackPresenter::tell(std::wstring_view text, std::wstring_view title) {
    job_.messages.show(job_.owner, text, title, MessageIcon::Exclamation);
}

}  // namespace tovar
