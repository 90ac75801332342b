#pragma once
#include <cstdint>
#include <string_view>

#include "browser/folder_model.h"
#include "browser/name_pattern.h"
#include "drivers/entry_table.h"

namespace tovar {

/// Where a folder or a file of an archive stands: in which folder, and as which of the items in it. Items are counted
/// from 0 as the contents list shows them unsorted, first the folders, then the files.
struct MemberPlace {
    Folder folder = FolderModel::kRoot;
    std::uint32_t item = 0;
    bool operator==(const MemberPlace&) const = default;
};

/// Looks for a folder or a file by its name in the whole archive, a slice at a time. The way goes through the folders
/// as the tree shows them when all are open, in each through its items, and from the end round to the beginning (or the
/// other way), so that every item is looked at once. The root itself is no item.
class MemberSearch {
public:
    enum class Direction { Forward, Backward };
    enum class Outcome { Searching, Found, NotFound };

    /// Both must outlive the object. When they change, the search that was under way must not go on.
    MemberSearch(const FolderModel& folders, const EntryTable& entries) : folders_(folders), entries_(entries) {}

    /// Begins a search.
    /// @param gap  where to begin: between the item before the one named and that item; the item may be one behind the
    ///             last. Forward the item named is looked at first, backward the one before it.
    /// @throws std::out_of_range when there is no such folder
    void begin(std::wstring_view text, MemberPlace gap, Direction direction);

    /// Goes on.
    /// @param units  after how much work to stop: an item or a folder is a unit, and so are 64 characters read. The
    /// last
    ///               item looked at may take more.
    Outcome step(std::uint64_t units);

    /// @return the item found last
    [[nodiscard]] MemberPlace found() const noexcept { return found_; }
    /// @return whether the search has gone round the end of the archive (or its beginning)
    [[nodiscard]] bool wrapped() const noexcept { return wrapped_; }
    /// @return the units of work that the search has taken so far
    [[nodiscard]] std::uint64_t unitsTaken() const noexcept { return units_; }

private:
    [[nodiscard]] std::uint32_t itemCount(Folder folder) const;
    [[nodiscard]] CompactText nameOf(std::uint32_t item) const;
    [[nodiscard]] bool atEndOfFolder() const;
    [[nodiscard]] std::uint32_t takeItem();
    void enterNextFolder();
    [[nodiscard]] Folder folderAfter(Folder folder);
    [[nodiscard]] Folder folderBefore(Folder folder);

    const FolderModel& folders_;
    const EntryTable& entries_;
    NamePattern pattern_;
    Direction direction_ = Direction::Forward;
    MemberPlace start_, next_, found_;  ///< the first two are gaps
    bool lastRound_ = false;            ///< in the folder where it began again, as far as the place where it began
    bool wrapped_ = false;
    std::uint64_t units_ = 0;
};

}  // namespace tovar
