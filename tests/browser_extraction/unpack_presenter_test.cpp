#include "browser/unpack_presenter.h"

#include <algorithm>

#include "browser_extraction/fakes/extraction_fixture.h"

namespace tovar {
namespace {

class UnpackPresenterTest : public test::ExtractionFixture {
protected:
    UnpackPresenterTest() {
        drive<cUnZip>();
        view.onTree = [this](const std::wstring& folder) {
            if (presenter && treeAnswers) presenter->onFolderSelected(folder);
        };
        view.onAsked = [this](const std::wstring& folder) {
            return answersLate ? std::nullopt : std::optional(shell.operations.IsFolder(folder));
        };
    }

    /// The dialog as it comes up.
    UnpackPresenter& show(std::wstring_view files = L"", std::wstring_view folder = LR"(C:\out)") {
        job.emplace(
            UnpackJob{owner, *driver, archive, extraction, workFolder, shell.operations, shell.files, shell.messages});
        presenter.emplace(view, *job);
        presenter->SetFolder(folder);
        presenter->SetFiles(files);
        presenter->onLoad();
        return *presenter;
    }

    test::FakeUnpackView view;
    bool treeAnswers = true, answersLate = false;
    std::optional<UnpackJob> job;
    std::optional<UnpackPresenter> presenter;
};

TEST_F(UnpackPresenterTest, NamesTheArchiveInItsCaption) {
    archive = LR"(C:\my files\some archive.zip)";
    show();
    EXPECT_EQ(view.caption, LR"(Extract files in C:\my files\some archive.zip)");
}

TEST_F(UnpackPresenterTest, BeginsWithFolderNamesKeptAndNothingOverwritten) {
    show();
    EXPECT_TRUE(view.keepFolders);
    EXPECT_FALSE(view.overwrite);
    EXPECT_TRUE(view.overwriteEnabled);
    EXPECT_EQ(view.pattern, L"*.*");
    EXPECT_FALSE(view.patternEnabled);
}

TEST_F(UnpackPresenterTest, DisablesOverwritingForAce) {
    driveAce();
    show();
    EXPECT_FALSE(view.overwriteEnabled);
    EXPECT_TRUE(view.overwrite) << "what happens without a choice";
}

TEST_F(UnpackPresenterTest, ChoosesTheSelectedFilesWhenThereAreSome) {
    show(L"a.txt\r\n");
    EXPECT_EQ(view.scope, MemberScope::Selected);
    EXPECT_TRUE(view.selectedEnabled);
}

TEST_F(UnpackPresenterTest, ChoosesAllFilesWithoutASelection) {
    show(L"");
    EXPECT_EQ(view.scope, MemberScope::All);
    EXPECT_FALSE(view.selectedEnabled);
    presenter->onOk();
    EXPECT_EQ(line(), LR"( -x -i --j C:\a.xyz C:\out\ *.*)");
}

TEST_F(UnpackPresenterTest, EnablesThePatternOnlyForMatchingFiles) {
    show(L"a.txt\r\n");
    presenter->onScope(MemberScope::Matching);
    EXPECT_TRUE(view.patternEnabled);
    presenter->onScope(MemberScope::All);
    EXPECT_FALSE(view.patternEnabled);
    presenter->onScope(MemberScope::Matching);
    presenter->onScope(MemberScope::Selected);
    EXPECT_FALSE(view.patternEnabled);
}

TEST_F(UnpackPresenterTest, ShowsTheFolderThatItBeginsWith) {
    show(L"", LR"(C:\out)");
    EXPECT_EQ(view.shownInTree, std::vector<std::wstring>{LR"(C:\out)"});
    EXPECT_EQ(view.folder, LR"(C:\out)");
    EXPECT_TRUE(view.okEnabled);
    EXPECT_TRUE(view.newFolderEnabled);
    EXPECT_EQ(presenter->GetFolder(), LR"(C:\out)");
}

TEST_F(UnpackPresenterTest, WaitsForTheTree) {
    treeAnswers = false;
    show();
    EXPECT_FALSE(view.okEnabled);
    EXPECT_FALSE(view.newFolderEnabled);
    presenter->onOk();
    presenter->onNewFolder();
    EXPECT_TRUE(library.calls.empty());
    EXPECT_TRUE(view.parents.empty());
    EXPECT_FALSE(view.closed);
}

TEST_F(UnpackPresenterTest, TakesOverTheFolderThatIsSelected) {
    shell.files.addFolder(LR"(C:\other)");
    show();
    presenter->onFolderSelected(LR"(C:\other)");
    EXPECT_EQ(view.folder, LR"(C:\other)");
    EXPECT_EQ(presenter->GetFolder(), LR"(C:\other)");
    EXPECT_TRUE(view.okEnabled);
}

TEST_F(UnpackPresenterTest, AllowsNothingWhereThereIsNoFolder) {
    shell.files.addFile(LR"(C:\file)");
    show();
    for (const wchar_t* const path : {L"", LR"(C:\none)", LR"(C:\file)"}) {
        presenter->onFolderSelected(LR"(C:\out)");
        ASSERT_TRUE(view.okEnabled);
        presenter->onFolderSelected(path);
        EXPECT_FALSE(view.okEnabled) << path;
        EXPECT_FALSE(view.newFolderEnabled) << path;
        EXPECT_EQ(presenter->GetFolder(), LR"(C:\out)") << "the last one that was there";
    }
}

TEST_F(UnpackPresenterTest, WaitsForTheAnswerOfAnotherComputer) {
    answersLate = true;
    show(L"", LR"(\\far\share)");
    EXPECT_FALSE(view.okEnabled);
    EXPECT_EQ(view.folder, L"");
    presenter->onFolderAnswer(true);
    EXPECT_TRUE(view.okEnabled);
    EXPECT_EQ(view.folder, LR"(\\far\share)");
    presenter->onFolderSelected(LR"(\\far\none)");
    EXPECT_FALSE(view.okEnabled);
    presenter->onFolderAnswer(false);
    EXPECT_FALSE(view.okEnabled);
    EXPECT_EQ(presenter->GetFolder(), LR"(\\far\share)");
}

TEST_F(UnpackPresenterTest, ForgetsAQuestionWhenAnotherFolderIsSelected) {
    show();
    answersLate = true;
    presenter->onFolderSelected(LR"(\\far\share)");
    presenter->onFolderSelected(L"");
    presenter->onFolderAnswer(true);
    EXPECT_FALSE(view.okEnabled);
    EXPECT_EQ(presenter->GetFolder(), LR"(C:\out)");
}

TEST_F(UnpackPresenterTest, StartsWhenTheAnswerIsThere) {
    show();
    answersLate = true;
    presenter->onOk();
    EXPECT_FALSE(view.hidden);
    EXPECT_FALSE(view.okEnabled) << "once is enough";
    presenter->onOk();
    presenter->onFolderSelected(LR"(C:\out)");  // the tree looks at it again
    EXPECT_TRUE(library.calls.empty());
    presenter->onFolderAnswer(true);
    EXPECT_FALSE(library.calls.empty());
    EXPECT_TRUE(view.closed);
}

TEST_F(UnpackPresenterTest, StartsNothingWhenItsUserGoesElsewhereMeanwhile) {
    shell.files.addFolder(LR"(C:\other)");
    show();
    answersLate = true;
    presenter->onOk();
    answersLate = false;
    presenter->onFolderSelected(LR"(C:\other)");
    presenter->onFolderAnswer(true);
    EXPECT_TRUE(library.calls.empty());
    EXPECT_FALSE(view.closed);
    EXPECT_TRUE(view.okEnabled);
}

TEST_F(UnpackPresenterTest, TellsLateThatTheTargetFolderHasGone) {
    show();
    answersLate = true;
    presenter->onOk();
    presenter->onFolderAnswer(false);
    EXPECT_FALSE(view.okEnabled);
    EXPECT_FALSE(view.closed);
    EXPECT_TRUE(library.calls.empty());
    EXPECT_EQ(shell.messages.shown.size(), 1U);
}

TEST_F(UnpackPresenterTest, MakesAFolderUnderTheOneShownAndShowsIt) {
    show();
    view.newFolder = L"new";
    shell.files.addFolder(LR"(C:\out\new)");
    presenter->onNewFolder();
    EXPECT_EQ(view.parents, std::vector<std::wstring>{LR"(C:\out\)"});
    EXPECT_EQ(view.shownInTree.back(), LR"(C:\out\new)");
    EXPECT_EQ(view.folder, LR"(C:\out\new)");
}

TEST_F(UnpackPresenterTest, ShowsNothingNewWhenNoFolderWasMade) {
    show();
    presenter->onNewFolder();
    EXPECT_EQ(view.parents.size(), 1U);
    EXPECT_EQ(view.shownInTree.size(), 1U);
}

TEST_F(UnpackPresenterTest, IsHiddenWhileTheLibraryRunsAndClosedAfterwards) {
    show();
    library.whileRunning = [this] {
        EXPECT_TRUE(view.hidden);
        EXPECT_FALSE(view.closed);
    };
    presenter->onOk();
    EXPECT_EQ(library.owners, std::vector<WindowHandle>{owner});
    EXPECT_TRUE(view.closed);
    EXPECT_EQ(pump.times, 1);
}

TEST_F(UnpackPresenterTest, IsClosedAfterAnErrorToo) {
    show();
    library.runAnswer = 0x8006;
    presenter->onOk();
    EXPECT_TRUE(view.closed);
    ASSERT_EQ(shell.messages.shown.size(), 1U);
    EXPECT_EQ(shell.messages.shown[0].text, L"Directory to extract file is read-only");
}

TEST_F(UnpackPresenterTest, CancelExtractsNothing) {
    show();
    presenter->onCancel();
    EXPECT_TRUE(view.closed);
    EXPECT_TRUE(library.calls.empty());
}

TEST_F(UnpackPresenterTest, StaysWhenTheTargetFolderHasGone) {
    show();
    shell.files.removeFolder(LR"(C:\out)");
    shell.information.errorTexts[2] = L"Not there.";
    presenter->onOk();
    EXPECT_FALSE(view.closed);
    EXPECT_FALSE(view.hidden);
    EXPECT_FALSE(view.okEnabled);
    EXPECT_TRUE(library.calls.empty());
    ASSERT_EQ(shell.messages.shown.size(), 1U);
    EXPECT_EQ(shell.messages.shown[0].text, L"Not there.");
    EXPECT_EQ(shell.messages.shown[0].title, L"Extraction Message");
    EXPECT_EQ(shell.messages.shown[0].owner, view.hWnd());
}

TEST_F(UnpackPresenterTest, StaysWhenTheMembersCannotBeListed) {
    show(L"a.txt\r\n");
    shell.paths.createTempFileError = 80;
    shell.information.errorTexts[80] = L"No room for a list.";
    presenter->onOk();
    EXPECT_FALSE(view.closed);
    EXPECT_FALSE(view.hidden);
    EXPECT_TRUE(library.calls.empty());
    ASSERT_EQ(shell.messages.shown.size(), 1U);
    EXPECT_EQ(shell.messages.shown[0].text, L"No room for a list.");
    shell.paths.createTempFileError = 0;
    presenter->onOk();
    EXPECT_TRUE(view.closed);
}

TEST_F(UnpackPresenterTest, NeverGivesTheLibraryAListThatWasNotWritten) {
    show(L"a.txt\r\n");
    shell.files.fail(L"writeFile", LR"(C:\Temp\VTL1.TMP)", 112);
    presenter->onOk();
    EXPECT_TRUE(library.calls.empty());
    EXPECT_EQ(shell.messages.shown.size(), 1U);
    EXPECT_EQ(shell.files.find(LR"(C:\Temp\VTL1.TMP)"), nullptr);
}

TEST_F(UnpackPresenterTest, RunsAceWithOrWithoutFolders) {
    driveAce();
    AceMember member;
    member.name = LR"(docs\a b.txt)";
    ace.members.push_back(member);
    show(L"\"docs/a b.txt\"\r\n");
    presenter->onOk();
    const auto unpacking = [this] {
        // Before that the amount is counted.
        const auto begin = std::ranges::find(ace.calls, LR"(open C:\a.xyz 1)");
        return std::vector<std::wstring>(begin, ace.calls.end());
    };
    EXPECT_EQ(unpacking(), (std::vector<std::wstring>{LR"(open C:\a.xyz 1)", L"readHeader",
                                                      LR"(extract C:\out\docs\a b.txt)", L"readHeader", L"close"}));
    ace.calls.clear();
    show();
    presenter->onKeepFolders(false);
    presenter->onOk();
    EXPECT_EQ(unpacking(), (std::vector<std::wstring>{LR"(open C:\a.xyz 1)", L"readHeader",
                                                      LR"(extract C:\out\a b.txt)", L"readHeader", L"close"}));
    EXPECT_TRUE(library.calls.empty());
}

}  // namespace
}  // namespace tovar
