#include "archivers/infozip32/messages_pump.h"

#include <windows.h>

namespace archiver::infozip {

void pumpMessages() noexcept {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));  // whose loop it is will see it
            return;
        }
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

}  // namespace archiver::infozip
