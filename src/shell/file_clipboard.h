#pragma once
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "shell/text_codec.h"

namespace tovar {

/// The desktop's clipboard, for the format of file lists alone (CF_HDROP, 15).
class Clipboard {
public:
    virtual ~Clipboard() = default;

    /// @return whether there is a file list; asked without opening
    [[nodiscard]] virtual bool hasFiles() const = 0;
    /// Opens it without an owner. Another program can hold it.
    [[nodiscard]] virtual bool open() = 0;
    /// Only after open returned true.
    virtual void close() noexcept = 0;

    // While it is open.
    virtual bool empty() = 0;
    /// @param block  see file_drop.h
    virtual bool putFiles(std::string_view block) = 0;
    /// @return a copy of the block; nullopt when there is none
    [[nodiscard]] virtual std::optional<std::string> takeFiles() = 0;
};

/// A file list on the clipboard has no name in it.
class EmptyFileList : public std::out_of_range {
public:
    EmptyFileList() : std::out_of_range("a list of no files") {}
};

/// Exchanges files with other programs through the clipboard, which is open only within a call. Failures are told by
/// the results; nothing is shown.
class FileClipboard {
public:
    /// Both outlive the object.
    /// @param codec  the process's code page
    FileClipboard(Clipboard& clipboard, const TextCodec& codec) : clipboard_(clipboard), codec_(codec) {}

    /// @return whether there are files, as far as can be told without opening it
    [[nodiscard]] bool hasFiles() const { return clipboard_.hasFiles(); }

    /// @param paths  full ones
    /// @return false when the clipboard cannot be opened, and then nothing changes; or when it does not take the list,
    ///         and then it is empty
    bool PutFilesOnClipboard(const std::vector<std::wstring>& paths);

    /// @param paths  replaced by what is there; as it was when the result is 0
    /// @return how many; 0 when there are no files, the list is damaged or the clipboard cannot be opened
    /// Throws EmptyFileList.
    int GetFilesFromClipboard(std::vector<std::wstring>& paths);

    void ClearClipboard();

private:
    Clipboard& clipboard_;
    const TextCodec& codec_;
};

}  // namespace tovar
