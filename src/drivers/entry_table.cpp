#include "drivers/entry_table.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace tovar {
namespace {

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
    scratch_.assign(storedName);
    std::replace(scratch_.begin(), scratch_.end(), L'/', L'\\');
    const std::wstring_view stored = scratch_;
    const std::size_t nameStart = stored.find_last_of(L"\\:") + 1;  // npos + 1 is 0
    const std::wstring_view name = stored.substr(nameStart);
    if (name.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("name is too long");
    }
    Row row{record, names_.keep(name), static_cast<std::uint32_t>(name.size()), 0, 0, 0};

    if (stored.find(L'\\') == std::wstring_view::npos) {
        scratch_.assign(1, L'\\');  // "C:name" has no folder
    } else {
        scratch_.erase(nameStart);
        scratch_.erase(scratch_.find_last_not_of(L'\\') + 1);
        scratch_ += L'\\';
    }
    row.folder = lastFolder_ = internLike(folders_, lastFolder_, scratch_);
    row.attributes = lastAttributes_ = internLike(labels_, lastAttributes_, attributes);
    row.type = lastType_ = internLike(labels_, lastType_, type);
    rows_.append(row);
}

std::wstring_view EntryTable::name(std::uint32_t index) const {
    const Row& row = rows_.at(index);
    return {row.name, row.nameLength};
}

std::wstring_view EntryTable::attributes(std::uint32_t index) const { return labels_.at(rows_.at(index).attributes); }

std::wstring_view EntryTable::type(std::uint32_t index) const { return labels_.at(rows_.at(index).type); }

}  // namespace tovar
