// The archives are those of tests/data/archivers; what they hold is told by the programs that made them.
#include <gtest/gtest.h>

#include "archivers/loaded_library.h"

namespace archiver {
namespace {

using testing::list;
using testing::ListedMember;
using testing::LoadedLibrary;
using testing::sample;

constexpr std::uint32_t kWritten = 990120658;  // 2001-05-17 17:30:58 UTC

/// One expected row of a listing.
struct Row {
    const char* name;
    std::uint32_t originalSize, compressedSize, crc;
    std::uint16_t ratio;
    const char* attribute;
    const char* mode;
    std::int32_t attributes;
};

void expectRow(const ListedMember& member, const Row& row) {
    EXPECT_STREQ(member.info.fileName, row.name);
    EXPECT_EQ(member.info.originalSize, row.originalSize) << row.name;
    EXPECT_EQ(member.info.compressedSize, row.compressedSize) << row.name;
    EXPECT_EQ(member.info.crc, row.crc) << row.name;
    EXPECT_EQ(member.info.ratio, row.ratio) << row.name;
    EXPECT_EQ(member.info.flag, 0U) << row.name;
    EXPECT_EQ(member.info.osType, 2U) << row.name;
    EXPECT_STREQ(member.info.attribute, row.attribute) << row.name;
    EXPECT_STREQ(member.info.mode, row.mode) << row.name;
    EXPECT_EQ(member.attribute, row.attributes) << row.name;
}

void expectRows(const LoadedLibrary& library, const char* archive, const std::vector<Row>& rows) {
    std::int32_t ended = 0;
    const std::vector<ListedMember> members = list(library, sample(archive), ended);
    EXPECT_EQ(ended, -1) << archive;
    ASSERT_EQ(members.size(), rows.size()) << archive;
    for (std::size_t index = 0; index < rows.size(); ++index) {
        expectRow(members[index], rows[index]);
    }
    EXPECT_EQ(library.call<fn::GetFileCount>("GetFileCount", sample(archive).c_str()),
              static_cast<std::int32_t>(rows.size()));
}

class ZipListing : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(library.loaded()); }
    LoadedLibrary library{"UnZip32", "UnZip"};
};

class TarListing : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(library.loaded()); }
    LoadedLibrary library{"Tar32", "Tar"};
};

TEST_F(ZipListing, TellsEveryMember) {
    expectRows(library, "listing.zip",
               {{"docs/", 0, 0, 0, 0, "d--w", "Stored", 0x10},
                {"docs/empty/", 0, 0, 0, 0, "d--w", "Stored", 0x10},
                {"docs/a.txt", 5, 5, 0x3610A686, 1000, "----", "Stored", 0x01},
                {"b.txt", 1000, 21, 0x7C858FF1, 21, "---w", "Deflate", 0x00}});
}

TEST_F(ZipListing, TellsDatesAsTheyAreStored) {
    std::int32_t ended = 0;
    for (const ListedMember& member : list(library, sample("listing.zip"), ended)) {
        EXPECT_EQ(member.info.date, 0x2AB1);  // 2001-05-17
        EXPECT_EQ(member.info.time, 0x8BDD);  // 17:30:58
    }
    EXPECT_EQ(ended, -1);
}

TEST_F(ZipListing, TellsUtcWhereItIsStored) {
    std::int32_t ended = 0;
    const std::vector<ListedMember> members = list(library, sample("times.zip"), ended);
    ASSERT_EQ(members.size(), 1U);
    EXPECT_EQ(members[0].writeTime, kWritten);
}

TEST_F(ZipListing, TellsEncryptedMembers) {
    std::int32_t ended = 0;
    const std::vector<ListedMember> members = list(library, sample("encrypted.zip"), ended);
    ASSERT_EQ(members.size(), 1U);
    EXPECT_STREQ(members[0].info.fileName, "b.txt");
    EXPECT_EQ(members[0].info.originalSize, 1000U);
}

