#include "browser/member_search.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "drivers/entry_table.h"

namespace tovar::test {
namespace {

using Texts = std::vector<std::wstring>;
using Direction = MemberSearch::Direction;
using Outcome = MemberSearch::Outcome;

constexpr std::uint64_t kEnough = 1'000'000'000;

class MemberSearchTest : public testing::Test {
protected:
    void list(const Texts& storedNames) {
        entries_.clear();
        for (const std::wstring& name : storedNames) entries_.add({}, name, {}, {});
        folders_.build(L"a.zip", entries_);
    }
    [[nodiscard]] Folder folder(std::wstring_view key) const { return folders_.find(key).value(); }

    /// The item's name with the key of its folder before it.
    [[nodiscard]] std::wstring written(MemberPlace place) const {
        const auto inside = folders_.children(place.folder);
        const bool isFolder = place.item < inside.size();
        return folders_.key(place.folder) +
               std::wstring(isFolder ? folders_.text(inside[place.item])
                                     : entries_.name(folders_.files(place.folder)[place.item - inside.size()]));
    }
    /// Everything that fits, in the order in which it is found, until the same is found again.
    Texts all(std::wstring_view text, MemberPlace start = {}, Direction direction = Direction::Forward) {
        Texts found;
        std::optional<MemberPlace> first;
        for (MemberPlace gap = start;;) {
            search_.begin(text, gap, direction);
            if (search_.step(kEnough) != Outcome::Found || search_.found() == first) return found;
            if (!first) first = search_.found();
            gap = search_.found();
            found.push_back(written(gap));
            if (direction == Direction::Forward) ++gap.item;
        }
    }

