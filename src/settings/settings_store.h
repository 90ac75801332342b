#pragma once
#include <cstdint>
#include <string>

#include "settings/archive_kind.h"
#include "settings/registry.h"

namespace tovar {

/// The one setting that is kept: which archiver libraries the user allows. One object serves the whole process. No
/// registry failure shows here: it reads as the default, or the write is left out.
class SettingsStore {
public:
    /// Everything allowed, as without any setting (-1 in the registry).
    static constexpr ArchiveKind kAllowAll = 0xFFFFFFFF;

    /// The backend must outlive the object.
    explicit SettingsStore(RegistryBackend& backend) : backend_(backend) {}

    /// The allow-mask as loaded or last set. What may be used is this AND the availability mask.
    [[nodiscard]] ArchiveKind ArchiverSetting() const noexcept { return archiverSetting_; }
    void setArchiverSetting(ArchiveKind mask) noexcept { archiverSetting_ = mask; }

    /// Reads the mask: the user's own, and the machine's when that is missing or -1.
    void loadSettings();
    /// Writes the mask for the user and for the machine.
    void saveSettings();

    /// @return the value, or `fallback` when it cannot be read; a text, when a text type is asked for, without blanks
    ///         at its ends and cut at its first NUL
    [[nodiscard]] RegistryValue getSetting(RegistryHive hive, const std::wstring& section, const std::wstring& name,
                                           RegistryType type, const RegistryValue& fallback);
    void putSetting(RegistryHive hive, const std::wstring& section, const std::wstring& name, RegistryType type,
                    const RegistryValue& value);

private:
    [[nodiscard]] ArchiveKind readMask(RegistryHive hive);

    RegistryBackend& backend_;
    ArchiveKind archiverSetting_ = kAllowAll;
};

}  // namespace tovar
