#pragma once
#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <optional>

#include "front/win32/com_support.h"

/// Arguments of late-bound calls. Callers pass values, references to values, and references to variants that hold
/// either; all of them are read the same way. Failures are DISP_E_TYPEMISMATCH and DISP_E_OVERFLOW.
namespace tovar {

/// Follows references to what they lead to; null where they lead nowhere, or in a circle.
[[nodiscard]] const VARIANT* valueOf(const VARIANT& argument) noexcept;

/// @return whether the caller left the argument out
[[nodiscard]] bool isMissing(const VARIANT& argument) noexcept;

[[nodiscard]] HRESULT readText(const VARIANT& argument, LCID locale, UniqueBstr& text) noexcept;
[[nodiscard]] HRESULT readBoolean(const VARIANT& argument, LCID locale, VARIANT_BOOL& flag) noexcept;
[[nodiscard]] HRESULT readLong(const VARIANT& argument, LCID locale, LONG& number) noexcept;

/// A 32-bit handle, signed or unsigned: callers without unsigned numbers write the upper half as negative ones.
[[nodiscard]] HRESULT readHandle(const VARIANT& argument, LCID locale, LONG& handle) noexcept;

/// Handles of windows and of drawing objects have 32 significant bits, and are sign-extended where a handle has 64.
[[nodiscard]] inline void* handleOf(LONG handle) noexcept {
    return reinterpret_cast<void*>(static_cast<LONG_PTR>(handle));
}

/// An object, or nothing: Nothing, Null, Empty and a left-out argument.
[[nodiscard]] HRESULT readObject(const VARIANT& argument, ComOwner<IDispatch>& object) noexcept;

/// Writes a number back to an argument passed by reference, in the type that the caller used where it can hold the
/// number; a variant becomes VT_I4 otherwise. An argument passed by value is left alone.
[[nodiscard]] HRESULT writeLong(VARIANT& argument, LCID locale, LONG number) noexcept;

/// @return a number of any type as 64 bits; nullopt for what is none
[[nodiscard]] std::optional<std::int64_t> integerOf(const VARIANT& value) noexcept;
/// @return a finite number of any type; nullopt for what is none
[[nodiscard]] std::optional<double> numberOf(const VARIANT& value) noexcept;

}  // namespace tovar
