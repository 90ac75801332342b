#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "browser/contents_list.h"
#include "browser/fakes/fake_driver.h"
#include "browser/fakes/fake_file_types.h"
#include "shell/breather.h"

// What archives hold that nobody expects, in the folder model and in the list.
namespace tovar::test {
namespace {

using Texts = std::vector<std::wstring>;

class UnusualMembers : public testing::Test {
protected:
    void show(const std::vector<Member>& members, std::wstring_view key = L"\\") {
        driver_.members = members;
        driver_.SetArcFile(L"a.zip");
        folders_.build(L"a.zip", driver_.entries());
        list_.show(folders_.find(key).value());
    }
    [[nodiscard]] Texts names() const {
        Texts names;
        for (std::uint32_t row = 0; row < list_.rowCount(); ++row) names.push_back(list_.text(row, 0));
        return names;
    }

    FakeDriver driver_;
    FakeFileTypes desktop_;
    FolderModel folders_;
    ContentsList list_{driver_, folders_, desktop_, {}};
};

TEST_F(UnusualMembers, AnEmptyNameIsNoRow) {
    show({{L""}, {L"a/"}, {L"b"}});
    EXPECT_EQ(names(), (Texts{L"a", L"b"}));
}

TEST_F(UnusualMembers, NamesOfSeparatorsOnlyAddNothing) {
    show({{L"/"}, {L"\\"}, {L"//"}, {L"\\/\\"}, {L"b"}});
    EXPECT_EQ(names(), Texts{L"b"});
    EXPECT_EQ(folders_.size(), 1U);
}

TEST_F(UnusualMembers, NamesOf300CharactersAreWhole) {
    const std::wstring one(300, L'n');
    const std::wstring other = one.substr(1) + L'm';
    show({{one + L'/' + one}, {one}, {other}});
    EXPECT_EQ(names(), (Texts{one, one, other}));
    list_.sortBy(0);
    EXPECT_EQ(names(), (Texts{one, other, one}));  // files first; "m" comes before "n"
    EXPECT_EQ(folders_.key(1), L'\\' + one + L'\\');
}

TEST_F(UnusualMembers, RightToLeftAndCombiningCharactersStayAsTheyAre) {
    const std::wstring hebrew = L"\u05E9\u05DC\u05D5\u05DD.txt", arabic = L"\u0645\u0644\u0641";
    const std::wstring composed = L"\u00E9", combining = L"e\u0301", turned = L"\u202Egpj.exe";
    show({{arabic + L'/' + hebrew}, {hebrew}, {combining}, {composed}, {turned}});
    EXPECT_EQ(names(), (Texts{arabic, hebrew, combining, composed, turned}));
    list_.sortBy(0);
    list_.sortBy(0);
    EXPECT_EQ(names(), (Texts{arabic, combining, composed, hebrew, turned}));  // by their characters' numbers
    EXPECT_EQ(list_.findName(L"e\u0301", 0), 1U);
    EXPECT_EQ(list_.findName(L"\u00C9", 0), 2U);
}

TEST_F(UnusualMembers, TwoMembersOfOneNameAreTwoRows) {
    show({{.storedName = L"same", .original = 1}, {.storedName = L"same", .original = 2}});
    EXPECT_EQ(names(), (Texts{L"same", L"same"}));
    EXPECT_EQ(list_.entryAt(0), 0U);
    EXPECT_EQ(list_.entryAt(1), 1U);
    for (int click = 0; click < 2; ++click) {
        list_.sortBy(0);
        EXPECT_EQ(list_.entryAt(0), 0U);
        EXPECT_EQ(list_.entryAt(1), 1U);
    }
}

TEST_F(UnusualMembers, AFileThatIsAlsoAFolderIsBoth) {
    show({{L"both"}, {L"both/inside"}});
    EXPECT_EQ(names(), (Texts{L"both", L"both"}));
    EXPECT_TRUE(list_.folderAt(0));
    EXPECT_EQ(list_.entryAt(1), 0U);
    list_.show(*list_.folderAt(0));
    EXPECT_EQ(names(), Texts{L"inside"});
}

TEST_F(UnusualMembers, FiftyThousandFoldersAreSortedAsOneBlock) {
    std::vector<Member> members{{L"file"}};
    for (int number = 0; number < 50'000; ++number) members.push_back({std::to_wstring(number * 7 % 50'000) + L"/x"});
    show(members);
    ASSERT_EQ(list_.rowCount(), 50'001U);
    EXPECT_EQ(list_.text(0, 0), L"0");
    EXPECT_EQ(list_.text(1, 0), L"7");
    list_.sortBy(0);
    EXPECT_EQ(list_.text(0, 0), L"file");
    EXPECT_EQ(list_.text(1, 0), L"9999");
    EXPECT_EQ(list_.text(2, 0), L"9998");
    EXPECT_EQ(list_.text(50'000, 0), L"0");
    // Above "49999" stand the file and, for each figure from 5 to 9, its numbers of one to four figures.
    EXPECT_EQ(list_.findName(L"4999", 0), 1U + 5U * 1111U);
}

/// Counts portions of work.
class CountingBreather final : public Breather {
public:
    std::uint32_t breaths = 0;
    void begin() override {}
    [[nodiscard]] bool breathe() override {
        ++breaths;
        return true;
    }
};

TEST_F(UnusualMembers, DepthCostsNothingForMembersThatShareAFolder) {
    constexpr std::uint32_t kLevels = 2000, kMembers = 20'000;
    std::wstring path;
    for (std::uint32_t level = 0; level < kLevels; ++level) path += L"d/";
    EntryTable table;
    for (std::uint32_t member = 0; member < kMembers; ++member) table.add({}, path + L'f', L"", L"");
    CountingBreather breather;
    FolderModel folders;
    folders.build(L"a.zip", table, &breather);
    EXPECT_EQ(folders.size(), kLevels + 1);
    EXPECT_EQ(folders.files(kLevels).size(), kMembers);
    EXPECT_EQ(breather.breaths, (kLevels + 2 * kMembers) / PacedWork::kPortion);
}

TEST_F(UnusualMembers, EachLevelMayHoldMembers) {
    std::vector<Member> members;
    std::wstring path, key = L"\\";
    for (int level = 0; level < 300; ++level) {
        members.push_back({path + L"file"});
        path += L"d/";
        key += L"d\\";
    }
    show(members, key.substr(0, key.size() - 2));
    EXPECT_EQ(names(), Texts{L"file"});
    list_.show(FolderModel::kRoot);
    EXPECT_EQ(names(), (Texts{L"d", L"file"}));
}

}  // namespace
}  // namespace tovar::test
