#pragma once
#include <windows.h>

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "browser/find_presenter.h"
#include "browser/win32/pane_keys.h"
#include "shell/win32/window.h"

namespace tovar {

/// The window that the find bar lies in.
class FindBarOwner {
public:
    virtual ~FindBarOwner() = default;
    /// The bar was shown or hidden: the room for it has changed.
    virtual void onFindBarShown() = 0;
    /// The keyboard has come to one of the bar's controls, or left it.
    virtual void onFindBarFocus() = 0;
    /// Tab was pressed in one of the bar's controls.
    virtual void onFindBarTab(bool backwards) = 0;
};

/// The find bar: a text field, buttons for the next and the previous member of that name, how the search goes, and a
/// button that closes the bar. Hidden until it is asked for.
class FindBar final : private Window, private FindView {
public:
    /// All must outlive the object.
    /// @param keys  hears of the keys that are not the bar's own
    FindBar(FindBarOwner& owner, PaneKeys& keys, BrowserPresenter& browser, const EntryTable& entries)
        : owner_(owner), keys_(keys), presenter_(*this, browser, entries) {}
    ~FindBar() override { destroy(); }

    /// @return false on failure
    bool create(HWND parent);
    using Window::hwnd;

    [[nodiscard]] bool isShown() const noexcept { return presenter_.isShown(); }
    /// Its controls that hold texts.
    [[nodiscard]] std::array<HWND, 6> controls() const noexcept {
        return {label_, edit_, next_, previous_, state_, close_};
    }
    /// @return the controls that Tab comes to, in their order; none while the bar is hidden
    [[nodiscard]] std::vector<HWND> tabStops() const;
    [[nodiscard]] bool contains(HWND window) const noexcept;

    /// @param dpi  what the bar is shown at
    void setScale(int dpi);
    /// @return what the bar needs, in pixels; 0 while it is hidden
    [[nodiscard]] int height() const;

    void find() { presenter_.onFind(); }
    void findNext() { presenter_.onNext(); }
    void findPrevious() { presenter_.onPrevious(); }
    void close() { presenter_.onClose(); }
    /// What was listed is no more.
    void onListingGone();

private:
    // Window
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    // FindView
    void setShown(bool shown) override;
    void enterText() override;
    void enableMoves(bool enabled) override;
    void showState(std::wstring_view text, bool failed) override;
    void runSlices(bool running) override;

    std::optional<LRESULT> onCreate(WPARAM, LPARAM);
    std::optional<LRESULT> onSize(WPARAM, LPARAM);
    std::optional<LRESULT> onFocus(WPARAM, LPARAM);
    std::optional<LRESULT> onTimer(WPARAM, LPARAM);
    std::optional<LRESULT> onCommand(WPARAM wParam, LPARAM);
    std::optional<LRESULT> onFieldColour(WPARAM context, LPARAM control);

    void onTextChanged() { presenter_.onTextChanged(textOf(edit_)); }
    void onNext() { presenter_.onNext(); }
    void onPrevious() { presenter_.onPrevious(); }

    static LRESULT CALLBACK keyProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                         DWORD_PTR data) noexcept;
    bool onKey(HWND control, const KeyStroke& key);
    bool onAltLetter(wchar_t letter);
    [[nodiscard]] int fieldHeight() const;
    void layOut();

    FindBarOwner& owner_;
    PaneKeys& keys_;
    FindPresenter presenter_;
    int dpi_ = USER_DEFAULT_SCREEN_DPI;
    HWND label_ = nullptr, edit_ = nullptr, next_ = nullptr, previous_ = nullptr, state_ = nullptr, close_ = nullptr;
    HWND formerFocus_ = nullptr;  ///< where the keyboard was before it came to the bar
    bool failed_ = false;
};

}  // namespace tovar
