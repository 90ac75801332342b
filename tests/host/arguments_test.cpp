#include "host/console/arguments.h"

#include <gtest/gtest.h>

namespace tovar::host {
namespace {

using Command = Arguments::Command;

TEST(ConsoleArguments, ShowsTheHelpWithoutWords) {
    EXPECT_EQ(parseArguments({}).command, Command::Help);
    EXPECT_EQ(parseArguments({L"--help"}).command, Command::Help);
    EXPECT_EQ(parseArguments({L"-h"}).command, Command::Help);
    EXPECT_EQ(parseArguments({L"help"}).command, Command::Help);
}

TEST(ConsoleArguments, TellsItsVersion) { EXPECT_EQ(parseArguments({L"--version"}).command, Command::Version); }

TEST(ConsoleArguments, TakesSeveralArchives) {
    const auto arguments = parseArguments({L"list", L"a.zip", L"b c.tar"});
    EXPECT_EQ(arguments.command, Command::List);
    EXPECT_EQ(arguments.archives, (std::vector<std::wstring>{L"a.zip", L"b c.tar"}));
    EXPECT_FALSE(arguments.json);
}

TEST(ConsoleArguments, TakesJsonBeforeAndAfterTheArchive) {
    EXPECT_TRUE(parseArguments({L"test", L"--json", L"a.zip"}).json);
    EXPECT_TRUE(parseArguments({L"test", L"a.zip", L"--json"}).json);
}

TEST(ConsoleArguments, TakesAnyNameAfterTwoHyphens) {
    const auto arguments = parseArguments({L"list", L"--", L"--json", L"-a.zip"});
    EXPECT_FALSE(arguments.json);
    EXPECT_EQ(arguments.archives, (std::vector<std::wstring>{L"--json", L"-a.zip"}));
}

struct BadLine {
    const char* name;
    std::vector<std::wstring> words;
    std::wstring problem;
};
class BadArguments : public testing::TestWithParam<BadLine> {};
TEST_P(BadArguments, SayWhatIsWrong) {
    const auto arguments = parseArguments(GetParam().words);
    EXPECT_EQ(arguments.command, Command::Unknown);
    EXPECT_EQ(arguments.problem, GetParam().problem);
}
INSTANTIATE_TEST_SUITE_P(Lines, BadArguments,
                         testing::Values(BadLine{"Command", {L"liszt", L"a.zip"}, L"unknown command liszt"},
                                         BadLine{"Option", {L"list", L"-x", L"a.zip"}, L"unknown option -x"},
                                         BadLine{"NoArchive", {L"list", L"--json"}, L"list needs an archive"},
                                         BadLine{"NothingToTest", {L"test"}, L"test needs an archive"}),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace tovar::host
