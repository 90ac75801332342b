#include "archivers/unpacking/taken_names.h"

#include <utility>

namespace archiver {
namespace {

constexpr std::uint64_t kUseMask = 7;
constexpr std::size_t kFirstSlots = 64;

NameUse useOf(std::uint64_t member) noexcept { return static_cast<NameUse>(member & kUseMask); }

std::uint64_t withUse(std::uint64_t member, NameUse use) noexcept {
    return (member & ~kUseMask) | static_cast<std::uint64_t>(use);
}

}  // namespace

std::size_t TakenNames::slotOf(std::uint64_t place) const noexcept {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = static_cast<std::size_t>(place) & mask;
    while (useOf(slots_[at].member) != NameUse::kFree && slots_[at].place != place) at = (at + 1) & mask;
    return at;
}

TakenNames::Taken TakenNames::find(std::uint64_t place, std::uint64_t member) const noexcept {
    if (slots_.empty()) return {};
    const Slot& slot = slots_[slotOf(place)];
    const NameUse use = useOf(slot.member);
    return {use, use != NameUse::kFree && ((slot.member ^ member) & ~kUseMask) == 0};
}

void TakenNames::take(std::uint64_t place, std::uint64_t member, NameUse use) {
    if (used_ * 2 >= slots_.size()) grow();
    Slot& slot = slots_[slotOf(place)];
    if (useOf(slot.member) == NameUse::kFree) ++used_;
    slot = {place, withUse(member, use)};
}

void TakenNames::setUse(std::uint64_t place, NameUse use) noexcept {
    if (slots_.empty()) return;
    Slot& slot = slots_[slotOf(place)];
    if (useOf(slot.member) != NameUse::kFree) slot.member = withUse(slot.member, use);
}

void TakenNames::grow() {
    std::vector<Slot> old(slots_.empty() ? kFirstSlots : slots_.size() * 2);
    old.swap(slots_);
    for (const Slot& slot : old) {
        if (useOf(slot.member) != NameUse::kFree) slots_[slotOf(slot.place)] = slot;
    }
}

}  // namespace archiver
