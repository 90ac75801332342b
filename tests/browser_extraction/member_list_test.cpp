#include "browser/member_list.h"

#include <gtest/gtest.h>

#include "browser/fakes/fake_driver.h"

namespace tovar {
namespace {

class MemberListTest : public testing::Test {
protected:
    void list(const std::vector<std::wstring>& storedNames) {
        driver = std::make_unique<test::FakeDriver>(storedNames);
        driver->SetArcFile(archive);
        folders.build(L"a.zip", driver->entries());
    }
    [[nodiscard]] ArchiveScene scene() const { return {nullptr, *driver, archive, folders, FolderModel::kRoot}; }
    [[nodiscard]] ArchiveMember folder(std::wstring_view key) const { return {.folder = folders.find(key).value()}; }
    [[nodiscard]] static ArchiveMember file(std::uint32_t entry) { return {.folder = {}, .entry = entry}; }

    std::unique_ptr<test::FakeDriver> driver;
    const std::wstring archive = LR"(C:\a.zip)";
    FolderModel folders;
};

TEST_F(MemberListTest, HasALineForEachRowInItsOrder) {
    list({L"docs/one.txt", L"two.txt", L"docs/sub/three.txt"});
    EXPECT_EQ(memberListOf(scene(), {folder(L"\\docs\\"), file(1)}), L"docs/*.*\r\ntwo.txt\r\n");
    EXPECT_EQ(memberListOf(scene(), {file(2), folder(L"\\docs\\sub\\"), file(0)}),
              L"docs/sub/three.txt\r\ndocs/sub/*.*\r\ndocs/one.txt\r\n");
}

TEST_F(MemberListTest, QuotesBlanksAndCommas) {
    list({LR"(a b\c.txt)", L"x,y.txt", L"p q/r/s.txt"});
    EXPECT_EQ(memberListOf(scene(), {file(0), file(1), folder(L"\\p q\\"), folder(L"\\p q\\r\\")}),
              L"\"a b/c.txt\"\r\n\"x,y.txt\"\r\n\"p q/*.*\"\r\n\"p q/r/*.*\"\r\n");
}

TEST_F(MemberListTest, DropsOneLeadingSeparator) {
    list({L"/rooted.txt", L"/etc/passwd"});
    EXPECT_EQ(memberListOf(scene(), {file(0), file(1), folder(L"\\etc\\")}),
              L"rooted.txt\r\netc/passwd\r\netc/*.*\r\n");
}

TEST_F(MemberListTest, IsEmptyForNothing) {
    list({L"a"});
    EXPECT_EQ(memberListOf(scene(), {}), L"");
}

TEST_F(MemberListTest, KeepsEveryLetter) {
    list({L"\u8868\u793A/\u30BD.txt"});
    EXPECT_EQ(memberListOf(scene(), {file(0)}), L"\u8868\u793A/\u30BD.txt\r\n");
}

TEST_F(MemberListTest, KnowsTheKeysOfItsMembers) {
    list({L"docs/one.txt", L"two.txt"});
    EXPECT_EQ(memberPath(scene(), folder(L"\\docs\\")), LR"(\docs\)");
    EXPECT_EQ(memberPath(scene(), file(0)), LR"(docs\one.txt)");
    EXPECT_EQ(memberPath(scene(), file(1)), L"two.txt");
}

}  // namespace
}  // namespace tovar
