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

TEST_F(RunAceExtract, LetsMessagesRunWhenTimeHasPassed) {
    ArchiveDriver& aceDriver = driveAce();
    EXPECT_TRUE(run(aceDriver, L"*.*", L"-d"));
    EXPECT_EQ(pump.times, 1) << "only afterwards: to look for messages takes longer than a small member";
    ace.unpacks = [this](const AceMember&, const std::wstring&) { now += std::chrono::milliseconds(40); };
    EXPECT_TRUE(run(aceDriver, L"*.*", L"-d"));
    EXPECT_EQ(pump.times, 3) << "also between the two members";
    EXPECT_TRUE(progress.owners.empty()) << "what is quick needs no dialog";
}

TEST_F(RunAceExtract, ShowsProgressOnceHalfASecondHasPassed) {
    ace.members[0].original = 3000;
    ace.members[1].original = 1000;
    ArchiveDriver& aceDriver = driveAce();
    ace.unpacks = [this](const AceMember&, const std::wstring&) { now += std::chrono::milliseconds(499); };
    EXPECT_TRUE(run(aceDriver, L"*.*", L"-d"));
    EXPECT_TRUE(progress.owners.empty());
    ace.unpacks = [this](const AceMember&, const std::wstring&) { now += std::chrono::milliseconds(500); };
    EXPECT_TRUE(run(aceDriver, L"*.*", L"-d"));
    EXPECT_EQ(progress.owners, std::vector<WindowHandle>{owner});
    EXPECT_EQ(progress.seen, (Calls{L"caption Extracting...", L"summary a.xyz", LR"(folder C:\out)", L"file b.txt",
                                    L"bytes 3000 of 4000"}));
    EXPECT_EQ(progress.open, 0) << "it goes with the extraction";
}

TEST_F(RunAceExtract, ShowsHowFarItIsInsideAMember) {
    ace.members = {{.name = L"a", .original = 2048}, {.name = L"b", .original = 2048}};
    ace.pieces = {1024, 1024};
    ArchiveDriver& aceDriver = driveAce();
    ace.unpacks = [this](const AceMember&, const std::wstring&) { now += std::chrono::milliseconds(500); };
    EXPECT_TRUE(run(aceDriver, L"*.*", L"-d"));
    EXPECT_EQ(progress.seen, (Calls{L"caption Extracting...", L"summary a.xyz", LR"(folder C:\out)", L"file a",
                                    L"bytes 1024 of 4096", LR"(folder C:\out)", L"file b", L"bytes 3072 of 4096"}));
}

TEST_F(RunAceExtract, EndsInsideAMemberWhenTheUserCancels) {
    ace.members = {{.name = L"a", .original = 4096}, {.name = L"b"}};
    ace.pieces = {1024, 1024, 1024, 1024};
    ArchiveDriver& aceDriver = driveAce();
    ace.unpacks = [this](const AceMember&, const std::wstring& file) {
        shell.files.addFile(file);
        now += std::chrono::milliseconds(500);
    };
    progress.whilePending = [this] { progress.canceled = true; };
    EXPECT_TRUE(run(aceDriver, L"*.*", L"-d"));
    EXPECT_EQ(progress.seen.back(), L"bytes 1024 of 4096");
    EXPECT_EQ(extracted(), (Calls{LR"(C:\out\a)"}));
    EXPECT_FALSE(shell.files.attributes(LR"(C:\out\a)")) << "half a file";
    EXPECT_TRUE(shell.messages.shown.empty()) << "the user knows";
    EXPECT_FALSE(extraction.cancelled()) << "the window is there still";
}

TEST_F(RunAceExtract, EndsInsideAMemberWhenItsWindowHasGone) {
    ace.members = {{.name = L"a", .original = 4096}, {.name = L"b"}};
    ace.pieces = {1024, 1024};
    ArchiveDriver& aceDriver = driveAce();
    int looks = 0;
    ace.unpacks = [this](const AceMember&, const std::wstring&) { now += std::chrono::milliseconds(50); };
    pump.whilePending = [&] {
        if (++looks == 1) extraction.cancel();
    };
    EXPECT_TRUE(run(aceDriver, L"*.*", L"-d"));
    EXPECT_EQ(extracted(), (Calls{LR"(C:\out\a)"}));
    EXPECT_TRUE(progress.owners.empty());
}

TEST_F(RunAceExtract, TurnsASecondOneAwayWhileItShowsProgress) {
    ArchiveDriver& aceDriver = driveAce();
    ace.unpacks = [this](const AceMember&, const std::wstring&) { now += std::chrono::milliseconds(500); };
    bool second = true;
    progress.whilePending = [&] { second = run(aceDriver, L"*.*", L"-d"); };
    EXPECT_TRUE(run(aceDriver, L"*.*", L"-d"));
    EXPECT_FALSE(second);
    EXPECT_EQ(extracted().size(), 2U);
}

TEST_F(RunExtract, LeavesProgressToLibrariesWithCommandLines) {
    ArchiveDriver& zip = drive<cUnZip>();
    library.whileRunning = [this] { now += std::chrono::seconds(10); };
    EXPECT_TRUE(run(zip));
    EXPECT_TRUE(progress.owners.empty());
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
