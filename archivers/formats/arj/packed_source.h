#pragma once
#include <cstddef>
#include <string>
#include <string_view>

#include "archivers/formats/arj/part.h"
#include "archivers/formats/huffman_lz/packed_source.h"
#include "archivers/formats/input_file.h"

namespace archiver::arj {

/// The packed bytes of one part in order, with the garble taken off.
class PackedSource final : public huffman_lz::PackedSource {
public:
    /// @param password  for a garbled part; without one its bytes come as they are
    PackedSource(const InputFile& file, const Part& part, std::string_view password);

    std::size_t read(unsigned char* into, std::size_t size) noexcept override;

private:
    void ungarble(unsigned char* bytes, std::size_t size) noexcept;

    std::string pad_;  ///< what each byte is combined with, over and over; empty for plain data
    std::size_t padAt_ = 0;
};

}  // namespace archiver::arj
