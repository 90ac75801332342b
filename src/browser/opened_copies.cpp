#include "browser/opened_copies.h"

#include <algorithm>

#include "drivers/member_path.h"
#include "shell/text_codec.h"
#include "shell/text_split.h"

namespace tovar {
namespace {

constexpr std::wstring_view kRecord = L"TovarEx.opened";
constexpr std::wstring_view kLineEnd = L"\r\n", kFieldEnd = L"|";
constexpr std::size_t kFields = 4;                ///< folders, size, time, path
constexpr std::size_t kLongestRecord = 1U << 20;  ///< bytes; a longer one is not ours

std::size_t depthOf(std::wstring_view path, wchar_t separator) {
    return static_cast<std::size_t>(std::ranges::count(path, separator));
}

/// The folder that a path lies in after that many of its folders; without a separator at the end.
std::wstring_view upperPart(std::wstring_view path, std::size_t folders, wchar_t separator) {
    std::size_t end = 0;
    for (; folders > 0; --folders) end = path.find(separator, end + 1);
    return path.substr(0, end);
}

std::wstring timeText(const FileStatus& status) {
    const int parts[] = {status.modifiedDate.year, status.modifiedDate.month,  status.modifiedDate.day,
                         status.modifiedTime.hour, status.modifiedTime.minute, status.modifiedTime.second};
    std::wstring text;
    for (const int part : parts) text.append(text.empty() ? L"" : L" ").append(std::to_wstring(part));
    return text;
}

bool isUnchanged(const FileStatus& now, const std::wstring_view size, const std::wstring_view time) {
    return std::to_wstring(now.size) == size && timeText(now) == time;
}

}  // namespace

std::wstring OpenedCopies::recordOf(const std::wstring& workFolder) { return workFolder + std::wstring(kRecord); }

void OpenedCopies::add(const std::wstring& workFolder, const std::wstring& path, std::size_t madeFolders) {
    const auto status = files_.status(workFolder + path);
    if (!status || workFolder.empty()) return;
    const wchar_t separator = workFolder.back();
    Copy copy{workFolder, path, madeFolders, *status};
    std::erase_if(copies_, [&](const Copy& each) {
        const bool same = each.workFolder == workFolder && each.path == path;
        if (same) copy.madeFolders = std::max(copy.madeFolders, each.madeFolders);
        return same;
    });
    // A folder that was made for another copy goes with the last one in it.
    for (const Copy& each : copies_) {
        if (each.workFolder != workFolder || each.madeFolders == 0) continue;
        const std::size_t above = depthOf(each.path, separator) - each.madeFolders;
        const std::wstring made = std::wstring(upperPart(each.path, above + 1, separator)) + separator;
        if (path.starts_with(made)) copy.madeFolders = std::max(copy.madeFolders, depthOf(path, separator) - above);
    }
    copies_.push_back(std::move(copy));
}

void OpenedCopies::remove() {
    std::set<std::wstring> folders;
    for (const Copy& copy : copies_) folders.insert(copy.workFolder);
    for (const std::wstring& folder : folders) readRecord(folder);
    std::erase_if(copies_, [this](const Copy& copy) { return isGone(copy); });
    for (const std::wstring& folder : folders) writeRecord(folder);
}

void OpenedCopies::removeRecorded(const std::wstring& workFolder) {
    if (!workFolder.empty()) readRecord(workFolder);
    remove();
}

bool OpenedCopies::isGone(const Copy& copy) {
    const std::wstring file = copy.workFolder + copy.path;
    const auto attributes = files_.attributes(file);
    if (attributes && (*attributes & attribute::kFolder) == 0) {
        if ((*attributes & attribute::kReadOnly) != 0) files_.setAttributes(file, attribute::kNormal);
        if (files_.deleteFile(file) != 0) return false;
    }
    removeFolders(copy);
    return true;
}

void OpenedCopies::removeFolders(const Copy& copy) {
    const wchar_t separator = copy.workFolder.back();
    std::wstring_view path = copy.path;
    for (std::size_t count = copy.madeFolders; count > 0; --count) {
        path = path.substr(0, path.rfind(separator));
        if (files_.removeFolder(copy.workFolder + std::wstring(path)) != 0) return;
    }
}

bool OpenedCopies::isKnown(const std::wstring& workFolder, const std::wstring& path) const {
    return std::ranges::any_of(copies_,
                               [&](const Copy& each) { return each.workFolder == workFolder && each.path == path; });
}

/// Anybody can write into the folder: what the record names is looked at as closely as a name from an archive.
void OpenedCopies::readRecord(const std::wstring& workFolder) {
    const std::wstring file = recordOf(workFolder);
    const auto recorded = files_.status(file);
    std::string bytes;
    if (!recorded || recorded->size > kLongestRecord || files_.readFile(file, bytes) != 0) return;
    const wchar_t separator = workFolder.back();
    const std::wstring text = Utf8Codec().decode(bytes);
    for (const std::wstring_view line : splitText(text, kLineEnd)) {
        const auto fields = splitText(line, kFieldEnd);
        if (fields.size() != kFields || fields[0].empty() || fields[0].size() > 3) continue;
        if (fields[0].find_first_not_of(L"0123456789") != std::wstring_view::npos) continue;
        const std::wstring path(fields[3]);
        const auto safe = safeMemberPath(path, true, separator);
        if (!safe || *safe != path || isKnown(workFolder, path)) continue;
        const std::size_t madeFolders = std::stoul(std::wstring(fields[0]));
        const auto status = files_.status(workFolder + path);
        if (madeFolders > depthOf(path, separator)) continue;
        if (!status || !isUnchanged(*status, fields[1], fields[2])) continue;
        copies_.push_back({workFolder, path, madeFolders, *status});
    }
    files_.deleteFile(file);
}

void OpenedCopies::writeRecord(const std::wstring& workFolder) {
    std::wstring text;
    for (const Copy& copy : copies_) {
        if (copy.workFolder != workFolder) continue;
        text.append(std::to_wstring(copy.madeFolders)).append(kFieldEnd);
        text.append(std::to_wstring(copy.status.size)).append(kFieldEnd).append(timeText(copy.status));
        text.append(kFieldEnd).append(copy.path).append(kLineEnd);
    }
    const auto bytes = Utf8Codec().encode(text);
    if (!text.empty() && bytes) files_.writeFile(recordOf(workFolder), *bytes);
}

}  // namespace tovar
