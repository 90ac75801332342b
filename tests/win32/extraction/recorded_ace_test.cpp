// What the ACE library is told by the extraction dialog: it has no command lines.

#include "win32/extraction/support/extraction_fixture.h"

namespace tovar::test {
namespace {

using Lines = std::vector<std::string>;

class RecordedAce : public ExtractionFixture {
protected:
    RecordedAce() {
        session.script("entry name=docs/a.txt\nentry name=a\\x20b/c.txt\nentry name=x,y.txt\n");
        libraries.recorded(L"UnAce.dll");
        create();
        EXPECT_TRUE(open(writeFile(folder, L"some.ace", "whatever")));
        session.clearLog();
    }

    /// The files that the library was asked for since the last time, below the target folder.
    Lines unpacked() {
        Lines files;
        for (const std::string& line : session.log()) {
            if (!line.starts_with("ACEProcessFile ")) continue;
            const std::size_t operation = line.find(' ', 15) + 1;
            if (line.compare(operation, 2, "2 ") != 0) continue;
            std::string file = line.substr(operation + 3, line.size() - operation - 4);
            for (std::size_t at; (at = file.find("\\x5C")) != file.npos;) file.replace(at, 4, 1, '\\');
            const std::string target = std::filesystem::path(folder.path()).string() + '\\';
            EXPECT_TRUE(file.starts_with(target)) << file;
            files.push_back(file.substr(std::min(target.size(), file.size())));
        }
        session.clearLog();
        return files;
    }
    void run(bool keeps, int scope, const std::wstring& pattern = L"") {
        extract([&](const UnpackControls& dialog) {
            EXPECT_FALSE(dialog.isEnabled(IDC_CHK_OPT));
            dialog.setCheck(IDC_CHK_OPT_KEEP_FOLDERS, keeps);
            dialog.choose(scope);
            if (!pattern.empty()) dialog.type(pattern);
            dialog.press(IDOK);
        });
        EXPECT_TRUE(boxes.seen.empty());
    }

    const recording::Session session;
};

TEST_F(RecordedAce, UnpacksAllFiles) {
    run(true, 1);
    EXPECT_EQ(unpacked(), (Lines{R"(docs\a.txt)", R"(a b\c.txt)", "x,y.txt"}));
    run(false, 1);
    EXPECT_EQ(unpacked(), (Lines{"a.txt", "c.txt", "x,y.txt"}));
}

TEST_F(RecordedAce, UnpacksFilesThatMatch) {
    run(true, 2, L"c.*");
    EXPECT_EQ(unpacked(), Lines{R"(a b\c.txt)"});
    run(false, 2, L"?.txt");
    EXPECT_EQ(unpacked(), (Lines{"a.txt", "c.txt"}));
}

TEST_F(RecordedAce, UnpacksSelectedFiles) {
    ASSERT_EQ(browser().names(), (Texts{L"docs", L"a b", L"x,y.txt"}));
    browser().selectRow(1);
    browser().selectRow(2);
    run(true, 0);
    EXPECT_EQ(unpacked(), (Lines{R"(a b\c.txt)", "x,y.txt"}));
    run(false, 0);
    EXPECT_EQ(unpacked(), (Lines{"c.txt", "x,y.txt"}));
}

}  // namespace
}  // namespace tovar::test
