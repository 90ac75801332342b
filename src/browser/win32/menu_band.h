#pragma once
#include <windows.h>

#include <cstddef>
#include <optional>

#include "browser/browser_menus.h"
#include "browser/win32/popup_menu.h"

namespace tovar {

/// The window that a menu band lies in.
class MenuBandOwner {
public:
    virtual ~MenuBandOwner() = default;
    /// @return the menu as it is to be shown now; null = none
    [[nodiscard]] virtual UniqueMenu makeBandMenu(BrowserMenu menu) = 0;
    virtual void onBandCommand(BrowserCommand command) = 0;
};

/// A menu bar for a window that cannot have one, because it lies in another window: a toolbar whose buttons open menus.
/// It works as menu bars do: an open menu gives way to its neighbour under the mouse and by the arrow keys; F10 goes to
/// the bar without opening a menu.
class MenuBand {
public:
    MenuBand() = default;
    MenuBand(const MenuBand&) = delete;
    MenuBand& operator=(const MenuBand&) = delete;

    /// @return false on failure
    bool create(HWND parent, MenuBandOwner& owner);
    /// The window that holds the band is about to go.
    void release() noexcept;
    [[nodiscard]] HWND hwnd() const noexcept { return band_; }

    /// @param menu  `mnuEdit` or `mnuView`
    void enable(BrowserCommand menu, bool enabled);
    /// The band has another font.
    /// @param dpi  dots per inch
    void fit(int dpi);
    /// @return what the buttons need, in pixels
    [[nodiscard]] SIZE size() const;

    /// Gives the keyboard to the band.
    void enter();
    /// @return whether the letter belongs to a menu that can be opened
    [[nodiscard]] bool hasLetter(wchar_t letter) const;

    enum class By { Mouse, Keyboard };
    /// Opens a menu, and others that the user goes to from there; waits until they are closed.
    /// @param menu  `mnuEdit` or `mnuView`
    void open(int menu, By by);
    void openByLetter(wchar_t letter);

private:
    static LRESULT CALLBACK keyProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                         DWORD_PTR data) noexcept;
    static LRESULT CALLBACK filterProcedure(int code, WPARAM wParam, LPARAM lParam) noexcept;

    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam);
    bool onKey(WPARAM key);
    /// A message that an open menu gets. @return whether it is not meant for the menu
    bool onMenuMessage(const MSG& message);
    BrowserCommand show(std::size_t place, By by);
    void switchTo(std::size_t place);
    void leave();

    [[nodiscard]] bool isEnabled(std::size_t place) const;
    /// @return the next menu that can be opened, in either direction; the place itself when there is no other
    [[nodiscard]] std::size_t neighbour(std::size_t place, bool backwards) const;
    [[nodiscard]] std::optional<std::size_t> placeOfLetter(wchar_t letter) const;
    [[nodiscard]] std::optional<std::size_t> placeAt(POINT screenPoint) const;

    HWND parent_ = nullptr, band_ = nullptr;
    MenuBandOwner* owner_ = nullptr;
    bool showing_ = false;
    std::size_t shown_ = 0;              ///< place of the open menu
    HMENU menu_ = nullptr;               ///< the open menu
    std::optional<std::size_t> wanted_;  ///< place of the menu to go on to
};

}  // namespace tovar
