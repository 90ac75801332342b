#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "unpacking_target/support/scratch.h"

namespace archiver {
namespace {

using test::beginFile;
using test::openTarget;
using test::Scratch;
using test::writeFile;

using Names = std::vector<std::string>;

class TargetFiles : public testing::Test {
protected:
    Scratch scratch;
    std::unique_ptr<TargetFolder> target = openTarget(scratch.path());
};

TEST_F(TargetFiles, AreWritten) {
    const auto file = beginFile(*target, "a.txt", "one, ");
    EXPECT_EQ(file->write(std::string_view("two")), kOk);
    EXPECT_EQ(file->commit({}), kOk);
    EXPECT_EQ(scratch.read("a.txt"), "one, two");
    EXPECT_EQ(scratch.names(), Names{"a.txt"});
}

TEST_F(TargetFiles, MayBeEmpty) {
    EXPECT_EQ(writeFile(*target, "empty", ""), kOk);
    EXPECT_EQ(scratch.read("empty"), "");
}

TEST_F(TargetFiles, LeaveNothingBehindWithoutCommit) {
    beginFile(*target, "a.txt", "half").reset();
    EXPECT_EQ(scratch.names(), Names{});
}

TEST_F(TargetFiles, KeepTheOldOneWithoutCommit) {
    scratch.write("a.txt", "old");
    beginFile(*target, "a.txt", "half", true).reset();
    EXPECT_EQ(scratch.read("a.txt"), "old");
    EXPECT_EQ(scratch.names(), Names{"a.txt"});
}

TEST_F(TargetFiles, ReplaceInTheEnd) {
    scratch.write("a.txt", "the old one");
    const auto file = beginFile(*target, "a.txt", "new", true);
    EXPECT_EQ(scratch.read("a.txt"), "the old one");
    EXPECT_EQ(file->commit({}), kOk);
    EXPECT_EQ(scratch.read("a.txt"), "new");
    EXPECT_EQ(scratch.names(), Names{"a.txt"});
}

TEST_F(TargetFiles, ReplaceWriteProtectedOnes) {
    scratch.write("a.txt", "old");
    scratch.protect("a.txt");
    EXPECT_EQ(writeFile(*target, "a.txt", "new", true), kOk);
    EXPECT_EQ(scratch.read("a.txt"), "new");
    EXPECT_FALSE(scratch.isProtected("a.txt"));
    EXPECT_EQ(scratch.names(), Names{"a.txt"});
}

TEST_F(TargetFiles, KeepWriteProtectedOnesWithoutCommit) {
    scratch.write("a.txt", "old");
    scratch.protect("a.txt");
    beginFile(*target, "a.txt", "half", true).reset();
    EXPECT_EQ(scratch.read("a.txt"), "old");
    EXPECT_TRUE(scratch.isProtected("a.txt"));
    EXPECT_EQ(scratch.names(), Names{"a.txt"});
}

TEST_F(TargetFiles, MayReplaceWhereNothingStands) {
    EXPECT_EQ(writeFile(*target, "a.txt", "new", true), kOk);
    EXPECT_EQ(scratch.names(), Names{"a.txt"});
}

TEST_F(TargetFiles, DoNotReplaceUnasked) {
    scratch.write("a.txt", "old");
    std::unique_ptr<OutputFile> file;
    EXPECT_EQ(target->createFile("a.txt", 3, false, file), kSameNameFile);
    EXPECT_EQ(file, nullptr);
    EXPECT_EQ(scratch.read("a.txt"), "old");
    EXPECT_EQ(scratch.names(), Names{"a.txt"});
}

TEST_F(TargetFiles, DoNotReplaceFolders) {
    scratch.makeFolder("a");
    EXPECT_EQ(writeFile(*target, "a", "x", false), kSameNameFile);
    EXPECT_EQ(writeFile(*target, "a", "x", true), kSameNameFile);
    EXPECT_EQ(scratch.names(), Names{"a/"});
}

TEST_F(TargetFiles, DoNotReplaceAFolderThatCameMeanwhile) {
    scratch.write("a", "old");
    const auto file = beginFile(*target, "a", "new", true);
    std::filesystem::remove(scratch.path() / "a");
    scratch.makeFolder("a");
    EXPECT_EQ(file->commit({}), kSameNameFile);
}

TEST_F(TargetFiles, AreNotMadeBelowFiles) {
    scratch.write("a", "file");
    EXPECT_EQ(writeFile(*target, "a/b", "x"), kFileOpen);
    EXPECT_EQ(scratch.read("a"), "file");
}

TEST_F(TargetFiles, NeedTheirFolder) {
    EXPECT_EQ(writeFile(*target, "a/b", "x"), kFileOpen);
    EXPECT_EQ(scratch.names(), Names{});
}

TEST_F(TargetFiles, DoNotLeaveTheTarget) {
    scratch.makeFolder("in");
    const auto inner = openTarget(scratch.path() / "in");
    bool made = false;
    ASSERT_EQ(inner->makeFolder("d", made), kOk);
    for (const char* name : {"../x", "d/../../x", "..", ".", "", "/x", "d//x", "d/", "./x"}) {
        EXPECT_EQ(writeFile(*inner, name, "x", true), kFileOpen) << name;
        EXPECT_FALSE(inner->find(name).has_value()) << name;
    }
    EXPECT_EQ(scratch.names(), (Names{"in/", "in/d/"}));
}

TEST_F(TargetFiles, HaveNamesOfAllScripts) {
    EXPECT_EQ(writeFile(*target, std::filesystem::path(u8"\u3042\u00E4 \U0001F600"), "x"), kOk);
    EXPECT_EQ(scratch.names(), Names{"\xE3\x81\x82\xC3\xA4 \xF0\x9F\x98\x80"});
}

TEST_F(TargetFiles, HaveLongPaths) {
    const std::string part(100, 'p');
    const std::string folder = part + "/" + part + "/" + part;
    bool made = false;
    ASSERT_EQ(target->makeFolder(folder, made), kOk);
    EXPECT_TRUE(made);
    const std::string name = folder + "/" + std::string(255, 'n');
    EXPECT_EQ(writeFile(*target, name, "first"), kOk);
    EXPECT_EQ(scratch.read(name), "first");
    EXPECT_EQ(writeFile(*target, name, "second", true), kOk);
    EXPECT_EQ(scratch.read(name), "second");
    const auto there = target->find(name);
    ASSERT_TRUE(there.has_value());
    EXPECT_EQ(there->size, 6U);
    EXPECT_EQ(scratch.names().size(), 4U);
}

struct TimeCase {
    const char* title;
    Moment moment;
};
class FileTimes : public testing::TestWithParam<TimeCase> {};
TEST_P(FileTimes, AreKept) {
    const Scratch scratch;
    const auto target = openTarget(scratch.path());
    ItemProperties properties;
    properties.written = GetParam().moment;
    ASSERT_EQ(writeFile(*target, "new", "x", false, properties), kOk);
    scratch.write("old", "y");
    ASSERT_EQ(writeFile(*target, "old", "x", true, properties), kOk);
    bool made = false;
    ASSERT_EQ(target->makeFolder("folder", made), kOk);
    ASSERT_EQ(target->setProperties("folder", properties), kOk);
    for (const char* name : {"new", "old", "folder"}) {
        EXPECT_EQ(scratch.seconds(name), GetParam().moment.seconds) << name;
        EXPECT_EQ(scratch.nanoseconds(name), GetParam().moment.nanoseconds) << name;
    }
}
INSTANTIATE_TEST_SUITE_P(Times, FileTimes,
                         testing::Values(TimeCase{"Before1970", {-315619200, 0}},  // 1960-01-01
                                         TimeCase{"Before1980", {157766400, 0}},   // 1975-01-01
                                         TimeCase{"Usual", {1234567890, 123'456'700}},
                                         TimeCase{"After2038", {4102444800, 999'999'900}}),  // 2100-01-01
                         [](const auto& each) { return std::string(each.param.title); });

TEST_F(TargetFiles, WithoutATimeAreOfNow) {
    const std::time_t before = std::time(nullptr);
    ItemProperties properties;
    properties.accessed = Moment{1234567890, 0};
    ASSERT_EQ(writeFile(*target, "a", "x", false, properties), kOk);
    EXPECT_GE(scratch.seconds("a"), before - 2);
    EXPECT_LE(scratch.seconds("a"), std::time(nullptr) + 2);
}

TEST_F(TargetFiles, WithAnImpossibleTimeAreWhole) {
    for (const std::int64_t seconds : {INT64_MIN, INT64_MAX, std::int64_t{-11'644'473'601}}) {
        ItemProperties properties;
        properties.written = Moment{seconds, 4'000'000'000};
        EXPECT_EQ(writeFile(*target, "a", "x", true, properties), kOk) << seconds;
        EXPECT_EQ(scratch.read("a"), "x");
    }
}

TEST_F(TargetFiles, AreWriteProtectedWhenAsked) {
    ItemProperties properties;
    properties.attributes = attribute::kReadOnly;
    properties.written = Moment{1234567890, 0};
    EXPECT_EQ(writeFile(*target, "a", "x", false, properties), kOk);
    EXPECT_TRUE(scratch.isProtected("a"));
    EXPECT_EQ(scratch.seconds("a"), 1234567890);
    scratch.write("b", "old");
    EXPECT_EQ(writeFile(*target, "b", "x", true, properties), kOk);
    EXPECT_TRUE(scratch.isProtected("b"));
    EXPECT_EQ(scratch.read("b"), "x");
    properties.attributes = 0;
    EXPECT_EQ(writeFile(*target, "c", "x", false, properties), kOk);
    EXPECT_FALSE(scratch.isProtected("c"));
}

TEST_F(TargetFiles, DoNotTrustTheExpectedSize) {
    for (const std::uint64_t claim : {std::uint64_t{0}, std::uint64_t{2}, std::uint64_t{1} << 23, UINT64_MAX}) {
        std::unique_ptr<OutputFile> file;
        ASSERT_EQ(target->createFile("a", claim, true, file), kOk) << claim;
        EXPECT_EQ(file->write(std::string_view("123")), kOk);
        EXPECT_EQ(file->commit({}), kOk);
        EXPECT_EQ(scratch.read("a"), "123") << claim;
    }
}

TEST_F(TargetFiles, MayGrowBeyondTheExpectedSize) {
    const std::string piece(1 << 20, 'p');
    std::unique_ptr<OutputFile> file;
    ASSERT_EQ(target->createFile("a", piece.size(), false, file), kOk);
    for (int count = 0; count < 3; ++count) ASSERT_EQ(file->write(piece), kOk);
    ASSERT_EQ(file->commit({}), kOk);
    EXPECT_EQ(scratch.read("a"), piece + piece + piece);
}

}  // namespace
}  // namespace archiver
