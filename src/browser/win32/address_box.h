#pragma once
#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "shell/message_boxes.h"

namespace tovar {

/// What keys in the address box's text field do.
class AddressKeys {
public:
    virtual ~AddressKeys() = default;
    virtual void onAddressEnter() = 0;
    virtual void onAddressEscape() = 0;
    virtual void onAddressTab(bool backwards) = 0;
};

/// The address box `cmbURL`: a text field with the history of addresses below it.
class AddressBox {
public:
    /// @return false on failure
    bool create(HWND parent, AddressKeys& keys, MessageBoxes& messages);
    /// The window that holds the box is about to go.
    void release();
    [[nodiscard]] HWND hwnd() const noexcept { return box_; }
    /// The text field in it.
    [[nodiscard]] HWND edit() const noexcept { return edit_; }
    /// The word before the box, which also names it for screen readers.
    [[nodiscard]] HWND label() const noexcept { return label_; }
    /// @return pixels
    [[nodiscard]] int labelWidth() const;
    /// Makes the list wide enough for its addresses; for when the font has changed.
    void fitList();

    void add(std::wstring_view address);
    void choose(std::size_t index);
    void moveCaretToEnd();
    [[nodiscard]] std::wstring text() const;
    /// @return the text of the entry chosen in the list
    [[nodiscard]] std::wstring chosenText() const;

private:
    static LRESULT CALLBACK editProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    static bool wantsKey(HWND edit, LPARAM lParam) noexcept;
    static bool isListOpen(HWND edit) noexcept;
    /// @return whether the key was one of the box's
    static bool onKey(AddressKeys& keys, HWND edit, UINT message, WPARAM key);

    [[nodiscard]] std::wstring entry(WPARAM index) const;
    void widenList(int textWidth);

    HWND label_ = nullptr, box_ = nullptr, edit_ = nullptr;
    int widestText_ = 0;  ///< of the list, in pixels
};

}  // namespace tovar
