#include "win32/system/support/staged_program.h"

#include <windows.h>

#include <cstdio>
#include <string>

#include "shell/win32/handles.h"
#include "win32/shell/temporary_folder.h"

namespace tovar::test::staged {
namespace {

constexpr wchar_t kVariable[] = L"TOVAREX_TEST_PRODUCTS";
constexpr const wchar_t* kBeside[] = {L"TovarEx.dll", L"RecordingArchiver.dll", L"RecordingArchiverAnsi.dll",
                                      L"SampleHost.exe"};

std::wstring variable() {
    wchar_t text[32768];
    const DWORD length = ::GetEnvironmentVariableW(kVariable, text, 32768);
    return {text, length};
}

std::filesystem::path programFile() {
    wchar_t path[32768];
    return std::wstring(path, ::GetModuleFileNameW(nullptr, path, 32768));
}

/// Processes that end with the object: a copy never outlives a program that was ended.
UniqueHandle endingJob() {
    UniqueHandle job(::CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    ::SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

int run(const std::filesystem::path& program) {
    std::wstring line = ::GetCommandLineW();
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    const UniqueHandle job = endingJob();
    if (!::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr, nullptr,
                          &startup, &process)) {
        std::fprintf(stderr, "the copy does not start: %lu\n", ::GetLastError());
        return 1;
    }
    const UniqueHandle handle(process.hProcess), thread(process.hThread);
    ::AssignProcessToJobObject(job.get(), process.hProcess);
    ::ResumeThread(process.hThread);
    ::WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 1;
    ::GetExitCodeProcess(process.hProcess, &code);
    return static_cast<int>(code);
}

}  // namespace

bool isStaged() { return !variable().empty(); }

std::filesystem::path productsFolder() { return variable(); }

int runCopy() {
    const TemporaryFolder folder;
    const std::filesystem::path program = programFile(), products = program.parent_path();
    for (const wchar_t* const name : kBeside) {
        if (std::filesystem::exists(products / name)) std::filesystem::copy_file(products / name, folder / name);
    }
    const std::filesystem::path copy = folder / program.filename().native();
    std::filesystem::copy_file(program, copy);
    ::SetEnvironmentVariableW(kVariable, products.c_str());
    return run(copy);
}

}  // namespace tovar::test::staged
