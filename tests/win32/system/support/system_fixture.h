#pragma once
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "win32/front/support/component_fixture.h"
#include "win32/system/support/libraries_beside.h"
#include "win32/system/support/shown_browser.h"

namespace tovar::test {

/// The component as a host gets it: created through COM by its name, with a window to show archives in, and with the
/// archiver libraries that the test puts beside the program. At the end nothing of it may be left.
class SystemFixture : public testing::Test {
protected:
    SystemFixture() {
        KeptAllowMask::write(hive::kCurrentUser, std::nullopt);
        KeptAllowMask::write(hive::kLocalMachine, std::nullopt);
    }
    void TearDown() override {
        release();
        EXPECT_TRUE(leftModules().empty()) << testing::PrintToString(leftModules());
        EXPECT_TRUE(topLevelBrowsers().empty());
    }

    void create() {
        object = createObject();
        ASSERT_NE(object, nullptr);
    }
    static ComOwner<ITovar> createObject() {
        CLSID id{};
        EXPECT_EQ(::CLSIDFromProgID(L"TovarEx.cTovar", &id), S_OK);
        void* found = nullptr;
        EXPECT_EQ(::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_ITovar, &found), S_OK);
        return ComOwner<ITovar>(static_cast<ITovar*>(found));
    }
    void release() {
        object.reset();
        ::CoFreeUnusedLibrariesEx(0, 0);
    }

    bool open(const std::wstring& file) { return open(*object, file, &host.object); }
    static bool open(ITovar& whom, const std::wstring& file, IDispatch* parent) {
        VARIANT_BOOL result = VARIANT_FALSE;
        EXPECT_EQ(whom.OpenArchive(makeBstr(file).get(), nullptr, parent, &result), S_OK);
        return result != VARIANT_FALSE;
    }
    /// @return the kind; the number -5 when the file is not accepted
    LONG kindOf(const std::wstring& file, bool withMessages = false) {
        VARIANT_BOOL result = VARIANT_FALSE;
        LONG kind = -5;
        const VARIANT_BOOL messages = withMessages ? VARIANT_TRUE : VARIANT_FALSE;
        EXPECT_EQ(object->CanOpenArchive(makeBstr(file).get(), &kind, messages, &result), S_OK);
        EXPECT_EQ(result != VARIANT_FALSE, kind != -5);
        return kind;
    }
    bool busy() { return busy(*object); }
    static bool busy(ITovar& whom) {
        VARIANT_BOOL result = VARIANT_FALSE;
        EXPECT_EQ(whom.IsBusy(&result), S_OK);
        return result != VARIANT_FALSE;
    }
    bool canCreate() {
        VARIANT_BOOL result = VARIANT_FALSE;
        EXPECT_EQ(object->CanCreateArchive(&result), S_OK);
        return result != VARIANT_FALSE;
    }
    [[nodiscard]] ShownBrowser browser() const { return ShownBrowser::in(host.window()); }

    static Texts leftModules() {
        Texts left;
        for (const wchar_t* const name :
             {L"TovarEx.dll", L"UnZip32.dll", L"Tar32.dll", L"UnRar32.dll", L"UnArj32j.dll", L"InfoZip32.dll"}) {
            if (::GetModuleHandleW(name) != nullptr) left.emplace_back(name);
        }
        return left;
    }
    static std::vector<HWND> topLevelBrowsers() {
        std::vector<HWND> found;
        for (HWND window = nullptr; (window = ::FindWindowExW(nullptr, window, L"fArcMain", nullptr)) != nullptr;) {
            found.push_back(window);
        }
        return found;
    }
    /// Whether a box with this text and the information icon was shown last.
    void expectToldOf(const std::wstring& fileName, const wchar_t* text) {
        ASSERT_FALSE(boxes.seen.empty());
        EXPECT_EQ(boxes.seen.back().text, text);
        EXPECT_EQ(boxes.seen.back().title, L"Open '" + fileName + L"' by Vantrel");
        EXPECT_TRUE(boxes.seen.back().information);
    }

    const KeptAllowMask kept;
    const Apartment apartment;
    const TemporaryFolder folder;
    LibrariesBeside libraries;
    MessageBoxWatch boxes;
    TestHost host;
    ComOwner<ITovar> object;
};

}  // namespace tovar::test
