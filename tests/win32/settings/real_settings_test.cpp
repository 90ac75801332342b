#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "settings/settings_store.h"
#include "settings/win32/windows_registry.h"

namespace tovar {
namespace {

const wchar_t* const kSection = LR"(SOFTWARE\Vantrel\Config)";
const wchar_t* const kValue = L"ArchiverSetting";

// Takes the real setting of one hive away, and puts back what was there.
class SettingGuard {
public:
    explicit SettingGuard(HKEY hive) : hive_(hive), before_(read()) { remove(); }
    ~SettingGuard() {
        remove();
        if (before_) write(*before_);
    }
    SettingGuard(const SettingGuard&) = delete;
    SettingGuard& operator=(const SettingGuard&) = delete;

    [[nodiscard]] std::optional<DWORD> read() const {
        DWORD number = 0, size = sizeof number;
        const LSTATUS status = ::RegGetValueW(hive_, kSection, kValue, RRF_RT_REG_DWORD, nullptr, &number, &size);
        return status == ERROR_SUCCESS ? std::optional(number) : std::nullopt;
    }
    void write(DWORD number) const {
        EXPECT_EQ(::RegSetKeyValueW(hive_, kSection, kValue, REG_DWORD, &number, sizeof number), ERROR_SUCCESS);
    }
    void write(DWORD type, const std::vector<std::uint8_t>& bytes) const {
        EXPECT_EQ(::RegSetKeyValueW(hive_, kSection, kValue, type, bytes.data(), static_cast<DWORD>(bytes.size())),
                  ERROR_SUCCESS);
    }
    // Keys that hold nothing else go too.
    void remove() const {
        ::RegDeleteKeyValueW(hive_, kSection, kValue);
        removeIfEmpty(kSection);
        removeIfEmpty(LR"(SOFTWARE\Vantrel)");
    }

private:
    void removeIfEmpty(const wchar_t* section) const {
        HKEY key = nullptr;
        DWORD keys = 0, values = 0;
        if (::RegOpenKeyExW(hive_, section, 0, KEY_READ, &key) != ERROR_SUCCESS) return;
        const LSTATUS status = ::RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values,
                                                  nullptr, nullptr, nullptr, nullptr);
        ::RegCloseKey(key);
        if (status == ERROR_SUCCESS && keys == 0 && values == 0) ::RegDeleteKeyW(hive_, section);
    }

    HKEY hive_;
    std::optional<DWORD> before_;
};

class RealSettingsTest : public testing::Test {
protected:
    [[nodiscard]] ArchiveKind loaded() {
        store.loadSettings();
        return store.ArchiverSetting();
    }

    SettingGuard user{HKEY_CURRENT_USER}, machine{HKEY_LOCAL_MACHINE};
    WindowsRegistry backend;
    SettingsStore store{backend};
};

TEST_F(RealSettingsTest, EverythingIsAllowedWithoutAnySetting) { EXPECT_EQ(loaded(), 0xFFFFFFFFu); }

TEST_F(RealSettingsTest, TheUsersZeroWins) {
    user.write(0);
    machine.write(1023);
    EXPECT_EQ(loaded(), 0u);
}

TEST_F(RealSettingsTest, TheUsersMinusOneCountsAsAbsent) {
    user.write(0xFFFFFFFF);
    machine.write(16);
    EXPECT_EQ(loaded(), 16u);
}

struct BadValue {
    const char* name;
    DWORD type;
    std::vector<std::uint8_t> bytes;
};
std::ostream& operator<<(std::ostream& stream, const BadValue& each) { return stream << each.name; }
class BadRealSetting : public RealSettingsTest, public testing::WithParamInterface<BadValue> {};

TEST_P(BadRealSetting, CountsAsAbsentAndIsReplaced) {
    user.write(GetParam().type, GetParam().bytes);
    machine.write(16);
    EXPECT_EQ(loaded(), 16u);
    machine.write(GetParam().type, GetParam().bytes);
    EXPECT_EQ(loaded(), 0xFFFFFFFFu);
    store.setArchiverSetting(7);
    store.saveSettings();
    EXPECT_EQ(user.read(), 7u);
    EXPECT_EQ(machine.read(), 7u);
}

INSTANTIATE_TEST_SUITE_P(Values, BadRealSetting,
                         testing::Values(BadValue{"Text", REG_SZ, {'5', 0, 0, 0}}, BadValue{"HalfALetter", REG_SZ, {5}},
                                         BadValue{"EmptyText", REG_SZ, {}}, BadValue{"NoBytes", REG_BINARY, {}},
                                         BadValue{"ThreeBytes", REG_BINARY, {5, 0, 0}},
                                         BadValue{"EightBytes", REG_BINARY, {5, 0, 0, 0, 0, 0, 0, 0}},
                                         BadValue{"LargeNumber", REG_QWORD, {5, 0, 0, 0, 0, 0, 0, 0}},
                                         BadValue{"EmptyNumber", REG_DWORD, {}},
                                         BadValue{"ShortNumber", REG_DWORD, {5, 0}},
                                         BadValue{"LongValue", REG_BINARY, std::vector<std::uint8_t>(1 << 20, 5)}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(RealSettingsTest, SavesForUserAndMachine) {
    store.setArchiverSetting(0x7F7);
    store.saveSettings();
    EXPECT_EQ(user.read(), 0x7F7u);
    EXPECT_EQ(machine.read(), 0x7F7u);
}

TEST_F(RealSettingsTest, ReturnsWhatWasSaved) {
    store.setArchiverSetting(kind::kZip | kind::kAce);
    store.saveSettings();
    store.setArchiverSetting(0);
    EXPECT_EQ(loaded(), 1040u);
}

}  // namespace
}  // namespace tovar
