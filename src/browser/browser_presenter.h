#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "browser/address_history.h"
#include "browser/browser_actions.h"
#include "browser/browser_commands.h"
#include "browser/browser_view.h"
#include "browser/contents_list.h"
#include "browser/drag_contents.h"
#include "browser/file_types.h"
#include "browser/folder_model.h"
#include "browser/member_search.h"
#include "browser/view_style.h"
#include "drivers/archive_driver.h"
#include "shell/breather.h"
#include "shell/file_system.h"
#include "shell/regional.h"

namespace tovar {

/// What the presenter needs from outside; all of it outlives the presenter.
struct BrowserPorts {
    ArchiveDriver& driver;
    FileTypes& desktop;
    const FileSystem& files;
    RegionalSettings regional;
    BrowserActions* actions = nullptr;  ///< without it nothing is extracted, opened, added or deleted
    Breather* breather = nullptr;       ///< without it messages wait while many rows are ordered
};

/// Decides what the archive browser shows: which folder, its address, its rows, the status texts, which commands are
/// there. Events may arrive while the archive is being listed, because a library lets pending messages run; they find
/// nothing to act on then. While a command works on the archive, others of the kind are turned away.
class BrowserPresenter {
public:
    /// @param archiveFile  full path of the archive
    BrowserPresenter(BrowserView& view, const BrowserPorts& ports, std::wstring_view archiveFile);

    /// The window has come up.
    void onLoad();

    /// Lists the archive anew and shows the folder of the key, or the root when there is none.
    /// @return false when the archive is being listed already, or the window went away meanwhile
    bool fill(std::wstring_view folderKey);
    /// @return whether the archive is being listed, or rows are being put in order; the window must not go then
    [[nodiscard]] bool isFilling() const noexcept { return filling_ || ordering_; }
    /// @return whether messages will run while the folder's rows are put in order: the window may be gone afterwards
    [[nodiscard]] bool takesLongToShow(Folder folder) const;
    /// @return whether messages will run while the rows shown are put in order, or all of them selected
    [[nodiscard]] bool takesLongToSort() const noexcept { return contents_.rowCount() > kOrderedAtOnce; }
    /// The window is to be closed: a command that works on the archive ends as soon as it can.
    void cancelWork() noexcept;
    /// @return whether the archive is being listed or worked on; the window must not go then
    [[nodiscard]] bool isBusy() const noexcept { return isFilling() || working_; }

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

    /// A command was chosen, in a menu, on the toolbar or by its key. Nothing happens when it is disabled.
    void onCommand(BrowserCommand command);
    /// The same for a folder of the tree; kOpen and mnuEditExtract.
    void onFolderCommand(BrowserCommand command, Folder folder);
    /// @return whether a command can be chosen now; true for `mnuView` and the menus inside menus
    [[nodiscard]] bool isEnabled(BrowserCommand command) const;
    [[nodiscard]] bool isFolderCommandEnabled(BrowserCommand command) const;
    [[nodiscard]] ViewStyle viewStyle() const noexcept { return viewStyle_; }

    /// @return whether files can be dropped on the window now
    [[nodiscard]] bool takesFiles() const { return isEnabled(mnuEditAdd); }
    /// Files and folders were dropped on the window, wherever: they are added to the folder shown. One that the mouse
    /// only passes on its way is too easily hit.
    /// @param paths  full ones
    void onFilesDropped(const std::vector<std::wstring>& paths);

    /// A row was double-clicked, or Enter pressed on it.
    void onRowOpened(std::uint32_t row);
    /// The selection has changed by the user's hand.
    void onRowsSelected(std::uint32_t count);
    void onHeaderClicked(std::size_t column);

    /// The user drags the selected rows. Returns when he has let them go.
    void onDragBegun(DragButton button);
    /// The shell tells of a file; while the view watches it.
    void onShellNotify(const std::wstring& first, const std::wstring& second);
    /// See BrowserView::finishDropSoon.
    void onFinishDrop();

