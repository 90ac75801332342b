#include "archivers/unlha32/member_packing.h"

#include <zlib.h>

#include <algorithm>
#include <chrono>
#include <span>
#include <utility>

#include "archivers/formats/huffman_lz/block_encoder.h"
#include "archivers/formats/lzh/block_unpacker.h"
#include "archivers/formats/lzh/crc16.h"

namespace archiver {

namespace {

constexpr std::string_view kStored = "-lh0-";
constexpr std::string_view kFolder = "-lhd-";
constexpr std::size_t kLeastPiece = std::size_t{256} << 10;
constexpr std::size_t kMostPiece = std::size_t{1} << 20;
constexpr std::size_t kCopied = std::size_t{256} << 10;
/// How often messages may run while a piece is awaited.
constexpr std::chrono::milliseconds kWait{20};
/// Members that wait without pieces, such as folders.
constexpr std::size_t kMostWaiting = 256;
/// Sizes from here on need the wide fields.
constexpr std::uint64_t kLarge = 0xFFFFFFFF;

std::string_view textOf(const lzh::Piece& piece) {
    return {reinterpret_cast<const char*>(piece.bytes.data()) + piece.history, piece.size()};
}

}  // namespace

/// What comes next in the new archive: a member, as far as it has been read, or bytes of the old one.
struct MemberPacking::Output {
    std::optional<OldBytes> old;  ///< no member
    const SourceItem* item = nullptr;
    PackedSource source;
    lzh::NewMember member;
    std::optional<OldBytes> instead;
    std::deque<std::unique_ptr<lzh::Piece>> pieces;  ///< read and not written yet
    bool readToEnd = false;
    bool failed = false;          ///< it cannot be read to its end
    bool begun = false;           ///< its header is in the archive
    std::uint64_t offset = 0;     ///< of its header
    huffman_lz::PackedBits bits;  ///< behind those that are written
};

MemberPacking::MemberPacking(SourceSystem& sources, ArchiveReplacement& archive, const InputFile* old,
                             const LzhMethod& method, PackEvents& events)
    : sources_(sources), archive_(archive), old_(old), method_(method), events_(events), pieceSize_(kMostPiece) {
    if (const auto shape = lzh::blockShapeOf(method_.name)) {
        window_ = huffman_lz::BlockEncoder::windowOf(*shape);
        // Every piece begins with a look at the window before it: that is to be little beside the piece.
        pieceSize_ = std::clamp(window_ * 16, kLeastPiece, kMostPiece);
        line_.emplace(*shape, method_.threads);
    }
}

MemberPacking::~MemberPacking() = default;

ReturnCode MemberPacking::add(const SourceItem& item, std::size_t number, std::optional<OldBytes> instead) {
    std::unique_ptr<Output> output = begin(item, number, instead);
    if (lzh::headerOf(output->member, method_.headers).empty()) return kLongFileName;
    InputFileResult opened;
    if (!item.isFolder()) {
        opened = sources_.open(item.path);
        if (!opened.file) {
            events_.warning(PackWarning::kNotOpened, item.name);
            if (leftOut_ == kOk) leftOut_ = kFileOpen;
            return instead ? copy(*instead) : kOk;
        }
        output->member.large = opened.file->size() >= kLarge;
    }
    if (!events_.beginMember(item)) return kUserCancel;
    Output& added = *waiting_.emplace_back(std::move(output));
    if (opened.file) {
        const ReturnCode code = readPieces(*opened.file, added);
        if (code != kOk) return code;
    }
    added.readToEnd = true;
    return writeUntil(kMostWaiting);
}

std::unique_ptr<MemberPacking::Output> MemberPacking::begin(const SourceItem& item, std::size_t number,
                                                            std::optional<OldBytes> instead) {
    auto output = std::make_unique<Output>();
    output->item = &item;
    output->source.item = number;
    output->instead = instead;
    lzh::NewMember& member = output->member;
    member.name = item.name;
    member.method = item.isFolder() ? kFolder : std::string_view(method_.name);
    member.attributes = item.facts.attributes;
    member.written = item.facts.written;
    member.created = item.facts.created;
    member.accessed = item.facts.accessed;
    return output;
}

/// Reads a file as long as it was when it was opened, however it grows meanwhile.
ReturnCode MemberPacking::readPieces(const InputFile& file, Output& output) {
    std::vector<unsigned char> history;
    const std::uint64_t size = file.size();
    lzh::NewMember& member = output.member;
    while (member.originalSize < size) {
        auto piece = std::make_unique<lzh::Piece>();
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(pieceSize_, size - member.originalSize));
        piece->history = history.size();
        piece->bytes = std::move(history);
        piece->bytes.insert(piece->bytes.end(), wanted, 0);
        const std::span<char> room(reinterpret_cast<char*>(piece->bytes.data()) + piece->history, wanted);
        const std::optional<std::size_t> got = file.readAt(member.originalSize, room);
        if (!got) {
            output.failed = true;
            return kOk;
        }
        if (*got < wanted) {
            output.source.changed = true;
            events_.warning(PackWarning::kChanged, member.name);
        }
        if (*got == 0) break;
        piece->bytes.resize(piece->history + *got);
        member.crc = lzh::crc16Of(textOf(*piece), member.crc);
        if (method_.sumForMoves) {
            output.source.crc32 = static_cast<std::uint32_t>(
                ::crc32_z(output.source.crc32, reinterpret_cast<const Bytef*>(textOf(*piece).data()), *got));
        }
        member.originalSize += *got;
        if (line_) {
            const std::size_t kept = std::min(window_, piece->bytes.size());
            history.assign(piece->bytes.end() - static_cast<std::ptrdiff_t>(kept), piece->bytes.end());
        }
        lzh::Piece& added = *output.pieces.emplace_back(std::move(piece));
        pieceBytes_ += added.size();
        if (line_) line_->put(added);
        ReturnCode code = taken(*got);
        if (code == kOk) code = writeUntil(kMostWaiting);
        if (code != kOk) return code;
        if (*got < wanted) break;
    }
    output.source.size = member.originalSize;
    return kOk;
}

