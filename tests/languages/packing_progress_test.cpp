#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

#include "languages/support/library_run.h"

/// What the libraries tell the callback of an owner window while they pack.
namespace archiver {
namespace {

using testing::Files;
using testing::filesBelow;
using testing::LibraryRun;

struct Told {
    std::vector<std::uint32_t> states;                           ///< but for those of a member's bytes
    std::vector<std::string> sources;                            ///< of the members that began
    std::vector<std::string> replaced;                           ///< archives
    std::vector<std::pair<std::uint32_t, std::uint32_t>> bytes;  ///< of a member's bytes: done and of how many
    std::int32_t cancelAt = -1;                                  ///< the state that is answered with "cancel"
    bool slow = false;                                           ///< answers so late that the next call is due at once
};
Told told;

Bool ARCHIVER_CALL watch(WindowHandle, std::uint32_t, std::uint32_t state, ExtractingInfoEx* info) {
    constexpr std::uint32_t kBegin = 0, kInProcess = 1, kCopy = 4;
    if (state == kInProcess) {
        told.bytes.emplace_back(info->info.writeSize, info->info.fileSize);
    } else {
        told.states.push_back(state);
    }
    if (state == kBegin) told.sources.emplace_back(info->info.sourceFileName);
    if (state == kCopy) told.replaced.emplace_back(info->info.destFileName);
    const auto due = std::chrono::steady_clock::now() + std::chrono::milliseconds(60);
    while (told.slow && std::chrono::steady_clock::now() < due) continue;
    return static_cast<std::int32_t>(state) == told.cancelAt ? 1 : 0;
}

struct Packer {
    const char* library;
    const char* prefix;
    const char* line;  ///< packs, with the base folder and the names behind it
    char separator;
};

class PackingProgress : public ::testing::TestWithParam<Packer> {
protected:
    void SetUp() override {
        told = {};
        run.scratch.write("base/one", "1");
        run.scratch.write("base/docs/text", std::string(100000, 't'));
        archive = run.scratch.write("made.bin", "");
        std::filesystem::remove(archive);
        run.archive = archive.string();
        Bool set = run.library().call<fn::SetOwnerWindowEx>("SetOwnerWindowEx", this, &watch);
        ASSERT_EQ(set, 1);
    }

    std::int32_t pack(const std::string& names) {
        std::filesystem::path base = run.scratch.path() / "base" / "";
        return run(GetParam().line + (" \"" + base.make_preferred().string()) + "\" " + names);
    }

    [[nodiscard]] std::string sourceOf(const char* name) const {
        std::string path = (run.scratch.path() / "base" / name).make_preferred().string();
        // Names have the library's own separators, also those of files.
        if (GetParam().separator == '\\') std::ranges::replace(path, '/', '\\');
        return path;
    }

    LibraryRun run{GetParam().library, GetParam().prefix};
    std::filesystem::path archive;
};

TEST_P(PackingProgress, TellsOfEachStep) {
    EXPECT_EQ(pack("one docs"), 0) << run.text();
    EXPECT_EQ(told.states, (std::vector<std::uint32_t>{3, 0, 0, 4, 2})) << "open, begin twice, copy, end";
    EXPECT_EQ(told.sources, (std::vector<std::string>{sourceOf("one"), sourceOf("docs/text")}));
    EXPECT_EQ(told.replaced, std::vector<std::string>{run.archive});
}

TEST_P(PackingProgress, TellsOfBytes) {
    told.slow = true;
    EXPECT_EQ(pack("docs"), 0) << run.text();
    ASSERT_GE(told.bytes.size(), 2U);
    EXPECT_TRUE(std::ranges::is_sorted(told.bytes));
    for (const auto& [done, size] : told.bytes) EXPECT_EQ(size, 100000U);
    EXPECT_EQ(told.bytes.front().first, 0U);
    EXPECT_EQ(told.bytes.back().first, 100000U);
}

TEST_P(PackingProgress, CancelsAtAnyStep) {
    ASSERT_EQ(pack("one"), 0) << run.text();
    const Files before = filesBelow(run.scratch.path());
    for (const std::int32_t state : {3, 0, 1, 4}) {
        SCOPED_TRACE(state);
        told = {};
        told.cancelAt = state;
        told.slow = state == 1;
        EXPECT_EQ(pack("one docs"), 0x8020);
        EXPECT_NE(run.text(), "");
        EXPECT_EQ(told.states.back(), 2U) << "the end is told also then";
        EXPECT_EQ(filesBelow(run.scratch.path()), before) << "the old archive, and nothing beside it";
    }
}

INSTANTIATE_TEST_SUITE_P(Libraries, PackingProgress,
                         ::testing::Values(Packer{"UnLha32", "Unlha", "a -r2 -x1  ARC", '/'},
                                           Packer{"Cab32", "Cab", "-a -mz -k -r  ARC", '\\'}),
                         [](const auto& each) { return std::string(each.param.library); });

}  // namespace
}  // namespace archiver
