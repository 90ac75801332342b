// How the presenter of the browser lets members leave the window.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "browser/browser_presenter.h"
#include "browser/fakes/fake_browser_actions.h"
#include "browser/fakes/fake_browser_view.h"
#include "browser/fakes/fake_driver.h"
#include "browser/fakes/fake_file_types.h"
#include "shell/fakes/fake_file_system.h"

namespace tovar::test {
namespace {

using Members = std::vector<ArchiveMember>;
using Paths = std::vector<std::wstring>;

class FakeExports final : public MemberExports {
public:
    std::function<void()> whileWorking;
    std::vector<Members> copied, dragged;
    std::vector<DragButton> buttons;
    Paths told;
    bool awaits = false, has = false;
    int timesFinished = 0, timesCancelled = 0;

    void copy(const ArchiveScene&, const Members& members) override {
        copied.push_back(members);
        if (whileWorking) whileWorking();
    }
    void drag(const ArchiveScene&, const Members& members, DragButton button) override {
        dragged.push_back(members);
        buttons.push_back(button);
        if (whileWorking) whileWorking();
    }
    void onShellNotify(const std::wstring& first, const std::wstring& second) override {
        told.push_back(first + L"|" + second);
    }
    [[nodiscard]] bool awaitsDrop() const override { return awaits; }
    [[nodiscard]] bool hasDrop() const override { return has; }
    void finishDrop(const ArchiveScene&) override {
        ++timesFinished;
        has = false;
        if (whileWorking) whileWorking();
    }
    void cancel() noexcept override { ++timesCancelled; }
};

class ExportsOfPresenter : public testing::Test {
protected:
    ExportsOfPresenter() {
        files_.addFileOfSize(L"C:\\files\\a.zip", 10);
        actions_.exporter = &exports_;
        driver_.members = FakeDriver({L"d/1", L"a.txt"}).members;
        presenter_.onLoad();
        EXPECT_TRUE(presenter_.fill(L"\\"));
        view_.selection = {0, 1};
        presenter_.onRowsSelected(2);
    }
    [[nodiscard]] Members both() const {
        return {{.folder = presenter_.folders().find(L"\\d\\")}, {.folder = {}, .entry = 1}};
    }

    FakeFileSystem files_;
    FakeFileTypes desktop_;
    FakeDriver driver_;
    FakeBrowserView view_;
    FakeBrowserActions actions_;
    FakeExports exports_;
    BrowserPresenter presenter_{view_, {driver_, desktop_, files_, {}, &actions_}, L"C:\\files\\a.zip"};
};

TEST_F(ExportsOfPresenter, CopiesTheSelectedRowsOfEveryKind) {
    for (const bool changeable : {false, true}) {
        driver_.changeable = changeable;
        EXPECT_TRUE(presenter_.isEnabled(kCopy));
        presenter_.onCommand(kCopy);
        EXPECT_EQ(exports_.copied.back(), both());
    }
    EXPECT_EQ(exports_.copied.size(), 2U);
}

TEST_F(ExportsOfPresenter, CopiesNothingWithoutASelection) {
    view_.selection = {};
    presenter_.onRowsSelected(0);
    EXPECT_FALSE(presenter_.isEnabled(kCopy));
    presenter_.onCommand(kCopy);
    presenter_.onDragBegun(DragButton::Left);
    EXPECT_TRUE(exports_.copied.empty());
    EXPECT_TRUE(exports_.dragged.empty());
    EXPECT_FALSE(view_.watched);
}

TEST_F(ExportsOfPresenter, CopiesNothingWhileItWorks) {
    exports_.whileWorking = [&] {
        EXPECT_FALSE(presenter_.isEnabled(kCopy));
        presenter_.onCommand(kCopy);
        presenter_.onDragBegun(DragButton::Left);
        EXPECT_FALSE(presenter_.fill(L"\\"));
    };
    presenter_.onCommand(kCopy);
    EXPECT_EQ(exports_.copied.size(), 1U);
    EXPECT_TRUE(exports_.dragged.empty());
}

TEST_F(ExportsOfPresenter, LetsNothingLeaveWithoutThePort) {
    actions_.exporter = nullptr;
    EXPECT_FALSE(presenter_.isEnabled(kCopy));
    presenter_.onDragBegun(DragButton::Left);
    presenter_.onShellNotify(L"C:\\x", L"");
    presenter_.onFinishDrop();
    EXPECT_FALSE(view_.watched);
}

TEST_F(ExportsOfPresenter, WatchesTheShellWhileRowsAreDragged) {
    exports_.whileWorking = [&] {
        EXPECT_TRUE(view_.watched);
        presenter_.onShellNotify(L"C:\\x", L"C:\\y");
    };
    presenter_.onDragBegun(DragButton::Right);
    EXPECT_EQ(exports_.dragged, std::vector<Members>{both()});
    EXPECT_EQ(exports_.buttons, std::vector<DragButton>{DragButton::Right});
    EXPECT_EQ(exports_.told, Paths{L"C:\\x|C:\\y"});
    EXPECT_FALSE(view_.watched);
    EXPECT_EQ(view_.timesFinishing, 0);
}

TEST_F(ExportsOfPresenter, WatchesTheShellUntilItHasToldOfTheDrop) {
    exports_.awaits = true;
    presenter_.onDragBegun(DragButton::Left);
    EXPECT_TRUE(view_.watched);
    EXPECT_TRUE(presenter_.isEnabled(kCopy)) << "the window goes on";
    exports_.awaits = false;
    exports_.has = true;
    presenter_.onShellNotify(L"C:\\x", L"");
    EXPECT_EQ(view_.timesFinishing, 1);
    presenter_.onFinishDrop();
    EXPECT_EQ(exports_.timesFinished, 1);
    EXPECT_FALSE(view_.watched);
    presenter_.onFinishDrop();
    EXPECT_EQ(exports_.timesFinished, 1);
}

TEST_F(ExportsOfPresenter, FinishesADropThatComesWhileItWorksAfterwards) {
    exports_.whileWorking = [&] {
        exports_.has = true;
        presenter_.onShellNotify(L"C:\\x", L"");
        presenter_.onFinishDrop();
        EXPECT_EQ(view_.timesFinishing, 0);
    };
    presenter_.onCommand(kCopy);
    EXPECT_EQ(exports_.timesFinished, 0);
    EXPECT_EQ(view_.timesFinishing, 1);
}

TEST_F(ExportsOfPresenter, FinishesADropAfterTheArchiveWasListedAgain) {
    exports_.has = true;
    presenter_.onCommand(kRefresh);
    EXPECT_EQ(view_.timesFinishing, 1);
}

TEST_F(ExportsOfPresenter, CancelsWhenTheWindowGoes) {
    presenter_.onUnload();
    EXPECT_EQ(exports_.timesCancelled, 1);
}

TEST_F(ExportsOfPresenter, DoesNothingMoreWithAWindowThatIsGone) {
    exports_.whileWorking = [&] { view_.window = nullptr; };
    exports_.has = true;
    presenter_.onDragBegun(DragButton::Left);
    EXPECT_EQ(view_.timesFinishing, 0);
}

}  // namespace
}  // namespace tovar::test
