#include <gtest/gtest.h>

#include "archivers/formats/arj/arj_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/arj_builder.h"

/// Reading members, stored ones for the most part.
namespace archiver::test {
namespace {

OpenResult opened(const std::vector<ArjFile>& files) { return openArj(inMemory(arjArchive({}, files)), {}); }

Unpacked readOnly(const ArjFile& file) {
    const OpenResult archive = opened({file});
    Member member;
    EXPECT_EQ(archive.reader->next(member), kOk);
    return unpack(*archive.reader);
}

/// Text in which no two places are alike.
std::string longText(std::size_t size) {
    std::string text;
    for (std::size_t line = 0; text.size() < size; ++line) text += std::to_string(line) + '\n';
    text.resize(size);
    return text;
}

TEST(ArjRead, GivesStoredBytes) {
    for (const std::size_t size : {0, 1, 1000, 131071, 131072, 131073, 163840, 1000000}) {
        const std::string text = longText(size);
        const Unpacked unpacked = readOnly({.name = "a", .content = text});
        EXPECT_EQ(unpacked.code, kOk) << size;
        EXPECT_TRUE(unpacked.bytes == text) << size;
    }
}

TEST(ArjRead, GivesAnyMemberInAnyOrder) {
    const OpenResult archive =
        opened({{.name = "a", .content = "1"}, {.name = "b", .content = "22"}, {.name = "c", .content = "3"}});
    EXPECT_EQ(unpack(*archive.reader, "c").bytes, "3");
    EXPECT_EQ(unpack(*archive.reader, "a").bytes, "1");
    EXPECT_EQ(unpack(*archive.reader, "b").bytes, "22");
}

TEST(ArjRead, GoesOnBehindAMemberThatWasNotRead) {
    const OpenResult archive = opened({{.name = "a", .content = longText(300000)}, {.name = "b", .content = "2"}});
    Member member;
    ASSERT_EQ(archive.reader->next(member), kOk);
    ASSERT_EQ(archive.reader->next(member), kOk);
    EXPECT_EQ(unpack(*archive.reader).bytes, "2");
}

TEST(ArjRead, ChecksTheChecksum) {
    const Unpacked unpacked = readOnly({.name = "a", .content = "123456789", .crc = 0xCBF43927});
    EXPECT_EQ(unpacked.code, kFileCrc);
    EXPECT_EQ(unpacked.bytes, "123456789");
    EXPECT_EQ(readOnly({.name = "a", .content = "123456789", .crc = 0xCBF43926}).code, kOk);
    EXPECT_EQ(readOnly({.name = "empty", .crc = 1}).code, kFileCrc);
}

TEST(ArjRead, RefusesSizesThatContradictEachOther) {
    EXPECT_EQ(readOnly({.name = "a", .content = "1234", .originalSize = 3}).code, kHeaderBroken);
    EXPECT_EQ(readOnly({.name = "a", .content = "1234", .originalSize = 5}).code, kHeaderBroken);
    EXPECT_EQ(readOnly({.name = "a", .content = "1234", .originalSize = 0xFFFFFFFF}).code, kHeaderBroken);
}

TEST(ArjRead, RefusesUnknownMethods) {
    for (const std::uint8_t method : {5, 8, 9, 255}) {
        const Unpacked unpacked = readOnly({.name = "a", .content = "1234", .method = method});
        EXPECT_EQ(unpacked.code, kMethod) << int{method};
        EXPECT_EQ(unpacked.bytes, "");
    }
}

TEST(ArjRead, GivesNothingForFolders) {
    const Unpacked unpacked = readOnly({.name = "docs", .type = 3});
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes, "");
}

TEST(ArjRead, StopsWhenTheSinkWantsNoMore) {
    const OpenResult archive = opened({{.name = "a", .content = longText(1000000)}, {.name = "b", .content = "2"}});
    Member member;
    ASSERT_EQ(archive.reader->next(member), kOk);
    std::size_t calls = 0;
    const auto stop = [&](const char*, std::size_t) { return ++calls < 2; };
    EXPECT_EQ(archive.reader->read(stop), kUserCancel);
    EXPECT_EQ(calls, 2U);
    ASSERT_EQ(archive.reader->next(member), kOk);
    EXPECT_EQ(unpack(*archive.reader).bytes, "2");
}

TEST(ArjRead, ReadsAMemberOnce) {
    const OpenResult archive = opened({{.name = "a", .content = "1"}});
    EXPECT_EQ(unpack(*archive.reader).code, kNotSearchMode) << "before the first";
    Member member;
    ASSERT_EQ(archive.reader->next(member), kOk);
    EXPECT_EQ(unpack(*archive.reader).bytes, "1");
    EXPECT_EQ(unpack(*archive.reader).code, kNotSearchMode) << "the second time";
    EXPECT_EQ(archive.reader->next(member), kNoMoreEntries);
    EXPECT_EQ(unpack(*archive.reader).code, kNotSearchMode) << "behind the last";
}

TEST(ArjRead, GivesWhatIsThereOfACutMember) {
    const std::string text = longText(400000);
    const std::string whole = arjArchive({}, {{.name = "a", .content = text}});
    const std::size_t start = whole.find("0\n1\n2\n");
    const OpenResult archive = openArj(inMemory(whole.substr(0, start + 200000)), {});
    Member member;
    ASSERT_EQ(archive.reader->next(member), kOk);
    const Unpacked unpacked = unpack(*archive.reader);
    EXPECT_EQ(unpacked.code, kCannotRead);
    EXPECT_TRUE(unpacked.bytes == text.substr(0, 200000));
}

TEST(ArjRead, GivesTextsTheLineEndsOfTheSystem) {
    const Unpacked unpacked = readOnly({.name = "a", .content = "one\ntwo\n", .type = 1});
    EXPECT_EQ(unpacked.code, kOk);
    const bool windows = std::filesystem::path::preferred_separator == '\\';
    EXPECT_EQ(unpacked.bytes, windows ? "one\r\ntwo\r\n" : "one\ntwo\n");
    EXPECT_EQ(readOnly({.name = "a", .content = "one\ntwo\n"}).bytes, "one\ntwo\n");
}

}  // namespace
}  // namespace archiver::test
