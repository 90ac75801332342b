#include <gtest/gtest.h>

#include "unpacking/fakes/unpack_scene.h"

namespace archiver::test {
namespace {

constexpr std::size_t kMembers = 100'000;

std::vector<FakeMember> manyMembers(std::size_t count) {
    std::vector<FakeMember> members;
    members.reserve(count);
    for (std::size_t number = 0; number < count; ++number) {
        members.push_back(file(nameOf(nameOf("d", number / 100) + "/f", number), "x"));
    }
    return members;
}

TEST(ManyMembers, CostAFewStepsEach) {
    UnpackScene scene(manyMembers(kMembers));
    scene.reader.detaches = true;
    scene.options.threads = 2;
    scene.target.rules = NameRules::kWindows;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.summary.unpacked, kMembers);
    EXPECT_EQ(scene.target.names().size(), kMembers + 1000);
    EXPECT_EQ(scene.reader.nexts, 2 * (kMembers + 1));
    EXPECT_EQ(scene.reader.reads, kMembers);
    EXPECT_EQ(scene.target.files, kMembers);
    EXPECT_EQ(scene.target.folders, 1000U);
    EXPECT_LE(scene.target.finds, 1000U);
}

TEST(ManyMembers, AreLookedForOnceEachWhereFoldersAreOld) {
    UnpackScene scene(manyMembers(20'000));
    for (std::size_t number = 0; number < 200; ++number) scene.target.putFolder(nameOf("d", number));
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.finds, 20'000U);
    EXPECT_EQ(scene.target.folders, 200U);
}

TEST(ManyMembers, FoldersCostAFewStepsEach) {
    std::vector<FakeMember> members;
    for (std::size_t number = 0; number < 20'000; ++number) members.push_back(folder(nameOf("d", number) + "/"));
    UnpackScene scene(std::move(members));
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.folders, 20'000U);
    EXPECT_EQ(scene.target.propertiesSet.size(), 20'000U);
}

TEST(ManyMembers, OfOneDeepFolderDoNotClimbItEachTime) {
    std::string deep;
    for (int depth = 0; depth < 100; ++depth) deep += "d/";
    std::vector<FakeMember> members;
    for (std::size_t number = 0; number < 1000; ++number) members.push_back(file(nameOf(deep, number), "x"));
    UnpackScene scene(std::move(members));
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.folders, 100U);
}

}  // namespace
}  // namespace archiver::test
