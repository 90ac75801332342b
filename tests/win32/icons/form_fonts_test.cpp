#include "shell/win32/form_fonts.h"

#include <gtest/gtest.h>

#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

class ApplyFontTest : public testing::Test {
protected:
    ApplyFontTest() {
        LOGFONTW description{};
        description.lfHeight = -23;
        description.lfWeight = FW_BOLD;
        std::wstring(L"Tahoma").copy(description.lfFaceName, LF_FACESIZE);
        font_.reset(::CreateFontIndirectW(&description));
        setFont(text_);
        setFont(inner_);
    }
    void setFont(const TestWindow& control) const {
        ::SendMessageW(control.get(), WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
    }
    static HFONT fontOf(const TestWindow& control) {
        return reinterpret_cast<HFONT>(::SendMessageW(control.get(), WM_GETFONT, 0, 0));
    }

    UniqueFont font_;
    FormFonts fonts_;
    TestWindow form_ = makeWindow(L"STATIC", WS_POPUP);
    TestWindow text_ = makeWindow(L"EDIT", WS_CHILD, form_.get());
    TestWindow frame_ = makeWindow(L"STATIC", WS_CHILD, form_.get());
    TestWindow inner_ = makeWindow(L"BUTTON", WS_CHILD, frame_.get());
};

TEST_F(ApplyFontTest, GivesEveryControlTheFaceInItsOwnSize) {
    ApplyFont(form_.get(), L"Courier New", fonts_);
    EXPECT_EQ(faceOf(text_.get()), L"Courier New");
    EXPECT_EQ(faceOf(inner_.get()), L"Courier New");
    LOGFONTW description{};
    ::GetObjectW(fontOf(text_), sizeof description, &description);
    EXPECT_EQ(description.lfHeight, -23);
    EXPECT_EQ(description.lfWeight, FW_BOLD);
    EXPECT_EQ(fontOf(text_), fontOf(inner_));
}

TEST_F(ApplyFontTest, SkipsControlsWithoutAFont) {
    ASSERT_EQ(fontOf(frame_), nullptr);
    ApplyFont(form_.get(), L"Courier New", fonts_);
    EXPECT_EQ(fontOf(frame_), nullptr);
}

TEST_F(ApplyFontTest, ChangesNothingWithoutANameOrAForm) {
    ApplyFont(form_.get(), L"", fonts_);
    EXPECT_EQ(fontOf(text_), font_.get());
    ApplyFont(nullptr, L"Courier New", fonts_);
    EXPECT_EQ(fontOf(text_), font_.get());
}

TEST_F(ApplyFontTest, ChangesNothingForANameThatNoFaceCanHave) {
    ApplyFont(form_.get(), std::wstring(300, L'f'), fonts_);
    EXPECT_EQ(fontOf(text_), font_.get());
}

TEST_F(ApplyFontTest, LeavesAControlThatHasItAlready) {
    ApplyFont(form_.get(), L"Courier New", fonts_);
    const HFONT applied = fontOf(text_);
    ApplyFont(form_.get(), L"Courier New", fonts_);
    EXPECT_EQ(fontOf(text_), applied);
}

TEST_F(ApplyFontTest, LetsPendingMessagesRun) {
    ::PostMessageW(text_.get(), WM_CHAR, L'x', 0);
    ApplyFont(form_.get(), L"Courier New", fonts_);
    EXPECT_EQ(::GetWindowTextLengthW(text_.get()), 1);
}

TEST_F(ApplyFontTest, SurvivesAFormThatGoesMeanwhile) {
    ::PostMessageW(form_.get(), WM_SYSCOMMAND, SC_CLOSE, 0);
    ApplyFont(form_.get(), L"Courier New", fonts_);
    EXPECT_FALSE(::IsWindow(form_.get()));
}

}  // namespace
}  // namespace tovar::test
