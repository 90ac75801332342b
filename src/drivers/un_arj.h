#pragma once
#include "drivers/common_driver.h"

namespace tovar {

/// ARJ, by "UnArj32j.dll".
class cUnARJ final : public CommonDriver {
public:
    static const DriverDescription kDescription;

    cUnARJ(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional);

    /// The check mode, under the name that it has for this library.
    [[nodiscard]] std::int16_t TestMode() const noexcept { return CheckMode(); }
    void setTestMode(std::int16_t mode) noexcept { setCheckMode(mode); }
};

}  // namespace tovar
