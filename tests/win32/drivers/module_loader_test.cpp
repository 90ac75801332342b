#include "drivers/module_loader.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>

#include "recording/session.h"

namespace tovar {
namespace {

class WindowsModuleLoader : public testing::Test {
protected:
    recording::Session session;
    std::unique_ptr<ModuleLoader> loader = systemModuleLoader();
};

TEST_F(WindowsModuleLoader, LeavesTheThreadsAndTheProcesssErrorModeAlone) {
    const auto good = recording::Session::install(session.folder(), L"good.dll", recording::Texts::Utf8);
    std::ofstream(session.folder() / "bad.dll") << "no library";
    ::SetThreadErrorMode(SEM_NOGPFAULTERRORBOX, nullptr);
    const UINT process = ::GetErrorMode();
    EXPECT_NE(loader->load(good.wstring()), nullptr);
    EXPECT_EQ(loader->load((session.folder() / "bad.dll").wstring()), nullptr);
    EXPECT_EQ(::GetThreadErrorMode(), static_cast<DWORD>(SEM_NOGPFAULTERRORBOX));
    EXPECT_EQ(::GetErrorMode(), process);
    ::SetThreadErrorMode(0, nullptr);
}

TEST_F(WindowsModuleLoader, LoadsFromAFolderWithAnyName) {
    const auto folder = session.folder() / L"\x8868 and blank";
    const auto path = recording::Session::install(folder, L"\xE4.dll", recording::Texts::Utf8);
    const std::unique_ptr<Module> module = loader->load(path.wstring());
    ASSERT_NE(module, nullptr);
    EXPECT_NE(module->find("UnZipGetVersion"), nullptr);
}

TEST_F(WindowsModuleLoader, LoadsByFullPathOnly) {
    EXPECT_EQ(loader->load(L"kernel32.dll"), nullptr);
    EXPECT_EQ(loader->load(L"\\windows\\system32\\kernel32.dll"), nullptr);
    EXPECT_EQ(loader->load(L"C:kernel32.dll"), nullptr);
    wchar_t system[MAX_PATH] = {};
    ::GetSystemDirectoryW(system, MAX_PATH);
    EXPECT_NE(loader->load(std::wstring(system) + L"\\kernel32.dll"), nullptr);
    EXPECT_EQ(loader->load(std::wstring(system) + L"\\kernel32.dll" + std::wstring(1, L'\0') + L"x"), nullptr);
}

TEST_F(WindowsModuleLoader, UnloadsWithTheModule) {
    const auto path = recording::Session::install(session.folder(), L"unloaded.dll", recording::Texts::Utf8);
    std::unique_ptr<Module> module = loader->load(path.wstring());
    ASSERT_NE(module, nullptr);
    EXPECT_NE(::GetModuleHandleW(L"unloaded.dll"), nullptr);
    module.reset();
    EXPECT_EQ(::GetModuleHandleW(L"unloaded.dll"), nullptr);
}

}  // namespace
}  // namespace tovar
