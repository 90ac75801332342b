#include "lzh_packing/support/packing_fixture.h"

/// Archives that are there and get members.
namespace archiver::test {
namespace {

using Names = std::vector<std::string>;

class LzhUpdate : public LzhPackingTest {
protected:
    void SetUp() override {
        for (const char* name : {"a", "b", "c"}) {
            source(name, std::string("old ") + name);
            age(name, 100);
        }
        ASSERT_EQ(run("a ARC BASE a b c"), kOk);
        events_ = {};
    }
};

TEST_F(LzhUpdate, ReplacesInPlaceAndAddsAtTheEnd) {
    source("b", "new b");
    source("d", "new d");
    EXPECT_EQ(run("a ARC BASE d b"), kOk);
    EXPECT_EQ(names(), (Names{"a", "b", "c", "d"}));
    EXPECT_EQ(contents(), (Contents{{"a", "old a"}, {"b", "new b"}, {"c", "old c"}, {"d", "new d"}}));
    EXPECT_EQ(events_.members, 2U);
    EXPECT_EQ(events_.bytes, 10U);
}

TEST_F(LzhUpdate, ReplacesNamesInAnotherCase) {
    std::filesystem::remove(base_ / "b");
    source("B", "new b");
    EXPECT_EQ(run("a ARC BASE B"), kOk);
    EXPECT_EQ(contents(), (Contents{{"a", "old a"}, {"B", "new b"}, {"c", "old c"}}));
    EXPECT_EQ(names(), (Names{"a", "B", "c"}));
}

TEST_F(LzhUpdate, TakesOnlyWhatIsNewer) {
    source("a", "older a");
    age("a", 50);
    source("b", "as old b");
    age("b", 100);
    source("c", "newer c");
    age("c", 102);
    source("d", "d");
    age("d", 10);
    EXPECT_EQ(run("u ARC BASE a b c d"), kOk);
    EXPECT_EQ(contents(), (Contents{{"a", "old a"}, {"b", "old b"}, {"c", "newer c"}, {"d", "d"}}));
    EXPECT_EQ(events_.members, 2U);
    const std::string before = archiveBytes();
    EXPECT_EQ(run("u ARC BASE a b c d"), kOk) << "all is as it should be";
    EXPECT_TRUE(archiveBytes() == before);
}

TEST_F(LzhUpdate, FreshensOnlyWhatIsThere) {
    source("b", "newer b");
    age("b", 200);
    source("d", "d");
    EXPECT_EQ(run("f ARC BASE a b d"), kOk);
    EXPECT_EQ(contents(), (Contents{{"a", "old a"}, {"b", "newer b"}, {"c", "old c"}}));
    EXPECT_EQ(run("f ARC BASE gone"), kNotExist);
}

TEST_F(LzhUpdate, FreshensNoArchiveThatIsNotThere) {
    std::filesystem::remove(archive_);
    EXPECT_EQ(run("f ARC BASE a"), kNotFindArcFile);
    EXPECT_EQ(beside(), Names{"base"});
}

TEST_F(LzhUpdate, HeedsTheStepsOfPackedTimes) {
    std::filesystem::remove(archive_);
    age("a", 101);  // an odd second, which headers of level 0 round down
    ASSERT_EQ(run("a -h0 ARC BASE a"), kOk);
    const std::string before = archiveBytes();
    EXPECT_EQ(run("u ARC BASE a"), kOk);
    EXPECT_TRUE(archiveBytes() == before);
    age("a", 102);
    source("a", "newer");
    age("a", 102);
    EXPECT_EQ(run("u ARC BASE a"), kOk);
    EXPECT_EQ(contents(), (Contents{{"a", "newer"}}));
}

TEST_F(LzhUpdate, CopiesOthersAsTheyAre) {
    // Members of other archivers, with what this one never writes, behind a program.
    const std::string other = readFile(dataFile("lzh/lh7-level1.lzh"));
    const std::string program = "MZ" + std::string(2000, 'p');
    folder_.write("a.lzh", program + other);
    source("new", "new");
    EXPECT_EQ(run("a ARC BASE new"), kOk);
    const std::string bytes = archiveBytes();
    const std::string members = other.substr(0, other.size() - 1);
    EXPECT_TRUE(bytes.starts_with(program + members)) << "all but the end mark";
    EXPECT_EQ(names(), (Names{"gpl-2", "new"}));
    EXPECT_EQ(run("d ARC new"), kOk);
    EXPECT_TRUE(archiveBytes() == program + members + '\0');
}

TEST_F(LzhUpdate, ReplacesAllMembersOfAName) {
    const std::string one = archiveBytes();
    const std::string members = one.substr(0, one.size() - 1);
    folder_.write("a.lzh", members + one);
    ASSERT_EQ(names(), (Names{"a", "b", "c", "a", "b", "c"}));
    source("b", "new b");
    EXPECT_EQ(run("a ARC BASE b"), kOk);
    EXPECT_EQ(names(), (Names{"a", "b", "c", "a", "c"}));
}

TEST_F(LzhUpdate, AddsToAnArchiveWithoutMembers) {
    folder_.write("a.lzh", std::string(1, '\0'));
    EXPECT_EQ(run("a ARC BASE a"), kOk);
    EXPECT_EQ(names(), Names{"a"});
    folder_.write("a.lzh", "");
    EXPECT_EQ(run("a ARC BASE a"), kOk) << "made to have the name";
    EXPECT_EQ(names(), Names{"a"});
}

TEST_F(LzhUpdate, TakesManyMembersInTime) {
    // Far more than could be compared each with each. Not in Windows, where making them takes the time.
#ifdef _WIN32
    constexpr std::size_t kMany = 100;
#else
    constexpr std::size_t kMany = 3000;
#endif
    std::filesystem::create_directories(base_ / "many");
    for (std::size_t index = 0; index < kMany; ++index) source("many/" + std::to_string(index), std::to_string(index));
    EXPECT_EQ(run("a -r2 -x1 ARC BASE many"), kOk);
    EXPECT_EQ(run("a -r2 -x1 ARC BASE many"), kOk);
    EXPECT_EQ(names().size(), kMany + 3);
    EXPECT_EQ(run("d ARC many/*.*"), kOk);
    EXPECT_EQ(names().size(), 3U);
}

}  // namespace
}  // namespace archiver::test
