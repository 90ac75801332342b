#pragma once
#include <windows.h>

#include <optional>
#include <string>

namespace tovar {

/// @return a copy of what a block of global memory holds, its rounded-up end included; nullopt for none, and for a
///         handle that is not this process's
[[nodiscard]] inline std::optional<std::string> bytesOf(HGLOBAL memory) {
    struct Locked {
        HGLOBAL memory;
        const void* bytes = memory != nullptr ? ::GlobalLock(memory) : nullptr;
        ~Locked() {
            if (bytes != nullptr) ::GlobalUnlock(memory);
        }
    };
    const Locked locked{memory};
    if (locked.bytes == nullptr) return std::nullopt;
    return std::string(static_cast<const char*>(locked.bytes), ::GlobalSize(memory));
}

}  // namespace tovar
