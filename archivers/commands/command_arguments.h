#pragma once
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "archivers/commands/command.h"
#include "archivers/commands/command_words.h"
#include "archivers/convention/wildcard.h"

namespace archiver {

/// What the languages have in different ways behind their switches.
struct ArgumentRules {
    PatternRules patterns{};
    std::string_view extension{};  ///< of an archive named without one, such as ".zip"; empty = none is added
    char listMark = '@';           ///< in front of a response file; 0 = there are none
};

/// Member names, given one by one and in response files.
class NameArguments {
public:
    /// Takes one word: a name, or behind the mark of lists a response file. A list whose name has blanks and no quotes
    /// is found when it is all that is left of the line.
    /// @param at  index of the word; behind what was taken afterwards
    /// @return kOk or kResponseRead
    ReturnCode take(std::string_view line, std::span<const CommandWord> words, std::size_t& at, char listMark,
                    const TextCodec& codec);
    /// A name as it stands.
    void add(std::string name) { names_.push_back(std::move(name)); }

    /// There is a list, be it without a name.
    void noteList() noexcept { listTaken_ = true; }

    [[nodiscard]] bool empty() const noexcept { return names_.empty() && !listTaken_; }

    /// All of them, as given.
    [[nodiscard]] const std::vector<std::string>& names() const noexcept { return names_; }

    /// What the names choose: all members without any, none for lists without a name.
    struct Choice {
        MemberFilter chosen;
        bool namesGiven = false;
    };
    [[nodiscard]] Choice choice(PatternRules rules) const;

private:
    std::vector<std::string> names_;
    bool listTaken_ = false;
};

/// Reads what follows the switches: archive [folder\] [name | @list ...]. The word behind the archive is the target
/// when it is a folder word.
/// @param words  from the archive on
/// @return kOk, kNotArcFile when there is no word, kResponseRead
ReturnCode takeArguments(std::string_view line, std::span<const CommandWord> words, const ArgumentRules& rules,
                         const TextCodec& codec, Command& command);

/// The same for a command that packs: archive [base folder\] [name | @list ...]. Fills `archive`, and base and names of
/// `pack`.
/// @return as above; kNotFilename when lists are given that have no names
ReturnCode takePackArguments(std::string_view line, std::span<const CommandWord> words, const ArgumentRules& rules,
                             const TextCodec& codec, Command& command);

/// An archive whose name has blanks and no quotes: all that is left of the line, when that names a file as a whole.
/// @return whether it does; `archive` is set then
bool takeUnquotedArchive(std::string_view line, std::size_t offset, std::filesystem::path& archive);

}  // namespace archiver
