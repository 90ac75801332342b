#include "create/zip_messages.h"

#include <algorithm>
#include <vector>

#include "shell/paths.h"
#include "shell/text_split.h"

namespace tovar {
namespace {

constexpr std::wstring_view kSeparator = L": ";

struct EntryWord {
    std::wstring_view word;
    ZipMessageKind kind;
};
constexpr EntryWord kEntryWords[] = {
    {L"ADDING", ZipMessageKind::Adding},
    {L"UPDATING", ZipMessageKind::Updating},
    {L"FRESHENING", ZipMessageKind::Freshening},
    {L"DELETING", ZipMessageKind::Deleting},
};

/// Upper case, without what indents a line.
std::wstring wordOf(std::wstring_view part) {
    const std::size_t first = part.find_first_not_of(L" \t");
    return first == part.npos ? std::wstring() : upperCase(trimBlanks(part.substr(first)));
}

/// @return whether a text tells how an entry was packed, such as "(deflated 45%)"
bool tellsPacking(std::wstring_view text) {
    const std::wstring word = upperCase(text);
    return word.find(L"STORED") != word.npos || word.find(L"DEFLATED") != word.npos || word.find(L"BYTES") != word.npos;
}

/// Takes what the library writes behind an entry's name off, and tells whether there was such a thing.
bool cutPacking(std::wstring_view& entry) {
    for (const std::wstring_view mark : {L" (stored ", L" (deflated ", L"\t(in="}) {
        const std::size_t at = entry.rfind(mark);
        // The name itself may hold the words; what the library adds stands at the end and is closed.
        if (at == entry.npos || entry.find(L')', at) != trimBlanks(entry).size() - 1) continue;
        entry = trimBlanks(entry.substr(0, at));
        return true;
    }
    return false;
}

}  // namespace

ZipMessage readZipMessage(std::wstring_view line) {
    std::wstring text(line);
    std::erase_if(text, [](wchar_t each) { return each == L'\r' || each == L'\n'; });
    ZipMessage message;
    if (text == L".") {
        message.kind = ZipMessageKind::Tick;
        message.text = text;
        return message;
    }
    const std::vector<std::wstring_view> parts = splitText(text, kSeparator);
    const std::wstring first = parts.empty() ? std::wstring() : wordOf(parts.front());
    for (const EntryWord& each : kEntryWords) {
        if (parts.size() < 2 || first != each.word) continue;
        message.kind = each.kind;
        // A name may hold the separator too.
        std::wstring_view entry = std::wstring_view(text).substr(parts.front().size() + kSeparator.size());
        message.finished = cutPacking(entry);
        message.entry = trimBlanks(entry);
    }
    if (!message.begins()) {
        if (first.starts_with(L"TOTAL BYTES")) {
            message.kind = ZipMessageKind::Total;
        } else if (first == L"ZIP INFO" || first.ends_with(L"WARNING")) {
            message.kind = ZipMessageKind::Note;
            for (const std::wstring_view part : parts) {
                if (wordOf(part) == L"NAME NOT MATCHED") message.notMatched = true;
            }
        } else {
            message.finished = tellsPacking(text);
        }
    }
    std::ranges::replace(text, L'/', L'\\');
    message.text = std::move(text);
    return message;
}

}  // namespace tovar
