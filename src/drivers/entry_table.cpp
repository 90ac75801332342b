#include "drivers/entry_table.h"

#include <iterator>
#include <limits>
#include <stdexcept>

namespace tovar {
namespace {

constexpr std::wstring_view kRoot = L"\\";

// Neighbours in a listing mostly share folder, attributes and method: the number of the last text is tried first.
std::uint32_t internLike(InternedTexts& texts, std::uint32_t last, std::wstring_view text) {
    return last < texts.size() && texts.at(last) == text ? last : texts.intern(text);
}

}  // namespace

void EntryTable::clear() noexcept {
    rows_.clear();
    plainNames_.clear();
    wideNames_.clear();
    folders_.clear();
    labels_.clear();
    labelPairs_.clear();
    largeSizes_.clear();
}

void EntryTable::add(const EntryRecord& record, std::wstring_view storedName, std::wstring_view attributes,
                     std::wstring_view type) {
    std::size_t nameStart = 0;
    bool hasFolder = false;
    scratch_.assign(storedName);
    for (std::size_t at = 0; at < scratch_.size(); ++at) {
        wchar_t& character = scratch_[at];
        if (character == L'/' || character == L'\\') {
            character = L'\\';
            hasFolder = true;
            nameStart = at + 1;
        } else if (character == L':') {
            nameStart = at + 1;
        }
    }
    const std::wstring_view name = std::wstring_view(scratch_).substr(nameStart);
    constexpr std::uint32_t kMostInRow = std::numeric_limits<std::uint32_t>::max();
    if (name.size() > std::numeric_limits<std::uint16_t>::max()) {
        throw std::length_error("name is too long");
    }
    Row row;
    row.crc = record.crc;
    row.ratio = record.ratio;
    row.date = record.date;
    row.time = record.time;
    const std::uint32_t nameFlag = CompactText::fitsPlain(name) ? 0 : kWideName;
    if (nameFlag == 0) {
        row.name = plainNames_.keep(name);
    } else {
        row.name = wideNames_.keep(name);
    }
    row.nameLength = static_cast<std::uint16_t>(name.size());
    row.folder = lastFolder_ = internLike(folders_, lastFolder_, hasFolder ? cutToPath(nameStart) : kRoot);
    row.labelsAndFlags = labelPair(attributes, type) | nameFlag;
    if (record.original <= kMostInRow && record.packed <= kMostInRow) {
        row.original = static_cast<std::uint32_t>(record.original);
        row.packed = static_cast<std::uint32_t>(record.packed);
    } else {
        row.original = largeSizes_.size();
        row.labelsAndFlags |= kLargeSizes;
        largeSizes_.append({record.original, record.packed});
    }
    rows_.append(row);
}

std::uint32_t EntryTable::labelPair(std::wstring_view attributes, std::wstring_view type) {
    const LabelPair pair{internLike(labels_, lastLabels_.attributes, attributes),
                         internLike(labels_, lastLabels_.type, type)};
    const bool isLast = pair.attributes == lastLabels_.attributes && pair.type == lastLabels_.type;
    if (isLast && lastPair_ < labelPairs_.size()) return lastPair_;
    const wchar_t text[] = {static_cast<wchar_t>(pair.attributes & 0xFFFF), static_cast<wchar_t>(pair.attributes >> 16),
                            static_cast<wchar_t>(pair.type & 0xFFFF), static_cast<wchar_t>(pair.type >> 16)};
    lastPair_ = labelPairs_.intern({text, std::size(text)});
    lastLabels_ = pair;
    return lastPair_;
}

EntryTable::LabelPair EntryTable::labelsOf(std::uint32_t index) const {
    const std::wstring_view text = labelPairs_.at(rows_.at(index).labelsAndFlags & ~(kLargeSizes | kWideName));
    const auto number = [text](std::size_t place) {
        return static_cast<std::uint32_t>(text[place]) | static_cast<std::uint32_t>(text[place + 1]) << 16;
    };
    return {number(0), number(2)};
}

EntryRecord EntryTable::record(std::uint32_t index) const {
    const Row& row = rows_.at(index);
    EntryRecord record;
    if ((row.labelsAndFlags & kLargeSizes) == 0) {
        record.original = row.original;
        record.packed = row.packed;
    } else {
        record.original = largeSizes_[row.original].original;
        record.packed = largeSizes_[row.original].packed;
    }
    record.crc = row.crc;
    record.ratio = row.ratio;
    record.date = row.date;
    record.time = row.time;
    return record;
}

std::wstring_view EntryTable::cutToPath(std::size_t nameStart) {
    const std::size_t end = std::wstring_view(scratch_).substr(0, nameStart).find_last_not_of(L'\\') + 1;  // or 0
    if (end == nameStart) {
        scratch_.insert(end, 1, L'\\');  // "dir\a:name"
    }
    return std::wstring_view(scratch_).substr(0, end + 1);
}

CompactText EntryTable::name(std::uint32_t index) const {
    const Row& row = rows_.at(index);
    if ((row.labelsAndFlags & kWideName) != 0) {
        return std::wstring_view(static_cast<const wchar_t*>(row.name), row.nameLength);
    }
    return {static_cast<const unsigned char*>(row.name), row.nameLength};
}

std::uint32_t EntryTable::attributesNumber(std::uint32_t index) const { return labelsOf(index).attributes; }

std::uint32_t EntryTable::typeNumber(std::uint32_t index) const { return labelsOf(index).type; }

std::wstring_view EntryTable::attributes(std::uint32_t index) const { return labels_.at(attributesNumber(index)); }

std::wstring_view EntryTable::type(std::uint32_t index) const { return labels_.at(typeNumber(index)); }

}  // namespace tovar
