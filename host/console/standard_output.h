#pragma once
#include <cstdio>

#include "host/console/console_output.h"

namespace tovar::host {

/// The process's standard output and error.
class StandardOutput final : public ConsoleOutput {
public:
    /// @param errorsAreSeen  the error output is a terminal
    explicit StandardOutput(bool errorsAreSeen) : errorsAreSeen_(errorsAreSeen) {}

    void write(std::string_view text) override { std::fwrite(text.data(), 1, text.size(), stdout); }
    void writeError(std::string_view text) override {
        std::fflush(stdout);  // both may go to one place: keep their order
        std::fwrite(text.data(), 1, text.size(), stderr);
        std::fflush(stderr);
    }
    [[nodiscard]] bool errorsAreSeen() const override { return errorsAreSeen_; }

private:
    bool errorsAreSeen_;
};

}  // namespace tovar::host
