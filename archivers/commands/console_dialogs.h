#pragma once
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "archivers/commands/command_dialogs.h"

namespace archiver {

/// Where the console asks.
class Terminal {
public:
    virtual ~Terminal() = default;

    virtual void write(std::string_view utf8) = 0;

    /// One line without its end. @return nullopt at the end of the input
    virtual std::optional<std::string> readLine() = 0;

    /// A line that is not seen while it is typed, of at most kLongestPassword characters.
    /// @return nullopt at the end of the input, and when the user interrupts
    virtual std::optional<std::string> readHidden() = 0;
};

/// The questions of a command as lines of text. Progress is not shown: that is the console host's own matter.
class ConsoleDialogs final : public CommandDialogs {
public:
    /// @param terminal  null: every question is answered with "no"
    explicit ConsoleDialogs(std::unique_ptr<Terminal> terminal) : terminal_(std::move(terminal)) {}

    bool progress(const UnpackProgress&) override { return true; }
    ReplaceAnswer askReplace(const ReplaceQuestion& question) override;
    std::optional<std::string> askPassword(const std::filesystem::path& archive, const Member& member,
                                           unsigned attempt) override;
    bool askDiskSpace(std::uint64_t needed, std::uint64_t available) override;

private:
    /// Asks until the first letter of the answer, in either case, is one of `letters`.
    /// @return nullopt at the end of the input
    std::optional<char> askLetter(std::string_view question, std::string_view letters);

    std::unique_ptr<Terminal> terminal_;
};

}  // namespace archiver
