#include <gtest/gtest.h>
#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <functional>
#include <utility>
#include <vector>

#include "win32/create/pack_controls.h"
#include "win32/front/support/component_fixture.h"
#include "win32/settings/config_controls.h"

namespace tovar {
namespace {

using test::kRefused;
using test::kUnavailable;
using test::TestHost;

/// With the archiver libraries that come with the component.
class OpenInHost : public test::ComponentFixture {
protected:
    const std::wstring zip = test::writeFile(folder, L"small.zip", test::kSmallZip);
    const std::wstring tgz = test::writeFile(folder, L"small.tar.gz", test::kSmallTarGz);
};

TEST_F(OpenInHost, ShowsTheBrowserInTheMiddleOfTheHost) {
    ASSERT_TRUE(open(zip));
    EXPECT_TRUE(busy());
    const HWND browser = host.browser();
    ASSERT_NE(browser, nullptr);
    EXPECT_TRUE(::IsWindowVisible(browser));
    EXPECT_NE(::GetWindowLongPtrW(browser, GWL_STYLE) & WS_CHILD, 0);
    RECT place{};
    ::GetWindowRect(browser, &place);
    EXPECT_EQ(place.right - place.left, 480) << "0.6 of 800";
    EXPECT_EQ(place.bottom - place.top, 360) << "0.6 of 600";
    ::MapWindowPoints(nullptr, host.window(), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_EQ(place.left, 160);
    EXPECT_EQ(place.top, 120);
    EXPECT_TRUE(boxes.seen.empty());
    EXPECT_EQ(host.object.references, 1U) << "the host's object is not kept";
}

TEST_F(OpenInHost, ReadsTheHostByName) {
    ASSERT_TRUE(open(zip));
    EXPECT_EQ(host.object.reads, (std::vector<std::wstring>{L"hWnd", L"Width", L"Height"}));
}

TEST_F(OpenInHost, TakesTheHostsNumbersInAnyForm) {
    host.object.properties[L"hWnd"] = std::to_wstring(reinterpret_cast<LONG_PTR>(host.window())).c_str();
    host.object.properties[L"Width"] = L"8";
    host.object.properties[L"Height"] = LONG{6};
    ASSERT_TRUE(open(zip));
    RECT place{};
    ::GetWindowRect(host.browser(), &place);
    EXPECT_EQ(place.right - place.left, 480);
    EXPECT_EQ(place.bottom - place.top, 360);
}

TEST_F(OpenInHost, OpensTarsOfEveryForm) {
    ASSERT_TRUE(open(tgz));
    EXPECT_TRUE(busy());
    LONG mode = 0;
    EXPECT_TRUE(canOpen(tgz, mode, false));
    EXPECT_EQ(mode, 512);
}

TEST_F(OpenInHost, IsBusyUntilTheUserClosesTheBrowser) {
    ASSERT_TRUE(open(zip));
    ::SendMessageW(host.browser(), WM_CLOSE, 0, 0);
    test::runMessages();
    EXPECT_EQ(host.browser(), nullptr);
    EXPECT_FALSE(busy());
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE) << "the object lives";
    EXPECT_TRUE(open(zip)) << "and opens again";
    EXPECT_TRUE(busy());
}

TEST_F(OpenInHost, GoesWithTheObject) {
    ASSERT_TRUE(open(zip));
    const HWND browser = host.browser();
    object.reset();
    EXPECT_FALSE(::IsWindow(browser));
    EXPECT_EQ(dll.canUnloadNow(), S_OK);
}

TEST_F(OpenInHost, SurvivesAHostThatDiesFirst) {
    ASSERT_TRUE(open(zip));
    const HWND browser = host.browser();
    host.destroy();
    EXPECT_FALSE(::IsWindow(browser));
    EXPECT_FALSE(busy());
    TestHost next;
    EXPECT_TRUE(open(*object, zip, &next.object));
    EXPECT_NE(next.browser(), nullptr);
}

TEST_F(OpenInHost, SurvivesAHostWhoseWindowIsGone) {
    host.destroy();
    ASSERT_TRUE(open(zip));
    EXPECT_EQ(topLevelBrowsers().size(), 1U) << "without a usable window the browser stands alone";
    EXPECT_TRUE(busy());
}

TEST_F(OpenInHost, StandsAloneWithoutAHost) {
    ASSERT_TRUE(open(*object, zip, nullptr));
    ASSERT_EQ(topLevelBrowsers().size(), 1U);
    const HWND browser = topLevelBrowsers()[0];
    EXPECT_EQ(::GetWindowLongPtrW(browser, GWL_STYLE) & WS_CHILD, 0);
    EXPECT_TRUE(::IsWindowVisible(browser));
    object.reset();
    EXPECT_TRUE(topLevelBrowsers().empty());
}

/// Calls something when the host hears that a window inside it goes.
class ChildNotice {
public:
    ChildNotice(HWND host, std::function<void()> onChildGoes) : host_(host), onChildGoes_(std::move(onChildGoes)) {
        ::SetWindowSubclass(host, &procedure, 7, reinterpret_cast<DWORD_PTR>(this));
    }
    ~ChildNotice() { ::RemoveWindowSubclass(host_, &procedure, 7); }
    ChildNotice(const ChildNotice&) = delete;
    ChildNotice& operator=(const ChildNotice&) = delete;

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                      DWORD_PTR data) {
        auto& self = *reinterpret_cast<ChildNotice*>(data);
        if (message == WM_PARENTNOTIFY && LOWORD(wParam) == WM_DESTROY) self.onChildGoes_();
        return ::DefSubclassProc(window, message, wParam, lParam);
    }

