#pragma once
#include <windows.h>

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "browser/archive_browser.h"
#include "browser/browser_actions.h"
#include "browser/browser_presenter.h"
#include "browser/browser_view.h"
#include "browser/file_types.h"
#include "browser/hosted_place.h"
#include "browser/win32/address_box.h"
#include "browser/win32/browser_toolbar.h"
#include "browser/win32/contents_view.h"
#include "browser/win32/find_bar.h"
#include "browser/win32/folder_tree.h"
#include "browser/win32/host_watch.h"
#include "browser/win32/menu_band.h"
#include "browser/win32/pane_keys.h"
#include "shell/file_system.h"
#include "shell/message_boxes.h"
#include "shell/regional.h"
#include "shell/win32/desktop_watch.h"
#include "shell/win32/file_drop_target.h"
#include "shell/win32/form_fonts.h"
#include "shell/win32/handles.h"
#include "shell/win32/shell_notify.h"
#include "shell/win32/splitter.h"
#include "shell/win32/window.h"

namespace tovar {

/// What the browser window needs from outside. All of it but the regional settings outlives the window.
struct BrowserWindowPorts {
    const FileSystem& files;
    FileTypes& desktop;
    MessageBoxes& messages;
    RegionalSettings regional;
    BrowserActions* actions = nullptr;  ///< without it the window shows archives and does nothing with them
    Breather* breather = nullptr;       ///< without it messages wait while rows are put in order
};

/// The archive browser window `fArcMain`: a folder tree beside a contents list, an address box and a toolbar above
/// them, a status bar below.
class fArcMain final : public ArchiveBrowser,
                       private Window,
                       private BrowserView,
                       private AddressKeys,
                       private SplitterOwner,
                       private HostSizeListener,
                       private DesktopListener,
                       private MenuBandOwner,
                       private PaneKeys,
                       private FindBarOwner,
                       private ShellNotifyListener,
                       private FileDropOwner {
public:
    /// Creates the window, hidden; hWnd() is null when that failed.
    fArcMain(const BrowserRequest& request, const BrowserWindowPorts& ports, std::function<void()> onUnloaded);
    ~fArcMain() override;

    [[nodiscard]] WindowHandle hWnd() const override { return hwnd(); }
    bool FillControl(std::wstring_view folderKey) override;
    void suspendPainting(bool suspended) override;
    void showModeless() override;
    void unload() override;

private:
    // Window
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void onGone() override;

    // BrowserView
    void setTitle(std::wstring_view title) override;
    void clear() override;
    void showFolders() override;
    void selectFolder(Folder folder, bool expand) override;
    void showContents() override;
    void moveRows(std::span<const std::uint32_t> newRows) override;
    void showRow(std::uint32_t row) override;
    void addAddress(std::wstring_view address) override;
    void chooseAddress(std::size_t index) override;
    void moveAddressCaretToEnd() override;
    void setViewStyle(ViewStyle style) override;
    std::uint32_t selectAll(Breather* breather) override;
    std::uint32_t invertSelection(Breather* breather) override;
    [[nodiscard]] std::vector<std::uint32_t> selectedRows() const override;
    [[nodiscard]] std::optional<std::uint32_t> focusedRow() const override;
    void enable(BrowserCommand command, bool enabled) override;
    void setStatus(std::wstring_view text) override;
    void watchShell(bool watched) override;
    void finishDropSoon() override;
    void close() override;

    // AddressKeys
    void onAddressEnter() override;
    void onAddressEscape() override;
    void onAddressTab(bool backwards) override;

    // HostSizeListener
    void onHostSized() override;

    // DesktopListener
    void onDesktopChanged(UINT message, WPARAM wParam, LPARAM lParam) override;

    // SplitterOwner
    void onSplitterMoved() override;
    int onSplitterFit() override;
    void onSplitterLeave(bool backwards) override;

    // MenuBandOwner
    [[nodiscard]] UniqueMenu makeBandMenu(BrowserMenu menu) override;
    void onBandCommand(BrowserCommand command) override;

    // PaneKeys
    bool onPaneKey(HWND pane, const KeyStroke& key) override;
    bool onPaneAltLetter(wchar_t letter) override;
    [[nodiscard]] bool wantsPaneEscape() const override { return find_.isShown(); }

    // FindBarOwner
    void onFindBarShown() override;
    void onFindBarFocus() override;
    void onFindBarTab(bool backwards) override;

    // ShellNotifyListener
    void onShellNotify(const std::wstring& first, const std::wstring& second) override;

    // FileDropOwner
    [[nodiscard]] bool takesFiles() const override { return presenter_.takesFiles() && !isBehindDialog(); }
    void onFilesDropped(std::vector<std::wstring> paths) override;

    // Messages
    std::optional<LRESULT> onCreate(WPARAM, LPARAM);
    std::optional<LRESULT> onDestroy(WPARAM, LPARAM);
    std::optional<LRESULT> onClose(WPARAM, LPARAM);
    std::optional<LRESULT> onSize(WPARAM, LPARAM);
    std::optional<LRESULT> onTimer(WPARAM wParam, LPARAM);
    std::optional<LRESULT> onDropFiles(WPARAM drop, LPARAM);
    std::optional<LRESULT> onMinimumSize(WPARAM, LPARAM lParam);
    std::optional<LRESULT> onFocus(WPARAM, LPARAM);
    std::optional<LRESULT> onFocusMoved(WPARAM, LPARAM);
    std::optional<LRESULT> onFolderClosed(WPARAM, LPARAM);
    std::optional<LRESULT> onMouseActivate(WPARAM, LPARAM);
    std::optional<LRESULT> onMoving(WPARAM, LPARAM lParam);
    std::optional<LRESULT> onMoved(WPARAM, LPARAM);
    std::optional<LRESULT> onStyleChanged(WPARAM, LPARAM);
    std::optional<LRESULT> onScaleChanged(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> onScaleOfHostChanged(WPARAM, LPARAM);
    std::optional<LRESULT> onOpenBandMenu(WPARAM letter, LPARAM menu);
    std::optional<LRESULT> onContextMenu(WPARAM pane, LPARAM place);
    std::optional<LRESULT> onShowContextMenu(WPARAM pane, LPARAM place);
    std::optional<LRESULT> onRunCommand(WPARAM command, LPARAM);
    std::optional<LRESULT> onOpenRow(WPARAM, LPARAM);
    std::optional<LRESULT> onSortRows(WPARAM column, LPARAM);
    std::optional<LRESULT> onDragRows(WPARAM button, LPARAM);
    std::optional<LRESULT> onFinishDrop(WPARAM, LPARAM);
    std::optional<LRESULT> onShowFolder(WPARAM folder, LPARAM);
    std::optional<LRESULT> onCommand(WPARAM wParam, LPARAM);
    std::optional<LRESULT> onNotify(WPARAM, LPARAM lParam);

    // Commands
    void onAddressChosen();
    void addDropped();
    /// @return whether a dialog, of the window's own or of the host, keeps its user out
    [[nodiscard]] bool isBehindDialog() const { return !::IsWindowEnabled(::GetAncestor(hwnd(), GA_ROOT)); }
    void onControlFocus();

    // Notifications
    LRESULT onBandDropDown(NMHDR& header);
    LRESULT onHint(NMHDR& header);
    LRESULT onPaneFocus(NMHDR& header);
    LRESULT onTreeExpanding(NMHDR& header);
    LRESULT onTreeExpanded(NMHDR& header);
    LRESULT onTreeSelected(NMHDR& header);
    LRESULT onTreeKey(NMHDR& header);
    LRESULT onListText(NMHDR& header);
    LRESULT onListFind(NMHDR& header);
    LRESULT onListSelection(NMHDR& header);
    LRESULT onListDoubleClick(NMHDR& header);
    LRESULT onListRightClick(NMHDR& header);
    LRESULT onListEnter(NMHDR& header);
    LRESULT onListKey(NMHDR& header);
    LRESULT onListHeader(NMHDR& header);
    LRESULT onListDrag(NMHDR& header);

    bool createControls();
    void applyFonts();
    void giveFonts();
    [[nodiscard]] HostSize sizeOfHost() const;
    [[nodiscard]] HostedPlace placeInHost() const;
    void setScale(int dpi);
    void followScale();
    void layOut();
    void openRow(int row);
    void runCommand(BrowserCommand command);
    /// Runs what lets messages run; the window may be gone afterwards.
    void runToTheEnd(const std::function<void()>& run);
    void showListMenu(LPARAM place);
    void showTreeMenu(LPARAM place);
    enum class FocusStops { Controls, Panes };
    void moveFocus(bool backwards, FocusStops stops = FocusStops::Controls);
    bool onNavigationKey(WORD key);

    std::function<void()> onUnloaded_;
    MessageBoxes& messages_;
    FileTypes& desktop_;
    std::wstring fontName_;
    UniqueFont systemFont_;
    FormFonts hostFonts_;
    UniqueIcon icon_;
    HWND status_ = nullptr;
    HWND lastFocus_ = nullptr;
    MenuBand menuBand_;
    BrowserToolbar toolbar_;
    AddressBox address_;
    FolderTree tree_;
    ContentsView list_;
    Splitter splitter_{*this};
    HostWatch hostWatch_;
    DesktopWatch desktopWatch_{*this};
    FileDropTarget drops_{*this};
    std::vector<std::wstring> dropped_;  ///< until the timer `tmrOLE` has them added
    HostSize hostSize_;                  ///< when the window was placed there
    HostedPlace hostedPlace_;            ///< where the host or the user has placed the window
    RECT laidOutIn_{};                   ///< the window's client area when its controls were placed
    bool followingHost_ = false;
    bool givingFonts_ = false, otherFontsWanted_ = false;
    bool isLoaded_ = false;              ///< the window has had its fonts once
    int dpi_ = USER_DEFAULT_SCREEN_DPI;  ///< what everything is shown at
    int systemDpi_ = 0;                  ///< what the system said last
    BrowserPresenter presenter_;
    FindBar find_;
    WenShellNotify shellNotify_{*this};  ///< `WenShellNotify1`
    std::optional<std::uint32_t> rowToOpen_;
    std::optional<POINT> rightClick_;  ///< on the screen, where the list was clicked last; until its menu is asked for
    bool selecting_ = false;           ///< the selection in the tree changes by the program's hand now
    bool captionActive_ = false;
    bool closeWanted_ = false;
    bool paintingSuspended_ = false;
};

}  // namespace tovar
