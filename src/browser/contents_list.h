#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "browser/contents_columns.h"
#include "browser/file_types.h"
#include "browser/folder_model.h"
#include "browser/member_texts.h"
#include "browser/row_order.h"
#include "browser/text_order.h"
#include "drivers/archive_driver.h"
#include "shell/breather.h"
#include "shell/regional.h"

namespace tovar {

/// The rows of the contents list: the folders directly in one folder, then its files. Nothing is kept for a row before
/// the list is sorted; texts and icons are made when a row is shown.
class ContentsList {
public:
    struct Sorting {
        std::size_t column = 0;
        bool descending = false;
    };

    /// The driver, the folders and the desktop must outlive the object.
    ContentsList(const ArchiveDriver& driver, const FolderModel& folders, FileTypes& desktop,
                 RegionalSettings regional);

    [[nodiscard]] const std::vector<ContentsColumn>& columns() const noexcept { return columns_; }

    /// Orders are made with breaks from now on; null: in one go. While the list breathes it shows what it showed
    /// before, and must not be told to change, but for clear(). The breather must outlive the object.
    void setBreather(Breather* breather) noexcept { breather_ = breather; }

    /// Shows a folder of the model. An order that a header click chose stays.
    /// @throws WorkAbandoned, std::bad_alloc; the list then shows what it showed before
    void show(Folder folder);
    void clear() noexcept;

    [[nodiscard]] std::uint32_t rowCount() const noexcept { return rows_.count(); }

    // Of one row. All throw std::out_of_range for a row outside 0 to rowCount() - 1 or a column that is not there.
    /// @return the folder that the row stands for; nullopt for a file
    [[nodiscard]] std::optional<Folder> folderAt(std::uint32_t row) const;
    /// @return the index of the entry that the row stands for; nullopt for a folder
    [[nodiscard]] std::optional<std::uint32_t> entryAt(std::uint32_t row) const;
    [[nodiscard]] std::wstring text(std::uint32_t row, std::size_t column) const;
    [[nodiscard]] int icon(std::uint32_t row) const;
    /// @return which of the folder's items the row stands for: the folders, then the files, as they stand unsorted
    [[nodiscard]] std::uint32_t itemAt(std::uint32_t row) const;

    /// @return the row that stands for an item; nullopt when there is no such item. In a sorted list all rows
    ///         are looked at, once.
    [[nodiscard]] std::optional<std::uint32_t> rowOf(std::uint32_t item) const;

    /// How the rows are ordered; nullopt until the first header click.
    [[nodiscard]] std::optional<Sorting> sorting() const noexcept { return sorting_; }

    /// A click on a column's header. Rows are ordered by that column's texts, letters of either case alike, folders as
    /// one block: above the files in ascending order, below them in descending order. Every click turns the order
    /// round, whichever column it hits, and the first one sorts descending.
    /// @return for each row from before the row where it is now; empty when the column is not there
    /// @throws WorkAbandoned, std::bad_alloc; nothing has changed then
    std::vector<std::uint32_t> sortBy(std::size_t column);

    /// Shows exact details: whole numbers, dates and checksums, ordered by their values, those that are missing before
    /// all others. The same columns and the same order of clicks otherwise.
    /// @return for each row from before the row where it is now; empty when no row has moved
    /// @throws WorkAbandoned, std::bad_alloc; nothing has changed then
    std::vector<std::uint32_t> setExact(bool exact);
    [[nodiscard]] bool exact() const noexcept { return exact_; }

    /// @return the first row whose name begins with the text, letters of either case alike, looked for from `start`
    ///         downwards and then from the top
    [[nodiscard]] std::optional<std::uint32_t> findName(std::wstring_view beginning, std::uint32_t start) const;

private:
    [[nodiscard]] std::wstring textOf(std::uint32_t item, ColumnKey column) const;
    [[nodiscard]] CompactText nameOf(std::uint32_t item) const;
    [[nodiscard]] std::vector<std::uint32_t> orderOf(const FolderRows& rows, const Sorting& sorting, bool exact) const;
    /// @return for each row from before the row where it is now
    std::vector<std::uint32_t> moveTo(std::vector<std::uint32_t> order);

    const ArchiveDriver& driver_;
    const FolderModel& folders_;
    mutable KnownFileTypes types_;
    MemberTexts texts_;
    std::vector<ContentsColumn> columns_;
    CaseFolder letters_;
    FolderRows rows_;
    std::vector<std::uint32_t> order_;  ///< item of each row; empty while the rows stand as the archive has them
    std::optional<Sorting> sorting_;
    bool exact_ = false;
    Breather* breather_ = nullptr;
};

}  // namespace tovar
