#include <gtest/gtest.h>

#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/sha256.h"
#include "formats_ace/support/ace_builder.h"
#include "formats_ace/support/bit_writer.h"
#include "formats_ace/support/expected.h"
#include "formats_ace/support/memory_disk.h"

namespace archiver::test {
namespace {

constexpr std::uint16_t kSolid = 0x8100;

/// A member that copies `length` bytes from `distance` bytes back, and nothing else.
AceFile copying(std::string name, std::uint32_t distance, std::string content, std::uint16_t flags = 0x0001) {
    BitWriter bits;
    const auto symbol = static_cast<unsigned>(content.size()) - 2;
    Lz77Writer().block(bits, 1, {distanceSymbol(distance - 1)}, {symbol}).match(bits, distance - 1, symbol);
    return {
        .name = std::move(name), .content = std::move(content), .packed = bits.bytes(), .flags = flags, .method = 1};
}

/// Unpacks the members with the names, one after the other.
std::vector<std::string> unpackAll(AceReader& reader, const std::vector<std::string>& names) {
    std::vector<std::string> contents;
    for (const std::string& name : names) {
        const Unpacked unpacked = unpack(reader, name);
        contents.push_back(unpacked.code == kOk ? unpacked.bytes : "error " + std::to_string(unpacked.code));
    }
    return contents;
}

TEST(AceSolid, MembersShareADictionary) {
    const std::string archive = aceArchive({.flags = kSolid}, {{.name = "a", .content = "hello"},
                                                               {.name = "folder", .attributes = 0x10},
                                                               {.name = "empty"},
                                                               copying("b", 5, "hello"),
                                                               copying("c", 10, "hellohello"),
                                                               {.name = "d", .content = "world"},
                                                               copying("e", 10, "helloworld")});
    for (const std::vector<std::string>& names : {std::vector<std::string>{"a", "b", "c", "d", "e"},
                                                  {"e"},
                                                  {"c"},
                                                  {"b", "e"},
                                                  {"a", "e"},
                                                  {"d", "e"},
                                                  {"a", "d"}}) {
        const auto reader = openBytes(archive);
        std::vector<std::string> expected;
        for (const std::string& name : names) {
            expected.push_back(name == "c"   ? "hellohello"
                               : name == "d" ? "world"
                               : name == "e" ? "helloworld"
                                             : "hello");
        }
        EXPECT_EQ(unpackAll(*reader, names), expected);
    }
}

TEST(AceSolid, MembersOfOtherArchivesDoNot) {
    const auto reader = openBytes(aceArchive({}, {{.name = "a", .content = "hello"}, copying("b", 5, "hello")}));
    EXPECT_EQ(unpack(*reader, "a").code, kOk);
    EXPECT_EQ(unpack(*reader, "b").code, kFileCrc);
}

TEST(AceSolid, RowsBeginWhereAMemberSaysSo) {
    const std::string archive = aceArchive({}, {{.name = "a", .content = "hello"},
                                                copying("b", 5, "hello", 0x8001),
                                                {.name = "c", .content = "world"},
                                                {.name = "folder", .attributes = 0x10},
                                                copying("d", 5, "world", 0x8001),
                                                copying("e", 10, "worldworld", 0x8001)});
    const auto reader = openBytes(archive);
    EXPECT_EQ(unpackAll(*reader, {"b", "e"}), (std::vector<std::string>{"hello", "worldworld"}));
    ASSERT_EQ(reader->restart(), kOk);
    EXPECT_EQ(unpackAll(*reader, {"b", "d", "e"}), (std::vector<std::string>{"hello", "world", "worldworld"}));
    ASSERT_EQ(reader->restart(), kOk);
    EXPECT_EQ(unpackAll(*reader, {"a", "b"}), (std::vector<std::string>{"hello", "hello"}));
}

TEST(AceSolid, MemberBehindADamagedOneIsReadWhenItCanBe) {
    AceFile damaged{.name = "a", .content = "hello", .checksum = 1};
    AceFile garbage{.name = "x", .content = "x", .packed = std::string(4, '\xFF'), .method = 1};
    const auto reader = openBytes(
        aceArchive({.flags = kSolid}, {damaged, garbage, {.name = "b", .content = "world"}, copying("c", 5, "world")}));
    EXPECT_EQ(unpack(*reader, "c").bytes, "world");
    ASSERT_EQ(reader->restart(), kOk);
    EXPECT_EQ(unpack(*reader, "a").code, kFileCrc);
    EXPECT_NE(unpack(*reader, "x").code, kOk);
    EXPECT_EQ(unpack(*reader, "c").bytes, "world");
}

TEST(AceSolid, MemberBehindAnUnknownMethodIsRefused) {
    const auto reader = openBytes(aceArchive(
        {.flags = kSolid},
        {{.name = "a", .content = "hello", .method = 9}, {.name = "b", .content = "world"}, copying("c", 5, "world")}));
    EXPECT_EQ(unpack(*reader, "b").bytes, "world");  // stored: needs nothing
    EXPECT_EQ(unpack(*reader, "c").code, kMethod);
}

TEST(AceSolid, StoppedMemberIsFinishedForThoseBehind) {
    const std::string content(300'000, 'h');
    const std::string archive =
        aceArchive({.flags = kSolid}, {{.name = "a", .content = content}, copying("b", 10, "hhhhhhhhhh")});
    const auto reader = openBytes(archive);
    Member member;
    ASSERT_EQ(reader->next(member), kOk);
    EXPECT_EQ(reader->read([](const char*, std::size_t) { return false; }), kUserCancel);
    EXPECT_EQ(unpack(*reader, "b").bytes, "hhhhhhhhhh");
    // And from its start when it is asked for again.
    ASSERT_EQ(reader->restart(), kOk);
    ASSERT_EQ(reader->next(member), kOk);
    EXPECT_EQ(reader->read([](const char*, std::size_t) { return false; }), kUserCancel);
    EXPECT_EQ(unpack(*reader).bytes.size(), content.size());
    EXPECT_EQ(unpack(*reader, "b").bytes, "hhhhhhhhhh");
}

TEST(AceSolid, WorkInFrontCanBeStopped) {
    const std::string content(300'000, 'h');
    const auto reader =
        openBytes(aceArchive({.flags = kSolid}, {{.name = "a", .content = content}, copying("b", 10, "hhhhhhhhhh")}));
    Member member;
    ASSERT_EQ(reader->next(member), kOk);
    ASSERT_EQ(reader->next(member), kOk);
    int calls = 0;
    const DataSink stopping = [&](const char*, std::size_t size) {
        EXPECT_EQ(size, 0U);
        return ++calls < 3;
    };
    EXPECT_EQ(reader->read(stopping), kUserCancel);
    EXPECT_EQ(calls, 3);
    EXPECT_EQ(unpack(*reader).bytes, "hhhhhhhhhh");
}

TEST(AceSolid, VolumesShareADictionary) {
    MemoryDisk disk;
    const AceFile whole = copying("b", 5, "hello");
    AceFile first = whole;
    AceFile second = whole;
    first.packed = whole.packed->substr(0, 7);
    second.packed = whole.packed->substr(7);
    first.flags = 0x2001;
    second.flags = 0x1001;
    disk.put("x.ace", aceArchive({.flags = 0x8900}, {{.name = "a", .content = "hello"}, first}));
    disk.put("x.c00", aceArchive({.flags = 0x8900, .volume = 1}, {second, copying("c", 10, "hellohello")}));
    EXPECT_EQ(unpack(*disk.open("x.ace").reader, "c").bytes, "hellohello");
    const AceOpenResult opened = disk.open("x.ace");
    EXPECT_EQ(unpackAll(*opened.reader, {"a", "b", "c"}), (std::vector<std::string>{"hello", "hello", "hellohello"}));
}

TEST(AceSolid, ReadingAllTakesEachMemberOnce) {
    // Reading member after member must not start over: that would be 5,000 times 5,000 members.
    std::string archive =
        aceMainHeader({.flags = kSolid}) + aceMember({.name = "first", .content = std::string(16384, 'h')});
    std::string content(257, 'h');
    const std::string one = aceMember(copying("x", 300, content));
    for (int i = 0; i < 5'000; ++i) archive += one;
    const auto reader = openBytes(std::move(archive));
    Member member;
    std::size_t right = 0;
    ASSERT_EQ(reader->next(member), kOk);
    while (reader->next(member) == kOk) {
        const Unpacked unpacked = unpack(*reader);
        right += unpacked.code == kOk && unpacked.bytes == content ? 1 : 0;
    }
    EXPECT_EQ(right, 5'000U);
}

}  // namespace
}  // namespace archiver::test
