#pragma once
#include <chrono>
#include <filesystem>

#include "archivers/commands/owner_message.h"
#include "archivers/convention/library_description.h"
#include "archivers/unpacking/unpack_events.h"

namespace archiver {

/// Tells a command's progress to the window or the callback that was set for it; without either nothing is done.
///
/// A callback cancels with a non-zero answer, as a window does; inverted, with 0. Source file is the member's name in
/// the archive, destination what it becomes; before the first member, source is the archive.
class ProgressNotifier {
public:
    using Clock = std::chrono::steady_clock::time_point (*)();

    ProgressNotifier(ProgressOwner owner, const LibraryDescription& library, const TextCodec& codec,
                     bool invertCallback = false, Clock clock = &std::chrono::steady_clock::now) noexcept
        : owner_(owner), library_(library), codec_(codec), invertCallback_(invertCallback), clock_(clock) {}
    ProgressNotifier(const ProgressNotifier&) = delete;
    ProgressNotifier& operator=(const ProgressNotifier&) = delete;

    /// @return false to cancel, here and below
    bool opened(const std::filesystem::path& archive, std::uint64_t size);
    bool begins(const Member& member, const std::filesystem::path& file);
    /// Told at most 20 times a second.
    bool progress(const UnpackProgress& progress);
    /// A new archive takes the old one's place.
    bool replacing(const std::filesystem::path& archive);
    void ended() noexcept;

private:
    [[nodiscard]] bool hasOwner() const noexcept { return owner_.window != nullptr || owner_.callback != nullptr; }
    void fill(const Member& member, const std::filesystem::path& file);
    bool notify(OwnerState state) noexcept;

    ProgressOwner owner_;
    const LibraryDescription& library_;
    const TextCodec& codec_;
    bool invertCallback_;
    Clock clock_;
    std::chrono::steady_clock::time_point last_{};
    const Member* member_ = nullptr;  ///< the one that the record tells of; never looked into
    ExtractingInfoEx info_{};
};

}  // namespace archiver
