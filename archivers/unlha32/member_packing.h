#pragma once
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "archivers/formats/input_file.h"
#include "archivers/formats/lzh/new_header.h"
#include "archivers/formats/lzh/piece_line.h"
#include "archivers/packing/archive_replacement.h"
#include "archivers/packing/pack_events.h"
#include "archivers/packing/source_system.h"

namespace archiver {

/// How new members of an LZH archive are packed.
struct LzhMethod {
    std::string name = "-lh5-";  ///< "-lh5-" to "-lh7-", or "-lh0-"
    lzh::HeaderStyle headers;
    unsigned threads = 0;      ///< 0: as many as there are processors
    bool sumForMoves = false;  ///< CRC-32 of the sources is wanted
};

/// Bytes of the old archive.
struct OldBytes {
    std::uint64_t offset = 0;
    std::uint64_t end = 0;
};

/// A source that is in the new archive.
struct PackedSource {
    std::size_t item = 0;  ///< its number
    std::uint64_t size = 0;
    std::uint32_t crc32 = 0;  ///< where it was wanted
    bool changed = false;     ///< it became shorter meanwhile
};

/// Writes members into a new archive in their order, new ones and those of the old archive. Members are read here and
/// packed on all processors; what waits is bounded, however large they are.
class MemberPacking {
public:
    /// @param old  null: there is none. All outlive this
    MemberPacking(SourceSystem& sources, ArchiveReplacement& archive, const InputFile* old, const LzhMethod& method,
                  PackEvents& events);
    ~MemberPacking();
    MemberPacking(const MemberPacking&) = delete;
    MemberPacking& operator=(const MemberPacking&) = delete;

    /// Adds a source. One that cannot be read is warned of.
    /// @param number   names it in `packed`
    /// @param instead  what stays when it cannot be read
    /// @return kOk, kUserCancel, what the new archive answers; kLongFileName. After another code than kOk nothing more
    ///         may be added
    ReturnCode add(const SourceItem& item, std::size_t number, std::optional<OldBytes> instead);
    /// Adds bytes as they are. @return likewise; kCannotRead
    ReturnCode copy(OldBytes bytes);
    /// Writes what waits, and the end mark. @return likewise
    ReturnCode finish();

    [[nodiscard]] const std::vector<PackedSource>& packed() const noexcept { return packed_; }
    /// Of the first source that is not in the archive; kOk when all are.
    [[nodiscard]] ReturnCode leftOut() const noexcept { return leftOut_; }

private:
    struct Output;

    std::unique_ptr<Output> begin(const SourceItem& item, std::size_t number, std::optional<OldBytes> instead);
    ReturnCode readPieces(const InputFile& file, Output& output);
    ReturnCode writeUntil(std::size_t waiting);
    ReturnCode writeFront();
    ReturnCode writePiece(Output& output, const lzh::Piece& piece);
    ReturnCode endMember(Output& output);
    ReturnCode writeStored(Output& output);
    ReturnCode storeAgain(Output& output);
    ReturnCode tell(const Output& output);
    ReturnCode copyNow(OldBytes bytes);
    ReturnCode leaveOut(Output& output);
    ReturnCode text(std::string_view bytes) { return archive_.write({bytes.data(), bytes.size()}); }
    ReturnCode taken(std::uint64_t bytes) { return events_.taken(bytes) ? kOk : kUserCancel; }

    SourceSystem& sources_;
    ArchiveReplacement& archive_;
    const InputFile* old_;
    LzhMethod method_;
    PackEvents& events_;
    std::size_t pieceSize_ = 0;
    std::size_t window_ = 0;
    std::vector<PackedSource> packed_;
    ReturnCode leftOut_ = kOk;
    std::deque<std::unique_ptr<Output>> waiting_;  ///< in their order; the last is the one being read
    std::size_t pieceBytes_ = 0;                   ///< of their pieces
    std::vector<char> buffer_;
    std::optional<lzh::PieceLine> line_;  ///< the last member: its threads work on the others
};

}  // namespace archiver
