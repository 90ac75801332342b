#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tovar {

/// A hive, by the number that Windows gives its handle.
using RegistryHive = std::uint32_t;

namespace hive {
inline constexpr RegistryHive kClassesRoot = 0x80000000;
inline constexpr RegistryHive kCurrentUser = 0x80000001;
inline constexpr RegistryHive kLocalMachine = 0x80000002;
inline constexpr RegistryHive kUsers = 0x80000003;
}  // namespace hive

/// Types of registry values, numbered as Windows does.
using RegistryType = std::uint32_t;

namespace registry_type {
inline constexpr RegistryType kText = 1;            ///< REG_SZ
inline constexpr RegistryType kExpandableText = 2;  ///< REG_EXPAND_SZ
inline constexpr RegistryType kBinary = 3;          ///< REG_BINARY
inline constexpr RegistryType kNumber = 4;          ///< REG_DWORD, 32 bits
}  // namespace registry_type

/// A value as the registry holds it: numbers little-endian, texts in UTF-16LE, mostly with a NUL at their end.
struct RawRegistryValue {
    RegistryType type = 0;
    std::vector<std::uint8_t> bytes;
};

/// An opened key; closed with the object. Each call answers whether it worked.
class RegistryKey {
public:
    virtual ~RegistryKey() = default;
    virtual bool query(const std::wstring& name, RawRegistryValue& value) const = 0;
    virtual bool set(const std::wstring& name, const RawRegistryValue& value) = 0;
    virtual bool remove(const std::wstring& name) = 0;
    /// Appends the names of all values, or of all keys directly below.
    virtual bool valueNames(std::vector<std::wstring>& names) const = 0;
    virtual bool sectionNames(std::vector<std::wstring>& names) const = 0;
};

enum class RegistryAccess { Read, All };

/// The registry of the system, or another store of that shape.
class RegistryBackend {
public:
    virtual ~RegistryBackend() = default;

    /// Opens a key. @return null when that fails
    [[nodiscard]] virtual std::unique_ptr<RegistryKey> open(RegistryHive hive, const std::wstring& section,
                                                            RegistryAccess access) = 0;
    /// Opens a key with all access; creates it, and what is missing above it. @return null when that fails
    [[nodiscard]] virtual std::unique_ptr<RegistryKey> create(RegistryHive hive, const std::wstring& section) = 0;

    /// Deletes a key that has no keys below. @return whether it is gone
    virtual bool removeKey(RegistryHive hive, const std::wstring& section) = 0;
};

}  // namespace tovar
