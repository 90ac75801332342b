#pragma once
#include <span>

#include "front/win32/method_table.h"

namespace tovar {

/// Of ITovarArchive, in the order of the interface. Its numbers begin at 100, so that they stand beside those of
/// ITovar: scripts reach both through the object's one IDispatch.
[[nodiscard]] std::span<const MethodRow> archiveTable() noexcept;

}  // namespace tovar
