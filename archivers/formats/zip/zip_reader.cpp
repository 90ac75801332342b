#include "archivers/formats/zip/zip_reader.h"

#include <array>
#include <string_view>
#include <utility>

#include "archivers/formats/zip/central_directory.h"
#include "archivers/formats/zip/end_record.h"
#include "archivers/formats/zip/member_fields.h"
#include "archivers/formats/zip/systems.h"
#include "archivers/formats/zip/unpack.h"

namespace archiver {
namespace {

/// Whether the file starts as programs and scripts do.
bool isProgram(const InputFile& file) {
    std::array<char, 4> start{};
    if (!file.readAll(0, start)) return false;
    const std::string_view text(start.data(), start.size());
    return text.starts_with("MZ") || text.starts_with("#!") ||
           text ==
               "\x7F"
               "ELF";
}

/// The system that made the first member; unknown for an archive without members.
std::uint32_t systemOfFirst(const InputFile& file, const zip::DirectoryPlace& place) {
    constexpr std::size_t kSystemOffset = 5;  // in a directory header
    std::array<char, 1> system{};
    if (place.limit - place.start <= kSystemOffset || !file.readAll(place.start + kSystemOffset, system)) {
        return os_type::kUnknown;
    }
    return zip::osTypeOf(static_cast<unsigned char>(system[0]));
}

class ZipReader final : public ArchiveReader {
public:
    ZipReader(std::unique_ptr<InputFile> file, const zip::DirectoryPlace& place)
        : file_(std::move(file)), shift_(place.shift), directory_(*file_, place) {
        facts_.fileSize = file_->size();
        facts_.selfExtracting = isProgram(*file_);
        facts_.osType = systemOfFirst(*file_, place);
    }

    [[nodiscard]] const ArchiveFacts& facts() const override { return facts_; }

    ReturnCode next(Member& member) override {
        readable_ = false;
        if (ended_ != kOk) return ended_;
        zip::CentralHeader header;
        ended_ = directory_.next(header);
        if (ended_ != kOk) return ended_;
        zip::fillMember(header, member, data_);
        readable_ = true;
        return kOk;
    }

    ReturnCode restart() override {
        directory_.restart();
        ended_ = kOk;
        readable_ = false;
        return kOk;
    }

    ReturnCode read(const DataSink& sink) override {
        if (!std::exchange(readable_, false)) return kNotSearchMode;
        return zip::unpackMember(*file_, data_.localOffset + shift_, data_, sink);
    }

private:
    std::unique_ptr<InputFile> file_;
    std::uint64_t shift_;
    zip::CentralDirectory directory_;
    ArchiveFacts facts_;
    zip::MemberData data_;
    ReturnCode ended_ = kOk;  ///< what ended the walk; kOk while it goes on
    bool readable_ = false;   ///< a member is current and was not read yet
};

}  // namespace

OpenResult openZip(std::unique_ptr<InputFile> file) {
    const zip::DirectoryResult found = zip::findDirectory(*file);
    if (found.code != kOk) return {nullptr, found.code};
    return {std::make_unique<ZipReader>(std::move(file), found.place), kOk};
}

OpenResult openZip(const std::filesystem::path& file) {
    InputFileResult opened = openInputFile(file);
    if (!opened.file) return {nullptr, opened.code};
    return openZip(std::move(opened.file));
}

}  // namespace archiver
