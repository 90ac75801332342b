#include "browser/progress_presenter.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <functional>
#include <limits>
#include <vector>

namespace tovar {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

struct FakeProgressView final : ProgressView {
    std::wstring caption = L"?", summary = L"?", folder = L"?", file = L"?", size = L"?";
    int bar = 0;
    int captions = 0, sizes = 0, bars = 0, closed = 0;

    void setCaption(std::wstring_view text) override {
        caption = text;
        ++captions;
    }
    void setSummary(std::wstring_view text) override { summary = text; }
    void setFolder(std::wstring_view text) override { folder = text; }
    void setFile(std::wstring_view text) override { file = text; }
    void setSize(std::wstring_view text) override {
        size = text;
        ++sizes;
    }
    void setBar(int position) override {
        bar = position;
        ++bars;
    }
    void close() override { ++closed; }
};

struct FakePump final : MessagePump {
    int runs = 0;
    std::function<void()> action;
    void processPending() override {
        ++runs;
        if (action) action();
    }
};

class ProgressPresenterTest : public testing::Test {
protected:
    ProgressPresenterTest() { presenter.onLoad(); }

    FakeProgressView view;
    FakePump pump;
    ProgressPresenter presenter{view, pump, {}};
};

TEST_F(ProgressPresenterTest, ClearsTheFourLabelsOnLoad) {
    EXPECT_EQ(view.folder, L"");
    EXPECT_EQ(view.file, L"");
    EXPECT_EQ(view.size, L"");
    EXPECT_EQ(view.summary, L"");
    EXPECT_FALSE(presenter.Canceled());
}

TEST_F(ProgressPresenterTest, ShowsTheTitleAsTheCaption) {
    presenter.SetCaption(L"Extracting");
    EXPECT_EQ(view.caption, L"Extracting");
}

TEST_F(ProgressPresenterTest, ShowsATitleThatWasSetBeforeTheWindowWasThere) {
    FakeProgressView later;
    ProgressPresenter early(later, pump, {});
    early.SetCaption(L"Compressing");
    EXPECT_EQ(later.captions, 0);
    early.onLoad();
    EXPECT_EQ(later.caption, L"Compressing");
}

TEST_F(ProgressPresenterTest, PutsThePercentageBeforeTheTitle) {
    presenter.SetCaption(L"Extracting");
    presenter.SetPrg1(512 * 1024, 2048 * 1024);
    EXPECT_EQ(view.caption, L"25 % Extracting");
    EXPECT_EQ(view.size, L"512/2,048 KBytes processed");
    EXPECT_EQ(view.bar, 25);
}

TEST_F(ProgressPresenterTest, ShowsANewTitleAloneUntilThePercentageChanges) {
    presenter.SetPrg1(10, 100);
    presenter.SetCaption(L"Testing");
    presenter.SetPrg1(10, 100);
    EXPECT_EQ(view.caption, L"Testing");
    presenter.SetPrg1(11, 100);
    EXPECT_EQ(view.caption, L"11 % Testing");
}

TEST_F(ProgressPresenterTest, ShowsTheSummaryInLowerCase) {
    presenter.Summary(L"Compressing C:\\My Files\\\x00C4pfel.ZIP");
    EXPECT_EQ(view.summary, L"compressing c:\\my files\\\x00E4pfel.zip");
}

TEST_F(ProgressPresenterTest, LeavesTheSummaryForAnEmptyText) {
    presenter.Summary(L"Preprocessing ... Wait a second!");
    presenter.Summary(L"");
    EXPECT_EQ(view.summary, L"preprocessing ... wait a second!");
}

TEST_F(ProgressPresenterTest, ShowsWhereTheOperationIs) {
    presenter.showFolder(L"C:\\Docs");
    presenter.showFile(L"Read Me.TXT");
    EXPECT_EQ(view.folder, L"C:\\Docs");
    EXPECT_EQ(view.file, L"Read Me.TXT");
}

// How much there is

TEST_F(ProgressPresenterTest, ChangesNothingForATotalOfZero) {
    presenter.SetCaption(L"Title");
    const int captions = view.captions, sizes = view.sizes;
    presenter.SetPrg1(0, 0);
    presenter.SetPrg1(5, 0);
    presenter.SetPrg1(5, -0.0F);
    EXPECT_EQ(view.captions, captions);
    EXPECT_EQ(view.sizes, sizes);
    EXPECT_EQ(view.bars, 0);
}

TEST_F(ProgressPresenterTest, ChangesNothingForATotalOfZeroAfterAnother) {
    presenter.SetPrg1(50, 100);
    presenter.SetPrg1(7, 0);
    EXPECT_EQ(view.caption, L"50 % ");
    EXPECT_EQ(view.bar, 50);
}

TEST_F(ProgressPresenterTest, ShowsNothingBeforeATotalIsKnown) {
    presenter.SetPrg1(5, -1);
    EXPECT_EQ(view.size, L"");
    EXPECT_EQ(view.bars, 0);
    presenter.SetPrg1(-1, 10);
    EXPECT_EQ(view.caption, L"50 % ");
}

TEST_F(ProgressPresenterTest, LeavesWhatIsNegativeAsItWas) {
    presenter.SetPrg1(-1, 200);
    EXPECT_EQ(view.caption, L"0 % ");
    presenter.SetPrg1(100, -1);
    EXPECT_EQ(view.caption, L"50 % ");
    presenter.SetPrg1(-5, -5);
    EXPECT_EQ(view.caption, L"50 % ");
    presenter.SetPrg1(-0.5F, 400);
    EXPECT_EQ(view.caption, L"25 % ");
}

TEST_F(ProgressPresenterTest, LeavesWhatIsNoNumberAsItWas) {
    presenter.SetPrg1(50, 100);
    for (const float odd : {kNone, kInfinity, -kInfinity}) {
        presenter.SetPrg1(odd, odd);
        EXPECT_EQ(view.caption, L"50 % ");
    }
    presenter.SetPrg1(kNone, 200);
    EXPECT_EQ(view.caption, L"25 % ");
    presenter.SetPrg1(20, kInfinity);
    EXPECT_EQ(view.caption, L"10 % ");
}

TEST_F(ProgressPresenterTest, IsNeverMoreThanFull) {
    presenter.SetPrg1(3000 * 1024, 2000 * 1024);
    EXPECT_EQ(view.caption, L"100 % ");
    EXPECT_EQ(view.size, L"2,000/2,000 KBytes processed");
    EXPECT_EQ(view.bar, 100);
    presenter.SetPrg1(std::numeric_limits<float>::max(), std::numeric_limits<float>::denorm_min());
    EXPECT_EQ(view.caption, L"100 % ");
}

TEST_F(ProgressPresenterTest, RemembersAnAmountAboveALaterTotal) {
    presenter.SetPrg1(150, 100);
    presenter.SetPrg1(-1, 300);
    EXPECT_EQ(view.caption, L"50 % ");
}

struct PercentageCase {
    const char* name;
    float processed, total;
    std::wstring_view caption;
};
class ProgressPercentage : public ProgressPresenterTest, public testing::WithParamInterface<PercentageCase> {};
TEST_P(ProgressPercentage, IsRoundedHalvesToEven) {
    presenter.SetPrg1(GetParam().processed, GetParam().total);
    EXPECT_EQ(view.caption, GetParam().caption);
}
INSTANTIATE_TEST_SUITE_P(
    Rows, ProgressPercentage,
    testing::Values(PercentageCase{"None", 0, 200, L"0 % "}, PercentageCase{"All", 200, 200, L"100 % "},
                    PercentageCase{"HalfDownToZero", 1, 200, L"0 % "}, PercentageCase{"HalfUpToTwo", 3, 200, L"2 % "},
                    PercentageCase{"HalfDownToTwo", 5, 200, L"2 % "}, PercentageCase{"HalfUpToFour", 7, 200, L"4 % "},
                    PercentageCase{"LastHalf", 199, 200, L"100 % "}, PercentageCase{"BelowAHalf", 4, 1000, L"0 % "},
                    PercentageCase{"AboveAHalf", 6, 1000, L"1 % "}, PercentageCase{"Third", 1, 3, L"33 % "},
                    PercentageCase{"TwoThirds", 2, 3, L"67 % "}, PercentageCase{"TwoOfMillion", 2, 1e6F, L"0 % "},
                    // 0.575 and its like have no exact binary form.
                    PercentageCase{"InexactHalfUp", 575, 1000, L"58 % "},
                    PercentageCase{"InexactHalfDown", 565, 1000, L"56 % "},
                    PercentageCase{"InexactHalfToTwelve", 115, 1000, L"12 % "},
                    PercentageCase{"InexactHalfToTwentyEight", 285, 1000, L"28 % "},
                    PercentageCase{"Fractions", 0.25F, 0.5F, L"50 % "},
                    PercentageCase{"Smallest", std::numeric_limits<float>::denorm_min(),
                                   std::numeric_limits<float>::denorm_min(), L"100 % "},
                    PercentageCase{"Largest", std::numeric_limits<float>::max() / 4, std::numeric_limits<float>::max(),
                                   L"25 % "}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(ProgressPresenterTest, RoundsAlikeWhateverTheHostsRoundingMode) {
    const int mode = std::fegetround();
    std::fesetround(FE_UPWARD);
    presenter.SetPrg1(1, 200);
    std::fesetround(mode);
    EXPECT_EQ(view.caption, L"0 % ");
}

struct KiloByteCase {
    const char* name;
    float processed, total;
    std::wstring_view text;
};
class ProgressKiloBytes : public ProgressPresenterTest, public testing::WithParamInterface<KiloByteCase> {};
TEST_P(ProgressKiloBytes, StandInGroups) {
    presenter.SetPrg1(GetParam().processed, GetParam().total);
    EXPECT_EQ(view.size, GetParam().text);
}
constexpr float kGiB = 1073741824;
INSTANTIATE_TEST_SUITE_P(
    Rows, ProgressKiloBytes,
    testing::Values(KiloByteCase{"Nothing", 0, 4096, L"/4 KBytes processed"},
                    KiloByteCase{"BelowOne", 1023, 4096, L"/4 KBytes processed"},
                    KiloByteCase{"BothBelowOne", 500, 1000, L"/ KBytes processed"},
                    KiloByteCase{"One", 1024, 4096, L"1/4 KBytes processed"},
                    KiloByteCase{"NotYetTwo", 2047, 4096, L"1/4 KBytes processed"},
                    KiloByteCase{"Groups", 1024 * 1000, 1024.0F * 1000 * 10, L"1,000/10,000 KBytes processed"},
                    KiloByteCase{"FourGiB", 2 * kGiB, 4 * kGiB, L"2,097,152/4,194,304 KBytes processed"},
                    KiloByteCase{"BeyondFourGiB", 5 * kGiB, 6 * kGiB, L"5,242,880/6,291,456 KBytes processed"},
                    // 4 GiB and 512 bytes: single precision goes in steps of 512 there
                    KiloByteCase{"HalfABlockMore", 4 * kGiB + 512, 16 * kGiB, L"4,194,304/16,777,216 KBytes processed"},
                    KiloByteCase{"ABlockMore", 4 * kGiB + 1024, 16 * kGiB, L"4,194,305/16,777,216 KBytes processed"},
                    KiloByteCase{"TebiBytes", 1024 * kGiB, 2048 * kGiB,
                                 L"1,073,741,824/2,147,483,648 KBytes processed"},
                    KiloByteCase{"MoreThanANumberHolds", 1024, std::numeric_limits<float>::max(),
                                 L"1/18,446,744,073,709,551,615 KBytes processed"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(ProgressPresenterTest, GroupsDigitsAsTheUserHasThem) {
    RegionalSettings regional;
    regional.groupSeparator = L".";
    regional.grouping = L"3;2;0";
    ProgressPresenter indian(view, pump, regional);
    indian.onLoad();
    indian.SetPrg1(1024, 1234567.0F * 1024);
    EXPECT_EQ(view.size, L"1/12.34.567 KBytes processed");
}

// When it is shown

TEST_F(ProgressPresenterTest, UpdatesTheLabelsOncePerWholePercentage) {
    presenter.SetPrg1(1000, 100000);
    const int captions = view.captions, sizes = view.sizes;
    presenter.SetPrg1(1100, 100000);
    presenter.SetPrg1(1499, 100000);
    EXPECT_EQ(view.captions, captions);
    EXPECT_EQ(view.sizes, sizes);
    EXPECT_EQ(view.size, L"/97 KBytes processed");
    presenter.SetPrg1(1501, 100000);
    EXPECT_EQ(view.captions, captions + 1);
    EXPECT_EQ(view.sizes, sizes + 1);
    EXPECT_EQ(view.size, L"1/97 KBytes processed");
}

TEST_F(ProgressPresenterTest, ShowsZeroPerCentTheFirstTime) {
    presenter.SetPrg1(0, 2048);
    EXPECT_EQ(view.caption, L"0 % ");
    EXPECT_EQ(view.sizes, 2) << "once cleared, once shown";
    presenter.SetPrg1(1, 2048);
    EXPECT_EQ(view.sizes, 2);
}

TEST_F(ProgressPresenterTest, MovesTheBarWithTheWholePercentage) {
    // A bar can take longer to paint than the work between two calls.
    for (float done = 0; done <= 10000; ++done) presenter.SetPrg1(done, 10000);
    EXPECT_EQ(view.bar, 100);
    EXPECT_EQ(view.bars, 101);
}

TEST_F(ProgressPresenterTest, RunsPendingMessagesOnceInEveryCall) {
    presenter.SetPrg1(1, 100);
    EXPECT_EQ(pump.runs, 1);
    presenter.SetPrg1(1, 100);
    EXPECT_EQ(pump.runs, 2);
    presenter.SetPrg1(0, 0);
    EXPECT_EQ(pump.runs, 3);
    presenter.SetPrg1(-1, kNone);
    EXPECT_EQ(pump.runs, 4);
    presenter.SetCaption(L"a");
    presenter.Summary(L"b");
    presenter.showFile(L"c");
    EXPECT_EQ(pump.runs, 4);
}

// Cancel

TEST_F(ProgressPresenterTest, CancelSetsTheFlagAndCloses) {
    presenter.onCancel();
    EXPECT_TRUE(presenter.Canceled());
    EXPECT_EQ(view.closed, 1);
    presenter.onCancel();
    EXPECT_EQ(view.closed, 1);
}

TEST_F(ProgressPresenterTest, IsCancelledByWhatRunsInACall) {
    pump.action = [this] { presenter.onCancel(); };
    presenter.SetPrg1(1, 100);
    EXPECT_TRUE(presenter.Canceled());
}

TEST_F(ProgressPresenterTest, ShowsNothingAfterItsWindowIsGone) {
    presenter.onCancel();
    const int captions = view.captions, sizes = view.sizes;
    presenter.SetPrg1(50, 100);
    presenter.SetCaption(L"late");
    presenter.Summary(L"late");
    presenter.showFolder(L"late");
    presenter.showFile(L"late");
    EXPECT_EQ(view.captions, captions);
    EXPECT_EQ(view.sizes, sizes);
    EXPECT_EQ(view.bars, 0);
    EXPECT_EQ(view.summary, L"");
    EXPECT_EQ(view.folder, L"");
    EXPECT_EQ(view.file, L"");
    EXPECT_EQ(pump.runs, 1) << "other windows live on";
}

TEST_F(ProgressPresenterTest, TakesAWindowThatIsDestroyedFromOutsideForACancel) {
    presenter.onGone();
    EXPECT_TRUE(presenter.Canceled());
    EXPECT_EQ(view.closed, 0);
}

TEST_F(ProgressPresenterTest, IsNotCancelledWhenTheOperationClosesIt) {
    presenter.onClose();
    presenter.onGone();
    presenter.onClose();
    EXPECT_FALSE(presenter.Canceled());
    EXPECT_EQ(view.closed, 1);
}

TEST_F(ProgressPresenterTest, StaysCancelledWhenTheOperationEndsAfterwards) {
    presenter.onCancel();
    presenter.onGone();
    presenter.onClose();
    EXPECT_TRUE(presenter.Canceled());
    EXPECT_EQ(view.closed, 1);
}

TEST_F(ProgressPresenterTest, BeginsAnewWithEachLoad) {
    presenter.SetCaption(L"Title");
    presenter.SetPrg1(50, 100);
    presenter.onCancel();
    presenter.onLoad();
    EXPECT_FALSE(presenter.Canceled());
    EXPECT_EQ(view.caption, L"Title");
    EXPECT_EQ(view.size, L"");
    presenter.SetPrg1(50, -1);
    EXPECT_EQ(view.size, L"") << "the total is not that of the last time";
    presenter.SetPrg1(50, 100);
    EXPECT_EQ(view.caption, L"50 % Title");
}

}  // namespace
}  // namespace tovar
