#include "browser/contents_list.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <utility>

#include "shell/letter_case.h"

namespace tovar {
namespace {

/// Texts to sort by, one after the other in one block.
class SortKeys {
public:
    void add(std::wstring_view text) {
        ends_.push_back(texts_.size() + text.size());
        texts_ += text;
    }
    [[nodiscard]] std::wstring_view operator[](std::size_t index) const {
        const std::size_t start = index == 0 ? 0 : ends_[index - 1];
        return std::wstring_view(texts_).substr(start, ends_[index] - start);
    }

private:
    std::wstring texts_;
    std::vector<std::size_t> ends_;
};

}  // namespace

ContentsList::ContentsList(const ArchiveDriver& driver, const FolderModel& folders, FileTypes& desktop,
                           RegionalSettings regional)
    : driver_(driver),
      folders_(folders),
      types_(desktop),
      texts_(driver, types_, std::move(regional)),
      columns_(contentsColumnsOf(driver.description().columns)) {}

void ContentsList::show(Folder folder) {
    const auto subfolders = folders_.children(folder);
    const auto files = folders_.files(folder);
    order_.clear();
    subfolders_ = subfolders;
    files_ = files;
    if (sorting_) sortItems();
}

void ContentsList::clear() noexcept {
    subfolders_ = {};
    files_ = {};
    order_.clear();
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
    return item < subfolders_.size() ? std::optional(subfolders_[item]) : std::nullopt;
}

std::optional<std::uint32_t> ContentsList::entryAt(std::uint32_t row) const {
    const std::uint32_t item = itemAt(row);
    return item < subfolders_.size() ? std::nullopt : std::optional(files_[item - subfolders_.size()]);
}

std::wstring ContentsList::text(std::uint32_t row, std::size_t column) const {
    return textOf(itemAt(row), columns_.at(column).key);
}

int ContentsList::icon(std::uint32_t row) const {
    const auto entry = entryAt(row);
    return entry ? types_.ofFile(driver_.FileName(*entry)).icon : types_.ofFolder().icon;
}

std::wstring ContentsList::textOf(std::uint32_t item, ColumnKey column) const {
    if (item < subfolders_.size()) {
        if (column == ColumnKey::Name) return std::wstring(folders_.text(subfolders_[item]));
        return column == ColumnKey::FileType ? types_.ofFolder().name : std::wstring();
    }
    const std::uint32_t entry = files_[item - subfolders_.size()];
    return exact_ ? texts_.exactText(entry, column) : texts_.shortText(entry, column);
}

std::vector<std::uint32_t> ContentsList::sortBy(std::size_t column) {
    if (column >= columns_.size()) return {};
    sorting_ = Sorting{column, !(sorting_ && sorting_->descending)};
    return sortRows();
}

std::vector<std::uint32_t> ContentsList::setExact(bool exact) {
    if (exact == exact_) return {};
    exact_ = exact;
    return sorting_ ? sortRows() : std::vector<std::uint32_t>();
}

std::vector<std::uint32_t> ContentsList::sortRows() {
    std::vector<std::uint32_t> before = order_;
    if (before.empty()) {
        before.resize(rowCount());
        std::iota(before.begin(), before.end(), 0);
    }
    sortItems();
    std::vector<std::uint32_t> rowOfItem(before.size());
    for (std::uint32_t row = 0; row < order_.size(); ++row) rowOfItem[order_[row]] = row;
    for (std::uint32_t& item : before) item = rowOfItem[item];
    return before;
}

bool ContentsList::sortsByValue(ColumnKey column) const noexcept {
    return exact_ && (column == ColumnKey::Original || column == ColumnKey::Packed || column == ColumnKey::Ratio ||
                      column == ColumnKey::Modified || column == ColumnKey::Crc);
}

void ContentsList::sortItems() {
    const ColumnKey column = columns_.at(sorting_->column).key;
    const bool byValue = sortsByValue(column);
    SortKeys keys;
    std::vector<std::uint64_t> values;
    for (std::uint32_t item = 0; item < rowCount(); ++item) {
        if (byValue) {
            const bool isFolder = item < subfolders_.size();
            values.push_back(isFolder ? 0 : texts_.exactValue(files_[item - subfolders_.size()], column));
        } else {
            keys.add(foldCase(textOf(item, column)));
        }
    }
    std::vector<std::uint32_t> order(rowCount());
    std::iota(order.begin(), order.end(), 0);
    const bool descending = sorting_->descending;
    const auto isBefore = [&](std::uint32_t left, std::uint32_t right) {
        const int difference =
            byValue ? (values[left] > values[right]) - (values[left] < values[right]) : keys[left].compare(keys[right]);
        if (difference != 0) return descending ? difference > 0 : difference < 0;
        return left < right;
    };
    const auto firstFile = order.begin() + static_cast<std::ptrdiff_t>(subfolders_.size());
    std::sort(order.begin(), firstFile, isBefore);
    std::sort(firstFile, order.end(), isBefore);
    if (descending) std::rotate(order.begin(), firstFile, order.end());
    order_ = std::move(order);
}

std::optional<std::uint32_t> ContentsList::findName(std::wstring_view beginning, std::uint32_t start) const {
    const std::wstring folded = foldCase(beginning);
    const std::uint32_t count = rowCount();
    for (std::uint32_t step = 0; step < count; ++step) {
        const auto row = static_cast<std::uint32_t>((std::uint64_t{start} + step) % count);
        if (foldCase(textOf(itemAt(row), ColumnKey::Name)).starts_with(folded)) return row;
    }
    return std::nullopt;
}

}  // namespace tovar
