#pragma once
#include <string>
#include <string_view>

#include "shell/path_operations.h"

namespace tovar {

/// The folder for everything that has to lie on disk for a moment, and the list files in it that tell an archiver
/// library which files to work on. One object serves the whole process.
class WorkFolder {
public:
    /// The path is empty until resetToTempFolder or SetTempDir. The ports must outlive the object.
    WorkFolder(PathOperations& operations, FileSystem& files, SystemPaths& paths)
        : operations_(operations), files_(files), paths_(paths) {}

    /// The work folder's path with a separator at its end; empty when the system's temporary folder is not known.
    [[nodiscard]] const std::wstring& path() const noexcept { return path_; }

    /// Goes (back) to the system's temporary folder, as every new plug-in object does.
    void resetToTempFolder();

    /// Moves the work folder; creates it (one level) and makes it read-only and hidden. Failures are ignored.
    void SetTempDir(std::wstring_view path);

    /// @return the system's temporary folder with a trailing separator. Throws SystemError.
    [[nodiscard]] std::wstring TempFolderPath() const;

    /// Creates a new empty file with a unique name in an existing folder.
    /// @return its full path; empty when the folder does not exist. Throws SystemError.
    std::wstring MakeTempFileName(std::wstring_view folder, std::wstring_view prefix);

    /// Writes a new list file into the work folder.
    /// @param codec  the 8-bit form in which the archiver library reads its lists
    /// @return its full path. A file that cannot be written stays empty. Throws SystemError: kNoUnicodeTranslation for
    ///         a character that the codec cannot encode (nothing is created then), else what MakeTempFileName throws.
    std::wstring WriteTempListFile(std::wstring_view text, const TextCodec& codec);

    /// @return "@" and the list file's path, as it stands in a library's command line
    [[nodiscard]] std::wstring listArgument(std::wstring_view listFile) const;

    /// Turns names into the text of a list file: one a line, quoted where needed; names of nothing are dropped.
    /// @param names         relative to baseFolder, separated by CR LF
    /// @param folderSuffix  put behind the name of a folder
    [[nodiscard]] std::wstring BuildListFileText(std::wstring_view baseFolder, std::wstring_view names,
                                                 std::wstring_view folderSuffix) const;

private:
    PathOperations& operations_;
    FileSystem& files_;
    SystemPaths& paths_;
    std::wstring path_;
};

}  // namespace tovar
