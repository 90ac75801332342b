#pragma once
#include <functional>
#include <vector>

#include "shell/file_operations.h"

namespace tovar::test {

/// A desktop that remembers what it was to do, and answers as a test says.
class FakeDesktopFiles final : public DesktopFiles {
public:
    std::vector<FileOperation> operations;
    Result result;
    std::function<void()> whileRunning;

    Result run(const FileOperation& operation) override {
        operations.push_back(operation);
        if (whileRunning) whileRunning();
        return result;
    }
};

}  // namespace tovar::test
