// Names on their way to and from a library that knows the ANSI code page only, and to one that knows UTF-8. The program
// runs in a process of code page 1252 and again in one of 932; other pages' tests pass themselves over.

#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>

#include "drivers/archiver_libraries.h"
#include "drivers/common_driver.h"
#include "recording/session.h"
#include "shell/fakes/fake_message_boxes.h"
#include "shell/win32/ansi_codec.h"
#include "shell/win32/windows_file_system.h"
#include "shell/win32/windows_system_paths.h"

namespace tovar {
namespace {

using recording::Texts;

class CodePage : public testing::Test {
protected:
    explicit CodePage(UINT codePage = CP_ACP) : ansi(codePage) {}

    CommonDriver& drive(Texts texts) {
        recording::Session::install(session.folder(), description.library, texts);
        driver_ = std::make_unique<CommonDriver>(description, libraries.getOrMissing(description), messages, regional);
        return *driver_;
    }

    /// What came over as the archive's name.
    [[nodiscard]] std::string openedName() const {
        for (const std::string& call : session.log()) {
            const std::size_t start = call.find('"');
            if (call.starts_with("UnZipOpenArchive")) return call.substr(start + 1, call.rfind('"') - start - 1);
        }
        return "nothing was opened";
    }

    const DriverDescription description{
        .library = L"CodePage32.dll", .prefix = "UnZip", .messageTitle = L"Some Message"};
    recording::Session session;
    WindowsSystemPaths paths;
    WindowsFileSystem files;
    std::unique_ptr<LibraryFolders> folders = systemLibraryFolders();
    LibraryFinder finder{paths, files, *folders, session.folder().wstring()};
    std::unique_ptr<ModuleLoader> loader = systemModuleLoader();
    AnsiCodec ansi;
    ArchiverLibraries libraries{*loader, finder, ansi, paths};
    test::FakeMessageBoxes messages;
    RegionalSettings regional;

private:
    std::unique_ptr<CommonDriver> driver_;
};

class Utf8CodePage : public CodePage {
protected:
    Utf8CodePage() : CodePage(CP_UTF8) {}
};

TEST_F(CodePage, DoesNotMatterToALibraryThatKnowsUtf8) {
    session.script("entry name=\\xE8\\xA1\\xA8/\\xC3\\xA4\\xF0\\x9F\\x98\\x80.txt\n");
    CommonDriver& driver = drive(Texts::Utf8);
    ASSERT_EQ(driver.SetArcFile(L"\x8868\xE4.zip"), 1U);
    EXPECT_EQ(openedName(), R"(\xE8\xA1\xA8\xC3\xA4.zip)");
    EXPECT_EQ(driver.FilePath(0), L"\x8868\\");
    EXPECT_EQ(driver.FileName(0), L"\xE4\xD83D\xDE00.txt");
}

TEST_F(CodePage, Western) {
    if (::GetACP() != 1252) GTEST_SKIP() << "the process has code page " << ::GetACP();
    session.script("entry name=\\x80\\xE4.txt\n");
    CommonDriver& driver = drive(Texts::Ansi);
    ASSERT_EQ(driver.SetArcFile(L"\x20AC\xE4.zip"), 1U);
    EXPECT_EQ(openedName(), R"(\x80\xE4.zip)");
    EXPECT_EQ(driver.FileName(0), L"\x20AC\xE4.txt");
}

TEST_F(CodePage, WesternHasNoLookAlikes) {
    if (::GetACP() != 1252) GTEST_SKIP() << "the process has code page " << ::GetACP();
    CommonDriver& driver = drive(Texts::Ansi);
    // Best fit would make a "\" of the first, an "A" of the second and a "?" of the third.
    for (const wchar_t* name : {L"C:\\a\x2216..\x2216"
                                L"b.zip",
                                L"C:\\\xFF21.zip", L"C:\\\x8868.zip"}) {
        session.clearLog();
        EXPECT_EQ(driver.SetArcFile(name), 0U);
        EXPECT_EQ(openedName(), "nothing was opened");
        EXPECT_EQ(messages.shown.back().text, L"Can not open '" + std::wstring(name) + L"' (corrupted archive) !");
    }
}

TEST_F(CodePage, WesternNamesOtherFilesByTheirShortPath) {
    if (::GetACP() != 1252) GTEST_SKIP() << "the process has code page " << ::GetACP();
    const auto archive = session.folder() / L"\x8868.zip";
    std::ofstream(archive) << "an archive";
    session.script("entry name=a\n");
    ASSERT_EQ(drive(Texts::Ansi).SetArcFile(archive.wstring()), 1U);
    const std::string name = openedName();
    ASSERT_TRUE(name.ends_with(".ZIP") || name.ends_with(".zip")) << name;
    EXPECT_EQ(name.find("\\x8"), std::string::npos) << name;
    EXPECT_NE(name.find('~'), std::string::npos) << name;
}

TEST_F(CodePage, Japanese) {
    if (::GetACP() != 932) GTEST_SKIP() << "the process has code page " << ::GetACP();
    session.script("entry name=\\x95\\x5C/\\x83\\x5C\\x83\\x74\\x83\\x67.txt\nentry name=\\x94\\x5C\n");
    CommonDriver& driver = drive(Texts::Ansi);
    ASSERT_EQ(driver.SetArcFile(L"C:\\\x8868\\\x8868.zip"), 2U);
    EXPECT_EQ(openedName(), R"(C:\x5C\x95\x5C\x5C\x95\x5C.zip)");
    EXPECT_EQ(driver.FilePath(0), L"\x8868\\");
    EXPECT_EQ(driver.FileName(0), L"\x30BD\x30D5\x30C8.txt");
    EXPECT_EQ(driver.FilePath(1), L"\\");
    EXPECT_EQ(driver.FileName(1), L"\x80FD");
}

TEST_F(CodePage, JapaneseHasNoLookAlikes) {
    if (::GetACP() != 932) GTEST_SKIP() << "the process has code page " << ::GetACP();
    EXPECT_EQ(drive(Texts::Ansi).SetArcFile(L"C:\\\xE4.zip"), 0U);
    EXPECT_EQ(openedName(), "nothing was opened");
}

TEST_F(Utf8CodePage, HoldsEveryName) {
    session.script("entry name=\\xE8\\xA1\\xA8/\\xC3\\xA4.txt\nentry name=\\xE4.txt\n");
    CommonDriver& driver = drive(Texts::Ansi);
    ASSERT_EQ(driver.SetArcFile(L"\x8868\xE4.zip"), 2U);
    EXPECT_EQ(openedName(), R"(\xE8\xA1\xA8\xC3\xA4.zip)");
    EXPECT_EQ(driver.FilePath(0), L"\x8868\\");
    EXPECT_EQ(driver.FileName(0), L"\xE4.txt");
    EXPECT_EQ(driver.FileName(1), L"\xFFFD.txt") << "no character of UTF-8";
}

}  // namespace
}  // namespace tovar
