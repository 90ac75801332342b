#include <gtest/gtest.h>

#include "archivers/formats/rar/rar_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_rar/support/rar_builder.h"

namespace archiver::test {
namespace {

Unpacked first(const std::string& archive) {
    const OpenResult opened = openRar(inMemory(archive), {});
    if (!opened.reader) return {{}, opened.code};
    Member member;
    const ReturnCode code = opened.reader->next(member);
    return code == kOk ? unpack(*opened.reader) : Unpacked{{}, code};
}
Unpacked old(const OldRarFile& file) { return first(oldRar({file})); }
Unpacked latest(const NewRarFile& file) { return first(newRar({file})); }

std::string manyBytes() {
    std::string bytes;
    for (int index = 0; index < 60000; ++index) bytes += std::to_string(index) + ' ';
    return bytes;
}

TEST(RarRead, GivesStoredBytes) {
    for (const std::string& content : {std::string("x"), manyBytes()}) {
        EXPECT_EQ(old({.name = "a", .content = content}).bytes, content);
        EXPECT_EQ(old({.name = "a", .content = content}).code, kOk);
        EXPECT_EQ(latest({.name = "a", .content = content}).bytes, content);
        EXPECT_EQ(latest({.name = "a", .content = content}).code, kOk);
    }
}

TEST(RarRead, GivesEmptyMembersAndFolders) {
    for (const Unpacked& unpacked : {old({.name = "a"}), latest({.name = "a"}), old({.name = "a", .flags = 0xE0}),
                                     latest({.name = "a", .flags = 1})}) {
        EXPECT_EQ(unpacked.code, kOk);
        EXPECT_EQ(unpacked.bytes, "");
    }
}

TEST(RarRead, FindsAWrongChecksum) {
    EXPECT_EQ(old({.name = "a", .content = "abc", .crc = 1}).code, kFileCrc);
    EXPECT_EQ(latest({.name = "a", .content = "abc", .crc = 1}).code, kFileCrc);
    EXPECT_EQ(old({.name = "a", .crc = 1}).code, kFileCrc) << "of a file without bytes";
}

TEST(RarRead, FindsAWrongBlake2Checksum) {
    std::string bytes = readFile(dataFile("rar/rar5_blake2.rar"));
    EXPECT_EQ(first(bytes).code, kOk);
    // The checksum stands behind its size, its type and its kind; the header's own one is made right again.
    const std::size_t header = 8 + 4 + 1 + static_cast<unsigned char>(bytes[12]);
    const std::size_t size = static_cast<unsigned char>(bytes[header + 4]);
    const std::size_t at = bytes.find(std::string("\x22\x02\x00", 3), header);
    ASSERT_LT(at, header + 5 + size);
    bytes[at + 3] = static_cast<char>(bytes[at + 3] ^ 1);
    bytes.replace(header, 4, littleEndian(crc32OneBitAtATime(std::string_view(bytes).substr(header + 4, size + 1)), 4));
    EXPECT_EQ(first(bytes).code, kFileCrc);
}

TEST(RarRead, RefusesWhatItCannotUnpack) {
    for (const std::uint8_t version : {15, 20, 26}) {
        EXPECT_EQ(old({.name = "a", .content = "abc", .version = version, .method = 0x33}).code, kMethod);
        EXPECT_EQ(old({.name = "a", .content = "abc", .version = version}).code, kOk) << "stored";
    }
    EXPECT_EQ(old({.name = "a", .content = "abc", .method = 0x36}).code, kMethod);
    EXPECT_EQ(old({.name = "a", .content = "abc", .flags = 0x10}).code, kOk) << "solid, but stored";
    EXPECT_EQ(latest({.name = "a", .content = "abc", .compression = 6 << 7}).code, kMethod);
    EXPECT_EQ(latest({.name = "a", .content = "abc", .compression = 1 << 7 | 1}).code, kMethod) << "version";
    EXPECT_EQ(latest({.name = "a", .content = "abc", .compression = 1 << 7 | 10 << 10}).code, kMethod) << "dictionary";
    EXPECT_EQ(latest({.name = "a", .content = "abc", .flags = 8}).code, kMethod) << "unknown size";
}

TEST(RarRead, RefusesEncryptedMembers) {
    EXPECT_EQ(old({.name = "a", .content = "abc", .flags = 0x04}).code, kPasswordFile);
    EXPECT_EQ(latest({.name = "a", .content = "abc", .extra = newRarRecord(1, std::string(20, '\0'))}).code,
              kPasswordFile);
}

TEST(RarRead, AnswersForAWrongSize) {
    EXPECT_EQ(old({.name = "a", .content = "abc", .originalSize = 4}).code, kHuffmanCode);
    EXPECT_EQ(old({.name = "a", .content = "abc", .originalSize = 2}).code, kHuffmanCode);
    EXPECT_EQ(latest({.name = "a", .content = "abc", .originalSize = 4}).code, kHuffmanCode);
    EXPECT_EQ(latest({.name = "a", .content = "abc", .originalSize = 2}).code, kHuffmanCode);
}

TEST(RarRead, AnswersForPackedBytesThatMakeNoSense) {
    const std::string noise = manyBytes();
    const Unpacked old1 = old({.name = "a", .content = noise, .method = 0x33});
    EXPECT_TRUE(old1.code == kHuffmanCode || old1.code == kFileCrc) << old1.code;
    const Unpacked new1 = latest({.name = "a", .content = noise, .compression = 3 << 7});
    EXPECT_TRUE(new1.code == kHuffmanCode || new1.code == kFileCrc) << new1.code;
}

TEST(RarRead, KeepsTheOthersBehindADamagedMember) {
    for (const std::string& bytes :
         {oldRar({{.name = "bad", .content = "abc", .crc = 1}, {.name = "good", .content = "def"}}),
          newRar({{.name = "bad", .content = "abc", .crc = 1}, {.name = "good", .content = "def"}})}) {
        const OpenResult opened = openRar(inMemory(bytes), {});
        ASSERT_TRUE(opened.reader);
        EXPECT_EQ(unpack(*opened.reader, "bad").code, kFileCrc);
        EXPECT_EQ(unpack(*opened.reader, "good").code, kOk);
        EXPECT_EQ(unpack(*opened.reader, "good").bytes, "def");
    }
}

TEST(RarRead, OfASolidMemberBehindADamagedOneEndsWithACode) {
    std::string bytes = readFile(dataFile("rar/rar5_multiple_files_solid.rar"));
    bytes[100] = static_cast<char>(bytes[100] ^ 0x55);
    const OpenResult opened = openRar(inMemory(bytes), {});
    ASSERT_TRUE(opened.reader);
    Member member;
    for (int count = 0; count < 4; ++count) {
        ASSERT_EQ(opened.reader->next(member), kOk);
        const ReturnCode code = unpack(*opened.reader).code;
        EXPECT_TRUE(code == kFileCrc || code == kHuffmanCode) << member.name << code;
    }
    EXPECT_EQ(opened.reader->next(member), kNoMoreEntries);
}

TEST(RarRead, StopsWhenTheSinkDoes) {
    const OpenResult opened = openRar(inMemory(oldRar({{.name = "a", .content = "abc"}})), {});
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(opened.reader->read([](const char*, std::size_t) { return false; }), kUserCancel);
    EXPECT_EQ(opened.reader->read([](const char*, std::size_t) { return true; }), kNotSearchMode) << "once a member";
}

TEST(RarRead, NeedsAMember) {
    const OpenResult opened = openRar(inMemory(oldRar({{.name = "a", .content = "abc"}})), {});
    const DataSink sink = [](const char*, std::size_t) { return true; };
    EXPECT_EQ(opened.reader->read(sink), kNotSearchMode);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(opened.reader->restart(), kOk);
    EXPECT_EQ(opened.reader->read(sink), kNotSearchMode);
}

}  // namespace
}  // namespace archiver::test
