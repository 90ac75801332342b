#include "win32/drag/support/pointer.h"

#include <utility>

namespace tovar::test {
namespace {

constexpr int kSteps = 10;
constexpr int kMostPresses = 10, kMovesOfAPress = 40;  ///< longer than a double click takes
constexpr DWORD kPause = 20;  // milliseconds, as a hand takes its time: the system leaves out places in between

void moveTo(POINT place) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = ::MulDiv(place.x, 65536, ::GetSystemMetrics(SM_CXSCREEN)) + 1;
    input.mi.dy = ::MulDiv(place.y, 65536, ::GetSystemMetrics(SM_CYSCREEN)) + 1;
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    ::SendInput(1, &input, sizeof input);
    ::Sleep(kPause);
}

void press(DWORD button) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = button;
    ::SendInput(1, &input, sizeof input);
    ::Sleep(kPause);
}

void strike(WORD key) {
    for (const DWORD flags : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.dwFlags = flags;
        ::SendInput(1, &input, sizeof input);
        ::Sleep(kPause);
    }
}

}  // namespace

Pointer::Pointer(POINT from, POINT to, End end, std::function<bool()> begun)
    : hand_([from, to, end, begun = std::move(begun), done = done_] {
          moveTo(from);
          // A press that activates a window may be lost: whoever does not see anything move presses again.
          for (int presses = 0; presses < kMostPresses && !begun(); ++presses) {
              if (presses != 0) press(MOUSEEVENTF_LEFTUP);
              moveTo(from);
              press(MOUSEEVENTF_LEFTDOWN);
              for (int moves = 0; moves < kMovesOfAPress && !begun(); ++moves) {
                  moveTo({from.x + 10 + moves % 2, from.y + 4});
              }
          }
          for (int step = 1; step <= kSteps; ++step) {
              moveTo({from.x + (to.x - from.x) * step / kSteps, from.y + (to.y - from.y) * step / kSteps});
          }
          if (end == End::Escape) strike(VK_ESCAPE);
          press(MOUSEEVENTF_LEFTUP);
          *done = true;
      }) {}

}  // namespace tovar::test
