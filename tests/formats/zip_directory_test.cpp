#include <gtest/gtest.h>

#include <limits>

#include "archivers/formats/zip/zip_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/zip_builder.h"

/// Where the central directory is found, and how far it goes.
namespace archiver::test {
namespace {

using Names = std::vector<std::string>;

ZipBuilder twoMembers() {
    ZipBuilder builder;
    builder.add({.name = "one.txt", .content = "first content"}).add({.name = "two.txt", .content = "second content"});
    return builder;
}

/// Opens, lists and unpacks the two members.
void expectTwoMembers(const std::string& bytes) {
    const OpenResult opened = openZip(inMemory(bytes));
    ASSERT_TRUE(opened.reader) << opened.code;
    const Listing listing = walk(*opened.reader);
    EXPECT_EQ(listing.end, kNoMoreEntries);
    EXPECT_EQ(listing.names(), (Names{"one.txt", "two.txt"}));
    EXPECT_EQ(unpack(*opened.reader, "one.txt").bytes, "first content");
    const Unpacked second = unpack(*opened.reader, "two.txt");
    EXPECT_EQ(second.code, kOk);
    EXPECT_EQ(second.bytes, "second content");
}

TEST(ZipDirectory, IsFoundInAPlainArchive) { expectTwoMembers(twoMembers().build()); }

TEST(ZipDirectory, IsFoundBehindAdjustedAndUnadjustedBytes) {
    for (const bool adjusted : {false, true}) {
        for (const std::size_t size : {std::size_t{1}, std::size_t{100}, std::size_t{70000}}) {
            expectTwoMembers(twoMembers().prefix(std::string("MZ") + std::string(size, '\x90'), adjusted).build());
        }
    }
}

TEST(ZipDirectory, IsFoundBeforeComments) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{1000}, std::size_t{0xFFFF}}) {
        expectTwoMembers(twoMembers().comment(std::string(size, 'c')).build());
    }
}

TEST(ZipDirectory, IsFoundBeforeACommentThatWasCut) {
    const std::string whole = twoMembers().comment(std::string(1000, 'c')).build();
    expectTwoMembers(whole.substr(0, whole.size() - 600));
}

TEST(ZipDirectory, IsFoundBeforeForeignBytes) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{21}, std::size_t{22}, std::size_t{0xFFFF},
                                   std::size_t{0x10000}, std::size_t{1000000}}) {
        expectTwoMembers(twoMembers().build() + std::string(size, '\0'));
        expectTwoMembers(twoMembers().comment("and a comment").build() + std::string(size, '\xAA'));
    }
}

TEST(ZipDirectory, IsNotSearchedForFartherThanAMebibyteFromTheEnd) {
    const std::string far = twoMembers().build() + std::string(3 << 20, '\0');
    EXPECT_EQ(openZip(inMemory(far)).code, kHeaderBroken);
}

TEST(ZipDirectory, IsNotTakenFromACommentThatLooksLikeAnEndRecord) {
    const std::string fake = std::string("PK\x05\x06") + std::string(18, '\0');
    expectTwoMembers(twoMembers().comment("before " + fake.substr(0, 4) + std::string(30, 'x')).build());
    expectTwoMembers(twoMembers().comment(std::string("PK\x05\x06") + std::string(18, '\x7F')).build());
}

TEST(ZipDirectory, IsFoundThroughZip64Records) {
    expectTwoMembers(twoMembers().zip64().build());
    expectTwoMembers(twoMembers().zip64().comment("comment").build());
    expectTwoMembers(twoMembers().zip64().prefix("#!/bin/sh\n", false).build());
    expectTwoMembers(twoMembers().zip64().prefix("#!/bin/sh\n", true).build());
    expectTwoMembers(twoMembers().zip64().build() + "foreign bytes");
}

TEST(ZipDirectory, IsFoundThroughAZip64RecordWithMoreInIt) {
    std::string bytes = twoMembers().zip64().build();
    const std::size_t record = bytes.rfind("PK\x06\x06");
    const std::size_t locator = bytes.rfind("PK\x06\x07");
    bytes.insert(locator, "extensible data");
    bytes[record + 4] = 44 + 15;
    expectTwoMembers(bytes);
}

