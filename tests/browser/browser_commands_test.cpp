#include "browser/browser_commands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace tovar::test {
namespace {

KeyStroke stroke(Key key, bool control = false, bool shift = false, bool alt = false) {
    return {key, control, shift, alt};
}
KeyStroke controlWith(char letter) { return stroke(static_cast<Key>(letter), true); }

TEST(BrowserCommands, AreDescribedOnceEach) {
    std::set<int> met;
    for (const CommandDescription& each : browserCommands()) {
        EXPECT_TRUE(met.insert(each.command).second) << each.command;
        EXPECT_EQ(describe(each.command), &each);
        EXPECT_FALSE(each.menuText.empty() && each.buttonText.empty()) << each.command;
    }
    EXPECT_EQ(met.size(), 26U);
    EXPECT_EQ(describe(kNoCommand), nullptr);
    EXPECT_EQ(describe(12345), nullptr);
}

TEST(BrowserCommands, HaveOneKeyEach) {
    std::vector<KeyStroke> met;
    for (const CommandDescription& each : browserCommands()) {
        for (const KeyStroke& key : {each.key, each.otherKey}) {
            if (key.key == Key::None) continue;
            EXPECT_EQ(std::ranges::count(met, key), 0) << each.command;
            EXPECT_EQ(commandOfKey(key), each.command);
            met.push_back(key);
        }
        EXPECT_EQ(each.key.key == Key::None, each.shortcutText.empty()) << each.command;
    }
}

TEST(BrowserCommands, AnswerToTheKeysThatMenusPromise) {
    EXPECT_EQ(commandOfKey(stroke(Key::Enter)), kOpen);
    EXPECT_EQ(commandOfKey(stroke(Key::Back)), GoUp);
    EXPECT_EQ(commandOfKey(stroke(Key::Up, false, false, true)), GoUp);
    EXPECT_EQ(commandOfKey(stroke(Key::F5)), kRefresh);
    EXPECT_EQ(commandOfKey(stroke(Key::Delete)), mnuEditDelete);
    EXPECT_EQ(commandOfKey(controlWith('A')), mnuEditSelectAll);
    EXPECT_EQ(commandOfKey(controlWith('I')), mnuEditSelectInvert);
    EXPECT_EQ(commandOfKey(controlWith('E')), mnuEditExtract);
    EXPECT_EQ(commandOfKey(controlWith('C')), kCopy);
    EXPECT_EQ(commandOfKey({Key::Insert, true, false, false}), kCopy);
    EXPECT_EQ(commandOfKey(controlWith('V')), kPaste);
    EXPECT_EQ(commandOfKey(controlWith('F')), kFind);
    EXPECT_EQ(commandOfKey(stroke(Key::F3)), kFindNext);
    EXPECT_EQ(commandOfKey(stroke(Key::F3, false, true)), kFindPrevious);
    EXPECT_EQ(commandOfKey(controlWith('1')), mnuViewStyleLargeIcons);
    EXPECT_EQ(commandOfKey(controlWith('5')), mnuViewStyleExactDetails);
}

TEST(BrowserCommands, LeaveOtherKeysAlone) {
    EXPECT_EQ(commandOfKey({}), kNoCommand);
    EXPECT_EQ(commandOfKey(stroke(static_cast<Key>('A'))), kNoCommand);
    EXPECT_EQ(commandOfKey(stroke(Key::Enter, false, false, true)), kNoCommand);
    EXPECT_EQ(commandOfKey(stroke(Key::Delete, false, true)), kNoCommand);
    EXPECT_EQ(commandOfKey(stroke(static_cast<Key>('A'), true, false, true)), kNoCommand);  // AltGr
}

TEST(BrowserCommands, TakeButtonsOfTheToolbarForTheirEntriesInMenus) {
    EXPECT_EQ(actionOf(Add), mnuEditAdd);
    EXPECT_EQ(actionOf(Extract), mnuEditExtract);
    EXPECT_EQ(actionOf(GoUp), GoUp);
    EXPECT_EQ(actionOf(mnuEditDelete), mnuEditDelete);
}

TEST(BrowserCommands, KnowTheViewStyles) {
    EXPECT_EQ(viewStyleOf(mnuViewStyleLargeIcons), ViewStyle::LargeIcons);
    EXPECT_EQ(viewStyleOf(mnuViewStyleSmallIcons), ViewStyle::SmallIcons);
    EXPECT_EQ(viewStyleOf(mnuViewStyleList), ViewStyle::List);
    EXPECT_EQ(viewStyleOf(mnuViewStyleDetails), ViewStyle::Details);
    EXPECT_EQ(viewStyleOf(mnuViewStyleExactDetails), ViewStyle::ExactDetails);
    EXPECT_EQ(viewStyleOf(mnuViewStyle), std::nullopt);
    EXPECT_EQ(commandOf(ViewStyle::LargeIcons), mnuViewStyleLargeIcons);
    EXPECT_EQ(commandOf(ViewStyle::ExactDetails), mnuViewStyleExactDetails);
}

TEST(BrowserCommands, WriteTheShortcutAfterATab) {
    EXPECT_EQ(menuLine(*describe(kRefresh)), L"&Refresh\tF5");
    EXPECT_EQ(menuLine(*describe(mnuEditAdd)), L"&Add...");
    EXPECT_EQ(menuLine(*describe(kCopy)), L"&Copy\tCtrl+C");
    EXPECT_EQ(menuLine(*describe(kPaste)), L"&Paste\tCtrl+V");
}

}  // namespace
}  // namespace tovar::test
