#pragma once
#include "drivers/archiver_libraries.h"
#include "front/plugin_state.h"
#include "settings/archiver_inventory.h"

namespace tovar {

/// What the configuration dialog sees of the shared state and the kind table.
class StateInventory final : public ArchiverInventory {
public:
    /// Both outlive the object.
    StateInventory(PluginState& state, const ArchiverLibraries& libraries) : state_(state), libraries_(libraries) {}

    [[nodiscard]] std::wstring libraryOf(ArchiveKind use) const override;
    [[nodiscard]] std::wstring versionOf(ArchiveKind use) const override;
    [[nodiscard]] std::wstring pathOf(ArchiveKind use) const override { return libraries_.pathOf(libraryOf(use)); }
    [[nodiscard]] ArchiveKind available() const override { return state_.availability; }
    void setEffective(ArchiveKind mask) override { state_.effective = mask; }

private:
    PluginState& state_;
    const ArchiverLibraries& libraries_;
};

}  // namespace tovar
