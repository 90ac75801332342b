#include "archivers/formats/input_file.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "archivers/formats/moments.h"
#include "archivers/formats/win32/no_questions.h"

namespace archiver {
namespace {

class WindowsFile final : public InputFile {
public:
    WindowsFile() = default;
    ~WindowsFile() override {
        if (handle_ != INVALID_HANDLE_VALUE) ::CloseHandle(handle_);
    }
    WindowsFile(const WindowsFile&) = delete;
    WindowsFile& operator=(const WindowsFile&) = delete;

    bool open(const std::filesystem::path& file) noexcept {
        handle_ = ::CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        return handle_ != INVALID_HANDLE_VALUE;
    }

    /// @return whether this is a file with contents of its own
    bool inspect() noexcept {
        BY_HANDLE_FILE_INFORMATION info{};
        if (::GetFileType(handle_) != FILE_TYPE_DISK || !::GetFileInformationByHandle(handle_, &info) ||
            (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            return false;
        }
        size_ = static_cast<std::uint64_t>(info.nFileSizeHigh) << 32 | info.nFileSizeLow;
        modified_ = momentOfFileTime(static_cast<std::uint64_t>(info.ftLastWriteTime.dwHighDateTime) << 32 |
                                     info.ftLastWriteTime.dwLowDateTime);
        return true;
    }

    [[nodiscard]] std::uint64_t size() const noexcept override { return size_; }
    [[nodiscard]] Moment modified() const noexcept override { return modified_; }

    [[nodiscard]] std::optional<std::size_t> readAt(std::uint64_t offset,
                                                    std::span<char> into) const noexcept override {
        constexpr std::size_t kLargestPiece = 1 << 24;
        std::size_t done = 0;
        while (done < into.size()) {
            const std::uint64_t at = offset + done;
            if (at >= size_) break;
            OVERLAPPED where{};
            where.Offset = static_cast<DWORD>(at & 0xFFFFFFFF);
            where.OffsetHigh = static_cast<DWORD>(at >> 32);
            DWORD got = 0;
            const auto wanted = static_cast<DWORD>(std::min(into.size() - done, kLargestPiece));
            if (!::ReadFile(handle_, into.data() + done, wanted, &got, &where)) {
                if (::GetLastError() == ERROR_HANDLE_EOF) break;
                return std::nullopt;
            }
            if (got == 0) break;
            done += got;
        }
        return done;
    }

private:
    HANDLE handle_ = INVALID_HANDLE_VALUE;
    std::uint64_t size_ = 0;
    Moment modified_;
};

bool nobodyThere(DWORD error) noexcept {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME ||
           error == ERROR_BAD_NETPATH || error == ERROR_INVALID_DRIVE;
}

}  // namespace

InputFileResult openInputFile(const std::filesystem::path& file) {
    const NoQuestions quiet;
    auto opened = std::make_unique<WindowsFile>();  // first, for want of memory must leave no file open
    if (!opened->open(file)) return {nullptr, nobodyThere(::GetLastError()) ? kNotFindArcFile : kArcFileOpen};
    if (!opened->inspect()) return {nullptr, kArcFileOpen};
    return {std::move(opened), kOk};
}

}  // namespace archiver
