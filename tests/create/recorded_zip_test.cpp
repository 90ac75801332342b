// The zip engine over a real library that records what it gets: records and names to the byte.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <numeric>

#include "create/bound_zip_library.h"
#include "create/fakes/zip_fixture.h"
#include "drivers/library_finder.h"
#include "recording/session.h"
#include "shell/text_codec.h"

namespace tovar::test {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

/// Where the recording library lies, and nowhere else.
struct OneFolder final : LibraryFolders {
    std::wstring folder;
    [[nodiscard]] std::vector<std::wstring> searchOrder() const override { return {folder}; }
};

/// Fields of the record behind the texts, four bytes each but the level: zeros but for those that are named.
std::string optionBytes(const std::vector<int>& offsets, const char* level) {
    std::string bytes;
    for (int offset = 12; offset <= 120; offset += 4) {
        const bool set = std::find(offsets.begin(), offsets.end(), offset) != offsets.end();
        bytes += set ? "01000000" : "00000000";
    }
    return bytes + level;
}

class RecordedZip : public testing::Test {
protected:
    RecordedZip() {
        folders.folder = session.folder().wstring();
        files.addFile((session.folder() / moduleFileName(FoundZipLibraries::kLibrary)).wstring());
        files.addFolder(LR"(C:\base)");
        files.addFile(LR"(C:\base\a.txt)", "12345");
        files.addFolder(LR"(C:\base\dir)");
    }
    void install(recording::Texts texts) {
        recording::Session::install(session.folder(), moduleFileName(FoundZipLibraries::kLibrary), texts);
    }
    std::optional<bool> run(std::wstring_view command, std::wstring_view list) {
        const ZipPorts ports{libraries, progress, comments, passwords, messages, files, system};
        return ZipEngine(ports).run({nullptr, command, LR"(C:\out\new.zip)", list, LR"(C:\base)"});
    }
    static std::wstring manyNames(int count) {
        std::wstring list;
        for (int each = 1; each <= count; ++each) list += L"n" + std::to_wstring(each) + L"\r\n";
        return list;
    }
    /// The call of ZpArchive for the names from one number to another.
    static std::string archiveCall(int from, int to) {
        std::string line =
            "ZpArchive " + std::to_string(to - from + 2) + R"( "C:\x5Cout\x5Cnew.zip" "n)" + std::to_string(from) + '"';
        for (int each = from; each <= to; ++each) line += " \"n" + std::to_string(each) + '"';
        return line;
    }

    const recording::Session session;
    FakeFileSystem files;
    FakeSystemPaths system{files};
    FakeTextCodec ansi;
    FakeMessageBoxes messages;
    FakeProgressDialogs progress;
    FakeComments comments;
    FakePasswords passwords;
    OneFolder folders;
    std::unique_ptr<ModuleLoader> loader = systemModuleLoader();
    LibraryFinder finder{system, files, folders, L""};
    FoundZipLibraries libraries{*loader, finder, ansi, system};
};

TEST_F(RecordedZip, GetsEveryRecordToTheByte) {
    install(recording::Texts::Ansi);
    EXPECT_EQ(run(L"m -r -d -p -s -v -c -l9", L"a.txt\r\ndir"), true);
    EXPECT_EQ(
        session.log(),
        (Texts{
            "ZpInit 1 1 1 1",
            R"(ZpSetOptions "" "C:\x5Cbase" "C:\x5CTemp\x5C" ")" + optionBytes({20, 24, 48, 76, 100, 116}, "39") + '"',
            R"(ZpArchive 3 "C:\x5Cout\x5Cnew.zip" "C:\x5Cbase\x5Ca.txt" "C:\x5Cbase\x5Ca.txt" "C:\x5Cbase\x5Cdir\x5C*.*")"}));
}

TEST_F(RecordedZip, GetsTheOtherCommandsToo) {
    install(recording::Texts::Ansi);
    struct {
        const wchar_t* command;
        std::vector<int> offsets;
        const char* level;
    } const cases[] = {
        {L"a", {}, "36"}, {L"u -l0", {84}, "30"}, {L"f", {88}, "36"}, {L"d", {80}, "36"}, {L"x", {120}, "36"}};
    for (const auto& each : cases) {
        session.clearLog();
        EXPECT_EQ(run(each.command, L"a.txt"), true);
        EXPECT_EQ(session.log().at(1),
                  R"(ZpSetOptions "" "C:\x5Cbase" "C:\x5CTemp\x5C" ")" + optionBytes(each.offsets, each.level) + '"');
    }
    EXPECT_EQ(session.log().at(2), R"(ZpArchive 0 "C:\x5Cout\x5Cnew.zip")") << "repairing has no names";
}

