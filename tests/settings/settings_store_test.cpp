#include "settings/settings_store.h"

#include <gtest/gtest.h>

#include <ostream>
#include <stdexcept>

#include "settings/fakes/fake_registry.h"

namespace tovar {
namespace {

using Bytes = std::vector<std::uint8_t>;

const std::wstring kSection = LR"(SOFTWARE\Vantrel\Config)";
const std::wstring kName = L"ArchiverSetting";
constexpr ArchiveKind kAll = 0xFFFFFFFF;  // -1

class SettingsStoreTest : public testing::Test {
protected:
    void storeForUser(std::uint32_t mask) { backend.addNumber(hive::kCurrentUser, kSection, kName, mask); }
    void storeForMachine(std::uint32_t mask) { backend.addNumber(hive::kLocalMachine, kSection, kName, mask); }

    [[nodiscard]] ArchiveKind loaded() {
        store.loadSettings();
        return store.ArchiverSetting();
    }
    // The four bytes as stored; empty when there is no such value, or one of another type.
    [[nodiscard]] Bytes stored(RegistryHive hive) const {
        const auto* raw = backend.findValue(hive, kSection, kName);
        return raw == nullptr || raw->type != 4 ? Bytes{} : raw->bytes;
    }

    test::FakeRegistry backend;
    SettingsStore store{backend};
};

TEST_F(SettingsStoreTest, AllowsEverythingAtFirst) { EXPECT_EQ(store.ArchiverSetting(), kAll); }

TEST_F(SettingsStoreTest, AllowsEverythingWithoutAnySetting) { EXPECT_EQ(loaded(), kAll); }

TEST_F(SettingsStoreTest, TheUsersZeroWins) {
    storeForUser(0);
    storeForMachine(1023);
    EXPECT_EQ(loaded(), 0u);
}

TEST_F(SettingsStoreTest, TheUsersMinusOneCountsAsAbsent) {
    storeForUser(0xFFFFFFFF);
    storeForMachine(16);
    EXPECT_EQ(loaded(), 16u);
}

TEST_F(SettingsStoreTest, TheMachinesValueServesAUserWithoutOne) {
    storeForMachine(1023);
    EXPECT_EQ(loaded(), 1023u);
}

TEST_F(SettingsStoreTest, TheMachinesMinusOneIsTakenAsItIs) {
    storeForUser(0xFFFFFFFF);
    storeForMachine(0xFFFFFFFF);
    EXPECT_EQ(loaded(), kAll);
}

TEST_F(SettingsStoreTest, TheUsersHiveIsReadFirst) {
    storeForUser(5);
    store.loadSettings();
    EXPECT_EQ(backend.log, (std::vector<std::wstring>{LR"(open for reading SOFTWARE\Vantrel\Config)"}));
}

TEST_F(SettingsStoreTest, UnknownAndReservedBitsAreKept) {
    storeForUser(0x80000808);
    EXPECT_EQ(loaded(), 0x80000808u);
}

TEST_F(SettingsStoreTest, ClosedKeysReadAsAllowed) {
    storeForUser(1);
    storeForMachine(2);
    backend.denyReading(hive::kCurrentUser, kSection);
    backend.denyReading(hive::kLocalMachine, kSection);
    EXPECT_EQ(loaded(), kAll);
}

TEST_F(SettingsStoreTest, AClosedUserKeyReadsTheMachines) {
    storeForUser(1);
    storeForMachine(2);
    backend.denyReading(hive::kCurrentUser, kSection);
    EXPECT_EQ(loaded(), 2u);
}

TEST_F(SettingsStoreTest, AValueThatIsNoNumberCountsAsAbsent) {
    backend.addText(hive::kCurrentUser, kSection, kName, L"16");
    storeForMachine(32);
    EXPECT_EQ(loaded(), 32u);
    backend.addValue(hive::kLocalMachine, kSection, kName, {registry_type::kNumber, {1, 2}});
    EXPECT_EQ(loaded(), kAll);
}

struct BadValue {
    const char* name;
    RawRegistryValue raw;
};
std::ostream& operator<<(std::ostream& stream, const BadValue& each) { return stream << each.name; }
class BadSetting : public SettingsStoreTest, public testing::WithParamInterface<BadValue> {};

TEST_P(BadSetting, CountsAsAbsent) {
    backend.addValue(hive::kCurrentUser, kSection, kName, GetParam().raw);
    EXPECT_EQ(loaded(), kAll);
    storeForMachine(32);
    EXPECT_EQ(loaded(), 32u);
    backend.addValue(hive::kLocalMachine, kSection, kName, GetParam().raw);
    EXPECT_EQ(loaded(), kAll);
    store.saveSettings();
    EXPECT_EQ(stored(hive::kCurrentUser), (Bytes{0xFF, 0xFF, 0xFF, 0xFF})) << "what is saved is a number again";
}

INSTANTIATE_TEST_SUITE_P(
    Values, BadSetting,
    testing::Values(BadValue{"Text", {1, {'5', 0, 0, 0}}}, BadValue{"TextWithoutAnEnd", {1, {'5', 0}}},
                    BadValue{"HalfALetter", {1, {'5'}}}, BadValue{"EmptyText", {1, {}}},
                    BadValue{"ExpandableText", {2, {'5', 0, 0, 0}}}, BadValue{"Nothing", {0, {}}},
                    BadValue{"NothingWithBytes", {0, {5, 0, 0, 0}}}, BadValue{"NoBytes", {3, {}}},
                    BadValue{"ThreeBytes", {3, {5, 0, 0}}}, BadValue{"FourBytes", {3, {5, 0, 0, 0}}},
                    BadValue{"EightBytes", {3, {5, 0, 0, 0, 0, 0, 0, 0}}}, BadValue{"EmptyNumber", {4, {}}},
                    BadValue{"ShortNumber", {4, {5, 0, 0}}}, BadValue{"LongNumber", {4, {5, 0, 0, 0, 0}}},
                    BadValue{"BigEndianNumber", {5, {0, 0, 0, 5}}}, BadValue{"ManyTexts", {7, {'5', 0, 0, 0, 0, 0}}},
                    BadValue{"LargeNumber", {11, {5, 0, 0, 0, 0, 0, 0, 0}}},
                    BadValue{"UnknownType", {0xFFFFFFFF, {5, 0, 0, 0}}}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(SettingsStoreTest, LoadingReplacesAChangedMask) {
    storeForUser(48);
    store.setArchiverSetting(7);
    EXPECT_EQ(loaded(), 48u);
}

TEST_F(SettingsStoreTest, SavesForUserAndMachine) {
    store.setArchiverSetting(1023);
    store.saveSettings();
    EXPECT_EQ(stored(hive::kCurrentUser), (Bytes{0xFF, 0x03, 0, 0}));
    EXPECT_EQ(stored(hive::kLocalMachine), (Bytes{0xFF, 0x03, 0, 0}));
}

TEST_F(SettingsStoreTest, SavesMinusOneUnchanged) {
    store.saveSettings();
    EXPECT_EQ(stored(hive::kCurrentUser), (Bytes{0xFF, 0xFF, 0xFF, 0xFF}));
}

TEST_F(SettingsStoreTest, SavesForTheMachineWhenTheUsersKeyIsClosed) {
    backend.denyWriting(hive::kCurrentUser, kSection);
    store.setArchiverSetting(16);
    store.saveSettings();
    EXPECT_EQ(stored(hive::kCurrentUser), Bytes{});
    EXPECT_EQ(stored(hive::kLocalMachine), (Bytes{16, 0, 0, 0}));
}

TEST_F(SettingsStoreTest, SavesForTheUserWhenTheMachinesKeyIsClosed) {
    backend.denyWriting(hive::kLocalMachine, kSection);
    store.setArchiverSetting(16);
    store.saveSettings();
    EXPECT_EQ(stored(hive::kCurrentUser), (Bytes{16, 0, 0, 0}));
    EXPECT_EQ(stored(hive::kLocalMachine), Bytes{});
}

// A kind whose library is missing keeps its bit, and is usable once the library is there.
TEST_F(SettingsStoreTest, TheMaskKnowsNothingOfLibraries) {
    store.setArchiverSetting(kind::kZip | kind::kRar);
    store.saveSettings();
    EXPECT_EQ(loaded(), 48u);
}

TEST_F(SettingsStoreTest, GetSettingTrimsAndCutsTexts) {
    backend.addText(hive::kCurrentUser, L"S", L"T", std::wstring_view(L"  a b \0junk", 11));
    EXPECT_EQ(store.getSetting(hive::kCurrentUser, L"S", L"T", registry_type::kText, {}), RegistryValue(L"a b"));
    EXPECT_EQ(store.getSetting(hive::kCurrentUser, L"S", L"T", registry_type::kExpandableText, {}),
              RegistryValue(L"a b"));
}

TEST_F(SettingsStoreTest, GetSettingTrimsOnlyForTextTypes) {
    backend.addText(hive::kCurrentUser, L"S", L"T", L" a ");
    EXPECT_EQ(store.getSetting(hive::kCurrentUser, L"S", L"T", registry_type::kBinary, {}), RegistryValue(L" a "));
}

TEST_F(SettingsStoreTest, GetSettingGivesTheFallback) {
    EXPECT_EQ(store.getSetting(hive::kCurrentUser, L"S", L"N", registry_type::kNumber, 5), RegistryValue(5));
    EXPECT_EQ(store.getSetting(hive::kCurrentUser, L"S", L"T", registry_type::kText, std::wstring(L" x ")),
              RegistryValue(L"x"));
}

TEST_F(SettingsStoreTest, PutSettingWritesAndSwallowsFailures) {
    store.putSetting(hive::kCurrentUser, L"S", L"T", registry_type::kText, std::wstring(L"a"));
    EXPECT_EQ(backend.findValue(hive::kCurrentUser, L"S", L"T")->bytes, (Bytes{'a', 0, 0, 0}));
    backend.denyWriting(hive::kCurrentUser, L"Closed");
    EXPECT_NO_THROW(store.putSetting(hive::kCurrentUser, L"Closed", L"T", registry_type::kNumber, 1));
    EXPECT_EQ(backend.findKey(hive::kCurrentUser, L"Closed"), nullptr);
}

// A registry that fails in ways of its own is no reason for the host to fall.
TEST(SettingsStore, SwallowsEveryException) {
    struct ThrowingRegistry final : RegistryBackend {
        std::unique_ptr<RegistryKey> open(RegistryHive, const std::wstring&, RegistryAccess) override {
            throw std::runtime_error("open");
        }
        std::unique_ptr<RegistryKey> create(RegistryHive, const std::wstring&) override {
            throw std::runtime_error("create");
        }
        bool removeKey(RegistryHive, const std::wstring&) override { return false; }
    } backend;
    SettingsStore store(backend);
    store.setArchiverSetting(1);
    EXPECT_NO_THROW(store.saveSettings());
    EXPECT_NO_THROW(store.loadSettings());
    EXPECT_EQ(store.ArchiverSetting(), kAll);
}

}  // namespace
}  // namespace tovar
