#include "drivers/interned_texts.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <limits>
#include <random>
#include <stdexcept>

namespace tovar {
namespace {

constexpr std::uint32_t kPrime = 0x7FFFFFFF;  // 2^31 - 1: a product is reduced by shift and add
constexpr std::size_t kFirstSlots = 64;

// Below the prime and large enough to spread short texts.
std::uint32_t randomKey() noexcept {
    std::uint32_t bits = 0;
    try {
        bits = std::random_device{}();
    } catch (const std::exception&) {
        bits = static_cast<std::uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    }
    return 0x10000000U + bits % 0x60000000U;
}

}  // namespace

InternedTexts::InternedTexts() : key_(randomKey()) {}

void InternedTexts::clear() noexcept {
    texts_.clear();
    arena_.clear();
    decltype(slots_)().swap(slots_);
}

std::uint32_t InternedTexts::intern(std::wstring_view text) {
    if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("text is too long");
    }
    if (texts_.size() >= slots_.size() / 4 * 3) {
        growSlots();
    }
    const std::uint32_t hash = hashOf(text);
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = hash & mask;
    for (; slots_[slot] != 0; slot = (slot + 1) & mask) {
        const Text& other = texts_[slots_[slot] - 1];
        if (other.hash == hash && text == std::wstring_view(other.characters, other.length)) {
            return slots_[slot] - 1;
        }
    }
    const std::uint32_t number = texts_.size();
    texts_.append({arena_.keep(text), static_cast<std::uint32_t>(text.size()), hash});
    slots_[slot] = number + 1;
    return number;
}

// A polynomial over the characters, at a secret point of a prime field: whoever makes an archive cannot choose folder
// names that fall together.
// Source: J. L. Carter, M. N. Wegman, "Universal classes of hash functions", 1979
std::uint32_t InternedTexts::hashOf(std::wstring_view text) const noexcept {
    std::uint64_t hash = 1;
    for (const wchar_t character : text) {
        const std::uint64_t product = hash * key_ + static_cast<std::uint32_t>(character) % kPrime;
        hash = (product & kPrime) + (product >> 31);
        hash = hash >= kPrime ? hash - kPrime : hash;
    }
    return static_cast<std::uint32_t>(hash);
}

void InternedTexts::growSlots() {
    std::vector<std::uint32_t> slots(std::max(kFirstSlots, slots_.size() * 2));
    const std::size_t mask = slots.size() - 1;
    for (std::uint32_t number = 0; number < texts_.size(); ++number) {
        std::size_t slot = texts_[number].hash & mask;
        while (slots[slot] != 0) {
            slot = (slot + 1) & mask;
        }
        slots[slot] = number + 1;
    }
    slots_ = std::move(slots);
}

}  // namespace tovar
