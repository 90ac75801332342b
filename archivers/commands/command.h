#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "archivers/commands/pack_request.h"
#include "archivers/convention/return_codes.h"
#include "archivers/convention/text_codec.h"
#include "archivers/unpacking/unpack_events.h"
#include "archivers/unpacking/unpack_options.h"
#include "archivers/unpacking/unpacker.h"

namespace archiver {

/// One command line of any library, understood. Texts are UTF-8.
struct Command {
    enum class Action : std::uint8_t { kUnpack, kTest, kList, kListVerbose, kPrint, kComment, kPack, kDelete };
    /// Some of the members, and the folder they are unpacked to.
    struct Part {
        std::filesystem::path target;
        MemberFilter chosen;
        bool namesGiven = false;
    };
    Action action = Action::kUnpack;
    int form = 0;                    ///< the language's own number for one of several forms of output
    std::filesystem::path archive;   ///< as the line names it; relative to the current folder
    PackRequest pack;                ///< with kPack
    UnpackOptions options;           ///< `target` as the line names it; empty: the current folder
    MemberFilter chosen;             ///< by name, response files read; empty = every member
    bool namesGiven = false;         ///< `chosen` came from names: kNotExist when none is found
    std::vector<Part> furtherParts;  ///< members that go to other folders, after the others
    std::string password;            ///< given in the line; empty = none
    bool askPassword = true;
    bool showProgress = true;
    bool pumpMessages = true;     ///< false: not even in background mode
    bool invertCallback = false;  ///< the progress callback goes on by non-zero and cancels by 0
    bool showNames = true;        ///< quiet lines give the shortest output there is
    bool useSettings = true;      ///< what the user has set for the library; false: the line says to ignore it
    bool printNames = true;       ///< with kPrint: the members' names before their bytes
    /// A file that takes a copy of the texts, in UTF-8, behind what it holds; empty for none. It has been opened once.
    std::filesystem::path log;
    /// Tells the open archive what only its kind knows of; may be empty.
    std::function<void(ArchiveReader& reader)> prepare;

    /// Whether it makes or changes the archive.
    [[nodiscard]] bool changes() const noexcept { return action == Action::kPack || action == Action::kDelete; }
};

/// How a library words its output. One object for one command; each function appends UTF-8 text to `out`.
class CommandTexts {
public:
    virtual ~CommandTexts() = default;
    virtual void begin(const Command& command, std::string& out) = 0;
    virtual void member(const MemberReport& report, std::string& out) = 0;
    /// One row of kList and kListVerbose.
    virtual void row(const Member& member, std::string& out) = 0;
    /// In front of a member's bytes with kPrint.
    virtual void printed(const Member& member, std::string& out) = 0;
    /// With kPack, in place of `member`.
    virtual void packed(const PackedMember& member, std::string& out);
    /// With kDelete, likewise.
    virtual void deleted(const Member& member, std::string& out);
    /// About a source that is not packed, or not as it should be.
    virtual void warned(PackWarning warning, std::string_view name, std::string& out);
    /// @param summary  with kPack and kDelete, of its fields the code alone
    virtual void end(const Command& command, const UnpackSummary& summary, std::string& out) = 0;
    /// Instead of all others: the line is no command, or there is no archive to open.
    /// @param command  null when the line is none
    virtual void refused(const Command* command, ReturnCode code, std::string& out);
};

/// The command language of one library.
struct CommandLanguage {
    /// @param line  UTF-8, without the program's name
    /// @return the command, or the code that tells why it is none: kCommandName, kNotArcFile, kResponseRead, ...
    std::variant<Command, ReturnCode> (*parse)(std::string_view line, const TextCodec& codec) = nullptr;
    std::unique_ptr<CommandTexts> (*texts)() = nullptr;
    /// What kPack and kDelete do; null: the library makes and changes no archives.
    ChangeFunction change = nullptr;
    /// The code that the library gives for a run; null: UnpackSummary::code as it is.
    std::int32_t (*codeOf)(const Command& command, const UnpackSummary& summary) = nullptr;
};

}  // namespace archiver
