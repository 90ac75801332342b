#include "archivers/packing/source_system.h"

#include <windows.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "archivers/formats/utf8.h"
#include "archivers/formats/win32/no_questions.h"
#include "archivers/unpacking/win32/handle.h"
#include "archivers/unpacking/win32/places.h"
#include "archivers/unpacking/win32/windows_file.h"

namespace archiver {
namespace {

struct CloseFindOf {
    void operator()(HANDLE handle) const noexcept { ::FindClose(handle); }
};
using UniqueFind = std::unique_ptr<void, CloseFindOf>;

constexpr DWORD kKept = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                        FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_ARCHIVE;

/// By any record that tells of a file in the system's usual fields.
template <class Data>
SourceFacts factsOf(const Data& data) noexcept {
    SourceFacts facts;
    facts.attributes = static_cast<std::uint8_t>(data.dwFileAttributes & kKept);
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        facts.kind = SourceKind::kFolder;
    } else {
        facts.size = std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
    }
    facts.written = momentOf(data.ftLastWriteTime);
    facts.created = momentOf(data.ftCreationTime);
    facts.accessed = momentOf(data.ftLastAccessTime);
    return facts;
}

/// What a link leads to.
SourceFacts factsBehind(const std::wstring& path) noexcept {
    SourceFacts facts;
    facts.kind = SourceKind::kOther;
    const UniqueHandle handle = adoptHandle(::CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES,
                                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                                          nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION info{};
    if (!handle || !::GetFileInformationByHandle(handle.get(), &info)) return facts;
    facts = factsOf(info);
    if (facts.kind == SourceKind::kFolder) facts.kind = SourceKind::kFolderLink;
    return facts;
}

class WindowsSources final : public SourceSystem {
public:
    [[nodiscard]] std::filesystem::path absolute(const std::filesystem::path& path) override {
        std::wstring full = longPathOf(path);
        // A drive's own folder ends in its separator.
        if (full.ends_with(L':')) full += L'\\';
        return full.empty() ? path : std::filesystem::path(std::move(full));
    }

    [[nodiscard]] bool ignoresCase() const noexcept override { return true; }

    [[nodiscard]] std::optional<SourceFacts> find(const std::filesystem::path& path) override {
        const NoQuestions quiet;
        std::wstring text = path.native();
        while (text.size() > 1 && text.ends_with(L'\\') && !text.ends_with(L":\\")) text.pop_back();
        WIN32_FILE_ATTRIBUTE_DATA data{};
        if (!::GetFileAttributesExW(text.c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
        return kindOf(text, data.dwFileAttributes) == PlaceKind::kLink ? factsBehind(text) : factsOf(data);
    }

    ReturnCode list(const std::filesystem::path& folder, std::vector<ListedSource>& names) override {
        const NoQuestions quiet;
        WIN32_FIND_DATAW data{};
        const HANDLE first =
            ::FindFirstFileExW((folder / L"*").c_str(), FindExInfoBasic, &data, FindExSearchNameMatch, nullptr, 0);
        if (first == INVALID_HANDLE_VALUE) {
            const DWORD error = ::GetLastError();
            if (error == ERROR_FILE_NOT_FOUND) return kOk;  // an empty drive has not even "."
            return error == ERROR_PATH_NOT_FOUND ? kNotExist : kCannotRead;
        }
        const UniqueFind find(first);
        do {
            const std::wstring_view name = data.cFileName;
            if (name == L"." || name == L"..") continue;
            SourceFacts facts = factsOf(data);
            if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
                const std::wstring path = (folder / name).native();
                if (kindOf(path, data.dwFileAttributes) == PlaceKind::kLink) facts = factsBehind(path);
            }
            names.push_back({name, facts});
        } while (::FindNextFileW(find.get(), &data));
        return ::GetLastError() == ERROR_NO_MORE_FILES ? kOk : kCannotRead;
    }

    [[nodiscard]] InputFileResult open(const std::filesystem::path& file) override { return openInputFile(file); }

    bool removeFile(const std::filesystem::path& file) override {
        if (::DeleteFileW(file.c_str())) return true;
        const DWORD attributes = ::GetFileAttributesW(file.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_READONLY) == 0) return false;
        if (!::SetFileAttributesW(file.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY})) return false;
        if (::DeleteFileW(file.c_str())) return true;
        ::SetFileAttributesW(file.c_str(), attributes);
        return false;
    }

    bool removeFolder(const std::filesystem::path& folder) override {
        return ::RemoveDirectoryW(folder.c_str()) != FALSE;
    }
};

}  // namespace

std::string utf8OfPath(const std::filesystem::path& path) {
    std::string utf8;
    appendUtf8(path.native(), utf8);
    std::ranges::replace(utf8, '\\', '/');
    return utf8;
}

SourceSystem& systemSources() noexcept {
    static WindowsSources system;
    return system;
}

}  // namespace archiver
