// Files dropped on the real browser and pasted into it, from this process and from another one.

#include <ole2.h>

#include "browser/win32/browser_controls.h"
#include "win32/create/change_fixture.h"
#include "win32/create/drag_source.h"
#include "win32/create/other_program.h"

namespace tovar::test {
namespace {

constexpr int kDropped = 16;  ///< of the other program's exit code

/// OLE as a host has it that lets files be dragged.
struct HostsOle {
    HostsOle() { EXPECT_TRUE(SUCCEEDED(::OleInitialize(nullptr))); }
    ~HostsOle() { ::OleUninitialize(); }
    HostsOle(const HostsOle&) = delete;
    HostsOle& operator=(const HostsOle&) = delete;
};

class DropFiles : public ChangeFixture {
protected:
    /// A place in a part of the browser that belongs to no row.
    [[nodiscard]] static POINT placeIn(HWND pane) {
        RECT area{};
        ::GetWindowRect(pane, &area);
        const POINT place{(area.left + area.right) / 2, area.bottom - 12};
        EXPECT_EQ(::WindowFromPoint(place), pane);
        return place;
    }
    [[nodiscard]] static OneFormat files(const std::vector<std::wstring>& paths, NameForm form = NameForm::Wide) {
        return {CF_HDROP, fileListBlock(paths, form)};
    }
    static std::wstring quoted(const std::wstring& path) { return L" \"" + path + L"\""; }
    static std::wstring dragWords(POINT to, DWORD allowed, const wchar_t* form) {
        return L"drag " + std::to_wstring(to.x) + L" " + std::to_wstring(to.y) + L" " + std::to_wstring(allowed) +
               L" " + form;
    }
    [[nodiscard]] bool acceptsOlderMessage() const {
        return (::GetWindowLongPtrW(browser().window(), GWL_EXSTYLE) & WS_EX_ACCEPTFILES) != 0;
    }
    void sendOlderMessage(const std::vector<std::wstring>& paths, NameForm form) const {
        const HGLOBAL memory = globalOf(fileListBlock(paths, form));
        ::SendMessageW(browser().window(), WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
    }
    /// Whether the browser has no question when its messages have run, and will not have one.
    [[nodiscard]] bool asksNothing() const {
        const DialogUser<IDC_LBL_QUESTION> user([](HWND dialog) { ::PostMessageW(dialog, WM_CLOSE, 0, 0); });
        runMessages();
        const bool isToAdd = ::KillTimer(browser().window(), tmrOLE) != FALSE;
        return user.times() == 0 && !isToAdd;
    }
};

TEST_F(DropFiles, OfTheHostsProcess) {
    const HostsOle ole;
    showZip();
    browser().openRow(rowOf(L"docs"));
    const std::wstring address = browser().address();
    const std::vector<std::wstring> paths{write(L"new, one.txt", "1"), (base() / L"sub").native()};
    write(L"sub\\deep\\two.txt", "2");
    OneFormat data = files(paths);
    Dragged dragged;
    const std::wstring question = answering(IDYES, [&] {
        dragged = MouseDrag::run(data, DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK, placeIn(browser().list()));
    });
    EXPECT_EQ(dragged.result, DRAGDROP_S_DROP);
    EXPECT_EQ(dragged.effect, static_cast<DWORD>(DROPEFFECT_COPY)) << "the source must not delete them";
    EXPECT_EQ(question, L"Compress 2 files and folders ?");
    EXPECT_EQ(sortedNames(), (Texts{L"again.txt", L"empty.txt", L"new, one.txt", L"old notes", L"sub"}));
    EXPECT_EQ(browser().address(), address) << "the same folder is shown";
    EXPECT_EQ(contentOf(paths[0]), "1") << "copied, not moved";
    keep(L"dropped.zip");
}

TEST_F(DropFiles, OfAnotherProcess) {
    showLzh();
    const std::wstring at = write(L"@at.txt", "at"), minus = write(L"-minus.txt", "minus"),
                       comma = write(L"blank and, comma.txt", "comma");
    write(L"sub\\deep\\two.txt", "2");
    const std::wstring sub = (base() / L"sub").native();
    int code = 0;
    const std::wstring question = answering(IDYES, [&] {
        const std::wstring words = dragWords(placeIn(browser().tree()), DROPEFFECT_COPY | DROPEFFECT_MOVE, L"wide");
        code = OtherProgram::run(words + quoted(at) + quoted(minus) + quoted(comma) + quoted(sub));
    });
    EXPECT_EQ(code, kDropped + DROPEFFECT_COPY);
    EXPECT_EQ(question, L"Compress 4 files and folders ?");
    EXPECT_EQ(sortedNames(), (Texts{L"-minus.txt", L"@at.txt", L"blank and, comma.txt", L"sub", L"subdir"}));
    keep(L"dropped.lzh");

    for (const wchar_t* const name : {L"@at.txt", L"-minus.txt", L"blank and, comma.txt", L"sub"}) remove(name);
    EXPECT_EQ(sortedNames(), Texts{L"subdir"});
    keep(L"deleted.lzh");
}

TEST_F(DropFiles, WithOtherDataIsRefused) {
    showZip();
    const POINT place = placeIn(browser().list());
    EXPECT_EQ(OtherProgram::run(dragWords(place, DROPEFFECT_COPY, L"text")) % kDropped, 0) << "no files";
    const std::wstring file = write(L"new.txt", "1");
    EXPECT_EQ(OtherProgram::run(dragWords(place, DROPEFFECT_MOVE, L"wide") + quoted(file)) % kDropped, 0)
        << "moved alone";
    EXPECT_TRUE(asksNothing());
}

TEST_F(DropFiles, ByTheOlderMessage) {
    showZip();
    EXPECT_TRUE(acceptsOlderMessage());
    const std::wstring file = write(L"older.txt", "1");
    EXPECT_EQ(answering(IDYES, [&] { sendOlderMessage({file}, NameForm::Ansi); }), L"Compress 1 files and folders ?");
    EXPECT_EQ(sortedNames(), (Texts{L"docs", L"empty folder", L"older.txt", L"readme.txt"}));
    EXPECT_EQ(answering(IDCANCEL,
                        [&] {
                            sendOlderMessage({file, archive}, NameForm::Wide);
                        }),
              L"Compress 1 files and folders ?");
}

TEST_F(DropFiles, ByTheOlderMessageWithMemoryOfAnotherProcessAreNone) {
    showZip();
    const auto window = reinterpret_cast<std::uintptr_t>(browser().window());
    EXPECT_EQ(OtherProgram::run(L"message " + std::to_wstring(window) + quoted(write(L"a.txt", "1"))), 0);
    sendOlderMessage({}, NameForm::Wide);
    EXPECT_TRUE(asksNothing());
    EXPECT_TRUE(browser().isThere());
}

TEST_F(DropFiles, IsRefusedWhileAQuestionIsOpen) {
    showZip();
    const std::wstring file = write(L"new.txt", "1");
    bool accepted = true;
    int questions = 0;
    {
        const DialogUser<IDC_LBL_QUESTION> user([&](HWND dialog) {
            ++questions;
            accepted = acceptsOlderMessage();
            sendOlderMessage({file}, NameForm::Wide);
            ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
        });
        sendOlderMessage({file}, NameForm::Wide);
        EXPECT_TRUE(waitUntil([&] { return user.done(); }));
    }
    EXPECT_FALSE(accepted);
    EXPECT_TRUE(asksNothing());
    EXPECT_EQ(questions, 1);
    EXPECT_TRUE(acceptsOlderMessage());
}

TEST_F(DropFiles, OfTheArchiveItselfIsTold) {
    showZip();
    const std::string before = contentOf(archive);
    sendOlderMessage({archive}, NameForm::Wide);
    EXPECT_TRUE(waitUntil([&] { return boxes.seen.size() == 1; }));
    EXPECT_EQ(boxes.seen.at(0).text, L"An archive cannot be added to itself.");
    boxes.seen.clear();
    EXPECT_EQ(contentOf(archive), before);
}

TEST_F(DropFiles, ThatVanishBeforeTheAnswerAreTold) {
    showZip();
    const std::string before = contentOf(archive);
    const std::wstring file = write(L"short-lived.txt", "1");
    {
        const DialogUser<IDC_LBL_QUESTION> user([&](HWND dialog) {
            std::filesystem::remove(file);
            ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDYES, BN_CLICKED), 0);
        });
        sendOlderMessage({file}, NameForm::Wide);
        EXPECT_TRUE(waitUntil([&] { return user.done(); }));
    }
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, L"\"" + file + L"\" is not there any more. Nothing was added.");
    boxes.seen.clear();
    EXPECT_EQ(contentOf(archive), before);
}

