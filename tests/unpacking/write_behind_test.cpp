#include "archivers/unpacking/write_behind.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "unpacking/fakes/fake_target.h"

namespace archiver {
namespace {

using test::FakeTarget;

constexpr std::size_t kBlock = WriteBehindFile::kBlock;

class WriteBehind : public testing::Test {
protected:
    WriteBehind() {
        system.open("out", folder);
        folder->createFile("a", 0, true, below);
    }

    /// Begins a file and gives it so many bytes, in pieces. @return what the last write came to
    ReturnCode fill(std::size_t size, std::size_t piece) {
        file = std::make_unique<WriteBehindFile>(below);
        ReturnCode code = kOk;
        for (std::size_t done = 0; done < size && code == kOk; done += piece) {
            std::string bytes(std::min(piece, size - done), ' ');
            for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>('a' + (done + i) % 23);
            code = file->write(bytes);
        }
        return code;
    }

    /// Whether the file holds the first bytes of the row that `fill` writes.
    [[nodiscard]] bool holds(std::size_t size) const {
        const std::string& content = system.item("a").content;
        for (std::size_t i = 0; i < content.size(); ++i) {
            if (content[i] != static_cast<char>('a' + i % 23)) return false;
        }
        return system.item("a").size == size;
    }

    FakeTarget system;
    std::unique_ptr<TargetFolder> folder;
    std::unique_ptr<OutputFile> below;
    std::unique_ptr<OutputFile> file;
};

class WriteBehindSizes : public WriteBehind, public testing::WithParamInterface<std::pair<std::size_t, std::size_t>> {};

TEST_P(WriteBehindSizes, BytesArriveInTheirOrder) {
    const auto [size, piece] = GetParam();
    EXPECT_EQ(fill(size, piece), kOk);
    EXPECT_EQ(file->commit({}), kOk);
    EXPECT_TRUE(holds(size));
    file.reset();
    EXPECT_EQ(system.unfinished, 0);
}

INSTANTIATE_TEST_SUITE_P(Sizes, WriteBehindSizes,
                         testing::Values(std::pair{std::size_t{0}, std::size_t{1}},
                                         std::pair{std::size_t{1}, std::size_t{1}}, std::pair{kBlock - 1, kBlock},
                                         std::pair{kBlock, kBlock}, std::pair{kBlock, kBlock - 1},
                                         std::pair{kBlock + 1, kBlock + 1}, std::pair{20 * kBlock, 7 * kBlock + 5},
                                         std::pair{3 * kBlock + 17, std::size_t{4099}}));

TEST_F(WriteBehind, ErrorIsToldAndNothingStays) {
    system.writable = 2 * kBlock;
    fill(20 * kBlock, kBlock);
    EXPECT_EQ(file->commit({}), kDiskSpace);
    file.reset();
    EXPECT_FALSE(system.has("a"));
    EXPECT_EQ(system.unfinished, 0);
}

TEST_F(WriteBehind, ErrorStopsWhoGoesOnWriting) {
    system.writable = 0;
    // More than can wait: one of the writes must hear of it.
    EXPECT_EQ(fill((WriteBehindFile::kWaitingBlocks + 2) * kBlock, kBlock), kDiskSpace);
    EXPECT_EQ(file->write(std::string(2 * kBlock, 'x')), kDiskSpace);
}

TEST_F(WriteBehind, WithoutCommitThereIsNoFile) {
    EXPECT_EQ(fill(3 * kBlock + 1, kBlock), kOk);
    file.reset();
    EXPECT_FALSE(system.has("a"));
    EXPECT_EQ(system.unfinished, 0);
}

TEST_F(WriteBehind, FileTakesItsPropertiesAtTheEnd) {
    fill(kBlock, kBlock);
    ItemProperties properties;
    properties.webMark = "where from";
    EXPECT_EQ(file->commit(properties), kOk);
    EXPECT_EQ(system.item("a").webMark, "where from");
}

}  // namespace
}  // namespace archiver
