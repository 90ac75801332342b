#include "archivers/convention/password_memory.h"

#include <gtest/gtest.h>

namespace archiver {
namespace {

const ArchiveStamp kArchive{"a.zip", 100, Moment{7, 5}};

TEST(PasswordMemory, KnowsNothingAtFirst) {
    PasswordMemory memory;
    EXPECT_EQ(memory.find(kArchive), "");
    EXPECT_EQ(memory.find({}), "");
}

TEST(PasswordMemory, RemembersTheLastArchive) {
    PasswordMemory memory;
    memory.keep(kArchive, "secret");
    EXPECT_EQ(memory.find(kArchive), "secret");
    EXPECT_EQ(memory.find(kArchive), "secret");
    memory.keep({"b.zip", 100, Moment{7, 5}}, "other");
    EXPECT_EQ(memory.find(kArchive), "") << "one archive at a time";
    EXPECT_EQ(memory.find({"b.zip", 100, Moment{7, 5}}), "other");
}

TEST(PasswordMemory, IsOfTheArchiveAsItWas) {
    PasswordMemory memory;
    memory.keep(kArchive, "secret");
    EXPECT_EQ(memory.find({"b.zip", 100, Moment{7, 5}}), "");
    EXPECT_EQ(memory.find({"a.zip", 101, Moment{7, 5}}), "");
    EXPECT_EQ(memory.find({"a.zip", 100, Moment{8, 5}}), "");
    EXPECT_EQ(memory.find({"a.zip", 100, Moment{7, 6}}), "");
    EXPECT_EQ(memory.find({"a.zip", 100, std::nullopt}), "");
    memory.keep({"c.zip", 1, std::nullopt}, "secret");
    EXPECT_EQ(memory.find({"c.zip", 1, std::nullopt}), "") << "it may have changed";
}

}  // namespace
}  // namespace archiver
