#pragma once
#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "archivers/formats/ace/lz77.h"

namespace archiver::ace {

/// What is known of pixels in one kind of neighbourhood.
struct PictureContext {
    std::uint32_t used = 0, average = 4;
    std::uint8_t predictor = 0;
    std::array<std::uint32_t, 4> errors{};  ///< of each predictor
};

/// Unpacks the picture mode: rows of pixels, plane by plane, each pixel predicted from its neighbours.
class Picture {
public:
    /// Starts with fresh state and reads what stands in front of the rows.
    /// @return kOk, or kFileCrc for measures that no picture has
    ReturnCode start(BitReader& reader);

    /// Makes the next row.
    /// @return one row, good until the next call; or a mode change and no bytes
    Run decode(BitReader& reader);

private:
    static constexpr std::size_t kContexts = 365;
    using Contexts = std::array<PictureContext, kContexts>;

    bool readPlane(BitReader& reader, std::size_t plane, unsigned kind);

    std::size_t width_ = 0, planes_ = 0;
    std::vector<std::uint8_t> row_, previous_;  ///< one row, and zeros behind it
    std::array<Contexts, 2> contexts_;          ///< of the first plane, and of all others
};

}  // namespace archiver::ace
