#include <gtest/gtest.h>

#include "archivers/formats/lzh/lzh_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_lzh/support/lzh_builder.h"

namespace archiver::test {
namespace {

const LzhFile kFile{.name = "a.txt", .content = "content"};

TEST(LzhSearch, FindsArchivesBehindPrograms) {
    for (const std::size_t size : {1U, 100U, 40000U, 524287U}) {
        const OpenResult opened = openLzh(inMemory("MZ" + std::string(size - 1, '-') + lzhArchive({kFile})));
        ASSERT_EQ(opened.code, kOk) << size;
        EXPECT_TRUE(opened.reader->facts().selfExtracting);
        EXPECT_EQ(unpack(*opened.reader, "a.txt").bytes, "content");
    }
    EXPECT_FALSE(openLzh(inMemory(lzhArchive({kFile}))).reader->facts().selfExtracting);
    EXPECT_EQ(openLzh(inMemory(std::string(600000, 'x') + lzhArchive({kFile}))).code, kFileStyle);
}

TEST(LzhSearch, PassesOverWhatOnlyLooksLikeAHeader) {
    std::string wrongSum = lzhHeader(kFile);
    wrongSum[1] ^= 1;
    const std::string program = "MZ -lh5- -pms- " + wrongSum + std::string(30, '\0');
    const OpenResult opened = openLzh(inMemory(program + lzhArchive({kFile})));
    EXPECT_EQ(walk(*opened.reader).names(), std::vector<std::string>{"a.txt"});
    EXPECT_EQ(opened.reader->facts().fileSize, program.size() + lzhArchive({kFile}).size());
}

TEST(LzhSearch, PassesOverTheArchiveInAProgramOfTheAmiga) {
    const std::string program = "xx LhASFX V1.2, " + lzhArchive({{.name = "inner"}});
    EXPECT_EQ(walk(openLzh(inMemory(program + lzhArchive({kFile})))).names(), std::vector<std::string>{"a.txt"});
}

TEST(LzhSearch, DoesNotTakeASecondMemberForTheFirst) {
    std::string bytes = lzhArchive({kFile, kFile});
    bytes[1] ^= 1;
    EXPECT_EQ(openLzh(inMemory(bytes)).code, kHeaderCrc);
}

TEST(LzhSearch, GivesUpOnManyFalseHeaders) {
    std::string bytes;
    std::string wrong = lzhHeader({.name = "x", .level = 3});
    wrong[24] = 1;
    while (bytes.size() < 400000) bytes += wrong;
    EXPECT_EQ(openLzh(inMemory("x" + bytes + lzhArchive({kFile}))).code, kFileStyle);
}

TEST(LzhSearch, FindsNothingInOtherFiles) {
    EXPECT_EQ(openLzh(inMemory("")).code, kFileStyle);
    EXPECT_EQ(openLzh(inMemory(std::string(1, '\0'))).code, kFileStyle);
    EXPECT_EQ(openLzh(inMemory("PK\3\4 -lh5- is the name of a method, and no archive")).code, kFileStyle);
}

TEST(LzhSearch, OpensFiles) {
    const TemporaryFolder folder;
    EXPECT_EQ(openLzh(folder.path() / "none.lzh").code, kNotFindArcFile);
    EXPECT_EQ(openLzh(folder.path()).code, kArcFileOpen);
    const auto file = folder.write(std::filesystem::path(u8"\u8868.lzh"), lzhArchive({kFile}));
    EXPECT_EQ(walk(openLzh(file)).names(), std::vector<std::string>{"a.txt"});
}

}  // namespace
}  // namespace archiver::test
