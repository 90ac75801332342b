#pragma once
#include <string>

#include "drivers/extraction.h"
#include "host/console/console_output.h"

namespace tovar::host {

/// How far an extraction is, in one line of a terminal that is written over again and again.
class ProgressLine {
public:
    explicit ProgressLine(ConsoleOutput& output) : output_(output) {}
    ~ProgressLine() { clear(); }
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void show(const ExtractProgress& progress);
    /// @param share  of the whole operation, in per cent
    void showShare(const std::wstring& name, int share);
    void clear();

private:
    void put(std::wstring name, const std::string& amount);

    ConsoleOutput& output_;
    std::string shown_;
};

}  // namespace tovar::host
