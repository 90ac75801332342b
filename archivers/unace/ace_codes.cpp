#include "archivers/unace/ace_codes.h"

#include "archivers/convention/ace_abi.h"

namespace archiver::unace {

std::int32_t resultOf(ReturnCode code, bool passwordSet) noexcept {
    namespace result = ace_abi::result;
    switch (code) {
        case kOk:
            return result::kOk;
        case kNoMoreEntries:
            return result::kEnd;
        case kMoreHeapMemory:
        case kEnoughMemory:
            return result::kMemory;
        case kDiskSpace:
            return result::kFull;
        case kArcFileOpen:
        case kNotFindArcFile:
        case kFileStyle:
            return result::kOpen;
        case kCannotRead:
            return result::kRead;
        case kReadOnly:
        case kFileOpen:
        case kMakeDirectory:
        case kCannotWrite:
        case kLongFileName:
        case kNotFilename:
            return result::kWrite;
        case kFileCrc:
        case kHuffmanCode:
        case kHeaderCrc:
        case kHeaderBroken:
            return result::kCrc;
        case kPasswordFile:
            // Callers of this interface know a wrong password by the checksum that its data come to.
            return passwordSet ? result::kCrc : result::kNoPassword;
        case kMethod:
        case kVersion:
            return result::kMethod;
        case kSameNameFile:
            return result::kExists;
        case kUserCancel:
            return result::kUser;
        default:
            return result::kOther;
    }
}

}  // namespace archiver::unace
