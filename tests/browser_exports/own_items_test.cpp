#include "browser/own_items.h"

#include "browser_exports/export_fixture.h"

namespace tovar {
namespace {

using Names = std::vector<std::wstring>;

class OwnItemsTest : public test::ExportFixture {};

TEST_F(OwnItemsTest, AreHiddenFilesUnderNamesThatNobodyGuesses) {
    const std::wstring path = items.makeFile();
    EXPECT_EQ(path, std::wstring(LR"(C:\Temp\)") + test::kFirstName);
    ASSERT_TRUE(isThere(path));
    EXPECT_EQ(shell.files.find(path)->status.attributes, attribute::kHidden);
    EXPECT_EQ(shell.files.find(path)->bytes, "");
    items.removeFile(path);
    expectClean();
}

TEST_F(OwnItemsTest, AreFoldersThatGoWithAllInThem) {
    auto made = items.makeFolder();
    EXPECT_EQ(made->path(), std::wstring(LR"(C:\Temp\)") + test::kFirstName + L'\\');
    shell.files.addFile(made->path() + LR"(a\b)");
    made.reset();
    expectClean();
}

TEST_F(OwnItemsTest, GoAtTheNextChanceWhenTheyAreInUse) {
    auto made = items.makeFolder();
    const std::wstring used = made->path() + L"used";
    shell.files.addFile(used);
    shell.files.fail(L"deleteFile", used, 32);
    made.reset();
    EXPECT_TRUE(isThere(used));
    items.removeLeftOver();
    EXPECT_TRUE(isThere(used));
    shell.files.fail(L"deleteFile", used, 0);
    items.removeLeftOver();
    expectClean();
}

TEST_F(OwnItemsTest, OfHostsThatHaveEndedGo) {
    shell.files.addFile(LR"(C:\Temp\TovarEx-000000ff-0123456789abcdef0123456789abcdef\docs\a.txt)");
    shell.files.addFile(LR"(C:\Temp\TovarEx-000000fe-0123456789abcdef0123456789abcdef)", "", attribute::kHidden);
    items.removeLeftOver();
    expectClean();
}

TEST_F(OwnItemsTest, OfHostsThatRunStay) {
    processes.others = {255};
    shell.files.addFile(LR"(C:\Temp\TovarEx-000000ff-0123456789abcdef0123456789abcdef)");
    const std::wstring own = items.makeFile();
    items.removeLeftOver();
    EXPECT_EQ(namesIn(LR"(C:\Temp)").size(), 2U);
    EXPECT_TRUE(isThere(own));
}

TEST_F(OwnItemsTest, LeavesWhatOthersHaveMade) {
    const Names others{L"TovarEx.opened", L"TovarEx-000000ff", L"TovarEx-000000ff-0123456789abcdef0123456789abcdef.txt",
                       L"TovarEx-000000ff-0123456789ABCDEF0123456789abcdeg", L"a"};
    for (const std::wstring& name : others) shell.files.addFile(LR"(C:\Temp\)" + name);
    items.removeLeftOver();
    EXPECT_EQ(namesIn(LR"(C:\Temp)"), others);
}

TEST_F(OwnItemsTest, DoesNotFollowALinkOfSuchAName) {
    shell.files.addFolder(LR"(C:\Temp\TovarEx-000000ff-0123456789abcdef0123456789abcdef)").link = true;
    items.removeLeftOver();
    EXPECT_EQ(namesIn(LR"(C:\Temp)").size(), 1U);
}

TEST_F(OwnItemsTest, CannotBeMadeWithoutAWorkFolderOrSecrets) {
    processes.hasSecrets = false;
    EXPECT_THROW(static_cast<void>(items.makeFile()), SystemError);
    EXPECT_THROW(static_cast<void>(items.makeFolder()), SystemError);
    processes.hasSecrets = true;
    shell.paths.tempFolderError = 3;
    workFolder.resetToTempFolder();
    EXPECT_THROW(static_cast<void>(items.makeFile()), SystemError);
    expectClean();
}

TEST_F(OwnItemsTest, TellWhyTheyCannotBeMade) {
    shell.files.fail(L"writeFile", std::wstring(LR"(C:\Temp\)") + test::kFirstName, 5);
    try {
        static_cast<void>(items.makeFile());
        ADD_FAILURE();
    } catch (const SystemError& error) {
        EXPECT_EQ(error.code(), 5U);
    }
}

TEST(OwnNames, AreKnown) {
    EXPECT_TRUE(OwnItems::isOwnName(L"TovarEx-000000ff-0123456789abcdef0123456789abcdef"));
    EXPECT_FALSE(OwnItems::isOwnName(L"TovarEx-000000ff-0123456789abcdef0123456789abcde"));
    EXPECT_FALSE(OwnItems::isOwnName(L"TovarEx-000000fg-0123456789abcdef0123456789abcdef"));
    EXPECT_FALSE(OwnItems::isOwnName(L"TovarEx_000000ff-0123456789abcdef0123456789abcdef"));
    EXPECT_FALSE(OwnItems::isOwnName(L""));
}

}  // namespace
}  // namespace tovar
