#include <algorithm>
#include <array>
#include <iterator>
#include <ostream>

#include "win32/system/support/system_fixture.h"

namespace tovar::test {
namespace {

using Lines = std::vector<std::string>;

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; !from.empty() && (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
}

/// A text as the log writes it.
std::string logged(const std::wstring& text) {
    std::string written;
    for (const wchar_t character : text) {
        written += character == L'\\' ? std::string("\\x5C") : std::string(1, static_cast<char>(character));
    }
    return written;
}

std::string logged(const void* address) {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "0x%llx",
                  static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(address)));
    return text.data();
}

struct PrefixCase {
    const char* prefix;
    const wchar_t* library;
    const wchar_t* file;
    bool listsByVersion = false;  ///< the version decides how is listed: it is asked for each time
};
std::ostream& operator<<(std::ostream& stream, const PrefixCase& each) { return stream << each.prefix; }

/// What the component calls, in which order and with which arguments.
class RecordedCalls : public SystemFixture, public testing::WithParamInterface<PrefixCase> {
protected:
    void install(recording::Texts texts) {
        libraries.recorded(GetParam().library, texts);
        session.script("entry name=one.txt original=5 packed=4\nentry name=dir/two.txt original=7 packed=6\n");
    }

    /// The log with {folder} for the test's folder, {window} for the browser's window and {archive} for the handle.
    Lines calls() {
        Lines lines = session.log();
        const std::string find = std::string(GetParam().prefix) + "FindFirst ";
        std::string archive;
        for (const std::string& line : lines) {
            if (line.starts_with(find)) archive = line.substr(find.size(), line.find(' ', find.size()) - find.size());
        }
        for (std::string& line : lines) {
            replaceAll(line, logged(folder.path()), "{folder}");
            replaceAll(line, logged(window), "{window}");
            replaceAll(line, archive, "{archive}");
        }
        session.clearLog();
        return lines;
    }
    static Lines prefixed(const Lines& functions) {
        Lines lines;
        for (const std::string& each : functions) lines.push_back(GetParam().prefix + each);
        return lines;
    }

    /// The calls with that for the version put in where a listing begins.
    static Lines expected(Lines functions) {
        if (GetParam().listsByVersion) {
            auto listing = std::ranges::find_if(functions, [](const auto& each) { return each.starts_with("Open"); });
            if (listing != functions.begin() && *std::prev(listing) == "SetUnicodeMode 1") --listing;
            functions.insert(listing, "GetVersion");
        }
        return prefixed(functions);
    }

    const recording::Session session;
    const std::wstring file = writeFile(folder, GetParam().file, "whatever");
    const std::string name = "\"{folder}\\x5C" + logged(std::wstring(GetParam().file)) + '"';
    const void* window = nullptr;
};

TEST_P(RecordedCalls, OfALibraryThatSpeaksUtf8) {
    install(recording::Texts::Utf8);
    create();
    EXPECT_EQ(calls(), prefixed({"GetVersion"}));
    EXPECT_NE(kindOf(file, true), -5);
    EXPECT_EQ(calls(), prefixed({"SetUnicodeMode 1", "CheckArchive " + name + " 0", "SetUnicodeMode 0"}));
    ASSERT_TRUE(open(file));
    window = browser().window();
    EXPECT_EQ(calls(), expected({
                           "SetUnicodeMode 1",
                           "CheckArchive " + name + " 0",
                           "SetUnicodeMode 0",
                           "SetUnicodeMode 1",
                           "OpenArchive {window} " + name + " 0",
                           "FindFirst {archive} \"*.*\"",
                           "GetOriginalSizeEx {archive}",
                           "GetCompressedSizeEx {archive}",
                           "FindNext {archive}",
                           "GetOriginalSizeEx {archive}",
                           "GetCompressedSizeEx {archive}",
                           "FindNext {archive}",
                           "CloseArchive {archive}",
                           "SetUnicodeMode 0",
                       }));
    EXPECT_TRUE(busy());
    browser().close();
    release();
    EXPECT_EQ(calls(), Lines{}) << "what is over asks nothing";
}