TEST(ZipDirectory, Zip64MembersAreRead) {
    ZipBuilder builder;
    builder.add({.name = "one.txt", .content = "first content", .sizesInZip64 = true})
        .add({.name = "two.txt", .content = "second content", .sizesInZip64 = true, .offsetInZip64 = true})
        .zip64();
    expectTwoMembers(builder.build());
}

TEST(ZipDirectory, Zip64RecordThatIsNotThereLeavesTheClassicOne) {
    std::string bytes = twoMembers().zip64().build();
    bytes[bytes.rfind("PK\x06\x06")] = 'X';
    EXPECT_EQ(openZip(inMemory(bytes)).code, kHeaderBroken);
}

TEST(ZipDirectory, IsFoundByItsOffsetWhenBytesStandBehindIt) {
    const std::string plain = twoMembers().build();
    const std::size_t end = plain.rfind("PK\x05\x06");
    expectTwoMembers(plain.substr(0, end) + std::string("PK\x05\x05") + ZipBuilder::number16(4) + "sign" +
                     plain.substr(end));
    expectTwoMembers(plain.substr(0, end) + "anything at all" + plain.substr(end));
}

TEST(ZipDirectory, IsFoundBeyondFourGibibytes) {
    constexpr std::uint64_t kFiveGibibytes = std::uint64_t{5} << 30;
    for (const bool adjusted : {false, true}) {
        ZipBuilder builder;
        builder.add({.name = "one.txt", .content = "first content", .offsetInZip64 = adjusted})
            .add({.name = "two.txt", .content = "second content", .offsetInZip64 = adjusted});
        if (adjusted) builder.startAt(kFiveGibibytes).zip64();
        const std::string archive = builder.build();
        const OpenResult opened = openZip(std::make_unique<SparseFile>(
            std::map<std::uint64_t, std::string>{{kFiveGibibytes, archive}}, kFiveGibibytes + archive.size()));
        ASSERT_TRUE(opened.reader) << opened.code;
        EXPECT_EQ(opened.reader->facts().fileSize, kFiveGibibytes + archive.size());
        EXPECT_EQ(walk(*opened.reader).names(), (Names{"one.txt", "two.txt"}));
        EXPECT_EQ(unpack(*opened.reader, "two.txt").bytes, "second content");
    }
}

TEST(ZipDirectory, OfTheLastOfJoinedArchivesIsTaken) {
    const std::string first = ZipBuilder().add({.name = "old.txt", .content = "first content"}).build();
    expectTwoMembers(first + twoMembers().build());
    expectTwoMembers(twoMembers().build() + twoMembers().build());
}

TEST(ZipDirectory, OfAStoredArchiveIsNotTakenForThatOfACutOne) {
    const std::string inner = ZipBuilder().add({.name = "inner.txt", .content = "x"}).build();
    const std::string outer =
        ZipBuilder().add({.name = "outer.txt", .content = "x"}).add({.name = "inner.zip", .content = inner}).build();
    const std::size_t directory = outer.find("PK\x01\x02", outer.find("PK\x05\x06"));
    ASSERT_NE(directory, std::string::npos);
    EXPECT_EQ(openZip(inMemory(outer.substr(0, directory + 10))).code, kHeaderBroken);
    EXPECT_EQ(walk(openZip(inMemory(outer))).names(), (Names{"outer.txt", "inner.zip"}));
}

TEST(ZipDirectory, CountIsNotBelieved) {
    for (const std::uint16_t claim : {0, 1, 3, 65535}) {
        expectTwoMembers(twoMembers().claimEntries(claim).build());
    }
}

TEST(ZipDirectory, MoreThan65535MembersNeedNoZip64) {
    ZipBuilder builder;
    for (int index = 0; index < 66000; ++index) builder.add({.name = std::to_string(index)});
    const Listing listing = walk(openZip(inMemory(builder.claimEntries(66000 - 65536).build())));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    ASSERT_EQ(listing.members.size(), 66000U);
    EXPECT_EQ(listing.members.back().name, "65999");
}

