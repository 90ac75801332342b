#pragma once
#include <windows.h>

namespace tovar {

/// Lets the calling thread's pending window messages be processed. A request to end the program is left for its owner.
/// @param dialog  a modeless dialog whose keys are to work; null = none
void runPendingMessages(HWND dialog = nullptr);

}  // namespace tovar