ReturnCode MemberPacking::copy(OldBytes bytes) {
    Output* const last = waiting_.empty() ? nullptr : waiting_.back().get();
    if (last != nullptr && last->old && last->old->end == bytes.offset) {
        last->old->end = bytes.end;
        return kOk;
    }
    waiting_.push_back(std::make_unique<Output>());
    waiting_.back()->old = bytes;
    waiting_.back()->readToEnd = true;
    return writeUntil(kMostWaiting);
}

ReturnCode MemberPacking::finish() {
    const ReturnCode code = writeUntil(0);
    return code == kOk ? text(std::string_view("", 1)) : code;
}

/// Writes from the front until no more than so many members wait, and no more bytes than keep the line at work.
ReturnCode MemberPacking::writeUntil(std::size_t waiting) {
    const std::size_t bytes = waiting > 0 && line_ ? line_->capacity() * pieceSize_ : 0;
    while (!waiting_.empty() && (waiting_.size() > waiting || pieceBytes_ > bytes)) {
        const ReturnCode code = writeFront();
        if (code != kOk) return code;
        // All that there is of the one that is still read.
        if (!waiting_.empty() && waiting_.front()->pieces.empty() && !waiting_.front()->readToEnd) break;
    }
    return kOk;
}

/// Writes the next piece of the first member, or what follows the last one.
ReturnCode MemberPacking::writeFront() {
    Output& output = *waiting_.front();
    if (output.old) {
        const ReturnCode code = copyNow(*output.old);
        waiting_.pop_front();
        return code;
    }
    const bool oneIsAll = !output.begun && output.readToEnd && output.pieces.size() <= 1;
    if (!output.begun) {
        output.begun = true;
        output.offset = archive_.size();
        // Of a member of several pieces, it is written over at the end.
        const ReturnCode code = oneIsAll ? kOk : text(lzh::headerOf(output.member, method_.headers));
        if (code != kOk) return code;
    }
    if (!output.pieces.empty()) {
        const lzh::Piece& piece = *output.pieces.front();
        while (line_ && !line_->waitFor(piece, kWait)) {
            if (const ReturnCode code = taken(0); code != kOk) return code;
        }
        pieceBytes_ -= piece.size();
        if (!oneIsAll) {
            const ReturnCode code = writePiece(output, piece);
            output.pieces.pop_front();
            if (code != kOk) return code;
        }
    }
    if (!output.readToEnd || (!oneIsAll && !output.pieces.empty())) return kOk;
    const ReturnCode code = output.failed ? leaveOut(output) : oneIsAll ? writeStored(output) : endMember(output);
    waiting_.pop_front();
    return code;
}

