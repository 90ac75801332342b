#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

#include "convention/fake_library.h"

namespace archiver {
namespace {

using testing::FakeArchive;
using testing::FakeDisk;
using testing::file;

class LibraryWalk : public testing::LibraryTest {
protected:
    /// The names that a whole search gives; `code` is what ended it.
    std::vector<std::string> names(ArchiveHandle handle, const char* patterns) {
        std::vector<std::string> found;
        for (code = library.findFirst(handle, patterns, &info); code == kOk; code = library.findNext(handle, &info)) {
            found.emplace_back(info.fileName);
        }
        return found;
    }
    using Names = std::vector<std::string>;
    std::int32_t code = 0;
};

TEST_F(LibraryWalk, GivesEveryMemberInOrder) {
    const ArchiveHandle handle = open();
    EXPECT_EQ(names(handle, "*.*"), (Names{"docs/", "docs/a.txt", "b.txt"}));
    EXPECT_EQ(code, -1);
    EXPECT_EQ(library.findNext(handle, &info), -1) << "and stays at the end";
    EXPECT_EQ(library.closeArchive(handle), 0);
    EXPECT_EQ(disk.readers, 0);
}

TEST_F(LibraryWalk, TakesNoTextAsEverything) {
    const ArchiveHandle handle = open();
    EXPECT_EQ(names(handle, "").size(), 3U);
    EXPECT_EQ(names(handle, nullptr).size(), 3U);
    EXPECT_EQ(names(handle, "  ").size(), 3U);
}

TEST_F(LibraryWalk, ChoosesByPatterns) {
    const ArchiveHandle handle = open();
    EXPECT_EQ(names(handle, "*.txt"), (Names{"docs/a.txt", "b.txt"}));
    EXPECT_EQ(names(handle, "b.txt \"docs\""), (Names{"docs/", "b.txt"}));
    EXPECT_EQ(names(handle, "DOCS\\A.TXT"), (Names{"docs/a.txt"}));
    EXPECT_EQ(names(handle, "c.txt"), Names{});
    EXPECT_EQ(code, -1);
}

TEST_F(LibraryWalk, StartsAgainWithEverySearch) {
    const ArchiveHandle handle = open();
    EXPECT_EQ(library.findFirst(handle, "*.*", &info), 0);
    EXPECT_EQ(library.findNext(handle, &info), 0);
    EXPECT_EQ(names(handle, "*.*").size(), 3U);
    EXPECT_EQ(names(handle, "docs"), Names{"docs/"}) << "after the end, too";
}

TEST_F(LibraryWalk, TellsThatStartingAgainFailed) {
    const ArchiveHandle handle = open();
    ASSERT_EQ(library.findFirst(handle, "*.*", &info), 0);
    archive.restartCode = kCannotRead;
    EXPECT_EQ(library.findFirst(handle, "*.*", &info), 0x801A);
    EXPECT_EQ(library.findNext(handle, &info), 0x801A);
}

TEST_F(LibraryWalk, ComparesWhatTheModeSays) {
    constexpr std::uint32_t checkAllPath = 0x100;
    constexpr std::uint32_t checkFileNameOnly = 0x200;
    EXPECT_EQ(names(library.openArchive(nullptr, "a.zip", checkAllPath), "a.txt"), Names{});
    EXPECT_EQ(names(library.openArchive(nullptr, "a.zip", checkFileNameOnly), "x/a.txt"), Names{"docs/a.txt"});
    EXPECT_EQ(names(library.openArchive(nullptr, "a.zip", 0), "a.txt"), Names{"docs/a.txt"});
}

TEST_F(LibraryWalk, NeedsNoRecord) {
    const ArchiveHandle handle = open();
    EXPECT_EQ(library.findFirst(handle, "*.*", nullptr), 0);
    EXPECT_EQ(library.findNext(handle, nullptr), 0);
    char name[64];
    EXPECT_EQ(library.fileName(handle, name, sizeof name), 0);
    EXPECT_STREQ(name, "docs/a.txt");
    EXPECT_EQ(library.findNext(handle, nullptr), 0);
    EXPECT_EQ(library.findNext(handle, nullptr), -1);
}

TEST_F(LibraryWalk, WritesNothingBehindTheRecord) {
    archive.members = {file(std::string(2000, 'n'))};
    std::vector<char> memory(558 + 64, '\x5A');
    const ArchiveHandle handle = open();
    ASSERT_EQ(library.findFirst(handle, "*.*", reinterpret_cast<IndividualInfo*>(memory.data())), 0);
    EXPECT_EQ(std::string(memory.data() + 558, 64), std::string(64, '\x5A'));
}

TEST_F(LibraryWalk, LeavesTheRecordAloneAtTheEnd) {
    const ArchiveHandle handle = open();
    std::memset(&info, 0x5A, sizeof info);
    EXPECT_EQ(library.findFirst(handle, "nothing", &info), -1);
    const std::string untouched(sizeof info, '\x5A');
    EXPECT_EQ(std::memcmp(&info, untouched.data(), sizeof info), 0);
}

TEST_F(LibraryWalk, GivesTheWholeOfALongNameByItsQuery) {
    const std::string name(40000, 'n');
    archive.members = {file(name)};
    const ArchiveHandle handle = open();
    ASSERT_EQ(library.findFirst(handle, "*.*", &info), 0);
    EXPECT_EQ(std::string(info.fileName), name.substr(0, 512));
    std::string buffer(40001, '#');
    EXPECT_EQ(library.fileName(handle, buffer.data(), 40001), 0);
    EXPECT_EQ(buffer.substr(0, 40000), name);
    EXPECT_EQ(library.fileName(handle, buffer.data(), 40000), 0x8026);
    EXPECT_EQ(std::strlen(buffer.c_str()), 39999U);
}

TEST_F(LibraryWalk, WantsASearchFirst) {
    const ArchiveHandle handle = open();
    EXPECT_EQ(library.findNext(handle, &info), 0x8022);
}

TEST_F(LibraryWalk, RefusesBadHandles) {
    for (const ArchiveHandle bad : badHandles()) {
        EXPECT_EQ(library.findFirst(bad, "*.*", &info), 0x8021);
        EXPECT_EQ(library.findNext(bad, &info), 0x8021);
        EXPECT_EQ(library.closeArchive(bad), 0x8021);
    }
}

TEST_F(LibraryWalk, HandsOnTheErrorThatEndsIt) {
    archive.endCode = kHeaderBroken;
    const ArchiveHandle handle = open();
    EXPECT_EQ(names(handle, "*.*").size(), 3U);
    EXPECT_EQ(code, 0x8017);
    EXPECT_EQ(library.findNext(handle, &info), 0x8017);
}

TEST_F(LibraryWalk, SurvivesTheEndOfMemory) {
    archive.throwOnNext = true;
    const ArchiveHandle handle = open();
    EXPECT_EQ(names(handle, "*.*"), (Names{"docs/", "docs/a.txt"}));
    EXPECT_EQ(code, 0x801E);
    EXPECT_EQ(library.originalSize(handle), 0xFFFFFFFFU) << "no member is current";
    EXPECT_EQ(library.findNext(handle, &info), 0x801E);
}

TEST_F(LibraryWalk, OpensByANameFromTheCurrentFolder) {
    ASSERT_NE(open(), nullptr);
    EXPECT_EQ(disk.lastOpened, std::filesystem::current_path() / "a.zip");
    const std::string full = (std::filesystem::current_path() / "a.zip").string();
    EXPECT_NE(open(full.c_str()), nullptr);
}

TEST_F(LibraryWalk, OpensByANameOfAnyLetters) {
    disk.add("\xE8\xA1\xA8.zip");
    EXPECT_NE(open("\xE8\xA1\xA8.zip"), nullptr);
}

TEST_F(LibraryWalk, OpensNothingElse) {
    disk.add("broken.zip").openCode = kHeaderBroken;
    EXPECT_EQ(open("missing.zip"), nullptr);
    EXPECT_EQ(open("broken.zip"), nullptr);
    EXPECT_EQ(open(""), nullptr);
    EXPECT_EQ(open(nullptr), nullptr);
}

TEST_F(LibraryWalk, KeepsArchivesApart) {
    disk.add("other.zip").members = {file("x"), file("y")};
    const ArchiveHandle first = open();
    const ArchiveHandle second = open("other.zip");
    ASSERT_EQ(library.findFirst(first, "*.*", &info), 0);
    ASSERT_EQ(library.findFirst(second, "*.*", &info), 0);
    EXPECT_STREQ(info.fileName, "x");
    ASSERT_EQ(library.findNext(first, &info), 0);
    EXPECT_STREQ(info.fileName, "docs/a.txt");
    ASSERT_EQ(library.closeArchive(first), 0);
    ASSERT_EQ(library.findNext(second, &info), 0);
    EXPECT_STREQ(info.fileName, "y");
}

TEST_F(LibraryWalk, ServesTwoThreadsWithTwoArchives) {
    archive.members.assign(2000, file("a/name"));
    int counts[2] = {};
    const ArchiveHandle handles[2] = {open(), open()};
    std::vector<std::thread> threads;
    for (int index = 0; index < 2; ++index) {
        threads.emplace_back([this, handle = handles[index], &count = counts[index]] {
            IndividualInfo own;
            for (std::int32_t result = library.findFirst(handle, "*.*", &own); result == kOk;
                 result = library.findNext(handle, &own)) {
                count += std::strcmp(own.fileName, "a/name") == 0 ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(counts[0], 2000);
    EXPECT_EQ(counts[1], 2000);
}

}  // namespace
}  // namespace archiver
