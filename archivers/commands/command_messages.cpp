#include "archivers/commands/command_messages.h"

#include <algorithm>
#include <iterator>

#include "archivers/commands/command.h"
#include "archivers/commands/command_paths.h"
#include "archivers/commands/text_columns.h"

namespace archiver {

namespace {

struct Message {
    ReturnCode code;
    std::string_view text;
};
constexpr Message kMessages[] = {
    {kOk, "done"},
    {kDiskSpace, "there is not enough room on the disk"},
    {kReadOnly, "the file is write-protected"},
    {kUserSkip, "skipped"},
    {kUnknownType, "unknown type of file"},
    {kMethod, "the compression method is not supported"},
    {kPasswordFile, "the password is missing or wrong"},
    {kVersion, "a newer version is needed"},
    {kFileCrc, "the checksum is wrong"},
    {kFileOpen, "the file cannot be created"},
    {kMoreFresh, "a newer file is there"},
    {kNotExist, "no such member"},
    {kAlreadyExist, "the file is there already"},
    {kTooManyFiles, "there are too many files"},
    {kMakeDirectory, "the folder cannot be made"},
    {kCannotWrite, "the file cannot be written"},
    {kHuffmanCode, "the packed data are damaged"},
    {kCommentHeader, "the comment is damaged"},
    {kHeaderCrc, "the checksum of a header is wrong"},
    {kHeaderBroken, "a header is damaged"},
    {kArcFileOpen, "the archive cannot be opened"},
    {kNotArcFile, "no archive is named"},
    {kCannotRead, "the archive cannot be read"},
    {kFileStyle, "the file is no archive of this kind"},
    {kCommandName, "unknown command or switch"},
    {kMoreHeapMemory, "there is not enough memory"},
    {kEnoughMemory, "there is not enough memory"},
    {kAlreadyRunning, "a command is running already"},
    {kUserCancel, "cancelled"},
    {kNotSupport, "not supported"},
    {kArcReadOnly, "the archive is write-protected"},
    {kTmpOpen, "a temporary file cannot be created"},
    {kLongFileName, "the name is too long"},
    {kSameNameFile, "the name is there twice"},
    {kNotFindArcFile, "the archive does not exist"},
    {kResponseRead, "the response file cannot be read"},
    {kNotFilename, "no file is named"},
    {kLogFile, "the log file cannot be written"},
    {kTooBig, "too big for an archive of this kind"},
};

}  // namespace

std::string_view messageOf(std::int32_t code) noexcept {
    const auto* const found = std::find_if(std::begin(kMessages), std::end(kMessages),
                                           [code](const Message& message) { return message.code == code; });
    return found == std::end(kMessages) ? "an error occurred" : found->text;
}

std::string_view messageOf(PackWarning warning) noexcept {
    switch (warning) {
        case PackWarning::kNotFound:
            return "not found";
        case PackWarning::kNotOpened:
            return "it cannot be opened";
        case PackWarning::kChanged:
            return "it became shorter while it was packed";
        case PackWarning::kHidden:
            return "hidden or system file";
        case PackWarning::kNotRemoved:
            return "it is packed, but cannot be removed";
    }
    return {};
}

void CommandTexts::packed(const PackedMember&, std::string&) {}

void CommandTexts::deleted(const Member&, std::string&) {}

void CommandTexts::warned(PackWarning, std::string_view, std::string&) {}

void CommandTexts::refused(const Command* command, ReturnCode code, std::string& out) {
    out += "Error(0x" + hexadecimal(static_cast<std::uint32_t>(code), 4) + "): " + std::string(messageOf(code));
    if (command != nullptr) out += " : " + utf8Of(command->archive);
    out += "\r\n";
}

}  // namespace archiver