    HWND host_;
    std::function<void()> onChildGoes_;
};

TEST_F(OpenInHost, SurvivesAHostThatDropsTheObjectAsTheBrowserGoes) {
    ASSERT_TRUE(open(zip));
    int notices = 0;
    const ChildNotice notice(host.window(), [&] {
        ++notices;
        object.reset();
    });
    ::SendMessageW(host.browser(), WM_CLOSE, 0, 0);
    EXPECT_GE(notices, 1);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(host.browser(), nullptr);
    EXPECT_EQ(dll.canUnloadNow(), S_OK);
}

TEST_F(OpenInHost, SurvivesAHostThatOpensAnotherArchiveAsTheBrowserGoes) {
    ASSERT_TRUE(open(zip));
    bool first = true, opened = false;
    const ChildNotice notice(host.window(), [&] {
        if (std::exchange(first, false)) opened = open(tgz);
    });
    ::SendMessageW(host.browser(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(opened);
    EXPECT_TRUE(busy());
    EXPECT_NE(host.browser(), nullptr);
}

TEST_F(OpenInHost, ShowsOneArchiveAtATime) {
    ASSERT_TRUE(open(zip));
    const HWND first = host.browser();
    ASSERT_TRUE(open(tgz));
    EXPECT_FALSE(::IsWindow(first));
    EXPECT_NE(host.browser(), nullptr);
    EXPECT_EQ(::FindWindowExW(host.window(), host.browser(), L"fArcMain", nullptr), nullptr) << "only one";
    EXPECT_TRUE(busy());
}

TEST_F(OpenInHost, SharesItsStateWithASecondObject) {
    ASSERT_TRUE(open(zip));
    ComOwner<ITovar> second = dll.createObject();
    VARIANT_BOOL flag = VARIANT_FALSE;
    EXPECT_EQ(second->IsBusy(&flag), S_OK);
    EXPECT_EQ(flag, VARIANT_TRUE);
    ASSERT_TRUE(open(*second, tgz, &host.object));
    EXPECT_NE(host.browser(), nullptr);
    second.reset();
    EXPECT_EQ(host.browser(), nullptr) << "an object that goes takes every window with it";
    EXPECT_FALSE(busy());
    EXPECT_TRUE(open(zip));
}

TEST_F(OpenInHost, OutlivesTheObjectThatOpenedTheBrowser) {
    ComOwner<ITovar> second = dll.createObject();
    ASSERT_TRUE(open(*second, zip, &host.object));
    object.reset();
    EXPECT_EQ(host.browser(), nullptr);
    EXPECT_TRUE(open(*second, zip, &host.object));
    EXPECT_NE(host.browser(), nullptr);
}

TEST_F(OpenInHost, SavesTheSettingWhenItGoes) {
    test::KeptAllowMask::write(hive::kCurrentUser, 0x123);
    const ComOwner<ITovar> second = dll.createObject();
    test::KeptAllowMask::write(hive::kCurrentUser, std::nullopt);
    object.reset();
    EXPECT_EQ(test::KeptAllowMask::read(hive::kCurrentUser), 0x123U);
    EXPECT_EQ(test::KeptAllowMask::read(hive::kLocalMachine), 0x123U);
}

TEST_F(OpenInHost, OpensNothingThatIsSwitchedOff) {
    test::KeptAllowMask::write(hive::kCurrentUser, 512);
    const ComOwner<ITovar> second = dll.createObject();
    EXPECT_FALSE(open(*second, zip, &host.object));
    EXPECT_TRUE(boxes.seen.empty());
    LONG mode = -3;
    EXPECT_FALSE(canOpen(zip, mode, true));
    EXPECT_EQ(mode, -3);
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, kUnavailable);
    EXPECT_EQ(boxes.seen[0].title, L"Open 'small.zip' by Vantrel");
    EXPECT_TRUE(boxes.seen[0].information);
}

TEST_F(OpenInHost, HandsCorruptArchivesBackWithAMessage) {
    const std::wstring broken = test::writeFile(folder, L"broken.zip", "PK no archive at all");
    EXPECT_FALSE(open(broken));
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, kRefused);
    EXPECT_EQ(boxes.seen[0].title, L"Open 'broken.zip' by Vantrel");
    EXPECT_EQ(boxes.seen[0].owner, host.window());
    EXPECT_TRUE(boxes.seen[0].information);
    EXPECT_FALSE(busy());
    EXPECT_EQ(host.browser(), nullptr);
    LONG mode = 9;
    EXPECT_FALSE(canOpen(broken, mode, false));
    EXPECT_EQ(mode, 9);
    EXPECT_EQ(boxes.seen.size(), 2U) << "whatever the caller asked";
}

TEST_F(OpenInHost, TurnsASecondArchiveAwayWhileAMessageIsShown) {
    bool opened = true;
    const std::wstring broken = test::writeFile(folder, L"broken.zip", "PK no archive at all");
    boxes.whileUp = [&] { opened = open(zip); };
    EXPECT_FALSE(open(broken));
    EXPECT_FALSE(opened);
    EXPECT_EQ(boxes.seen.size(), 1U);
}

TEST_F(OpenInHost, SurvivesItsReleaseWhileAMessageIsShown) {
    const std::wstring broken = test::writeFile(folder, L"broken.zip", "PK no archive at all");
    boxes.whileUp = [&] { object.reset(); };
    ITovar* const raw = object.get();
    EXPECT_FALSE(open(*raw, broken, &host.object));
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(dll.canUnloadNow(), S_OK);
}

TEST_F(OpenInHost, MovesTheWorkFolder) {
    const std::wstring work = folder / L"work";
    EXPECT_EQ(object->SetTempDir(makeBstr(work).get()), S_OK);
    // Wine keeps no read-only mark on folders, so only the other attributes can be looked at.
    EXPECT_EQ(
        ::GetFileAttributesW(work.c_str()) & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM),
        static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN));
    EXPECT_EQ(object->SetTempDir(makeBstr(folder / L"no\\such\\parent").get()), S_OK);
    EXPECT_TRUE(boxes.seen.empty());
}

