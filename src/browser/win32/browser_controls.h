#pragma once
#include "browser/browser_commands.h"

namespace tovar {

/// Identifiers of the browser window's controls; apart from those of its commands.
enum BrowserControl : int {
    kToolbar = 100,
    cmbURL,
    TV1,
    LV1,
    sBar1,
    kAddressLabel,
    kMenuBand,
    kSplitter,
    kFindBar,
    kFindLabel,
    kFindText,
    kFindState,
    kFindClose,
    WenShellNotify1,
};

}  // namespace tovar
