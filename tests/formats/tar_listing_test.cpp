#include <gtest/gtest.h>

#include "archivers/formats/tar/tar_format.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/tar_builder.h"

/// Archives that GNU tar made, beside what it says of them.
namespace archiver::test {
namespace {

struct TarCase {
    const char* file;
    const char* listing;
    int type;
    const char* method;
};
class TarListing : public testing::TestWithParam<TarCase> {};

TEST_P(TarListing, IsWhatTheOtherProgramSays) {
    std::vector<std::string> expected;
    for (const std::string& line : lines(readFile(dataFile(std::string("tar/") + GetParam().listing)))) {
        expected.push_back(tarLine(line));
    }
    ASSERT_FALSE(expected.empty());

    const OpenResult opened = openTar(dataFile(std::string("tar/") + GetParam().file));
    ASSERT_TRUE(opened.reader) << opened.code;
    EXPECT_EQ(opened.reader->facts().archiveType, GetParam().type);
    EXPECT_EQ(opened.reader->facts().osType, os_type::kUnix);
    const Listing listing = walk(*opened.reader);
    EXPECT_EQ(listing.end, kNoMoreEntries);
    std::vector<std::string> listed;
    for (const Member& member : listing.members) {
        listed.push_back(tarLine(member));
        EXPECT_EQ(member.packedSize, member.originalSize);
        EXPECT_EQ(member.crc, 0U);
        EXPECT_EQ(member.osType, os_type::kUnix);
        EXPECT_EQ(member.method, GetParam().method);
        EXPECT_FALSE(member.encrypted);
    }
    EXPECT_EQ(listed, expected);

    ASSERT_EQ(opened.reader->restart(), kOk);
    EXPECT_EQ(walk(*opened.reader).names(), listing.names());
}

INSTANTIATE_TEST_SUITE_P(Archives, TarListing,
                         testing::Values(TarCase{"ustar.tar", "ustar.tar.txt", 1, "-tar-"},
                                         TarCase{"v7.tar", "v7.tar.txt", 1, "-tar-"},
                                         TarCase{"gnu.tar", "gnu.tar.txt", 1, "-tar-"},
                                         TarCase{"pax.tar", "pax.tar.txt", 1, "-tar-"},
                                         TarCase{"ustar.tgz", "ustar.tar.txt", 2, "-tgz-"},
                                         TarCase{"ustar.taz", "ustar.tar.txt", 3, "-taz-"},
                                         TarCase{"ustar.tbz", "ustar.tar.txt", 6, "-tbz-"}),
                         [](const auto& each) {
                             std::string name = each.param.file;
                             name[name.find('.')] = '_';
                             return name;
                         });

TEST(TarListing, GivesLocalDates) {
    const TimeZone zone("JST-9");
    const Listing listing = walk(openTar(dataFile("tar/ustar.tar")));
    ASSERT_EQ(listing.members.size(), 8U);
    EXPECT_EQ(listing.members[0].dosDate, 21 << 9 | 5 << 5 | 18);  // 2001-05-18
    EXPECT_EQ(listing.members[0].dosTime, 2 << 11 | 30 << 5 | 29);
}

TEST(TarListing, DatesBeforeTheRangeBecomeItsFirst) {
    const TimeZone zone("UTC0");
    const std::string bytes = tarMember("early", "", '0', 0) + tarMember("before", "", '0', -5) + tarEnd();
    const Listing listing = walk(openTar(inMemory(bytes), "x.tar"));
    ASSERT_EQ(listing.members.size(), 2U);
    for (const Member& member : listing.members) {
        EXPECT_EQ(member.dosDate, 1 << 5 | 1);
        EXPECT_EQ(member.dosTime, 0);
    }
    EXPECT_EQ(listing.members[1].written->seconds, -5);
}

TEST(TarListing, DatesBehindTheRangeBecomeItsLast) {
    const TimeZone zone("UTC0");
    const std::string bytes =
        tarMember("2099", "", '0', 4'085'353'846) + tarMember("late", "", '0', 8'000'000'000) + tarEnd();
    const Listing listing = walk(openTar(inMemory(bytes), "x.tar"));
    ASSERT_EQ(listing.members.size(), 2U);
    EXPECT_EQ(listing.members[0].dosDate, 119 << 9 | 6 << 5 | 17);  // 2099-06-17 04:30:46
    EXPECT_EQ(listing.members[0].dosTime, 4 << 11 | 30 << 5 | 23);
    EXPECT_EQ(listing.members[1].written->seconds, 8'000'000'000);
    EXPECT_EQ(listing.members[1].dosDate, 127 << 9 | 12 << 5 | 31);
    EXPECT_EQ(listing.members[1].dosTime, 23 << 11 | 59 << 5 | 29);
}

TEST(TarListing, GivesTimesOfPaxHeaders) {
    const std::string pax = paxRecord("mtime", "1000000000.25") + paxRecord("atime", "1000000001.5") +
                            paxRecord("LIBARCHIVE.creationtime", "999999999");
    const std::string bytes = tarMember("pax", pax, 'x') + tarMember("file", "x") + tarEnd();
    const Listing listing = walk(openTar(inMemory(bytes), "x.tar"));
    ASSERT_EQ(listing.members.size(), 1U);
    const Member& member = listing.members[0];
    EXPECT_EQ(member.written->seconds, 1000000000);
    EXPECT_EQ(member.written->nanoseconds, 250'000'000U);
    EXPECT_EQ(member.accessed->seconds, 1000000001);
    EXPECT_EQ(member.accessed->nanoseconds, 500'000'000U);
    EXPECT_EQ(member.created->seconds, 999999999);
}

TEST(TarListing, SkipsMembersOfAnySize) {
    constexpr std::uint64_t kTenGibibytes = std::uint64_t{10} << 30;
    const std::string behind = tarMember("small", "content") + tarEnd();
    const std::uint64_t second = 512 + kTenGibibytes;
    const OpenResult opened =
        openTar(std::make_unique<SparseFile>(
                    std::map<std::uint64_t, std::string>{{0, tarHeader("large", kTenGibibytes)}, {second, behind}},
                    second + behind.size()),
                "x.tar");
    ASSERT_TRUE(opened.reader);
    const Listing listing = walk(*opened.reader);
    EXPECT_EQ(listing.end, kNoMoreEntries);
    ASSERT_EQ(listing.names(), (std::vector<std::string>{"large", "small"}));
    EXPECT_EQ(listing.members[0].originalSize, kTenGibibytes);
    EXPECT_EQ(unpack(*opened.reader, "small").bytes, "content");
}

TEST(TarListing, OfAnArchiveWithoutMembers) {
    for (const std::size_t size : {1024U, 10240U, 1024U * 1024U}) {
        const Listing listing = walk(openTar(inMemory(std::string(size, '\0')), "x.tar"));
        EXPECT_EQ(listing.end, kNoMoreEntries) << size;
        EXPECT_TRUE(listing.members.empty());
    }
}

TEST(TarListing, EndBlocksMayBeMissing) {
    const Listing listing = walk(openTar(inMemory(tarMember("a", "x")), "x.tar"));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    EXPECT_EQ(listing.names(), std::vector<std::string>{"a"});
}

TEST(TarListing, KindIsToldByContent) {
    const TemporaryFolder folder;
    const auto file = folder.write("no-tar-at-all.zip", readFile(dataFile("tar/ustar.tbz")));
    const OpenResult opened = openTar(file);
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(opened.reader->facts().archiveType, 6);
}

TEST(TarRead, GivesTheMembersBytes) {
    for (const char* name : {"ustar.tar", "ustar.tgz", "ustar.taz", "ustar.tbz"}) {
        const OpenResult opened = openTar(dataFile(std::string("tar/") + name));
        ASSERT_TRUE(opened.reader) << name;
        const Unpacked text = unpack(*opened.reader, "./docs/again.txt");
        EXPECT_EQ(text.code, kOk) << name;
        EXPECT_EQ(text.bytes, readFile(dataFile("tar/again.txt"))) << name;
        EXPECT_EQ(unpack(*opened.reader, "./docs/old notes/my file.txt").bytes, "A name with blanks.\n") << name;
        EXPECT_EQ(unpack(*opened.reader, "./docs/empty.txt").code, kOk) << name;
        EXPECT_EQ(unpack(*opened.reader, "./docs/").bytes, "") << name;
    }
}

TEST(TarRead, FillsHolesOfSparseFilesWithZeros) {
    std::string expected(300000, '\0');
    expected.replace(200000, 4, "data");
    for (const char* name : {"tar/gnu.tar", "tar/pax.tar"}) {
        const OpenResult opened = openTar(dataFile(name));
        ASSERT_TRUE(opened.reader) << name;
        const Unpacked holes = unpack(*opened.reader, "./holes");
        EXPECT_EQ(holes.code, kOk) << name;
        EXPECT_TRUE(holes.bytes == expected) << name << " " << holes.bytes.size();
    }
}

// The file claims nearly 8 EiB of zeros behind its four bytes.
TEST(TarRead, HolesBeyondAnyFileAreRefused) {
    const std::string claims = paxRecord("GNU.sparse.size", "9000000000000000000") +
                               paxRecord("GNU.sparse.numblocks", "1") + paxRecord("GNU.sparse.map", "0,4");
    const OpenResult opened =
        openTar(inMemory(tarMember("pax", claims, 'x') + tarMember("holes", "data") + tarEnd()), "x.tar");
    ASSERT_TRUE(opened.reader);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(member.originalSize, 9000000000000000000U);
    std::string bytes;
    const auto keep = [&bytes](const char* piece, std::size_t size) {
        bytes.append(piece, size);
        return bytes.size() < 1000000;
    };
    EXPECT_EQ(opened.reader->read(keep), kCannotRead);
    EXPECT_EQ(bytes, "data");
}

TEST(TarRead, LinksAndPipesHaveNoBytes) {
    for (const char* name : {"tar/gnu.tar", "tar/pax.tar"}) {
        const OpenResult opened = openTar(dataFile(name));
        ASSERT_TRUE(opened.reader) << name;
        for (const char* member : {"./hard", "./symbolic", "./pipe"}) {
            const Unpacked link = unpack(*opened.reader, member);
            EXPECT_EQ(link.code, kOk) << name << member;
            EXPECT_EQ(link.bytes, "") << name << member;
        }
    }
}

TEST(TarRead, SinkCanStop) {
    const OpenResult opened = openTar(inMemory(tarMember("a", "bytes") + tarMember("b", "") + tarEnd()), "x.tar");
    ASSERT_TRUE(opened.reader);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(opened.reader->read([](const char*, std::size_t) { return false; }), kUserCancel);
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(member.name, "b");
}

TEST(TarRead, NeedsACurrentMember) {
    const OpenResult opened = openTar(dataFile("tar/ustar.tar"));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(unpack(*opened.reader).code, kNotSearchMode);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(unpack(*opened.reader).code, kOk);
    EXPECT_EQ(unpack(*opened.reader).code, kNotSearchMode);  // once a member
}

}  // namespace
}  // namespace archiver::test
