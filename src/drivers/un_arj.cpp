#include "drivers/un_arj.h"

namespace tovar {

constinit const DriverDescription cUnARJ::kDescription{
    .library = L"UnArj32j.dll",
    .prefix = "Unarj",
    .messageTitle = L"ARJ Message",
    .minimumVersion = 12,
    .extract = {.base = L" x -i- -y+ -!@",
                .keepFolder = L" x",
                .flat = L" e",
                .overwrite = L" -y+",
                .skip = L" -y-",
                .ask = L" -y-"},
};

cUnARJ::cUnARJ(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional)
    : CommonDriver(kDescription, library, messages, regional) {}

}  // namespace tovar
