#pragma once
#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>

#include "archivers/convention/abi.h"
#include "archivers/convention/opened_archive.h"

namespace archiver {

/// The open archives of a library by their handles. A handle is a number, a place in the table and the count of
/// archives that had the place before; it is looked up and never used as an address, so a stale or invented one does no
/// harm.
class HandleTable {
    struct Slot {
        std::mutex mutex;  ///< held during a call for the archive
        std::atomic<bool> taken = false;
        std::uint32_t generation = 1;
        std::unique_ptr<OpenedArchive> archive;
    };

public:
    HandleTable() = default;
    HandleTable(const HandleTable&) = delete;
    HandleTable& operator=(const HandleTable&) = delete;
    ~HandleTable();

    /// Keeps others away from an archive while it is used.
    class Access {
    public:
        Access() = default;
        explicit operator bool() const noexcept { return slot_ != nullptr; }
        OpenedArchive& operator*() const noexcept { return *slot_->archive; }
        OpenedArchive* operator->() const noexcept { return slot_->archive.get(); }

    private:
        friend class HandleTable;
        std::unique_lock<std::mutex> lock_;
        Slot* slot_ = nullptr;
    };

    /// @return null when too many archives are open
    ArchiveHandle add(std::unique_ptr<OpenedArchive> archive);
    /// @return nothing for a handle that is not open. Waits for a call of another thread on the same handle.
    [[nodiscard]] Access find(ArchiveHandle handle);
    /// @return false for a handle that is not open
    bool close(ArchiveHandle handle);

private:
    static constexpr std::uint32_t kIndexBits = 12;
    static constexpr std::uint32_t kIndexMask = (1U << kIndexBits) - 1;
    static constexpr std::uint32_t kHighestHandle = 0x7FFFFFFF;  ///< callers may read handles as signed numbers
    static constexpr std::uint32_t kLastGeneration = kHighestHandle >> kIndexBits;
    static constexpr std::size_t kCapacity = kIndexMask;  ///< the index in a handle counts from 1: none is null

    std::mutex growing_;                                 ///< held while a slot is taken
    std::array<std::atomic<Slot*>, kCapacity> slots_{};  ///< made when first needed, kept until the table goes
};

}  // namespace archiver
