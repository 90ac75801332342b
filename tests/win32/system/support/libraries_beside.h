#pragma once
#include <filesystem>
#include <set>

#include "recording/session.h"
#include "win32/system/support/staged_program.h"

namespace tovar::test {

/// The archiver libraries beside the staged program. They go with the object, and must be unloaded before.
class LibrariesBeside {
public:
    LibrariesBeside() = default;
    ~LibrariesBeside() { clear(); }
    LibrariesBeside(const LibrariesBeside&) = delete;
    LibrariesBeside& operator=(const LibrariesBeside&) = delete;

    /// One that comes with the component.
    void bundled(const wchar_t* name) { std::filesystem::copy_file(staged::productsFolder() / name, place(name)); }
    void bundled() {
        bundled(L"UnZip32.dll");
        bundled(L"Tar32.dll");
    }
    /// The recording library under a name.
    void recorded(const wchar_t* name, recording::Texts texts = recording::Texts::Utf8) {
        recording::Session::install(place(name).parent_path(), name, texts);
    }
    /// Where any file goes that is to have a library's name; one that is there goes.
    std::filesystem::path place(const wchar_t* name) {
        const std::filesystem::path path = recording::programFolder() / name;
        std::filesystem::remove_all(path);
        names_.insert(name);
        return path;
    }
    void clear() {
        std::error_code ignored;
        for (const std::wstring& name : names_) std::filesystem::remove_all(recording::programFolder() / name, ignored);
        names_.clear();
    }

private:
    std::set<std::wstring> names_;
};

}  // namespace tovar::test
