#include "browser/password_presenter.h"

#include <gtest/gtest.h>

#include <optional>

namespace tovar {
namespace {

struct FakePasswordView final : PasswordView {
    std::wstring typed;
    std::optional<bool> okEnabled, charactersShown;
    int focused = 0, closed = 0, read = 0;

    void enableOk(bool enabled) override { okEnabled = enabled; }
    void showCharacters(bool shown) override { charactersShown = shown; }
    void focusText() override { ++focused; }
    void readText(std::wstring& text) override {
        ++read;
        text = typed;
    }
    void close() override { ++closed; }
};

class PasswordPresenterTest : public testing::Test {
protected:
    PasswordPresenterTest() { presenter.onLoad(); }
    void type(const std::wstring& text) {
        view.typed = text;
        presenter.onTextChanged(text.size());
    }

    FakePasswordView view;
    PasswordPresenter presenter{view};
};

TEST_F(PasswordPresenterTest, BeginsWithOkDisabledCharactersHiddenAndNothingCancelled) {
    EXPECT_EQ(view.okEnabled, false);
    EXPECT_EQ(view.charactersShown, false);
    EXPECT_FALSE(presenter.Cancelled());
    EXPECT_EQ(presenter.Password(), L"");
}

TEST_F(PasswordPresenterTest, GivesTheTextTheFocusWheneverItBecomesActive) {
    presenter.onActivate();
    EXPECT_EQ(view.focused, 1);
    presenter.onActivate();
    EXPECT_EQ(view.focused, 2);
}

TEST_F(PasswordPresenterTest, EnablesOkExactlyWhileThereIsText) {
    type(L"a");
    EXPECT_EQ(view.okEnabled, true);
    type(L"");
    EXPECT_EQ(view.okEnabled, false);
    type(L" ");
    EXPECT_EQ(view.okEnabled, true) << "a blank is a character like any other";
}

TEST_F(PasswordPresenterTest, StoresTheTextOnOk) {
    type(L"p\xE4ss \x30C6");
    presenter.onOk();
    EXPECT_EQ(presenter.Password(), L"p\xE4ss \x30C6");
    EXPECT_FALSE(presenter.Cancelled());
    EXPECT_EQ(view.closed, 1);
}

TEST_F(PasswordPresenterTest, TakesNoEmptyTextEvenWhenEnterIsPressed) {
    presenter.onOk();
    type(L"a");
    type(L"");
    presenter.onOk();
    EXPECT_EQ(view.closed, 0);
    EXPECT_EQ(view.read, 0);
}

TEST_F(PasswordPresenterTest, IsCancelled) {
    type(L"secret");
    presenter.onCancel();
    EXPECT_TRUE(presenter.Cancelled());
    EXPECT_EQ(presenter.Password(), L"");
    EXPECT_EQ(view.read, 0);
    EXPECT_EQ(view.closed, 1);
}

TEST_F(PasswordPresenterTest, KeepsTheLastConfirmedTextWhenCancelledLater) {
    type(L"first");
    presenter.onOk();
    presenter.onLoad();
    EXPECT_EQ(view.okEnabled, false);
    type(L"second");
    presenter.onCancel();
    EXPECT_TRUE(presenter.Cancelled());
    EXPECT_EQ(presenter.Password(), L"first");
}

TEST_F(PasswordPresenterTest, BeginsAnewWithEachLoad) {
    presenter.onCancel();
    presenter.onLoad();
    EXPECT_FALSE(presenter.Cancelled());
    type(L"again");
    presenter.onOk();
    EXPECT_FALSE(presenter.Cancelled());
    EXPECT_EQ(presenter.Password(), L"again");
}

TEST_F(PasswordPresenterTest, CountsAWindowThatIsGoneAsCancelled) {
    type(L"secret");
    presenter.onGone();
    EXPECT_TRUE(presenter.Cancelled());
}

TEST_F(PasswordPresenterTest, ShowsAndHidesTheCharacters) {
    presenter.onShowCharacters(true);
    EXPECT_EQ(view.charactersShown, true);
    presenter.onShowCharacters(false);
    EXPECT_EQ(view.charactersShown, false);
    presenter.onShowCharacters(true);
    presenter.onLoad();
    EXPECT_EQ(view.charactersShown, false) << "the next time they are hidden again";
}

TEST_F(PasswordPresenterTest, HasRoomForTheLongestTextWithoutMovingIt) {
    const wchar_t* const buffer = presenter.Password().data();
    type(std::wstring(255, L'x'));
    presenter.onOk();
    EXPECT_EQ(presenter.Password().data(), buffer);
    EXPECT_EQ(presenter.Password().size(), 255U);
}

}  // namespace
}  // namespace tovar
