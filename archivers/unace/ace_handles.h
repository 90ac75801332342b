#pragma once
#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

#include "archivers/unace/ace_archive.h"

namespace archiver::unace {

/// The open archives by their handles. A handle is a number that is looked up and never used as an address: a stale or
/// invented one does no harm.
class AceHandles {
    struct Entry {
        explicit Entry(std::unique_ptr<AceArchive> opened) : archive(std::move(opened)) {}
        std::unique_ptr<AceArchive> archive;
        std::atomic_flag busy;
    };

public:
    /// The archive, for one call. A callback that calls for the archive it comes from finds it busy.
    class Use {
    public:
        Use() = default;
        explicit Use(std::shared_ptr<Entry> entry) : entry_(std::move(entry)) {}
        ~Use() {
            if (entry_) entry_->busy.clear();
        }
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;
        explicit operator bool() const noexcept { return entry_ != nullptr; }
        AceArchive* operator->() const noexcept { return entry_->archive.get(); }

    private:
        std::shared_ptr<Entry> entry_;
    };

    ArchiveHandle add(std::unique_ptr<AceArchive> archive) {
        const std::lock_guard lock(mutex_);
        do {
            last_ = last_ % kHighest + 1;
        } while (open_.contains(last_));
        open_.emplace(last_, std::make_shared<Entry>(std::move(archive)));
        return reinterpret_cast<ArchiveHandle>(std::uintptr_t{last_});
    }

    /// @return nothing for a handle that is not open, or in use
    [[nodiscard]] Use use(ArchiveHandle handle) {
        const std::lock_guard lock(mutex_);
        const auto found = open_.find(reinterpret_cast<std::uintptr_t>(handle));
        if (found == open_.end() || found->second->busy.test_and_set()) return Use();
        return Use(found->second);
    }

    /// An archive in use stays until its call is over.
    /// @return false for a handle that is not open
    bool close(ArchiveHandle handle) {
        std::shared_ptr<Entry> entry;  // goes behind the lock: closing a file may take its time
        const std::lock_guard lock(mutex_);
        const auto found = open_.find(reinterpret_cast<std::uintptr_t>(handle));
        if (found == open_.end()) return false;
        entry = std::move(found->second);
        open_.erase(found);
        return true;
    }

private:
    static constexpr std::uint32_t kHighest = 0x7FFFFFFF;  ///< callers may read handles as signed numbers

    std::mutex mutex_;
    std::map<std::uintptr_t, std::shared_ptr<Entry>> open_;
    std::uint32_t last_ = 0;
};

}  // namespace archiver::unace
