#include "archivers/unpacking/win32/windows_file.h"

#include <algorithm>
#include <utility>

#include "archivers/formats/moments.h"
#include "archivers/unpacking/win32/error_codes.h"
#include "archivers/unpacking/win32/handle.h"
#include "archivers/unpacking/win32/mark_stream.h"
#include "archivers/unpacking/win32/places.h"

namespace archiver {
namespace {

/// Room is asked for in advance when a file is so large that pieces all over the disk would be felt, and only so much:
/// what a header says is a claim, and claims of several threads must not fill a disk that has room for the truth.
constexpr std::uint64_t kLeastReserved = 1 << 20;
constexpr std::uint64_t kMostReserved = 8 << 20;

class WindowsFile final : public OutputFile {
public:
    WindowsFile(std::wstring folder, std::wstring_view name, bool streams)
        : streams_(streams), folder_(std::move(folder)), final_(folder_ + L'\\' + std::wstring(name)), path_(final_) {}
    ~WindowsFile() override {
        if (made_) remove();
    }
    WindowsFile(const WindowsFile&) = delete;
    WindowsFile& operator=(const WindowsFile&) = delete;

    ReturnCode open(bool replace) {
        if (create()) return kOk;
        const DWORD error = ::GetLastError();
        const PlaceKind there = kindOf(final_);
        if (there == PlaceKind::kNothing) return codeOfCreating(error);
        if (!replace || there == PlaceKind::kFolder) return kSameNameFile;
        DWORD failure = ERROR_SUCCESS;
        do {
            path_ = folder_ + L'\\' + temporaryName();
            failure = create() ? ERROR_SUCCESS : ::GetLastError();
        } while (failure == ERROR_FILE_EXISTS);
        return failure == ERROR_SUCCESS ? kOk : codeOfCreating(failure);
    }

    void reserve(std::uint64_t size) noexcept {
        if (size < kLeastReserved) return;
        LARGE_INTEGER end{};
        end.QuadPart = static_cast<LONGLONG>(std::min(size, kMostReserved));
        reserved_ = ::SetFilePointerEx(file_.get(), end, nullptr, FILE_BEGIN) && ::SetEndOfFile(file_.get());
        ::SetFilePointerEx(file_.get(), {}, nullptr, FILE_BEGIN);
    }

    ReturnCode write(std::span<const char> bytes) override {
        constexpr std::size_t kLargestPiece = 1 << 24;
        while (!bytes.empty()) {
            DWORD written = 0;
            const auto count = static_cast<DWORD>(std::min(bytes.size(), kLargestPiece));
            if (!::WriteFile(file_.get(), bytes.data(), count, &written, nullptr)) {
                return codeOfWriting(::GetLastError());
            }
            if (written == 0) return kDiskSpace;
            bytes = bytes.subspan(written);
        }
        return kOk;
    }

    ReturnCode commit(const ItemProperties& properties) override {
        if (reserved_ && !::SetEndOfFile(file_.get())) return codeOfWriting(::GetLastError());
        if (streams_ && !properties.webMark.empty()) writeWebMark(path_, properties.webMark);
        setProperties(file_.get(), properties);  // last, for every write moves the time
        file_.reset();
        if (path_ != final_ && !renameOver(path_, final_)) {
            const DWORD error = ::GetLastError();
            return kindOf(final_) == PlaceKind::kFolder ? kSameNameFile : codeOfWriting(error);
        }
        made_ = false;
        return kOk;
    }

private:
    bool create() noexcept {
        file_ = adoptHandle(::CreateFileW(path_.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                                          FILE_ATTRIBUTE_NORMAL, nullptr));
        made_ = file_ != nullptr;
        return made_;
    }

    void remove() noexcept {
        FILE_DISPOSITION_INFO info{TRUE};
        if (file_ && ::SetFileInformationByHandle(file_.get(), FileDispositionInfo, &info, sizeof info)) return;
        file_.reset();
        ::SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_NORMAL);
        ::DeleteFileW(path_.c_str());
    }

    bool streams_;
    std::wstring folder_;
    std::wstring final_;
    std::wstring path_;  ///< where it is until commit
    UniqueHandle file_;
    bool made_ = false;  ///< it is there and not yet whole
    bool reserved_ = false;
};

/// @return 0, which changes nothing, for no moment and for one before 1601 or beyond what the system counts
LONGLONG fileTimeOf(const std::optional<Moment>& moment) noexcept {
    constexpr std::int64_t kFrom1601To1970 = 11'644'473'600;
    constexpr std::int64_t kLast = 900'000'000'000;  // the year 30,489; file times end in 30,828
    if (!moment || moment->seconds <= -kFrom1601To1970 || moment->seconds > kLast) return 0;
    return (moment->seconds + kFrom1601To1970) * 10'000'000 + moment->nanoseconds / 100;
}

}  // namespace

std::unique_ptr<OutputFile> createWindowsFile(std::wstring folder, std::wstring_view name, std::uint64_t expectedSize,
                                              bool replace, bool streams, ReturnCode& code) {
    auto file = std::make_unique<WindowsFile>(std::move(folder), name, streams);
    code = file->open(replace);
    if (code != kOk) return nullptr;
    file->reserve(expectedSize);
    return file;
}

void setProperties(HANDLE handle, const ItemProperties& properties) noexcept {
    constexpr DWORD kKept =
        FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    static_assert(kKept == (attribute::kReadOnly | attribute::kHidden | attribute::kSystem | attribute::kArchive));
    FILE_BASIC_INFO info{};
    info.CreationTime.QuadPart = fileTimeOf(properties.created);
    info.LastAccessTime.QuadPart = fileTimeOf(properties.accessed);
    info.LastWriteTime.QuadPart = fileTimeOf(properties.written);
    if (properties.attributes) {
        const DWORD kept = *properties.attributes & kKept;
        info.FileAttributes = kept != 0 ? kept : DWORD{FILE_ATTRIBUTE_NORMAL};
    }
    if (properties.written || properties.created || properties.accessed || properties.attributes) {
        ::SetFileInformationByHandle(handle, FileBasicInfo, &info, sizeof info);
    }
}

std::optional<Moment> momentOf(const FILETIME& time) noexcept {
    const std::uint64_t steps = std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    if (steps == 0) return std::nullopt;
    return momentOfFileTime(steps);
}

}  // namespace archiver