TEST_F(OpenInHost, CreatesNothingAfterCancelAndAnswersFalse) {
    const test::PackDialogUser user([](HWND dialog) { test::PackControls{dialog}.press(IDCANCEL); });
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(object->CreateArchive(makeBstr(folder / L"new.zip").get(), makeBstr(folder.path()).get(),
                                    makeBstr(L"small.zip").get(), &host.object, &result),
              S_OK);
    EXPECT_EQ(result, VARIANT_FALSE);
    EXPECT_EQ(user.times(), 1);
    EXPECT_EQ(::GetFileAttributesW((folder / L"new.zip").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(boxes.seen.empty());
}

TEST_F(OpenInHost, ConfiguresThroughTheDialog) {
    const test::ConfigDialogUser user([](HWND dialog) {
        EXPECT_EQ(textOf(dialog), L"Archiver Configurarion");
        test::ConfigControls{dialog}.press(IDCANCEL);
    });
    EXPECT_EQ(object->Configure(), S_OK);
    EXPECT_EQ(user.times(), 1);
    EXPECT_TRUE(boxes.seen.empty());
}

TEST_F(OpenInHost, LeavesTheProcessAsItWas) {
    wchar_t before[MAX_PATH] = L"", after[MAX_PATH] = L"";
    ::GetCurrentDirectoryW(MAX_PATH, before);
    ASSERT_TRUE(open(zip));
    object.reset();
    ::GetCurrentDirectoryW(MAX_PATH, after);
    EXPECT_STREQ(after, before);
}

TEST_F(OpenInHost, OpensAndClosesManyTimes) {
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(open(i % 2 == 0 ? zip : tgz));
        if (i % 3 == 0) ::SendMessageW(host.browser(), WM_CLOSE, 0, 0);
    }
    EXPECT_TRUE(boxes.seen.empty());
}

struct BadCase {
    const char* name;
    const wchar_t* file;
    std::string_view bytes;
};
std::ostream& operator<<(std::ostream& stream, const BadCase& each) { return stream << each.name; }
class BadInput : public OpenInHost, public testing::WithParamInterface<BadCase> {};

TEST_P(BadInput, EndsInTheMessage) {
    const std::wstring file = test::writeFile(folder, GetParam().file, GetParam().bytes);
    EXPECT_FALSE(open(file));
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, kRefused);
    EXPECT_FALSE(busy());
    EXPECT_TRUE(open(zip)) << "the next archive opens";
}

