#include "browser/folder_model.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tovar::test {
namespace {

class FolderModelTest : public testing::Test {
protected:
    void build(const std::vector<std::wstring>& storedNames) {
        table_.clear();
        for (const std::wstring& name : storedNames) table_.add({}, name, L"", L"");
        folders_.build(L"a.zip", table_);
    }
    [[nodiscard]] std::vector<std::wstring> keys() const {
        std::vector<std::wstring> keys;
        for (Folder folder = 0; folder < folders_.size(); ++folder) keys.push_back(folders_.key(folder));
        return keys;
    }
    [[nodiscard]] std::vector<std::wstring> childrenOf(std::wstring_view key) const {
        std::vector<std::wstring> texts;
        for (const Folder child : folders_.children(folders_.find(key).value()))
            texts.emplace_back(folders_.text(child));
        return texts;
    }
    [[nodiscard]] std::vector<std::wstring> filesOf(std::wstring_view key) const {
        std::vector<std::wstring> names;
        for (const auto entry : folders_.files(folders_.find(key).value())) names.emplace_back(table_.name(entry));
        return names;
    }

    EntryTable table_;
    FolderModel folders_;
};

using Texts = std::vector<std::wstring>;

TEST_F(FolderModelTest, IsEmptyBeforeItIsBuilt) {
    EXPECT_EQ(folders_.size(), 0U);
    EXPECT_FALSE(folders_.find(L"\\"));
    EXPECT_FALSE(folders_.findWritten(L"\\"));
}

TEST_F(FolderModelTest, HasARootNamedLikeTheArchive) {
    build({});
    EXPECT_EQ(keys(), Texts{L"\\"});
    EXPECT_EQ(folders_.text(FolderModel::kRoot), L"a.zip");
    EXPECT_FALSE(folders_.parent(FolderModel::kRoot));
    EXPECT_EQ(folders_.find(L"\\"), FolderModel::kRoot);
}

TEST_F(FolderModelTest, GivesOneNodeForAFolderThatMembersShareTheOuterOneFirst) {
    build({L"a/b/one.txt", L"a/two.txt"});
    EXPECT_EQ(keys(), (Texts{L"\\", L"\\a\\", L"\\a\\b\\"}));
    EXPECT_EQ(folders_.text(2), L"b");
    EXPECT_EQ(folders_.parent(2), 1U);
    EXPECT_EQ(folders_.parent(1), FolderModel::kRoot);
    EXPECT_EQ(filesOf(L"\\a\\"), Texts{L"two.txt"});
    EXPECT_EQ(filesOf(L"\\a\\b\\"), Texts{L"one.txt"});
}

TEST_F(FolderModelTest, AddsNoNodeForAMemberInTheRoot) {
    build({L"readme.txt"});
    EXPECT_EQ(folders_.size(), 1U);
    EXPECT_EQ(filesOf(L"\\"), Texts{L"readme.txt"});
}

TEST_F(FolderModelTest, TakesADoubledSeparatorForOne) {
    build({L"a//b/one.txt", L"a/b/two.txt", L"\\\\a\\b\\three.txt"});
    EXPECT_EQ(keys(), (Texts{L"\\", L"\\a\\", L"\\a\\b\\"}));
    EXPECT_EQ(filesOf(L"\\a\\b\\"), (Texts{L"one.txt", L"two.txt", L"three.txt"}));
}

TEST_F(FolderModelTest, AddsNothingForAPathOfSeparatorsOnly) {
    build({L"///readme.txt"});
    EXPECT_EQ(folders_.size(), 1U);
    EXPECT_EQ(filesOf(L"\\"), Texts{L"readme.txt"});
}

TEST_F(FolderModelTest, KeepsFoldersInTheOrderOfTheirFirstMember) {
    build({L"z/1", L"m/x/2", L"a/3", L"m/b/4", L"z/y/5", L"m/a/6"});
    EXPECT_EQ(childrenOf(L"\\"), (Texts{L"z", L"m", L"a"}));
    EXPECT_EQ(childrenOf(L"\\m\\"), (Texts{L"x", L"b", L"a"}));
    EXPECT_EQ(childrenOf(L"\\z\\"), Texts{L"y"});
    EXPECT_TRUE(childrenOf(L"\\a\\").empty());
}

TEST_F(FolderModelTest, TellsFoldersApartByCase) {
    build({L"Doc/1", L"doc/2"});
    EXPECT_EQ(childrenOf(L"\\"), (Texts{L"Doc", L"doc"}));
    EXPECT_EQ(filesOf(L"\\Doc\\"), Texts{L"1"});
    EXPECT_EQ(filesOf(L"\\doc\\"), Texts{L"2"});
    EXPECT_FALSE(folders_.find(L"\\DOC\\"));
}

TEST_F(FolderModelTest, TellsFoldersOfOneNameApartByTheirParent) {
    build({L"a/x/1", L"b/x/2"});
    EXPECT_EQ(filesOf(L"\\a\\x\\"), Texts{L"1"});
    EXPECT_EQ(filesOf(L"\\b\\x\\"), Texts{L"2"});
}

TEST_F(FolderModelTest, ShowsAFolderMemberAsAFolderOnly) {
    build({L"empty/", L"full/", L"full/1"});
    EXPECT_EQ(childrenOf(L"\\"), (Texts{L"empty", L"full"}));
    EXPECT_TRUE(filesOf(L"\\empty\\").empty());
    EXPECT_EQ(filesOf(L"\\full\\"), Texts{L"1"});
}

TEST_F(FolderModelTest, KeepsFilesInTheOrderOfTheListing) {
    build({L"d/c", L"x", L"d/a", L"y", L"d/b", L"x"});
    EXPECT_EQ(filesOf(L"\\d\\"), (Texts{L"c", L"a", L"b"}));
    EXPECT_EQ(filesOf(L"\\"), (Texts{L"x", L"y", L"x"}));
}

TEST_F(FolderModelTest, FindsOnlyWholeKeys) {
    build({L"a/b/1"});
    EXPECT_EQ(folders_.find(L"\\a\\b\\"), 2U);
    for (const wchar_t* key : {L"", L"a", L"\\a", L"a\\", L"\\b\\", L"\\a\\\\b\\", L"\\a\\b\\c\\", L"\\a/b\\"}) {
        EXPECT_FALSE(folders_.find(key)) << testing::PrintToString(std::wstring(key));
    }
}

TEST_F(FolderModelTest, FindsFoldersAsPeopleWriteThem) {
    build({L"Doc/1", L"doc/\u00C4rger/2", L"x/3"});
    const auto umlaut = folders_.find(L"\\doc\\\u00C4rger\\").value();
    EXPECT_EQ(folders_.findWritten(L""), FolderModel::kRoot);
    EXPECT_EQ(folders_.findWritten(L"/"), FolderModel::kRoot);
    EXPECT_EQ(folders_.findWritten(L"x"), folders_.find(L"\\x\\"));
    EXPECT_EQ(folders_.findWritten(L"/X//"), folders_.find(L"\\x\\"));
    EXPECT_EQ(folders_.findWritten(L"doc"), folders_.find(L"\\doc\\"));
    EXPECT_EQ(folders_.findWritten(L"DOC"), folders_.find(L"\\Doc\\"));
    EXPECT_EQ(folders_.findWritten(L"Doc/\u00E4RGER"), umlaut);  // the other "doc" has it
    EXPECT_FALSE(folders_.findWritten(L"doc/nothing"));
}

TEST_F(FolderModelTest, StartsAnewWhenItIsBuiltAgain) {
    build({L"a/b/1"});
    build({L"c/2"});
    EXPECT_EQ(keys(), (Texts{L"\\", L"\\c\\"}));
    EXPECT_FALSE(folders_.find(L"\\a\\"));
    folders_.clear();
    EXPECT_EQ(folders_.size(), 0U);
}

TEST_F(FolderModelTest, OutlivesTheListing) {
    build({L"a/b/1"});
    table_.clear();
    EXPECT_EQ(folders_.key(2), L"\\a\\b\\");
    EXPECT_EQ(folders_.files(2).size(), 1U);
}

TEST_F(FolderModelTest, RefusesNumbersThatAreNoFolder) {
    build({L"a/1"});
    EXPECT_THROW((void)folders_.text(2), std::out_of_range);
    EXPECT_THROW((void)folders_.key(2), std::out_of_range);
    EXPECT_THROW((void)folders_.parent(2), std::out_of_range);
    EXPECT_THROW((void)folders_.children(2), std::out_of_range);
    EXPECT_THROW((void)folders_.files(2), std::out_of_range);
}

TEST_F(FolderModelTest, HoldsFiftyThousandFoldersInOne) {
    Texts names;
    for (int i = 0; i < 50000; ++i) names.push_back(L"all/" + std::to_wstring(i) + L"/file");
    build(names);
    EXPECT_EQ(folders_.size(), 50002U);
    EXPECT_EQ(folders_.children(1).size(), 50000U);
    EXPECT_EQ(filesOf(L"\\all\\49999\\"), Texts{L"file"});
}

TEST_F(FolderModelTest, HoldsTwoThousandLevels) {
    std::wstring path, key = L"\\";
    for (int level = 0; level < 2000; ++level) {
        path += L"d/";
        key += L"d\\";
    }
    build({path + L"bottom.txt", L"top.txt"});
    EXPECT_EQ(folders_.size(), 2001U);
    EXPECT_EQ(folders_.key(2000), key);
    EXPECT_EQ(filesOf(key), Texts{L"bottom.txt"});
    EXPECT_EQ(folders_.findWritten(path), 2000U);
}

}  // namespace
}  // namespace tovar::test
