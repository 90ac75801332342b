#include "archivers/unlha32/lha_language.h"

#include <gtest/gtest.h>

#include "archivers/scratch_file.h"
#include "languages/support/described.h"

namespace archiver {
namespace {

using testing::chosenOf;
using testing::commandOf;
using testing::described;
using testing::LineCase;
using testing::ScratchFile;

class LhaLines : public ::testing::TestWithParam<LineCase> {};

TEST_P(LhaLines, AreUnderstood) { EXPECT_EQ(described(kLhaLanguage, GetParam().line), GetParam().expected); }

constexpr LineCase kBuilt[] = {
    {"Extract", R"( x -a1 -c1 -f1 -jp1 -+ C:\a.lzh C:\out\ *.*)", "unpack replace no-space-check no-settings"},
    {"ExtractOverwriting", R"( x -a1 -c1 -f1 -jp1 -+ -m1 C:\a.lzh C:\out\ *.*)",
     "unpack replace no-space-check no-settings"},
    {"Delete", R"(d C:\a.lzh docs/a.txt)", "delete"},
    {"Add", R"(a -r2 -a1 -x1  C:\a.lzh docs/a.txt)", "pack add recurse hidden method=2"},
    {"Update", R"(u -r2 -a1 -x1  C:\a.lzh docs/a.txt)", "pack update recurse hidden method=2"},
    {"Freshen", R"(f -r2 -a1 -x1  C:\a.lzh docs/a.txt)", "pack freshen recurse hidden method=2"},
    {"Move", R"(m -r2 -a1 -x1  C:\a.lzh docs/a.txt)", "pack add move recurse hidden method=2"},
    {"Pack", R"(a -r2 -x1  C:\a.lzh C:\base\ docs/a.txt)", "pack add recurse method=2"},
};
constexpr LineCase kCommandRows[] = {
    {"X", "x a.lzh", "unpack replace newer no-hidden no-attributes"},
    {"E", "e a.lzh", "unpack flat ask newer no-hidden no-attributes"},
    {"T", "t a.lzh", "test"},
    {"P", "p a.lzh", "print"},
    {"L", "l a.lzh", "list"},
    {"V", "v a.lzh", "list-verbose"},
    {"NoCommand", "a.lzh", "list"},
    {"NoCommandButSwitches", "-x1 a.lzh", "list-verbose"},
    {"CaseDoesNotCount", "T a.lzh", "test"},
    {"SelfExtractor", "s a.lzh", "0x8023"},
    {"Join", "j a.lzh b.lzh", "0x8023"},
    {"Comment", "c a.lzh", "0x8023"},
    {"Rename", "n a.lzh", "0x8023"},
    {"Convert", "y a.lzh", "0x8023"},
    {"Unknown", "q a.lzh", "0x801C"},
    {"Nothing", "", "0x8019"},
    {"NoArchive", "x -a1", "0x8019"},
    {"DeleteWithoutNames", "d a.lzh", "0x802B"},
    {"DeleteBelowAFolderWithoutNames", R"(d a.lzh C:\base\)", "0x802B"},
    {"DeleteEverything", "d a.lzh *.*", "delete"},
    {"AddWithoutSwitches", "a a.lzh x", "pack add flat method=2"},
    {"AddSearching", "a -r1 a.lzh x", "pack add search-below flat method=2"},
    {"AddWholeFolders", "a -d1 a.lzh x", "pack add recurse hidden folder-entries method=2"},
    {"AddFolderEntriesOnlyWhenTheyAreEntered", "a -a2x1 a.lzh x", "pack add hidden method=2"},
    {"AddStored", "a -x1 -jm0 a.lzh x", "pack add method=0"},
    {"AddWithTheLargestWindow", "a -x1 -jm4 a.lzh x", "pack add method=4"},
    {"AddWithoutADialog", "a -x1 -gn1 a.lzh x", "pack add method=2 no-progress"},
    {"AddInAWorkFolder", R"(a -x1 -wC:\work a.lzh x)", "pack add method=2"},
    {"AddWithoutAnArchive", "a -x1", "0x8019"},
    {"MoveInUpperCase", "M -X1 a.lzh x", "pack add move method=2"},
};
constexpr LineCase kSwitchRows[] = {
    {"Attributes0", "x -a0 a.lzh", "unpack replace newer no-hidden no-attributes"},
    {"Attributes1", "x -a1 a.lzh", "unpack replace newer"},
    {"Attributes2", "x -a2 a.lzh", "unpack replace newer"},
    {"AttributesWithoutValue", "x -a a.lzh", "unpack replace newer"},
    {"AttributesOn", "x -a+ a.lzh", "unpack replace newer"},
    {"AttributesOff", "x -a- a.lzh", "unpack replace newer no-hidden no-attributes"},
    {"AttributesTooHigh", "x -a3 a.lzh", "0x801C"},
    {"IgnoreTimes", "x -a1 -c1 a.lzh", "unpack replace"},
    {"HeedTimes", "x -a1 -c0 a.lzh", "unpack replace newer"},
    {"WholeFolders", "e -d1 a.lzh", "unpack ask newer"},
    {"IgnoreSpace", "x -a1 -f a.lzh", "unpack replace newer no-space-check"},
    {"HeedSpace", "x -a1 -f0 a.lzh", "unpack replace newer"},
    {"HeaderLevel", "t -h2 a.lzh", "test"},
    {"HeaderLevelTooHigh", "t -h3 a.lzh", "0x801C"},
    {"Case", "t -i1 a.lzh", "test"},
    {"Method", "t -jm4 a.lzh", "test"},
    {"MethodTooHigh", "t -jm5 a.lzh", "0x801C"},
    {"NoMeaning", "t -jp1 a.lzh", "test"},
    {"Sharing", "t -jso1 -jsm0 -jsp -jse1 -jsf -jsg a.lzh", "test"},
    {"YesToReplace", "e -a1 -jyo a.lzh", "unpack flat replace newer"},
    {"YesToFolders", "e -a1 -jyc a.lzh", "unpack flat ask newer"},
    {"YesToNewNames", "e -a1 -jyn a.lzh", "unpack flat ask newer"},
    {"YesToSpace", "e -a1 -jyk a.lzh", "unpack flat ask newer no-space-check"},
    {"OnlyMissing", "x -a1 -jn1 a.lzh", "unpack replace newer missing"},
    {"Ask", "x -a1 -m0 a.lzh", "unpack ask newer"},
    {"Replace", "e -a1 -m1 a.lzh", "unpack flat replace newer"},
    {"Number", "x -a1 -m2 a.lzh", "unpack number newer"},
    {"FullDialog", "t -n0 a.lzh", "test"},
    {"LessDialog", "t -n1 a.lzh", "test no-progress"},
    {"LeastDialog", "t -n2 a.lzh", "test no-progress"},
    {"Recursion", "t -r2 a.lzh", "test"},
    {"Update", "t -u a.lzh", "test"},
    {"UpdateFinely", "t -gf1 a.lzh", "test"},
    {"WorkFolder", R"(t -wC:\work a.lzh)", "test"},
    {"WorkFolderWithoutName", "t -w a.lzh", "0x801C"},
    {"WithFolders", "e -a1 -x1 a.lzh", "unpack ask newer"},
    {"WithoutFolders", "x -a1 -x0 a.lzh", "unpack flat replace newer"},
    {"ListWithFolders", "l -x1 a.lzh", "list-verbose"},
    {"YesToEverything", "e -a1 -y1 a.lzh", "unpack flat replace newer no-space-check"},
    {"ReadOnlyFiles", "t -ga1 a.lzh", "test"},
    {"NoErrorWindows", "t -gm1 a.lzh", "test"},
    {"NoDialog", "t -gn1 a.lzh", "test no-progress"},
    {"OtherDetails", "t -gp1 -gr1 -gw1 a.lzh", "test"},
    {"NoSettings", "t -+ a.lzh", "test no-settings"},
    {"NoSettings1", "t -+1 a.lzh", "test no-settings"},
    {"Settings", "t -+0 a.lzh", "test"},
    {"LogFileWithoutName", "t -gl a.lzh", "0x801C"},
    {"LogFileInNoFolder", "t -glno-such-folder/log a.lzh", "0x8032"},
    {"Joined", "e -r2x1a1 a.lzh", "unpack ask newer"},
    {"JoinedWithSigns", "x -a+c+f-m- a.lzh", "unpack ask"},
    {"CaseDoesNotCount", "X -A1 -C1 -JYK a.lzh", "unpack replace no-space-check"},
    {"Slash", "x /a1 /c1 a.lzh", "unpack replace"},
    {"BehindTheArchive", "x a.lzh -a1 -c1", "unpack replace"},
    {"BehindTheNames", R"(x a.lzh C:\out\ b.txt -a1)", "unpack replace newer"},
    {"Unknown", "x -k a.lzh", "0x801C"},
    {"UnknownBehindOthers", "x -a1k a.lzh", "0x801C"},
    {"UnknownOfJ", "x -jz a.lzh", "0x801C"},
    {"HyphenAlone", "x - a.lzh", "0x801C"},
    {"NoResponseFile", "x a.lzh @no-such-file", "0x802A"},
};
const auto kNameOf = [](const auto& each) { return std::string(each.param.name); };
INSTANTIATE_TEST_SUITE_P(Built, LhaLines, ::testing::ValuesIn(kBuilt), kNameOf);
INSTANTIATE_TEST_SUITE_P(Commands, LhaLines, ::testing::ValuesIn(kCommandRows), kNameOf);
INSTANTIATE_TEST_SUITE_P(Switches, LhaLines, ::testing::ValuesIn(kSwitchRows), kNameOf);

TEST(LhaLanguage, TakesArchiveAndTargetByTheirPlace) {
    const Command command = commandOf(kLhaLanguage, R"( x -a1 -c1 -f1 -jp1 -+ "C:\my files\a b.lzh" "C:\my dir\" *.*)");
    EXPECT_EQ(command.archive, std::filesystem::path(R"(C:\my files\a b.lzh)"));
    EXPECT_EQ(command.options.target, std::filesystem::path(R"(C:\my dir)"));
    EXPECT_FALSE(command.namesGiven);
}

TEST(LhaLanguage, AddsItsExtension) {
    EXPECT_EQ(commandOf(kLhaLanguage, "l backup").archive, std::filesystem::path("backup.lzh"));
    EXPECT_EQ(commandOf(kLhaLanguage, "l backup.exe").archive, std::filesystem::path("backup.exe"));
}

TEST(LhaLanguage, TakesAPathFromTheRootForNoSwitch) {
    EXPECT_EQ(commandOf(kLhaLanguage, "t /work/a.lzh").archive, std::filesystem::path("/work/a.lzh"));
}

TEST(LhaLanguage, TakesBaseAndNamesToPack) {
    const ScratchFile list("lha pack.lst", "docs\\*.*\r\n\"my file.txt\"\r\n");
    const std::string line = R"(a -r2 -x1 -h1 -jx*.bak  "C:\my files\a b" C:\base\ @")" + list.name() + "\" x";
    const Command command = commandOf(kLhaLanguage, line);
    EXPECT_EQ(command.archive, std::filesystem::path(R"(C:\my files\a b.lzh)"));
    EXPECT_EQ(command.pack.base, std::filesystem::path(R"(C:\base)"));
    EXPECT_EQ(command.pack.names, (std::vector<std::string>{R"(docs\*.*)", "my file.txt", "x"}));
    EXPECT_EQ(command.pack.excluded, (std::vector<std::string>{"*.bak"}));
    EXPECT_EQ(command.pack.headerLevel, 1);
    EXPECT_EQ(commandOf(kLhaLanguage, "a a.lzh x").pack.headerLevel, 2);
    const ScratchFile empty("lha empty.lst", "");
    EXPECT_EQ(described(kLhaLanguage, "a a.lzh @\"" + empty.name() + '"'), "0x802B");
}

const std::vector<std::string> kMembers = {
    "readme.txt", "docs/readme.txt", "docs/old/readme.txt", "docs/old/a.c", "make", "a[1].txt", "-odd", "@list"};

std::vector<std::string> chosen(const std::string& line) { return chosenOf(kLhaLanguage, line, kMembers); }
std::vector<std::string> members(std::initializer_list<std::size_t> indexes) {
    std::vector<std::string> names;
    for (const std::size_t index : indexes) names.push_back(kMembers[index]);
    return names;
}

TEST(LhaLanguage, ComparesNamesAsItsSwitchesSay) {
    EXPECT_EQ(chosen("x a.lzh README.TXT"), members({0, 1, 2}));
    EXPECT_EQ(chosen("x a.lzh docs/readme.txt"), members({1})) << "as many parts";
    EXPECT_EQ(chosen("x -r1 a.lzh docs/readme.txt"), members({1, 2})) << "in every folder below";
    EXPECT_EQ(chosen("x -r1 a.lzh readme.txt"), members({0, 1, 2}));
    EXPECT_EQ(chosen("x -r2 a.lzh docs/old"), members({2, 3})) << "with everything below";
    EXPECT_EQ(chosen("x -p2 a.lzh docs/o*"), members({2, 3}));
    EXPECT_EQ(chosen("x -p1 a.lzh readme.txt"), members({0})) << "whole paths";
    EXPECT_EQ(chosen("x -p0 a.lzh readme.txt"), members({0, 1, 2}));
    EXPECT_EQ(chosen("x -d1 a.lzh docs/old"), members({2, 3}));
    EXPECT_EQ(chosen("x a.lzh make.*"), members({4})) << "the end may be missing";
    EXPECT_EQ(chosen("x a.lzh a[1].txt"), members({5})) << "a bracket is a character like others";
    EXPECT_EQ(chosen("x a.lzh docs/*.*"), members({1, 2, 3}));
    EXPECT_EQ(chosen("x a.lzh *.*"), kMembers);
    EXPECT_EQ(chosen("x a.lzh"), kMembers);
}

TEST(LhaLanguage, LeavesOutWhatIsExcluded) {
    EXPECT_EQ(chosen("x -jx*.txt a.lzh"), members({3, 4, 6, 7}));
    EXPECT_EQ(chosen("x -jx*.txt -jx@* a.lzh"), members({3, 4, 6}));
    EXPECT_EQ(chosen("x -jxreadme.txt a.lzh *.txt"), members({5}));
    EXPECT_EQ(chosen("x -jx*.* a.lzh"), members({}));
    EXPECT_EQ(described(kLhaLanguage, "x -jx a.lzh"), "0x801C");
}

TEST(LhaLanguage, TakesNamesThatBeginWithTheSignOfSwitches) {
    EXPECT_EQ(chosen("x a.lzh -gb-odd"), members({6}));
    EXPECT_EQ(commandOf(kLhaLanguage, "l -gb-odd.lzh").archive, std::filesystem::path("-odd.lzh"));
}

TEST(LhaLanguage, ReadsListsBehindTheirMark) {
    const ScratchFile list("lha names.lst", "docs/old/*.*\r\n\"readme.txt\"\r\n");
    const std::string quoted = '"' + list.name() + '"';
    EXPECT_EQ(chosen("x a.lzh @" + quoted), members({0, 1, 2, 3}));
    EXPECT_EQ(chosen("x --! a.lzh !" + quoted), members({0, 1, 2, 3}));
    EXPECT_EQ(chosen("x --! a.lzh @list"), members({7})) << "another mark";
    EXPECT_EQ(chosen("x -- a.lzh @list"), members({7})) << "no mark";
    EXPECT_EQ(described(kLhaLanguage, "x --!! a.lzh"), "0x801C");
}

}  // namespace
}  // namespace archiver
