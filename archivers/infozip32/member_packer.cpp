#include "archivers/infozip32/member_packer.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>
#include <utility>

#include "archivers/formats/moments.h"
#include "archivers/formats/zip/deflater.h"
#include "archivers/formats/zip/signatures.h"

namespace archiver::infozip {
namespace {

/// Of sources that are under way, so that a 32-bit process keeps most of its memory.
constexpr std::uint64_t kMostUnderWay = std::uint64_t{24} << 20;
constexpr std::size_t kMostJobs = 256;

/// From here on a header has room for sizes of 64 bits; what packing adds at most is between this and 4 GiB.
constexpr std::uint64_t kLarge = 0xF0000000;

/// Whether a file is packed already, by its name.
bool isPacked(std::string_view name) {
    std::string end(name.substr(name.size() > 4 ? name.size() - 4 : 0));
    std::ranges::transform(end, end.begin(), [](unsigned char each) { return static_cast<char>(std::tolower(each)); });
    constexpr std::array<std::string_view, 6> kEnds{".z", ".zip", ".zoo", ".arc", ".lzh", ".arj"};
    return std::ranges::any_of(kEnds, [&](std::string_view each) { return end.ends_with(each); });
}

}  // namespace

MemberPacker::MemberPacker(SourceSystem& system, std::span<const SourceItem* const> items, const PackSettings& settings,
                           ArchiveReplacement& archive)
    : system_(system), items_(items), settings_(settings), archive_(archive), workers_(system) {}

int MemberPacker::levelOf(const SourceItem& item) const noexcept {
    return settings_.level < 9 && isPacked(item.name) ? 0 : settings_.level;
}

void MemberPacker::fill() {
    while (under_.size() < kMostJobs && (under_.empty() || underBytes_ < kMostUnderWay) && giveOne()) {
    }
}

/// Makes one more job. @return false when all are made
bool MemberPacker::giveOne() {
    while (given_ < items_.size() && items_[given_]->isFolder()) ++given_;
    if (given_ == items_.size()) return false;
    const SourceItem& item = *items_[given_];
    auto job = std::make_shared<PackJob>();
    job->level = levelOf(item);
    job->size = item.facts.size;
    const std::size_t of = given_;
    if (item.facts.size <= kLargestWhole) {
        job->path = item.path;
        ++given_;
    } else {
        if (!file_) {
            file_ = system_.open(item.path).file;
            givenOffset_ = 0;
        }
        if (!file_) {
            job->path = item.path;  // the worker finds out the same
            job->size = 0;
            ++given_;
        } else {
            // What is added while the file is packed belongs to another moment.
            const std::uint64_t size = std::min(file_->size(), item.facts.size);
            const std::uint64_t left = size - std::min(size, givenOffset_);
            job->file = file_;
            job->offset = givenOffset_;
            job->size = std::min(left, kPart);
            job->whole = false;
            job->last = left <= kPart;
            givenOffset_ += job->size;
            if (job->last) {
                file_.reset();
                ++given_;
            }
        }
    }
    underBytes_ += job->size;
    under_.push_back({of, job->size, job});
    workers_.add(std::move(job));
    return true;
}

std::shared_ptr<PackJob> MemberPacker::take() {
    fill();
    const std::uint64_t size = under_.front().size;
    std::shared_ptr<PackJob> job = std::move(under_.front().job);
    under_.pop_front();
    workers_.wait(*job, onWait);
    underBytes_ -= size;
    fill();
    return job;
}

/// Gives up what is under way of an item, and what would be.
void MemberPacker::forget(std::size_t item) {
    for (; !under_.empty() && under_.front().item == item; under_.pop_front()) underBytes_ -= under_.front().size;
    if (file_ && given_ == item) {
        file_.reset();
        ++given_;
    }
}

ReturnCode MemberPacker::pack(zip::NewMember& member) {
    const std::size_t index = next_++;
    const SourceItem& item = *items_[index];
    member.name = item.name;
    member.attributes = item.facts.attributes;
    member.written = item.facts.written;
    member.created = item.facts.created;
    member.accessed = item.facts.accessed;
    member.plainTimes = settings_.plainTimes;
    member.localOffset = archive_.size();
    if (item.isFolder()) return archive_.write(zip::localHeaderOf(member));

    const std::shared_ptr<PackJob> job = take();
    switch (job->state) {
        case PackJob::State::kNotOpened:
            return kFileOpen;
        case PackJob::State::kNoMemory:
            forget(index);
            return kEnoughMemory;
        case PackJob::State::kNotRead:
            forget(index);
            return kCannotRead;
        default:
            return job->whole ? packWhole(member, *job) : packParts(member, index, job);
    }
}

ReturnCode MemberPacker::writeAll(zip::NewMember& member, zip::TraditionalCipher* cipher, std::string& bytes) {
    if (cipher != nullptr) cipher->encrypt(bytes);
    member.packedSize += bytes.size();
    return archive_.write(bytes);
}

ReturnCode MemberPacker::packWhole(zip::NewMember& member, PackJob& job) {
    member.originalSize = job.taken;
    member.crc = job.crc;
    member.method = job.deflated ? zip::kDeflated : zip::kStored;
    if (settings_.password.empty()) {
        member.packedSize = job.bytes.size();
        if (const ReturnCode code = archive_.write(zip::localHeaderOf(member)); code != kOk) return code;
        return archive_.write(job.bytes);
    }
    zip::TraditionalCipher cipher(settings_.password);
    const auto header = cipher.header(static_cast<std::uint8_t>(job.crc >> 24));
    cipher.encrypt(job.bytes);
    member.flags = zip::flag::kEncrypted;
    member.packedSize = header.size() + job.bytes.size();
    ReturnCode code = archive_.write(zip::localHeaderOf(member));
    if (code == kOk) code = archive_.write(header);
    return code == kOk ? archive_.write(job.bytes) : code;
}

ReturnCode MemberPacker::packParts(zip::NewMember& member, std::size_t index, std::shared_ptr<PackJob> job) {
    const SourceItem& item = *items_[index];
    const bool encrypted = !settings_.password.empty();
    const bool deflated = job->deflated;
    member.method = deflated ? zip::kDeflated : zip::kStored;
    member.large = item.facts.size >= kLarge;
    // The cipher starts with the checksum, which is known last; so the time stands for it, and the rest follows.
    if (encrypted) member.flags = zip::flag::kEncrypted | zip::flag::kSizesFollow;
    const std::uint64_t start = archive_.size();
    ReturnCode code = archive_.write(zip::localHeaderOf(member));
    std::optional<zip::TraditionalCipher> cipher;
    if (code == kOk && encrypted) {
        cipher.emplace(settings_.password);
        const DosStamp stamp = dosStampOf(member.written ? *member.written : Moment{});
        const auto header = cipher->header(static_cast<std::uint8_t>(stamp.time >> 8));
        member.packedSize = header.size();
        code = archive_.write(header);
    }
    for (;;) {
        if (job->state == PackJob::State::kNotRead || job->state == PackJob::State::kNoMemory) {
            code = job->state == PackJob::State::kNotRead ? kCannotRead : kEnoughMemory;
            break;
        }
        member.crc = zip::combinedCrc(member.crc, job->crc, job->taken);
        member.originalSize += job->taken;
        if (code == kOk) code = writeAll(member, cipher ? &*cipher : nullptr, job->bytes);
        onPart();
        if (job->last || code != kOk) break;
        job = take();
    }
    if (code != kOk) {
        forget(index);
        archive_.rewind(start);
        return code;
    }
    if (deflated && member.packedSize >= member.originalSize) {
        archive_.rewind(start);
        return storeAgain(member, item);
    }
    if (encrypted) return archive_.write(zip::descriptorOf(member));
    return archive_.patch(start, zip::localHeaderOf(member));
}

/// A large file that packing made no smaller, once more and as it is.
ReturnCode MemberPacker::storeAgain(zip::NewMember& member, const SourceItem& item) {
    const InputFileResult opened = system_.open(item.path);
    if (!opened.file) return kFileOpen;
    const bool encrypted = !settings_.password.empty();
    const std::uint64_t start = archive_.size();
    const std::uint64_t size = std::min(opened.file->size(), member.originalSize);
    member.method = zip::kStored;
    member.originalSize = member.packedSize = 0;
    member.crc = 0;
    ReturnCode code = archive_.write(zip::localHeaderOf(member));
    std::optional<zip::TraditionalCipher> cipher;
    if (code == kOk && encrypted) {
        cipher.emplace(settings_.password);
        const DosStamp stamp = dosStampOf(member.written ? *member.written : Moment{});
        const auto header = cipher->header(static_cast<std::uint8_t>(stamp.time >> 8));
        member.packedSize = header.size();
        code = archive_.write(header);
    }
    std::string bytes;
    while (code == kOk && member.originalSize < size) {
        bytes.resize(static_cast<std::size_t>(std::min(size - member.originalSize, kPart)));
        const std::optional<std::size_t> got = opened.file->readAt(member.originalSize, bytes);
        if (!got) {
            archive_.rewind(start);
            return kCannotRead;
        }
        if (*got == 0) break;
        bytes.resize(*got);
        member.crc = zip::crcOf(member.crc, bytes);
        member.originalSize += *got;
        code = writeAll(member, cipher ? &*cipher : nullptr, bytes);
        onWait();
    }
    if (code != kOk) return code;
    return encrypted ? archive_.write(zip::descriptorOf(member)) : archive_.patch(start, zip::localHeaderOf(member));
}

}  // namespace archiver::infozip
