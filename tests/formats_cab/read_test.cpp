#include <gtest/gtest.h>

#include <new>

#include "archivers/formats/cab/cab_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_cab/support/cab_builder.h"

namespace archiver::test {
namespace {

std::unique_ptr<ArchiveReader> readerOf(const Cabinet& cabinet) {
    OpenResult opened = openCab(inMemory(cabinetBytes(cabinet)), {});
    EXPECT_EQ(opened.code, kOk);
    return std::move(opened.reader);
}

const Cabinet kTwo{.folders = {{.members = {{.name = "a", .content = "first"}, {.name = "b", .content = "second"}}}}};

TEST(CabRead, UnpacksInAnyOrder) {
    const auto reader = readerOf(kTwo);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(unpack(*reader, "b").bytes, "second");
        EXPECT_EQ(unpack(*reader, "a").bytes, "first");
    }
}

TEST(CabRead, UnpacksSeveralBlocks) {
    std::string content(100000, '\0');
    for (std::size_t at = 0; at < content.size(); ++at) content[at] = static_cast<char>(at * 7 / 3);
    EXPECT_EQ(unpack(*readerOf({.folders = {{.members = {{.name = "a", .content = content}}}}}), "a").bytes, content);
    const std::vector<CabBlock> blocks{mszipBlock(content.substr(0, 32768)), mszipBlock(content.substr(32768, 100))};
    const Cabinet packed{
        .folders = {{.members = {{.name = "a", .content = content.substr(0, 32868)}}, .method = 1, .blocks = blocks}}};
    EXPECT_EQ(unpack(*readerOf(packed), "a").bytes, content.substr(0, 32868));
}

TEST(CabRead, PassesOverReservedBytes) {
    Cabinet cabinet = kTwo;
    cabinet.reserve = 20;
    EXPECT_EQ(unpack(*readerOf(cabinet), "b").bytes, "second");
}

TEST(CabRead, DoesWithoutChecksums) {
    Cabinet cabinet = kTwo;
    cabinet.checksums = false;
    EXPECT_EQ(unpack(*readerOf(cabinet), "b").code, kOk);
}

TEST(CabRead, UnpacksAnEmptyMember) {
    const Unpacked unpacked = unpack(*readerOf({.folders = {{.members = {{.name = "a"}}}}}), "a");
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes, "");
}

TEST(CabRead, UnpacksOneContentUnderTwoNames) {
    const auto reader = readerOf({.folders = {{.members = {{.name = "a", .content = "same"},
                                                           {.name = "b", .offset = 0, .length = 4},
                                                           {.name = "c", .content = "other"}}}}});
    EXPECT_EQ(walk(*reader).names(), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(unpack(*reader, "a").bytes, "same");
    EXPECT_EQ(unpack(*reader, "b").bytes, "same");
    EXPECT_EQ(unpack(*reader, "c").bytes, "other");
}

TEST(CabRead, RefusesMembersThatOverlap) {
    const auto reader = readerOf({.folders = {{.members = {{.name = "a", .content = "content"},
                                                           {.name = "b", .offset = 3, .length = 4},
                                                           {.name = "c", .content = "good"}}}}});
    EXPECT_EQ(unpack(*reader, "a").bytes, "content");
    EXPECT_EQ(unpack(*reader, "b").code, kHeaderBroken);
    EXPECT_EQ(unpack(*reader, "c").bytes, "good");
}

TEST(CabRead, FindsWrongChecksums) {
    std::string bytes = cabinetBytes({.folders = {{.members = {{.name = "a", .content = std::string(32768, 'a')},
                                                               {.name = "b", .content = "b"},
                                                               {.name = "c", .content = "c"}}},
                                                  {.members = {{.name = "d", .content = "d"}}}}});
    bytes[bytes.find("bc")] ^= 1;
    const OpenResult opened = openCab(inMemory(bytes), {});
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(unpack(*opened.reader).code, kOk);
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(unpack(*opened.reader).code, kFileCrc);
    // Behind it in the folder nothing can be had; what is before it and in the next one can.
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(unpack(*opened.reader).code, kFileCrc);
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(unpack(*opened.reader).bytes, "d");
    EXPECT_EQ(unpack(*opened.reader, "a").code, kOk);
}

TEST(CabRead, FindsDataThatMakesNoSense) {
    const std::vector<CabBlock> blocks{{"CK\x07xxxx", 5}};
    const auto reader =
        readerOf({.folders = {{.members = {{.name = "a", .content = "12345"}}, .method = 1, .blocks = blocks}}});
    EXPECT_EQ(unpack(*reader, "a").code, kHuffmanCode);
}

TEST(CabRead, FindsTheEndOfTheFile) {
    const std::string whole = cabinetBytes(kTwo);
    const OpenResult opened = openCab(inMemory(whole.substr(0, whole.size() - 1)), {});
    EXPECT_EQ(unpack(*opened.reader, "a").code, kCannotRead);
}

TEST(CabRead, DoesNotBelieveClaims) {
    const auto reader = readerOf({.folders = {{.members = {{.name = "a", .content = "good"},
                                                           {.name = "b", .content = "x", .length = 0xFFFFFFF0},
                                                           {.name = "c", .offset = 0xFFFFFF00, .length = 1}}}}});
    EXPECT_EQ(unpack(*reader, "a").bytes, "good");
    EXPECT_EQ(unpack(*reader, "b").code, kHeaderBroken);
    EXPECT_NE(unpack(*reader, "c").code, kOk);
    EXPECT_EQ(unpack(*reader, "a").bytes, "good");
}

TEST(CabRead, GivesAMemberOnce) {
    const auto reader = readerOf(kTwo);
    EXPECT_EQ(unpack(*reader).code, kNotSearchMode);
    EXPECT_EQ(unpack(*reader, "b").bytes, "second");
    EXPECT_EQ(unpack(*reader).code, kNotSearchMode);
}

TEST(CabRead, GoesOnAfterTheSinkStopped) {
    const auto reader = readerOf(kTwo);
    Member member;
    ASSERT_EQ(reader->next(member), kOk);
    EXPECT_EQ(reader->read([](const char*, std::size_t) { return false; }), kUserCancel);
    ASSERT_EQ(reader->next(member), kOk);
    EXPECT_EQ(unpack(*reader).bytes, "second");
}

TEST(CabRead, LetsTheSinkThrow) {
    const auto reader = readerOf(kTwo);
    Member member;
    ASSERT_EQ(reader->next(member), kOk);
    EXPECT_THROW(reader->read([](const char*, std::size_t) -> bool { throw std::bad_alloc(); }), std::bad_alloc);
    ASSERT_EQ(reader->next(member), kOk);
    EXPECT_EQ(unpack(*reader).bytes, "second");
}

}  // namespace
}  // namespace archiver::test
