#pragma once
#include <memory>

#include "archivers/commands/console_dialogs.h"

namespace archiver {

/// A terminal by its file descriptor, for reading and writing.
class PosixTerminal final : public Terminal {
public:
    /// @param owned  closes the descriptor at the end
    PosixTerminal(int descriptor, bool owned) noexcept : descriptor_(descriptor), owned_(owned) {}
    ~PosixTerminal() override;
    PosixTerminal(const PosixTerminal&) = delete;
    PosixTerminal& operator=(const PosixTerminal&) = delete;

    /// The process's own terminal, whatever its input and output are. @return null when it has none
    static std::unique_ptr<Terminal> ofProcess();

    void write(std::string_view utf8) override;
    std::optional<std::string> readLine() override;
    std::optional<std::string> readHidden() override;

private:
    int descriptor_;
    bool owned_;
};

}  // namespace archiver
