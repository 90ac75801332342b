#include "archivers/formats/zip/zip_reader.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "archivers/formats/legacy_text.h"
#include "archivers/formats/utf8.h"
#include "archivers/formats/zip/central_directory.h"
#include "archivers/formats/zip/decryption.h"
#include "archivers/formats/zip/end_record.h"
#include "archivers/formats/zip/extra_fields.h"
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

/// The archive's comment, as far as the file has it. Its encoding is told nowhere.
std::string commentOf(const InputFile& file, const zip::DirectoryPlace& place) {
    std::string bytes(place.commentSize, '\0');
    bytes.resize(file.readAt(place.commentOffset, bytes).value_or(0));
    std::replace(bytes.begin(), bytes.end(), '\0', '_');
    if (isUtf8(bytes)) return bytes;
    std::string utf8;
    appendLegacyText(bytes, LegacyPage::kOem, utf8);
    return utf8;
}

/// The forms of a password, which those who read with it hold on to when the reader is given another one.
using Passwords = std::shared_ptr<const std::vector<std::string>>;

class DetachedMember final : public DetachedData {
public:
    DetachedMember(zip::Unpacker& unpacker, zip::PackedMember member, Passwords passwords)
        : unpacker_(unpacker), member_(std::move(member)), passwords_(std::move(passwords)) {}

    ReturnCode read(const DataSink& sink) override { return unpacker_.unpack(member_, *passwords_, sink); }

private:
    zip::Unpacker& unpacker_;
    zip::PackedMember member_;
    Passwords passwords_;
};

class ZipReader final : public ArchiveReader {
public:
    ZipReader(std::unique_ptr<InputFile> file, const zip::DirectoryPlace& place)
        : file_(std::move(file)), directory_(*file_, place), unpacker_(*file_, place) {
        facts_.fileSize = file_->size();
        facts_.selfExtracting = isProgram(*file_);
        facts_.osType = systemOfFirst(*file_, place);
        facts_.comment = commentOf(*file_, place);
    }

    [[nodiscard]] const ArchiveFacts& facts() const override { return facts_; }

    ReturnCode next(Member& member) override {
        readable_ = false;
        if (ended_ != kOk) return ended_;
        zip::CentralHeader header;
        ended_ = directory_.next(header);
        if (ended_ != kOk) return ended_;
        zip::fillMember(header, member, current_.data);
        current_.storedName.assign(header.name);
        current_.unicodePath.assign(zip::extraField(header.extra, zip::extra_id::kUnicodePath));
        current_.system = header.system();
        readable_ = true;
        return kOk;
    }

    ReturnCode restart() override {
        directory_.restart();
        unpacker_.forgetConsumed();
        ended_ = kOk;
        readable_ = false;
        return kOk;
    }

    void setPassword(std::string_view utf8) override {
        passwords_ = std::make_shared<const std::vector<std::string>>(zip::passwordForms(utf8));
    }

    ReturnCode read(const DataSink& sink) override {
        // An encrypted one may be read again, with another password.
        const bool again = current_.data.encryption != zip::Encryption::kNone;
        if (!std::exchange(readable_, readable_ && again)) return kNotSearchMode;
        if (const ReturnCode code = unpacker_.prepare(); code != kOk) return code;
        return unpacker_.unpack(current_, *passwords_, sink);
    }

    /// Null also when the archive cannot be looked over; `read` tells why.
    std::unique_ptr<DetachedData> detach() override {
        if (!readable_ || unpacker_.prepare() != kOk) return nullptr;
        return std::make_unique<DetachedMember>(unpacker_, current_, passwords_);
    }

    [[nodiscard]] std::uint64_t consumed() const override { return unpacker_.consumed(); }

private:
    std::unique_ptr<InputFile> file_;
    zip::CentralDirectory directory_;
    zip::Unpacker unpacker_;
    ArchiveFacts facts_;
    zip::PackedMember current_;
    Passwords passwords_ = std::make_shared<const std::vector<std::string>>();
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
