#pragma once
#include <windows.h>

namespace tovar {

/// The module that this code was linked into: the component's own DLL, never the host's program. Window classes and
/// resources belong to it.
[[nodiscard]] HINSTANCE moduleInstance() noexcept;

}  // namespace tovar
