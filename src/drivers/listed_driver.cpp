#include "drivers/listed_driver.h"

#include "drivers/entry_text.h"
#include "drivers/return_codes.h"

namespace tovar {

EntryTable& ListedDriver::beginListing() noexcept {
    entries_.clear();
    listingComplete_ = false;
    return entries_;
}

void ListedDriver::tell(std::wstring_view text) const {
    messages_.show(owner_, text, description_.messageTitle, MessageIcon::Exclamation);
}

void ListedDriver::tellNotOpened(std::wstring_view fileName) const { tell(notOpenedText(fileName)); }

std::wstring ListedDriver::FileName(std::uint32_t index) const { return std::wstring(entries_.name(index)); }

std::wstring ListedDriver::FilePath(std::uint32_t index) const { return std::wstring(entries_.path(index)); }

std::wstring ListedDriver::FileOriginal(std::uint32_t index) const {
    return groupedNumber(entries_.record(index).original, regional_);
}

std::wstring ListedDriver::FilePacked(std::uint32_t index) const {
    return groupedNumber(entries_.record(index).packed, regional_);
}

std::wstring ListedDriver::FileRatio(std::uint32_t index) const {
    return ratioText(entries_.record(index).ratio, regional_);
}

std::wstring ListedDriver::FileDate(std::uint32_t index) const {
    return dateText(entries_.record(index).date, regional_);
}

std::wstring ListedDriver::FILETIME(std::uint32_t index) const { return timeText(entries_.record(index).time); }

std::wstring ListedDriver::FileAttr(std::uint32_t index) const { return std::wstring(entries_.attributes(index)); }

std::wstring ListedDriver::FileType(std::uint32_t index) const { return std::wstring(entries_.type(index)); }

std::wstring ListedDriver::FileCRC(std::uint32_t index) const { return crcText(entries_.record(index).crc); }

std::optional<CalendarDate> ListedDriver::calendarDate(std::uint32_t index) const {
    return calendarDateOf(entries_.record(index).date);
}

std::optional<ClockTime> ListedDriver::clockTime(std::uint32_t index) const {
    return clockTimeOf(entries_.record(index).time);
}

}  // namespace tovar
