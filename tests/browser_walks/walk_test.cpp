#include "browser_walks/walk.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "browser/browser_presenter.h"
#include "browser/fakes/fake_driver.h"
#include "browser/fakes/fake_file_types.h"
#include "browser_walks/recorded_actions.h"
#include "shell/fakes/fake_file_system.h"

namespace tovar::test {
namespace {

/// A window that keeps by itself what it is told to show: the tree as texts, the rows as they were asked for.
class KeepingView final : public BrowserView {
public:
    void attach(const BrowserPresenter& presenter) { presenter_ = &presenter; }

    std::wstring title, status, address;
    Texts addresses;
    std::vector<std::wstring> keys;  ///< of the folders in the tree
    std::vector<Texts> inside;       ///< texts of the folders inside each of them
    std::optional<Folder> selected;
    std::vector<bool> rows;  ///< whether each is selected
    std::map<BrowserCommand, bool> enabled;
    ViewStyle style = ViewStyle::Details;
    std::optional<std::uint32_t> focus;
    int timesClosed = 0;

    [[nodiscard]] WindowHandle hWnd() const override { return const_cast<KeepingView*>(this); }
    void setTitle(std::wstring_view text) override { title = text; }
    void clear() override {
        keys.clear();
        inside.clear();
        selected.reset();
        rows.clear();
        focus.reset();
    }
    void showFolders() override {
        const FolderModel& folders = presenter_->folders();
        for (Folder each = 0; each < folders.size(); ++each) {
            keys.push_back(folders.key(each));
            inside.emplace_back();
            for (const Folder child : folders.children(each)) inside.back().emplace_back(folders.text(child));
        }
    }
    void selectFolder(Folder folder, bool) override { selected = folder; }
    void showContents() override {
        rows.assign(presenter_->contents().rowCount(), false);
        focus = rows.empty() ? std::nullopt : std::optional<std::uint32_t>(0);
    }
    void moveRows(std::span<const std::uint32_t> newRows) override {
        std::vector<bool> moved(rows.size(), false);
        for (std::size_t row = 0; row < newRows.size(); ++row) moved.at(newRows[row]) = rows.at(row);
        rows = std::move(moved);
        if (focus) focus = newRows[*focus];
    }
    void showRow(std::uint32_t row) override {
        rows.assign(rows.size(), false);
        rows.at(row) = true;
        focus = row;
    }
    void addAddress(std::wstring_view text) override { addresses.emplace_back(text); }
    void chooseAddress(std::size_t index) override { address = addresses.at(index); }
    void moveAddressCaretToEnd() override {}
    void setViewStyle(ViewStyle newStyle) override { style = newStyle; }
    std::uint32_t selectAll(Breather*) override {
        rows.assign(rows.size(), true);
        return selectedCount();
    }
    std::uint32_t invertSelection(Breather*) override {
        rows.flip();
        return selectedCount();
    }
    [[nodiscard]] std::vector<std::uint32_t> selectedRows() const override {
        std::vector<std::uint32_t> selection;
        for (std::uint32_t row = 0; row < rows.size(); ++row) {
            if (rows[row]) selection.push_back(row);
        }
        return selection;
    }
    [[nodiscard]] std::optional<std::uint32_t> focusedRow() const override { return focus; }
    void enable(BrowserCommand command, bool isEnabled) override { enabled[command] = isEnabled; }
    void close() override { ++timesClosed; }
    void setStatus(std::wstring_view text) override { status = text; }
    void watchShell(bool) override {}
    void finishDropSoon() override {}

    [[nodiscard]] std::uint32_t selectedCount() const {
        return static_cast<std::uint32_t>(std::count(rows.begin(), rows.end(), true));
    }

private:
    const BrowserPresenter* presenter_ = nullptr;
};

class WalkedPresenter final : public WalkedBrowser {
public:
    WalkedPresenter() {
        auto& file = files_.addFileOfSize(L"C:\\files\\a.zip", 4321);
        file.status.modifiedDate = {2001, 5, 17};
        file.status.modifiedTime = {17, 30, 58};
        view_.attach(presenter_);
        presenter_.onLoad();
    }

