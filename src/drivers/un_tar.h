#pragma once
#include "drivers/common_driver.h"

namespace tovar {

/// TAR, alone or compressed, and single files in GZ, BZ2 and Z; by "Tar32.dll".
class cUnTar final : public CommonDriver {
public:
    static const DriverDescription kDescription;

    cUnTar(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional);

    /// The check mode, under the name that it has for this library.
    [[nodiscard]] std::int16_t TestMode() const noexcept { return CheckMode(); }
    void setTestMode(std::int16_t mode) noexcept { setCheckMode(mode); }
};

}  // namespace tovar
