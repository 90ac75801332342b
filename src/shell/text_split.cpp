#include "shell/text_split.h"

namespace tovar {

std::vector<std::wstring_view> splitText(std::wstring_view text, std::wstring_view separator) {
    std::vector<std::wstring_view> items;
    if (text.empty()) return items;
    for (;;) {
        const std::size_t end = text.find(separator);
        items.push_back(text.substr(0, end));
        if (end == text.npos) return items;
        text.remove_prefix(end + separator.size());
    }
}

}  // namespace tovar