TEST_F(ZipListing, TellsASelfExtractor) {
    const auto sfxOf = [this](const char* name) {
        const ArchiveHandle handle = library.call<fn::OpenArchive>("OpenArchive", nullptr, sample(name).c_str(), 0U);
        const std::int32_t answer = library.call<fn::GetHandleInt>("IsSFXFile", handle);
        library.call<fn::CloseArchive>("CloseArchive", handle);
        return answer;
    };
    EXPECT_EQ(sfxOf("sfx.zip"), 1);
    EXPECT_EQ(sfxOf("listing.zip"), 0);
    std::int32_t ended = 0;
    EXPECT_EQ(list(library, sample("sfx.zip"), ended).size(), 1U);
}

TEST_F(ZipListing, TellsAnEmptyArchive) {
    std::int32_t ended = 0;
    EXPECT_TRUE(list(library, sample("empty.zip"), ended).empty());
    EXPECT_EQ(ended, -1);
    EXPECT_EQ(library.call<fn::GetFileCount>("GetFileCount", sample("empty.zip").c_str()), 0);
}

TEST_F(ZipListing, TellsEveryNameInUnicodeMode) {
    library.call<fn::SetBool>("SetUnicodeMode", 1);
    std::int32_t ended = 0;
    const std::vector<ListedMember> members = list(library, sample("names.zip"), ended);
    ASSERT_EQ(members.size(), 6U);
    EXPECT_STREQ(members[0].info.fileName, "\xE8\xA1\xA8/\xE3\x82\xBD\xE8\x83\xBD.txt");
    EXPECT_STREQ(members[1].info.fileName, "\xC3\x84pfel.txt");
    EXPECT_STREQ(members[2].info.fileName, "\xED\x95\x9C\xEA\xB8\x80.txt");
    EXPECT_STREQ(members[3].info.fileName, "\xF0\x9F\x98\x80.txt");
    EXPECT_STREQ(members[4].info.fileName,
                 "a\xC2\xA5"
                 "b\xE2\x88\x95"
                 "c\xEF\xBC\xBC"
                 "d\xE2\x81\x84"
                 "e.txt");
    EXPECT_STREQ(members[5].info.fileName, "\xEF\xBD\xB1.txt");
}

TEST_F(ZipListing, TellsTheArchiveItself) {
    const std::string file = sample("listing.zip");
    const ArchiveHandle handle = library.call<fn::OpenArchive>("OpenArchive", nullptr, file.c_str(), 0U);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(library.call<fn::GetHandleDword>("GetArcFileSize", handle), 414U);
    EXPECT_EQ(library.call<fn::GetHandleDword>("GetArcOriginalSize", handle), 0xFFFFFFFFU);
    ASSERT_EQ(library.call<fn::FindFirst>("FindFirst", handle, "*.*", nullptr), 0);
    while (library.call<fn::FindNext>("FindNext", handle, nullptr) == 0) {
    }
    EXPECT_EQ(library.call<fn::GetHandleDword>("GetArcOriginalSize", handle), 1005U);
    EXPECT_EQ(library.call<fn::GetHandleDword>("GetArcCompressedSize", handle), 26U);
    EXPECT_EQ(library.call<fn::GetHandleWord>("GetArcRatio", handle), 25);
    char name[1024];
    EXPECT_EQ(library.call<fn::GetText>("GetArcFileName", handle, name, 1024), 0);
    EXPECT_EQ(name, file);
    EXPECT_EQ(library.call<fn::CloseArchive>("CloseArchive", handle), 0);
}

TEST_F(ZipListing, SelectsByPattern) {
    const ArchiveHandle handle =
        library.call<fn::OpenArchive>("OpenArchive", nullptr, sample("listing.zip").c_str(), 0U);
    ASSERT_NE(handle, nullptr);
    IndividualInfo info{};
    EXPECT_EQ(library.call<fn::FindFirst>("FindFirst", handle, "A.TXT", &info), 0);
    EXPECT_STREQ(info.fileName, "docs/a.txt");
    EXPECT_EQ(library.call<fn::FindNext>("FindNext", handle, &info), -1);
    EXPECT_EQ(library.call<fn::FindFirst>("FindFirst", handle, "none.txt \"b.*\"", &info), 0)
        << "again, from the start";
    EXPECT_STREQ(info.fileName, "b.txt");
    EXPECT_EQ(library.call<fn::CloseArchive>("CloseArchive", handle), 0);
}

