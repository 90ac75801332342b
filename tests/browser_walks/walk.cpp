#include "browser_walks/walk.h"

#include <cstdio>
#include <string_view>
#include <utility>

#include "browser_walks/walk_model.h"

namespace tovar::test {
namespace {

std::string printed(std::wstring_view text) {
    std::string printed(1, '"');
    for (const wchar_t character : text) {
        if (character >= L' ' && character < 127) {
            printed += static_cast<char>(character);
        } else {
            char number[16];
            std::snprintf(number, sizeof number, "<%X>", static_cast<unsigned>(character));
            printed += number;
        }
    }
    printed += '"';
    return printed;
}

std::string printed(const Texts& texts) {
    std::string line;
    for (const std::wstring& each : texts) {
        if (!line.empty()) line += " | ";
        line += printed(each);
    }
    return line;
}

std::string printed(const std::vector<std::size_t>& numbers) {
    std::string line;
    for (const std::size_t each : numbers) {
        if (!line.empty()) line += ' ';
        line += std::to_string(each);
    }
    return line;
}

const char* nameOf(StepKind kind) {
    static constexpr const char* kNames[] = {"select folder", "collapse folder", "open row",     "go up",
                                             "type address",  "choose address",  "click header", "select rows",
                                             "select all",    "invert",          "refresh",      "change style",
                                             "extract",       "delete",          "add"};
    return kNames[static_cast<std::size_t>(kind)];
}

std::string printed(const Step& step) {
    std::string line = nameOf(step.kind);
    switch (step.kind) {
        case StepKind::SelectFolder:
        case StepKind::CollapseFolder:
        case StepKind::TypeAddress:
            return line + ' ' + printed(step.text);
        case StepKind::OpenRow:
        case StepKind::ChooseAddress:
        case StepKind::ClickHeader:
        case StepKind::ChangeStyle:
            return line + ' ' + std::to_string(step.number);
        case StepKind::SelectRows:
            return line + ' ' + printed(step.rows);
        default:
            return line;
    }
}

/// Everything that is seen, each with a word for it, in the same order for all.
std::vector<std::pair<std::string, std::string>> described(const Seen& seen) {
    std::vector<std::pair<std::string, std::string>> lines = {
        {"folder in the tree", printed(seen.selectedFolder)},
        {"folders inside it", printed(seen.foldersInTree)},
        {"root is open", seen.rootIsOpen ? "yes" : "no"},
        {"selected rows", printed(seen.selectedRows)},
        {"sorted by", printed(seen.sortedBy)},
        {"history", printed(seen.addresses)},
        {"address", printed(seen.address)},
        {"status", printed(seen.status)},
        {"style", std::to_string(seen.style)},
        {"work", printed(seen.work)},
    };
    std::string commands, rows;
    for (const auto& [name, enabled] : seen.commands) commands.append(name).append(enabled ? " on  " : " off  ");
    for (const Texts& row : seen.rows) rows.append("\n      ").append(printed(row));
    lines.emplace_back("commands", commands);
    lines.emplace_back("rows", rows);
    return lines;
}

std::string difference(Seen expected, const Seen& seen) {
    // Not every browser tells of every command without opening a menu.
    std::erase_if(expected.commands, [&](const auto& each) { return !seen.commands.contains(each.first); });
    const auto wanted = described(expected), found = described(seen);
    std::string text;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (wanted[i].second == found[i].second) continue;
        text.append("   ").append(wanted[i].first).append("\n    expected ").append(wanted[i].second);
        text.append("\n    seen     ").append(found[i].second).append("\n");
    }
    return text;
}

}  // namespace

testing::AssertionResult walk(std::uint32_t seed, std::size_t steps, WalkedBrowser& browser) {
    Dice dice(seed);
    const bool changeable = dice.oneIn(2);
    WalkModel model(dice, changeable);
    browser.setMembers(model.members());
    browser.open(changeable);
    model.open();
    std::string way = "   open\n";
    for (std::size_t step = 0;; ++step) {
        const std::string differs = difference(model.expected(), browser.see());
        if (!differs.empty()) {
            return testing::AssertionFailure() << "seed " << seed << ", after " << step << " steps\n"
                                               << differs << "the steps:\n"
                                               << way;
        }
        if (step == steps) return testing::AssertionSuccess();
        const Step next = model.choose();
        way.append("   ").append(printed(next)).append("\n");
        browser.setMembers(model.members());
        browser.perform(next);
        model.apply(next);
    }
}

}  // namespace tovar::test
