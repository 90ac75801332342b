#include "archivers/cab32/cab_language.h"

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

class CabLines : public ::testing::TestWithParam<LineCase> {};

TEST_P(CabLines, AreUnderstood) { EXPECT_EQ(described(kCabLanguage, GetParam().line), GetParam().expected); }

constexpr LineCase kBuilt[] = {
    {"Extract", R"( -x -v C:\a.cab C:\out\ *.*)", "unpack ask"},
    {"ExtractFlat", R"( -x -v -j C:\a.cab C:\out\ *.*)", "unpack flat ask"},
    {"ExtractOverwriting", R"( -x -v -o C:\a.cab C:\out\ *.*)", "unpack replace"},
    {"ExtractFlatOverwriting", R"( -x -v -j -o C:\a.cab C:\out\ *.*)", "unpack flat replace"},
    {"Create", R"(-a -mz -k  C:\a.cab C:\base\ a.txt)", "pack add hidden method=1"},
    {"CreateRecursively", R"(-a -mz -k -r   C:\a.cab C:\base\ a.txt)", "pack add recurse hidden method=1"},
};
constexpr LineCase kCommandRows[] = {
    {"X", "-x a.cab", "unpack ask"},
    {"L", "-l a.cab", "list"},
    {"T", "-t a.cab", "test"},
    {"C", "-c a.cab", "test"},
    {"SelfExtractor", "-f a.cab", "0x8023"},
    {"CaseDoesNotCount", "-X a.cab", "unpack ask"},
    {"WithoutHyphen", "x a.cab", "0x801C"},
    {"Unknown", "-q a.cab", "0x801C"},
    {"Nothing", "", "0x801C"},
    {"NoArchive", "-x -v", "0x8019"},
    {"NoArchiveToMake", "-a -mz", "0x8019"},
};
constexpr LineCase kSwitchRows[] = {
    {"Flat", "-x -j a.cab", "unpack flat ask"},
    {"Overwrite", "-x -o a.cab", "unpack replace"},
    {"NoProgress", "-t -i a.cab", "test no-progress"},
    {"NoNames", "-t -n a.cab", "test quiet"},
    {"Recursion", "-x -r a.cab", "unpack ask"},
    {"Set", "-x -k a.cab", "unpack ask"},
    {"Verbose", "-x -v a.cab", "unpack ask"},
    {"MsZip", "-t -mz a.cab", "test"},
    {"Stored", "-t -mn a.cab", "test"},
    {"StoredToo", "-t -ms a.cab", "test"},
    {"Lzx", "-t -ml a.cab", "test"},
    {"LzxLeast", "-t -ml:15 a.cab", "test"},
    {"LzxMost", "-t -ml:21 a.cab", "test"},
    {"LzxTooLittle", "-t -ml:14 a.cab", "0x801C"},
    {"LzxTooMuch", "-t -ml:22 a.cab", "0x801C"},
    {"LzxNoNumber", "-t -ml:1x a.cab", "0x801C"},
    {"LzxWithoutNumber", "-t -ml: a.cab", "0x801C"},
    {"CaseDoesNotCount", "-x -J -O a.cab", "unpack flat replace"},
    {"PackByDefault", "-a a.cab a.txt", "pack add hidden method=1"},
    {"PackStored", "-a -mn a.cab a.txt", "pack add hidden method=0"},
    {"PackStoredToo", "-a -ms a.cab a.txt", "pack add hidden method=0"},
    {"PackByLzx", "-a -ml a.cab a.txt", "0x8023"},
    {"PackByLzxWithWindow", "-a -ml:21 a.cab a.txt", "0x8023"},
    {"TheLastMethodCounts", "-a -ml -mz a.cab a.txt", "pack add hidden method=1"},
    {"PackFlat", "-a -j a.cab a.txt", "pack add hidden flat method=1"},
    {"PackQuietly", "-a -i -n a.cab a.txt", "pack add hidden method=1 no-progress quiet"},
    {"PackByExpressions", "-a -w a.cab a.*", "0x8023"},
    {"NoResponseFileOfSources", "-a a.cab @no-such-file", "0x802A"},
    {"Unknown", "-x -z a.cab", "0x801C"},
    {"NotJoined", "-x -jo a.cab", "0x801C"},
    {"HyphenAlone", "-x - a.cab", "0x801C"},
    {"NoResponseFile", "-x a.cab @no-such-file", "0x802A"},
    {"NoResponseFileOfExpressions", "-x -w a.cab @no-such-file", "0x802A"},
    {"BadExpression", "-x -w a.cab a(b", "0x801C"},
};
const auto kNameOf = [](const auto& each) { return std::string(each.param.name); };
INSTANTIATE_TEST_SUITE_P(Built, CabLines, ::testing::ValuesIn(kBuilt), kNameOf);
INSTANTIATE_TEST_SUITE_P(Commands, CabLines, ::testing::ValuesIn(kCommandRows), kNameOf);
INSTANTIATE_TEST_SUITE_P(Switches, CabLines, ::testing::ValuesIn(kSwitchRows), kNameOf);

