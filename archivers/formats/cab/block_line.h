#pragma once
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

#include "archivers/formats/cab/block_packer.h"

namespace archiver::cab {

/// Packs the blocks of a cabinet on several threads, and gives them back in their order. Everything but the packing
/// happens on the one thread that calls; that there are threads shows only in the time it takes.
class BlockLine {
public:
    /// @param threads  at most so many that pack; 0: as many as there are processors. Where a thread cannot be had it
    ///                 packs with those that there are, and without any on the caller's.
    BlockLine(CabinetMethod method, unsigned threads);
    /// Gives up what is not packed, and waits for its threads.
    ~BlockLine();
    BlockLine(const BlockLine&) = delete;
    BlockLine& operator=(const BlockLine&) = delete;

    /// The next block's content.
    /// @param content  1 to 32,768 bytes, as BlockPacker has it
    /// @param firstOfFolder  it stands on no block before
    void put(std::span<const char> content, bool firstOfFolder);

    /// Whether a block has to be taken before another is put.
    [[nodiscard]] bool full() const noexcept { return waiting_.size() >= most_; }
    [[nodiscard]] bool empty() const noexcept { return waiting_.empty(); }

    /// Waits for the block that was put first, and takes it. Not when there is none.
    /// @return its bytes, which are good until the next call
    /// @throws std::bad_alloc when packing ran out of memory
    [[nodiscard]] std::span<const char> take();

private:
    struct Job {
        std::shared_ptr<const std::vector<char>> content, before;
        std::vector<char> block;
        bool done = false;
        bool failed = false;
    };

    void work();
    void pack(BlockPacker& packer, Job& job) const noexcept;

    CabinetMethod method_;
    std::size_t most_ = 1;
    std::deque<std::unique_ptr<Job>> waiting_;  ///< in their order, for the caller's thread alone
    std::unique_ptr<Job> taken_;
    std::shared_ptr<const std::vector<char>> last_;
    BlockPacker own_;  ///< for the caller's thread

    std::mutex mutex_;
    std::condition_variable todoChanged_, doneChanged_;
    std::deque<Job*> todo_;
    bool closing_ = false;
    std::vector<std::thread> workers_;  ///< the last member: they use the others
};

}  // namespace archiver::cab
