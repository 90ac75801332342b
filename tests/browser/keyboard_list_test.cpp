#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "browser/browser_commands.h"

// The table of keys in docs/using.md, against the commands themselves.
namespace tovar::test {
namespace {

using Pairs = std::map<std::string, std::string>;  // keys -> command

std::string narrow(std::wstring_view text) {
    std::string narrowed;
    for (const wchar_t letter : text) narrowed += letter < 0x80 ? static_cast<char>(letter) : '?';
    return narrowed;
}

std::string trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::vector<std::string> cellsOf(const std::string& row) {
    std::vector<std::string> cells;
    std::istringstream stream(row.substr(1));
    for (std::string cell; std::getline(stream, cell, '|');) cells.push_back(trimmed(cell));
    return cells;
}

/// The rows below the table's head; each holds two pairs.
Pairs pairsOfPage() {
    Pairs pairs;
    std::ifstream page(TOVAREX_KEYS_PAGE);
    EXPECT_TRUE(page.is_open());
    std::string line;
    while (std::getline(page, line) && line != "| key | command | key | command |") {
    }
    std::getline(page, line);  // the line below the head
    while (std::getline(page, line) && line.starts_with('|')) {
        const auto cells = cellsOf(line);
        EXPECT_EQ(cells.size(), 4U) << line;
        for (std::size_t place = 0; place + 1 < cells.size(); place += 2) {
            if (cells[place].empty() && cells[place + 1].empty()) continue;  // an odd number of them
            EXPECT_TRUE(pairs.emplace(cells[place], cells[place + 1]).second) << line;
        }
    }
    return pairs;
}

/// How people write a key that no menu shows.
std::string textOf(const KeyStroke& stroke) {
    std::string text;
    if (stroke.control) text += "Ctrl+";
    if (stroke.shift) text += "Shift+";
    if (stroke.alt) text += "Alt+";
    if (stroke.key == Key::Insert) return text + "Insert";
    return text + (stroke.key == Key::Up ? "Up" : std::string(1, static_cast<char>(stroke.key)));
}

Pairs pairsOfCommands() {
    Pairs pairs;
    for (const CommandDescription& each : browserCommands()) {
        if (each.shortcutText.empty()) continue;
        std::string keys = narrow(each.shortcutText), text = narrow(each.menuText);
        if (each.otherKey.key != Key::None) keys += ", " + textOf(each.otherKey);
        std::erase(text, '&');
        pairs.emplace(keys, text);
    }
    return pairs;
}

TEST(KeyboardList, NamesEveryKeyAndNoOther) {
    const Pairs commands = pairsOfCommands();
    EXPECT_EQ(commands.size(), 18U);
    EXPECT_EQ(pairsOfPage(), commands);
}

}  // namespace
}  // namespace tovar::test
