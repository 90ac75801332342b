#include "win32/system/support/system_fixture.h"

namespace tovar::test {
namespace {

/// What the browser shows of what a library tells.
class RecordedListing : public SystemFixture {
protected:
    RecordedListing() {
        libraries.recorded(L"UnZip32.dll", recording::Texts::Utf8);
        libraries.recorded(L"Tar32.dll", recording::Texts::Ansi);
    }
    void show(const std::string& script) { show(script, zip); }
    void show(const std::string& script, const std::wstring& file) {
        session.script(script);
        create();
        ASSERT_TRUE(open(file));
        ASSERT_TRUE(browser().isVisible());
    }
    static std::wstring separator(LCTYPE which) {
        wchar_t text[8] = L"";
        ::GetLocaleInfoW(LOCALE_USER_DEFAULT, which, text, 8);
        return text;
    }

    const recording::Session session;
    const std::wstring zip = writeFile(folder, L"some.zip", "21 bytes of no matter");
    const std::wstring tar = writeFile(folder, L"some.tar", "whatever");
};

TEST_F(RecordedListing, ShowsWhatTheLibraryTells) {
    show(
        "entry name=docs/deep/inner.txt\n"
        "entry name=readme.txt original=1234567 packed=345678 crc=0x1A2B3C4D ratio=280 date=0x2AB1 time=0x8BDD "
        "attribute=a--w mode=Deflate\n");
    EXPECT_EQ(browser().title(), L"some.zip");
    EXPECT_EQ(browser().headers(), (Texts{L"Name", L"Original (Bytes)", L"Packed (Bytes)", L"Ratio", L"File Type",
                                          L"Modified", L"Attr", L"Type", L"CRC32"}));
    EXPECT_EQ(browser().folders(), Texts{L"docs"});
    EXPECT_EQ(browser().selectedFolder(), L"some.zip");
    EXPECT_EQ(browser().address(), L"some.zip\\");
    EXPECT_EQ(browser().names(), (Texts{L"docs", L"readme.txt"}));
    const std::wstring group = separator(LOCALE_STHOUSAND);
    EXPECT_EQ(browser().cell(1, 1), (L"   1" + group + L"234" + group + L"567").substr(2));
    EXPECT_EQ(browser().cell(1, 2), L"   345" + group + L"678");
    EXPECT_EQ(browser().cell(1, 3), L" 28" + separator(LOCALE_SDECIMAL) + L"0%");
    EXPECT_EQ(browser().cell(1, 6), L"a--w");
    EXPECT_EQ(browser().cell(1, 7), L"Deflate");
    EXPECT_EQ(browser().cell(1, 8), L"3C4D");
    EXPECT_EQ(browser().cell(0, 1), L"") << "a folder has no size";
    EXPECT_TRUE(browser().status().starts_with(L"Archive has 2 files 21 Bytes "))
        << "got " << testing::PrintToString(browser().status());
    browser().openRow(0);
    EXPECT_EQ(browser().names(), Texts{L"deep"});
    browser().openRow(0);
    EXPECT_EQ(browser().names(), Texts{L"inner.txt"});
    EXPECT_EQ(browser().address(), L"some.zip\\docs\\deep\\");
    EXPECT_EQ(browser().selectedFolder(), L"deep");
}

TEST_F(RecordedListing, LeavesColumnsOutForTars) {
    show("entry name=a.txt original=5 crc=0x12 mode=stored\n", tar);
    EXPECT_EQ(browser().headers(), (Texts{L"Name", L"Original (Bytes)", L"File Type", L"Modified", L"Type", L"CRC"}));
    EXPECT_EQ(browser().cell(0, 0), L"a.txt");
    EXPECT_EQ(browser().cell(0, 1), L"         5");
    EXPECT_EQ(browser().cell(0, 4), L"stored");
    EXPECT_EQ(browser().cell(0, 5), L"0012");
}

TEST_F(RecordedListing, WarnsWhenTheArchiveDoesNotOpenAndStaysEmpty) {
    session.script("handle 0");
    create();
    ASSERT_TRUE(open(zip)) << "the check was passed";
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, L"Can not open '" + zip + L"' (corrupted archive) !");
    EXPECT_EQ(boxes.seen[0].title, L"ZIP Message");
    EXPECT_TRUE(boxes.seen[0].exclamation);
    EXPECT_EQ(boxes.seen[0].owner, host.window());
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
    EXPECT_TRUE(busy());
    EXPECT_TRUE(browser().isVisible());
    EXPECT_EQ(browser().rowCount(), 0);
    EXPECT_EQ(browser().folders(), Texts{});
    EXPECT_TRUE(browser().status().starts_with(L"Archive has 0 files 21 Bytes "));
    browser().close();
    EXPECT_FALSE(busy());
}

TEST_F(RecordedListing, WarnsUnderTheKindsOwnTitle) {
    session.script("handle 0");
    create();
    ASSERT_TRUE(open(tar));
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, L"Can not open '" + tar + L"' (corrupted archive) !");
    EXPECT_EQ(boxes.seen[0].title, L"TAR Message");
}

TEST_F(RecordedListing, SurvivesAHostThatGoesWhileTheWarningIsShown) {
    session.script("handle 0");
    create();
    boxes.whileUp = [this] { host.destroy(); };
    EXPECT_FALSE(open(zip));
    EXPECT_EQ(boxes.seen.size(), 1U);
    EXPECT_FALSE(busy());
    EXPECT_TRUE(topLevelBrowsers().empty());
}

