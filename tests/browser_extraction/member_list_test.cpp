#include "browser/member_list.h"

#include "browser_extraction/fakes/extraction_fixture.h"

namespace tovar {
namespace {

class MemberListTest : public test::ExtractionFixture {
protected:
    void list(const std::vector<std::string>& storedNames) {
        for (const std::string& name : storedNames) library.members.push_back({.name = name});
        drive<cUnZip>().SetArcFile(archive);
        folders.build(L"a.xyz", driver->entries());
    }
    [[nodiscard]] ArchiveScene scene() const { return {nullptr, *driver, archive, folders, FolderModel::kRoot}; }
    [[nodiscard]] ArchiveMember folder(std::wstring_view key) const { return {.folder = folders.find(key).value()}; }
    [[nodiscard]] static ArchiveMember file(std::uint32_t entry) { return {.folder = {}, .entry = entry}; }

    FolderModel folders;
};

TEST_F(MemberListTest, HasALineForEachRowInItsOrder) {
    list({"docs/one.txt", "two.txt", "docs/sub/three.txt"});
    EXPECT_EQ(memberListOf(scene(), {folder(L"\\docs\\"), file(1)}), L"docs/*.*\r\ntwo.txt\r\n");
    EXPECT_EQ(memberListOf(scene(), {file(2), folder(L"\\docs\\sub\\"), file(0)}),
              L"docs/sub/three.txt\r\ndocs/sub/*.*\r\ndocs/one.txt\r\n");
}

TEST_F(MemberListTest, QuotesBlanksAndCommas) {
    list({R"(a b\c.txt)", "x,y.txt", "p q/r/s.txt"});
    EXPECT_EQ(memberListOf(scene(), {file(0), file(1), folder(L"\\p q\\"), folder(L"\\p q\\r\\")}),
              L"\"a b/c.txt\"\r\n\"x,y.txt\"\r\n\"p q/*.*\"\r\n\"p q/r/*.*\"\r\n");
}

TEST_F(MemberListTest, DropsOneLeadingSeparator) {
    list({"/rooted.txt", "/etc/passwd"});
    EXPECT_EQ(memberListOf(scene(), {file(0), file(1), folder(L"\\etc\\")}),
              L"rooted.txt\r\netc/passwd\r\netc/*.*\r\n");
}

TEST_F(MemberListTest, IsEmptyForNothing) {
    list({"a"});
    EXPECT_EQ(memberListOf(scene(), {}), L"");
}

TEST_F(MemberListTest, KeepsEveryLetter) {
    list({"\xC4\xD6/\xFC.txt"});
    EXPECT_EQ(memberListOf(scene(), {file(0)}), L"\u00C4\u00D6/\u00FC.txt\r\n");
}

TEST_F(MemberListTest, KnowsTheKeysOfItsMembers) {
    list({"docs/one.txt", "two.txt"});
    EXPECT_EQ(memberPath(scene(), folder(L"\\docs\\")), LR"(\docs\)");
    EXPECT_EQ(memberPath(scene(), file(0)), LR"(docs\one.txt)");
    EXPECT_EQ(memberPath(scene(), file(1)), L"two.txt");
}

}  // namespace
}  // namespace tovar
