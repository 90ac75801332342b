#include "archivers/unzip32/unzip_texts.h"

#include <gtest/gtest.h>

#include "archivers/unzip32/unzip_language.h"
#include "commands/sample_members.h"

namespace archiver {
namespace {

using testing::beginOf;
using testing::endOf;
using testing::folderMember;
using testing::packedMember;
using testing::renamedWordsOf;
using testing::rowOf;
using testing::storedMember;
using testing::wordsOf;
using Action = Command::Action;

class UnZipTexts : public ::testing::Test {
protected:
    std::string begin(Action action, UnZipForm form = UnZipForm::kTable, bool showNames = true) {
        command_.archive = "my.zip";
        command_.options.target = "out";
        command_.action = action;
        command_.form = static_cast<int>(form);
        command_.showNames = showNames;
        return beginOf(*texts_, command_);
    }
    Command command_;
    std::unique_ptr<CommandTexts> texts_ = unZipTexts();
};

TEST_F(UnZipTexts, ListATable) {
    EXPECT_EQ(begin(Action::kList),
              "  Name          Original    Packed  Ratio   Date     Time   Attr Method   CRC-32\n"
              "--------------  --------  -------- ------ -------- -------- ---- -------- --------\n");
    Member member = packedMember();
    member.name = "testunrar.rar";
    EXPECT_EQ(rowOf(*texts_, member),
              "testunrar.rar      62459     61989   0.8% 01-05-17  17:30:58 a--w Deflate bb161e23\n");
    EXPECT_EQ(rowOf(*texts_, storedMember()),
              "b.txt                  5        17   0.0% 01-05-17  17:30:58 a--- Stored  0000001a\n");
    EXPECT_EQ(rowOf(*texts_, folderMember()),
              "docs/                  0         0   0.0% 01-05-17  17:30:58 d--w Stored  00000000\n");
    member.name = "docs/a long name.txt";
    member.originalSize = 72991;
    member.packedSize = 22533;
    EXPECT_EQ(rowOf(*texts_, member),
              "docs/a long name.txt     72991     22533  69.1% 01-05-17  17:30:58 a--w Deflate bb161e23\n");
    EXPECT_EQ(endOf(*texts_, command_, kOk),
              "--------------  --------  -------- ------ --------\n"
              "     4 files      135455     84539   37.6%\n");
}

TEST_F(UnZipTexts, KeepARowInItsLine) {
    begin(Action::kList);
    Member member = storedMember();
    member.name = "a\nb";
    EXPECT_EQ(rowOf(*texts_, member).substr(0, 14), "a_b           ");
}

TEST_F(UnZipTexts, SurviveClaims) {
    begin(Action::kList);
    Member member = packedMember();
    member.name = "x";
    member.originalSize = UINT64_MAX;
    member.packedSize = 1;
    const std::string row =
        "x               18446744073709551615         1 100.0% 01-05-17  17:30:58 a--w Deflate bb161e23\n";
    EXPECT_EQ(rowOf(*texts_, member), row);
    EXPECT_EQ(rowOf(*texts_, member), row);
    EXPECT_EQ(endOf(*texts_, command_, kOk),
              "--------------  --------  -------- ------ --------\n"
              "     2 files  18446744073709551615         2  100.0%\n");
}

TEST_F(UnZipTexts, ListInTheOtherForms) {
    EXPECT_EQ(begin(Action::kList, UnZipForm::kShort),
              "Archive:  my.zip\n"
              "  Length      Date    Time    Name\n"
              "---------  ---------- -----   ----\n");
    EXPECT_EQ(rowOf(*texts_, packedMember()), "    62459  2001-05-17 17:30   docs/a long name.txt\n");
    EXPECT_EQ(endOf(*texts_, command_, kOk),
              "---------                     -------\n"
              "    62459                     1 file\n");
    texts_ = unZipTexts();
    EXPECT_EQ(begin(Action::kListVerbose, UnZipForm::kVerbose),
              "Archive:  my.zip\n"
              " Length   Method      Size Cmpr    Date    Time   CRC-32   Name\n"
              "--------  ------- -------- ---- ---------- ----- --------  ----\n");
    EXPECT_EQ(rowOf(*texts_, packedMember()),
              "   62459  Deflate    61989   1% 2001-05-17 17:30 bb161e23  docs/a long name.txt\n");
    EXPECT_EQ(rowOf(*texts_, storedMember()), "       5  Stored        17   0% 2001-05-17 17:30 0000001a  b.txt\n");
    EXPECT_EQ(endOf(*texts_, command_, kOk),
              "--------          -------- ----                            -------\n"
              "   62464             62006   1%                            2 files\n");
}

TEST_F(UnZipTexts, TellWhatIsExtracted) {
    EXPECT_EQ(begin(Action::kUnpack), "Archive:  my.zip\n");
    EXPECT_EQ(wordsOf(*texts_, folderMember(), MemberOutcome::kFolderMade), "   creating: docs/\n");
    EXPECT_EQ(wordsOf(*texts_, packedMember(), MemberOutcome::kFolderMade), "   creating: x/\n")
        << "a folder that a file needs";
    EXPECT_EQ(wordsOf(*texts_, packedMember(), MemberOutcome::kUnpacked), "  inflating: docs/a long name.txt\n");
    EXPECT_EQ(wordsOf(*texts_, storedMember(), MemberOutcome::kUnpacked), " extracting: b.txt\n");
    EXPECT_EQ(wordsOf(*texts_, storedMember(), MemberOutcome::kLinkMade), "    linking: b.txt\n");
    EXPECT_EQ(renamedWordsOf(*texts_, storedMember()), " extracting: b.txt -> x (2).txt\n");
    EXPECT_EQ(wordsOf(*texts_, storedMember(), MemberOutcome::kSkipped, kAlreadyExist),
              "   skipping: b.txt  the file is there already\n");
    EXPECT_EQ(endOf(*texts_, command_, kOk), "");
}

TEST_F(UnZipTexts, TellWhatFails) {
    begin(Action::kUnpack);
    EXPECT_EQ(wordsOf(*texts_, storedMember(), MemberOutcome::kFailed, kFileCrc),
              "error:  b.txt  the checksum is wrong\n");
    EXPECT_EQ(wordsOf(*texts_, storedMember(), MemberOutcome::kRefused, kFileOpen),
              "error:  b.txt  the file cannot be created\n");
    EXPECT_EQ(endOf(*texts_, command_, kFileCrc), "") << "told by its member";
    texts_ = unZipTexts();
    begin(Action::kUnpack);
    EXPECT_EQ(endOf(*texts_, command_, kNotExist), "error:  no such member\n");
}

TEST_F(UnZipTexts, TellErrorsAloneWhenQuiet) {
    EXPECT_EQ(begin(Action::kUnpack, UnZipForm::kTable, false), "");
    EXPECT_EQ(wordsOf(*texts_, folderMember(), MemberOutcome::kFolderMade), "");
    EXPECT_EQ(wordsOf(*texts_, packedMember(), MemberOutcome::kUnpacked), "");
    EXPECT_EQ(wordsOf(*texts_, packedMember(), MemberOutcome::kSkipped, kAlreadyExist), "");
    EXPECT_EQ(wordsOf(*texts_, storedMember(), MemberOutcome::kFailed, kFileCrc),
              "error:  b.txt  the checksum is wrong\n");
}

TEST_F(UnZipTexts, TellWhatIsTested) {
    EXPECT_EQ(begin(Action::kTest), "Archive:  my.zip\n");
    EXPECT_EQ(wordsOf(*texts_, storedMember(), MemberOutcome::kTested), "    testing: b.txt   OK\n");
    EXPECT_EQ(endOf(*texts_, command_, kOk), "No errors detected in compressed data of my.zip.\n");
    EXPECT_EQ(wordsOf(*texts_, storedMember(), MemberOutcome::kFailed, kFileCrc),
              "error:  b.txt  the checksum is wrong\n");
    EXPECT_EQ(endOf(*texts_, command_, kFileCrc), "At least one error was detected in my.zip.\n");
}

TEST_F(UnZipTexts, PrintNamesWhenAsked) {
    command_.printNames = true;
    EXPECT_EQ(begin(Action::kPrint), "Archive:  my.zip\n");
    std::string out;
    texts_->printed(packedMember(), out);
    EXPECT_EQ(out, "  inflating: docs/a long name.txt\n");
    EXPECT_EQ(wordsOf(*texts_, packedMember(), MemberOutcome::kUnpacked), "");
    texts_ = unZipTexts();
    command_.printNames = false;
    EXPECT_EQ(begin(Action::kPrint), "");
    out.clear();
    texts_->printed(packedMember(), out);
    EXPECT_EQ(out, "");
}

TEST_F(UnZipTexts, TellWhyThereIsNoRun) {
    std::string out;
    texts_->refused(nullptr, kCommandName, out);
    EXPECT_EQ(out, "Error(0x801c): unknown command or switch\r\n");
    out.clear();
    command_.archive = "my.zip";
    texts_->refused(&command_, kNotFindArcFile, out);
    EXPECT_EQ(out, "Error(0x8029): the archive does not exist : my.zip\r\n");
}

}  // namespace
}  // namespace archiver
