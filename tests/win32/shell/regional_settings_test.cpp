#include "shell/win32/regional_settings.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace tovar {
namespace {

// Sets one of the user's regional settings and puts it back.
class ChangedSetting {
public:
    ChangedSetting(LCTYPE type, const wchar_t* text) : type_(type) {
        wchar_t buffer[128] = {};
        EXPECT_GT(::GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buffer, 128), 0);
        before_ = buffer;
        EXPECT_NE(::SetLocaleInfoW(LOCALE_USER_DEFAULT, type, text), FALSE);
    }
    ~ChangedSetting() { ::SetLocaleInfoW(LOCALE_USER_DEFAULT, type_, before_.c_str()); }
    ChangedSetting(const ChangedSetting&) = delete;
    ChangedSetting& operator=(const ChangedSetting&) = delete;

private:
    LCTYPE type_;
    std::wstring before_;
};

TEST(RegionalSettings, AreTheUsersOwn) {
    const ChangedSetting group(LOCALE_STHOUSAND, L"'");
    const ChangedSetting grouping(LOCALE_SGROUPING, L"4;0");
    const ChangedSetting decimal(LOCALE_SDECIMAL, L"+");
    const ChangedSetting date(LOCALE_SSHORTDATE, L"yyyy~MM~dd");
    const RegionalSettings settings = loadRegionalSettings();
    EXPECT_EQ(settings.groupSeparator, L"'");
    EXPECT_EQ(settings.grouping, L"4;0");
    EXPECT_EQ(settings.decimalSeparator, L"+");
    EXPECT_EQ(settings.shortDate, L"yyyy~MM~dd");
    EXPECT_EQ(groupedNumber(123456789, settings), L"1'2345'6789");
    EXPECT_EQ(tenthsText(425, settings), L"42+5");
    EXPECT_EQ(shortDateText({2001, 5, 17}, settings), L"2001~05~17");
}

TEST(RegionalSettings, FollowAChange) {
    const std::wstring before = loadRegionalSettings().decimalSeparator;
    {
        const ChangedSetting decimal(LOCALE_SDECIMAL, L"^");
        EXPECT_EQ(loadRegionalSettings().decimalSeparator, L"^");
    }
    EXPECT_EQ(loadRegionalSettings().decimalSeparator, before);
}

// The system's own formatting of the same date is what users compare with.
TEST(RegionalSettings, WriteDatesAsTheSystemDoes) {
    const RegionalSettings settings = loadRegionalSettings();
    SYSTEMTIME system{};
    system.wYear = 2001;
    system.wMonth = 5;
    system.wDay = 7;
    wchar_t expected[128] = {};
    ASSERT_GT(::GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &system, nullptr, expected, 128), 0);
    EXPECT_EQ(shortDateText({2001, 5, 7}, settings), expected);
    for (const wchar_t* picture : {L"ddd d MMM yy", L"dddd, dd MMMM yyyy", L"d 'de' M yy", L"MM/dd''yyyy"}) {
        RegionalSettings pictured = settings;
        pictured.shortDate = picture;
        ASSERT_GT(::GetDateFormatW(LOCALE_USER_DEFAULT, 0, &system, picture, expected, 128), 0);
        EXPECT_EQ(shortDateText({2001, 5, 7}, pictured), expected) << picture;
    }
}

TEST(RegionalSettings, HaveTheNamesOfTheUsersLanguage) {
    const RegionalSettings settings = loadRegionalSettings();
    wchar_t expected[128] = {};
    SYSTEMTIME system{};
    system.wYear = 2001;
    system.wDay = 1;
    for (WORD month = 1; month <= 12; ++month) {
        system.wMonth = month;
        ASSERT_GT(::GetDateFormatW(LOCALE_USER_DEFAULT, 0, &system, L"MMMM", expected, 128), 0);
        EXPECT_EQ(settings.months[month - 1], expected);
    }
}

}  // namespace
}  // namespace tovar
