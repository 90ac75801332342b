#include "archivers/formats/rar/header_walk.h"

#include <utility>

namespace archiver::rar {

void HeaderWalk::rewind() { ended_ = openVolume(0); }

void HeaderWalk::goTo(const Place& place) {
    ended_ = openVolume(place.volume);
    place_ = place;
}

ReturnCode HeaderWalk::openVolume(std::size_t index) {
    Volume volume;
    if (const ReturnCode code = volumes_.open(index, volume); code != kOk) return code;
    volume_ = std::move(volume);
    place_ = {index, volume_.blocks};
    return kOk;
}

/// Reads the block at the walk's place and goes behind its data.
ReturnCode HeaderWalk::nextBlock(Block& block) {
    const ReturnCode code = readBlock(volumes_.generation(), *volume_.file, place_.offset, block);
    // Archives of old need no end mark.
    if (code == kNoMoreEntries && volumes_.generation() == Generation::kNew) return kCannotRead;
    if (code != kOk) return code;
    place_.offset += block.headerSize + block.dataSize;
    return kOk;
}

ReturnCode HeaderWalk::next(PackedFile& file) {
    while (ended_ == kOk) {
        const Place place = place_;
        Block block;
        ended_ = nextBlock(block);
        if (ended_ != kOk) break;
        switch (block.kind) {
            case Block::Kind::kFile:
                file.header = std::move(block.file);
                file.place = place;
                file.parts.assign(1, {{place.volume, place.offset + block.headerSize}, block.dataSize});
                file.state = file.header.splitBefore ? kCannotRead : kOk;
                joinParts(file);
                return kOk;
            case Block::Kind::kEnd:
                ended_ = block.moreVolumes ? openVolume(place_.volume + 1) : kNoMoreEntries;
                break;
            case Block::Kind::kEncryption:
                ended_ = kPasswordFile;
                break;
            case Block::Kind::kMain:
            case Block::Kind::kOther:
                break;
        }
    }
    return ended_;
}

void HeaderWalk::joinParts(PackedFile& file) {
    bool more = file.header.splitAfter;
    while (more) {
        if (ended_ = openVolume(place_.volume + 1); ended_ != kOk) break;
        const Place begin = place_;
        Place place = begin;
        Block block;
        do {
            place = place_;
            ended_ = nextBlock(block);
        } while (ended_ == kOk && block.kind == Block::Kind::kOther);
        if (ended_ == kNoMoreEntries) ended_ = kCannotRead;
        if (ended_ != kOk) break;
        if (block.kind != Block::Kind::kFile || !block.file.splitBefore || block.file.name != file.header.name) {
            // What it holds has no beginning here, but can be told.
            place_ = begin;
            if (file.state == kOk) file.state = kArcFileOpen;
            return;
        }
        file.parts.push_back({{place.volume, place.offset + block.headerSize}, block.dataSize});
        file.header.packedSize += block.dataSize;
        file.header.crc = block.file.crc;
        file.header.hasCrc = block.file.hasCrc;
        file.header.blake2 = std::move(block.file.blake2);
        file.header.encrypted = file.header.encrypted || block.file.encrypted;
        more = block.file.splitAfter;
    }
    if (ended_ != kOk && file.state == kOk) file.state = kArcFileOpen;
}

}  // namespace archiver::rar
