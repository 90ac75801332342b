#pragma once
#include <cstdio>

#include "host/console/console.h"

namespace tovar::host {

/// The process's standard output and error.
class StandardOutput final : public ConsoleOutput {
public:
    void write(std::string_view text) override { std::fwrite(text.data(), 1, text.size(), stdout); }
    void writeError(std::string_view text) override {
        std::fflush(stdout);  // both may go to one place: keep their order
        std::fwrite(text.data(), 1, text.size(), stderr);
    }
};

}  // namespace tovar::host
