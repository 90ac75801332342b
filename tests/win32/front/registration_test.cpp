#include <gtest/gtest.h>

#include <thread>

#include "win32/front/support/component_session.h"

namespace tovar {
namespace {

using test::Apartment;
using test::ComponentDll;

constexpr wchar_t kClass[] = L"CLSID\\{F0F74181-FAFF-4A05-A39F-3E515C05E3BB}";
constexpr wchar_t kInterface[] = L"Interface\\{B5A51074-FB0A-45FD-81F7-757DDB75DB4F}";
constexpr wchar_t kLibrary[] = L"TypeLib\\{4537E220-B11B-4FA1-B800-AE4280E5593C}";
constexpr wchar_t kProgId[] = L"TovarEx.cTovar";
#ifdef _WIN64
constexpr wchar_t kPlatform[] = L"\\1.0\\0\\win64";
constexpr wchar_t kOtherPlatform[] = L"\\1.0\\0\\win32";
#else
constexpr wchar_t kPlatform[] = L"\\1.0\\0\\win32";
constexpr wchar_t kOtherPlatform[] = L"\\1.0\\0\\win64";
#endif

/// @return a text below Software\Classes; "(none)" when it is not there
std::wstring classText(HKEY hive, const std::wstring& key, const wchar_t* name = nullptr) {
    wchar_t text[1024] = L"";
    DWORD size = sizeof text;
    const LSTATUS result =
        ::RegGetValueW(hive, (L"Software\\Classes\\" + key).c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
    return result == ERROR_SUCCESS ? text : L"(none)";
}

bool keyExists(HKEY hive, const std::wstring& key) {
    HKEY opened = nullptr;
    if (::RegOpenKeyExW(hive, (L"Software\\Classes\\" + key).c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) {
        return false;
    }
    ::RegCloseKey(opened);
    return true;
}

void expectEverything(HKEY hive) {
    const std::wstring module = (test::programFolder() / L"TovarEx.dll").native();
    EXPECT_EQ(classText(hive, std::wstring(kProgId) + L"\\CLSID"), L"{F0F74181-FAFF-4A05-A39F-3E515C05E3BB}");
    const std::wstring server = std::wstring(kClass) + L"\\InprocServer32";
    EXPECT_EQ(::lstrcmpiW(classText(hive, server).c_str(), module.c_str()), 0) << "the full path";
    EXPECT_EQ(classText(hive, server, L"ThreadingModel"), L"Apartment");
    EXPECT_EQ(classText(hive, std::wstring(kClass) + L"\\ProgID"), kProgId);
    EXPECT_EQ(classText(hive, std::wstring(kClass) + L"\\VersionIndependentProgID"), kProgId);
    EXPECT_EQ(classText(hive, std::wstring(kClass) + L"\\TypeLib"), L"{4537E220-B11B-4FA1-B800-AE4280E5593C}");
    EXPECT_EQ(classText(hive, kInterface), L"ITovar");
    EXPECT_EQ(classText(hive, std::wstring(kInterface) + L"\\TypeLib", L"Version"), L"1.0");
    EXPECT_EQ(classText(hive, std::wstring(kLibrary) + L"\\1.0\\FLAGS"), L"0");
    EXPECT_EQ(::lstrcmpiW(classText(hive, std::wstring(kLibrary) + kPlatform).c_str(), module.c_str()), 0);
}

void expectNothing(HKEY hive) {
    for (const wchar_t* key : {kProgId, kClass, kInterface, kLibrary}) {
        EXPECT_FALSE(keyExists(hive, key)) << ::testing::PrintToString(std::wstring(key));
    }
}

constexpr wchar_t kChild[] = L"TOVAREX_TEST_CHILD";

bool isChild() { return ::GetEnvironmentVariableW(kChild, nullptr, 0) != 0; }

class Registration : public testing::Test {
protected:
    Registration() { removeAll(); }
    ~Registration() override { removeAll(); }

    void removeAll() const {
        if (isChild()) return;
        dll.unregisterServer();
        dll.install(FALSE, L"user");
    }

    const test::KeptAllowMask kept;
    const ComponentDll dll;
};

TEST_F(Registration, IsForTheMachine) {
    expectNothing(HKEY_LOCAL_MACHINE);
    ASSERT_EQ(dll.registerServer(), S_OK);
    expectEverything(HKEY_LOCAL_MACHINE);
    expectNothing(HKEY_CURRENT_USER);
    ASSERT_EQ(dll.unregisterServer(), S_OK);
    expectNothing(HKEY_LOCAL_MACHINE);
}

TEST_F(Registration, IsForTheUserWithoutTheMachine) {
    ASSERT_EQ(dll.install(TRUE, L"user"), S_OK);
    expectEverything(HKEY_CURRENT_USER);
    expectNothing(HKEY_LOCAL_MACHINE);
    ASSERT_EQ(dll.install(FALSE, L"User"), S_OK);
    expectNothing(HKEY_CURRENT_USER);
}

TEST_F(Registration, InstallsForTheMachineWithoutACommandLine) {
    ASSERT_EQ(dll.install(TRUE, nullptr), S_OK);
    expectEverything(HKEY_LOCAL_MACHINE);
    ASSERT_EQ(dll.install(FALSE, L""), S_OK);
    expectNothing(HKEY_LOCAL_MACHINE);
}

TEST_F(Registration, KnowsNoOtherCommandLine) {
    EXPECT_EQ(dll.install(TRUE, L"everybody"), E_INVALIDARG);
    expectNothing(HKEY_LOCAL_MACHINE);
    expectNothing(HKEY_CURRENT_USER);
}

TEST_F(Registration, IsDoneByTheSystemsProgram) {
    const std::wstring module = L" \"" + (test::programFolder() / L"TovarEx.dll").native() + L"\"";
    EXPECT_EQ(test::runProgram(L"regsvr32.exe /s" + module), 0U);
    expectEverything(HKEY_LOCAL_MACHINE);
    EXPECT_EQ(test::runProgram(L"regsvr32.exe /s /u" + module), 0U);
    expectNothing(HKEY_LOCAL_MACHINE);
    EXPECT_EQ(test::runProgram(L"regsvr32.exe /s /n /i:user" + module), 0U);
    expectEverything(HKEY_CURRENT_USER);
    EXPECT_EQ(test::runProgram(L"regsvr32.exe /s /n /u /i:user" + module), 0U);
    expectNothing(HKEY_CURRENT_USER);
}

TEST_F(Registration, CanBeRepeated) {
    ASSERT_EQ(dll.registerServer(), S_OK);
    ASSERT_EQ(dll.registerServer(), S_OK);
    expectEverything(HKEY_LOCAL_MACHINE);
    ASSERT_EQ(dll.unregisterServer(), S_OK);
    EXPECT_EQ(dll.unregisterServer(), S_OK) << "what is not there is no error";
}

TEST_F(Registration, LeavesWhatItSharesWithTheOtherBitness) {
    ASSERT_EQ(dll.registerServer(), S_OK);
    const std::wstring other = std::wstring(kLibrary) + kOtherPlatform;
    ASSERT_EQ(::RegSetKeyValueW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + other).c_str(), nullptr, REG_SZ, L"x", 4),
              ERROR_SUCCESS);
    ASSERT_EQ(dll.unregisterServer(), S_OK);
    EXPECT_EQ(classText(HKEY_LOCAL_MACHINE, other), L"x");
    EXPECT_EQ(classText(HKEY_LOCAL_MACHINE, std::wstring(kProgId) + L"\\CLSID"),
              L"{F0F74181-FAFF-4A05-A39F-3E515C05E3BB}");
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, kClass));
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, kInterface));
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, std::wstring(kLibrary) + kPlatform));
    ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + other).c_str());
    ASSERT_EQ(dll.unregisterServer(), S_OK) << "the last one takes the rest";
    expectNothing(HKEY_LOCAL_MACHINE);
}

