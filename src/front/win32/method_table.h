#pragma once
#include <windows.h>

#include <oleauto.h>

#include <array>
#include <span>

#include "front/win32/com_support.h"
#include "tovar_idl.h"

namespace tovar {

enum class ParameterType {
    Text,
    Handle,
    Boolean,
    Object,
    Long,
    LongInOut,
    Names,  ///< of files or members, in any of the forms that readNames takes; goes on as one text
};

struct ParameterRow {
    const wchar_t* name;
    ParameterType type;
    bool optional = false;
    LONG fallback = 0;  ///< of a Boolean or a number that the caller left out
};

/// One argument of a late-bound call, as its parameter wants it.
struct ArgumentValue {
    UniqueBstr text;
    ComOwner<IDispatch> object;
    LONG number = 0;
    VARIANT_BOOL flag = VARIANT_FALSE;
};

inline constexpr std::size_t kMostParameters = 6;
using ArgumentValues = std::array<ArgumentValue, kMostParameters>;

enum class MemberAccess {
    Call,  ///< a method, or the value of a property: script engines do not tell them apart
    Set,   ///< a property gets a value
};

/// One member of an interface, as late-bound callers reach it.
struct MethodRow {
    DISPID id;
    const wchar_t* name;
    std::span<const ParameterRow> parameters;
    HRESULT (*call)(IDispatch& object, ArgumentValues& arguments, VARIANT& result);
    MemberAccess access = MemberAccess::Call;
};

/// The members of one interface of an object, and the interface that their calls are given.
struct DispatchPart {
    std::span<const MethodRow> rows;
    IDispatch* object;
};

/// Of ITovar, in the order of the interface.
[[nodiscard]] std::span<const MethodRow> methodTable() noexcept;

/// IDispatch::GetIDsOfNames over all parts: names in any case; a parameter's number is its place.
HRESULT idsOfNames(std::span<const DispatchPart> parts, std::span<LPOLESTR> names, DISPID* ids) noexcept;

}  // namespace tovar
