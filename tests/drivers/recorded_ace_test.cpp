// The way from the ACE driver to the functions of a library that is really loaded.

#include <gtest/gtest.h>

#include "drivers/archiver_libraries.h"
#include "drivers/un_ace.h"
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

struct OnePassword final : PasswordSource {
    std::optional<std::wstring> ask(WindowHandle, std::wstring_view) override { return L"\xE4"; }
};

class RecordedAce : public testing::Test {
protected:
    RecordedAce() {
        paths.folders[L'C'] = LR"(C:\Elsewhere)";
        files.addFolder(L"C:\\out");
    }

    void install(Texts texts) {
        const std::wstring file = moduleFileName(L"UnAce.dll");
        paths.searchable[file] = recording::Session::install(session.folder(), file, texts).wstring();
        ace.emplace(libraries.getAceOrMissing(cUnAce::kDescription), messages, regional, files, passwords);
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
    OnePassword passwords;
    std::optional<cUnAce> ace;
};

TEST_F(RecordedAce, HearsOfDataFromALibraryOfTheBundledKind) {
    install(Texts::Utf8);
    session.script("entry name=a.txt original=4096\ndata 3\n");
    std::vector<std::uint64_t> written;
    ace->setProgress([&](const ExtractProgress& progress) {
        written.push_back(progress.written);
        return true;
    });
    EXPECT_EQ(ace->extract({.command = L"-d", .archive = L"C:\\a.ace", .folder = L"C:\\out", .members = L"*.*"}).code,
              0);
    EXPECT_EQ(written, (std::vector<std::uint64_t>{0, 1024, 2048, 3072}));
}

TEST_F(RecordedAce, CancelsTheLibraryInsideAMember) {
    install(Texts::Utf8);
    session.script("entry name=a.txt original=4096\nentry name=b.txt\ndata 1000000000\n");
    ace->setProgress([&](const ExtractProgress& progress) { return progress.written < 2048; });
    EXPECT_EQ(ace->extract({.command = L"-d", .archive = L"C:\\a.ace", .folder = L"C:\\out", .members = L"*.*"}).code,
              255);
    ace->setProgress([](const ExtractProgress& progress) -> bool {
        if (progress.written > 0) throw std::bad_alloc();
        return true;
    });
    EXPECT_EQ(ace->extract({.command = L"-d", .archive = L"C:\\a.ace", .folder = L"C:\\out", .members = L"*.*"}).code,
              255)
        << "what is thrown does not pass the library";
}

TEST_F(RecordedAce, GivesAnotherLibraryNoCallback) {
    install(Texts::Ansi);
    session.script("entry name=a.txt original=4096\ndata 3\n");
    int calls = 0;
    ace->setProgress([&](const ExtractProgress& progress) {
        EXPECT_EQ(progress.state, ExtractProgress::State::Begin);
        return ++calls > 0;
    });
    EXPECT_EQ(ace->extract({.command = L"-d", .archive = L"C:\\a.ace", .folder = L"C:\\out", .members = L"*.*"}).code,
              0);
    EXPECT_EQ(calls, 1);
}

TEST_F(RecordedAce, ListsEveryField) {
    session.script(
        "entry name=docs\\\\\\xC3\\xA4.txt original=1234567 packed=524691 crc=0x1A2B3C4D date=0x2AB1 time=0x8BDD"
        " method=2 attributes=0x20 flags=0x8001\n");
    install(Texts::Utf8);
    ASSERT_EQ(ace->SetArcFile(L"C:\\\xE4.ace"), 1U);
    EXPECT_EQ(ace->FileName(0), L"\xE4.txt");
    EXPECT_EQ(ace->FilePath(0), L"docs\\");
    EXPECT_EQ(ace->FileOriginal(0), L"1,234,567");
    EXPECT_EQ(ace->FilePacked(0), L"524,691");
    EXPECT_EQ(ace->FileRatio(0), L"42.5%");
    EXPECT_EQ(ace->FileDate(0), L"01/05/17");
    EXPECT_EQ(ace->FILETIME(0), L"17:30:29");
    EXPECT_EQ(ace->FileAttr(0), L"a--w");
    EXPECT_EQ(ace->FileType(0), L"LZ77");
    EXPECT_EQ(ace->FileCRC(0), L"3C4D");
    EXPECT_TRUE(ace->listingComplete());
    EXPECT_EQ(calls(), (Calls{"ACESetUnicodeMode 1", R"(ACEOpenArchive "C:\x5C\xC3\xA4.ace" 0)",
                              "ACEReadHeader ARCHIVE", "ACEProcessFile ARCHIVE 0 null", "ACEReadHeader ARCHIVE",
                              "ACECloseArchive ARCHIVE", "ACESetUnicodeMode 0"}));
}

TEST_F(RecordedAce, PassesAnsiToALibraryThatKnowsNothingElse) {
    session.script("entry name=\\xE4.txt\n");
    install(Texts::Ansi);
    ASSERT_EQ(ace->SetArcFile(L"C:\\\xE4.ace"), 1U);
    EXPECT_EQ(ace->FileName(0), L"\xE4.txt");
    EXPECT_EQ(calls().front(), R"(ACEOpenArchive "C:\x5C\xE4.ace" 0)");
    EXPECT_EQ(calls().back(), "ACECloseArchive ARCHIVE");
    EXPECT_EQ(&ace->listCodec(), &ansi);
}

TEST_F(RecordedAce, ReadsNamesThatHaveNoNul) {
    session.script("entry name=" + std::string(400, 'n') + "\n");
    install(Texts::Utf8);
    ASSERT_EQ(ace->SetArcFile(L"C:\\a.ace"), 1U);
    EXPECT_EQ(ace->FileName(0), std::wstring(260, L'n'));
}

TEST_F(RecordedAce, TellsOfAnArchiveThatCannotBeOpened) {
    session.script("handle 0\n");
    install(Texts::Utf8);
    EXPECT_EQ(ace->SetArcFile(L"C:\\a.ace"), 0U);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, L"Can not open 'C:\\a.ace' (corrupted archive) !");
    EXPECT_EQ(calls(), (Calls{"ACESetUnicodeMode 1", R"(ACEOpenArchive "C:\x5Ca.ace" 0)", "ACESetUnicodeMode 0"}));
}

