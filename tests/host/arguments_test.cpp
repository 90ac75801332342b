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

using Words = std::vector<std::wstring>;
using Existing = Arguments::Existing;

TEST(ConsoleArguments, TakesOneArchiveAndItsMembersToExtract) {
    const auto arguments = parseArguments({L"extract", L"a.zip", L"docs/", L"b c.txt"});
    EXPECT_EQ(arguments.command, Command::Extract);
    EXPECT_EQ(arguments.archives, (Words{L"a.zip"}));
    EXPECT_EQ(arguments.members, (Words{L"docs/", L"b c.txt"}));
    EXPECT_EQ(arguments.folder, L"");
    EXPECT_FALSE(arguments.flat);
    EXPECT_FALSE(arguments.ask);
    EXPECT_FALSE(arguments.json);
    EXPECT_EQ(arguments.existing, Existing::Skip) << "nothing is lost without an option";
}

TEST(ConsoleArguments, TakesTheOptionsOfExtractAnywhere) {
    const auto arguments =
        parseArguments({L"extract", L"--flat", L"a.zip", L"--to", L"-out", L"b", L"--overwrite", L"--json"});
    EXPECT_TRUE(arguments.flat);
    EXPECT_TRUE(arguments.json);
    EXPECT_EQ(arguments.folder, L"-out");
    EXPECT_EQ(arguments.archives, (Words{L"a.zip"}));
    EXPECT_EQ(arguments.members, (Words{L"b"}));
    EXPECT_EQ(arguments.existing, Existing::Overwrite);
}

TEST(ConsoleArguments, TakesMembersThatLookLikeOptionsAfterTwoHyphens) {
    const auto arguments = parseArguments({L"extract", L"--", L"-a.zip", L"--to", L"--"});
    EXPECT_EQ(arguments.archives, (Words{L"-a.zip"}));
    EXPECT_EQ(arguments.members, (Words{L"--to", L"--"}));
    EXPECT_EQ(arguments.folder, L"");
}

