#include "archivers/formats/cab/cabinet_writer.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/cab/block_line.h"
#include "archivers/formats/little_endian.h"
#include "archivers/formats/utf8.h"

namespace archiver {

namespace {

constexpr std::string_view kSignature = "MSCF";
constexpr char kVersionMinor = 3;
constexpr char kVersionMajor = 1;
constexpr std::uint16_t kNameIsUtf8 = 0x80;
constexpr std::uint8_t kStoredAttributes =
    attribute::kReadOnly | attribute::kHidden | attribute::kSystem | attribute::kArchive;

void add16(std::string& bytes, std::uint64_t value) {
    char number[2];
    little_endian::store16(number, static_cast<std::uint16_t>(value));
    bytes.append(number, sizeof number);
}

void add32(std::string& bytes, std::uint64_t value) {
    char number[4];
    little_endian::store32(number, static_cast<std::uint32_t>(value));
    bytes.append(number, sizeof number);
}

}  // namespace

CabinetWriter::CabinetWriter(CabinetOutput& output, CabinetMethod method, unsigned threads, std::uint64_t most)
    : output_(output), method_(method), most_(most), line_(std::make_unique<cab::BlockLine>(method, threads)) {
    gathered_.reserve(cab::kBlockSize);
}

CabinetWriter::~CabinetWriter() = default;

ReturnCode CabinetWriter::begin(std::vector<CabinetMember> members) {
    members_ = std::move(members);
    if (const ReturnCode code = cab::layOut(members_, layout_); code != kOk) return code;
    rows_.reserve(members_.size());
    // Room for the tables, which are known in the end.
    const std::vector<char> room(static_cast<std::size_t>(layout_.frontBytes));
    return append(room);
}

ReturnCode CabinetWriter::member(std::size_t index) {
    const std::uint16_t planned = layout_.folders.at(index);
    if (folderOpen_ && planned != plannedFolder_) {
        if (const ReturnCode code = closeFolder(); code != kOk) return code;
    }
    plannedFolder_ = planned;
    if (!folderOpen_) {
        folderOpen_ = true;
        firstBlock_ = true;
        folderBytes_ = 0;
        folders_.push_back({bytes_, 0});
    }
    rows_.push_back({.member = index,
                     .size = 0,
                     .offset = folderBytes_,
                     .folder = static_cast<std::uint16_t>(folders_.size() - 1)});
    current_ = &rows_.back();
    return kOk;
}

ReturnCode CabinetWriter::write(std::span<const char> bytes) {
    const std::uint64_t left = members_[current_->member].size - current_->size;
    if (bytes.size() > left) bytes = bytes.first(static_cast<std::size_t>(left));
    current_->size += bytes.size();
    folderBytes_ += bytes.size();
    while (!bytes.empty()) {
        const std::size_t piece = std::min(bytes.size(), cab::kBlockSize - gathered_.size());
        gathered_.insert(gathered_.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(piece));
        bytes = bytes.subspan(piece);
        if (gathered_.size() < cab::kBlockSize) continue;
        if (const ReturnCode code = putBlock(); code != kOk) return code;
    }
    return kOk;
}

void CabinetWriter::drop() noexcept {
    if (current_ == nullptr) return;
    rows_.pop_back();
    current_ = nullptr;
}

ReturnCode CabinetWriter::putBlock() {
    if (line_->full()) {
        if (const ReturnCode code = takeBlock(); code != kOk) return code;
    }
    line_->put(gathered_, firstBlock_);
    firstBlock_ = false;
    gathered_.clear();
    return kOk;
}

ReturnCode CabinetWriter::takeBlock() {
    ++folders_.back().blocks;
    return append(line_->take());
}

ReturnCode CabinetWriter::closeFolder() {
    if (!gathered_.empty()) {
        if (const ReturnCode code = putBlock(); code != kOk) return code;
    }
    while (!line_->empty()) {
        if (const ReturnCode code = takeBlock(); code != kOk) return code;
    }
    folderOpen_ = false;
    return kOk;
}

ReturnCode CabinetWriter::append(std::span<const char> bytes) {
    if (bytes.size() > most_ - bytes_) return kTooBig;
    bytes_ += bytes.size();
    return output_.append(bytes);
}

ReturnCode CabinetWriter::finish() {
    if (folderOpen_) {
        if (const ReturnCode code = closeFolder(); code != kOk) return code;
    }
    return output_.patch(0, tables());
}

std::string CabinetWriter::tables() const {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(layout_.frontBytes));
    bytes += kSignature;
    add32(bytes, 0);
    add32(bytes, bytes_);
    add32(bytes, 0);
    add32(bytes, cab::kHeaderSize + folders_.size() * cab::kFolderRowSize);
    add32(bytes, 0);
    bytes.push_back(kVersionMinor);
    bytes.push_back(kVersionMajor);
    add16(bytes, folders_.size());
    add16(bytes, rows_.size());
    add16(bytes, 0);  // no reserved bytes, and no cabinets before and behind
    add16(bytes, 0);  // number of the set
    add16(bytes, 0);  // and in it
    for (const Folder& folder : folders_) {
        add32(bytes, folder.begin);
        add16(bytes, folder.blocks);
        add16(bytes, static_cast<std::uint16_t>(method_));
    }
    for (const Row& row : rows_) {
        const CabinetMember& member = members_[row.member];
        add32(bytes, row.size);
        add32(bytes, row.offset);
        add16(bytes, row.folder);
        add16(bytes, member.changed.date);
        add16(bytes, member.changed.time);
        add16(bytes, (member.attributes & kStoredAttributes) | (isAscii(member.name) ? 0 : kNameIsUtf8));
        bytes += member.name;
        bytes.push_back('\0');
    }
    return bytes;
}

}  // namespace archiver
