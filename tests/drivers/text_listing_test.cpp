#include "drivers/text_listing.h"

#include <gtest/gtest.h>

#include "drivers/fakes/driver_fixture.h"
#include "drivers/un_zip.h"

namespace tovar {
namespace {

const std::string kHeading =
    "  Name          Original    Packed  Ratio   Date     Time   Attr Method   CRC-32\n"
    "--------------  --------  -------- ------ -------- -------- ---- -------- --------\n";
const std::string kEnd =
    "--------------  --------  -------- ------ -------- --------\n"
    "     8 files      135455     84539   37.6%\n";
const std::string kRow = "testunrar.rar      62459     61989   1.3% 98-03-06  13:50:34 a--w Deflate bb161e23\n";

class UnZipText : public testing::Test, protected test::DriverFixture {
protected:
    UnZipText() { library.versionAnswer = 79; }
    std::uint32_t list(const std::string& output) {
        library.written = output;
        return zip.SetArcFile(L"C:\\a b.zip");
    }
    cUnZip zip{library, messages, regional};
};

struct VersionCase {
    std::uint16_t version;
    bool text;
};
class UnZipVersion : public testing::TestWithParam<VersionCase>, protected test::DriverFixture {};
TEST_P(UnZipVersion, DecidesHowIsListed) {
    cUnZip zip(library, messages, regional);
    library.versionAnswer = GetParam().version;
    library.members = {{.name = "function"}};
    library.written = kHeading + kRow + kEnd;
    ASSERT_EQ(zip.SetArcFile(L"a.zip"), 1U);
    EXPECT_EQ(zip.FileName(0), GetParam().text ? L"testunrar.rar" : L"function");
    EXPECT_TRUE(zip.listingComplete());
    if (GetParam().text) {
        EXPECT_EQ(library.calls, (Calls{L"version", L"run -l a.zip"}));
    } else {
        EXPECT_EQ(library.calls,
                  (Calls{L"version", L"openArchive a.zip 0", L"findFirst *.*", L"findNext", L"closeArchive"}));
    }
}
INSTANTIATE_TEST_SUITE_P(Versions, UnZipVersion,
                         testing::Values(VersionCase{78, true}, VersionCase{79, true}, VersionCase{80, false},
                                         VersionCase{540, false}),
                         [](const auto& each) {
                             return std::string("Version").append(std::to_string(each.param.version));
                         });

TEST_F(UnZipText, GivesEachFieldAsTheTextSaysIt) {
    ASSERT_EQ(list(kHeading + kRow + kEnd), 1U);
    EXPECT_EQ(library.calls, (Calls{L"version", L"run -l C:\\a b.zip"})) << "the name is not quoted";
    EXPECT_EQ(zip.FileName(0), L"testunrar.rar");
    EXPECT_EQ(zip.FilePath(0), L"\\");
    EXPECT_EQ(zip.FileOriginal(0), L"62459");
    EXPECT_EQ(zip.FilePacked(0), L"61989");
    EXPECT_EQ(zip.FileRatio(0), L"1.3%");
    EXPECT_EQ(zip.FileDate(0), L"98/03/06");
    EXPECT_EQ(zip.FILETIME(0), L"13:50:34");
    EXPECT_EQ(zip.FileAttr(0), L"a--w");
    EXPECT_EQ(zip.FileType(0), L"Deflate");
    EXPECT_EQ(zip.FileCRC(0), L"bb161e23");
    EXPECT_TRUE(zip.listingComplete());
}

TEST_F(UnZipText, KeepsTheNumbersThatTheTextSpells) {
    ASSERT_EQ(list(kHeading + kRow + kEnd), 1U);
    const EntryRecord& record = zip.entries().record(0);
    EXPECT_EQ(record.original, 62459U);
    EXPECT_EQ(record.packed, 61989U);
    EXPECT_EQ(record.ratio, 13);
    EXPECT_EQ(record.crc, 0xBB161E23U);
    const auto date = zip.calendarDate(0);
    ASSERT_TRUE(date);
    EXPECT_EQ(date->year, 1998);
    EXPECT_EQ(date->month, 3);
    EXPECT_EQ(date->day, 6);
    const auto time = zip.clockTime(0);
    ASSERT_TRUE(time);
    EXPECT_EQ(time->hour, 13);
    EXPECT_EQ(time->minute, 50);
    EXPECT_EQ(time->second, 17) << "in steps of two seconds";
}

TEST_F(UnZipText, SplitsNamesAndPaths) {
    const std::string rest = "  1  1 0.0% 01-05-17 17:30:58 a--w Stored 00000000\n";
    ASSERT_EQ(list(kHeading + "dir/sub/file.txt" + rest + "  my  long name.txt  " + rest + "dir\\a b" + rest + kEnd),
              3U);
    EXPECT_EQ(zip.FileName(0), L"file.txt");
    EXPECT_EQ(zip.FilePath(0), L"dir\\sub\\");
    EXPECT_EQ(zip.FileName(1), L"my  long name.txt");
    EXPECT_EQ(zip.FilePath(1), L"\\");
    EXPECT_EQ(zip.FileName(2), L"a b");
    EXPECT_EQ(zip.FilePath(2), L"dir\\");
}

TEST_F(UnZipText, TakesLinesThatEndWithCrLf) {
    std::string text;
    for (const char each : kHeading + kRow + kEnd) {
        if (each == '\n') text.push_back('\r');
        text.push_back(each);
    }
    ASSERT_EQ(list(text), 1U);
    EXPECT_EQ(zip.FileCRC(0), L"bb161e23");
}

TEST_F(UnZipText, ListsAtMost256Lines) {
    std::string text = kHeading;
    for (int row = 0; row < 300; ++row)
        text.append("m").append(std::to_string(row)).append(" 1 1 0.0% 01-05-17 17:30:58 a--w X 0\n");
    ASSERT_EQ(list(text + kEnd), 256U);
    EXPECT_EQ(zip.FileName(255), L"m255");
    EXPECT_FALSE(zip.listingComplete());
}

TEST_F(UnZipText, IsCompleteWith256Members) {
    std::string text = kHeading;
    for (int row = 0; row < 256; ++row) text += "m 1 1 0.0% 01-05-17 17:30:58 a--w X 0\n";
    ASSERT_EQ(list(text + kEnd), 256U);
    EXPECT_TRUE(zip.listingComplete());
}

TEST_F(UnZipText, StopsAtFourteenHyphensAndNotAtThirteen) {
    ASSERT_EQ(list(kHeading + "------------- 1 1 0.0% 01-05-17 17:30:58 a--w X 0\n" + "--------------\n" + kRow), 1U);
    EXPECT_EQ(zip.FileName(0), L"-------------");
    EXPECT_TRUE(zip.listingComplete());
}

TEST_F(UnZipText, PassesOverLinesThatAreTooShort) {
    ASSERT_EQ(
        list(kHeading + "\n   \nno member\n62459 61989 1.3% 98-03-06 13:50:34 a--w Deflate bb161e23\n" + kRow + kEnd),
        1U)
        << "eight columns leave no name";
    EXPECT_EQ(zip.FileName(0), L"testunrar.rar");
}

TEST_F(UnZipText, IsEmptyWithoutLines) {
    EXPECT_EQ(list(""), 0U) << "the buffer of NULs and its mark";
    EXPECT_FALSE(zip.listingComplete());
    EXPECT_EQ(list("one line"), 0U);
    EXPECT_EQ(list(kHeading), 0U);
    EXPECT_FALSE(zip.listingComplete());
    EXPECT_EQ(list(kHeading + kEnd), 0U);
    EXPECT_TRUE(zip.listingComplete());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(UnZipText, ReplacesAnEarlierListing) {
    ASSERT_EQ(list(kHeading + kRow + kRow + kEnd), 2U);
    ASSERT_EQ(list(kHeading + kRow + kEnd), 1U);
    EXPECT_THROW(static_cast<void>(zip.FileOriginal(1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(zip.FileDate(1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(zip.FileName(1)), std::out_of_range);
    library.versionAnswer = 80;
    library.members = {{.name = "a", .original = 1000}};
    ASSERT_EQ(zip.SetArcFile(L"a.zip"), 1U);
    EXPECT_EQ(zip.FileOriginal(0), L"1,000") << "nothing of the text is left";
}

TEST_F(UnZipText, TellsOfAnArchiveThatCannotBeListed) {
    library.runAnswer = 0x8017;
    zip.setHWnd(owner);
    EXPECT_EQ(list(kHeading + kRow + kEnd), 0U);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, L"Can not open 'C:\\a b.zip' (corrupted archive) !");
    EXPECT_EQ(messages.shown[0].title, L"ZIP Message");
    EXPECT_FALSE(zip.listingComplete());
}

TEST_F(UnZipText, KeepsWhatIsNoDateAsItStands) {
    ASSERT_EQ(list(kHeading + "a x y z xx-03-06 noon a--w X nothex\n" + kEnd), 1U);
    EXPECT_EQ(zip.FileDate(0), L"xx-03-06");
    EXPECT_EQ(zip.FILETIME(0), L"noon");
    EXPECT_EQ(zip.FileOriginal(0), L"x");
    EXPECT_EQ(zip.entries().record(0).original, 0U);
    EXPECT_EQ(zip.entries().record(0).crc, 0U);
    EXPECT_FALSE(zip.calendarDate(0));
}

struct DateCase {
    const char* name;
    std::wstring_view text;
    std::optional<std::uint16_t> word;
};
class TextDate : public testing::TestWithParam<DateCase> {};
TEST_P(TextDate, BecomesADateWord) { EXPECT_EQ(dosDateOfText(GetParam().text), GetParam().word); }
INSTANTIATE_TEST_SUITE_P(
    Texts, TextDate,
    testing::Values(DateCase{"LastCentury", L"98-03-06", 0x2466}, DateCase{"First", L"80-01-01", 0x0021},
                    DateCase{"ThisCentury", L"01-05-17", 0x2AB1}, DateCase{"FullYear", L"2001-05-17", 0x2AB1},
                    DateCase{"From1900", L"101-05-17", 0x2AB1}, DateCase{"Slashes", L"01/05/17", 0x2AB1},
                    DateCase{"Last", L"2107-12-31", 0xFF9F}, DateCase{"TooLate", L"2108-01-01", std::nullopt},
                    DateCase{"TooEarly", L"1979-12-31", std::nullopt}, DateCase{"Empty", L"", std::nullopt},
                    DateCase{"TwoParts", L"01-05", std::nullopt}, DateCase{"FourParts", L"01-05-17-1", std::nullopt},
                    DateCase{"EmptyPart", L"01--17", std::nullopt}, DateCase{"Letters", L"01-May-17", std::nullopt},
                    DateCase{"LongPart", L"00001-05-17", std::nullopt}, DateCase{"Day32", L"01-05-32", std::nullopt}),
    [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace tovar
