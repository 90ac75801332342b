#include "browser/file_types.h"

#include "shell/letter_case.h"

namespace tovar {
namespace {

constexpr std::uint32_t kUnknown = 0xFFFFFFFF;

/// What is behind the last "." of a bare name.
std::wstring_view extensionOf(std::wstring_view fileName) {
    const std::size_t point = fileName.rfind(L'.');
    return point == fileName.npos ? std::wstring_view() : fileName.substr(point + 1);
}

}  // namespace

std::uint32_t KnownFileTypes::numberOf(std::wstring_view fileName) {
    const std::wstring_view extension = extensionOf(fileName);
    const std::uint32_t written = written_.intern(extension);
    if (written >= typeOfWritten_.size()) typeOfWritten_.resize(written + std::size_t{1}, kUnknown);
    if (typeOfWritten_[written] != kUnknown) return typeOfWritten_[written];
    const std::uint32_t number = folded_.intern(foldCase(extension));
    if (number >= types_.size()) types_.resize(number + std::size_t{1});
    if (Answer& answer = types_[number]; !answer.given) {
        answer.type = desktop_.ofFile(fileName);
        answer.given = true;
    }
    return typeOfWritten_[written] = number;
}

const FileType& KnownFileTypes::ofFolder() {
    if (!folder_) folder_ = desktop_.ofFolder();
    return *folder_;
}

}  // namespace tovar
