#include "archivers/formats/ace/blocked.h"

#include <algorithm>

#include "archivers/formats/little_endian.h"

namespace archiver::ace {
namespace {

constexpr std::uint64_t kPiece = 64U << 10;

std::size_t pieceOf(std::uint64_t rest) noexcept { return static_cast<std::size_t>(std::min(rest, kPiece)); }

}  // namespace

std::size_t restoreAddresses(std::span<char> bytes, std::uint64_t offset, bool wide) noexcept {
    constexpr auto kCall = static_cast<char>(0xE8);
    constexpr auto kJump = static_cast<char>(0xE9);
    constexpr std::size_t kLookAhead = 4;
    std::size_t at = 0;
    while (at < bytes.size()) {
        const char opcode = bytes[at];
        if (opcode != kCall && opcode != kJump) {
            ++at;
            continue;
        }
        if (bytes.size() - at <= kLookAhead) return at;
        char* const address = bytes.data() + at + 1;
        const auto position = static_cast<std::uint32_t>((offset + at) & 0xFFFFFFFF);
        if (wide && opcode == kCall) {
            little_endian::store32(address, little_endian::load32(address) - position);
            at += 1 + sizeof(std::uint32_t);
        } else {
            const std::uint32_t word = little_endian::load16(address) - position;
            little_endian::store16(address, static_cast<std::uint16_t>(word & 0xFFFF));
            at += 1 + sizeof(std::uint16_t);
        }
    }
    return at;
}

void restoreDeltas(std::span<char> block, std::uint8_t& last, std::size_t planes, std::span<char> bytes) noexcept {
    for (char& each : block) {
        last = static_cast<std::uint8_t>((last + static_cast<unsigned char>(each)) & 0xFF);
        each = static_cast<char>(last);
    }
    const std::size_t planeSize = block.size() / planes;
    auto to = bytes.begin();
    for (std::size_t column = 0; column < planeSize; ++column) {
        // The bytes that fill no whole plane follow the last one like the start of another.
        for (std::size_t at = column; at < block.size(); at += planeSize) *to++ = block[at];
    }
}

void Blocked::start() noexcept {
    lz77_.start();
    now_ = {};
    later_.reset();
    inFront_ = false;
    offset_ = 0;
    lastSum_ = 0;
    held_.clear();
}

ReturnCode Blocked::readInstruction(BitReader& reader, Instruction& instruction) {
    instruction.mode = static_cast<std::uint8_t>(reader.take(8));
    if (instruction.mode > kPicture) return kFileCrc;
    if (instruction.mode == kDelta) {
        instruction.planes = reader.take(8);
        instruction.length = reader.take(17);
        if (instruction.planes == 0 || instruction.planes > instruction.length) return kFileCrc;
    } else if (instruction.mode == kProgram) {
        instruction.wide = reader.take(8) != 0;
    }
    return reader.overrun() ? kFileCrc : kOk;
}

ReturnCode Blocked::enter(BitReader& reader, const Instruction& instruction) {
    const bool changes = instruction.mode != now_.mode;
    now_ = instruction;
    if (now_.mode == kPicture) {
        if (!changes) return kOk;
        if (picture_ == nullptr) picture_ = std::make_unique<Picture>();
        return picture_->start(reader);
    }
    if (now_.mode >= kFirstSound) {
        if (sound_ == nullptr) sound_ = std::make_unique<Sound>();
        if (changes) {
            sound_->start(now_.mode - kFirstSound);
        } else {
            sound_->restartChannels();
        }
    }
    return kOk;
}

Run Blocked::decode(BitReader& reader, Dictionary& dictionary, std::uint64_t rest) {
    Run run;
    while (run.code == kOk && run.bytes.empty()) {
        if (later_) {
            const Instruction instruction = *later_;
            later_.reset();
            run.code = enter(reader, instruction);
        } else if (inFront_) {
            inFront_ = false;
            Instruction instruction;
            run.code = readInstruction(reader, instruction);
            if (run.code == kOk) run.code = enter(reader, instruction);
        }
        if (run.code != kOk) break;
        run = decodePart(reader, dictionary, rest);
        inFront_ = inFront_ || run.modeChange;
    }
    run.modeChange = false;
    // A row or a block at the end may be longer than what is left.
    run.bytes = run.bytes.first(static_cast<std::size_t>(std::min<std::uint64_t>(rest, run.bytes.size())));
    offset_ += run.bytes.size();
    return run;
}

Run Blocked::decodePart(BitReader& reader, Dictionary& dictionary, std::uint64_t rest) {
    if (now_.mode == kProgram) return decodeProgram(reader, dictionary, rest);
    // An opcode at the end of program code had no address to put back.
    if (!held_.empty()) return releaseHeld();
    if (now_.mode == kLz77) return lz77_.decode(reader, dictionary, pieceOf(rest));
    if (now_.mode == kDelta) return decodeDelta(reader, dictionary);

    if (now_.mode != kPicture) buffer_.resize(pieceOf(rest));
    const Run run = now_.mode == kPicture ? picture_->decode(reader) : sound_->decode(reader, buffer_);
    if (run.code == kOk) dictionary.append(run.bytes);
    return run;
}

Run Blocked::releaseHeld() {
    buffer_.swap(held_);
    held_.clear();
    Run run;
    run.bytes = buffer_;
    return run;
}

Run Blocked::decodeProgram(BitReader& reader, Dictionary& dictionary, std::uint64_t rest) {
    buffer_.assign(held_.begin(), held_.end());
    held_.clear();
    Run run = lz77_.decode(reader, dictionary, pieceOf(rest - buffer_.size()));
    if (run.code != kOk) return run;
    buffer_.insert(buffer_.end(), run.bytes.begin(), run.bytes.end());
    std::size_t done = restoreAddresses(buffer_, offset_, now_.wide);
    if (buffer_.size() == rest) done = buffer_.size();
    held_.assign(buffer_.begin() + static_cast<std::ptrdiff_t>(done), buffer_.end());
    run.bytes = std::span<const char>(buffer_).first(done);
    return run;
}

Run Blocked::decodeDelta(BitReader& reader, Dictionary& dictionary) {
    Run run;
    block_.clear();
    while (block_.size() < now_.length) {
        run = lz77_.decode(reader, dictionary, now_.length - block_.size());
        if (run.code != kOk) return run;
        block_.insert(block_.end(), run.bytes.begin(), run.bytes.end());
        if (!run.modeChange) continue;
        if (block_.empty()) return run;
        run.modeChange = false;
        Instruction instruction;
        run.code = readInstruction(reader, instruction);
        if (run.code != kOk) return run;
        later_ = instruction;
    }
    buffer_.resize(block_.size());
    restoreDeltas(block_, lastSum_, now_.planes, buffer_);
    run.bytes = buffer_;
    return run;
}

}  // namespace archiver::ace
