#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "browser/address_history.h"
#include "browser/browser_view.h"
#include "browser/contents_list.h"
#include "browser/file_types.h"
#include "browser/folder_model.h"
#include "drivers/archive_driver.h"
#include "shell/file_system.h"
#include "shell/regional.h"

namespace tovar {

/// What the presenter needs from outside; all of it outlives the presenter.
struct BrowserPorts {
    ArchiveDriver& driver;
    FileTypes& desktop;
    const FileSystem& files;
    RegionalSettings regional;
};

/// Decides what the archive browser shows: which folder, its address, its rows, the status texts. Events may arrive
/// while the archive is being listed, because a library lets pending messages run; they find nothing to act on then.
class BrowserPresenter {
public:
    /// @param archiveFile  full path of the archive
    BrowserPresenter(BrowserView& view, const BrowserPorts& ports, std::wstring_view archiveFile);

    /// The window has come up.
    void onLoad();

    /// Lists the archive anew and shows the folder of the key, or the root when there is none.
    /// @return false when the archive is being listed already, or the window went away meanwhile
    bool fill(std::wstring_view folderKey);
    [[nodiscard]] bool isFilling() const noexcept { return filling_; }

    /// The window has gone; the driver gets back the owner that it had before.
    void onUnload();

    /// A folder was selected in the tree.
    void onFolderSelected(Folder folder);
    /// @return whether the folder stays closed when its user closes it; the root does not
    [[nodiscard]] bool mayCollapse(Folder folder) const noexcept { return folder != FolderModel::kRoot; }
    void onGoUp();

    /// Enter was pressed in the address box, or an entry of its history chosen.
    void onAddressEntered(std::wstring_view text);
    /// Escape was pressed in the address box.
    void onAddressAbandoned();

    /// A row was double-clicked, or Enter pressed on it.
    void onRowOpened(std::uint32_t row);
    /// The selection has changed by the user's hand.
    void onRowsSelected(std::uint32_t count);
    void onHeaderClicked(std::size_t column);

    [[nodiscard]] const FolderModel& folders() const noexcept { return folders_; }
    [[nodiscard]] const ContentsList& contents() const noexcept { return contents_; }
    /// @return the folder shown; nullopt while there is none
    [[nodiscard]] std::optional<Folder> currentFolder() const noexcept { return current_; }

private:
    enum class Expand { No, Yes };

    void showFolder(Folder folder);
    void selectAndShow(Folder folder, Expand expand);
    void showAddress();
    void showArchiveStatus(std::uint32_t entryCount);
    [[nodiscard]] std::optional<Folder> folderOfAddress(std::wstring_view text, std::wstring_view key) const;

    BrowserView& view_;
    ArchiveDriver& driver_;
    const FileSystem& files_;
    RegionalSettings regional_;
    std::wstring archiveFile_, archiveName_;
    WindowHandle formerOwner_ = nullptr;
    FolderModel folders_;
    ContentsList contents_;
    AddressHistory addresses_;
    std::optional<Folder> current_;
    std::uint32_t selectedRows_ = 0;
    bool filling_ = false;
};

}  // namespace tovar
