#pragma once
#include <windows.h>

#include <oleauto.h>

#include "front/win32/com_support.h"

namespace tovar {

/// @return full path of the module that this code was linked into
[[nodiscard]] std::wstring modulePath();

/// Loads a type description from the type library inside the component; nothing has to be registered for it.
/// @param id  of an interface or a class
/// @return null with the error in `result` when it cannot be had
[[nodiscard]] ComOwner<ITypeInfo> loadTypeInfo(REFGUID id, HRESULT& result);

/// GetTypeInfo of an object.
/// @param info  where the description goes; null is an error
[[nodiscard]] HRESULT handOutTypeInfo(REFGUID id, ITypeInfo** info) noexcept;

}  // namespace tovar
