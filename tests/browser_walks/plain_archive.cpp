#include "browser_walks/plain_archive.h"

#include <algorithm>
#include <iterator>

namespace tovar::test {
namespace {

constexpr const wchar_t* kFolders[] = {L"a", L"b", L"A", L"docs", L"Docs", L"x.txt", L"two words", L"\u00DCbung"};
constexpr const wchar_t* kNames[] = {L"x.txt",  L"X",      L"a",          L"read me.txt",    L"b.bin",
                                     L"b.BIN",  L"10.txt", L"9.txt",      L"\u00FCbung.txt", L"\u00DCbung.bin",
                                     L"README", L"readme", L"noextension"};
constexpr const wchar_t* kSeparators[] = {L"/", L"\\", L"/", L"//", L"\\/"};

struct Size {
    std::uint64_t bytes;
    const wchar_t *cell, *exactCell;
};
constexpr Size kSizes[] = {{0, L"          ", L"0"},
                           {1, L"         1", L"1"},
                           {70, L"        70", L"70"},
                           {999, L"       999", L"999"},
                           {1000, L"     1,000", L"1,000"},
                           {12345, L"    12,345", L"12,345"},
                           {54321, L"    54,321", L"54,321"},
                           {700000, L"   700,000", L"700,000"},
                           {1234567, L" 1,234,567", L"1,234,567"},
                           {99999999, L"99,999,999", L"99,999,999"},
                           {1234567890, L"34,567,890", L"1,234,567,890"},
                           {5000000000, L"00,000,000", L"5,000,000,000"}};

struct Ratio {
    std::int16_t perMille;
    const wchar_t *cell, *exactCell;
};
constexpr Ratio kRatios[] = {{0, L"  0.0%", L"0.0%"},
                             {5, L"  0.5%", L"0.5%"},
                             {99, L"  9.9%", L"9.9%"},
                             {425, L" 42.5%", L"42.5%"},
                             {1000, L"100.0%", L"100.0%"}};

/// From the oldest to the newest.
struct Time {
    std::uint16_t date, time;
    const wchar_t *cell, *exactCell;
};
constexpr Time kTimes[] = {{0x0021, 0x0000, L"1/1/1980 00:00", L"1/1/1980 00:00:00"},
                           {0x2AB1, 0x8BDD, L"5/17/2001 17:30", L"5/17/2001 17:30:58"},
                           {0x2D8C, 0xBF7D, L"12/12/2002 23:59", L"12/12/2002 23:59:58"},
                           {0x5869, 0x38A1, L"3/9/2024 07:05", L"3/9/2024 07:05:02"}};

struct Checksum {
    std::uint32_t crc;
    const wchar_t *cell, *exactCell;
};
constexpr Checksum kChecksums[] = {{0, L"0000", L""},
                                   {0xFFFF, L"FFFF", L"0000FFFF"},
                                   {0x1A2B3C4D, L"3C4D", L"1A2B3C4D"},
                                   {0xABC00012, L"0012", L"ABC00012"}};

constexpr const wchar_t* kAttributes[] = {L"a--w", L"---w", L"ahsr", L""};
constexpr const wchar_t* kMethods[] = {L"Deflate", L"Store", L"deflate"};

template <class Choices>
decltype(auto) oneOf(const Choices& choices, Dice& dice) {
    return choices[dice.roll(std::size(choices))];
}

bool endsWith(std::wstring_view text, std::wstring_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

PlainMember madeUp(Dice& dice) {
    PlainMember made;
    std::wstring stored;
    made.folder = L"\\";
    if (dice.oneIn(8)) stored += oneOf(kSeparators, dice);
    for (std::size_t depth = dice.roll(4); depth > 0; --depth) {
        const std::wstring part = oneOf(kFolders, dice);
        stored += part;
        stored += oneOf(kSeparators, dice);
        made.folder += part + L"\\";
    }
    const bool isFolder = !stored.empty() && dice.oneIn(6);
    if (!isFolder) made.name = oneOf(kNames, dice);
    const Size &original = oneOf(kSizes, dice), &packed = oneOf(kSizes, dice);
    const Ratio& ratio = oneOf(kRatios, dice);
    const Time& time = oneOf(kTimes, dice);
    const Checksum& checksum = oneOf(kChecksums, dice);
    const std::wstring attributes = oneOf(kAttributes, dice), method = oneOf(kMethods, dice);
    made.member = {.storedName = stored + made.name,
                   .original = original.bytes,
                   .packed = packed.bytes,
                   .ratio = ratio.perMille,
                   .date = time.date,
                   .time = time.time,
                   .crc = checksum.crc,
                   .attributes = attributes,
                   .type = method};
    const std::wstring typeName = endsWith(made.name, L".txt") ? L"Text Document" : L"File";
    made.row.path = made.folder + made.name;
    made.row.cells = {made.name, original.cell, packed.cell, ratio.cell,   typeName,
                      time.cell, attributes,    method,      checksum.cell};
    made.row.exactCells = {made.name,      original.exactCell, packed.exactCell, ratio.exactCell,   typeName,
                           time.exactCell, attributes,         method,           checksum.exactCell};
    made.row.ranks = {0,
                      original.bytes,
                      packed.bytes,
                      static_cast<std::uint64_t>(ratio.perMille),
                      0,
                      static_cast<std::uint64_t>(&time - kTimes),
                      0,
                      0,
                      checksum.crc};
    return made;
}

}  // namespace

std::wstring keyAbove(std::wstring_view key) {
    if (key.size() < 2) return {};
    const std::wstring_view open = key.substr(0, key.size() - 1);
    return std::wstring(open.substr(0, open.rfind(L'\\') + 1));
}

std::wstring smallLetters(std::wstring_view text) {
    std::wstring small(text);
    for (wchar_t& letter : small) {
        if (letter >= L'A' && letter <= L'Z') letter = static_cast<wchar_t>(letter - L'A' + L'a');
        if (letter == L'\u00DC') letter = L'\u00FC';
    }
    return small;
}

void PlainArchive::grow(Dice& dice, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) members_.push_back(madeUp(dice));
}

void PlainArchive::shrink(Dice& dice) {
    std::vector<PlainMember> left;
    for (PlainMember& each : members_) {
        if (dice.oneIn(3)) left.push_back(std::move(each));
    }
    members_ = std::move(left);
}

std::vector<Member> PlainArchive::members() const {
    std::vector<Member> members;
    for (const PlainMember& each : members_) members.push_back(each.member);
    return members;
}

Texts PlainArchive::folders() const {
    Texts keys{L"\\"};
    const auto add = [&](const std::wstring& key) {
        if (std::find(keys.begin(), keys.end(), key) == keys.end()) keys.push_back(key);
    };
    for (const PlainMember& each : members_) {
        for (std::size_t end = 1; (end = each.folder.find(L'\\', end)) != std::wstring::npos; ++end) {
            add(each.folder.substr(0, end + 1));
        }
    }
    return keys;
}

bool PlainArchive::has(std::wstring_view key) const {
    const Texts keys = folders();
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

Texts PlainArchive::foldersIn(std::wstring_view key) const {
    Texts texts;
    for (const std::wstring& each : folders()) {
        if (each.size() > 1 && keyAbove(each) == key) {
            texts.push_back(each.substr(key.size(), each.size() - key.size() - 1));
        }
    }
    return texts;
}

void PlainArchive::remove(const PlainRow& row) {
    std::erase_if(members_, [&](const PlainMember& each) {
        if (!row.isFolder) return !each.name.empty() && each.row.path == row.path && each.row.cells == row.cells;
        return each.folder.substr(0, row.path.size()) == row.path;
    });
}

std::vector<PlainRow> PlainArchive::rows(std::wstring_view key) const {
    std::vector<PlainRow> rows;
    for (const std::wstring& text : foldersIn(key)) {
        const Texts cells{text, L"", L"", L"", L"File Folder", L"", L"", L"", L""};
        rows.push_back({true, std::wstring(key) + text + L'\\', cells, cells, std::vector<std::uint64_t>(9)});
    }
    for (const PlainMember& each : members_) {
        if (each.folder == key && !each.name.empty()) rows.push_back(each.row);
    }
    return rows;
}

}  // namespace tovar::test
