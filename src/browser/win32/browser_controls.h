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

/// The timer that begins to add what was dropped; apart from that of HostWatch.
inline constexpr unsigned int tmrOLE = 0x4F4C45;

}  // namespace tovar
