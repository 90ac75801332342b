#include "archivers/formats/arj/volume_set.h"

#include <algorithm>
#include <string>
#include <utility>

namespace archiver::arj {
namespace {

constexpr std::size_t kLastVolume = 999;

template <class Char>
bool isDigit(Char character) noexcept {
    return character >= Char{'0'} && character <= Char{'9'};
}

/// @param extension  with its dot
template <class Char>
std::size_t volumeNumber(const std::basic_string<Char>& extension) noexcept {
    if (extension.size() != 4 || !isDigit(extension[2]) || !isDigit(extension[3])) return 0;
    const auto low =
        static_cast<std::size_t>(extension[2] - Char{'0'}) * 10 + static_cast<std::size_t>(extension[3] - Char{'0'});
    if (extension[1] == Char{'a'} || extension[1] == Char{'A'}) return low;
    // What counts from 000 on is somebody else's numbering.
    if (!isDigit(extension[1]) || extension[1] == Char{'0'}) return 0;
    return static_cast<std::size_t>(extension[1] - Char{'0'}) * 100 + low;
}

template <class Char>
bool beginsUpperCase(const std::basic_string<Char>& extension) noexcept {
    return extension.size() > 1 && extension[1] >= Char{'A'} && extension[1] <= Char{'Z'};
}

}  // namespace

std::filesystem::path volumePath(const std::filesystem::path& first, std::size_t index, bool otherCase) {
    if (first.empty()) return {};
    const std::filesystem::path extension = first.extension();
    const std::size_t number = volumeNumber(extension.native()) + std::min(index, kLastVolume + 1);
    if (number > kLastVolume) return {};
    std::string text = std::to_string(number);
    if (number < 100) {
        const char letter = beginsUpperCase(extension.native()) != otherCase ? 'A' : 'a';
        text.insert(0, number < 10 ? 2 : 1, '0');
        text[0] = letter;
    }
    std::filesystem::path volume = first;
    volume.replace_extension(text);
    return volume;
}

VolumeSet::VolumeSet(std::filesystem::path first, std::shared_ptr<const InputFile> file)
    : first_(std::move(first)), firstFile_(std::move(file)) {}

ReturnCode VolumeSet::open(std::size_t index, std::shared_ptr<const InputFile>& file) {
    file.reset();
    if (index == 0) {
        file = firstFile_;
        return kOk;
    }
    if (latest_ != nullptr && latestIndex_ == index) {
        file = latest_;
        return kOk;
    }
    for (const bool otherCase : {false, true}) {
        const std::filesystem::path path = volumePath(first_, index, otherCase);
        if (path.empty()) break;
        InputFileResult opened = openInputFile(path);
        if (opened.code == kNotFindArcFile) continue;
        if (opened.code != kOk) break;
        latest_ = std::move(opened.file);
        latestIndex_ = index;
        file = latest_;
        return kOk;
    }
    return kArcFileOpen;
}

}  // namespace archiver::arj
