#include <gtest/gtest.h>

#include "archivers/formats/ace/cipher.h"
#include "archivers/formats/little_endian.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_ace/support/ace_builder.h"
#include "formats_ace/support/bit_writer.h"
#include "formats_ace/support/memory_disk.h"

namespace archiver::test {
namespace {

/// Enciphers bytes, filled up with zeros to whole blocks.
std::string enciphered(std::string bytes, const std::string& password) {
    const ace::Cipher cipher(ace::keyOf(password));
    bytes.resize((bytes.size() + 7) / 8 * 8);
    std::uint32_t left = 0, right = 0;
    std::string result;
    for (std::size_t at = 0; at < bytes.size(); at += 8) {
        left ^= little_endian::load32(bytes.data() + at);
        right ^= little_endian::load32(bytes.data() + at + 4);
        cipher.encrypt(left, right);
        result += littleEndian(left, 4) + littleEndian(right, 4);
    }
    return result;
}

constexpr std::uint16_t kEncrypted = 0x4001;
const std::vector<std::string> kNames = {"stored", "packed", "blocked"};
const std::string kStored = "The quick brown fox jumps over the lazy dog";
const std::string kPacked = "abababababab";

/// A stored, an LZ77 and a blocked member, all under the same password.
std::string encryptedArchive() {
    BitWriter bits;
    Lz77Writer().block(bits, 3, {'a', 'b', 261}, {8}).literals(bits, "ab").match(bits, 1, 8);
    const std::string packed = enciphered(bits.bytes(), "secret");
    return aceArchive(
        {}, {{.name = "stored", .content = kStored, .packed = enciphered(kStored, "secret"), .flags = kEncrypted},
             {.name = "packed", .content = kPacked, .packed = packed, .flags = kEncrypted, .method = 1},
             {.name = "blocked", .content = kPacked, .packed = packed, .flags = kEncrypted, .method = 2}});
}

TEST(AcePassword, OpensMembers) {
    const auto reader = openBytes(encryptedArchive());
    reader->setPassword("secret");
    for (const std::string& name : kNames) {
        const Unpacked unpacked = unpack(*reader, name);
        EXPECT_EQ(unpacked.code, kOk);
        EXPECT_EQ(unpacked.bytes, name == "stored" ? kStored : kPacked);
    }
}

TEST(AcePassword, IsAskedForWhenThereIsNone) {
    // Made by another encoder.
    const auto reader = openBytes(readFile(dataFile("ace/encrypted.ace")));
    Member member;
    for (const char* const name : {"stored.txt", "packed.txt", "blocked.txt"}) {
        ASSERT_EQ(reader->next(member), kOk);
        EXPECT_EQ(member.name, name);
        EXPECT_TRUE(member.encrypted);
        EXPECT_EQ(reader->header().flags, kEncrypted);
        const Unpacked unpacked = unpack(*reader);
        EXPECT_EQ(unpacked.code, kPasswordFile);
        EXPECT_EQ(unpacked.bytes, "");
    }
    EXPECT_EQ(reader->next(member), kNoMoreEntries);
}

TEST(AcePassword, ThatIsWrongIsTold) {
    for (const char* const wrong : {"Secret", "secret ", "s"}) {
        const auto reader = openBytes(encryptedArchive());
        reader->setPassword(wrong);
        for (const std::string& name : kNames) EXPECT_EQ(unpack(*reader, name).code, kPasswordFile) << wrong;
    }
}

TEST(AcePassword, CanBeTakenBack) {
    const auto reader = openBytes(encryptedArchive());
    reader->setPassword("wrong");
    EXPECT_EQ(unpack(*reader, "stored").code, kPasswordFile);
    reader->setPassword("");
    const Unpacked unpacked = unpack(*reader);
    EXPECT_EQ(unpacked.code, kPasswordFile);
    EXPECT_EQ(unpacked.bytes, "");
}

TEST(AcePassword, CanBeTriedAgain) {
    const auto reader = openBytes(encryptedArchive());
    for (const std::string& name : kNames) {
        reader->setPassword("wrong");
        EXPECT_EQ(unpack(*reader, name).code, kPasswordFile);
        reader->setPassword("secret");
        EXPECT_EQ(unpack(*reader).code, kOk);
    }
}

TEST(AcePassword, CanBeTriedAgainInASolidArchive) {
    BitWriter bits;
    Lz77Writer().block(bits, 1, {distanceSymbol(42)}, {41}).match(bits, 42, 41);
    const std::string archive =
        aceArchive({.flags = 0x8100},
                   {{.name = "a", .content = kStored, .packed = enciphered(kStored, "secret"), .flags = kEncrypted},
                    {.name = "b",
                     .content = kStored,
                     .packed = enciphered(bits.bytes(), "secret"),
                     .flags = kEncrypted,
                     .method = 1}});
    const auto reader = openBytes(archive);
    reader->setPassword("wrong");
    EXPECT_EQ(unpack(*reader, "b").code, kPasswordFile);
    reader->setPassword("secret");
    Unpacked unpacked = unpack(*reader);
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes, kStored);
    // Each member's own password, given before it is read.
    ASSERT_EQ(reader->restart(), kOk);
    EXPECT_EQ(unpack(*reader, "a").code, kOk);
    reader->setPassword("wrong");
    EXPECT_EQ(unpack(*reader, "b").code, kPasswordFile);
}

TEST(AcePassword, CanDifferBetweenMembers) {
    const auto reader = openBytes(
        aceArchive({}, {{.name = "a", .content = kStored, .packed = enciphered(kStored, "one"), .flags = kEncrypted},
                        {.name = "b", .content = kStored, .packed = enciphered(kStored, "two"), .flags = kEncrypted}}));
    reader->setPassword("one");
    EXPECT_EQ(unpack(*reader, "a").code, kOk);
    reader->setPassword("two");
    EXPECT_EQ(unpack(*reader, "b").code, kOk);
}

TEST(AcePassword, ThatWasRightMakesDamageDamage) {
    std::string bytes = encryptedArchive();
    bytes.back() = static_cast<char>(bytes.back() ^ 1);
    bytes[bytes.size() - 20] = static_cast<char>(bytes[bytes.size() - 20] ^ 1);
    const auto reader = openBytes(bytes);
    reader->setPassword("secret");
    EXPECT_EQ(unpack(*reader, "stored").code, kOk);
    EXPECT_EQ(unpack(*reader, "packed").code, kOk);
    const ReturnCode code = unpack(*reader, "blocked").code;
    EXPECT_TRUE(code == kFileCrc || code == kHuffmanCode) << code;
}

TEST(AcePassword, DoesNotExplainDataCutShort) {
    const auto reader = openBytes(readFile(dataFile("ace/encrypted.ace")).substr(0, 200));
    reader->setPassword("wrong");
    EXPECT_EQ(unpack(*reader, "stored.txt").code, kCannotRead);
}

TEST(AcePassword, CipherRunsOverVolumes) {
    const std::string packed = enciphered(kStored, "secret");
    MemoryDisk disk;
    disk.put(
        "x.ace",
        aceArchive({.flags = 0x0900},
                   {{.name = "x", .packed = packed.substr(0, 13), .flags = 0x6001, .originalSize = kStored.size()}}));
    disk.put("x.c00", aceArchive({.flags = 0x0900, .volume = 1},
                                 {{.name = "x", .content = kStored, .packed = packed.substr(13), .flags = 0x5001}}));
    const AceOpenResult opened = disk.open("x.ace");
    opened.reader->setPassword("secret");
    EXPECT_EQ(unpack(*opened.reader, "x").bytes, kStored);
}

TEST(AcePassword, IsNotNeededForNothing) {
    const auto reader = openBytes(
        aceArchive({}, {{.name = "empty", .flags = 0x4001}, {.name = "folder", .flags = 0x4001, .attributes = 0x10}}));
    EXPECT_EQ(unpack(*reader, "empty").code, kOk);
    EXPECT_EQ(unpack(*reader, "folder\\").code, kOk);
}

TEST(AcePassword, IsNeededForWhatStandsInFrontInASolidArchive) {
    const auto reader = openBytes(
        aceArchive({.flags = 0x8100}, {{.name = "a", .content = "12345678", .flags = 0x4001},
                                       {.name = "b", .content = "stored"},
                                       {.name = "c", .content = "c", .packed = std::string(4, '\0'), .method = 1}}));
    EXPECT_EQ(unpack(*reader, "b").bytes, "stored");
    EXPECT_EQ(unpack(*reader, "c").code, kPasswordFile);
}

}  // namespace
}  // namespace archiver::test
