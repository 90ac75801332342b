#include "archivers/unace/ace_archive.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "archivers/unace/ace_codes.h"
#include "archivers/unpacking/member_job.h"
#include "archivers/unpacking/target_system.h"
#include "archivers/unpacking/utf8_path.h"
#include "archivers/unpacking/web_mark.h"

namespace archiver::unace {
namespace {

namespace fs = std::filesystem;
namespace result = ace_abi::result;

bool isSeparator(char character) { return character == '/' || character == '\\'; }

std::string utf8Of(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {reinterpret_cast<const char*>(text.data()), text.size()};
}

std::uint32_t number32(std::uint64_t number) {
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(number, std::numeric_limits<std::uint32_t>::max()));
}

}  // namespace

AceArchive::AceArchive(std::unique_ptr<AceReader> reader, fs::path file, const OpenWishes& wishes)
    : reader_(std::move(reader)), file_(std::move(file)), wishes_(wishes), codec_(&ansiCodec()) {
    if (wishes_.changeVolume != nullptr) {
        reader_->setVolumeCallback(
            [this](fs::path& volume, AceVolumeEvent event) { return changeVolume(volume, event); });
    }
}

std::int32_t AceArchive::readHeader(ace_abi::HeaderData& header, const TextCodec& codec) {
    codec_ = &codec;
    member_.reset();
    Member member;
    if (const ReturnCode code = reader_->next(member); code != kOk) return resultOf(code, passwordSet_);
    const AceHeader& stored = reader_->header();
    codec.encode(utf8Of(reader_->currentVolume()), header.archiveName, sizeof header.archiveName);
    std::string name = member.name;
    while (!name.empty() && isSeparator(name.back())) name.pop_back();  // a folder is known by its attribute
    codec.encode(name, header.fileName, sizeof header.fileName);
    header.flags = stored.flags;
    header.packedSize = number32(member.packedSize);
    header.originalSize = number32(member.originalSize);
    header.fileCrc = stored.checksum;
    header.fileTime = stored.stamp;
    header.method = stored.method;
    header.quality = stored.quality;
    header.attributes = stored.attributes;
    const std::optional<std::string>& comment = stored.comment;
    std::uint32_t commentSize = 0;
    header.commentState = writeComment(comment ? comment->data() : nullptr, comment ? comment->size() : 0,
                                       header.commentBuffer, header.commentBufferSize, commentSize);
    header.commentSize = commentSize;
    member_ = std::move(member);
    return result::kOk;
}

std::int32_t AceArchive::process(std::int32_t operation, const char* destination, const TextCodec& codec) {
    codec_ = &codec;
    if (operation < ace_abi::kSkip || operation > ace_abi::kExtract) return result::kConstant;
    if (!member_) return result::kOther;
    if (operation == ace_abi::kSkip) return result::kOk;
    if (operation == ace_abi::kTest) return resultOf(test(), passwordSet_);
    Target target;
    if (const ReturnCode code = targetOf(destination, codec, target); code != kOk) return resultOf(code, passwordSet_);
    return resultOf(extract(target), passwordSet_);
}

std::int32_t AceArchive::setPassword(const char* password, const TextCodec& codec) {
    passwordSet_ = password != nullptr && *password != '\0';
    reader_->setPassword(passwordSet_ ? codec.decode(password) : std::string());
    return result::kOk;
}

bool AceArchive::changeVolume(fs::path& volume, AceVolumeEvent event) const {
    char name[ace_abi::kNameSize];
    const std::string before = utf8Of(volume);
    if (!codec_->encode(before, name, sizeof name).whole) return false;
    const std::string given = name;
    const std::int32_t mode = event == AceVolumeEvent::kRequest ? ace_abi::kVolumeRequest : ace_abi::kVolumeOpened;
    if (wishes_.changeVolume(name, mode) == 0) return false;
    name[sizeof name - 1] = '\0';
    if (event == AceVolumeEvent::kRequest && given != name) volume = codec_->decodePath(name);
    return true;
}

bool AceArchive::tellData(const char* bytes, std::size_t size) const {
    while (wishes_.processData != nullptr && size > 0) {
        const std::size_t piece = std::min<std::size_t>(size, 1U << 20);
        auto* const address = reinterpret_cast<std::uint8_t*>(const_cast<char*>(bytes));
        if (wishes_.processData(address, static_cast<std::int32_t>(piece)) == 0) return false;
        bytes += piece;
        size -= piece;
    }
    return true;
}

ReturnCode AceArchive::targetOf(const char* destination, const TextCodec& codec, Target& target) const {
    const std::string_view text = destination != nullptr ? destination : "";
    std::error_code error;
    const fs::path path = fs::absolute(text.empty() ? fs::current_path(error) : codec.decodePath(text), error);
    if (error) return kMakeDirectory;
    if (text.empty() || isSeparator(text.back()) || fs::is_directory(path, error)) {
        TargetName safe = targetNameOf(member_->name);
        if (safe.code != kOk) return safe.code;
        target = {path, std::move(safe.name)};
        return kOk;
    }
    target = {path.parent_path(), utf8Of(path.filename())};
    return target.name.empty() ? kNotFilename : kOk;
}

ReturnCode AceArchive::test() {
    if (member_->kind == MemberKind::kFolder) return kOk;
    return reader_->read([this](const char* bytes, std::size_t size) { return tellData(bytes, size); });
}

ReturnCode AceArchive::extract(const Target& target) {
    TargetSystem& system = systemTarget();
    std::unique_ptr<TargetFolder> folder;
    if (const ReturnCode code = system.open(target.folder, folder); code != kOk) return code;
    if (member_->kind == MemberKind::kFolder) {
        bool made = false;
        return target.name.empty() ? kOk : folder->makeFolder(pathOfUtf8(target.name), made);
    }
    if (member_->kind != MemberKind::kFile) return kNotSupport;  // a volume label
    if (target.name.empty()) return kNotFilename;
    if (const fs::path name = pathOfUtf8(target.name); name.has_parent_path()) {
        bool made = false;
        if (const ReturnCode code = folder->makeFolder(name.parent_path(), made); code != kOk) return code;
    }
    if (!webMark_) webMark_ = passedWebMark(system.webMark(file_));
    MemberJob job;
    job.member = *member_;
    job.place.name = target.name;
    job.place.replace = true;
    job.toTarget = true;
    JobSurroundings around;
    around.target = folder.get();
    around.restoreAttributes = true;
    around.webMark = *webMark_;
    return performJob(job, around,
                      [this](const DataSink& sink) {
                          return reader_->read([&](const char* bytes, std::size_t size) {
                              return tellData(bytes, size) && sink(bytes, size);
                          });
                      },
                      {});
}

}  // namespace archiver::unace
