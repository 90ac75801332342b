#pragma once
#include <windows.h>

#include <oleauto.h>

#include "front/win32/method_table.h"

namespace tovar {

/// IDispatch::Invoke over the members of an object: takes arguments by value, by reference and by name, converts them,
/// calls the method and writes back what it changed.
/// @param exception    filled when the method itself fails (DISP_E_EXCEPTION); may be null
/// @param badArgument  place in `parameters` of the argument that did not fit; may be null
HRESULT invokeMethod(std::span<const DispatchPart> parts, DISPID id, REFIID iid, LCID locale, WORD flags,
                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept;

}  // namespace tovar
