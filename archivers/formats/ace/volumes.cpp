#include "archivers/formats/ace/volumes.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

namespace archiver::ace {
namespace {

namespace fs = std::filesystem;
using Char = fs::path::value_type;
using Text = fs::path::string_type;

constexpr bool isDigit(Char c) { return c >= '0' && c <= '9'; }
constexpr bool isUpper(Char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool isLower(Char c) { return c >= 'a' && c <= 'z'; }

/// Reading ahead saves calls where members are small; more would be wasted where they are large.
constexpr std::size_t kWindow = 8 << 10;

/// An answer of "try again" is believed this often: nobody changes a disk more patiently, and a callback that always
/// says so without looking comes to an end.
constexpr int kMostRequests = 100;

/// Places with the magic that are looked at behind a program; a file full of them would take for ever.
constexpr int kMostCandidates = 256;

}  // namespace

ReturnCode Volume::headerAt(std::uint64_t offset, RawHeader& header) {
    const std::uint64_t fileSize = file_->size();
    if (offset == fileSize) return kNoMoreEntries;
    if (offset > fileSize) return kHeaderBroken;

    const auto inWindow = [&](std::size_t bytes) {
        return offset >= windowOffset_ && offset - windowOffset_ <= window_.size() &&
               window_.size() - static_cast<std::size_t>(offset - windowOffset_) >= bytes;
    };
    const auto load = [&](std::size_t bytes) {
        window_.resize(bytes);
        windowOffset_ = offset;
        const std::optional<std::size_t> got = file_->readAt(offset, window_);
        window_.resize(got.value_or(0));
        return got.has_value();
    };
    if (!inWindow(kSmallestHeader) && !load(kWindow)) return kCannotRead;
    if (!inWindow(kSmallestHeader)) return kHeaderBroken;
    const std::size_t size = headerSize(window_.data() + (offset - windowOffset_));
    if (!inWindow(size) && !load(std::max(size, kWindow))) return kCannotRead;
    if (!inWindow(size)) return kHeaderBroken;
    return checkHeader(std::span(window_).subspan(static_cast<std::size_t>(offset - windowOffset_), size), header);
}

ReturnCode Volume::mainHeaderAt(std::uint64_t offset) {
    RawHeader raw;
    if (const ReturnCode code = headerAt(offset, raw); code != kOk) return code;
    if (const ReturnCode code = parseMainHeader(raw, main_); code != kOk) return code;
    start_ = offset;
    firstHeader_ = offset + raw.bytes.size();
    return kOk;
}

ReturnCode Volume::findMainHeader() {
    char first[kMagicOffset + kMagicSize];
    const std::optional<std::size_t> got = file_->readAt(0, first);
    if (!got) return kCannotRead;
    const bool magicInFront = *got == sizeof first && std::memcmp(first + kMagicOffset, kMagic, kMagicSize) == 0;
    const ReturnCode inFront = magicInFront ? mainHeaderAt(0) : kFileStyle;
    if (inFront == kOk) return kOk;
    const ReturnCode behindProgram = searchMainHeader();
    return behindProgram == kFileStyle ? inFront : behindProgram;
}

ReturnCode Volume::searchMainHeader() {
    constexpr std::size_t kSearched = 512 << 10;
    std::vector<char> front(static_cast<std::size_t>(std::min<std::uint64_t>(file_->size(), kSearched)));
    const std::optional<std::size_t> got = file_->readAt(0, front);
    if (!got) return kCannotRead;
    const std::string_view text(front.data(), *got);
    const std::string_view magic(kMagic, kMagicSize);
    // The text itself stands in the program too, and anybody can write it: only a sound header counts.
    std::size_t at = text.find(magic);
    for (int i = 0; i < kMostCandidates && at != std::string_view::npos; ++i, at = text.find(magic, at + 1)) {
        if (at >= kMagicOffset && mainHeaderAt(at - kMagicOffset) == kOk) return kOk;
    }
    return kFileStyle;
}

ReturnCode VolumeChain::open(const fs::path& path, std::shared_ptr<Volume>& volume) const {
    InputFileResult file = opener_(path);
    if (file.file == nullptr) return file.code;
    auto opened = std::make_shared<Volume>(path, std::move(file.file));
    if (const ReturnCode code = opened->findMainHeader(); code != kOk) return code;
    volume = std::move(opened);
    return kOk;
}

bool VolumeChain::openFollowing(const Volume& volume, const fs::path& path, std::shared_ptr<Volume>& following) const {
    std::shared_ptr<Volume> opened;
    if (open(path, opened) != kOk || !opened->multiVolume()) return false;
    if (opened->main().volume != static_cast<std::uint8_t>(volume.main().volume + 1)) return false;
    following = std::move(opened);
    return true;
}

ReturnCode VolumeChain::next(Volume& volume, bool ask, std::shared_ptr<Volume>& following) {
    const std::optional<fs::path> name = nextVolumeName(volume.path());
    if (!name) return kArcFileOpen;

    fs::path path = *name;
    following = volume.next_.lock();
    bool found = following != nullptr || openFollowing(volume, path, following) ||
                 openFollowing(volume, otherCase(path), following);
    const bool asks = ask && callback_;
    for (int i = 0; !found && asks && i < kMostRequests; ++i) {
        if (!callback_(path, AceVolumeEvent::kRequest)) {
            missing_ = path;
            return kUserCancel;
        }
        found = openFollowing(volume, path, following);
    }
    if (!found) {
        missing_ = path;
        return kArcFileOpen;
    }
    volume.next_ = following;
    if (asks) {
        path = following->path();
        if (!callback_(path, AceVolumeEvent::kOpened)) return kUserCancel;
    }
    return kOk;
}

std::optional<fs::path> nextVolumeName(const fs::path& volume) {
    Text extension = volume.extension().native();
    const bool counted = extension.size() == 4 && (isUpper(extension[1]) || isLower(extension[1])) &&
                         isDigit(extension[2]) && isDigit(extension[3]);
    if (!counted) {
        const bool upper = std::any_of(extension.begin(), extension.end(), isUpper);
        return fs::path(volume).replace_extension(upper ? ".C00" : ".c00");
    }
    // Behind C99 comes D00.
    if (++extension[3] > '9') {
        extension[3] = '0';
        if (++extension[2] > '9') {
            extension[2] = '0';
            if (extension[1] == 'z' || extension[1] == 'Z') return std::nullopt;
            ++extension[1];
        }
    }
    return fs::path(volume).replace_extension(extension);
}

fs::path otherCase(const fs::path& volume) {
    Text extension = volume.extension().native();
    for (Char& c : extension) {
        if (isUpper(c)) {
            c = static_cast<Char>(c + ('a' - 'A'));
        } else if (isLower(c)) {
            c = static_cast<Char>(c - ('a' - 'A'));
        }
    }
    return fs::path(volume).replace_extension(extension);
}

}  // namespace archiver::ace