TEST_F(RecordedZip, IsNotCalledWithoutNames) {
    install(recording::Texts::Ansi);
    EXPECT_EQ(run(L"a", L"\r\n"), std::nullopt);
    EXPECT_EQ(session.log(), Texts{});
}

TEST_F(RecordedZip, GetsFourThousandNamesAtOnce) {
    install(recording::Texts::Ansi);
    EXPECT_EQ(run(L"a", manyNames(4000)), true);
    ASSERT_EQ(session.log().size(), 3U);
    EXPECT_EQ(session.log()[2], archiveCall(1, 4000));
}

TEST_F(RecordedZip, GetsTheRestOfTheNamesInAnotherCall) {
    install(recording::Texts::Ansi);
    EXPECT_EQ(run(L"a", manyNames(4005)), true);
    const Texts log = session.log();
    ASSERT_EQ(log.size(), 6U);
    EXPECT_EQ(log[2], archiveCall(1, 4000));
    EXPECT_EQ(log[3], "ZpInit 1 1 1 1");
    EXPECT_EQ(log[4], log[1]);
    EXPECT_EQ(log[5], archiveCall(4001, 4005));
}

TEST_F(RecordedZip, SpeaksUtf8WhereTheLibraryDoes) {
    install(recording::Texts::Utf8);
    EXPECT_EQ(run(L"a", L"\u65e5\u672c.txt"), true);
    const Texts log = session.log();
    ASSERT_EQ(log.size(), 5U);
    EXPECT_EQ(log[0], "ZpSetUnicodeMode 1");
    EXPECT_EQ(log[3],
              R"(ZpArchive 2 "C:\x5Cout\x5Cnew.zip" "\xE6\x97\xA5\xE6\x9C\xAC.txt" "\xE6\x97\xA5\xE6\x9C\xAC.txt")");
    EXPECT_EQ(log[4], "ZpSetUnicodeMode 0");
}

TEST_F(RecordedZip, CallsBack) {
    install(recording::Texts::Ansi);
    comments.answer = L"words";
    passwords.answers = {L"secret", L"secret", L"12345678"};
    session.script(
        "zip message   adding: a.txt\n"
        "zip message  (deflated 5%)\\n\n"
        "zip service a.txt\n"
        "zip comment\n"
        "zip password 64 Enter password: \n"
        "zip password 64 Verify password: \n"
        "zip password 8 Short: \n");
    EXPECT_EQ(run(L"a -p -c", L"a.txt"), true);
    const Texts log = session.log();
    ASSERT_EQ(log.size(), 8U);
    EXPECT_EQ(log[3], "ZpService 0");
    EXPECT_EQ(log[4], R"(ZpComment 0 "words")");
    EXPECT_EQ(log[5], R"(ZpPassword 0 "secret")");
    EXPECT_EQ(log[6], R"(ZpPassword 0 "secret")");
    EXPECT_EQ(log[7], R"(ZpPassword -1 "")") << "it would not fit";
    EXPECT_EQ(passwords.labels.at(0), L"Enter password: some.zip");
    EXPECT_EQ(progress.log.back(), L"summary 1 files added");
    EXPECT_EQ(progress.processed, 5.0F);
}

TEST_F(RecordedZip, LetsNoExceptionIntoTheLibrary) {
    install(recording::Texts::Ansi);
    progress.onPump = [&] {
        if (!progress.log.empty() && progress.log.back() == L"summary 1 files added") throw 1;
    };
    session.script("code 9\nzip message adding: a.txt\nzip service a.txt\nzip service a.txt\n");
    EXPECT_EQ(run(L"a", L"a.txt"), false);
    EXPECT_EQ(session.log().at(3), "ZpService 1") << "it stops";
}

TEST_F(RecordedZip, StopsWhenTheUserGivesUp) {
    install(recording::Texts::Ansi);
    progress.onPump = [&] { progress.cancelled = progress.processed > 0; };
    session.script("code 9\nzip service a.txt\n");
    EXPECT_EQ(run(L"a", L"a.txt"), false);
    EXPECT_EQ(session.log().at(3), "ZpService 1");
    EXPECT_EQ(messages.shown.at(0).text, L"User Interrupted Or Abnormal Termination");
}

TEST_F(RecordedZip, IsMissingWhenItsFileIsNoLibrary) {
    std::ofstream(session.folder() / moduleFileName(FoundZipLibraries::kLibrary)) << "no library";
    EXPECT_EQ(run(L"a", L"a.txt"), false);
    EXPECT_EQ(messages.shown.at(0).text, L"InfoZip32.dll is missing, or cannot be used.");
}

}  // namespace
}  // namespace tovar::test
