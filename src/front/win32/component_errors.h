#pragma once
#include <windows.h>

#include <string>
#include <string_view>

namespace tovar {

/// What callers see as the source of an error.
inline constexpr std::wstring_view kErrorSource = L"TovarEx.cTovar";

/// @return what happened, for the user of a script or of a development environment
[[nodiscard]] std::wstring errorDescription(HRESULT code);

/// Leaves the error's description for the caller of an early-bound method.
/// @return the code
HRESULT reportError(HRESULT code, REFIID iid) noexcept;
/// @param description  in place of the code's own
HRESULT reportError(HRESULT code, REFIID iid, std::wstring_view description) noexcept;

}  // namespace tovar
