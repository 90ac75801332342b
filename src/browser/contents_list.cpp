#include "browser/contents_list.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "shell/letter_case.h"

namespace tovar {

ContentsList::ContentsList(const ArchiveDriver& driver, const FolderModel& folders, FileTypes& desktop,
                           RegionalSettings regional)
    : driver_(driver),
      folders_(folders),
      types_(desktop),
      texts_(driver, types_, std::move(regional)),
      columns_(contentsColumnsOf(driver.description().columns)) {}

void ContentsList::show(Folder folder) {
    const FolderRows rows{folders_.children(folder), folders_.files(folder)};
    std::vector<std::uint32_t> order;
    if (sorting_) order = orderOf(rows, *sorting_, exact_);
    rows_ = rows;
    order_ = std::move(order);
}

void ContentsList::clear() noexcept {
    rows_ = {};
    order_ = {};
}

std::uint32_t ContentsList::itemAt(std::uint32_t row) const {
    if (row >= rowCount()) throw std::out_of_range("row outside the contents list");
    return order_.empty() ? row : order_[row];
}

std::optional<std::uint32_t> ContentsList::rowOf(std::uint32_t item) const {
    if (item >= rowCount()) return std::nullopt;
    if (order_.empty()) return item;
    return static_cast<std::uint32_t>(std::ranges::find(order_, item) - order_.begin());
}

std::optional<Folder> ContentsList::folderAt(std::uint32_t row) const {
    const std::uint32_t item = itemAt(row);
    return item < rows_.subfolders.size() ? std::optional(rows_.subfolders[item]) : std::nullopt;
}

std::optional<std::uint32_t> ContentsList::entryAt(std::uint32_t row) const {
    const std::uint32_t item = itemAt(row);
    return item < rows_.subfolders.size() ? std::nullopt : std::optional(rows_.files[item - rows_.subfolders.size()]);
}

std::wstring ContentsList::text(std::uint32_t row, std::size_t column) const {
    return textOf(itemAt(row), columns_.at(column).key);
}

int ContentsList::icon(std::uint32_t row) const {
    const auto entry = entryAt(row);
    return entry ? types_.ofFile(driver_.FileName(*entry)).icon : types_.ofFolder().icon;
}

std::wstring ContentsList::textOf(std::uint32_t item, ColumnKey column) const {
    if (item < rows_.subfolders.size()) {
        if (column == ColumnKey::Name) return std::wstring(folders_.text(rows_.subfolders[item]));
        return column == ColumnKey::FileType ? types_.ofFolder().name : std::wstring();
    }
    const std::uint32_t entry = rows_.files[item - rows_.subfolders.size()];
    return exact_ ? texts_.exactText(entry, column) : texts_.shortText(entry, column);
}

std::vector<std::uint32_t> ContentsList::sortBy(std::size_t column) {
    if (column >= columns_.size()) return {};
    const Sorting sorting{column, !(sorting_ && sorting_->descending)};
    auto moves = moveTo(orderOf(rows_, sorting, exact_));
    sorting_ = sorting;
    return moves;
}

std::vector<std::uint32_t> ContentsList::setExact(bool exact) {
    if (exact == exact_) return {};
    if (!sorting_) {
        exact_ = exact;
        return {};
    }
    auto moves = moveTo(orderOf(rows_, *sorting_, exact));
    exact_ = exact;
    return moves;
}

std::vector<std::uint32_t> ContentsList::orderOf(const FolderRows& rows, const Sorting& sorting, bool exact) const {
    const Direction direction = sorting.descending ? Direction::Descending : Direction::Ascending;
    PacedWork work(breather_);
    return orderOfRows({driver_, folders_, types_, texts_, letters_}, rows,
                       {columns_.at(sorting.column).key, direction, exact}, work);
}

std::vector<std::uint32_t> ContentsList::moveTo(std::vector<std::uint32_t> order) {
    std::vector<std::uint32_t> rowOfItem(order.size());
    for (std::uint32_t row = 0; row < order.size(); ++row) rowOfItem[order[row]] = row;
    if (order_.empty()) {
        order_ = std::move(order);
        return rowOfItem;
    }
    std::swap(order_, order);
    for (std::uint32_t& item : order) item = rowOfItem[item];
    return order;
}

CompactText ContentsList::nameOf(std::uint32_t item) const {
    return item < rows_.subfolders.size() ? folders_.text(rows_.subfolders[item])
                                          : driver_.entries().name(rows_.files[item - rows_.subfolders.size()]);
}

// Names lie in memory in the archive's order: they are all read in that order, not in that of the rows.
std::optional<std::uint32_t> ContentsList::findName(std::wstring_view beginning, std::uint32_t start) const {
    const std::wstring folded = foldCase(beginning);
    const std::uint32_t count = rowCount();
    if (count == 0) return std::nullopt;
    std::vector<bool> matches(order_.size());
    bool found = order_.empty();
    for (std::uint32_t item = 0; item < order_.size(); ++item) {
        if (letters_.startsWith(nameOf(item), folded)) found = matches[item] = true;
    }
    const std::uint32_t first = start % count;
    for (std::uint32_t step = 0; found && step < count; ++step) {
        const std::uint32_t row = step < count - first ? first + step : step - (count - first);
        const bool match = order_.empty() ? letters_.startsWith(nameOf(row), folded) : bool{matches[order_[row]]};
        if (match) return row;
    }
    return std::nullopt;
}

}  // namespace tovar
