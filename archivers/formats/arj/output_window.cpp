#include "archivers/formats/arj/output_window.h"

#include <algorithm>

#include "archivers/formats/arj/checksum.h"

namespace archiver::arj {

OutputWindow::OutputWindow() : buffer_(std::make_unique<unsigned char[]>(kHistory + kRun + kSlack)) {}

void OutputWindow::start(std::uint64_t size, const DataSink& sink) noexcept {
    sink_ = &sink;
    at_ = given_ = buffer_.get();
    left_ = size;
    crc_ = 0;
    setLimit();
}

void OutputWindow::setLimit() noexcept {
    unsigned char* const end = buffer_.get() + kHistory + kRun;
    limit_ = given_ + std::min<std::uint64_t>(left_, static_cast<std::uint64_t>(end - given_));
}

/// Gives all bytes up to `at_` to the sink and makes room behind them.
bool OutputWindow::give() {
    const auto size =
        static_cast<std::size_t>(std::min<std::uint64_t>(static_cast<std::uint64_t>(at_ - given_), left_));
    crc_ = crc32Of(crc_, given_, size);
    left_ -= size;
    const bool goOn = size == 0 || (*sink_)(reinterpret_cast<const char*>(given_), size);
    unsigned char* const begin = buffer_.get();
    if (at_ - begin > static_cast<std::ptrdiff_t>(kHistory)) {
        std::memmove(begin, at_ - kHistory, kHistory);
        at_ = begin + kHistory;
    }
    given_ = at_;
    setLimit();
    return goOn;
}

}  // namespace archiver::arj
