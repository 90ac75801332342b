#include "archivers/convention/handle_table.h"

namespace archiver {

HandleTable::~HandleTable() {
    for (const std::atomic<Slot*>& slot : slots_) {
        delete slot.load();
    }
}

ArchiveHandle HandleTable::add(std::unique_ptr<OpenedArchive> archive) {
    const std::lock_guard growing(growing_);
    for (std::uint32_t index = 0; index < kCapacity; ++index) {
        Slot* slot = slots_[index].load(std::memory_order_relaxed);
        if (slot == nullptr) {
            slot = new Slot;
            slots_[index].store(slot, std::memory_order_release);
        } else if (slot->taken.load(std::memory_order_relaxed)) {
            continue;
        }
        const std::lock_guard lock(slot->mutex);
        slot->taken = true;
        slot->archive = std::move(archive);
        return reinterpret_cast<ArchiveHandle>(std::uintptr_t{slot->generation} << kIndexBits | (index + 1));
    }
    return nullptr;
}

HandleTable::Access HandleTable::find(ArchiveHandle handle) {
    Access access;
    const auto value = reinterpret_cast<std::uintptr_t>(handle);
    const std::uintptr_t index = value & kIndexMask;
    if (index == 0 || value > kHighestHandle) {
        return access;
    }
    Slot* slot = slots_[index - 1].load(std::memory_order_acquire);
    if (slot != nullptr) {
        std::unique_lock lock(slot->mutex);
        if (slot->archive != nullptr && slot->generation == value >> kIndexBits) {
            access.lock_ = std::move(lock);
            access.slot_ = slot;
        }
    }
    return access;
}

bool HandleTable::close(ArchiveHandle handle) {
    std::unique_ptr<OpenedArchive> archive;  // goes behind the lock: closing a file may take its time
    const Access access = find(handle);
    if (!access) {
        return false;
    }
    archive = std::move(access.slot_->archive);
    access.slot_->generation = access.slot_->generation % kLastGeneration + 1;
    access.slot_->taken = false;
    return true;
}

}  // namespace archiver
