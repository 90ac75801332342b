#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "shell/message_pump.h"
#include "shell/path_operations.h"
#include "shell/window_handle.h"

namespace tovar {

/// What the desktop is to do with files; its own numbers.
enum class FileFunction : std::uint32_t { Move = 1, Copy = 2, Delete = 3 };

/// How it does it. Bits of the desktop's own, FOF_ and the name.
namespace file_flags {
inline constexpr std::uint16_t kSilent = 0x4;            ///< no progress is shown
inline constexpr std::uint16_t kNoConfirmation = 0x10;   ///< every question is answered with yes
inline constexpr std::uint16_t kAllowUndo = 0x40;        ///< what is deleted goes to the recycle bin
inline constexpr std::uint16_t kNoConfirmMkDir = 0x200;  ///< folders that are missing are made without a question
/// No question at all, as for the component's own copies.
inline constexpr std::uint16_t kUnseen = kSilent | kNoConfirmation | kNoConfirmMkDir;
}  // namespace file_flags

/// A request to the desktop.
struct FileOperation {
    WindowHandle owner = nullptr;  ///< its windows are modal to this one
    FileFunction function = FileFunction::Copy;
    std::wstring sources;  ///< names, a NUL between them, two behind the last one; relative to the current folder
    std::wstring target;   ///< a folder, two NUL behind it; just these for Delete
    std::uint16_t flags = 0;

    bool operator==(const FileOperation&) const = default;
};

/// The desktop's service for groups of files. It shows its own progress, questions and failures, as the flags say.
class DesktopFiles {
public:
    struct Result {
        std::int32_t code = 0;  ///< 0 = success; else an error of the desktop's own
        bool aborted = false;   ///< the user has stopped it, or left something out
    };

    virtual ~DesktopFiles() = default;
    virtual Result run(const FileOperation& operation) = 0;
};

/// Copies, moves and deletes groups of files through the desktop. Names are relative to a source folder, which each of
/// these makes the process's current folder and leaves it; who works in a host that minds keeps a
/// CurrentFolderKeeper around. Nothing throws: what fails is answered with false. Messages that wait run after each
/// operation.
class FileOperations {
public:
    /// All outlive the object.
    FileOperations(DesktopFiles& desktop, PathOperations& paths, MessagePump& pump)
        : desktop_(desktop), paths_(paths), pump_(pump) {}

    /// @param sourceList  names, a NUL between them
    /// @param target      empty for Delete
    /// @return whether everything was done, and nothing left out by the user
    bool ShellFileOperation(WindowHandle owner, FileFunction function, std::wstring_view sourceList,
                            std::wstring_view target, std::uint16_t flags) noexcept;

    /// @param targetFolder  gets a separator at its end once both folders are found to be there
    /// @param files         names in the source folder, a NUL between them
    /// @return false also when one of the folders is missing; nothing happens then
    bool CopyFiles(WindowHandle owner, std::wstring_view sourceFolder, std::wstring& targetFolder,
                   std::wstring_view files, std::uint16_t flags) noexcept;

    /// As CopyFiles.
    /// @param showProgress  whether the desktop shows its progress and asks all its questions; else it asks none
    bool MoveFiles(WindowHandle owner, std::wstring_view sourceFolder, std::wstring& targetFolder,
                   std::wstring_view files, bool showProgress) noexcept;

    /// @param toRecycleBin  whether the desktop asks, and the files can be brought back; else they go for ever, and it
    ///                      asks nothing
    /// @return false also when the folder is missing; nothing happens then
    bool DeleteFiles(WindowHandle owner, std::wstring_view folder, std::wstring_view files, bool toRecycleBin) noexcept;

private:
    bool transfer(WindowHandle owner, FileFunction function, std::wstring_view sourceFolder, std::wstring& targetFolder,
                  std::wstring_view files, std::uint16_t flags);
    bool run(WindowHandle owner, FileFunction function, std::wstring_view sourceList, std::wstring_view target,
             std::uint16_t flags);

    DesktopFiles& desktop_;
    PathOperations& paths_;
    MessagePump& pump_;
};

/// @param lines  a name each, CR LF between them or behind each
/// @return the names with a NUL between them, as FileOperations takes them
[[nodiscard]] std::wstring fileListOf(std::wstring_view lines);

}  // namespace tovar
