#include "shell/win32/shell_folder_contents.h"

#include <shlwapi.h>

#include <algorithm>
#include <utility>

#include "shell/win32/folder_search.h"
#include "shell/win32/long_paths.h"

namespace tovar {
namespace {

constexpr std::uint32_t kKey = 1;

constexpr DWORD kPatience = 150;  // milliseconds, as in the tree

FolderContents::Files readFolder(const std::wstring& path) {
    FolderContents::Files found;
    const FolderVisibility visibility;
    const SystemErrorCode error = searchFolder(path, SearchFor::Everything, [&](const WIN32_FIND_DATAW& entry) {
        if (!visibility.shows(entry)) return true;
        found.push_back({entry.cFileName, (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
                         (entry.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0});
        return true;
    });
    if (error != 0) return {};
    std::sort(found.begin(), found.end(), [](const FolderFile& left, const FolderFile& right) {
        if (left.folder != right.folder) return left.folder;
        return ::StrCmpLogicalW(left.name.c_str(), right.name.c_str()) < 0;
    });
    return found;
}

}  // namespace

ShellFolderContents::ShellFolderContents(Reader reader)
    : reader_(reader ? std::move(reader) : Reader(&readFolder)), slow_([] { return Answer(); }) {}

std::optional<FolderContents::Files> ShellFolderContents::look(const std::wstring& path) {
    slow_.drop(kKey);
    if (std::exchange(path_, path) != path) watch_.remove(kKey);
    if (path.empty()) return Files();
    // Before it is listed, so that nothing that happens meanwhile is missed.
    if (!isSlowPlace(path)) {
        if (!watch_.watches(kKey)) watch_.add(kKey, path);
        return reader_(path);
    }
    const auto question = [reader = reader_, path, watched = watch_.watches(kKey)] {
        Answer answer;
        if (!watched) answer.watch = FolderWatch::begin(path);
        answer.files = reader(path);
        return answer;
    };
    std::optional<Answer> answer = slow_.ask(kKey, question, kPatience);
    return answer ? std::optional(take(std::move(*answer))) : std::nullopt;
}

std::optional<FolderContents::Files> ShellFolderContents::takeLate() {
    auto answers = slow_.takeAnswers();
    return answers.empty() ? std::nullopt : std::optional(take(std::move(answers.front().second)));
}

FolderContents::Files ShellFolderContents::take(Answer answer) {
    if (answer.watch) watch_.adopt(kKey, std::move(*answer.watch));
    return std::move(answer.files);
}

bool ShellFolderContents::takeChange() { return !watch_.takeChanges().empty(); }

}  // namespace tovar
