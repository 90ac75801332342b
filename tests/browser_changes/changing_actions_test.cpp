// The browser's commands that change archives.

#include "browser/archive_actions.h"
#include "browser_changes/change_fixture.h"
#include "shell/fakes/fake_programs.h"

namespace tovar {
namespace {

struct NoDialogs final : UnpackDialogs {
    std::wstring show(const UnpackJob&, const std::wstring& folder, const std::wstring&, const std::wstring&) override {
        return folder;
    }
    void closeAll() noexcept override {}
};

class ChangingActions : public test::ChangeFixture {
protected:
    [[nodiscard]] ArchiveActions make(ArchiveChanges* with) {
        return {{workFolder, paths, files, messages, pump, progress, launcher, dialogs, copies, lastFolder, with}, L""};
    }

    test::FakePrograms programs;
    ProgramLauncher launcher{programs, pump};
    NoDialogs dialogs;
    OpenedCopies copies{files};
    std::wstring lastFolder;
};

TEST_F(ChangingActions, AreOfferedWhereArchivesCanBeChanged) {
    const ArchiveActions with = make(&changes), without = make(nullptr);
    for (const BrowserCommand command : {mnuEditAdd, mnuEditDelete}) {
        EXPECT_TRUE(with.offers(command));
        EXPECT_FALSE(without.offers(command));
    }
    EXPECT_FALSE(with.offers(mnuEditExit));
}

TEST_F(ChangingActions, ChangeTheArchive) {
    list<cUnZip>({"a.txt"});
    ArchiveActions actions = make(&changes);
    EXPECT_TRUE(actions.deleteMembers(scene(), {file(0)}));
    EXPECT_FALSE(actions.addFiles(scene())) << "none were chosen";
    questions.answer = {LR"(C:\base\a.txt)"};
    EXPECT_TRUE(actions.addFiles(scene()));
    ASSERT_EQ(library.calls.size(), 2U);
    EXPECT_EQ(library.calls[0].options.deleteEntries, 1);
    EXPECT_EQ(library.calls[1].options.deleteEntries, 0);
}

TEST_F(ChangingActions, DoNothingWithoutThePort) {
    list<cUnZip>({"a.txt"});
    ArchiveActions actions = make(nullptr);
    EXPECT_FALSE(actions.deleteMembers(scene(), {file(0)}));
    EXPECT_FALSE(actions.addFiles(scene()));
    EXPECT_TRUE(confirmations.messages.empty());
}

}  // namespace
}  // namespace tovar
