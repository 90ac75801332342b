#pragma once
#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "front/fakes/journal.h"
#include "settings/registry_backend.h"

namespace tovar::test {

/// A registry that holds one number a hive, whatever its name. Reads and writes are journalled.
class FakeAllowMask final : public RegistryBackend {
public:
    explicit FakeAllowMask(Journal& journal) : journal_(journal) {}

    std::map<RegistryHive, std::uint32_t> masks;

    std::unique_ptr<RegistryKey> open(RegistryHive hive, const std::wstring&, RegistryAccess) override {
        return masks.contains(hive) ? std::make_unique<Key>(*this, hive) : nullptr;
    }
    std::unique_ptr<RegistryKey> create(RegistryHive hive, const std::wstring&) override {
        return std::make_unique<Key>(*this, hive);
    }
    bool removeKey(RegistryHive, const std::wstring&) override { return false; }

private:
    class Key final : public RegistryKey {
    public:
        Key(FakeAllowMask& owner, RegistryHive hive) : owner_(owner), hive_(hive) {}

        bool query(const std::wstring& name, RawRegistryValue& value) const override {
            owner_.journal_.push_back(L"read " + name);
            const std::uint32_t mask = owner_.masks.at(hive_);
            value.type = registry_type::kNumber;
            value.bytes.clear();
            for (int shift = 0; shift < 32; shift += 8) {
                value.bytes.push_back(static_cast<std::uint8_t>(mask >> shift));
            }
            return true;
        }
        bool set(const std::wstring& name, const RawRegistryValue& value) override {
            owner_.journal_.push_back(L"write " + name);
            std::uint32_t mask = 0;
            for (std::size_t i = 4; i-- > 0;) mask = mask << 8 | value.bytes.at(i);
            owner_.masks[hive_] = mask;
            return true;
        }
        bool remove(const std::wstring&) override { return false; }
        bool valueNames(std::vector<std::wstring>&) const override { return false; }
        bool sectionNames(std::vector<std::wstring>&) const override { return false; }

    private:
        FakeAllowMask& owner_;
        RegistryHive hive_;
    };

    Journal& journal_;
};

}  // namespace tovar::test
