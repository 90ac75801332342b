#include "win32/system/support/system_fixture.h"

namespace tovar::test {
namespace {

class RecordedNames : public SystemFixture {
protected:
    void show(recording::Texts texts, const std::string& entries) {
        libraries.recorded(L"UnZip32.dll", texts);
        session.script(entries);
        create();
        ASSERT_TRUE(open(zip));
    }

    const recording::Session session;
    const std::wstring zip = writeFile(folder, L"some.zip", "whatever");
};

TEST_F(RecordedNames, WithABackslashAsSecondByteAreSplitByCharacters) {
    // The bytes of U+30BD, U+8868 and U+80FD end with 0x5C in code page 932.
    show(recording::Texts::Ansi, "entry name=\\x83\\x5C.txt\nentry name=\\x95\\x5C/\\x94\\x5C.txt\n");
    if (::GetACP() == 932) {
        EXPECT_EQ(browser().names(), (Texts{L"\x8868", L"\x30BD.txt"}));
        EXPECT_EQ(browser().folders(), Texts{L"\x8868"});
        browser().openRow(0);
        EXPECT_EQ(browser().names(), Texts{L"\x80FD.txt"});
        EXPECT_EQ(browser().address(), L"some.zip\\\x8868\\");
    } else {
        // In code page 1252 the same bytes are letters with a backslash behind them.
        ASSERT_EQ(::GetACP(), 1252U);
        EXPECT_EQ(browser().names(), (Texts{L"\x0192", L"\x2022"}));
        browser().openRow(0);
        EXPECT_EQ(browser().names(), Texts{L".txt"});
        EXPECT_EQ(browser().address(), L"some.zip\\\x0192\\");
    }
}

TEST_F(RecordedNames, OutsideTheCodePageSurviveInUtf8) {
    // Japanese, Cyrillic, German and a character beyond 16 bits.
    show(recording::Texts::Utf8,
         "entry name=\\xE8\\xA1\\xA8/\\xD0\\xAF.txt\nentry name=\\xC3\\xA4.txt\nentry name=\\xF0\\x9F\\x93\\x81.txt\n");
    EXPECT_EQ(browser().names(), (Texts{L"\x8868", L"\x00E4.txt", L"\xD83D\xDCC1.txt"}));
    EXPECT_EQ(browser().folders(), Texts{L"\x8868"});
    browser().openRow(0);
    EXPECT_EQ(browser().names(), Texts{L"\x042F.txt"});
}

TEST_F(RecordedNames, ThatAreNoUtf8AreMarked) {
    show(recording::Texts::Utf8, "entry name=a\\xFF.txt\nentry name=a\\xC3.txt\nentry name=good.txt\n");
    EXPECT_EQ(browser().names(), (Texts{L"a\xFFFD.txt", L"a\xFFFD.txt", L"good.txt"}));
}

TEST_F(RecordedNames, OfArchivesGoToTheLibraryInItsEncoding) {
    libraries.recorded(L"UnZip32.dll", recording::Texts::Utf8);
    create();
    const std::wstring file = writeFile(folder, L"\x8868\x00E4.zip", "whatever");
    session.clearLog();
    EXPECT_EQ(kindOf(file), 16);
    ASSERT_EQ(session.log().size(), 3U);
    EXPECT_TRUE(session.log()[1].ends_with("\\x5C\\xE8\\xA1\\xA8\\xC3\\xA4.zip\" 0")) << session.log()[1];
}

TEST_F(RecordedNames, OfArchivesOutsideTheCodePageGoAsShortNames) {
    libraries.recorded(L"UnZip32.dll", recording::Texts::Ansi);
    create();
    const std::wstring file = writeFile(folder, L"\x0E01 and \x05D0.zip", "whatever");  // Thai and Hebrew
    wchar_t shortPath[MAX_PATH] = L"";
    ASSERT_NE(::GetShortPathNameW(file.c_str(), shortPath, MAX_PATH), 0U);
    const std::wstring shortName = std::filesystem::path(shortPath).filename().native();
    session.clearLog();
    EXPECT_EQ(kindOf(file), 16);
    ASSERT_EQ(session.log().size(), 1U);
    const std::string narrow(shortName.begin(), shortName.end());
    EXPECT_TRUE(session.log()[0].ends_with("\\x5C" + narrow + "\" 0")) << session.log()[0];
    EXPECT_EQ(session.log()[0].find('?'), std::string::npos) << "no best fit, no default character";
}

}  // namespace
}  // namespace tovar::test
