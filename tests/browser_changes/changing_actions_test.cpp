// The browser's commands that change archives.

#include "browser/archive_actions.h"
#include "browser_changes/change_fixture.h"
#include "shell/fakes/fake_clipboard.h"
#include "shell/fakes/fake_programs.h"
#include "shell/fakes/fake_text_codec.h"

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
        return {{workFolder, paths, files, messages, pump, progress, launcher, dialogs, copies, lastFolder, with,
                 &fileClipboard},
                L""};
    }

    test::FakePrograms programs;
    ProgramLauncher launcher{programs, pump};
    NoDialogs dialogs;
    OpenedCopies copies{files};
    std::wstring lastFolder;
    test::FakeClipboard clipboard;
    test::FakeTextCodec codec;
    FileClipboard fileClipboard{clipboard, codec};
};

TEST_F(ChangingActions, AreOfferedWhereArchivesCanBeChanged) {
    const ArchiveActions with = make(&changes), without = make(nullptr);
    for (const BrowserCommand command : {mnuEditAdd, kAddFolder, kPaste, mnuEditDelete}) {
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

TEST_F(ChangingActions, AddWhatIsDropped) {
    list<cUnZip>({"a.txt"});
    ArchiveActions actions = make(&changes);
    EXPECT_TRUE(actions.addPaths(scene(), {LR"(C:\base\a.txt)", LR"(C:\base\b.txt)"}));
    ASSERT_EQ(library.calls.size(), 1U);
    EXPECT_EQ(library.calls[0].slots, (std::vector<std::string>{"a.txt", "a.txt", "b.txt"}));
}

TEST_F(ChangingActions, AddWhatIsOnTheClipboard) {
    list<cUnZip>({"a.txt"});
    ArchiveActions actions = make(&changes);
    EXPECT_FALSE(actions.canPaste());
    EXPECT_FALSE(actions.paste(scene()));
    clipboard.files = std::string("\x14\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0C:\\base\\b.txt\0\0", 35);
    EXPECT_TRUE(actions.canPaste());
    EXPECT_TRUE(actions.paste(scene()));
    EXPECT_EQ(confirmations.messages.size(), 1U);
    ASSERT_EQ(library.calls.size(), 1U);
    EXPECT_EQ(library.calls[0].slots, (std::vector<std::string>{"b.txt", "b.txt"}));
}

TEST_F(ChangingActions, SayNothingOfAClipboardThatGivesNoFiles) {
    list<cUnZip>({"a.txt"});
    ArchiveActions actions = make(&changes);
    clipboard.files = std::string("\x14\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 22);
    EXPECT_FALSE(actions.paste(scene())) << "a list of no names";
    clipboard.files = "damaged";
    EXPECT_FALSE(actions.paste(scene()));
    clipboard.locked = true;
    EXPECT_FALSE(actions.paste(scene()));
    EXPECT_TRUE(confirmations.messages.empty());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(ChangingActions, PickFilesOrAFolder) {
    list<cUnZip>({"a.txt"});
    ArchiveActions actions = make(&changes);
    questions.answer = {LR"(C:\base\dir)"};
    EXPECT_TRUE(actions.addFolder(scene()));
    EXPECT_TRUE(actions.addFiles(scene()));
    EXPECT_EQ(questions.picks, (std::vector<Pick>{Pick::InFolder, Pick::Files}));
    ASSERT_EQ(library.calls.size(), 2U);
    EXPECT_EQ(library.calls[0].slots, (std::vector<std::string>{R"(dir\*.*)", R"(dir\*.*)"}));
}

TEST_F(ChangingActions, CloseTheirQuestionsWhenTheWindowGoes) {
    list<cUnZip>({"a.txt"});
    ArchiveActions actions = make(&changes);
    actions.cancel();
    EXPECT_TRUE(confirmations.declined.empty()) << "nothing is asked";
    questions.whileAsking = [&] { actions.cancel(); };
    EXPECT_FALSE(actions.addFiles(scene()));
    EXPECT_EQ(questions.closed, std::vector<WindowHandle>{owner});
    EXPECT_EQ(confirmations.declined, std::vector<WindowHandle>{owner});
}

TEST_F(ChangingActions, DoNothingWithoutThePort) {
    list<cUnZip>({"a.txt"});
    ArchiveActions actions = make(nullptr);
    EXPECT_FALSE(actions.deleteMembers(scene(), {file(0)}));
    EXPECT_FALSE(actions.addFiles(scene()));
    EXPECT_FALSE(actions.addFolder(scene()));
    EXPECT_FALSE(actions.addPaths(scene(), {LR"(C:\base\a.txt)"}));
    EXPECT_FALSE(actions.paste(scene()));
    EXPECT_TRUE(confirmations.messages.empty());
}

}  // namespace
}  // namespace tovar
