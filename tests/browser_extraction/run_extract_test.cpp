#include "browser/run_extract.h"

#include "browser_extraction/fakes/extraction_fixture.h"

namespace tovar {
namespace {

using Calls = std::vector<std::wstring>;

class RunExtract : public test::ExtractionFixture {
protected:
    bool run(ArchiveDriver& with, const std::wstring& members = L"*.*", const std::wstring& command = L" -x") {
        return extraction.RunExtract(
            with, {.owner = owner, .command = command, .archive = archive, .folder = LR"(C:\out)", .members = members});
    }
};

TEST_F(RunExtract, SetsTheDriverUpAndRunsTheLine) {
    EXPECT_TRUE(run(drive<cUnZip>()));
    EXPECT_EQ(library.calls, (Calls{L"setCursorMode 0", L"setBackGroundMode 1", LR"(run  -x C:\a.xyz C:\out\ *.*)"}));
    EXPECT_EQ(library.owners, std::vector<WindowHandle>{owner});
    EXPECT_EQ(driver->hWnd(), owner);
    EXPECT_TRUE(shell.messages.shown.empty());
    EXPECT_EQ(pump.times, 1) << "messages run once, afterwards";
}

TEST_F(RunExtract, TellsOfAnError) {
    library.runAnswer = 0x8005;
    EXPECT_FALSE(run(drive<cUnLHA>()));
    ASSERT_EQ(shell.messages.shown.size(), 1U);
    EXPECT_EQ(shell.messages.shown[0].owner, owner);
    EXPECT_EQ(shell.messages.shown[0].text, L"Not enough disk space to extract file");
    EXPECT_EQ(shell.messages.shown[0].title, L"Extraction Message");
    EXPECT_EQ(shell.messages.shown[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(pump.times, 1);
}

TEST_F(RunExtract, TellsOfACodeThatNobodyKnows) {
    library.runAnswer = 3;
    EXPECT_FALSE(run(drive<cUnCab>()));
    ASSERT_EQ(shell.messages.shown.size(), 1U);
    EXPECT_EQ(shell.messages.shown[0].text, L"Unknown return code 'H3'\r\nMaybe nothing to do.");
}

TEST_F(RunExtract, IsTurnedAwayWhileOneRuns) {
    ArchiveDriver& zip = drive<cUnZip>();
    bool second = true;
    library.whileRunning = [&] {
        EXPECT_TRUE(extraction.running());
        second = run(zip, L"other.txt");
    };
    EXPECT_TRUE(run(zip));
    EXPECT_FALSE(second);
    EXPECT_FALSE(extraction.running());
    EXPECT_EQ(line(), LR"( -x C:\a.xyz C:\out\ *.*)") << "the library ran once";
}

TEST_F(RunExtract, SaysNothingWhenItsWindowHasGone) {
    ArchiveDriver& zip = drive<cUnZip>();
    library.runAnswer = 0x8020;
    library.whileRunning = [&] { extraction.cancel(); };
    EXPECT_FALSE(run(zip));
    EXPECT_TRUE(extraction.cancelled());
    EXPECT_TRUE(shell.messages.shown.empty());
    library.whileRunning = nullptr;
    EXPECT_FALSE(run(zip));
    EXPECT_FALSE(extraction.cancelled()) << "the next one begins anew";
    EXPECT_EQ(shell.messages.shown.size(), 1U);
}

TEST_F(RunExtract, IsNotCancelledBeforeItBegins) {
    extraction.cancel();
    EXPECT_FALSE(extraction.cancelled());
    EXPECT_TRUE(run(drive<cUnZip>()));
}

TEST_F(RunExtract, SwallowsWhatIsThrown) {
    ArchiveDriver& zip = drive<cUnZip>();
    library.whileRunning = [] { throw std::bad_alloc(); };
    EXPECT_FALSE(run(zip));
    EXPECT_FALSE(extraction.running());
    EXPECT_TRUE(shell.messages.shown.empty());
    EXPECT_EQ(pump.times, 1);
}

/// ACE has no command lines: what it does is seen from the files that its library is asked for.
class RunAceExtract : public RunExtract {
protected:
    RunAceExtract() {
        for (const wchar_t* name : {L"docs\\a.txt", L"b.txt"}) {
            AceMember member;
            member.name = name;
            ace.members.push_back(member);
        }
    }
    [[nodiscard]] Calls extracted() const {
        Calls files;
        for (const std::wstring& call : ace.calls) {
            if (call.starts_with(L"extract ")) files.push_back(call.substr(8));
        }
        return files;
    }
};

TEST_F(RunAceExtract, KeepsFoldersForItsOneSwitchInEitherCase) {
    EXPECT_TRUE(run(driveAce(), L"*.*", L"-d"));
    EXPECT_EQ(extracted(), (Calls{LR"(C:\out\docs\a.txt)", LR"(C:\out\b.txt)"}));
    ace.calls.clear();
    EXPECT_TRUE(run(driveAce(), L"*.*", L"-D"));
    EXPECT_EQ(extracted(), (Calls{LR"(C:\out\docs\a.txt)", LR"(C:\out\b.txt)"}));
}

TEST_F(RunAceExtract, LeavesFoldersOutForAnythingElse) {
    for (const wchar_t* const command : {L"", L" -d", L"-d ", L"-x"}) {
        ace.calls.clear();
        EXPECT_TRUE(run(driveAce(), L"*.*", command));
        EXPECT_EQ(extracted(), (Calls{LR"(C:\out\a.txt)", LR"(C:\out\b.txt)"})) << command;
    }
}

TEST_F(RunAceExtract, IsAlwaysASuccessWithoutAMessageOfItsOwn) {
    ace.openResult = 135;
    EXPECT_TRUE(run(driveAce(), L"*.*", L"-d"));
    for (const auto& shown : shell.messages.shown) EXPECT_EQ(shown.title, L"ACE Message");
}

TEST_F(RunAceExtract, LetsMessagesRunBeforeEachMember) {
    EXPECT_TRUE(run(driveAce(), L"*.*", L"-d"));
    EXPECT_EQ(pump.times, 3) << "for two members, and afterwards";
}

TEST_F(RunAceExtract, EndsAtTheNextMemberWhenItsWindowHasGone) {
    ArchiveDriver& aceDriver = driveAce();
    ace.unpacks = [&](const AceMember&, const std::wstring&) { extraction.cancel(); };
    EXPECT_TRUE(run(aceDriver, L"*.*", L"-d"));
    EXPECT_EQ(extracted(), (Calls{LR"(C:\out\docs\a.txt)"}));
    EXPECT_TRUE(shell.messages.shown.empty());
}

}  // namespace
}  // namespace tovar
