#pragma once
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "shell/win32/handles.h"
#include "win32/system/support/staged_program.h"
#include "win32/system/support/waiting.h"

namespace tovar::test {

/// Another program that files come from; see file_source.cpp.
class OtherProgram {
public:
    /// @param words  of its command line
    explicit OtherProgram(const std::wstring& words) {
        const std::wstring program = (staged::productsFolder() / L"FileSource.exe").native();
        std::wstring line = L'"' + program + L"\" " + words;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process{};
        EXPECT_TRUE(::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                     &startup, &process));
        ::CloseHandle(process.hThread);
        process_.reset(process.hProcess);
    }
    ~OtherProgram() {
        if (process_ && ::WaitForSingleObject(process_.get(), 0) != WAIT_OBJECT_0)
            ::TerminateProcess(process_.get(), 1);
    }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    /// Lets messages run until it has ended.
    /// @return its exit code
    int end() const {
        EXPECT_TRUE(waitUntil([this] { return ::WaitForSingleObject(process_.get(), 0) == WAIT_OBJECT_0; }));
        DWORD code = ~DWORD{};
        ::GetExitCodeProcess(process_.get(), &code);
        return static_cast<int>(code);
    }

    static int run(const std::wstring& words) { return OtherProgram(words).end(); }

private:
    UniqueHandle process_;
};

}  // namespace tovar::test
