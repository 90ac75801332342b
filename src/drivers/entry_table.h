#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "drivers/chunked_list.h"
#include "drivers/compact_text.h"
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
/// text once, names one after the other in as few bytes as they allow. Texts are made when they are read
/// (entry_text.h). Indexes run from 0 in the order of the listing.
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
    /// @throws std::bad_alloc; std::length_error, also for a name of more than 65,535 characters; the entries added
    ///         before stay as they are
    void add(const EntryRecord& record, std::wstring_view storedName, std::wstring_view attributes,
             std::wstring_view type);

    [[nodiscard]] std::uint32_t size() const noexcept { return rows_.size(); }

    // One field of one entry. All throw std::out_of_range for an index outside 0 to size() - 1.
    // Texts stay valid until clear().
    [[nodiscard]] EntryRecord record(std::uint32_t index) const;
    [[nodiscard]] CompactText name(std::uint32_t index) const;
    [[nodiscard]] std::wstring_view path(std::uint32_t index) const { return folderPath(folder(index)); }
    [[nodiscard]] std::wstring_view attributes(std::uint32_t index) const;
    [[nodiscard]] std::wstring_view type(std::uint32_t index) const;
    /// Number of the entry's folder: entries of one path share it.
    [[nodiscard]] std::uint32_t folder(std::uint32_t index) const { return rows_.at(index).folder; }

    /// Numbers of the entry's attributes and type among the labels: entries of one text share its number.
    [[nodiscard]] std::uint32_t attributesNumber(std::uint32_t index) const;
    [[nodiscard]] std::uint32_t typeNumber(std::uint32_t index) const;

    /// The different texts of attributes and types.
    [[nodiscard]] std::uint32_t labelCount() const noexcept { return labels_.size(); }
    [[nodiscard]] std::wstring_view label(std::uint32_t number) const { return labels_.at(number); }

    /// Folder paths in the order in which their first member was met.
    [[nodiscard]] std::uint32_t folderCount() const noexcept { return folders_.size(); }
    [[nodiscard]] std::wstring_view folderPath(std::uint32_t folder) const { return folders_.at(folder); }

private:
    /// What is small in nearly all members has a small place; the rest of the others stands in lists beside.
    struct Row {
        std::uint32_t original = 0;  ///< bytes; for large sizes the place in largeSizes_
        std::uint32_t packed = 0;    ///< bytes
        std::uint32_t crc = 0;
        std::int16_t ratio = 0;
        std::uint16_t date = 0;
        std::uint16_t time = 0;
        std::uint16_t nameLength = 0;
        std::uint32_t folder = 0;          ///< number in folders_
        std::uint32_t labelsAndFlags = 0;  ///< number in labelPairs_, kLargeSizes and kWideName
        const void* name = nullptr;        ///< in wideNames_ or plainNames_
    };
    static_assert(sizeof(Row) <= 28 + sizeof(void*) + 4);
    static constexpr std::uint32_t kLargeSizes = 0x80000000, kWideName = 0x40000000;

    struct LargeSizes {
        std::uint64_t original, packed;
    };
    struct LabelPair {
        std::uint32_t attributes, type;  ///< numbers in labels_
    };

    /// Number of both labels together.
    std::uint32_t labelPair(std::wstring_view attributes, std::wstring_view type);
    [[nodiscard]] LabelPair labelsOf(std::uint32_t index) const;
    /// Path of the name in scratch_, of which nothing but the path is left whole.
    std::wstring_view cutToPath(std::size_t nameStart);

    ChunkedList<Row> rows_;
    TextArena<unsigned char> plainNames_;
    TextArena<wchar_t> wideNames_;
    InternedTexts folders_;
    InternedTexts labels_;
    InternedTexts labelPairs_;  ///< each as four characters: two halves of each label's number
    ChunkedList<LargeSizes> largeSizes_;
    LabelPair lastLabels_{};
    std::uint32_t lastPair_ = 0;
    std::uint32_t lastFolder_ = 0;
    std::wstring scratch_;  ///< the stored name with "\" for "/"
};

}  // namespace tovar
