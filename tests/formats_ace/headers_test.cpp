#include "archivers/formats/ace/headers.h"

#include <gtest/gtest.h>

#include "formats/support/listing.h"
#include "formats_ace/support/ace_builder.h"
#include "formats_ace/support/memory_disk.h"

namespace archiver::test {
namespace {

std::string twoMembers(const std::string& between) {
    return aceMainHeader({}) + aceMember({.name = "a", .content = "one"}) + between +
           aceMember({.name = "b", .content = "two"});
}

TEST(AceHeaders, ChecksumIsThatOfTheFormat) {
    // From the description of the format.
    EXPECT_EQ(aceChecksum("123456789"), 873187033U);
    const std::string header = aceHeader("123456789");
    EXPECT_EQ(static_cast<unsigned char>(header[0]) | static_cast<unsigned char>(header[1]) << 8, 50905);
    ace::RawHeader raw;
    EXPECT_EQ(ace::checkHeader(header, raw), kOk);
    EXPECT_EQ(raw.flags, 0x3332);
}

TEST(AceHeaders, OfOtherKindsArePassed) {
    const std::string recovery = aceHeader(std::string("\x02\x01\0", 3) + littleEndian(5, 4) + "**ACE**") + "12345";
    const std::string recovery64 = aceHeader(std::string("\x04\x01\0", 3) + littleEndian(5, 8) + "**ACE**") + "12345";
    const std::string sectors = aceHeader(std::string("\x05\0\0", 3) + littleEndian(5, 8) + "**ACE**") + "12345";
    const std::string withData = aceHeader(std::string("\x63\x01\0", 3) + littleEndian(4, 4) + "more") + "data";
    const std::string withMuchData = aceHeader(std::string("\x63\x05\0", 3) + littleEndian(4, 8)) + "data";
    const std::string without = aceHeader(std::string("\x63\0\0", 3));
    for (const std::string& between :
         {recovery, recovery64, sectors, withData, withMuchData, without, aceMainHeader({}), recovery + without}) {
        const auto reader = openBytes(twoMembers(between));
        ASSERT_TRUE(reader);
        const Listing listing = walk(*reader);
        EXPECT_EQ(listing.names(), (std::vector<std::string>{"a", "b"}));
        EXPECT_EQ(listing.end, kNoMoreEntries);
    }
}

TEST(AceHeaders, WithSizesOf64BitsAreRead) {
    for (const AceFile& file : {AceFile{.name = "x", .content = "content", .type = 3, .flags = 0x0005},
                                AceFile{.name = "x", .content = "content", .type = 3, .flags = 0x0001},
                                AceFile{.name = "x", .content = "content", .type = 1, .flags = 0x0005}}) {
        const auto reader = openBytes(aceArchive({}, {file, {.name = "y"}}));
        ASSERT_TRUE(reader);
        Member member;
        ASSERT_EQ(reader->next(member), kOk);
        EXPECT_EQ(member.originalSize, 7U);
        EXPECT_EQ(unpack(*reader).bytes, "content");
        EXPECT_EQ(reader->next(member), kOk);
        EXPECT_EQ(reader->next(member), kNoMoreEntries);
    }
    const auto reader = openBytes(
        aceArchive({}, {{.name = "x", .content = "0123", .type = 3, .originalSize = 1ULL << 40, .packedSize = 4}}));
    Member member;
    ASSERT_EQ(reader->next(member), kOk);
    EXPECT_EQ(member.originalSize, 1ULL << 40);
    EXPECT_EQ(member.packedSize, 4U);
}

TEST(AceHeaders, WithMoreThanIsKnownAreRead) {
    const std::string behind(300, '?');
    const auto reader = openBytes(
        aceArchive({.advert = "ad", .behind = behind},
                   {{.name = "x", .content = "content", .security = "rights", .behind = behind}, {.name = "y"}}));
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->aceFacts().advert, "ad");
    EXPECT_EQ(unpack(*reader, "x").bytes, "content");
    EXPECT_EQ(unpack(*reader, "y").code, kOk);
}

TEST(AceHeaders, OfTheLargestSizeAreRead) {
    // 65,535 bytes behind the size: 31 of fixed fields, the rest is the name.
    const std::string name(65535 - 31, 'n');
    ASSERT_EQ(aceFileHeader({.name = name}).size(), 65539U);
    const auto reader = openBytes(aceArchive({}, {{.name = name, .content = "x"}, {.name = "y"}}));
    ASSERT_TRUE(reader);
    EXPECT_EQ(walk(*reader).names(), (std::vector<std::string>{name, "y"}));
}

TEST(AceHeaders, ThatAreDamagedEndTheWalk) {
    std::string wrongChecksum = aceFileHeader({.name = "x"});
    wrongChecksum.back() = 'y';
    const std::string noRoomForName =
        aceHeader(std::string("\x01\x01\0", 3) + std::string(24, '\0') + littleEndian(9, 2) + "short");
    const std::string noRoomForComment = aceFileHeader({.name = "x", .flags = 0x0003, .behind = "\xFF\xFF"});
    const std::string noRoomForSize = aceHeader(std::string("\x63\x01\0", 3) + "12");
    struct Case {
        std::string header;
        ReturnCode code;
    };
    for (const auto& [header, code] :
         {Case{wrongChecksum, kHeaderCrc}, Case{noRoomForName, kHeaderBroken}, Case{noRoomForComment, kHeaderBroken},
          Case{noRoomForSize, kHeaderBroken}, Case{aceHeader("\x01"), kHeaderBroken},
          Case{aceHeader(""), kHeaderBroken}, Case{std::string(100, '\0'), kHeaderBroken},
          Case{"foreign", kHeaderBroken}, Case{"x", kHeaderBroken},
          Case{aceFileHeader({.name = "x"}).substr(0, 20), kHeaderBroken}}) {
        const auto reader = openBytes(aceMainHeader({}) + aceMember({.name = "a", .content = "one"}) + header);
        ASSERT_TRUE(reader);
        const Listing listing = walk(*reader);
        EXPECT_EQ(listing.names(), std::vector<std::string>{"a"});
        EXPECT_EQ(listing.end, code);
        Member member;
        EXPECT_EQ(reader->next(member), code);
    }
}

TEST(AceHeaders, OfNoArchiveAreRefused) {
    MemoryDisk disk;
    std::string wrongChecksum = aceMainHeader({});
    wrongChecksum[20] ^= 1;
    const std::string noRoom = aceHeader(std::string("\0\0\x10", 3) + "**ACE**" + std::string(16, '\0') + "\xFF");
    struct Case {
        std::string bytes;
        ReturnCode code;
    };
    for (const auto& [bytes, code] :
         {Case{"", kFileStyle}, Case{"x", kFileStyle}, Case{std::string(100'000, 'x'), kFileStyle},
          Case{"**ACE**", kFileStyle}, Case{wrongChecksum, kHeaderCrc}, Case{noRoom, kHeaderBroken},
          Case{aceMainHeader({}).substr(0, 20), kHeaderBroken}, Case{"program" + wrongChecksum, kFileStyle}}) {
        disk.put("a.ace", bytes);
        EXPECT_EQ(disk.open("a.ace").code, code);
    }
    EXPECT_EQ(disk.open("b.ace").code, kNotFindArcFile);
}

TEST(AceHeaders, FullOfMagicTakeNoTime) {
    // Each place looks like a header of the largest size.
    std::string bytes;
    while (bytes.size() < 600'000) bytes += std::string("\0\0\xFF\xFF\0\0\0", 7) + "**ACE**";
    MemoryDisk disk;
    disk.put("a.ace", bytes);
    EXPECT_NE(disk.open("a.ace").code, kOk);
}

TEST(AceHeaders, OfAnEmptyArchiveAreAnArchive) {
    const auto reader = openBytes(aceMainHeader({}));
    ASSERT_TRUE(reader);
    EXPECT_EQ(walk(*reader).end, kNoMoreEntries);
}

}  // namespace
}  // namespace archiver::test
