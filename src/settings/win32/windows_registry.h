#pragma once
#include "settings/registry_backend.h"

namespace tovar {

/// The registry of Windows.
class WindowsRegistry final : public RegistryBackend {
public:
    [[nodiscard]] std::unique_ptr<RegistryKey> open(RegistryHive hive, const std::wstring& section,
                                                    RegistryAccess access) override;
    [[nodiscard]] std::unique_ptr<RegistryKey> create(RegistryHive hive, const std::wstring& section) override;
    bool removeKey(RegistryHive hive, const std::wstring& section) override;
};

}  // namespace tovar
