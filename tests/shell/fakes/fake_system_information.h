#pragma once
#include <map>
#include <string>

#include "shell/system_information.h"

namespace tovar::test {

/// Error texts and file versions as a test tells them.
class FakeSystemInformation final : public SystemInformation {
public:
    std::map<SystemErrorCode, std::wstring> errorTexts;
    std::map<std::wstring, FileVersion> versions;  // by path

    [[nodiscard]] std::wstring errorText(SystemErrorCode code) const override {
        const auto found = errorTexts.find(code);
        return found == errorTexts.end() ? std::wstring() : found->second;
    }
    [[nodiscard]] std::optional<FileVersion> fileVersion(const std::wstring& path) const override {
        const auto found = versions.find(path);
        return found == versions.end() ? std::nullopt : std::optional(found->second);
    }
};

}  // namespace tovar::test