TEST(ZipDirectory, DamageEndsTheWalkBehindTheGoodMembers) {
    const std::string good = twoMembers().build();
    std::string damaged = good;
    damaged[good.rfind("PK\x01\x02") + 2] = 'X';
    const OpenResult opened = openZip(inMemory(damaged));
    ASSERT_TRUE(opened.reader);
    const Listing listing = walk(*opened.reader);
    EXPECT_EQ(listing.end, kHeaderBroken);
    EXPECT_EQ(listing.names(), Names{"one.txt"});
    Member member;
    EXPECT_EQ(opened.reader->next(member), kHeaderBroken);  // an end stays
    opened.reader->restart();
    EXPECT_EQ(walk(*opened.reader).names(), Names{"one.txt"});
}

TEST(ZipDirectory, HeaderThatReachesBeyondTheDirectoryIsDamage) {
    std::string bytes = twoMembers().build();
    const std::size_t second = bytes.rfind("PK\x01\x02");
    bytes[second + 33] = '\x10';  // a comment of 4096 bytes
    const Listing listing = walk(openZip(inMemory(bytes)));
    EXPECT_EQ(listing.end, kHeaderBroken);
    EXPECT_EQ(listing.names(), Names{"one.txt"});
}

TEST(ZipDirectory, EndRecordWithoutADirectoryIsDamage) {
    std::string bytes = twoMembers().build();
    bytes[bytes.find("PK\x01\x02")] = 'X';
    EXPECT_EQ(openZip(inMemory(bytes)).code, kHeaderBroken);
    const std::string alone = std::string("PK\x05\x06") + ZipBuilder::number32(0) + ZipBuilder::number16(1) +
                              ZipBuilder::number16(1) + std::string(8, '\x55') + ZipBuilder::number16(0);
    EXPECT_EQ(openZip(inMemory(alone)).code, kHeaderBroken);
}

TEST(ZipDirectory, SeveralVolumesAreRefused) {
    for (const std::size_t field : {4U, 6U}) {
        std::string bytes = twoMembers().build();
        bytes[bytes.rfind("PK\x05\x06") + field] = 1;
        EXPECT_EQ(openZip(inMemory(bytes)).code, kNotSupport);
    }
    std::string zip64 = twoMembers().zip64().build();
    const std::size_t end = zip64.rfind("PK\x05\x06");
    zip64[end + 4] = zip64[end + 5] = '\xFF';
    zip64[zip64.rfind("PK\x06\x06") + 16] = 2;
    EXPECT_EQ(openZip(inMemory(zip64)).code, kNotSupport);
}

TEST(ZipDirectory, FileOfNothingButSignaturesEndsSoon) {
    std::string bytes;
    for (int index = 0; index < 300000; ++index) bytes += "PK\x05\x06";
    EXPECT_NE(openZip(inMemory(bytes)).code, kOk);
}

TEST(ZipDirectory, HugeClaimsAreNoOffsets) {
    for (const std::size_t field : {12U, 16U}) {
        std::string bytes = twoMembers().build();
        const std::size_t end = bytes.rfind("PK\x05\x06");
        for (std::size_t index = 0; index < 4; ++index) bytes[end + field + index] = '\xFE';
        const Listing listing = walk(openZip(inMemory(bytes)));
        EXPECT_EQ(listing.end, kNoMoreEntries);
        EXPECT_EQ(listing.names(), (Names{"one.txt", "two.txt"}));
    }
    std::string zip64 = twoMembers().zip64().build();
    const std::size_t record = zip64.rfind("PK\x06\x06");
    for (std::size_t index = 40; index < 56; ++index) zip64[record + index] = '\xFF';
    EXPECT_EQ(openZip(inMemory(zip64)).code, kHeaderBroken);
}

}  // namespace
}  // namespace archiver::test
