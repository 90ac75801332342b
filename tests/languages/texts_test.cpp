// What the libraries write into their callers' buffers, to the byte.
#include <gtest/gtest.h>

#include "archivers/cab32/cab_language.h"
#include "archivers/unarj32j/arj_language.h"
#include "archivers/unlha32/lha_language.h"
#include "archivers/unrar32/rar_language.h"

namespace archiver {
namespace {

constexpr std::uint16_t kDate = 21 << 9 | 5 << 5 | 17;        // 2001-05-17
constexpr std::uint16_t kTime = 17 << 11 | 30 << 5 | 58 / 2;  // 17:30:58

Member file(std::string name, std::uint64_t original, std::uint64_t packed, std::uint32_t crc, std::string method) {
    Member member;
    member.name = std::move(name);
    member.originalSize = original;
    member.packedSize = packed;
    member.crc = crc;
    member.dosDate = kDate;
    member.dosTime = kTime;
    member.attributes = attribute::kArchive;
    member.method = std::move(method);
    return member;
}

Member folder(std::string name, std::string method) {
    Member member = file(std::move(name), 0, 0, 0, std::move(method));
    member.attributes = attribute::kFolder;
    member.kind = MemberKind::kFolder;
    return member;
}

/// Words a command's output, as a run would have it done.
class Wording {
public:
    Wording(const CommandLanguage& language, Command::Action action) : texts_(language.texts()) {
        command.action = action;
        command.archive = "some.arc";
    }
    Wording& begin() {
        texts_->begin(command, out_);
        return *this;
    }
    Wording& row(const Member& member) {
        texts_->row(member, out_);
        return *this;
    }
    Wording& printed(const Member& member) {
        texts_->printed(member, out_);
        return *this;
    }
    Wording& member(const Member& member, MemberOutcome outcome, ReturnCode code = kOk,
                    const std::filesystem::path& place = {}, bool renamed = false) {
        texts_->member({member, outcome, code, place, renamed}, out_);
        return *this;
    }
    std::string end(const UnpackSummary& summary = {}) {
        texts_->end(command, summary, out_);
        return out_;
    }

