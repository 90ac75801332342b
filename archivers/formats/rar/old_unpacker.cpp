#include "archivers/formats/rar/old_unpacker.h"

#include <algorithm>
#include <utility>

namespace archiver::rar {
namespace {

constexpr std::uint64_t kPiece = std::uint64_t{64} * 1024;

}  // namespace

void OldUnpacker::begin(bool solid, std::uint64_t size) {
    bits_.begin();
    filters_.clear();
    filtered_.clear();
    filteredGiven_ = 0;
    if (!solid) {
        window_.clear();
        codes_.clear();
        records_.clear();
        kind_ = BlockKind::kCodes;
        needsBlock_ = true;
        distances_.fill(0);
        lastDistance_ = lastLength_ = 0;
        ppmdEscape_ = 2;
        ppmd_.release();
    }
    fileBegin_ = given_ = window_.position();
    fileEnd_ = fileBegin_ + size;
    fileEnded_ = false;
}

ReturnCode OldUnpacker::damage() const noexcept { return bits_.error() != kOk ? bits_.error() : kHuffmanCode; }

ReturnCode OldUnpacker::unpack(const DataSink& sink) {
    for (;;) {
        if (const ReturnCode code = flush(sink); code != kOk) return code;
        if (given_ == fileEnd_) return kOk;
        if (fileEnded_) return damage();
        if (const ReturnCode code = decode(stop()); code != kOk) return code;
    }
}

ReturnCode OldUnpacker::finish() {
    while (!fileEnded_) {
        if (window_.position() > fileEnd_) return kHuffmanCode;
        if (const ReturnCode code = decode(fileEnd_ + 1); code != kOk) return code;
    }
    return kOk;
}

/// How far to unpack before something can be given out or is due.
std::uint64_t OldUnpacker::stop() const noexcept {
    std::uint64_t stop = std::min(given_ + kPiece, fileEnd_);
    if (!filters_.empty()) {
        const Filter& filter = filters_.front();
        stop = given_ < filter.begin ? std::min(stop, filter.begin) : filter.begin + filter.length;
    }
    return stop;
}

ReturnCode OldUnpacker::flush(const DataSink& sink) {
    for (;;) {
        if (filteredGiven_ < filtered_.size()) {
            const std::size_t count = filtered_.size() - filteredGiven_;
            const char* const bytes = reinterpret_cast<const char*>(filtered_.data()) + filteredGiven_;
            filteredGiven_ = filtered_.size();
            given_ += count;
            if (!sink(bytes, count)) return kUserCancel;
        }
        const std::uint64_t there = std::min(window_.position(), fileEnd_);
        const std::uint64_t plain = filters_.empty() ? there : std::min(there, filters_.front().begin);
        if (given_ < plain) {
            if (const ReturnCode code = flushPlain(plain, sink); code != kOk) return code;
        }
        if (filters_.empty() || filters_.front().begin + filters_.front().length > there) return kOk;
        if (const ReturnCode code = undoFilters(); code != kOk) return code;
    }
}

ReturnCode OldUnpacker::flushPlain(std::uint64_t end, const DataSink& sink) {
    const auto [first, second] = window_.bytes(given_, end);
    given_ = end;
    for (const std::span<const std::uint8_t> bytes : {first, second}) {
        if (!bytes.empty() && !sink(reinterpret_cast<const char*>(bytes.data()), bytes.size())) return kUserCancel;
    }
    return kOk;
}

/// Undoes the filters of one place.
ReturnCode OldUnpacker::undoFilters() {
    const Filter place = filters_.front();
    const auto [first, second] = window_.bytes(place.begin, place.begin + place.length);
    filtered_.assign(first.begin(), first.end());
    filtered_.insert(filtered_.end(), second.begin(), second.end());
    filteredGiven_ = 0;
    const auto offset = static_cast<std::uint32_t>(place.begin - fileBegin_);
    while (!filters_.empty() && filters_.front().begin == place.begin) {
        if (!undoFilter(filters_.front(), offset, filtered_)) return kHuffmanCode;
        filters_.pop_front();
    }
    return kOk;
}

/// Unpacks until a position is reached, or something happened that can change it.
ReturnCode OldUnpacker::decode(std::uint64_t stop) {
    if (needsBlock_) {
        if (const ReturnCode code = startBlock(); code != kOk) return code;
    }
    return kind_ == BlockKind::kPpmd ? decodePpmd(stop) : decodeCodes(stop);
}

ReturnCode OldUnpacker::startBlock() {
    bits_.align();
    bits_.fill();
    ReturnCode code = kOk;
    if (bits_.take(1) != 0) {
        kind_ = BlockKind::kPpmd;
        code = startPpmd();
    } else {
        kind_ = BlockKind::kCodes;
        lowDistance_ = lowDistanceRepeats_ = 0;
        if (!codes_.read(bits_)) code = damage();
    }
    if (code == kOk && bits_.overrun()) code = damage();
    needsBlock_ = code != kOk;
    return code;
}

ReturnCode OldUnpacker::startPpmd() {
    // A process of 32 bits has to get by with what is left beside it; archivers take 128 MiB at most.
    constexpr std::uint32_t kMostMegabytes = 192;
    const std::uint32_t flags = bits_.take(7);
    const bool anew = (flags & 0x20) != 0;
    const std::uint32_t megabytes = anew ? bits_.takeByte() + 1U : 0;
    if ((flags & 0x40) != 0) ppmdEscape_ = bits_.takeByte();
    if (anew) {
        std::uint32_t order = (flags & 0x1F) + 1;
        if (order > 16) order = 16 + (order - 16) * 3;
        if (order == 1 || bits_.overrun()) return damage();
        if (megabytes > kMostMegabytes || !ppmd_.allocate(megabytes << 20)) return kEnoughMemory;
        ppmd_.start(order);
    } else if (!ppmd_.started()) {
        return damage();
    }
    ppmd_.begin();
    return kOk;
}

bool OldUnpacker::copy(std::uint32_t distance, std::uint32_t length) {
    lastDistance_ = distance;
    lastLength_ = length;
    return window_.copy(distance, length);
}

std::uint32_t OldUnpacker::takeLength(std::uint32_t symbol) {
    static constexpr std::uint8_t kBases[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  10,  12,  14,  16,  20,
                                              24, 28, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224};
    static constexpr std::uint8_t kBits[] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2,
                                             2, 2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5};
    return kBases[symbol] + bits_.take(kBits[symbol]);
}