TEST_F(RecordedListing, SurvivesItsUserClosingTheBrowserWhileTheWarningIsShown) {
    session.script("handle 0");
    create();
    boxes.whileUp = [this] { browser().close(); };
    EXPECT_FALSE(open(zip));
    EXPECT_FALSE(busy());
    EXPECT_FALSE(browser().isThere());
    boxes.whileUp = nullptr;
    session.script("entry name=a.txt");
    EXPECT_TRUE(open(zip));
    EXPECT_EQ(browser().names(), Texts{L"a.txt"});
}

TEST_F(RecordedListing, ShowsNothingOfAnEmptyArchiveAndSaysNothing) {
    show("end 0x8019");
    EXPECT_TRUE(boxes.seen.empty());
    EXPECT_EQ(browser().rowCount(), 0);
    EXPECT_TRUE(browser().status().starts_with(L"Archive has 0 files 21 Bytes "));
}

TEST_F(RecordedListing, KeepsWhatCameBeforeAnError) {
    show("entry name=a.txt\nentry name=b.txt\nerror 0x8017\nentry name=never.txt\n");
    EXPECT_TRUE(boxes.seen.empty());
    EXPECT_EQ(browser().names(), (Texts{L"a.txt", L"b.txt"}));
    EXPECT_TRUE(browser().status().starts_with(L"Archive has 2 files 21 Bytes "));
    EXPECT_TRUE(session.log().back().starts_with("UnZipSetUnicodeMode 0"));
    EXPECT_TRUE(session.log()[session.log().size() - 2].starts_with("UnZipCloseArchive ")) << "closed all the same";
}

TEST_F(RecordedListing, ReadsFieldsWithoutANulToTheirEnd) {
    const std::string longName(513, 'n');
    show("entry name=" + longName + " attribute=abcdefgh mode=12345678 original=3\nentry name=after.txt mode=ok\n");
    ASSERT_EQ(browser().rowCount(), 2);
    EXPECT_EQ(browser().cell(0, 0), std::wstring(513, L'n'));
    EXPECT_EQ(browser().cell(0, 6), L"abcdefgh");
    EXPECT_EQ(browser().cell(0, 7), L"12345678");
    EXPECT_EQ(browser().row(1)[0], L"after.txt");
    EXPECT_EQ(browser().row(1)[6], L"");
    EXPECT_EQ(browser().row(1)[7], L"ok");
}

TEST_F(RecordedListing, TakesRatiosAboveTheirRangeAsNegative) {
    show("entry name=limit ratio=32767\nentry name=above ratio=32768\nentry name=most ratio=65535\n");
    const std::wstring point = separator(LOCALE_SDECIMAL);
    // The last six characters of "3276.7%", "-3276.8%" and "-0.1%" behind six blanks.
    EXPECT_EQ(browser().cell(0, 3), L"276" + point + L"7%");
    EXPECT_EQ(browser().cell(1, 3), L"276" + point + L"8%");
    EXPECT_EQ(browser().cell(2, 3), L" -0" + point + L"1%");
}

TEST_F(RecordedListing, ShowsDatesThatAreNoneAsTheyAreStored) {
    // Months and days begin with 1: 2001-00-17, 2001-05-00 and 1980-00-00; the last is in month 15.
    show(
        "entry name=month date=0x2A11 time=0x8BDD\nentry name=day date=0x2AA0 time=0x8BDD\n"
        "entry name=none date=0 time=0\nentry name=much date=0x2BF1 time=0xFFFF\n");
    const std::wstring colon = separator(LOCALE_STIME);
    EXPECT_EQ(browser().cell(0, 5), L"101-00-17 17" + colon + L"30");
    EXPECT_EQ(browser().cell(1, 5), L"101-05-00 17" + colon + L"30");
    EXPECT_EQ(browser().cell(2, 5), L"80-00-00 00" + colon + L"00");
    EXPECT_EQ(browser().cell(3, 5), L"101-15-17 31:63:31");
}

TEST_F(RecordedListing, TakesSizesBeyondTheRecordFromTheLargerQuery) {
    show("entry name=large original=0xFFFFFFFF packed=0xFFFFFFFF original64=5000000000 packed64=4294967296\n");
    std::wstring original = L"5?000?000?000", packed = L"4?294?967?296";
    for (wchar_t& each : original) each = each == L'?' ? separator(LOCALE_STHOUSAND)[0] : each;
    for (wchar_t& each : packed) each = each == L'?' ? separator(LOCALE_STHOUSAND)[0] : each;
    // The cell holds the last ten characters.
    EXPECT_EQ(browser().cell(0, 1), original.substr(3));
    EXPECT_EQ(browser().cell(0, 2), packed.substr(3));
}

TEST_F(RecordedListing, PutsOddPathsWhereTheyBelong) {
    show(
        "entry name=\nentry name=/\nentry name=//x//y.txt\nentry name=C:\\\\windows\\\\z.txt\n"
        "entry name=../../up.txt\nentry name=d/\n");
    const ShownBrowser shown = browser();
    EXPECT_TRUE(shown.status().starts_with(L"Archive has 6 files "));
    EXPECT_EQ(shown.folders(), (Texts{L"x", L"C:", L"..", L"d"}));
}

}  // namespace
}  // namespace tovar::test
