#include "archivers/commands/progress_notifier.h"

#include <cstring>

#include "archivers/commands/command_paths.h"
#include "archivers/convention/entry_record.h"

namespace archiver {

namespace {
constexpr std::chrono::milliseconds kInterval{50};
}

bool ProgressNotifier::opened(const std::filesystem::path& archive, std::uint64_t size) {
    if (!hasOwner()) return true;
    info_ = {};
    info_.info.fileSize = clampToDword(size);
    codec_.encode(utf8Of(archive), info_.info.sourceFileName, sizeof info_.info.sourceFileName);
    return notify(OwnerState::kOpen);
}

bool ProgressNotifier::begins(const Member& member, const std::filesystem::path& file) {
    if (!hasOwner()) return true;
    fill(member, file);
    return notify(OwnerState::kBegin);
}

bool ProgressNotifier::progress(const UnpackProgress& progress) {
    if (!hasOwner() || progress.member == nullptr) return true;
    const auto now = clock_();
    if (now - last_ < kInterval) return true;
    // Members that are unpacked side by side come in turns.
    if (progress.member != member_) fill(*progress.member, progress.file);
    info_.info.writeSize = clampToDword(progress.memberBytes);
    return notify(OwnerState::kInProcess);
}

bool ProgressNotifier::replacing(const std::filesystem::path& archive) {
    if (!hasOwner()) return true;
    info_ = {};
    codec_.encode(utf8Of(archive), info_.info.destFileName, sizeof info_.info.destFileName);
    return notify(OwnerState::kCopy);
}

void ProgressNotifier::ended() noexcept {
    if (hasOwner()) notify(OwnerState::kEnd);
}

void ProgressNotifier::fill(const Member& member, const std::filesystem::path& file) {
    member_ = &member;
    info_ = {};
    IndividualInfo record;
    fillRecord(member, library_, codec_, record);
    info_.info.fileSize = record.originalSize;
    std::memcpy(info_.info.sourceFileName, record.fileName, sizeof record.fileName);
    codec_.encode(utf8Of(file), info_.info.destFileName, sizeof info_.info.destFileName);
    info_.compressedSize = record.compressedSize;
    info_.crc = record.crc;
    info_.osType = record.osType;
    info_.ratio = record.ratio;
    info_.date = record.date;
    info_.time = record.time;
    std::memcpy(info_.attribute, record.attribute, sizeof record.attribute);
    std::memcpy(info_.mode, record.mode, sizeof record.mode);
}

bool ProgressNotifier::notify(OwnerState state) noexcept {
    last_ = clock_();
    if (owner_.callback == nullptr) return !sendOwnerMessage(owner_.window, state, &info_.info);
    const Bool answer = owner_.callback(owner_.window, ownerMessage(), static_cast<std::uint32_t>(state), &info_);
    return (answer == 0) != invertCallback_;
}

}  // namespace archiver