/// Reads a distance in its own code.
bool OldUnpacker::takeDistance(std::uint32_t& distance) {
    bits_.fill();
    const int symbol = codes_.distance.take(bits_);
    if (symbol < 0) return false;
    // Powers of two and their halves up to 256 KiB, from where on steps stay the same.
    const auto number = static_cast<std::uint32_t>(symbol);
    std::uint32_t base = number;
    int count = 0;
    if (number >= 48) {
        base = (number - 44) << 18;
        count = 18;
    } else if (number >= 36) {
        base = (number - 32) << 16;
        count = 16;
    } else if (number >= 4) {
        count = static_cast<int>(number / 2 - 1);
        base = (2 + number % 2) << count;
    }
    distance = base + 1;
    if (number < 10) {
        distance += bits_.take(count);
        return true;
    }
    distance += bits_.take(count - 4) << 4;
    if (lowDistanceRepeats_ > 0) {
        --lowDistanceRepeats_;
    } else {
        constexpr int kRepeat = 16;
        bits_.fill();
        const int low = codes_.lowDistance.take(bits_);
        if (low < 0) return false;
        if (low == kRepeat)
            lowDistanceRepeats_ = 15;
        else
            lowDistance_ = static_cast<std::uint32_t>(low);
    }
    distance += lowDistance_;
    return true;
}

ReturnCode OldUnpacker::decodeCodes(std::uint64_t stop) {
    constexpr std::uint32_t kFirstControl = 256;
    constexpr std::uint32_t kFirstMatch = 271;
    constexpr std::uint32_t kFar = 0x2000, kVeryFar = 0x40000;
    while (window_.position() < stop) {
        window_.makeRoom();
        bits_.fill();
        const int taken = codes_.main.take(bits_);
        if (taken < 0) return damage();
        const auto symbol = static_cast<std::uint32_t>(taken);
        if (symbol < kFirstControl) {
            if (bits_.overrun()) return damage();
            window_.put(static_cast<std::uint8_t>(symbol));
            continue;
        }
        if (symbol < kFirstMatch) {
            if (const ReturnCode code = control(symbol); code != kOk) return code;
            if (fileEnded_ || needsBlock_ || symbol == kFirstControl + 1) return kOk;
            continue;
        }
        std::uint32_t length = takeLength(symbol - kFirstMatch) + 3;
        std::uint32_t distance = 0;
        if (!takeDistance(distance) || bits_.overrun()) return damage();
        length += (distance >= kFar ? 1U : 0U) + (distance >= kVeryFar ? 1U : 0U);
        distances_ = {distance, distances_[0], distances_[1], distances_[2]};
        if (!copy(distance, length)) return damage();
    }
    return kOk;
}

/// Does what symbols mean that are neither a literal nor a match with a distance in its own code.
ReturnCode OldUnpacker::control(std::uint32_t symbol) {
    switch (symbol) {
        case 256:
            return endOfBlock();
        case 257:
            return readFilter([this] { return std::pair(bits_.takeByte(), !bits_.overrun()); });
        case 258:  // the last match once more
            if (bits_.overrun()) return damage();
            return lastLength_ == 0 || copy(lastDistance_, lastLength_) ? kOk : damage();
        case 259:
        case 260:
        case 261:
        case 262: {  // one of the last four distances
            const int taken = codes_.length.take(bits_);
            if (taken < 0) return damage();
            bits_.fill();
            const std::uint32_t length = takeLength(static_cast<std::uint32_t>(taken)) + 2;
            if (bits_.overrun()) return damage();
            const auto last = distances_.begin() + static_cast<std::ptrdiff_t>(symbol - 259);
            std::rotate(distances_.begin(), last, last + 1);
            return copy(distances_[0], length) ? kOk : damage();
        }
        default: {  // two bytes from nearby
            static constexpr std::uint8_t kBases[] = {0, 4, 8, 16, 32, 64, 128, 192};
            static constexpr std::uint8_t kBits[] = {2, 2, 3, 4, 5, 6, 6, 6};
            const std::uint32_t distance = kBases[symbol - 263] + 1U + bits_.take(kBits[symbol - 263]);
            if (bits_.overrun()) return damage();
            distances_ = {distance, distances_[0], distances_[1], distances_[2]};
            return copy(distance, 2) ? kOk : damage();
        }
    }
}

