// The way from a driver to the functions of a library that is really loaded.

#include <gtest/gtest.h>

#include <fstream>

#include "drivers/archiver_libraries.h"
#include "drivers/common_driver.h"
#include "recording/session.h"
#include "shell/fakes/fake_file_system.h"
#include "shell/fakes/fake_message_boxes.h"
#include "shell/fakes/fake_system_paths.h"
#include "shell/fakes/fake_text_codec.h"

namespace tovar {
namespace {

using recording::Texts;
using Calls = std::vector<std::string>;

struct NoFolders final : LibraryFolders {
    std::vector<std::wstring> searchOrder() const override { return {}; }
};

class RecordedLibrary : public testing::Test {
protected:
    RecordedLibrary() { paths.folders[L'C'] = LR"(C:\Elsewhere)"; }

    /// A driver of the library that is installed under the description's name.
    std::unique_ptr<CommonDriver> drive(Texts texts) {
        const std::wstring file = moduleFileName(description.library);
        paths.searchable[file] = recording::Session::install(session.folder(), file, texts).wstring();
        ArchiverLibrary* const library = libraries.get(description);
        return library == nullptr ? nullptr : std::make_unique<CommonDriver>(description, *library, messages, regional);
    }

    /// The log with the archive's handle as "ARCHIVE", whatever its number.
    [[nodiscard]] Calls calls() const {
        Calls calls = session.log();
        for (std::string& call : calls) {
            if (const std::size_t at = call.find(" 0x"); at != std::string::npos) {
                call.replace(at, std::min(call.find(' ', at + 1), call.size()) - at, " ARCHIVE");
            }
        }
        return calls;
    }

