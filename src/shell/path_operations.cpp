#include "shell/path_operations.h"

#include <limits>
#include <stdexcept>
#include <vector>

#include "shell/component_name.h"
#include "shell/paths.h"
#include "shell/text_split.h"

namespace tovar {
namespace {

constexpr std::wstring_view kLineEnd = L"\r\n";

// The total is kept in single precision; a register of the processor may hold more.
void addInSinglePrecision(float& total, std::uint64_t bytes) {
    volatile float sum = total;
    sum = sum + static_cast<float>(bytes);
    total = sum;
}

std::wstring versionHalfText(std::uint32_t half) {
    const std::uint32_t low = half & 0xFFFF;
    if (low > 0x7FFF) throw std::overflow_error("a version number above 32767");
    return std::to_wstring(half >> 16) + L'.' + std::to_wstring(low);
}

// A drive or server with a separator behind it, and the folders below that are to be there.
struct FolderTree {
    std::wstring_view root;
    std::vector<std::wstring_view> segments;
};

FolderTree takeApart(std::wstring_view path) {
    std::size_t rootLength = 0;
    if (path.find(LR"(:\)") != path.npos) {
        rootLength = 3;
    } else if (IsUncPath(path)) {
        rootLength = path.find(L'\\', 2) + 1;  // 0 for a server alone
    }
    if (rootLength == 0) return {};
    return {path.substr(0, rootLength), splitText(path.substr(rootLength), LR"(\)")};
}

}  // namespace

bool PathOperations::IsFolder(std::wstring_view path) const {
    const auto attributes = files_.attributes(std::wstring(path));
    return attributes && (*attributes & attribute::kFolder) != 0;
}

bool PathOperations::IsPlainFile(std::wstring_view path) const {
    const auto attributes = files_.attributes(std::wstring(path));
    return attributes && (*attributes & attribute::kFolder) == 0;
}

void PathOperations::SetWorkingFolder(std::wstring_view path) {
    if (HasDriveRoot(path)) paths_.setCurrentDrive(path.front());
    paths_.setCurrentFolder(std::wstring(path));
}

std::wstring PathOperations::CurrentFolderOf(std::wstring_view path) {
    if (HasDriveRoot(path)) paths_.setCurrentDrive(path.front());
    return AddTrailingSeparator(paths_.currentFolder());
}

std::wstring PathOperations::ResolvePath(std::wstring_view path) {
    std::wstring base = CurrentFolderOf(path);
    if (path.empty()) return {};
    if (path.find(L'\\') == path.npos) return base.append(path);
    if (IsUncPath(path) || HasDriveRoot(path)) return std::wstring(path);
    if (path.starts_with(L'\\')) return base.substr(0, 2).append(path);
    if (path.starts_with(LR"(.\)")) return base.append(path.substr(2));
    if (path.starts_with(LR"(..\)")) return ParentPath(StripTrailingSeparator(base)).append(path.substr(3));
    return base.append(path);
}

std::wstring PathOperations::ShortPathName(std::wstring_view path) const {
    std::wstring whole(path);
    const auto shortName = paths_.shortPathName(whole);
    return shortName ? CutAtNull(*shortName) : whole;
}

std::wstring PathOperations::FindOnSearchPath(std::wstring_view name) const {
    return CutAtNull(paths_.searchPath(std::wstring(name)));
}

std::wstring PathOperations::ReadTextFile(std::wstring_view path, const TextCodec& codec) const {
    std::string bytes;
    if (files_.readFile(std::wstring(path), bytes) != 0) return {};
    const std::wstring content = codec.decode(bytes);
    std::wstring text;
    text.reserve(content.size() + kLineEnd.size());
    // A line ends with CR LF, or with LF or CR alone as other systems write it.
    for (std::wstring_view rest = content; !rest.empty();) {
        const std::size_t end = rest.find_first_of(kLineEnd);
        text.append(rest.substr(0, end)).append(kLineEnd);
        if (end == rest.npos) break;
        rest.remove_prefix(end + (rest.substr(end).starts_with(kLineEnd) ? kLineEnd.size() : 1));
    }
    return text;
}

bool PathOperations::WriteTextFile(std::wstring_view path, std::wstring_view value, const TextCodec& codec) {
    const auto bytes = codec.encode(std::wstring(value).append(kLineEnd));
    return bytes && files_.writeFile(std::wstring(path), *bytes) == 0;
}

bool PathOperations::CreateFolderTree(std::wstring_view path) {
    const std::wstring whole = StripTrailingSeparator(ResolvePath(path));
    if (IsFolder(whole)) return true;
    const FolderTree tree = takeApart(whole);
    std::wstring current(tree.root);
    for (const std::wstring_view segment : tree.segments) {
        current.append(segment).append(1, L'\\');
        if (IsFolder(current)) continue;
        const SystemErrorCode error = files_.createFolder(current);
        if (error == 0) continue;
        messages_.show(nullptr, SystemErrorText(error), kComponentName, MessageIcon::Exclamation);
        break;
    }
    return IsFolder(whole);
}

void PathOperations::ScanFolder(std::wstring_view folder, std::wstring_view pattern, std::int32_t& fileCount,
                                float& totalBytes, bool recurse) const {
    std::vector<FolderEntry> entries;
    if (folder.empty() || files_.listFolder(std::wstring(folder), entries) != 0) return;
    std::vector<std::wstring> subFolders;
    for (const FolderEntry& entry : entries) {
        if ((entry.attributes & attribute::kFolder) != 0) {
            // A link can lead back to a folder above it, and the count would never end.
            if (recurse && !entry.link && !entry.name.starts_with(L'.')) subFolders.push_back(entry.name);
        } else {
            if (fileCount < std::numeric_limits<std::int32_t>::max()) ++fileCount;
            addInSinglePrecision(totalBytes, entry.size);
        }
    }
    for (const std::wstring& name : subFolders) {
        // The folder's own last character: "\" here, "/" where the system has that.
        const std::wstring below = std::wstring(folder).append(name).append(1, folder.back());
        ScanFolder(below, pattern, fileCount, totalBytes, recurse);
    }
}

std::wstring PathOperations::FileVersionText(std::wstring_view path) const {
    if (path.empty()) return {};
    const auto version = information_.fileVersion(std::wstring(path));
    // Not empty: who asks takes an empty text for "no such library", and a user's library without a version resource
    // works as well as any other.
    if (!version) return L"0.0.0.0";
    return versionHalfText(version->mostSignificant) + L'.' + versionHalfText(version->leastSignificant);
}

std::wstring PathOperations::SystemErrorText(SystemErrorCode code) const {
    return CutAtNull(information_.errorText(code));
}

}  // namespace tovar
