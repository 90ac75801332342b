#include "win32/system/support/process_marks.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <clocale>
#include <vector>

namespace tovar::test {
namespace {

using Text = std::array<wchar_t, 32768>;

std::wstring environment() {
    wchar_t* const block = ::GetEnvironmentStringsW();
    std::wstring text;
    for (const wchar_t* at = block; *at != L'\0'; at += std::wstring(at).size() + 1) text += std::wstring(at) + L'\n';
    ::FreeEnvironmentStringsW(block);
    return text;
}

std::wstring wide(const char* text) {
    const std::string narrow = text == nullptr ? "" : text;
    return {narrow.begin(), narrow.end()};
}

/// How many handles of a table are in use. New objects take the places of those that are gone, lately freed ones first,
/// and then the next ones: once the places only rise, every lower one is taken.
template <class Make, class Free>
long handlesInUse(Make make, Free free) {
    constexpr int kRise = 64;
    std::vector<decltype(make())> objects;
    long highest = 0, step = 1;
    for (int rise = 0; rise < kRise;) {
        objects.push_back(make());
        const long place = LOWORD(reinterpret_cast<LONG_PTR>(objects.back()));
        rise = place > highest ? rise + 1 : 0;
        step = place > highest ? place - highest : step;
        highest = std::max(highest, place);
    }
    for (auto each : objects) free(each);
    return highest / step - static_cast<long>(objects.size());
}

/// Counts the objects of the process among all handles; their upper half may be left out.
template <class Test>
long countHandles(Test test) {
    long count = 0;
    for (LONG_PTR place = 2; place <= 0xFFFF; place += 2) count += test(place) ? 1 : 0;
    return count;
}

bool isMenu(LONG_PTR handle) { return ::IsMenu(reinterpret_cast<HMENU>(handle)) != FALSE; }

bool isIcon(LONG_PTR handle) {
    ICONINFO information{};
    if (!::GetIconInfo(reinterpret_cast<HICON>(handle), &information)) return false;
    ::DeleteObject(information.hbmColor);
    ::DeleteObject(information.hbmMask);
    return true;
}

long privateKilobytes() {
    MEMORY_BASIC_INFORMATION region{};
    std::size_t bytes = 0;
    for (const char* at = nullptr; ::VirtualQuery(at, &region, sizeof region) != 0; at += region.RegionSize) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
        if (region.RegionSize == 0) break;
    }
    return static_cast<long>(bytes / 1024);
}

BOOL CALLBACK countWindow(HWND window, LPARAM count) {
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (process == ::GetCurrentProcessId()) ++*reinterpret_cast<long*>(count);
    return TRUE;
}

BOOL CALLBACK countTopLevel(HWND window, LPARAM count) {
    countWindow(window, count);
    ::EnumChildWindows(window, &countWindow, count);
    return TRUE;
}

long windowCount() {
    long count = 0;
    ::EnumWindows(&countTopLevel, reinterpret_cast<LPARAM>(&count));
    for (HWND window = nullptr; (window = ::FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;) {
        countWindow(window, reinterpret_cast<LPARAM>(&count));
    }
    return count;
}

}  // namespace

std::map<std::string, std::wstring> processState() {
    static Text text;
    const auto textOf = [](DWORD length) { return std::wstring(text.data(), std::min<std::size_t>(length, 32767)); };
    std::map<std::string, std::wstring> state;
    state["current folder"] = textOf(::GetCurrentDirectoryW(32768, text.data()));
    state["folder of libraries"] = textOf(::GetDllDirectoryW(32768, text.data()));
    state["environment"] = environment();
    state["error mode"] = std::to_wstring(::GetErrorMode());
    state["error mode of the thread"] = std::to_wstring(::GetThreadErrorMode());
    state["locale of the thread"] = std::to_wstring(::GetThreadLocale());
    state["locale of the C library"] = wide(std::setlocale(LC_ALL, nullptr));
    state["code pages"] = std::to_wstring(::GetACP()) + L' ' + std::to_wstring(::GetOEMCP());
    state["floating point"] = std::to_wstring(::_controlfp(0, 0));
    state["priority"] = std::to_wstring(::GetPriorityClass(::GetCurrentProcess())) + L' ' +
                        std::to_wstring(::GetThreadPriority(::GetCurrentThread()));
    HANDLE context = nullptr;
    ::GetCurrentActCtx(&context);
    state["activation context"] = std::to_wstring(reinterpret_cast<LONG_PTR>(context));
    if (context != nullptr) ::ReleaseActCtx(context);
    return state;
}

ResourceMarks resourceMarks() {
    ResourceMarks marks;
    const HANDLE process = ::GetCurrentProcess();
    marks.gdiObjects = static_cast<long>(::GetGuiResources(process, GR_GDIOBJECTS));
    marks.userObjects = static_cast<long>(::GetGuiResources(process, GR_USEROBJECTS));
    marks.gdiHandles =
        handlesInUse([] { return ::CreateSolidBrush(RGB(1, 2, 3)); }, [](HBRUSH brush) { ::DeleteObject(brush); });
    marks.kernelHandles = handlesInUse([] { return ::CreateEventW(nullptr, FALSE, FALSE, nullptr); },
                                       [](HANDLE event) { ::CloseHandle(event); });
    marks.windows = windowCount();
    marks.menus = countHandles(&isMenu);
    marks.icons = countHandles(&isIcon);
    const DWORD slot = ::TlsAlloc();
    ::TlsFree(slot);
    marks.threadSlots = static_cast<long>(slot);
    marks.kilobytes = privateKilobytes();
    return marks;
}

}  // namespace tovar::test
