#pragma once
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "shell/program_launcher.h"

namespace tovar::test {

/// Programs for the files that a test names; what is opened is remembered.
class FakePrograms final : public DesktopPrograms {
public:
    std::set<std::wstring> registered;  ///< paths
    std::vector<std::wstring> opened;
    std::function<void()> whileOpening;
    bool opens = true;

    [[nodiscard]] bool hasProgramFor(const std::wstring& path) const override { return registered.contains(path); }
    bool open(const std::wstring& path) override {
        opened.push_back(path);
        if (whileOpening) whileOpening();
        return opens;
    }
};

}  // namespace tovar::test
