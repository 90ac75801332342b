#pragma once

namespace tovar {

/// Identifiers of the browser window's controls and commands.
enum BrowserControl : int {
    kToolbar = 100,
    GoUp,
    cmbURL,
    TV1,
    LV1,
    sBar1,
    kAddressLabel,
};

}  // namespace tovar
