#pragma once
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <span>
#include <string>

#include "archivers/formats/zip/header_writer.h"
#include "archivers/formats/zip/traditional_cipher.h"
#include "archivers/infozip32/pack_workers.h"
#include "archivers/packing/archive_replacement.h"

namespace archiver::infozip {

struct PackSettings {
    int level = 6;         ///< 0 stores
    std::string password;  ///< bytes; empty: nothing is encrypted
    bool plainTimes = false;
};

/// Packs items one after the other into an archive, with those that follow under way on other cores.
///
/// Headers and the pipeline are our own: libzip takes no members that are packed already, and packs one at a time.
class MemberPacker {
public:
    /// Files up to this many bytes are packed whole; larger ones in parts of the other size.
    static constexpr std::uint64_t kLargestWhole = std::uint64_t{2} << 20;
    static constexpr std::uint64_t kPart = std::uint64_t{1} << 20;

    /// @param items  that will be packed, in their order; all arguments outlive the packer
    MemberPacker(SourceSystem& system, std::span<const SourceItem* const> items, const PackSettings& settings,
                 ArchiveReplacement& archive);

    /// Called while the calling thread waits.
    std::function<void()> onWait = [] {};
    /// Called for each part of a large member.
    std::function<void()> onPart = [] {};

    /// Packs the next item.
    /// @return kOk; kFileOpen or kCannotRead when the source gives nothing: the archive is as before; what writing
    ///         answered; kEnoughMemory
    ReturnCode pack(zip::NewMember& member);

private:
    struct Under {
        std::size_t item = 0;
        std::uint64_t size = 0;
        std::shared_ptr<PackJob> job;
    };

    void fill();
    [[nodiscard]] bool giveOne();
    [[nodiscard]] int levelOf(const SourceItem& item) const noexcept;
    ReturnCode packWhole(zip::NewMember& member, PackJob& job);
    ReturnCode packParts(zip::NewMember& member, std::size_t item, std::shared_ptr<PackJob> first);
    ReturnCode storeAgain(zip::NewMember& member, const SourceItem& item);
    ReturnCode writeAll(zip::NewMember& member, zip::TraditionalCipher* cipher, std::string& bytes);
    std::shared_ptr<PackJob> take();
    void forget(std::size_t item);

    SourceSystem& system_;
    std::span<const SourceItem* const> items_;
    const PackSettings& settings_;
    ArchiveReplacement& archive_;
    std::size_t next_ = 0;  ///< the item that `pack` is for

    std::size_t given_ = 0;  ///< the item whose jobs are made
    std::shared_ptr<InputFile> file_;
    std::uint64_t givenOffset_ = 0;
    std::deque<Under> under_;
    std::uint64_t underBytes_ = 0;
    PackWorkers workers_;  ///< last, for it uses the others
};

}  // namespace archiver::infozip