    const DriverDescription description{.library = L"Unlha32.dll", .prefix = "Unlha", .messageTitle = L"Some Message"};
    recording::Session session;
    test::FakeFileSystem files;
    test::FakeSystemPaths paths{files};
    test::FakeTextCodec ansi;
    NoFolders folders;
    LibraryFinder finder{paths, files, folders, L""};
    std::unique_ptr<ModuleLoader> loader = systemModuleLoader();
    ArchiverLibraries libraries{*loader, finder, ansi, paths};
    test::FakeMessageBoxes messages;
    RegionalSettings regional;
};

TEST_F(RecordedLibrary, ListsEveryField) {
    session.script(
        "entry name=dir/sub/file.txt original=1234567 packed=524691 crc=0x1A2B3C4D ratio=425 date=0x2AB1 time=0x8BDD"
        " attribute=a--w mode=Deflate\n"
        "entry name=dir/ attribute=d--w mode=Stored\n");
    const auto driver = drive(Texts::Utf8);
    ASSERT_NE(driver, nullptr);
    ASSERT_EQ(driver->SetArcFile(L"C:\\x.lzh"), 2U);
    EXPECT_EQ(driver->FileName(0), L"file.txt");
    EXPECT_EQ(driver->FilePath(0), LR"(dir\sub\)");
    EXPECT_EQ(driver->FileOriginal(0), L"1,234,567");
    EXPECT_EQ(driver->FilePacked(0), L"524,691");
    EXPECT_EQ(driver->FileRatio(0), L"42.5%");
    EXPECT_EQ(driver->FileDate(0), L"01/05/17");
    EXPECT_EQ(driver->FILETIME(0), L"17:30:29");
    EXPECT_EQ(driver->FileAttr(0), L"a--w");
    EXPECT_EQ(driver->FileType(0), L"Deflate");
    EXPECT_EQ(driver->FileCRC(0), L"3C4D");
    EXPECT_EQ(driver->FileName(1), L"");
    EXPECT_EQ(driver->FilePath(1), LR"(dir\)");
    EXPECT_EQ(calls(), (Calls{"UnlhaSetUnicodeMode 1", R"(UnlhaOpenArchive null "C:\x5Cx.lzh" 0)",
                              R"(UnlhaFindFirst ARCHIVE "*.*")", "UnlhaGetOriginalSizeEx ARCHIVE",
                              "UnlhaGetCompressedSizeEx ARCHIVE", "UnlhaFindNext ARCHIVE",
                              "UnlhaGetOriginalSizeEx ARCHIVE", "UnlhaGetCompressedSizeEx ARCHIVE",
                              "UnlhaFindNext ARCHIVE", "UnlhaCloseArchive ARCHIVE", "UnlhaSetUnicodeMode 0"}));
}

TEST_F(RecordedLibrary, PassesUtf8ToALibraryThatKnowsIt) {
    session.script("entry name=\\xE8\\xA1\\xA8.txt\n");
    const auto driver = drive(Texts::Utf8);
    ASSERT_NE(driver, nullptr);
    ASSERT_EQ(driver->SetArcFile(L"\x8868.lzh"), 1U);
    EXPECT_EQ(driver->FileName(0), L"\x8868.txt");
    EXPECT_EQ(calls().at(1), R"(UnlhaOpenArchive null "\xE8\xA1\xA8.lzh" 0)");
}

TEST_F(RecordedLibrary, PassesAnsiToALibraryThatDoesNot) {
    session.script("entry name=\\xE4.txt\n");
    const auto driver = drive(Texts::Ansi);
    ASSERT_NE(driver, nullptr);
    ASSERT_EQ(driver->SetArcFile(L"\xE4.lzh"), 1U);
    EXPECT_EQ(driver->FileName(0), L"\xE4.txt");
    EXPECT_EQ(calls().front(), R"(UnlhaOpenArchive null "\xE4.lzh" 0)");
    EXPECT_EQ(calls().back(), "UnlhaCloseArchive ARCHIVE");
}

TEST_F(RecordedLibrary, EndsTheWalkAtAnError) {
    session.script("entry name=a\nentry name=b\nerror 0x8017\nentry name=c\n");
    const auto driver = drive(Texts::Utf8);
    ASSERT_NE(driver, nullptr);
    ASSERT_EQ(driver->SetArcFile(L"x.lzh"), 2U);
    EXPECT_EQ(driver->FileName(1), L"b");
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(calls().at(calls().size() - 2), "UnlhaCloseArchive ARCHIVE");
}

TEST_F(RecordedLibrary, TellsOfAZeroHandle) {
    session.script("handle 0\n");
    const auto driver = drive(Texts::Utf8);
    ASSERT_NE(driver, nullptr);
    EXPECT_EQ(driver->SetArcFile(L"x.lzh"), 0U);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, L"Can not open 'x.lzh' (corrupted archive) !");
    EXPECT_EQ(calls(), (Calls{"UnlhaSetUnicodeMode 1", R"(UnlhaOpenArchive null "x.lzh" 0)", "UnlhaSetUnicodeMode 0"}));
}

TEST_F(RecordedLibrary, ReadsTextsWithoutANulRatiosAbove32767AndDatesOfMonthZero) {
    session.script("entry name=" + std::string(513, 'n') +
                   " attribute=attribut mode=methods! ratio=65535 date=0x2A11\n");
    const auto driver = drive(Texts::Utf8);
    ASSERT_NE(driver, nullptr);
    ASSERT_EQ(driver->SetArcFile(L"x.lzh"), 1U);
    EXPECT_EQ(driver->FileName(0), std::wstring(513, L'n'));
    EXPECT_EQ(driver->FileAttr(0), L"attribut");
    EXPECT_EQ(driver->FileType(0), L"methods!");
    EXPECT_EQ(driver->FileRatio(0), L"-0.1%");
    EXPECT_EQ(driver->FileDate(0), L"101-00-17");
}

TEST_F(RecordedLibrary, TakesSizesAbove4GiBFromThe64BitQueries) {
    session.script("entry name=big original=4294967295 original64=5368709120 packed=4294967295 packed64=4294967296\n");
    const auto driver = drive(Texts::Utf8);
    ASSERT_NE(driver, nullptr);
    ASSERT_EQ(driver->SetArcFile(L"x.lzh"), 1U);
    EXPECT_EQ(driver->FileOriginal(0), L"5,368,709,120");
    EXPECT_EQ(driver->FilePacked(0), L"4,294,967,296");
}

TEST_F(RecordedLibrary, ReadsTheVersionsLowerHalf) {
    const auto driver = drive(Texts::Utf8);
    ASSERT_NE(driver, nullptr);
    session.script("version 0xABCD0057\n");
    EXPECT_EQ(driver->Version(), 87);
    session.script("version 1\n");
    EXPECT_EQ(driver->Version(), 1);
    session.script("version 86\n");
    EXPECT_EQ(driver->Version(), 86);
}

TEST_F(RecordedLibrary, RunsCommandsAndChecks) {
    const auto driver = drive(Texts::Utf8);
    ASSERT_NE(driver, nullptr);
    session.script("output done\\r\\n\ncheck 1\n");
    driver->setCommandLine(L"x \"a b.lzh\"");
    EXPECT_EQ(driver->ReturnCode(), 0);
    EXPECT_EQ(driver->OutPut(), L"done\r\n");
    EXPECT_TRUE(driver->CheckArchive(L"a.lzh"));
    session.script("code 0x8018\noutput never seen\ncheck 0\n");
    driver->setCommandLine(L"x b.lzh");
    EXPECT_EQ(driver->ErrString(), L"Can not open archive file");
    EXPECT_EQ(driver->OutPut(), L"");
    EXPECT_FALSE(driver->CheckArchive(L"b.lzh"));
    session.script("fill x\n");
    driver->setMaxFileCount(0);
    driver->setCommandLine(L"l");
    EXPECT_EQ(driver->OutPut(), std::wstring(324, L'x') + L"\n[More...]");
    EXPECT_EQ(calls().at(1), R"(Unlha null "x \x22a b.lzh\x22" 21060)");
}

TEST_F(RecordedLibrary, PassesTheModesOn) {
    const auto driver = drive(Texts::Ansi);
    ASSERT_NE(driver, nullptr);
    EXPECT_FALSE(driver->BackGroundMode());
    driver->setBackGroundMode(true);
    EXPECT_TRUE(driver->BackGroundMode());
    driver->setCursorMode(true);
    EXPECT_TRUE(driver->CursorMode());
    session.script("running 1\ndialog 0\n");
    EXPECT_TRUE(driver->Running());
    EXPECT_EQ(driver->ConfigDialog(), 0);
    EXPECT_EQ(calls(),
              (Calls{"UnlhaGetBackGroundMode", "UnlhaSetBackGroundMode 1", "UnlhaGetBackGroundMode",
                     "UnlhaSetCursorMode 1", "UnlhaGetCursorMode", "UnlhaGetRunning", "UnlhaConfigDialog null 1"}));
}

TEST_F(RecordedLibrary, HasFunctionsOfEveryPrefix) {
    for (const Texts texts : {Texts::Utf8, Texts::Ansi}) {
        const std::wstring file = moduleFileName(L"Any32.dll");
        const auto path =
            recording::Session::install(session.folder() / std::to_string(static_cast<int>(texts)), file, texts);
        const std::unique_ptr<Module> module = loader->load(path.wstring());
        ASSERT_NE(module, nullptr);
        for (const std::string prefix : {"UnZip", "Unarj", "Unrar", "Unlha", "Cab", "Tar"}) {
            EXPECT_NE(module->find(prefix.c_str()), nullptr) << prefix;
            EXPECT_NE(module->find((prefix + "GetVersion").c_str()), nullptr) << prefix;
            EXPECT_NE(module->find((prefix + "GetCompressedSizeEx").c_str()), nullptr) << prefix;
            EXPECT_EQ(module->find((prefix + "SetUnicodeMode").c_str()) != nullptr, texts == Texts::Utf8) << prefix;
        }
        EXPECT_EQ(module->find("getversion"), nullptr);
        EXPECT_EQ(module->find("AnyGetVersion"), nullptr);
    }
}

// The loader

TEST_F(RecordedLibrary, IsNotLoadedByABareOrRelativeName) {
    const std::wstring file = moduleFileName(L"Any32.dll");
    recording::Session::install(session.folder(), file, Texts::Utf8);
    EXPECT_EQ(loader->load(file), nullptr);
    EXPECT_EQ(loader->load(L"./" + file), nullptr);
    EXPECT_EQ(loader->load(L""), nullptr);
}

TEST_F(RecordedLibrary, IsNotLoadedFromAFileThatIsNone) {
    const auto missing = session.folder() / moduleFileName(L"Missing32.dll");
    EXPECT_EQ(loader->load(missing.wstring()), nullptr);
    const auto text = session.folder() / moduleFileName(L"Text32.dll");
    std::ofstream(text) << "this is no library";
    EXPECT_EQ(loader->load(text.wstring()), nullptr);
    EXPECT_EQ(loader->load(session.folder().wstring()), nullptr);
}

TEST_F(RecordedLibrary, ListsAMillionMembers) {
    session.script("entry name=dir/member.txt original=1000 packed=500 repeat=1000000\n");
    const auto driver = drive(Texts::Utf8);
    ASSERT_NE(driver, nullptr);
    recording::setEnvironment("TOVAREX_RECORDING_LOG", {});  // a line a call would be too much
    ASSERT_EQ(driver->SetArcFile(L"x.lzh"), 1'000'000U);
    EXPECT_EQ(driver->FileName(999'999), L"member.txt");
    EXPECT_EQ(driver->FileOriginal(999'999), L"1,000");
}

}  // namespace
}  // namespace tovar
