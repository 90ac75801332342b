#pragma once
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "settings/registry_backend.h"
#include "settings/registry_text.h"
#include "shell/paths.h"

namespace tovar::test {

/// A registry in memory, with the habits of Windows: case does not matter, a key with keys below cannot be deleted, a
/// new key comes with those above it. Keys can be closed to readers or writers; open keys are counted.
class FakeRegistry final : public RegistryBackend {
public:
    using Place = std::pair<RegistryHive, std::wstring>;  // hive and section, the latter in upper case

    struct Value {
        std::wstring name;
        RawRegistryValue raw;
    };
    struct Key {
        std::wstring name;                     // the last part of the section, as it was written
        std::map<std::wstring, Value> values;  // by name in upper case
    };

    std::set<Place> unreadable, unwritable;  // filled by denyReading and denyWriting
    int openKeys = 0;
    std::vector<std::wstring> log;  // "open", "create", "set", "remove" and "removeKey", a blank, and of what

    void addKey(RegistryHive hive, const std::wstring& section) {
        for (std::size_t end = 0; end != section.npos;) {
            end = section.find(L'\\', end + 1);
            const std::wstring above = section.substr(0, end);
            keys_.try_emplace(place(hive, above), Key{FileNamePart(above), {}});
        }
    }
    void addValue(RegistryHive hive, const std::wstring& section, const std::wstring& name, RawRegistryValue raw) {
        addKey(hive, section);
        keys_.at(place(hive, section)).values[upperCase(name)] = {name, std::move(raw)};
    }
    void addNumber(RegistryHive hive, const std::wstring& section, const std::wstring& name, std::uint32_t number) {
        std::vector<std::uint8_t> bytes;
        for (unsigned shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<std::uint8_t>(number >> shift));
        addValue(hive, section, name, {registry_type::kNumber, bytes});
    }
    void addText(RegistryHive hive, const std::wstring& section, const std::wstring& name, std::wstring_view text) {
        addValue(hive, section, name, {registry_type::kText, toRegistryText(text)});
    }
    void denyReading(RegistryHive hive, const std::wstring& section) { unreadable.insert(place(hive, section)); }
    void denyWriting(RegistryHive hive, const std::wstring& section) { unwritable.insert(place(hive, section)); }

    /// Null when there is no such key or value.
    [[nodiscard]] const Key* findKey(RegistryHive hive, const std::wstring& section) const {
        const auto found = keys_.find(place(hive, section));
        return found == keys_.end() ? nullptr : &found->second;
    }
    [[nodiscard]] const RawRegistryValue* findValue(RegistryHive hive, const std::wstring& section,
                                                    const std::wstring& name) const {
        const Key* key = findKey(hive, section);
        if (!key || !key->values.contains(upperCase(name))) return nullptr;
        return &key->values.at(upperCase(name)).raw;
    }

    // RegistryBackend
    [[nodiscard]] std::unique_ptr<RegistryKey> open(RegistryHive hive, const std::wstring& section,
                                                    RegistryAccess access) override {
        log.push_back((access == RegistryAccess::Read ? L"open for reading " : L"open ") + section);
        const bool denied = (access == RegistryAccess::Read ? unreadable : unwritable).contains(place(hive, section));
        if (denied || !findKey(hive, section)) return nullptr;
        return std::make_unique<OpenKey>(*this, place(hive, section), access);
    }
    [[nodiscard]] std::unique_ptr<RegistryKey> create(RegistryHive hive, const std::wstring& section) override {
        log.push_back(L"create " + section);
        if (unwritable.contains(place(hive, section))) return nullptr;
        addKey(hive, section);
        return std::make_unique<OpenKey>(*this, place(hive, section), RegistryAccess::All);
    }
    bool removeKey(RegistryHive hive, const std::wstring& section) override {
        log.push_back(L"removeKey " + section);
        const Place where = place(hive, section);
        if (unwritable.contains(where) || !keys_.contains(where)) return false;
        if (const auto next = keys_.upper_bound({hive, where.second + L'\\'});
            next != keys_.end() && next->first.first == hive && next->first.second.starts_with(where.second + L'\\')) {
            return false;
        }
        return keys_.erase(where) == 1;
    }

    /// Makes every write into an opened key fail.
    bool failSet = false;

private:
    class OpenKey final : public RegistryKey {
    public:
        OpenKey(FakeRegistry& registry, Place where, RegistryAccess access)
            : registry_(registry), where_(std::move(where)), access_(access) {
            ++registry_.openKeys;
        }
        ~OpenKey() override { --registry_.openKeys; }
        OpenKey(const OpenKey&) = delete;
        OpenKey& operator=(const OpenKey&) = delete;

        bool query(const std::wstring& name, RawRegistryValue& value) const override {
            const auto found = key().values.find(upperCase(name));
            if (found == key().values.end()) return false;
            value = found->second.raw;
            return true;
        }
        bool set(const std::wstring& name, const RawRegistryValue& value) override {
            registry_.log.push_back(L"set " + name);
            if (access_ != RegistryAccess::All || registry_.failSet) return false;
            key().values[upperCase(name)] = {name, value};
            return true;
        }
        bool remove(const std::wstring& name) override {
            registry_.log.push_back(L"remove " + name);
            return access_ == RegistryAccess::All && key().values.erase(upperCase(name)) == 1;
        }
        bool valueNames(std::vector<std::wstring>& names) const override {
            for (const auto& [unused, value] : key().values) names.push_back(value.name);
            return true;
        }
        bool sectionNames(std::vector<std::wstring>& names) const override {
            const std::wstring above = where_.second + L'\\';
            for (const auto& [where, key] : registry_.keys_) {
                const bool below = where.first == where_.first && where.second.starts_with(above);
                if (below && where.second.find(L'\\', above.size()) == above.npos) names.push_back(key.name);
            }
            return true;
        }

    private:
        [[nodiscard]] Key& key() const { return registry_.keys_.at(where_); }

        FakeRegistry& registry_;
        Place where_;
        RegistryAccess access_;
    };

    static Place place(RegistryHive hive, const std::wstring& section) { return {hive, upperCase(section)}; }

    std::map<Place, Key> keys_;
};

}  // namespace tovar::test
