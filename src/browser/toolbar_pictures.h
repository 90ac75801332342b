#pragma once
#include <cstdint>
#include <vector>

#include "browser/browser_commands.h"

namespace tovar {

/// Draws the picture of a toolbar's button (`Add`, `Extract`, `GoUp`), sharp at every size.
/// @param size  width and height in pixels, 1 to 1024
/// @return the pixels row by row from the top, each 0xAARRGGBB, colours not multiplied by the opacity; empty for a
///         command without a picture or a size out of range
[[nodiscard]] std::vector<std::uint32_t> drawToolbarPicture(BrowserCommand command, int size);

}  // namespace tovar
