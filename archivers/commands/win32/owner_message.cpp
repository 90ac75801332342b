#include "archivers/commands/owner_message.h"

#include <windows.h>

namespace archiver {

std::uint32_t ownerMessage() noexcept {
    static const UINT message = ::RegisterWindowMessageW(L"wm_arcextract");
    return message;
}

bool sendOwnerMessage(WindowHandle window, OwnerState state, ExtractingInfo* info) noexcept {
    const HWND owner = static_cast<HWND>(window);
    if (owner == nullptr || !::IsWindow(owner) || ownerMessage() == 0) return false;
    const auto stateWord = static_cast<WPARAM>(state);
    const auto infoWord = reinterpret_cast<LPARAM>(info);
    if (::GetWindowThreadProcessId(owner, nullptr) == ::GetCurrentThreadId()) {
        return ::SendMessageW(owner, ownerMessage(), stateWord, infoWord) != 0;
    }
    constexpr UINT kMilliseconds = 5000;
    DWORD_PTR answer = 0;
    return ::SendMessageTimeoutW(owner, ownerMessage(), stateWord, infoWord, SMTO_ABORTIFHUNG, kMilliseconds,
                                 &answer) != 0 &&
           answer != 0;
}

}  // namespace archiver
