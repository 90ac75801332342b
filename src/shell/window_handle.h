#pragma once

namespace tovar {
/// A window of the system, as portable code passes it on: HWND on Windows, never looked into. Null = none.
using WindowHandle = void*;
}  // namespace tovar
