#include "archivers/unpacking/target_system.h"

#include <windows.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "archivers/formats/win32/no_questions.h"
#include "archivers/unpacking/win32/error_codes.h"
#include "archivers/unpacking/win32/folder_check.h"
#include "archivers/unpacking/win32/handle.h"
#include "archivers/unpacking/win32/mark_stream.h"
#include "archivers/unpacking/win32/places.h"
#include "archivers/unpacking/win32/windows_file.h"

namespace archiver {
namespace {

/// A name below the target, parted into folder and last part.
struct Place {
    std::wstring name;  ///< parts joined with "\"
    std::size_t folderLength = 0;

    [[nodiscard]] std::wstring_view folder() const noexcept { return std::wstring_view(name).substr(0, folderLength); }
    [[nodiscard]] std::wstring_view part() const noexcept {
        return std::wstring_view(name).substr(folderLength == 0 ? 0 : folderLength + 1);
    }
};

std::wstring withBackslashes(const std::filesystem::path& name) {
    std::wstring text = name.native();
    std::ranges::replace(text, L'/', L'\\');
    return text;
}

class WindowsTarget final : public TargetFolder {
public:
    explicit WindowsTarget(std::wstring root)
        : folders_(std::move(root)), streams_(keepsStreams(folders_.pathOf({}))) {}

    [[nodiscard]] std::optional<ExistingItem> find(const std::filesystem::path& name) override;
    ReturnCode makeFolder(const std::filesystem::path& name, bool& made) override {
        return folders_.make(withBackslashes(name), made);
    }
    ReturnCode createFile(const std::filesystem::path& name, std::uint64_t expectedSize, bool replace,
                          std::unique_ptr<OutputFile>& file) override;
    ReturnCode makeSymbolicLink(const std::filesystem::path& name, const std::filesystem::path& to,
                                bool replace) override;
    ReturnCode makeHardLink(const std::filesystem::path& name, const std::filesystem::path& existing,
                            bool replace) override;
    ReturnCode copyFile(const std::filesystem::path& name, const std::filesystem::path& existing, bool replace,
                        const std::function<bool()>& goOn) override;
    ReturnCode setProperties(const std::filesystem::path& name, const ItemProperties& properties) override;
    [[nodiscard]] std::optional<std::uint64_t> freeSpace() override;

private:
    /// @return kOk; else kFileOpen for a name that leads elsewhere, or for folders that are not there or are links
    ReturnCode placeOf(const std::filesystem::path& name, Place& place);
    template <class Make>
    ReturnCode makeLink(const Place& place, bool replace, const Make& make);

