#pragma once
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "archivers/formats/huffman_lz/block_shape.h"
#include "archivers/formats/huffman_lz/packed_bits.h"

namespace archiver::lzh {

/// Some of a member's bytes, to be packed or packed.
struct Piece {
    std::vector<unsigned char> bytes;
    std::size_t history = 0;      ///< so many of them, at the beginning, belong to pieces before
    huffman_lz::PackedBits bits;  ///< of the others, when done

    [[nodiscard]] std::size_t size() const noexcept { return bytes.size() - history; }
};

/// Packs pieces on several threads. Everything but the packing happens on the one thread that calls; that there are
/// threads shows only in the time it takes, as pieces have all they need with them.
class PieceLine {
public:
    /// @param threads  that pack, at most kMostThreads; 0: as many as there are processors. Each starts when there is
    ///                 work for it; where none can be had it packs on the caller's
    PieceLine(const huffman_lz::BlockShape& shape, unsigned threads);
    /// Gives up what is not packed, and waits for its threads.
    ~PieceLine();
    PieceLine(const PieceLine&) = delete;
    PieceLine& operator=(const PieceLine&) = delete;

    static constexpr unsigned kMostThreads = 16;

    /// Pieces that keep every thread at work while the caller reads and writes.
    [[nodiscard]] std::size_t capacity() const noexcept { return std::size_t{threads_} * 2 + 1; }

    /// @param piece  outlives this, or its `waitFor`
    void put(Piece& piece);

    /// @return whether it is done
    /// @throws std::bad_alloc when packing it ran out of memory
    bool waitFor(const Piece& piece, std::chrono::milliseconds longest);

private:
    enum class State : char { kDone, kFailed };
    void work();

    huffman_lz::BlockShape shape_;
    unsigned threads_;
    std::mutex mutex_;
    std::condition_variable todoChanged_, doneChanged_;
    std::deque<Piece*> todo_;
    std::vector<std::pair<const Piece*, State>> done_;  ///< and not yet waited for
    std::size_t idle_ = 0;
    bool closing_ = false;
    std::vector<std::thread> workers_;  ///< the last member: they use the others
};

}  // namespace archiver::lzh
