#pragma once
#include <cstdint>
#include <string>
#include <utility>

namespace archiver::test {

/// Bits, the highest of each byte first.
class BitOutput {
public:
    void put(std::uint32_t value, int count) {
        for (int bit = count - 1; bit >= 0; --bit) {
            if (free_ == 0) {
                bytes_ += '\0';
                free_ = 8;
            }
            --free_;
            bytes_.back() = static_cast<char>(bytes_.back() | static_cast<char>((value >> bit & 1) << free_));
        }
    }
    void align() { free_ = 0; }
    void append(const std::string& bytes) {
        align();
        bytes_ += bytes;
    }
    /// The bytes so far; there are none afterwards.
    std::string take() {
        free_ = 0;
        return std::exchange(bytes_, {});
    }

private:
    std::string bytes_;
    int free_ = 0;
};

}  // namespace archiver::test