class PasteFiles : public DropFiles {
protected:
    ~PasteFiles() override {
        if (::OpenClipboard(nullptr)) {
            ::EmptyClipboard();
            ::CloseClipboard();
        }
    }
    static void put(const wchar_t* form, const std::wstring& paths) {
        EXPECT_EQ(OtherProgram::run(std::wstring(L"clipboard ") + form + paths), 0);
    }
};

TEST_F(PasteFiles, OfAnotherProcess) {
    showZip();
    put(L"wide", quoted(write(L"@w, ide.txt", "1")) + quoted(write(L"-second.txt", "2")));
    EXPECT_EQ(change(kPaste, IDYES), L"Compress 2 files and folders ?");
    EXPECT_EQ(sortedNames(), (Texts{L"-second.txt", L"@w, ide.txt", L"docs", L"empty folder", L"readme.txt"}));
    put(L"ansi", quoted(write(L"ansi.txt", "3")));
    EXPECT_EQ(change(kPaste, IDYES), L"Compress 1 files and folders ?");
    EXPECT_EQ(sortedNames(),
              (Texts{L"-second.txt", L"@w, ide.txt", L"ansi.txt", L"docs", L"empty folder", L"readme.txt"}));
    keep(L"pasted.zip");
    remove(L"@w, ide.txt");
    remove(L"-second.txt");
    EXPECT_EQ(sortedNames(), (Texts{L"ansi.txt", L"docs", L"empty folder", L"readme.txt"}));
}

