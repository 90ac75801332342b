#pragma once
#include <memory>
#include <string>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"
#include "archivers/formats/tar/byte_stream.h"

namespace archiver::tar {

/// What is known of the one member of a compressed file before it is unpacked.
struct SingleMember {
    std::string name;  ///< UTF-8
    Moment written;
    std::uint32_t osType = os_type::kUnknown;
};

/// A compressed file that holds no tar: one member. Its size is not known before it is unpacked and given as 0; what a
/// gzip file's end says of it is its lowest 32 bits, and of its last part alone.
class SingleReader final : public ArchiveReader {
public:
    SingleReader(std::unique_ptr<InputFile> file, Compression compression, SingleMember member);

    [[nodiscard]] const ArchiveFacts& facts() const override { return facts_; }
    ReturnCode next(Member& member) override;
    ReturnCode restart() override;
    ReturnCode read(const DataSink& sink) override;
    [[nodiscard]] std::uint64_t consumed() const override { return consumed_; }

private:
    enum class Position { kBefore, kOn, kBehind };

    std::unique_ptr<InputFile> file_;
    Compression compression_;
    SingleMember member_;
    ArchiveFacts facts_;
    Position position_ = Position::kBefore;
    std::uint64_t consumed_ = 0;
};

}  // namespace archiver::tar
