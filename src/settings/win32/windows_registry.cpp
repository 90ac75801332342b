#include "settings/win32/windows_registry.h"

#include <windows.h>

#include <memory>
#include <type_traits>

#include "shell/win32/handles.h"
#include "shell/win32/system_calls.h"

namespace tovar {
namespace {

constexpr DWORD kLongestKeyName = 255;  // of one key, without the NUL

HKEY hiveHandle(RegistryHive hive) noexcept {
    // Windows extends the sign where handles have 64 bits.
    return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(hive)));
}

class WindowsRegistryKey final : public RegistryKey {
public:
    explicit WindowsRegistryKey(UniqueKey key) : key_(std::move(key)) {}

    bool query(const std::wstring& name, RawRegistryValue& value) const override;
    bool set(const std::wstring& name, const RawRegistryValue& value) override;
    bool remove(const std::wstring& name) override;
    bool valueNames(std::vector<std::wstring>& names) const override;
    bool sectionNames(std::vector<std::wstring>& names) const override;

private:
    UniqueKey key_;
};

bool WindowsRegistryKey::query(const std::wstring& name, RawRegistryValue& value) const {
    if (!isSystemText(name)) return false;
    for (;;) {
        DWORD size = 0, type = 0;
        if (::RegQueryValueExW(key_.get(), name.c_str(), nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) {
            return false;
        }
        value.bytes.resize(size + 1);  // room for a byte, so that data() is never null
        size = static_cast<DWORD>(value.bytes.size());
        const LSTATUS status = ::RegQueryValueExW(key_.get(), name.c_str(), nullptr, &type, value.bytes.data(), &size);
        if (status == ERROR_MORE_DATA) continue;  // another program has just made it longer
        if (status != ERROR_SUCCESS) return false;
        value.bytes.resize(size);
        value.type = type;
        return true;
    }
}

bool WindowsRegistryKey::set(const std::wstring& name, const RawRegistryValue& value) {
    return isSystemText(name) && ::RegSetValueExW(key_.get(), name.c_str(), 0, value.type, value.bytes.data(),
                                                  static_cast<DWORD>(value.bytes.size())) == ERROR_SUCCESS;
}

bool WindowsRegistryKey::remove(const std::wstring& name) {
    return isSystemText(name) && ::RegDeleteValueW(key_.get(), name.c_str()) == ERROR_SUCCESS;
}

bool WindowsRegistryKey::valueNames(std::vector<std::wstring>& names) const {
    DWORD count = 0, longest = 0;
    if (::RegQueryInfoKeyW(key_.get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count, &longest, nullptr,
                           nullptr, nullptr) != ERROR_SUCCESS) {
        return false;
    }
    std::wstring buffer(static_cast<std::size_t>(longest) + 1, L'\0');
    for (DWORD index = 0; index < count; ++index) {
        auto length = static_cast<DWORD>(buffer.size());
        const LSTATUS status =
            ::RegEnumValueW(key_.get(), index, buffer.data(), &length, nullptr, nullptr, nullptr, nullptr);
        if (status == ERROR_NO_MORE_ITEMS) break;
        if (status != ERROR_SUCCESS) return false;
        names.emplace_back(buffer, 0, length);
    }
    return true;
}

bool WindowsRegistryKey::sectionNames(std::vector<std::wstring>& names) const {
    std::wstring buffer(kLongestKeyName + 1, L'\0');
    for (DWORD index = 0;; ++index) {
        auto length = static_cast<DWORD>(buffer.size());
        const LSTATUS status =
            ::RegEnumKeyExW(key_.get(), index, buffer.data(), &length, nullptr, nullptr, nullptr, nullptr);
        if (status == ERROR_NO_MORE_ITEMS) return true;
        if (status != ERROR_SUCCESS) return false;
        names.emplace_back(buffer, 0, length);
    }
}

}  // namespace

std::unique_ptr<RegistryKey> WindowsRegistry::open(RegistryHive hive, const std::wstring& section,
                                                   RegistryAccess access) {
    HKEY key = nullptr;
    const REGSAM rights = access == RegistryAccess::Read ? KEY_READ : KEY_ALL_ACCESS;
    if (!isSystemText(section) ||
        ::RegOpenKeyExW(hiveHandle(hive), section.c_str(), 0, rights, &key) != ERROR_SUCCESS) {
        return nullptr;
    }
    return std::make_unique<WindowsRegistryKey>(UniqueKey(key));
}

std::unique_ptr<RegistryKey> WindowsRegistry::create(RegistryHive hive, const std::wstring& section) {
    HKEY key = nullptr;
    if (!isSystemText(section) ||
        ::RegCreateKeyExW(hiveHandle(hive), section.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                          nullptr, &key, nullptr) != ERROR_SUCCESS) {
        return nullptr;
    }
    return std::make_unique<WindowsRegistryKey>(UniqueKey(key));
}

bool WindowsRegistry::removeKey(RegistryHive hive, const std::wstring& section) {
    return isSystemText(section) && !section.empty() &&
           ::RegDeleteKeyW(hiveHandle(hive), section.c_str()) == ERROR_SUCCESS;
}

}  // namespace tovar
