// Testing and unpacking members through the exported functions.

#include <algorithm>

#include "archivers/formats/ace/cipher.h"
#include "archivers/formats/little_endian.h"
#include "formats/support/sha256.h"
#include "formats_ace/support/expected.h"
#include "unace/unace_fixture.h"

namespace archiver::test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

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

class UnAceUnpacking : public UnAceFixture {
protected:
    /// Unpacks an archive of one member.
    std::int32_t unpackOne(const AceFile& file, const std::string& destination) {
        const ArchiveHandle archive = openBytes(aceArchive({}, {file}));
        header(archive);
        return process(archive, abi::kExtract, destination.c_str());
    }
    std::string outFolder() const { return text(out) + "/"; }
};

class UnAceSamples : public UnAceUnpacking, public ::testing::WithParamInterface<ExpectedArchive> {};
TEST_P(UnAceSamples, UnpackToTheBytesThatWerePacked) {
    const ArchiveHandle archive = openSample(GetParam().file);
    ASSERT_NE(archive, nullptr);
    for (const ExpectedMember& expected : GetParam().members) {
        abi::HeaderData data{};
        ASSERT_EQ(readHeader(archive, &data), 0);
        EXPECT_EQ(+data.originalSize, expected.size);
        EXPECT_EQ(+data.packedSize, expected.packedSize);
        EXPECT_EQ(+data.fileCrc, expected.checksum);
        const fs::path file = out / "member";
        if ((data.attributes & 0x10) != 0) continue;
        ASSERT_EQ(process(archive, abi::kExtract, text(file).c_str()), 0) << data.fileName;
        EXPECT_EQ(sha256(read(file)), expected.sha256) << data.fileName;
    }
    abi::HeaderData data{};
    EXPECT_EQ(readHeader(archive, &data), 128);
}
TEST_P(UnAceSamples, TestGood) {
    const ArchiveHandle archive = openSample(GetParam().file);
    abi::HeaderData data{};
    std::size_t members = 0;
    while (readHeader(archive, &data) == 0) {
        EXPECT_EQ(process(archive, abi::kTest, nullptr), 0) << data.fileName;
        ++members;
    }
    EXPECT_EQ(members, GetParam().members.size());
    EXPECT_EQ(tree(out), Names{});
}
INSTANTIATE_TEST_SUITE_P(Data, UnAceSamples, ::testing::ValuesIn(expectedArchives()), [](const auto& each) {
    std::string name;
    for (const char c : each.param.file.substr(0, each.param.file.find('.'))) name += c == '-' ? '_' : c;
    return name;
});

// Where it goes

TEST_F(UnAceUnpacking, WritesTheFileThatIsNamed) {
    EXPECT_EQ(unpackOne({.name = "docs\\a.txt", .content = "abc"}, text(out / "deep" / "b.txt")), 0);
    EXPECT_EQ(tree(out), (Names{"deep/", "deep/b.txt"}));
    EXPECT_EQ(read(out / "deep" / "b.txt"), "abc");
}

TEST_F(UnAceUnpacking, WritesBelowAFolderThatIsThere) {
    fs::create_directory(out);
    EXPECT_EQ(unpackOne({.name = "docs\\a.txt", .content = "abc"}, text(out)), 0);
    EXPECT_EQ(tree(out), (Names{"docs/", "docs/a.txt"}));
}

TEST_F(UnAceUnpacking, WritesBelowAFolderThatASeparatorEnds) {
    EXPECT_EQ(unpackOne({.name = "docs\\a.txt", .content = "abc"}, outFolder()), 0);
    EXPECT_EQ(tree(out), (Names{"docs/", "docs/a.txt"}));
}

TEST_F(UnAceUnpacking, WritesBelowTheCurrentFolderWithoutADestination) {
    const fs::path before = fs::current_path();
    fs::create_directory(out);
    fs::current_path(out);
    EXPECT_EQ(unpackOne({.name = "a.txt", .content = "abc"}, ""), 0);
    const ArchiveHandle archive = openBytes(aceArchive({}, {{.name = "b.txt", .content = "abc"}}));
    header(archive);
    EXPECT_EQ(process(archive, abi::kExtract, nullptr), 0);
    fs::current_path(before);
    EXPECT_EQ(tree(out), (Names{"a.txt", "b.txt"}));
}

