#include <gtest/gtest.h>

#include "archivers/formats/cab/cab_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_cab/support/cab_builder.h"

namespace archiver::test {
namespace {

const std::string kCabinet = cabinetBytes({.folders = {{.members = {{.name = "a.txt", .content = "content"}}}}});

TEST(CabSearch, FindsCabinetsBehindPrograms) {
    for (const std::size_t size : {1U, 65500U, 65536U, 200000U}) {
        const OpenResult opened = openCab(inMemory("MZ" + std::string(size, 'x') + kCabinet + "more"), {});
        ASSERT_EQ(opened.code, kOk) << size;
        EXPECT_TRUE(opened.reader->facts().selfExtracting);
        EXPECT_EQ(unpack(*opened.reader, "a.txt").bytes, "content");
    }
    EXPECT_FALSE(openCab(inMemory(kCabinet), {}).reader->facts().selfExtracting);
}

TEST(CabSearch, PassesOverWhatOnlyLooksLikeOne) {
    const std::string text = "MSCF is the mark of a cabinet, and this is none of them";
    const std::string broken = kCabinet.substr(0, 50);
    EXPECT_EQ(openCab(inMemory("x" + text + broken + std::string(40, '\xFF') + kCabinet), {}).code, kOk);
}

TEST(CabSearch, FindsNothingInOtherFiles) {
    EXPECT_EQ(openCab(inMemory(""), {}).code, kFileStyle);
    EXPECT_EQ(openCab(inMemory("MSC"), {}).code, kFileStyle);
    EXPECT_EQ(openCab(inMemory(std::string(300000, 'M')), {}).code, kFileStyle);
}

TEST(CabSearch, SaysWhenACabinetIsBroken) {
    for (const std::size_t size : {4U, 36U, 50U, 60U}) {
        EXPECT_EQ(openCab(inMemory(kCabinet.substr(0, size)), {}).code, kHeaderBroken) << size;
    }
    std::string noFolders = kCabinet;
    noFolders[26] = 0;
    EXPECT_EQ(openCab(inMemory(noFolders), {}).code, kHeaderBroken);
    std::string wrongFolder = kCabinet;
    wrongFolder[36 + 8 + 8] = 9;
    EXPECT_EQ(openCab(inMemory(wrongFolder), {}).code, kHeaderBroken);
    std::string many = kCabinet;
    many[26] = many[27] = many[28] = many[29] = '\xFF';
    EXPECT_EQ(openCab(inMemory(many), {}).code, kTooManyFiles);
}

TEST(CabSearch, OpensFiles) {
    const TemporaryFolder folder;
    EXPECT_EQ(openCab(folder.path() / "none.cab").code, kNotFindArcFile);
    EXPECT_EQ(openCab(folder.path()).code, kArcFileOpen);
    const auto file = folder.write(std::filesystem::path(u8"\u8868.cab"), kCabinet);
    EXPECT_EQ(walk(openCab(file)).names(), std::vector<std::string>{"a.txt"});
}

}  // namespace
}  // namespace archiver::test