    /// Shows an item of the archive: its folder, and its row alone selected, with the focus, in sight. Where the
    /// keyboard is does not change.
    /// @return false when there is no such item, or no archive is shown
    bool showMember(const MemberPlace& place);
    /// @return where the row that has the focus belongs; nullopt when there is none
    [[nodiscard]] std::optional<MemberPlace> currentPlace() const;

    [[nodiscard]] const FolderModel& folders() const noexcept { return folders_; }
    [[nodiscard]] const ContentsList& contents() const noexcept { return contents_; }
    /// @return the folder shown; nullopt while there is none
    [[nodiscard]] std::optional<Folder> currentFolder() const noexcept { return current_; }

private:
    enum class Expand { No, Yes };

    // Commands
    [[nodiscard]] bool offers(BrowserCommand command) const;
    [[nodiscard]] std::optional<std::uint32_t> rowToOpen() const;
    [[nodiscard]] std::vector<ArchiveMember> selectedMembers() const;
    /// Runs a command of the port. Others are turned away meanwhile.
    /// @return whether the archive is to be listed again; false when the command threw, or the window is gone
    bool work(const std::function<bool(const ArchiveScene&)>& run);
    void extract(const std::vector<ArchiveMember>& members);
    /// The same for one that may change the archive; then it is listed again.
    void change(const std::function<bool(const ArchiveScene&)>& run);
    void deleteSelected();
    void copySelected();
    [[nodiscard]] MemberExports* exports() const noexcept;
    /// Looks after a drag whose drop the shell has still to tell of, or has told of.
    void settleDrop();
    void refresh();
    void exit();
    void setViewStyle(ViewStyle style);
    void updateCommands();

    /// Stops for breath as long as the window is there and nothing else is wanted from it.
    class Pauses final : public Breather {
    public:
        Pauses(BrowserPresenter& presenter, Breather* breather) : presenter_(presenter), breather_(breather) {}
        void begin() override;
        [[nodiscard]] bool breathe() override;
        /// @return what to hand to work
        [[nodiscard]] Breather* get() noexcept { return breather_ == nullptr ? nullptr : this; }

    private:
        BrowserPresenter& presenter_;
        Breather* breather_;
    };

    /// Rows that are put in order in one go: that takes less time than messages may wait.
    static constexpr std::size_t kOrderedAtOnce = 20'000;

    std::uint32_t list();
    /// Lists the archive again after a change. One that went with its last member is empty from then on, and not
    /// missing.
    void refreshChanged();
    /// Puts rows in order. What arrives meanwhile finds a presenter that is busy; the last folder selected is kept.
    /// @return false when that was given up
    bool order(std::size_t rows, const std::function<void()>& run);
    /// Shows the folder that was selected meanwhile.
    void showWanted();
    /// Selects rows: what the user selects meanwhile ends it.
    void selectRows(const std::function<std::uint32_t(Breather*)>& select);
    void showFolder(Folder folder);
    void selectAndShow(Folder folder, Expand expand);
    void showAddress();
    void showArchiveStatus(std::uint32_t entryCount);
    [[nodiscard]] std::optional<Folder> folderOfAddress(std::wstring_view text, std::wstring_view key) const;

    BrowserView& view_;
    ArchiveDriver& driver_;
    const FileSystem& files_;
    RegionalSettings regional_;
    BrowserActions* actions_;
    std::wstring archiveFile_, archiveName_;
    WindowHandle formerOwner_ = nullptr;
    FolderModel folders_;
    ContentsList contents_;
    AddressHistory addresses_;
    std::optional<Folder> current_;
    std::uint32_t selectedRows_ = 0;
    ViewStyle viewStyle_ = ViewStyle::Details;
    Pauses pauses_;
    std::optional<Folder> wanted_;  ///< selected while rows are put in order
    bool emptied_ = false;          ///< a change took the archive with its last member
    bool filling_ = false;
    bool working_ = false;
    bool ordering_ = false;
    bool selecting_ = false;
    bool selectedByUser_ = false;  ///< while rows are selected by a command
    bool closing_ = false;
};

}  // namespace tovar