TEST_F(RecordedAce, OpensNothingByANameThatTheCodePageCannotHold) {
    install(Texts::Ansi);
    EXPECT_FALSE(ace->CheckArchive(L"C:\\\x8868.ace"));
    EXPECT_FALSE(ace->CheckArchive(L"C:\\" + std::wstring(300, L'a')));
    EXPECT_EQ(calls(), Calls{});
}

TEST_F(RecordedAce, UnpacksWithAPassword) {
    session.script("entry name=a.txt flags=0x4001\n");
    install(Texts::Utf8);
    EXPECT_TRUE(ace->ACEExtract(L"C:\\a.ace", L"C:\\out", L"*.*", true));
    EXPECT_EQ(calls(),
              (Calls{"ACESetUnicodeMode 1", R"(ACEOpenArchive "C:\x5Ca.ace" 1)", "ACEReadHeader ARCHIVE",
                     R"(ACESetPassword ARCHIVE "\xC3\xA4")", R"(ACEProcessFile ARCHIVE 2 "C:\x5Cout\x5Ca.txt")",
                     "ACEReadHeader ARCHIVE", "ACECloseArchive ARCHIVE", "ACESetUnicodeMode 0"}));
}

TEST_F(RecordedAce, PassesTheLibrarysAnswersOn) {
    session.script("entry name=a\nprocess 132\n");
    install(Texts::Utf8);
    EXPECT_FALSE(ace->ACEExtract(L"C:\\a.ace", L"C:\\out", L"*.*", true));
    EXPECT_EQ(messages.shown.at(0).text, L"Unknown compression method !");
    EXPECT_FALSE(ace->TestArchive(L"C:\\a.ace"));
    session.script("entry name=a\nend 6\n");
    EXPECT_EQ(ace->SetArcFile(L"C:\\a.ace"), 1U);
    EXPECT_FALSE(ace->listingComplete());
}

TEST_F(RecordedAce, IsLoadedOnce) {
    install(Texts::Utf8);
    AceLibrary& first = libraries.getAceOrMissing(cUnAce::kDescription);
    EXPECT_EQ(&libraries.getAceOrMissing(cUnAce::kDescription), &first);
    EXPECT_EQ(libraries.pathOf(L"UnAce.dll"), paths.searchable[moduleFileName(L"UnAce.dll")]);
}

TEST_F(RecordedAce, FailsWithoutALibrary) {
    ace.emplace(libraries.getAceOrMissing(cUnAce::kDescription), messages, regional, files, passwords);
    EXPECT_FALSE(ace->CheckArchive(L"C:\\a.ace"));
    EXPECT_FALSE(ace->TestArchive(L"C:\\a.ace"));
    EXPECT_EQ(ace->SetArcFile(L"C:\\a.ace"), 0U);
    EXPECT_FALSE(ace->ACEExtract(L"C:\\a.ace", L"C:\\out", L"*.*", true));
}

}  // namespace
}  // namespace tovar
