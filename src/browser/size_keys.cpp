#include "browser/size_keys.h"

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>

namespace tovar {
namespace {

bool isDigit(wchar_t character) { return character >= L'0' && character <= L'9'; }

}  // namespace

SizeKeys::SizeKeys(const RegionalSettings& regional, std::size_t width) {
    const std::wstring longest = groupedNumber(std::numeric_limits<std::uint64_t>::max(), regional);
    if (longest.size() < width || std::ranges::any_of(regional.groupSeparator, isDigit)) return;
    const std::wstring_view shown = std::wstring_view(longest).substr(longest.size() - width);
    if (!isDigit(shown.front())) return;
    fullWidth_ = 1;
    for (auto digits = std::ranges::count_if(shown, isDigit); digits > 1; --digits) fullWidth_ *= 10;
}

}  // namespace tovar
