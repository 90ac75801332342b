#include "archivers/formats/ace/code_table.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace archiver::ace {
namespace {

constexpr unsigned kMostSymbols = 290;
constexpr unsigned kWidthTableBits = 7;
constexpr unsigned kMostWidths = 16;  // symbols of the tree that the widths are packed with

/// Both rows as the sort moves them.
struct Rows {
    std::span<std::uint8_t> widths;
    std::span<std::uint16_t> symbols;

    void swap(int i, int j) {
        std::swap(widths[static_cast<std::size_t>(i)], widths[static_cast<std::size_t>(j)]);
        std::swap(symbols[static_cast<std::size_t>(i)], symbols[static_cast<std::size_t>(j)]);
    }
    [[nodiscard]] std::uint8_t width(int i) const { return widths[static_cast<std::size_t>(i)]; }
};

void sortPart(Rows rows, int left, int right) {
    const std::uint8_t middle = rows.width(right);
    int i = left;
    int j = right;
    do {
        while (rows.width(i) > middle) ++i;
        while (rows.width(j) < middle) --j;
        if (i <= j) rows.swap(i++, j--);
    } while (i < j);
    if (left < j) {
        if (left < j - 1) {
            sortPart(rows, left, j);
        } else if (rows.width(left) < rows.width(j)) {
            rows.swap(left, j);
        }
    }
    if (right > i) {
        if (i < right - 1) {
            sortPart(rows, i, right);
        } else if (rows.width(i) < rows.width(right)) {
            rows.swap(i, right);
        }
    }
}

/// @param widths  of the symbols 0, 1 and so on; 0 for one without a code; at least one
bool makeCodes(std::span<std::uint8_t> widths, std::span<CodeEntry> table) {
    std::array<std::uint16_t, kMostSymbols> numbers{};
    const std::span symbols(numbers.data(), widths.size());
    std::iota(symbols.begin(), symbols.end(), std::uint16_t{0});
    sortByWidth(widths, symbols);

    auto used = static_cast<std::size_t>(std::find(widths.begin(), widths.end(), 0) - widths.begin());
    if (used < 2) {
        widths[0] = 1;
        used = 1;
    }
    const auto tableWidth = static_cast<unsigned>(std::countr_zero(table.size()));
    std::fill(table.begin(), table.end(), CodeEntry());
    auto place = table.begin();
    while (used-- > 0) {
        const unsigned width = widths[used];
        if (width > tableWidth) return false;
        const std::size_t places = std::size_t{1} << (tableWidth - width);
        if (places > static_cast<std::size_t>(table.end() - place)) return false;
        place = std::fill_n(place, places, CodeEntry(symbols[used], width));
    }
    return true;
}

}  // namespace

void sortByWidth(std::span<std::uint8_t> widths, std::span<std::uint16_t> symbols) {
    if (!widths.empty()) sortPart({widths, symbols}, 0, static_cast<int>(widths.size()) - 1);
}

bool readCodeTable(BitReader& reader, std::span<CodeEntry> table, unsigned symbols) {
    const unsigned count = std::min(reader.take(9) + 1, symbols + 1);
    const unsigned lower = reader.take(4);
    const unsigned upper = reader.take(4);

    std::array<std::uint8_t, kMostWidths> packedWidths{};
    for (unsigned i = 0; i <= upper; ++i) packedWidths[i] = static_cast<std::uint8_t>(reader.take(3));
    std::array<CodeEntry, 1 << kWidthTableBits> widthTable;
    if (!makeCodes(std::span(packedWidths).first(upper + 1), widthTable)) return false;

    std::array<std::uint8_t, kMostSymbols> widths{};
    for (unsigned i = 0; i < count;) {
        const CodeEntry entry = widthTable[reader.peek32() >> (32 - kWidthTableBits)];
        if (entry.symbol() > upper) return false;
        reader.skip(entry.width());
        if (entry.symbol() < upper) {
            widths[i++] = static_cast<std::uint8_t>(entry.symbol());
        } else {
            i += reader.take(4) + 4;  // zeros; they are there already
        }
    }
    for (unsigned i = 1; upper > 0 && i < count; ++i) {
        widths[i] = static_cast<std::uint8_t>((widths[i] + widths[i - 1]) % upper);
    }
    for (unsigned i = 0; i < count; ++i) {
        if (widths[i] != 0) widths[i] = static_cast<std::uint8_t>(widths[i] + lower);
    }
    return !reader.overrun() && makeCodes(std::span(widths).first(count), table);
}

}  // namespace archiver::ace
