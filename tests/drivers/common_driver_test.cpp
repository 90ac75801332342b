#include "drivers/common_driver.h"

#include <gtest/gtest.h>

#include "drivers/fakes/driver_fixture.h"
#include "drivers/missing_library.h"

namespace tovar {
namespace {

class CommonDriverTest : public testing::Test, protected test::DriverFixture {};

TEST_F(CommonDriverTest, StartsWithTheContractsDefaults) {
    EXPECT_EQ(driver.OutPut(), L"");
    EXPECT_EQ(driver.ReturnCode(), 0);
    EXPECT_EQ(driver.ErrString(), L"");
    EXPECT_EQ(driver.MaxFileCount(), 256);
    EXPECT_EQ(driver.CheckMode(), 0);
    EXPECT_EQ(driver.hWnd(), nullptr);
    EXPECT_EQ(driver.entries().size(), 0U);
    EXPECT_EQ(&driver.description(), &description);
    EXPECT_EQ(library.calls, Calls{});
}

TEST_F(CommonDriverTest, ReadsTheVersionEachTime) {
    EXPECT_EQ(driver.Version(), 540);
    library.versionAnswer = 65535;
    EXPECT_EQ(driver.Version(), 65535);
    EXPECT_EQ(library.calls, (Calls{L"version", L"version"}));
}

TEST_F(CommonDriverTest, AsksWhetherACommandRuns) {
    EXPECT_FALSE(driver.Running());
    library.runningAnswer = true;
    EXPECT_TRUE(driver.Running());
    EXPECT_EQ(library.calls, (Calls{L"running", L"running"}));
}

TEST_F(CommonDriverTest, PassesTheBackgroundModeOn) {
    EXPECT_TRUE(driver.BackGroundMode());
    driver.setBackGroundMode(false);
    EXPECT_FALSE(driver.BackGroundMode());
    driver.setBackGroundMode(true);
    EXPECT_EQ(library.calls,
              (Calls{L"backGroundMode", L"setBackGroundMode 0", L"backGroundMode", L"setBackGroundMode 1"}));
}

TEST_F(CommonDriverTest, PassesTheCursorModeOn) {
    EXPECT_TRUE(driver.CursorMode());
    driver.setCursorMode(false);
    EXPECT_FALSE(driver.CursorMode());
    driver.setCursorMode(true);
    EXPECT_EQ(library.calls, (Calls{L"cursorMode", L"setCursorMode 0", L"cursorMode", L"setCursorMode 1"}));
}

TEST_F(CommonDriverTest, NeverCallsCursorFunctionsThatTheLibraryHasNot) {
    DriverDescription without = description;
    without.hasCursorMode = false;
    CommonDriver plain(without, library, messages, regional);
    plain.setCursorMode(true);
    EXPECT_FALSE(plain.CursorMode());
    EXPECT_EQ(library.calls, Calls{});
}

TEST_F(CommonDriverTest, ChecksAnArchiveInTheCheckMode) {
    library.checkAnswer = 1;
    EXPECT_TRUE(driver.CheckArchive(LR"(C:\a.zip)"));
    driver.setCheckMode(2);
    EXPECT_TRUE(driver.CheckArchive(LR"(C:\b.zip)"));
    EXPECT_EQ(driver.CheckMode(), 2);
    EXPECT_EQ(library.calls, (Calls{LR"(checkArchive C:\a.zip 0)", LR"(checkArchive C:\b.zip 2)"}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CommonDriverTest, TestsEveryMemberWhateverTheCheckModeIs) {
    library.checkAnswer = 1;
    driver.setCheckMode(1);
    EXPECT_TRUE(driver.TestArchive(LR"(C:\a.zip)"));
    library.checkAnswer = 0;
    EXPECT_FALSE(driver.TestArchive(LR"(C:\a.zip)"));
    EXPECT_EQ(library.calls, (Calls{LR"(checkArchive C:\a.zip 2)", LR"(checkArchive C:\a.zip 2)"}));
    EXPECT_EQ(driver.CheckMode(), 1);
}

struct CheckCase {
    std::int32_t answer;
    bool good;
};

TEST_F(CommonDriverTest, TakesAPositiveCheckForAGoodArchive) {
    for (const auto& [answer, good] : {CheckCase{1, true}, CheckCase{0x800A, true}, CheckCase{0, false},
                                       CheckCase{-1, false}, CheckCase{-2147483647 - 1, false}}) {
        library.checkAnswer = answer;
        EXPECT_EQ(driver.CheckArchive(L"a.zip"), good) << answer;
    }
}

TEST_F(CommonDriverTest, KeepsReturnCodeAndOutputOverAFailedCheck) {
    library.written = "listed";
    driver.setCommandLine(L"-l a.zip");
    EXPECT_FALSE(driver.CheckArchive(L"missing.zip"));
    EXPECT_EQ(driver.ReturnCode(), 0);
    EXPECT_EQ(driver.OutPut(), L"listed");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CommonDriverTest, RunsACommandForItsOwner) {
    driver.setHWnd(owner);
    library.written = "two lines\r\n of text\r\n";
    driver.setCommandLine(L"-x \"C:\\a b.zip\"");
    EXPECT_EQ(driver.hWnd(), owner);
    EXPECT_EQ(library.calls, (Calls{L"run -x \"C:\\a b.zip\""}));
    EXPECT_EQ(library.owners, (std::vector<WindowHandle>{owner}));
    EXPECT_EQ(driver.ReturnCode(), 0);
    EXPECT_EQ(driver.OutPut(), L"two lines\r\n of text\r\n");
    EXPECT_EQ(driver.ErrString(), L"");
}

struct BufferCase {
    std::int16_t files;
    std::uint32_t characters;
};

TEST_F(CommonDriverTest, SizesTheBufferByTheFileCount) {
    for (const auto& [files, characters] :
         {BufferCase{256, 21'060}, BufferCase{1000, 81'324}, BufferCase{0, 324}, BufferCase{32767, 2'654'451},
          BufferCase{-1, 324}, BufferCase{-32768, 324}}) {
        driver.setMaxFileCount(files);
        EXPECT_EQ(driver.MaxFileCount(), files);
        driver.setCommandLine(L"-l a.zip");
        EXPECT_EQ(library.givenBufferSize, characters) << files;
    }
}

TEST_F(CommonDriverTest, GivesTheDefaultBufferOf21060Characters) {
    driver.setCommandLine(L"-l a.zip");
    EXPECT_EQ(library.givenBufferSize, 21'060U);
}

TEST_F(CommonDriverTest, MarksAnOutputThatFilledTheBuffer) {
    library.written = std::string(21'060, 'x');
    driver.setCommandLine(L"-l a.zip");
    EXPECT_EQ(driver.OutPut(), std::wstring(21'060, L'x') + L"\n[More...]");
}

TEST_F(CommonDriverTest, KeepsAnOutputThatLeftRoomForItsNul) {
    library.written = std::string(21'059, 'x');
    driver.setCommandLine(L"-l a.zip");
    EXPECT_EQ(driver.OutPut(), std::wstring(21'059, L'x'));
}

TEST_F(CommonDriverTest, MarksAnEmptyOutputBehindTheBuffersNuls) {
    driver.setCommandLine(L"-t a.zip");
    EXPECT_EQ(driver.ReturnCode(), 0);
    EXPECT_EQ(driver.OutPut(), std::wstring(21'060, L'\0') + L"\n[More...]");
}

TEST_F(CommonDriverTest, CutsTheOutputAtItsFirstNul) {
    library.written = std::string("x\0rest", 6);
    driver.setCommandLine(L"-l a.zip");
    EXPECT_EQ(driver.OutPut(), L"x");
}

TEST_F(CommonDriverTest, EmptiesTheOutputOfAFailedCommand) {
    library.written = "listed";
    driver.setCommandLine(L"-l a.zip");
    library.runAnswer = 0x8018;
    library.written = "something went wrong";
    driver.setCommandLine(L"-l b.zip");
    EXPECT_EQ(driver.ReturnCode(), 0x8018);
    EXPECT_EQ(driver.OutPut(), L"");
    EXPECT_EQ(driver.ErrString(), L"Can not open archive file");
}

TEST_F(CommonDriverTest, EmptiesTheOutputForANegativeCodeToo) {
    library.written = "listed";
    library.runAnswer = -32724;
    driver.setCommandLine(L"-a a.zip");
    EXPECT_EQ(driver.OutPut(), L"");
    EXPECT_EQ(driver.ErrString(), L"Can not write back to temporary archive file");
}

TEST_F(CommonDriverTest, TellsTheErrorAsOftenAsAsked) {
    library.runAnswer = 0x8030;
    driver.setCommandLine(L"-x a.zip");
    EXPECT_EQ(driver.ErrString(), L"Unknown return code 'H8030'\r\nMaybe nothing to do.");
    EXPECT_EQ(driver.ErrString(), L"Unknown return code 'H8030'\r\nMaybe nothing to do.");
    EXPECT_EQ(driver.ReturnCode(), 0x8030);
}

TEST_F(CommonDriverTest, ShowsTheLibrarysDialogForItsOwner) {
    driver.setHWnd(owner);
    library.dialogAnswer = 0x801F;
    EXPECT_EQ(driver.ConfigDialog(), 0x801F);
    EXPECT_EQ(driver.ReturnCode(), 0x801F);
    EXPECT_EQ(driver.ErrString(), L"DLL already running");
    EXPECT_EQ(library.calls, (Calls{L"configDialog 1"}));
    EXPECT_EQ(library.owners, (std::vector<WindowHandle>{owner}));
}

TEST_F(CommonDriverTest, FailsInEverythingOverAMissingLibrary) {
    MissingLibrary missing;
    CommonDriver orphan(description, missing, messages, regional);
    EXPECT_EQ(orphan.Version(), 1);
    EXPECT_FALSE(orphan.Running());
    EXPECT_FALSE(orphan.BackGroundMode());
    orphan.setBackGroundMode(true);
    EXPECT_FALSE(orphan.CursorMode());
    orphan.setCursorMode(true);
    EXPECT_FALSE(orphan.CheckArchive(L"a.zip"));
    EXPECT_TRUE(messages.shown.empty());
    orphan.setCommandLine(L"-l a.zip");
    EXPECT_EQ(orphan.OutPut(), L"");
    EXPECT_EQ(orphan.ErrString(), L"Unsupported function called");
    EXPECT_EQ(orphan.ConfigDialog(), 0x8023);
    EXPECT_EQ(orphan.SetArcFile(L"a.zip"), 0U);
    EXPECT_EQ(messages.shown.size(), 1U);
}

}  // namespace
}  // namespace tovar
