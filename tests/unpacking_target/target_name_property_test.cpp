#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "archivers/unpacking/target_name.h"

namespace archiver {
namespace {

using std::string_view_literals::operator""sv;

std::vector<std::string> partsOf(const std::string& name) {
    std::vector<std::string> parts(1);
    for (const char each : name) {
        if (each == '/') {
            parts.emplace_back();
        } else {
            parts.back() += each;
        }
    }
    return parts;
}

/// What is wrong with a name on every system; empty when nothing is.
std::string faultOf(const std::string& name) {
    if (name.empty()) return {};
    if (name.find('\\') != name.npos) return "backslash";
    for (const std::string& part : partsOf(name)) {
        if (part.empty()) return "empty part or separator at an end";
        if (part == "." || part == "..") return "dots";
        for (const char each : part) {
            if ((each >= 0 && each < 32) || each == 127) return "control character";
        }
    }
    return {};
}

/// What is wrong with a name in Windows; written without a look at the code under test.
std::string windowsFaultOf(const std::string& name) {
    for (const std::string& part : partsOf(name)) {
        if (part.find_first_of(":<>\"|?*") != part.npos) return "forbidden character";
        if (!part.empty() && (part.back() == '.' || part.back() == ' ')) return "dot or blank at the end";
        if (part.find("\xE2\x80\xAE") != part.npos) return "turned writing";
        std::string stem;
        for (const char each : part) {
            if (each == '.') break;
            stem += static_cast<char>(std::toupper(static_cast<unsigned char>(each)));
        }
        while (!stem.empty() && stem.back() == ' ') stem.pop_back();
        for (const char* device : {"NUL", "CON", "CLOCK$", "COM1", "COM\xC2\xB9"}) {
            if (stem == device) return "device";
        }
    }
    return {};
}

constexpr std::array kNasty = {"a"sv,  "."sv,       ".."sv,  "/"sv,   "\\"sv, ":"sv,        "C:"sv,
                               " "sv,  "?"sv,       "nul"sv, "COM"sv, "1"sv,  "\xC2\xB9"sv, "\xE2\x80\xAE"sv,
                               "\0"sv, "\xC0\xAF"sv};

using Pieces = std::span<const std::string_view>;

/// Every text of so many pieces.
template <class Visit>
void forEachText(Pieces alphabet, std::size_t pieces, const Visit& visit) {
    std::vector<std::size_t> chosen(pieces, 0);
    for (;;) {
        std::string text;
        for (const std::size_t each : chosen) text += alphabet[each];
        visit(text);
        std::size_t at = 0;
        while (at < pieces && ++chosen[at] == alphabet.size()) chosen[at++] = 0;
        if (at == pieces) return;
    }
}

void checkAll(Pieces alphabet, std::size_t pieces, const NameWishes& wishes) {
    std::size_t texts = 0;
    forEachText(alphabet, pieces, [&](const std::string& text) {
        ++texts;
        const TargetName windows = targetNameOf(text, wishes, NameRules::kWindows);
        const TargetName posix = targetNameOf(text, wishes, NameRules::kPosix);
        for (const TargetName& made : {windows, posix}) {
            ASSERT_EQ(faultOf(made.name), "") << testing::PrintToString(text) << " became " << made.name;
            if (made.code != kOk) {
                ASSERT_EQ(made.name, "");
            }
            if (wishes.flat) {
                ASSERT_EQ(made.name.find('/'), made.name.npos);
            }
        }
        ASSERT_EQ(windowsFaultOf(windows.name), "") << testing::PrintToString(text) << " became " << windows.name;
        // What was made safe stays as it is.
        if (windows.code == kOk && !windows.name.empty()) {
            const TargetName again = targetNameOf(windows.name, wishes, NameRules::kWindows);
            ASSERT_EQ(again.name, windows.name);
            ASSERT_FALSE(again.renamed) << windows.name;
        }
    });
    std::size_t expected = 1;
    for (std::size_t piece = 0; piece < pieces; ++piece) expected *= alphabet.size();
    EXPECT_EQ(texts, expected);
}

TEST(EveryNastyName, IsMadeSafe) {
    for (std::size_t pieces = 1; pieces <= 4; ++pieces) checkAll(kNasty, pieces, {});
}

TEST(EveryNastyName, OfTheWorstPiecesIsMadeSafe) {
    constexpr std::array worst = {"a"sv, "."sv, "/"sv, "\\"sv, ":"sv, " "sv, "?"sv, "nul"sv};
    checkAll(worst, 5, {});
}

TEST(EveryNastyName, IsMadeSafeWithWishes) {
    for (std::size_t pieces = 1; pieces <= 3; ++pieces) {
        for (int wishes = 1; wishes < 8; ++wishes) {
            checkAll(kNasty, pieces, {(wishes & 1) != 0, (wishes & 2) != 0, (wishes & 4) != 0});
        }
    }
}

/// Longer ones: what a piece stands behind matters, not what stands further in front.
TEST(EveryNastyName, IsMadeSafeBehindAPrefix) {
    for (const std::string_view prefix : {"\\\\?\\"sv, "\\\\.\\UNC\\"sv, "C:/../"sv, "a/b/"sv}) {
        forEachText(kNasty, 3, [&](const std::string& text) {
            const std::string given = std::string(prefix) + text;
            const TargetName made = targetNameOf(given, {}, NameRules::kWindows);
            ASSERT_EQ(faultOf(made.name), "") << testing::PrintToString(given);
            ASSERT_EQ(windowsFaultOf(made.name), "") << testing::PrintToString(given);
        });
    }
}

}  // namespace
}  // namespace archiver
