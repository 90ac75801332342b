#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "win32/front/support/component_session.h"

namespace tovar {
namespace {

constexpr DWORD kScriptMilliseconds = 60000;
constexpr DWORD kLookMilliseconds = 50;  ///< between two looks for dialogs

/// A script at work under the console script host.
class RunningScript {
public:
    /// @param output  file for what the script says
    RunningScript(const std::wstring& script, const std::vector<std::wstring>& arguments, std::wstring output)
        : output_(std::move(output)) {
        std::wstring line = L"cscript.exe //nologo \"" + script + L"\"";
        for (const std::wstring& each : arguments) line += L" \"" + each + L"\"";
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        const UniqueHandle file = adoptHandle(
            ::CreateFileW(output_.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0, nullptr));
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = startup.hStdError = file.get();
        PROCESS_INFORMATION process{};
        if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process)) {
            return;
        }
        process_.reset(process.hProcess);
        ::CloseHandle(process.hThread);
    }

    /// Waits until the script ends, and cancels its dialogs; stops it when it takes too long.
    /// @return what the script said
    std::string wait() {
        const DWORD start = ::GetTickCount();
        while (::WaitForSingleObject(process_.get(), kLookMilliseconds) == WAIT_TIMEOUT) {
            for (const wchar_t* const caption : {L"Compress Files", L"Archiver Configurarion"}) {
                const HWND dialog = ::FindWindowW(nullptr, caption);
                if (dialog != nullptr) ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
            }
            if (::GetTickCount() - start >= kScriptMilliseconds) ::TerminateProcess(process_.get(), 99);
        }
        ::GetExitCodeProcess(process_.get(), &code);
        std::ifstream stream(std::filesystem::path(output_), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    }

    [[nodiscard]] bool started() const { return process_ != nullptr; }
    DWORD code = ~0U;

private:
    std::wstring output_;
    UniqueHandle process_;
};

std::wstring scriptPath(const wchar_t* name) { return (test::programFolder() / L"front-scripts" / name).native(); }

class Scripts : public testing::TestWithParam<const wchar_t*> {
protected:
    Scripts() {
        test::KeptAllowMask::write(hive::kCurrentUser, std::nullopt);
        test::KeptAllowMask::write(hive::kLocalMachine, std::nullopt);
    }
    ~Scripts() override { dll.unregisterServer(); }

    const test::KeptAllowMask kept;
    const test::TemporaryFolder folder;
    const test::ComponentDll dll;
};

// A script host may end with 0 when a script never ran, so the word PASS counts.
TEST_P(Scripts, GoThroughAllOperations) {
    ASSERT_EQ(dll.registerServer(), S_OK);
    const std::wstring zip = test::writeFile(folder, L"small archive.zip", test::kSmallZip);
    RunningScript script(scriptPath(GetParam()), {zip, folder.path()}, folder / L"output.txt");
    ASSERT_TRUE(script.started());
    EXPECT_EQ(script.wait(), "PASS\r\n");
    EXPECT_EQ(script.code, 0U);
}

INSTANTIATE_TEST_SUITE_P(Languages, Scripts, testing::Values(L"operations.vbs", L"operations.js"),
                         [](const auto& each) {
                             const std::wstring name = each.param;
                             return name.ends_with(L".vbs") ? std::string("VBScript") : std::string("JScript");
                         });

struct ExampleCase {
    const wchar_t* script;
    std::string said;  ///< "%" stands for the folder
};

/// The examples that come with the component, in a folder with a few files.
class Examples : public testing::TestWithParam<ExampleCase> {
protected:
    Examples() {
        test::KeptAllowMask::write(hive::kCurrentUser, std::nullopt);
        test::KeptAllowMask::write(hive::kLocalMachine, std::nullopt);
        ::CreateDirectoryW((folder / L"docs").c_str(), nullptr);
        ::CreateDirectoryW((folder / L"docs\\deep").c_str(), nullptr);
        test::writeFile(folder, L"docs\\a.txt", "alpha");
        test::writeFile(folder, L"docs\\deep\\b c.txt", "beta");
        test::writeFile(folder, L"more.txt", "more");
    }
    ~Examples() override { dll.unregisterServer(); }

    const test::KeptAllowMask kept;
    const test::TemporaryFolder folder;
    const test::ComponentDll dll;
};

TEST_P(Examples, DoWhatTheySay) {
    ASSERT_EQ(dll.registerServer(), S_OK);
    RunningScript script(scriptPath(GetParam().script), {folder.path()}, folder / L"output.txt");
    ASSERT_TRUE(script.started());
    const std::wstring path = folder.path();
    std::string expected;
    for (const char each : GetParam().said) {
        if (each == '%') {
            expected.append(path.begin(), path.end());
        } else {
            expected += each;
        }
    }
    EXPECT_EQ(script.wait(), expected);
    EXPECT_EQ(script.code, 0U);
}

// The checksums are those that other programs give for "alpha" and "beta".
INSTANTIATE_TEST_SUITE_P(Scripts, Examples,
                         testing::Values(ExampleCase{L"roundtrip.vbs",
                                                     "docs\\a.txt, 5 bytes, D0E0396A\r\n"
                                                     "docs\\deep\\b c.txt, 4 bytes, 8F910463\r\n"
                                                     "Good: True\r\nSame: True\r\nEntries: 4\r\n"},
                                         ExampleCase{L"roundtrip.js",
                                                     "docs\\a.txt, 5 bytes, d0e0396a\r\n"
                                                     "docs\\deep\\b c.txt, 4 bytes, 8f910463\r\n"
                                                     "Good: true\r\nSame: true\r\nEntries: 4\r\n"},
                                         ExampleCase{L"progress.vbs",
                                                     "The operation was cancelled.\r\n"
                                                     "8004020D: %\\whole.zip: a password is needed.\r\n"},
                                         ExampleCase{L"progress.js",
                                                     "The operation was cancelled.\r\n"
                                                     "8004020D: %\\whole.zip: a password is needed.\r\n"}),
                         [](const auto& each) {
                             std::wstring name = each.param.script;
                             name.erase(name.find(L'.'), 1);
                             return std::string(name.begin(), name.end());
                         });

}  // namespace
}  // namespace tovar
