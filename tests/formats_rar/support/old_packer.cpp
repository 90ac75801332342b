#include "formats_rar/support/old_packer.h"

#include <algorithm>
#include <stdexcept>

namespace archiver::test {
namespace {

/// Values that share a prefix and are told apart by bits behind it.
struct Slot {
    std::uint32_t base;
    int bits;
};

std::vector<Slot> slotsOf(const std::vector<std::pair<int, int>>& countsAndBits) {
    std::vector<Slot> slots;
    std::uint32_t base = 0;
    for (const auto& [count, bits] : countsAndBits) {
        for (int index = 0; index < count; ++index) {
            slots.push_back({base, bits});
            base += 1U << bits;
        }
    }
    return slots;
}

const std::vector<Slot>& lengthSlots() {
    static const std::vector<Slot> slots = slotsOf({{8, 0}, {4, 1}, {4, 2}, {4, 3}, {4, 4}, {4, 5}});
    return slots;
}

const std::vector<Slot>& distanceSlots() {
    static const std::vector<Slot> slots = slotsOf({{4, 0},
                                                    {2, 1},
                                                    {2, 2},
                                                    {2, 3},
                                                    {2, 4},
                                                    {2, 5},
                                                    {2, 6},
                                                    {2, 7},
                                                    {2, 8},
                                                    {2, 9},
                                                    {2, 10},
                                                    {2, 11},
                                                    {2, 12},
                                                    {2, 13},
                                                    {2, 14},
                                                    {2, 15},
                                                    {14, 16},
                                                    {12, 18}});
    return slots;
}

const std::vector<Slot>& shortSlots() {
    static const std::vector<Slot> slots = slotsOf({{2, 2}, {1, 3}, {1, 4}, {1, 5}, {3, 6}});
    return slots;
}

std::uint32_t slotOf(const std::vector<Slot>& slots, std::uint32_t value) {
    const auto behind =
        std::find_if(slots.begin(), slots.end(), [value](const Slot& each) { return each.base > value; });
    return static_cast<std::uint32_t>(behind - slots.begin() - 1);
}

/// Lengths for a complete code of `count` symbols: the first ones have one bit less than the others.
std::vector<int> evenLengths(int count, int bits) {
    std::vector<int> lengths(static_cast<std::size_t>(count), bits);
    std::fill_n(lengths.begin(), (1 << bits) - count, bits - 1);
    return lengths;
}

void putNumber(BitOutput& bits, std::uint32_t value) {
    if (value < 16) {
        bits.put(0, 2);
        bits.put(value, 4);
    } else if (value < 256) {
        bits.put(1, 2);
        bits.put(value, 8);
    } else if (value < 65536) {
        bits.put(2, 2);
        bits.put(value, 16);
    } else {
        bits.put(3, 2);
        bits.put(value, 32);
    }
}

void putBytes(BitOutput& bits, std::string_view bytes) {
    for (const char byte : bytes) bits.put(static_cast<unsigned char>(byte), 8);
}

}  // namespace

std::string standIn(std::size_t size) {
    // The second byte is 1, all between are 0. The others were computed so that the checksum fits.
    static constexpr struct {
        std::size_t size;
        unsigned char first;
        unsigned char last[5];
    } kPrograms[] = {{kDeltaSize, 0x94, {0x70, 0x0F, 0xD2, 0x38, 0x00}},
                     {kCallsSize, 0x88, {0x40, 0x74, 0x43, 0xFE, 0x00}},
                     {kJumpsSize, 0xB5, {0x02, 0x4E, 0xED, 0x15, 0x00}},
                     {kPictureSize, 0xAB, {0x88, 0xB4, 0x80, 0x15, 0x03}},
                     {kSoundSize, 0xBC, {0x78, 0x50, 0x13, 0x86, 0x00}}};
    for (const auto& each : kPrograms) {
        if (each.size != size) continue;
        std::string program(size, '\0');
        program[0] = static_cast<char>(each.first);
        program[1] = 1;
        std::copy(std::begin(each.last), std::end(each.last), program.end() - 5);
        return program;
    }
    throw std::invalid_argument("no known program has this size");
}

OldPacker::Code OldPacker::codeOf(std::vector<int> lengths) {
    Code code{std::move(lengths), {}};
    code.codes.resize(code.lengths.size());
    std::uint32_t next = 0;
    for (int length = 1; length <= 15; ++length, next <<= 1) {
        for (std::size_t symbol = 0; symbol < code.lengths.size(); ++symbol) {
            if (code.lengths[symbol] == length) code.codes[symbol] = next++;
        }
    }
    return code;
}

/// What is to be added to the last lengths, modulo 16. Runs are of zeros as lengths, so they need none before.
void OldPacker::putLengths(const std::vector<int>& changes, bool runs) {
    const Code code = codeOf([] {
        std::vector<int> lengths = evenLengths(20, 5);
        std::reverse(lengths.begin(), lengths.end());
        return lengths;
    }());
    for (const int length : code.lengths) bits_.put(static_cast<std::uint32_t>(length), 4);
    for (std::size_t at = 0; at < changes.size();) {
        const auto run =
            static_cast<std::size_t>(std::find_if(changes.begin() + static_cast<std::ptrdiff_t>(at), changes.end(),
                                                  [&](int each) { return each != changes[at]; }) -
                                     changes.begin()) -
            at;
        if (runs && changes[at] == 0 && run >= 11) {
            const std::size_t count = std::min<std::size_t>(run, 138);
            put(code, 19);
            bits_.put(static_cast<std::uint32_t>(count - 11), 7);
            at += count;
        } else if (runs && changes[at] == 0 && run >= 3) {
            const std::size_t count = std::min<std::size_t>(run, 10);
            put(code, 18);
            bits_.put(static_cast<std::uint32_t>(count - 3), 3);
            at += count;
        } else {
            put(code, static_cast<std::uint32_t>(changes[at++]));
        }
    }
}

OldPacker& OldPacker::codes(int longest) {
    inPpmd_ = false;
    lowRepeats_ = 0;
    lastLow_ = 0;
    bits_.align();
    bits_.put(0, 2);
    std::vector<int> main = evenLengths(299, 9);
    if (longest == 15) {
        // "a" has a code of one bit, and what is left is shared by all others in codes of 10 to 15 bits.
        main.assign(299, 15);
        main['a'] = 1;
        std::fill_n(main.begin() + 98, 190, 10);
        std::fill_n(main.begin() + 288, 11, 11);
    }
    main_ = codeOf(main);
    distance_ = codeOf(evenLengths(60, 6));
    low_ = codeOf(evenLengths(17, 5));
    length_ = codeOf(evenLengths(28, 5));
    std::vector<int> all;
    for (const Code* code : {&main_, &distance_, &low_, &length_})
        all.insert(all.end(), code->lengths.begin(), code->lengths.end());
    putLengths(all, true);
    return *this;
}

OldPacker& OldPacker::sameCodes() {
    inPpmd_ = false;
    lowRepeats_ = 0;
    lastLow_ = 0;
    bits_.align();
    bits_.put(1, 2);
    putLengths(std::vector<int>(299 + 60 + 17 + 28, 0), false);
    return *this;
}

OldPacker& OldPacker::ppmd(unsigned order, unsigned megabytes, std::optional<std::uint8_t> escape) {
    inPpmd_ = true;
    const unsigned stored = order > 16 ? (order - 16) / 3 + 16 : order;
    bits_.align();
    bits_.put(0x80U | (escape ? 0x40U : 0U) | 0x20U | (stored - 1), 8);
    bits_.put(megabytes - 1, 8);
    if (escape) bits_.put(escape_ = *escape, 8);
    if (!model_.allocate(megabytes << 20)) throw std::bad_alloc();
    model_.start(order);
    model_.begin();
    return *this;
}

OldPacker& OldPacker::samePpmd() {
    inPpmd_ = true;
    bits_.align();
    bits_.put(0x80, 8);
    model_.begin();
    return *this;
}

OldPacker& OldPacker::text(std::string_view bytes) {
    for (const char byte : bytes) {
        const auto value = static_cast<std::uint8_t>(byte);
        if (!inPpmd_) {
            put(main_, value);
            continue;
        }
        model_.encode(value);
        if (value == escape_) model_.encode(1);
    }
    history_ += bytes;
    return *this;
}

OldPacker& OldPacker::filter(const OldFilter& filter) {
    BitOutput record;
    std::uint8_t flags = 0;
    if (filter.number) {
        flags |= 0x80;
        putNumber(record, *filter.number);
    }
    if (filter.ahead >= 258) flags |= 0x40;
    putNumber(record, filter.ahead >= 258 ? filter.ahead - 258 : filter.ahead);
    if (filter.length) {
        flags |= 0x20;
        putNumber(record, *filter.length);
    }
    if (!filter.registers.empty()) {
        flags |= 0x10;
        std::uint32_t given = 0;
        for (const auto& [number, value] : filter.registers) given |= 1U << number;
        record.put(given, 7);
        for (const auto& [number, value] : filter.registers) putNumber(record, value);
    }
    if (!filter.program.empty()) {
        putNumber(record, static_cast<std::uint32_t>(filter.program.size()));
        putBytes(record, filter.program);
    }
    if (!filter.data.empty()) {
        flags |= 0x08;
        putNumber(record, static_cast<std::uint32_t>(filter.data.size()));
        putBytes(record, filter.data);
    }
    const std::string bytes = record.take();
    std::string head;
    if (bytes.size() <= 6) {
        head = {static_cast<char>(flags | (bytes.size() - 1))};
    } else if (bytes.size() <= 7 + 255) {
        head = {static_cast<char>(flags | 6), static_cast<char>(bytes.size() - 7)};
    } else {
        head = {static_cast<char>(flags | 7), static_cast<char>(bytes.size() >> 8), static_cast<char>(bytes.size())};
    }
    if (inPpmd_)
        ppmdCode(3);
    else
        symbol(257);
    for (const char byte : head + bytes) {
        const auto value = static_cast<std::uint8_t>(byte);
        if (inPpmd_)
            model_.encode(value);
        else
            bits_.put(value, 8);
    }
    return *this;
}

OldPacker& OldPacker::endBlock() {
    if (inPpmd_) {
        ppmdCode(0);
        bits_.append(model_.finish());
    } else {
        symbol(256).bits(1, 1);
    }
    return *this;
}

OldPacker& OldPacker::endFile(bool goesOn) {
    if (inPpmd_) {
        ppmdCode(2);
        bits_.append(model_.finish());
    } else {
        symbol(256).bits(goesOn ? 0 : 1, 2);
    }
    return *this;
}

void OldPacker::copy(std::uint32_t distance, std::uint32_t length) {
    for (; length > 0; --length) history_ += history_[history_.size() - distance];
}

OldPacker& OldPacker::match(std::uint32_t distance, std::uint32_t length, bool repeatLow) {
    const std::uint32_t less = (distance >= 0x2000 ? 1U : 0U) + (distance >= 0x40000 ? 1U : 0U);
    const std::uint32_t lengthSlot = slotOf(lengthSlots(), length - 3 - less);
    symbol(271 + lengthSlot);
    bits_.put(length - 3 - less - lengthSlots()[lengthSlot].base, lengthSlots()[lengthSlot].bits);
    const std::uint32_t distanceSlot = slotOf(distanceSlots(), distance - 1);
    const auto [base, count] = distanceSlots()[distanceSlot];
    const std::uint32_t rest = distance - 1 - base;
    put(distance_, distanceSlot);
    if (distanceSlot < 10) {
        bits_.put(rest, count);
    } else {
        bits_.put(rest >> 4, count - 4);
        if (lowRepeats_ > 0) {
            --lowRepeats_;
            if (lastLow_ != (rest & 15)) throw std::invalid_argument("the last bits are to be as before");
        } else if (repeatLow) {
            put(low_, 16);
            lowRepeats_ = 15;
        } else {
            put(low_, lastLow_ = rest & 15);
        }
    }
    distances_ = {distance, distances_[0], distances_[1], distances_[2]};
    lastDistance_ = distance;
    lastLength_ = length;
    copy(distance, length);
    return *this;
}

OldPacker& OldPacker::matchAgain() {
    symbol(258);
    copy(lastDistance_, lastLength_);
    return *this;
}

OldPacker& OldPacker::matchAtLast(std::size_t index, std::uint32_t length) {
    symbol(259 + static_cast<std::uint32_t>(index));
    const std::uint32_t slot = slotOf(lengthSlots(), length - 2);
    put(length_, slot);
    bits_.put(length - 2 - lengthSlots()[slot].base, lengthSlots()[slot].bits);
    const std::uint32_t distance = distances_[index];
    for (; index > 0; --index) distances_[index] = distances_[index - 1];
    distances_[0] = lastDistance_ = distance;
    lastLength_ = length;
    copy(distance, length);
    return *this;
}

OldPacker& OldPacker::shortMatch(std::uint32_t distance) {
    const std::uint32_t slot = slotOf(shortSlots(), distance - 1);
    symbol(263 + slot);
    bits_.put(distance - 1 - shortSlots()[slot].base, shortSlots()[slot].bits);
    distances_ = {distance, distances_[0], distances_[1], distances_[2]};
    lastDistance_ = distance;
    lastLength_ = 2;
    copy(distance, 2);
    return *this;
}

OldPacker& OldPacker::ppmdMatch(std::uint32_t distance, std::uint32_t length) {
    ppmdCode(4);
    for (const int shift : {16, 8, 0}) model_.encode(static_cast<std::uint8_t>((distance - 2) >> shift));
    model_.encode(static_cast<std::uint8_t>(length - 32));
    copy(distance, length);
    return *this;
}

OldPacker& OldPacker::ppmdRun(std::uint32_t length) {
    ppmdCode(5);
    model_.encode(static_cast<std::uint8_t>(length - 4));
    copy(1, length);
    return *this;
}

OldPacker& OldPacker::ppmdCode(std::uint8_t code) {
    model_.encode(escape_);
    model_.encode(code);
    return *this;
}

OldPacker& OldPacker::symbol(std::uint32_t symbol) {
    put(main_, symbol);
    return *this;
}

OldPacker& OldPacker::bits(std::uint32_t value, int count) {
    bits_.put(value, count);
    return *this;
}

std::string OldPacker::packed() { return bits_.take(); }

std::string OldPacker::content() {
    std::string content = history_.substr(begin_);
    begin_ = history_.size();
    return content;
}

}  // namespace archiver::test
