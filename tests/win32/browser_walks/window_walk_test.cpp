#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include "browser_walks/recorded_actions.h"
#include "browser_walks/walk.h"
#include "win32/browser/browser_fixture.h"

namespace tovar::test {
namespace {

/// The real window, led through by messages and read back from its controls.
class WindowWalk : public BrowserFixture, public testing::WithParamInterface<std::uint32_t>, protected WalkedBrowser {
protected:
    void setMembers(std::vector<Member> members) override { driver_.members = std::move(members); }
    void open(bool changeable) override {
        driver_.changeable = changeable;
        browser_ = std::make_unique<fArcMain>(BrowserRequest{L"C:\\files\\a.zip", &driver_, L"C:\\work\\", {}},
                                              BrowserWindowPorts{files_, desktop_, messages_, {}, &actions_}, nullptr);
        ASSERT_NE(browser_->hWnd(), nullptr);
        placeInHost();
        ASSERT_TRUE(browser_->FillControl(L"\\"));
        browser_->showModeless();
    }
    void perform(const Step& step) override {
        switch (step.kind) {
            case StepKind::SelectFolder:
                selectItem(itemOf(step.text));
                break;
            case StepKind::CollapseFolder:
                if (isExpanded(itemOf(step.text))) clickButton(itemOf(step.text));
                break;
            case StepKind::OpenRow:
                focus(static_cast<int>(step.number));
                press(control(LV1), VK_RETURN);
                break;
            case StepKind::TypeAddress:
                if (!step.text.empty()) enterAddress(step.text);
                break;
            case StepKind::ChooseAddress:
                send(cmbURL, CB_SETCURSEL, step.number);
                ::SendMessageW(window(), WM_COMMAND, MAKEWPARAM(cmbURL, CBN_SELENDOK),
                               reinterpret_cast<LPARAM>(control(cmbURL)));
                break;
            case StepKind::ClickHeader:
                clickHeader(step.number);
                break;
            case StepKind::SelectRows:
                setRowState(-1, 0, LVIS_SELECTED);
                for (const std::size_t row : step.rows) select(static_cast<int>(row));
                break;
            default:
                ::SendMessageW(window(), WM_COMMAND, static_cast<WPARAM>(commandOf(step)), 0);
                break;
        }
        // To paint takes far longer than the step: one in eight is shown, whole.
        const UINT painting = ++steps_ % 8 == 0 ? RDW_INVALIDATE | RDW_FRAME | RDW_ERASE : RDW_VALIDATE | RDW_NOFRAME;
        ::RedrawWindow(window(), nullptr, nullptr, painting | RDW_ALLCHILDREN);
        runPendingMessages();
    }
    [[nodiscard]] Seen see() override {
        Seen seen;
        const HTREEITEM selected = treeItem(TVGN_CARET);
        for (HTREEITEM item = selected; item != nullptr && item != root(); item = treeItem(TVGN_PARENT, item)) {
            seen.selectedFolder.insert(0, textOfItem(item) + L'\\');
        }
        if (selected != nullptr) seen.selectedFolder.insert(0, 1, L'\\');
        seen.rootIsOpen = isExpanded(root()) || itemsIn(root()).empty();
        send(TV1, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(selected));  // what is inside comes only then
        seen.foldersInTree = textsIn(selected);
        for (int row = 0; row < rowCount(); ++row) {
            seen.rows.emplace_back();
            for (int column = 0; column < 9; ++column) seen.rows.back().push_back(cell(row, column));
        }
        for (const int row : selectedRows()) seen.selectedRows.push_back(static_cast<std::size_t>(row));
        for (int column = 0; column < 9; ++column) {
            const int arrow = sortArrow(column);
            if (arrow != 0) seen.sortedBy += std::to_wstring(column) + (arrow == HDF_SORTDOWN ? L" down" : L" up");
        }
        const auto addresses = static_cast<WPARAM>(send(cmbURL, CB_GETCOUNT));
        for (WPARAM index = 0; index < addresses; ++index) {
            std::wstring text(static_cast<std::size_t>(send(cmbURL, CB_GETLBTEXTLEN, index)), L'\0');
            send(cmbURL, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
            seen.addresses.push_back(text);
        }
        seen.address = address();
        seen.status = status();
        seen.style = shownStyle();
        seen.work = actions_.last;
        seen.commands["mnuEdit"] = send(kMenuBand, TB_ISBUTTONENABLED, mnuEdit) != FALSE;
        seen.commands["Add"] = send(kToolbar, TB_ISBUTTONENABLED, Add) != FALSE;
        seen.commands["Extract"] = send(kToolbar, TB_ISBUTTONENABLED, Extract) != FALSE;
        seen.commands["GoUp"] = goUpEnabled();
        return seen;
    }

private:
    static BrowserCommand commandOf(const Step& step) {
        switch (step.kind) {
            case StepKind::ChangeStyle:
                return tovar::commandOf(static_cast<ViewStyle>(step.number));
            case StepKind::SelectAll:
                return mnuEditSelectAll;
            case StepKind::Invert:
                return mnuEditSelectInvert;
            case StepKind::Refresh:
                return kRefresh;
            case StepKind::Extract:
                return mnuEditExtract;
            case StepKind::Delete:
                return mnuEditDelete;
            case StepKind::Add:
                return Add;
            default:
                return GoUp;
        }
    }
    /// Opens what is above the folder, as a user would to get there.
    [[nodiscard]] HTREEITEM itemOf(const std::wstring& key) const {
        HTREEITEM item = root();
        for (std::size_t start = 1; start < key.size();) {
            const std::size_t end = key.find(L'\\', start);
            send(TV1, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
            HTREEITEM child = treeItem(TVGN_CHILD, item);
            while (child != nullptr && textOfItem(child) != key.substr(start, end - start)) {
                child = treeItem(TVGN_NEXT, child);
            }
            item = child;
            start = end + 1;
        }
        return item;
    }
    /// As the list tells it; some columns are beyond its right edge, out of reach for a click.
    void clickHeader(std::size_t column) const {
        NMLISTVIEW click{};
        click.hdr = {control(LV1), LV1, static_cast<UINT>(LVN_COLUMNCLICK)};
        click.iItem = -1;
        click.iSubItem = static_cast<int>(column);
        ::SendMessageW(window(), WM_NOTIFY, LV1, reinterpret_cast<LPARAM>(&click));
    }
    /// Clicks the box with which a folder is opened and closed; a folder with none inside has no such box.
    void clickButton(HTREEITEM item) const {
        send(TV1, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
        RECT row{};
        std::memcpy(&row, &item, sizeof item);
        send(TV1, TVM_GETITEMRECT, FALSE, reinterpret_cast<LPARAM>(&row));
        for (LONG x = 0; x < row.right; ++x) {
            TVHITTESTINFO hit{};
            hit.pt = {x, (row.top + row.bottom) / 2};
            send(TV1, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
            if (hit.hItem != item || (hit.flags & TVHT_ONITEMBUTTON) == 0) continue;
            send(TV1, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(hit.pt.x, hit.pt.y));
            send(TV1, WM_LBUTTONUP, 0, MAKELPARAM(hit.pt.x, hit.pt.y));
            return;
        }
    }
    [[nodiscard]] int sortArrow(int column) const {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        ::SendMessageW(header(), HDM_GETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
        return item.fmt & (HDF_SORTUP | HDF_SORTDOWN);
    }
    /// The two styles with columns look alike but for their cells, which are compared as well.
    [[nodiscard]] std::size_t shownStyle() const {
        switch (::GetWindowLongPtrW(control(LV1), GWL_STYLE) & LVS_TYPEMASK) {
            case LVS_ICON:
                return 0;
            case LVS_SMALLICON:
                return 1;
            case LVS_LIST:
                return 2;
            default:
                return kDetails;
        }
    }

    RecordedActions actions_;
    unsigned steps_ = 0;
};

TEST_P(WindowWalk, ShowsOneFolderEverywhere) { EXPECT_TRUE(walk(GetParam(), 200, *this)); }
INSTANTIATE_TEST_SUITE_P(Seeds, WindowWalk, testing::Range<std::uint32_t>(101, 104));

}  // namespace
}  // namespace tovar::test
