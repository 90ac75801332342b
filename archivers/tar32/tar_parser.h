#pragma once
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "archivers/commands/command.h"
#include "archivers/commands/command_arguments.h"
#include "archivers/commands/command_words.h"

namespace archiver::tar {

/// Reads one line. Used once.
class Parser {
public:
    Parser(std::string_view line, const TextCodec& codec) : line_(line), codec_(codec) {}

    /// @return kOk, or why the line is no command
    ReturnCode parse();
    /// The command, after kOk.
    [[nodiscard]] Command take() { return std::move(command_); }

private:
    /// What the next words without a switch are, in the order of the letters that take them.
    enum class Slot : std::uint8_t { kArchive, kTarget, kIgnored };
    /// A word, and whether it comes from a response file: there it is a name, whatever it begins with.
    struct Word {
        std::string text;
        bool listed = false;
    };
    /// The names for one folder.
    struct Group {
        std::filesystem::path target;
        NameArguments names;
    };

    ReturnCode readWords();
    ReturnCode takeLetters(std::string_view letters);
    ReturnCode takeLetter(std::string_view letters, std::size_t& at);
    ReturnCode takeLongOption(std::string_view option);
    void takeArgument(std::string text);
    void finish();

    std::string_view line_;
    const TextCodec& codec_;
    std::vector<Word> words_;
    std::vector<Slot> slots_;  ///< still to be filled, from nextSlot_ on
    std::size_t nextSlot_ = 0;
    std::vector<Group> groups_{1};
    Command command_;
    PatternRules patterns_;
    bool listTaken_ = false;
    bool archiveTaken_ = false;
    bool actionTaken_ = false;
    bool writes_ = false;
};

}  // namespace archiver::tar
