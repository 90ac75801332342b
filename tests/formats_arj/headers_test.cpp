#include <gtest/gtest.h>

#include "archivers/formats/arj/arj_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/arj_builder.h"

/// The structure of headers: sizes, checksums, what follows them.
namespace archiver::test {
namespace {

OpenResult opened(std::string bytes) { return openArj(inMemory(std::move(bytes)), {}); }

using Names = std::vector<std::string>;

TEST(ArjHeaders, GiveMembersInOrder) {
    const Listing listing = walk(opened(arjArchive({}, {{.name = "b.txt", .content = "one"}, {.name = "a/c.txt"}})));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    EXPECT_EQ(listing.names(), (Names{"b.txt", "a/c.txt"}));
}

TEST(ArjHeaders, MayBeFollowedByNothing) {
    EXPECT_EQ(walk(opened(arjArchive({}, {}))).end, kNoMoreEntries);
    EXPECT_EQ(walk(opened(arjArchive({}, {}, false))).end, kNoMoreEntries);
    const Listing listing = walk(opened(arjArchive({}, {{.name = "a", .content = "x"}}, false)));
    EXPECT_EQ(listing.names(), Names{"a"});
    EXPECT_EQ(listing.end, kNoMoreEntries);
}

TEST(ArjHeaders, EndAtTheirMark) {
    const Listing listing = walk(opened(arjArchive({}, {{.name = "a"}}) + "anything that is no header"));
    EXPECT_EQ(listing.names(), Names{"a"});
    EXPECT_EQ(listing.end, kNoMoreEntries);
}

TEST(ArjHeaders, OfEveryLength) {
    for (const std::uint8_t size : {30, 34, 46, 60, 255}) {
        const OpenResult archive =
            opened(arjArchive({.firstPart = size, .comment = "hello"},
                              {{.name = "a", .content = "x", .firstPart = size}, {.name = "b"}}));
        ASSERT_TRUE(archive.reader) << int{size};
        EXPECT_EQ(static_cast<ArjArchive&>(*archive.reader).comment(), "hello");
        EXPECT_EQ(walk(*archive.reader).names(), (Names{"a", "b"})) << int{size};
        EXPECT_EQ(unpack(*archive.reader, "a").bytes, "x") << int{size};
    }
}

TEST(ArjHeaders, TooShortAreDamage) {
    EXPECT_EQ(opened(arjArchive({.firstPart = 29}, {})).code, kFileStyle);
    EXPECT_EQ(walk(opened(arjArchive({}, {{.name = "a", .firstPart = 29}}))).end, kHeaderBroken);
    const std::string main = arjHeader(arjMainBasic({}));
    EXPECT_EQ(walk(opened(main + arjHeader(std::string(29, '\x1E')))).end, kHeaderBroken);
    // The name would begin behind the header.
    EXPECT_EQ(walk(opened(main + arjHeader(std::string(30, '\x1E')))).end, kHeaderBroken);
}

TEST(ArjHeaders, NeedTheEndsOfTheirTexts) {
    const std::string main = arjHeader(arjMainBasic({}));
    std::string basic = arjFileBasic({.name = "a"});
    basic.pop_back();
    EXPECT_EQ(walk(opened(main + arjHeader(basic))).end, kHeaderBroken);
    basic.pop_back();
    EXPECT_EQ(walk(opened(main + arjHeader(basic))).end, kHeaderBroken);
}

TEST(ArjHeaders, OfLargestSize) {
    const std::size_t plain = arjFileBasic({.name = "a"}).size();
    const std::string comment(2600 - plain, 'c');
    const OpenResult archive = opened(arjArchive({}, {{.name = "a", .comment = comment}}));
    Member member;
    ASSERT_EQ(archive.reader->next(member), kOk);
    EXPECT_EQ(static_cast<ArjArchive&>(*archive.reader).memberComment(), comment);
    const Listing listing = walk(opened(arjArchive({}, {{.name = "a", .comment = comment + "c"}})));
    EXPECT_TRUE(listing.members.empty());
    EXPECT_EQ(listing.end, kHeaderBroken);
}

TEST(ArjHeaders, HaveChecksums) {
    const std::string good = arjArchive({}, {{.name = "first"}, {.name = "second"}});
    std::string bytes = good;
    ++bytes[bytes.find("second")];
    const Listing listing = walk(opened(bytes));
    EXPECT_EQ(listing.names(), Names{"first"});
    EXPECT_EQ(listing.end, kHeaderCrc);
    bytes = good;
    ++bytes[bytes.find("test.arj")];
    EXPECT_EQ(opened(bytes).code, kHeaderCrc);
}

TEST(ArjHeaders, ExtendedOnesAreSkipped) {
    const std::string extended = arjExtended("owner") + arjExtended(std::string(65535, 'x')) + arjExtended("`\xEA");
    const OpenResult archive = opened(
        arjArchive({.extended = extended}, {{.name = "a", .content = "x", .extended = extended}, {.name = "b"}}));
    ASSERT_TRUE(archive.reader);
    EXPECT_EQ(walk(*archive.reader).names(), (Names{"a", "b"}));
    EXPECT_EQ(unpack(*archive.reader, "a").bytes, "x");
}

TEST(ArjHeaders, ExtendedOnesHaveChecksums) {
    std::string extended = arjExtended("owner");
    ++extended[3];
    EXPECT_EQ(walk(opened(arjArchive({}, {{.name = "a", .extended = extended}}))).end, kHeaderCrc);
    EXPECT_EQ(opened(arjArchive({.extended = extended}, {})).code, kHeaderCrc);
}

TEST(ArjHeaders, ExtendedOnesMayNotBeCut) {
    const std::string whole = arjArchive({.extended = arjExtended("owner")}, {});
    const std::size_t start = whole.find("owner");
    for (std::size_t size = start - 2; size < whole.size() - kArjEnd.size(); ++size) {
        EXPECT_EQ(opened(whole.substr(0, size)).code, kHeaderBroken) << size;
    }
}

TEST(ArjHeaders, DataMayNotBeCut) {
    const std::string whole = arjArchive({}, {{.name = "a", .content = "0123456789"}});
    const Listing listing = walk(opened(whole.substr(0, whole.find("56789"))));
    EXPECT_EQ(listing.names(), Names{"a"});
    EXPECT_EQ(listing.end, kHeaderBroken);
}

TEST(ArjHeaders, MustStandBehindTheData) {
    const Listing listing = walk(opened(arjArchive({}, {{.name = "a"}}, false) + "nothing of an archive"));
    EXPECT_EQ(listing.names(), Names{"a"});
    EXPECT_EQ(listing.end, kHeaderBroken);
}

TEST(ArjHeaders, OfTheArchiveStandInFrontOnly) {
    const std::string main = arjHeader(arjMainBasic({}));
    EXPECT_EQ(walk(opened(main + main)).end, kHeaderBroken);
}

TEST(ArjHeaders, EndTheWalkForGoodWhenDamaged) {
    const OpenResult archive = opened(arjArchive({}, {{.name = "a"}}, false) + "nothing of an archive");
    Member member;
    ASSERT_EQ(archive.reader->next(member), kOk);
    EXPECT_EQ(archive.reader->next(member), kHeaderBroken);
    EXPECT_EQ(archive.reader->next(member), kHeaderBroken);
    EXPECT_EQ(archive.reader->restart(), kOk);
    EXPECT_EQ(archive.reader->next(member), kOk);
    EXPECT_EQ(member.name, "a");
}

}  // namespace
}  // namespace archiver::test
