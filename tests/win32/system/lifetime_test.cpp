#include "win32/create/pack_controls.h"
#include "win32/settings/config_controls.h"
#include "win32/system/support/process_marks.h"
#include "win32/system/support/system_fixture.h"

namespace tovar::test {
namespace {

/// The component as a guest in its host's process, from its first call to its last.
class GuestInAProcess : public SystemFixture {
protected:
    GuestInAProcess() { libraries.bundled(); }

    /// Shows an archive and lets its user close it.
    void showOnce(const std::wstring& file) {
        ASSERT_TRUE(open(file));
        ASSERT_TRUE(browser().isVisible());
        runMessages();
        browser().close();
        runMessages();
        ASSERT_FALSE(busy());
    }

    const std::wstring zip = writeFile(folder, L"small.zip", kSmallZip);
    const std::wstring tgz = writeFile(folder, L"small.tar.gz", kSmallTarGz);
    const std::wstring bad = writeFile(folder, L"bad.zip", "no archive");
};

void expectNothingLost(const ResourceMarks& before, const ResourceMarks& after) {
    EXPECT_LE(after.gdiObjects, before.gdiObjects + 4);
    EXPECT_LE(after.userObjects, before.userObjects + 4);
    EXPECT_LE(after.gdiHandles, before.gdiHandles + 4);
    EXPECT_LE(after.kernelHandles, before.kernelHandles + 4);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_EQ(after.menus, before.menus);
    EXPECT_EQ(after.icons, before.icons);
    EXPECT_EQ(after.threadSlots, before.threadSlots);
    EXPECT_LE(after.kilobytes, before.kilobytes + 1024);
}

class ManySessions : public GuestInAProcess {};

TEST(ResourceMarks, GrowWithWhatIsLost) {
    const HICON shared = ::LoadIconW(nullptr, IDI_APPLICATION);
    const ResourceMarks before = resourceMarks();
    HBRUSH brushes[50];
    HMENU menus[50];
    HANDLE events[50];
    HICON icons[50];
    for (int i = 0; i < 50; ++i) {
        brushes[i] = ::CreateSolidBrush(0);
        menus[i] = ::CreateMenu();
        events[i] = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
        icons[i] = ::CopyIcon(shared);
    }
    const DWORD slot = ::TlsAlloc();
    const UniqueWindow window(
        ::CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr));
    const std::vector<char> memory(3 << 20, 'x');
    const ResourceMarks after = resourceMarks();
    for (int i = 0; i < 50; ++i) {
        ::DeleteObject(brushes[i]);
        ::DestroyMenu(menus[i]);
        ::CloseHandle(events[i]);
        ::DestroyIcon(icons[i]);
    }
    ::TlsFree(slot);
    EXPECT_GE(after.gdiHandles, before.gdiHandles + 50);
    EXPECT_GE(after.kernelHandles, before.kernelHandles + 50);
    EXPECT_EQ(after.menus, before.menus + 50);
    EXPECT_GE(after.icons, before.icons + 50);
    EXPECT_EQ(after.windows, before.windows + 1);
    EXPECT_GT(after.threadSlots, before.threadSlots);
    EXPECT_GE(after.kilobytes, before.kilobytes + 3000);
}

TEST_F(GuestInAProcess, LeavesTheProcessAsItWas) {
    const auto before = processState();
    create();
    EXPECT_EQ(processState(), before) << "after creation";
    Value nothing;
    EXPECT_EQ(object->SetFont(makeBstr(L"Tahoma").get(), 0, nothing.get()), S_OK);
    EXPECT_EQ(object->SetTempDir(makeBstr(folder / L"work").get()), S_OK);
    EXPECT_FALSE(open(bad));
    EXPECT_EQ(processState(), before) << "after a message";
    EXPECT_TRUE(open(tgz));
    EXPECT_EQ(processState(), before) << "with a browser";
    browser().openRow(0);
    browser().close();
    EXPECT_TRUE(open(zip));
    VARIANT_BOOL created = VARIANT_TRUE;
    const PackDialogUser user([](HWND dialog) { PackControls{dialog}.press(IDCANCEL); });
    EXPECT_EQ(object->CreateArchive(makeBstr(folder / L"new.zip").get(), makeBstr(folder.path()).get(),
                                    makeBstr(L"small.zip").get(), &host.object, &created),
              S_OK);
    const ConfigDialogUser configuration([](HWND dialog) { ConfigControls{dialog}.press(IDOK); });
    EXPECT_EQ(object->Configure(), S_OK);
    EXPECT_EQ(configuration.times(), 1);
    EXPECT_EQ(processState(), before) << "with another browser";
    release();
    EXPECT_EQ(processState(), before) << "without the component";
}

TEST_F(ManySessions, LoseNothing) {
    create();
    for (int session = 0; session < 20; ++session) ASSERT_NO_FATAL_FAILURE(showOnce(session % 2 == 0 ? zip : tgz));
    const ResourceMarks before = resourceMarks();
    for (int session = 0; session < 180; ++session) ASSERT_NO_FATAL_FAILURE(showOnce(session % 2 == 0 ? zip : tgz));
    expectNothingLost(before, resourceMarks());
    EXPECT_TRUE(boxes.seen.empty());
}

TEST_F(ManySessions, LoseNothingWhenHostsAndObjectsGoFirst) {
    const auto once = [this] {
        TestHost other;
        create();
        ASSERT_TRUE(open(*object, zip, &other.object));
        other.destroy();
        EXPECT_FALSE(busy());
        TestHost third;
        ASSERT_TRUE(open(*object, tgz, &third.object));
        release();
        EXPECT_FALSE(ShownBrowser::in(third.window()).isThere());
        ASSERT_TRUE(leftModules().empty());
    };
    // A host has these of its own; loading and freeing them over and over would be measured here.
    const UniqueLibrary controls(::LoadLibraryW(L"comctl32.dll")), shell(::LoadLibraryW(L"shell32.dll"));
    for (int time = 0; time < 5; ++time) ASSERT_NO_FATAL_FAILURE(once());
    const ResourceMarks before = resourceMarks();
    for (int time = 0; time < 25; ++time) ASSERT_NO_FATAL_FAILURE(once());
    expectNothingLost(before, resourceMarks());
}

TEST_F(ManySessions, LoseNothingToBadArchives) {
    create();
    const auto once = [this] { EXPECT_FALSE(open(bad)); };
    for (int time = 0; time < 5; ++time) once();
    const ResourceMarks before = resourceMarks();
    for (int time = 0; time < 40; ++time) once();
    expectNothingLost(before, resourceMarks());
    EXPECT_EQ(boxes.seen.size(), 45U);
}

TEST_F(GuestInAProcess, IsUnloadedWithItsLastObject) {
    EXPECT_EQ(::GetModuleHandleW(L"TovarEx.dll"), nullptr);
    create();
    ASSERT_TRUE(open(zip));
    EXPECT_NE(::GetModuleHandleW(L"UnZip32.dll"), nullptr);
    ::CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_NE(::GetModuleHandleW(L"TovarEx.dll"), nullptr) << "an object lives";
    EXPECT_TRUE(busy());
    object.reset();
    EXPECT_EQ(::GetModuleHandleW(L"UnZip32.dll"), nullptr) << "the libraries go with the object";
    EXPECT_FALSE(browser().isThere());
    ::CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(::GetModuleHandleW(L"TovarEx.dll"), nullptr);
}

TEST_F(ManySessions, LoadTheModulesMoreOftenThanAProcessHasThreadSlots) {
    const UniqueLibrary controls(::LoadLibraryW(L"comctl32.dll")), shell(::LoadLibraryW(L"shell32.dll"));
    const struct {
        const wchar_t* name;
        int times;
    } modules[] = {{L"TovarEx.dll", 50}, {L"UnZip32.dll", 1200}, {L"Tar32.dll", 50}};
    for (const auto& each : modules) {
        const auto once = [&each] { return UniqueLibrary(::LoadLibraryW(each.name)) != nullptr; };
        for (int time = 0; time < 5; ++time) ASSERT_TRUE(once());
        const ResourceMarks before = resourceMarks();
        for (int time = 0; time < each.times; ++time) ASSERT_TRUE(once());
        expectNothingLost(before, resourceMarks());
    }
}

TEST_F(GuestInAProcess, SharesItsBrowserAmongObjects) {
    create();
    ASSERT_TRUE(open(zip));
    const HWND first = browser().window();
    ComOwner<ITovar> second = createObject();
    EXPECT_TRUE(busy(*second));
    EXPECT_TRUE(::IsWindow(first)) << "another object changes nothing";
    EXPECT_EQ(browser().names(), (Texts{L"folder", L"readme.txt"}));
    ASSERT_TRUE(open(*second, tgz, &host.object));
    EXPECT_FALSE(::IsWindow(first));
    EXPECT_EQ(browser().title(), L"small.tar.gz");
    second.reset();
    EXPECT_FALSE(browser().isThere()) << "an object that goes takes every window with it";
    EXPECT_FALSE(busy());
    ASSERT_TRUE(open(zip));
    EXPECT_EQ(browser().names(), (Texts{L"folder", L"readme.txt"}));
}

TEST_F(GuestInAProcess, SurvivesAHostThatDiesFirst) {
    create();
    ASSERT_TRUE(open(zip));
    const HWND window = browser().window();
    host.destroy();
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_FALSE(busy());
    EXPECT_TRUE(open(tgz)) << "a host without a window is as good as none";
    ASSERT_EQ(topLevelBrowsers().size(), 1U);
    EXPECT_EQ(ShownBrowser(topLevelBrowsers()[0]).title(), L"small.tar.gz");
    EXPECT_TRUE(busy());
}

TEST_F(GuestInAProcess, SurvivesAHostThatClosesItsWindowAndReleasesIt) {
    create();
    ASSERT_TRUE(open(zip));
    browser().selectRow(1);
    ::SendMessageW(host.window(), WM_CLOSE, 0, 0);
    host.destroy();
    release();
    EXPECT_TRUE(leftModules().empty());
}

TEST_F(GuestInAProcess, SurvivesItsReleaseAmongItsOwnMessages) {
    // The host drops its object while the browser's messages still wait.
    create();
    ASSERT_TRUE(open(zip));
    ::PostMessageW(browser().list(), WM_KEYDOWN, VK_DOWN, 0);
    ::PostMessageW(browser().tree(), WM_KEYDOWN, VK_DOWN, 0);
    ::PostMessageW(browser().window(), WM_CLOSE, 0, 0);
    release();
    runMessages();
    EXPECT_TRUE(leftModules().empty());
}

}  // namespace
}  // namespace tovar::test
