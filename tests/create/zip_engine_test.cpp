#include "create/fakes/zip_fixture.h"

namespace tovar::test {
namespace {

using Texts = std::vector<std::string>;

class ZipEngineRun : public ZipFixture {};

TEST_F(ZipEngineRun, DoesNothingWithoutNames) {
    EXPECT_EQ(run(L"a", L""), std::nullopt);
    EXPECT_EQ(run(L"a", L"\r\n"), std::nullopt);
    EXPECT_EQ(run(L"a", L"\r\n\r\n"), std::nullopt);
    EXPECT_EQ(run(L"q", L"\r\n"), std::nullopt);
    EXPECT_TRUE(library.calls.empty());
    EXPECT_EQ(boxes(), L"");
    EXPECT_EQ(progress.shown, 0);
}

TEST_F(ZipEngineRun, RefusesAnUnknownCommand) {
    EXPECT_EQ(run(L"Q", L"a.txt"), std::nullopt);
    EXPECT_EQ(boxes(), L"[Zip Message|Unknown command]");
    EXPECT_EQ(messages.shown.at(0).owner, owner);
    EXPECT_TRUE(library.calls.empty());
}

TEST_F(ZipEngineRun, RefusesABadLevel) {
    EXPECT_EQ(run(L"a -lx", L"a.txt"), std::nullopt);
    EXPECT_EQ(run(L"a -l", L"a.txt"), std::nullopt);
    EXPECT_EQ(boxes(), L"[Zip Message|Compression Level Error][Zip Message|Compression Level Error]");
    EXPECT_TRUE(library.calls.empty());
    EXPECT_EQ(progress.shown, 0);
}

TEST_F(ZipEngineRun, PassesOneFileTwice) {
    EXPECT_EQ(run(L"a", L"a.txt"), true);
    ASSERT_EQ(library.calls.size(), 1U);
    const auto& call = library.calls[0];
    EXPECT_EQ(call.count, 2);
    EXPECT_EQ(call.slots, (Texts{"a.txt", "a.txt"}));
    EXPECT_EQ(call.archive, R"(C:\out\new.zip)");
    EXPECT_EQ(call.rootFolder, R"(C:\base)");
    EXPECT_EQ(call.temporaryFolder, R"(C:\Temp\)");
    EXPECT_EQ(call.date, "");
    EXPECT_EQ(call.options.level, '6');
    EXPECT_EQ(boxes(), L"");
}

TEST_F(ZipEngineRun, ReadsItsLineBetweenBlanks) {
    EXPECT_EQ(run(L"a  -r   -l9", L"a.txt"), true);
    EXPECT_EQ(library.calls.at(0).options.recurse, 1);
    EXPECT_EQ(library.calls.at(0).options.level, '9');
}

TEST_F(ZipEngineRun, StoresAtLevelZero) {
    EXPECT_EQ(run(L"a -l0", L"a.txt"), true);
    EXPECT_EQ(library.calls.at(0).options.level, '0');
}

TEST_F(ZipEngineRun, PassesAFolderAsAllThatIsInIt) {
    EXPECT_EQ(run(L"a -r", L"dir\r\n\r\na.txt\r\n"), true);
    EXPECT_EQ(library.calls.at(0).slots, (Texts{R"(dir\*.*)", R"(dir\*.*)", "a.txt"}));
    EXPECT_EQ(run(L"a", L"dir\\"), true);
    EXPECT_EQ(library.calls.at(1).slots, (Texts{R"(dir\*.*)", R"(dir\*.*)"}));
}

TEST_F(ZipEngineRun, PutsTheBaseFolderInFrontForFolderInformation) {
    EXPECT_EQ(run(L"a -d", L"dir\r\na.txt"), true);
    EXPECT_EQ(library.calls.at(0).slots, (Texts{R"(C:\base\dir\*.*)", R"(C:\base\dir\*.*)", R"(C:\base\a.txt)"}));
}

TEST_F(ZipEngineRun, PassesEntriesToDeleteAsTheyAre) {
    EXPECT_EQ(run(L"d -r", L"dir/c.txt\r\ndir\r\nx/*.*\r\n"), true);
    const auto& call = library.calls.at(0);
    EXPECT_EQ(call.slots, (Texts{"dir/c.txt", "dir/c.txt", "dir", "x/*.*"}));
    EXPECT_EQ(call.options.deleteEntries, 1);
    EXPECT_EQ(call.options.recurse, 0);
    EXPECT_EQ(progress.total, 3.0F) << "the number of names";
}

TEST_F(ZipEngineRun, RepairsWithoutNames) {
    EXPECT_EQ(run(L"x", L"a.txt"), true);
    EXPECT_EQ(library.calls.at(0).count, 0);
    EXPECT_EQ(library.calls.at(0).options.repair, 1);
}

TEST_F(ZipEngineRun, CountsWhatThereIsToDo) {
    std::vector<float> totals;
    library.whileRunning = [&](ZipEvents&) { totals.push_back(progress.total); };
    EXPECT_EQ(run(L"a -r", L"a.txt\r\ndir\r\ngone.txt"), true);
    EXPECT_EQ(totals, std::vector<float>{5 + 7 + 2});
}

TEST_F(ZipEngineRun, FillsOneCall) {
    EXPECT_EQ(run(L"a", manyNames(4000)), true);
    ASSERT_EQ(library.calls.size(), 1U);
    EXPECT_EQ(library.calls[0].count, 4001);
    EXPECT_EQ(library.calls[0].slots.back(), "n4000");
}

TEST_F(ZipEngineRun, TakesFurtherCallsForMoreNames) {
    for (const std::wstring_view command : {L"a", L"m", L"u", L"f", L"d"}) {
        library.calls.clear();
        EXPECT_EQ(run(command, manyNames(8005)), true);
        ASSERT_EQ(library.calls.size(), 3U);
        EXPECT_EQ(library.calls[0].count, 4001);
        EXPECT_EQ(library.calls[1].count, 4001);
        EXPECT_EQ(library.calls[2].slots, (Texts{"n8001", "n8001", "n8002", "n8003", "n8004", "n8005"}));
        EXPECT_EQ(library.calls[1].slots.front(), "n4001");
        EXPECT_EQ(library.calls[1].slots.back(), "n8000");
    }
    EXPECT_EQ(progress.shown, 5) << "one dialog for each run";
}

TEST_F(ZipEngineRun, EndsWithTheCallThatFails) {
    library.answers = {0, 14};
    EXPECT_EQ(run(L"a", manyNames(12000)), false);
    EXPECT_EQ(library.calls.size(), 2U);
    EXPECT_EQ(boxes(), L"[Compression Error|Error Writing To A File]");
}

TEST_F(ZipEngineRun, CallsThatFindNothingToDoDoNotCountBesideOthers) {
    library.answers = {12, 0, 12};
    EXPECT_EQ(run(L"u", manyNames(12000)), true);
    EXPECT_EQ(library.calls.size(), 3U);
    library.calls.clear();
    library.answers = {12, 12};
    EXPECT_EQ(run(L"u", manyNames(8000)), false);
    EXPECT_EQ(boxes(), L"[Compression Error|Nothing To Do]");
}

TEST_F(ZipEngineRun, DeletesOnWhenTheArchiveWentWithItsLastEntry) {
    library.answers = {0, 13};
    EXPECT_EQ(run(L"d", manyNames(4001)), true);
    library.calls.clear();
    library.answers = {13};
    EXPECT_EQ(run(L"d", manyNames(4001)), false);
    EXPECT_EQ(library.calls.size(), 1U);
    EXPECT_EQ(boxes(), L"[Compression Error|Missing Or Empty Zip File Error]");
}

TEST_F(ZipEngineRun, ShowsProgressAndClosesIt) {
    library.whileRunning = [&](ZipEvents&) {
        EXPECT_EQ(progress.open, 1);
        EXPECT_EQ(progress.owner, owner);
    };
    EXPECT_EQ(run(L"a", L"a.txt"), true);
    EXPECT_EQ(progress.open, 0);
    EXPECT_EQ(progress.log, (std::vector<std::wstring>{L"caption new.zip", LR"(folder C:\out\new.zip)",
                                                       L"file Preprocessing ... Wait a second!"}));
}

TEST_F(ZipEngineRun, ClosesProgressAfterAFailureToo) {
    library.answers = {10};
    EXPECT_EQ(run(L"a", L"a.txt"), false);
    EXPECT_EQ(progress.open, 0);
    EXPECT_EQ(boxes(), L"[Compression Error|Error Using A Temp File]");
    EXPECT_EQ(engine.report().error, L"Error Using A Temp File");
    EXPECT_EQ(engine.report().log, L"Error Using A Temp File");
    EXPECT_EQ(engine.report().code, 10);
}

TEST_F(ZipEngineRun, FailsSilentlyWithACodeWithoutAText) {
    library.answers = {17};
    EXPECT_EQ(run(L"a", L"a.txt"), false);
    EXPECT_EQ(boxes(), L"");
    EXPECT_EQ(engine.report().log, L"");
}

TEST_F(ZipEngineRun, WorksInTheBaseFolderAndGoesBack) {
    std::wstring meanwhile;
    library.whileRunning = [&](ZipEvents&) { meanwhile = system.currentFolder(); };
    EXPECT_EQ(run(L"a", L"a.txt"), true);
    EXPECT_EQ(meanwhile, LR"(C:\base)");
    EXPECT_EQ(system.currentFolder(), LR"(C:\before)");
    library.answers = {0, 5};
    EXPECT_EQ(run(L"a", L"a.txt"), false);
    EXPECT_EQ(system.currentFolder(), LR"(C:\before)");
}

TEST_F(ZipEngineRun, SaysThatTheLibraryIsMissing) {
    libraries.library = nullptr;
    EXPECT_EQ(run(L"a", L"a.txt"), false);
    EXPECT_EQ(boxes(), L"[Compression Error|InfoZip32.dll is missing, or cannot be used.]");
    EXPECT_EQ(progress.shown, 0);
}

TEST_F(ZipEngineRun, RefusesNamesThatTheLibraryCannotTake) {
    EXPECT_EQ(run(L"a", L"a.txt\r\n\u65e5\u672c.txt\r\nb.txt"), false);
    EXPECT_TRUE(library.calls.empty()) << "an archive without one of the files would look whole";
    EXPECT_EQ(boxes(),
              L"[Zip Message|Nothing was done: these names have characters that the archive cannot take.\r\n"
              L"\u65e5\u672c.txt]");
    EXPECT_EQ(progress.open, 0);
}

TEST_F(ZipEngineRun, NamesNoMoreThanFiveSuchNames) {
    EXPECT_EQ(run(L"a", L"\u3041\r\n\u3042\r\n\u3043\r\n\u3044\r\n\u3045\r\n\u3046"), false);
    EXPECT_TRUE(messages.shown.at(0).text.ends_with(L"\u3044\r\n\u3045\r\n..."));
}

TEST_F(ZipEngineRun, GoesByShortNamesForFoldersThatDoNotBecomePartOfTheArchive) {
    archive =
        LR"(C:\)"
        L"\u65e5"
        LR"(\new.zip)";
    system.shortNames
        [LR"(C:\)"
         L"\u65e5"
         LR"(\)"] = LR"(C:\1~1\)";
    EXPECT_EQ(run(L"a", L"a.txt"), true);
    EXPECT_EQ(library.calls.at(0).archive, R"(C:\1~1\new.zip)");
}

TEST_F(ZipEngineRun, RunsOnceAtATime) {
    std::optional<bool> inner = true;
    library.whileRunning = [&](ZipEvents&) {
        EXPECT_TRUE(engine.running());
        inner = run(L"a", L"b.txt");
    };
    EXPECT_EQ(run(L"a", L"a.txt"), true);
    EXPECT_EQ(inner, std::nullopt);
    EXPECT_EQ(library.calls.size(), 1U);
    EXPECT_FALSE(engine.running());
}

TEST_F(ZipEngineRun, IsCancelledWhileItCounts) {
    for (int each = 0; each < 600; ++each) files.addFile(LR"(C:\base\n)" + std::to_wstring(each));
    progress.onPump = [&] { progress.cancelled = true; };
    EXPECT_EQ(run(L"a", manyNames(600)), false);
    EXPECT_TRUE(library.calls.empty());
    EXPECT_EQ(boxes(), L"[Compression Error|User Interrupted Or Abnormal Termination]");
    EXPECT_EQ(progress.open, 0);
}

TEST_F(ZipEngineRun, IsCancelledBetweenCalls) {
    library.whileRunning = [&](ZipEvents&) { progress.cancelled = true; };
    EXPECT_EQ(run(L"m", manyNames(4001)), false);
    EXPECT_EQ(library.calls.size(), 1U);
    EXPECT_EQ(engine.report().code, 9);
}

TEST_F(ZipEngineRun, SurvivesATemporaryFolderThatIsNotKnown) {
    system.tempFolderError = 5;
    EXPECT_EQ(run(L"a", L"a.txt"), true);
    EXPECT_EQ(library.calls.at(0).temporaryFolder, "");
}

}  // namespace
}  // namespace tovar::test
