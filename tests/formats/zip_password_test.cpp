#include <gtest/gtest.h>

#include "archivers/formats/zip/decryption.h"
#include "archivers/formats/zip/zip_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/zip_builder.h"

/// Archives that zip, 7zz and bsdtar encrypted; see tests/data/zip_members/README.txt.
namespace archiver::test {
namespace {

std::string againText() {
    std::string text;
    for (int line = 0; line < 40; ++line) text += "The same line again and again.\n";
    return text;
}

OpenResult openMembers(const std::string& name, std::string_view password) {
    OpenResult opened = openZip(dataFile("zip_members/" + name + ".zip"));
    if (opened.reader) opened.reader->setPassword(password);
    return opened;
}

struct EncryptedCase {
    const char* name;
    const char* archive;
    bool hasShort, hasEmpty;
};
class ZipPassword : public testing::TestWithParam<EncryptedCase> {};

TEST_P(ZipPassword, Unpacks) {
    const OpenResult opened = openMembers(GetParam().archive, "secret");
    ASSERT_TRUE(opened.reader);
    for (const Member& member : walk(*opened.reader).members) EXPECT_TRUE(member.encrypted) << member.name;
    const auto expect = [&](const char* name, std::string_view content) {
        const Unpacked member = unpack(*opened.reader, name);
        EXPECT_EQ(member.code, kOk) << name;
        EXPECT_EQ(member.bytes, content) << name;
    };
    expect("again.txt", againText());
    if (GetParam().hasShort) expect("short.txt", "short\n");
    if (GetParam().hasEmpty) expect("empty.txt", "");
}

TEST_P(ZipPassword, IsWrong) {
    // None of these passes the one byte that proves a traditional password.
    for (const char* password : {"SECRET", "wrong", "secret "}) {
        const OpenResult opened = openMembers(GetParam().archive, password);
        ASSERT_TRUE(opened.reader);
        const Unpacked member = unpack(*opened.reader, "again.txt");
        EXPECT_EQ(member.code, kPasswordFile) << password;
        EXPECT_EQ(member.bytes, "");
    }
}

TEST_P(ZipPassword, IsMissing) {
    for (const std::string_view none : {std::string_view(), std::string_view("sec\0ret", 7)}) {
        const OpenResult opened = openMembers(GetParam().archive, none);
        ASSERT_TRUE(opened.reader);
        EXPECT_EQ(unpack(*opened.reader, "again.txt").code, kPasswordFile);
    }
}

TEST_P(ZipPassword, MayBeGivenAgain) {
    const OpenResult opened = openMembers(GetParam().archive, "");
    ASSERT_TRUE(opened.reader);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    ASSERT_EQ(member.name, "again.txt");
    EXPECT_EQ(unpack(*opened.reader).code, kPasswordFile);
    opened.reader->setPassword("wrong");
    EXPECT_EQ(unpack(*opened.reader).code, kPasswordFile);
    opened.reader->setPassword("secret");
    EXPECT_EQ(unpack(*opened.reader).bytes, againText());
}

INSTANTIATE_TEST_SUITE_P(Archives, ZipPassword,
                         testing::Values(EncryptedCase{"Traditional", "traditional", true, true},
                                         EncryptedCase{"Streamed", "traditional-streamed", true, false},
                                         EncryptedCase{"TraditionalOfBsdtar", "bsdtar-zipcrypt", true, false},
                                         EncryptedCase{"TraditionalBzip2", "traditional-bzip2", false, false},
                                         EncryptedCase{"Aes128", "aes128", true, true},
                                         EncryptedCase{"Aes192", "aes192", true, true},
                                         EncryptedCase{"Aes256", "aes256", true, true},
                                         EncryptedCase{"AesStored", "aes-stored", false, false},
                                         EncryptedCase{"AesBzip2", "aes-bzip2", false, false},
                                         EncryptedCase{"AesWithChecksum128", "bsdtar-aes128", true, false},
                                         EncryptedCase{"AesWithChecksum256", "bsdtar-aes256", true, false}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(ZipPasswordText, IsTriedInUtf8AndInTheSystemsCodePages) {
    if (!westernCodePages()) GTEST_SKIP() << "another code page here";
    for (const char* archive : {"traditional-utf8", "traditional-437", "traditional-1252", "aes-umlaut"}) {
        const OpenResult opened = openMembers(archive, "gr\xC3\xBCn");
        ASSERT_TRUE(opened.reader);
        EXPECT_EQ(unpack(*opened.reader, "again.txt").bytes, againText()) << archive;
    }
}

TEST(ZipPasswordText, HasOneFormInAscii) {
    EXPECT_EQ(zip::passwordForms("secret"), std::vector<std::string>{"secret"});
    EXPECT_TRUE(zip::passwordForms("").empty());
    EXPECT_TRUE(zip::passwordForms(std::string_view("a\0b", 3)).empty());
}

TEST(ZipPasswordText, HasNoFormWhereTheCodePageLacksTheCharacter) {
    if (!westernCodePages()) GTEST_SKIP() << "another code page here";
    EXPECT_EQ(zip::passwordForms("\xE6\x97\xA5"), std::vector<std::string>{"\xE6\x97\xA5"});
    // The euro sign is in 1252 alone.
    EXPECT_EQ(zip::passwordForms("\xE2\x82\xAC"), (std::vector<std::string>{"\xE2\x82\xAC", "\x80"}));
    EXPECT_EQ(zip::passwordForms("gr\xC3\xBCn"), (std::vector<std::string>{"gr\xC3\xBCn", "gr\x81n", "gr\xFCn"}));
}

TEST(ZipPasswordDamage, InAnyByteOfAesDataIsFound) {
    const std::string good = readFile(dataFile("zip_members/aes256.zip"));
    constexpr std::size_t kData = 30 + 9 + 11;  // behind header, name and AES field
    constexpr std::size_t kSaltAndProof = 16 + 2;
    const std::size_t size = static_cast<unsigned char>(good[18]);
    ASSERT_GT(size, kSaltAndProof + 10);
    for (std::size_t index = 0; index < size; ++index) {
        std::string bytes = good;
        bytes[kData + index] = static_cast<char>(bytes[kData + index] ^ 0x20);
        const OpenResult opened = openZip(inMemory(bytes));
        ASSERT_TRUE(opened.reader);
        opened.reader->setPassword("secret");
        const ReturnCode code = unpack(*opened.reader, "again.txt").code;
        if (index < kSaltAndProof) {
            EXPECT_TRUE(code == kPasswordFile || code == kFileCrc) << index << " " << code;
        } else {
            EXPECT_TRUE(code == kFileCrc || code == kCannotRead) << index << " " << code;
        }
    }
}

TEST(ZipPasswordDamage, TooFewBytesForTheEncryptionAreAnError) {
    const std::string aes = ZipBuilder::field(0x9901, std::string("\x02\x00"
                                                                  "AE"
                                                                  "\x03\x08\x00",
                                                                  7));
    for (const std::size_t size : {0U, 1U, 11U, 27U}) {
        const std::string content(size, 'x');
        const OpenResult opened = openZip(inMemory(
            ZipBuilder()
                .add({.name = "old", .content = content.substr(0, 11), .flags = 1, .originalSize = 5})
                .add({.name = "aes", .content = content, .flags = 1, .method = 99, .extra = aes, .originalSize = 5})
                .build()));
        ASSERT_TRUE(opened.reader);
        opened.reader->setPassword("secret");
        EXPECT_EQ(unpack(*opened.reader, "old").code, kCannotRead) << size;
        EXPECT_EQ(unpack(*opened.reader, "aes").code, kCannotRead) << size;
    }
}

TEST(ZipPasswordMethod, ThatIsNotReadIsRefused) {
    const auto aes = [](std::string_view data) { return ZipBuilder::field(0x9901, data); };
    const std::string content(100, 'x');
    const OpenResult opened =
        openZip(inMemory(ZipBuilder()
                             .add({.name = "strong", .content = content, .flags = 0x41})
                             .add({.name = "masked", .content = content, .flags = 0x2001})
                             .add({.name = "no field", .content = content, .flags = 1, .method = 99})
                             .add({.name = "not encrypted", .content = content, .method = 99})
                             .add({.name = "vendor",
                                   .content = content,
                                   .flags = 1,
                                   .method = 99,
                                   .extra = aes(std::string_view("\x02\x00XX\x03\x08\x00", 7))})
                             .add({.name = "version",
                                   .content = content,
                                   .flags = 1,
                                   .method = 99,
                                   .extra = aes(std::string_view("\x03\x00"
                                                                 "AE\x03\x08\x00",
                                                                 7))})
                             .add({.name = "strength",
                                   .content = content,
                                   .flags = 1,
                                   .method = 99,
                                   .extra = aes(std::string_view("\x02\x00"
                                                                 "AE\x04\x08\x00",
                                                                 7))})
                             .build()));
    ASSERT_TRUE(opened.reader);
    opened.reader->setPassword("secret");
    const Listing listing = walk(*opened.reader);
    ASSERT_EQ(listing.members.size(), 7U);
    for (const Member& member : listing.members) {
        EXPECT_EQ(unpack(*opened.reader, member.name).code, kMethod) << member.name;
    }
    const OpenResult lzma = openMembers("aes-lzma", "secret");
    ASSERT_TRUE(lzma.reader);
    EXPECT_EQ(unpack(*lzma.reader, "again.txt").code, kMethod);
}

}  // namespace
}  // namespace archiver::test
