#pragma once
#include <memory>
#include <optional>
#include <string>

#include "archivers/convention/abi.h"
#include "archivers/unpacking/unpack_events.h"

namespace archiver {

/// The windows of a running command. Without an owner window none is ever shown. All calls, the end included, come on
/// the thread that made the object.
class CommandDialogs {
public:
    virtual ~CommandDialogs() = default;

    /// Lets pending messages run where that is wanted, and half a second after the start shows how far the work is:
    /// archive, file, bytes, rate, remaining time, Cancel. Cheap when called often.
    /// @return false when the user has cancelled
    virtual bool progress(const UnpackProgress& progress) = 0;

    /// kNo without a window.
    virtual ReplaceAnswer askReplace(const ReplaceQuestion& question) = 0;

    /// @param attempt  1, 2 or 3; from the second on it is told that the last password was wrong
    /// @return UTF-8; nullopt when cancelled, and without a window
    virtual std::optional<std::string> askPassword(const std::filesystem::path& archive, const Member& member,
                                                   unsigned attempt) = 0;

    /// Whether the user was asked for a password in a window and closed it without one.
    [[nodiscard]] virtual bool passwordDeclined() const { return false; }

    /// @return true to go on; false without a window
    virtual bool askDiskSpace(std::uint64_t needed, std::uint64_t available) = 0;
};

/// Natively, the owner "window" of a command whose questions are asked on the process's terminal; they are answered
/// with "no" when there is none. Null in Windows, where every question has a window.
WindowHandle consoleOwner() noexcept;

/// What a command wants of its windows.
struct DialogSettings {
    WindowHandle owner = nullptr;  ///< null or gone: no windows. Disabled while the object lives, and enabled again
    std::filesystem::path archive;
    std::string title;         ///< of the windows, UTF-8, such as "UnZip32"
    bool showProgress = true;  ///< the progress window; questions are shown in any case
    bool pumpMessages = true;  ///< background mode: other windows of the thread stay alive
};

/// The system's own windows. A progress over a window that goes away meanwhile is answered with "cancelled".
std::unique_ptr<CommandDialogs> makeCommandDialogs(const DialogSettings& settings);

}  // namespace archiver
