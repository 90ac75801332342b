#pragma once
#include "drivers/common_driver.h"

namespace tovar {

/// CAB, by "Cab32.dll". The library has cursor functions that are never called.
class cUnCab final : public CommonDriver {
public:
    static const DriverDescription kDescription;

    cUnCab(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional);
};

}  // namespace tovar
