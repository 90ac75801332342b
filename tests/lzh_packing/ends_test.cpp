#include <cstdlib>

#include "lzh_packing/support/packing_fixture.h"

/// Changes that do not come to their end: cancelled, or with the whole process.
namespace archiver::test {
namespace {

using Names = std::vector<std::string>;

class LzhEnds : public LzhPackingTest {
protected:
    void SetUp() override {
        source("a", textOf(3000));
        source("b", randomBytes(2000));
        source("c", "c");
        ASSERT_EQ(run("a ARC BASE a b c"), kOk);
        old_ = archiveBytes();
        reset();
    }

    void reset() {
        folder_.write("a.lzh", old_);
        source("a", textOf(3000));
        source("b", textOf(size_));
        source("d", randomBytes(size_, 3));
    }

    std::size_t size_ = 4000;
    std::string old_;
};

TEST_F(LzhEnds, CancelledAnywhereChangesNothing) {
    ASSERT_EQ(run("m ARC BASE b d", 1), kOk);
    const long calls = events_.calls;
    reset();
    // Waiting for a piece tells of itself as often as it takes: the number of calls differs from run to run.
    long cancelled = 0;
    for (long at = 0; at < calls; ++at) {
        events_ = {};
        events_.cancelledAt = at;
        const ReturnCode code = run("m ARC BASE b d", 2);
        if (events_.calls <= at) {
            reset();
            continue;
        }
        ++cancelled;
        ASSERT_EQ(code, kUserCancel) << at;
        ASSERT_TRUE(archiveBytes() == old_) << at;
        ASSERT_EQ(sources(), (Names{"a", "b", "c", "d"})) << at;
        ASSERT_EQ(beside(), (Names{"a.lzh", "base"})) << at;
    }
    EXPECT_GT(cancelled, 10);
}

/// What an archive holds, or that it is none.
std::string shapeOf(const std::filesystem::path& archive) {
    std::error_code error;
    return std::filesystem::exists(archive, error) ? readFile(archive) : "none";
}

class LzhKilled : public LzhEnds, public testing::WithParamInterface<const char*> {
protected:
    LzhKilled() { size_ = 300000; }  // of two pieces, one of them read a second time
};

TEST_P(LzhKilled, LeavesTheOldOrTheNewArchive) {
    EndingFiles unending;
    ASSERT_EQ(run(GetParam(), unending), kOk);
    const std::string whole = shapeOf(archive_);
    const long steps = unending.done();
    ASSERT_NE(whole, old_);
    reset();
    // Each write has a place of its own where a change is made of many; all of them in a long run.
    const long stride = std::getenv("TOVAREX_LONG_TESTS") != nullptr ? 1 : steps / 20 + 1;
    for (long point = 0; point < steps; point += stride) {
        EndingFiles ending(point);
        static_cast<void>(run(GetParam(), ending));
        ASSERT_TRUE(ending.ended());
        const std::string found = shapeOf(archive_);
        ASSERT_TRUE(found == old_ || found == whole) << "after " << point << " of " << steps;
        // No source may be missing of which there is no copy.
        for (const char* name : {"a", "b", "d"}) {
            ASSERT_TRUE(found == whole || std::filesystem::exists(base_ / name)) << name;
        }
        for (const std::string& name : beside()) {
            if (name != "a.lzh" && name != "base") std::filesystem::remove(folder_.path() / name);
        }
        reset();
    }
}

INSTANTIATE_TEST_SUITE_P(Lines, LzhKilled,
                         testing::Values("a ARC BASE b d", "m ARC BASE b d", "d ARC a c", "d ARC *.*"),
                         [](const auto& each) { return "Line" + std::to_string(each.index); });

}  // namespace
}  // namespace archiver::test
