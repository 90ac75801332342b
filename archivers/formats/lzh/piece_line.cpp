#include "archivers/formats/lzh/piece_line.h"

#include <algorithm>
#include <memory>
#include <new>
#include <span>
#include <system_error>

#include "archivers/formats/huffman_lz/block_encoder.h"

namespace archiver::lzh {

PieceLine::PieceLine(const huffman_lz::BlockShape& shape, unsigned threads)
    : shape_(shape),
      threads_(std::clamp(threads == 0 ? std::thread::hardware_concurrency() : threads, 1U, kMostThreads)) {}

PieceLine::~PieceLine() {
    {
        const std::lock_guard lock(mutex_);
        closing_ = true;
    }
    todoChanged_.notify_all();
    for (std::thread& worker : workers_) worker.join();
}

void PieceLine::put(Piece& piece) {
    const std::lock_guard lock(mutex_);
    // So that nothing a worker does without an error can fail.
    done_.reserve(done_.size() + todo_.size() + workers_.size() + 2);
    todo_.push_back(&piece);
    if (idle_ < todo_.size() && workers_.size() < threads_) {
        try {
            workers_.emplace_back([this] { work(); });
        } catch (const std::system_error&) {
            if (workers_.empty()) {
                // The caller's own has to do.
                todo_.clear();
                huffman_lz::BlockEncoder(shape_).encode(piece.bytes, piece.history, piece.bits);
                done_.emplace_back(&piece, State::kDone);
                return;
            }
        }
    }
    todoChanged_.notify_one();
}

bool PieceLine::waitFor(const Piece& piece, std::chrono::milliseconds longest) {
    std::unique_lock lock(mutex_);
    auto found = done_.end();
    const auto isDone = [&] {
        found = std::ranges::find(done_, &piece, &std::pair<const Piece*, State>::first);
        return found != done_.end();
    };
    if (!doneChanged_.wait_for(lock, longest, isDone)) return false;
    const State state = found->second;
    done_.erase(found);
    if (state == State::kFailed) throw std::bad_alloc();
    return true;
}

void PieceLine::work() {
    std::unique_ptr<huffman_lz::BlockEncoder> encoder;
    std::unique_lock lock(mutex_);
    for (;;) {
        ++idle_;
        todoChanged_.wait(lock, [this] { return closing_ || !todo_.empty(); });
        --idle_;
        if (closing_) return;
        Piece& piece = *todo_.front();
        todo_.pop_front();
        lock.unlock();
        State state = State::kDone;
        try {
            if (!encoder) encoder = std::make_unique<huffman_lz::BlockEncoder>(shape_);
            encoder->encode(piece.bytes, piece.history, piece.bits);
        } catch (...) {
            state = State::kFailed;
        }
        lock.lock();
        done_.emplace_back(&piece, state);  // within what put() reserved
        doneChanged_.notify_one();
    }
}

}  // namespace archiver::lzh
