#include "archivers/formats/rar/bit_input.h"

namespace archiver::rar {

void BitInput::begin() noexcept {
    piece_ = {};
    bits_ = 0;
    available_ = 0;
    missing_ = 0;
    error_ = kOk;
}

void BitInput::refill() {
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
