#include "archivers/unpacking/win32/error_codes.h"

namespace archiver {
namespace {

constexpr DWORD kDiskQuotaExceeded = 1295;  // not in the headers of every tool chain

bool isFull(DWORD error) noexcept {
    return error == ERROR_DISK_FULL || error == ERROR_HANDLE_DISK_FULL || error == kDiskQuotaExceeded ||
           error == ERROR_NOT_ENOUGH_QUOTA;
}

bool isTooLong(DWORD error) noexcept { return error == ERROR_FILENAME_EXCED_RANGE || error == ERROR_BUFFER_OVERFLOW; }

}  // namespace

ReturnCode codeOfCreating(DWORD error) noexcept {
    if (isFull(error)) return kDiskSpace;
    if (isTooLong(error)) return kLongFileName;
    switch (error) {
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return kSameNameFile;
        case ERROR_ACCESS_DENIED:
        case ERROR_WRITE_PROTECT:
            return kReadOnly;
        default:
            return kFileOpen;
    }
}

ReturnCode codeOfFolder(DWORD error) noexcept {
    if (isFull(error)) return kDiskSpace;
    return isTooLong(error) ? kLongFileName : kMakeDirectory;
}

ReturnCode codeOfWriting(DWORD error) noexcept { return isFull(error) ? kDiskSpace : kCannotWrite; }

}  // namespace archiver