TEST_F(TarListing, TellsEveryMember) {
    const struct {
        const char* archive;
        const char* mode;
    } forms[] = {
        {"listing.tar", "-tar-"}, {"listing.tgz", "-tgz-"}, {"listing.tar.Z", "-taz-"}, {"listing.tar.bz2", "-tbz-"}};
    for (const auto& form : forms) {
        expectRows(library, form.archive,
                   {{"docs/", 0, 0, 0, 0, "----", form.mode, 0x10},
                    {"docs/empty/", 0, 0, 0, 0, "----", form.mode, 0x10},
                    {"docs/a.txt", 5, 5, 0, 1000, "---R", form.mode, 0x01},
                    {"b.txt", 1000, 1000, 0, 1000, "----", form.mode, 0x00}});
        std::int32_t ended = 0;
        for (const ListedMember& member : list(library, sample(form.archive), ended)) {
            EXPECT_EQ(member.writeTime, kWritten) << form.archive;
        }
    }
}

TEST_F(TarListing, TellsASingleCompressedFileAsOneMember) {
    const struct {
        const char* archive;
        const char* mode;
        std::uint32_t packed;
    } forms[] = {{"single.gz", "- gz-", 45}, {"b.txt.bz2", "-bz2-", 58}, {"b.txt.Z", "-  z-", 158}};
    for (const auto& form : forms) {
        std::int32_t ended = 0;
        const std::vector<ListedMember> members = list(library, sample(form.archive), ended);
        EXPECT_EQ(ended, -1) << form.archive;
        ASSERT_EQ(members.size(), 1U) << form.archive;
        EXPECT_STREQ(members[0].info.fileName, "b.txt") << form.archive;
        EXPECT_STREQ(members[0].info.mode, form.mode) << form.archive;
        EXPECT_EQ(members[0].info.compressedSize, form.packed) << form.archive;
    }
}

TEST(RarListing, TellsEveryMember) {
    const LoadedLibrary library("UnRar32", "Unrar");
    ASSERT_TRUE(library.loaded());
    expectRows(library, "../rar/rar.rar",
               {{"test.txt", 20, 20, 0xBEC8A242, 1000, "---w", "storing", 0x00},
                {"testlink", 8, 8, 0xB6C9447B, 1000, "---w", "storing", 0x00},
                {"testdir\\test.txt", 20, 20, 0xBEC8A242, 1000, "---w", "storing", 0x00},
                {"testdir\\", 0, 0, 0, 0, "d--w", "storing", 0x10},
                {"testemptydir\\", 0, 0, 0, 0, "d--w", "storing", 0x10}});
    expectRows(library, "../rar/rar5_compressed.rar", {{"test.bin", 1200, 361, 0x7CCA70CD, 300, "---w", "best", 0x00}});
}

TEST(RarListing, PartsFoldersByBackslashes) {
    const LoadedLibrary library("UnRar32", "Unrar");
    ASSERT_TRUE(library.loaded());
    std::int32_t ended = 0;
    const std::vector<ListedMember> members = list(library, sample("../rar/rar5_symlink.rar"), ended);
    ASSERT_EQ(members.size(), 4U);
    EXPECT_STREQ(members[3].info.fileName, "dir\\") << "stored with the other one";
}