struct AskCase {
    const char* name;
    Words options;
    bool ask;
    Existing existing;
};
class AskArguments : public testing::TestWithParam<AskCase> {};
TEST_P(AskArguments, DecideWhatHappensToFilesThatAreThere) {
    Words words = {L"extract", L"a.zip"};
    words.insert(words.end(), GetParam().options.begin(), GetParam().options.end());
    const auto arguments = parseArguments(words);
    EXPECT_EQ(arguments.ask, GetParam().ask);
    EXPECT_EQ(arguments.existing, GetParam().existing);
}
INSTANTIATE_TEST_SUITE_P(
    Options, AskArguments,
    testing::Values(AskCase{"Nothing", {}, false, Existing::Skip}, AskCase{"Ask", {L"--ask"}, true, Existing::Ask},
                    AskCase{"AskAndSkip", {L"--ask", L"--skip"}, true, Existing::Skip},
                    AskCase{"OverwriteAndAsk", {L"--overwrite", L"--ask"}, true, Existing::Overwrite}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ConsoleArguments, HelpsWithEveryCommandAndOption) {
    const std::string help = kHelpText;
    for (const char* word : {"list",         "test",        "extract",    "create", "add",      "delete",    "--level",
                             "--no-recurse", "--hidden",    "--password", "--move", "--update", "--freshen", "--to",
                             "--flat",       "--overwrite", "--skip",     "--ask",  "--json",   "--version", "0 when",
                             "1 when",       "2 when",      "3 when",     "4 when"}) {
        EXPECT_NE(help.find(word), std::string::npos) << word;
    }
}

TEST(ConsoleArguments, TakesOneArchiveAndWhatGoesIntoIt) {
    const auto arguments = parseArguments({L"create", L"a.zip", L"docs/", L"b c.txt"});
    EXPECT_EQ(arguments.command, Command::Create);
    EXPECT_TRUE(arguments.changes());
    EXPECT_EQ(arguments.archives, (Words{L"a.zip"}));
    EXPECT_EQ(arguments.members, (Words{L"docs/", L"b c.txt"}));
    EXPECT_EQ(arguments.level, std::nullopt);
    EXPECT_EQ(arguments.sources, Arguments::Sources::All);
    EXPECT_TRUE(arguments.recurse);
    EXPECT_FALSE(arguments.hidden || arguments.move || arguments.password || arguments.json);
}

TEST(ConsoleArguments, TakesTheOptionsOfPacking) {
    const auto create = parseArguments({L"create", L"--level", L"0", L"a.zip", L"--no-recurse", L"--hidden", L"b",
                                        L"--password", L"--move", L"--json"});
    EXPECT_EQ(create.level, 0);
    EXPECT_FALSE(create.recurse);
    EXPECT_TRUE(create.hidden && create.password && create.move && create.json);
    EXPECT_EQ(create.members, (Words{L"b"}));
    EXPECT_EQ(parseArguments({L"add", L"--level", L"9", L"a.zip", L"b"}).level, 9);
    EXPECT_TRUE(parseArguments({L"add", L"--recurse", L"a.zip", L"b"}).recurse);
    EXPECT_EQ(parseArguments({L"add", L"--update", L"a.zip", L"b"}).sources, Arguments::Sources::Newer);
    EXPECT_EQ(parseArguments({L"add", L"--freshen", L"a.zip", L"b"}).sources, Arguments::Sources::NewerAndThere);
}

TEST(ConsoleArguments, TakesMembersToDelete) {
    const auto arguments = parseArguments({L"delete", L"--json", L"a.lzh", L"--", L"-b"});
    EXPECT_EQ(arguments.command, Command::Delete);
    EXPECT_EQ(arguments.archives, (Words{L"a.lzh"}));
    EXPECT_EQ(arguments.members, (Words{L"-b"}));
    EXPECT_TRUE(arguments.json);
    EXPECT_FALSE(parseArguments({L"extract", L"a.lzh", L"b"}).changes());
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
INSTANTIATE_TEST_SUITE_P(
    Lines, BadArguments,
    testing::Values(
        BadLine{"Command", {L"liszt", L"a.zip"}, L"unknown command liszt"},
        BadLine{"Option", {L"list", L"-x", L"a.zip"}, L"unknown option -x"},
        BadLine{"NoArchive", {L"list", L"--json"}, L"list needs an archive"},
        BadLine{"NothingToTest", {L"test"}, L"test needs an archive"},
        BadLine{"NothingToExtract", {L"extract"}, L"extract needs an archive"},
        BadLine{"NoFolder", {L"extract", L"a.zip", L"--to"}, L"--to needs a folder"},
        BadLine{"EmptyFolder", {L"extract", L"--to", L"", L"a.zip"}, L"--to needs a folder"},
        BadLine{"ListTo", {L"list", L"--to", L"x", L"a.zip"}, L"unknown option --to"},
        BadLine{"ListFlat", {L"list", L"--flat", L"a.zip"}, L"unknown option --flat"},
        BadLine{"TestAsk", {L"test", L"--ask", L"a.zip"}, L"unknown option --ask"},
        BadLine{"NothingToCreate", {L"create"}, L"create needs an archive"},
        BadLine{"NothingToPack", {L"create", L"a.zip"}, L"create needs files or folders"},
        BadLine{"NothingToAdd", {L"add", L"a.zip"}, L"add needs files or folders"},
        BadLine{"NothingToDelete", {L"delete", L"a.zip"}, L"delete needs members"},
        BadLine{"NoLevel", {L"create", L"a.zip", L"--level"}, L"--level needs a number from 0 to 9"},
        BadLine{"LetterAsLevel", {L"create", L"--level", L"x", L"a.zip", L"b"}, L"--level needs a number from 0 to 9"},
        BadLine{"LevelTooHigh", {L"create", L"--level", L"10", L"a.zip", L"b"}, L"--level needs a number from 0 to 9"},
        BadLine{"PasswordInTheLine", {L"create", L"--password=x", L"a.zip", L"b"}, L"unknown option --password=x"},
        BadLine{"CreateUpdate", {L"create", L"--update", L"a.zip", L"b"}, L"unknown option --update"},
        BadLine{"CreateTo", {L"create", L"--to", L"x", L"a.zip", L"b"}, L"unknown option --to"},
        BadLine{"DeleteMove", {L"delete", L"--move", L"a.zip", L"b"}, L"unknown option --move"},
        BadLine{"DeleteLevel", {L"delete", L"--level", L"1", L"a.zip"}, L"unknown option --level"},
        BadLine{"UpdateAndFreshen",
                {L"add", L"--update", L"--freshen", L"a.zip", L"b"},
                L"--update and --freshen exclude each other"},
        BadLine{"UpdateAndMove",
                {L"add", L"--move", L"--update", L"a.zip", L"b"},
                L"--update and --move exclude each other"},
        BadLine{"FreshenAndMove",
                {L"add", L"--freshen", L"--move", L"a.zip", L"b"},
                L"--freshen and --move exclude each other"},
        BadLine{"RecurseOrNot",
                {L"add", L"--recurse", L"--no-recurse", L"a.zip", L"b"},
                L"--recurse and --no-recurse exclude each other"},
        BadLine{
            "Both", {L"extract", L"--skip", L"--overwrite", L"a.zip"}, L"--skip and --overwrite exclude each other"}),
    [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace tovar::host
