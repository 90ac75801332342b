#include <gtest/gtest.h>

#include "archivers/formats/arj/arj_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/arj_builder.h"

namespace archiver::test {
namespace {

constexpr std::uint8_t kFolderType = 3;
constexpr std::uint8_t kGarbled = 0x11;

TEST(ArjDetached, MembersUnpackSideBySide) {
    const OpenResult archive =
        openArj(inMemory(arjArchive(
                    {}, {{.name = "dir", .type = kFolderType},
                         {.name = "a", .content = std::string(200000, 'a')},
                         {.name = "garbled", .content = "b", .packed = garbled("b", "secret", 0), .flags = kGarbled},
                         {.name = "unknown", .content = "c", .method = 9},
                         {.name = "d", .content = "dd"}})),
                {});
    const auto members = unpackDetached(*archive.reader);
    // What is garbled may need several tries, and what cannot be unpacked gains nothing.
    ASSERT_EQ(members.size(), 2U);
    EXPECT_EQ(members[0].name, "a");
    EXPECT_EQ(members[0].unpacked.code, kOk);
    EXPECT_TRUE(members[0].unpacked.bytes == std::string(200000, 'a'));
    EXPECT_EQ(members[1].unpacked.bytes, "dd");
}

TEST(ArjDetached, MembersAreTakenOnce) {
    const OpenResult archive = openArj(inMemory(arjArchive({}, {{.name = "a", .content = "a"}})), {});
    EXPECT_EQ(archive.reader->detach(), nullptr);
    Member member;
    ASSERT_EQ(archive.reader->next(member), kOk);
    EXPECT_NE(archive.reader->detach(), nullptr);
    EXPECT_EQ(archive.reader->detach(), nullptr);
    EXPECT_EQ(unpack(*archive.reader).code, kNotSearchMode);
}

TEST(ArjGarble, MayBeTriedWithSeveralPasswords) {
    const OpenResult archive = openArj(inMemory(arjArchive({}, {{.name = "a",
                                                                 .content = "text",
                                                                 .packed = garbled("text", "secret", 7),
                                                                 .flags = kGarbled,
                                                                 .modifier = 7}})),
                                       {});
    Member member;
    ASSERT_EQ(archive.reader->next(member), kOk);
    EXPECT_EQ(unpack(*archive.reader).code, kPasswordFile);
    archive.reader->setPassword("wrong");
    EXPECT_EQ(unpack(*archive.reader).code, kPasswordFile);
    archive.reader->setPassword("secret");
    EXPECT_EQ(unpack(*archive.reader).bytes, "text");
}

}  // namespace
}  // namespace archiver::test
