#pragma once
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "archivers/packing/source_system.h"
#include "archivers/unpacking/name_hash.h"

namespace archiver {

struct WalkOptions {
    bool recurse = false;          ///< folders that are named or chosen are packed with all that lies below
    bool hidden = false;           ///< patterns and folders also give files and folders that are hidden or the system's
    bool folderEntries = true;     ///< folders are items of their own
    std::filesystem::path omit{};  ///< a file that is never packed, though it lies there: the archive itself
};

/// Turns names and patterns into what is to be packed, in the order of the names, each file once.
///
/// A link to a folder that the walk meets is not entered: it may lead above itself, and a move would remove files that
/// lie elsewhere. One that is named itself is entered. A file that is named itself is packed also when it is hidden.
class SourceWalk {
public:
    /// @param base  what relative names start at, and what is cut from absolute names below it
    SourceWalk(SourceSystem& system, const std::filesystem::path& base, WalkOptions options);

    /// Adds a file, a folder, or what a pattern ("*", "?", "[a-z]" in the last part) chooses; "*.*" is everything.
    /// A pattern gives the files of its folder; with `recurse` it is looked for in all folders below, and one that is
    /// everything gives the folders as well.
    /// @return false when nothing was found
    bool add(const std::filesystem::path& name);

    [[nodiscard]] std::vector<SourceItem>& items() noexcept { return items_; }
    /// Folders that could not be listed, as names in the archive.
    [[nodiscard]] const std::vector<std::string>& unreadable() const noexcept { return unreadable_; }

private:
    class Pattern;
    struct Place {
        std::filesystem::path path;
        std::string name;  ///< in the archive; no separator at its end
    };
    struct Hash {
        NameHash hash;
        std::size_t operator()(const std::string& text) const noexcept { return static_cast<std::size_t>(hash(text)); }
    };

    [[nodiscard]] Place placeOf(const std::filesystem::path& name) const;
    bool addPattern(const std::filesystem::path& folder, const std::filesystem::path& pattern);
    void addItem(Place place, const SourceFacts& facts);
    void addBelow(const Place& folder, Pattern* pattern, bool& found);
    [[nodiscard]] std::string key(std::string_view name) const;

    SourceSystem& system_;
    std::filesystem::path plainBase_, base_;
    WalkOptions options_;
    std::string omitted_;  ///< key of its path; empty for none
    std::vector<SourceItem> items_;
    std::vector<std::string> unreadable_;
    std::unordered_set<std::string, Hash> seen_;
};

}  // namespace archiver
