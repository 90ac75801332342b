#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "archivers/formats/arj/file_view.h"
#include "archivers/formats/arj/header_fields.h"

namespace archiver::arj {

/// Goes over the headers of one volume.
class HeaderWalk {
public:
    /// Where the main header may begin at the latest: behind a self-extracting program.
    static constexpr std::uint64_t kSearchLimit = std::uint64_t{512} * 1024;

    explicit HeaderWalk(std::shared_ptr<const InputFile> file) noexcept : view_(std::move(file)) {}

    /// Finds the main header and goes behind it. The first call of all.
    /// @return kOk, kFileStyle when there is none, kHeaderBroken, kHeaderCrc, kCannotRead
    ReturnCode begin();

    /// Gives the next header and goes behind its data.
    /// @return kOk, kNoMoreEntries at the end mark or the end of the file, kHeaderBroken, kHeaderCrc, kCannotRead
    ReturnCode next(FileHeader& header);

    /// Goes back to the first file header.
    void rewind() noexcept { at_ = first_; }

    [[nodiscard]] const MainHeader& main() const noexcept { return main_; }
    /// Where the main header stands: 0 unless something is in front of the archive.
    [[nodiscard]] std::uint64_t start() const noexcept { return start_; }

private:
    ReturnCode search();
    ReturnCode basicAt(std::uint64_t offset, std::string_view& basic);
    ReturnCode skipExtended(std::uint64_t& offset);

    FileView view_;
    MainHeader main_;
    std::uint64_t start_ = 0;
    std::uint64_t first_ = 0;
    std::uint64_t at_ = 0;
};

}  // namespace archiver::arj
