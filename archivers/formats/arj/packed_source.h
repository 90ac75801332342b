#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "archivers/formats/arj/part.h"
#include "archivers/formats/input_file.h"

namespace archiver::arj {

/// The packed bytes of one part in order, with the garble taken off.
class PackedSource {
public:
    /// @param password  for a garbled part; without one its bytes come as they are
    PackedSource(const InputFile& file, const Part& part, std::string_view password);

    /// Bytes that are still to come, as the header claims.
    [[nodiscard]] std::uint32_t left() const noexcept { return left_; }

    /// Gives the next bytes.
    /// @return how many: less than `size` only at the end of the part or when reading failed
    std::size_t read(unsigned char* into, std::size_t size) noexcept;

    /// Whether the file ended before the part, or the system reported an error.
    [[nodiscard]] bool failed() const noexcept { return failed_; }

private:
    void ungarble(unsigned char* bytes, std::size_t size) noexcept;

    const InputFile& file_;
    std::uint64_t offset_;
    std::uint32_t left_;
    bool failed_ = false;
    std::string pad_;  ///< what each byte is combined with, over and over; empty for plain data
    std::size_t padAt_ = 0;
};

}  // namespace archiver::arj
