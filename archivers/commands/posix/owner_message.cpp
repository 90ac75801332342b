#include "archivers/commands/owner_message.h"

namespace archiver {

std::uint32_t ownerMessage() noexcept { return 0; }

bool sendOwnerMessage(WindowHandle, OwnerState, ExtractingInfo*) noexcept { return false; }

}  // namespace archiver