TEST_P(RecordedCalls, OfALibraryThatDoesNot) {
    install(recording::Texts::Ansi);
    create();
    ASSERT_TRUE(open(file));
    window = browser().window();
    EXPECT_EQ(calls(), expected({
                           "GetVersion",
                           "CheckArchive " + name + " 0",
                           "OpenArchive {window} " + name + " 0",
                           "FindFirst {archive} \"*.*\"",
                           "GetOriginalSizeEx {archive}",
                           "GetCompressedSizeEx {archive}",
                           "FindNext {archive}",
                           "GetOriginalSizeEx {archive}",
                           "GetCompressedSizeEx {archive}",
                           "FindNext {archive}",
                           "CloseArchive {archive}",
                       }));
}

TEST_P(RecordedCalls, WhenTheArchiveDoesNotOpen) {
    install(recording::Texts::Utf8);
    session.script("handle 0");
    create();
    session.clearLog();
    ASSERT_TRUE(open(file));
    window = browser().window();
    EXPECT_EQ(calls(), expected({
                           "SetUnicodeMode 1",
                           "CheckArchive " + name + " 0",
                           "SetUnicodeMode 0",
                           "SetUnicodeMode 1",
                           "OpenArchive {window} " + name + " 0",
                           "SetUnicodeMode 0",
                       }));
}

TEST_P(RecordedCalls, WhileFoldersAreShownThereAreNone) {
    install(recording::Texts::Utf8);
    create();
    ASSERT_TRUE(open(file));
    session.clearLog();
    browser().openRow(0);
    EXPECT_EQ(browser().names(), Texts{L"two.txt"});
    EXPECT_EQ(session.log(), Lines{}) << "what was listed is kept";
}

INSTANTIATE_TEST_SUITE_P(Libraries, RecordedCalls,
                         testing::Values(PrefixCase{"UnZip", L"UnZip32.dll", L"some.zip", true},
                                         PrefixCase{"Tar", L"Tar32.dll", L"some.tgz"},
                                         PrefixCase{"Unarj", L"UnArj32j.dll", L"some.arj"},
                                         PrefixCase{"Unrar", L"UnRar32.dll", L"some.rar"},
                                         PrefixCase{"Unlha", L"UnLha32.dll", L"some.lzh"},
                                         PrefixCase{"Cab", L"Cab32.dll", L"some.cab"}),
                         [](const auto& each) { return std::string(each.param.prefix); });

/// Kinds and versions that are listed in ways of their own.
class RecordedListings : public SystemFixture {
protected:
    const recording::Session session;
};

TEST_F(RecordedListings, OfOlderZipLibrariesAreReadFromText) {
    libraries.recorded(L"UnZip32.dll");
    session.script(
        "version 79\n"
        "output heading\\nheading\\nold.txt 5 4 80.0% 01-05-17 17:30:58 a--w Stored 00000000\\n--------------\\n\n"
        "entry name=new.txt\n");
    create();
    ASSERT_TRUE(open(writeFile(folder, L"some.zip", "whatever")));
    EXPECT_EQ(browser().names(), Texts{L"old.txt"});
    session.script("version 80\nentry name=new.txt\n");
    browser().close();
    ASSERT_TRUE(open(folder / L"some.zip"));
    EXPECT_EQ(browser().names(), Texts{L"new.txt"});
}

TEST_F(RecordedListings, OfAceArchivesGoThroughTheLibrarysOwnFunctions) {
    libraries.recorded(L"UnAce.dll");
    session.script("entry name=one.txt original=5 packed=4\nentry name=two.txt original=7 packed=6\n");
    create();
    EXPECT_EQ(session.log(), Lines{}) << "that the library is there is enough";
    const std::wstring file = writeFile(folder, L"some.ace", "whatever");
    EXPECT_EQ(kindOf(file), 1024);
    session.clearLog();
    ASSERT_TRUE(open(file));
    EXPECT_EQ(browser().names(), (Texts{L"one.txt", L"two.txt"}));
    Lines functions;
    for (const std::string& line : session.log()) functions.push_back(line.substr(0, line.find(' ')));
    EXPECT_EQ(functions,
              (Lines{"ACESetUnicodeMode", "ACEOpenArchive", "ACECloseArchive", "ACESetUnicodeMode", "ACESetUnicodeMode",
                     "ACEOpenArchive", "ACEReadHeader", "ACEProcessFile", "ACEReadHeader", "ACEProcessFile",
                     "ACEReadHeader", "ACECloseArchive", "ACESetUnicodeMode"}));
}

}  // namespace
}  // namespace tovar::test
