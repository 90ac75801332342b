#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "drivers/chunked_list.h"
#include "drivers/interned_texts.h"

namespace tovar {

/// The numbers of one member, as listed by an archiver library.
struct EntryRecord {
    std::uint64_t original = 0;  ///< bytes
    std::uint64_t packed = 0;    ///< bytes
    std::uint32_t crc = 0;
    std::int16_t ratio = 0;  ///< per mille; a library's value above 32767 reads as negative
    std::uint16_t date = 0;  ///< DOS date word
    std::uint16_t time = 0;  ///< DOS time word
};

/// The members of a listed archive, kept compactly: numbers as numbers, each folder path and each attribute or method
/// text once, names one after the other. Texts are made when they are read (entry_text.h). Indexes run from 0 in the
/// order of the listing.
class EntryTable {
public:
    EntryTable() = default;
    EntryTable(const EntryTable&) = delete;
    EntryTable& operator=(const EntryTable&) = delete;

    void clear() noexcept;

    /// Adds a member.
    /// @param storedName  name with its path as stored, "/" or "\" between folders; split as the browser shows it: the
    ///                    name is the text after the last separator or ":", the path the text before it with one "\" at
    ///                    its end, or "\" alone. A stored name that ends with a separator is a folder member: empty
    ///                    name.
    /// @throws std::bad_alloc, std::length_error; the entries added before stay as they are
    void add(const EntryRecord& record, std::wstring_view storedName, std::wstring_view attributes,
             std::wstring_view type);

    [[nodiscard]] std::uint32_t size() const noexcept { return rows_.size(); }

    // One field of one entry. All throw std::out_of_range for an index outside 0 to size() - 1.
    // Texts stay valid until clear().
    [[nodiscard]] const EntryRecord& record(std::uint32_t index) const { return rows_.at(index).record; }
    [[nodiscard]] std::wstring_view name(std::uint32_t index) const;
    [[nodiscard]] std::wstring_view path(std::uint32_t index) const { return folderPath(folder(index)); }
    [[nodiscard]] std::wstring_view attributes(std::uint32_t index) const;
    [[nodiscard]] std::wstring_view type(std::uint32_t index) const;
    /// Number of the entry's folder: entries of one path share it.
    [[nodiscard]] std::uint32_t folder(std::uint32_t index) const { return rows_.at(index).folder; }

    /// Folder paths in the order in which their first member was met.
    [[nodiscard]] std::uint32_t folderCount() const noexcept { return folders_.size(); }
    [[nodiscard]] std::wstring_view folderPath(std::uint32_t folder) const { return folders_.at(folder); }

private:
    struct Row {
        EntryRecord record;
        const wchar_t* name = nullptr;
        std::uint32_t nameLength = 0;
        std::uint32_t folder = 0;      ///< number in folders_
        std::uint32_t attributes = 0;  ///< number in labels_
        std::uint32_t type = 0;        ///< likewise
    };
    static_assert(sizeof(Row) <= 56);

    /// Path of the name in scratch_, of which nothing but the path is left whole.
    std::wstring_view cutToPath(std::size_t nameStart);

    ChunkedList<Row> rows_;
    TextArena names_;
    InternedTexts folders_;
    InternedTexts labels_;
    std::uint32_t lastAttributes_ = 0;
    std::uint32_t lastType_ = 0;
    std::uint32_t lastFolder_ = 0;
    std::wstring scratch_;  ///< the stored name with "\" for "/"
};

}  // namespace tovar
