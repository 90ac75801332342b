#include "archivers/formats/lzh/new_header.h"

#include <gtest/gtest.h>

#include "archivers/formats/little_endian.h"
#include "archivers/formats/lzh/header.h"
#include "archivers/formats/lzh/lzh_reader.h"
#include "archivers/formats/lzh/member_fields.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_lzh/support/lzh_builder.h"

/// Headers as they are written.
namespace archiver::test {
namespace {

using lzh::headerOf;
using lzh::NewMember;

NewMember stored(std::string name) {
    NewMember member;
    member.name = std::move(name);
    member.method = "-lh0-";
    member.packedSize = member.originalSize = 3;
    member.crc = 0x1234;
    member.attributes = attribute::kArchive;
    member.written = Moment{990120658, 0};  // 2001-05-17 17:30:58 UTC
    return member;
}

Member readBack(const std::string& header) {
    lzh::Header read;
    const auto file = inMemory(header + std::string(16, '\0'));
    EXPECT_EQ(lzh::readHeader(*file, 0, read), kOk);
    EXPECT_EQ(read.dataOffset, header.size());
    Member member;
    lzh::fillMember(read, member);
    return member;
}

TEST(LzhNewHeader, HasTheBytesOfLevel2) {
    std::string header = headerOf(stored("docs/a.txt"), {.level = 2, .windows = true});
    ASSERT_EQ(header.size(), 47U);
    const std::string crc = header.substr(27, 2);
    header.replace(27, 2, 2, '\0');
    EXPECT_EQ(crc, littleEndian(crc16OneBitAtATime(header), 2));
    EXPECT_EQ(header, std::string("\x2F\x00-lh0-\x03\x00\x00\x00\x03\x00\x00\x00", 15) +
                          std::string("\xD2\x0A\x04\x3B\x20\x02\x34\x12W", 9) +
                          std::string("\x05\x00\x00\x00\x00\x08\x00\x01", 8) + "a.txt" +
                          std::string("\x08\x00\x02", 3) + "docs\xFF" + std::string("\x00\x00", 2));
}

TEST(LzhNewHeader, IsReadBackAtEveryLevel) {
    const TimeZone utc("UTC0");
    for (const int level : {0, 1, 2}) {
        SCOPED_TRACE(level);
        NewMember member = stored("docs/deep/a.txt");
        member.attributes = attribute::kReadOnly | attribute::kHidden;
        const std::string header = headerOf(member, {.level = level, .windows = true});
        EXPECT_EQ(header[20], level);
        const Member read = readBack(header);
        EXPECT_EQ(read.name, "docs/deep/a.txt");
        EXPECT_EQ(read.method, "-lh0-");
        EXPECT_EQ(read.packedSize, 3U);
        EXPECT_EQ(read.originalSize, 3U);
        EXPECT_EQ(read.crc, 0x1234U);
        EXPECT_EQ(read.attributes, attribute::kReadOnly | attribute::kHidden);
        EXPECT_EQ(read.dosDate, 0x2AB1);
        EXPECT_EQ(read.dosTime, 0x8BDD);
        EXPECT_EQ(read.osType, level == 0 ? os_type::kUnknown : os_type::kWindowsNtfs);
    }
}

TEST(LzhNewHeader, KeepsTheTimesOfWindows) {
    NewMember member = stored("a");
    member.created = Moment{1'000'000'000, 123'456'700};
    member.written = Moment{1'100'000'000, 700};
    member.accessed = Moment{-5, 0};
    for (const int level : {1, 2}) {
        const Member read = readBack(headerOf(member, {.level = level}));
        ASSERT_TRUE(read.created && read.written && read.accessed);
        EXPECT_EQ(read.created->seconds, 1'000'000'000);
        EXPECT_EQ(read.created->nanoseconds, 123'456'700U);
        EXPECT_EQ(read.written->seconds, 1'100'000'000);
        EXPECT_EQ(read.written->nanoseconds, 700U);
        EXPECT_EQ(read.accessed->seconds, -5);
    }
}

TEST(LzhNewHeader, TakesTheNearestOfTimesThatItHasNoRoomFor) {
    NewMember member = stored("a");
    member.written = Moment{-1, 0};
    EXPECT_EQ(readBack(headerOf(member, {})).written->seconds, 0);
    member.written = Moment{std::int64_t{1} << 40, 0};
    EXPECT_EQ(readBack(headerOf(member, {})).written->seconds, 0xFFFFFFFF);
    member.written.reset();
    EXPECT_EQ(readBack(headerOf(member, {})).written->seconds, 0);
}

TEST(LzhNewHeader, NeverHasASizeWhoseLowByteIsTheEndMark) {
    // Sizes of 256 and 512 are among these.
    for (std::size_t length = 1; length < 600; ++length) {
        const std::string header = headerOf(stored(std::string(length, 'n')), {.level = 2});
        EXPECT_NE(header[0], '\0') << length;
        EXPECT_EQ(little_endian::load16(header.data()), header.size());
        EXPECT_EQ(readBack(header).name.size(), length);
    }
}

TEST(LzhNewHeader, TakesNamesOfAnyLengthThatAPathHas) {
    for (const int level : {0, 1, 2}) {
        for (const std::size_t length : {229, 230, 231, 255, 256, 2000, 30000}) {
            const std::string name = std::string(length / 2, 'f') + '/' + std::string(length, 'n');
            EXPECT_EQ(readBack(headerOf(stored(name), {.level = level})).name, name) << level << ' ' << length;
        }
    }
    EXPECT_EQ(headerOf(stored(std::string(66000, 'n')), {}), "");
}

TEST(LzhNewHeader, HasRoomForLargeSizes) {
    NewMember member = stored("a");
    member.large = true;
    for (const std::uint64_t size : {std::uint64_t{7}, std::uint64_t{0x1'2345'6789}}) {
        member.packedSize = size;
        member.originalSize = size + 1;
        for (const int level : {0, 1, 2}) {
            const std::string header = headerOf(member, {.level = level});
            EXPECT_EQ(header[20], 2) << "the only one with such fields";
            EXPECT_EQ(readBack(header).packedSize, size);
            EXPECT_EQ(readBack(header).originalSize, size + 1);
        }
    }
}

TEST(LzhNewHeader, IsAsLongWhateverTheSizes) {
    for (const int level : {0, 1, 2}) {
        NewMember member = stored("docs/\xE8\xAA\xAD.txt");
        const std::size_t length = headerOf(member, {.level = level}).size();
        member.packedSize = 0xFFFFFFF0;
        member.originalSize = 0xFFFFFFFE;
        member.crc = 0xFFFF;
        EXPECT_EQ(headerOf(member, {.level = level}).size(), length);
    }
}

TEST(LzhNewHeader, TellsFoldersFromFiles) {
    NewMember member = stored("docs/deep/");
    member.method = "-lhd-";
    member.packedSize = member.originalSize = member.crc = 0;
    member.attributes = attribute::kFolder;
    for (const int level : {0, 1, 2}) {
        const Member read = readBack(headerOf(member, {.level = level, .windows = true}));
        EXPECT_EQ(read.name, "docs/deep/");
        EXPECT_EQ(read.kind, MemberKind::kFolder);
        EXPECT_EQ(read.attributes, attribute::kFolder);
    }
}

TEST(LzhNewHeader, MarksNamesThatTheCodePageDoesNotHold) {
    const std::string smile = "\xF0\x9F\x98\x80/\xE8\xAA\xAD.txt";
    const std::string header = headerOf(stored(smile), {.level = 2, .windows = true});
    EXPECT_EQ(readBack(header).name, smile);
    EXPECT_NE(header.find(std::string("\x46\xE9\xFD\x00\x00", 5)), std::string::npos) << "code page 65001";
    EXPECT_NE(header.find(std::string("\x3D\xD8\x00\xDE\xFF\xFF", 6)), std::string::npos) << "and UTF-16";
}

TEST(LzhNewHeader, WritesNamesInTheCodePageThatHoldsThem) {
    if (!westernCodePages()) GTEST_SKIP() << "needs code page 1252";
    const std::string header = headerOf(stored("\xC3\xA4/\xC3\xB6.txt"), {.level = 2, .windows = true});
    EXPECT_NE(header.find("\x01\xF6.txt"), std::string::npos);
    EXPECT_NE(header.find("\x02\xE4\xFF"), std::string::npos);
    EXPECT_EQ(readBack(header).name, "\xC3\xA4/\xC3\xB6.txt");
    // U+00FF is the separator's byte there: it would part the folder in two.
    const std::string parted = headerOf(stored("\xC3\xBF/a.txt"), {.level = 2, .windows = true});
    EXPECT_EQ(readBack(parted).name, "\xC3\xBF/a.txt");
}

}  // namespace
}  // namespace archiver::test