    FolderCheck folders_;
    bool streams_;
};

ReturnCode WindowsTarget::placeOf(const std::filesystem::path& name, Place& place) {
    place.name = withBackslashes(name);
    const std::size_t separator = place.name.rfind(L'\\');
    place.folderLength = separator == std::wstring::npos ? 0 : separator;
    if (separator == 0 || !isPlainPart(place.part())) return kFileOpen;
    return folders_.check(place.folder()) == kOk ? kOk : kFileOpen;
}

std::optional<ExistingItem> WindowsTarget::find(const std::filesystem::path& name) {
    Place place;
    if (placeOf(name, place) != kOk) return std::nullopt;
    const std::wstring path = folders_.pathOf(place.name);
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
    ExistingItem item;
    const PlaceKind kind = kindOf(path, data.dwFileAttributes);
    if (kind == PlaceKind::kFolder) item.kind = ExistingItem::Kind::kFolder;
    if (kind == PlaceKind::kLink) item.kind = ExistingItem::Kind::kLink;
    if (kind == PlaceKind::kFile) item.size = std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
    item.written = momentOf(data.ftLastWriteTime);
    item.readOnly = kind == PlaceKind::kFile && (data.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
    return item;
}

ReturnCode WindowsTarget::createFile(const std::filesystem::path& name, std::uint64_t expectedSize, bool replace,
                                     std::unique_ptr<OutputFile>& file) {
    Place place;
    ReturnCode code = placeOf(name, place);
    if (code != kOk) return code;
    std::wstring folder = place.folderLength == 0 ? folders_.root() : folders_.pathOf(place.folder());
    file = createWindowsFile(std::move(folder), place.part(), expectedSize, replace, streams_, code);
    return code;
}

/// Makes a link by `make(path)`, which answers a code, and lets it take the place of what stands there.
template <class Make>
ReturnCode WindowsTarget::makeLink(const Place& place, bool replace, const Make& make) {
    const std::wstring path = folders_.pathOf(place.name);
    const PlaceKind there = kindOf(path);
    if (there == PlaceKind::kNothing) return make(path);
    if (!replace || there == PlaceKind::kFolder) return kSameNameFile;

    const std::wstring name = temporaryName();
    const std::wstring beside =
        folders_.pathOf(place.folderLength == 0 ? name : std::wstring(place.folder()).append(L"\\").append(name));
    if (const ReturnCode code = make(beside); code != kOk) return code;
    const ReturnCode code = renameOver(beside, path) ? kOk : codeOfWriting(::GetLastError());
    // Two names of one file stay both when one is to replace the other; a link to a folder goes like a folder.
    if (!::DeleteFileW(beside.c_str())) ::RemoveDirectoryW(beside.c_str());
    return code;
}

ReturnCode WindowsTarget::makeSymbolicLink(const std::filesystem::path& name, const std::filesystem::path& to,
                                           bool replace) {
    Place place;
    if (const ReturnCode code = placeOf(name, place); code != kOk) return code;
    // A link says whether it leads to a folder, so what it leads to must be there to be right.
    const std::filesystem::path end = (name.parent_path() / to).lexically_normal();
    const std::wstring target = withBackslashes(to);
    DWORD flags = 0;
    if (!end.is_absolute() && !end.empty() && *end.begin() != L"..") {
        const DWORD attributes = ::GetFileAttributesW(folders_.pathOf(withBackslashes(end)).c_str());
        const bool folder = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        flags = folder ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0;
    }
    return makeLink(place, replace, [&](const std::wstring& path) {
        constexpr DWORD kWithoutPrivilege = 2;  // in developer mode; systems before Windows 10 do not know it
        const bool made =
            ::CreateSymbolicLinkW(path.c_str(), target.c_str(), flags | kWithoutPrivilege) ||
            (::GetLastError() == ERROR_INVALID_PARAMETER && ::CreateSymbolicLinkW(path.c_str(), target.c_str(), flags));
        if (!made) {
            const ReturnCode code = codeOfCreating(::GetLastError());
            return code == kDiskSpace || code == kLongFileName ? code : kNotSupport;
        }
        // A system may claim to have made one and have none.
        return kindOf(path) == PlaceKind::kNothing ? kNotSupport : kOk;
    });
}

ReturnCode WindowsTarget::makeHardLink(const std::filesystem::path& name, const std::filesystem::path& existing,
                                       bool replace) {
    Place place, from;
    if (const ReturnCode code = placeOf(name, place); code != kOk) return code;
    if (const ReturnCode code = placeOf(existing, from); code != kOk) return code;
    const std::wstring source = folders_.pathOf(from.name);
    if (kindOf(source) != PlaceKind::kFile) return kNotExist;
    return makeLink(place, replace, [&](const std::wstring& path) {
        if (::CreateHardLinkW(path.c_str(), source.c_str(), nullptr)) return kOk;
        const ReturnCode code = codeOfCreating(::GetLastError());
        return code == kFileOpen ? kNotSupport : code;
    });
}

ReturnCode WindowsTarget::copyFile(const std::filesystem::path& name, const std::filesystem::path& existing,
                                   bool replace, const std::function<bool()>& goOn) {
    Place from;
    if (const ReturnCode code = placeOf(existing, from); code != kOk) return code;
    const std::wstring path = folders_.pathOf(from.name);
    if (kindOf(path) != PlaceKind::kFile) return kNotExist;
    const UniqueHandle source =
        adoptHandle(::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                  nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    BY_HANDLE_FILE_INFORMATION facts{};
    if (!source || !::GetFileInformationByHandle(source.get(), &facts)) return kNotExist;

    std::unique_ptr<OutputFile> copy;
    const std::uint64_t size = std::uint64_t{facts.nFileSizeHigh} << 32 | facts.nFileSizeLow;
    if (const ReturnCode code = createFile(name, size, replace, copy); code != kOk) return code;
    std::vector<char> piece(1 << 16);
    for (;;) {
        if (!goOn()) return kUserCancel;
        DWORD got = 0;
        if (!::ReadFile(source.get(), piece.data(), static_cast<DWORD>(piece.size()), &got, nullptr)) {
            return kCannotRead;
        }
        if (got == 0) break;
        if (const ReturnCode code = copy->write(std::span(piece).first(got)); code != kOk) return code;
    }
    const std::string mark = readWebMark(path);
    ItemProperties properties;
    properties.written = momentOf(facts.ftLastWriteTime);
    properties.created = momentOf(facts.ftCreationTime);
    properties.attributes = static_cast<std::uint8_t>(facts.dwFileAttributes & 0x27);
    properties.webMark = mark;
    return copy->commit(properties);
}

ReturnCode WindowsTarget::setProperties(const std::filesystem::path& name, const ItemProperties& properties) {
    const std::wstring text = withBackslashes(name);
    if (const ReturnCode code = folders_.check(text); code != kOk) return code;
    const UniqueHandle folder = adoptHandle(::CreateFileW(
        folders_.pathOf(text).c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!folder) return kCannotWrite;
    archiver::setProperties(folder.get(), properties);
    return kOk;
}

std::optional<std::uint64_t> WindowsTarget::freeSpace() {
    ULARGE_INTEGER free{};
    if (!::GetDiskFreeSpaceExW(folders_.pathOf({}).c_str(), &free, nullptr, nullptr)) return std::nullopt;
    return free.QuadPart;
}

bool isFolder(const std::wstring& path) noexcept {
    const DWORD attributes = ::GetFileAttributesW((path + L"\\").c_str());  // the user's own path may be a link
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// Makes a folder with those above it. @return ERROR_SUCCESS, or why the last one is not there
DWORD makeFolders(const std::wstring& path) {
    std::vector<std::size_t> missing;
    for (std::size_t end = path.size(); !isFolder(path.substr(0, end));) {
        missing.push_back(end);
        const std::size_t separator = path.rfind(L'\\', end - 1);
        if (separator == path.npos || separator < 4) return ERROR_PATH_NOT_FOUND;
        end = separator;
    }
    for (auto end = missing.rbegin(); end != missing.rend(); ++end) {
        const std::wstring folder = path.substr(0, *end);
        if (::CreateDirectoryW(folder.c_str(), nullptr)) continue;
        const DWORD error = ::GetLastError();
        if (!isFolder(folder)) return error;
    }
    return ERROR_SUCCESS;
}

class WindowsSystem final : public TargetSystem {
public:
    ReturnCode open(const std::filesystem::path& folder, std::unique_ptr<TargetFolder>& target) override {
        const NoQuestions quiet;
        std::wstring root = longPathOf(folder);
        if (root.size() <= 4) return kMakeDirectory;
        if (const DWORD error = makeFolders(root); error != ERROR_SUCCESS) return codeOfFolder(error);
        target = std::make_unique<WindowsTarget>(std::move(root));
        return kOk;
    }

    [[nodiscard]] std::string webMark(const std::filesystem::path& archive) override {
        const std::wstring file = longPathOf(archive);
        return file.empty() ? std::string() : readWebMark(file);
    }
};

}  // namespace

TargetSystem& systemTarget() noexcept {
    static WindowsSystem system;
    return system;
}

}  // namespace archiver
