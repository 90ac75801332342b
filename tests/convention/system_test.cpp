#include "archivers/convention/system.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#if !defined(_WIN32)
#include <time.h>
#endif

namespace archiver {
namespace {

TEST(UtcOfLocal, RefusesWhatIsNoTime) {
    EXPECT_FALSE(utcOfLocal({0, 0}).has_value()) << "month 0";
    EXPECT_FALSE(utcOfLocal({0x2AA0, 0}).has_value()) << "day 0";
    EXPECT_FALSE(utcOfLocal({0x2BB1, 0}).has_value()) << "month 13";
    EXPECT_FALSE(utcOfLocal({0x2A5E, 0}).has_value()) << "30 February";
    EXPECT_FALSE(utcOfLocal({0x2AB1, 0xC000}).has_value()) << "hour 24";
    EXPECT_FALSE(utcOfLocal({0x2AB1, 0x0780}).has_value()) << "minute 60";
    EXPECT_FALSE(utcOfLocal({0x2AB1, 0x001E}).has_value()) << "second 60";
}

TEST(UtcOfLocal, IsWithinADayOfUtc) {
    const std::optional<Moment> moment = utcOfLocal({0x2AB1, 0x8BDD});  // 2001-05-17 17:30:58
    ASSERT_TRUE(moment.has_value());
    EXPECT_LE(std::abs(moment->seconds - 990120658), 14 * 3600);
    EXPECT_EQ(moment->seconds % 60, 58);
}

TEST(LastWriteTime, IsThatOfTheFile) {
    const std::filesystem::path name = std::filesystem::temp_directory_path() / "tovarex-written";
    EXPECT_FALSE(lastWriteTime(name).has_value());
    std::ofstream(name) << "x";
    const std::optional<Moment> first = lastWriteTime(name);
    ASSERT_TRUE(first.has_value());
    const auto time = std::filesystem::last_write_time(name);
    std::filesystem::last_write_time(name, time - std::chrono::hours(1000));
    const std::optional<Moment> second = lastWriteTime(name);
    std::filesystem::remove(name);
    ASSERT_TRUE(second.has_value());
    EXPECT_EQ(first->seconds - second->seconds, 3'600'000);
}

#if !defined(_WIN32)
/// The time zone of the process, for one test.
class TimeZone {
public:
    explicit TimeZone(const char* zone) {
        if (const char* old = std::getenv("TZ")) {
            old_ = old;
        }
        set(zone);
    }
    ~TimeZone() { old_.has_value() ? set(old_->c_str()) : (unsetenv("TZ"), tzset()); }

private:
    static void set(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }
    std::optional<std::string> old_;
};

TEST(UtcOfLocal, KnowsTheZone) {
    const TimeZone tokyo("JST-9");
    EXPECT_EQ(utcOfLocal({0x2AB1, 0x8BDD})->seconds, 990120658 - 9 * 3600);
}

TEST(UtcOfLocal, KnowsSummerTime) {
    const TimeZone berlin("CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_EQ(utcOfLocal({0x2AB1, 0x8BDD})->seconds, 990120658 - 2 * 3600);
    EXPECT_EQ(utcOfLocal({0x2A31, 0x8BDD})->seconds, 979752658 - 3600);  // 2001-01-17 17:30:58
}
#endif

}  // namespace
}  // namespace archiver
