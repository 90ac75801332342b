#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/registry_backend.h"
#include "settings/registry_error.h"
#include "settings/registry_value.h"

namespace tovar {

/// How files with an extension are opened by a program.
struct ExeAssociation {
    std::wstring program;    ///< full path
    std::wstring className;  ///< such as "Vantrel.Archive"
    std::wstring classDescription;
    std::wstring extension;    ///< without "."
    bool print = false;        ///< program /p "file"
    bool add = false;          ///< program /a "file"
    std::wstring installText;  ///< what stands behind "&Install " in the menu; with `add`
    bool create = false;       ///< program /n "file"
    std::int32_t iconIndex = 0;
};

/// Every access of the component to the registry. The selectors say where; the operations work there. All but the
/// readers throw RegistryError when they fail.
class cRegistry {
public:
    /// The backend must outlive the object.
    explicit cRegistry(RegistryBackend& backend) : backend_(backend) {}

    // The selectors.
    RegistryHive ClassKey = hive::kCurrentUser;
    std::wstring SectionKey;                        ///< path of the key below the hive
    std::wstring ValueKey;                          ///< name of the value; empty for the key's default value
    RegistryType ValueType = registry_type::kText;  ///< what a written value becomes
    RegistryValue Default;                          ///< what a value that cannot be read reads as

    [[nodiscard]] bool KeyExists() const;
    void CreateKey();
    /// Deletes a key that has no keys below.
    void DeleteKey();
    void DeleteValue();

    /// Reads by the type that the registry holds: REG_SZ and REG_EXPAND_SZ as text without the terminating NUL (names
    /// of environment variables as they stand), REG_DWORD as number, everything else as bytes.
    [[nodiscard]] RegistryValue Value() const;
    /// Writes by ValueType; the key is created where missing. A text with two or more "%" becomes REG_EXPAND_SZ.
    void setValue(const RegistryValue& value);

    /// Lists the value names. @return false and no names when the key cannot be read
    bool EnumerateValues(std::vector<std::wstring>& names) const;
    /// Lists the names of the keys directly below. @return false and no names when the key cannot be read
    bool EnumerateSections(std::vector<std::wstring>& names) const;

    /// Registers a file type under HKEY_CLASSES_ROOT. The selectors stay as they are.
    void CreateEXEAssociation(const ExeAssociation& association);
    /// Adds verbs to the class that CreateEXEAssociation made.
    /// @param verbs  Name, Text, Command; Name, Text, Command; ...
    void CreateAdditionalEXEAssociations(std::span<const std::wstring> verbs);

private:
    void setClassText(const std::wstring& section, const std::wstring& text);

    RegistryBackend& backend_;
    std::wstring className_;
};

}  // namespace tovar
