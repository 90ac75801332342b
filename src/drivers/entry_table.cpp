#include "drivers/entry_table.h"

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
    names_.clear();
    folders_.clear();
    labels_.clear();
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
    if (name.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("name is too long");
    }
    Row row{record, names_.keep(name), static_cast<std::uint32_t>(name.size()), 0, 0, 0};
    row.folder = lastFolder_ = internLike(folders_, lastFolder_, hasFolder ? cutToPath(nameStart) : kRoot);
    row.attributes = lastAttributes_ = internLike(labels_, lastAttributes_, attributes);
    row.type = lastType_ = internLike(labels_, lastType_, type);
    rows_.append(row);
}

std::wstring_view EntryTable::cutToPath(std::size_t nameStart) {
    const std::size_t end = std::wstring_view(scratch_).substr(0, nameStart).find_last_not_of(L'\\') + 1;  // or 0
    if (end == nameStart) {
        scratch_.insert(end, 1, L'\\');  // "dir\a:name"
    }
    return std::wstring_view(scratch_).substr(0, end + 1);
}

std::wstring_view EntryTable::name(std::uint32_t index) const {
    const Row& row = rows_.at(index);
    return {row.name, row.nameLength};
}

std::wstring_view EntryTable::attributes(std::uint32_t index) const { return labels_.at(rows_.at(index).attributes); }

std::wstring_view EntryTable::type(std::uint32_t index) const { return labels_.at(rows_.at(index).type); }

}  // namespace tovar
