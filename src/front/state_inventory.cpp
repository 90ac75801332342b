#include "front/state_inventory.h"

#include "front/kind_table.h"

namespace tovar {

std::wstring StateInventory::libraryOf(ArchiveKind use) const {
    for (const KindRow& row : kindTable()) {
        if (((row.bit | row.creationBit) & use) != 0) return std::wstring(row.library);
    }
    return {};
}

std::wstring StateInventory::versionOf(ArchiveKind use) const {
    const auto found = state_.versions.find(use);
    return found == state_.versions.end() ? std::wstring() : found->second;
}

}  // namespace tovar
