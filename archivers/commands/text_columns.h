#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "archivers/convention/library_description.h"
#include "archivers/unpacking/unpack_events.h"

namespace archiver {

/// Parts of the rows that listings are made of. Widths are characters, not bytes; what is wider is not cut.
[[nodiscard]] std::string padRight(std::string_view utf8, std::size_t width);
[[nodiscard]] std::string padLeft(std::string_view utf8, std::size_t width);
[[nodiscard]] std::string padLeft(std::uint64_t number, std::size_t width);

/// A member's name for one line of a text that programs read: control characters become "_".
[[nodiscard]] std::string listedName(std::string_view utf8Name);

/// The name of a folder that a run made, with "/" between its parts and at its end: the member's own name, or below the
/// target where the folder is only needed by a member.
[[nodiscard]] std::string madeFolder(const MemberReport& report, const std::filesystem::path& target);

/// The first characters of a text.
[[nodiscard]] std::string_view firstCharacters(std::string_view utf8, std::size_t count) noexcept;

/// Lower-case hexadecimal digits, at least `digits` of them, with zeros in front.
[[nodiscard]] std::string hexadecimal(std::uint32_t value, std::size_t digits);

/// Fields of MS-DOS words as they are, in the order in which years, months and days are read: "01-05-17", "17:30:58".
[[nodiscard]] std::string dosDateText(std::uint16_t date);  ///< two digits of the year
[[nodiscard]] std::string dosTimeText(std::uint16_t time);

/// Four letters, as the entry record has them: "a--w".
[[nodiscard]] std::string attributeText(std::uint8_t bits, AttributeStyle style);

/// The last part of a member's name; of a folder, without the separator at its end.
[[nodiscard]] std::string_view lastPart(std::string_view utf8Name) noexcept;

/// part * 1000 / whole, rounded down; 0 when `whole` is 0; at most 9999, for claims that no column has room for.
[[nodiscard]] std::uint32_t perMille(std::uint64_t part, std::uint64_t whole) noexcept;

}  // namespace archiver
