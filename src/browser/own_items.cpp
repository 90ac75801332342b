#include "browser/own_items.h"

#include <algorithm>
#include <exception>
#include <optional>

#include "shell/file_tree.h"
#include "shell/paths.h"

namespace tovar {
namespace {

constexpr std::wstring_view kBeginning = L"TovarEx-";
constexpr std::size_t kProcessDigits = 8, kRandomDigits = 32;
constexpr SystemErrorCode kPathNotFound = 3;  ///< in Windows
constexpr SystemErrorCode kGenFailure = 31;

std::wstring hexOf(std::uint32_t number) {
    constexpr std::wstring_view kDigits = L"0123456789abcdef";
    std::wstring text;
    for (int shift = 28; shift >= 0; shift -= 4) text += kDigits[number >> shift & 0xF];
    return text;
}

std::optional<std::uint32_t> numberOf(std::wstring_view digits) {
    std::uint32_t number = 0;
    for (const wchar_t each : digits) {
        const bool isDigit = each >= L'0' && each <= L'9', isLetter = each >= L'a' && each <= L'f';
        if (!isDigit && !isLetter) return std::nullopt;
        number = number << 4 | static_cast<std::uint32_t>(isDigit ? each - L'0' : each - L'a' + 10);
    }
    return number;
}

/// @return the process that made an item of this name; nullopt for other names
std::optional<std::uint32_t> makerOf(std::wstring_view name) {
    constexpr std::size_t kRandomAt = kBeginning.size() + kProcessDigits + 1;
    if (name.size() != kRandomAt + kRandomDigits || !name.starts_with(kBeginning) || name[kRandomAt - 1] != L'-' ||
        !numberOf(name.substr(kRandomAt))) {
        return std::nullopt;
    }
    return numberOf(name.substr(kBeginning.size(), kProcessDigits));
}

}  // namespace

OwnFolder::~OwnFolder() { items_.removeFolder(path_); }

bool OwnItems::isOwnName(std::wstring_view name) { return makerOf(name).has_value(); }

std::wstring OwnItems::freshPath() {
    const std::wstring& folder = workFolder_.path();
    if (folder.empty()) throw SystemError(kPathNotFound);
    const std::wstring random = processes_.unguessable();
    if (random.size() != kRandomDigits) throw SystemError(kGenFailure);
    return folder + std::wstring(kBeginning) + hexOf(processes_.current()) + L'-' + random;
}

std::wstring OwnItems::makeFile() {
    std::wstring path = freshPath();
    if (const SystemErrorCode error = files_.writeFile(path, {}); error != 0) throw SystemError(error);
    // A copy of it, which keeps that, is not seen in a folder for the moment that it lies there.
    files_.setAttributes(path, attribute::kHidden);
    return path;
}

std::shared_ptr<const OwnFolder> OwnItems::makeFolder() {
    const std::wstring path = freshPath();
    if (const SystemErrorCode error = files_.createFolder(path); error != 0) throw SystemError(error);
    return std::make_shared<const OwnFolder>(*this, AddTrailingSeparator(path));
}

bool OwnItems::tryRemove(const std::wstring& path) {
    const auto attributes = files_.attributes(StripTrailingSeparator(path));
    if (!attributes) return true;
    if ((*attributes & attribute::kFolder) != 0) {
        removeTree(files_, AddTrailingSeparator(path));
    } else {
        if ((*attributes & attribute::kReadOnly) != 0) files_.setAttributes(path, attribute::kNormal);
        files_.deleteFile(path);
    }
    return !files_.attributes(StripTrailingSeparator(path));
}

void OwnItems::removeFile(const std::wstring& path) noexcept {
    try {
        if (!path.empty() && !tryRemove(path) && std::ranges::find(left_, path) == left_.end()) left_.push_back(path);
    } catch (const std::exception&) {
        // For want of memory it stays until another host runs.
    }
}

void OwnItems::removeFolder(const std::wstring& path) noexcept { removeFile(path); }

void OwnItems::removeLeftOver() noexcept {
    try {
        std::erase_if(left_, [this](const std::wstring& path) { return tryRemove(path); });
        std::vector<FolderEntry> entries;
        if (workFolder_.path().empty() || files_.listFolder(workFolder_.path(), entries) != 0) return;
        for (const FolderEntry& entry : entries) {
            const auto maker = makerOf(entry.name);
            if (!maker || entry.link || *maker == processes_.current() || processes_.isRunning(*maker)) continue;
            tryRemove(workFolder_.path() + entry.name);
        }
    } catch (const std::exception&) {
        // There will be another chance.
    }
}

}  // namespace tovar
