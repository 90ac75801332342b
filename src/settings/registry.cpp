#include "settings/registry.h"

#include <array>
#include <utility>

namespace tovar {
namespace {

// A user reads "HKEY_CURRENT_USER" sooner than -2147483647.
std::wstring hiveName(RegistryHive number) {
    static constexpr std::array<std::pair<RegistryHive, std::wstring_view>, 4> kNames = {{
        {hive::kClassesRoot, L"HKEY_CLASSES_ROOT"},
        {hive::kCurrentUser, L"HKEY_CURRENT_USER"},
        {hive::kLocalMachine, L"HKEY_LOCAL_MACHINE"},
        {hive::kUsers, L"HKEY_USERS"},
    }};
    for (const auto& [known, name] : kNames) {
        if (known == number) return std::wstring(name);
    }
    return std::to_wstring(static_cast<std::int32_t>(number));
}

}  // namespace

bool cRegistry::KeyExists() const { return backend_.open(ClassKey, SectionKey, RegistryAccess::Read) != nullptr; }

void cRegistry::CreateKey() {
    if (!backend_.create(ClassKey, SectionKey)) {
        throw RegistryError(L"Failed to create registry Key: '" + SectionKey + L"'");
    }
}

void cRegistry::DeleteKey() {
    // No section at all would be the hive itself.
    if (SectionKey.empty() || !backend_.removeKey(ClassKey, SectionKey)) {
        throw RegistryError(L"Failed to delete registry Key: '" + hiveName(ClassKey) + L"',Section: '" + SectionKey +
                            L"'");
    }
}

void cRegistry::DeleteValue() {
    const std::wstring place = hiveName(ClassKey) + L"',Section: '" + SectionKey;
    const auto key = backend_.open(ClassKey, SectionKey, RegistryAccess::All);
    if (!key) throw RegistryError(L"Failed to open key '" + place + L"' for delete access");
    if (!key->remove(ValueKey)) {
        throw RegistryError(L"Failed to delete registry Key: '" + place + L"',Key: '" + ValueKey + L"'");
    }
}

RegistryValue cRegistry::Value() const {
    RawRegistryValue raw;
    const auto key = backend_.open(ClassKey, SectionKey, RegistryAccess::Read);
    if (!key || !key->query(ValueKey, raw)) return Default;
    return fromRaw(raw).value_or(Default);
}

void cRegistry::setValue(const RegistryValue& value) {
    if (const auto raw = toRaw(value, ValueType)) {
        const auto key = backend_.create(ClassKey, SectionKey);
        if (key && key->set(ValueKey, *raw)) return;
    }
    throw RegistryError(L"Failed to set registry value Key: '" + hiveName(ClassKey) + L"',Section: '" + SectionKey +
                        L"',Key: '" + ValueKey + L"' to value: '" + valueText(value) + L"'");
}

bool cRegistry::EnumerateValues(std::vector<std::wstring>& names) const {
    names.clear();
    const auto key = backend_.open(ClassKey, SectionKey, RegistryAccess::Read);
    if (key && key->valueNames(names)) return true;
    names.clear();
    return false;
}

bool cRegistry::EnumerateSections(std::vector<std::wstring>& names) const {
    names.clear();
    const auto key = backend_.open(ClassKey, SectionKey, RegistryAccess::Read);
    if (key && key->sectionNames(names)) return true;
    names.clear();
    return false;
}

void cRegistry::CreateEXEAssociation(const ExeAssociation& association) {
    const std::wstring command = L"\"" + association.program + L"\"";
    setClassText(L"." + association.extension, association.className);
    setClassText(association.className, association.classDescription);
    const auto addVerb = [&](const std::wstring& verb, const std::wstring& text, const std::wstring& arguments) {
        setClassText(association.className + LR"(\shell\)" + verb, text);
        setClassText(association.className + LR"(\shell\)" + verb + LR"(\command)", command + arguments);
    };
    addVerb(L"open", L"&Open", L" \"%1\"");
    if (association.print) addVerb(L"print", L"&Print", L" /p \"%1\"");
    if (association.add) addVerb(L"add", L"&Install " + association.installText, L" /a \"%1\"");
    if (association.create) addVerb(L"new", L"&New", L" /n \"%1\"");
    setClassText(association.className + LR"(\DefaultIcon)",
                 association.program + L"," + std::to_wstring(association.iconIndex));
    className_ = association.className;
}

void cRegistry::CreateAdditionalEXEAssociations(std::span<const std::wstring> verbs) {
    if (verbs.size() % 3 != 0) {
        throw RegistryError(
            L"Invalid parameter list passed to CreateAdditionalEXEAssociations - expected Name/Text/Command");
    }
    if (className_.empty()) {
        throw RegistryError(L"Error - attempt to create additional associations before class defined.");
    }
    for (; !verbs.empty(); verbs = verbs.subspan(3)) {
        const std::wstring section = className_ + LR"(\shell\)" + verbs[0];
        setClassText(section, verbs[1]);
        setClassText(section + LR"(\command)", verbs[2]);
    }
}

void cRegistry::setClassText(const std::wstring& section, const std::wstring& text) {
    cRegistry target(backend_);
    target.ClassKey = hive::kClassesRoot;
    target.SectionKey = section;
    target.setValue(text);
}

}  // namespace tovar
