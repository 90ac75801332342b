#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "shell/fakes/fake_shell.h"
#include "shell/new_folder_presenter.h"
#include "shell/prompt_new_folder.h"

namespace tovar::test {
namespace {

class FakeNewFolderView final : public NewFolderView {
public:
    std::wstring name = L"left over";
    bool okEnabled = true, closed = false;
    int focused = 0;
    std::vector<std::wstring> warnings;

    void setName(std::wstring_view text) override { name = text; }
    void enableOk(bool enabled) override { okEnabled = enabled; }
    void focusName() override { ++focused; }
    void warn(std::wstring_view text) override { warnings.emplace_back(text); }
    void close() override { closed = true; }
};

class NewFolderTest : public testing::Test {
protected:
    void type(const std::wstring& text) {
        view.name = text;
        dialog.onNameChanged(text);
    }

    FakeNewFolderView view;
    NewFolderPresenter dialog{view};
};

TEST_F(NewFolderTest, BeginsEmptyWithOkDisabled) {
    dialog.onLoad();
    EXPECT_EQ(view.name, L"");
    EXPECT_FALSE(view.okEnabled);
    EXPECT_EQ(dialog.NewFolder(), L"");
}

TEST_F(NewFolderTest, GivesTheNameTheFocusWheneverItIsActivated) {
    dialog.onActivated();
    dialog.onActivated();
    EXPECT_EQ(view.focused, 2);
}

TEST_F(NewFolderTest, EnablesOkExactlyWhenThereIsAName) {
    dialog.onLoad();
    type(L"a");
    EXPECT_TRUE(view.okEnabled);
    type(L" ");
    EXPECT_TRUE(view.okEnabled);
    type(L"");
    EXPECT_FALSE(view.okEnabled);
}

TEST_F(NewFolderTest, StoresTheNameAndCloses) {
    dialog.onLoad();
    type(L"my folder");
    dialog.onOk();
    EXPECT_EQ(dialog.NewFolder(), L"my folder");
    EXPECT_TRUE(view.closed);
    EXPECT_TRUE(view.warnings.empty());
}

TEST_F(NewFolderTest, TakesEnterForOk) {
    dialog.onLoad();
    type(L"a");
    dialog.onEnter();
    EXPECT_EQ(dialog.NewFolder(), L"a");
    EXPECT_TRUE(view.closed);
}

TEST_F(NewFolderTest, DoesNothingOnEnterWithoutAName) {
    dialog.onLoad();
    dialog.onEnter();
    EXPECT_FALSE(view.closed);
    EXPECT_TRUE(view.warnings.empty());
}

TEST_F(NewFolderTest, ForgetsTheNameWhenItIsCancelled) {
    dialog.onLoad();
    type(L"a");
    dialog.onOk();
    dialog.onCancel();
    EXPECT_EQ(dialog.NewFolder(), L"");
    EXPECT_TRUE(view.closed);
}

TEST_F(NewFolderTest, ForgetsTheNameWhenItIsShownAgain) {
    dialog.onLoad();
    type(L"a");
    dialog.onOk();
    dialog.onLoad();
    EXPECT_EQ(dialog.NewFolder(), L"");
}

struct RejectedName {
    const char* test;
    std::wstring name, message;
};

class NewFolderRejects : public NewFolderTest, public testing::WithParamInterface<RejectedName> {};

TEST_P(NewFolderRejects, WithAMessageAndStaysOpen) {
    dialog.onLoad();
    type(GetParam().name);
    dialog.onOk();
    EXPECT_EQ(view.warnings, std::vector<std::wstring>{GetParam().message});
    EXPECT_FALSE(view.closed);
    EXPECT_EQ(view.name, GetParam().name);
    EXPECT_TRUE(view.okEnabled);
    EXPECT_EQ(dialog.NewFolder(), L"");
    dialog.onEnter();
    EXPECT_EQ(view.warnings.size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Names, NewFolderRejects,
                         testing::Values(RejectedName{"Backslash", LR"(a\b)", LR"(New folder 'a\b' is impossible.)"},
                                         RejectedName{"Slash", L"a/b", L"New folder 'a/b' is impossible."},
                                         RejectedName{"Colon", L"a:b", L"New folder 'a:b' is impossible."},
                                         RejectedName{"QuestionMark", L"a?", L"New folder 'a?' is impossible."},
                                         RejectedName{"Apostrophe", L"it's", L"New folder 'it's' is impossible."},
                                         RejectedName{"Less", L"<a", L"New folder '<a' is impossible."},
                                         RejectedName{"Greater", L"a>b", L"New folder 'a>b' is impossible."}),
                         [](const auto& each) { return std::string(each.param.test); });

class NewFolderAccepts : public NewFolderTest, public testing::WithParamInterface<std::wstring> {};

TEST_P(NewFolderAccepts, TheName) {
    dialog.onLoad();
    type(GetParam());
    dialog.onOk();
    EXPECT_EQ(dialog.NewFolder(), GetParam());
    EXPECT_TRUE(view.warnings.empty());
    EXPECT_TRUE(view.closed);
}

INSTANTIATE_TEST_SUITE_P(Names, NewFolderAccepts,
                         testing::Values(L"a*b", L"a|b", L"\"a\"", L"..", L" a ", L"a,b;c", L"\x65E5\x672C"));

class FakeNewFolderDialog final : public NewFolderDialog {
public:
    std::wstring answer;
    int asked = 0;

    std::wstring ask() override {
        ++asked;
        return answer;
    }
};

class PromptNewFolderTest : public testing::Test {
protected:
    std::wstring prompt(const std::wstring& parentFolder) {
        parent = parentFolder;
        return PromptNewFolder(parent, dialog, shell.operations);
    }

    FakeShell shell;
    FakeNewFolderDialog dialog;
    std::wstring parent;
};

TEST_F(PromptNewFolderTest, MakesTheFolder) {
    shell.files.addFolder(LR"(C:\a)");
    dialog.answer = L"new";
    EXPECT_EQ(prompt(LR"(C:\a)"), L"new");
    EXPECT_EQ(parent, LR"(C:\a\)");
    EXPECT_EQ(shell.files.calls(L"createFolder"), std::vector<std::wstring>{LR"(C:\a\new\)"});
}

TEST_F(PromptNewFolderTest, AsksNothingWithoutAParentFolder) {
    dialog.answer = L"new";
    EXPECT_EQ(prompt(LR"(C:\missing)"), L"");
    EXPECT_EQ(parent, LR"(C:\missing\)");
    EXPECT_EQ(dialog.asked, 0);
    EXPECT_TRUE(shell.files.calls(L"createFolder").empty());
}

TEST_F(PromptNewFolderTest, AsksNothingInAFile) {
    shell.files.addFile(LR"(C:\a.txt)");
    EXPECT_EQ(prompt(LR"(C:\a.txt)"), L"");
    EXPECT_EQ(dialog.asked, 0);
}

TEST_F(PromptNewFolderTest, MakesNothingWhenItIsCancelled) {
    shell.files.addFolder(LR"(C:\a)");
    EXPECT_EQ(prompt(LR"(C:\a\)"), L"");
    EXPECT_EQ(parent, LR"(C:\a\)");
    EXPECT_EQ(dialog.asked, 1);
    EXPECT_TRUE(shell.files.calls(L"createFolder").empty());
}

TEST_F(PromptNewFolderTest, TellsOfAFailureWithTheSystemsWords) {
    shell.files.addFolder(LR"(C:\a)");
    shell.files.fail(L"createFolder", LR"(C:\a\a*b\)", FakeFileSystem::kInvalidName);
    dialog.answer = L"a*b";
    EXPECT_EQ(prompt(LR"(C:\a)"), L"");
    ASSERT_EQ(shell.messages.shown.size(), 1U);
    EXPECT_EQ(shell.messages.shown[0].text, shell.operations.SystemErrorText(FakeFileSystem::kInvalidName));
    EXPECT_EQ(shell.messages.shown[0].icon, MessageIcon::Exclamation);
}

TEST_F(PromptNewFolderTest, AnswersTheNameOfAFolderThatWasThereAlready) {
    shell.files.addFolder(LR"(C:\a\old)");
    dialog.answer = L"old";
    EXPECT_EQ(prompt(LR"(C:\a)"), L"old");
    EXPECT_TRUE(shell.messages.shown.empty());
}

}  // namespace
}  // namespace tovar::test
