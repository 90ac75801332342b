#include "archivers/packing/archive_replacement.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "formats/support/files.h"
#include "packing/fakes/ending_files.h"

namespace archiver::test {
namespace {

std::vector<std::string> namesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& each : std::filesystem::directory_iterator(folder))
        names.push_back(each.path().filename().string());
    std::ranges::sort(names);
    return names;
}

class ArchiveReplacementTest : public testing::Test {
protected:
    TemporaryFolder folder_;
    std::filesystem::path archive_ = folder_.path() / "a.zip";
    EndingFiles files_;
};

TEST_F(ArchiveReplacementTest, TakesTheNameOnlyOnceItIsWhole) {
    folder_.write("a.zip", "old");
    ArchiveReplacement replacement(files_, archive_);
    ASSERT_EQ(replacement.begin(), kOk);
    ASSERT_EQ(replacement.write(std::string_view("new archive")), kOk);
    EXPECT_EQ(replacement.size(), 11U);
    EXPECT_EQ(readFile(archive_), "old");
    ASSERT_EQ(replacement.commit(), kOk);
    EXPECT_EQ(readFile(archive_), "new archive");
    EXPECT_EQ(namesIn(folder_.path()), std::vector<std::string>{"a.zip"});
}

TEST_F(ArchiveReplacementTest, LeavesNothingBehindWithoutCommit) {
    folder_.write("a.zip", "old");
    {
        ArchiveReplacement replacement(files_, archive_);
        ASSERT_EQ(replacement.begin(), kOk);
        ASSERT_EQ(replacement.write(std::string_view("new")), kOk);
    }
    EXPECT_EQ(readFile(archive_), "old");
    EXPECT_EQ(namesIn(folder_.path()), std::vector<std::string>{"a.zip"});
}

TEST_F(ArchiveReplacementTest, MakesAnArchiveThatWasNotThere) {
    ArchiveReplacement replacement(files_, archive_);
    ASSERT_EQ(replacement.begin(), kOk);
    ASSERT_EQ(replacement.write(std::string_view("first")), kOk);
    ASSERT_EQ(replacement.commit(), kOk);
    EXPECT_EQ(readFile(archive_), "first");
}

TEST_F(ArchiveReplacementTest, PatchesWhatIsWrittenAndWhatStillWaits) {
    for (const std::size_t buffer : {1U, 4U, 100U}) {
        ArchiveReplacement replacement(files_, archive_, buffer);
        ASSERT_EQ(replacement.begin(), kOk);
        ASSERT_EQ(replacement.write(std::string_view("0123456789")), kOk);
        ASSERT_EQ(replacement.patch(2, std::string_view("ABCDEFGH")), kOk);
        ASSERT_EQ(replacement.write(std::string_view("xy")), kOk);
        ASSERT_EQ(replacement.patch(11, std::string_view("z")), kOk);
        ASSERT_EQ(replacement.commit(), kOk);
        EXPECT_EQ(readFile(archive_), "01ABCDEFGHxz") << buffer;
    }
}

TEST_F(ArchiveReplacementTest, GoesBackAndIsNoLongerThanWhatWasWrittenLast) {
    for (const std::size_t buffer : {1U, 4U, 100U}) {
        ArchiveReplacement replacement(files_, archive_, buffer);
        ASSERT_EQ(replacement.begin(), kOk);
        ASSERT_EQ(replacement.write(std::string_view("0123456789")), kOk);
        replacement.rewind(3);
        EXPECT_EQ(replacement.size(), 3U);
        ASSERT_EQ(replacement.write(std::string_view("ab")), kOk);
        ASSERT_EQ(replacement.commit(), kOk);
        EXPECT_EQ(readFile(archive_), "012ab") << buffer;
    }
}

