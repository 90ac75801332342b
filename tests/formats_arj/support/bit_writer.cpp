#include "formats_arj/support/bit_writer.h"

namespace archiver::test {

BitWriter& BitWriter::put(std::uint32_t value, int bits) {
    for (int bit = bits - 1; bit >= 0; --bit) {
        if (used_ == 8) {
            bytes_ += '\0';
            used_ = 0;
        }
        if ((value >> bit & 1) != 0) bytes_.back() = static_cast<char>(bytes_.back() | 0x80 >> used_);
        ++used_;
    }
    return *this;
}

BitWriter& BitWriter::put(std::string_view spelled) {
    for (const char each : spelled) {
        if (each != ' ') put(each == '1' ? 1 : 0, 1);
    }
    return *this;
}

}  // namespace archiver::test
