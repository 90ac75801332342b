#include <gtest/gtest.h>

#include "archivers/formats/lzh/lzh_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_lzh/support/lzh_builder.h"

namespace archiver::test {
namespace {

TEST(LzhDetached, MembersUnpackSideBySide) {
    const OpenResult archive =
        openLzh(inMemory(lzhArchive({{.name = "dir", .method = "-lhd-"},
                                     {.name = "a", .content = std::string(200000, 'a')},
                                     {.name = "bad", .content = "b", .crc = 1},
                                     {.name = "unknown", .content = "c", .method = "-lh9-", .packed = "c"},
                                     {.name = "d", .content = "dd"}})));
    const auto members = unpackDetached(*archive.reader);
    ASSERT_EQ(members.size(), 4U);
    EXPECT_EQ(members[0].unpacked.code, kOk);
    EXPECT_TRUE(members[0].unpacked.bytes == std::string(200000, 'a'));
    EXPECT_EQ(members[1].unpacked.code, kFileCrc);
    EXPECT_EQ(members[2].unpacked.code, kMethod);
    EXPECT_EQ(members[3].name, "d");
    EXPECT_EQ(members[3].unpacked.bytes, "dd");
}

TEST(LzhDetached, MembersAreTakenOnce) {
    const OpenResult archive = openLzh(inMemory(lzhArchive({{.name = "a", .content = "a"}})));
    EXPECT_EQ(archive.reader->detach(), nullptr);
    Member member;
    ASSERT_EQ(archive.reader->next(member), kOk);
    EXPECT_NE(archive.reader->detach(), nullptr);
    EXPECT_EQ(archive.reader->detach(), nullptr);
    EXPECT_EQ(unpack(*archive.reader).code, kNotSearchMode);
}

}  // namespace
}  // namespace archiver::test