ReturnCode MemberPacking::writePiece(Output& output, const lzh::Piece& piece) {
    if (!line_) {
        output.member.packedSize += piece.size();
        return text(textOf(piece));
    }
    output.bits.append(piece.bits);
    const std::string bytes = output.bits.takeBytes();
    output.member.packedSize += bytes.size();
    return text(bytes);
}

/// A member of a single piece or none: packed when that is smaller.
ReturnCode MemberPacking::writeStored(Output& output) {
    lzh::NewMember& member = output.member;
    std::string_view data;
    if (!output.pieces.empty()) {
        lzh::Piece& piece = *output.pieces.front();
        piece.bits.fillByte();
        data = piece.bits.bytes();
        if (!line_ || data.size() >= piece.size()) {
            data = textOf(piece);
            member.method = kStored;
        }
    } else if (!output.item->isFolder()) {
        member.method = kStored;
    }
    member.packedSize = data.size();
    ReturnCode code = text(lzh::headerOf(member, method_.headers));
    if (code == kOk) code = text(data);
    return code == kOk ? tell(output) : code;
}

/// A member of several pieces, which are all written.
ReturnCode MemberPacking::endMember(Output& output) {
    lzh::NewMember& member = output.member;
    output.bits.fillByte();
    const std::string rest = output.bits.takeBytes();
    member.packedSize += rest.size();
    ReturnCode code = text(rest);
    if (code == kOk && line_ && member.packedSize >= member.originalSize) {
        code = storeAgain(output);
        if (code == kOk && output.failed) return leaveOut(output);
    }
    const std::string header = lzh::headerOf(member, method_.headers);
    if (code == kOk) code = archive_.patch(output.offset, header);
    return code == kOk ? tell(output) : code;
}

/// Reads a member a second time, as it did not become smaller; its pieces have gone.
ReturnCode MemberPacking::storeAgain(Output& output) {
    lzh::NewMember& member = output.member;
    member.method = kStored;
    member.packedSize = 0;
    archive_.rewind(output.offset);
    ReturnCode code = text(lzh::headerOf(member, method_.headers));
    const InputFileResult opened = sources_.open(output.item->path);
    output.failed = !opened.file;
    std::uint16_t crc = 0;
    buffer_.resize(kCopied);
    while (code == kOk && !output.failed && member.packedSize < member.originalSize) {
        const std::uint64_t left = member.originalSize - member.packedSize;
        const std::span<char> room(buffer_.data(), static_cast<std::size_t>(std::min<std::uint64_t>(kCopied, left)));
        // What has changed since it was read first is not what was read.
        output.failed = !opened.file->readAll(member.packedSize, room);
        if (output.failed) break;
        const std::string_view bytes(room.data(), room.size());
        crc = lzh::crc16Of(bytes, crc);
        member.packedSize += room.size();
        code = text(bytes);
        if (code == kOk) code = taken(0);
    }
    output.failed = output.failed || crc != member.crc;
    return code;
}

ReturnCode MemberPacking::leaveOut(Output& output) {
    events_.warning(PackWarning::kNotOpened, output.item->name);
    if (leftOut_ == kOk) leftOut_ = kFileOpen;
    archive_.rewind(output.offset);
    return output.instead ? copyNow(*output.instead) : kOk;
}

ReturnCode MemberPacking::tell(const Output& output) {
    packed_.push_back(output.source);
    const lzh::NewMember& member = output.member;
    const bool goOn = events_.endMember({.name = member.name,
                                         .originalSize = member.originalSize,
                                         .packedSize = member.packedSize,
                                         .stored = member.method == kStored});
    return goOn ? kOk : kUserCancel;
}

ReturnCode MemberPacking::copyNow(OldBytes bytes) {
    buffer_.resize(kCopied);
    while (bytes.offset < bytes.end) {
        const std::span<char> room(
            buffer_.data(), static_cast<std::size_t>(std::min<std::uint64_t>(kCopied, bytes.end - bytes.offset)));
        if (!old_->readAll(bytes.offset, room)) return kCannotRead;
        ReturnCode code = archive_.write(room);
        if (code == kOk) code = taken(0);
        if (code != kOk) return code;
        bytes.offset += room.size();
    }
    return kOk;
}

}  // namespace archiver
