#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "shell/file_system.h"
#include "shell/message_boxes.h"
#include "shell/system_information.h"
#include "shell/system_paths.h"
#include "shell/text_codec.h"

namespace tovar {

/// Path functions that look outside the process. They answer false or an empty text where something fails; only
/// FileVersionText throws.
class PathOperations {
public:
    /// The ports must outlive the object.
    PathOperations(FileSystem& files, SystemPaths& paths, SystemInformation& information, MessageBoxes& messages)
        : files_(files), paths_(paths), information_(information), messages_(messages) {}

    [[nodiscard]] bool IsFolder(std::wstring_view path) const;
    [[nodiscard]] bool IsPlainFile(std::wstring_view path) const;

    /// Makes the path the process's current folder, and its drive the current drive.
    void SetWorkingFolder(std::wstring_view path);

    /// @return the current folder with a trailing separator: of the path's drive, which becomes the current drive, or
    ///         of the current drive when the path names none
    [[nodiscard]] std::wstring CurrentFolderOf(std::wstring_view path);

    /// Makes a path absolute by the current folder. Of leading "..\" only one is resolved.
    [[nodiscard]] std::wstring ResolvePath(std::wstring_view path);

    /// @return the 8.3 form, or the path unchanged where there is none
    [[nodiscard]] std::wstring ShortPathName(std::wstring_view path) const;

    /// @return the full path of a file in the system's search order; empty when it is not found
    [[nodiscard]] std::wstring FindOnSearchPath(std::wstring_view name) const;

    /// @return every line of the file followed by CR LF; empty when the file cannot be read to its end
    [[nodiscard]] std::wstring ReadTextFile(std::wstring_view path, const TextCodec& codec) const;

    /// Writes the value and CR LF.
    /// @return false when the file cannot be written, or the value has a character that the codec cannot encode; then
    ///         the file is not touched
    bool WriteTextFile(std::wstring_view path, std::wstring_view value, const TextCodec& codec);

    /// Creates a folder with all that is missing above it. The first folder that cannot be created ends the work with a
    /// message box of the system's text.
    /// @return whether the full path is a folder afterwards
    bool CreateFolderTree(std::wstring_view path);

    /// Adds the files of a folder to the caller's counters. Folders whose name begins with "." are left out.
    /// @param folder      ends with a separator
    /// @param pattern     passed on, not used
    /// @param totalBytes  in single precision: beyond 16 MB the total is approximate
    /// @param recurse     whether folders inside are counted too
    void ScanFolder(std::wstring_view folder, std::wstring_view pattern, std::int32_t& fileCount, float& totalBytes,
                    bool recurse) const;

    /// @return the file version of a module as "a.b.c.d"; empty for an empty path, "0.0.0.0" for a file
    ///         without version resource
    /// Throws std::overflow_error when b or d is above 32767.
    [[nodiscard]] std::wstring FileVersionText(std::wstring_view path) const;

    /// @return the system's words for an error number, without line breaks
    [[nodiscard]] std::wstring SystemErrorText(SystemErrorCode code) const;

private:
    FileSystem& files_;
    SystemPaths& paths_;
    SystemInformation& information_;
    MessageBoxes& messages_;
};

}  // namespace tovar
