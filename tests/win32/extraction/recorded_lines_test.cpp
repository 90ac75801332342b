// What the libraries are told by the extraction dialog, byte for byte, for each kind with command lines.

#include <cstdio>
#include <ostream>

#include "win32/extraction/support/extraction_fixture.h"

namespace tovar::test {
namespace {

using Lines = std::vector<std::string>;

/// A text as the log writes it.
std::string logged(const std::wstring& text) {
    std::string written;
    for (const wchar_t character : text) {
        written += character == L'\\' ? std::string("\\x5C") : std::string(1, static_cast<char>(character));
    }
    return written;
}

struct KindCase {
    const char* prefix;
    const wchar_t* library;
    const wchar_t* file;
    const char *keep, *flat, *keepOver, *flatOver;
    const char* letter = "";  ///< behind the base with a list of members
    bool hasCursorMode = true;
};
std::ostream& operator<<(std::ostream& stream, const KindCase& each) { return stream << each.prefix; }

class RecordedLines : public ExtractionFixture,
                      public testing::WithParamInterface<std::tuple<KindCase, recording::Texts>> {
protected:
    RecordedLines() {
        std::filesystem::create_directory(here);
        session.script(
            std::string("lists 1\nentry name=docs/a.txt\nentry name=a\\x20b/c.txt\nentry name=x,y.txt\nentry name=") +
            special() + ".txt\n");
        libraries.recorded(kind().library, texts());
        create();
        EXPECT_TRUE(open(writeFile(folder, L"in, here\\" + std::wstring(kind().file), "whatever")));
        session.clearLog();
    }

    [[nodiscard]] static const KindCase& kind() { return std::get<0>(GetParam()); }
    [[nodiscard]] static recording::Texts texts() { return std::get<1>(GetParam()); }

    /// The name of a member as the library writes it, and as it has to be told it again.
    [[nodiscard]] static const char* special() {
        if (texts() == recording::Texts::Utf8 || ::GetACP() == CP_UTF8) return "\\xE8\\xA1\\xA8";
        return ::GetACP() == 932 ? "\\x95\\x5C" : "\\xE4";
    }

    /// The calls since the last time, with {list} for the list file that they name.
    Lines calls() {
        Lines lines = session.log();
        session.clearLog();
        for (std::string& line : lines) {
            const std::size_t at = line.find(" @");
            if (at == line.npos) continue;
            const std::size_t name = line.find("VTL", at), end = line.find('"', at);
            EXPECT_LT(name, end) << line;
            std::string path = line.substr(at + 2, end - at - 2);
            for (std::size_t escape; (escape = path.find("\\x5C")) != path.npos;) path.replace(escape, 4, 1, '\\');
            EXPECT_FALSE(std::filesystem::exists(path)) << path << " is there still";
            line.replace(at, end - at, " @{list}");
        }
        return lines;
    }

    [[nodiscard]] Lines expected(const std::string& command, const std::string& members, const char* list = nullptr) {
        char window[24];
        std::snprintf(window, sizeof window, "0x%llx",
                      static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(browser().window())));
        const std::string place = logged(here.native());
        Lines functions;
        // In which code the library reads lists is asked before one is written.
        if (list != nullptr && texts() == recording::Texts::Utf8) functions = {"SetUnicodeMode 1", "SetUnicodeMode 0"};
        if (kind().hasCursorMode) functions.emplace_back("SetCursorMode 0");
        functions.emplace_back("SetBackGroundMode 1");
        if (texts() == recording::Texts::Utf8) functions.emplace_back("SetUnicodeMode 1");
        functions.push_back(std::string(" ") + window + " \"" + command + " \\x22" + place + "\\x5C" +
                            logged(kind().file) + "\\x22 \\x22" + place + "\\x5C\\x22 " + members + "\" 21060");
        if (list != nullptr) functions.push_back(std::string("List \"") + list + "\"");
        if (texts() == recording::Texts::Utf8) functions.emplace_back("SetUnicodeMode 0");
        for (std::string& function : functions) function.insert(0, kind().prefix);
        return functions;
    }

    /// Extracts with each combination of the two options.
    void forEachOption(int scope, const std::wstring& pattern,
                       const std::function<Lines(const std::string& command)>& expectation) {
        for (const bool keeps : {true, false}) {
            for (const bool overwrites : {false, true}) {
                SCOPED_TRACE(std::string(keeps ? "keep " : "flat ") + (overwrites ? "overwrite " : "") +
                             std::to_string(scope));
                extract([&](const UnpackControls& dialog) {
                    dialog.setCheck(IDC_CHK_OPT, overwrites);
                    dialog.setCheck(IDC_CHK_OPT_KEEP_FOLDERS, keeps);
                    dialog.choose(scope);
                    if (!pattern.empty()) dialog.type(pattern);
                    EXPECT_TRUE(dialog.isEnabled(IDOK));
                    dialog.press(IDOK);
                });
                const char* const command =
                    keeps ? (overwrites ? kind().keepOver : kind().keep) : (overwrites ? kind().flatOver : kind().flat);
                EXPECT_EQ(calls(), expectation(command));
            }
        }
        EXPECT_TRUE(boxes.seen.empty());
    }

