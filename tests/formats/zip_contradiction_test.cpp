#include <gtest/gtest.h>

#include "archivers/formats/zip/end_record.h"
#include "archivers/formats/zip/member_order.h"
#include "archivers/formats/zip/zip_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/zip_builder.h"

/// Archives whose parts contradict each other, and those that only look so.
namespace archiver::test {
namespace {

using Local = BuiltMember::Local;

constexpr std::uint16_t kUtf8 = 0x800;
constexpr std::uint16_t kSizesFollow = 8;

BuiltMember plain() { return {.name = "folder/name.txt", .content = "content"}; }

ReturnCode readOnly(const BuiltMember& member) {
    const OpenResult opened = openZip(inMemory(ZipBuilder().add(member).build()));
    if (!opened.reader) return opened.code;
    Member listed;
    const ReturnCode code = opened.reader->next(listed);
    if (code != kOk) return code;
    const Unpacked unpacked = unpack(*opened.reader);
    EXPECT_EQ(unpacked.bytes, unpacked.code == kOk ? "content" : "");
    return unpacked.code;
}

struct LocalCase {
    const char* name;
    Local local;
    ReturnCode expected;
    std::uint16_t flags = 0;
};
class ZipLocalHeader : public testing::TestWithParam<LocalCase> {};

TEST_P(ZipLocalHeader, IsComparedWithTheDirectory) {
    BuiltMember member = plain();
    member.flags = GetParam().flags;
    member.local = GetParam().local;
    EXPECT_EQ(readOnly(member), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Fields, ZipLocalHeader,
    testing::Values(
        LocalCase{"Same", {}, kOk}, LocalCase{"OtherName", {.name = "folder/game.txt"}, kHeaderBroken},
        LocalCase{"OtherFolder", {.name = "../name.txt"}, kHeaderBroken},
        LocalCase{"OtherCase", {.name = "folder/NAME.txt"}, kHeaderBroken},
        LocalCase{"NoName", {.name = ""}, kHeaderBroken},
        LocalCase{"LongerName", {.name = "folder/name.txt.exe"}, kHeaderBroken},
        LocalCase{"Backslash", {.name = "folder\\name.txt"}, kOk},
        LocalCase{"SlashAtTheEnd", {.name = "folder/name.txt/"}, kOk},
        LocalCase{"OtherMethod", {.method = 8}, kHeaderBroken},
        LocalCase{"EncryptedThereAlone", {.flags = 1}, kHeaderBroken},
        LocalCase{"OtherChecksum", {.crc = 1}, kHeaderBroken},
        LocalCase{"OtherPackedSize", {.packedSize = 6}, kHeaderBroken},
        LocalCase{"OtherOriginalSize", {.originalSize = 8}, kHeaderBroken},
        LocalCase{"ZerosWithoutAFlag", {.crc = 0, .packedSize = 0, .originalSize = 0}, kHeaderBroken},
        LocalCase{"SizesFollow", {.crc = 0, .packedSize = 0, .originalSize = 0}, kOk, kSizesFollow},
        LocalCase{"SizesFollowThereAlone", {.flags = kSizesFollow, .crc = 0, .packedSize = 0, .originalSize = 0}, kOk},
        LocalCase{"SizesFollowSaysTheDirectoryAlone",
                  {.flags = 0, .crc = 0, .packedSize = 0, .originalSize = 0},
                  kOk,
                  kSizesFollow},
        LocalCase{"Utf8FlagThereAlone", {.flags = kUtf8}, kOk},
        LocalCase{"Utf8FlagInTheDirectoryAlone", {.flags = 0}, kOk, kUtf8}, LocalCase{"OtherLevel", {.flags = 2}, kOk}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ZipLocalHeaderZip64, IsRead) {
    BuiltMember member = plain();
    const auto sizes = [](std::uint64_t original, std::uint64_t packed) {
        return ZipBuilder::field(1, ZipBuilder::number64(original) + ZipBuilder::number64(packed));
    };
    member.local = {.extra = sizes(7, 7), .packedSize = 0xFFFFFFFF, .originalSize = 0xFFFFFFFF};
    EXPECT_EQ(readOnly(member), kOk);
    member.local.extra = sizes(0, 0);  // written before they were known
    EXPECT_EQ(readOnly(member), kOk);
    member.local.extra = {};
    EXPECT_EQ(readOnly(member), kOk);
    member.local.extra = sizes(7, 9);
    EXPECT_EQ(readOnly(member), kHeaderBroken);
    member.local.extra = sizes(8, 7);
    EXPECT_EQ(readOnly(member), kHeaderBroken);
}

TEST(ZipLocalHeaderName, InTheCodePageAndInUtf8IsOne) {
    if (!westernCodePages()) GTEST_SKIP() << "another code page here";
    BuiltMember member{.name = "gr\xC3\xBCn.txt", .content = "content", .madeBy = 0x0014, .flags = kUtf8};
    member.local = {.name = "gr\x81n.txt", .flags = 0};  // code page 437
    EXPECT_EQ(readOnly(member), kOk);
    member.local = {.name = "gr\x82n.txt", .flags = 0};
    EXPECT_EQ(readOnly(member), kHeaderBroken);
    member.local = {.name = "gr\x81n.txt"};  // both say UTF-8
    EXPECT_EQ(readOnly(member), kHeaderBroken);
}

TEST(ZipLocalHeaderName, WithOneUnicodePathIsOne) {
    const auto path = [](const std::string& text) {
        return ZipBuilder::field(0x7075, std::string("\x01"
                                                     "1234") +
                                             text);
    };
    BuiltMember member{.name = "gr\x94n.txt", .content = "content", .extra = path("gr\xC3\xB6n.txt")};
    member.local = {.name = "grxxn.txt", .extra = path("gr\xC3\xB6n.txt")};
    EXPECT_EQ(readOnly(member), kOk);
    member.local = {.name = "grxxn.txt", .extra = path("other.txt")};
    EXPECT_EQ(readOnly(member), kHeaderBroken);
    member.local = {.name = "grxxn.txt", .extra = std::string()};
    EXPECT_EQ(readOnly(member), kHeaderBroken);
}

TEST(ZipOverlap, MemberThatHoldsTheNextIsRefused) {
    const std::string inner = ZipBuilder().add({.name = "inner", .content = "inner content"}).build();
    const std::size_t innerSize = inner.find("PK\x01\x02");  // its local header and content
    const std::string content = inner.substr(0, innerSize);
    const OpenResult opened = openZip(inMemory(ZipBuilder()
                                                   .add({.name = "outer", .content = content})
                                                   .add({.name = "inner", .content = "inner content", .offset = 30 + 5})
                                                   .build()));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(walk(*opened.reader).names(), (std::vector<std::string>{"outer", "inner"}));
    const Unpacked outer = unpack(*opened.reader, "outer");
    EXPECT_EQ(outer.code, kHeaderBroken);
    EXPECT_EQ(outer.bytes, "");
    EXPECT_EQ(unpack(*opened.reader, "inner").bytes, "inner content");  // its bytes belong to no one else now
}

TEST(ZipOverlap, MembersAtOnePlaceAreRefused) {
    const OpenResult opened = openZip(inMemory(ZipBuilder()
                                                   .add({.name = "one", .content = "content"})
                                                   .add({.name = "two", .content = "other content"})
                                                   .add({.name = "one", .content = "content", .offset = 0})
                                                   .build()));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(unpack(*opened.reader, "one").code, kHeaderBroken);
    EXPECT_EQ(unpack(*opened.reader, "two").code, kOk);
}

TEST(ZipOverlap, MemberThatReachesIntoTheDirectoryIsRefused) {
    std::string bytes = ZipBuilder().add({.name = "a", .content = "content"}).build();
    const std::size_t header = bytes.find("PK\x01\x02");
    for (const std::size_t field : {std::size_t{18}, std::size_t{22}, header + 20, header + 24}) bytes[field] = 8;
    const OpenResult opened = openZip(inMemory(bytes));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(unpack(*opened.reader, "a").code, kHeaderBroken);
}

TEST(ZipOverlap, MemberInTheDirectoryIsRefused) {
    // The directory's comment holds what looks like a member.
    const std::string local = ZipBuilder().add({.name = "b", .content = "hidden"}).build().substr(0, 30 + 1 + 6);
    const std::string first = ZipBuilder().add({.name = "a", .content = "content"}).build();
    const std::size_t directory = first.find("PK\x01\x02");
    const std::size_t hidden = directory + 46 + 1;
    const OpenResult opened = openZip(inMemory(ZipBuilder()
                                                   .add({.name = "a", .content = "content", .comment = local})
                                                   .add({.name = "b", .content = "hidden", .offset = hidden})
                                                   .build()));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(unpack(*opened.reader, "b").code, kHeaderBroken);
    EXPECT_EQ(unpack(*opened.reader, "a").code, kOk);
}

TEST(ZipOverlap, ExtraFieldThatHoldsTheNextHeaderIsRefused) {
    // A header whose extra field swallows the one behind it, so that both lead to the same data.
    const std::string second = ZipBuilder().add({.name = "b", .content = "content"}).build().substr(0, 30 + 1);
    BuiltMember member{.name = "a", .content = "content"};
    member.local.extra = ZipBuilder::field(0x7777, second);
    const OpenResult opened = openZip(
        inMemory(ZipBuilder().add(member).add({.name = "b", .content = "content", .offset = 30 + 1 + 4}).build()));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(unpack(*opened.reader, "a").code, kHeaderBroken);
    EXPECT_EQ(unpack(*opened.reader, "b").bytes, "content");
}

TEST(ZipOverlap, BombUnpacksToNoMoreThanItsBytesAllow) {
    // Two hundred headers in front of one kernel of packed bytes. Each member is a deflate stream of stored blocks that
    // quote the headers behind it, and ends with the kernel.
    constexpr int kMembers = 200;
    const auto nameOf = [](int index) { return std::to_string(10000 + index); };
    const std::string kernel = ZipBuilder::deflateStored(std::string(5000, 'k'));
    std::vector<std::string> locals(kMembers);
    std::string tail = kernel;
    std::vector<std::uint64_t> sizes(kMembers);
    std::string original(5000, 'k');
    std::vector<std::uint32_t> crcs(kMembers);
    std::vector<std::uint64_t> originals(kMembers);
    for (int index = kMembers - 1; index >= 0; --index) {
        if (index < kMembers - 1) {
            const std::string& quoted = locals[static_cast<std::size_t>(index) + 1];
            tail = std::string(1, '\0') + ZipBuilder::number16(quoted.size()) +
                   ZipBuilder::number16(quoted.size() ^ 0xFFFF) + quoted + tail;
            original = quoted + original;
        }
        const auto at = static_cast<std::size_t>(index);
        sizes[at] = tail.size();
        originals[at] = original.size();
        crcs[at] = ZipBuilder::crcOf(original);
        const BuiltMember member{
            .name = nameOf(index), .content = tail, .method = 8, .originalSize = originals[at], .crc = crcs[at]};
        locals[at] = ZipBuilder().add(member).build().substr(0, 30 + 5);
    }
    const std::string all = locals[0] + tail;
    ZipBuilder builder;
    builder.prefix(all, true);
    std::uint64_t offset = 0;
    for (int index = 0; index < kMembers; ++index) {
        const auto at = static_cast<std::size_t>(index);
        builder.add({.name = nameOf(index),
                     .content = all.substr(all.size() - sizes[at]),
                     .method = 8,
                     .originalSize = originals[at],
                     .crc = crcs[at],
                     .offset = offset});
        offset += 30 + 5 + 5;
    }
    const OpenResult opened = openZip(inMemory(builder.build()));
    ASSERT_TRUE(opened.reader);
    Member member;
    std::uint64_t total = 0;
    int refused = 0;
    while (opened.reader->next(member) == kOk) {
        const Unpacked unpacked = unpack(*opened.reader);
        total += unpacked.bytes.size();
        refused += unpacked.code == kHeaderBroken;
    }
    EXPECT_EQ(refused, kMembers - 1);
    EXPECT_EQ(total, 5000U);  // the last one has the kernel to itself
}

TEST(ZipOverlap, MembersInAnyOrderAndWithBytesBetweenThemAreGood) {
    // The directory lists the last member first, and a prefix shifts all of them.
    const std::string two = ZipBuilder().add({.name = "two", .content = "second"}).build();
    const std::string local = two.substr(0, two.find("PK\x01\x02"));
    const std::string between(100, '-');
    const OpenResult opened = openZip(inMemory(ZipBuilder()
                                                   .prefix(between + local, true)
                                                   .add({.name = "one", .content = "first"})
                                                   .add({.name = "two", .content = "second", .offset = between.size()})
                                                   .build()));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(unpack(*opened.reader, "one").bytes, "first");
    EXPECT_EQ(unpack(*opened.reader, "two").bytes, "second");
}

TEST(ZipOrder, HoldsAsManyMembersAsItMay) {
    ZipBuilder builder;
    for (int index = 0; index < 5; ++index) builder.add({.name = "a", .content = "content"});
    const MemoryFile file(builder.build());
    const zip::DirectoryResult found = zip::findDirectory(file);
    ASSERT_EQ(found.code, kOk);
    zip::MemberOrder order;
    EXPECT_EQ(order.build(file, found.place, 4), kEnoughMemory);
    ASSERT_EQ(order.build(file, found.place, 5), kOk);
    constexpr std::uint64_t kMember = 30 + 1 + 7;
    EXPECT_EQ(order.endOf(0), kMember);
    EXPECT_EQ(order.endOf(4 * kMember), 5 * kMember);
    EXPECT_EQ(order.endOf(5 * kMember), std::nullopt);
}

}  // namespace
}  // namespace archiver::test
