#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace archiver::test {

/// Writes bits, the highest of each byte first.
class BitWriter {
public:
    /// Writes a number.
    BitWriter& put(std::uint32_t value, int bits);
    /// Writes bits as they are spelled: "110 01"; blanks are left out.
    BitWriter& put(std::string_view spelled);

    /// What was written, filled up with zero bits to whole bytes.
    [[nodiscard]] const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
    int used_ = 8;  ///< bits of the last byte
};

}  // namespace archiver::test
