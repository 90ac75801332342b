#pragma once
#include <cstddef>
#include <cstdint>

#include "archivers/convention/abi.h"

/// Binary interface of "InfoZip32.dll", which creates and changes ZIP archives: records and function types that both
/// sides share. Functions and callbacks are stdcall on 32-bit Windows; exports are undecorated. Texts are 8-bit and
/// NUL-terminated: the system's ANSI code page, or UTF-8 after ZpSetUnicodeMode(1), which is an addition of ours.
/// Source: published headers of the library's interface.
namespace archiver::zip_abi {

/// What ZpArchive answers.
namespace result {
inline constexpr std::int32_t kOk = 0;
inline constexpr std::int32_t kUnexpectedEnd = 2;
inline constexpr std::int32_t kStructure = 3;
inline constexpr std::int32_t kMemory = 4;
inline constexpr std::int32_t kLogic = 5;
inline constexpr std::int32_t kTooLarge = 6;  ///< an entry that cannot be split
inline constexpr std::int32_t kComment = 7;   ///< the comment's form
inline constexpr std::int32_t kTest = 8;
inline constexpr std::int32_t kInterrupted = 9;  ///< the user gave up
inline constexpr std::int32_t kTemporaryFile = 10;
inline constexpr std::int32_t kRead = 11;
inline constexpr std::int32_t kNothingToDo = 12;
inline constexpr std::int32_t kNoArchive = 13;  ///< missing or empty
inline constexpr std::int32_t kWrite = 14;
inline constexpr std::int32_t kCreate = 15;  ///< the archive cannot be opened to write
inline constexpr std::int32_t kParameters = 16;
inline constexpr std::int32_t kOpen = 18;  ///< a named file cannot be opened to read
}  // namespace result

/// What one run is to do. Fields are 0 or 1 unless said otherwise.
struct Options {
    const char* date;             ///< for the two fields by date; empty = none
    const char* rootFolder;       ///< names are relative to it
    const char* temporaryFolder;  ///< for the new archive, when the next field says so
    std::int32_t useTemporaryFolder;
    std::int32_t includeSuffixes;
    std::int32_t encrypt;
    std::int32_t systemAndHidden;  ///< include system and hidden files
    std::int32_t volumeLabel;
    std::int32_t excludeExtra;
    std::int32_t noFolderEntries;
    std::int32_t excludeByDate;
    std::int32_t includeByDate;
    std::int32_t verbose;
    std::int32_t quiet;
    std::int32_t crLfToLf;
    std::int32_t lfToCrLf;
    std::int32_t junkFolders;
    std::int32_t grow;
    std::int32_t shortNames;
    std::int32_t move;
    std::int32_t deleteEntries;
    std::int32_t update;
    std::int32_t freshen;
    std::int32_t junkSelfExtractor;
    std::int32_t latestTime;
    std::int32_t comment;
    std::int32_t adjustOffsets;
    std::int32_t privileges;
    std::int32_t encryptionSupported;  ///< set by the library
    std::int32_t recurse;
    std::int32_t repair;
    char level;  ///< '0' (stored) to '9'
};
static_assert(sizeof(void*) != 4 || offsetof(Options, rootFolder) == 4);
static_assert(sizeof(void*) != 4 || offsetof(Options, temporaryFolder) == 8);
static_assert(sizeof(void*) != 4 || offsetof(Options, useTemporaryFolder) == 12);
static_assert(sizeof(void*) != 4 || offsetof(Options, includeSuffixes) == 16);
static_assert(sizeof(void*) != 4 || offsetof(Options, encrypt) == 20);
static_assert(sizeof(void*) != 4 || offsetof(Options, systemAndHidden) == 24);
static_assert(sizeof(void*) != 4 || offsetof(Options, volumeLabel) == 28);
static_assert(sizeof(void*) != 4 || offsetof(Options, excludeExtra) == 32);
static_assert(sizeof(void*) != 4 || offsetof(Options, noFolderEntries) == 36);
static_assert(sizeof(void*) != 4 || offsetof(Options, excludeByDate) == 40);
static_assert(sizeof(void*) != 4 || offsetof(Options, includeByDate) == 44);
static_assert(sizeof(void*) != 4 || offsetof(Options, verbose) == 48);
static_assert(sizeof(void*) != 4 || offsetof(Options, quiet) == 52);
static_assert(sizeof(void*) != 4 || offsetof(Options, crLfToLf) == 56);
static_assert(sizeof(void*) != 4 || offsetof(Options, lfToCrLf) == 60);
static_assert(sizeof(void*) != 4 || offsetof(Options, junkFolders) == 64);
static_assert(sizeof(void*) != 4 || offsetof(Options, grow) == 68);
static_assert(sizeof(void*) != 4 || offsetof(Options, shortNames) == 72);
static_assert(sizeof(void*) != 4 || offsetof(Options, move) == 76);
static_assert(sizeof(void*) != 4 || offsetof(Options, deleteEntries) == 80);
static_assert(sizeof(void*) != 4 || offsetof(Options, update) == 84);
static_assert(sizeof(void*) != 4 || offsetof(Options, freshen) == 88);
static_assert(sizeof(void*) != 4 || offsetof(Options, junkSelfExtractor) == 92);
static_assert(sizeof(void*) != 4 || offsetof(Options, latestTime) == 96);
static_assert(sizeof(void*) != 4 || offsetof(Options, comment) == 100);
static_assert(sizeof(void*) != 4 || offsetof(Options, adjustOffsets) == 104);
static_assert(sizeof(void*) != 4 || offsetof(Options, privileges) == 108);
static_assert(sizeof(void*) != 4 || offsetof(Options, encryptionSupported) == 112);
static_assert(sizeof(void*) != 4 || offsetof(Options, recurse) == 116);
static_assert(sizeof(void*) != 4 || offsetof(Options, repair) == 120);
static_assert(sizeof(void*) != 4 || offsetof(Options, level) == 124);
static_assert(sizeof(void*) != 4 || sizeof(Options) == 128);

/// What a run works on.
struct Command {
    std::int32_t count;   ///< of the names
    const char* archive;  ///< file name
    /// Files, and folders as their name, a separator and "*.*", relative to the root folder. Callers pass the first
    /// one twice.
    const char* const* names;
};
static_assert(sizeof(void*) != 4 || sizeof(Command) == 12);

/// Names that callers have room for, the repeated first one included.
inline constexpr std::size_t kNameSlots = 4001;

/// Bytes of the comment callback's buffer, the NUL included. The callback is not told, so that more would be a guess.
inline constexpr std::size_t kCommentSize = 4096;

namespace fn {
/// The console text of the library, in pieces. @return the length
using Message = std::uint32_t ARCHIVER_CALL(const char* text, std::uint32_t length);
/// Fills the buffer with the comment, NUL-terminated. @return 0, or another value when the user gave none; then the
/// buffer holds an empty text, and the archive keeps the comment that it has
using Comment = std::int32_t ARCHIVER_CALL(char* buffer);
/// Fills the buffer with the password, NUL-terminated. @return 0, or another value when there is none; then the buffer
/// holds an empty text
using Password = std::int32_t ARCHIVER_CALL(char* buffer, std::int32_t size, const char* prompt, const char* name);
/// A file is done. @return 0, or another value to stop
using Service = std::int32_t ARCHIVER_CALL(const char* name, std::uint32_t size);
}  // namespace fn

struct Callbacks {
    fn::Message* message;
    fn::Comment* comment;
    fn::Password* password;
    fn::Service* service;
};
static_assert(sizeof(void*) != 4 || sizeof(Callbacks) == 16);

/// What ZpVersion fills in.
struct Version {
    std::uint32_t size;   ///< of this record
    std::uint32_t flags;  ///< bit 0 a trial version, bit 1 zlib is used
    char trialLevel[10];  ///< empty for none
    char date[20];
    char zlibVersion[10];
    struct Numbers {
        std::uint8_t major, minor, patch, unused;
    } zip, os2Library, windowsLibrary;
};
static_assert(sizeof(Version) == 60);

namespace fn {
using Init = std::int32_t ARCHIVER_CALL(const Callbacks* callbacks);
using SetOptions = std::int32_t ARCHIVER_CALL(const Options* options);
using Archive = std::int32_t ARCHIVER_CALL(Command command);
using GetOptions = Options ARCHIVER_CALL();
using GetVersion = void ARCHIVER_CALL(Version* version);
}  // namespace fn

}  // namespace archiver::zip_abi
