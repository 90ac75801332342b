#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "drivers/driver_description.h"
#include "drivers/entry_table.h"
#include "drivers/extraction.h"
#include "shell/breather.h"
#include "shell/regional.h"
#include "shell/text_codec.h"
#include "shell/window_handle.h"

namespace tovar {

/// A driver stands for one archiver library; this is what every driver can do, whatever its library looks like.
/// Calling order: set `hWnd`, then CheckArchive, or SetArcFile followed by the entry reads.
class ArchiveDriver {
public:
    virtual ~ArchiveDriver() = default;

    [[nodiscard]] virtual const DriverDescription& description() const = 0;

    /// Owner of every window that the library shows.
    [[nodiscard]] virtual WindowHandle hWnd() const = 0;
    virtual void setHWnd(WindowHandle owner) = 0;

    /// @return whether the file is an archive that the library can read. Shows no message.
    [[nodiscard]] virtual bool CheckArchive(std::wstring_view fileName) = 0;

    /// Reads every member's data and checks it, whatever CheckArchive's own depth is.
    [[nodiscard]] virtual bool TestArchive(std::wstring_view fileName) = 0;

    /// Lists the archive; an earlier listing is replaced. An archive that cannot be opened gives a message box and 0.
    /// @return the number of entries
    virtual std::uint32_t SetArcFile(std::wstring_view fileName) = 0;

    /// Forgets the listing: the archive has no members any more, and no file.
    virtual void forgetListing() noexcept = 0;

    /// With whom SetArcFile stops for breath between members; null: with nobody. A listing that is no longer wanted
    /// then ends, and what was listed until then is there.
    virtual void setBreather(Breather* breather) = 0;

    /// Whether the last listing came to the archive's end: false when the library gave up midway, before it or for want
    /// of memory. What was listed until then is there.
    [[nodiscard]] virtual bool listingComplete() const = 0;

    /// The listing made by SetArcFile; valid until the next one.
    [[nodiscard]] virtual const EntryTable& entries() const = 0;

    // One field of one entry as text. All throw std::out_of_range for an index outside the listing.
    [[nodiscard]] virtual std::wstring FileName(std::uint32_t index) const = 0;
    [[nodiscard]] virtual std::wstring FilePath(std::uint32_t index) const = 0;
    [[nodiscard]] virtual std::wstring FileOriginal(std::uint32_t index) const = 0;
    [[nodiscard]] virtual std::wstring FilePacked(std::uint32_t index) const = 0;
    [[nodiscard]] virtual std::wstring FileRatio(std::uint32_t index) const = 0;
    [[nodiscard]] virtual std::wstring FileDate(std::uint32_t index) const = 0;
    [[nodiscard]] virtual std::wstring FILETIME(std::uint32_t index) const = 0;
    [[nodiscard]] virtual std::wstring FileAttr(std::uint32_t index) const = 0;
    [[nodiscard]] virtual std::wstring FileType(std::uint32_t index) const = 0;
    [[nodiscard]] virtual std::wstring FileCRC(std::uint32_t index) const = 0;

    // Date and time of an entry for other formats than those of FileDate and FILETIME; nullopt when the stored number
    // is no date (month 0) or no time (hour 24): such a one is shown as FileDate and FILETIME give it. Throw
    // std::out_of_range like the texts.
    [[nodiscard]] virtual std::optional<CalendarDate> calendarDate(std::uint32_t index) const = 0;
    /// The second is the DOS count of two-second steps as it stands, 0 to 29, like the last part of FILETIME.
    [[nodiscard]] virtual std::optional<ClockTime> clockTime(std::uint32_t index) const = 0;

    /// Whether the texts above say what the numbers of entries() say; false after a listing of texts that may be no
    /// numbers.
    [[nodiscard]] virtual bool textsFollowRecords() const { return true; }

    /// Unpacks members. Never throws but for want of memory; shows no message but those of the library, and of drivers
    /// that have their own.
    virtual ExtractResult extract(const ExtractRequest& request) = 0;

    /// Who is told how extractions get on; nothing = nobody. Not every library tells.
    virtual void setProgress(ExtractProgressSink sink) = 0;

    /// The 8-bit form in which the library reads list files.
    [[nodiscard]] virtual const TextCodec& listCodec() = 0;
};

}  // namespace tovar
