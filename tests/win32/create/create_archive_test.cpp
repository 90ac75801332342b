// Archives created as a host has it done: by the component, with the real dialog.

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <utility>

#include "browser/win32/work_dialog_controls.h"
#include "win32/create/pack_controls.h"
#include "win32/system/support/system_fixture.h"
#include "win32/system/support/waiting.h"

namespace tovar::test {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

/// Presses Cancel in the progress dialog once the library has told of a file. One at a time.
class CancelOnceBusy {
public:
    explicit CancelOnceBusy(const recording::Session& session) : session_(session) {
        current() = this;
        timer_ = ::SetTimer(nullptr, 0, 10, &onTimer);
    }
    ~CancelOnceBusy() {
        ::KillTimer(nullptr, timer_);
        current() = nullptr;
    }
    CancelOnceBusy(const CancelOnceBusy&) = delete;
    CancelOnceBusy& operator=(const CancelOnceBusy&) = delete;

    [[nodiscard]] const std::wstring& shownAtFirst() const { return shownAtFirst_; }

private:
    static CancelOnceBusy*& current() {
        static CancelOnceBusy* user = nullptr;
        return user;
    }
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        ::EnumThreadWindows(::GetCurrentThreadId(), &onWindow, 0);
    }
    static BOOL CALLBACK onWindow(HWND window, LPARAM) {
        if (::GetDlgItem(window, IDC_PBAR1) == nullptr || !::IsWindowVisible(window)) return TRUE;
        CancelOnceBusy& self = *current();
        if (self.shownAtFirst_.empty()) self.shownAtFirst_ = textOf(::GetDlgItem(window, IDC_LBL_FILE));
        const Lines log = self.session_.log();
        if (std::ranges::find(log, "ZpService 0") != log.end()) {
            ::PostMessageW(window, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
        }
        return FALSE;
    }

    const recording::Session& session_;
    std::wstring shownAtFirst_;
    UINT_PTR timer_ = 0;
};

class CreateByDialog : public SystemFixture {
protected:
    CreateByDialog() {
        fs::create_directories(base / "sub" / "deep");
        std::ofstream(base / "a.txt", std::ios::binary) << std::string(5000, 'a');
        std::ofstream(base / "sub" / "b.txt", std::ios::binary) << "some text";
        std::ofstream(base / "sub" / "deep" / "c.bin", std::ios::binary) << std::string(70000, '\1');
    }

    /// @param use  ends by pressing Ok or Cancel
    void createArchive(const std::wstring& name, const std::wstring& list,
                       const std::function<void(const PackControls&)>& use) {
        const PackDialogUser user([&](HWND dialog) {
            EXPECT_TRUE(busy());
            use({dialog});
        });
        VARIANT_BOOL result = VARIANT_TRUE;
        const std::wstring file = (base.parent_path() / "out" / name).native();
        EXPECT_EQ(object->CreateArchive(makeBstr(file).get(), makeBstr(base.native()).get(), makeBstr(list).get(),
                                        &host.object, &result),
                  S_OK);
        EXPECT_EQ(result, VARIANT_FALSE);
        EXPECT_EQ(user.times(), 1);
        EXPECT_FALSE(busy());
        EXPECT_TRUE(::IsWindowEnabled(host.window()));
        EXPECT_EQ(progressWindows(), 0);
    }
    static int progressWindows() {
        int count = 0;
        for (HWND window = nullptr; (window = ::FindWindowExW(nullptr, window, L"#32770", nullptr)) != nullptr;) {
            if (::GetWindowThreadProcessId(window, nullptr) == ::GetCurrentThreadId()) ++count;
        }
        return count;
    }
    [[nodiscard]] fs::path made(const wchar_t* name) const { return base.parent_path() / "out" / name; }
    static std::string logged(const fs::path& path) {
        std::string written;
        for (const wchar_t each : path.native()) {
            written += each == L'\\' ? std::string("\\x5C") : std::string(1, static_cast<char>(each));
        }
        return written;
    }
    /// Leaves a copy where other programs can read it, if somebody has named a folder for that.
    static void keep(const fs::path& file) {
        const wchar_t* const folderToKeep = ::_wgetenv(L"TOVAREX_KEEP_ARCHIVES");
        if (folderToKeep == nullptr) return;
        fs::copy_file(file, fs::path(folderToKeep) / file.filename(), fs::copy_options::overwrite_existing);
    }
    /// The one line of the log that begins so.
    std::string lineOf(const std::string& start) {
        std::string found;
        for (const std::string& line : session.log()) {
            if (line.starts_with(start)) found += line;
        }
        return found;
    }

