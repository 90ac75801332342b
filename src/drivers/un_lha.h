#pragma once
#include "drivers/common_driver.h"

namespace tovar {

/// LZH, by "UnLha32.dll".
class cUnLHA final : public CommonDriver {
public:
    static const DriverDescription kDescription;

    cUnLHA(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional);
};

}  // namespace tovar