    void setMembers(std::vector<Member> members) override { driver_.members = std::move(members); }
    void open(bool changeable) override {
        driver_.changeable = changeable;
        presenter_.fill(L"\\");
    }
    void perform(const Step& step) override {
        switch (step.kind) {
            case StepKind::SelectFolder:
                clickFolder(step.text);
                break;
            case StepKind::CollapseFolder:  // a tree selects what it closes when the selection was inside
                if (presenter_.mayCollapse(folderOf(step.text))) clickFolder(step.text);
                break;
            case StepKind::OpenRow:
                presenter_.onRowOpened(static_cast<std::uint32_t>(step.number));
                break;
            case StepKind::TypeAddress:
                enterAddress(step.text);
                break;
            case StepKind::ChooseAddress:
                enterAddress(std::wstring(view_.addresses.at(step.number)));
                break;
            case StepKind::ClickHeader:
                presenter_.onHeaderClicked(step.number);
                break;
            case StepKind::SelectRows:
                view_.rows.assign(view_.rows.size(), false);
                for (const std::size_t row : step.rows) view_.rows.at(row) = true;
                view_.focus = static_cast<std::uint32_t>(step.rows.back());
                presenter_.onRowsSelected(view_.selectedCount());
                break;
            case StepKind::ChangeStyle:
                presenter_.onCommand(commandOf(static_cast<ViewStyle>(step.number)));
                break;
            default:
                presenter_.onCommand(commandOf(step.kind));
                break;
        }
    }
    [[nodiscard]] Seen see() override {
        Seen seen;
        if (view_.selected) {
            seen.selectedFolder = view_.keys.at(*view_.selected);
            seen.foldersInTree = view_.inside.at(*view_.selected);
        }
        seen.rootIsOpen = !presenter_.mayCollapse(FolderModel::kRoot);
        const ContentsList& contents = presenter_.contents();
        for (std::uint32_t row = 0; row < contents.rowCount(); ++row) {
            seen.rows.emplace_back();
            for (std::size_t column = 0; column < contents.columns().size(); ++column) {
                seen.rows.back().push_back(contents.text(row, column));
            }
        }
        for (const std::uint32_t row : view_.selectedRows()) seen.selectedRows.push_back(row);
        if (const auto sorting = contents.sorting()) {
            seen.sortedBy = std::to_wstring(sorting->column) + (sorting->descending ? L" down" : L" up");
        }
        seen.addresses = view_.addresses;
        seen.address = view_.address;
        seen.status = view_.status;
        seen.style = view_.style == ViewStyle::ExactDetails ? kDetails : static_cast<std::size_t>(view_.style);
        seen.work = actions_.last;
        for (const auto& [name, command] : kSeenCommands) seen.commands[name] = view_.enabled[command];
        for (const auto& [name, command] : kAskedCommands) seen.commands[name] = presenter_.isEnabled(command);
        return seen;
    }

private:
    [[nodiscard]] Folder folderOf(const std::wstring& key) const {
        return static_cast<Folder>(std::find(view_.keys.begin(), view_.keys.end(), key) - view_.keys.begin());
    }
    void clickFolder(const std::wstring& key) {
        ASSERT_LT(folderOf(key), view_.keys.size());
        view_.selected = folderOf(key);
        presenter_.onFolderSelected(*view_.selected);
    }
    void enterAddress(const std::wstring& text) {
        if (!text.empty()) view_.address = text;  // a box that is emptied is walked past: the next step fills it
        presenter_.onAddressEntered(text);
    }
    static BrowserCommand commandOf(StepKind kind) {
        switch (kind) {
            case StepKind::SelectAll:
                return mnuEditSelectAll;
            case StepKind::Invert:
                return mnuEditSelectInvert;
            case StepKind::Refresh:
                return kRefresh;
            case StepKind::Extract:
                return Extract;
            case StepKind::Delete:
                return mnuEditDelete;
            case StepKind::Add:
                return Add;
            default:
                return GoUp;
        }
    }
    static BrowserCommand commandOf(ViewStyle style) { return tovar::commandOf(style); }

    static constexpr std::pair<const char*, BrowserCommand> kSeenCommands[] = {
        {"mnuEdit", mnuEdit}, {"Add", Add}, {"Extract", Extract}, {"GoUp", GoUp}};
    static constexpr std::pair<const char*, BrowserCommand> kAskedCommands[] = {
        {"mnuEditDelete", mnuEditDelete}, {"kOpen", kOpen}, {"mnuEditSelectAll", mnuEditSelectAll}};

    FakeFileSystem files_;
    FakeFileTypes desktop_;
    FakeDriver driver_;
    RecordedActions actions_;
    KeepingView view_;
    BrowserPresenter presenter_{view_, {driver_, desktop_, files_, {}, &actions_}, L"C:\\files\\a.zip"};
};

class BrowserWalk : public testing::TestWithParam<std::uint32_t> {};

TEST_P(BrowserWalk, ShowsOneFolderEverywhere) {
    WalkedPresenter browser;
    EXPECT_TRUE(walk(GetParam(), 200, browser));
}
INSTANTIATE_TEST_SUITE_P(Seeds, BrowserWalk, testing::Range<std::uint32_t>(1, 61));

}  // namespace
}  // namespace tovar::test