TEST(CabLanguage, TakesArchiveAndTargetByTheirPlace) {
    const Command command = commandOf(kCabLanguage, R"( -x -v "C:\my files\a" "C:\my dir\" *.*)");
    EXPECT_EQ(command.archive, std::filesystem::path(R"(C:\my files\a.cab)")) << "without an extension";
    EXPECT_EQ(command.options.target, std::filesystem::path(R"(C:\my dir)"));
    EXPECT_FALSE(command.namesGiven);
}

TEST(CabLanguage, TakesBaseAndSources) {
    const Command command =
        commandOf(kCabLanguage, R"(-a -mz -k -r  "C:\my files\a.cab" "C:\my dir\" docs\a.txt sub\)");
    EXPECT_EQ(command.archive, std::filesystem::path(R"(C:\my files\a.cab)"));
    EXPECT_EQ(command.pack.base, std::filesystem::path(R"(C:\my dir)"));
    EXPECT_EQ(command.pack.names, (std::vector<std::string>{"docs/a.txt", "sub/"}));
}

TEST(CabLanguage, TakesTheBaseForASeparatorAlone) {
    EXPECT_EQ(commandOf(kCabLanguage, R"(-a -r a.cab C:\base\ \)").pack.names, std::vector<std::string>{"."})
        << "not the root of the disk";
}

TEST(CabLanguage, ReadsListsOfSources) {
    const ScratchFile list("cab sources.lst", "\"my file.txt\"\r\ndocs\\\r\na.txt\r\n");
    EXPECT_EQ(commandOf(kCabLanguage, "-a -mz -k  a.cab base\\ @\"" + list.name() + "\"").pack.names,
              (std::vector<std::string>{"my file.txt", "docs/", "a.txt"}));
}

const std::vector<std::string> kMembers = {"setup.exe", "docs\\readme.txt", "docs\\old\\readme.1st", "data10.bin"};

std::vector<std::string> chosen(const std::string& line) { return chosenOf(kCabLanguage, line, kMembers); }
std::vector<std::string> members(std::initializer_list<std::size_t> indexes) {
    std::vector<std::string> names;
    for (const std::size_t index : indexes) names.push_back(kMembers[index]);
    return names;
}

TEST(CabLanguage, ComparesNames) {
    EXPECT_EQ(chosen("-x a.cab readme.*"), members({1, 2}));
    EXPECT_EQ(chosen("-x a.cab docs/readme.*"), members({1}));
    EXPECT_EQ(chosen("-x a.cab docs/*.*"), members({1, 2}));
    EXPECT_EQ(chosen("-x a.cab"), kMembers);
}

TEST(CabLanguage, ComparesByExpressions) {
    EXPECT_EQ(chosen(R"(-x -w a.cab C:\out\ README\..*)"), members({1, 2}));
    EXPECT_EQ(commandOf(kCabLanguage, R"(-x -w a.cab C:\out\ a)").options.target, std::filesystem::path(R"(C:\out)"));
    EXPECT_EQ(chosen("-x -w a.cab docs/[a-z.]+"), members({1})) << "a whole path";
    EXPECT_EQ(chosen("-x -w a.cab data[0-9]+.bin setup.exe"), members({0, 3}));
    EXPECT_EQ(chosen("-x -w a.cab"), kMembers);
    const ScratchFile list("cab names.lst", "data1?.*\r\n");
    EXPECT_EQ(chosen("-x -w a.cab @\"" + list.name() + "\""), members({3}));
    const ScratchFile empty("cab no names.lst", "\r\n");
    EXPECT_EQ(chosen("-x -w a.cab @\"" + empty.name() + "\""), members({}));
}

TEST(CabLanguage, ReadsLists) {
    const ScratchFile list("cab names.lst", "docs/old/*.*\r\n\"setup.exe\"");
    EXPECT_EQ(chosen("-x a.cab @\"" + list.name() + "\""), members({0, 2}));
}

}  // namespace
}  // namespace archiver
