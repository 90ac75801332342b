#include "browser/row_order.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "browser/size_keys.h"

namespace tovar {
namespace {

constexpr std::uint32_t kNone = 0xFFFFFFFF;
constexpr std::size_t kWords = 0x10000;  ///< values of a 16-bit word

using Items = std::span<KeyedItem>;

/// The work of one orderOfRows on the files.
class FileOrder {
public:
    FileOrder(const RowSource& source, const FolderRows& rows, const RowSorting& sorting, PacedWork& work)
        : source_(source),
          entries_(source.driver.entries()),
          files_(rows.files),
          firstFile_(static_cast<std::uint32_t>(rows.subfolders.size())),
          sorting_(sorting),
          work_(work) {}

    void order(Items items) {
        if (sorting_.column == ColumnKey::Name) {
            orderByText(items, [this](std::uint32_t entry) { return entries_.name(entry); });
        } else if (setKeys(items)) {
            orderByKeys(items, sorting_.direction, work_);
        } else {
            orderByText(items, [this](std::uint32_t entry) -> std::wstring_view {
                return text_ = sorting_.exact ? source_.texts.exactText(entry, sorting_.column)
                                              : source_.texts.shortText(entry, sorting_.column);
            });
        }
    }

private:
    [[nodiscard]] std::uint32_t entryOf(const KeyedItem& item) const { return files_[item.item - firstFile_]; }

    template <class TextOfEntry>
    void orderByText(Items items, const TextOfEntry& textOf) {
        orderByTexts(
            items, [&](std::uint32_t item) -> CompactText { return textOf(files_[item - firstFile_]); },
            source_.letters, sorting_.direction, work_);
    }

    template <class KeyOfEntry>
    void setEach(Items items, const KeyOfEntry& keyOf) {
        for (KeyedItem& item : items) {
            item.setKey(keyOf(entryOf(item)));
            work_.done();
        }
    }

    /// @return false when the column's texts themselves have to be compared
    bool setKeys(Items items) {
        const ColumnKey column = sorting_.column;
        if (column == ColumnKey::FileType) return setTypeRanks(items);
        if (sorting_.exact && MemberTexts::hasValue(column)) {
            setEach(items, [&](std::uint32_t entry) { return source_.texts.exactValue(entry, column); });
            return true;
        }
        if (!source_.driver.textsFollowRecords()) return false;
        switch (column) {
            case ColumnKey::Original:
            case ColumnKey::Packed:
                return setSizes(items);
            case ColumnKey::Ratio:
                return setRatioRanks(items);
            case ColumnKey::Modified:
                return setDateRanks(items);
            case ColumnKey::Attr:
                setEach(items, [&](std::uint32_t entry) { return entries_.attributesNumber(entry); });
                return setLabelRanks(items);
            case ColumnKey::Type:
                setEach(items, [&](std::uint32_t entry) { return entries_.typeNumber(entry); });
                return setLabelRanks(items);
            case ColumnKey::Crc:  // four digits, of which letters stand behind figures
                setEach(items, [&](std::uint32_t entry) { return entries_.record(entry).crc & 0xFFFF; });
                return true;
            default:
                return false;
        }
    }

    bool setSizes(Items items) {
        const SizeKeys& keys = source_.texts.sizeKeys();
        if (!keys.hold()) return false;
        setEach(items, [&](std::uint32_t entry) {
            const EntryRecord& record = entries_.record(entry);
            return keys.of(sorting_.column == ColumnKey::Packed ? record.packed : record.original);
        });
        return true;
    }

    bool setTypeRanks(Items items) {
        KnownFileTypes& types = source_.types;
        setEach(items, [&](std::uint32_t entry) {
            entries_.name(entry).copyTo(text_);
            const std::uint32_t known = types.count();
            const std::uint32_t number = types.numberOf(text_);
            if (types.count() != known) work_.done(PacedWork::kPortion);  // the desktop was asked
            return number;
        });
        setRanks(items, ranksOfTexts(
                            types.count(), [&](std::uint32_t type) -> std::wstring_view { return types.at(type).name; },
                            source_.letters, work_));
        return true;
    }

    bool setLabelRanks(Items items) {
        setRanks(items, ranksOfTexts(
                            entries_.labelCount(), [&](std::uint32_t label) { return entries_.label(label); },
                            source_.letters, work_));
        return true;
    }

    void setRanks(Items items, const std::vector<std::uint32_t>& ranks) {
        for (KeyedItem& item : items) {
            item.low = ranks[item.low];
            work_.done();
        }
    }

