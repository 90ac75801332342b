#include "settings/win32/windows_registry.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "settings/registry.h"

namespace tovar {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Names = std::vector<std::wstring>;

// A key of the test's own below HKEY_CURRENT_USER, gone afterwards.
class WindowsRegistryTest : public testing::Test {
protected:
    WindowsRegistryTest() {
        ::RegDeleteTreeW(HKEY_CURRENT_USER, section.c_str());
        registry.ClassKey = hive::kCurrentUser;
        registry.SectionKey = section;
        registry.ValueKey = L"Name";
    }
    ~WindowsRegistryTest() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, section.c_str()); }

    // What the system says is there: type and bytes of a value of the key.
    [[nodiscard]] std::pair<DWORD, Bytes> stored(const std::wstring& name) const {
        DWORD type = 0xFFFF, size = 4096;
        Bytes bytes(size);
        if (::RegGetValueW(HKEY_CURRENT_USER, section.c_str(), name.c_str(), RRF_RT_ANY | RRF_NOEXPAND, &type,
                           bytes.data(), &size) != ERROR_SUCCESS) {
            return {0xFFFF, {}};
        }
        bytes.resize(size);
        return {type, bytes};
    }
    // Writes a value of any type and content.
    void store(const wchar_t* name, DWORD type, const Bytes& bytes) const {
        HKEY key = nullptr;
        ASSERT_EQ(::RegCreateKeyW(HKEY_CURRENT_USER, section.c_str(), &key), ERROR_SUCCESS);
        EXPECT_EQ(::RegSetValueExW(key, name, 0, type, bytes.data(), static_cast<DWORD>(bytes.size())), ERROR_SUCCESS);
        ::RegCloseKey(key);
    }

    const std::wstring section = LR"(Software\TovarTests)" + std::to_wstring(::GetCurrentProcessId());
    WindowsRegistry backend;
    cRegistry registry{backend};
};

TEST_F(WindowsRegistryTest, CreatesAndDeletesKeys) {
    EXPECT_FALSE(registry.KeyExists());
    registry.CreateKey();
    EXPECT_TRUE(registry.KeyExists());
    registry.DeleteKey();
    EXPECT_FALSE(registry.KeyExists());
    EXPECT_THROW(registry.DeleteKey(), RegistryError);
}

TEST_F(WindowsRegistryTest, LeavesAKeyWithKeysBelow) {
    registry.SectionKey = section + LR"(\Sub)";
    registry.CreateKey();
    registry.SectionKey = section;
    EXPECT_THROW(registry.DeleteKey(), RegistryError);
    EXPECT_TRUE(registry.KeyExists());
}

TEST_F(WindowsRegistryTest, WritesTexts) {
    registry.setValue(std::wstring(L"a\u8868"));
    EXPECT_EQ(stored(L"Name"), std::pair(static_cast<DWORD>(REG_SZ), Bytes{'a', 0, 0x68, 0x88, 0, 0}));
    EXPECT_EQ(registry.Value(), RegistryValue(L"a\u8868"));
}

TEST_F(WindowsRegistryTest, WritesExpandableTextsAndReadsThemAsTheyStand) {
    registry.setValue(std::wstring(L"%TEMP%\\x"));
    EXPECT_EQ(stored(L"Name").first, static_cast<DWORD>(REG_EXPAND_SZ));
    EXPECT_EQ(registry.Value(), RegistryValue(L"%TEMP%\\x"));
}

