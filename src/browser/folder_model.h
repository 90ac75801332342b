#pragma once
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "drivers/entry_table.h"
#include "drivers/interned_texts.h"
#include "shell/breather.h"

namespace tovar {

/// A folder of an archive: its number in the FolderModel, in the order in which the folders were met.
using Folder = std::uint32_t;

/// The folders of a listed archive and what lies in each. Folders that exist only as parts of member paths are there
/// too. Texts are copied: the model outlives the listing it was built from.
///
/// A folder's key is its path inside the archive with a "\" at both ends; "\" alone is the root. Keys differ when their
/// characters differ; empty parts of a path (doubled separators) count for nothing.
class FolderModel {
public:
    static constexpr Folder kRoot = 0;

    /// Builds anew, in a time that grows with the number of members and the length of the folder paths.
    /// @param rootText  what the root is called, the archive's file name
    /// @param breather  null: in one go. While it breathes, the model is empty.
    /// @throws std::bad_alloc, WorkAbandoned; the model is then empty
    void build(std::wstring_view rootText, const EntryTable& entries, Breather* breather = nullptr);

    /// Leaves nothing, not even the root.
    void clear() noexcept;

    [[nodiscard]] std::uint32_t size() const noexcept { return nodes_.size(); }

    // Of one folder. All throw std::out_of_range for a number outside 0 to size() - 1.
    /// The last part of the key; the archive's file name for the root.
    [[nodiscard]] std::wstring_view text(Folder folder) const;
    [[nodiscard]] std::wstring key(Folder folder) const;
    [[nodiscard]] std::optional<Folder> parent(Folder folder) const;
    /// Folders directly in it, in the order in which their first member was met.
    [[nodiscard]] std::span<const Folder> children(Folder folder) const;
    /// Indexes of the entries directly in it, in the order of the listing; folder members (without a name) are none.
    [[nodiscard]] std::span<const std::uint32_t> files(Folder folder) const;

    /// @return the folder of exactly this key
    [[nodiscard]] std::optional<Folder> find(std::wstring_view key) const;

    /// Finds a folder as people write its path: "/" for "\", separators left out at the ends or doubled, letters in the
    /// other case. Of several, one that is written alike comes first, then the one met first.
    [[nodiscard]] std::optional<Folder> findWritten(std::wstring_view path) const;

private:
    /// Numbers in groups: those of group g are items[start[g]] to items[start[g + 1] - 1].
    struct Groups {
        std::vector<std::uint32_t> start, items;
        [[nodiscard]] std::span<const std::uint32_t> of(std::uint32_t group) const;
    };

    void addFolders(const EntryTable& entries, std::vector<Folder>& folderOfPath, PacedWork& work);
    Folder addChild(Folder parent, std::wstring_view text);
    void groupChildren();
    void groupFiles(const EntryTable& entries, const std::vector<Folder>& folderOfPath, PacedWork& work);

    std::wstring rootText_;
    InternedTexts nodes_;  ///< of each folder its parent's number as two characters and its text
    std::vector<Folder> parents_;
    Groups children_, files_;
    std::wstring scratch_;
};

}  // namespace tovar