/// "1": a block follows. "00": the file ends, and the next one goes on with these codes. "01": it begins with a block.
ReturnCode OldUnpacker::endOfBlock() {
    bits_.fill();
    if (bits_.take(1) != 0) {
        needsBlock_ = true;
    } else {
        needsBlock_ = bits_.take(1) != 0;
        fileEnded_ = true;
    }
    return bits_.overrun() ? damage() : kOk;
}

ReturnCode OldUnpacker::decodePpmd(std::uint64_t stop) {
    while (window_.position() < stop) {
        window_.makeRoom();
        const int symbol = ppmd_.symbol();
        if (symbol < 0 || bits_.overrun()) return damage();
        if (symbol != ppmdEscape_) {
            window_.put(static_cast<std::uint8_t>(symbol));
            continue;
        }
        const int code = ppmd_.symbol();
        if (code < 0 || bits_.overrun()) return damage();
        if (const ReturnCode result = escape(static_cast<std::uint32_t>(code)); result != kOk) return result;
        if (fileEnded_ || needsBlock_ || code == 3) return kOk;
    }
    return kOk;
}

ReturnCode OldUnpacker::escape(std::uint32_t code) {
    std::uint32_t fields[4] = {};
    const std::size_t count = code == 4 ? 4 : code == 5 ? 1 : 0;
    for (std::size_t at = 0; at < count; ++at) {
        const int symbol = ppmd_.symbol();
        if (symbol < 0 || bits_.overrun()) return damage();
        fields[at] = static_cast<std::uint32_t>(symbol);
    }
    switch (code) {
        case 0:
            needsBlock_ = true;
            return kOk;
        case 2:
            needsBlock_ = true;  // of the next file
            fileEnded_ = true;
            return kOk;
        case 3:
            return readFilter([this] {
                const int symbol = ppmd_.symbol();
                return std::pair(static_cast<std::uint8_t>(symbol), symbol >= 0 && !bits_.overrun());
            });
        case 4:
            return window_.copy((fields[0] << 16 | fields[1] << 8 | fields[2]) + 2, fields[3] + 32) ? kOk : damage();
        case 5:
            return window_.copy(1, fields[0] + 4) ? kOk : damage();
        default:
            window_.put(ppmdEscape_);
            return kOk;
    }
}

/// @param takeByte  gives a byte, and whether there was one
template <class TakeByte>
ReturnCode OldUnpacker::readFilter(const TakeByte& takeByte) {
    const auto take = [&takeByte](std::size_t& value) {
        const auto [byte, good] = takeByte();
        value = value << 8 | byte;
        return good;
    };
    std::size_t flags = 0;
    if (!take(flags)) return damage();
    std::size_t size = (flags & 7) + 1;
    if (size == 7) {
        size = 0;
        if (!take(size)) return damage();
        size += 7;
    } else if (size == 8) {
        size = 0;
        if (!take(size) || !take(size)) return damage();
    }
    std::vector<std::uint8_t> record;
    for (; size > 0; --size) {
        std::size_t byte = 0;
        if (!take(byte)) return damage();
        record.push_back(static_cast<std::uint8_t>(byte));
    }
    Filter filter;
    bool anew = false;
    const ReturnCode code = records_.read(static_cast<std::uint8_t>(flags), record, window_.position(), filter, anew);
    if (anew) filters_.clear();
    return code == kOk ? addFilter(filter) : code;
}

/// Filters come in the order of their places; some have the same one.
ReturnCode OldUnpacker::addFilter(const Filter& filter) {
    constexpr std::size_t kMost = 8192;
    constexpr std::size_t kMostOfOnePlace = 8;
    if (filter.length == 0) return kOk;
    if (filter.begin + filter.length > fileEnd_ || filters_.size() >= kMost) return kHuffmanCode;
    if (!filters_.empty()) {
        const Filter& last = filters_.back();
        const bool isSame = filter.begin == last.begin && filter.length == last.length;
        if (!isSame && filter.begin < last.begin + last.length) return kHuffmanCode;
        if (isSame && filters_.size() >= kMostOfOnePlace &&
            filters_[filters_.size() - kMostOfOnePlace].begin == filter.begin)
            return kHuffmanCode;
    }
    filters_.push_back(filter);
    return kOk;
}

}  // namespace archiver::rar
