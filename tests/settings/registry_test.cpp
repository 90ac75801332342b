#include "settings/registry.h"

#include <gtest/gtest.h>

#include "settings/fakes/fake_registry.h"

namespace tovar {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Names = std::vector<std::wstring>;

const std::wstring kSection = LR"(SOFTWARE\Test)";

class RegistryTest : public testing::Test {
protected:
    RegistryTest() {
        registry.ClassKey = hive::kCurrentUser;
        registry.SectionKey = kSection;
        registry.ValueKey = L"Name";
    }
    ~RegistryTest() override { EXPECT_EQ(backend.openKeys, 0) << "a key was left open"; }

    template <class Action>
    static void expectError(Action action, const std::wstring& description) {
        try {
            action();
            FAIL() << "nothing was raised";
        } catch (const RegistryError& error) {
            EXPECT_EQ(error.number(), 26001);
            EXPECT_EQ(error.source(), L"TovarEx.cRegistry");
            EXPECT_EQ(error.description(), description);
        }
    }

    test::FakeRegistry backend;
    cRegistry registry{backend};
};

TEST_F(RegistryTest, KeyExistsOpensForReading) {
    EXPECT_FALSE(registry.KeyExists());
    backend.addKey(hive::kCurrentUser, kSection);
    backend.denyWriting(hive::kCurrentUser, kSection);
    EXPECT_TRUE(registry.KeyExists());
    registry.ClassKey = hive::kLocalMachine;
    EXPECT_FALSE(registry.KeyExists());
    EXPECT_EQ(backend.log, Names(3, LR"(open for reading SOFTWARE\Test)"));
}

TEST_F(RegistryTest, CreateKeyMakesItAndWhatIsAbove) {
    registry.CreateKey();
    EXPECT_NE(backend.findKey(hive::kCurrentUser, L"SOFTWARE"), nullptr);
    EXPECT_NE(backend.findKey(hive::kCurrentUser, kSection), nullptr);
    registry.CreateKey();  // an existing one is no error
}

TEST_F(RegistryTest, CreateKeyRaisesItsFailure) {
    backend.denyWriting(hive::kCurrentUser, kSection);
    expectError([&] { registry.CreateKey(); }, LR"(Failed to create registry Key: 'SOFTWARE\Test')");
}

TEST_F(RegistryTest, DeleteKeyDeletes) {
    backend.addKey(hive::kCurrentUser, kSection);
    registry.DeleteKey();
    EXPECT_EQ(backend.findKey(hive::kCurrentUser, kSection), nullptr);
}

TEST_F(RegistryTest, DeleteKeyRaisesItsFailure) {
    expectError([&] { registry.DeleteKey(); },
                LR"(Failed to delete registry Key: 'HKEY_CURRENT_USER',Section: 'SOFTWARE\Test')");
}

TEST_F(RegistryTest, DeleteKeyLeavesAKeyWithKeysBelow) {
    backend.addKey(hive::kCurrentUser, kSection + LR"(\Sub)");
    EXPECT_THROW(registry.DeleteKey(), RegistryError);
    EXPECT_NE(backend.findKey(hive::kCurrentUser, kSection), nullptr);
}

TEST_F(RegistryTest, DeleteKeyNeverTakesTheHive) {
    registry.SectionKey = L"";
    expectError([&] { registry.DeleteKey(); }, L"Failed to delete registry Key: 'HKEY_CURRENT_USER',Section: ''");
    EXPECT_TRUE(backend.log.empty());
}

TEST_F(RegistryTest, DeleteValueDeletes) {
    backend.addNumber(hive::kCurrentUser, kSection, L"Name", 1);
    backend.addNumber(hive::kCurrentUser, kSection, L"Other", 2);
    registry.DeleteValue();
    EXPECT_EQ(backend.findValue(hive::kCurrentUser, kSection, L"Name"), nullptr);
    EXPECT_NE(backend.findValue(hive::kCurrentUser, kSection, L"Other"), nullptr);
}

TEST_F(RegistryTest, DeleteValueRaisesWhenTheKeyCannotBeOpened) {
    registry.ClassKey = hive::kLocalMachine;
    expectError([&] { registry.DeleteValue(); },
                LR"(Failed to open key 'HKEY_LOCAL_MACHINE',Section: 'SOFTWARE\Test' for delete access)");
}

TEST_F(RegistryTest, DeleteValueRaisesWhenTheValueCannotBeDeleted) {
    backend.addKey(hive::kCurrentUser, kSection);
    expectError([&] { registry.DeleteValue(); },
                LR"(Failed to delete registry Key: 'HKEY_CURRENT_USER',Section: 'SOFTWARE\Test',Key: 'Name')");
}

TEST_F(RegistryTest, ErrorsNameEveryHive) {
    const std::pair<RegistryHive, std::wstring> names[] = {
        {0x80000000, L"HKEY_CLASSES_ROOT"}, {0x80000001, L"HKEY_CURRENT_USER"}, {0x80000002, L"HKEY_LOCAL_MACHINE"},
        {0x80000003, L"HKEY_USERS"},        {0x80000005, L"-2147483643"},       {7, L"7"}};
    for (const auto& [number, name] : names) {
        registry.ClassKey = number;
        expectError([&] { registry.DeleteKey(); },
                    L"Failed to delete registry Key: '" + name + L"',Section: 'SOFTWARE\\Test'");
    }
}

TEST_F(RegistryTest, ReadsByTheTypeThatIsThere) {
    registry.ValueType = registry_type::kBinary;
    backend.addText(hive::kCurrentUser, kSection, L"Name", L"abc");
    EXPECT_EQ(registry.Value(), RegistryValue(L"abc"));
    backend.addNumber(hive::kCurrentUser, kSection, L"Name", 0xFFFFFFFE);
    EXPECT_EQ(registry.Value(), RegistryValue(-2));
    backend.addValue(hive::kCurrentUser, kSection, L"Name", {registry_type::kBinary, {1, 2, 3}});
    EXPECT_EQ(registry.Value(), RegistryValue(Bytes{1, 2, 3}));
    EXPECT_EQ(registry.ValueType, registry_type::kBinary);
}

TEST_F(RegistryTest, ReadsTheDefaultWithoutKey) {
    registry.Default = 42;
    EXPECT_EQ(registry.Value(), RegistryValue(42));
    registry.Default = std::wstring(L"none");
    EXPECT_EQ(registry.Value(), RegistryValue(L"none"));
}

TEST_F(RegistryTest, ReadsTheDefaultWithoutValue) {
    backend.addNumber(hive::kCurrentUser, kSection, L"Other", 1);
    registry.Default = 42;
    EXPECT_EQ(registry.Value(), RegistryValue(42));
}

TEST_F(RegistryTest, ReadsTheDefaultOfAClosedKey) {
    backend.addNumber(hive::kCurrentUser, kSection, L"Name", 1);
    backend.denyReading(hive::kCurrentUser, kSection);
    registry.Default = 42;
    EXPECT_EQ(registry.Value(), RegistryValue(42));
}

TEST_F(RegistryTest, ReadsTheDefaultForADamagedNumber) {
    backend.addValue(hive::kCurrentUser, kSection, L"Name", {registry_type::kNumber, {1, 2}});
    registry.Default = 42;
    EXPECT_EQ(registry.Value(), RegistryValue(42));
}

TEST_F(RegistryTest, WritesTextsAndCreatesTheKey) {
    registry.setValue(std::wstring(L"ab"));
    const auto* raw = backend.findValue(hive::kCurrentUser, kSection, L"Name");
    ASSERT_NE(raw, nullptr);
    EXPECT_EQ(raw->type, 1u);
    EXPECT_EQ(raw->bytes, (Bytes{'a', 0, 'b', 0, 0, 0}));
}

TEST_F(RegistryTest, WritesATextWithTwoPercentSignsAsExpandable) {
    registry.setValue(std::wstring(L"%TEMP%"));
    EXPECT_EQ(backend.findValue(hive::kCurrentUser, kSection, L"Name")->type, 2u);
}

TEST_F(RegistryTest, WritesNumbersAndBytes) {
    registry.ValueType = registry_type::kNumber;
    registry.setValue(1023);
    EXPECT_EQ(backend.findValue(hive::kCurrentUser, kSection, L"Name")->type, 4u);
    EXPECT_EQ(backend.findValue(hive::kCurrentUser, kSection, L"Name")->bytes, (Bytes{0xFF, 0x03, 0, 0}));
    registry.ValueType = registry_type::kBinary;
    registry.setValue(Bytes{9, 8});
    EXPECT_EQ(backend.findValue(hive::kCurrentUser, kSection, L"Name")->type, 3u);
    EXPECT_EQ(backend.findValue(hive::kCurrentUser, kSection, L"Name")->bytes, (Bytes{9, 8}));
}

TEST_F(RegistryTest, RaisesWhenTheKeyCannotBeCreated) {
    backend.denyWriting(hive::kCurrentUser, kSection);
    expectError([&] { registry.setValue(std::wstring(L"text")); },
                LR"(Failed to set registry value Key: 'HKEY_CURRENT_USER',Section: 'SOFTWARE\Test',)"
                L"Key: 'Name' to value: 'text'");
}

TEST_F(RegistryTest, RaisesWhenTheValueCannotBeWritten) {
    backend.failSet = true;
    registry.ValueType = registry_type::kNumber;
    expectError([&] { registry.setValue(7); },
                LR"(Failed to set registry value Key: 'HKEY_CURRENT_USER',Section: 'SOFTWARE\Test',)"
                L"Key: 'Name' to value: '7'");
}

TEST_F(RegistryTest, RaisesBeforeItTouchesAnythingForAValueOfAnotherKind) {
    registry.ValueType = registry_type::kNumber;
    expectError(
        [&] {
            registry.setValue(Bytes{1, 0xAB});
        },
        LR"(Failed to set registry value Key: 'HKEY_CURRENT_USER',Section: 'SOFTWARE\Test',)"
        L"Key: 'Name' to value: '01 AB'");
    EXPECT_TRUE(backend.log.empty());
}

TEST_F(RegistryTest, EnumeratesValues) {
    backend.addNumber(hive::kCurrentUser, kSection, L"One", 1);
    backend.addText(hive::kCurrentUser, kSection, L"Two", L"2");
    backend.addNumber(hive::kCurrentUser, kSection + LR"(\Sub)", L"Three", 3);
    Names names = {L"before"};
    EXPECT_TRUE(registry.EnumerateValues(names));
    EXPECT_EQ(names, (Names{L"One", L"Two"}));
}

TEST_F(RegistryTest, EnumeratesSections) {
    backend.addKey(hive::kCurrentUser, kSection + LR"(\A\Deep)");
    backend.addKey(hive::kCurrentUser, kSection + LR"(\B)");
    Names names = {L"before"};
    EXPECT_TRUE(registry.EnumerateSections(names));
    EXPECT_EQ(names, (Names{L"A", L"B"}));
}

TEST_F(RegistryTest, EnumeratesNothingOfAMissingKey) {
    Names names = {L"before"};
    EXPECT_FALSE(registry.EnumerateValues(names));
    EXPECT_TRUE(names.empty());
    names = {L"before"};
    EXPECT_FALSE(registry.EnumerateSections(names));
    EXPECT_TRUE(names.empty());
}

TEST_F(RegistryTest, EnumeratesNothingOfAnEmptyKey) {
    backend.addKey(hive::kCurrentUser, kSection);
    Names names;
    EXPECT_TRUE(registry.EnumerateValues(names));
    EXPECT_TRUE(registry.EnumerateSections(names));
    EXPECT_TRUE(names.empty());
}

}  // namespace
}  // namespace tovar
