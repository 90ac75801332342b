#pragma once
#include <cstdint>

#include "archivers/unpacking/target_system.h"
#include "archivers/unpacking/unpack_events.h"

namespace archiver {

/// Sees to it that nothing is begun for which the target's disk has no room, unless the user wants it.
class FreeRoom {
public:
    FreeRoom(TargetFolder& target, UnpackEvents& events) : target_(target), events_(events) {}

    /// Whether as many bytes more fit, as far as the system tells. They are taken for written then.
    bool fits(std::uint64_t bytes);
    /// Whether as many bytes more fit, or may be tried: the user is asked once.
    bool admit(std::uint64_t bytes);

private:
    TargetFolder& target_;
    UnpackEvents& events_;
    std::uint64_t left_ = 0;  ///< surely free; the system is asked again when that is used up
    bool agreed_ = false;     ///< to try whatever comes
};

/// The size to prepare a file for: what the header claims, where the packed bytes could come to that at all.
std::uint64_t plausibleSize(const Member& member) noexcept;

}  // namespace archiver
