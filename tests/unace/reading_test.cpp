// Opening archives and reading their headers through the exported functions.

#include <cstring>

#include "unace/unace_fixture.h"

namespace archiver::test {
namespace {

using UnAceReading = UnAceFixture;

TEST_F(UnAceReading, ExportsItsFunctions) {
    EXPECT_NE(open, nullptr);
    EXPECT_NE(close, nullptr);
    EXPECT_NE(readHeader, nullptr);
    EXPECT_NE(process, nullptr);
    EXPECT_NE(setPassword, nullptr);
    EXPECT_NE(setUnicodeMode, nullptr);
    EXPECT_EQ(bind<fn::GetWord>("ACEGetVersion"), nullptr);
    EXPECT_EQ(bind<fn::Run>("ACE"), nullptr);
}

TEST_F(UnAceReading, TellsAHeader) {
    const ArchiveHandle archive = openBytes(aceArchive({}, {{.name = "docs\\read me.txt",
                                                             .content = "0123456789",
                                                             .packed = "012",
                                                             .flags = 0x8001,
                                                             .stamp = 0x2AB18BDD,
                                                             .attributes = 0x21,
                                                             .method = 1,
                                                             .quality = 5,
                                                             .checksum = 0x1A2B3C4D}}));
    abi::HeaderData data;
    std::memset(static_cast<void*>(&data), 0x55, sizeof data);
    data.commentBuffer = nullptr;
    data.commentBufferSize = 0;
    ASSERT_EQ(readHeader(archive, &data), 0);
    EXPECT_STREQ(data.fileName, "docs\\read me.txt");
    EXPECT_EQ(std::filesystem::path(reinterpret_cast<const char8_t*>(data.archiveName)), folder / "archive.ace");
    EXPECT_EQ(+data.flags, 0x8001U);
    EXPECT_EQ(+data.packedSize, 3U);
    EXPECT_EQ(+data.originalSize, 10U);
    EXPECT_EQ(+data.fileCrc, 0x1A2B3C4DU);
    EXPECT_EQ(+data.fileTime, 0x2AB18BDDU);
    EXPECT_EQ(+data.method, 1U);
    EXPECT_EQ(+data.quality, 5U);
    EXPECT_EQ(+data.attributes, 0x21U);
    EXPECT_EQ(+data.commentState, 255U);
    EXPECT_EQ(+data.commentSize, 0U);
    EXPECT_EQ(readHeader(archive, &data), 128);
    EXPECT_EQ(readHeader(archive, &data), 128) << "and so on";
}

TEST_F(UnAceReading, TellsFoldersWithoutASeparatorAtTheEnd) {
    const ArchiveHandle archive = openSample("tiny-folder.ace");
    const abi::HeaderData inner = header(archive);
    EXPECT_STREQ(inner.fileName, "t");
    EXPECT_EQ(+inner.attributes, 0x10U);
    EXPECT_STREQ(header(archive).fileName, "t\\t.txt");
}

TEST_F(UnAceReading, CutsLongNames) {
    const std::string name(300, 'n');
    const ArchiveHandle archive = openBytes(aceArchive({}, {{.name = name}}));
    EXPECT_EQ(std::string(header(archive).fileName), name.substr(0, 259));
}

TEST_F(UnAceReading, TellsTheArchive) {
    std::string name = text(archiver::testing::programFolder() / "data" / "ace" / "tiny-folder.ace");
    abi::OpenArchiveData data{};
    data.archiveName = name.data();
    const ArchiveHandle archive = open(&data);
    ASSERT_NE(archive, nullptr);
    EXPECT_EQ(+data.openResult, 0);
    EXPECT_EQ(+data.flags, 0x9000U);
    EXPECT_EQ(+data.host, 2U);
    EXPECT_STREQ(data.advert, "*UNREGISTERED VERSION*");
    EXPECT_EQ(+data.commentState, 255U);
    EXPECT_EQ(close(archive), 0);
}

TEST_F(UnAceReading, CutsALongAdvert) {
    write(folder / "a.ace", aceArchive({.advert = std::string(200, 'a')}, {}));
    std::string name = text(folder / "a.ace");
    abi::OpenArchiveData data{};
    data.archiveName = name.data();
    const ArchiveHandle archive = open(&data);
    ASSERT_NE(archive, nullptr);
    EXPECT_EQ(std::string(data.advert), std::string(50, 'a'));
    close(archive);
}

TEST_F(UnAceReading, GivesComments) {
    std::string name = text(archiver::testing::programFolder() / "data" / "ace" / "comments.ace");
    char comment[512] = {};
    abi::OpenArchiveData data{};
    data.archiveName = name.data();
    data.commentBuffer = comment;
    data.commentBufferSize = sizeof comment;
    const ArchiveHandle archive = open(&data);
    ASSERT_NE(archive, nullptr);
    EXPECT_EQ(+data.commentState, 0U);
    EXPECT_GT(+data.commentSize, 0U);
    EXPECT_EQ(+data.commentSize, std::strlen(comment));
    const std::string whole = comment;
    close(archive);

    char small[5];
    std::memset(small, 'x', sizeof small);
    data.commentBuffer = small;
    data.commentBufferSize = 4;
    const ArchiveHandle again = open(&data);
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(+data.commentState, 1U);
    EXPECT_EQ(+data.commentSize, 3U);
    EXPECT_EQ(std::string(small), whole.substr(0, 3));
    EXPECT_EQ(small[4], 'x') << "nothing is written behind the buffer";
    close(again);
}

struct BadFile {
    const char* name;
    std::string bytes;
    std::int32_t result;
};
class UnAceBadFile : public UnAceFixture, public ::testing::WithParamInterface<BadFile> {};
TEST_P(UnAceBadFile, IsNotOpened) {
    write(folder / "bad.ace", GetParam().bytes);
    std::int32_t result = -1;
    EXPECT_EQ(openFile(folder / "bad.ace", result), nullptr);
    EXPECT_EQ(result, GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Files, UnAceBadFile,
                         ::testing::Values(BadFile{"Empty", "", 5}, BadFile{"Text", "this is no archive", 5},
                                           BadFile{"Zip", std::string("PK\x03\x04", 4) + std::string(100, '\0'), 5}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(UnAceReading, DoesNotOpenWhatIsNotThere) {
    std::int32_t result = -1;
    EXPECT_EQ(openFile(folder / "none.ace", result), nullptr);
    EXPECT_EQ(result, 5);
    EXPECT_EQ(openFile(folder, result), nullptr);
    EXPECT_NE(result, 0);
}

TEST_F(UnAceReading, TellsOfDamageAndOfAnEndThatComesEarly) {
    const std::string archive = aceArchive({}, {{.name = "a", .content = "abc"}, {.name = "b", .content = "abc"}});
    std::string damaged = archive;
    damaged[damaged.size() - 8] = static_cast<char>(damaged[damaged.size() - 8] ^ 1);  // in the last header
    const ArchiveHandle first = openBytes(damaged);
    EXPECT_STREQ(header(first).fileName, "a");
    abi::HeaderData data{};
    EXPECT_EQ(readHeader(first, &data), 9);
    const ArchiveHandle second = openBytes(archive.substr(0, archive.size() - 10));
    EXPECT_STREQ(header(second).fileName, "a");
    const std::int32_t code = readHeader(second, &data);
    EXPECT_TRUE(code == 6 || code == 9) << code;
}

// Handles and arguments

TEST_F(UnAceReading, RefusesHandlesThatAreNotOpen) {
    const ArchiveHandle archive = openBytes(aceArchive({}, {{.name = "a"}}));
    int place = 0;
    abi::HeaderData data{};
    for (const ArchiveHandle bad : {ArchiveHandle{nullptr}, ArchiveHandle{&place}, ArchiveHandle{this},
                                    reinterpret_cast<ArchiveHandle>(std::uintptr_t{0x7FFFFFFF})}) {
        EXPECT_EQ(readHeader(bad, &data), 129);
        EXPECT_EQ(process(bad, 0, nullptr), 129);
        EXPECT_EQ(setPassword(bad, "x"), 129);
        EXPECT_EQ(close(bad), 129);
    }
    EXPECT_EQ(close(archive), 0);
    EXPECT_EQ(close(archive), 129) << "a second time";
    EXPECT_EQ(readHeader(archive, &data), 129);
}

TEST_F(UnAceReading, GivesNoHandleASecondTime) {
    const ArchiveHandle first = openBytes(aceArchive({}, {{.name = "a"}}));
    close(first);
    EXPECT_NE(openBytes(aceArchive({}, {{.name = "a"}})), first);
}

TEST_F(UnAceReading, RefusesValuesThatAParameterCannotHave) {
    const ArchiveHandle archive = openBytes(aceArchive({}, {{.name = "a"}}));
    EXPECT_EQ(readHeader(archive, nullptr), 130);
    header(archive);
    EXPECT_EQ(process(archive, 3, nullptr), 130);
    EXPECT_EQ(process(archive, -1, nullptr), 130);
    EXPECT_EQ(setPassword(archive, nullptr), 0) << "no password";
    EXPECT_EQ(open(nullptr), nullptr);
    abi::OpenArchiveData data{};
    EXPECT_EQ(open(&data), nullptr);
    EXPECT_EQ(+data.openResult, 130) << "no name";
    std::string name = text(folder / "archive.ace");
    data.archiveName = name.data();
    data.openMode = 2;
    EXPECT_EQ(open(&data), nullptr);
    EXPECT_EQ(+data.openResult, 130);
}

TEST_F(UnAceReading, HasSeveralArchivesOpen) {
    const ArchiveHandle first = openSample("tiny-plain.ace");
    const ArchiveHandle second = openSample("tiny-folder.ace");
    EXPECT_NE(first, second);
    EXPECT_STREQ(header(second).fileName, "t");
    abi::HeaderData data{};
    EXPECT_EQ(readHeader(first, &data), 0);
    EXPECT_STRNE(data.fileName, "t");
    EXPECT_STREQ(header(second).fileName, "t\\t.txt");
}

}  // namespace
}  // namespace archiver::test
