#include "archivers/unzip32/unzip_language.h"

#include <gtest/gtest.h>

#include "commands/latin1_codec.h"
#include "commands/scratch_folder.h"

namespace archiver {
namespace {

using std::string_view_literals::operator""sv;

class UnZipLanguage : public ::testing::Test {
protected:
    Command parse(std::string_view line) {
        auto parsed = parseUnZip(line, codec_);
        const auto* const code = std::get_if<ReturnCode>(&parsed);
        EXPECT_EQ(code, nullptr) << line << ": " << (code == nullptr ? 0 : *code);
        return code == nullptr ? std::get<Command>(std::move(parsed)) : Command();
    }
    ReturnCode refusal(std::string_view line) {
        const auto parsed = parseUnZip(line, codec_);
        const auto* const code = std::get_if<ReturnCode>(&parsed);
        return code == nullptr ? kOk : *code;
    }
    static bool takes(const Command& command, const char* name) {
        Member member;
        member.name = name;
        return !command.chosen || command.chosen(member);
    }

    testing::ScratchFolder folder_{"unzip-language"};
    testing::Latin1Codec codec_;
};

// The lines that the component builds.

TEST_F(UnZipLanguage, ExtractsWithFolders) {
    const Command command = parse(" -x -i --j C:\\a.zip out\\ *.*");
    EXPECT_EQ(command.action, Command::Action::kUnpack);
    EXPECT_TRUE(command.options.keepFolders);
    EXPECT_EQ(command.options.existing, ExistingFiles::kAsk);
    EXPECT_TRUE(command.showProgress);
    EXPECT_EQ(command.archive, std::filesystem::path("C:\\a.zip"));
    EXPECT_EQ(command.options.target, "out");
    EXPECT_FALSE(command.namesGiven);
}

TEST_F(UnZipLanguage, ExtractsFlat) {
    const Command command = parse(R"( -x -i -j "a b.zip" "my out\" docs/*.* "x y.txt")");
    EXPECT_FALSE(command.options.keepFolders);
    EXPECT_EQ(command.archive, "a b.zip");
    EXPECT_EQ(command.options.target, "my out");
    EXPECT_TRUE(takes(command, "docs/deep/file"));
    EXPECT_TRUE(takes(command, "x y.txt"));
    EXPECT_FALSE(takes(command, "z"));
}

TEST_F(UnZipLanguage, Overwrites) {
    const Command command = parse(" -x -i --j -o a.zip out/ *.*");
    EXPECT_EQ(command.options.existing, ExistingFiles::kReplace);
    EXPECT_EQ(command.archive, "a.zip");
}

TEST_F(UnZipLanguage, ExtractsAList) {
    folder_.write("VTL1.tmp", "docs/*.*\r\n\"a b.txt\"\r\n");
    const Command command = parse(" -x -i --j a.zip out/ @VTL1.tmp");
    EXPECT_TRUE(command.namesGiven);
    EXPECT_TRUE(takes(command, "docs/x/y"));
    EXPECT_TRUE(takes(command, "a b.txt"));
    EXPECT_FALSE(takes(command, "a"));
}

TEST_F(UnZipLanguage, ListsAnArchiveWithoutQuotes) {
    folder_.write("my files/a b.zip", "x");
    const Command command = parse("-l my files/a b.zip");
    EXPECT_EQ(command.action, Command::Action::kList);
    EXPECT_EQ(command.form, static_cast<int>(UnZipForm::kTable));
    EXPECT_EQ(command.archive.generic_string(), "my files/a b.zip");
    EXPECT_FALSE(command.namesGiven);
}

TEST_F(UnZipLanguage, ListsChosenMembers) {
    folder_.write("a", "x");
    const Command command = parse("-l a.zip b");
    EXPECT_EQ(command.archive, "a.zip");
    EXPECT_TRUE(takes(command, "b"));
    EXPECT_FALSE(takes(command, "c"));
}

// Commands.

struct ActionCase {
    const char* name;
    const char* line;
    Command::Action action;
    UnZipForm form = UnZipForm::kTable;
};

class UnZipActions : public UnZipLanguage, public ::testing::WithParamInterface<ActionCase> {};

TEST_P(UnZipActions, AreKnown) {
    const Command command = parse(GetParam().line);
    EXPECT_EQ(command.action, GetParam().action);
    EXPECT_EQ(command.form, static_cast<int>(GetParam().form));
    EXPECT_EQ(command.archive, "a.zip");
}

INSTANTIATE_TEST_SUITE_P(
    Lines, UnZipActions,
    ::testing::Values(ActionCase{"None", "a.zip", Command::Action::kUnpack},
                      ActionCase{"Extract", "-x a.zip", Command::Action::kUnpack},
                      ActionCase{"ExtractVerbose", "-xv a.zip", Command::Action::kUnpack},
                      ActionCase{"List", "-l a.zip", Command::Action::kList},
                      ActionCase{"ListShort", "-lv a.zip", Command::Action::kList, UnZipForm::kShort},
                      ActionCase{"ListVerbose", "-v a.zip", Command::Action::kListVerbose, UnZipForm::kVerbose},
                      ActionCase{"Test", "-t a.zip", Command::Action::kTest},
                      ActionCase{"Update", "-u a.zip", Command::Action::kUnpack},
                      ActionCase{"Freshen", "-f a.zip", Command::Action::kUnpack},
                      ActionCase{"Print", "-c a.zip", Command::Action::kPrint},
                      ActionCase{"PrintBytes", "-p a.zip", Command::Action::kPrint},
                      ActionCase{"Comment", "-z a.zip", Command::Action::kComment},
                      ActionCase{"CommentToo", "-Z a.zip", Command::Action::kComment}),
    [](const auto& each) { return std::string(each.param.name); });

// Options, one by one.

TEST_F(UnZipLanguage, KnowsWhatBecomesOfExistingFiles) {
    EXPECT_EQ(parse("-x a.zip").options.existing, ExistingFiles::kAsk);
    EXPECT_EQ(parse("-x -o a.zip").options.existing, ExistingFiles::kReplace);
    EXPECT_EQ(parse("-x -o --o a.zip").options.existing, ExistingFiles::kAsk);
    EXPECT_EQ(parse("-x -n a.zip").options.existing, ExistingFiles::kKeep);
    EXPECT_EQ(parse("-x -n -o a.zip").options.existing, ExistingFiles::kKeep) << "the careful one counts";
    EXPECT_EQ(parse("-x -n --n a.zip").options.existing, ExistingFiles::kAsk);
}

TEST_F(UnZipLanguage, UpdatesAndFreshens) {
    const Command update = parse("-u -o a.zip");
    EXPECT_TRUE(update.options.onlyNewer);
    EXPECT_FALSE(update.options.onlyExisting);
    EXPECT_EQ(update.options.existing, ExistingFiles::kReplace);
    const Command freshen = parse("-x -f a.zip");
    EXPECT_TRUE(freshen.options.onlyNewer);
    EXPECT_TRUE(freshen.options.onlyExisting);
    EXPECT_FALSE(parse("-x a.zip").options.onlyNewer);
}

TEST_F(UnZipLanguage, KnowsFoldersAndTheirNegation) {
    EXPECT_TRUE(parse("-x a.zip").options.keepFolders);
    EXPECT_FALSE(parse("-x -j a.zip").options.keepFolders);
    EXPECT_TRUE(parse("-x -j --j a.zip").options.keepFolders);
}

TEST_F(UnZipLanguage, KnowsTheProgressDialogAndItsNegation) {
    EXPECT_TRUE(parse("-x a.zip").showProgress);
    EXPECT_TRUE(parse("-x -i a.zip").showProgress);
    EXPECT_FALSE(parse("-x --i a.zip").showProgress);
}

TEST_F(UnZipLanguage, ChangesNames) {
    EXPECT_TRUE(parse("-x -s a.zip").options.blanksToUnderscores);
    EXPECT_FALSE(parse("-x a.zip").options.blanksToUnderscores);
    EXPECT_TRUE(parse("-x -L a.zip").options.lowerCaseNames);
    EXPECT_FALSE(parse("-x -L --L a.zip").options.lowerCaseNames);
}

TEST_F(UnZipLanguage, TakesAPassword) {
    EXPECT_EQ(parse("-x -Psecret a.zip").password, "secret");
    EXPECT_EQ(parse("-x -P\"two words\" a.zip").password, "two words");
    EXPECT_EQ(parse("-x a.zip").password, "");
}

TEST_F(UnZipLanguage, IsQuiet) {
    EXPECT_TRUE(parse("-x a.zip").showNames);
    for (const char* line : {"-x -q a.zip", "-x -qq a.zip", "-x -qd a.zip"})
        EXPECT_FALSE(parse(line).showNames) << line;
}

TEST_F(UnZipLanguage, PrintsWithAndWithoutNames) {
    EXPECT_TRUE(parse("-c a.zip").printNames);
    EXPECT_FALSE(parse("-p a.zip").printNames);
}

TEST_F(UnZipLanguage, AcceptsWhatChangesNothing) {
    for (const char* word : {"-C", "-a", "-U", "-V", "-X", "--C"}) {
        EXPECT_EQ(parse(std::string("-x ") + word + " a.zip b").archive, "a.zip") << word;
    }
}

TEST_F(UnZipLanguage, KnowsNoOptionsBehindTheArchive) {
    const Command command = parse("-x a.zip out/ -o --j");
    EXPECT_EQ(command.options.existing, ExistingFiles::kAsk);
    EXPECT_TRUE(takes(command, "-o"));
    EXPECT_FALSE(takes(command, "x"));
}

TEST_F(UnZipLanguage, EndsOptionsByTwoHyphens) { EXPECT_EQ(parse("-x -- -a.zip").archive, "-a.zip"); }

TEST_F(UnZipLanguage, AddsItsExtension) { EXPECT_EQ(parse("-x docs").archive, "docs.zip"); }

TEST_F(UnZipLanguage, HasClassesInPatterns) {
    const Command command = parse("-x a.zip out/ a[1-3].txt [!x]y b[[]z].c");
    for (const char* name : {"a1.txt", "docs/a3.txt", "A[1-3].TXT", "ay", "b[z].c"})
        EXPECT_TRUE(takes(command, name)) << name;
    for (const char* name : {"a4.txt", "xy", "bz].c"}) EXPECT_FALSE(takes(command, name)) << name;
}

// Lines that are none.

TEST_F(UnZipLanguage, RefusesUnknownWords) {
    for (const char* line :
         {"-", "-y a.zip", "-xo a.zip", "-X1 a.zip", "--x a.zip", "--P a.zip", "-x -j- a.zip", "---j a"}) {
        EXPECT_EQ(refusal(line), 0x801C) << line;
    }
}

TEST_F(UnZipLanguage, NeedsAnArchive) {
    for (const char* line : {"", " ", "-x", "-l", " -x -i --j ", "-x --"}) EXPECT_EQ(refusal(line), 0x8019) << line;
}

TEST_F(UnZipLanguage, TellsAListThatIsNotThere) { EXPECT_EQ(refusal("-x a.zip out/ @none"), 0x802A); }

TEST_F(UnZipLanguage, SurvivesNulsAndHugeLines) {
    EXPECT_EQ(parse("-x a.zip\0b"sv).archive, "a.zip");
    EXPECT_EQ(refusal(std::string(3'000'000, '-')), 0x801C);
    EXPECT_EQ(parse("-x a.zip " + std::string(3'000'000, 'n')).archive, "a.zip");
    std::string many = "-x a.zip";
    for (int count = 0; count < 300'000; ++count) many += " n" + std::to_string(count);
    EXPECT_TRUE(takes(parse(many), "n299999"));
}

}  // namespace
}  // namespace archiver
