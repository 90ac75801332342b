#include "archivers/packing/packing_files.h"

#include <windows.h>

#include <algorithm>
#include <string>

#include "archivers/formats/win32/no_questions.h"
#include "archivers/unpacking/win32/error_codes.h"
#include "archivers/unpacking/win32/handle.h"
#include "archivers/unpacking/win32/places.h"

namespace archiver {
namespace {

bool isInUse(DWORD error) noexcept {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION || error == ERROR_USER_MAPPED_FILE ||
           error == ERROR_ACCESS_DENIED;
}

class WindowsNewFile final : public NewFile {
public:
    explicit WindowsNewFile(UniqueHandle file) : file_(std::move(file)) {}

    ReturnCode write(std::uint64_t offset, std::span<const char> bytes) override {
        constexpr std::size_t kLargestPiece = 1 << 24;
        while (!bytes.empty()) {
            OVERLAPPED where{};
            where.Offset = static_cast<DWORD>(offset & 0xFFFFFFFF);
            where.OffsetHigh = static_cast<DWORD>(offset >> 32);
            DWORD written = 0;
            const auto count = static_cast<DWORD>(std::min(bytes.size(), kLargestPiece));
            if (!::WriteFile(file_.get(), bytes.data(), count, &written, &where)) {
                return codeOfWriting(::GetLastError());
            }
            if (written == 0) return kDiskSpace;
            bytes = bytes.subspan(written);
            offset += written;
        }
        return kOk;
    }

    ReturnCode cut(std::uint64_t size) override {
        FILE_END_OF_FILE_INFO end{};
        end.EndOfFile.QuadPart = static_cast<LONGLONG>(size);
        return ::SetFileInformationByHandle(file_.get(), FileEndOfFileInfo, &end, sizeof end)
                   ? kOk
                   : codeOfWriting(::GetLastError());
    }
    ReturnCode flush() override { return ::FlushFileBuffers(file_.get()) ? kOk : codeOfWriting(::GetLastError()); }

private:
    UniqueHandle file_;
};

class WindowsPackingFiles final : public PackingFiles {
public:
    [[nodiscard]] std::filesystem::path resolve(const std::filesystem::path& archive) override {
        const std::wstring full = longPathOf(archive);
        if (full.empty()) return archive;
        if (kindOf(full) != PlaceKind::kLink) return full;
        const UniqueHandle handle = adoptHandle(
            ::CreateFileW(full.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                          nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        if (!handle) return full;
        std::wstring behind(::GetFinalPathNameByHandleW(handle.get(), nullptr, 0, 0), L'\0');
        const DWORD length =
            ::GetFinalPathNameByHandleW(handle.get(), behind.data(), static_cast<DWORD>(behind.size()), 0);
        if (length == 0 || length >= behind.size()) return full;
        behind.resize(length);
        return behind;
    }

    ReturnCode checkReplaceable(const std::filesystem::path& archive) override {
        const NoQuestions quiet;
        const DWORD attributes = ::GetFileAttributesW(archive.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES) return kOk;  // making the new one tells what is wrong
        if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return kArcFileOpen;
        if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) return kArcReadOnly;
        // Whoever has it open without letting it be deleted would stand in the way of the rename.
        const UniqueHandle handle = adoptHandle(::CreateFileW(archive.c_str(), GENERIC_WRITE | DELETE,
                                                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                                              nullptr, OPEN_EXISTING, 0, nullptr));
        return handle ? kOk : kArcFileOpen;
    }

    ReturnCode create(const std::filesystem::path& file, std::unique_ptr<NewFile>& made) override {
        const NoQuestions quiet;
        UniqueHandle handle = adoptHandle(::CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                                        CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!handle) return codeOfCreating(::GetLastError());
        made = std::make_unique<WindowsNewFile>(std::move(handle));
        return kOk;
    }

    void keepAttributes(const std::filesystem::path& from, const std::filesystem::path& to) override {
        constexpr DWORD kKept =
            FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
        const DWORD attributes = ::GetFileAttributesW(from.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES) return;
        // A changed file is one to back up.
        ::SetFileAttributesW(to.c_str(), (attributes & kKept) | FILE_ATTRIBUTE_ARCHIVE);
    }

    ReturnCode rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
        if (::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) return kOk;
        const DWORD error = ::GetLastError();
        return isInUse(error) ? kArcFileOpen : codeOfWriting(error);
    }

    ReturnCode remove(const std::filesystem::path& file) override {
        if (::DeleteFileW(file.c_str())) return kOk;
        const DWORD error = ::GetLastError();
        return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ? kOk : kArcFileOpen;
    }
};

}  // namespace

PackingFiles& systemPackingFiles() noexcept {
    static WindowsPackingFiles files;
    return files;
}

}  // namespace archiver
