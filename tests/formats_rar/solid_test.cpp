#include <gtest/gtest.h>

#include "archivers/formats/rar/rar_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_rar/support/packed_member.h"

/// Members of the old layout that are packed with what those before left.
namespace archiver::test {
namespace {

void expectMember(ArchiveReader& reader, const OldRarFile& file) {
    const Unpacked unpacked = unpack(reader, file.name);
    EXPECT_EQ(unpacked.code, kOk) << file.name;
    EXPECT_TRUE(unpacked.bytes == file.content) << file.name;
}

void expectAll(ArchiveReader& reader, const std::vector<OldRarFile>& files) {
    Member current;
    for (const OldRarFile& file : files) {
        ASSERT_EQ(reader.next(current), kOk);
        const Unpacked unpacked = unpack(reader);
        EXPECT_EQ(unpacked.code, kOk) << file.name;
        EXPECT_TRUE(unpacked.bytes == file.content) << file.name;
    }
    EXPECT_EQ(reader.next(current), kNoMoreEntries);
}

TEST(RarSolid, MembersAreReadInTheirOrder) {
    const std::vector<OldRarFile> files = solidGroup();
    const OpenResult opened = openRar(inMemory(oldRar(files)), {});
    ASSERT_TRUE(opened.reader);
    expectAll(*opened.reader, files);
    ASSERT_EQ(opened.reader->restart(), kOk);
    expectAll(*opened.reader, files);
}

TEST(RarSolid, MembersAreReadInAnyOrder) {
    const std::vector<OldRarFile> files = solidGroup();
    const OpenResult opened = openRar(inMemory(oldRar(files)), {});
    ASSERT_TRUE(opened.reader);
    for (const std::size_t index : {4U, 2U, 0U, 3U, 1U, 4U}) expectMember(*opened.reader, files[index]);
}

TEST(RarSolid, MembersBetweenThatAreNotPackedDoNotMatter) {
    std::vector<OldRarFile> files = solidGroup();
    files.insert(files.begin() + 3, {.name = "stored", .content = "stored", .flags = kSolid});
    files.insert(files.begin() + 2, {.name = "empty", .flags = kSolid, .method = 0x33});
    files.insert(files.begin() + 1, {.name = "folder\\", .flags = 0xE0});
    const OpenResult opened = openRar(inMemory(oldRar(files)), {});
    ASSERT_TRUE(opened.reader);
    expectAll(*opened.reader, files);
}

TEST(RarSolid, GroupsFollowEachOther) {
    std::vector<OldRarFile> files = solidGroup();
    const std::vector<OldRarFile> again = solidGroup();
    files.insert(files.end(), again.begin(), again.end());
    const OpenResult opened = openRar(inMemory(oldRar(files)), {});
    ASSERT_TRUE(opened.reader);
    expectAll(*opened.reader, files);
}

TEST(RarSolid, MembersBehindAWrongByteAreGoodWhenTheyDoWithoutIt) {
    std::vector<OldRarFile> files = solidGroup();
    // A literal becomes another one: the next member is of a model of its own, the one behind copies the byte.
    (*files[1].packed)[2] = static_cast<char>((*files[1].packed)[2] ^ 0x10);
    const OpenResult opened = openRar(inMemory(oldRar(files)), {});
    ASSERT_TRUE(opened.reader);
    Member current;
    for (const OldRarFile& file : files) {
        ASSERT_EQ(opened.reader->next(current), kOk);
        const bool copies = file.name == "same codes" || file.name == "same ppmd";
        EXPECT_EQ(unpack(*opened.reader).code, copies ? kFileCrc : kOk) << file.name;
    }
}

TEST(RarSolid, MembersBehindOneThatMakesNoSenseAreNotUnpacked) {
    std::vector<OldRarFile> files = solidGroup();
    files[1].packed->resize(3);
    for (const bool inOrder : {true, false}) {
        const OpenResult opened = openRar(inMemory(oldRar(files)), {});
        ASSERT_TRUE(opened.reader);
        Member current;
        ASSERT_EQ(opened.reader->next(current), kOk);
        EXPECT_EQ(unpack(*opened.reader).code, kOk);
        for (std::size_t index = 1; index < files.size(); ++index) {
            ASSERT_EQ(opened.reader->next(current), kOk);
            if (inOrder || index > 1) {
                EXPECT_EQ(unpack(*opened.reader).code, kHuffmanCode) << current.name;
            }
        }
    }
}

TEST(RarSolid, MembersBehindAnEncryptedOneNeedThePassword) {
    std::vector<OldRarFile> files = solidGroup();
    files[1].flags |= 0x04;
    const OpenResult opened = openRar(inMemory(oldRar(files)), {});
    ASSERT_TRUE(opened.reader);
    expectMember(*opened.reader, files[0]);
    for (std::size_t index = 1; index < files.size(); ++index)
        EXPECT_EQ(unpack(*opened.reader, files[index].name).code, kPasswordFile);
}

TEST(RarSolid, MembersBehindOneOfAnotherVersionAreRefused) {
    std::vector<OldRarFile> files = solidGroup();
    files[1].version = 20;
    const OpenResult opened = openRar(inMemory(oldRar(files)), {});
    ASSERT_TRUE(opened.reader);
    expectMember(*opened.reader, files[0]);
    for (std::size_t index = 1; index < files.size(); ++index)
        EXPECT_EQ(unpack(*opened.reader, files[index].name).code, kMethod);
}

TEST(RarSolid, FirstMembersOfAGroupHaveNothingBeforeThem) {
    OldPacker packer;
    OldRarFile file = member(packer.codes().text("abc").endFile(), "a", kSolid);
    const Unpacked unpacked = unpackFirst({file});
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes, "abc");
    const OpenResult opened = openRar(inMemory(oldRar({solidGroup()[1]})), {});
    Member current;
    ASSERT_EQ(opened.reader->next(current), kOk);
    EXPECT_NE(unpack(*opened.reader).code, kOk) << "its codes are in a member that is not there";
}

TEST(RarSolid, MembersGoOnBehindOneThatWasStopped) {
    const std::vector<OldRarFile> files = solidGroup();
    const OpenResult opened = openRar(inMemory(oldRar(files)), {});
    ASSERT_TRUE(opened.reader);
    Member current;
    ASSERT_EQ(opened.reader->next(current), kOk);
    EXPECT_EQ(opened.reader->read([](const char*, std::size_t) { return false; }), kUserCancel);
    ASSERT_EQ(opened.reader->next(current), kOk);
    const Unpacked unpacked = unpack(*opened.reader);
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_TRUE(unpacked.bytes == files[1].content);
}

TEST(RarSolid, UnpackingWhatIsInFrontCanBeStopped) {
    for (const std::string& bytes : {oldRar(solidGroup()), readFile(dataFile("rar/rar5_multiple_files_solid.rar"))}) {
        const OpenResult opened = openRar(inMemory(bytes), {});
        ASSERT_TRUE(opened.reader);
        Member current;
        for (int count = 0; count < 3; ++count) ASSERT_EQ(opened.reader->next(current), kOk);
        std::size_t calls = 0, given = 0;
        EXPECT_EQ(opened.reader->read([&](const char*, std::size_t size) {
            ++calls;
            given += size;
            return false;
        }),
                  kUserCancel);
        EXPECT_EQ(calls, 1U);
        EXPECT_EQ(given, 0U);
        ASSERT_EQ(opened.reader->next(current), kOk);
        EXPECT_EQ(unpack(*opened.reader).code, kOk);
    }
}

/// A file that counts the bytes read from it.
class CountingFile final : public InputFile {
public:
    CountingFile(std::string bytes, std::uint64_t& count) : file_(std::move(bytes)), count_(count) {}
    [[nodiscard]] std::uint64_t size() const noexcept override { return file_.size(); }
    [[nodiscard]] Moment modified() const noexcept override { return file_.modified(); }
    [[nodiscard]] std::optional<std::size_t> readAt(std::uint64_t offset,
                                                    std::span<char> into) const noexcept override {
        const auto got = file_.readAt(offset, into);
        count_ += got.value_or(0);
        return got;
    }

private:
    MemoryFile file_;
    std::uint64_t& count_;
};

TEST(RarSolid, ReadingAllMembersReadsNoByteOftenAgain) {
    OldPacker packer;
    std::vector<OldRarFile> files;
    for (int index = 0; index < 200; ++index) {
        packer.codes().text(prose(100 + static_cast<std::size_t>(index)) + std::to_string(index)).endFile();
        files.push_back(member(packer, std::to_string(index), index == 0 ? 0 : kSolid));
    }
    const std::string bytes = oldRar(files);
    std::uint64_t count = 0;
    const OpenResult opened = openRar(std::make_unique<CountingFile>(bytes, count), {});
    ASSERT_TRUE(opened.reader);
    expectAll(*opened.reader, files);
    EXPECT_LT(count, 3 * bytes.size());
}

TEST(RarSolid, MembersLieInSeveralVolumes) {
    const std::vector<OldRarFile> files = solidGroup();
    constexpr std::uint16_t kVolume = 0x0001, kBefore = 0x0001, kAfter = 0x0002;
    const auto part = [](OldRarFile file, std::size_t at, std::size_t size, std::uint16_t flags) {
        file.packed = file.packed->substr(at, size);
        file.flags |= flags;
        return file;
    };
    const TemporaryFolder folder;
    const std::filesystem::path first =
        folder.write("set.rar", oldRar({files[0], files[1], part(files[2], 0, 5, kAfter)}, kVolume, true));
    folder.write("set.r00", oldRar({part(files[2], 5, 7, kBefore | kAfter)}, kVolume, true));
    folder.write("set.r01", oldRar({part(files[2], 12, std::string::npos, kBefore), files[3], files[4]}, kVolume));
    const OpenResult opened = openRar(first);
    ASSERT_TRUE(opened.reader);
    expectAll(*opened.reader, files);
    expectMember(*opened.reader, files[4]);
}

TEST(RarProgress, GoesUpToTheArchivesSize) {
    for (const std::string& bytes : {oldRar(solidGroup()), readFile(dataFile("rar/rar5_multiple_files_solid.rar"))}) {
        const OpenResult opened = openRar(inMemory(bytes), {});
        ASSERT_TRUE(opened.reader);
        EXPECT_EQ(opened.reader->consumed(), 0U);
        std::uint64_t last = 0;
        Member current;
        while (opened.reader->next(current) == kOk) {
            EXPECT_GE(opened.reader->consumed(), last) << current.name;
            last = opened.reader->consumed();
            ASSERT_EQ(unpack(*opened.reader).code, kOk);
            EXPECT_GT(opened.reader->consumed(), last) << current.name;
            last = opened.reader->consumed();
            EXPECT_LE(last, bytes.size());
        }
        EXPECT_GT(last, bytes.size() / 2);
        opened.reader->restart();
        EXPECT_EQ(opened.reader->consumed(), 0U);
    }
}

}  // namespace
}  // namespace archiver::test
