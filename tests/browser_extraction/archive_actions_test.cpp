#include "browser/archive_actions.h"

#include "browser_extraction/fakes/extraction_fixture.h"
#include "shell/fakes/fake_programs.h"

namespace tovar {
namespace {

/// The user chooses a folder, or not.
class FakeDialogs final : public UnpackDialogs {
public:
    std::wstring chosen;  ///< empty: the one that the dialog begins with
    std::wstring folder, files, fontName;
    const UnpackJob* job = nullptr;
    std::function<void()> whileShown;
    int times = 0, timesClosed = 0;

    std::wstring show(const UnpackJob& what, const std::wstring& begin, const std::wstring& members,
                      const std::wstring& font) override {
        ++times;
        folder = begin;
        files = members;
        fontName = font;
        EXPECT_EQ(what.archiveFile, LR"(C:\files\a.zip)");
        if (whileShown) whileShown();
        return chosen.empty() ? begin : chosen;
    }
    void closeAll() noexcept override { ++timesClosed; }
};

class ArchiveActionsTest : public test::ExtractionFixture {
protected:
    ArchiveActionsTest() {
        archive = LR"(C:\files\a.zip)";
        shell.files.addFolder(LR"(C:\files)");
        drive<cUnZip>();
        library.members = {test::LibraryMember{.name = "docs/a.txt"}, test::LibraryMember{.name = "b c.txt"}};
        driver->SetArcFile(archive);
        folders.build(L"a.zip", driver->entries());
    }
    [[nodiscard]] ArchiveScene scene() const { return {owner, *driver, archive, folders, FolderModel::kRoot}; }
    [[nodiscard]] std::unique_ptr<ArchiveActions> make() {
        return std::make_unique<ArchiveActions>(
            ArchiveActionsPorts{workFolder, shell.operations, shell.files, shell.messages, pump, progress, launcher,
                                dialogs, copies, lastFolder},
            L"Some Font");
    }

    test::FakePrograms programs;
    ProgramLauncher launcher{programs, pump};
    OpenedCopies copies{shell.files};
    FakeDialogs dialogs;
    std::wstring lastFolder;
    FolderModel folders;
    std::unique_ptr<ArchiveActions> actions = make();
};

TEST_F(ArchiveActionsTest, OffersWhatItHas) {
    EXPECT_TRUE(actions->offers(mnuEditExtract));
    EXPECT_TRUE(actions->offers(kOpen));
    EXPECT_FALSE(actions->offers(mnuEditAdd));
    EXPECT_FALSE(actions->offers(mnuEditDelete));
}

TEST_F(ArchiveActionsTest, ShowsTheDialogWithTheSelectedMembers) {
    actions->extract(scene(), {{.folder = folders.find(L"\\docs\\")}, {.folder = {}, .entry = 1}});
    EXPECT_EQ(dialogs.files, L"docs/*.*\r\n\"b c.txt\"\r\n");
    EXPECT_EQ(dialogs.fontName, L"Some Font");
    actions->extract(scene(), {});
    EXPECT_EQ(dialogs.files, L"");
}

TEST_F(ArchiveActionsTest, BeginsBesideTheArchiveAndThenWhereItWasLast) {
    shell.files.addFolder(LR"(C:\chosen)");
    actions->extract(scene(), {});
    EXPECT_EQ(dialogs.folder, LR"(C:\files)");
    dialogs.chosen = LR"(C:\chosen)";
    actions->extract(scene(), {});
    EXPECT_EQ(dialogs.folder, LR"(C:\files)");
    actions = make();
    actions->extract(scene(), {});
    EXPECT_EQ(dialogs.folder, LR"(C:\chosen)") << "in every browser";
    shell.files.removeFolder(LR"(C:\chosen)");
    actions->extract(scene(), {});
    EXPECT_EQ(dialogs.folder, LR"(C:\files)") << "the other one has gone";
}

TEST_F(ArchiveActionsTest, ShowsNoSecondDialogWhileALibraryRuns) {
    library.whileRunning = [this] {
        actions->extract(scene(), {});
        actions->openMember(scene(), 0);
    };
    actions->openMember(scene(), 1);
    EXPECT_EQ(dialogs.times, 0);
    EXPECT_EQ(line(), LR"( -x -i --j C:\files\a.zip C:\Temp\ "b c.txt")");
}

TEST_F(ArchiveActionsTest, CancelClosesTheDialogAndEndsTheExtraction) {
    actions->cancel();
    EXPECT_EQ(dialogs.timesClosed, 1);
    library.runAnswer = 0x8020;
    library.whileRunning = [this] { actions->cancel(); };
    actions->openMember(scene(), 1);
    EXPECT_EQ(dialogs.timesClosed, 2);
    EXPECT_TRUE(shell.messages.shown.empty());
}

TEST_F(ArchiveActionsTest, OpenedMembersGoWithTheBrowser) {
    library.whileRunning = [this] { shell.files.addFile(LR"(C:\Temp\docs\a.txt)"); };
    actions->openMember(scene(), 0);
    EXPECT_EQ(programs.opened, std::vector<std::wstring>{LR"(C:\Temp\docs\a.txt)"});
    EXPECT_NE(shell.files.find(LR"(C:\Temp\docs\a.txt)"), nullptr);
    actions.reset();
    EXPECT_EQ(shell.files.find(LR"(C:\Temp\docs)"), nullptr);
}

TEST_F(ArchiveActionsTest, TheNextBrowserRemovesWhatWasInUse) {
    library.whileRunning = [this] { shell.files.addFile(LR"(C:\Temp\b c.txt)"); };
    actions->openMember(scene(), 1);
    shell.files.fail(L"deleteFile", LR"(C:\Temp\b c.txt)", 32);
    actions.reset();
    EXPECT_NE(shell.files.find(LR"(C:\Temp\b c.txt)"), nullptr);
    shell.files.fail(L"deleteFile", LR"(C:\Temp\b c.txt)", 0);
    actions = make();
    EXPECT_EQ(shell.files.find(LR"(C:\Temp\b c.txt)"), nullptr);
}

}  // namespace
}  // namespace tovar
