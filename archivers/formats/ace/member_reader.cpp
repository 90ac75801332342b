#include "archivers/formats/ace/member_reader.h"

#include <utility>

namespace archiver::ace {
namespace {

bool hasData(const FileHeader& header) noexcept { return header.originalSize != 0 && !header.folder(); }

/// Wrong bytes, as damage makes them and a wrong password.
bool isDamage(ReturnCode code) noexcept { return code == kFileCrc || code == kHuffmanCode || code == kPasswordFile; }

/// @param discard  the sink only tells whether to go on
ReturnCode pour(MemberUnpacker& unpacker, const DataSink& sink, bool discard) {
    for (;;) {
        std::span<const char> piece;
        const ReturnCode code = unpacker.next(piece);
        if (code == kNoMoreEntries) return kOk;
        if (code != kOk) return code;
        if (!sink(piece.data(), discard ? 0 : piece.size())) return kUserCancel;
    }
}

}  // namespace

MemberReader::MemberReader(VolumeChain& chain, Place first, bool solid)
    : chain_(chain), solid_(solid), first_{std::move(first), 0}, rowStart_(first_), next_(first_) {}

bool MemberReader::sharesDictionary(const FileHeader& header) const noexcept {
    return solid_ || header.has(file_flag::kSolid);
}

void MemberReader::passed(const Part& part, std::uint64_t number) {
    if (number < rowStart_.number) rowStart_ = first_;
    if (hasData(part.header) && !sharesDictionary(part.header)) rowStart_ = {part.place, number};
}

void MemberReader::setPassword(std::string_view password) {
    if (password == password_) return;
    password_ = password;
    cipher_ = password.empty() ? nullptr : std::make_shared<const Cipher>(keyOf(password));
    passwordProven_ = false;
    if (passwordDoubtful_) startOver(first_);
    passwordDoubtful_ = false;
}

void MemberReader::startOver(const Position& at) {
    unfinished_.reset();
    if (decoders_ != nullptr) decoders_->dictionary.clear();
    next_ = at;
}

std::unique_ptr<MemberUnpacker> MemberReader::unpackerOf(const Part& part, bool keep) {
    if (decoders_ == nullptr) decoders_ = std::make_unique<Decoders>();
    return std::make_unique<MemberUnpacker>(*decoders_, chain_, part,
                                            part.header.has(file_flag::kPassword) ? cipher_ : nullptr, keep);
}

ReturnCode MemberReader::refusal(const FileHeader& header) const noexcept {
    if (header.has(file_flag::kFromPreviousVolume)) return kArcFileOpen;
    if (header.method > kBlockedMethod) return kMethod;
    if (header.has(file_flag::kPassword) && cipher_ == nullptr) return kPasswordFile;
    return kOk;
}

ReturnCode MemberReader::settle(const FileHeader& header, ReturnCode code) noexcept {
    if (!header.has(file_flag::kPassword)) return code;
    if (code == kOk) passwordProven_ = true;
    if (!isDamage(code) || passwordProven_) return code;
    // Nothing in the format tells a wrong password from damage; the former is what happens.
    passwordDoubtful_ = true;
    return kPasswordFile;
}

ReturnCode MemberReader::read(const Part& part, std::uint64_t number, const DataSink& sink) {
    const FileHeader& header = part.header;
    if (!hasData(header)) return kOk;
    if (const ReturnCode code = refusal(header); code != kOk) return code;

    if (!sharesDictionary(header)) {
        startOver(rowStart_);
    } else if (header.method == kStored && (next_.number != number || unfinished_ != nullptr)) {
        // Its bytes need nothing in front of them, and those behind it may never be asked for.
        return settle(header, pour(*unpackerOf(part, false), sink, false));
    }
    const bool tooFar = next_.number > number || (next_.number == number && unfinished_ != nullptr);
    if (tooFar || next_.number < rowStart_.number) startOver(rowStart_);
    while (next_.number < number) {
        if (const ReturnCode code = unpackInFront(sink); code != kOk) return code;
    }
    return unpackNext(part, sink, false);
}

ReturnCode MemberReader::unpackInFront(const DataSink& sink) {
    Part part;
    ReturnCode code = readPart(chain_, next_.place, part);
    if (code != kOk) return code == kNoMoreEntries ? kHeaderBroken : code;
    if (!hasData(part.header)) {
        next_ = {part.behind(), next_.number + 1};
        return kOk;
    }
    if (code = refusal(part.header); code != kOk) return code;
    code = unpackNext(part, sink, true);
    // What follows may copy from the good bytes only, or from none of these; its checksum tells.
    return isDamage(code) ? kOk : code;
}

ReturnCode MemberReader::unpackNext(const Part& part, const DataSink& sink, bool discard) {
    if (unfinished_ == nullptr) {
        if (decoders_ != nullptr && !sharesDictionary(part.header)) decoders_->dictionary.clear();
        unfinished_ = unpackerOf(part, true);
    }
    const ReturnCode code = settle(part.header, pour(*unfinished_, sink, discard));
    // Stopped by the sink, it can go on from here; stopped by the archive, it tells the same again.
    if (code != kOk && !isDamage(code)) return code;
    next_ = {unfinished_->behind(), next_.number + 1};
    unfinished_.reset();
    return code;
}

}  // namespace archiver::ace