    const recording::Session session;
    const fs::path base = fs::path(folder.path()) / "base";
};

TEST_F(CreateByDialog, HandsNamesToTheZipLibrary) {
    libraries.recorded(L"InfoZip32.dll");
    session.script("zip message adding: a.txt\\n\nzip service a.txt\n");
    create();
    createArchive(L"new.zip", L"a.txt\r\nsub\r\n", [](const PackControls& dialog) {
        EXPECT_EQ(dialog.items(IDC_CMB_PACKER), (Texts{L"Zip"}));
        EXPECT_TRUE(dialog.isChecked(IDC_CHK_ARC)) << "a folder is among the names";
        dialog.press(IDOK);
    });
    EXPECT_EQ(lineOf("ZpArchive "), "ZpArchive 3 \"" + logged(made(L"new.zip")) + R"(" "a.txt" "a.txt" "sub\x5C*.*")");
    EXPECT_EQ(lineOf("ZpService "), "ZpService 0");
    EXPECT_TRUE(fs::is_directory(made(L""))) << "the archive's folder is made";
    EXPECT_TRUE(boxes.seen.empty());
}

TEST_F(CreateByDialog, TellsWhatTheZipLibraryAnswers) {
    libraries.recorded(L"InfoZip32.dll");
    session.script("code 18\n");
    create();
    createArchive(L"new.zip", L"a.txt", [](const PackControls& dialog) { dialog.press(IDOK); });
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].title, L"Compression Error");
    EXPECT_EQ(boxes.seen[0].text, L"Could Not Open A Specified File To Read Error");
    EXPECT_TRUE(boxes.seen[0].exclamation);
}

TEST_F(CreateByDialog, CancelRunsNothing) {
    libraries.recorded(L"InfoZip32.dll");
    create();
    createArchive(L"new.zip", L"a.txt", [](const PackControls& dialog) { dialog.press(IDCANCEL); });
    EXPECT_EQ(session.log(), Lines{});
    EXPECT_FALSE(fs::exists(made(L"")));
}

TEST_F(CreateByDialog, HandsALineToTheLzhLibrary) {
    libraries.recorded(L"UnLha32.dll");
    session.script("lists 1\n");
    create();
    session.clearLog();
    createArchive(L"new.zip", L"a.txt\r\nsub\r\ngone.txt", [](const PackControls& dialog) {
        EXPECT_EQ(dialog.items(IDC_CMB_PACKER), (Texts{L"Lha"}));
        EXPECT_TRUE(dialog.text(IDC_TXT_ARC_FILE).ends_with(L"\\new.lzh"));
        dialog.press(IDOK);
    });
    const std::string line = lineOf("Unlha 0x");
    EXPECT_NE(line.find(" \"a -r2 -x1  " + logged(made(L"new.lzh")) + ' ' + logged(base) + R"(\x5C @)"),
              std::string::npos)
        << line;
    EXPECT_NE(line.find("VTL"), std::string::npos) << line;
    EXPECT_NE(lineOf("UnlhaList ").find(R"("a.txt\x0D\x0Asub\x0D\x0A")"), std::string::npos) << lineOf("UnlhaList ");
}

