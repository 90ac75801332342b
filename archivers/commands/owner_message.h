#pragma once
#include <cstdint>

#include "archivers/convention/abi.h"

namespace archiver {

/// What the message "wm_arcextract" tells in its wParam.
enum class OwnerState : std::uint32_t {
    kBegin = 0,      ///< a member begins
    kInProcess = 1,  ///< some of a member is done
    kEnd = 2,        ///< the command is over; there may be no record
    kOpen = 3,       ///< the archive is open
    kCopy = 4,       ///< a new archive takes the old one's place
};

/// The number of the registered message "wm_arcextract", which owner windows and callbacks are given; 0 natively.
std::uint32_t ownerMessage() noexcept;

/// Sends the message to the window given to SetOwnerWindow. A window of another thread is waited for 5 seconds at most,
/// and not at all when that thread hangs.
/// @param window  one that is null or gone is told nothing
/// @param info    null only with kEnd
/// @return true when the window wants the command cancelled
bool sendOwnerMessage(WindowHandle window, OwnerState state, ExtractingInfo* info) noexcept;

}  // namespace archiver
