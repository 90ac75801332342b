#pragma once
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "drivers/archive_driver.h"
#include "drivers/entry_text.h"

namespace tovar::test {

/// A member of an archive as a test writes it down.
struct Member {
    std::wstring storedName;
    std::uint64_t original = 0, packed = 0;
    std::int16_t ratio = 0;       ///< per mille
    std::uint16_t date = 0x2AB1;  ///< 2001-05-17
    std::uint16_t time = 0x8BDD;  ///< 17:30:58
    std::uint32_t crc = 0;
    std::wstring attributes = L"a--w";
    std::wstring type = L"Deflate";
};

/// A driver over members that a test wrote down.
class FakeDriver final : public ArchiveDriver {
public:
    std::vector<Member> members;
    std::function<void()> whileListing;
    std::vector<std::wstring> listed;  ///< files that SetArcFile was called for
    std::vector<WindowHandle> owners;  ///< the owner window at each of these calls
    std::vector<ExtractRequest> extracted;
    ExtractResult extractAnswer;
    ExtractProgressSink progress;
    ContentsColumns columns;
    Breather* breather = nullptr;
    bool changeable = false;
    mutable int namesRead = 0;

    FakeDriver() = default;
    explicit FakeDriver(const std::vector<std::wstring>& storedNames) {
        for (const std::wstring& name : storedNames) members.push_back({.storedName = name});
    }

    [[nodiscard]] const DriverDescription& description() const override {
        description_.columns = columns;
        description_.changeable = changeable;
        return description_;
    }
    [[nodiscard]] WindowHandle hWnd() const override { return owner_; }
    void setHWnd(WindowHandle owner) override { owner_ = owner; }
    [[nodiscard]] bool CheckArchive(std::wstring_view) override { return true; }
    [[nodiscard]] bool TestArchive(std::wstring_view) override { return true; }

    std::uint32_t SetArcFile(std::wstring_view fileName) override {
        listed.emplace_back(fileName);
        owners.push_back(owner_);
        table_.clear();
        for (const Member& each : members) {
            table_.add({each.original, each.packed, each.crc, each.ratio, each.date, each.time}, each.storedName,
                       each.attributes, each.type);
        }
        if (whileListing) whileListing();
        return table_.size();
    }

    void forgetListing() noexcept override { table_.clear(); }
    void setBreather(Breather* given) override { breather = given; }
    [[nodiscard]] bool listingComplete() const override { return true; }
    ExtractResult extract(const ExtractRequest& request) override {
        extracted.push_back(request);
        return extractAnswer;
    }
    void setProgress(ExtractProgressSink sink) override { progress = std::move(sink); }
    [[nodiscard]] const TextCodec& listCodec() override { return codec_; }
    [[nodiscard]] const EntryTable& entries() const override { return table_; }
    [[nodiscard]] std::wstring FileName(std::uint32_t index) const override {
        ++namesRead;
        return std::wstring(table_.name(index));
    }
    [[nodiscard]] std::wstring FilePath(std::uint32_t index) const override { return std::wstring(table_.path(index)); }
    [[nodiscard]] std::wstring FileOriginal(std::uint32_t index) const override {
        return groupedNumber(table_.record(index).original, regional);
    }
    [[nodiscard]] std::wstring FilePacked(std::uint32_t index) const override {
        return groupedNumber(table_.record(index).packed, regional);
    }
    [[nodiscard]] std::wstring FileRatio(std::uint32_t index) const override {
        return ratioText(table_.record(index).ratio, regional);
    }
    [[nodiscard]] std::wstring FileDate(std::uint32_t index) const override {
        return dateText(table_.record(index).date, regional);
    }
    [[nodiscard]] std::wstring FILETIME(std::uint32_t index) const override {
        return timeText(table_.record(index).time);
    }
    [[nodiscard]] std::wstring FileAttr(std::uint32_t index) const override {
        return std::wstring(table_.attributes(index));
    }
    [[nodiscard]] std::wstring FileType(std::uint32_t index) const override { return std::wstring(table_.type(index)); }
    [[nodiscard]] std::wstring FileCRC(std::uint32_t index) const override { return crcText(table_.record(index).crc); }
    [[nodiscard]] std::optional<CalendarDate> calendarDate(std::uint32_t index) const override {
        return calendarDateOf(table_.record(index).date);
    }
    [[nodiscard]] std::optional<ClockTime> clockTime(std::uint32_t index) const override {
        return clockTimeOf(table_.record(index).time);
    }

    RegionalSettings regional;

private:
    mutable DriverDescription description_;
    WindowHandle owner_ = nullptr;
    EntryTable table_;
    Utf8Codec codec_;
};

}  // namespace tovar::test
