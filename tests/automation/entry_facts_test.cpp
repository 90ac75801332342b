#include "front/automation/entry_facts.h"

#include <gtest/gtest.h>

#include "browser/fakes/fake_driver.h"

namespace tovar {
namespace {

struct EntryCase {
    const char* name;
    test::Member member;
    std::wstring path, last;
    bool folder;
};
class EntryFacts : public testing::TestWithParam<EntryCase> {};

TEST_P(EntryFacts, NameTheEntry) {
    test::FakeDriver driver;
    driver.members = {GetParam().member};
    driver.SetArcFile(L"a.zip");
    EXPECT_EQ(entryPath(driver, 0), GetParam().path);
    EXPECT_EQ(entryName(driver, 0), GetParam().last);
    EXPECT_EQ(entryIsFolder(driver, 0), GetParam().folder);
    EXPECT_THROW(static_cast<void>(entryPath(driver, 1)), std::out_of_range);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, EntryFacts,
    testing::Values(
        EntryCase{"InTheRoot", {.storedName = L"a.txt"}, L"a.txt", L"a.txt", false},
        EntryCase{"InFolders", {.storedName = L"docs/old/a b.txt"}, L"docs\\old\\a b.txt", L"a b.txt", false},
        EntryCase{"Folder", {.storedName = L"docs/old/"}, L"docs\\old\\", L"old", true},
        EntryCase{
            "FolderWithoutMark", {.storedName = L"docs/old", .attributes = L"d--w"}, L"docs\\old\\", L"old", true}),
    [](const auto& each) { return std::string(each.param.name); });

std::optional<double> dateOf(std::uint16_t date, std::uint16_t time) {
    test::FakeDriver driver;
    driver.members = {{.storedName = L"a", .date = date, .time = time}};
    driver.SetArcFile(L"a.zip");
    return entryDate(driver, 0);
}

// 2001-05-17 is day 37028 of spreadsheets, which count like automation does from 1900-03-01 on.
TEST(EntryDate, CountsDaysAndTheirParts) {
    const std::uint16_t day = (2001 - 1980) << 9 | 5 << 5 | 17;
    EXPECT_EQ(dateOf(day, 0), 37028.0);
    EXPECT_EQ(dateOf(day, 12 << 11), 37028.5);
    EXPECT_EQ(dateOf(day, 18 << 11 | 0 << 5 | 0), 37028.75);
    EXPECT_NEAR(dateOf(day, 23 << 11 | 59 << 5 | 29).value_or(0), 37028.99998, 0.000005);
    EXPECT_EQ(dateOf(0 << 9 | 1 << 5 | 1, 0), 29221.0) << "1980-01-01";
}

TEST(EntryDate, IsMissingWhereThereIsNoDay) {
    EXPECT_EQ(dateOf(0, 0), std::nullopt);
    EXPECT_EQ(dateOf(21 << 9 | 13 << 5 | 1, 0), std::nullopt) << "month 13";
    EXPECT_EQ(dateOf(21 << 9 | 2 << 5 | 30, 0), std::nullopt) << "30 February";
}

TEST(EntryDate, IsMidnightWhereThereIsNoTime) { EXPECT_EQ(dateOf(21 << 9 | 5 << 5 | 17, 24 << 11), 37028.0); }

}  // namespace
}  // namespace tovar
