#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "archivers/formats/rar/rar_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/sha256.h"

/// Archives that other programs made.
namespace archiver::test {
namespace {

TEST(Sha256, IsAsPublished) {
    EXPECT_EQ(sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(RarFixtures, GiveTheExpectedBytes) {
    int count = 0;
    for (const std::string& line : lines(readFile(dataFile("rar/expected.sha256")))) {
        const std::size_t hash = line.find("  ") + 2;
        const std::size_t name = line.find("  ", hash) + 2;
        const std::string archive = line.substr(0, hash - 2);
        std::string member = line.substr(name);
        if (!archive.starts_with("rar5_")) std::replace(member.begin(), member.end(), '/', '\\');
        const OpenResult opened = openRar(dataFile("rar/" + archive));
        ASSERT_TRUE(opened.reader) << archive;
        const Unpacked unpacked = unpack(*opened.reader, member);
        EXPECT_EQ(unpacked.code, kOk) << line;
        EXPECT_EQ(sha256(unpacked.bytes), line.substr(hash, name - 2 - hash)) << line;
        ++count;
    }
    EXPECT_EQ(count, 25);
}

TEST(RarFixtures, OfTheOldLayoutHaveTheirFields) {
    const TimeZone zone("JST-9");
    const Listing listing = walk(openRar(dataFile("rar/rar.rar")));
    EXPECT_EQ(listing.names(),
              (std::vector<std::string>{"test.txt", "testlink", "testdir\\test.txt", "testdir\\", "testemptydir\\"}));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    const Member& member = listing.members[0];
    EXPECT_EQ(member.originalSize, 20U);
    EXPECT_EQ(member.packedSize, 20U);
    EXPECT_EQ(member.crc, 0xBEC8A242U);
    EXPECT_EQ(member.osType, os_type::kUnix);
    EXPECT_EQ(member.attributes, 0);
    EXPECT_EQ(member.method, "storing");
    EXPECT_FALSE(member.encrypted);
    // 2011-06-26 14:53:46 in whatever zone is the local one.
    EXPECT_EQ(member.dosDate, 31 << 9 | 6 << 5 | 26);
    EXPECT_EQ(member.dosTime, 14 << 11 | 53 << 5 | 23);
    EXPECT_EQ(member.written.value().seconds, 1309100026 - 9 * 3600);
    EXPECT_EQ(listing.members[0].kind, MemberKind::kFile);
    EXPECT_EQ(listing.members[1].kind, MemberKind::kSymbolicLink);
    EXPECT_EQ(listing.members[1].linkTarget, "");
    EXPECT_EQ(listing.members[1].originalSize, 8U);
    EXPECT_EQ(listing.members[3].kind, MemberKind::kFolder);
    EXPECT_EQ(listing.members[3].attributes, attribute::kFolder);
    const Unpacked target = unpack(*openRar(dataFile("rar/rar.rar")).reader, "testlink");
    EXPECT_EQ(target.code, kOk);
    EXPECT_EQ(target.bytes, "test.txt");
}

TEST(RarFixtures, OfTheNewLayoutHaveTheirFields) {
    const OpenResult opened = openRar(dataFile("rar/rar5_compressed.rar"));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(opened.reader->facts().fileSize, 436U);
    EXPECT_FALSE(opened.reader->facts().selfExtracting);
    const Listing listing = walk(*opened.reader);
    ASSERT_EQ(listing.members.size(), 1U);
    const Member& member = listing.members[0];
    EXPECT_EQ(member.name, "test.bin");
    EXPECT_EQ(member.originalSize, 1200U);
    EXPECT_EQ(member.packedSize, 361U);
    EXPECT_EQ(member.crc, 0x7CCA70CDU);
    EXPECT_EQ(member.method, "best");
    EXPECT_EQ(member.osType, os_type::kUnix);
}

TEST(RarFixtures, HaveUnicodeNames) {
    const Listing listing = walk(openRar(dataFile("rar/rar_unicode.rar")));
    ASSERT_EQ(listing.members.size(), 6U);
    EXPECT_EQ(listing.members[0].name, "表だよ\\新しいフォルダ\\新規テキスト ドキュメント.txt");
    EXPECT_EQ(listing.members[1].name, "表だよ\\漢字長いファイル名long-filename-in-漢字.txt");
    EXPECT_EQ(listing.members[3].name, "表だよ\\");
    EXPECT_EQ(listing.members[5].name, "abcdefghijklmnopqrsテスト.txt");
    EXPECT_EQ(listing.members[5].method, "normal");
    EXPECT_EQ(listing.members[0].attributes, attribute::kArchive);
    EXPECT_EQ(listing.members[0].osType, os_type::kWindowsNtfs);
}

TEST(RarFixtures, HaveServiceBlocksThatAreNoMembers) {
    EXPECT_EQ(walk(openRar(dataFile("rar/rar_subblock.rar"))).names(), std::vector<std::string>{"test.txt"});
}

TEST(RarFixtures, HaveLinksWithoutBytes) {
    for (const auto& [name, kind] : {std::pair{"rar/rar5_symlink.rar", MemberKind::kSymbolicLink},
                                     {"rar/rar5_hardlink.rar", MemberKind::kHardLink}}) {
        const OpenResult opened = openRar(dataFile(name));
        ASSERT_TRUE(opened.reader);
        Member member;
        ASSERT_EQ(opened.reader->next(member), kOk);
        EXPECT_EQ(member.name, "file.txt");
        EXPECT_EQ(unpack(*opened.reader).bytes.size(), 5U);
        ASSERT_EQ(opened.reader->next(member), kOk);
        EXPECT_EQ(member.originalSize, 0U);
        EXPECT_EQ(member.kind, kind);
        EXPECT_EQ(member.linkTarget, "file.txt");
        const Unpacked link = unpack(*opened.reader);
        EXPECT_EQ(link.code, kOk);
        EXPECT_EQ(link.bytes, "");
    }
}

TEST(RarFixtures, WithEncryptedBytesAreListedAndRefused) {
    const OpenResult opened = openRar(dataFile("rar/rar_encryption_data.rar"));
    ASSERT_TRUE(opened.reader);
    Member member;
    for (const char* name : {"foo.txt", "bar.txt"}) {
        ASSERT_EQ(opened.reader->next(member), kOk);
        EXPECT_EQ(member.name, name);
        EXPECT_TRUE(member.encrypted);
        EXPECT_EQ(member.originalSize, 16U);
        EXPECT_EQ(unpack(*opened.reader).code, kPasswordFile);
    }
    EXPECT_EQ(opened.reader->next(member), kNoMoreEntries);
}

TEST(RarFixtures, WithEncryptedHeadersAreRefused) {
    EXPECT_EQ(openRar(dataFile("rar/rar_encryption_header.rar")).code, kPasswordFile);
}

TEST(RarFixtures, ThatAreSolidAreReadInAnyOrder) {
    const OpenResult opened = openRar(dataFile("rar/rar5_multiple_files_solid.rar"));
    ASSERT_TRUE(opened.reader);
    const OpenResult plain = openRar(dataFile("rar/rar5_multiple_files.rar"));
    ASSERT_TRUE(plain.reader);
    for (const char* name : {"test3.bin", "test1.bin", "test4.bin", "test2.bin", "test4.bin"}) {
        const Unpacked unpacked = unpack(*opened.reader, name);
        EXPECT_EQ(unpacked.code, kOk) << name;
        EXPECT_EQ(unpacked.bytes, unpack(*plain.reader, name).bytes) << name;
    }
}

TEST(RarFixtures, ThatAreSolidGoOnBehindAMemberThatWasStopped) {
    const OpenResult opened = openRar(dataFile("rar/rar5_multiple_files_solid.rar"));
    ASSERT_TRUE(opened.reader);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(opened.reader->read([](const char*, std::size_t) { return false; }), kUserCancel);
    ASSERT_EQ(opened.reader->next(member), kOk);
    const Unpacked unpacked = unpack(*opened.reader);
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(sha256(unpacked.bytes), "f81e6fceeeab366306b23466bf6bb3aac2875e0906dc20a8652be0696ceb15a2");
}

/// Larger archives of the same kind, where there are some: TOVAREX_SAMPLES names the folder above theirs.
TEST(RarSamples, AreListed) {
    const char* const folder = std::getenv("TOVAREX_SAMPLES");
    if (folder == nullptr || *folder == '\0') GTEST_SKIP();
    const Listing listing = walk(openRar(std::filesystem::path(folder) / "rar" / "rar_multi_lzss_blocks.rar"));
    ASSERT_EQ(listing.members.size(), 1U);
    EXPECT_EQ(listing.members[0].originalSize, 20131111U);
}

}  // namespace
}  // namespace archiver::test
