#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/file_clipboard.h"

namespace tovar::test {

/// Holds one block, and writes down what is done with it.
class FakeClipboard final : public Clipboard {
public:
    std::optional<std::string> files;
    bool locked = false, full = false;
    std::vector<std::string> log;

    [[nodiscard]] bool hasFiles() const override { return files.has_value(); }
    [[nodiscard]] bool open() override {
        log.emplace_back("open");
        return !locked;
    }
    void close() noexcept override { log.emplace_back("close"); }
    bool empty() override {
        log.emplace_back("empty");
        files.reset();
        return true;
    }
    bool putFiles(std::string_view block) override {
        log.emplace_back("put");
        if (!full) files = block;
        return !full;
    }
    [[nodiscard]] std::optional<std::string> takeFiles() override {
        log.emplace_back("take");
        return files;
    }
};

}  // namespace tovar::test