    const std::filesystem::path here = std::filesystem::path(folder.path()) / L"in, here";
    const recording::Session session;
};

// The three choices share an archive: to open it takes longer than a dialog.
TEST_P(RecordedLines, OfEachChoiceOfMembers) {
    forEachOption(1, L"", [&](const std::string& command) { return expected(command, "*.*"); });
    forEachOption(2, L"  *.txt", [&](const std::string& command) { return expected(command, "  *.txt"); });
    selectAll();
    const std::string list = std::string("docs/*.*\\x0D\\x0A\\x22a b/*.*\\x22\\x0D\\x0A\\x22x,y.txt\\x22\\x0D\\x0A") +
                             special() + ".txt\\x0D\\x0A\\x0D\\x0A";
    forEachOption(
        0, L"", [&](const std::string& command) { return expected(command + kind().letter, "@{list}", list.c_str()); });
}

TEST_P(RecordedLines, OfAMemberThatIsOpenedAndErrorsAreTold) {
    char window[24];
    std::snprintf(window, sizeof window, "0x%llx",
                  static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(browser().window())));
    browser().openRow(2);
    const std::string start = std::string(kind().prefix) + " 0x";
    Lines lines;
    ASSERT_TRUE(waitUntil([&] {
        for (const std::string& line : session.log()) {
            if (line.starts_with(start)) lines.push_back(line);
        }
        return !lines.empty();
    }));
    wchar_t temporary[MAX_PATH] = L"";
    ::GetTempPathW(MAX_PATH, temporary);
    EXPECT_EQ(lines[0], std::string(kind().prefix) + " " + window + " \"" + kind().keep + " \\x22" +
                            logged(here.native()) + "\\x5C" + logged(kind().file) + "\\x22 " + logged(temporary) +
                            " \\x22x,y.txt\\x22\" 21060");
    runMessages();
    EXPECT_TRUE(boxes.seen.empty()) << "what is not there afterwards is not opened, without a word";

    session.script("code 0x8016\nentry name=a.txt\n");
    extract([](const UnpackControls& dialog) { dialog.press(IDOK); });
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].title, L"Extraction Message");
    EXPECT_EQ(boxes.seen[0].text, L"CRC error in archive file");
    EXPECT_TRUE(boxes.seen[0].exclamation);
}

/// A library that knows UTF-8 is told the same bytes whatever the process's code page is: once is enough.
std::vector<recording::Texts> textsToTry() {
    if (::GetACP() != 1252) return {recording::Texts::Ansi};
    return {recording::Texts::Utf8, recording::Texts::Ansi};
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, RecordedLines,
    testing::Combine(
        testing::Values(
            KindCase{"UnZip", L"UnZip32.dll", L"some zip.zip", " -x -i --j", " -x -i -j", " -x -i --j -o",
                     " -x -i -j -o"},
            KindCase{"Unarj", L"UnArj32j.dll", L"some.arj", " x -i- -y+ -!@", " e -i- -y+ -!@", " x -i- -y+ -!@ -y+",
                     " e -i- -y+ -!@ -y+"},
            KindCase{"Unrar", L"UnRar32.dll", L"some.rar", " -x -u ", " -e -u ", " -x -u  -y", " -e -u  -y"},
            KindCase{"Unlha", L"UnLha32.dll", L"some.lzh", " x -a1 -c1 -f1 -jp1 -+", " x -a1 -c1 -f1 -jp1 -+",
                     " x -a1 -c1 -f1 -jp1 -+ -m1", " x -a1 -c1 -f1 -jp1 -+ -m1"},
            KindCase{"Cab", L"Cab32.dll", L"some.cab", " -x -v", " -x -v -j", " -x -v -o", " -x -v -j -o", "", false},
            KindCase{"Tar", L"Tar32.dll", L"some.tar", " xvfo", " xvfo", " xvfo", " xvfo", "a"}),
        testing::ValuesIn(textsToTry())),
    [](const auto& each) {
        return std::string(std::get<0>(each.param).prefix) +
               (std::get<1>(each.param) == recording::Texts::Utf8 ? "Utf8" : "Ansi");
    });

}  // namespace
}  // namespace tovar::test
