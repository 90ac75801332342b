#include "archivers/formats/rar/ppmd7.h"

#include <algorithm>

namespace archiver::rar {
namespace {

constexpr unsigned kMostFrequency = 124;
constexpr unsigned kIntervalBits = 7;
constexpr unsigned kPeriodBits = 7;

std::uint32_t mean(std::uint32_t probability) noexcept {
    return (probability + (1U << (kPeriodBits - 2))) >> kPeriodBits;
}

}  // namespace

void Ppmd7Model::Escape::update() noexcept {
    if (shift >= kPeriodBits || --count != 0) return;
    sum = static_cast<std::uint16_t>(sum << 1);
    count = static_cast<std::uint8_t>(3U << shift++);
}

Ppmd7Model::Ppmd7Model() noexcept {
    std::size_t units = 0;
    for (unsigned index = 0; index < kIndexes; ++index) {
        for (unsigned step = index >= 12 ? 4 : (index >> 2) + 1; step > 0; --step) {
            indexOfUnits_[units++] = static_cast<std::uint8_t>(index);
        }
        unitsOfIndex_[index] = static_cast<std::uint8_t>(units);
    }
    for (std::size_t count = 0; count < 256; ++count) {
        binaryIndex_[count] = static_cast<std::uint8_t>(count < 2 ? 2 * count : count < 11 ? 4 : 6);
        highBitsOf_[count] = count < 0x40 ? 0 : 8;
    }
    escapeIndex_[1] = 1;
    escapeIndex_[2] = 2;
    unsigned index = 3;
    unsigned left = 1;
    for (std::size_t count = 3; count < 256; ++count) {
        escapeIndex_[count] = static_cast<std::uint8_t>(index);
        if (--left == 0) left = ++index - 2;
    }
}

void Ppmd7Model::start(unsigned order) noexcept {
    order_ = order;
    startAnew();
    certainEscape_ = {.sum = 0, .shift = kPeriodBits, .count = 64};
    started_ = true;
}

void Ppmd7Model::startAnew() noexcept {
    static constexpr std::uint16_t kInitialEscapes[] = {0x3CDD, 0x1F3F, 0x59BF, 0x48F3, 0x64A1, 0x5ABC, 0x6632, 0x6051};
    free_.fill(0);
    text_ = kBegin;
    highUnit_ = text_ + size_;
    lowUnit_ = unitsStart_ = highUnit_ - size_ / 8 / kUnit * 7 * kUnit;
    glueCount_ = 0;
    orderFall_ = order_;
    runLength_ = initialRunLength_ = -static_cast<std::int32_t>(std::min(order_, 12U)) - 1;
    previousSuccess_ = 0;

    context_ = longestContext_ = highUnit_ -= kUnit;
    found_ = lowUnit_;
    lowUnit_ += 256 / 2 * kUnit;
    setCount(context_, 256);
    setSum(context_, 256 + 1);
    setStates(context_, found_);
    setSuffix(context_, 0);
    for (unsigned symbol = 0; symbol < 256; ++symbol) {
        const Ref state = found_ + symbol * kStateSize;
        setSymbol(state, static_cast<std::uint8_t>(symbol));
        setFrequency(state, 1);
        setSuccessor(state, 0);
    }
    for (std::size_t frequency = 0; frequency < binary_.size(); ++frequency) {
        for (std::size_t index = 0; index < binary_[frequency].size(); ++index) {
            binary_[frequency][index] =
                static_cast<std::uint16_t>(kProbabilityScale - kInitialEscapes[index % 8] / (frequency + 2));
        }
    }
    for (unsigned index = 0; index < escapes_.size(); ++index) {
        constexpr std::uint8_t kShift = kPeriodBits - 4;
        escapes_[index].fill({static_cast<std::uint16_t>((5 * index + 10) << kShift), kShift, 4});
    }
}

void Ppmd7Model::swapStates(Ref one, Ref other) noexcept {
    std::swap_ranges(at(one, kStateSize), at(one, kStateSize) + kStateSize, at(other, kStateSize));
}

void Ppmd7Model::moveUp(Ref state, Ref first) noexcept {
    std::uint8_t* const begin = at(first, kStateSize);
    std::uint8_t* const moved = at(state, kStateSize);
    std::rotate(begin, moved, moved + kStateSize);
}

Ppmd7Model::Ref Ppmd7Model::stateOf(Ref context, std::uint8_t symbol) const noexcept {
    if (countOf(context) == 1) return onlyStateOf(context);
    Ref state = statesOf(context);
    while (symbolOf(state) != symbol) state += kStateSize;
    return state;
}

std::uint16_t& Ppmd7Model::binaryProbability() noexcept {
    const Ref state = onlyStateOf(context_);
    highBits_ = highBitsOf_[symbolOf(found_)];
    return binary_[frequencyOf(state) - 1U][previousSuccess_ + binaryIndex_[countOf(suffixOf(context_)) - 1] +
                                            highBits_ + 2U * highBitsOf_[symbolOf(state)] +
                                            (static_cast<std::uint32_t>(runLength_) >> 26 & 0x20)];
}

Ppmd7Model::Escape& Ppmd7Model::escapeOf(unsigned masked, std::uint32_t& frequency) noexcept {
    const unsigned count = countOf(context_);
    if (count == 256) {
        frequency = 1;
        return certainEscape_;
    }
    const unsigned unmasked = count - masked;
    Escape& escape = escapes_[escapeIndex_[unmasked - 1]][(unmasked < countOf(suffixOf(context_)) - count ? 1U : 0U) +
                                                          (sumOf(context_) < 11 * count ? 2U : 0U) +
                                                          (masked > unmasked ? 4U : 0U) + highBits_];
    const unsigned share = escape.sum >> escape.shift;
    escape.sum = static_cast<std::uint16_t>(escape.sum - share);
    frequency = share + (share == 0 ? 1 : 0);
    return escape;
}

/// Makes the contexts that the current one and its suffixes lack for the symbol found.
Ppmd7Model::Ref Ppmd7Model::createSuccessors(bool skip) noexcept {
    const Ref upBranch = successorOf(found_);
    const std::uint8_t symbol = symbolOf(found_);
    std::array<Ref, kMostOrder> states;
    std::size_t count = 0;
    if (!skip) states[count++] = found_;

    Ref context = context_;
    while (suffixOf(context) != 0) {
        context = suffixOf(context);
        const Ref state = stateOf(context, symbol);
        if (const Ref successor = successorOf(state); successor != upBranch) {
            context = successor;
            if (count == 0) return context;
            break;
        }
        if (count == states.size()) return 0;
        states[count++] = state;
    }

    const std::uint8_t upSymbol = *at(upBranch, 1);
    const Ref upSuccessor = upBranch + 1;
    unsigned upFrequency = 0;
    if (countOf(context) == 1) {
        upFrequency = frequencyOf(onlyStateOf(context));
    } else {
        const std::uint32_t frequency = frequencyOf(stateOf(context, upSymbol)) - 1U;
        const std::uint32_t rest = sumOf(context) - countOf(context) - frequency;
        upFrequency =
            1 + (2 * frequency <= rest ? (5 * frequency > rest ? 1 : 0) : (2 * frequency + 3 * rest - 1) / (2 * rest));
    }
    while (count > 0) {
        const Ref child = allocateContext();
        if (child == 0) return 0;
        setCount(child, 1);
        const Ref state = onlyStateOf(child);
        setSymbol(state, upSymbol);
        setFrequency(state, upFrequency);
        setSuccessor(state, upSuccessor);
        setSuffix(child, context);
        setSuccessor(states[--count], child);
        context = child;
    }
    return context;
}

/// Counts the symbol found in the next shorter context as well.
void Ppmd7Model::countInSuffix() noexcept {
    const Ref context = suffixOf(context_);
    Ref state = stateOf(context, symbolOf(found_));
    if (countOf(context) == 1) {
        if (frequencyOf(state) < 32) setFrequency(state, frequencyOf(state) + 1U);
        return;
    }
    if (state != statesOf(context) && frequencyOf(state) >= frequencyOf(state - kStateSize)) {
        swapStates(state, state - kStateSize);
        state -= kStateSize;
    }
    if (frequencyOf(state) < kMostFrequency - 9) {
        setFrequency(state, frequencyOf(state) + 2U);
        setSum(context, sumOf(context) + 2);
    }
}

/// Adds the symbol found to a context that lacks it.
/// @param others  what the frequencies of other symbols come to in the context where it was found, with escapes
/// @param count   of states there
bool Ppmd7Model::addSymbol(Ref context, std::uint32_t others, unsigned count, Ref successor) noexcept {
    const unsigned own = countOf(context);
    if (own == 1) {
        const Ref state = allocateUnits(0);
        if (state == 0) return false;
        copyState(state, onlyStateOf(context));
        setStates(context, state);
        const unsigned frequency = frequencyOf(state);
        setFrequency(state, frequency < kMostFrequency / 4 - 1 ? frequency * 2 : kMostFrequency - 4);
        setSum(context, frequencyOf(state) + initialEscape_ + (count > 3 ? 1U : 0U));
    } else {
        if (own % 2 == 0) {
            const unsigned units = own / 2;
            const unsigned index = indexOf(units);
            if (index != indexOf(units + 1)) {
                const Ref moved = allocateUnits(index + 1);
                if (moved == 0) return false;
                const Ref old = statesOf(context);
                std::memcpy(at(moved, units * kUnit), at(old, units * kUnit), std::size_t{units} * kUnit);
                insertBlock(old, index);
                setStates(context, moved);
            }
        }
        const bool few = 4 * own <= count && sumOf(context) <= 8 * own;
        setSum(context, sumOf(context) + (2 * own < count ? 1U : 0U) + (few ? 2U : 0U));
    }
    std::uint32_t frequency = 2 * std::uint32_t{frequencyOf(found_)} * (sumOf(context) + 6);
    const std::uint32_t sum = others + sumOf(context);
    if (frequency < 6 * sum) {
        frequency = 1U + (frequency > sum ? 1U : 0U) + (frequency >= 4 * sum ? 1U : 0U);
        setSum(context, sumOf(context) + 3);
    } else {
        frequency = 4U + (frequency >= 9 * sum ? 1U : 0U) + (frequency >= 12 * sum ? 1U : 0U) +
                    (frequency >= 15 * sum ? 1U : 0U);
        setSum(context, sumOf(context) + frequency);
    }
    const Ref state = statesOf(context) + own * kStateSize;
    setSuccessor(state, successor);
    setSymbol(state, symbolOf(found_));
    setFrequency(state, frequency);
    setCount(context, own + 1);
    return true;
}

void Ppmd7Model::updateModel() noexcept {
    if (frequencyOf(found_) < kMostFrequency / 4 && suffixOf(context_) != 0) countInSuffix();
    if (orderFall_ == 0) {
        context_ = longestContext_ = createSuccessors(true);
        if (context_ == 0) return startAnew();
        setSuccessor(found_, context_);
        return;
    }
    *at(text_++, 1) = symbolOf(found_);
    Ref successor = text_;
    if (text_ >= unitsStart_) return startAnew();

    Ref next = successorOf(found_);
    if (next != 0) {
        if (next <= successor) {
            next = createSuccessors(false);
            if (next == 0) return startAnew();
        }
        if (--orderFall_ == 0) {
            successor = next;
            if (longestContext_ != context_) --text_;
        }
    } else {
        setSuccessor(found_, successor);
        next = context_;
    }
    const unsigned count = countOf(context_);
    const std::uint32_t others = sumOf(context_) - count - (frequencyOf(found_) - 1U);
    for (Ref context = longestContext_; context != context_; context = suffixOf(context)) {
        if (!addSymbol(context, others, count, successor)) return startAnew();
    }
    longestContext_ = context_ = next;
}

/// Halves the frequencies of the current context.
void Ppmd7Model::rescale() noexcept {
    const Ref first = statesOf(context_);
    moveUp(found_, first);
    Ref state = first;
    unsigned escapes = sumOf(context_) - frequencyOf(state);
    const unsigned adder = orderFall_ != 0 ? 1 : 0;
    setFrequency(state, static_cast<std::uint8_t>(frequencyOf(state) + 4U));
    setFrequency(state, (frequencyOf(state) + adder) >> 1);
    unsigned sum = frequencyOf(state);
    for (unsigned left = countOf(context_) - 1; left > 0; --left) {
        state += kStateSize;
        escapes -= frequencyOf(state);
        setFrequency(state, (frequencyOf(state) + adder) >> 1);
        sum += frequencyOf(state);
        if (frequencyOf(state) <= frequencyOf(state - kStateSize)) continue;
        Ref place = state - kStateSize;
        while (place != first && frequencyOf(state) > frequencyOf(place - kStateSize)) place -= kStateSize;
        moveUp(state, place);
    }
    if (frequencyOf(state) == 0) {
        const unsigned before = countOf(context_);
        unsigned unused = 0;
        for (; frequencyOf(state) == 0; state -= kStateSize) ++unused;
        escapes += unused;
        const unsigned left = before - unused;
        setCount(context_, left);
        const unsigned oldUnits = (before + 1) / 2;
        if (left == 1) {
            unsigned frequency = frequencyOf(first);
            do {
                frequency -= frequency >> 1;
                escapes >>= 1;
            } while (escapes > 1);
            found_ = onlyStateOf(context_);
            copyState(found_, first);
            setFrequency(found_, frequency);
            insertBlock(first, indexOf(oldUnits));
            return;
        }
        const unsigned newUnits = (left + 1) / 2;
        if (oldUnits != newUnits) setStates(context_, shrinkUnits(first, oldUnits, newUnits));
    }
    setSum(context_, sum + escapes - (escapes >> 1));
    found_ = statesOf(context_);
}

void Ppmd7Model::nextContext() noexcept {
    const Ref context = successorOf(found_);
    if (orderFall_ == 0 && context > text_)
        context_ = longestContext_ = context;
    else
        updateModel();
}

void Ppmd7Model::updateFirst() noexcept {
    previousSuccess_ = 2U * frequencyOf(found_) > sumOf(context_) ? 1 : 0;
    runLength_ += static_cast<std::int32_t>(previousSuccess_);
    setSum(context_, sumOf(context_) + 4);
    setFrequency(found_, frequencyOf(found_) + 4U);
    if (frequencyOf(found_) > kMostFrequency) rescale();
    nextContext();
}

void Ppmd7Model::updateOther() noexcept {
    setFrequency(found_, frequencyOf(found_) + 4U);
    setSum(context_, sumOf(context_) + 4);
    if (frequencyOf(found_) > frequencyOf(found_ - kStateSize)) {
        swapStates(found_, found_ - kStateSize);
        found_ -= kStateSize;
        if (frequencyOf(found_) > kMostFrequency) rescale();
    }
    nextContext();
}

void Ppmd7Model::updateBinary(std::uint16_t& probability) noexcept {
    probability = static_cast<std::uint16_t>(probability + (1U << kIntervalBits) - mean(probability));
    found_ = onlyStateOf(context_);
    if (frequencyOf(found_) < 128) setFrequency(found_, frequencyOf(found_) + 1U);
    previousSuccess_ = 1;
    ++runLength_;
    nextContext();
}

void Ppmd7Model::updateBinaryEscape(std::uint16_t& probability) noexcept {
    static constexpr std::uint8_t kEscapes[16] = {25, 14, 9, 7, 5, 5, 4, 4, 4, 3, 3, 3, 2, 2, 2, 2};
    probability = static_cast<std::uint16_t>(probability - mean(probability));
    initialEscape_ = kEscapes[probability >> 10];
    previousSuccess_ = 0;
}

void Ppmd7Model::updateAfterEscape() noexcept {
    setSum(context_, sumOf(context_) + 4);
    setFrequency(found_, frequencyOf(found_) + 4U);
    if (frequencyOf(found_) > kMostFrequency) rescale();
    runLength_ = initialRunLength_;
    updateModel();
}

}  // namespace archiver::rar
