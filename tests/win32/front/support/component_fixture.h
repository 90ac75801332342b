#pragma once
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "win32/front/support/component_session.h"
#include "win32/front/support/message_box_watch.h"

namespace tovar::test {

inline constexpr wchar_t kRefused[] =
    L"The necessary DLL is properly installed.\r\nBut it can not be opened by Vantrel.\r\n\r\n"
    L"It might be corrupted archive.\r\nIt will be tried by external program !!!";
inline constexpr wchar_t kUnavailable[] =
    L"The necessary DLL is not properly installed.\r\nOr, the user turned off the use of DLL.\r\n\r\n"
    L"Check the configuration or install Vantrel again.";

/// The real component, a host for it, and its message boxes answered.
class ComponentFixture : public ::testing::Test {
protected:
    void SetUp() override {
        KeptAllowMask::write(hive::kCurrentUser, std::nullopt);
        KeptAllowMask::write(hive::kLocalMachine, std::nullopt);
        ASSERT_TRUE(dll.loaded());
        object = dll.createObject();
        ASSERT_NE(object, nullptr);
    }
    void TearDown() override {
        object.reset();
        EXPECT_EQ(dll.canUnloadNow(), S_OK) << "something was left behind";
    }

    bool open(ITovar& whom, const std::wstring& file, IDispatch* parent) {
        VARIANT_BOOL result = VARIANT_FALSE;
        EXPECT_EQ(whom.OpenArchive(makeBstr(file).get(), nullptr, parent, &result), S_OK);
        return result != VARIANT_FALSE;
    }
    bool open(const std::wstring& file) { return open(*object, file, &host.object); }

    bool busy() {
        VARIANT_BOOL result = VARIANT_FALSE;
        EXPECT_EQ(object->IsBusy(&result), S_OK);
        return result != VARIANT_FALSE;
    }

    bool canOpen(const std::wstring& file, LONG& mode, bool messages) {
        VARIANT_BOOL result = VARIANT_FALSE;
        EXPECT_EQ(object->CanOpenArchive(makeBstr(file).get(), &mode, messages ? VARIANT_TRUE : VARIANT_FALSE, &result),
                  S_OK);
        return result != VARIANT_FALSE;
    }

    static std::vector<HWND> topLevelBrowsers() {
        std::vector<HWND> found;
        for (HWND window = nullptr; (window = ::FindWindowExW(nullptr, window, L"fArcMain", nullptr)) != nullptr;) {
            found.push_back(window);
        }
        return found;
    }

    const KeptAllowMask kept;
    const Apartment apartment;
    const TemporaryFolder folder;
    MessageBoxWatch boxes;
    TestHost host;
    const ComponentDll dll;
    ComOwner<ITovar> object;
};

}  // namespace tovar::test
