#include "shell/program_launcher.h"

#include <gtest/gtest.h>

#include "shell/fakes/fake_programs.h"

namespace tovar {
namespace {

struct CountingPump final : MessagePump {
    int times = 0;
    void processPending() override { ++times; }
};

class ProgramLauncherTest : public testing::Test {
protected:
    test::FakePrograms programs;
    CountingPump pump;
    ProgramLauncher launcher{programs, pump};
};

TEST_F(ProgramLauncherTest, KnowsWhatHasAProgram) {
    programs.registered = {L"C:\\a.txt", L""};
    EXPECT_TRUE(launcher.HasAssociatedProgram(L"C:\\a.txt"));
    EXPECT_FALSE(launcher.HasAssociatedProgram(L"C:\\x.unknownext"));
    EXPECT_FALSE(launcher.HasAssociatedProgram(L""));
}

TEST_F(ProgramLauncherTest, LaunchesNothingWithoutTheProgramThatItRequires) {
    EXPECT_FALSE(launcher.OpenWithShell(L"C:\\x.unknownext", true));
    EXPECT_TRUE(programs.opened.empty());
    EXPECT_EQ(pump.times, 0);
}

TEST_F(ProgramLauncherTest, LeavesFilesOfNoProgramToTheDesktop) {
    EXPECT_TRUE(launcher.OpenWithShell(L"C:\\x.unknownext", false));
    EXPECT_EQ(programs.opened, std::vector<std::wstring>{L"C:\\x.unknownext"});
    EXPECT_EQ(pump.times, 1) << "messages run afterwards";
}

TEST_F(ProgramLauncherTest, OpensWhatHasAProgram) {
    programs.registered = {L"C:\\a.txt"};
    EXPECT_TRUE(launcher.OpenWithShell(L"C:\\a.txt", true));
    EXPECT_EQ(programs.opened, std::vector<std::wstring>{L"C:\\a.txt"});
}

TEST_F(ProgramLauncherTest, SaysWhenItWasNotOpened) {
    programs.opens = false;
    EXPECT_FALSE(launcher.OpenWithShell(L"C:\\a.txt", false));
    EXPECT_EQ(pump.times, 1);
}

}  // namespace
}  // namespace tovar
