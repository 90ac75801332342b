#pragma once
#include <string>
#include <string_view>

#include "shell/work_folder.h"

namespace tovar {

/// A list file in the work folder, which goes with the object: it tells a library of members or files.
class ListFile {
public:
    /// @param codec  the 8-bit form in which the library reads its lists
    /// @throws SystemError when the whole text cannot be written: half a list would leave members out, and an empty one
    ///         means all of them to some libraries
    ListFile(std::wstring_view text, const TextCodec& codec, WorkFolder& workFolder, FileSystem& files);
    ~ListFile();
    ListFile(const ListFile&) = delete;
    ListFile& operator=(const ListFile&) = delete;

    /// "@" and the path, for a library's command line.
    [[nodiscard]] std::wstring argument() const { return workFolder_.listArgument(path_); }

private:
    WorkFolder& workFolder_;
    FileSystem& files_;
    std::wstring path_;
};

}  // namespace tovar
