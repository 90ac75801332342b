#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "drivers/archiver_library.h"
#include "drivers/listed_driver.h"

namespace tovar {

/// The driver of a library of the common archiver convention. It holds no archive open between calls.
class CommonDriver : public ListedDriver {
public:
    /// @param description  outlives the driver, as the other arguments do
    CommonDriver(const DriverDescription& description, ArchiverLibrary& library, MessageBoxes& messages,
                 const RegionalSettings& regional);

    /// The library's version times 100; 1 is that of an unusable library.
    [[nodiscard]] std::uint16_t Version();
    /// Whether the library is busy with a command.
    [[nodiscard]] bool Running();

    /// Whether the library lets messages run while it works.
    [[nodiscard]] bool BackGroundMode();
    void setBackGroundMode(bool on);

    /// Whether the library turns the mouse cursor while it works; always false for one without cursor functions.
    [[nodiscard]] bool CursorMode();
    void setCursorMode(bool on);

    [[nodiscard]] bool CheckArchive(std::wstring_view fileName) final;
    [[nodiscard]] bool TestArchive(std::wstring_view fileName) final;

    /// Mode of CheckArchive; archiver::check_mode names the values.
    [[nodiscard]] std::int16_t CheckMode() const noexcept { return checkMode_; }
    void setCheckMode(std::int16_t mode) noexcept { checkMode_ = mode; }

    /// Runs a command line; ReturnCode, OutPut and ErrString tell of it.
    void setCommandLine(std::wstring_view commandLine);

    /// What the library wrote for the last command; empty when it failed. A text that filled the whole buffer ends with
    /// LF and "[More...]", and so does one that stayed empty: then the buffer's NULs stand before it.
    [[nodiscard]] const std::wstring& OutPut() const noexcept { return output_; }
    /// The library's code for the last command or dialog, 0 for success.
    [[nodiscard]] std::int32_t ReturnCode() const noexcept { return returnCode_; }
    [[nodiscard]] std::wstring ErrString() const;

    /// Shows the library's own settings dialog.
    /// @return the library's answer, which becomes the return code
    std::int32_t ConfigDialog();

    /// Sizes the output buffer of a command: (count + 4) * 81 characters. A negative count is taken as 0.
    [[nodiscard]] std::int16_t MaxFileCount() const noexcept { return maxFileCount_; }
    void setMaxFileCount(std::int16_t count) noexcept { maxFileCount_ = count; }

    std::uint32_t SetArcFile(std::wstring_view fileName) override;

    ExtractResult extract(const ExtractRequest& request) final;
    /// Runs any line, under the same conditions.
    /// @param owner  of the library's windows; null: there are none
    ExtractResult runLine(WindowHandle owner, std::wstring_view commandLine);
    void setProgress(ExtractProgressSink sink) final { library_.setProgress(std::move(sink)); }
    /// The password of the commands from now on; empty: none, or whoever the library asks.
    /// @return whether the library can be given one
    [[nodiscard]] bool setPassword(std::wstring_view password) { return library_.setPassword(password); }
    [[nodiscard]] const TextCodec& listCodec() final { return library_.commandCodec(); }

private:
    ArchiverLibrary& library_;
    std::wstring output_;
    std::int32_t returnCode_ = 0;
    std::int16_t maxFileCount_ = 256;
    std::int16_t checkMode_ = 0;
    std::uint16_t version_ = 0;
    std::wstring written_;  ///< by the last command, whatever its code
    bool cut_ = false;      ///< the buffer was too small for it
};

}  // namespace tovar