TEST(RarListing, TellsEveryNameInUnicodeMode) {
    const LoadedLibrary library("UnRar32", "Unrar");
    ASSERT_TRUE(library.loaded());
    library.call<fn::SetBool>("SetUnicodeMode", 1);
    std::int32_t ended = 0;
    const std::vector<ListedMember> members = list(library, sample("../rar/rar_unicode.rar"), ended);
    ASSERT_EQ(members.size(), 6U);
    EXPECT_STREQ(members[5].info.fileName, "abcdefghijklmnopqrs\xE3\x83\x86\xE3\x82\xB9\xE3\x83\x88.txt");
}

TEST(ArjListing, TellsEveryMember) {
    const LoadedLibrary library("UnArj32j", "Unarj");
    ASSERT_TRUE(library.loaded());
    std::int32_t ended = 0;
    const std::vector<ListedMember> members = list(library, sample("../arj/methods.arj"), ended);
    EXPECT_EQ(ended, -1);
    ASSERT_EQ(members.size(), 7U);
    EXPECT_STREQ(members[1].info.fileName, "method2\\main.c");
    EXPECT_EQ(members[1].info.originalSize, 1160U);
    EXPECT_EQ(members[1].info.compressedSize, 47U);
    EXPECT_EQ(members[1].info.crc, 0xC28ACD00U);
    EXPECT_EQ(members[1].info.ratio, 40);
    EXPECT_STREQ(members[1].info.mode, "Method2");
    EXPECT_STREQ(members[1].info.attribute, "---w");
    EXPECT_EQ(members[1].writeTime, kWritten);
}

TEST(LzhListing, TellsEveryMember) {
    const LoadedLibrary library("UnLha32", "Unlha");
    ASSERT_TRUE(library.loaded());
    expectRows(library, "../lzh/unix-folders-level1.lzh",
               {{"subdir/", 0, 0, 0, 0, "d--w", "-lhd-", 0x10},
                {"subdir/subdir2/", 0, 0, 0, 0, "d---", "-lhd-", 0x11},
                {"subdir/subdir2/hello.txt", 12, 12, 0x9778, 1000, "---w", "-lh0-", 0x00}});
    expectRows(library, "../lzh/lh6-level2.lzh", {{"gpl-2", 18092, 6832, 0xA33A, 377, "----", "-lh6-", 0x01}});
}

TEST(CabListing, TellsEveryMember) {
    const LoadedLibrary library("Cab32", "Cab");
    ASSERT_TRUE(library.loaded());
    std::int32_t ended = 0;
    const std::vector<ListedMember> members = list(library, sample("../cab/mszip_lzx_qtm.cab"), ended);
    EXPECT_EQ(ended, -1);
    ASSERT_EQ(members.size(), 3U);
    EXPECT_STREQ(members[0].info.mode, "MSZIP");
    EXPECT_STREQ(members[1].info.fileName, "lzx.txt");
    EXPECT_EQ(members[1].info.originalSize, 187U);
    EXPECT_EQ(members[1].info.compressedSize, 114U);
    EXPECT_EQ(members[1].info.crc, 0U);
    EXPECT_EQ(members[1].info.ratio, 609);
    EXPECT_EQ(members[1].info.date, 17 << 9 | 3 << 5 | 12);
    EXPECT_STREQ(members[1].info.attribute, "a--w");
    EXPECT_EQ(members[1].attribute, 0x20);
    EXPECT_STREQ(members[1].info.mode, "LZX");
    EXPECT_STREQ(members[2].info.mode, "Quantum") << "fills its field to the last byte";
}

TEST_F(TarListing, TellsTheKindOfAFile) {
    const struct {
        const char* archive;
        std::int32_t kind;
    } kinds[] = {{"listing.tar", 1}, {"listing.tgz", 2},     {"listing.tar.Z", 3}, {"single.gz", 4},
                 {"b.txt.Z", 5},     {"listing.tar.bz2", 6}, {"b.txt.bz2", 7},     {"listing.zip", 0}};
    for (const auto& each : kinds) {
        EXPECT_EQ(library.call<fn::GetFileCount>("GetArchiveType", sample(each.archive).c_str()), each.kind)
            << each.archive;
    }
}

}  // namespace
}  // namespace archiver
