#include "archivers/formats/rar/bit_input.h"

#include "archivers/formats/little_endian.h"

namespace archiver::rar {

void BitInput::begin() noexcept {
    piece_ = {};
    bits_ = 0;
    available_ = 0;
    missing_ = 0;
    error_ = kOk;
}

void BitInput::refill() {
    if (piece_.size() >= sizeof(bits_)) {
        // Bits of the last byte that does not fit as a whole come in as well; they are there already when it comes.
        std::uint64_t bytes = 0;
        for (std::size_t at = 0; at < sizeof(bits_); ++at) bytes = bytes << 8 | static_cast<unsigned char>(piece_[at]);
        bits_ |= bytes >> available_;
        const int count = (63 - available_) / 8;
        piece_ = piece_.subspan(static_cast<std::size_t>(count));
        available_ += 8 * count;
        return;
    }
    while (available_ <= 56) {
        if (piece_.empty() && missing_ == 0) {
            error_ = source_.next(piece_);
            if (error_ != kOk) piece_ = {};
        }
        std::uint64_t byte = 0;
        if (!piece_.empty()) {
            byte = static_cast<unsigned char>(piece_.front());
            piece_ = piece_.subspan(1);
        } else if (missing_ <= 64) {
            missing_ += 8;  // more than fit need not be counted: some were taken by then
        }
        bits_ |= byte << (56 - available_);
        available_ += 8;
    }
}

}  // namespace archiver::rar
