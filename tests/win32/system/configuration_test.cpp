// The configuration dialog by its controls, through the component and with libraries that are there or not.

#include <ostream>

#include "win32/create/pack_controls.h"
#include "win32/settings/config_controls.h"
#include "win32/system/support/path_variable.h"
#include "win32/system/support/process_marks.h"
#include "win32/system/support/system_fixture.h"
#include "win32/system/support/waiting.h"

namespace tovar::test {
namespace {

constexpr const wchar_t* kLibraries[] = {L"InfoZip32.dll", L"UnLha32.dll",  L"Cab32.dll", L"UnZip32.dll",
                                         L"UnRar32.dll",   L"UnArj32j.dll", L"Tar32.dll", L"UnAce.dll"};

class Configuration : public SystemFixture {
protected:
    /// The recording library under every name but one.
    void installAllBut(const wchar_t* missing) {
        for (const wchar_t* const library : kLibraries) {
            if (std::wstring_view(library) != missing) libraries.recorded(library);
        }
        create();
    }
    void configure(const std::function<void(const ConfigControls&)>& use) {
        const ConfigDialogUser user([&](HWND dialog) { use({dialog}); });
        EXPECT_EQ(object->Configure(), S_OK);
        EXPECT_EQ(user.times(), 1);
        EXPECT_TRUE(::IsWindowEnabled(host.window()));
    }
    static void expectStored(std::optional<DWORD> mask) {
        EXPECT_EQ(KeptAllowMask::read(hive::kCurrentUser), mask);
        EXPECT_EQ(KeptAllowMask::read(hive::kLocalMachine), mask);
    }
    static RECT placeOf(HWND window) {
        RECT place{};
        ::GetWindowRect(window, &place);
        return place;
    }
    bool createArchive() {
        VARIANT_BOOL result = VARIANT_TRUE;
        EXPECT_EQ(object->CreateArchive(makeBstr(folder / L"new.zip").get(), makeBstr(folder.path()).get(),
                                        makeBstr(L"a.txt").get(), &host.object, &result),
                  S_OK);
        return result != VARIANT_FALSE;
    }

