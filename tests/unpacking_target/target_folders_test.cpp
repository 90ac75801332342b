#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <initializer_list>
#include <string>
#include <string_view>
#include <thread>

#include "unpacking_target/support/scratch.h"

namespace archiver {
namespace {

using test::beginFile;
using test::openTarget;
using test::Scratch;
using test::writeFile;

using Names = std::vector<std::string>;

std::string joined(std::initializer_list<std::string_view> pieces) {
    std::string text;
    for (const std::string_view piece : pieces) text.append(piece);
    return text;
}

class TargetFolders : public testing::Test {
protected:
    Scratch scratch;
    std::unique_ptr<TargetFolder> target = openTarget(scratch.path());
};

TEST(OpenTarget, MakesTheFolderAndThoseAboveIt) {
    const Scratch scratch;
    std::unique_ptr<TargetFolder> target;
    EXPECT_EQ(systemTarget().open(scratch.path() / "a" / "b c" / "d", target), kOk);
    ASSERT_NE(target, nullptr);
    EXPECT_EQ(scratch.names(), (Names{"a/", "a/b c/", "a/b c/d/"}));
    EXPECT_EQ(writeFile(*target, "x", "x"), kOk);
    EXPECT_EQ(scratch.read("a/b c/d/x"), "x");
}

TEST(OpenTarget, TakesOneWithASeparatorAtItsEnd) {
    const Scratch scratch;
    std::unique_ptr<TargetFolder> target;
    EXPECT_EQ(systemTarget().open(scratch.path() / "a" / "", target), kOk);
    EXPECT_EQ(writeFile(*target, "x", "x"), kOk);
    EXPECT_EQ(scratch.names(), (Names{"a/", "a/x"}));
}

TEST(OpenTarget, RefusesFiles) {
    const Scratch scratch;
    scratch.write("a", "x");
    std::unique_ptr<TargetFolder> target;
    EXPECT_EQ(systemTarget().open(scratch.path() / "a", target), kMakeDirectory);
    EXPECT_EQ(systemTarget().open(scratch.path() / "a" / "b", target), kMakeDirectory);
    EXPECT_EQ(target, nullptr);
    EXPECT_EQ(scratch.read("a"), "x");
}

TEST_F(TargetFolders, AreMadeWithThoseAboveThem) {
    bool made = false;
    EXPECT_EQ(target->makeFolder("a/b/c", made), kOk);
    EXPECT_TRUE(made);
    EXPECT_EQ(target->makeFolder("a/b/c", made), kOk);
    EXPECT_FALSE(made);
    EXPECT_EQ(target->makeFolder("a/b", made), kOk);
    EXPECT_FALSE(made);
    EXPECT_EQ(target->makeFolder("a/d", made), kOk);
    EXPECT_TRUE(made);
    EXPECT_EQ(target->makeFolder("", made), kOk);
    EXPECT_FALSE(made);
    EXPECT_EQ(scratch.names(), (Names{"a/", "a/b/", "a/b/c/", "a/d/"}));
}

TEST_F(TargetFolders, MayBeThereBefore) {
    scratch.makeFolder("a");
    bool made = true;
    EXPECT_EQ(target->makeFolder("a", made), kOk);
    EXPECT_FALSE(made);
    EXPECT_EQ(writeFile(*target, "a/x", "x"), kOk);
}

TEST_F(TargetFolders, DoNotReplaceFiles) {
    scratch.write("a", "file");
    bool made = false;
    EXPECT_EQ(target->makeFolder("a", made), kMakeDirectory);
    EXPECT_EQ(target->makeFolder("a/b", made), kMakeDirectory);
    EXPECT_FALSE(made);
    EXPECT_EQ(scratch.read("a"), "file");
}

TEST_F(TargetFolders, DoNotLeaveTheTarget) {
    scratch.makeFolder("in");
    const auto inner = openTarget(scratch.path() / "in");
    bool made = false;
    for (const char* name : {"..", "../x", "a/../../x", "/x", "a//b", "."}) {
        EXPECT_EQ(inner->makeFolder(name, made), kMakeDirectory) << name;
    }
    const Names names = scratch.names();
    EXPECT_EQ(std::count(names.begin(), names.end(), "x/"), 0);
    EXPECT_EQ(inner->setProperties("..", {}), kMakeDirectory);
}

TEST_F(TargetFolders, AreManyAndDeep) {
    // More than are kept open or remembered, and each visited again after the others.
    std::string deep;
    for (int level = 0; level < 60; ++level) deep.append(level == 0 ? "" : "/").append(std::to_string(level));
    bool made = false;
    ASSERT_EQ(target->makeFolder(deep, made), kOk);
    for (int round = 0; round < 2; ++round) {
        for (int folder = 0; folder < 100; ++folder) {
            const std::string name = joined({"f", std::to_string(folder), "/g"});
            ASSERT_EQ(target->makeFolder(name, made), kOk);
            EXPECT_EQ(made, round == 0);
            ASSERT_EQ(writeFile(*target, joined({name, "/", std::to_string(round)}), name), kOk);
        }
        ASSERT_EQ(writeFile(*target, joined({deep, "/file", std::to_string(round)}), "deep"), kOk);
    }
    EXPECT_EQ(scratch.read("f0/g/1"), "f0/g");
    EXPECT_EQ(scratch.read("f99/g/0"), "f99/g");
    EXPECT_EQ(scratch.read(deep + "/file1"), "deep");
    EXPECT_EQ(scratch.names().size(), 60U + 2 + 100U * 4);
}

TEST_F(TargetFolders, TellWhatIsThere) {
    scratch.write("file", "12345");
    scratch.makeFolder("folder");
    scratch.write("folder/kept", "");
    scratch.protect("folder/kept");
    const auto file = target->find("file");
    ASSERT_TRUE(file.has_value());
    EXPECT_EQ(file->kind, ExistingItem::Kind::kFile);
    EXPECT_EQ(file->size, 5U);
    EXPECT_FALSE(file->readOnly);
    ASSERT_TRUE(file->written.has_value());
    EXPECT_EQ(file->written->seconds, scratch.seconds("file"));
    const auto folder = target->find("folder");
    ASSERT_TRUE(folder.has_value());
    EXPECT_EQ(folder->kind, ExistingItem::Kind::kFolder);
    const auto kept = target->find("folder/kept");
    ASSERT_TRUE(kept.has_value());
    EXPECT_TRUE(kept->readOnly);
    EXPECT_EQ(kept->size, 0U);
    for (const char* name : {"none", "folder/none", "none/none", "file/none"}) {
        EXPECT_FALSE(target->find(name).has_value()) << name;
    }
}

TEST_F(TargetFolders, KnowTheFreeSpace) {
    const auto space = target->freeSpace();
    ASSERT_TRUE(space.has_value());
    EXPECT_GT(*space, 0U);
}

TEST_F(TargetFolders, AreWrittenInByThreads) {
    constexpr int kThreads = 4;
    constexpr int kFiles = 100;
    bool made = false;
    for (int thread = 0; thread < kThreads; ++thread) {
        ASSERT_EQ(target->makeFolder(std::to_string(thread), made), kOk);
    }
    std::atomic<int> failures{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (int file = 0; file < kFiles; ++file) {
                const std::string name = joined({std::to_string((thread + file) % kThreads), "/",
                                                 std::to_string(thread), "-", std::to_string(file)});
                if (writeFile(*target, name, name) != kOk) ++failures;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(failures, 0);
    const Names names = scratch.names();
    EXPECT_EQ(names.size(), std::size_t{kThreads} * (kFiles + 1));
    for (const std::string& name : names) {
        if (!name.ends_with('/')) {
            EXPECT_EQ(scratch.read(name), name);
        }
    }
}

TEST_F(TargetFolders, GiveANameToOneOfTwoThreads) {
    for (int round = 0; round < 50; ++round) {
        const std::string name = std::to_string(round);
        ReturnCode codes[2] = {};
        std::thread other([&] { codes[0] = writeFile(*target, name, "0"); });
        codes[1] = writeFile(*target, name, "1");
        other.join();
        const int winner = codes[0] == kOk ? 0 : 1;
        EXPECT_EQ(codes[winner], kOk);
        EXPECT_EQ(codes[1 - winner], kSameNameFile);
        EXPECT_EQ(scratch.read(name), std::to_string(winner));
    }
    EXPECT_EQ(scratch.names().size(), 50U);
}

TEST_F(TargetFolders, HoldHardLinks) {
    scratch.write("a", "first");
    EXPECT_EQ(target->makeHardLink("b", "a", false), kOk);
    EXPECT_EQ(scratch.read("b"), "first");
    EXPECT_EQ(target->makeHardLink("b", "a", false), kSameNameFile);
    EXPECT_EQ(target->makeHardLink("b", "a", true), kOk) << "the same file already";
    scratch.write("c", "other");
    EXPECT_EQ(target->makeHardLink("c", "a", true), kOk);
    EXPECT_EQ(scratch.read("c"), "first");
    // A file that replaces one of the names leaves the others.
    EXPECT_EQ(writeFile(*target, "b", "second", true), kOk);
    EXPECT_EQ(scratch.read("a"), "first");
    EXPECT_EQ(scratch.read("b"), "second");
    EXPECT_EQ(scratch.names(), (Names{"a", "b", "c"}));
}

TEST_F(TargetFolders, RefuseHardLinksToWhatIsNoFile) {
    scratch.makeFolder("folder");
    scratch.write("file", "x");
    EXPECT_EQ(target->makeHardLink("a", "none", false), kNotExist);
    EXPECT_EQ(target->makeHardLink("a", "folder", false), kNotExist);
    EXPECT_EQ(target->makeHardLink("a", "../outside", false), kFileOpen);
    EXPECT_EQ(target->makeHardLink("folder", "file", true), kSameNameFile);
    EXPECT_EQ(scratch.names(), (Names{"file", "folder/"}));
}

TEST_F(TargetFolders, CopyFiles) {
    const std::string bytes(200'000, 'c');
    ItemProperties properties;
    properties.written = Moment{1234567890, 0};
    properties.attributes = attribute::kReadOnly;
    ASSERT_EQ(writeFile(*target, "a", bytes, false, properties), kOk);
    int questions = 0;
    EXPECT_EQ(target->copyFile("b", "a", false, [&] { return ++questions > 0; }), kOk);
    EXPECT_GT(questions, 1);
    EXPECT_EQ(scratch.read("b"), bytes);
    EXPECT_EQ(scratch.seconds("b"), 1234567890);
    EXPECT_TRUE(scratch.isProtected("b"));
    EXPECT_EQ(target->copyFile("b", "a", false, [] { return true; }), kSameNameFile);
    EXPECT_EQ(target->copyFile("c", "none", false, [] { return true; }), kNotExist);
    EXPECT_EQ(scratch.names(), (Names{"a", "b"}));
}

TEST_F(TargetFolders, CopyUntilCancelled) {
    scratch.write("a", std::string(200'000, 'c'));
    scratch.write("b", "old");
    int questions = 0;
    EXPECT_EQ(target->copyFile("b", "a", true, [&] { return ++questions < 2; }), kUserCancel);
    EXPECT_EQ(target->copyFile("c", "a", false, [] { return false; }), kUserCancel);
    EXPECT_EQ(scratch.read("b"), "old");
    EXPECT_EQ(scratch.names(), (Names{"a", "b"}));
}

}  // namespace
}  // namespace archiver
