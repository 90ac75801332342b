#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <set>
#include <string>

#include "archivers/module.h"

namespace archiver {
namespace {

/// A bundled library in memory, as the loader laid it out.
class LibraryImage {
public:
    explicit LibraryImage(const char* module)
        : handle_(::LoadLibraryW((testing::programFolder() / (std::string(module) + ".dll")).c_str())) {}
    LibraryImage(const LibraryImage&) = delete;
    LibraryImage& operator=(const LibraryImage&) = delete;
    ~LibraryImage() {
        if (handle_ != nullptr) {
            ::FreeLibrary(handle_);
        }
    }
    [[nodiscard]] HMODULE handle() const { return handle_; }

    [[nodiscard]] std::multiset<std::string> exportedNames() const {
        const auto* exports = directory<IMAGE_EXPORT_DIRECTORY>(IMAGE_DIRECTORY_ENTRY_EXPORT);
        const auto* names = at<DWORD>(exports->AddressOfNames);
        std::multiset<std::string> result;
        for (DWORD index = 0; index < exports->NumberOfNames; ++index) {
            result.insert(at<char>(names[index]));
        }
        return result;
    }
    [[nodiscard]] std::string ownName() const {
        return at<char>(directory<IMAGE_EXPORT_DIRECTORY>(IMAGE_DIRECTORY_ENTRY_EXPORT)->Name);
    }
    [[nodiscard]] std::set<std::string> importedModules() const {
        std::set<std::string> result;
        for (const auto* import = directory<IMAGE_IMPORT_DESCRIPTOR>(IMAGE_DIRECTORY_ENTRY_IMPORT); import->Name != 0;
             ++import) {
            std::string name = at<char>(import->Name);
            for (char& letter : name) {
                letter = static_cast<char>(::tolower(letter));
            }
            result.insert(name);
        }
        return result;
    }

private:
    template <class Type>
    [[nodiscard]] const Type* at(DWORD offset) const {
        return reinterpret_cast<const Type*>(reinterpret_cast<const char*>(handle_) + offset);
    }
    template <class Type>
    [[nodiscard]] const Type* directory(int entry) const {
        const auto* headers = at<IMAGE_NT_HEADERS>(static_cast<DWORD>(at<IMAGE_DOS_HEADER>(0)->e_lfanew));
        return at<Type>(headers->OptionalHeader.DataDirectory[entry].VirtualAddress);
    }
    HMODULE handle_;
};

struct LibraryCase {
    const char* module;
    const char* prefix;
    std::size_t functions;
};

class Image : public ::testing::TestWithParam<LibraryCase> {
protected:
    void SetUp() override { ASSERT_NE(library.handle(), nullptr); }
    LibraryImage library{GetParam().module};
};

struct OrdinalRow {
    WORD ordinal;
    const char* name;
};

/// The ordinals by which old callers bind, as the interface's module definition files have them.
constexpr OrdinalRow kOrdinals[] = {
    {1, ""},
    {2, "GetVersion"},
    {3, "GetCursorInterval"},
    {4, "SetCursorInterval"},
    {5, "GetBackGroundMode"},
    {6, "SetBackGroundMode"},
    {7, "GetCursorMode"},
    {8, "SetCursorMode"},
    {10, "GetRunning"},
    {11, "CheckArchive"},
    {12, "ConfigDialog"},
    {17, "GetFileCount"},
    {18, "QueryFunctionList"},
    {21, "OpenArchive"},
    {22, "CloseArchive"},
    {23, "FindFirst"},
    {24, "FindNext"},
    {31, "GetArcFileName"},
    {32, "GetArcFileSize"},
    {33, "GetArcOriginalSize"},
    {34, "GetArcCompressedSize"},
    {35, "GetArcRatio"},
    {36, "GetArcDate"},
    {37, "GetArcTime"},
    {38, "GetArcOSType"},
    {39, "IsSFXFile"},
    {40, "GetFileName"},
    {41, "GetOriginalSize"},
    {42, "GetCompressedSize"},
    {43, "GetRatio"},
    {44, "GetDate"},
    {45, "GetTime"},
    {46, "GetCRC"},
    {47, "GetAttribute"},
    {48, "GetOSType"},
    {49, "ExtractMem"},
    {50, "CompressMem"},
    {61, "GetMethod"},
    {62, "GetWriteTime"},
    {90, "SetOwnerWindow"},
    {91, "ClearOwnerWindow"},
};

TEST_P(Image, GivesOrdinalsToOldCallers) {
    for (const OrdinalRow& row : kOrdinals) {
        const auto byOrdinal = ::GetProcAddress(library.handle(), MAKEINTRESOURCEA(row.ordinal));
        const auto byName = ::GetProcAddress(library.handle(), (std::string(GetParam().prefix) + row.name).c_str());
        EXPECT_NE(byOrdinal, nullptr) << row.ordinal;
        EXPECT_EQ(byOrdinal, byName) << row.name;
    }
}

TEST_P(Image, ExportsUndecoratedNamesOfItsPrefixOnly) {
    const std::multiset<std::string> names = library.exportedNames();
    EXPECT_EQ(names.size(), GetParam().functions);
    for (const std::string& name : names) {
        EXPECT_EQ(name.rfind(GetParam().prefix, 0), 0U) << name;
        EXPECT_EQ(name.find_first_of("@_?"), std::string::npos) << name;
    }
}

TEST_P(Image, IsNamedAsCallersLoadIt) { EXPECT_EQ(library.ownName(), std::string(GetParam().module) + ".dll"); }

TEST_P(Image, NeedsNothingButTheSystem) {
    const std::set<std::string> system = {"advapi32.dll", "bcrypt.dll", "comctl32.dll", "crypt32.dll", "gdi32.dll",
                                          "kernel32.dll", "msvcrt.dll", "user32.dll",   "ws2_32.dll"};
    const std::set<std::string> imported = library.importedModules();
    EXPECT_EQ(imported.count("kernel32.dll"), 1U);
    for (const std::string& name : imported) {
        EXPECT_EQ(system.count(name), 1U) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Libraries, Image,
                         ::testing::Values(LibraryCase{"UnZip32", "UnZip", 56}, LibraryCase{"Tar32", "Tar", 57},
                                           LibraryCase{"UnRar32", "Unrar", 56}, LibraryCase{"UnArj32j", "Unarj", 56},
                                           LibraryCase{"UnLha32", "Unlha", 56}, LibraryCase{"Cab32", "Cab", 56}),
                         [](const auto& each) { return std::string(each.param.module); });

}  // namespace
}  // namespace archiver