TEST_F(WindowsRegistryTest, WritesNumbers) {
    registry.ValueType = registry_type::kNumber;
    registry.setValue(-2);
    EXPECT_EQ(stored(L"Name"), std::pair(static_cast<DWORD>(REG_DWORD), Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(registry.Value(), RegistryValue(-2));
}

TEST_F(WindowsRegistryTest, WritesBytes) {
    registry.ValueType = registry_type::kBinary;
    registry.setValue(Bytes{0, 1, 2, 0xFF});
    EXPECT_EQ(stored(L"Name"), std::pair(static_cast<DWORD>(REG_BINARY), Bytes{0, 1, 2, 0xFF}));
    EXPECT_EQ(registry.Value(), RegistryValue(Bytes{0, 1, 2, 0xFF}));
    registry.setValue(Bytes{});
    EXPECT_EQ(registry.Value(), RegistryValue(Bytes{}));
}

TEST_F(WindowsRegistryTest, WritesTheDefaultValueAndStrangeNames) {
    for (const wchar_t* name : {L"", L"\u8868\u0416\u00E9", L"with \\ in it"}) {
        registry.ValueKey = name;
        registry.setValue(std::wstring(name));
        EXPECT_EQ(registry.Value(), RegistryValue(std::wstring(name)));
    }
}

TEST_F(WindowsRegistryTest, ReadsWhatOthersWroteBadly) {
    registry.Default = 7;
    store(L"Name", REG_SZ, {'a', 0, 'b', 0});
    EXPECT_EQ(registry.Value(), RegistryValue(L"ab")) << "without NUL";
    store(L"Name", REG_SZ, {'a', 0, 'b'});
    EXPECT_EQ(registry.Value(), RegistryValue(L"a")) << "half a character";
    store(L"Name", REG_SZ, {});
    EXPECT_EQ(registry.Value(), RegistryValue(L"")) << "nothing at all";
    store(L"Name", REG_DWORD, {1, 2});
    EXPECT_EQ(registry.Value(), RegistryValue(7)) << "half a number";
    store(L"Name", REG_QWORD, {1, 2, 3, 4, 5, 6, 7, 8});
    EXPECT_EQ(registry.Value(), RegistryValue(Bytes{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_F(WindowsRegistryTest, ReadsLongValues) {
    registry.setValue(std::wstring(100000, L'x'));
    EXPECT_EQ(registry.Value(), RegistryValue(std::wstring(100000, L'x')));
}

TEST_F(WindowsRegistryTest, ReadsTheDefaultWhereNothingIs) {
    registry.Default = 42;
    EXPECT_EQ(registry.Value(), RegistryValue(42));
    registry.CreateKey();
    EXPECT_EQ(registry.Value(), RegistryValue(42));
    registry.ClassKey = 5;
    EXPECT_EQ(registry.Value(), RegistryValue(42));
}

TEST_F(WindowsRegistryTest, DeletesValues) {
    store(L"Name", REG_SZ, {0, 0});
    registry.DeleteValue();
    EXPECT_EQ(stored(L"Name").first, 0xFFFFu);
    EXPECT_THROW(registry.DeleteValue(), RegistryError);
}

TEST_F(WindowsRegistryTest, EnumeratesValues) {
    const std::wstring longName(200, L'n');
    store(L"One", REG_SZ, {0, 0});
    store(longName.c_str(), REG_BINARY, Bytes(3000, 1));
    store(L"\u8868", REG_DWORD, {1, 0, 0, 0});
    Names names;
    EXPECT_TRUE(registry.EnumerateValues(names));
    std::ranges::sort(names);
    EXPECT_EQ(names, (Names{L"One", longName, L"\u8868"}));
}

TEST_F(WindowsRegistryTest, EnumeratesSections) {
    const std::wstring longName(200, L'k');
    const Names expected = {L"Sub", longName, L"\u8868"};
    for (const std::wstring& name : expected) {
        registry.SectionKey = section + L'\\' + name;
        registry.CreateKey();
    }
    registry.SectionKey = section;
    Names names;
    EXPECT_TRUE(registry.EnumerateSections(names));
    std::ranges::sort(names);
    EXPECT_EQ(names, expected);
}

TEST_F(WindowsRegistryTest, NamesWithNulAreRefused) {
    registry.CreateKey();
    registry.ValueKey = std::wstring(L"Name\0x", 6);
    EXPECT_THROW(registry.setValue(std::wstring(L"a")), RegistryError);
    EXPECT_EQ(stored(L"Name").first, 0xFFFFu);
    store(L"Name", REG_DWORD, {1, 0, 0, 0});
    EXPECT_EQ(registry.Value(), RegistryValue());
    EXPECT_THROW(registry.DeleteValue(), RegistryError);
    registry.SectionKey = section + std::wstring(L"\0x", 2);
    EXPECT_FALSE(registry.KeyExists());
    EXPECT_THROW(registry.CreateKey(), RegistryError);
    EXPECT_THROW(registry.DeleteKey(), RegistryError);
    EXPECT_EQ(stored(L"Name").first, static_cast<DWORD>(REG_DWORD));
}

TEST_F(WindowsRegistryTest, FailsCleanlyOnVeryLongSections) {
    registry.SectionKey = section + L'\\' + std::wstring(32000, L'n');
    EXPECT_FALSE(registry.KeyExists());
    EXPECT_THROW(registry.CreateKey(), RegistryError);
}

// Nobody at all may use the key. A system that keeps no rights of keys, as emulations do, opens it all the same.
TEST_F(WindowsRegistryTest, ClosedKeysFailCleanly) {
    store(L"Name", REG_DWORD, {1, 0, 0, 0});
    HKEY key = nullptr;
    ASSERT_EQ(::RegOpenKeyExW(HKEY_CURRENT_USER, section.c_str(), 0, KEY_READ | WRITE_DAC, &key), ERROR_SUCCESS);
    ACL nobody{};
    SECURITY_DESCRIPTOR closed{}, open{};
    ASSERT_TRUE(::InitializeAcl(&nobody, sizeof nobody, ACL_REVISION));
    for (SECURITY_DESCRIPTOR* each : {&closed, &open}) {
        ASSERT_TRUE(::InitializeSecurityDescriptor(each, SECURITY_DESCRIPTOR_REVISION));
    }
    ASSERT_TRUE(::SetSecurityDescriptorDacl(&closed, TRUE, &nobody, FALSE));
    ASSERT_TRUE(::SetSecurityDescriptorDacl(&open, TRUE, nullptr, FALSE));
    const LSTATUS done = ::RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &closed);
    HKEY again = nullptr;
    const bool kept = done == ERROR_SUCCESS &&
                      ::RegOpenKeyExW(HKEY_CURRENT_USER, section.c_str(), 0, KEY_READ, &again) == ERROR_ACCESS_DENIED;
    if (again != nullptr) ::RegCloseKey(again);
    registry.Default = 42;
    registry.ValueType = registry_type::kNumber;
    if (kept) {
        Names names = {L"old"};
        EXPECT_EQ(registry.Value(), RegistryValue(42));
        EXPECT_FALSE(registry.KeyExists());
        EXPECT_THROW(registry.setValue(2), RegistryError);
        EXPECT_THROW(registry.DeleteValue(), RegistryError);
        EXPECT_FALSE(registry.EnumerateValues(names));
        EXPECT_TRUE(names.empty());
    }
    EXPECT_EQ(::RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &open), done);
    ::RegCloseKey(key);
    EXPECT_EQ(registry.Value(), RegistryValue(1)) << "nothing was changed";
    if (!kept) GTEST_SKIP() << "this system opens closed keys";
}

TEST_F(WindowsRegistryTest, Associates) {
    const std::wstring name = L"TovarTest" + std::to_wstring(::GetCurrentProcessId());
    ExeAssociation association;
    association.program = LR"(C:\Program Files\x.exe)";
    association.className = name + L".Archive";
    association.classDescription = L"Description";
    association.extension = name;
    registry.CreateEXEAssociation(association);
    registry.ClassKey = hive::kClassesRoot;
    registry.ValueKey = L"";
    registry.SectionKey = L"." + name;
    EXPECT_EQ(registry.Value(), RegistryValue(name + L".Archive"));
    registry.SectionKey = name + LR"(.Archive\shell\open\command)";
    EXPECT_EQ(registry.Value(), RegistryValue(LR"("C:\Program Files\x.exe" "%1")"));
    ::RegDeleteTreeW(HKEY_CLASSES_ROOT, (L"." + name).c_str());
    ::RegDeleteTreeW(HKEY_CLASSES_ROOT, (name + L".Archive").c_str());
}

}  // namespace
}  // namespace tovar
