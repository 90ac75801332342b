#include "shell/win32/subclass.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>

#include "shell/fakes/fake_message_boxes.h"
#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

constexpr UINT kQuestion = WM_APP + 1;

LRESULT CALLBACK answerOne(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == kQuestion ? 1 : callOldProcedure(window, message, wParam, lParam);
}

LRESULT CALLBACK answerTwo(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == kQuestion ? 2 : callOldProcedure(window, message, wParam, lParam);
}

LONG_PTR procedureOf(HWND window) { return ::GetWindowLongPtrW(window, GWLP_WNDPROC); }

class SubclassTest : public testing::Test {
protected:
    TestWindow window_ = makeWindow(L"STATIC", WS_POPUP);
    LONG_PTR original_ = procedureOf(window_.get());
    FakeMessageBoxes messages_;
};

TEST_F(SubclassTest, GivesAWindowAnotherProcedureAndRemembersTheFirst) {
    int owner = 0;
    EXPECT_TRUE(Subclass(window_.get(), &answerOne, &owner, messages_));
    EXPECT_EQ(::SendMessageW(window_.get(), kQuestion, 0, 0), 1);
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(::GetPropW(window_.get(), L"OldWndProc")), original_);
    EXPECT_EQ(::GetPropW(window_.get(), L"ObjectPtr"), &owner);
    EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(SubclassTest, StoresNoObjectWhenThereIsNone) {
    EXPECT_TRUE(Subclass(window_.get(), &answerOne, nullptr, messages_));
    EXPECT_EQ(::GetPropW(window_.get(), L"ObjectPtr"), nullptr);
}

TEST_F(SubclassTest, LetsTheFirstProcedureAnswerEverythingElse) {
    Subclass(window_.get(), &answerOne, nullptr, messages_);
    ::SetWindowTextW(window_.get(), L"still a label");
    std::array<wchar_t, 32> text{};
    ::GetWindowTextW(window_.get(), text.data(), static_cast<int>(text.size()));
    EXPECT_STREQ(text.data(), L"still a label");
}

TEST_F(SubclassTest, ChangesNothingTheSecondTime) {
    Subclass(window_.get(), &answerOne, nullptr, messages_);
    EXPECT_TRUE(Subclass(window_.get(), &answerTwo, &messages_, messages_));
    EXPECT_EQ(::SendMessageW(window_.get(), kQuestion, 0, 0), 1);
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(::GetPropW(window_.get(), L"OldWndProc")), original_);
    EXPECT_EQ(::GetPropW(window_.get(), L"ObjectPtr"), nullptr);
}

TEST_F(SubclassTest, GivesTheFirstProcedureBack) {
    int owner = 0;
    Subclass(window_.get(), &answerOne, &owner, messages_);
    EXPECT_TRUE(Unsubclass(window_.get()));
    EXPECT_EQ(procedureOf(window_.get()), original_);
    EXPECT_EQ(::GetPropW(window_.get(), L"OldWndProc"), nullptr);
    EXPECT_EQ(::GetPropW(window_.get(), L"ObjectPtr"), nullptr);
    EXPECT_FALSE(Unsubclass(window_.get()));
}

TEST_F(SubclassTest, HasNothingToGiveBackForAWindowThatWasNeverSubclassed) {
    EXPECT_FALSE(Unsubclass(window_.get()));
    EXPECT_EQ(procedureOf(window_.get()), original_);
}

TEST_F(SubclassTest, TellsOfAFailure) {
    const HWND gone = window_.get();
    window_.reset();
    EXPECT_FALSE(Subclass(gone, &answerOne, nullptr, messages_));
    ::SetWindowLongPtrW(gone, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&answerOne));
    const DWORD error = ::GetLastError();
    ASSERT_NE(error, 0U);
    std::array<wchar_t, 32> handle{};
    std::swprintf(handle.data(), handle.size(), L"%lX",
                  static_cast<unsigned long>(reinterpret_cast<std::uintptr_t>(gone)));
    std::array<wchar_t, 256> description{};
    ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
                     nullptr, error, 0x0400, description.data(), static_cast<DWORD>(description.size()), nullptr);
    ASSERT_EQ(messages_.shown.size(), 1U);
    EXPECT_EQ(messages_.shown[0].text, std::wstring(L"Error subclassing window &H") + handle.data() + L"\r\n\r\nErr# " +
                                           std::to_wstring(error) + L": " + description.data());
    EXPECT_EQ(messages_.shown[0].icon, MessageIcon::Exclamation);
}

}  // namespace
}  // namespace tovar::test
