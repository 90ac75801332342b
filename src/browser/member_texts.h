#pragma once
#include <cstdint>
#include <string>

#include "browser/contents_columns.h"
#include "browser/file_types.h"
#include "browser/size_keys.h"
#include "drivers/archive_driver.h"
#include "shell/regional.h"

namespace tovar {

/// The cells of a file's row, in two ways: the short one, whose sizes and ratios are cut to a fixed width, and the
/// exact one, which shows all that the record has.
class MemberTexts {
public:
    /// The driver and the types must outlive the object.
    MemberTexts(const ArchiveDriver& driver, KnownFileTypes& types, RegionalSettings regional);

    // All throw std::out_of_range for an index outside the listing.
    [[nodiscard]] std::wstring shortText(std::uint32_t entry, ColumnKey column) const;

    /// Sizes are whole, and so are years, seconds and checksums. What the record does not have is an empty text.
    [[nodiscard]] std::wstring exactText(std::uint32_t entry, ColumnKey column) const;

    /// The two parts of shortText's Modified, which stands with a blank between them.
    [[nodiscard]] std::wstring shortDate(std::uint32_t entry) const;
    [[nodiscard]] std::wstring shortTime(std::uint32_t entry) const;

    /// @return whether exactValue knows the column: Original, Packed, Ratio, Modified and Crc
    [[nodiscard]] static bool hasValue(ColumnKey column) noexcept;
    /// What an exact cell is worth beside others of its column: a greater number for a greater size, ratio, date or
    /// checksum, 0 for what the record does not have.
    [[nodiscard]] std::uint64_t exactValue(std::uint32_t entry, ColumnKey column) const;

    /// Keys that order like the short texts of sizes, as long as those follow from the records.
    [[nodiscard]] const SizeKeys& sizeKeys() const noexcept { return sizeKeys_; }

private:
    [[nodiscard]] std::wstring shortSize(std::uint32_t entry, ColumnKey column) const;
    [[nodiscard]] std::wstring exactSize(std::uint32_t entry, ColumnKey column) const;
    [[nodiscard]] std::wstring exactModified(std::uint32_t entry) const;
    [[nodiscard]] std::wstring exactChecksum(std::uint32_t entry) const;
    /// A checksum of 32 bits that is 0 stands for none: only that of no data is truly 0.
    [[nodiscard]] bool hasChecksum(std::uint32_t crc) const noexcept { return crc != 0 || checksumDigits_ < 8; }

    const ArchiveDriver& driver_;
    KnownFileTypes& types_;
    RegionalSettings regional_;
    RegionalSettings wholeYears_;
    SizeKeys sizeKeys_;
    std::size_t checksumDigits_;
};

/// A date picture with four digits for each year: "d/M/yy" is "d/M/yyyy" then. Text between apostrophes stays.
[[nodiscard]] std::wstring withWholeYears(std::wstring_view picture);

}  // namespace tovar
