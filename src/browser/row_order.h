#pragma once
#include <cstdint>
#include <span>
#include <vector>

#include "browser/contents_columns.h"
#include "browser/file_types.h"
#include "browser/folder_model.h"
#include "browser/member_texts.h"
#include "browser/text_order.h"
#include "drivers/archive_driver.h"
#include "shell/breather.h"

namespace tovar {

/// Where the cells of rows come from.
struct RowSource {
    const ArchiveDriver& driver;
    const FolderModel& folders;
    KnownFileTypes& types;
    const MemberTexts& texts;
    const CaseFolder& letters;
};

/// The rows of one folder as the archive has them.
struct FolderRows {
    std::span<const Folder> subfolders;
    std::span<const std::uint32_t> files;  ///< entries of the listing

    [[nodiscard]] std::uint32_t count() const noexcept {
        return static_cast<std::uint32_t>(subfolders.size() + files.size());
    }
};

struct RowSorting {
    ColumnKey column = ColumnKey::Name;
    Direction direction = Direction::Ascending;
    bool exact = false;  ///< cells that show numbers are ordered by their values, not by their texts
};

/// Orders rows by the cells of a column. A key of a few bytes stands for each cell, made so that keys order like the
/// cells' texts in lower case: a number where text order is that of numbers, the rank of a text among those that occur,
/// or a few characters at a time.
/// @return which item each row shows: items below subfolders.size() are those folders, the others the files. Folders
///         are one block, before the files in ascending order, behind them in descending; rows with equal cells stay as
///         the archive has them.
/// @throws WorkAbandoned, std::bad_alloc
[[nodiscard]] std::vector<std::uint32_t> orderOfRows(const RowSource& source, const FolderRows& rows,
                                                     const RowSorting& sorting, PacedWork& work);

}  // namespace tovar