TEST_F(PasteFiles, OfAClipboardWithoutFilesDoesNothing) {
    showZip();
    put(L"text", L"");
    command(kPaste);
    EXPECT_TRUE(asksNothing()) << "a text";
    put(L"wide", L"");
    command(kPaste);
    EXPECT_TRUE(asksNothing()) << "a list of no names";
}

TEST_F(PasteFiles, OfAClipboardThatAnotherProgramHoldsDoesNothing) {
    showZip();
    put(L"wide", quoted(write(L"a.txt", "1")));
    const UniqueHandle held(::CreateEventW(nullptr, TRUE, FALSE, L"TovarExClipboardHeld"));
    const UniqueHandle release(::CreateEventW(nullptr, TRUE, FALSE, L"TovarExClipboardRelease"));
    const OtherProgram holder(L"hold TovarExClipboardHeld TovarExClipboardRelease");
    ASSERT_TRUE(waitUntil([&] { return ::WaitForSingleObject(held.get(), 0) == WAIT_OBJECT_0; }));
    command(kPaste);
    EXPECT_TRUE(asksNothing());
    ::SetEvent(release.get());
    EXPECT_EQ(holder.end(), 0);
    EXPECT_EQ(change(kPaste, IDCANCEL), L"Compress 1 files and folders ?");
}

struct Unchangeable {
    const char* name;
    const wchar_t *data, *library;
};
void PrintTo(const Unchangeable& kind, std::ostream* stream) { *stream << kind.name; }

class UnchangeableKinds : public PasteFiles, public testing::WithParamInterface<Unchangeable> {};

TEST_P(UnchangeableKinds, RefuseWhateverComesIn) {
    const HostsOle ole;
    show(GetParam().data, GetParam().library);
    const std::string before = contentOf(archive);
    const std::wstring file = write(L"new.txt", "1");
    OneFormat data = files({file});
    const Dragged dragged = MouseDrag::run(data, DROPEFFECT_COPY, placeIn(browser().list()));
    EXPECT_EQ(dragged.effect, static_cast<DWORD>(DROPEFFECT_NONE));
    EXPECT_FALSE(acceptsOlderMessage());
    sendOlderMessage({file}, NameForm::Wide);

    ASSERT_TRUE(::OpenClipboard(nullptr));
    ::EmptyClipboard();
    ::SetClipboardData(CF_HDROP, globalOf(fileListBlock({file}, NameForm::Wide)));
    ::CloseClipboard();
    browser().selectRow(0);
    for (const BrowserCommand which : {mnuEditAdd, kAddFolder, kPaste, mnuEditDelete, Add}) command(which);
    EXPECT_TRUE(asksNothing());
    EXPECT_EQ(contentOf(archive), before);
}

INSTANTIATE_TEST_SUITE_P(Kinds, UnchangeableKinds,
                         testing::Values(Unchangeable{"Rar", L"rar\\rar5_stored.rar", L"UnRar32.dll"},
                                         Unchangeable{"Arj", L"arj\\methods.arj", L"UnArj32j.dll"},
                                         Unchangeable{"Cab", L"cab\\mszip_lzx_qtm.cab", L"Cab32.dll"},
                                         Unchangeable{"Tar", L"tar\\ustar.tgz", L"Tar32.dll"},
                                         Unchangeable{"Ace", L"ace\\stored.ace", L"UnAce.dll"}),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace tovar::test
