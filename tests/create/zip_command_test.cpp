#include "create/zip_command.h"

#include <gtest/gtest.h>

#include <string>

namespace tovar {
namespace {

struct CommandCase {
    const char* name;
    std::wstring_view line;
    ZipCommand expected;
};
class ReadCommand : public testing::TestWithParam<CommandCase> {};
TEST_P(ReadCommand, GivesActionAndOptions) {
    ZipCommand command;
    EXPECT_EQ(parseZipCommand(GetParam().line, command), ZipCommandError::None);
    EXPECT_EQ(command, GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Lines, ReadCommand,
    testing::Values(
        CommandCase{"Add", L"a", {}}, CommandCase{"Freshen", L"f", {.action = ZipAction::Freshen}},
        CommandCase{"Update", L"U", {.action = ZipAction::Update}},
        CommandCase{"Move", L"m", {.action = ZipAction::Move}},
        CommandCase{"Delete", L"d", {.action = ZipAction::Delete}},
        CommandCase{"Repair", L"x", {.action = ZipAction::Repair}}, CommandCase{"Password", L"a -p", {.encrypt = true}},
        CommandCase{"SystemAndHidden", L"a -s", {.systemAndHidden = true}},
        CommandCase{"Comment", L"a -c", {.comment = true}}, CommandCase{"Recurse", L"a -r", {.recurse = true}},
        CommandCase{"Verbose", L"a -v", {.verbose = true}}, CommandCase{"FolderInfo", L"a -d", {.folderInfo = true}},
        CommandCase{"Level", L"a -l0", {.level = '0'}},
        CommandCase{"DefaultLevel", L"A -R", {.recurse = true, .level = '6'}},
        CommandCase{"RunsOfBlanks", L"a  -r   -l9", {.recurse = true, .level = '9'}},
        CommandCase{"FourBlanksAndMore",
                    L"a    -r     -v          -s",
                    {.systemAndHidden = true, .recurse = true, .verbose = true}},
        CommandCase{"TwentyBlanks", L"a                    -r", {.recurse = true}},
        CommandCase{"BlankAtTheEnd", L"a -r ", {.recurse = true}},
        CommandCase{"OnlyTwoCharactersCount", L"a -recurse -price", {.encrypt = true, .recurse = true}},
        CommandCase{"ThirdCharacterIsTheLevel", L"a -l35", {.level = '3'}},
        CommandCase{"LastLevelCounts", L"a -l1 -l8", {.level = '8'}},
        CommandCase{"UnknownOptions", L"a -q r -1 --", {}},
        CommandCase{"DeleteReadsNoOptions", L"d -r -l", {.action = ZipAction::Delete}},
        CommandCase{"RepairReadsNoOptions", L"x -lx", {.action = ZipAction::Repair}},
        CommandCase{"Everything",
                    L"m -r -d -p -s -v -c -l9",
                    {.action = ZipAction::Move,
                     .encrypt = true,
                     .systemAndHidden = true,
                     .comment = true,
                     .recurse = true,
                     .verbose = true,
                     .folderInfo = true,
                     .level = '9'}}),
    [](const auto& each) { return std::string(each.param.name); });

struct RefusedCase {
    const char* name;
    std::wstring_view line;
    ZipCommandError expected;
};
class RefuseCommand : public testing::TestWithParam<RefusedCase> {};
TEST_P(RefuseCommand, SaysWhy) {
    ZipCommand command{.recurse = true};
    EXPECT_EQ(parseZipCommand(GetParam().line, command), GetParam().expected);
    EXPECT_EQ(command, ZipCommand{});
}
INSTANTIATE_TEST_SUITE_P(Lines, RefuseCommand,
                         testing::Values(RefusedCase{"Empty", L"", ZipCommandError::UnknownCommand},
                                         RefusedCase{"OtherLetter", L"Q", ZipCommandError::UnknownCommand},
                                         RefusedCase{"LongerWord", L"add -r", ZipCommandError::UnknownCommand},
                                         RefusedCase{"OptionFirst", L"-r a", ZipCommandError::UnknownCommand},
                                         RefusedCase{"LevelLetter", L"a -lx", ZipCommandError::Level},
                                         RefusedCase{"LevelNothing", L"a -l", ZipCommandError::Level},
                                         RefusedCase{"LevelApart", L"a -l 9", ZipCommandError::Level},
                                         RefusedCase{"LevelBelowZero", L"a -l/", ZipCommandError::Level},
                                         RefusedCase{"LevelAboveNine", L"a -l:", ZipCommandError::Level}),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace tovar
