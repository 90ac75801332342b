#include "archivers/commands/progress_meter.h"

#include <gtest/gtest.h>

namespace archiver {
namespace {

using namespace std::chrono_literals;

constexpr std::uint64_t kMega = 1024 * 1024;
constexpr std::uint64_t kHuge = 9'223'372'036'854'775'808U;

UnpackProgress unpacked(std::uint64_t bytes, std::uint64_t total) {
    UnpackProgress progress;
    progress.bytes = bytes;
    progress.totalBytes = total;
    return progress;
}

UnpackProgress readOfArchive(std::uint64_t bytes, std::uint64_t archiveBytes, std::uint64_t archiveSize) {
    UnpackProgress progress = unpacked(bytes, 0);
    progress.archiveBytes = archiveBytes;
    progress.archiveSize = archiveSize;
    return progress;
}

TEST(ProgressMeter, ShowsItsTitleAtFirst) {
    const ProgressMeter meter("UnZip32");
    EXPECT_EQ(meter.picture(), (ProgressPicture{"UnZip32", 0, "", "", ""}));
}

TEST(ProgressMeter, CountsUnpackedBytes) {
    ProgressMeter meter("UnZip32");
    meter.note(unpacked(0, 40 * kMega), 1000ms);
    EXPECT_EQ(meter.picture(), (ProgressPicture{"0% - UnZip32", 0, "0 bytes of 40.0 MB", "", ""}));
    meter.note(unpacked(10 * kMega, 40 * kMega), 3000ms);
    EXPECT_EQ(meter.picture(),
              (ProgressPicture{"25% - UnZip32", 250, "10.0 MB of 40.0 MB", "5.00 MB/s", "About 6 seconds remaining"}));
}

TEST(ProgressMeter, CountsTheArchiveWhereNoTotalIsKnown) {
    ProgressMeter meter("Tar32");
    meter.note(readOfArchive(0, 0, 10'000), 0ms);
    meter.note(readOfArchive(2 * kMega, 5'000, 10'000), 2000ms);
    EXPECT_EQ(meter.picture(),
              (ProgressPicture{"50% - Tar32", 500, "2.00 MB", "1.00 MB/s", "About 2 seconds remaining"}));
}

TEST(ProgressMeter, HasNoPercentageWithoutAnyTotal) {
    ProgressMeter meter("Tar32");
    meter.note(readOfArchive(0, 0, 0), 0ms);
    meter.note(readOfArchive(2048, 0, 0), 2000ms);
    EXPECT_EQ(meter.picture(), (ProgressPicture{"Tar32", 0, "2.00 KB", "1.00 KB/s", ""}));
}

TEST(ProgressMeter, DoesNotBelieveATotalThatIsPassed) {
    ProgressMeter meter("UnZip32");
    UnpackProgress progress = readOfArchive(3 * kMega, 300, 1000);
    progress.totalBytes = kMega;
    meter.note(progress, 0ms);
    EXPECT_EQ(meter.picture(), (ProgressPicture{"30% - UnZip32", 300, "3.00 MB", "", ""}));
}

TEST(ProgressMeter, NeverReadsMoreThanTheArchiveHas) {
    ProgressMeter meter("Tar32");
    meter.note(readOfArchive(1, 2'000, 1'000), 0ms);
    EXPECT_EQ(meter.picture().title, "100% - Tar32");
    EXPECT_EQ(meter.picture().perMille, 1000U);
}

TEST(ProgressMeter, IsFullOnlyAtTheEnd) {
    ProgressMeter meter("UnZip32");
    meter.note(unpacked(kHuge - 1, kHuge), 0ms);
    EXPECT_EQ(meter.picture(), (ProgressPicture{"99% - UnZip32", 999, "7.99 EB of 8.00 EB", "", ""}));
    meter.note(unpacked(kHuge, kHuge), 100ms);
    EXPECT_EQ(meter.picture().title, "100% - UnZip32");
    EXPECT_EQ(meter.picture().perMille, 1000U);
    EXPECT_EQ(meter.picture().remaining, "");
}

TEST(ProgressMeter, MeasuresHugeAmounts) {
    ProgressMeter meter("UnZip32");
    meter.note(unpacked(0, kHuge), 0ms);
    meter.note(unpacked(kHuge / 2, kHuge), 2000ms);
    EXPECT_EQ(meter.picture(),
              (ProgressPicture{"50% - UnZip32", 500, "4.00 EB of 8.00 EB", "2.00 EB/s", "About 2 seconds remaining"}));
}

TEST(ProgressMeter, TellsNoRateAndNoEndTooEarly) {
    ProgressMeter meter("UnZip32");
    meter.note(unpacked(0, 100 * kMega), 0ms);
    meter.note(unpacked(kMega, 100 * kMega), 200ms);
    EXPECT_EQ(meter.picture().rate, "");
    meter.note(unpacked(2 * kMega, 100 * kMega), 400ms);
    EXPECT_EQ(meter.picture().rate, "5.00 MB/s");
    EXPECT_EQ(meter.picture().remaining, "");
    meter.note(unpacked(5 * kMega, 100 * kMega), 1000ms);
    EXPECT_EQ(meter.picture().remaining, "About 19 seconds remaining");
}

TEST(ProgressMeter, ForgetsWhatWasSecondsAgo) {
    ProgressMeter meter("UnZip32");
    for (std::uint64_t second = 0; second <= 10; ++second) {  // 10 MB/s
        meter.note(unpacked(second * 10 * kMega, 1000 * kMega), std::chrono::seconds(second));
    }
    EXPECT_EQ(meter.picture().rate, "10.0 MB/s");
    for (std::uint64_t second = 11; second <= 15; ++second) {  // then 1 MB/s
        meter.note(unpacked((90 + second) * kMega, 1000 * kMega), std::chrono::seconds(second));
    }
    EXPECT_EQ(meter.picture().rate, "1.00 MB/s");
    EXPECT_EQ(meter.picture().remaining, "About 14 minutes remaining");  // 895 s
}

TEST(ProgressMeter, SaysNothingOfRateAndEndWhenNothingComes) {
    ProgressMeter meter("UnZip32");
    meter.note(unpacked(kMega, 2 * kMega), 0ms);
    meter.note(unpacked(kMega, 2 * kMega), 3000ms);
    EXPECT_EQ(meter.picture(), (ProgressPicture{"50% - UnZip32", 500, "1.00 MB of 2.00 MB", "", ""}));
}

TEST(ProgressMeter, RoundsMinutesUpToFiveSeconds) {
    ProgressMeter meter("UnZip32");
    meter.note(unpacked(0, 80 * kMega), 0ms);
    meter.note(unpacked(2 * kMega, 80 * kMega), 2000ms);  // 78 s left
    EXPECT_EQ(meter.picture().remaining, "About 1 minute 20 seconds remaining");
}

TEST(ProgressMeter, HasNoEstimateBeyondADay) {
    ProgressMeter meter("UnZip32");
    meter.note(unpacked(0, kHuge), 0ms);
    meter.note(unpacked(2, kHuge), 2000ms);
    EXPECT_EQ(meter.picture().remaining, "more than a day remaining");
}

TEST(ProgressMeter, PassesOverTimeInWhichNobodyWorked) {
    ProgressMeter meter("UnZip32");
    meter.note(unpacked(0, 40 * kMega), 0ms);
    meter.note(unpacked(5 * kMega, 40 * kMega), 1000ms);
    meter.passOver(60s);
    meter.note(unpacked(10 * kMega, 40 * kMega), 62'000ms);
    EXPECT_EQ(meter.picture().rate, "5.00 MB/s");
}

TEST(ProgressMeter, TakesSeveralNotesOfOneMoment) {
    ProgressMeter meter("UnZip32");
    meter.note(unpacked(0, 4 * kMega), 0ms);
    meter.note(unpacked(kMega, 4 * kMega), 0ms);
    EXPECT_EQ(meter.picture(), (ProgressPicture{"25% - UnZip32", 250, "1.00 MB of 4.00 MB", "", ""}));
}

TEST(ProgressSchedule, LetsTheWindowAppearAfterHalfASecondOfWork) {
    ProgressSchedule schedule;
    EXPECT_FALSE(schedule.at(10'000ms).appear);  // the work begins
    EXPECT_FALSE(schedule.at(10'499ms).appear);
    EXPECT_TRUE(schedule.at(10'510ms).appear);
    EXPECT_TRUE(schedule.at(10'520ms).appear);
    schedule.appeared();
    EXPECT_FALSE(schedule.at(10'530ms).appear);
}

TEST(ProgressSchedule, GivesNewsTenTimesASecondAndWithTheWindow) {
    ProgressSchedule schedule;
    EXPECT_TRUE(schedule.at(0ms).news);
    EXPECT_FALSE(schedule.at(99ms).news);
    EXPECT_TRUE(schedule.at(109ms).news);
    EXPECT_FALSE(schedule.at(200ms).news);
    EXPECT_TRUE(schedule.at(450ms).news);
    EXPECT_TRUE(schedule.at(500ms).news);  // it appears
}

TEST(ProgressSchedule, LetsMessagesRunEveryTenMilliseconds) {
    ProgressSchedule schedule;
    EXPECT_TRUE(schedule.at(0ms).messages);
    EXPECT_FALSE(schedule.at(0ms).messages);
    EXPECT_FALSE(schedule.at(9ms).messages);
    EXPECT_TRUE(schedule.at(10ms).messages);
    EXPECT_FALSE(schedule.at(19ms).messages);
    EXPECT_TRUE(schedule.at(20ms).messages);
}

TEST(ProgressSchedule, DoesNotCountAQuestionAsWork) {
    ProgressSchedule schedule;
    schedule.at(0ms);
    schedule.at(300ms);
    schedule.passOver(5s);
    EXPECT_FALSE(schedule.at(5'499ms).appear);
    EXPECT_TRUE(schedule.at(5'510ms).appear);
}

}  // namespace
}  // namespace archiver
