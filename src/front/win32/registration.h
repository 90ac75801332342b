#pragma once
#include <windows.h>

#include <string>

namespace tovar {

/// For everybody on the machine, or for the calling user only.
enum class RegistrationScope { Machine, User };

/// Writes everything that COM needs to find the class and its type library. What is written is taken back when a step
/// fails.
/// @param module  full path of the DLL
[[nodiscard]] HRESULT registerServer(RegistrationScope scope, const std::wstring& module) noexcept;

/// Removes what registerServer writes; what is not there is no error.
[[nodiscard]] HRESULT unregisterServer(RegistrationScope scope) noexcept;

}  // namespace tovar
