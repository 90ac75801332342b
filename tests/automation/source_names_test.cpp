#include "front/automation/source_names.h"

#include <gtest/gtest.h>

#include <fstream>

#include "recording/session.h"

namespace tovar {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::wstring>;

class SourceNaming : public testing::Test {
protected:
    SourceNaming() : folder(recording::makeTemporaryFolder()) {
        fs::create_directories(folder / "docs" / "deep");
        for (const char* name : {"a.txt", "docs/b.txt", "docs/deep/c.txt"}) std::ofstream(folder / name) << "x";
    }
    ~SourceNaming() override {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    /// With "/" between the parts, whatever the system.
    Words named(const Words& names) {
        result = nameSources(names, folder);
        Words forms;
        for (const std::wstring& name : result.names) forms.push_back(fs::path(name).generic_wstring());
        return forms;
    }

    fs::path folder;
    SourceNames result;
};

TEST_F(SourceNaming, NamesThemFromTheFolder) {
    EXPECT_EQ(named({L"a.txt", L"docs/b.txt", L"docs"}), (Words{L"a.txt", L"docs/b.txt", L"docs"}));
    EXPECT_EQ(result.problem, L"");
}

TEST_F(SourceNaming, DropsWhatSaysNothing) {
    EXPECT_EQ(named({L"./a.txt", L"docs/deep/../b.txt", L"docs/", L"docs//deep//"}),
              (Words{L"a.txt", L"docs/b.txt", L"docs", L"docs/deep"}));
}

TEST_F(SourceNaming, TakesWholePathsBelowIt) {
    EXPECT_EQ(named({(folder / "docs" / "b.txt").wstring()}), (Words{L"docs/b.txt"}));
}

TEST_F(SourceNaming, TakesEverythingForTheFolderItself) {
    EXPECT_EQ(named({L"."}), (Words{L"*.*"}));
    EXPECT_EQ(named({folder.wstring()}), (Words{L"*.*"}));
}

TEST_F(SourceNaming, RefusesWhatLiesElsewhere) {
    for (const std::wstring& name :
         {std::wstring(L".."), std::wstring(L"../x"), std::wstring(L"docs/../../x"), folder.parent_path().wstring()}) {
        EXPECT_EQ(named({L"a.txt", name}), (Words{L"a.txt"}));
        EXPECT_EQ(result.about, name);
        EXPECT_EQ(result.problem, L"this lies outside of the folder that names count from");
        EXPECT_FALSE(result.missing);
    }
}

TEST_F(SourceNaming, RefusesWhatIsNotThere) {
    named({L"gone.txt"});
    EXPECT_EQ(result.about, L"gone.txt");
    EXPECT_EQ(result.problem, L"there is no such file or folder");
    EXPECT_TRUE(result.missing);
}

TEST_F(SourceNaming, LeavesPatternsToTheLibrary) {
    EXPECT_EQ(named({L"*.c", L"docs/?.txt"}), (Words{L"*.c", L"docs/?.txt"}));
    EXPECT_EQ(result.problem, L"");
}

TEST_F(SourceNaming, RefusesNamesThatNoListHolds) {
    for (const wchar_t* name : {L"a\"b", L"a\nb", L"a\rb"}) {
        named({name});
        EXPECT_EQ(result.about, name);
        EXPECT_EQ(result.problem, L"the libraries cannot be told of such a name");
    }
}

TEST(SourceRows, AreQuotedWhereALineHasSeveralWords) {
    EXPECT_EQ(zipRows({L"a b.txt", L"c,d", L"e"}), L"a b.txt\r\nc,d\r\ne\r\n");
    EXPECT_EQ(listRows({L"a b.txt", L"c,d", L"e"}), L"\"a b.txt\"\r\n\"c,d\"\r\ne\r\n");
}

TEST(SourceRows, MeanAllThatLiesInAFolderOfMembers) {
    EXPECT_EQ(zipMemberRows({L"docs/", L"a.txt", L"d\\"}), L"docs/*.*\r\na.txt\r\nd\\*.*\r\n");
}

}  // namespace
}  // namespace tovar
