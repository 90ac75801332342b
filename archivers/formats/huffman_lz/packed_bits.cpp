#include "archivers/formats/huffman_lz/packed_bits.h"

namespace archiver::huffman_lz {

void PackedBits::append(const PackedBits& other) {
    if (count_ == 0) {
        bytes_ += other.bytes_;
    } else {
        bytes_.reserve(bytes_.size() + other.bytes_.size());
        for (const char byte : other.bytes_) put(static_cast<unsigned char>(byte), 8);
    }
    put(other.pending_ & ((1U << other.count_) - 1), other.count_);
}

}  // namespace archiver::huffman_lz
