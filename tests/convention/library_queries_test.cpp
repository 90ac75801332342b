#include <gtest/gtest.h>

#include <cstring>
#include <fstream>

#include "archivers/convention/system.h"
#include "convention/fake_library.h"

namespace archiver {
namespace {

using testing::file;

class LibraryQueries : public testing::LibraryTest {
protected:
    /// Every query of the current member gives its error.
    void expectNoMember(ArchiveHandle handle, std::int32_t code) {
        char text[16] = "unchanged";
        EXPECT_EQ(library.fileName(handle, text, sizeof text), code);
        EXPECT_EQ(library.method(handle, text, sizeof text), code);
        EXPECT_STREQ(text, "unchanged");
        EXPECT_EQ(library.originalSize(handle), 0xFFFFFFFFU);
        EXPECT_EQ(library.compressedSize(handle), 0xFFFFFFFFU);
        EXPECT_EQ(library.ratio(handle), 0xFFFF);
        EXPECT_EQ(library.date(handle), 0xFFFF);
        EXPECT_EQ(library.time(handle), 0xFFFF);
        EXPECT_EQ(library.crc(handle), 0xFFFFFFFFU);
        EXPECT_EQ(library.attribute(handle), -1);
        EXPECT_EQ(library.osType(handle), 0xFFFFFFFFU);
        EXPECT_EQ(library.writeTime(handle), 0xFFFFFFFFU);
        EXPECT_EQ(library.createTime(handle), 0xFFFFFFFFU);
        EXPECT_EQ(library.accessTime(handle), 0xFFFFFFFFU);
        std::int64_t size = 42;
        EXPECT_EQ(library.originalSizeEx(handle, &size), 0);
        EXPECT_EQ(library.compressedSizeEx(handle, &size), 0);
        EXPECT_EQ(size, 42);
        FileTime time{1, 2};
        EXPECT_EQ(library.writeTimeEx(handle, &time), 0);
        EXPECT_EQ(library.createTimeEx(handle, &time), 0);
        EXPECT_EQ(library.accessTimeEx(handle, &time), 0);
        EXPECT_EQ(time.low, 1U);
        EXPECT_EQ(time.high, 2U);
    }
    void expectNoTotals(ArchiveHandle handle) {
        std::int64_t size = 42;
        EXPECT_EQ(library.arcOriginalSize(handle), 0xFFFFFFFFU);
        EXPECT_EQ(library.arcCompressedSize(handle), 0xFFFFFFFFU);
        EXPECT_EQ(library.arcOriginalSizeEx(handle, &size), 0);
        EXPECT_EQ(library.arcCompressedSizeEx(handle, &size), 0);
        EXPECT_EQ(library.arcRatio(handle), 0xFFFF);
        EXPECT_EQ(size, 42);
    }
    static std::uint64_t joined(const FileTime& time) { return std::uint64_t{time.high} << 32 | time.low; }
};

TEST_F(LibraryQueries, TellTheCurrentMember) {
    archive.members[1].member.written = Moment{990120658, 500000000};
    archive.members[1].member.created = Moment{1, 0};
    archive.members[1].member.accessed = Moment{2, 0};
    const ArchiveHandle handle = open();
    ASSERT_EQ(library.findFirst(handle, "a.txt", nullptr), 0);
    char text[64];
    EXPECT_EQ(library.fileName(handle, text, sizeof text), 0);
    EXPECT_STREQ(text, "docs/a.txt");
    EXPECT_EQ(library.method(handle, text, sizeof text), 0);
    EXPECT_STREQ(text, "Deflate");
    EXPECT_EQ(library.originalSize(handle), 1000U);
    EXPECT_EQ(library.compressedSize(handle), 250U);
    EXPECT_EQ(library.ratio(handle), 250);
    EXPECT_EQ(library.date(handle), 0x2AB1);
    EXPECT_EQ(library.time(handle), 0x8BDD);
    EXPECT_EQ(library.crc(handle), 0x1A2B3C4DU);
    EXPECT_EQ(library.attribute(handle), 0x20);
    EXPECT_EQ(library.osType(handle), 2U);
    EXPECT_EQ(library.writeTime(handle), 990120658U);
    EXPECT_EQ(library.createTime(handle), 1U);
    EXPECT_EQ(library.accessTime(handle), 2U);
    std::int64_t size = 0;
    EXPECT_EQ(library.originalSizeEx(handle, &size), 1);
    EXPECT_EQ(size, 1000);
    EXPECT_EQ(library.compressedSizeEx(handle, &size), 1);
    EXPECT_EQ(size, 250);
    FileTime time{};
    EXPECT_EQ(library.writeTimeEx(handle, &time), 1);
    EXPECT_EQ(joined(time), 126345942585000000U);
    EXPECT_EQ(library.createTimeEx(handle, &time), 1);
    EXPECT_EQ(joined(time), 116444736010000000U);
    EXPECT_EQ(library.accessTimeEx(handle, &time), 1);
    EXPECT_EQ(joined(time), 116444736020000000U);
}

TEST_F(LibraryQueries, KnowNoMemberBeforeASearch) {
    const ArchiveHandle handle = open();
    expectNoMember(handle, 0x8022);
    expectNoTotals(handle);
}

TEST_F(LibraryQueries, KnowNoMemberBehindTheLast) {
    const ArchiveHandle handle = open();
    ASSERT_EQ(library.findFirst(handle, "nothing", nullptr), -1);
    expectNoMember(handle, 0x8022);
}

TEST_F(LibraryQueries, RefuseBadHandles) {
    for (const ArchiveHandle bad : badHandles()) {
        expectNoMember(bad, 0x8021);
        expectNoTotals(bad);
        char text[8] = "as is";
        std::int64_t size = 42;
        EXPECT_EQ(library.arcFileName(bad, text, sizeof text), 0x8021);
        EXPECT_STREQ(text, "as is");
        EXPECT_EQ(library.arcFileSize(bad), 0xFFFFFFFFU);
        EXPECT_EQ(library.arcFileSizeEx(bad, &size), 0);
        EXPECT_EQ(size, 42);
        EXPECT_EQ(library.arcDate(bad), 0xFFFF);
        EXPECT_EQ(library.arcTime(bad), 0xFFFF);
        EXPECT_EQ(library.arcOsType(bad), 0xFFFFFFFFU);
        EXPECT_EQ(library.isSfxFile(bad), -1);
    }
}

TEST_F(LibraryQueries, RefuseToWriteNowhere) {
    const ArchiveHandle handle = open();
    ASSERT_EQ(library.findFirst(handle, "a.txt", nullptr), 0);
    char text[4] = "abc";
    for (const std::int32_t size : {0, -1, INT32_MIN}) {
        EXPECT_EQ(library.fileName(handle, text, size), 0x8026);
        EXPECT_EQ(library.method(handle, text, size), 0x8026);
        EXPECT_EQ(library.arcFileName(handle, text, size), 0x8026);
    }
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(library.fileName(handle, nullptr, 100), 0x8026);
    EXPECT_EQ(library.method(handle, nullptr, 100), 0x8026);
    EXPECT_EQ(library.arcFileName(handle, nullptr, 100), 0x8026);
    EXPECT_EQ(library.originalSizeEx(handle, nullptr), 0);
    EXPECT_EQ(library.compressedSizeEx(handle, nullptr), 0);
    EXPECT_EQ(library.arcFileSizeEx(handle, nullptr), 0);
    EXPECT_EQ(library.arcOriginalSizeEx(handle, nullptr), 0);
    EXPECT_EQ(library.arcCompressedSizeEx(handle, nullptr), 0);
    EXPECT_EQ(library.writeTimeEx(handle, nullptr), 0);
    EXPECT_EQ(library.createTimeEx(handle, nullptr), 0);
    EXPECT_EQ(library.accessTimeEx(handle, nullptr), 0);
}

TEST_F(LibraryQueries, CutATextToItsBuffer) {
    const ArchiveHandle handle = open();
    ASSERT_EQ(library.findFirst(handle, "a.txt", nullptr), 0);
    char text[8] = "#######";
    EXPECT_EQ(library.fileName(handle, text, 5), 0x8026);
    EXPECT_EQ(std::string(text, sizeof text), std::string("docs\0##\0", 8));
    EXPECT_EQ(library.method(handle, text, 1), 0x8026);
    EXPECT_STREQ(text, "");
}

TEST_F(LibraryQueries, AddUpWhatWasFound) {
    archive.members[2].member.originalSize = 500;
    const ArchiveHandle handle = open();
    ASSERT_EQ(library.findFirst(handle, "*.txt", nullptr), 0);
    EXPECT_EQ(library.arcOriginalSize(handle), 1000U);
    EXPECT_EQ(library.arcCompressedSize(handle), 250U);
    EXPECT_EQ(library.arcRatio(handle), 250);
    ASSERT_EQ(library.findNext(handle, nullptr), 0);
    ASSERT_EQ(library.findNext(handle, nullptr), -1);
    EXPECT_EQ(library.arcOriginalSize(handle), 1500U);
    EXPECT_EQ(library.arcCompressedSize(handle), 500U);
    EXPECT_EQ(library.arcRatio(handle), 333);
    std::int64_t size = 0;
    EXPECT_EQ(library.arcOriginalSizeEx(handle, &size), 1);
    EXPECT_EQ(size, 1500);
    EXPECT_EQ(library.arcCompressedSizeEx(handle, &size), 1);
    EXPECT_EQ(size, 500);
    ASSERT_EQ(library.findFirst(handle, "nothing", nullptr), -1);
    EXPECT_EQ(library.arcOriginalSize(handle), 0U) << "a new search starts at nothing";
}

TEST_F(LibraryQueries, TellLargeSizesIn64Bits) {
    archive.members[0].member.originalSize = 0x123456789AB;
    archive.members[0].member.packedSize = UINT64_MAX;
    archive.members[1].member.originalSize = UINT64_MAX;
    archive.facts.fileSize = 0x1000000001;
    const ArchiveHandle handle = open();
    ASSERT_EQ(library.findFirst(handle, "*.*", nullptr), 0);
    std::int64_t size = 0;
    EXPECT_EQ(library.originalSize(handle), 0xFFFFFFFFU);
    EXPECT_EQ(library.originalSizeEx(handle, &size), 1);
    EXPECT_EQ(size, 0x123456789AB);
    EXPECT_EQ(library.compressedSizeEx(handle, &size), 1);
    EXPECT_EQ(size, INT64_MAX) << "a claim beyond what the caller's type holds";
    EXPECT_EQ(library.arcFileSize(handle), 0xFFFFFFFFU);
    EXPECT_EQ(library.arcFileSizeEx(handle, &size), 1);
    EXPECT_EQ(size, 0x1000000001);
    ASSERT_EQ(library.findNext(handle, nullptr), 0);
    EXPECT_EQ(library.arcOriginalSize(handle), 0xFFFFFFFFU);
    EXPECT_EQ(library.arcOriginalSizeEx(handle, &size), 1);
    EXPECT_EQ(size, INT64_MAX) << "sums do not wrap";
}

TEST_F(LibraryQueries, KnowTheArchiveItself) {
    archive.facts = {.fileSize = 4711, .osType = os_type::kMacOs, .archiveType = 2, .selfExtracting = true};
    const ArchiveHandle handle = open();
    EXPECT_EQ(library.arcFileSize(handle), 4711U);
    EXPECT_EQ(library.arcOsType(handle), 4U);
    EXPECT_EQ(library.isSfxFile(handle), 1);
    archive.facts.selfExtracting = false;
    EXPECT_EQ(library.isSfxFile(handle), 0);
    EXPECT_EQ(library.archiveType("a.zip"), 2);
}

TEST_F(LibraryQueries, TellTheFullNameOfTheArchive) {
    const ArchiveHandle handle = open();
    const std::u8string full = (std::filesystem::current_path() / "a.zip").u8string();
    std::string buffer(full.size() + 1, '#');
    EXPECT_EQ(library.arcFileName(handle, buffer.data(), static_cast<std::int32_t>(buffer.size())), 0);
    EXPECT_EQ(buffer, std::string(full.begin(), full.end()) + '\0');
    EXPECT_EQ(library.arcFileName(handle, buffer.data(), static_cast<std::int32_t>(full.size())), 0x8026);
}

TEST_F(LibraryQueries, TellWhenTheArchiveWasChanged) {
    const std::filesystem::path name = std::filesystem::temp_directory_path() / "tovarex-changed.zip";
    std::ofstream(name) << "x";
    const std::optional<Moment> changed = lastWriteTime(name);
    ASSERT_TRUE(changed.has_value());
    archive.members.clear();
    disk.add(name.string());
    const ArchiveHandle handle = open(name.string().c_str());
    ASSERT_NE(handle, nullptr);
    const auto date = library.arcDate(handle);
    const auto time = library.arcTime(handle);
    std::filesystem::remove(name);
    const std::optional<Moment> told = utcOfLocal({date, time});
    ASSERT_TRUE(told.has_value());
    EXPECT_EQ(told->seconds, changed->seconds / 2 * 2);
    EXPECT_EQ(library.arcDate(handle), 0xFFFF) << "the file is gone";
    EXPECT_EQ(library.arcTime(handle), 0xFFFF);
}

TEST_F(LibraryQueries, TellTimesThatAreMissing) {
    archive.members[0].member.dosDate = 0;
    const ArchiveHandle handle = open();
    ASSERT_EQ(library.findFirst(handle, "*.*", nullptr), 0);
    FileTime time{1, 2};
    EXPECT_EQ(library.writeTime(handle), 0xFFFFFFFFU) << "no date";
    EXPECT_EQ(library.writeTimeEx(handle, &time), 0);
    EXPECT_EQ(library.createTime(handle), 0xFFFFFFFFU);
    EXPECT_EQ(library.createTimeEx(handle, &time), 0);
    EXPECT_EQ(library.accessTime(handle), 0xFFFFFFFFU);
    EXPECT_EQ(library.accessTimeEx(handle, &time), 0);
    EXPECT_EQ(time.low, 1U);
}

TEST_F(LibraryQueries, TurnLocalTimesIntoUtc) {
    const ArchiveHandle handle = open();
    ASSERT_EQ(library.findFirst(handle, "a.txt", nullptr), 0);
    const std::optional<Moment> expected = utcOfLocal({0x2AB1, 0x8BDD});
    ASSERT_TRUE(expected.has_value());
    EXPECT_EQ(library.writeTime(handle), expected->seconds);
}

TEST_F(LibraryQueries, TellTimesThatDoNotFit) {
    archive.members[0].member.written = Moment{INT64_MAX, 0};
    archive.members[0].member.created = Moment{-1, 0};
    const ArchiveHandle handle = open();
    ASSERT_EQ(library.findFirst(handle, "*.*", nullptr), 0);
    FileTime time{};
    EXPECT_EQ(library.writeTime(handle), 0xFFFFFFFEU);
    EXPECT_EQ(library.writeTimeEx(handle, &time), 0);
    EXPECT_EQ(library.createTime(handle), 0U);
    EXPECT_EQ(library.createTimeEx(handle, &time), 1);
    EXPECT_EQ(joined(time), 116444735990000000U);
}

TEST_F(LibraryQueries, CountMembers) {
    EXPECT_EQ(library.fileCount("a.zip"), 3);
    disk.add("empty.zip");
    EXPECT_EQ(library.fileCount("empty.zip"), 0);
    EXPECT_EQ(library.fileCount("missing.zip"), -1);
    EXPECT_EQ(library.fileCount(""), -1);
    EXPECT_EQ(library.fileCount(nullptr), -1);
    archive.endCode = kHeaderBroken;
    EXPECT_EQ(library.fileCount("a.zip"), -1);
    archive.throwOnNext = true;
    EXPECT_EQ(library.fileCount("a.zip"), -1);
    EXPECT_EQ(disk.readers, 0);
}

TEST_F(LibraryQueries, TellTheKindOfAFile) {
    disk.add("other.txt").openCode = kFileStyle;
    disk.add("broken.tar").openCode = kHeaderBroken;
    EXPECT_EQ(library.archiveType("other.txt"), 0);
    EXPECT_EQ(library.archiveType("broken.tar"), -1);
    EXPECT_EQ(library.archiveType("missing.tar"), -1);
    EXPECT_EQ(library.archiveType(nullptr), -1);
}

}  // namespace
}  // namespace archiver
