#include <new>

#include "archivers/formats/rar/ppmd7.h"

/// The memory of the model; see ppmd7.h for where it comes from.
namespace archiver::rar {
namespace {

// A free block as `glueBlocks` sees it: stamp (2 bytes, 0), number of units (2), next (4), previous (4). Before, a free
// block begins with the next one of its size.
constexpr std::uint32_t kUnitsField = 2;
constexpr std::uint32_t kNextField = 4;
constexpr std::uint32_t kPreviousField = 8;

}  // namespace

bool Ppmd7Model::allocate(std::uint32_t size) noexcept {
    started_ = false;
    if (memory_ != nullptr && size_ == size) return true;
    release();
    memory_.reset(new (std::nothrow) std::uint8_t[std::size_t{kBegin} + size + kUnit]);
    bytes_ = memory_.get();
    if (bytes_ == nullptr) return false;
    size_ = size;
    return true;
}

void Ppmd7Model::release() noexcept {
    memory_.reset();
    bytes_ = nullptr;
    size_ = 0;
    started_ = false;
}

void Ppmd7Model::insertBlock(Ref block, unsigned index) noexcept {
    store(block, free_[index]);
    free_[index] = block;
}

Ppmd7Model::Ref Ppmd7Model::removeBlock(unsigned index) noexcept {
    const Ref block = free_[index];
    free_[index] = load<Ref>(block);
    return block;
}

void Ppmd7Model::splitBlock(Ref block, unsigned oldIndex, unsigned newIndex) noexcept {
    const unsigned units = unsigned{unitsOfIndex_[oldIndex]} - unitsOfIndex_[newIndex];
    const Ref rest = block + unitsOfIndex_[newIndex] * kUnit;
    unsigned index = indexOf(units);
    if (unitsOfIndex_[index] != units) {
        const unsigned whole = unitsOfIndex_[--index];
        insertBlock(rest + whole * kUnit, units - whole - 1);
    }
    insertBlock(rest, index);
}

void Ppmd7Model::glueBlocks() noexcept {
    const Ref head = kBegin + size_;
    Ref node = head;
    glueCount_ = 255;

    // All free blocks in one list.
    for (unsigned index = 0; index < kIndexes; ++index) {
        Ref next = free_[index];
        free_[index] = 0;
        while (next != 0) {
            const Ref block = next;
            store(block + kNextField, node);
            store(node + kPreviousField, block);
            node = block;
            next = load<Ref>(block);
            store(block, std::uint16_t{0});
            store(block + kUnitsField, std::uint16_t{unitsOfIndex_[index]});
        }
    }
    store(head, std::uint16_t{1});
    store(head + kNextField, node);
    store(node + kPreviousField, head);
    if (lowUnit_ != highUnit_) store(lowUnit_, std::uint16_t{1});

    // Those that touch become one.
    for (; node != head; node = load<Ref>(node + kNextField)) {
        std::uint32_t units = load<std::uint16_t>(node + kUnitsField);
        for (;;) {
            const Ref other = node + units * kUnit;
            units += load<std::uint16_t>(other + kUnitsField);
            if (load<std::uint16_t>(other) != 0 || units >= 0x10000) break;
            const Ref previous = load<Ref>(other + kPreviousField);
            const Ref next = load<Ref>(other + kNextField);
            store(previous + kNextField, next);
            store(next + kPreviousField, previous);
            store(node + kUnitsField, static_cast<std::uint16_t>(units));
        }
    }

    // Back to lists of one size each.
    for (node = load<Ref>(head + kNextField); node != head;) {
        const Ref next = load<Ref>(node + kNextField);
        unsigned units = load<std::uint16_t>(node + kUnitsField);
        for (; units > 128; units -= 128, node += 128 * kUnit) insertBlock(node, kIndexes - 1);
        unsigned index = indexOf(units);
        if (unitsOfIndex_[index] != units) {
            const unsigned whole = unitsOfIndex_[--index];
            insertBlock(node + whole * kUnit, units - whole - 1);
        }
        insertBlock(node, index);
        node = next;
    }
}

Ppmd7Model::Ref Ppmd7Model::allocateRare(unsigned index) noexcept {
    if (glueCount_ == 0) {
        glueBlocks();
        if (free_[index] != 0) return removeBlock(index);
    }
    unsigned larger = index;
    do {
        if (++larger == kIndexes) {
            const std::uint32_t bytes = unitsOfIndex_[index] * kUnit;
            --glueCount_;
            return unitsStart_ - text_ > bytes ? (unitsStart_ -= bytes) : 0;
        }
    } while (free_[larger] == 0);
    const Ref block = removeBlock(larger);
    splitBlock(block, larger, index);
    return block;
}

Ppmd7Model::Ref Ppmd7Model::allocateUnits(unsigned index) noexcept {
    if (free_[index] != 0) return removeBlock(index);
    const std::uint32_t bytes = unitsOfIndex_[index] * kUnit;
    if (bytes > highUnit_ - lowUnit_) return allocateRare(index);
    const Ref block = lowUnit_;
    lowUnit_ += bytes;
    return block;
}

Ppmd7Model::Ref Ppmd7Model::allocateContext() noexcept {
    if (highUnit_ != lowUnit_) return highUnit_ -= kUnit;
    return free_[0] != 0 ? removeBlock(0) : allocateRare(0);
}

Ppmd7Model::Ref Ppmd7Model::shrinkUnits(Ref block, unsigned oldUnits, unsigned newUnits) noexcept {
    const unsigned oldIndex = indexOf(oldUnits);
    const unsigned newIndex = indexOf(newUnits);
    if (oldIndex == newIndex) return block;
    if (free_[newIndex] == 0) {
        splitBlock(block, oldIndex, newIndex);
        return block;
    }
    const Ref moved = removeBlock(newIndex);
    std::memcpy(at(moved, newUnits * kUnit), at(block, newUnits * kUnit), std::size_t{newUnits} * kUnit);
    insertBlock(block, oldIndex);
    return moved;
}

}  // namespace archiver::rar
