#include "archivers/formats/rar/volume_set.h"

#include <utility>

#include "archivers/formats/rar/volume_name.h"

namespace archiver::rar {

VolumeSet::VolumeSet(std::filesystem::path first, std::shared_ptr<const InputFile> file) : path_(std::move(first)) {
    first_.file = std::move(file);
}

ReturnCode VolumeSet::begin() {
    start_ = findStart(*first_.file);
    if (start_.code != kOk) return start_.code;
    ReturnCode code = readBlock(start_.generation, *first_.file, start_.blocks, main_);
    if (code == kNoMoreEntries) code = kCannotRead;
    if (code != kOk) return code;
    if (main_.kind == Block::Kind::kEncryption || main_.encryptedHeaders) return kPasswordFile;
    if (main_.kind != Block::Kind::kMain) return kHeaderBroken;
    first_.blocks = start_.blocks + main_.headerSize + main_.dataSize;
    return kOk;
}

bool VolumeSet::isVolume(const InputFile& file, std::size_t index, Volume& volume) const {
    const Start start = findStart(file);
    if (start.code != kOk || start.generation != start_.generation) return false;
    Block main;
    if (readBlock(start.generation, file, start.blocks, main) != kOk) return false;
    if (main.kind != Block::Kind::kMain || !main.volume || main.encryptedHeaders) return false;
    if (start.generation == Generation::kNew && main.volumeNumber != main_.volumeNumber + index) return false;
    volume.blocks = start.blocks + main.headerSize + main.dataSize;
    return true;
}

ReturnCode VolumeSet::open(std::size_t index, Volume& volume) {
    if (index == 0) {
        volume = first_;
        return kOk;
    }
    if (latest_.file == nullptr || latestIndex_ != index) {
        if (!main_.volume) return kArcFileOpen;
        const std::filesystem::path path = volumePath(path_, index, main_.newNames);
        if (path.empty()) return kArcFileOpen;
        InputFileResult opened = openInputFile(path);
        Volume next;
        if (opened.file == nullptr || !isVolume(*opened.file, index, next)) return kArcFileOpen;
        next.file = std::move(opened.file);
        latest_ = std::move(next);
        latestIndex_ = index;
    }
    volume = latest_;
    return kOk;
}

}  // namespace archiver::rar
