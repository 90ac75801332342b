#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "shell/fakes/fake_shell.h"
#include "shell/select_presenter.h"

namespace tovar::test {
namespace {

class FakeSelectView final : public SelectView {
public:
    bool okEnabled = true, closed = false;
    std::vector<std::wstring> shown;

    void enableOk(bool enabled) override { okEnabled = enabled; }
    void showFolder(const std::wstring& folder) override { shown.push_back(folder); }
    void close() override { closed = true; }
};

class Select : public testing::Test {
protected:
    Select() {
        shell.files.addFolder(LR"(C:\a\inside)");
        shell.files.addFile(LR"(C:\a\one.txt)");
        shell.files.addFile(LR"(C:\a\two.txt)");
    }

    FakeShell shell;
    FakeSelectView view;
    SelectPresenter dialog{view, shell.operations};
};

TEST_F(Select, BeginsAtDriveCWithoutAFolder) {
    dialog.onLoad();
    EXPECT_EQ(view.shown, std::vector<std::wstring>{LR"(C:\)"});
    EXPECT_FALSE(view.okEnabled);
}

TEST_F(Select, BeginsAtTheFolderItWasGiven) {
    dialog.setFolder(LR"(C:\a)");
    dialog.onLoad();
    EXPECT_EQ(view.shown, std::vector<std::wstring>{LR"(C:\a)"});
}

TEST_F(Select, ClearsItsResultsWhenItIsLoaded) {
    dialog.onLoad();
    dialog.onFolderChanged(LR"(C:\a)");
    dialog.onNamesSelected(L"one.txt");
    dialog.onOk();
    dialog.onLoad();
    EXPECT_TRUE(dialog.Canceled());
    EXPECT_EQ(dialog.Folder(), L"");
    EXPECT_EQ(dialog.FileList(), L"");
    dialog.onFolderChanged(LR"(C:\a)");
    dialog.onOk();
    EXPECT_EQ(dialog.FileList(), L"");
}

TEST_F(Select, EnablesOkForAnExistingFolderOnly) {
    dialog.onLoad();
    dialog.onFolderChanged(LR"(C:\a)");
    EXPECT_TRUE(view.okEnabled);
    dialog.onFolderChanged(LR"(C:\missing)");
    EXPECT_FALSE(view.okEnabled);
    dialog.onFolderChanged(LR"(C:\a\inside)");
    EXPECT_TRUE(view.okEnabled);
    dialog.onFolderChanged(LR"(C:\a\one.txt)");
    EXPECT_FALSE(view.okEnabled);
    dialog.onFolderChanged(LR"(C:\)");
    EXPECT_TRUE(view.okEnabled);
    dialog.onFolderChanged(std::nullopt);
    EXPECT_FALSE(view.okEnabled);
    EXPECT_EQ(dialog.Folder(), L"");
}

TEST_F(Select, AnswersTheChosenFolder) {
    dialog.setFolder(LR"(C:\)");
    dialog.onLoad();
    dialog.onFolderChanged(LR"(C:\a\inside)");
    dialog.onOk();
    EXPECT_EQ(dialog.Folder(), LR"(C:\a\inside)");
    EXPECT_FALSE(dialog.Canceled());
    EXPECT_TRUE(view.closed);
}

TEST_F(Select, IsCanceledByItsButton) {
    dialog.onLoad();
    dialog.onFolderChanged(LR"(C:\a)");
    dialog.onCancel();
    EXPECT_TRUE(dialog.Canceled());
    EXPECT_TRUE(view.closed);
}

TEST_F(Select, IsCanceledUntilOkIsPressed) { EXPECT_TRUE(dialog.Canceled()); }

TEST_F(Select, KeepsTheNamesOfFilesAndFolders) {
    dialog.onLoad();
    dialog.onFolderChanged(LR"(C:\a)");
    dialog.onNamesSelected(L"inside\r\none.txt\r\ntwo.txt");
    dialog.onOk();
    EXPECT_EQ(dialog.FileList(), L"inside\r\none.txt\r\ntwo.txt");
}

TEST_F(Select, DropsNamesOfWhatIsNotThere) {
    dialog.onLoad();
    dialog.onFolderChanged(LR"(C:\a)");
    dialog.onNamesSelected(L"gone.txt\r\none.txt\r\ngone too\r\n\r\ntwo.txt\r\n");
    dialog.onOk();
    EXPECT_EQ(dialog.FileList(), L"one.txt\r\ntwo.txt");
}

TEST_F(Select, LooksForTheNamesInADrivesRoot) {
    dialog.onLoad();
    dialog.onFolderChanged(LR"(C:\)");
    dialog.onNamesSelected(L"a");
    dialog.onOk();
    EXPECT_EQ(dialog.FileList(), L"a");
}

TEST_F(Select, ForgetsTheNamesOfAnotherFolder) {
    dialog.onLoad();
    dialog.onFolderChanged(LR"(C:\a)");
    dialog.onNamesSelected(L"one.txt");
    shell.files.addFile(LR"(C:\a\inside\one.txt)");
    dialog.onFolderChanged(LR"(C:\a\inside)");
    dialog.onOk();
    EXPECT_EQ(dialog.FileList(), L"");
}

TEST_F(Select, FillsTheAreaAboveTheButtons) {
    const SelectLayout layout = SelectPresenter::layOut(600, 400, {0, 0, 80, 24}, 10, 6);
    EXPECT_EQ(layout.browser, (SelectBox{10, 10, 580, 346}));
    EXPECT_EQ(layout.ok, (SelectBox{424, 366, 80, 24}));
    EXPECT_EQ(layout.cancel, (SelectBox{510, 366, 80, 24}));
}

TEST_F(Select, MovesTheButtonsWithTheLowerEdge) {
    const SelectLayout layout = SelectPresenter::layOut(600, 500, {0, 0, 80, 24}, 10, 6);
    EXPECT_EQ(layout.browser, (SelectBox{10, 10, 580, 446}));
    EXPECT_EQ(layout.ok, (SelectBox{424, 466, 80, 24}));
    EXPECT_EQ(layout.cancel, (SelectBox{510, 466, 80, 24}));
}

TEST_F(Select, LeavesNothingForTheBrowserInATinyWindow) {
    const SelectLayout layout = SelectPresenter::layOut(15, 12, {0, 0, 80, 24}, 10, 6);
    EXPECT_EQ(layout.browser, (SelectBox{10, 10, 0, 0}));
    EXPECT_EQ(layout.ok.width, 80);
    EXPECT_EQ(layout.cancel.height, 24);
}

TEST_F(Select, DisablesOkUntilASlowFolderHasAnswered) {
    dialog.onLoad();
    dialog.onFolderChanged(LR"(C:\a)", FolderState::Reading);
    EXPECT_FALSE(view.okEnabled);
    dialog.onFolderChanged(LR"(C:\a)", FolderState::There);
    EXPECT_TRUE(view.okEnabled);
    dialog.onFolderChanged(LR"(C:\a)", FolderState::Missing);
    EXPECT_FALSE(view.okEnabled);
}

TEST_F(Select, KeepsTheNamesThatWereSelectedBeforeTheFolderHadAnswered) {
    dialog.onLoad();
    dialog.onFolderChanged(LR"(C:\a)", FolderState::Reading);
    dialog.onNamesSelected(L"one.txt");
    dialog.onFolderChanged(LR"(C:\a)", FolderState::There);
    dialog.onOk();
    EXPECT_EQ(dialog.FileList(), L"one.txt");
}

}  // namespace
}  // namespace tovar::test