TEST_F(UnAceUnpacking, MakesFolders) {
    EXPECT_EQ(unpackOne({.name = "docs\\deep", .attributes = 0x10}, outFolder()), 0);
    EXPECT_EQ(tree(out), (Names{"docs/", "docs/deep/"}));
    EXPECT_EQ(unpackOne({.name = "docs\\deep", .attributes = 0x10}, text(out / "other")), 0);
    EXPECT_EQ(tree(out), (Names{"docs/", "docs/deep/", "other/"}));
}

struct HostileCase {
    const char* name;
    const char* stored;
    Names made;
};
class UnAceHostileNames : public UnAceUnpacking, public ::testing::WithParamInterface<HostileCase> {};
TEST_P(UnAceHostileNames, StayBelowTheFolder) {
    EXPECT_EQ(unpackOne({.name = GetParam().stored, .content = "abc"}, outFolder()), 0);
    EXPECT_EQ(tree(out), GetParam().made);
    Names all = tree(folder);
    EXPECT_EQ(std::count_if(all.begin(), all.end(), [](const std::string& name) { return name.back() != '/'; }), 2)
        << "the archive and the member, and nothing beside them";
}
INSTANTIATE_TEST_SUITE_P(Names, UnAceHostileNames,
                         ::testing::Values(HostileCase{"Parent", "..\\evil", {"evil"}},
                                           HostileCase{"Parents", "a\\..\\..\\..\\evil", {"a/", "a/evil"}},
                                           HostileCase{"Root", "\\evil", {"evil"}},
                                           HostileCase{"Slashes", "../../evil", {"evil"}}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(UnAceUnpacking, RefusesANameOfNothing) {
    EXPECT_NE(unpackOne({.name = "..", .content = "abc"}, outFolder()), 0);
    EXPECT_EQ(tree(out), Names{});
}

TEST_F(UnAceUnpacking, GoesThroughNoLinkBelowTheFolder) {
    fs::create_directories(out);
    fs::create_directories(folder / "other");
    std::error_code error;
    fs::create_directory_symlink(folder / "other", out / "docs", error);
    if (error) GTEST_SKIP() << "links cannot be made here";
    EXPECT_NE(unpackOne({.name = "docs\\a.txt", .content = "abc"}, outFolder()), 0);
    EXPECT_EQ(tree(folder / "other"), Names{});
}

// What is there

TEST_F(UnAceUnpacking, ReplacesAFileOnlyByAWholeOne) {
    fs::create_directory(out);
    write(out / "a", "mine");
    EXPECT_EQ(unpackOne({.name = "a", .content = "abc", .checksum = 0x12345678}, text(out / "a")), 9);
    EXPECT_EQ(read(out / "a"), "mine");
    EXPECT_EQ(tree(out), (Names{"a"})) << "and nothing half written beside it";
    EXPECT_EQ(unpackOne({.name = "a", .content = "abc"}, text(out / "a")), 0);
    EXPECT_EQ(read(out / "a"), "abc");
}

TEST_F(UnAceUnpacking, WritesNoMemberInPlaceOfAFolder) {
    fs::create_directories(out / "a" / "inner");
    EXPECT_NE(unpackOne({.name = "a", .content = "abc"}, outFolder()), 0);
    EXPECT_EQ(tree(out), (Names{"a/", "a/inner/"}));
}

TEST_F(UnAceUnpacking, TellsThatAFolderIsAFile) {
    write(out, "mine");
    EXPECT_EQ(unpackOne({.name = "a", .content = "abc"}, text(out / "a")), 7);
    EXPECT_EQ(read(out), "mine");
}

// Data

TEST_F(UnAceUnpacking, RestoresTheTime) {
    const ArchiveHandle archive = openBytes(aceArchive({}, {{.name = "a", .content = "abc", .stamp = 0x2AB18BDC},
                                                            {.name = "b", .content = "abc", .stamp = 0x2AB193DC}}));
    for (const char* name : {"a", "b"}) {
        header(archive);
        ASSERT_EQ(process(archive, abi::kExtract, text(out / name).c_str()), 0);
    }
    // 17:30:56 and 18:30:56 of one day, whatever the zone.
    EXPECT_EQ(fs::last_write_time(out / "b") - fs::last_write_time(out / "a"), std::chrono::hours(1));
    EXPECT_LT(fs::last_write_time(out / "b"), fs::last_write_time(folder / "archive.ace") - std::chrono::hours(24));
}

TEST_F(UnAceUnpacking, TellsOfAnUnknownMethod) {
    EXPECT_EQ(unpackOne({.name = "a", .content = "abc", .method = 9}, text(out / "a")), 132);
    EXPECT_EQ(tree(out), Names{});
}

TEST_F(UnAceUnpacking, TellsOfDataCutShort) {
    const std::string whole = aceArchive({}, {{.name = "a", .content = "0123456789"}});
    const ArchiveHandle archive = openBytes(whole.substr(0, whole.size() - 3));
    header(archive);
    EXPECT_EQ(process(archive, abi::kExtract, text(out / "a").c_str()), 6);
    EXPECT_EQ(tree(out), Names{});
}

TEST_F(UnAceUnpacking, WantsAHeaderFirst) {
    const ArchiveHandle archive = openBytes(aceArchive({}, {{.name = "a", .content = "abc"}}));
    EXPECT_EQ(process(archive, abi::kTest, nullptr), 10);
    header(archive);
    EXPECT_EQ(process(archive, abi::kTest, nullptr), 0);
    abi::HeaderData data{};
    EXPECT_EQ(readHeader(archive, &data), 128);
    EXPECT_EQ(process(archive, abi::kTest, nullptr), 10);
}

TEST_F(UnAceUnpacking, GoesOnWithoutBeingToldToSkip) {
    const ArchiveHandle archive =
        openBytes(aceArchive({}, {{.name = "a", .content = "abc"}, {.name = "b", .content = "defg"}}));
    header(archive);
    EXPECT_STREQ(header(archive).fileName, "b");
    EXPECT_EQ(process(archive, abi::kExtract, text(out / "b").c_str()), 0);
    EXPECT_EQ(read(out / "b"), "defg");
}

// Passwords

class UnAcePasswords : public UnAceUnpacking {
protected:
    const std::string content = "The quick brown fox jumps over the lazy dog";
    std::string archive(const std::string& password) {
        return aceArchive(
            {}, {{.name = "fox", .content = content, .packed = enciphered(content, password), .flags = 0x4001}});
    }
};

TEST_F(UnAcePasswords, AreWantedWrongAndRight) {
    const ArchiveHandle handle = openBytes(archive("secret"));
    EXPECT_EQ(+header(handle).flags, 0x4001U);
    const std::string file = text(out / "fox");
    EXPECT_EQ(process(handle, abi::kExtract, file.c_str()), 131);
    EXPECT_EQ(setPassword(handle, "wrong"), 0);
    EXPECT_EQ(process(handle, abi::kExtract, file.c_str()), 9);
    EXPECT_EQ(tree(out), Names{});
    EXPECT_EQ(setPassword(handle, "secret"), 0);
    EXPECT_EQ(process(handle, abi::kExtract, file.c_str()), 0);
    EXPECT_EQ(read(out / "fox"), content);
    EXPECT_EQ(setPassword(handle, ""), 0);
    EXPECT_EQ(process(handle, abi::kTest, nullptr), 131);
}

TEST_F(UnAcePasswords, MayBeSetBeforeTheHeader) {
    const ArchiveHandle handle = openBytes(archive("secret"));
    EXPECT_EQ(setPassword(handle, "secret"), 0);
    header(handle);
    EXPECT_EQ(process(handle, abi::kTest, nullptr), 0);
}

TEST_F(UnAcePasswords, AreNotNeededToSkip) {
    const ArchiveHandle handle = openBytes(archive("secret"));
    header(handle);
    EXPECT_EQ(process(handle, abi::kSkip, nullptr), 0);
    abi::HeaderData data{};
    EXPECT_EQ(readHeader(handle, &data), 128);
}

}  // namespace
}  // namespace archiver::test
