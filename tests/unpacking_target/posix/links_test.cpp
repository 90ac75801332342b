#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>

#include "unpacking_target/support/scratch.h"

namespace archiver {
namespace {

using test::beginFile;
using test::openTarget;
using test::Scratch;
using test::writeFile;

using Names = std::vector<std::string>;

/// A target with a file and a folder outside it that links lead to.
class PosixLinks : public testing::Test {
protected:
    PosixLinks() {
        scratch.makeFolder("outside");
        scratch.write("outside/file", "outside");
        scratch.makeFolder("in");
        target = openTarget(scratch.path() / "in");
    }
    void link(const char* name, const char* to) const {
        ASSERT_EQ(::symlink(to, (scratch.path() / "in" / name).c_str()), 0);
    }
    [[nodiscard]] std::string linkAt(const char* name) const {
        return std::filesystem::read_symlink(scratch.path() / "in" / name).string();
    }
    void expectOutsideUntouched() const {
        EXPECT_EQ(scratch.read("outside/file"), "outside");
        const Names names = scratch.names();
        EXPECT_EQ(std::ranges::count_if(names, [](const auto& each) { return each.starts_with("outside"); }), 2);
    }

    Scratch scratch;
    std::unique_ptr<TargetFolder> target;
};

TEST_F(PosixLinks, ToFilesAreNotWrittenThrough) {
    link("x", "../outside/file");
    EXPECT_EQ(writeFile(*target, "x", "evil"), kSameNameFile);
    expectOutsideUntouched();
    EXPECT_EQ(writeFile(*target, "x", "evil", true), kOk);
    EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(scratch.path() / "in" / "x")));
    EXPECT_EQ(scratch.read("in/x"), "evil");
    expectOutsideUntouched();
}

TEST_F(PosixLinks, StayWithoutCommit) {
    link("x", "../outside/file");
    beginFile(*target, "x", "half", true).reset();
    EXPECT_EQ(linkAt("x"), "../outside/file");
    expectOutsideUntouched();
}

TEST_F(PosixLinks, ToNothingAreNotWrittenThrough) {
    link("x", "../outside/new");
    EXPECT_EQ(writeFile(*target, "x", "evil"), kSameNameFile);
    EXPECT_EQ(writeFile(*target, "x", "evil", true), kOk);
    expectOutsideUntouched();
}

TEST_F(PosixLinks, ToFoldersAreNotEntered) {
    link("d", "../outside");
    bool made = false;
    EXPECT_EQ(writeFile(*target, "d/new", "evil"), kFileOpen);
    EXPECT_EQ(writeFile(*target, "d/file", "evil", true), kFileOpen);
    EXPECT_EQ(target->makeFolder("d", made), kMakeDirectory);
    EXPECT_EQ(target->makeFolder("d/new", made), kMakeDirectory);
    EXPECT_EQ(target->makeSymbolicLink("d/new", "file", false), kFileOpen);
    EXPECT_EQ(target->makeHardLink("new", "d/file", false), kFileOpen);
    EXPECT_EQ(target->copyFile("new", "d/file", false, [] { return true; }), kFileOpen);
    EXPECT_EQ(target->setProperties("d", {}), kMakeDirectory);
    EXPECT_FALSE(target->find("d/file").has_value());
    expectOutsideUntouched();
    EXPECT_EQ(scratch.names(), (Names{"in/", "in/d", "outside/", "outside/file"}));
}

TEST_F(PosixLinks, FurtherDownAreNotEntered) {
    bool made = false;
    ASSERT_EQ(target->makeFolder("a/b", made), kOk);
    link("a/b/up", "../../../outside");
    EXPECT_EQ(writeFile(*target, "a/b/up/new", "evil"), kFileOpen);
    EXPECT_EQ(target->makeFolder("a/b/up/c/d", made), kMakeDirectory);
    link("self", ".");
    EXPECT_EQ(writeFile(*target, "self/new", "x"), kFileOpen);
    expectOutsideUntouched();
}

TEST_F(PosixLinks, AreTold) {
    link("file", "../outside/file");
    link("none", "nowhere");
    for (const char* name : {"file", "none"}) {
        const auto there = target->find(name);
        ASSERT_TRUE(there.has_value()) << name;
        EXPECT_EQ(there->kind, ExistingItem::Kind::kLink);
        EXPECT_FALSE(there->readOnly);
    }
}

TEST_F(PosixLinks, AreMade) {
    EXPECT_EQ(target->makeSymbolicLink("a", "b/c", false), kOk);
    EXPECT_EQ(linkAt("a"), "b/c");
    EXPECT_EQ(target->makeSymbolicLink("a", "d", false), kSameNameFile);
    EXPECT_EQ(linkAt("a"), "b/c");
    EXPECT_EQ(target->makeSymbolicLink("a", "d", true), kOk);
    EXPECT_EQ(linkAt("a"), "d");
    ASSERT_EQ(writeFile(*target, "file", "x"), kOk);
    EXPECT_EQ(target->makeSymbolicLink("file", "a", true), kOk);
    EXPECT_EQ(linkAt("file"), "a");
    bool made = false;
    ASSERT_EQ(target->makeFolder("folder", made), kOk);
    EXPECT_EQ(target->makeSymbolicLink("folder", "a", true), kSameNameFile);
    EXPECT_EQ(scratch.names(), (Names{"in/", "in/a", "in/file", "in/folder/", "outside/", "outside/file"}));
}

TEST_F(PosixLinks, MayStandAboveTheTarget) {
    ASSERT_EQ(::symlink("in", (scratch.path() / "way").c_str()), 0);
    const auto other = openTarget(scratch.path() / "way");
    EXPECT_EQ(writeFile(*other, "x", "x"), kOk);
    EXPECT_EQ(scratch.read("in/x"), "x");
}

TEST_F(PosixLinks, HardLinksDoNotFollowThem) {
    link("x", "../outside/file");
    EXPECT_EQ(target->makeHardLink("y", "x", false), kNotExist);
    EXPECT_EQ(target->copyFile("y", "x", false, [] { return true; }), kNotExist);
    EXPECT_FALSE(target->find("y").has_value());
}

TEST_F(PosixLinks, PipesAreNotWrittenTo) {
    ASSERT_EQ(::mkfifo((scratch.path() / "in" / "pipe").c_str(), 0666), 0);
    EXPECT_EQ(writeFile(*target, "pipe", "x"), kSameNameFile);
    EXPECT_EQ(target->copyFile("y", "pipe", false, [] { return true; }), kNotExist);
    EXPECT_EQ(writeFile(*target, "pipe", "x", true), kOk);
    EXPECT_EQ(scratch.read("in/pipe"), "x");
}

TEST_F(PosixLinks, AnAbandonedFileLeavesItsSuccessor) {
    auto file = beginFile(*target, "a", "half");
    ASSERT_TRUE(std::filesystem::remove(scratch.path() / "in" / "a"));
    scratch.write("in/a", "of somebody else");
    file.reset();
    EXPECT_EQ(scratch.read("in/a"), "of somebody else");
}

}  // namespace
}  // namespace archiver
