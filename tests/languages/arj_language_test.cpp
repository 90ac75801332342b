#include "archivers/unarj32j/arj_language.h"

#include <gtest/gtest.h>

#include "archivers/formats/arj/arj_reader.h"
#include "archivers/scratch_file.h"
#include "languages/support/described.h"

namespace archiver {
namespace {

using testing::chosenOf;
using testing::commandOf;
using testing::described;
using testing::LineCase;
using testing::ScratchFile;

class ArjLines : public ::testing::TestWithParam<LineCase> {};

TEST_P(ArjLines, AreUnderstood) { EXPECT_EQ(described(kArjLanguage, GetParam().line), GetParam().expected); }

constexpr LineCase kBuilt[] = {
    {"Extract", R"( x -i- -y+ -!@ C:\a.arj C:\out\ *.*)", "unpack replace no-space-check"},
    {"ExtractFlat", R"( e -i- -y+ -!@ C:\a.arj C:\out\ *.*)", "unpack flat replace no-space-check"},
    {"ExtractOverwriting", R"( x -i- -y+ -!@ -y+ C:\a.arj C:\out\ *.*)", "unpack replace no-space-check"},
    {"ExtractFlatOverwriting", R"( e -i- -y+ -!@ -y+ C:\a.arj C:\out\ *.*)", "unpack flat replace no-space-check"},
};
constexpr LineCase kCommandRows[] = {
    {"X", "x a.arj", "unpack ask"},
    {"Xv", "xv a.arj", "unpack ask"},
    {"E", "e a.arj", "unpack flat ask"},
    {"Ev", "ev a.arj", "unpack flat ask"},
    {"T", "t a.arj", "test"},
    {"L", "l a.arj", "list"},
    {"V", "v a.arj", "list-verbose"},
    {"Lv", "lv a.arj", "list-verbose"},
    {"CaseDoesNotCount", "X a.arj", "unpack ask"},
    {"Unknown", "q a.arj", "0x801C"},
    {"Hyphen", "-x a.arj", "0x801C"},
    {"Nothing", "", "0x801C"},
    {"NoArchive", "x -y", "0x8019"},
};
constexpr LineCase kSwitchRows[] = {
    {"NoDialog", "t -i a.arj", "test no-progress"},
    {"NoDialogOn", "t -i+ a.arj", "test no-progress"},
    {"NoDialogOff", "t -i- a.arj", "test"},
    {"Yes", "x -y a.arj", "unpack replace no-space-check"},
    {"YesOff", "x -y- a.arj", "unpack ask"},
    {"YesOffComesLast", "x -y+ -y- a.arj", "unpack ask"},
    {"CaseDoesNotCount", "x -Y+ a.arj", "unpack replace no-space-check"},
    {"YesToReplace", "x -jyo a.arj", "unpack replace"},
    {"YesToFolders", "x -jyc a.arj", "unpack ask"},
    {"Password", "x -gSecret a.arj", "unpack ask password=Secret"},
    {"PasswordToBeAskedFor", "x -g a.arj", "unpack ask"},
    {"NoSettings", "x -++ a.arj", "unpack ask no-settings"},
    {"WholePaths", "x -p a.arj", "unpack ask"},
    {"AnyDepth", "x -p -r a.arj", "unpack ask"},
    {"Volumes", "x -v a.arj", "unpack ask"},
    {"AllChapters", "l -jb* a.arj", "list"},
    {"ListMark", "x -! a.arj", "unpack ask"},
    {"ListMarkOfTwo", "x -!@@ a.arj", "0x801C"},
    {"Unknown", "x -z a.arj", "0x801C"},
    {"UnknownOfTwo", "x -jz a.arj", "0x801C"},
    {"NotJoined", "x -iy a.arj", "0x801C"},
    {"HyphenAlone", "x - a.arj", "0x801C"},
    {"NoResponseFile", "x a.arj !no-such-file", "0x802A"},
};
const auto kNameOf = [](const auto& each) { return std::string(each.param.name); };
INSTANTIATE_TEST_SUITE_P(Built, ArjLines, ::testing::ValuesIn(kBuilt), kNameOf);
INSTANTIATE_TEST_SUITE_P(Commands, ArjLines, ::testing::ValuesIn(kCommandRows), kNameOf);
INSTANTIATE_TEST_SUITE_P(Switches, ArjLines, ::testing::ValuesIn(kSwitchRows), kNameOf);

TEST(ArjLanguage, TakesArchiveAndTargetByTheirPlace) {
    const Command command = commandOf(kArjLanguage, R"( x -i- -y+ -!@ "C:\my files\a" "C:\my dir\" *.*)");
    EXPECT_EQ(command.archive, std::filesystem::path(R"(C:\my files\a.arj)")) << "without an extension";
    EXPECT_EQ(command.options.target, std::filesystem::path(R"(C:\my dir)"));
    EXPECT_FALSE(command.namesGiven);
}

const std::vector<std::string> kMembers = {"readme.txt", "docs\\readme.txt", "docs\\old\\readme.txt", "-y", "@list"};

TEST(ArjLanguage, ComparesNames) {
    EXPECT_EQ(chosenOf(kArjLanguage, "x a.arj Readme.txt", kMembers),
              (std::vector<std::string>{kMembers[0], kMembers[1], kMembers[2]}));
    EXPECT_EQ(chosenOf(kArjLanguage, "x -p a.arj readme.txt", kMembers), (std::vector<std::string>{kMembers[0]}));
    EXPECT_EQ(chosenOf(kArjLanguage, "x -p -r a.arj docs/readme.txt", kMembers),
              (std::vector<std::string>{kMembers[1], kMembers[2]}));
    EXPECT_EQ(chosenOf(kArjLanguage, "x a.arj docs/*.*", kMembers),
              (std::vector<std::string>{kMembers[1], kMembers[2]}));
}

TEST(ArjLanguage, TakesNamesThatBeginWithTheSignOfSwitches) {
    EXPECT_EQ(chosenOf(kArjLanguage, "x a.arj -hb-y", kMembers), (std::vector<std::string>{"-y"}));
    EXPECT_EQ(commandOf(kArjLanguage, "x -i -hb-odd.arj").archive, std::filesystem::path("-odd.arj"));
    EXPECT_EQ(described(kArjLanguage, "x -hb"), "0x801C");
}

TEST(ArjLanguage, ReadsListsBehindTheirMark) {
    const ScratchFile list("arj names.lst", "docs/readme.txt\r\n\"-y\"\r\n");
    const std::vector<std::string> listed = {"docs\\readme.txt", "-y"};
    EXPECT_EQ(chosenOf(kArjLanguage, "x a.arj !\"" + list.name() + "\"", kMembers), listed);
    EXPECT_EQ(chosenOf(kArjLanguage, "x -!@ a.arj @\"" + list.name() + "\"", kMembers), listed);
    EXPECT_EQ(chosenOf(kArjLanguage, "x a.arj @list", kMembers), (std::vector<std::string>{"@list"}))
        << "no list without the switch";
}

/// An archive that remembers which chapters were asked for.
class FakeArj final : public ArjArchive {
public:
    [[nodiscard]] const ArchiveFacts& facts() const override { return facts_; }
    ReturnCode next(Member&) override { return kNoMoreEntries; }
    ReturnCode restart() override { return kOk; }
    ReturnCode read(const DataSink&) override { return kOk; }
    void setChapters(Chapters chapters) override { chapters_ = chapters; }
    [[nodiscard]] std::string comment() const override { return {}; }
    [[nodiscard]] std::string memberComment() const override { return {}; }
    Chapters chapters_ = Chapters::kNewest;

private:
    ArchiveFacts facts_;
};

TEST(ArjLanguage, AsksForAllChaptersWithTheSwitch) {
    FakeArj archive;
    EXPECT_FALSE(commandOf(kArjLanguage, "l a.arj").prepare);
    const Command command = commandOf(kArjLanguage, "l -JB* a.arj");
    ASSERT_TRUE(command.prepare);
    command.prepare(archive);
    EXPECT_EQ(archive.chapters_, ArjArchive::Chapters::kAll);
}

}  // namespace
}  // namespace archiver
