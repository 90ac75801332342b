#pragma once
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "browser/member_copies.h"
#include "shell/file_clipboard.h"

namespace tovar {

/// Tells when what is on the clipboard changes.
class ClipboardWatch {
public:
    virtual ~ClipboardWatch() = default;
    /// @param onChanged  called some time after a change; may call stop()
    virtual void start(std::function<void()> onChanged) = 0;
    virtual void stop() noexcept = 0;
};

/// Unpacked members whose names are on the clipboard, for all browsers of the component. They go when something else is
/// there, and with the object; then it takes their names off the clipboard, which would lead nowhere.
class ClipboardCopies {
public:
    /// All outlive the object.
    ClipboardCopies(Clipboard& clipboard, const TextCodec& codec, ClipboardWatch& watch)
        : clipboard_(clipboard), lists_(clipboard, codec), watch_(watch) {}
    ~ClipboardCopies();
    ClipboardCopies(const ClipboardCopies&) = delete;
    ClipboardCopies& operator=(const ClipboardCopies&) = delete;

    /// @param copies  kept as long as they are on the clipboard
    /// @param paths   full ones, of files and folders among them
    /// @return false when the clipboard does not take them
    bool put(std::shared_ptr<const MemberCopies> copies, const std::vector<std::wstring>& paths);

private:
    enum class Holding { Ours, Others, Unknown };

    [[nodiscard]] Holding holding();
    void onChanged() noexcept;

    Clipboard& clipboard_;
    FileClipboard lists_;
    ClipboardWatch& watch_;
    std::shared_ptr<const MemberCopies> copies_;
};

}  // namespace tovar
