#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "archivers/formats/ace/blocked.h"
#include "archivers/formats/ace/dictionary.h"
#include "archivers/formats/ace/lz77.h"
#include "archivers/formats/ace/parts.h"

namespace archiver::ace {

/// How a member is packed.
enum Method : std::uint8_t { kStored = 0, kLz77Method = 1, kBlockedMethod = 2 };

/// The decoders of an archive, which its members take in turn.
struct Decoders {
    Dictionary dictionary;
    Lz77 lz77;
    Blocked blocked;
};

/// Unpacks one member, piece by piece.
class MemberUnpacker {
public:
    /// @param decoders  outlive this, as the chain does
    /// @param part      the member's first part; its method is one of Method
    /// @param cipher    null for a member that is not encrypted
    /// @param keep      whether stored bytes go to the dictionary too, for the members behind
    MemberUnpacker(Decoders& decoders, VolumeChain& chain, const Part& part, std::shared_ptr<const Cipher> cipher,
                   bool keep);

    /// Makes the next piece.
    /// @return kOk and at least one byte, good until the next call; kNoMoreEntries when the whole member was made and
    /// its
    ///         checksum is right; or an error code, for good
    ReturnCode next(std::span<const char>& piece);

    /// The place behind the member's data, as far as its volumes are there. `next` is not called any more.
    [[nodiscard]] Place behind() {
        data_.goToLast();
        return data_.part().behind();
    }

private:
    ReturnCode decode(std::span<const char>& piece);
    ReturnCode readStored(std::span<const char>& piece);
    ReturnCode finish();

    Decoders& decoders_;
    PackedData data_;
    BitReader reader_;
    Method method_;
    bool keep_;
    std::uint64_t rest_;  ///< bytes still to be made
    std::uint32_t checksum_;
    std::vector<char> buffer_;  ///< of stored bytes
};

}  // namespace archiver::ace
