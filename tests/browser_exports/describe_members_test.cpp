// What targets that take streams are told of members.

#include "browser/dragged_members.h"
#include "browser_exports/export_fixture.h"

namespace tovar {
namespace {

using Paths = std::vector<std::wstring>;

class DescribeMembers : public test::ExportFixture {
protected:
    std::vector<DescribedMember> describe(std::wstring_view key, const std::vector<ArchiveMember>& members) {
        return describeMembers(scene(key), members, [](const CalendarDate& date, const ClockTime& time) {
            return static_cast<std::uint64_t>(date.year * 10000 + date.month * 100 + date.day) * 1'000'000 +
                   static_cast<std::uint64_t>(time.hour * 10000 + time.minute * 100 + time.second);
        });
    }
    Paths paths(std::wstring_view key, const std::vector<ArchiveMember>& members) {
        Paths found;
        for (const DescribedMember& each : describe(key, members)) {
            found.push_back(each.descriptor.path + (each.descriptor.folder ? L"\\" : L""));
        }
        return found;
    }
};

TEST_F(DescribeMembers, ByNameSizeAndTime) {
    // 2001-05-17, 17:30:58
    library.members = {{.name = "docs/a.txt", .original = 1234, .date = 0x2AB1, .time = 0x8BDD}};
    list<cUnZip>({});
    EXPECT_EQ(describe(L"\\docs\\", {file(0)}),
              (std::vector<DescribedMember>{
                  {.descriptor = {.path = L"a.txt", .folder = false, .size = 1234, .writeTime = 20010517'173058},
                   .member = L"docs\\a.txt"}}));
}

TEST_F(DescribeMembers, WithoutATimeWhereTheArchiveHasNone) {
    library.members = {{.name = "a.txt", .date = 0, .time = 0}};
    list<cUnZip>({});
    EXPECT_EQ(describe(L"\\", {file(0)})[0].descriptor.writeTime, 0U);
}

TEST_F(DescribeMembers, FoldersBeforeWhatLiesInThem) {
    list<cUnZip>({"docs/sub/deep/1", "docs/2", "docs/other/3", "4"});
    EXPECT_EQ(paths(L"\\", {folder(L"\\docs\\"), file(3)}),
              (Paths{L"docs\\", L"docs\\2", L"docs\\sub\\", L"docs\\sub\\deep\\", L"docs\\sub\\deep\\1",
                     L"docs\\other\\", L"docs\\other\\3", L"4"}));
}

TEST_F(DescribeMembers, FromTheFolderShown) {
    list<cUnZip>({"docs/sub/1", "docs/2"});
    EXPECT_EQ(paths(L"\\docs\\", {folder(L"\\docs\\sub\\"), file(1)}), (Paths{L"sub\\", L"sub\\1", L"2"}));
}

TEST_F(DescribeMembers, NoneThatCouldLeadElsewhere) {
    list<cUnZip>({"../up", "ok/..", "ok/con", "ok/a:b", "ok/fine", "ok/dot."});
    EXPECT_EQ(paths(L"\\", {folder(L"\\..\\"), folder(L"\\ok\\")}), (Paths{L"ok\\", L"ok\\fine"}));
}

TEST_F(DescribeMembers, OfOneNameOnce) {
    library.members = {{.name = "a.txt", .original = 1}, {.name = "A.TXT", .original = 2}};
    list<cUnZip>({});
    const auto described = describe(L"\\", {file(0), file(1)});
    ASSERT_EQ(described.size(), 1U);
    EXPECT_EQ(described[0].descriptor.size, 2U);
    EXPECT_EQ(described[0].member, L"A.TXT");
}

TEST_F(DescribeMembers, OfUnusualNames) {
    list<cUnTar>({"@list", "-x", "a b,c", "d/-e/@f"});
    EXPECT_EQ(paths(L"\\", {file(0), file(1), file(2), folder(L"\\d\\")}),
              (Paths{L"@list", L"-x", L"a b,c", L"d\\", L"d\\-e\\", L"d\\-e\\@f"}));
}

TEST_F(DescribeMembers, NoMoreThanCanBeDescribed) {
    std::vector<std::string> names;
    for (int each = 0; each < 100'010; ++each) names.push_back("d/" + std::to_string(each));
    list<cUnZip>(names);
    EXPECT_EQ(describe(L"\\", {folder(L"\\d\\")}).size(), kMostDescriptors + 1);
}

}  // namespace
}  // namespace tovar
