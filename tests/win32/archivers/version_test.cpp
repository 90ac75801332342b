#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "archivers/module.h"

namespace archiver {
namespace {

struct VersionCase {
    const char* module;
    DWORD high;
    const wchar_t* version;
    const wchar_t* description;
    const wchar_t* fileName;
};

class VersionResource : public ::testing::TestWithParam<VersionCase> {
protected:
    void SetUp() override {
        const std::filesystem::path file = testing::programFolder() / (std::string(GetParam().module) + ".dll");
        DWORD ignored = 0;
        const DWORD size = ::GetFileVersionInfoSizeW(file.c_str(), &ignored);
        ASSERT_GT(size, 0U);
        data_.resize(size);
        ASSERT_TRUE(::GetFileVersionInfoW(file.c_str(), 0, size, data_.data()));
    }

    [[nodiscard]] const VS_FIXEDFILEINFO* fixed() {
        void* place = nullptr;
        UINT size = 0;
        return ::VerQueryValueW(data_.data(), L"\\", &place, &size) ? static_cast<VS_FIXEDFILEINFO*>(place) : nullptr;
    }
    [[nodiscard]] std::wstring text(const wchar_t* name) {
        void* place = nullptr;
        UINT size = 0;
        const std::wstring query = std::wstring(L"\\StringFileInfo\\040904B0\\") + name;
        return ::VerQueryValueW(data_.data(), query.c_str(), &place, &size) ? static_cast<wchar_t*>(place) : L"";
    }

private:
    std::vector<char> data_;
};

TEST_P(VersionResource, HasTheVersionThatTheLibraryTells) {
    const VS_FIXEDFILEINFO* info = fixed();
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->dwFileVersionMS, GetParam().high);
    EXPECT_EQ(info->dwFileVersionLS, 0U);
    EXPECT_EQ(info->dwFileType, static_cast<DWORD>(VFT_DLL));
    EXPECT_EQ(text(L"FileVersion"), GetParam().version);
}

TEST_P(VersionResource, SaysWhatTheFileIs) {
    EXPECT_EQ(text(L"ProductName"), L"TovarEx");
    EXPECT_EQ(text(L"FileDescription"), GetParam().description);
    EXPECT_EQ(text(L"OriginalFilename"), GetParam().fileName);
    EXPECT_NE(text(L"LegalCopyright").find(L"MIT License"), std::wstring::npos);
}

INSTANTIATE_TEST_SUITE_P(
    Libraries, VersionResource,
    ::testing::Values(VersionCase{"UnZip32", 5U << 16 | 40, L"5.40.0.0", L"Archiver library for ZIP", L"UnZip32.dll"},
                      VersionCase{"Tar32", 2U << 16 | 28, L"2.28.0.0",
                                  L"Archiver library for TAR and its compressed forms", L"Tar32.dll"},
                      VersionCase{"UnRar32", 40, L"0.40.0.0", L"Archiver library for RAR", L"UnRar32.dll"},
                      VersionCase{"UnArj32j", 1U << 16 | 20, L"1.20.0.0", L"Archiver library for ARJ", L"UnArj32j.dll"},
                      VersionCase{"UnLha32", 2U << 16 | 67, L"2.67.0.0", L"Archiver library for LZH", L"UnLha32.dll"},
                      VersionCase{"Cab32", 98, L"0.98.0.0", L"Archiver library for cabinets", L"Cab32.dll"},
                      VersionCase{"UnAce", 2U << 16 | 60, L"2.60.0.0", L"Archiver library for ACE", L"UnAce.dll"}),
    [](const auto& each) { return std::string(each.param.module); });

}  // namespace
}  // namespace archiver
