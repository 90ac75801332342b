#include <gtest/gtest.h>

#include "archivers/formats/rar/rar_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_rar/support/rar_builder.h"

/// Where an archive begins, and what is none.
namespace archiver::test {
namespace {

using Names = std::vector<std::string>;

ReturnCode codeOf(const std::string& bytes) { return openRar(inMemory(bytes), {}).code; }

TEST(RarSearch, FindsAnArchiveBehindAProgram) {
    for (const std::string& archive :
         {oldRar({{.name = "a", .content = "1"}}), newRar({{.name = "a", .content = "1"}})}) {
        for (const std::string& program :
             {std::string("MZ"), std::string("MZ") + std::string(300000, 'x'), std::string("\x7F\x45LF") + "y"}) {
            const OpenResult opened = openRar(inMemory(program + archive), {});
            ASSERT_TRUE(opened.reader);
            EXPECT_TRUE(opened.reader->facts().selfExtracting);
            EXPECT_EQ(walk(*opened.reader).names(), Names{"a"});
            EXPECT_EQ(unpack(*opened.reader, "a").bytes, "1");
        }
    }
}

TEST(RarSearch, PassesOverSignaturesThatNoArchiveFollows) {
    const std::string program = std::string("MZ Rar! \x1A ") + std::string(kOldRarSignature) + "text" +
                                std::string(kNewRarSignature) + "more text than a header has";
    EXPECT_EQ(walk(openRar(inMemory(program + oldRar({{.name = "a"}})), {})).names(), Names{"a"});
    EXPECT_EQ(codeOf(program), kFileStyle);
}

TEST(RarSearch, EndsAfterTwoMebibytes) {
    const std::string archive = oldRar({{.name = "a"}});
    std::string program(std::size_t{2} << 20, 'x');
    program.replace(0, 2, "MZ");
    EXPECT_EQ(codeOf(program + archive), kFileStyle);
    EXPECT_EQ(codeOf(program.substr(0, program.size() - archive.size()) + archive), kOk);
}

TEST(RarSearch, TakesNothingElseForAnArchive) {
    EXPECT_EQ(codeOf(""), kFileStyle);
    EXPECT_EQ(codeOf("Rar!"), kFileStyle);
    EXPECT_EQ(codeOf("RE~^ of the oldest layout"), kFileStyle);
    EXPECT_EQ(codeOf(std::string("x") + oldRar({{.name = "a"}})), kFileStyle) << "no program stands before it";
    EXPECT_EQ(codeOf(std::string("Rar!\x1A\x07\x02\0", 8)), kFileStyle);
    EXPECT_EQ(codeOf(std::string(5000, '\0')), kFileStyle);
}

TEST(RarSearch, TellsADamagedBeginning) {
    EXPECT_EQ(codeOf(std::string(kOldRarSignature)), kCannotRead);
    EXPECT_EQ(codeOf(std::string(kNewRarSignature)), kCannotRead);
    std::string bytes = oldRar({});
    bytes[10] = static_cast<char>(bytes[10] ^ 0x10);
    EXPECT_EQ(codeOf(bytes), kHeaderCrc);
    bytes = newRar({});
    bytes[14] = static_cast<char>(bytes[14] ^ 0x10);
    EXPECT_EQ(codeOf(bytes), kHeaderCrc);
    EXPECT_EQ(codeOf(std::string(kOldRarSignature) + oldRarEnd()), kHeaderBroken);
}

TEST(RarSearch, RefusesEncryptedHeaders) {
    EXPECT_EQ(codeOf(std::string(kOldRarSignature) + oldRarMain(0x80) + "encrypted"), kPasswordFile);
    EXPECT_EQ(codeOf(std::string(kNewRarSignature) + newRarBlock(rarNumber(4) + rarNumber(0) + "salt")), kPasswordFile);
}

TEST(RarSearch, TellsMissingFilesAndFolders) {
    const TemporaryFolder folder;
    EXPECT_EQ(openRar(folder.path() / "none.rar").code, kNotFindArcFile);
    EXPECT_EQ(openRar(folder.path()).code, kArcFileOpen);
}

TEST(RarSearch, TakesAnArchiveWithoutMembers) {
    for (const std::string& bytes : {oldRar({}), newRar({}), std::string(kOldRarSignature) + oldRarMain()}) {
        const Listing listing = walk(openRar(inMemory(bytes), {}));
        EXPECT_TRUE(listing.members.empty());
        EXPECT_EQ(listing.end, kNoMoreEntries);
    }
    EXPECT_EQ(walk(openRar(inMemory(std::string(kNewRarSignature) + newRarMain()), {})).end, kCannotRead)
        << "this layout has an end mark";
}

TEST(RarSearch, PassesOverBlocksOfOld) {
    // A comment: its text is not under the header's checksum. Then a signature, which is.
    const std::string fixed = std::string("\x75") + littleEndian(0, 2) + littleEndian(17, 2) + std::string(6, '\0');
    const std::string comment = littleEndian(crc32OneBitAtATime(fixed), 2) + fixed + "text";
    const std::string rest = std::string("\x79") + littleEndian(0, 2) + littleEndian(9, 2) + "xy";
    const std::string signature = littleEndian(crc32OneBitAtATime(rest), 2) + rest;
    const std::string start = std::string(kOldRarSignature) + oldRarMain();
    const std::string end = oldRarFile({.name = "a"}) + oldRarEnd();
    EXPECT_EQ(walk(openRar(inMemory(start + comment + signature + end), {})).names(), Names{"a"});
    std::string damaged = start + signature + end;
    damaged[start.size() + 8] = 'z';
    EXPECT_EQ(walk(openRar(inMemory(damaged), {})).end, kHeaderCrc);
}

}  // namespace
}  // namespace archiver::test
