#pragma once
#include <windows.h>

#include "win32/front/support/component_session.h"

namespace tovar::test {

/// Dispatches messages until a condition holds.
/// @param limit  milliseconds
/// @return whether it came to hold within the limit
template <class Condition>
bool waitUntil(Condition condition, DWORD limit = 20000) {
    const DWORD start = ::GetTickCount();
    for (;;) {
        runMessages();
        if (condition()) return true;
        if (::GetTickCount() - start >= limit) return false;
        // What other processes and threads do brings no message here: the condition is looked at now and then.
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
}

}  // namespace tovar::test
