#include <gtest/gtest.h>

#include <stdexcept>

#include "archivers/formats/lzh/lzh_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/bit_writer.h"
#include "formats_lzh/support/lzh_builder.h"

namespace archiver::test {
namespace {

Unpacked readOnly(const LzhFile& file) {
    const OpenResult opened = openLzh(inMemory(lzhArchive({file})));
    Member member;
    EXPECT_EQ(opened.reader->next(member), kOk);
    return unpack(*opened.reader);
}

/// One block of one symbol, so that all of it takes no bits: the letter "a" as often as wanted.
std::string blockOfOneLetter(std::uint32_t count, int positionField) {
    return BitWriter()
        .put(count, 16)
        .put(0, 5)
        .put(0, 5)
        .put(0, 9)
        .put('a', 9)
        .put(0, positionField)
        .put(0, positionField)
        .bytes();
}

TEST(LzhRead, UnpacksBlocksOfEveryWindow) {
    const std::string content(1000, 'a');
    for (const auto& [method, field] :
         {std::pair{"-lh4-", 4}, {"-lh5-", 4}, {"-lh6-", 5}, {"-lh7-", 5}, {"-lhx-", 5}}) {
        const Unpacked unpacked =
            readOnly({.name = "a", .content = content, .method = method, .packed = blockOfOneLetter(1000, field)});
        EXPECT_EQ(unpacked.code, kOk) << method;
        EXPECT_EQ(unpacked.bytes, content) << method;
    }
}

TEST(LzhRead, GivesDecodersAllThatTheyAskFor) {
    // Groups of a literal and seven copies, then of eight copies of three zeros from the window: pairs of bytes that do
    // not end where pieces of the file do.
    std::string packed(1, 1);
    packed.append(15, '\0');
    for (int group = 0; group < 8000; ++group) packed.append(17, '\0');
    const std::string content(1 + 7 * 3 + 8000 * 8 * 3, '\0');
    const Unpacked unpacked = readOnly({.name = "a", .content = content, .method = "-lz5-", .packed = packed});
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes.size(), content.size());
}

TEST(LzhRead, UnpacksAnEmptyMember) {
    EXPECT_EQ(readOnly({.name = "a"}).code, kOk);
    EXPECT_EQ(readOnly({.name = "a", .method = "-lh5-"}).code, kOk);
    EXPECT_EQ(readOnly({.name = "a", .crc = 1}).code, kFileCrc);
}

TEST(LzhRead, FindsWrongData) {
    EXPECT_EQ(readOnly({.name = "a", .content = "content", .packed = "contenT"}).code, kFileCrc);
    EXPECT_EQ(readOnly({.name = "a", .content = "content", .packed = "con"}).code, kHeaderBroken);
    const std::string letters = blockOfOneLetter(10, 4);
    EXPECT_EQ(readOnly({.name = "a", .content = std::string(10, 'b'), .method = "-lh5-", .packed = letters}).code,
              kFileCrc);
    EXPECT_EQ(readOnly({.name = "a", .content = std::string(1000, 'a'), .method = "-lh5-", .packed = letters}).code,
              kHuffmanCode);
}

TEST(LzhRead, RefusesMethodsThatNobodyKnows) {
    for (const char* method : {"-lh2-", "-lh3-", "-lh9-", "-lz9-"}) {
        EXPECT_EQ(readOnly({.name = "a", .content = "x", .method = method}).code, kMethod) << method;
    }
}

TEST(LzhRead, FindsTheEndOfTheFile) {
    const std::string whole = lzhArchive({{.name = "a", .content = "content"}}, false);
    const OpenResult opened = openLzh(inMemory(whole.substr(0, whole.size() - 1)));
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    const Unpacked unpacked = unpack(*opened.reader);
    EXPECT_EQ(unpacked.code, kCannotRead);
    EXPECT_EQ(unpacked.bytes, "conten");
    EXPECT_EQ(opened.reader->next(member), kHeaderBroken);
    EXPECT_EQ(opened.reader->next(member), kHeaderBroken);
}

TEST(LzhRead, DoesNotBelieveClaims) {
    // Four gigabytes are claimed for a file of some bytes.
    const Unpacked unpacked = readOnly(
        {.name = "a", .content = "x", .method = "-lh5-", .packedSize = 0xFFFFFFF0, .originalSize = 0xFFFFFFF0});
    EXPECT_EQ(unpacked.code, kCannotRead);
    EXPECT_LT(unpacked.bytes.size(), 100U);
}

TEST(LzhRead, GivesAMemberOnce) {
    const OpenResult opened =
        openLzh(inMemory(lzhArchive({{.name = "a", .content = "1"}, {.name = "b", .content = "2"}})));
    EXPECT_EQ(unpack(*opened.reader).code, kNotSearchMode);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(unpack(*opened.reader).bytes, "1");
    EXPECT_EQ(unpack(*opened.reader).code, kNotSearchMode);
    EXPECT_EQ(unpack(*opened.reader, "b").bytes, "2");
    EXPECT_EQ(opened.reader->restart(), kOk);
    EXPECT_EQ(unpack(*opened.reader).code, kNotSearchMode);
}

TEST(LzhRead, StopsWhenTheSinkDoes) {
    const OpenResult opened = openLzh(inMemory(lzhArchive({{.name = "a", .content = std::string(200000, 'x')}})));
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    int calls = 0;
    EXPECT_EQ(opened.reader->read([&](const char*, std::size_t) { return ++calls < 2; }), kUserCancel);
    EXPECT_EQ(calls, 2);
}

TEST(LzhRead, GivesFoldersAndLinksNothing) { EXPECT_EQ(readOnly({.name = "dir/", .method = "-lhd-"}).code, kOk); }

/// A file of the Macintosh in its envelope.
std::string envelope(const std::string& name, const std::string& data, const std::string& resource) {
    const auto bigEndian = [](std::size_t value) {
        std::string bytes = littleEndian(value, 4);
        return std::string(bytes.rbegin(), bytes.rend());
    };
    std::string bytes(128, '\0');
    bytes[1] = static_cast<char>(name.size());
    bytes.replace(2, name.size(), name)
        .replace(83, 4, bigEndian(data.size()))
        .replace(87, 4, bigEndian(resource.size()));
    bytes += data + resource;
    return bytes + std::string((128 - bytes.size() % 128) % 128, '\0');
}

TEST(LzhRead, TakesFilesOfTheMacintoshOutOfTheirEnvelope) {
    const auto read = [](const std::string& content) {
        return readOnly({.name = "a", .content = content, .level = 1, .system = 'm'}).bytes;
    };
    EXPECT_EQ(read(envelope("a", "data", "resource")), "data");
    EXPECT_EQ(read(envelope("a", "", "resource")), "resource");
    EXPECT_EQ(read(envelope("a", "", "")), "");
    EXPECT_EQ(read("short"), "short");
    for (const std::string& other : {envelope("b", "data", ""), envelope("a", "data", "") + std::string(128, 'x')}) {
        EXPECT_EQ(read(other), other);
    }
}

TEST(LzhRead, ChecksAllOfAnEnvelope) {
    std::string content = envelope("a", "data", "resource");
    EXPECT_EQ(readOnly({.name = "a", .content = content, .level = 1, .system = 'm', .crc = 1}).code, kFileCrc);
    EXPECT_EQ(readOnly({.name = "a", .content = content, .level = 1}).bytes, content);
}

TEST(LzhRead, LetsTheSinkThrow) {
    const OpenResult opened = openLzh(inMemory(lzhArchive({{.name = "a", .content = "1"}})));
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_THROW(opened.reader->read([](const char*, std::size_t) -> bool { throw std::bad_alloc(); }), std::bad_alloc);
    EXPECT_EQ(opened.reader->next(member), kNoMoreEntries);
}

}  // namespace
}  // namespace archiver::test