    const recording::Session session;
    const std::wstring zip = writeFile(folder, L"some.zip", "whatever");
};

struct MissingCase {
    const char* name;
    const wchar_t* missing;
    const char* boxes;
    DWORD saved;
};
std::ostream& operator<<(std::ostream& stream, const MissingCase& each) { return stream << each.name; }
class ConfigurationWithout : public Configuration, public testing::WithParamInterface<MissingCase> {};

TEST_P(ConfigurationWithout, DisablesItsBoxes) {
    installAllBut(GetParam().missing);
    configure([&](const ConfigControls& dialog) {
        EXPECT_EQ(dialog.enabled(), GetParam().boxes);
        EXPECT_EQ(dialog.checked(), GetParam().boxes);
        static constexpr const wchar_t* kWords[] = {L"ZIP ", L"LHA ", L"CAB ", L"ZIP ", L"RAR ",
                                                    L"ARJ ", L"LHA ", L"CAB ", L"TAR ", L"ACE "};
        for (std::size_t box = 0; box < 10; ++box) {
            const std::wstring version = GetParam().boxes[box] == '1' ? L"0.0.0.0" : L"";
            EXPECT_EQ(dialog.text(ConfigControls::boxes()[box]), kWords[box] + version) << box;
        }
        dialog.press(IDOK);
    });
    expectStored(GetParam().saved);
}

INSTANTIATE_TEST_SUITE_P(Libraries, ConfigurationWithout,
                         testing::Values(MissingCase{"Nothing", L"", "1111111111", 2039},
                                         MissingCase{"InfoZip", L"InfoZip32.dll", "0111111111", 2038},
                                         MissingCase{"UnLha", L"UnLha32.dll", "1011110111", 1909},
                                         MissingCase{"Cab", L"Cab32.dll", "1101111011", 1779},
                                         MissingCase{"UnZip", L"UnZip32.dll", "1110111111", 2023},
                                         MissingCase{"UnRar", L"UnRar32.dll", "1111011111", 2007},
                                         MissingCase{"UnArj", L"UnArj32j.dll", "1111101111", 1975},
                                         MissingCase{"Tar", L"Tar32.dll", "1111111101", 1527},
                                         MissingCase{"UnAce", L"UnAce.dll", "1111111110", 1015}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(Configuration, HasItsTextsAndKeys) {
    libraries.bundled();
    create();
    configure([&](const ConfigControls& dialog) {
        EXPECT_EQ(textOf(dialog.dialog), L"Archiver Configurarion");
        EXPECT_EQ(dialog.text(IDC_GRP_USE_PACKER), L"Use Internal Packer");
        EXPECT_EQ(dialog.text(IDC_GRP_USE_UNPACKER), L"Use Internal UnPacker");
        EXPECT_EQ(dialog.text(IDOK), L"&Ok");
        EXPECT_EQ(dialog.text(IDCANCEL), L"&Cancel");
        EXPECT_EQ(dialog.enabled(), "0001000010");
        EXPECT_EQ(dialog.checked(), "0001000010");
        EXPECT_EQ(::GetNextDlgTabItem(dialog.dialog, nullptr, FALSE), dialog.item(IDOK)) << "the first tab position";
        EXPECT_EQ(::GetFocus(), dialog.item(IDOK));
        EXPECT_EQ(LOWORD(::SendMessageW(dialog.dialog, DM_GETDEFID, 0, 0)), IDOK);
        LOGFONTW font{};
        const auto handle = reinterpret_cast<HGDIOBJ>(::SendMessageW(dialog.dialog, WM_GETFONT, 0, 0));
        ::GetObjectW(handle, sizeof font, &font);
        EXPECT_STREQ(font.lfFaceName, L"Tahoma");
        dialog.key(VK_ESCAPE);
    });
    expectStored(std::nullopt);
    configure([](const ConfigControls& dialog) { dialog.key(VK_RETURN); });
    expectStored(512 | 16);
}

TEST_F(Configuration, AnswersMnemonics) {
    libraries.bundled();
    create();
    configure([](const ConfigControls& dialog) { dialog.mnemonic(L'c'); });
    expectStored(std::nullopt);
    configure([](const ConfigControls& dialog) { dialog.mnemonic(L'o'); });
    expectStored(512 | 16);
    configure([&](const ConfigControls& dialog) {
        dialog.mnemonic(L'd');
        EXPECT_TRUE(::IsWindowVisible(dialog.item(IDC_LST_LIBRARIES)));
        EXPECT_NE(::GetFocus(), dialog.item(IDC_LST_LIBRARIES));
        dialog.mnemonic(L'l');
        EXPECT_EQ(::GetFocus(), dialog.item(IDC_LST_LIBRARIES)) << "its label names it";
        dialog.press(IDCANCEL);
    });
}

TEST_F(Configuration, SwitchesKindsOffAndOn) {
    installAllBut(L"");
    EXPECT_EQ(kindOf(zip), 16);
    EXPECT_TRUE(canCreate());
    configure([](const ConfigControls& dialog) {
        dialog.click(IDC_CHK_UNPACKER);
        for (const int id : {IDC_CHK_PACKER, IDC_CHK_PACKER_LHA, IDC_CHK_PACKER_CAB}) dialog.click(id);
        dialog.press(IDOK);
    });
    expectStored(0x7E0);
    EXPECT_EQ(kindOf(zip), -5);
    EXPECT_FALSE(open(zip));
    EXPECT_FALSE(canCreate());
    release();
    expectStored(0x7E0);
    create();
    EXPECT_EQ(kindOf(zip), -5);
    configure([](const ConfigControls& dialog) {
        EXPECT_EQ(dialog.checked(), "0000111111");
        EXPECT_EQ(dialog.enabled(), "1111111111");
        dialog.click(IDC_CHK_UNPACKER);
        dialog.click(IDC_CHK_PACKER_CAB);
        dialog.press(IDOK);
    });
    expectStored(0x7F4);
    EXPECT_EQ(kindOf(zip), 16);
    const PackDialogUser user([](HWND dialog) {
        EXPECT_EQ(PackControls{dialog}.items(IDC_CMB_PACKER), std::vector<std::wstring>{L"Cab"});
        PackControls{dialog}.press(IDCANCEL);
    });
    EXPECT_FALSE(createArchive());
    EXPECT_EQ(user.times(), 1);
}

TEST_F(Configuration, LeavesEverythingAsItWasWhenCancelled) {
    KeptAllowMask::write(hive::kCurrentUser, 0x210);
    libraries.bundled();
    create();
    for (const int answer : {0, 1}) {
        configure([&](const ConfigControls& dialog) {
            EXPECT_EQ(dialog.checked(), "0001000010");
            dialog.click(IDC_CHK_UNPACKER);
            dialog.click(IDC_CHK_UNPACKER_TAR);
            if (answer == 0) dialog.press(IDCANCEL);
            if (answer == 1) ::PostMessageW(dialog.dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
        });
        EXPECT_EQ(KeptAllowMask::read(hive::kCurrentUser), 0x210U);
        EXPECT_EQ(KeptAllowMask::read(hive::kLocalMachine), std::nullopt);
        EXPECT_EQ(kindOf(writeFile(folder, L"small.zip", kSmallZip)), 16);
    }
}

TEST_F(Configuration, TellsWhereTheLibrariesLie) {
    libraries.bundled();
    writeFile(folder, L"x", "");
    std::ofstream(libraries.place(L"UnRar32.dll")) << "no library";
    create();
    const std::wstring beside = recording::programFolder().native() + L"\\";
    configure([&](const ConfigControls& dialog) {
        const HWND list = dialog.item(IDC_LST_LIBRARIES);
        EXPECT_FALSE(::IsWindowVisible(list));
        EXPECT_FALSE(::IsWindowEnabled(list)) << "what is folded away takes no keys";
        const RECT folded = placeOf(dialog.dialog);
        dialog.click(IDC_CMD_DETAILS);
        EXPECT_TRUE(::IsWindowVisible(list));
        EXPECT_TRUE(::IsWindowEnabled(list));
        EXPECT_EQ(dialog.text(IDC_CMD_DETAILS), L"&Details <<");
        const RECT unfolded = placeOf(dialog.dialog);
        EXPECT_GT(unfolded.bottom - unfolded.top, folded.bottom - folded.top);
        EXPECT_LE(placeOf(list).bottom, unfolded.bottom);
        Texts rows;
        for (int row = 0; row < static_cast<int>(::SendMessageW(list, LVM_GETITEMCOUNT, 0, 0)); ++row) {
            rows.push_back(listText(list, row, 0) + L"|" + listText(list, row, 1) + L"|" + listText(list, row, 2));
        }
        ASSERT_EQ(rows.size(), 8U);
        for (std::size_t row = 0; row < 8; ++row) EXPECT_TRUE(rows[row].starts_with(kLibraries[row])) << row;
        EXPECT_EQ(rows[1], L"UnLha32.dll|not installed|");
        EXPECT_TRUE(rows[3].ends_with(L"|" + beside + L"UnZip32.dll")) << testing::PrintToString(rows[3]);
        EXPECT_EQ(rows[4], L"UnRar32.dll|cannot be used|" + beside + L"UnRar32.dll");
        EXPECT_EQ(dialog.hint(3), beside + L"UnZip32.dll");
        EXPECT_EQ(dialog.hint(5), L"UnArj32j.dll is not installed.") << "of a disabled box too";
        EXPECT_TRUE(dialog.hint(4).starts_with(beside + L"UnRar32.dll\r\nIt cannot be used"));
        dialog.click(IDC_CMD_DETAILS);
        EXPECT_FALSE(::IsWindowVisible(list));
        EXPECT_EQ(dialog.text(IDC_CMD_DETAILS), L"&Details >>");
        EXPECT_EQ(placeOf(dialog.dialog).bottom - placeOf(dialog.dialog).top, folded.bottom - folded.top);
        dialog.press(IDCANCEL);
    });
}

TEST_F(Configuration, ShowsLongPathsWhole) {
    const std::wstring deep = folder / (std::wstring(110, L'n') + L"\\" + std::wstring(60, L'm'));
    recording::Session::install(deep, L"UnRar32.dll", recording::Texts::Utf8);
    const PathVariable path(deep);
    create();
    configure([&](const ConfigControls& dialog) {
        dialog.click(IDC_CMD_DETAILS);
        const HWND list = dialog.item(IDC_LST_LIBRARIES);
        EXPECT_EQ(listText(list, 4, 2), deep + L"\\UnRar32.dll");
        const LRESULT width = ::SendMessageW(list, LVM_GETCOLUMNWIDTH, 2, 0);
        EXPECT_GE(width, ::SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(deep.c_str())));
        EXPECT_NE(::GetWindowLongPtrW(list, GWL_STYLE) & WS_HSCROLL, 0);
        EXPECT_EQ(dialog.hint(4), deep + L"\\UnRar32.dll");
        dialog.press(IDCANCEL);
    });
}

TEST_F(Configuration, IsShownOverTheWindowThatIsActive) {
    create();
    ::SetForegroundWindow(host.window());
    ASSERT_TRUE(waitUntil([this] { return ::GetActiveWindow() == host.window(); }));
    configure([&](const ConfigControls& dialog) {
        EXPECT_EQ(::GetWindow(dialog.dialog, GW_OWNER), host.window());
        EXPECT_FALSE(::IsWindowEnabled(host.window()));
        const RECT own = placeOf(dialog.dialog), over = placeOf(host.window());
        EXPECT_LE(std::abs((own.left + own.right) - (over.left + over.right)), 2);
        EXPECT_LE(std::abs((own.top + own.bottom) - (over.top + over.bottom)), 2);
        dialog.press(IDCANCEL);
    });
}

TEST_F(Configuration, FindsAnOwnerWithoutAnActiveWindow) {
    create();
    ::SetActiveWindow(nullptr);
    configure([&](const ConfigControls& dialog) {
        EXPECT_EQ(::GetWindow(dialog.dialog, GW_OWNER), host.window());
        dialog.press(IDCANCEL);
    });
    host.destroy();
    const ConfigDialogUser user([](HWND dialog) { ConfigControls{dialog}.press(IDCANCEL); });
    EXPECT_EQ(object->Configure(), S_OK);
    EXPECT_EQ(user.times(), 1) << "there is nothing that it could belong to";
}

TEST_F(Configuration, TakesTheHostsFont) {
    create();
    Value nothing;
    EXPECT_EQ(object->SetFont(makeBstr(L"Courier New").get(), 0, nothing.get()), S_OK);
    configure([](const ConfigControls& dialog) {
        for (const int id : {IDOK, IDC_CHK_PACKER, IDC_GRP_USE_UNPACKER, IDC_LST_LIBRARIES}) {
            LOGFONTW font{};
            const auto handle = reinterpret_cast<HGDIOBJ>(::SendMessageW(dialog.item(id), WM_GETFONT, 0, 0));
            ::GetObjectW(handle, sizeof font, &font);
            EXPECT_STREQ(font.lfFaceName, L"Courier New") << id;
        }
        dialog.press(IDCANCEL);
    });
}

TEST_F(Configuration, IsThereOnce) {
    libraries.bundled();
    create();
    const ComOwner<ITovar> second = createObject();
    configure([&](const ConfigControls& dialog) {
        ::SetActiveWindow(nullptr);
        EXPECT_EQ(object->Configure(), S_OK);
        EXPECT_EQ(second->Configure(), S_OK);
        EXPECT_EQ(::GetForegroundWindow(), dialog.dialog);
        EXPECT_FALSE(createArchive()) << "what can be created may change";
        EXPECT_TRUE(::IsWindow(dialog.dialog));
        dialog.press(IDCANCEL);
    });
}

TEST_F(Configuration, WaitsForTheEndOfThePackDialog) {
    libraries.recorded(L"InfoZip32.dll");
    create();
    const ConfigDialogUser none([](HWND dialog) { ConfigControls{dialog}.press(IDCANCEL); });
    const PackDialogUser user([&](HWND dialog) {
        EXPECT_EQ(object->Configure(), S_OK);
        EXPECT_EQ(::GetForegroundWindow(), dialog);
        PackControls{dialog}.press(IDCANCEL);
    });
    EXPECT_FALSE(createArchive());
    EXPECT_EQ(user.times(), 1);
    EXPECT_EQ(none.times(), 0);
}

TEST_F(Configuration, IsShownWhileAnArchiveIs) {
    libraries.bundled();
    create();
    const std::wstring small = writeFile(folder, L"small.zip", kSmallZip);
    ASSERT_TRUE(open(small));
    configure([](const ConfigControls& dialog) {
        dialog.click(IDC_CHK_UNPACKER);
        dialog.press(IDOK);
    });
    EXPECT_TRUE(browser().isVisible());
    EXPECT_EQ(browser().rowCount(), 2) << "what is shown stays";
    browser().close();
    EXPECT_FALSE(open(small)) << "what comes then obeys";
}

TEST_F(Configuration, IsCancelledWhenItsHostGoes) {
    libraries.bundled();
    create();
    ::SetForegroundWindow(host.window());
    ASSERT_TRUE(waitUntil([this] { return ::GetActiveWindow() == host.window(); }));
    const ConfigDialogUser user([&](HWND dialog) {
        ConfigControls{dialog}.click(IDC_CHK_UNPACKER);
        host.destroy();
        EXPECT_FALSE(::IsWindow(dialog));
    });
    EXPECT_EQ(object->Configure(), S_OK);
    EXPECT_EQ(user.times(), 1);
    expectStored(std::nullopt);
    EXPECT_EQ(kindOf(writeFile(folder, L"small.zip", kSmallZip)), 16);
}

TEST_F(Configuration, IsCancelledWhenAnotherObjectGoes) {
    libraries.bundled();
    create();
    ComOwner<ITovar> second = createObject();
    configure([&](const ConfigControls& dialog) {
        dialog.click(IDC_CHK_UNPACKER);
        second.reset();
    });
    EXPECT_EQ(KeptAllowMask::read(hive::kCurrentUser), 0xFFFFFFFFU) << "saved as it was by the object that went";
    EXPECT_EQ(kindOf(writeFile(folder, L"small.zip", kSmallZip)), 16);
}

TEST_F(Configuration, IsCancelledWhenItsOwnObjectGoes) {
    libraries.bundled();
    create();
    const ConfigDialogUser user([&](HWND dialog) {
        ConfigControls{dialog}.click(IDC_CHK_UNPACKER);
        object.reset();
    });
    ITovar* const early = object.get();
    EXPECT_EQ(early->Configure(), S_OK);
    EXPECT_TRUE(user.done());
    expectStored(0xFFFFFFFF);
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
    create();
    IDispatch* const late = object.get();
    DISPPARAMS none{};
    EXPECT_EQ(late->Invoke(3, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(user.times(), 2);
    EXPECT_TRUE(user.done());
    expectStored(0xFFFFFFFF);
}

TEST_F(Configuration, LosesNothing) {
    libraries.bundled();
    create();
    const auto once = [this] {
        configure([](const ConfigControls& dialog) {
            dialog.click(IDC_CMD_DETAILS);
            dialog.press(IDOK);
        });
    };
    for (int time = 0; time < 3; ++time) once();
    const ResourceMarks before = resourceMarks();
    for (int time = 0; time < 10; ++time) once();
    const ResourceMarks after = resourceMarks();
    EXPECT_LE(after.gdiHandles, before.gdiHandles + 4);
    EXPECT_LE(after.kernelHandles, before.kernelHandles + 4);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_EQ(after.menus, before.menus);
    EXPECT_EQ(after.icons, before.icons);
    EXPECT_EQ(after.threadSlots, before.threadSlots);
}

}  // namespace
}  // namespace tovar::test
