#include "shell/file_type_name.h"

#include <gtest/gtest.h>

#include <map>

namespace tovar::test {
namespace {

class FakeTypeNames final : public ShellTypeNames {
public:
    std::map<std::wstring, std::wstring> names;
    std::wstring folder = L"File Folder";

    [[nodiscard]] std::wstring ofName(std::wstring_view name) const override {
        const auto found = names.find(std::wstring(name));
        return found == names.end() ? std::wstring() : found->second;
    }
    [[nodiscard]] std::wstring ofTempFolder() const override { return folder; }
};

TEST(FileTypeName, IsTheShellsOwnWhenThereIsOne) {
    FakeTypeNames shell;
    shell.names[L"a.txt"] = L"Text Document";
    EXPECT_EQ(FileTypeName(L"a.txt", shell), L"Text Document");
}

TEST(FileTypeName, BorrowsTheWordForAFileFromTheFolderType) {
    FakeTypeNames shell;
    EXPECT_EQ(FileTypeName(L"a.xyz", shell), L"XYZ File");
    EXPECT_EQ(FileTypeName(L"a.b.c\u00E4b", shell), L"C\u00C4B File");
    shell.folder = L"Dossier de fichiers";
    EXPECT_EQ(FileTypeName(L"a.xyz", shell), L"XYZ Dossier");
}

TEST(FileTypeName, SaysFileWhenTheFolderTypeIsOneWordOrUnknown) {
    FakeTypeNames shell;
    shell.folder = L"Dateiordner";
    EXPECT_EQ(FileTypeName(L"a.xyz", shell), L"XYZ File");
    shell.folder = L"";
    EXPECT_EQ(FileTypeName(L"a.xyz", shell), L"XYZ File");
}

TEST(FileTypeName, IsEmptyWithoutTypeAndExtension) {
    const FakeTypeNames shell;
    EXPECT_EQ(FileTypeName(L"README", shell), L"");
    EXPECT_EQ(FileTypeName(L"file.", shell), L"");
}

}  // namespace
}  // namespace tovar::test
