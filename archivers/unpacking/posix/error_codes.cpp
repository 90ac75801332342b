#include "archivers/unpacking/posix/error_codes.h"

#include <cerrno>

namespace archiver {
namespace {

bool isFull(int error) noexcept { return error == ENOSPC || error == EDQUOT; }

/// What stands at the place has its name.
bool isTaken(int error) noexcept { return error == EEXIST || error == EISDIR || error == ENOTEMPTY; }

}  // namespace

ReturnCode codeOfCreating(int error) noexcept {
    if (isFull(error)) return kDiskSpace;
    if (isTaken(error)) return kSameNameFile;
    if (error == EROFS || error == EACCES || error == EPERM) return kReadOnly;
    return error == ENAMETOOLONG ? kLongFileName : kFileOpen;
}

ReturnCode codeOfFolder(int error) noexcept {
    if (isFull(error)) return kDiskSpace;
    return error == ENAMETOOLONG ? kLongFileName : kMakeDirectory;
}

ReturnCode codeOfWriting(int error) noexcept {
    // A file that is longer than the file system or the user's limit allows (EFBIG) says nothing of the others.
    if (isFull(error)) return kDiskSpace;
    return isTaken(error) ? kSameNameFile : kCannotWrite;
}

ReturnCode codeOfLinking(int error) noexcept {
    if (error == EPERM || error == EOPNOTSUPP || error == ENOSYS || error == EMLINK || error == EXDEV) {
        return kNotSupport;
    }
    return codeOfCreating(error);
}

}  // namespace archiver