    Command command;

private:
    std::unique_ptr<CommandTexts> texts_;
    std::string out_;
};

UnpackSummary summaryOf(ReturnCode code, std::uint64_t failed = 0) {
    UnpackSummary summary;
    summary.code = code;
    summary.failed = failed;
    return summary;
}

using enum MemberOutcome;

TEST(LhaTexts, OfUnpacking) {
    const Member hello = file("docs/hello.txt", 5, 5, 0x9778, "-lh0-");
    Wording texts(kLhaLanguage, Command::Action::kUnpack);
    texts.begin()
        .member(hello, kFolderMade, kOk, "out/docs")
        .member(hello, kUnpacked)
        .member(file("a.rather.long.name.txt", 5, 5, 1, "-lh0-"), kUnpacked)
        .member(file("bad.txt", 5, 5, 1, "-lh5-"), kFailed, kFileCrc)
        .member(file("worse.txt", 5, 5, 1, "-lh5-"), kFailed, kHuffmanCode)
        .member(file("a.txt", 5, 5, 1, "-lh0-"), kSkipped, kMoreFresh)
        .member(file("b.txt", 5, 5, 1, "-lh0-"), kSkipped, kAlreadyExist)
        .member(file("c.txt", 5, 5, 1, "-lh0-"), kSkipped, kNotExist)
        .member(file("d.txt", 5, 5, 1, "-lh0-"), kSkipped, kUserSkip)
        .member(file("e.txt", 5, 5, 1, "-lh0-"), kFailed, kFileOpen)
        .member(file("../f.txt", 5, 5, 1, "-lh0-"), kRefused, kFileOpen)
        .member(file("g.txt", 5, 5, 1, "-lh0-"), kUnpacked, kOk, "out/g (2).txt", true);
    EXPECT_EQ(texts.end(summaryOf(kFileCrc, 2)),
              "\r\nExtracting from archive : some.arc\r\n\r\n"
              "mkdir  out/docs\r\n"
              "Melted   docs/hello.txt  \r\n"
              "Melted   a.rather.long.name.txt\r\n"
              "Melted   bad.txt         CRC error!\r\n"
              "Melted   worse.txt       CRC error!\r\n"
              "Skipped  a.txt : newer file exists\r\n"
              "Skipped  b.txt : file exists\r\n"
              "Skipped  c.txt : file does not exist\r\n"
              "Skipped  d.txt : skipped by the user\r\n"
              "Skipped  e.txt : the file cannot be created\r\n"
              "Skipped  ../f.txt : its name or link would leave the target folder\r\n"
              "Melted   g.txt            as g (2).txt\r\n"
              "\r\n");
}

TEST(LhaTexts, OfTesting) {
    Wording texts(kLhaLanguage, Command::Action::kTest);
    texts.begin()
        .member(file("hello.txt", 5, 5, 1, "-lh0-"), kTested)
        .member(file("bad.txt", 5, 5, 1, "-lh5-"), kFailed, kFileCrc);
    EXPECT_EQ(texts.end(summaryOf(kFileCrc, 1)),
              "\r\nTesting archive : some.arc\r\n\r\n"
              "Tested   hello.txt\r\n"
              "Tested   bad.txt         CRC error!\r\n");
}

TEST(LhaTexts, OfAListing) {
    Wording texts(kLhaLanguage, Command::Action::kList);
    texts.begin()
        .row(folder("docs/", "-lhd-"))
        .row(file("docs/hello.txt", 12, 12, 0x9778, "-lh0-"))
        .row(file("a.rather.long.name.txt", 18092, 6832, 0xA33A, "-lh6-"));
    EXPECT_EQ(texts.end(),
              "\r\nListing of archive : some.arc\r\n\r\n"
              "  Name          Original    Packed  Ratio   Date     Time   Attr Type  CRC\r\n"
              "--------------  --------  -------- ------ -------- -------- ---- ----- ----\r\n"
              "  docs                 0         0   0.0% 01-05-17 17:30:58 d--w -lhd- ****\r\n"
              "+ hello.txt           12        12 100.0% 01-05-17 17:30:58 a--w -lh0- 9778\r\n"
              "  a.rather.lon     18092      6832  37.7% 01-05-17 17:30:58 a--w -lh6- A33A\r\n"
              "--------------  --------  -------- ------ -------- -------- ---- ----- ----\r\n"
              "     3 files       18104      6844  37.8%\r\n");
}

TEST(LhaTexts, OfAListingWithWholePaths) {
    Wording texts(kLhaLanguage, Command::Action::kListVerbose);
    texts.begin().row(file("docs/hello.txt", 12, 12, 0x9778, "-lh0-"));
    EXPECT_EQ(texts.end(),
              "\r\nListing of archive : some.arc\r\n\r\n"
              "  Name          Original    Packed  Ratio   Date     Time   Attr Type  CRC\r\n"
              "--------------  --------  -------- ------ -------- -------- ---- ----- ----\r\n"
              "docs/hello.txt\r\n"
              "                      12        12 100.0% 01-05-17 17:30:58 a--w -lh0- 9778\r\n"
              "--------------  --------  -------- ------ -------- -------- ---- ----- ----\r\n"
              "     1 files          12        12 100.0%\r\n");
}

TEST(LhaTexts, OfPrinting) {
    const Member hello = file("hello.txt", 5, 5, 1, "-lh0-");
    Wording texts(kLhaLanguage, Command::Action::kPrint);
    texts.begin().printed(hello).member(hello, kUnpacked);
    EXPECT_EQ(texts.end(), "::::::::\r\nhello.txt\r\n::::::::\r\n");
}

TEST(LhaTexts, OfARunThatEndedEarly) {
    Wording texts(kLhaLanguage, Command::Action::kTest);
    EXPECT_EQ(texts.begin().end(summaryOf(kHeaderBroken)),
              "\r\nTesting archive : some.arc\r\n\r\nError(0x8017): a header is damaged\r\n");
}

TEST(RarTexts, OfUnpacking) {
    const Member hello = file("docs/hello.txt", 5, 5, 1, "storing");
    Wording texts(kRarLanguage, Command::Action::kUnpack);
    texts.begin()
        .member(hello, kFolderMade, kOk, "docs")
        .member(hello, kUnpacked)
        .member(file("bad.txt", 5, 5, 1, "best"), kFailed, kFileCrc)
        .member(file("secret.txt", 5, 5, 1, "best"), kFailed, kPasswordFile)
        .member(file("a.txt", 5, 5, 1, "best"), kSkipped, kMoreFresh)
        .member(file("..\\b.txt", 5, 5, 1, "best"), kRefused, kFileOpen)
        .member(file("con", 5, 5, 1, "best"), kUnpacked, kOk, "out/_con", true);
    EXPECT_EQ(texts.end(summaryOf(kFileCrc, 3)),
              "Extracting from some.arc\r\n"
              "Creating docs   OK\r\n"
              "Extracting docs\\hello.txt   OK\r\n"
              "Extracting bad.txt   CRC error!\r\n"
              "Extracting secret.txt   the password is missing or wrong\r\n"
              "Skipping a.txt   a newer file is there\r\n"
              "Skipping ..\\b.txt   its name or link would leave the target folder\r\n"
              "Extracting con   OK, as _con\r\n"
              "Errors: 3\r\n");
}

TEST(RarTexts, OfTesting) {
    Wording texts(kRarLanguage, Command::Action::kTest);
    texts.begin().member(file("a.txt", 5, 5, 1, "best"), kTested);
    EXPECT_EQ(texts.end(), "Testing some.arc\r\nTesting a.txt   OK\r\nAll OK\r\n");
}

TEST(RarTexts, OfAListing) {
    Wording texts(kRarLanguage, Command::Action::kList);
    texts.begin()
        .row(file("hello.txt", 1200, 361, 0x7CCA70CD, "best"))
        .row(file("docs/a.longer.name.txt", 5, 5, 0xA, "storing"))
        .row(folder("docs/", "storing"));
    EXPECT_EQ(texts.end(),
              "  Name         Original   Packed  Ratio   Date     Time   Attr Method  CRC\r\n"
              "-------------- -------- -------- ------ -------- -------- ---- ------- --------\r\n"
              "hello.txt          1200      361  30.0% 01-05-17 17:30:58 a--w best    7CCA70CD\r\n"
              "docs\\a.longer.name.txt        5        5 100.0% 01-05-17 17:30:58 a--w storing 0000000A\r\n"
              "docs\\                 0        0   0.0% 01-05-17 17:30:58 d--w storing 00000000\r\n"
              "-------------- -------- -------- ------ -------- -------- ---- ------- --------\r\n"
              "3 Files\r\n");
}

TEST(RarTexts, OfAListingWithNamesAbove) {
    Wording texts(kRarLanguage, Command::Action::kListVerbose);
    texts.begin().row(file("docs/hello.txt", 1200, 361, 0x7CCA70CD, "best"));
    EXPECT_EQ(texts.end(),
              "  Name         Original   Packed  Ratio   Date     Time   Attr Method  CRC\r\n"
              "-------------- -------- -------- ------ -------- -------- ---- ------- --------\r\n"
              "docs\\hello.txt\r\n"
              "                   1200      361  30.0% 01-05-17 17:30:58 a--w best    7CCA70CD\r\n"
              "-------------- -------- -------- ------ -------- -------- ---- ------- --------\r\n"
              "1 Files\r\n");
}

TEST(RarTexts, OfPrintingAreTheBytesAlone) {
    const Member hello = file("hello.txt", 5, 5, 1, "best");
    Wording texts(kRarLanguage, Command::Action::kPrint);
    texts.begin().printed(hello).member(hello, kUnpacked);
    EXPECT_EQ(texts.end(), "");
}

TEST(RarTexts, OfARunWithoutMembers) {
    Wording texts(kRarLanguage, Command::Action::kUnpack);
    EXPECT_EQ(texts.begin().end(summaryOf(kNotExist)), "Extracting from some.arc\r\nError(0x800f): no such member\r\n");
}

TEST(RarTexts, ShowNamesWithoutWhatMisleads) {
    Wording texts(kRarLanguage, Command::Action::kTest);
    texts.begin().member(file("a\r\nTesting b", 5, 5, 1, "best"), kTested);
    EXPECT_EQ(texts.end(), "Testing some.arc\r\nTesting a\xEF\xBF\xBD\xEF\xBF\xBDTesting b   OK\r\nAll OK\r\n");
}

TEST(ArjTexts, OfUnpackingAndTesting) {
    const Member hello = file("docs/hello.txt", 5, 5, 1, "Stored");
    Wording unpacking(kArjLanguage, Command::Action::kUnpack);
    unpacking.begin().member(hello, kUnpacked).member(hello, kFailed, kFileCrc);
    EXPECT_EQ(unpacking.end(summaryOf(kFileCrc, 1)),
              "Processing archive: some.arc\r\n"
              "Extracting docs\\hello.txt   OK\r\n"
              "Extracting docs\\hello.txt   CRC error!\r\n"
              "Errors: 1\r\n");
    Wording testing(kArjLanguage, Command::Action::kTest);
    testing.begin().member(hello, kTested);
    EXPECT_EQ(testing.end(), "Processing archive: some.arc\r\nTesting docs\\hello.txt   OK\r\nAll OK\r\n");
}

TEST(CabTexts, OfAListing) {
    Wording texts(kCabLanguage, Command::Action::kList);
    texts.begin().row(file("lzx.txt", 187, 114, 0, "LZX"));
    EXPECT_EQ(texts.end(),
              "  Name         Original   Packed  Ratio   Date     Time   Attr Method\r\n"
              "-------------- -------- -------- ------ -------- -------- ---- -------\r\n"
              "lzx.txt             187      114  60.9% 01-05-17 17:30:58 a--w LZX\r\n"
              "-------------- -------- -------- ------ -------- -------- ---- -------\r\n"
              "1 Files\r\n");
}

TEST(CabTexts, WithoutNames) {
    Wording texts(kCabLanguage, Command::Action::kUnpack);
    texts.command.showNames = false;
    texts.begin()
        .member(file("a.txt", 5, 5, 0, "MSZIP"), kUnpacked)
        .member(file("b.txt", 5, 5, 0, "MSZIP"), kFailed, kFileCrc);
    EXPECT_EQ(texts.end(summaryOf(kFileCrc, 1)), "Extracting b.txt   CRC error!\r\nErrors: 1\r\n");
}

TEST(RefusedTexts, SayWhy) {
    for (const CommandLanguage* language : {&kRarLanguage, &kArjLanguage, &kLhaLanguage, &kCabLanguage}) {
        std::string text;
        language->texts()->refused(nullptr, kNotSupport, text);
        EXPECT_EQ(text, "Error(0x8023): not supported\r\n");
    }
}

}  // namespace
}  // namespace archiver
