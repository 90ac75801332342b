#pragma once
#include <windows.h>

#include "browser/browser_commands.h"

namespace tovar {

/// What is done with the keys that are pressed in a control.
class PaneKeys {
public:
    virtual ~PaneKeys() = default;
    /// A key went down. The control may be gone afterwards when the answer is true.
    /// @return false to leave the key to the control
    virtual bool onPaneKey(HWND pane, const KeyStroke& key) = 0;
    /// A letter was typed with Alt.
    /// @return false to leave it to the control, which hands it to the menu bar of the host
    virtual bool onPaneAltLetter(wchar_t letter) = 0;
    /// @return whether Escape means something in panes now
    [[nodiscard]] virtual bool wantsPaneEscape() const = 0;
};

/// What a watched control does with characters: a text field takes all of them, a pane none of those that keys of
/// commands leave behind.
enum class PaneKind { Rows, TextField };

/// Hands a control's keys to the window that it lies in before the control sees them, whatever the host's message loop
/// does with keys. It ends with the control.
/// @param keys  outlives the control
/// @return false on failure
bool watchKeys(HWND pane, PaneKeys& keys, PaneKind kind = PaneKind::Rows);

/// @return a key with those that are held down now
[[nodiscard]] KeyStroke strokeOf(WPARAM virtualKey) noexcept;

}  // namespace tovar
