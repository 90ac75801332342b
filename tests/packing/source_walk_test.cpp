#include "archivers/packing/source_walk.h"

#include <gtest/gtest.h>

#include "packing/fakes/fake_sources.h"

namespace archiver::test {
namespace {

using Names = std::vector<std::string>;

class SourceWalkTest : public testing::Test {
protected:
    SourceWalkTest() {
        sources_.addFile("/base/a.txt");
        sources_.addFile("/base/b.c");
        sources_.addFile("/base/noext");
        sources_.addFile("/base/docs/one.txt");
        sources_.addFile("/base/docs/deep/two.txt");
        sources_.addFile("/base/docs/deep/two.c");
        sources_.addFolder("/base/empty");
        sources_.addFile("/base/secret/inside.txt");
        sources_.addFile("/base/hidden.txt", "", attribute::kHidden);
        sources_.addFolder("/base/hiddenfolder", SourceKind::kFolder, attribute::kSystem);
        sources_.addFile("/base/hiddenfolder/plain.txt");
        sources_.addFile("/elsewhere/x.txt");
    }

    Names walk(WalkOptions options, const Names& names) {
        SourceWalk walk(sources_, "/base", std::move(options));
        missing_.clear();
        for (const std::string& name : names) {
            if (!walk.add(name)) missing_.push_back(name);
        }
        unreadable_ = walk.unreadable();
        Names found;
        for (const SourceItem& item : walk.items()) found.push_back(item.name);
        return found;
    }

