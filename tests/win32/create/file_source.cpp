// Another program that files come from: it drags them, puts them on the clipboard, or is in the way there.
//   drag X Y EFFECTS FORM PATHS      EFFECTS: allowed ones, a number; FORM: wide, ansi, or text for something else.
//                                    Ends with the effect, and 16 when something was dropped.
//   clipboard FORM PATHS             FORM: wide, ansi, or text
//   hold HELD RELEASE                keeps the clipboard open from the first event to the second
//   message WINDOW PATHS             sends the older message, with memory that is this process's alone

#include "win32/create/drag_source.h"

#include <shellapi.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace tovar::test {
namespace {

using Words = std::vector<std::wstring>;

std::string bytesOf(const std::wstring& form, const Words& paths) {
    if (form == L"text") return "some text";
    return fileListBlock(paths, form == L"wide" ? NameForm::Wide : NameForm::Ansi);
}
CLIPFORMAT formatOf(const std::wstring& form) { return form == L"text" ? CF_TEXT : CF_HDROP; }

int drag(const Words& words) {
    if (FAILED(::OleInitialize(nullptr))) return 100;
    const POINT to{std::stol(words[1]), std::stol(words[2])};
    OneFormat data(formatOf(words[4]), bytesOf(words[4], Words(words.begin() + 5, words.end())));
    const Dragged dragged = MouseDrag::run(data, std::stoul(words[3]), to);
    ::OleUninitialize();
    if (dragged.result != DRAGDROP_S_DROP && dragged.result != DRAGDROP_S_CANCEL) return 101;
    return static_cast<int>(dragged.effect) + (dragged.result == DRAGDROP_S_DROP ? 16 : 0);
}

int clipboard(const Words& words) {
    if (!::OpenClipboard(nullptr)) return 102;
    ::EmptyClipboard();
    const HGLOBAL memory = globalOf(bytesOf(words[1], Words(words.begin() + 2, words.end())));
    const bool put = ::SetClipboardData(formatOf(words[1]), memory) != nullptr;
    ::CloseClipboard();
    return put ? 0 : 103;
}

int hold(const Words& words) {
    const HANDLE held = ::OpenEventW(EVENT_ALL_ACCESS, FALSE, words[1].c_str());
    const HANDLE release = ::OpenEventW(EVENT_ALL_ACCESS, FALSE, words[2].c_str());
    // One that is open without a window can be opened a second time so.
    const HWND window = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    if (!::OpenClipboard(window)) return 104;
    ::SetEvent(held);
    ::WaitForSingleObject(release, 60000);
    ::CloseClipboard();
    return 0;
}

int message(const Words& words) {
    const auto window = reinterpret_cast<HWND>(static_cast<std::uintptr_t>(std::stoull(words[1])));
    const HGLOBAL memory = globalOf(bytesOf(L"wide", Words(words.begin() + 2, words.end())));
    ::SendMessageW(window, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
    return 0;
}

int run(const Words& words) {
    if (words.size() >= 5 && words[0] == L"drag") return drag(words);
    if (words.size() >= 2 && words[0] == L"clipboard") return clipboard(words);
    if (words.size() >= 3 && words[0] == L"hold") return hold(words);
    if (words.size() >= 3 && words[0] == L"message") return message(words);
    return 105;
}

}  // namespace
}  // namespace tovar::test

int main() {
    int count = 0;
    LPWSTR* const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    return words == nullptr ? 106 : tovar::test::run({words + 1, words + count});
}