    /// Texts that follow from a 16-bit word of the record: each is made once.
    struct WordRanks {
        std::vector<std::uint32_t> rankOfWord;
        std::vector<std::wstring> texts;  ///< in no order
    };

    template <class WordOf, class TextOf>
    WordRanks ranksByWord(Items items, const WordOf& wordOf, const TextOf& textOf) {
        WordRanks words{std::vector<std::uint32_t>(kWords, kNone), {}};
        for (const KeyedItem& item : items) {
            const std::uint32_t entry = entryOf(item);
            std::uint32_t& number = words.rankOfWord[wordOf(entries_.record(entry))];
            work_.done();
            if (number != kNone) continue;
            number = static_cast<std::uint32_t>(words.texts.size());
            words.texts.push_back(textOf(entry));
        }
        const auto ranks = ranksOfTexts(
            static_cast<std::uint32_t>(words.texts.size()),
            [&](std::uint32_t number) -> std::wstring_view { return words.texts[number]; }, source_.letters, work_);
        for (std::uint32_t& number : words.rankOfWord) {
            if (number != kNone) number = ranks[number];
        }
        return words;
    }

    bool setRatioRanks(Items items) {
        const auto wordOf = [](const EntryRecord& record) { return static_cast<std::uint16_t>(record.ratio); };
        const WordRanks ratios = ranksByWord(
            items, wordOf, [&](std::uint32_t entry) { return source_.texts.shortText(entry, ColumnKey::Ratio); });
        setEach(items, [&](std::uint32_t entry) { return ratios.rankOfWord[wordOf(entries_.record(entry))]; });
        return true;
    }

    bool setDateRanks(Items items) {
        const WordRanks dates = ranksByWord(
            items, [](const EntryRecord& record) { return record.date; },
            [&](std::uint32_t entry) { return source_.texts.shortDate(entry) + L' '; });
        if (hasBeginningOfAnother(dates.texts)) return false;
        const WordRanks times = ranksByWord(
            items, [](const EntryRecord& record) { return record.time; },
            [&](std::uint32_t entry) { return source_.texts.shortTime(entry); });
        setEach(items, [&](std::uint32_t entry) {
            const EntryRecord& record = entries_.record(entry);
            return std::uint64_t{dates.rankOfWord[record.date]} << 32 | times.rankOfWord[record.time];
        });
        return true;
    }

    /// Whether one of the texts begins with another one: then what is behind them may decide the order of both.
    bool hasBeginningOfAnother(const std::vector<std::wstring>& texts) {
        std::vector<std::wstring> sorted(texts.size());
        for (std::size_t place = 0; place < texts.size(); ++place) source_.letters.fold(texts[place], sorted[place]);
        std::ranges::sort(sorted, [this](const std::wstring& left, const std::wstring& right) {
            work_.done();
            return left < right;
        });
        // All that begin with a text stand next behind it.
        const auto duplicates = std::ranges::unique(sorted);
        sorted.erase(duplicates.begin(), duplicates.end());
        return std::ranges::adjacent_find(sorted, [](const std::wstring& left, const std::wstring& right) {
                   return right.starts_with(left);
               }) != sorted.end();
    }

    const RowSource& source_;
    const EntryTable& entries_;
    std::span<const std::uint32_t> files_;
    std::uint32_t firstFile_;
    RowSorting sorting_;
    PacedWork& work_;
    std::wstring text_;
};

}  // namespace

std::vector<std::uint32_t> orderOfRows(const RowSource& source, const FolderRows& rows, const RowSorting& sorting,
                                       PacedWork& work) {
    std::vector<KeyedItem> items(rows.count());
    for (std::uint32_t item = 0; item < rows.count(); ++item) items[item].item = item;
    const Items all(items);
    const Items folders = all.first(rows.subfolders.size());
    const Items files = all.subspan(rows.subfolders.size());
    if (sorting.column == ColumnKey::Name) {  // the other cells of folders are alike
        orderByTexts(
            folders, [&](std::uint32_t item) { return source.folders.text(rows.subfolders[item]); }, source.letters,
            sorting.direction, work);
    }
    FileOrder(source, rows, sorting, work).order(files);
    const bool filesFirst = sorting.direction == Direction::Descending;
    std::vector<std::uint32_t> order;
    order.reserve(items.size());
    for (const Items block : {filesFirst ? files : folders, filesFirst ? folders : files}) {
        for (const KeyedItem& item : block) order.push_back(item.item);
    }
    return order;
}

}  // namespace tovar