    EntryTable entries_;
    FolderModel folders_;
    MemberSearch search_{folders_, entries_};
};

TEST_F(MemberSearchTest, GoesThroughAFolderAndThenThroughThoseInside) {
    list({L"x1", L"b/x2", L"b/c/x3", L"x4", L"a/x5", L"b/x6", L"b/xd/"});
    EXPECT_EQ(all(L"x"), (Texts{L"\\x1", L"\\x4", L"\\b\\xd", L"\\b\\x2", L"\\b\\x6", L"\\b\\c\\x3", L"\\a\\x5"}));
}

TEST_F(MemberSearchTest, FindsFoldersBeforeFiles) {
    list({L"match.txt", L"match/other", L"match/match/z"});
    EXPECT_EQ(all(L"match"), (Texts{L"\\match", L"\\match.txt", L"\\match\\match"}));
}

TEST_F(MemberSearchTest, FindsFoldersThatAreOnlyPartsOfPaths) {
    list({L"one/two/three/file"});
    EXPECT_EQ(all(L"t"), (Texts{L"\\one\\two", L"\\one\\two\\three"}));
}

TEST_F(MemberSearchTest, GoesBackward) {
    list({L"x1", L"b/x2", L"b/c/x3", L"x4", L"a/x5"});
    EXPECT_EQ(all(L"x", {}, Direction::Backward), (Texts{L"\\a\\x5", L"\\b\\c\\x3", L"\\b\\x2", L"\\x4", L"\\x1"}));
}

TEST_F(MemberSearchTest, BeginsInTheMiddleAndGoesRound) {
    list({L"x1", L"b/x2", L"b/x3", L"a/x4"});
    EXPECT_EQ(all(L"x", {folder(L"\\b\\"), 1}), (Texts{L"\\b\\x3", L"\\a\\x4", L"\\x1", L"\\b\\x2"}));
    EXPECT_EQ(all(L"x", {folder(L"\\b\\"), 1}, Direction::Backward),
              (Texts{L"\\b\\x2", L"\\x1", L"\\a\\x4", L"\\b\\x3"}));
}

TEST_F(MemberSearchTest, TellsWhenItHasGoneRound) {
    list({L"x1", L"b/x2", L"b/x3"});
    search_.begin(L"x", {folder(L"\\b\\"), 1}, Direction::Forward);
    EXPECT_EQ(search_.step(kEnough), Outcome::Found);
    EXPECT_FALSE(search_.wrapped());
    search_.begin(L"x", {folder(L"\\b\\"), 2}, Direction::Forward);
    EXPECT_EQ(search_.step(kEnough), Outcome::Found);
    EXPECT_TRUE(search_.wrapped());
    search_.begin(L"x", {folder(L"\\b\\"), 0}, Direction::Backward);
    EXPECT_EQ(search_.step(kEnough), Outcome::Found);
    EXPECT_EQ(written(search_.found()), L"\\x1");
    EXPECT_FALSE(search_.wrapped());
    search_.begin(L"x", {folder(L"\\"), 1}, Direction::Backward);
    EXPECT_EQ(search_.step(kEnough), Outcome::Found);
    EXPECT_EQ(written(search_.found()), L"\\b\\x3");
    EXPECT_TRUE(search_.wrapped());
}

TEST_F(MemberSearchTest, ComesBackToTheOnlyOneOfItsName) {
    list({L"a", L"x", L"b"});
    for (const auto& [gap, direction] : {std::pair{2U, Direction::Forward}, std::pair{1U, Direction::Backward}}) {
        search_.begin(L"x", {FolderModel::kRoot, gap}, direction);
        EXPECT_EQ(search_.step(kEnough), Outcome::Found);
        EXPECT_EQ(search_.found(), (MemberPlace{FolderModel::kRoot, 1}));
        EXPECT_TRUE(search_.wrapped());
    }
}

TEST_F(MemberSearchTest, LooksAtEverythingOnceBeforeItGivesUp) {
    list({L"a", L"b/c", L"b/d/e", L"f"});
    // 6 items: b, a, f, d, c and e. 4 ends of folders: of the 3 folders, and where it began.
    for (const Direction direction : {Direction::Forward, Direction::Backward}) {
        search_.begin(L"x", {folder(L"\\b\\"), 1}, direction);
        EXPECT_EQ(search_.step(9), Outcome::Searching);
        EXPECT_EQ(search_.step(kEnough), Outcome::NotFound);
        EXPECT_LE(search_.unitsTaken(), 12U);
        EXPECT_EQ(search_.step(kEnough), Outcome::NotFound);
    }
}

TEST_F(MemberSearchTest, FindsNothingForAnEmptyText) {
    list({L"a"});
    search_.begin(L"", {}, Direction::Forward);
    EXPECT_EQ(search_.step(kEnough), Outcome::NotFound);
}

TEST_F(MemberSearchTest, FindsNothingInAnEmptyArchive) {
    list({});
    for (const Direction direction : {Direction::Forward, Direction::Backward}) {
        search_.begin(L"*", {}, direction);
        EXPECT_EQ(search_.step(kEnough), Outcome::NotFound);
    }
}

TEST_F(MemberSearchTest, NeverFindsTheArchiveItself) {
    list({L"b"});
    EXPECT_EQ(all(L"a.zip"), Texts{});
}

TEST_F(MemberSearchTest, LooksForPatterns) {
    list({L"a.txt", L"b/c.TXT", L"b/c.txt.bak", L"txt/d"});
    EXPECT_EQ(all(L"*.txt"), (Texts{L"\\a.txt", L"\\b\\c.TXT"}));
    EXPECT_EQ(all(L"txt"), (Texts{L"\\txt", L"\\a.txt", L"\\b\\c.TXT", L"\\b\\c.txt.bak"}));
}

TEST_F(MemberSearchTest, BeginsInAFolderWithNothingInIt) {
    list({L"empty/", L"x"});
    search_.begin(L"x", {folder(L"\\empty\\"), 0}, Direction::Forward);
    EXPECT_EQ(search_.step(kEnough), Outcome::Found);
    EXPECT_EQ(written(search_.found()), L"\\x");
    EXPECT_TRUE(search_.wrapped());
    search_.begin(L"x", {folder(L"\\empty\\"), 0}, Direction::Backward);
    EXPECT_EQ(search_.step(kEnough), Outcome::Found);
    EXPECT_EQ(written(search_.found()), L"\\x");
    EXPECT_FALSE(search_.wrapped());
}

TEST_F(MemberSearchTest, BeginsBehindTheLastItemWhenThereAreFewer) {
    list({L"x1", L"x2"});
    search_.begin(L"x", {FolderModel::kRoot, 77}, Direction::Backward);
    EXPECT_EQ(search_.step(kEnough), Outcome::Found);
    EXPECT_EQ(written(search_.found()), L"\\x2");
}

TEST_F(MemberSearchTest, RefusesAFolderThatIsNotThere) {
    list({L"x1"});
    EXPECT_THROW(search_.begin(L"x", {5, 0}, Direction::Forward), std::out_of_range);
}

TEST_F(MemberSearchTest, DistinguishesMembersOfOneName) {
    list({L"same", L"same", L"same/x"});
    search_.begin(L"same", {FolderModel::kRoot, 2}, Direction::Forward);
    EXPECT_EQ(search_.step(kEnough), Outcome::Found);
    EXPECT_EQ(search_.found(), (MemberPlace{FolderModel::kRoot, 2}));
}

TEST_F(MemberSearchTest, GoesOnWhereTheLastSliceEnded) {
    list({L"a", L"b", L"c", L"d/e", L"d/x"});
    search_.begin(L"x", {}, Direction::Forward);
    int slices = 1;
    for (; search_.step(1) == Outcome::Searching; ++slices) EXPECT_LE(slices, 10);
    EXPECT_EQ(written(search_.found()), L"\\d\\x");
    // d, a, b, c, the end of the root, e and x.
    EXPECT_EQ(slices, 7);
}

TEST_F(MemberSearchTest, BeginsAnewInTheMidstOfASearch) {
    list({L"a", L"b", L"x", L"y"});
    search_.begin(L"x", {}, Direction::Forward);
    EXPECT_EQ(search_.step(1), Outcome::Searching);
    search_.begin(L"y", {}, Direction::Forward);
    EXPECT_EQ(search_.step(kEnough), Outcome::Found);
    EXPECT_EQ(written(search_.found()), L"\\y");
}

TEST_F(MemberSearchTest, TakesNestedFoldersInItsStride) {
    std::wstring path;
    for (int depth = 0; depth < 2000; ++depth) path += L"d/";
    list({path + L"deep", L"last/x"});
    EXPECT_EQ(all(L"deep").size(), 1U);
    EXPECT_EQ(all(L"x"), Texts{L"\\last\\x"});
    search_.begin(L"nothing", {}, Direction::Backward);
    EXPECT_EQ(search_.step(kEnough), Outcome::NotFound);
    EXPECT_LE(search_.unitsTaken(), 3U * 2002U);
}

// 1,000,000 members in 100,000 folders: every slice is of bounded work, and all of them together as well.
TEST_F(MemberSearchTest, KeepsSlicesShortInAnArchiveOfAMillionMembers) {
    constexpr std::uint32_t kFolders = 100'000, kFilesInEach = 10;
    for (std::uint32_t number = 0; number < kFolders; ++number) {
        const std::wstring path = std::to_wstring(number / 1000) + L"/f" + std::to_wstring(number) + L"/file ";
        for (std::uint32_t file = 0; file < kFilesInEach; ++file) {
            entries_.add({}, path + std::to_wstring(file), {}, {});
        }
    }
    folders_.build(L"a.zip", entries_);
    constexpr std::uint64_t kUnits = 1000;
    constexpr std::uint64_t kOvershoot = 2;  // climbing out of two folders
    // The files, the folders in groups, the groups; each folder's end; one more for every way up.
    constexpr std::uint64_t kAll = 1'000'000 + 2 * 100'100 + 100'100;
    for (const Direction direction : {Direction::Forward, Direction::Backward}) {
        search_.begin(L"file 99", {50'000, 3}, direction);
        std::uint64_t before = 0, slices = 0;
        Outcome outcome = Outcome::Searching;
        while (outcome == Outcome::Searching) {
            outcome = search_.step(kUnits);
            ASSERT_LE(search_.unitsTaken() - before, kUnits + kOvershoot);
            before = search_.unitsTaken();
            ASSERT_LE(++slices, kAll / kUnits + 1);
        }
        EXPECT_EQ(outcome, Outcome::NotFound);
        EXPECT_GE(search_.unitsTaken(), 1'100'100U);
        EXPECT_LE(search_.unitsTaken(), kAll);
    }
}

// Names and texts as long as they can be, made to be compared over and over.
TEST_F(MemberSearchTest, CountsTheWorkOfHostileNames) {
    Texts names(100, std::wstring(500, L'a'));
    list(names);
    search_.begin(L"*" + std::wstring(200, L'a') + L"b*", {}, Direction::Forward);
    std::uint64_t slices = 0;
    while (search_.step(1000) == Outcome::Searching) ++slices;
    // A name takes some 300 * 200 characters, and those are about 1000 units.
    EXPECT_GE(slices, 50U);
}

}  // namespace
}  // namespace tovar::test
