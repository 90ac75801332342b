#include <gtest/gtest.h>

#include "archivers/formats/tar/single_name.h"
#include "archivers/formats/tar/tar_format.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"

/// Compressed files that hold no tar.
namespace archiver::test {
namespace {

struct SingleCase {
    const char* file;
    const char* name;
    int type;
    const char* method;
    std::uint32_t osType;
};
class SingleFile : public testing::TestWithParam<SingleCase> {};

TEST_P(SingleFile, IsAnArchiveOfOneMember) {
    const auto path = dataFile(std::string("tar/") + GetParam().file);
    const OpenResult opened = openTar(path);
    ASSERT_TRUE(opened.reader) << opened.code;
    EXPECT_EQ(opened.reader->facts().archiveType, GetParam().type);
    EXPECT_EQ(opened.reader->facts().osType, GetParam().osType);
    const Listing listing = walk(*opened.reader);
    EXPECT_EQ(listing.end, kNoMoreEntries);
    ASSERT_EQ(listing.members.size(), 1U);
    const Member& member = listing.members[0];
    EXPECT_EQ(member.name, GetParam().name);
    EXPECT_EQ(member.method, GetParam().method);
    EXPECT_EQ(member.originalSize, 0U);
    EXPECT_EQ(member.packedSize, std::filesystem::file_size(path));
    EXPECT_EQ(member.osType, GetParam().osType);
    const Unpacked content = unpack(*opened.reader, GetParam().name);
    EXPECT_EQ(content.code, kOk);
    EXPECT_EQ(content.bytes, readFile(dataFile("tar/again.txt")));
}

INSTANTIATE_TEST_SUITE_P(Files, SingleFile,
                         testing::Values(SingleCase{"named.gz", "again.txt", 4, "- gz-", os_type::kUnix},
                                         SingleCase{"unnamed.gz", "unnamed", 4, "- gz-", os_type::kUnix},
                                         SingleCase{"again.txt.Z", "again.txt", 5, "-  z-", os_type::kUnix},
                                         SingleCase{"again.txt.bz2", "again.txt", 7, "-bz2-", os_type::kUnknown}),
                         [](const auto& each) {
                             std::string name = each.param.file;
                             for (char& letter : name) letter = letter == '.' ? '_' : letter;
                             return name;
                         });

TEST(SingleFile, GzipPartsFollowEachOther) {
    const OpenResult opened = openTar(dataFile("tar/two-parts.gz"));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(unpack(*opened.reader, "again.txt").bytes, readFile(dataFile("tar/again.txt")) + "Hello, archive.\n");
}

TEST(SingleFile, ForeignBytesBehindGzipAreIgnored) {
    for (const char* tail : {"foreign", "\x1F", "\x1F?"}) {
        const OpenResult opened = openTar(inMemory(readFile(dataFile("tar/named.gz")) + tail), "x.gz");
        ASSERT_TRUE(opened.reader);
        const Unpacked content = unpack(*opened.reader, "again.txt");
        EXPECT_EQ(content.bytes, readFile(dataFile("tar/again.txt")));
        EXPECT_EQ(content.code, std::string_view(tail) == "\x1F" ? kCannotRead : kOk);
    }
}

TEST(SingleFile, DateIsThatOfTheGzipHeader) {
    const Listing named = walk(openTar(dataFile("tar/named.gz")));
    ASSERT_EQ(named.members.size(), 1U);
    EXPECT_EQ(named.members[0].written->seconds, 1325375998);  // 2011-12-31 23:59:58 UTC
}

TEST(SingleFile, DateIsThatOfTheFileWithoutOne) {
    const TimeZone zone("UTC0");
    for (const char* name : {"tar/unnamed.gz", "tar/again.txt.Z"}) {
        const Listing listing = walk(openTar(inMemory(readFile(dataFile(name))), "x.gz"));
        ASSERT_EQ(listing.members.size(), 1U);
        EXPECT_EQ(listing.members[0].written->seconds, 1'000'000'000);  // as MemoryFile says
        EXPECT_EQ(listing.members[0].dosDate, 21 << 9 | 9 << 5 | 9);    // 2001-09-09 01:46:40
        EXPECT_EQ(listing.members[0].dosTime, 1 << 11 | 46 << 5 | 20);
    }
}

struct NameCase {
    const char* title;
    const char* file;
    const char* member;
};
class SingleName : public testing::TestWithParam<NameCase> {};

TEST_P(SingleName, ComesFromTheFile) {
    EXPECT_EQ(tar::nameWithoutExtension(GetParam().file), GetParam().member);
    const Listing listing = walk(openTar(inMemory(readFile(dataFile("tar/unnamed.gz"))), GetParam().file));
    EXPECT_EQ(listing.names(), std::vector<std::string>{GetParam().member});
}

INSTANTIATE_TEST_SUITE_P(
    Names, SingleName,
    testing::Values(NameCase{"Plain", "file.txt.gz", "file.txt"}, NameCase{"Tgz", "file.tgz", "file.tar"},
                    NameCase{"Taz", "file.TAZ", "file.tar"}, NameCase{"Tbz", "file.tbz", "file.tar"},
                    NameCase{"Tbz2", "file.tbz2", "file.tar"}, NameCase{"Tz", "a.b.tz", "a.b.tar"},
                    NameCase{"TarGz", "file.tar.gz", "file.tar"}, NameCase{"NoExtension", "file", "file"},
                    NameCase{"NothingElse", ".gz", ".gz"}, NameCase{"Umlaut", "grün.gz", "grün"}),
    [](const auto& each) { return std::string(each.param.title); });

TEST(SingleName, OfThePathIsTaken) {
    const TemporaryFolder folder;
    const auto file = folder.write(std::filesystem::path(u8"日本 😀.txt.gz"), readFile(dataFile("tar/unnamed.gz")));
    EXPECT_EQ(walk(openTar(file)).names(), std::vector<std::string>{"日本 😀.txt"});
}

TEST(SingleName, InTheHeaderIsOnlyAName) {
    EXPECT_EQ(tar::nameFromHeader("file.txt"), "file.txt");
    EXPECT_EQ(tar::nameFromHeader("/etc/passwd"), "passwd");
    EXPECT_EQ(tar::nameFromHeader("C:\\folder\\file"), "file");
    EXPECT_EQ(tar::nameFromHeader("../.."), "");
    EXPECT_EQ(tar::nameFromHeader("."), "");
    EXPECT_EQ(tar::nameFromHeader("folder/"), "");
    EXPECT_EQ(tar::nameFromHeader(""), "");
    if (westernCodePages()) {
        EXPECT_EQ(tar::nameFromHeader("gr\xFCn"), "grün");
    }
    EXPECT_EQ(tar::nameFromHeader("grün"), "grün");
}

/// A gzip file with that header, around the data of a real one.
std::string gzipWith(unsigned char flags, const std::string& fields) {
    std::string bytes = readFile(dataFile("tar/unnamed.gz"));
    bytes[3] = static_cast<char>(flags);
    return bytes.insert(10, fields);
}

TEST(GzipHeader, NameStandsBehindTheExtraField) {
    const std::string extra("\x05\0extra", 7);
    const Listing listing =
        walk(openTar(inMemory(gzipWith(4 | 8 | 16, extra + std::string("sub/name\0comment\0", 17))), "x.gz"));
    EXPECT_EQ(listing.names(), std::vector<std::string>{"name"});
}

TEST(GzipHeader, NameThatIsNoneLeavesTheFilesName) {
    EXPECT_EQ(walk(openTar(inMemory(gzipWith(8, std::string("..\0", 3))), "x.gz")).names(),
              std::vector<std::string>{"x"});
}

TEST(GzipHeader, DamageIsNoticed) {
    std::string wrongMethod = gzipWith(0, "");
    wrongMethod[2] = 7;
    EXPECT_EQ(openTar(inMemory(wrongMethod), "x.gz").code, kHeaderBroken);
    EXPECT_EQ(openTar(inMemory(gzipWith(0x80, "")), "x.gz").code, kHeaderBroken);
    EXPECT_EQ(openTar(inMemory(gzipWith(8, "").substr(0, 12)), "x.gz").code, kHeaderBroken);
    EXPECT_EQ(openTar(inMemory(gzipWith(8, std::string(100000, 'n'))), "x.gz").code, kHeaderBroken);
    EXPECT_EQ(openTar(inMemory(gzipWith(4, "\xFF\xFF")), "x.gz").code, kHeaderBroken);
    EXPECT_EQ(openTar(inMemory("\x1F\x8B"), "x.gz").code, kHeaderBroken);
}

TEST(SingleFile, NeedsACurrentMember) {
    const OpenResult opened = openTar(dataFile("tar/named.gz"));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(unpack(*opened.reader).code, kNotSearchMode);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(opened.reader->read([](const char*, std::size_t) { return false; }), kUserCancel);
    EXPECT_EQ(unpack(*opened.reader).code, kNotSearchMode);
    EXPECT_EQ(opened.reader->next(member), kNoMoreEntries);
}

}  // namespace
}  // namespace archiver::test
