#include "shell/win32/system_icons.h"

#include <gtest/gtest.h>
#include <objbase.h>

#include <string>

namespace tovar::test {
namespace {

struct FreeMemory {
    void operator()(ITEMIDLIST* list) const noexcept { ::CoTaskMemFree(list); }
};

/// A registered file type, for as long as a test runs.
class RegisteredType {
public:
    RegisteredType() {
        set(L".tvxtest", L"TovarExTest");
        set(L"TovarExTest", L"Test Document");
    }
    ~RegisteredType() {
        ::RegDeleteTreeW(HKEY_CLASSES_ROOT, L".tvxtest");
        ::RegDeleteTreeW(HKEY_CLASSES_ROOT, L"TovarExTest");
    }
    RegisteredType(const RegisteredType&) = delete;
    RegisteredType& operator=(const RegisteredType&) = delete;

private:
    static void set(const wchar_t* key, const std::wstring& value) {
        ::RegSetKeyValueW(HKEY_CLASSES_ROOT, key, nullptr, REG_SZ, value.c_str(),
                          static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    }
};

TEST(SystemIcons, HasTwoImageLists) {
    int width = 0, height = 0;
    ASSERT_NE(SystemImageList(1), nullptr);
    ASSERT_TRUE(::ImageList_GetIconSize(SystemImageList(1), &width, &height));
    EXPECT_EQ(width, ::GetSystemMetrics(SM_CXSMICON));
    ASSERT_NE(SystemImageList(0), nullptr);
    ASSERT_TRUE(::ImageList_GetIconSize(SystemImageList(0), &width, &height));
    EXPECT_EQ(width, ::GetSystemMetrics(SM_CXICON));
}

TEST(SystemIcons, HasImageListsForOtherScales) {
    EXPECT_EQ(SystemImageListOfSize(::GetSystemMetrics(SM_CXSMICON)), SystemImageList(SHGFI_SMALLICON));
    EXPECT_EQ(SystemImageListOfSize(::GetSystemMetrics(SM_CXICON)), SystemImageList(SHGFI_LARGEICON));
    const auto sizeOf = [](int wanted) {
        int width = 0, height = 0;
        EXPECT_TRUE(::ImageList_GetIconSize(SystemImageListOfSize(wanted), &width, &height));
        return width;
    };
    EXPECT_EQ(sizeOf(1), ::GetSystemMetrics(SM_CXSMICON));  // none is as small
    EXPECT_EQ(sizeOf(::GetSystemMetrics(SM_CXICON) - 1), ::GetSystemMetrics(SM_CXSMICON));
    EXPECT_EQ(sizeOf(::GetSystemMetrics(SM_CXICON) * 3 / 2), ::GetSystemMetrics(SM_CXICON) * 3 / 2);
    EXPECT_EQ(sizeOf(1000), 256);
}

TEST(SystemIcons, TakesAnItemByPathOrByNumber) {
    const std::wstring folder = L"C:\\windows";
    const std::unique_ptr<ITEMIDLIST, FreeMemory> number(::ILCreateFromPathW(folder.c_str()));
    ASSERT_NE(number, nullptr);
    const ShellItem item(static_cast<PCIDLIST_ABSOLUTE>(number.get()));
    EXPECT_EQ(item.flags(), 8U);
    EXPECT_EQ(ShellItem(folder).flags(), 0U);
    EXPECT_EQ(ShellTypeName(item), ShellTypeName(folder));
    EXPECT_NE(ShellTypeName(item), L"");
    EXPECT_EQ(SystemIconIndex(item, SHGFI_SMALLICON), SystemIconIndex(folder, SHGFI_SMALLICON));
}

TEST(SystemIcons, KnowsNothingOfWhatDoesNotExist) {
    const std::wstring missing = L"C:\\no\\such\\thing.tvxtest";
    SHFILEINFOW info{};
    EXPECT_EQ(ShellFileInfo(missing, SHGFI_TYPENAME, info), 0U);
    EXPECT_EQ(ShellTypeName(missing), L"");
    EXPECT_EQ(SystemIconIndex(missing, 0), 0);
}

TEST(SystemIcons, NamesAMemberByItsExtensionAlone) {
    const RegisteredType registered;
    EXPECT_EQ(FileTypeName(L"no such file.tvxtest"), L"Test Document");
}

TEST(SystemIcons, NamesAMemberWhoseNameIsTooLongForTheShell) {
    const RegisteredType registered;
    EXPECT_EQ(FileTypeName(std::wstring(300, L'n') + L".tvxtest"), L"Test Document");
    EXPECT_EQ(shortFileName(std::wstring(300, L'n') + L".tvxtest"), L"x.tvxtest");
    EXPECT_EQ(shortFileName(std::wstring(300, L'n')), L"x");
    EXPECT_EQ(shortFileName(L"n." + std::wstring(300, L'e')), L"x");
    EXPECT_EQ(shortFileName(L"n.e"), L"n.e");
}

TEST(SystemIcons, HasAWordForFolders) { EXPECT_NE(SystemTypeNames().ofTempFolder(), L""); }

}  // namespace
}  // namespace tovar::test
