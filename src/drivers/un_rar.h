#pragma once
#include "drivers/common_driver.h"

namespace tovar {

/// RAR, by "UnRar32.dll".
class cUnRAR final : public CommonDriver {
public:
    static const DriverDescription kDescription;

    cUnRAR(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional);
};

}  // namespace tovar
