#include "shell/win32/windows_desktop_files.h"

#include <windows.h>
// windows.h first
#include <shellapi.h>

#include <string_view>

#include "shell/text_split.h"
#include "shell/win32/system_calls.h"
#include "shell/win32/visual_styles.h"

namespace tovar {
namespace {

static_assert(file_flags::kSilent == FOF_SILENT && file_flags::kNoConfirmation == FOF_NOCONFIRMATION);
static_assert(file_flags::kAllowUndo == FOF_ALLOWUNDO && file_flags::kNoConfirmMkDir == FOF_NOCONFIRMMKDIR);
static_assert(static_cast<UINT>(FileFunction::Move) == FO_MOVE && static_cast<UINT>(FileFunction::Copy) == FO_COPY);
static_assert(static_cast<UINT>(FileFunction::Delete) == FO_DELETE);

/// The names as full paths, a NUL behind each and one more. The shell keeps for the recycle bin only what it is given
/// by its full path; the rest would go for ever.
std::wstring absoluteNames(std::wstring_view list) {
    std::wstring paths;
    for (const std::wstring_view name : splitText(list, std::wstring_view(L"\0", 1))) {
        if (name.empty()) continue;
        const std::wstring asked(name);
        const std::wstring path = textOfSystem(
            [&](wchar_t* buffer, DWORD size) { return ::GetFullPathNameW(asked.c_str(), size, buffer, nullptr); });
        if (path.empty()) return {};
        paths += path;
        paths += L'\0';
    }
    if (!paths.empty()) paths += L'\0';
    return paths;
}

}  // namespace

DesktopFiles::Result WindowsDesktopFiles::run(const FileOperation& operation) {
    const std::wstring sources = absoluteNames(operation.sources);
    // Without a name the shell would take the current folder itself.
    if (sources.empty()) return {ERROR_INVALID_NAME, false};
    const VisualStyles styles;
    SHFILEOPSTRUCTW request{};
    request.hwnd = static_cast<HWND>(operation.owner);
    request.wFunc = static_cast<UINT>(operation.function);
    request.pFrom = sources.c_str();
    request.pTo = operation.target.c_str();
    request.fFlags = operation.flags;
    Result result;
    result.code = ::SHFileOperationW(&request);
    result.aborted = request.fAnyOperationsAborted != FALSE;
    return result;
}

}  // namespace tovar
