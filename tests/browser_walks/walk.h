#pragma once
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "browser_walks/plain_archive.h"

namespace tovar::test {

enum class StepKind {
    SelectFolder,    ///< a click in the tree; text = key
    CollapseFolder,  ///< text = key of the folder shown or of one above it
    OpenRow,         ///< number = row
    GoUp,
    TypeAddress,    ///< text, and Enter
    ChooseAddress,  ///< number = entry of the history
    ClickHeader,    ///< number = column
    SelectRows,     ///< rows, and no others
    SelectAll,
    Invert,
    Refresh,      ///< lists the archive again, which may have other members now
    ChangeStyle,  ///< number = style of the view
    Extract,
    Delete,
    Add,
};

/// One thing that a user does.
struct Step {
    StepKind kind = StepKind::GoUp;
    std::wstring text{};
    std::size_t number = 0;
    std::vector<std::size_t> rows{};
};

/// Styles of the view: 0 large icons, 1 small icons, 2 list.
constexpr std::size_t kDetails = 3, kExactDetails = 4;

/// What a user sees.
struct Seen {
    std::wstring selectedFolder;  ///< key
    Texts foldersInTree;          ///< those inside the selected one
    bool rootIsOpen = false;
    std::vector<Texts> rows;
    std::vector<std::size_t> selectedRows;
    std::wstring sortedBy;  ///< number of the column and "up" or "down"; empty = none
    Texts addresses;        ///< the history
    std::wstring address;
    std::wstring status;
    std::size_t style = 0;                 ///< of the view; kDetails for both that have columns
    std::wstring work;                     ///< what was asked for last: "open", "extract", "delete" or "add", and paths
    std::map<std::string, bool> commands;  ///< by name, whether enabled
};

/// A browser that a walk leads through.
class WalkedBrowser {
public:
    virtual ~WalkedBrowser() = default;
    /// What the archive holds from the next listing on.
    virtual void setMembers(std::vector<Member> members) = 0;
    /// Shows the root of the archive "a.zip" of 4321 bytes, last written at 17:30:58 on 17 May 2001.
    /// @param changeable  whether members can be added and deleted
    virtual void open(bool changeable) = 0;
    virtual void perform(const Step& step) = 0;
    [[nodiscard]] virtual Seen see() = 0;
};

/// Leads a browser through steps that a seed chooses, and compares after each what is seen with a plain model of its
/// own. The failure message tells the seed, what differs, and the steps that lead there.
[[nodiscard]] testing::AssertionResult walk(std::uint32_t seed, std::size_t steps, WalkedBrowser& browser);

}  // namespace tovar::test
