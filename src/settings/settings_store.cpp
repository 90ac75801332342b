#include "settings/settings_store.h"

#include <exception>

#include "shell/paths.h"

namespace tovar {
namespace {

const wchar_t* const kSection = LR"(SOFTWARE\Vantrel\Config)";
const wchar_t* const kValueName = L"ArchiverSetting";

}  // namespace

void SettingsStore::loadSettings() {
    archiverSetting_ = readMask(hive::kCurrentUser);
    if (archiverSetting_ == kAllowAll) archiverSetting_ = readMask(hive::kLocalMachine);
}

void SettingsStore::saveSettings() {
    const auto number = static_cast<std::int32_t>(archiverSetting_);
    putSetting(hive::kCurrentUser, kSection, kValueName, registry_type::kNumber, number);
    putSetting(hive::kLocalMachine, kSection, kValueName, registry_type::kNumber, number);
}

RegistryValue SettingsStore::getSetting(RegistryHive hive, const std::wstring& section, const std::wstring& name,
                                        RegistryType type, const RegistryValue& fallback) {
    try {
        cRegistry registry(backend_);
        registry.ClassKey = hive;
        registry.SectionKey = section;
        registry.ValueKey = name;
        registry.ValueType = type;
        registry.Default = fallback;
        RegistryValue value = registry.Value();
        if (type == registry_type::kText || type == registry_type::kExpandableText) {
            if (auto* text = std::get_if<std::wstring>(&value)) *text = trimBlanks(CutAtNull(*text));
        }
        return value;
    } catch (const std::exception&) {
        return fallback;
    }
}

void SettingsStore::putSetting(RegistryHive hive, const std::wstring& section, const std::wstring& name,
                               RegistryType type, const RegistryValue& value) {
    try {
        cRegistry registry(backend_);
        registry.ClassKey = hive;
        registry.SectionKey = section;
        registry.ValueKey = name;
        registry.ValueType = type;
        registry.setValue(value);
    } catch (const std::exception&) {
        // An ordinary user cannot write for the machine: the setting is then kept for the user alone.
    }
}

ArchiveKind SettingsStore::readMask(RegistryHive hive) {
    const RegistryValue value = getSetting(hive, kSection, kValueName, registry_type::kNumber, -1);
    const auto* number = std::get_if<std::int32_t>(&value);
    return number == nullptr ? kAllowAll : static_cast<ArchiveKind>(*number);
}

}  // namespace tovar
