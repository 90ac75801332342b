#pragma once
#include <functional>
#include <string>
#include <utility>

#include "front/ports.h"
#include "settings/archiver_inventory.h"
#include "settings/settings_store.h"

namespace tovar {

class fConfig;

/// The configuration dialog over the window that its user works in.
class WindowsConfiguration final : public ConfigurationWindow {
public:
    /// The first two outlive the object.
    /// @param fontName  gives the face name that the host wants at the time; empty = none
    WindowsConfiguration(SettingsStore& settings, ArchiverInventory& inventory, std::function<std::wstring()> fontName)
        : settings_(settings), inventory_(inventory), fontName_(std::move(fontName)) {}

    void showModal() override;
    void close() noexcept override;
    void bringToFront() noexcept override;

private:
    SettingsStore& settings_;
    ArchiverInventory& inventory_;
    std::function<std::wstring()> fontName_;
    fConfig* shown_ = nullptr;
};

}  // namespace tovar
