#include "archivers/tar32/tar_language.h"

#include <gtest/gtest.h>

#include "commands/latin1_codec.h"
#include "commands/scratch_folder.h"

namespace archiver {
namespace {

using std::string_view_literals::operator""sv;

class TarLanguage : public ::testing::Test {
protected:
    Command parse(std::string_view line) {
        auto parsed = parseTar(line, codec_);
        const auto* const code = std::get_if<ReturnCode>(&parsed);
        EXPECT_EQ(code, nullptr) << line << ": " << (code == nullptr ? 0 : *code);
        return code == nullptr ? std::get<Command>(std::move(parsed)) : Command();
    }
    ReturnCode refusal(std::string_view line) {
        const auto parsed = parseTar(line, codec_);
        const auto* const code = std::get_if<ReturnCode>(&parsed);
        return code == nullptr ? kOk : *code;
    }
    static bool takes(const MemberFilter& chosen, const char* name) {
        Member member;
        member.name = name;
        return !chosen || chosen(member);
    }

    testing::ScratchFolder folder_{"tar-language"};
    testing::Latin1Codec codec_;
};

// The lines that the component builds.

TEST_F(TarLanguage, UnpacksAll) {
    const Command command = parse(R"( xvfo "my files/a.tgz" "my out\" *.*)");
    EXPECT_EQ(command.action, Command::Action::kUnpack);
    EXPECT_EQ(command.archive, "my files/a.tgz");
    EXPECT_EQ(command.options.target, "my out");
    EXPECT_EQ(command.options.existing, ExistingFiles::kReplace);
    EXPECT_TRUE(command.options.keepFolders);
    EXPECT_FALSE(command.namesGiven);
    EXPECT_TRUE(command.furtherParts.empty());
}

TEST_F(TarLanguage, UnpacksAList) {
    folder_.write("VTL1.tmp", "docs/*.*\r\n\"a b.txt\"\r\n-x.txt\r\n--y\r\n@z\r\n");
    const Command command = parse(" xvfoa a.tar out\\ @VTL1.tmp");
    EXPECT_EQ(command.options.target, "out");
    EXPECT_TRUE(command.namesGiven);
    for (const char* name : {"docs/x/y", "a b.txt", "-x.txt", "--y", "@z"})
        EXPECT_TRUE(takes(command.chosen, name)) << name;
    EXPECT_FALSE(takes(command.chosen, "a"));
    EXPECT_TRUE(command.furtherParts.empty());
}

TEST_F(TarLanguage, UnpacksOneMember) {
    const Command command = parse(" xvfo a.tar out\\ dir/name");
    EXPECT_TRUE(takes(command.chosen, "dir/name"));
    EXPECT_FALSE(takes(command.chosen, "name"));
}

TEST_F(TarLanguage, ChoosesNothingByAnEmptyList) {
    folder_.write("list", "");
    const Command command = parse("xvfo a.tar out/ @list");
    EXPECT_EQ(command.options.target, "out");
    EXPECT_TRUE(command.namesGiven);
    EXPECT_FALSE(takes(command.chosen, "a"));
    EXPECT_TRUE(command.furtherParts.empty());
}

// Letters.

struct LetterCase {
    const char* name;
    const char* line;
    Command::Action action = Command::Action::kUnpack;
    const char* target = "";
};

class TarLetters : public TarLanguage, public ::testing::WithParamInterface<LetterCase> {};

TEST_P(TarLetters, AreKnown) {
    const Command command = parse(GetParam().line);
    EXPECT_EQ(command.action, GetParam().action);
    EXPECT_EQ(command.archive, "a.tar");
    EXPECT_EQ(command.options.target, GetParam().target);
    EXPECT_FALSE(command.namesGiven);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, TarLetters,
    ::testing::Values(LetterCase{"Extract", "x a.tar"}, LetterCase{"WithHyphen", "-x a.tar"},
                      LetterCase{"WithFile", "xf a.tar"}, LetterCase{"FileAndFolder", "xfo a.tar out", {}, "out"},
                      LetterCase{"FolderAndFile", "xof out a.tar", {}, "out"},
                      LetterCase{"FolderAloneFirst", "xo out a.tar", {}, "out"},
                      LetterCase{"FolderBehind", "xf a.tar out/", {}, "out"},
                      LetterCase{"FolderBehindBackslash", "x a.tar out\\", {}, "out"},
                      LetterCase{"ListT", "tf a.tar", Command::Action::kList},
                      LetterCase{"ListL", "lvf a.tar", Command::Action::kList},
                      LetterCase{"Print", "pf a.tar", Command::Action::kPrint}, LetterCase{"Gzip", "xzf a.tar"},
                      LetterCase{"GzipLevel", "xz9f a.tar"}, LetterCase{"Bzip2", "xBf a.tar"},
                      LetterCase{"Bzip2J", "xjf a.tar"}, LetterCase{"Xz", "xJf a.tar"},
                      LetterCase{"Compress", "xZf a.tar"}, LetterCase{"NoWrapper", "xGf a.tar"},
                      LetterCase{"Ignored", "xvVIiegSRaf a.tar"}, LetterCase{"OneCharacterOfA", "xA0f a.tar"},
                      LetterCase{"AAtTheEnd", "xfA a.tar"}, LetterCase{"ArgumentOfB", "xbf 20 a.tar"},
                      LetterCase{"ArgumentOfN", "xfN a.tar 20010517"}, LetterCase{"LettersInTwoWords", "-x -vf a.tar"},
                      LetterCase{"OptionInFront", "--display-dialog=1 xf a.tar"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(TarLanguage, PrintsBytesAlone) { EXPECT_FALSE(parse("pf a.tar").printNames); }

TEST_F(TarLanguage, PutsMembersIntoSeveralFolders) {
    const Command command = parse("xf a.tar x.txt one/ a.txt b.txt two\\ c.txt three/");
    EXPECT_EQ(command.options.target, "");
    EXPECT_TRUE(takes(command.chosen, "x.txt"));
    EXPECT_FALSE(takes(command.chosen, "a.txt"));
    ASSERT_EQ(command.furtherParts.size(), 2U);
    EXPECT_EQ(command.furtherParts[0].target, "one");
    EXPECT_TRUE(takes(command.furtherParts[0].chosen, "b.txt"));
    EXPECT_FALSE(takes(command.furtherParts[0].chosen, "c.txt"));
    EXPECT_TRUE(command.furtherParts[0].namesGiven);
    EXPECT_EQ(command.furtherParts[1].target, "two");
    EXPECT_TRUE(takes(command.furtherParts[1].chosen, "c.txt"));
}

TEST_F(TarLanguage, TakesTheLastOfSeveralFoldersInARow) {
    const Command command = parse("xf a.tar one/ two/");
    EXPECT_EQ(command.options.target, "two");
    EXPECT_TRUE(command.furtherParts.empty());
}

TEST_F(TarLanguage, TakesWordsOfAFileAnywhere) {
    folder_.write("list", "xf\r\na.tar out/\r\n");
    const Command command = parse("@list b.txt");
    EXPECT_EQ(command.archive, "a.tar");
    EXPECT_EQ(command.options.target, "out");
    EXPECT_TRUE(takes(command.chosen, "b.txt"));
    EXPECT_FALSE(takes(command.chosen, "c.txt"));
}

// Long options.

TEST_F(TarLanguage, KnowsLongOptions) {
    EXPECT_FALSE(parse("--use-directory=0 xf a.tar").options.keepFolders);
    EXPECT_TRUE(parse("xf --use-directory=1 a.tar").options.keepFolders);
    EXPECT_TRUE(parse("--use-directory xf a.tar").options.keepFolders);
    EXPECT_FALSE(parse("xf a.tar --display-dialog=0").showProgress);
    EXPECT_TRUE(parse("xf a.tar --display-dialog=1").showProgress);
    EXPECT_FALSE(parse("--message-loop=0 xf a.tar").pumpMessages);
    EXPECT_TRUE(parse("--message-loop=1 xf a.tar").pumpMessages);
    EXPECT_TRUE(parse("--inverse-procresult xf a.tar").invertCallback);
    EXPECT_FALSE(parse("xf a.tar").invertCallback);
    EXPECT_EQ(parse("--confirm-overwrite=1 xf a.tar").options.existing, ExistingFiles::kAsk);
    EXPECT_EQ(parse("--confirm-overwrite=0 xf a.tar").options.existing, ExistingFiles::kReplace);
    EXPECT_EQ(parse("--absolute-paths xf a.tar").archive, "a.tar");
    EXPECT_EQ(parse("--bzip2=9 xf a.tar").archive, "a.tar");
}

TEST_F(TarLanguage, ComparesWholePathsWhenTold) {
    EXPECT_TRUE(takes(parse("xf a.tar b.txt").chosen, "docs/b.txt"));
    EXPECT_FALSE(takes(parse("--check-all-path=1 xf a.tar b.txt").chosen, "docs/b.txt"));
    EXPECT_TRUE(takes(parse("--check-all-path=0 xf a.tar b.txt").chosen, "docs/b.txt"));
}

TEST_F(TarLanguage, EndsOptionsByTwoHyphens) {
    const Command command = parse("xf a.tar -- -x --use-directory=0");
    EXPECT_TRUE(command.options.keepFolders);
    EXPECT_TRUE(takes(command.chosen, "-x"));
    EXPECT_FALSE(takes(command.chosen, "y"));
}

// Lines that are none.

TEST_F(TarLanguage, RefusesUnknownLettersAndOptions) {
    for (const char* line :
         {"", "  ", "y a.tar", "xk a.tar", "xf a.tar -k", "vf a.tar", "--unknown xf a.tar", "a.tar"}) {
        EXPECT_EQ(refusal(line), 0x801C) << line;
    }
}

TEST_F(TarLanguage, NeedsAnArchive) {
    for (const char* line : {"x", "xvfo", "xo out/", "xf \"\""}) EXPECT_EQ(refusal(line), 0x8019) << line;
}

TEST_F(TarLanguage, DoesNotWrite) { EXPECT_EQ(refusal("cvf a.tar b.txt"), 0x8023); }

TEST_F(TarLanguage, TellsAListThatIsNotThere) { EXPECT_EQ(refusal("xvfo a.tar out/ @none"), 0x802A); }

TEST_F(TarLanguage, SurvivesNulsAndHugeLines) {
    EXPECT_EQ(parse("xf a.tar\0b"sv).archive, "a.tar");
    EXPECT_EQ(parse("x" + std::string(3'000'000, 'v') + "f a.tar").archive, "a.tar");
    EXPECT_EQ(refusal("x" + std::string(1'000'000, 'f')), 0x8019);
}

}  // namespace
}  // namespace archiver
