#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

namespace archiver {

/// What a run has put, or is about to put, at a name.
enum class NameUse : std::uint8_t {
    kFree,
    kFolder,
    kNewFolder,  ///< made by this run: nothing is in it but what the run puts there
    kPlanned,    ///< a file that is not, or perhaps never will be, there
    kWritten,    ///< a file that is there
    kLink,       ///< a symbolic link, to be made at the end
};

/// The names of one run by their hashes, 16 bytes a name: an archive of a million members is nothing special.
class TakenNames {
public:
    struct Taken {
        NameUse use = NameUse::kFree;
        bool sameName = false;  ///< taken by a member of the very same name, not by one that only becomes the same file
    };

    /// @param place   hash of the name where letters' case is as the target takes it
    /// @param member  hash of the name as the archive has it
    [[nodiscard]] Taken find(std::uint64_t place, std::uint64_t member) const noexcept;
    void take(std::uint64_t place, std::uint64_t member, NameUse use);
    /// Of a place that is taken.
    void setUse(std::uint64_t place, NameUse use) noexcept;

private:
    struct Slot {
        std::uint64_t place = 0;
        std::uint64_t member = 0;  ///< its lowest bits hold the use
    };
    [[nodiscard]] std::size_t slotOf(std::uint64_t place) const noexcept;
    void grow();

    std::vector<Slot> slots_;  ///< a power of two of them, at most half of them used
    std::size_t used_ = 0;
};

}  // namespace archiver
