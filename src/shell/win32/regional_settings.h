#pragma once
#include "shell/regional.h"

namespace tovar {

/// The regional settings of the user as the system has them now; what cannot be asked keeps its default.
[[nodiscard]] RegionalSettings loadRegionalSettings();

}  // namespace tovar
