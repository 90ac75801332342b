#pragma once
#include <gtest/gtest.h>
#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "shell/win32/window.h"
#include "win32/shell/temporary_folder.h"

namespace tovar::test {

using Texts = std::vector<std::wstring>;

inline std::wstring extended(const std::wstring& path) { return LR"(\\?\)" + path; }
inline bool makeFolder(const std::wstring& path) {
    return ::CreateDirectoryW(extended(path).c_str(), nullptr) != FALSE;
}
inline bool makeFile(const std::wstring& path) {
    const HANDLE file = ::CreateFileW(extended(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    ::CloseHandle(file);
    return true;
}

/// Lets the system below Wine run a command in a folder: Wine itself looks at every name of the folder for each one
/// that it makes. The command may still run afterwards.
/// @return false where there is no such system
inline bool runBelow(const std::wstring& folder, const std::wstring& command) {
    using UnixName = char*(CDECL*)(const wchar_t*);
    const auto address = ::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name");
    const auto unixName = reinterpret_cast<UnixName>(reinterpret_cast<void*>(address));
    if (unixName == nullptr) return false;
    char* const name = unixName(folder.c_str());
    const std::string below = name == nullptr ? "" : name;
    ::HeapFree(::GetProcessHeap(), 0, name);
    std::wstring line = L"bash -c \"cd '" + std::wstring(below.begin(), below.end()) + L"' && " + command + L'"';
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (::CreateProcessW(LR"(\\?\unix\bin\bash)", line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                         &process) == FALSE) {
        return false;
    }
    if (process.hThread != nullptr) ::CloseHandle(process.hThread);
    if (process.hProcess != nullptr) ::CloseHandle(process.hProcess);
    return true;
}

/// Answers the thread's messages, with the keys of dialogs, until something is so.
/// @return false when that did not come to pass in ten seconds
inline bool waitUntil(const std::function<bool()>& condition, HWND dialog = nullptr) {
    const ULONGLONG end = ::GetTickCount64() + 10000;
    while (!condition()) {
        if (::GetTickCount64() > end) return false;
        MSG message;
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (dialog != nullptr && ::IsDialogMessageW(dialog, &message)) continue;
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
    return true;
}

/// A folder "many" inside another one, with the folders 100000 to 104999 in it.
class ManyFolders {
public:
    explicit ManyFolders(const std::wstring& folder) : folder_(folder) {
        if (runBelow(folder_, L"mkdir many && cd many && mkdir {100000..104999} && mkdir ../ready")) {
            EXPECT_TRUE(waitUntil([this] { return isReady(); }));
            return;
        }
        makeFolder(path());
        for (int number = 100000; number < 105000; ++number) makeFolder(path() + L'\\' + std::to_wstring(number));
    }
    ~ManyFolders() {
        if (runBelow(folder_, L"rm -r many && mkdir ready")) waitUntil([this] { return isReady(); });
    }
    ManyFolders(const ManyFolders&) = delete;
    ManyFolders& operator=(const ManyFolders&) = delete;

    [[nodiscard]] std::wstring path() const { return folder_ + LR"(\many)"; }

private:
    [[nodiscard]] bool isReady() const { return ::RemoveDirectoryW((folder_ + LR"(\ready)").c_str()) != FALSE; }

    std::wstring folder_;
};

/// A tree view as its user sees it.
class ShownTree {
public:
    explicit ShownTree(HWND tree) : tree_(tree) {}

    [[nodiscard]] HTREEITEM next(UINT which, HTREEITEM item = nullptr) const {
        return reinterpret_cast<HTREEITEM>(
            ::SendMessageW(tree_, TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
    }
    [[nodiscard]] HTREEITEM root() const { return next(TVGN_ROOT); }
    [[nodiscard]] HTREEITEM caret() const { return next(TVGN_CARET); }
    [[nodiscard]] std::wstring text(HTREEITEM item) const {
        if (item == nullptr) return {};
        std::wstring text(1000, L'\0');
        TVITEMW asked = ask(item, TVIF_TEXT);
        asked.pszText = text.data();
        asked.cchTextMax = static_cast<int>(text.size());
        ::SendMessageW(tree_, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&asked));
        return asked.pszText;
    }
    [[nodiscard]] Texts textsIn(HTREEITEM item) const {
        Texts texts;
        for (HTREEITEM each = next(TVGN_CHILD, item); each != nullptr; each = next(TVGN_NEXT, each)) {
            texts.push_back(text(each));
        }
        return texts;
    }
    [[nodiscard]] HTREEITEM in(HTREEITEM item, const std::wstring& name) const {
        for (HTREEITEM each = next(TVGN_CHILD, item); each != nullptr; each = next(TVGN_NEXT, each)) {
            if (text(each) == name) return each;
        }
        return nullptr;
    }
    [[nodiscard]] bool hasButton(HTREEITEM item) const {
        TVITEMW asked = ask(item, TVIF_CHILDREN);
        ::SendMessageW(tree_, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&asked));
        return asked.cChildren == 1;
    }
    [[nodiscard]] bool isExpanded(HTREEITEM item) const {
        return (::SendMessageW(tree_, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_EXPANDED) &
                TVIS_EXPANDED) != 0;
    }
    [[nodiscard]] bool isGhost(HTREEITEM item) const {
        return (::SendMessageW(tree_, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_CUT) & TVIS_CUT) != 0;
    }
    [[nodiscard]] bool isVisible(HTREEITEM item) const {
        RECT place{}, window{};
        // The call takes the item where it answers the rectangle.
        std::memcpy(&place, &item, sizeof item);
        if (::SendMessageW(tree_, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&place)) == FALSE) return false;
        ::GetClientRect(tree_, &window);
        return place.top >= 0 && place.bottom <= window.bottom;
    }
    void select(HTREEITEM item) const {
        ::SendMessageW(tree_, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
    }
    /// Clicks the button with which an item is opened and closed.
    /// @return false when there is none to be seen
    [[nodiscard]] bool toggle(HTREEITEM item) const {
        ::SendMessageW(tree_, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
        RECT window{};
        ::GetClientRect(tree_, &window);
        for (int y = 0; y < window.bottom; y += 3) {
            for (int x = 0; x < window.right; x += 3) {
                TVHITTESTINFO hit{};
                hit.pt = {x, y};
                ::SendMessageW(tree_, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
                if (hit.hItem != item) break;
                if ((hit.flags & TVHT_ONITEMBUTTON) == 0) continue;
                ::SendMessageW(tree_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
                ::SendMessageW(tree_, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
                return true;
            }
        }
        return false;
    }
    void press(WORD key) const {
        ::SendMessageW(tree_, WM_KEYDOWN, key, 0);
        ::SendMessageW(tree_, WM_KEYUP, key, 0);
    }
    [[nodiscard]] LRESULT count() const { return ::SendMessageW(tree_, TVM_GETCOUNT, 0, 0); }

private:
    static TVITEMW ask(HTREEITEM item, UINT mask) {
        TVITEMW asked{};
        asked.mask = TVIF_HANDLE | mask;
        asked.hItem = item;
        return asked;
    }

    HWND tree_;
};

}  // namespace tovar::test
