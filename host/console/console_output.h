#pragma once
#include <string_view>

namespace tovar::host {

/// Where the console host writes; texts are UTF-8.
class ConsoleOutput {
public:
    virtual ~ConsoleOutput() = default;
    virtual void write(std::string_view text) = 0;
    virtual void writeError(std::string_view text) = 0;
    /// Whether somebody looks on at the error output.
    [[nodiscard]] virtual bool errorsAreSeen() const = 0;
};

}  // namespace tovar::host