TEST_F(ArchiveReplacementTest, CanBeReadBeforeItTakesTheName) {
    ArchiveReplacement replacement(files_, archive_);
    ASSERT_EQ(replacement.begin(), kOk);
    ASSERT_EQ(replacement.write(std::string_view("to verify")), kOk);
    ASSERT_EQ(replacement.finish(), kOk);
    EXPECT_EQ(readFile(replacement.temporary()), "to verify");
    EXPECT_EQ(replacement.commit(), kOk);
}

TEST_F(ArchiveReplacementTest, RefusesAWriteProtectedArchive) {
    folder_.write("a.zip", "old");
    std::filesystem::permissions(archive_,
                                 std::filesystem::perms::owner_write | std::filesystem::perms::group_write |
                                     std::filesystem::perms::others_write,
                                 std::filesystem::perm_options::remove);
    ArchiveReplacement replacement(files_, archive_);
    EXPECT_EQ(replacement.begin(), kArcReadOnly);
    std::filesystem::permissions(archive_, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
    EXPECT_EQ(readFile(archive_), "old");
}

TEST_F(ArchiveReplacementTest, RefusesAFolderInTheArchivesPlace) {
    std::filesystem::create_directory(archive_);
    ArchiveReplacement replacement(files_, archive_);
    EXPECT_EQ(replacement.begin(), kArcFileOpen);
}

TEST_F(ArchiveReplacementTest, TellsThatThereIsNoFolder) {
    ArchiveReplacement replacement(files_, folder_.path() / "no" / "a.zip");
    EXPECT_EQ(replacement.begin(), kTmpOpen);
}

TEST_F(ArchiveReplacementTest, TellsOfAFullDiskAndKeepsTheOldArchive) {
    folder_.write("a.zip", "old");
    {
        ArchiveReplacement replacement(files_, archive_, 4);
        ASSERT_EQ(replacement.begin(), kOk);
        files_.failWrites(kDiskSpace);
        EXPECT_EQ(replacement.write(std::string_view("0123456789")), kDiskSpace);
        files_.failWrites(kOk);
        EXPECT_EQ(replacement.write(std::string_view("0123456789")), kDiskSpace) << "a gap would be in it";
        EXPECT_EQ(replacement.commit(), kDiskSpace);
    }
    EXPECT_EQ(readFile(archive_), "old");
    EXPECT_EQ(namesIn(folder_.path()), std::vector<std::string>{"a.zip"});
}

TEST_F(ArchiveReplacementTest, RemovesTheArchiveInWhichNothingIsLeft) {
    folder_.write("a.zip", "old");
    ArchiveReplacement replacement(files_, archive_);
    ASSERT_EQ(replacement.begin(), kOk);
    EXPECT_EQ(replacement.commitRemoval(), kOk);
    EXPECT_EQ(namesIn(folder_.path()), std::vector<std::string>{});
}

TEST_F(ArchiveReplacementTest, LeavesTheOldOrTheNewArchiveWhereverTheProcessEnds) {
    std::string whole;
    for (int line = 0; line < 100; ++line) whole += "line " + std::to_string(line) + "\n";
    long point = 0;
    for (;; ++point) {
        folder_.write("a.zip", "old archive");
        EndingFiles files(point);
        {
            ArchiveReplacement replacement(files, archive_, 16);
            static_cast<void>(replacement.begin());
            if (!files.ended()) {
                for (std::size_t at = 0; at < whole.size(); at += 10) {
                    static_cast<void>(replacement.write(std::string_view(whole).substr(at, 10)));
                }
                static_cast<void>(replacement.patch(5, std::string_view("X")));
                static_cast<void>(replacement.commit());
            }
        }
        const std::string found = readFile(archive_);
        std::string changed = whole;
        changed[5] = 'X';
        ASSERT_TRUE(found == "old archive" || found == changed) << "after " << point << " steps";
        for (const std::string& name : namesIn(folder_.path())) {
            if (name != "a.zip") std::filesystem::remove(folder_.path() / name);
        }
        if (!files.ended()) {
            EXPECT_EQ(found, changed);
            break;
        }
    }
    EXPECT_GT(point, 50) << "each write is a point";
}

}  // namespace
}  // namespace archiver::test
