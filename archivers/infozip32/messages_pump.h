#pragma once

namespace archiver::infozip {

/// Lets the windows of the calling thread go on, while it waits for other cores. Implemented in win32/ and posix/.
void pumpMessages() noexcept;

}  // namespace archiver::infozip
