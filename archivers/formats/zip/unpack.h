#pragma once
#include <atomic>
#include <cstdint>
#include <span>
#include <string>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"
#include "archivers/formats/zip/end_record.h"
#include "archivers/formats/zip/in_memory.h"
#include "archivers/formats/zip/local_header.h"
#include "archivers/formats/zip/member_order.h"

namespace archiver::zip {

/// Unpacks the members of one archive, any number of them at a time.
class Unpacker {
public:
    /// @param file  has to outlive this
    Unpacker(const InputFile& file, const DirectoryPlace& place) noexcept : file_(file), place_(place) {}

    /// Finds out where the members lie; walks the directory the first time. To be called before `unpack`, by one
    /// thread.
    /// @return kOk, or what MemberOrder reported
    ReturnCode prepare();

    /// Unpacks one member and checks its size and checksum. Any thread may call it.
    /// @param passwords  forms of the password, see passwordForms
    /// @return kOk, kPasswordFile, kMethod, kHeaderBroken when no local header stands there, one that contradicts the
    ///         directory, or when the member overlaps another one, kCannotRead when the data ends too early, kFileCrc
    ///         when it is not what was packed, kUserCancel, kEnoughMemory
    ReturnCode unpack(const PackedMember& member, std::span<const std::string> passwords, const DataSink& sink);

    /// Packed bytes of the members that were unpacked.
    [[nodiscard]] std::uint64_t consumed() const noexcept { return consumed_; }
    void forgetConsumed() noexcept { consumed_ = 0; }

private:
    struct Located;

    ReturnCode locate(const PackedMember& member, std::size_t dataWanted, Located& located) const;
    ReturnCode unpackLocated(const PackedMember& member, const Located& located, bool inMemory,
                             std::span<const std::string> passwords, const DataSink& sink);

    const InputFile& file_;
    DirectoryPlace place_;
    MemberOrder order_;
    bool prepared_ = false;
    InMemoryUnpacker inMemory_;
    std::atomic<std::uint64_t> consumed_{0};
};

}  // namespace archiver::zip
