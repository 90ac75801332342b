#include <gtest/gtest.h>

#include <random>

#include "archivers/formats/utf8.h"
#include "archivers/formats/zip/zip_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/zip_builder.h"

/// Archives that are none, or no longer.
namespace archiver::test {
namespace {

/// Lists and unpacks everything; whatever the bytes are, it ends with a code that says something.
ReturnCode exhaust(const std::string& bytes) {
    const OpenResult opened = openZip(inMemory(bytes));
    if (!opened.reader) {
        EXPECT_NE(opened.code, kOk);
        return opened.code;
    }
    Member member;
    ReturnCode code = kOk;
    for (std::size_t count = 0; (code = opened.reader->next(member)) == kOk; ++count) {
        EXPECT_LE(count, bytes.size() / 46);
        EXPECT_TRUE(isUtf8(member.name));
        EXPECT_EQ(member.name.find('\0'), std::string::npos);
        opened.reader->read([](const char*, std::size_t) { return true; });
    }
    return code;
}

TEST(ZipDamage, EmptyFileIsNoArchive) { EXPECT_EQ(exhaust(""), kFileStyle); }

TEST(ZipDamage, OtherFilesAreNoArchives) {
    EXPECT_EQ(exhaust("PK"), kFileStyle);
    EXPECT_EQ(exhaust("Some text that is long enough to hold an end record."), kFileStyle);
    EXPECT_EQ(exhaust(std::string(100000, '\0')), kFileStyle);
    EXPECT_EQ(exhaust(readFile(dataFile("tar/ustar.tgz"))), kFileStyle);
}

TEST(ZipDamage, RandomBytesAreNoArchive) {
    std::mt19937 random(12345);
    for (int round = 0; round < 20; ++round) {
        std::string bytes(static_cast<std::size_t>(random() % 200000), '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        EXPECT_EQ(exhaust(bytes), kFileStyle);
    }
}

TEST(ZipDamage, FolderIsNoArchive) {
    const TemporaryFolder folder;
    EXPECT_EQ(openZip(folder.path()).code, kArcFileOpen);
    EXPECT_EQ(openZip(folder.path() / "missing.zip").code, kNotFindArcFile);
    EXPECT_EQ(openZip(folder.write("empty.zip", "")).code, kFileStyle);
}

TEST(ZipDamage, CutAnywhereItSaysSo) {
    for (const char* name : {"zip/zip.zip", "zip/zip64.zip", "zip/comment.zip"}) {
        const std::string whole = readFile(dataFile(name));
        const std::size_t end = whole.rfind("PK\x05\x06");
        for (std::size_t size = 1; size < whole.size(); ++size) {
            const ReturnCode code = exhaust(whole.substr(0, size));
            // Behind the end record only a comment can be missing.
            const ReturnCode expected = size < 4 ? kFileStyle : size < end + 22 ? kHeaderBroken : kNoMoreEntries;
            EXPECT_EQ(code, expected) << name << " " << size;
        }
    }
}

TEST(ZipDamage, AnyBitMayBeWrong) {
    for (const char* name : {"zip/zip64.zip", "zip/aes.zip", "zip/7zz.zip", "zip/python.zip"}) {
        const std::string good = readFile(dataFile(name));
        const std::size_t directory = good.find("PK\x01\x02");
        for (std::size_t bit = 0; bit < good.size() * 8; ++bit) {
            // Every bit of the records, one of each byte of the members.
            if (bit / 8 < directory && bit % 8 != bit / 8 % 8) continue;
            std::string bytes = good;
            bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ 1 << bit % 8);
            const ReturnCode code = exhaust(bytes);
            EXPECT_TRUE(code == kNoMoreEntries || code == kHeaderBroken || code == kNotSupport) << name << " " << bit;
        }
    }
}

TEST(ZipDamage, AnyBytesMayBeWrong) {
    std::mt19937 random(54321);
    const std::string good = readFile(dataFile("zip/utf8.zip"));
    for (int round = 0; round < 2000; ++round) {
        std::string bytes = good;
        for (int change = 0; change < 4; ++change) bytes[random() % bytes.size()] = static_cast<char>(random());
        exhaust(bytes);
    }
}

}  // namespace
}  // namespace archiver::test
