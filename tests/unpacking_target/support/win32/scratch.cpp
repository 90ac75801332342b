#include "unpacking_target/support/scratch.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

namespace archiver::test {
namespace {

std::wstring wide(std::string_view utf8) {
    std::wstring text(utf8.size(), L'\0');
    const int units = ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), text.data(),
                                            static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(units));
    return text;
}

std::string narrow(std::wstring_view text) {
    std::string utf8(text.size() * 3, '\0');
    const int bytes = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), utf8.data(),
                                            static_cast<int>(utf8.size()), nullptr, nullptr);
    utf8.resize(static_cast<std::size_t>(bytes));
    return utf8;
}

std::wstring longPath(const std::filesystem::path& folder, std::string_view name) {
    std::wstring path = L"\\\\?\\" + folder.native() + (name.empty() ? L"" : L"\\" + wide(name));
    std::ranges::replace(path, L'/', L'\\');
    return path;
}

WIN32_FILE_ATTRIBUTE_DATA factsOf(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA facts{};
    EXPECT_TRUE(::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &facts)) << narrow(path);
    return facts;
}

std::uint64_t stepsOf(const std::wstring& path) {
    const FILETIME time = factsOf(path).ftLastWriteTime;
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

template <class Visit>
void forEachEntry(const std::wstring& folder, const Visit& visit) {
    WIN32_FIND_DATAW found;
    const HANDLE search = ::FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        const std::wstring_view name = found.cFileName;
        if (name != L"." && name != L"..") visit(found);
    } while (::FindNextFileW(search, &found));
    ::FindClose(search);
}

bool isRealFolder(const WIN32_FIND_DATAW& found) {
    return (found.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) ==
           FILE_ATTRIBUTE_DIRECTORY;
}

void removeTree(const std::wstring& folder) {
    forEachEntry(folder, [&](const WIN32_FIND_DATAW& found) {
        const std::wstring path = folder + L"\\" + found.cFileName;
        ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        if (isRealFolder(found)) {
            removeTree(path);
        } else if (!::DeleteFileW(path.c_str())) {
            ::RemoveDirectoryW(path.c_str());
        }
    });
    ::RemoveDirectoryW(folder.c_str());
}

void listInto(const std::wstring& folder, const std::string& prefix, std::vector<std::string>& names) {
    forEachEntry(folder, [&](const WIN32_FIND_DATAW& found) {
        const std::string name = prefix + narrow(found.cFileName);
        names.push_back(isRealFolder(found) ? name + "/" : name);
        if (isRealFolder(found)) listInto(folder + L"\\" + found.cFileName, name + "/", names);
    });
}

}  // namespace

Scratch::Scratch() {
    wchar_t base[MAX_PATH];
    ::GetTempPathW(MAX_PATH, base);
    for (unsigned number = 0;; ++number) {
        path_ = std::wstring(base) + L"unpacking-" + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                std::to_wstring(number);
        if (::CreateDirectoryW(path_.c_str(), nullptr)) return;
    }
}

Scratch::~Scratch() { removeTree(longPath(path_, {})); }

void Scratch::write(std::string_view name, std::string_view bytes) const {
    const HANDLE file = ::CreateFileW(longPath(path_, name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE) << name;
    DWORD written = 0;
    ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    ::CloseHandle(file);
    ASSERT_EQ(written, bytes.size());
}

void Scratch::makeFolder(std::string_view name) const {
    ASSERT_TRUE(::CreateDirectoryW(longPath(path_, name).c_str(), nullptr)) << name;
}

void Scratch::protect(std::string_view name) const {
    ASSERT_TRUE(::SetFileAttributesW(longPath(path_, name).c_str(), FILE_ATTRIBUTE_READONLY)) << name;
}

std::string Scratch::read(std::string_view name) const {
    const HANDLE file = ::CreateFileW(longPath(path_, name).c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_NE(file, INVALID_HANDLE_VALUE) << name;
    if (file == INVALID_HANDLE_VALUE) return {};
    std::string bytes(::GetFileSize(file, nullptr), '\0');
    DWORD got = 0;
    EXPECT_TRUE(::ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr)) << name;
    ::CloseHandle(file);
    bytes.resize(got);
    return bytes;
}

bool Scratch::isProtected(std::string_view name) const {
    return (factsOf(longPath(path_, name)).dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
}

std::int64_t Scratch::seconds(std::string_view name) const {
    return static_cast<std::int64_t>(stepsOf(longPath(path_, name)) / 10'000'000) - 11'644'473'600;
}

std::uint32_t Scratch::nanoseconds(std::string_view name) const {
    return static_cast<std::uint32_t>(stepsOf(longPath(path_, name)) % 10'000'000 * 100);
}

std::vector<std::string> Scratch::names() const {
    std::vector<std::string> names;
    listInto(longPath(path_, {}), {}, names);
    std::ranges::sort(names);
    return names;
}

}  // namespace archiver::test
