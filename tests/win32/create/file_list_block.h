#pragma once
#include <windows.h>

#include <shlobj.h>

#include <cstring>
#include <string>
#include <vector>

namespace tovar::test {

/// How other programs write the names in a list of files.
enum class NameForm { Wide, Ansi };

/// A list of files as other programs hand it over (DROPFILES).
inline std::string fileListBlock(const std::vector<std::wstring>& paths, NameForm form) {
    DROPFILES header{};
    header.pFiles = sizeof header;
    header.fWide = form == NameForm::Wide ? TRUE : FALSE;
    std::string block(sizeof header, '\0');
    std::memcpy(block.data(), &header, sizeof header);
    for (const std::wstring& path : paths) {
        if (form == NameForm::Wide) {
            block.append(reinterpret_cast<const char*>(path.c_str()), (path.size() + 1) * sizeof(wchar_t));
        } else {
            std::string name(path.size() * 2 + 1, '\0');
            const int size = ::WideCharToMultiByte(CP_ACP, 0, path.c_str(), static_cast<int>(path.size()), name.data(),
                                                   static_cast<int>(name.size()), nullptr, nullptr);
            block.append(name.data(), static_cast<std::size_t>(size)).append(1, '\0');
        }
    }
    return block.append(form == NameForm::Wide ? sizeof(wchar_t) : 1, '\0');
}

/// @return the block as memory of the system; whoever takes it frees it
inline HGLOBAL globalOf(const std::string& bytes) {
    const HGLOBAL memory = ::GlobalAlloc(GHND, bytes.size());
    std::memcpy(::GlobalLock(memory), bytes.data(), bytes.size());
    ::GlobalUnlock(memory);
    return memory;
}

}  // namespace tovar::test
