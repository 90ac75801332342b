#pragma once
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "archivers/unpacking/unpack_events.h"

/// All that the windows of the libraries say. UTF-8; in buttons and labels "&" stands before the letter that presses
/// them.
namespace archiver {

namespace texts {
inline constexpr std::string_view kOk = "OK";
inline constexpr std::string_view kCancel = "Cancel";
inline constexpr std::string_view kCancelling = "Cancelling...";
inline constexpr std::string_view kArchive = "Archive:";
inline constexpr std::string_view kFile = "File:";

inline constexpr std::string_view kReplaceHeading = "Replace the file?";
inline constexpr std::string_view kExistingFile = "The file there:";
inline constexpr std::string_view kArchivedFile = "In the archive:";
inline constexpr std::string_view kRenameHint = "Rename keeps both: the new file gets a number.";
inline constexpr std::string_view kYes = "&Yes";
inline constexpr std::string_view kNo = "&No";
inline constexpr std::string_view kYesToAll = "Yes to &all";
inline constexpr std::string_view kNoToAll = "N&o to all";
inline constexpr std::string_view kRename = "&Rename";

inline constexpr std::string_view kPasswordHeading = "Enter the password for an encrypted file.";
inline constexpr std::string_view kPasswordWrong = "The last password was wrong.";
inline constexpr std::string_view kPassword = "&Password:";
inline constexpr std::string_view kShowPassword = "&Show the password";

inline constexpr std::string_view kDiskHeading = "There is not enough free space on the disk.";
inline constexpr std::string_view kDiskNeeded = "Needed:";
inline constexpr std::string_view kDiskAvailable = "Available:";
inline constexpr std::string_view kDiskQuestion = "Continue all the same?";
inline constexpr std::string_view kContinue = "C&ontinue";

inline constexpr std::string_view kSettingsOf = "Settings of ";
inline constexpr std::string_view kShowProgress = "&Show the progress window";
inline constexpr std::string_view kProcessors = "&Processors to use:";
inline constexpr std::string_view kAllProcessors = "All";

// Of the terminal.
inline constexpr std::string_view kReplaceOnConsole =
    "Replace the file? (y)es, (n)o, yes to (a)ll, n(o) to all, (r)ename, (c)ancel: ";
inline constexpr std::string_view kPasswordOnConsole = "password for";
inline constexpr std::string_view kDiskOnConsole = "Continue all the same? (y)es, (n)o: ";
}  // namespace texts

inline constexpr unsigned kLongestPassword = 255;  ///< characters

/// What the question about a file that is there tells of both.
struct ReplaceFacts {
    std::string path;
    std::string existing;  ///< "1,234 bytes (1.20 KB), 2026-11-20 14:03:05"
    std::string archived;  ///< likewise, with ", newer" or ", older" when both times are known and differ
};
ReplaceFacts factsOf(const ReplaceQuestion& question);

/// What can be chosen for LibrarySettings::processors: 0 for all, then 1 up to the machine's own, and the one that is
/// set, ascending.
std::vector<unsigned> processorChoices(unsigned ofMachine, unsigned current);

/// "All", "1", "2", ...
std::string processorText(unsigned choice);

}  // namespace archiver
