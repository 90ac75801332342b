#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "archivers/formats/ace/cipher.h"
#include "archivers/formats/ace/parts.h"
#include "archivers/formats/ace/unpacker.h"

namespace archiver::ace {

/// Unpacks members for a reader, and keeps the dictionary of a solid archive in step: members that were passed over
/// are unpacked when one behind them is read.
class MemberReader {
public:
    /// @param chain  outlives this
    /// @param first  the archive's first header
    /// @param solid  whether all members share a dictionary, whatever their own headers say
    MemberReader(VolumeChain& chain, Place first, bool solid);

    /// Tells of a member that the walk reached.
    /// @param number  how many members stand in front of it
    void passed(const Part& part, std::uint64_t number);

    /// Unpacks a member that the walk reached. The sink is called without bytes while members in front are unpacked.
    ReturnCode read(const Part& part, std::uint64_t number, const DataSink& sink);

    void setPassword(std::string_view password);

private:
    struct Position {
        Place place;
        std::uint64_t number = 0;
    };

    [[nodiscard]] bool sharesDictionary(const FileHeader& header) const noexcept;
    [[nodiscard]] ReturnCode refusal(const FileHeader& header) const noexcept;
    void startOver(const Position& at);
    std::unique_ptr<MemberUnpacker> unpackerOf(const Part& part, bool keep);
    ReturnCode unpackInFront(const DataSink& sink);
    ReturnCode unpackNext(const Part& part, const DataSink& sink, bool discard);
    ReturnCode settle(const FileHeader& header, ReturnCode code) noexcept;

    VolumeChain& chain_;
    bool solid_;
    std::unique_ptr<Decoders> decoders_;  ///< made when they are needed first
    std::shared_ptr<const Cipher> cipher_;
    std::string password_;
    bool passwordProven_ = false;    ///< a member came out right with it
    bool passwordDoubtful_ = false;  ///< a member came out wrong with it, and so did the dictionary

    Position first_;
    Position rowStart_;  ///< where the members begin that share a dictionary with the one the walk reached
    Position next_;      ///< the dictionary holds what stands in front of this member
    std::unique_ptr<MemberUnpacker> unfinished_;  ///< unpacks the member at next_; it was stopped on the way
};

}  // namespace archiver::ace
