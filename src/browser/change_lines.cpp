#include "browser/change_lines.h"

#include "shell/paths.h"
#include "shell/text_split.h"

namespace tovar {
namespace {

constexpr std::wstring_view kLineEnd = L"\r\n";
constexpr std::wstring_view kAllInFolder = L"*.*";
constexpr std::wstring_view kLhaDelete = L"d ";
constexpr std::wstring_view kLhaDeleteByPath = L"d -p1 ";
constexpr std::wstring_view kLhaAdd = L"a -r2 -a1 -x1 ";

// A list's quotes are added as a pair, around the whole line.
std::wstring_view withoutQuotes(std::wstring_view line) {
    if (line.size() >= 2 && line.front() == L'"' && line.back() == L'"') {
        line.remove_prefix(1);
        line.remove_suffix(1);
    }
    return line;
}

std::wstring lhaLine(std::wstring_view words, std::wstring_view archive, std::wstring_view list) {
    return std::wstring(words).append(QuoteIfNeeded(archive)).append(L" ").append(list);
}

}  // namespace

std::wstring zipDeletionList(std::wstring_view memberList) {
    std::wstring files, folders;
    for (const std::wstring_view line : splitText(memberList, kLineEnd)) {
        if (line.empty()) continue;
        std::wstring& part = line.find(kAllInFolder) == line.npos ? files : folders;
        part.append(withoutQuotes(line)).append(kLineEnd);
    }
    return files.append(folders);
}

std::wstring lhaDeletionLine(std::wstring_view archive, std::wstring_view list, bool wholePaths) {
    return lhaLine(wholePaths ? kLhaDeleteByPath : kLhaDelete, archive, list);
}

std::wstring lhaAdditionLine(std::wstring_view archive, std::wstring_view list) {
    return lhaLine(kLhaAdd, archive, list);
}

std::wstring linesOf(const std::vector<std::wstring>& names) {
    std::wstring list;
    for (const std::wstring& name : names) {
        if (!list.empty()) list.append(kLineEnd);
        list.append(name);
    }
    return list;
}

}  // namespace tovar