TEST_F(CreateByDialog, HandsALineToTheCabLibrary) {
    libraries.recorded(L"Cab32.dll");
    session.script("lists 1\ncode 0x8011\n");
    create();
    session.clearLog();
    createArchive(L"new.cab", L"a.txt\r\nsub", [](const PackControls& dialog) {
        EXPECT_EQ(dialog.items(IDC_CMB_PACKER), (Texts{L"Cab"}));
        dialog.press(IDOK);
    });
    const std::string line = lineOf("Cab 0x");
    EXPECT_NE(line.find(" \"-a -mz -k -r  " + logged(made(L"new.cab")) + ' ' + logged(base) + R"(\x5C @)"),
              std::string::npos)
        << line;
    EXPECT_NE(lineOf("CabList ").find(R"("a.txt\x0D\x0Asub\x5C\x0D\x0A")"), std::string::npos) << lineOf("CabList ");
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].title, L"CAB Message");
}

TEST_F(CreateByDialog, AsksForThePasswordAsOftenAsTheLibrary) {
    libraries.recorded(L"InfoZip32.dll");
    session.script("zip password 64 Enter password: \nzip password 64 Verify password: \n");
    create();
    Texts labels;
    const DialogUser<IDC_TXT_PASSWORD> typist([&](HWND dialog) {
        labels.push_back(textOf(::GetDlgItem(dialog, IDC_LBL_ARCHIVE)));
        ::SetDlgItemTextW(dialog, IDC_TXT_PASSWORD, L"secret");
        ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    });
    createArchive(L"new.zip", L"a.txt", [](const PackControls& dialog) {
        dialog.setCheck(IDC_CHK_ARC_PASSWORD, true);
        dialog.press(IDOK);
    });
    EXPECT_EQ(labels, (Texts{L"Enter password: some.zip", L"Verify password: some.zip"}));
    EXPECT_EQ(lineOf("ZpPassword "), R"(ZpPassword 0 "secret"ZpPassword 0 "secret")");
}

TEST_F(CreateByDialog, StopsTheLibraryByTheProgressDialog) {
    libraries.recorded(L"InfoZip32.dll");
    std::string script = "code 9\n";
    for (int each = 0; each < 5000; ++each) script += "zip service a.txt\n";
    session.script(script);
    create();
    const CancelOnceBusy user(session);
    createArchive(L"new.zip", L"a.txt", [](const PackControls& dialog) { dialog.press(IDOK); });
    EXPECT_EQ(user.shownAtFirst(), L"Preprocessing ... Wait a second!");
    const Lines log = session.log();
    ASSERT_GE(log.size(), 2U);
    EXPECT_EQ(log[log.size() - 2], "ZpService 1");
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, L"User Interrupted Or Abnormal Termination");
    EXPECT_EQ(boxes.seen[0].title, L"Compression Error");
}

std::string bytesOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// The flags in front of a member: those of the local header with its name; none without one.
std::optional<unsigned> flagsOf(const std::string& bytes, const std::string& name) {
    static constexpr std::size_t kNameAt = 30, kFlagsAt = 6;
    for (std::size_t at = bytes.find(name); at != bytes.npos; at = bytes.find(name, at + 1)) {
        if (at < kNameAt || bytes.compare(at - kNameAt, 4, "PK\3\4") != 0) continue;
        const auto byteAt = [&](std::size_t offset) {
            return static_cast<unsigned>(static_cast<unsigned char>(bytes[at - kNameAt + offset]));
        };
        return byteAt(kFlagsAt) | byteAt(kFlagsAt + 1) << 8U;
    }
    return std::nullopt;
}

