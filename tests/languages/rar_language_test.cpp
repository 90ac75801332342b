#include "archivers/unrar32/rar_language.h"

#include <gtest/gtest.h>

#include "languages/support/described.h"

namespace archiver {
namespace {

using testing::chosenOf;
using testing::commandOf;
using testing::described;
using testing::LineCase;

class RarLines : public ::testing::TestWithParam<LineCase> {};

TEST_P(RarLines, AreUnderstood) { EXPECT_EQ(described(kRarLanguage, GetParam().line), GetParam().expected); }

constexpr LineCase kBuilt[] = {
    {"Extract", R"( -x -u  C:\a.rar C:\out\ *.*)", "unpack replace newer"},
    {"ExtractFlat", R"( -e -u  C:\a.rar C:\out\ *.*)", "unpack flat replace newer"},
    {"ExtractOverwriting", R"( -x -u  -y C:\a.rar C:\out\ *.*)", "unpack replace no-space-check"},
    {"ExtractFlatOverwriting", R"( -e -u  -y C:\a.rar C:\out\ *.*)", "unpack flat replace no-space-check"},
};
constexpr LineCase kCommandRows[] = {
    {"X", "x a.rar", "unpack ask"},
    {"E", "e a.rar", "unpack flat ask"},
    {"T", "t a.rar", "test"},
    {"P", "p a.rar", "print"},
    {"L", "l a.rar", "list"},
    {"V", "v a.rar", "list-verbose"},
    {"WithHyphen", "-t a.rar", "test"},
    {"Comment", "c a.rar", "0x8023"},
    {"CaseCounts", "X a.rar", "0x801C"},
    {"Unknown", "q a.rar", "0x801C"},
    {"Joined", "xv a.rar", "0x801C"},
    {"Nothing", "", "0x801C"},
    {"Blanks", " \t ", "0x801C"},
    {"NoArchive", "x", "0x8019"},
    {"NoArchiveBehindOptions", "x -y -u", "0x8019"},
};
constexpr LineCase kOptionRows[] = {
    {"Yes", "x -y a.rar", "unpack replace no-space-check"},
    {"Overwrite", "x -o a.rar", "unpack replace"},
    {"NeverOverwrite", "x -o- a.rar", "unpack keep"},
    {"NeverOverwriteComesLast", "x -o -o- a.rar", "unpack keep"},
    {"OverwriteComesLast", "x -o- -o a.rar", "unpack replace"},
    {"Freshen", "x -f a.rar", "unpack ask newer existing"},
    {"FreshenWithoutQuestions", "x -f -y a.rar", "unpack replace newer existing no-space-check"},
    {"Update", "x -u a.rar", "unpack replace newer"},
    {"UpdateOverwriting", "x -u -o a.rar", "unpack replace newer"},
    {"UpdateNeverOverwriting", "x -u -o- a.rar", "unpack keep newer"},
    {"Password", "x -psecret a.rar", "unpack ask password=secret"},
    {"PasswordWithBlank", "x -p\"two words\" a.rar", "unpack ask password=two words"},
    {"PasswordToBeAskedFor", "x -p a.rar", "unpack ask"},
    {"NoPasswordQuestion", "t -h a.rar", "test never-ask-password"},
    {"NoProgress", "t -q a.rar", "test no-progress"},
    {"SafetyOne", "x -e1 a.rar", "unpack ask"},
    {"SafetyTwo", "x -e2 a.rar", "unpack ask"},
    {"SafetyThree", "x -e3 a.rar", "0x801C"},
    {"Strict", "x -s a.rar", "unpack ask"},
    {"StrictAndRecursive", "x -s -r a.rar", "unpack ask"},
    {"Unknown", "x -z a.rar", "0x801C"},
    {"OptionsAreNotJoined", "x -uy a.rar", "0x801C"},
    {"CaseCounts", "x -Y a.rar", "0x801C"},
    {"HyphenAlone", "x - a.rar", "0x801C"},
    {"NoResponseFile", "x a.rar @no-such-file", "0x802A"},
};
const auto kNameOf = [](const auto& each) { return std::string(each.param.name); };
INSTANTIATE_TEST_SUITE_P(Built, RarLines, ::testing::ValuesIn(kBuilt), kNameOf);
INSTANTIATE_TEST_SUITE_P(Commands, RarLines, ::testing::ValuesIn(kCommandRows), kNameOf);
INSTANTIATE_TEST_SUITE_P(Options, RarLines, ::testing::ValuesIn(kOptionRows), kNameOf);

TEST(RarLanguage, TakesArchiveAndTargetByTheirPlace) {
    const Command command = commandOf(kRarLanguage, R"( -x -u  "C:\my files\a b.rar" "C:\my dir\" *.*)");
    EXPECT_EQ(command.archive, std::filesystem::path(R"(C:\my files\a b.rar)"));
    EXPECT_EQ(command.options.target, std::filesystem::path(R"(C:\my dir)"));
    EXPECT_FALSE(command.namesGiven);
}

TEST(RarLanguage, EndsItsOptionsWithTheFirstName) {
    const std::vector<std::string> names = {"-y", "a"};
    EXPECT_EQ(chosenOf(kRarLanguage, "x a.rar -y", names), (std::vector<std::string>{"-y"}));
    EXPECT_EQ(described(kRarLanguage, "x a.rar -y"), "unpack ask");
    EXPECT_EQ(commandOf(kRarLanguage, "x -u -- -odd.rar").archive, std::filesystem::path("-odd.rar"));
}

const std::vector<std::string> kMembers = {"readme.txt", "docs\\readme.txt", "docs\\old\\readme.txt", "docs\\old\\a.c"};

TEST(RarLanguage, ComparesNamesWithTheirLastPartOrTheWholePath) {
    EXPECT_EQ(chosenOf(kRarLanguage, "x a.rar README.*", kMembers),
              (std::vector<std::string>{kMembers[0], kMembers[1], kMembers[2]}));
    EXPECT_EQ(chosenOf(kRarLanguage, "x a.rar docs/readme.txt", kMembers), (std::vector<std::string>{kMembers[1]}));
    EXPECT_EQ(chosenOf(kRarLanguage, "x a.rar d*/readme.txt", kMembers), (std::vector<std::string>{kMembers[1]}));
    EXPECT_EQ(chosenOf(kRarLanguage, "x a.rar docs/*.*", kMembers),
              (std::vector<std::string>{kMembers[1], kMembers[2], kMembers[3]}));
    EXPECT_EQ(chosenOf(kRarLanguage, "x a.rar", kMembers), kMembers);
}

TEST(RarLanguage, ComparesWholePathsWhenTheyAreStrict) {
    EXPECT_EQ(chosenOf(kRarLanguage, "x -s a.rar readme.txt", kMembers), (std::vector<std::string>{kMembers[0]}));
    EXPECT_EQ(chosenOf(kRarLanguage, "x -s -r a.rar readme.txt", kMembers),
              (std::vector<std::string>{kMembers[0], kMembers[1], kMembers[2]}));
    EXPECT_EQ(chosenOf(kRarLanguage, "x -s -r a.rar docs/readme.txt", kMembers),
              (std::vector<std::string>{kMembers[1], kMembers[2]}));
}

TEST(RarLanguage, CountsWhatWasSkipped) {
    const Command command;
    UnpackSummary summary;
    EXPECT_EQ(kRarLanguage.codeOf(command, summary), 0);
    summary.skipped = 3;
    EXPECT_EQ(kRarLanguage.codeOf(command, summary), 3);
    summary.skipped = 0x12345;
    EXPECT_EQ(kRarLanguage.codeOf(command, summary), 0x7FFF);
    summary.code = kFileCrc;
    EXPECT_EQ(kRarLanguage.codeOf(command, summary), 0x800C);
}

}  // namespace
}  // namespace archiver
