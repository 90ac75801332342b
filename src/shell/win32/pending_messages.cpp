#include "shell/win32/pending_messages.h"

namespace tovar {

void runPendingMessages(HWND dialog) {
    // A window that never paints itself completely would give a message without end.
    constexpr int kAtMost = 1000;
    MSG message;
    for (int count = 0; count < kAtMost && ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++count) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        // The messages before may have closed the dialog.
        if (dialog != nullptr && ::IsWindow(dialog) && ::IsDialogMessageW(dialog, &message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

}  // namespace tovar
