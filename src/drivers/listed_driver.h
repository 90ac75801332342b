#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "drivers/archive_driver.h"
#include "shell/message_boxes.h"

namespace tovar {

/// What all drivers have in common: an owner window, messages under their title, and a listing whose texts are made
/// from the entry table.
class ListedDriver : public ArchiveDriver {
public:
    [[nodiscard]] const DriverDescription& description() const final { return description_; }

    [[nodiscard]] WindowHandle hWnd() const final { return owner_; }
    void setHWnd(WindowHandle owner) final { owner_ = owner; }

    void forgetListing() noexcept final {
        beginListing();
        setListingComplete(true);
    }
    void setBreather(Breather* breather) final { breather_ = breather; }
    [[nodiscard]] bool listingComplete() const final { return listingComplete_; }
    [[nodiscard]] const EntryTable& entries() const final { return entries_; }

    [[nodiscard]] std::wstring FileName(std::uint32_t index) const final;
    [[nodiscard]] std::wstring FilePath(std::uint32_t index) const final;
    [[nodiscard]] std::wstring FileOriginal(std::uint32_t index) const override;
    [[nodiscard]] std::wstring FilePacked(std::uint32_t index) const override;
    [[nodiscard]] std::wstring FileRatio(std::uint32_t index) const override;
    [[nodiscard]] std::wstring FileDate(std::uint32_t index) const override;
    [[nodiscard]] std::wstring FILETIME(std::uint32_t index) const override;
    [[nodiscard]] std::wstring FileAttr(std::uint32_t index) const final;
    [[nodiscard]] std::wstring FileType(std::uint32_t index) const final;
    [[nodiscard]] std::wstring FileCRC(std::uint32_t index) const override;
    [[nodiscard]] std::optional<CalendarDate> calendarDate(std::uint32_t index) const final;
    [[nodiscard]] std::optional<ClockTime> clockTime(std::uint32_t index) const final;

protected:
    /// @param description  outlives the driver, as the other arguments do
    ListedDriver(const DriverDescription& description, MessageBoxes& messages, const RegionalSettings& regional)
        : description_(description), messages_(messages), regional_(regional) {}

    /// Forgets the last listing.
    /// @return the table to fill
    EntryTable& beginListing() noexcept;
    void setListingComplete(bool complete) noexcept { listingComplete_ = complete; }
    [[nodiscard]] Breather* breather() const noexcept { return breather_; }

    /// What one member of a listing counts as work: a library may take long over each.
    static constexpr std::uint32_t kUnitsOfMember = PacedWork::kPortion / 128;

    /// Shows a warning under the driver's title.
    void tell(std::wstring_view text) const;
    void tellNotOpened(std::wstring_view fileName) const;

private:
    const DriverDescription& description_;
    MessageBoxes& messages_;
    const RegionalSettings& regional_;
    WindowHandle owner_ = nullptr;
    EntryTable entries_;
    bool listingComplete_ = false;
    Breather* breather_ = nullptr;
};

}  // namespace tovar
