#include "browser/browser_menus.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

namespace tovar::test {
namespace {

using Entries = std::vector<BrowserCommand>;

Entries in(std::span<const BrowserCommand> entries) { return {entries.begin(), entries.end()}; }

constexpr BrowserMenu kMenus[] = {BrowserMenu::Edit, BrowserMenu::View, BrowserMenu::Rows, BrowserMenu::EmptyArea,
                                  BrowserMenu::Folders};

TEST(BrowserMenus, OfferTheCommandsOfTheEditMenu) {
    const Entries entries = in(entriesOf(BrowserMenu::Edit));
    for (const BrowserCommand command : {mnuEditAdd, mnuEditDelete, mnuEditExtract, mnuEditSelect, mnuEditExit}) {
        EXPECT_EQ(std::ranges::count(entries, command), 1) << command;
    }
    EXPECT_EQ(entries.back(), mnuEditExit);
    EXPECT_EQ(in(entriesInside(mnuEditSelect)), (Entries{mnuEditSelectAll, mnuEditSelectInvert}));
}

TEST(BrowserMenus, OfferTheViewStyles) {
    EXPECT_EQ(entriesOf(BrowserMenu::View).front(), mnuViewStyle);
    EXPECT_EQ(in(entriesInside(mnuViewStyle)),
              (Entries{mnuViewStyleLargeIcons, mnuViewStyleSmallIcons, mnuViewStyleList, mnuViewStyleDetails,
                       mnuViewStyleExactDetails}));
    EXPECT_TRUE(entriesInside(mnuEditAdd).empty());
}

TEST(BrowserMenus, OfferOnRowsWhatCanBeDoneWithThem) {
    EXPECT_EQ(in(entriesOf(BrowserMenu::Rows)), (Entries{kOpen, mnuEditExtract, kCopy, mnuEditDelete, kNoCommand,
                                                         mnuEditSelectAll, mnuEditSelectInvert}));
    EXPECT_EQ(in(entriesOf(BrowserMenu::Folders)), (Entries{kOpen, mnuEditExtract}));
}

TEST(BrowserMenus, ShowInBoldWhatADoubleClickDoes) {
    EXPECT_EQ(defaultEntryOf(BrowserMenu::Rows), kOpen);
    EXPECT_EQ(defaultEntryOf(BrowserMenu::Folders), kOpen);
    EXPECT_EQ(defaultEntryOf(BrowserMenu::EmptyArea), kNoCommand);
    EXPECT_EQ(defaultEntryOf(BrowserMenu::Edit), kNoCommand);
}

TEST(BrowserMenus, AreMadeOfCommandsWithTextsAndLettersOfTheirOwn) {
    std::vector<std::span<const BrowserCommand>> all{entriesInside(mnuEditSelect), entriesInside(mnuViewStyle)};
    for (const BrowserMenu menu : kMenus) all.push_back(entriesOf(menu));
    for (const auto entries : all) {
        std::set<wchar_t> letters;
        BrowserCommand previous = kNoCommand;
        for (const BrowserCommand entry : entries) {
            if (entry == kNoCommand) {
                EXPECT_NE(previous, kNoCommand);
            } else {
                ASSERT_NE(describe(entry), nullptr);
                const auto text = describe(entry)->menuText;
                const auto mark = text.find(L'&');
                ASSERT_LT(mark + 1, text.size()) << entry;
                EXPECT_TRUE(letters.insert(text[mark + 1] | 0x20).second) << entry;
            }
            previous = entry;
        }
        EXPECT_NE(previous, kNoCommand);
    }
}

}  // namespace
}  // namespace tovar::test
