#pragma once
#include <memory>
#include <string>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"
#include "archivers/formats/tar/byte_stream.h"
#include "archivers/formats/tar/tar_names.h"
#include "archivers/formats/tar/tar_walker.h"

namespace archiver::tar {

/// The members of a tar, which can be compressed as a whole.
///
/// Packed and original size are the same: members are not packed one by one. Links and devices are members without
/// bytes. After the last member of a compressed tar the walk answers with an error when the file's checksum is wrong or
/// its end is missing.
class TarReader final : public ArchiveReader {
public:
    TarReader(std::unique_ptr<InputFile> file, Compression compression);

    [[nodiscard]] const ArchiveFacts& facts() const override { return facts_; }
    ReturnCode next(Member& member) override;
    ReturnCode restart() override;
    ReturnCode read(const DataSink& sink) override;
    [[nodiscard]] std::uint64_t consumed() const override { return walker_->consumed(); }

private:
    void fill(Member& member);
    [[nodiscard]] MemberKind kindOf(std::string& linkTarget);

    std::unique_ptr<InputFile> file_;
    Compression compression_;
    ArchiveFacts facts_;
    std::unique_ptr<TarNames> names_;
    std::unique_ptr<TarWalker> walker_;
    bool hasBytes_ = false;  ///< the current member is no link and no device
    bool readable_ = false;  ///< a member is current and was not read yet
};

}  // namespace archiver::tar