INSTANTIATE_TEST_SUITE_P(Files, BadInput,
                         testing::Values(BadCase{"EmptyZip", L"a.zip", ""}, BadCase{"EmptyTar", L"a.tar", ""},
                                         BadCase{"EmptyTgz", L"a.tgz", ""}, BadCase{"EmptyGz", L"a.gz", ""},
                                         BadCase{"EmptyBz2", L"a.bz2", ""}, BadCase{"EmptyZ", L"a.Z", ""},
                                         BadCase{"TextZip", L"a.zip", "This is a text, and a text only."},
                                         BadCase{"TextTar", L"a.tar", "This is a text, and a text only."},
                                         BadCase{"TextBz2", L"a.bz2", "This is a text, and a text only."},
                                         BadCase{"TruncatedZip", L"a.zip", test::kSmallZip.substr(0, 120)},
                                         BadCase{"ZipInTarsName", L"a.tar", test::kSmallZip}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(OpenInHost, RefusesWhatIsNoFile) {
    ::CreateDirectoryW((folder / L"folder.zip").c_str(), nullptr);
    for (const std::wstring& file :
         {folder / L"missing.zip", folder / L"folder.zip", folder / L"folder.zip\\", std::wstring(L"Q:\\a.zip"),
          std::wstring(L"*?<>|.zip"), std::wstring(L"a\x0001\x001F.zip"), std::wstring(32000, L'x') + L".zip",
          L"C:\\" + std::wstring(300, L'y') + L".zip"}) {
        boxes.seen.clear();
        EXPECT_FALSE(open(file));
        EXPECT_EQ(boxes.seen.size(), 1U) << "length " << file.size();
    }
    EXPECT_TRUE(open(zip));
}

// In code page 932 the second bytes of two of these letters are that of a backslash.
TEST_F(OpenInHost, OpensNamesOfEveryKind) {
    for (const wchar_t* name : {L"blank in name.zip", L"comma,name.zip", L"quote'name.zip", L"\x00E4\x00F6\x00FC.zip",
                                L"\x65E5\x672C\x8A9E.zip", L"\x8868\x30BD.zip", L"UPPER.ZIP", L"two.dots.zip"}) {
        const std::wstring file = test::writeFile(folder, name, test::kSmallZip);
        EXPECT_TRUE(open(file)) << ::testing::PrintToString(std::wstring(name));
        EXPECT_TRUE(busy());
    }
    EXPECT_TRUE(boxes.seen.empty());
}

}  // namespace
}  // namespace tovar
