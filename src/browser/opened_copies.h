#pragma once
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "shell/file_system.h"

namespace tovar {

/// Members that were unpacked into the work folder so that a program could open them. They go when their browser is
/// closed. One that is in use then goes at the next chance: when another browser is opened or closed, or, by a record
/// in the work folder, in a later run of the host.
class OpenedCopies {
public:
    /// The files outlive the object.
    explicit OpenedCopies(FileSystem& files) : files_(files) {}

    /// @param workFolder   with a separator at its end
    /// @param path         of the file, relative to the work folder, with separators of the same kind
    /// @param madeFolders  how many of the folders in the path were made for it
    void add(const std::wstring& workFolder, const std::wstring& path, std::size_t madeFolders);

    /// Removes what can be removed; the rest is kept, and recorded.
    void remove();

    /// Removes what earlier runs recorded in a work folder, unless it was changed since.
    void removeRecorded(const std::wstring& workFolder);

    /// @return where the record of a work folder is kept
    [[nodiscard]] static std::wstring recordOf(const std::wstring& workFolder);

private:
    struct Copy {
        std::wstring workFolder, path;
        std::size_t madeFolders = 0;
        FileStatus status;  ///< as it was unpacked
    };

    void readRecord(const std::wstring& workFolder);
    void writeRecord(const std::wstring& workFolder);
    [[nodiscard]] bool isKnown(const std::wstring& workFolder, const std::wstring& path) const;
    [[nodiscard]] bool isGone(const Copy& copy);
    void removeFolders(const Copy& copy);

    FileSystem& files_;
    std::vector<Copy> copies_;
};

}  // namespace tovar
