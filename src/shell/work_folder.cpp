#include "shell/work_folder.h"

#include "shell/paths.h"
#include "shell/text_split.h"

namespace tovar {
namespace {

constexpr std::wstring_view kListFilePrefix = L"VTL";
constexpr std::wstring_view kLineEnd = L"\r\n";

}  // namespace

void WorkFolder::resetToTempFolder() {
    path_.clear();
    try {
        path_ = TempFolderPath();
    } catch (const SystemError&) {
        // The work folder stays empty: an object is made all the same, and its list files fail one by one.
    }
}

void WorkFolder::SetTempDir(std::wstring_view path) {
    path_ = AddTrailingSeparator(operations_.ShortPathName(path));
    files_.createFolder(path_);
    files_.setAttributes(path_, attribute::kReadOnly | attribute::kHidden);
}

std::wstring WorkFolder::TempFolderPath() const { return AddTrailingSeparator(CutAtNull(paths_.tempFolder())); }

std::wstring WorkFolder::MakeTempFileName(std::wstring_view folder, std::wstring_view prefix) {
    if (!operations_.IsFolder(folder)) return {};
    return CutAtNull(paths_.createTempFile(std::wstring(folder), std::wstring(prefix)));
}

std::wstring WorkFolder::WriteTempListFile(std::wstring_view text, const TextCodec& codec) {
    if (!codec.encode(text)) throw SystemError(kNoUnicodeTranslation);
    std::wstring name = MakeTempFileName(path_, kListFilePrefix);
    operations_.WriteTextFile(name, text, codec);
    return name;
}

std::wstring WorkFolder::listArgument(std::wstring_view listFile) const {
    std::wstring path(listFile);
    // Quotes behind the "@" are not understood by every library; the short form of a path needs none.
    if (QuoteIfNeeded(path) != path) path = QuoteIfNeeded(operations_.ShortPathName(path));
    return L'@' + path;
}

std::wstring WorkFolder::BuildListFileText(std::wstring_view baseFolder, std::wstring_view names,
                                           std::wstring_view folderSuffix) const {
    const std::wstring base = AddTrailingSeparator(baseFolder);
    std::wstring result;
    // No names at all are no items: an empty one would name the base folder, and so everything in it.
    for (const std::wstring_view untrimmed : splitText(names, kLineEnd)) {
        const std::wstring item(trimBlanks(untrimmed));
        if (operations_.IsFolder(base + item)) {
            result += QuoteIfNeeded(std::wstring(item).append(folderSuffix));
        } else if (operations_.IsPlainFile(base + item)) {
            result += QuoteIfNeeded(item);
        } else {
            continue;
        }
        result += kLineEnd;
    }
    if (result.ends_with(kLineEnd)) result.resize(result.size() - kLineEnd.size());
    return result;
}

}  // namespace tovar
