#include "shell/posix/posix_system_paths.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "shell/posix/posix_text.h"

namespace tovar {
namespace {

constexpr unsigned kTempNames = 0x10000;

SystemErrorCode lastError() noexcept { return static_cast<SystemErrorCode>(errno); }

struct FreeMemory {
    void operator()(char* memory) const noexcept { std::free(memory); }
};

bool isFolderName(const char* path) noexcept { return path != nullptr && *path != '\0'; }

// Where to begin looking for a free name: anywhere, so that two programs seldom meet.
unsigned firstTempNumber() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    return static_cast<unsigned>(now ^ ::getpid());
}

}  // namespace

std::wstring PosixSystemPaths::currentFolder() const {
    const std::unique_ptr<char, FreeMemory> folder(::getcwd(nullptr, 0));
    return folder ? fromPosixName(folder.get()) : std::wstring();
}

SystemErrorCode PosixSystemPaths::setCurrentFolder(const std::wstring& path) {
    if (path.find(L'\0') != path.npos) return EINVAL;
    return ::chdir(toPosixName(path).c_str()) == 0 ? 0 : lastError();
}

SystemErrorCode PosixSystemPaths::setCurrentDrive(wchar_t) { return ENODEV; }

std::optional<std::wstring> PosixSystemPaths::shortPathName(const std::wstring&) const { return std::nullopt; }

std::wstring PosixSystemPaths::searchPath(const std::wstring&) const { return {}; }

std::wstring PosixSystemPaths::tempFolder() const {
    const char* folder = std::getenv("TMPDIR");
    std::wstring path = fromPosixName(isFolderName(folder) ? folder : "/tmp");
    if (!path.ends_with(L'/')) path += L'/';
    return path;
}

std::wstring PosixSystemPaths::createTempFile(const std::wstring& folder, const std::wstring& prefix) {
    std::wstring start = folder;
    if (!start.ends_with(L'/')) start += L'/';
    start += prefix.substr(0, 3);
    if (start.find(L'\0') != start.npos) throw SystemError(EINVAL);
    const unsigned first = firstTempNumber();
    for (unsigned tries = 0; tries < kTempNames; ++tries) {
        std::array<char, 16> number{};
        std::snprintf(number.data(), number.size(), "%x.TMP", (first + tries) % kTempNames);
        const std::string path = toPosixName(start) + number.data();
        const int file = ::open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600);
        if (file >= 0) {
            ::close(file);
            return fromPosixName(path);
        }
        if (errno != EEXIST) break;
    }
    throw SystemError(lastError());
}

}  // namespace tovar
