#include "archivers/formats/little_endian.h"
#include "formats_lzh/support/lzh_builder.h"
#include "lzh_packing/support/packing_fixture.h"

/// Archives that cannot be changed stay as they are.
namespace archiver::test {
namespace {

using Names = std::vector<std::string>;

class LzhBadArchives : public LzhPackingTest {
protected:
    void SetUp() override { source("new", "new"); }

    void expectRefused(const std::string& bytes, ReturnCode code) {
        folder_.write("a.lzh", bytes);
        for (const char* line : {"a ARC BASE new", "u ARC BASE new", "m ARC BASE new", "f ARC BASE new", "d ARC a"}) {
            SCOPED_TRACE(line);
            EXPECT_EQ(run(line), code);
            EXPECT_TRUE(archiveBytes() == bytes);
            EXPECT_EQ(sources(), Names{"new"});
            EXPECT_EQ(beside(), (Names{"a.lzh", "base"}));
        }
    }
};

TEST_F(LzhBadArchives, OfAnotherKind) {
    expectRefused("PK\x03\x04 this is something else that must not be lost", kFileStyle);
    expectRefused(std::string(100, '\0'), kFileStyle);
    expectRefused("x", kFileStyle);
}

TEST_F(LzhBadArchives, Damaged) {
    const std::string good = lzhArchive({{.name = "a", .content = "aaaa", .level = 1},
                                         {.name = "b", .content = "bbbb", .level = 2, .headerCrc = true},
                                         {.name = "c", .content = "cccc"}});
    std::string header = good;
    header[good.find("-lh0-", 10) + 10] ^= 1;
    expectRefused(header, kHeaderCrc);
    expectRefused(good.substr(0, good.size() - 3), kHeaderBroken);
    expectRefused(good.substr(0, good.size() - 20), kHeaderBroken);
    std::string garbage = good;
    garbage.replace(garbage.size() - 1, 1, "there is something behind the last member");
    expectRefused(garbage, kHeaderBroken);
}

TEST_F(LzhBadArchives, WithoutAByteHoldNothingToFreshenOrDelete) {
    folder_.write("a.lzh", "");
    EXPECT_EQ(run("f ARC BASE new"), kFileStyle);
    EXPECT_EQ(run("d ARC new"), kFileStyle);
    EXPECT_EQ(archiveBytes(), "");
}

TEST_F(LzhBadArchives, WriteProtected) {
    ASSERT_EQ(run("a ARC BASE new"), kOk);
    const std::string before = archiveBytes();
    using std::filesystem::perms;
    constexpr perms kWrite = perms::owner_write | perms::group_write | perms::others_write;
    std::filesystem::permissions(archive_, kWrite, std::filesystem::perm_options::remove);
    EXPECT_EQ(run("a ARC BASE new"), kArcReadOnly);
    EXPECT_EQ(run("m ARC BASE new"), kArcReadOnly);
    EXPECT_EQ(run("d ARC new"), kArcReadOnly);
    EXPECT_TRUE(archiveBytes() == before);
    EXPECT_EQ(sources(), Names{"new"});
    std::filesystem::permissions(archive_, kWrite, std::filesystem::perm_options::add);
}

TEST_F(LzhBadArchives, ThatAreFolders) {
    std::filesystem::create_directories(archive_ / "inside");
    EXPECT_EQ(run("a ARC BASE new"), kArcFileOpen);
    EXPECT_EQ(run("d ARC new"), kArcFileOpen);
    EXPECT_EQ(beside(), (Names{"a.lzh", "base"}));
}

TEST_F(LzhBadArchives, InNoFolder) {
    archive_ = folder_.path() / "none" / "a.lzh";
    EXPECT_EQ(run("a ARC BASE new"), kTmpOpen);
    EXPECT_EQ(run("d ARC new"), kNotFindArcFile);
}

TEST_F(LzhBadArchives, OnAFullDisk) {
    ASSERT_EQ(run("a ARC BASE new"), kOk);
    const std::string before = archiveBytes();
    source("more", randomBytes(5000));
    files_.failWrites(kDiskSpace);
    EXPECT_EQ(run("a ARC BASE new more"), kDiskSpace);
    EXPECT_EQ(run("m ARC BASE new more"), kDiskSpace);
    EXPECT_TRUE(archiveBytes() == before);
    EXPECT_EQ(sources(), (Names{"more", "new"}));
    EXPECT_EQ(beside(), (Names{"a.lzh", "base"}));
}

}  // namespace
}  // namespace archiver::test
