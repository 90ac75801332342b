#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drivers/entry_table.h"

namespace tovar {

/// Fields of a listing that an archiver library writes as text, in the order of the columns.
enum class ListedField { Original, Packed, Ratio, Date, Time, Attributes, Type, Crc };
inline constexpr std::size_t kListedFields = 8;
using ListedFields = std::array<std::wstring, kListedFields>;

/// What the table's numbers cannot hold of such a listing: each field as the text says it.
using ListedTexts = std::vector<ListedFields>;

/// Takes a listing apart. Its first two lines are its heading; each further line, at most 256 of them, is one member up
/// to one that begins with fourteen hyphens. Columns are taken from the right, what is left is the stored name, blanks
/// and all. A line with fewer columns tells of no member and is passed over.
/// @param output   lines that end with LF or CR LF
/// @param entries  gets each member with the numbers that its columns spell, 0 for what is no number
/// @param texts    gets its columns
/// @return whether the closing line was there
/// @throws std::bad_alloc, std::length_error
bool readTextListing(std::wstring_view output, EntryTable& entries, ListedTexts& texts);

/// The date word of "yy-mm-dd", "yyyy-mm-dd" or a year counted from 1900 such as "101-05-17"; parts may be joined by
/// "-", "/" or ".". Of two digits, 80 to 99 are of the last century.
/// @return nullopt for what is no such date, and for years that a DOS date cannot hold
[[nodiscard]] std::optional<std::uint16_t> dosDateOfText(std::wstring_view text);

}  // namespace tovar
