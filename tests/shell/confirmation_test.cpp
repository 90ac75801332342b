#include "shell/confirmation_presenter.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace tovar::test {
namespace {

TEST(Confirmation, AsksBeforeAnExtraction) {
    const Confirmation asked = confirmExtraction(L"a.txt\r\n\"b c/*.*\"\r\n");
    EXPECT_EQ(asked.message(),
              L"Extract following files and folders ?\r\n"
              L"a.txt\r\n\"b c/*.*\"\r\n"
              L"\r\nIf files already exist, they will be overwritten.");
    EXPECT_EQ(asked.yes, L"&Yes");
    EXPECT_EQ(asked.no, L"&No");
    EXPECT_EQ(asked.progress, L"Extracting...");
}

TEST(Confirmation, AsksBeforeADeletion) {
    const Confirmation asked = confirmDeletion(L"a.txt\r\nb/*.*\r\n");
    EXPECT_EQ(asked.message(), L"Delete the following files/folders ? \r\n\r\na.txt\r\nb/*.*\r\n");
    EXPECT_EQ(asked.yes, L"&Yes");
    EXPECT_EQ(asked.no, L"&No");
    EXPECT_EQ(asked.progress, L"Deleting...");
}

TEST(Confirmation, AsksBeforeACompression) {
    const Confirmation asked = confirmCompression(12345);
    EXPECT_EQ(asked.message(),
              L"Compress 12345 files and folders ?\r\nIf files already exist, they will be overwritten.");
    EXPECT_EQ(asked.yes, L"&Yes");
    EXPECT_EQ(asked.no, L"&No");
    EXPECT_EQ(asked.progress, L"Compressing...");
}

class FakeConfirmationView final : public ConfirmationView {
public:
    std::vector<std::wstring> log;
    int window_ = 0;

    void setCaption(std::wstring_view text) override { log.push_back(L"caption " + std::wstring(text)); }
    void show(const Confirmation& confirmation) override { log.push_back(L"show " + confirmation.question); }
    void showWorking() override { log.emplace_back(L"working"); }
    [[nodiscard]] WindowHandle window() const override { return const_cast<int*>(&window_); }
    void close() override { log.emplace_back(L"close"); }
};

class ConfirmationPresenterTest : public testing::Test {
protected:
    using Log = std::vector<std::wstring>;

    Confirmation confirmation_ = confirmCompression(3);
    FakeConfirmationView view_;
    Confirmations::Work work_ = [this](WindowHandle window) {
        EXPECT_EQ(window, &view_.window_);
        view_.log.emplace_back(L"work");
    };
    ConfirmationPresenter dialog_{view_, confirmation_, work_};
};

TEST_F(ConfirmationPresenterTest, ShowsTheQuestionUnderTheComponentsName) {
    dialog_.onLoad();
    EXPECT_EQ(view_.log, (Log{L"caption TovarEx", L"show Compress 3 files and folders ?"}));
    EXPECT_FALSE(dialog_.agreed());
}

TEST_F(ConfirmationPresenterTest, WorksUnderTheProgressCaptionAfterYes) {
    dialog_.onYes();
    EXPECT_EQ(view_.log, (Log{L"caption Compressing...", L"working", L"work", L"close"}));
    EXPECT_TRUE(dialog_.agreed());
    EXPECT_NO_THROW(dialog_.rethrow());
}

TEST_F(ConfirmationPresenterTest, DoesNothingAfterNo) {
    dialog_.onNo();
    EXPECT_EQ(view_.log, Log{L"close"});
    EXPECT_FALSE(dialog_.agreed());
    dialog_.onYes();
    EXPECT_EQ(view_.log, Log{L"close"});
}

TEST_F(ConfirmationPresenterTest, CanBeAnsweredOnceOnly) {
    work_ = [this](WindowHandle) {
        view_.log.emplace_back(L"work");
        dialog_.onYes();
        dialog_.onNo();
    };
    dialog_.onYes();
    EXPECT_EQ(view_.log, (Log{L"caption Compressing...", L"working", L"work", L"close"}));
    EXPECT_TRUE(dialog_.agreed());
}

TEST_F(ConfirmationPresenterTest, ClosesBeforeItTellsOfAFailure) {
    work_ = [](WindowHandle) { throw std::runtime_error("full"); };
    dialog_.onYes();
    EXPECT_EQ(view_.log.back(), L"close");
    EXPECT_THROW(dialog_.rethrow(), std::runtime_error);
}

TEST_F(ConfirmationPresenterTest, NeedsNoWork) {
    work_ = nullptr;
    dialog_.onYes();
    EXPECT_TRUE(dialog_.agreed());
    EXPECT_EQ(view_.log.back(), L"close");
}

}  // namespace
}  // namespace tovar::test
