#include "archivers/infozip32/messages_pump.h"

namespace archiver::infozip {

void pumpMessages() noexcept {}

}  // namespace archiver::infozip
