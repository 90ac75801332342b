#include "archivers/formats/huffman_lz/output_window.h"

#include <algorithm>

namespace archiver::huffman_lz {

void OutputWindow::start(std::uint64_t size, const WindowKind& kind, const DataSink& sink) {
    if (capacity_ < kind.history) {
        buffer_ = std::make_unique<unsigned char[]>(kind.history + kRun + kSlack);
        capacity_ = kind.history;
    }
    history_ = kind.history;
    checksum_ = kind.checksum;
    sink_ = &sink;
    at_ = buffer_.get();
    if (kind.before) {
        std::memset(at_, *kind.before, history_);
        at_ += history_;
    }
    given_ = at_;
    left_ = size;
    sum_ = 0;
    setLimit();
}

void OutputWindow::setLimit() noexcept {
    unsigned char* const end = buffer_.get() + history_ + kRun;
    limit_ = given_ + std::min<std::uint64_t>(left_, static_cast<std::uint64_t>(end - given_));
}

/// Gives all bytes up to `at_` to the sink and makes room behind them.
bool OutputWindow::give() {
    const auto size =
        static_cast<std::size_t>(std::min<std::uint64_t>(static_cast<std::uint64_t>(at_ - given_), left_));
    sum_ = checksum_(sum_, given_, size);
    left_ -= size;
    const bool goOn = size == 0 || (*sink_)(reinterpret_cast<const char*>(given_), size);
    unsigned char* const begin = buffer_.get();
    if (at_ - begin > static_cast<std::ptrdiff_t>(history_)) {
        std::memmove(begin, at_ - history_, history_);
        at_ = begin + history_;
    }
    given_ = at_;
    setLimit();
    return goOn;
}

}  // namespace archiver::huffman_lz