// Whatever the process's code page: 932 has the first name, its second byte that of a backslash, and not the others.
TEST_F(CreateByDialog, KeepsNamesThatNoCodePageHolds) {
    const std::pair<const wchar_t*, const char*> names[] = {{L"\u8868\u30BD.txt", "\xE8\xA1\xA8\xE3\x82\xBD.txt"},
                                                            {L"\u00E9t\u00E9.txt", "\xC3\xA9t\xC3\xA9.txt"},
                                                            {L"\u0416.txt", "\xD0\x96.txt"},
                                                            {L"\U0001F600.txt", "\xF0\x9F\x98\x80.txt"}};
    std::wstring list;
    for (const auto& [name, stored] : names) {
        std::ofstream(base / name, std::ios::binary) << "text of " << stored;
        list.append(name).append(L"\r\n");
    }
    libraries.bundled(L"InfoZip32.dll");
    libraries.bundled(L"UnZip32.dll");
    create();
    createArchive(L"new.zip", list, [](const PackControls& dialog) { dialog.press(IDOK); });
    EXPECT_TRUE(boxes.seen.empty()) << (boxes.seen.empty() ? "" : testing::PrintToString(boxes.seen[0].text));
    const std::string bytes = bytesOf(made(L"new.zip"));
    static constexpr unsigned kUtf8 = 0x800;
    for (const auto& [name, stored] : names) EXPECT_EQ(flagsOf(bytes, stored).value_or(0) & kUtf8, kUtf8) << stored;
    ASSERT_TRUE(open(made(L"new.zip").native()));
    EXPECT_EQ(browser().rowCount(), 4);
}

// Other programs unpack it with this password, and with no other one: the script that checks archives has them do it.
TEST_F(CreateByDialog, EncryptsForReal) {
    libraries.bundled(L"InfoZip32.dll");
    create();
    const DialogUser<IDC_TXT_PASSWORD> typist([](HWND dialog) {
        ::SetDlgItemTextW(dialog, IDC_TXT_PASSWORD, L"secret");
        ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    });
    createArchive(L"new.locked.zip", L"a.txt\r\nsub", [](const PackControls& dialog) {
        dialog.setCheck(IDC_CHK_ARC_PASSWORD, true);
        dialog.press(IDOK);
    });
    EXPECT_TRUE(boxes.seen.empty()) << (boxes.seen.empty() ? "" : testing::PrintToString(boxes.seen[0].text));
    EXPECT_EQ(typist.times(), 2) << "entered and verified";
    const std::string bytes = bytesOf(made(L"new.locked.zip"));
    for (const char* const name : {"a.txt", "sub/b.txt", "sub/deep/c.bin"}) {
        EXPECT_EQ(flagsOf(bytes, name).value_or(0) & 1U, 1U) << name;
    }
    EXPECT_EQ(bytes.find("some text"), bytes.npos);
    if (fs::exists(made(L"new.locked.zip"))) keep(made(L"new.locked.zip"));
}

struct RealCase {
    const char* name;
    const wchar_t* library;
    const wchar_t* reader;
    const wchar_t* archive;
};
class CreateForReal : public CreateByDialog, public testing::WithParamInterface<RealCase> {};
TEST_P(CreateForReal, MakesAnArchiveThatOpens) {
    libraries.bundled(GetParam().library);
    if (std::wstring_view(GetParam().reader) != GetParam().library) libraries.bundled(GetParam().reader);
    create();
    createArchive(GetParam().archive, L"a.txt\r\nsub", [](const PackControls& dialog) { dialog.press(IDOK); });
    EXPECT_TRUE(boxes.seen.empty()) << (boxes.seen.empty() ? "" : testing::PrintToString(boxes.seen[0].text));
    const fs::path file = made(GetParam().archive);
    ASSERT_TRUE(fs::exists(file));
    EXPECT_LT(fs::file_size(file), 5000U) << "what was packed is 75,009 bytes of little sense";
    ASSERT_TRUE(open(file.native()));
    EXPECT_EQ(browser().rowCount(), 2) << "a file and a folder";
    EXPECT_TRUE(boxes.seen.empty());
    keep(file);
}
INSTANTIATE_TEST_SUITE_P(Kinds, CreateForReal,
                         testing::Values(RealCase{"Zip", L"InfoZip32.dll", L"UnZip32.dll", L"new.zip"},
                                         RealCase{"Lzh", L"UnLha32.dll", L"UnLha32.dll", L"new.lzh"},
                                         RealCase{"Cab", L"Cab32.dll", L"Cab32.dll", L"new.cab"}),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace tovar::test
