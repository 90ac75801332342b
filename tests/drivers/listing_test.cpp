#include <gtest/gtest.h>

#include "drivers/fakes/driver_fixture.h"

namespace tovar {
namespace {

using test::dosDate;
using test::dosTime;
using test::LibraryMember;

class Listing : public testing::Test, protected test::DriverFixture {};

TEST_F(Listing, WalksTheArchiveFromOpenToClose) {
    library.members = {{.name = "a.txt"}, {.name = "b.txt"}};
    driver.setHWnd(owner);
    EXPECT_EQ(driver.SetArcFile(LR"(C:\x.zip)"), 2U);
    EXPECT_EQ(library.calls,
              (Calls{LR"(openArchive C:\x.zip 0)", L"findFirst *.*", L"findNext", L"findNext", L"closeArchive"}));
    EXPECT_EQ(library.owners, (std::vector<WindowHandle>{owner}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(Listing, KnowsWhetherItCameToTheEnd) {
    library.members = {{.name = "a"}};
    EXPECT_FALSE(driver.listingComplete()) << "there is none yet";
    ASSERT_EQ(driver.SetArcFile(L"a.zip"), 1U);
    EXPECT_TRUE(driver.listingComplete());
    library.endCode = 0x8017;
    ASSERT_EQ(driver.SetArcFile(L"a.zip"), 1U);
    EXPECT_FALSE(driver.listingComplete());
    library.members.clear();
    library.endCode = -1;
    ASSERT_EQ(driver.SetArcFile(L"empty.zip"), 0U);
    EXPECT_TRUE(driver.listingComplete());
    library.opens = false;
    ASSERT_EQ(driver.SetArcFile(L"none.zip"), 0U);
    EXPECT_FALSE(driver.listingComplete());
}

TEST_F(Listing, GivesTheTenFieldsOfAMember) {
    library.members = {{.name = "dir/sub/file.txt",
                        .original = 1'234'567,
                        .packed = 524'691,
                        .crc = 0x1A2B3C4D,
                        .ratio = 425,
                        .date = dosDate(2001, 5, 17),
                        .time = dosTime(17, 30, 29),
                        .attribute = "a--w",
                        .mode = "Deflate"}};
    ASSERT_EQ(driver.SetArcFile(L"x.zip"), 1U);
    EXPECT_EQ(driver.FileName(0), L"file.txt");
    EXPECT_EQ(driver.FilePath(0), LR"(dir\sub\)");
    EXPECT_EQ(driver.FileOriginal(0), L"1,234,567");
    EXPECT_EQ(driver.FilePacked(0), L"524,691");
    EXPECT_EQ(driver.FileRatio(0), L"42.5%");
    EXPECT_EQ(driver.FileDate(0), L"01/05/17");
    EXPECT_EQ(driver.FILETIME(0), L"17:30:29");
    EXPECT_EQ(driver.FileAttr(0), L"a--w");
    EXPECT_EQ(driver.FileType(0), L"Deflate");
    EXPECT_EQ(driver.FileCRC(0), L"3C4D");
    EXPECT_EQ(driver.calendarDate(0)->year, 2001);
    EXPECT_EQ(driver.calendarDate(0)->day, 17);
    EXPECT_EQ(driver.clockTime(0)->hour, 17);
}

TEST_F(Listing, FollowsTheRegionalSettings) {
    library.members = {
        {.name = "a", .original = 1'234'567, .ratio = 425, .date = dosDate(2001, 5, 17), .time = dosTime(17, 30, 29)}};
    regional.groupSeparator = L".";
    regional.decimalSeparator = L",";
    regional.dateSeparator = L"-";
    regional.timeSeparator = L".";
    driver.SetArcFile(L"x.zip");
    EXPECT_EQ(driver.FileOriginal(0), L"1.234.567");
    EXPECT_EQ(driver.FileRatio(0), L"42,5%");
    EXPECT_EQ(driver.FileDate(0), L"01-05-17");
    EXPECT_EQ(driver.FILETIME(0), L"17:30:29") << "its colons do not follow";
}

TEST_F(Listing, ShowsNothingForASizeOfZero) {
    library.members = {{.name = "empty"}};
    driver.SetArcFile(L"x.zip");
    EXPECT_EQ(driver.FileOriginal(0), L"");
    EXPECT_EQ(driver.FilePacked(0), L"");
    EXPECT_EQ(driver.FileRatio(0), L"0.0%");
}

TEST_F(Listing, ReadsADateThatIsNoneAsItIsStored) {
    library.members = {{.name = "a"}, {.name = "b", .date = dosDate(1999, 13, 1), .time = dosTime(31, 63, 31)}};
    driver.SetArcFile(L"x.zip");
    EXPECT_EQ(driver.FileDate(0), L"80-00-00");
    EXPECT_EQ(driver.FILETIME(0), L"00:00:00");
    EXPECT_FALSE(driver.calendarDate(0));
    EXPECT_TRUE(driver.clockTime(0));
    EXPECT_EQ(driver.FileDate(1), L"99-13-01");
    EXPECT_EQ(driver.FILETIME(1), L"31:63:31");
    EXPECT_FALSE(driver.calendarDate(1));
    EXPECT_FALSE(driver.clockTime(1));
}

TEST_F(Listing, ReadsARatioAbove32767AsNegative) {
    library.members = {{.name = "a", .ratio = 32767}, {.name = "b", .ratio = 32768}, {.name = "c", .ratio = 65535}};
    driver.SetArcFile(L"x.zip");
    EXPECT_EQ(driver.FileRatio(0), L"3276.7%");
    EXPECT_EQ(driver.FileRatio(1), L"-3276.8%");
    EXPECT_EQ(driver.FileRatio(2), L"-0.1%");
}

TEST_F(Listing, CutsTheCrcToFourDigits) {
    library.members = {{.name = "a", .crc = 0x0000ABCD}, {.name = "b", .crc = 0x12}, {.name = "c", .crc = 0x1A2B3C4D}};
    driver.SetArcFile(L"x.zip");
    EXPECT_EQ(driver.FileCRC(0), L"ABCD");
    EXPECT_EQ(driver.FileCRC(1), L"0012");
    EXPECT_EQ(driver.FileCRC(2), L"3C4D");
}

TEST_F(Listing, EndsTextsWithoutANulAtTheirField) {
    library.members = {{.name = std::string(600, 'n'), .attribute = "attribute", .mode = "methods!"}};
    ASSERT_EQ(driver.SetArcFile(L"x.zip"), 1U);
    EXPECT_EQ(driver.FileName(0), std::wstring(513, L'n'));
    EXPECT_EQ(driver.FileAttr(0), L"attribut");
    EXPECT_EQ(driver.FileType(0), L"methods!");
}

TEST_F(Listing, KeepsAttributesAndMethodsApartFromMemberToMember) {
    library.members = {{.name = "1", .attribute = "a--w", .mode = "Stored"},
                       {.name = "2", .attribute = "d--w", .mode = "Stored"},
                       {.name = "3", .attribute = "", .mode = "Deflate"},
                       {.name = "4", .attribute = "a--w", .mode = ""}};
    driver.SetArcFile(L"x.zip");
    EXPECT_EQ(driver.FileAttr(0), L"a--w");
    EXPECT_EQ(driver.FileAttr(1), L"d--w");
    EXPECT_EQ(driver.FileAttr(2), L"");
    EXPECT_EQ(driver.FileAttr(3), L"a--w");
    EXPECT_EQ(driver.FileType(1), L"Stored");
    EXPECT_EQ(driver.FileType(2), L"Deflate");
    EXPECT_EQ(driver.FileType(3), L"");
}

TEST_F(Listing, TakesSizesFromThe64BitQueries) {
    library.members = {{.name = "big", .original = 0xFFFFFFFF, .packed = 0xFFFFFFFF}, {.name = "small", .original = 3}};
    library.has64BitSizes = true;
    library.originals64 = {5'368'709'120, 3};
    library.packed64 = {4'294'967'296, 2};
    driver.SetArcFile(L"x.zip");
    EXPECT_EQ(driver.FileOriginal(0), L"5,368,709,120");
    EXPECT_EQ(driver.FilePacked(0), L"4,294,967,296");
    EXPECT_EQ(driver.FileOriginal(1), L"3");
    EXPECT_EQ(driver.FilePacked(1), L"2");
}

TEST_F(Listing, TakesSizesFromTheRecordWithout64BitQueries) {
    library.members = {{.name = "big", .original = 4'294'967'295, .packed = 2'147'483'648}};
    driver.SetArcFile(L"x.zip");
    EXPECT_EQ(driver.FileOriginal(0), L"4,294,967,295");
    EXPECT_EQ(driver.FilePacked(0), L"2,147,483,648");
}

TEST_F(Listing, KeepsAFolderMemberWithItsPathAndNoName) {
    library.members = {{.name = "dir/"}, {.name = "dir/file"}};
    EXPECT_EQ(driver.SetArcFile(L"x.zip"), 2U);
    EXPECT_EQ(driver.FileName(0), L"");
    EXPECT_EQ(driver.FilePath(0), LR"(dir\)");
    EXPECT_EQ(driver.FilePath(1), LR"(dir\)");
}

TEST_F(Listing, IsEmptyWithoutAMessageForAnEmptyArchive) {
    EXPECT_EQ(driver.SetArcFile(L"x.zip"), 0U);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(library.calls, (Calls{L"openArchive x.zip 0", L"findFirst *.*", L"closeArchive"}));
}

TEST_F(Listing, TellsOfAnArchiveThatCannotBeOpened) {
    library.opens = false;
    driver.setHWnd(owner);
    EXPECT_EQ(driver.SetArcFile(LR"(C:\bad one.zip)"), 0U);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, LR"(Can not open 'C:\bad one.zip' (corrupted archive) !)");
    EXPECT_EQ(messages.shown[0].title, L"Some Message");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(messages.shown[0].owner, owner);
    EXPECT_EQ(library.calls, (Calls{LR"(openArchive C:\bad one.zip 0)"}));
}

TEST_F(Listing, KeepsWhatWasReadBeforeAnError) {
    library.members = {{.name = "a"}, {.name = "b"}};
    library.endCode = 0x8017;
    EXPECT_EQ(driver.SetArcFile(L"x.zip"), 2U);
    EXPECT_EQ(driver.FileName(1), L"b");
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(driver.ReturnCode(), 0);
    EXPECT_EQ(library.calls.back(), L"closeArchive");
}

TEST_F(Listing, IsTheSameTheSecondTime) {
    library.members = {{.name = "a", .original = 1}, {.name = "d/b", .original = 2}};
    EXPECT_EQ(driver.SetArcFile(L"x.zip"), 2U);
    EXPECT_EQ(driver.SetArcFile(L"x.zip"), 2U);
    EXPECT_EQ(driver.entries().size(), 2U);
    EXPECT_EQ(driver.FileName(0), L"a");
    EXPECT_EQ(driver.FileName(1), L"b");
    EXPECT_EQ(driver.FilePath(1), LR"(d\)");
}

TEST_F(Listing, IsEmptiedByAnArchiveThatCannotBeOpened) {
    library.members = {{.name = "a"}};
    driver.SetArcFile(L"x.zip");
    library.opens = false;
    EXPECT_EQ(driver.SetArcFile(L"y.zip"), 0U);
    EXPECT_EQ(driver.entries().size(), 0U);
    EXPECT_THROW(static_cast<void>(driver.FileName(0)), std::out_of_range);
}

TEST_F(Listing, RefusesIndexesOutside) {
    library.members = {{.name = "a"}};
    driver.SetArcFile(L"x.zip");
    EXPECT_THROW(static_cast<void>(driver.FileName(1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(driver.FilePath(1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(driver.FileOriginal(1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(driver.FilePacked(1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(driver.FileRatio(1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(driver.FileDate(1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(driver.FILETIME(1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(driver.FileAttr(1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(driver.FileType(1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(driver.FileCRC(0xFFFFFFFF)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(driver.calendarDate(1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(driver.clockTime(1)), std::out_of_range);
}

TEST_F(Listing, CountsBeyond16Bits) {
    library.members.assign(70'000, LibraryMember{.name = "d/x"});
    library.members.back().name = "last";
    EXPECT_EQ(driver.SetArcFile(L"x.zip"), 70'000U);
    EXPECT_EQ(driver.FileName(69'999), L"last");
}

TEST_F(Listing, KeepsWhatWasReadWhenMemoryRunsOut) {
    library.members.assign(10, LibraryMember{.name = "x"});
    library.decodesUntilNoMemory = 2 + 3;  // attributes and method of the first, names of three
    EXPECT_EQ(driver.SetArcFile(L"x.zip"), 3U);
    EXPECT_EQ(driver.entries().size(), 3U);
    EXPECT_EQ(library.calls.back(), L"closeArchive");
    EXPECT_TRUE(messages.shown.empty());
}

/// Counts breaths; work is wanted for as many.
class FakeBreather final : public Breather {
public:
    std::uint32_t begun = 0, breaths = 0, wanted = 1'000'000;

    void begin() override { ++begun; }
    [[nodiscard]] bool breathe() override { return ++breaths <= wanted; }
};

TEST_F(Listing, StopsForBreathAfterEach128Members) {
    library.members.assign(1000, LibraryMember{.name = "x"});
    FakeBreather breather;
    driver.setBreather(&breather);
    EXPECT_EQ(driver.SetArcFile(L"x.zip"), 1000U);
    EXPECT_EQ(breather.begun, 1U);
    EXPECT_EQ(breather.breaths, 7U);
    EXPECT_TRUE(driver.listingComplete());
    driver.setBreather(nullptr);
    EXPECT_EQ(driver.SetArcFile(L"x.zip"), 1000U);
    EXPECT_EQ(breather.breaths, 7U);
}

TEST_F(Listing, EndsWhenItIsNoLongerWanted) {
    library.members.assign(1000, LibraryMember{.name = "x"});
    FakeBreather breather;
    breather.wanted = 1;
    driver.setBreather(&breather);
    EXPECT_EQ(driver.SetArcFile(L"x.zip"), 256U);
    EXPECT_FALSE(driver.listingComplete());
    EXPECT_EQ(library.calls.back(), L"closeArchive");
    EXPECT_TRUE(messages.shown.empty());
}

}  // namespace
}  // namespace tovar
