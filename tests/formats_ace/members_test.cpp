#include <gtest/gtest.h>

#include "archivers/formats/ace/member_fields.h"
#include "formats/support/listing.h"
#include "formats_ace/support/ace_builder.h"
#include "formats_ace/support/memory_disk.h"

namespace archiver::test {
namespace {

Member memberOf(const AceFile& file, std::uint8_t host = 2) {
    const auto reader = openBytes(aceArchive({.host = host}, {file}));
    Member member;
    EXPECT_EQ(reader->next(member), kOk);
    return member;
}

TEST(AceMember, TellsItsHeader) {
    const Member member = memberOf({.name = "docs\\a.txt",
                                    .content = "123456789",
                                    .flags = 0x4001,
                                    .stamp = 0x2AB18BDD,
                                    .attributes = 0xFFFFFF2F});
    EXPECT_EQ(member.name, "docs\\a.txt");
    EXPECT_EQ(member.originalSize, 9U);
    EXPECT_EQ(member.packedSize, 9U);
    EXPECT_EQ(member.crc, 0xCBF43926U);  // the usual form
    EXPECT_EQ(member.dosDate, 0x2AB1);
    EXPECT_EQ(member.dosTime, 0x8BDD);
    EXPECT_EQ(member.attributes, 0x27);  // no volume label
    EXPECT_TRUE(member.encrypted);
    EXPECT_FALSE(member.written);
}

TEST(AceMember, NamesItsMethod) {
    EXPECT_EQ(memberOf({.name = "x", .method = 0}).method, "Stored");
    EXPECT_EQ(memberOf({.name = "x", .method = 1}).method, "LZ77");
    EXPECT_EQ(memberOf({.name = "x", .method = 2}).method, "Blocked");
    EXPECT_EQ(memberOf({.name = "x", .method = 3}).method, "Unknown");
    EXPECT_FALSE(memberOf({.name = "x"}).encrypted);
}

TEST(AceMember, ThatIsAFolderEndsWithASeparator) {
    EXPECT_EQ(memberOf({.name = "docs", .attributes = 0x10}).name, "docs\\");
    EXPECT_EQ(memberOf({.name = "docs\\", .attributes = 0x10}).name, "docs\\");
    EXPECT_EQ(memberOf({.name = "docs/", .attributes = 0x10}).name, "docs/");
    EXPECT_EQ(memberOf({.name = "docs\\", .attributes = 0}).attributes, attribute::kFolder);
    EXPECT_EQ(memberOf({.name = "", .attributes = 0x10}).name, "");
    const auto reader = openBytes(aceArchive({}, {{.name = "docs", .attributes = 0x10}}));
    EXPECT_EQ(unpack(*reader, "docs\\").code, kOk);
}

TEST(AceMember, NameEndsAtAZeroByte) { EXPECT_EQ(memberOf({.name = std::string("a.txt\0.exe", 10)}).name, "a.txt"); }

TEST(AceMember, NameStaysAsStoredInTheHeader) {
    const auto reader = openBytes(aceArchive({}, {{.name = "\x84\xFF"}}));
    Member member;
    ASSERT_EQ(reader->next(member), kOk);
    EXPECT_EQ(reader->header().name, "\x84\xFF");
}

#ifndef _WIN32
// Code pages 437 and 1252 stand for those of the system.
TEST(AceMember, NameIsInTheCodePageOfItsSystem) {
    EXPECT_EQ(memberOf({.name = "\x84.txt"}, 0).name, "\u00E4.txt");  // MS-DOS
    EXPECT_EQ(memberOf({.name = "\x84.txt"}, 1).name, "\u00E4.txt");  // OS/2
    EXPECT_EQ(memberOf({.name = "\xE4.txt"}, 2).name, "\u00E4.txt");  // Win32
    EXPECT_EQ(memberOf({.name = "\xE4.txt"}, 5).name, "\u00E4.txt");  // Windows NT
    EXPECT_EQ(memberOf({.name = "\xC3\xA4.txt"}, 2).name, "\u00C3\u00A4.txt");
    EXPECT_EQ(memberOf({.name = "\xC3\xA4.txt"}, 12).name, "\u00E4.txt");  // Linux
    EXPECT_EQ(memberOf({.name = "\xE4.txt"}, 3).name, "\u00E4.txt");       // Unix
}
#endif

TEST(AceMember, ComesFromTheArchivesSystem) {
    // Numbers of the convention for the format's 0 to 12.
    const std::uint32_t expected[] = {0, 5, 21, 2, 4, 18, 1, 6, 7, 9, 3, 8, 2};
    for (std::uint8_t host = 0; host < 13; ++host) {
        EXPECT_EQ(memberOf({.name = "x"}, host).osType, expected[host]);
        EXPECT_EQ(openBytes(aceMainHeader({.host = host}))->facts().osType, expected[host]);
    }
    EXPECT_EQ(memberOf({.name = "x"}, 13).osType, os_type::kUnknown);
    EXPECT_EQ(memberOf({.name = "x"}, 255).osType, os_type::kUnknown);
}

TEST(AceMember, OfAnUnknownMethodIsRefused) {
    const auto reader =
        openBytes(aceArchive({}, {{.name = "x", .content = "abc", .method = 3}, {.name = "y", .content = "z"}}));
    EXPECT_EQ(unpack(*reader, "x").code, kMethod);
    EXPECT_EQ(unpack(*reader, "y").code, kOk);
}

TEST(AceMember, WithAWrongChecksumIsDamaged) {
    const auto reader = openBytes(aceArchive({}, {{.name = "x", .content = "abc", .checksum = 1}}));
    const Unpacked unpacked = unpack(*reader, "x");
    EXPECT_EQ(unpacked.code, kFileCrc);
    EXPECT_EQ(unpacked.bytes, "abc");
}

TEST(AceMember, ThatIsCutShortIsTold) {
    const std::string whole = aceArchive({}, {{.name = "x", .content = std::string(1000, 'c')}});
    const auto reader = openBytes(whole.substr(0, whole.size() - 1));
    EXPECT_EQ(unpack(*reader, "x").code, kCannotRead);
    Member member;
    EXPECT_EQ(reader->next(member), kHeaderBroken);
}

TEST(AceMember, OfFewerBytesThanClaimedIsDamaged) {
    const auto reader =
        openBytes(aceArchive({}, {{.name = "x", .content = "abc", .originalSize = 4}, {.name = "y", .content = "z"}}));
    EXPECT_EQ(unpack(*reader, "x").code, kFileCrc);
    EXPECT_EQ(unpack(*reader, "y").bytes, "z");
}

TEST(AceMember, OfMoreBytesThanClaimedEndsInTime) {
    const auto reader = openBytes(aceArchive({}, {{.name = "x", .content = "abc", .packed = "abcdef"}, {.name = "y"}}));
    const Unpacked unpacked = unpack(*reader, "x");
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes, "abc");
    EXPECT_EQ(unpack(*reader, "y").code, kOk);
}

TEST(AceMember, ClaimsTakeNoMemory) {
    for (std::uint8_t method = 0; method < 3; ++method) {
        const auto reader = openBytes(aceArchive({}, {{.name = "x",
                                                       .content = "abc",
                                                       .type = 3,
                                                       .method = method,
                                                       .originalSize = 1ULL << 62,
                                                       .packedSize = ~0ULL}}));
        Member member;
        ASSERT_EQ(reader->next(member), kOk);
        EXPECT_EQ(member.packedSize, ~0ULL);
        EXPECT_EQ(unpack(*reader).code, kCannotRead);
        EXPECT_EQ(reader->next(member), kHeaderBroken);
    }
}

TEST(AceMember, OfNoBytesIsUnpacked) {
    for (std::uint8_t method = 0; method < 3; ++method) {
        const auto reader = openBytes(aceArchive({}, {{.name = "x", .method = method}}));
        const Unpacked unpacked = unpack(*reader, "x");
        EXPECT_EQ(unpacked.code, kOk);
        EXPECT_EQ(unpacked.bytes, "");
    }
}

TEST(AceMember, IsNotReadBeforeTheFirst) {
    const auto reader = openBytes(aceArchive({}, {{.name = "x"}}));
    EXPECT_EQ(unpack(*reader).code, kNotSearchMode);
    Member member;
    ASSERT_EQ(reader->next(member), kOk);
    ASSERT_EQ(reader->next(member), kNoMoreEntries);
    EXPECT_EQ(unpack(*reader).code, kNotSearchMode);
}

TEST(AceMember, CanBeStopped) {
    const auto reader =
        openBytes(aceArchive({}, {{.name = "x", .content = std::string(200'000, 'c')}, {.name = "y", .content = "z"}}));
    Member member;
    ASSERT_EQ(reader->next(member), kOk);
    int calls = 0;
    EXPECT_EQ(reader->read([&](const char*, std::size_t) { return ++calls < 2; }), kUserCancel);
    EXPECT_EQ(calls, 2);
    const Unpacked again = unpack(*reader);
    EXPECT_EQ(again.code, kOk);
    EXPECT_EQ(again.bytes, std::string(200'000, 'c'));
    EXPECT_EQ(unpack(*reader, "y").bytes, "z");
}

TEST(AceMember, ManyAreWalkedInOnePass) {
    std::string bytes = aceMainHeader({});
    const std::string one = aceMember({.name = "folder\\file.txt", .content = "content"});
    for (int i = 0; i < 20'000; ++i) bytes += one;
    const auto reader = openBytes(std::move(bytes));
    const Listing listing = walk(*reader);
    EXPECT_EQ(listing.members.size(), 20'000U);
    EXPECT_EQ(listing.end, kNoMoreEntries);
}

}  // namespace
}  // namespace archiver::test
