#pragma once
#include <cstdint>

/// Return codes of the common archiver convention that the bundled libraries give. Positive 32-bit values.
/// Source: published headers of the convention (names without their ERROR_ prefix).
namespace archiver {
enum ReturnCode : std::int32_t {
    kOk = 0,
    kNoMoreEntries = -1,  ///< FindFirst, FindNext
    kDiskSpace = 0x8005,
    kReadOnly = 0x8006,
    kUserSkip = 0x8007,
    kUnknownType = 0x8008,
    kMethod = 0x8009,        ///< compression or encryption method not supported
    kPasswordFile = 0x800A,  ///< encrypted, and no or a wrong password
    kVersion = 0x800B,
    kFileCrc = 0x800C,
    kFileOpen = 0x800D,
    kMoreFresh = 0x800E,
    kNotExist = 0x800F,
    kAlreadyExist = 0x8010,
    kTooManyFiles = 0x8011,
    kMakeDirectory = 0x8012,
    kCannotWrite = 0x8013,
    kHuffmanCode = 0x8014,
    kCommentHeader = 0x8015,
    kHeaderCrc = 0x8016,
    kHeaderBroken = 0x8017,
    kArcFileOpen = 0x8018,
    kNotArcFile = 0x8019,
    kCannotRead = 0x801A,
    kFileStyle = 0x801B,
    kCommandName = 0x801C,
    kMoreHeapMemory = 0x801D,
    kEnoughMemory = 0x801E,
    kAlreadyRunning = 0x801F,
    kUserCancel = 0x8020,
    kHarcIsNotOpened = 0x8021,
    kNotSearchMode = 0x8022,
    kNotSupport = 0x8023,
    kTimeStamp = 0x8024,
    kTmpOpen = 0x8025,
    kLongFileName = 0x8026,
    kArcReadOnly = 0x8027,
    kSameNameFile = 0x8028,
    kNotFindArcFile = 0x8029,
    kResponseRead = 0x802A,
    kNotFilename = 0x802B,
    kTmpCopy = 0x802C,
    kLogFile = 0x8032,
    kTooBig = 0x804A,  ///< a file, or the archive, is longer than the format can hold
};
}  // namespace archiver
