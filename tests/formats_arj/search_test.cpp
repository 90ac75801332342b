#include <gtest/gtest.h>

#include "archivers/formats/arj/arj_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/arj_builder.h"

/// Finding the archive in its file.
namespace archiver::test {
namespace {

constexpr std::size_t kSearchLimit = 512 * 1024;

OpenResult opened(std::string bytes) { return openArj(inMemory(std::move(bytes)), {}); }

std::string archive() { return arjArchive({}, {{.name = "a.txt", .content = "content"}}); }

void expectFound(const OpenResult& result, std::size_t size) {
    ASSERT_TRUE(result.reader);
    EXPECT_TRUE(result.reader->facts().selfExtracting);
    EXPECT_EQ(result.reader->facts().fileSize, size);
    EXPECT_EQ(unpack(*result.reader, "a.txt").bytes, "content");
}

TEST(ArjSearch, FindsTheArchiveAtTheStart) {
    const OpenResult result = opened(archive());
    ASSERT_TRUE(result.reader);
    EXPECT_FALSE(result.reader->facts().selfExtracting);
    EXPECT_EQ(result.reader->facts().fileSize, archive().size());
    EXPECT_EQ(result.reader->facts().archiveType, 0);
}

TEST(ArjSearch, FindsTheArchiveBehindAProgram) {
    for (const std::size_t size : {1, 2, 4093, 4095, 4096, 4097, 100000}) {
        const std::string bytes = "MZ" + std::string(size, 'p') + archive();
        expectFound(opened(bytes), bytes.size());
    }
}

TEST(ArjSearch, ReachesHalfAMebibyte) {
    const std::string last = std::string(kSearchLimit, 'p') + archive();
    expectFound(opened(last), last.size());
    EXPECT_EQ(opened(std::string(kSearchLimit + 1, 'p') + archive()).code, kFileStyle);
}

TEST(ArjSearch, IsNotMisledByIds) {
    std::string damaged = arjHeader(arjMainBasic({}));
    ++damaged[10];
    const std::string fileHeader = arjHeader(arjFileBasic({.name = "no main header"}));
    const std::string tooLarge = "\x60\xEA\xFF\xFF";
    const std::string ids = "``\x60\xEA`\x60\xEA";
    const std::string end(kArjEnd);
    const std::string bytes = "MZ" + ids + tooLarge + end + damaged + fileHeader + ids + archive();
    expectFound(opened(bytes), bytes.size());
}

TEST(ArjSearch, FindsNothingInOtherFiles) {
    EXPECT_EQ(opened("").code, kFileStyle);
    EXPECT_EQ(opened("\x60").code, kFileStyle);
    EXPECT_EQ(opened("\x60\xEA").code, kFileStyle);
    EXPECT_EQ(opened(std::string(kArjEnd)).code, kFileStyle);
    EXPECT_EQ(opened("Some text.").code, kFileStyle);
    EXPECT_EQ(opened(std::string(2'000'000, '\0')).code, kFileStyle);
    EXPECT_EQ(opened(std::string(2'000'000, '\x60')).code, kFileStyle);
    EXPECT_EQ(opened(arjHeader(arjFileBasic({.name = "no main header"}))).code, kFileStyle);
}

TEST(ArjSearch, EndsSoonInAFileFullOfIds) {
    std::string bytes;
    while (bytes.size() < kSearchLimit) bytes += "\x60\xEA\x28\x0A";
    EXPECT_EQ(opened(bytes).code, kHeaderCrc);
    EXPECT_EQ(opened("x" + bytes).code, kFileStyle);
}

TEST(ArjSearch, TellsACutMainHeader) {
    const std::string main = arjHeader(arjMainBasic({}));
    EXPECT_EQ(opened(main.substr(0, 20)).code, kHeaderBroken);
}

TEST(ArjSearch, NeedsAFile) {
    const TemporaryFolder folder;
    EXPECT_EQ(openArj(folder.path()).code, kArcFileOpen);
    EXPECT_EQ(openArj(folder.path() / "missing.arj").code, kNotFindArcFile);
    EXPECT_EQ(openArj(folder.write("empty.arj", "")).code, kFileStyle);
    const OpenResult result = openArj(folder.write("any.name", archive()));
    ASSERT_TRUE(result.reader);
    EXPECT_EQ(unpack(*result.reader, "a.txt").bytes, "content");
}

}  // namespace
}  // namespace archiver::test
