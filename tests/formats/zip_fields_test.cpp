#include <gtest/gtest.h>

#include "archivers/formats/zip/member_fields.h"
#include "archivers/formats/zip/zip_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/zip_builder.h"

namespace archiver::test {
namespace {

Member memberOf(BuiltMember built) {
    const Listing listing = walk(openZip(inMemory(ZipBuilder().add(std::move(built)).build())));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    EXPECT_EQ(listing.members.size(), 1U);
    return listing.members.empty() ? Member() : listing.members[0];
}

struct MethodCase {
    std::uint16_t method;
    const char* text;
};
class ZipMethod : public testing::TestWithParam<MethodCase> {};

TEST_P(ZipMethod, HasAShortName) {
    EXPECT_EQ(memberOf({.name = "a", .method = GetParam().method}).method, GetParam().text);
    EXPECT_LE(memberOf({.name = "a", .method = GetParam().method}).method.size(), 7U);
}

INSTANTIATE_TEST_SUITE_P(Methods, ZipMethod,
                         testing::Values(MethodCase{0, "Stored"}, MethodCase{1, "Shrunk"}, MethodCase{2, "Unknown"},
                                         MethodCase{6, "Implode"}, MethodCase{8, "Deflate"}, MethodCase{9, "Defl64"},
                                         MethodCase{12, "BZip2"}, MethodCase{14, "LZMA"}, MethodCase{97, "WavPack"},
                                         MethodCase{98, "PPMd"}, MethodCase{65535, "Unknown"}),
                         [](const auto& each) { return std::string("Number") + std::to_string(each.param.method); });

TEST(ZipFields, AesTellsTheRealMethodInItsField) {
    const std::string aes =
        ZipBuilder::field(0x9901, ZipBuilder::number16(2) + std::string("AE\x03") + ZipBuilder::number16(8));
    const Member member = memberOf({.name = "a", .flags = 1, .method = 99, .extra = aes});
    EXPECT_EQ(member.method, "Deflate");
    EXPECT_TRUE(member.encrypted);
    EXPECT_EQ(memberOf({.name = "a", .flags = 1, .method = 99}).method, "Unknown");
}

TEST(ZipFields, TellTheArchivesComment) {
    const auto commentOf = [](const std::string& bytes) {
        const OpenResult opened = openZip(inMemory(bytes));
        return opened.reader ? opened.reader->facts().comment : "not opened";
    };
    ZipBuilder plain;
    plain.add({.name = "a"});
    EXPECT_EQ(commentOf(plain.build()), "");
    EXPECT_EQ(commentOf(ZipBuilder(plain).comment("In two\r\nlines.").build()), "In two\r\nlines.");
    EXPECT_EQ(commentOf(ZipBuilder(plain).comment("\xC3\xA4").build()), "\xC3\xA4");
    EXPECT_EQ(commentOf(ZipBuilder(plain).comment(std::string("a\0b", 3)).build()), "a_b");
    const std::string whole = ZipBuilder(plain).comment("cut here").build();
    EXPECT_EQ(commentOf(whole.substr(0, whole.size() - 5)), "cut") << "a comment that claims more than there is";
}

struct SystemCase {
    int system;
    std::uint32_t osType;
};
class ZipSystem : public testing::TestWithParam<SystemCase> {};

TEST_P(ZipSystem, HasTheConventionsNumber) {
    const auto madeBy = static_cast<std::uint16_t>(GetParam().system << 8 | 20);
    const OpenResult opened = openZip(inMemory(ZipBuilder().add({.name = "a", .madeBy = madeBy}).build()));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(opened.reader->facts().osType, GetParam().osType);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(member.osType, GetParam().osType);
}

INSTANTIATE_TEST_SUITE_P(Systems, ZipSystem,
                         testing::Values(SystemCase{0, 0}, SystemCase{1, 3}, SystemCase{2, 9}, SystemCase{3, 2},
                                         SystemCase{4, 18}, SystemCase{5, 7}, SystemCase{6, 5}, SystemCase{7, 4},
                                         SystemCase{8, 19}, SystemCase{9, 15}, SystemCase{10, 21}, SystemCase{11, 21},
                                         SystemCase{12, 10}, SystemCase{14, 19}, SystemCase{19, 4}, SystemCase{20, 10},
                                         SystemCase{255, 10}),
                         [](const auto& each) { return std::string("Number") + std::to_string(each.param.system); });

TEST(ZipFields, DosAttributesAreTheLowByte) {
    EXPECT_EQ(memberOf({.name = "a", .madeBy = 20, .externalAttributes = 0x27}).attributes,
              attribute::kReadOnly | attribute::kHidden | attribute::kSystem | attribute::kArchive);
    EXPECT_EQ(memberOf({.name = "a", .madeBy = 20, .externalAttributes = 0xC8}).attributes, 0);
}

TEST(ZipFields, UnixModeTellsFolderAndReadOnly) {
    constexpr std::uint32_t kFile = 0100000, kFolder = 0040000;
    EXPECT_EQ(memberOf({.name = "a", .externalAttributes = (kFile | 0644) << 16}).attributes, 0);
    EXPECT_EQ(memberOf({.name = "a", .externalAttributes = (kFile | 0444) << 16}).attributes, attribute::kReadOnly);
    EXPECT_EQ(memberOf({.name = "a/", .externalAttributes = (kFolder | 0755) << 16}).attributes, attribute::kFolder);
    // On other systems the upper half means something else.
    EXPECT_EQ(memberOf({.name = "a", .madeBy = 20, .externalAttributes = (kFolder | 0444) << 16}).attributes, 0);
}

TEST(ZipFields, FolderNamesEndWithASeparator) {
    EXPECT_EQ(memberOf({.name = "a/", .madeBy = 20}).attributes, attribute::kFolder);
    EXPECT_EQ(memberOf({.name = "a", .madeBy = 20, .externalAttributes = 0x10}).name, "a/");
    EXPECT_EQ(memberOf({.name = "a\\", .madeBy = 20, .externalAttributes = 0x10}).name, "a\\");
    EXPECT_EQ(memberOf({.name = "a", .externalAttributes = 0040755U << 16}).name, "a/");
    EXPECT_EQ(memberOf({.name = "", .madeBy = 20, .externalAttributes = 0x10}).name, "");
}

TEST(ZipFields, DateAndTimePassAsStored) {
    const Member member = memberOf({.name = "a", .dosTime = 0xFFFF, .dosDate = 0x0000});
    EXPECT_EQ(member.dosTime, 0xFFFF);
    EXPECT_EQ(member.dosDate, 0);
    EXPECT_FALSE(member.written.has_value());
}

TEST(ZipFields, ExtendedTimestampGivesWhatIsThere) {
    const std::string three = ZipBuilder::field(0x5455, std::string("\x07") + ZipBuilder::number32(1000) +
                                                            ZipBuilder::number32(2000) + ZipBuilder::number32(3000));
    const Member all = memberOf({.name = "a", .extra = three});
    EXPECT_EQ(all.written->seconds, 1000);
    EXPECT_EQ(all.accessed->seconds, 2000);
    EXPECT_EQ(all.created->seconds, 3000);

    const std::string promised = ZipBuilder::field(0x5455, std::string("\x07") + ZipBuilder::number32(0xFFFFFFFF));
    const Member one = memberOf({.name = "a", .extra = promised});
    EXPECT_EQ(one.written->seconds, -1);
    EXPECT_FALSE(one.accessed.has_value());
    EXPECT_FALSE(one.created.has_value());

    EXPECT_FALSE(memberOf({.name = "a", .extra = ZipBuilder::field(0x5455, "")}).written.has_value());
    EXPECT_FALSE(memberOf({.name = "a", .extra = ZipBuilder::field(0x5455, "\x01\x02")}).written.has_value());
}

TEST(ZipFields, NtfsTimesAreFinerAndGoFirst) {
    const std::string times =
        ZipBuilder::number64(126345942581234567) + ZipBuilder::number64(126345942591234567) + ZipBuilder::number64(0);
    const std::string ntfs = ZipBuilder::field(0x000A, ZipBuilder::number32(0) + ZipBuilder::field(1, times));
    const std::string timestamp = ZipBuilder::field(0x5455, std::string("\x01") + ZipBuilder::number32(5));
    for (const std::string& extra : {ntfs + timestamp, timestamp + ntfs}) {
        const Member member = memberOf({.name = "a", .extra = extra});
        EXPECT_EQ(member.written->seconds, 990120658);
        EXPECT_EQ(member.written->nanoseconds, 123456700U);
        EXPECT_EQ(member.accessed->seconds, 990120659);
        EXPECT_FALSE(member.created.has_value());  // 0 = not known
    }
    const std::string cut = ZipBuilder::field(0x000A, ZipBuilder::number32(0) + ZipBuilder::field(1, times.substr(8)));
    EXPECT_FALSE(memberOf({.name = "a", .extra = cut}).written.has_value());
    EXPECT_FALSE(memberOf({.name = "a", .extra = ZipBuilder::field(0x000A, "\x01")}).written.has_value());
}

TEST(ZipFields, TimesOfOneMemberDoNotPassToTheNext) {
    const std::string timestamp = ZipBuilder::field(0x5455, std::string("\x01") + ZipBuilder::number32(5));
    const Listing listing = walk(
        openZip(inMemory(ZipBuilder().add({.name = "a", .flags = 1, .extra = timestamp}).add({.name = "b"}).build())));
    ASSERT_EQ(listing.members.size(), 2U);
    EXPECT_TRUE(listing.members[0].encrypted);
    EXPECT_TRUE(listing.members[0].written.has_value());
    EXPECT_FALSE(listing.members[1].encrypted);
    EXPECT_FALSE(listing.members[1].written.has_value());
}

TEST(ZipFields, ExtraFieldThatReachesTooFarEndsTheExtraFieldsAlone) {
    const std::string good = ZipBuilder::field(0x5455, std::string("\x01") + ZipBuilder::number32(5));
    const std::string bad = ZipBuilder::number16(0x7075) + ZipBuilder::number16(100) + "short";
    const Member member = memberOf({.name = "a", .extra = good + bad});
    EXPECT_EQ(member.name, "a");
    EXPECT_EQ(member.written->seconds, 5);
    EXPECT_EQ(memberOf({.name = "a", .extra = "\x01"}).name, "a");
}

TEST(ZipFields, SizesComeFromTheZip64Field) {
    zip::CentralHeader header;
    header.name = "a";
    header.originalSize = 0xFFFFFFFF;
    header.packedSize = 0xFFFFFFFF;
    header.localOffset = 0xFFFFFFFF;
    const std::string field = ZipBuilder::field(
        0x0001, ZipBuilder::number64(0x123456789A) + ZipBuilder::number64(7) + ZipBuilder::number64(0x200000000));
    header.extra = field;
    Member member;
    zip::MemberData data;
    zip::fillMember(header, member, data);
    EXPECT_EQ(member.originalSize, 0x123456789AU);
    EXPECT_EQ(member.packedSize, 7U);
    EXPECT_EQ(data.localOffset, 0x200000000U);

    // Only what the header has no room for is in the field.
    header.originalSize = 5;
    header.localOffset = 9;
    const std::string single = ZipBuilder::field(0x0001, ZipBuilder::number64(0x300000000));
    header.extra = single;
    zip::fillMember(header, member, data);
    EXPECT_EQ(member.originalSize, 5U);
    EXPECT_EQ(member.packedSize, 0x300000000U);
    EXPECT_EQ(data.localOffset, 9U);

    // Missing or cut: the header's own value stays.
    header.extra = {};
    zip::fillMember(header, member, data);
    EXPECT_EQ(member.packedSize, 0xFFFFFFFFU);
    const std::string cut = ZipBuilder::field(0x0001, "\x01\x02\x03");
    header.extra = cut;
    zip::fillMember(header, member, data);
    EXPECT_EQ(member.packedSize, 0xFFFFFFFFU);
}

struct KindCase {
    const char* name;
    const char* member;
    std::uint16_t madeBy;
    std::uint32_t externalAttributes;
    MemberKind expected;
};
class ZipKind : public testing::TestWithParam<KindCase> {};

TEST_P(ZipKind, ComesFromAttributesAndName) {
    const KindCase& each = GetParam();
    const Listing listing = walk(openZip(
        inMemory(ZipBuilder()
                     .add({.name = each.member, .madeBy = each.madeBy, .externalAttributes = each.externalAttributes})
                     .build())));
    ASSERT_EQ(listing.members.size(), 1U);
    EXPECT_EQ(listing.members[0].kind, each.expected);
    EXPECT_EQ(listing.members[0].linkTarget, "");
}

constexpr std::uint16_t kByUnix = 0x031E;
constexpr std::uint16_t kByDos = 0x0014;
INSTANTIATE_TEST_SUITE_P(
    Members, ZipKind,
    testing::Values(KindCase{"File", "a", kByUnix, 0100644U << 16, MemberKind::kFile},
                    KindCase{"NoMode", "a", kByUnix, 0, MemberKind::kFile},
                    KindCase{"PermissionsAlone", "a", kByUnix, 0644U << 16, MemberKind::kFile},
                    KindCase{"FolderByName", "a/", kByUnix, 0, MemberKind::kFolder},
                    KindCase{"FolderByMode", "a", kByUnix, 040755U << 16, MemberKind::kFolder},
                    KindCase{"FolderByAttribute", "a", kByDos, 0x10, MemberKind::kFolder},
                    KindCase{"Link", "a", kByUnix, 0120777U << 16, MemberKind::kSymbolicLink},
                    KindCase{"LinkOfMacOs", "a", 0x131E, 0120777U << 16, MemberKind::kSymbolicLink},
                    KindCase{"LinkThatIsNamedAFolder", "a/", kByUnix, 0120777U << 16, MemberKind::kFolder},
                    KindCase{"NoLinkInDos", "a", kByDos, 0120777U << 16, MemberKind::kFile},
                    KindCase{"Device", "a", kByUnix, 020644U << 16, MemberKind::kSpecial},
                    KindCase{"Disk", "a", kByUnix, 060644U << 16, MemberKind::kSpecial},
                    KindCase{"Pipe", "a", kByUnix, 010644U << 16, MemberKind::kSpecial},
                    KindCase{"Socket", "a", kByUnix, 0140644U << 16, MemberKind::kSpecial},
                    KindCase{"VolumeLabel", "a", kByDos, 0x08, MemberKind::kSpecial}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ZipKindOfZip, LinkHoldsItsTarget) {
    const OpenResult opened = openZip(dataFile("zip_members/links.zip"));
    ASSERT_TRUE(opened.reader);
    const Listing listing = walk(*opened.reader);
    ASSERT_EQ(listing.names(), (std::vector<std::string>{"again.txt", "folder/", "link"}));
    EXPECT_EQ(listing.members[0].kind, MemberKind::kFile);
    EXPECT_EQ(listing.members[1].kind, MemberKind::kFolder);
    EXPECT_EQ(listing.members[2].kind, MemberKind::kSymbolicLink);
    EXPECT_EQ(unpack(*opened.reader, "link").bytes, "again.txt");
}

}  // namespace
}  // namespace archiver::test