TEST_F(Registration, LetsHostsCreateTheObjectByItsName) {
    ASSERT_EQ(dll.registerServer(), S_OK);
    const Apartment apartment;
    CLSID id{};
    ASSERT_EQ(::CLSIDFromProgID(kProgId, &id), S_OK);
    EXPECT_TRUE(IsEqualCLSID(id, CLSID_cTovar));
    void* found = nullptr;
    ASSERT_EQ(::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_ITovar, &found), S_OK);
    const ComOwner<ITovar> object(static_cast<ITovar*>(found));
    VARIANT_BOOL flag = VARIANT_TRUE;
    EXPECT_EQ(object->IsBusy(&flag), S_OK);
    EXPECT_EQ(flag, VARIANT_FALSE);
    ITypeLib* library = nullptr;
    ASSERT_EQ(::LoadRegTypeLib(LIBID_TovarEx, 1, 0, LOCALE_NEUTRAL, &library), S_OK);
    EXPECT_EQ(library->GetTypeInfoCount(), 6U);
    library->Release();
}

void callAcross() {
    HRESULT created = E_FAIL, called = E_FAIL, typed = E_FAIL;
    VARIANT_BOOL flag = VARIANT_TRUE;
    LONG mode = 77;
    std::thread([&] {
        const Apartment apartment(COINIT_MULTITHREADED);
        void* found = nullptr;
        created = ::CoCreateInstance(CLSID_cTovar, nullptr, CLSCTX_INPROC_SERVER, IID_ITovar, &found);
        if (FAILED(created)) return;
        const ComOwner<ITovar> object(static_cast<ITovar*>(found));
        called = object->IsBusy(&flag);
        typed = object->CanOpenArchive(makeBstr(L"no archive.txt").get(), &mode, VARIANT_FALSE, &flag);
    }).join();
    EXPECT_EQ(created, S_OK);
    EXPECT_EQ(called, S_OK);
    EXPECT_EQ(typed, S_OK);
    EXPECT_EQ(flag, VARIANT_FALSE);
    EXPECT_EQ(mode, 77);
}

// Wine's own thread for such objects keeps the class factory for ever, which the other tests would see: this one has a
// process of its own.
TEST_F(Registration, LetsThreadsWithoutAWindowCallAcross) {
    if (isChild()) return callAcross();
    ASSERT_EQ(dll.registerServer(), S_OK);
    ::SetEnvironmentVariableW(kChild, L"1");
    EXPECT_EQ(test::runSelf(L"--gtest_filter=Registration.LetsThreadsWithoutAWindowCallAcross"), 0U);
    ::SetEnvironmentVariableW(kChild, nullptr);
}

TEST_F(Registration, UnloadsTheDllAfterTheLastObject) {
    ASSERT_EQ(dll.registerServer(), S_OK);
    const Apartment apartment;
    void* found = nullptr;
    ASSERT_EQ(::CoCreateInstance(CLSID_cTovar, nullptr, CLSCTX_INPROC_SERVER, IID_ITovar, &found), S_OK);
    static_cast<ITovar*>(found)->Release();
    EXPECT_EQ(dll.canUnloadNow(), S_OK);
    ::CoFreeUnusedLibrariesEx(0, 0);
    ASSERT_EQ(::CoCreateInstance(CLSID_cTovar, nullptr, CLSCTX_INPROC_SERVER, IID_ITovar, &found), S_OK);
    static_cast<ITovar*>(found)->Release();
}

}  // namespace
}  // namespace tovar
