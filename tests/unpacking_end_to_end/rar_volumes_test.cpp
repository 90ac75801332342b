// Sets of RAR volumes that are not whole, through the exported functions.

#include <gtest/gtest.h>

#include "formats_rar/support/rar_builder.h"
#include "languages/support/library_run.h"

namespace archiver::testing {
namespace {

using test::newRar;
using test::NewRarFile;
using test::oldRar;
using test::OldRarFile;

constexpr char kFolder[] = "rar-volumes";

TEST(MissingVolume, OfOldRar) {
    LibraryRun run("UnRar32", "Unrar", kFolder);
    constexpr std::uint16_t kVolume = 0x0001, kAfter = 0x0002;
    const OldRarFile split{.name = "split", .content = "abcdef", .packed = "abc", .flags = kAfter};
    run.archive =
        run.scratch.write("set.rar", oldRar({{.name = "one", .content = "1"}, split}, kVolume, true)).string();
    EXPECT_EQ(run("x ARC OUT"), 0x8018) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"one", "1"}}));
    EXPECT_NE(run.text().find("Extracting split   the archive cannot be opened"), std::string::npos) << run.text();
}

TEST(MissingVolume, OfNewRar) {
    LibraryRun run("UnRar32", "Unrar", kFolder);
    constexpr std::uint64_t kAfter = 0x10;
    const NewRarFile split{.name = "split", .content = "abcdef", .packed = "abc", .blockFlags = kAfter};
    run.archive =
        run.scratch.write("set.part1.rar", newRar({{.name = "one", .content = "1"}, split}, 1, 0, true)).string();
    EXPECT_EQ(run("x ARC OUT"), 0x8018) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"one", "1"}}));
    EXPECT_NE(run.text().find("Extracting split   the archive cannot be opened"), std::string::npos) << run.text();
}

}  // namespace
}  // namespace archiver::testing
