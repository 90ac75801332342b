#include "archivers/tar32/tar_texts.h"

#include <gtest/gtest.h>

#include "commands/sample_members.h"

namespace archiver {
namespace {

using testing::beginOf;
using testing::endOf;
using testing::folderMember;
using testing::renamedWordsOf;
using testing::rowOf;
using testing::storedMember;
using testing::wordsOf;

class TarTexts : public ::testing::Test {
protected:
    std::string begin(Command::Action action) {
        command_.archive = "my.tar";
        command_.action = action;
        return beginOf(*texts_, command_);
    }
    Command command_;
    std::unique_ptr<CommandTexts> texts_ = tarTexts();
};

TEST_F(TarTexts, List) {
    EXPECT_EQ(begin(Command::Action::kList), "filename\tfilesize\r\n");
    EXPECT_EQ(rowOf(*texts_, folderMember()), "docs/\t0\r\n");
    EXPECT_EQ(rowOf(*texts_, storedMember()), "b.txt\t5\r\n");
    Member member = storedMember();
    member.name = "a\tb\n";
    EXPECT_EQ(rowOf(*texts_, member), "a_b_\t5\r\n");
    EXPECT_EQ(endOf(*texts_, command_, kOk), "");
}

TEST_F(TarTexts, NameWhatIsExtracted) {
    EXPECT_EQ(begin(Command::Action::kUnpack), "");
    EXPECT_EQ(wordsOf(*texts_, folderMember(), MemberOutcome::kFolderMade), "docs/\r\n");
    EXPECT_EQ(wordsOf(*texts_, storedMember(), MemberOutcome::kFolderMade), "") << "a folder that a file needs";
    EXPECT_EQ(wordsOf(*texts_, storedMember(), MemberOutcome::kUnpacked), "b.txt\r\n");
    EXPECT_EQ(renamedWordsOf(*texts_, storedMember()), "b.txt -> x (2).txt\r\n");
    EXPECT_EQ(wordsOf(*texts_, storedMember(), MemberOutcome::kSkipped, kAlreadyExist),
              "b.txt : the file is there already\r\n");
    EXPECT_EQ(endOf(*texts_, command_, kOk), "");
}

TEST_F(TarTexts, TellErrors) {
    begin(Command::Action::kUnpack);
    EXPECT_EQ(wordsOf(*texts_, storedMember(), MemberOutcome::kFailed, kFileCrc),
              "b.txt : TAR32 Error(0x800c): the checksum is wrong\r\n");
    EXPECT_EQ(endOf(*texts_, command_, kFileCrc), "") << "told by its member";
    texts_ = tarTexts();
    begin(Command::Action::kUnpack);
    EXPECT_EQ(endOf(*texts_, command_, kNotExist), "TAR32 Error(0x800f): no such member\r\n");
}

TEST_F(TarTexts, PrintNothingBesideTheBytes) {
    EXPECT_EQ(begin(Command::Action::kPrint), "");
    std::string out;
    texts_->printed(storedMember(), out);
    EXPECT_EQ(out, "");
    EXPECT_EQ(wordsOf(*texts_, storedMember(), MemberOutcome::kUnpacked), "");
}

TEST_F(TarTexts, ExplainAWrongLine) {
    std::string out;
    texts_->refused(nullptr, kCommandName, out);
    EXPECT_EQ(out,
              "TAR32 Error(0x801c): unknown command or switch\r\n"
              "usage: [-]{x|t|p}[f][o][z|B|J|Z|G] [archive] [folder\\] [name ...] [@list]\r\n"
              "  x  extract    t, l  list    p  print to the output\r\n"
              "  f  the archive follows      o  the target folder follows\r\n"
              "  --use-directory=0|1  --confirm-overwrite=0|1  --check-all-path=0|1\r\n"
              "  --display-dialog=0|1  --message-loop=0|1  --inverse-procresult\r\n");
    out.clear();
    command_.archive = "my.tar";
    texts_->refused(&command_, kNotFindArcFile, out);
    EXPECT_EQ(out, "TAR32 Error(0x8029): the archive does not exist : my.tar\r\n");
}

}  // namespace
}  // namespace archiver
