#include <gtest/gtest.h>

#include "archivers/formats/ace/ace_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/sha256.h"
#include "formats_ace/support/expected.h"

/// Archives that other programs made.
namespace archiver::test {
namespace {

std::unique_ptr<AceReader> openFixture(const std::string& file) {
    AceOpenResult opened = openAceReader(dataFile("ace/" + file));
    EXPECT_EQ(opened.code, kOk) << file;
    return std::move(opened.reader);
}

class AceFixtures : public testing::TestWithParam<ExpectedArchive> {};

TEST_P(AceFixtures, AreListedAndUnpacked) {
    const auto reader = openFixture(GetParam().file);
    ASSERT_TRUE(reader);
    Member member;
    for (const ExpectedMember& expected : GetParam().members) {
        ASSERT_EQ(reader->next(member), kOk);
        EXPECT_EQ(member.name, expected.name);
        EXPECT_EQ(member.originalSize, expected.size);
        EXPECT_EQ(member.packedSize, expected.packedSize);
        EXPECT_EQ(member.crc, ~expected.checksum);
        EXPECT_EQ(reader->header().checksum, expected.checksum);
        EXPECT_EQ(reader->header().method, expected.method);
        const Unpacked unpacked = unpack(*reader);
        EXPECT_EQ(unpacked.code, kOk) << member.name;
        EXPECT_EQ(sha256(unpacked.bytes), expected.sha256) << member.name;
    }
    EXPECT_EQ(reader->next(member), kNoMoreEntries);
}

TEST_P(AceFixtures, GiveEachMemberAlone) {
    for (std::size_t wanted = 0; wanted < GetParam().members.size(); ++wanted) {
        const auto reader = openFixture(GetParam().file);
        ASSERT_TRUE(reader);
        Member member;
        for (std::size_t i = 0; i <= wanted; ++i) ASSERT_EQ(reader->next(member), kOk);
        const Unpacked unpacked = unpack(*reader);
        EXPECT_EQ(unpacked.code, kOk);
        EXPECT_EQ(sha256(unpacked.bytes), GetParam().members[wanted].sha256) << member.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Data, AceFixtures, testing::ValuesIn(expectedArchives()), [](const auto& each) {
    std::string name;
    for (const char c : each.param.file.substr(0, each.param.file.find('.'))) name += c == '-' ? '_' : c;
    return name;
});

TEST(AceFixture, OfTheOriginalArchiverTellsItsHeaders) {
    const auto reader = openFixture("tiny-folder.ace");
    ASSERT_TRUE(reader);
    const AceFacts& facts = reader->aceFacts();
    EXPECT_EQ(facts.flags, 0x9000);
    EXPECT_EQ(facts.versionNeeded, 20);
    EXPECT_EQ(facts.versionMadeBy, 20);
    EXPECT_EQ(facts.host, 2);
    EXPECT_EQ(facts.volume, 0);
    EXPECT_EQ(facts.stamp, 0x41046F21U);
    EXPECT_EQ(facts.advert, "*UNREGISTERED VERSION*");
    EXPECT_FALSE(facts.hasComment);
    EXPECT_EQ(reader->facts().fileSize, 133U);
    EXPECT_EQ(reader->facts().osType, os_type::kWindowsNtfs);
    EXPECT_FALSE(reader->facts().selfExtracting);

    Member member;
    ASSERT_EQ(reader->next(member), kOk);
    EXPECT_EQ(member.attributes, attribute::kFolder);
    EXPECT_EQ(reader->header().flags, 0x0001);
    ASSERT_EQ(reader->next(member), kOk);
    EXPECT_EQ(member.attributes, attribute::kArchive);
    EXPECT_EQ(member.dosDate, 0x4104);
    EXPECT_EQ(member.dosTime, 0x6DDA);
    EXPECT_EQ(member.method, "Stored");
    EXPECT_EQ(reader->header().name, "t\\t.txt");
    EXPECT_EQ(reader->header().flags, 0x8001);
    EXPECT_EQ(reader->header().quality, 3);
    EXPECT_EQ(reader->header().parameters, 10);
    EXPECT_EQ(reader->header().attributes, 0x20U);
    EXPECT_EQ(reader->header().stamp, 0x41046DDAU);
    EXPECT_EQ(unpack(*reader).bytes, "42");
}

TEST(AceFixture, WithCommentsTellsThem) {
    const auto reader = openFixture("comments.ace");
    ASSERT_TRUE(reader);
    EXPECT_TRUE(reader->aceFacts().hasComment);
    EXPECT_EQ(reader->aceFacts().comment, "This is the comment of the archive, and this is the end of it.");
    EXPECT_EQ(reader->aceFacts().advert, "demo");
    Member member;
    ASSERT_EQ(reader->next(member), kOk);
    EXPECT_TRUE(reader->header().hasComment);
    EXPECT_EQ(reader->header().comment, "a comment of a file, a comment of a file");
}

TEST(AceFixture, BehindAProgramIsFound) {
    const std::string archive = readFile(dataFile("ace/comments.ace"));
    const TemporaryFolder folder;
    for (const std::size_t size : {1U, 7U, 5000U, (512U << 10) - 14U}) {
        // The magic alone stands in the program too.
        std::string program(size, 'M');
        if (size > 100) program.replace(50, 7, "**ACE**");
        const AceOpenResult opened = openAceReader(folder.write("setup.exe", program + archive));
        ASSERT_EQ(opened.code, kOk) << size;
        EXPECT_TRUE(opened.reader->facts().selfExtracting);
        EXPECT_EQ(opened.reader->facts().fileSize, size + archive.size());
        EXPECT_EQ(sha256(unpack(*opened.reader, "a.txt").bytes), expectedArchive("comments.ace").members[0].sha256);
    }
    EXPECT_EQ(openAce(folder.write("setup.exe", std::string(512U << 10, 'M') + archive)).code, kFileStyle);
}

TEST(AceFixture, IsReadAgainAfterARestart) {
    const auto reader = openFixture("solid-mixed.ace");
    ASSERT_TRUE(reader);
    const ExpectedArchive& expected = expectedArchive("solid-mixed.ace");
    for (std::size_t i = expected.members.size(); i-- > 0;) {
        ASSERT_EQ(reader->restart(), kOk);
        const Unpacked unpacked = unpack(*reader, expected.members[i].name);
        EXPECT_EQ(unpacked.code, kOk);
        EXPECT_EQ(sha256(unpacked.bytes), expected.members[i].sha256);
    }
}

TEST(AceFixture, IsOpenedByTheCommonFunction) {
    const OpenFunction open = openAce;
    const Listing listing = walk(open(dataFile("ace/stored.ace")));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    EXPECT_EQ(listing.names(), (std::vector<std::string>{"docs\\", "docs\\a.txt", "empty.txt"}));
    EXPECT_EQ(open(dataFile("ace/none.ace")).code, kNotFindArcFile);
    EXPECT_EQ(open(dataFile("ace")).code, kArcFileOpen);
}

TEST(Sha256, IsThatOfTheStandard) {
    EXPECT_EQ(sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
}

}  // namespace
}  // namespace archiver::test
