#include "archivers/unpacking/win32/folder_check.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>

#include "archivers/unpacking/win32/error_codes.h"
#include "archivers/unpacking/win32/places.h"

namespace archiver {
namespace {

constexpr std::size_t kMostKnown = 4096;

/// So many folders above one are looked up: an absurdly deep name costs its own length and no more.
constexpr std::size_t kLevelsKnown = 8;

}  // namespace

std::wstring FolderCheck::pathOf(std::wstring_view name) const {
    std::wstring path;
    path.reserve(root_.size() + 1 + name.size());
    path.append(root_).append(L"\\").append(name);
    return path;
}

ReturnCode FolderCheck::enter(std::wstring_view name, bool make, bool& made) {
    made = false;
    if (name.empty()) return kOk;
    const std::lock_guard lock(mutex_);
    if (name == last_) return kOk;

    const auto isKnown = [&](std::size_t length) { return known_.contains(std::wstring(name.substr(0, length))); };
    std::size_t known = name.size();
    for (std::size_t level = 0; known != 0 && !isKnown(known); ++level) {
        const std::size_t separator = name.substr(0, known).rfind(L'\\');
        known = separator == name.npos || level == kLevelsKnown ? 0 : separator;
    }
    while (known < name.size()) {
        const std::size_t start = known == 0 ? 0 : known + 1;
        known = std::min(name.find(L'\\', start), name.size());
        if (!isPlainPart(name.substr(start, known - start))) return kMakeDirectory;
        const std::wstring path = pathOf(name.substr(0, known));
        made = make && ::CreateDirectoryW(path.c_str(), nullptr);
        const DWORD error = ::GetLastError();
        if (!made && kindOf(path) != PlaceKind::kFolder) return make ? codeOfFolder(error) : kMakeDirectory;
        if (known_.size() == kMostKnown) known_.clear();
        known_.emplace(name.substr(0, known));
    }
    last_ = name;
    return kOk;
}

}  // namespace archiver
