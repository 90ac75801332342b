#include <gtest/gtest.h>

#include <functional>
#include <optional>

#include "archivers/commands/win32/replace_dialog.h"
#include "archivers/commands/win32/windows_dialogs.h"
#include "win32/commands/host_window.h"

namespace archiver {
namespace {

using testing::HostWindow;
using testing::OnDialog;

using Act = std::function<void(HWND dialog)>;

Act click(WORD button) {
    return [button](HWND dialog) { ::PostMessageW(::GetDlgItem(dialog, button), BM_CLICK, 0, 0); };
}
Act press(WPARAM key) {
    return [key](HWND) { testing::pressKey(key); };
}
/// A letter with the Alt key.
Act letter(wchar_t character) {
    return [character](HWND dialog) { ::PostMessageW(dialog, WM_SYSCHAR, character, 1 << 29); };
}

class QuestionTest : public ::testing::Test {
protected:
    QuestionTest() {
        settings.owner = host.child();
        settings.title = "UnZip32";
        member.name = "a.txt";
        member.originalSize = 2048;
    }
    ~QuestionTest() override { testing::runMessages(); }

    ReplaceAnswer replace(const Act& act, std::filesystem::path file = L"C:\\out\\a.txt") {
        WindowsDialogs dialogs(settings, [] { return ProgressTime{0}; });
        const OnDialog user(act);
        return dialogs.askReplace({std::move(file), 1, std::nullopt, member});
    }
    bool diskSpace(const Act& act) {
        WindowsDialogs dialogs(settings, [] { return ProgressTime{0}; });
        const OnDialog user(act);
        return dialogs.askDiskSpace(5'000'000'000, 1'048'576);
    }

    HostWindow host;
    DialogSettings settings;
    Member member;
};

struct ReplaceCase {
    const char* name;
    Act act;
    ReplaceAnswer expected;
};
class ReplaceQuestionTest : public QuestionTest, public ::testing::WithParamInterface<ReplaceCase> {};

TEST_P(ReplaceQuestionTest, IsAnswered) { EXPECT_EQ(replace(GetParam().act), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(
    Answers, ReplaceQuestionTest,
    ::testing::Values(
        ReplaceCase{"Yes", click(IDYES), ReplaceAnswer::kYes}, ReplaceCase{"No", click(IDNO), ReplaceAnswer::kNo},
        ReplaceCase{"YesToAll", click(ReplaceDialog::kYesToAll), ReplaceAnswer::kAll},
        ReplaceCase{"NoToAll", click(ReplaceDialog::kNoToAll), ReplaceAnswer::kNone},
        ReplaceCase{"Rename", click(ReplaceDialog::kRename), ReplaceAnswer::kNumber},
        ReplaceCase{"Cancel", click(IDCANCEL), ReplaceAnswer::kCancel},
        ReplaceCase{"Esc", press(VK_ESCAPE), ReplaceAnswer::kCancel},
        ReplaceCase{"CloseBox", [](HWND dialog) { ::PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); },
                    ReplaceAnswer::kCancel},
        ReplaceCase{"Return", press(VK_RETURN), ReplaceAnswer::kNo},
        ReplaceCase{"TabAndReturn",
                    [](HWND) {
                        testing::pressKey(VK_TAB);
                        testing::pressKey(VK_RETURN);
                    },
                    ReplaceAnswer::kAll},
        ReplaceCase{"AltY", letter('y'), ReplaceAnswer::kYes}, ReplaceCase{"AltN", letter('n'), ReplaceAnswer::kNo},
        ReplaceCase{"AltA", letter('a'), ReplaceAnswer::kAll}, ReplaceCase{"AltO", letter('o'), ReplaceAnswer::kNone},
        ReplaceCase{"AltR", letter('r'), ReplaceAnswer::kNumber}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(QuestionTest, ReplaceShowsBothFiles) {
    std::vector<std::wstring> texts;
    std::wstring title;
    replace([&](HWND dialog) {
        title = testing::textOf(dialog);
        texts = testing::childTexts(dialog);
        ::EndDialog(dialog, IDCANCEL);
    });
    EXPECT_EQ(title, L"UnZip32");
    EXPECT_EQ(texts,
              (std::vector<std::wstring>{L"", L"Replace the file?", L"C:\\out\\a.txt", L"The file there:",
                                         L"1 byte, unknown", L"In the archive:", L"2,048 bytes (2.00 KB), unknown",
                                         L"Rename keeps both: the new file gets a number.", L"&Yes", L"&No",
                                         L"Yes to &all", L"N&o to all", L"&Rename", L"Cancel"}));
}

TEST_F(QuestionTest, TabGoesThroughTheButtonsInTheirOrder) {
    std::vector<std::wstring> order;
    replace([&](HWND dialog) {
        HWND control = ::GetFocus();
        for (int step = 0; step < 6; ++step) {
            order.push_back(testing::textOf(control));
            control = ::GetNextDlgTabItem(dialog, control, FALSE);
        }
        ::EndDialog(dialog, IDCANCEL);
    });
    EXPECT_EQ(order,
              (std::vector<std::wstring>{L"&No", L"Yes to &all", L"N&o to all", L"&Rename", L"Cancel", L"&Yes"}));
}

TEST_F(QuestionTest, ControlsStandBesideEachOtherInsideTheWindow) {
    replace(
        [&](HWND dialog) {
            RECT area;
            ::GetClientRect(dialog, &area);
            std::vector<RECT> places;
            for (HWND child = ::GetWindow(dialog, GW_CHILD); child != nullptr;
                 child = ::GetWindow(child, GW_HWNDNEXT)) {
                RECT place;
                ::GetWindowRect(child, &place);
                ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
                EXPECT_GE(place.left, 0);
                EXPECT_GE(place.top, 0);
                EXPECT_LE(place.right, area.right);
                EXPECT_LE(place.bottom, area.bottom);
                for (const RECT& other : places) {
                    RECT both;
                    EXPECT_FALSE(::IntersectRect(&both, &place, &other)) << "at " << place.left << ", " << place.top;
                }
                places.push_back(place);
            }
            EXPECT_EQ(places.size(), 14U);
            ::EndDialog(dialog, IDCANCEL);
        },
        L"C:\\" + std::wstring(300, L'x') + L"\\a.txt");
}

TEST_F(QuestionTest, MovesWithAnotherResolutionToTheSuggestedPlace) {
    constexpr UINT kDpiChanged = 0x02E0;  // WM_DPICHANGED
    replace([](HWND dialog) {
        RECT before, after;
        ::GetWindowRect(dialog, &before);
        RECT suggested{50, 60, 300, 200};
        ::SendMessageW(dialog, kDpiChanged, MAKEWPARAM(96, 96), reinterpret_cast<LPARAM>(&suggested));
        ::GetWindowRect(dialog, &after);
        EXPECT_EQ(after.left, 50);
        EXPECT_EQ(after.top, 60);
        EXPECT_EQ(after.right - after.left, before.right - before.left);  // as large as the texts need
        EXPECT_EQ(after.bottom - after.top, before.bottom - before.top);
        ::EndDialog(dialog, IDCANCEL);
    });
}

TEST_F(QuestionTest, AWindowIsDisabledOnlyWhileItAsks) {
    replace([&](HWND dialog) {
        EXPECT_FALSE(::IsWindowEnabled(host.window()));
        EXPECT_FALSE(::IsWindowEnabled(host.child()));
        ::EndDialog(dialog, IDCANCEL);
    });
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
    EXPECT_TRUE(::IsWindowEnabled(host.child()));
    EXPECT_EQ(::GetFocus(), host.edit());
}

TEST_F(QuestionTest, TheEndOfTheThreadIsCancelAndIsPassedOn) {
    EXPECT_EQ(replace([](HWND) { ::PostQuitMessage(3); }), ReplaceAnswer::kCancel);
    MSG message{};
    while (message.message != WM_QUIT && ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    }
    EXPECT_EQ(message.message, WM_QUIT);
    EXPECT_EQ(message.wParam, WPARAM{3});
}

TEST_F(QuestionTest, DiskSpaceTellsBothSizes) {
    std::vector<std::wstring> texts;
    diskSpace([&](HWND dialog) {
        texts = testing::childTexts(dialog);
        ::EndDialog(dialog, IDCANCEL);
    });
    EXPECT_EQ(texts,
              (std::vector<std::wstring>{L"", L"There is not enough free space on the disk.", L"Needed:",
                                         L"5,000,000,000 bytes (4.65 GB)", L"Available:", L"1,048,576 bytes (1.00 MB)",
                                         L"Continue all the same?", L"C&ontinue", L"Cancel"}));
}

TEST_F(QuestionTest, DiskSpaceIsAnswered) {
    EXPECT_TRUE(diskSpace(click(IDOK)));
    EXPECT_TRUE(diskSpace(letter('o')));
    EXPECT_FALSE(diskSpace(click(IDCANCEL)));
    EXPECT_FALSE(diskSpace(press(VK_ESCAPE)));
    EXPECT_FALSE(diskSpace(press(VK_RETURN)));
    EXPECT_FALSE(diskSpace([](HWND dialog) { ::PostMessageW(dialog, WM_CLOSE, 0, 0); }));
}

TEST_F(QuestionTest, NothingIsAskedOverAWindowThatHasGone) {
    WindowsDialogs dialogs(settings, [] { return ProgressTime{0}; });
    ::DestroyWindow(host.window());
    EXPECT_EQ(dialogs.askReplace({L"a", 1, std::nullopt, member}), ReplaceAnswer::kCancel) << "nobody wants it now";
    EXPECT_EQ(dialogs.askPassword(L"a.zip", member, 1), std::nullopt);
    EXPECT_FALSE(dialogs.askDiskSpace(2, 1));
}

}  // namespace
}  // namespace archiver
