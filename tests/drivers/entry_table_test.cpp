#include "drivers/entry_table.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace tovar {
namespace {

struct SplitCase {
    const char* name;
    std::wstring_view stored, path, member;
};

class StoredName : public testing::TestWithParam<SplitCase> {};

TEST_P(StoredName, IsSplitIntoPathAndName) {
    EntryTable table;
    table.add({}, GetParam().stored, L"", L"");
    EXPECT_EQ(table.path(0), GetParam().path);
    EXPECT_EQ(table.name(0), GetParam().member);
}

INSTANTIATE_TEST_SUITE_P(
    Names, StoredName,
    testing::Values(SplitCase{"WithoutFolder", L"file.txt", LR"(\)", L"file.txt"},
                    SplitCase{"Slashes", L"dir/sub/file.txt", LR"(dir\sub\)", L"file.txt"},
                    SplitCase{"Backslashes", LR"(dir\sub\file.txt)", LR"(dir\sub\)", L"file.txt"},
                    SplitCase{"BothSeparators", LR"(a/b\c/d)", LR"(a\b\c\)", L"d"},
                    SplitCase{"LeadingSlash", L"/file.txt", LR"(\)", L"file.txt"},
                    SplitCase{"LeadingSlashAndFolder", L"/dir/file.txt", LR"(\dir\)", L"file.txt"},
                    SplitCase{"DoubledSeparator", L"dir//file.txt", LR"(dir\)", L"file.txt"},
                    SplitCase{"DoubledSeparatorInside", L"a//b/file.txt", LR"(a\\b\)", L"file.txt"},
                    SplitCase{"FolderMember", L"dir/sub/", LR"(dir\sub\)", L""},
                    SplitCase{"SeparatorAlone", L"/", LR"(\)", L""},
                    SplitCase{"DriveAndName", L"C:file.txt", LR"(\)", L"file.txt"},
                    SplitCase{"DriveRoot", L"C:/file.txt", LR"(C:\)", L"file.txt"},
                    SplitCase{"ColonInName", L"dir/a:b", LR"(dir\a:\)", L"b"},
                    SplitCase{"ParentFolder", L"../file.txt", LR"(..\)", L"file.txt"},
                    SplitCase{"Empty", L"", LR"(\)", L""},
                    SplitCase{"OutsideAscii", L"\x65E5\x672C/\x8868.txt", L"\x65E5\x672C\\", L"\x8868.txt"},
                    SplitCase{"BlanksStay", L" dir / name ", L" dir \\", L" name "}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(EntryTable, KeepsEachFieldOfEachEntry) {
    EntryTable table;
    table.add({.original = 5'000'000'000, .packed = 7, .crc = 0x1A2B3C4D, .ratio = -1, .date = 2, .time = 3}, L"a/x",
              L"a--w", L"Deflate");
    table.add({.original = 1, .packed = 0xFFFFFFFFFFFFFFFF, .crc = 4, .ratio = 1000, .date = 5, .time = 6}, L"y",
              L"d--w", L"Stored");
    ASSERT_EQ(table.size(), 2U);
    EXPECT_EQ(table.record(0).original, 5'000'000'000U);
    EXPECT_EQ(table.record(0).packed, 7U);
    EXPECT_EQ(table.record(0).crc, 0x1A2B3C4DU);
    EXPECT_EQ(table.record(0).ratio, -1);
    EXPECT_EQ(table.record(0).date, 2);
    EXPECT_EQ(table.record(0).time, 3);
    EXPECT_EQ(table.name(0), L"x");
    EXPECT_EQ(table.attributes(0), L"a--w");
    EXPECT_EQ(table.type(0), L"Deflate");
    EXPECT_EQ(table.record(1).packed, 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(table.record(1).ratio, 1000);
    EXPECT_EQ(table.name(1), L"y");
    EXPECT_EQ(table.attributes(1), L"d--w");
    EXPECT_EQ(table.type(1), L"Stored");
}

TEST(EntryTable, NumbersFoldersInTheOrderOfTheirFirstMember) {
    EntryTable table;
    for (const wchar_t* stored : {L"b/1", L"a/2", L"b/3", L"4", L"a\\5"}) table.add({}, stored, L"", L"");
    ASSERT_EQ(table.folderCount(), 3U);
    EXPECT_EQ(table.folderPath(0), LR"(b\)");
    EXPECT_EQ(table.folderPath(1), LR"(a\)");
    EXPECT_EQ(table.folderPath(2), LR"(\)");
    EXPECT_EQ(table.folder(0), 0U);
    EXPECT_EQ(table.folder(1), 1U);
    EXPECT_EQ(table.folder(2), 0U);
    EXPECT_EQ(table.folder(3), 2U);
    EXPECT_EQ(table.folder(4), 1U);
}

TEST(EntryTable, RefusesIndexesOutside) {
    EntryTable table;
    EXPECT_THROW(static_cast<void>(table.name(0)), std::out_of_range);
    table.add({}, L"x", L"", L"");
    for (const std::uint32_t index : {1U, 0xFFFFFFFFU}) {
        EXPECT_THROW(static_cast<void>(table.record(index)), std::out_of_range);
        EXPECT_THROW(static_cast<void>(table.name(index)), std::out_of_range);
        EXPECT_THROW(static_cast<void>(table.path(index)), std::out_of_range);
        EXPECT_THROW(static_cast<void>(table.attributes(index)), std::out_of_range);
        EXPECT_THROW(static_cast<void>(table.type(index)), std::out_of_range);
        EXPECT_THROW(static_cast<void>(table.folder(index)), std::out_of_range);
        EXPECT_THROW(static_cast<void>(table.folderPath(index)), std::out_of_range);
    }
}

TEST(EntryTable, StartsAnewAfterClear) {
    EntryTable table;
    table.add({}, L"old/1", L"a", L"b");
    table.add({}, L"older/2", L"c", L"d");
    table.clear();
    EXPECT_EQ(table.size(), 0U);
    EXPECT_EQ(table.folderCount(), 0U);
    table.add({}, L"new/3", L"e", L"f");
    ASSERT_EQ(table.size(), 1U);
    EXPECT_EQ(table.path(0), LR"(new\)");
    EXPECT_EQ(table.name(0), L"3");
    EXPECT_EQ(table.attributes(0), L"e");
    EXPECT_EQ(table.type(0), L"f");
}

// A hostile archive can give every member a method of its own: more than a 16-bit number tells apart.
TEST(EntryTable, KeepsMoreThan65536DifferentMethodTexts) {
    constexpr std::uint32_t kMany = 70'000;
    EntryTable table;
    for (std::uint32_t number = 0; number < kMany; ++number) {
        table.add({}, L"x", L"a--w", L"m" + std::to_wstring(number));
    }
    ASSERT_EQ(table.size(), kMany);
    EXPECT_EQ(table.type(0), L"m0");
    EXPECT_EQ(table.type(65'536), L"m65536");
    EXPECT_EQ(table.type(69'999), L"m69999");
    EXPECT_EQ(table.attributes(69'999), L"a--w");
}

TEST(EntryTable, KeepsAFolderForEachOfManyMembers) {
    constexpr std::uint32_t kMany = 100'000;
    EntryTable table;
    for (std::uint32_t number = 0; number < kMany; ++number) {
        table.add({}, L"f" + std::to_wstring(number) + L"/x", L"", L"");
    }
    ASSERT_EQ(table.folderCount(), kMany);
    EXPECT_EQ(table.path(0), LR"(f0\)");
    EXPECT_EQ(table.path(99'999), LR"(f99999\)");
}

TEST(EntryTable, KeepsNamesOf32000Characters) {
    const std::wstring longName(32'000, L'n');
    const std::wstring longFolder(32'000, L'f');
    EntryTable table;
    table.add({}, longFolder + L'/' + longName, L"", L"");
    EXPECT_EQ(table.name(0), longName);
    EXPECT_EQ(table.path(0), longFolder + L'\\');
}

// Names lie in memory in two forms, which take turns here.
TEST(EntryTable, GivesBackEveryNameAsItWas) {
    const std::wstring names[] = {L"",
                                  L"plain.txt",
                                  std::wstring(L"nul\0inside", 10),
                                  L"\u00E9t\u00E9 \u00FF.txt",
                                  L"\u0100",
                                  L"\u65E5\u672C.txt",
                                  L"\x80\x9F\xA0",
                                  std::wstring(1, static_cast<wchar_t>(0xD83D)),
                                  std::wstring(L"half ") + static_cast<wchar_t>(0xDE00) + L".txt",
                                  L"\U0001F600",
                                  L"\uFFFE\uFFFF",
                                  std::wstring(1000, L'\u00FF'),
                                  std::wstring(1000, L'\u0100'),
                                  L"last"};
    EntryTable table;
    for (const std::wstring& name : names) table.add({}, L"d/" + name, L"a", L"b");
    for (std::uint32_t index = 0; index < std::size(names); ++index) {
        EXPECT_EQ(std::wstring(table.name(index)), names[index]) << index;
        EXPECT_EQ(table.path(index), L"d\\") << index;
        EXPECT_EQ(table.type(index), L"b") << index;
    }
    EXPECT_TRUE(table.name(3).isPlain());
    EXPECT_FALSE(table.name(4).isPlain());
}

TEST(EntryTable, KeepsNamesOfLargeMembersInBothForms) {
    EntryTable table;
    table.add({.original = 5'000'000'000}, L"plain", L"", L"");
    table.add({.original = 6'000'000'000}, L"\u65E5", L"", L"");
    EXPECT_EQ(std::wstring(table.name(0)), L"plain");
    EXPECT_EQ(std::wstring(table.name(1)), L"\u65E5");
    EXPECT_EQ(table.record(0).original, 5'000'000'000U);
    EXPECT_EQ(table.record(1).original, 6'000'000'000U);
}

}  // namespace
}  // namespace tovar
