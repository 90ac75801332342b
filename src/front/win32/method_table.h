#pragma once
#include <windows.h>

#include <oleauto.h>

#include <array>
#include <span>

#include "front/win32/com_support.h"
#include "tovar_idl.h"

namespace tovar {

enum class ParameterType { Text, Handle, Boolean, Object, LongInOut };

struct ParameterRow {
    const wchar_t* name;
    ParameterType type;
    bool optional = false;
};

/// One argument of a late-bound call, as its parameter wants it.
struct ArgumentValue {
    UniqueBstr text;
    ComOwner<IDispatch> object;
    LONG number = 0;
    VARIANT_BOOL flag = VARIANT_FALSE;
};

inline constexpr std::size_t kMostParameters = 4;
using ArgumentValues = std::array<ArgumentValue, kMostParameters>;

/// One method of the public interface, as late-bound callers reach it.
struct MethodRow {
    DISPID id;
    const wchar_t* name;
    std::span<const ParameterRow> parameters;
    HRESULT (*call)(ITovar& object, ArgumentValues& arguments, VARIANT& result);
};

/// In the order of the interface.
[[nodiscard]] std::span<const MethodRow> methodTable() noexcept;

/// @return null for a number without a method
[[nodiscard]] const MethodRow* methodById(DISPID id) noexcept;

/// IDispatch::GetIDsOfNames over the table: names in any case; a parameter's number is its place.
HRESULT idsOfNames(std::span<LPOLESTR> names, DISPID* ids) noexcept;

}  // namespace tovar
