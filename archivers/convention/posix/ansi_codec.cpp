#include "archivers/convention/text_codec.h"

namespace archiver {

const TextCodec& ansiCodec() noexcept { return utf8Codec(); }

}  // namespace archiver