    FakeSources sources_;
    Names missing_, unreadable_;
};

TEST_F(SourceWalkTest, KeepsTheOrderOfNamesAndDropsThoseGivenTwice) {
    EXPECT_EQ(walk({}, {"b.c", "b.c", "a.txt", "./b.c", "docs/../a.txt"}), (Names{"b.c", "a.txt", "docs/a.txt"}));
}

TEST_F(SourceWalkTest, ReportsWhatIsNotThere) {
    EXPECT_EQ(walk({}, {"gone.txt", "a.txt", "nodir/*.*", "*.zzz"}), Names{"a.txt"});
    EXPECT_EQ(missing_, (Names{"gone.txt", "nodir/*.*", "*.zzz"}));
}

TEST_F(SourceWalkTest, TakesTheFilesOfAFolderByPattern) {
    EXPECT_EQ(walk({}, {"docs/*.*"}), Names{"docs/one.txt"});
    EXPECT_EQ(walk({}, {"*.txt"}), Names{"a.txt"});
    EXPECT_EQ(walk({}, {"?.[a-d]"}), Names{"b.c"});
}

TEST_F(SourceWalkTest, TakesEveryNameForStarDotStar) { EXPECT_EQ(walk({}, {"*.*"}), (Names{"a.txt", "b.c", "noext"})); }

TEST_F(SourceWalkTest, TakesWhatLiesBelowWhenItRecurses) {
    EXPECT_EQ(walk({.recurse = true}, {"docs/*.*"}),
              (Names{"docs/", "docs/one.txt", "docs/deep/", "docs/deep/two.c", "docs/deep/two.txt"}));
    EXPECT_EQ(walk({.recurse = true, .folderEntries = false}, {"docs/*.*"}),
              (Names{"docs/one.txt", "docs/deep/two.c", "docs/deep/two.txt"}));
}

TEST_F(SourceWalkTest, LooksForAPatternInAllFoldersWhenItRecurses) {
    EXPECT_EQ(walk({.recurse = true}, {"*.c"}), (Names{"b.c", "docs/deep/two.c"}));
}

TEST_F(SourceWalkTest, KeepsAnEmptyFolderOnlyAsAnEntry) {
    EXPECT_EQ(walk({.recurse = true}, {"empty/*.*"}), Names{"empty/"});
    EXPECT_EQ(walk({}, {"empty/*.*"}), Names{});
    EXPECT_EQ(missing_, Names{"empty/*.*"});
    EXPECT_EQ(walk({.recurse = true, .folderEntries = false}, {"empty/*.*"}), Names{});
    EXPECT_EQ(missing_, Names{"empty/*.*"});
}

TEST_F(SourceWalkTest, TakesANamedFolderWithAndWithoutItsContents) {
    EXPECT_EQ(walk({}, {"docs"}), Names{"docs/"});
    EXPECT_EQ(walk({}, {"docs/"}), Names{"docs/"});
    EXPECT_EQ(walk({.recurse = true}, {"docs"}),
              (Names{"docs/", "docs/one.txt", "docs/deep/", "docs/deep/two.c", "docs/deep/two.txt"}));
}

TEST_F(SourceWalkTest, PassesHiddenOnesOverUnlessNamedOrAskedFor) {
    EXPECT_EQ(walk({}, {"h*.*"}), Names{});
    EXPECT_EQ(walk({}, {"hidden.txt"}), Names{"hidden.txt"});
    EXPECT_EQ(walk({.recurse = true, .hidden = true}, {"h*.*"}), Names{"hidden.txt"});
    EXPECT_EQ(walk({.recurse = true, .hidden = true, .folderEntries = false}, {"p*.*"}),
              Names{"hiddenfolder/plain.txt"});
    EXPECT_EQ(walk({.recurse = true, .folderEntries = false}, {"p*.*"}), Names{});
}

TEST_F(SourceWalkTest, CutsTheBaseFromAbsoluteNames) {
    EXPECT_EQ(walk({}, {"/base/docs/one.txt", "/base/docs/*.*"}), Names{"docs/one.txt"});
    EXPECT_EQ(walk({}, {"/elsewhere/x.txt"}), Names{"elsewhere/x.txt"});
}

TEST_F(SourceWalkTest, NeverStoresANameThatClimbs) {
    EXPECT_EQ(walk({}, {"../elsewhere/x.txt"}), Names{"elsewhere/x.txt"});
}

TEST_F(SourceWalkTest, LeavesTheArchiveItselfOut) {
    EXPECT_EQ(walk({.omit = "/base/a.txt"}, {"*.*", "a.txt"}), (Names{"b.c", "noext"}));
}

TEST_F(SourceWalkTest, DoesNotEnterALinkThatItMeetsButOneThatIsNamed) {
    sources_.addFolder("/base/docs/up", SourceKind::kFolderLink);
    sources_.addFile("/base/docs/up/through.txt");
    EXPECT_EQ(walk({.recurse = true, .folderEntries = false}, {"docs"}),
              (Names{"docs/one.txt", "docs/deep/two.c", "docs/deep/two.txt"}));
    EXPECT_EQ(walk({.recurse = true}, {"docs/up"}), (Names{"docs/up/", "docs/up/through.txt"}));
}

TEST_F(SourceWalkTest, ReportsAFolderThatCannotBeListed) {
    sources_.refuse("/base/docs/deep");
    EXPECT_EQ(walk({.recurse = true}, {"docs"}), (Names{"docs/", "docs/one.txt", "docs/deep/"}));
    EXPECT_EQ(unreadable_, Names{"docs/deep"});
}

TEST_F(SourceWalkTest, FindsAFileWithBracketsBeforeItReadsThemAsAPattern) {
    sources_.addFile("/base/x[1].txt");
    sources_.addFile("/base/x1.txt");
    EXPECT_EQ(walk({}, {"x[1].txt"}), Names{"x[1].txt"});
    EXPECT_EQ(walk({}, {"x[1].tx?"}), (Names{"x1.txt"}));
}

TEST_F(SourceWalkTest, TakesNamesThatDifferByCaseForOneWhereTheSystemDoes) {
    sources_.caseless();
    EXPECT_EQ(walk({.omit = "/BASE/B.C"}, {"a.txt", "A.TXT", "b.c"}), Names{"a.txt"});
}

TEST_F(SourceWalkTest, TakesManyNamesAndEachOnce) {
    Names names, expected;
    for (int number = 100'000; number < 120'000; ++number) {
        const std::string name = "many/f" + std::to_string(number);
        sources_.addFile("/base/" + name);
        names.push_back(name);
        expected.push_back(name);
    }
    EXPECT_EQ(walk({}, names), expected);
    sources_.lists = 0;
    names.push_back("many/*.*");
    EXPECT_EQ(walk({}, names), expected);
    EXPECT_EQ(sources_.lists, 1);
}

}  // namespace
}  // namespace archiver::test
