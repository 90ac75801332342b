#pragma once
#include <windows.h>

#include <string>

namespace tovar::test {

/// The PATH variable with a folder in front, put back at the end.
class PathVariable {
public:
    explicit PathVariable(const std::wstring& folder) {
        ::GetEnvironmentVariableW(L"PATH", text_, 32768);
        ::SetEnvironmentVariableW(L"PATH", (folder + L';' + text_).c_str());
    }
    ~PathVariable() { ::SetEnvironmentVariableW(L"PATH", text_); }
    PathVariable(const PathVariable&) = delete;
    PathVariable& operator=(const PathVariable&) = delete;

private:
    wchar_t text_[32768] = L"";
};

}  // namespace tovar::test
