#include "archivers/unpacking/target_name.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace archiver {
namespace {

using std::string_view_literals::operator""sv;

/// What one rule set makes of a name.
struct Verdict {
    std::string_view name;
    bool renamed = false;
    ReturnCode code = kOk;
};
constexpr Verdict same(std::string_view name) { return {name}; }
constexpr Verdict renamed(std::string_view name) { return {name, true}; }
constexpr Verdict kRefused{"", false, kNotFilename};

struct NameCase {
    const char* title;
    std::string_view given;
    Verdict windows, posix;
};

void expectVerdict(std::string_view given, NameRules rules, const NameWishes& wishes, const Verdict& expected) {
    const TargetName made = targetNameOf(given, wishes, rules);
    EXPECT_EQ(made.name, expected.name);
    EXPECT_EQ(made.renamed, expected.renamed);
    EXPECT_EQ(made.code, expected.code);
}

class TargetNames : public testing::TestWithParam<NameCase> {};

TEST_P(TargetNames, AreSafeForWindows) { expectVerdict(GetParam().given, NameRules::kWindows, {}, GetParam().windows); }
TEST_P(TargetNames, AreSafeForPosix) { expectVerdict(GetParam().given, NameRules::kPosix, {}, GetParam().posix); }

constexpr NameCase bothWays(const char* title, std::string_view given, Verdict verdict) {
    return {title, given, verdict, verdict};
}
std::string titleOf(const testing::TestParamInfo<NameCase>& info) { return info.param.title; }

INSTANTIATE_TEST_SUITE_P(
    Parts, TargetNames,
    testing::Values(bothWays("Plain", "a.txt", same("a.txt")), bothWays("Folders", "a/b/c.txt", same("a/b/c.txt")),
                    bothWays("Backslashes", "a\\b\\c.txt", same("a/b/c.txt")),
                    bothWays("BothSeparators", "a\\b/c", same("a/b/c")), bothWays("FolderMember", "a/b/", same("a/b")),
                    bothWays("FolderMemberWithBackslash", "a\\", same("a")),
                    bothWays("EmptyParts", "a//b\\\\c", same("a/b/c")), bothWays("DotParts", "./a/./b/.", same("a/b")),
                    bothWays("HiddenFile", ".profile", same(".profile")),
                    bothWays("DotsWithin", "a..b/c.d.e", same("a..b/c.d.e")),
                    bothWays("DotsInFront", "..a/...b", same("..a/...b")), bothWays("TheTarget", "./", same("")),
                    bothWays("TheTargetWithoutSeparator", ".", same("")), bothWays("Empty", "", kRefused)),
    titleOf);

INSTANTIATE_TEST_SUITE_P(
    WaysOut, TargetNames,
    testing::Values(
        bothWays("Up", "../x", renamed("x")), bothWays("UpTwice", "../../x", renamed("x")),
        bothWays("UpWithBackslashes", "..\\..\\x", renamed("x")), bothWays("UpWithin", "a/../b", renamed("a/b")),
        bothWays("UpMoreThanDown", "a/../../b", renamed("a/b")), bothWays("UpAtTheEnd", "a/..", renamed("a")),
        bothWays("OnlyUp", "..", kRefused), bothWays("OnlyUpAndHere", "./../", kRefused),
        bothWays("Absolute", "/etc/x", renamed("etc/x")), bothWays("AbsoluteBackslash", "\\x", renamed("x")),
        bothWays("OnlySeparator", "/", kRefused), bothWays("OnlySeparators", "\\\\//", kRefused),
        bothWays("AbsoluteUp", "/../x", renamed("x")),
        bothWays("NetworkName", "\\\\server\\share\\x", renamed("server/share/x")),
        bothWays("NetworkNameWithSlashes", "//server/share/x", renamed("server/share/x")),
        bothWays("DevicePrefix", "\\\\.\\x", renamed("x")), NameCase{"Drive", "C:/x", renamed("x"), same("C:/x")},
        NameCase{"DriveBackslash", "c:\\x\\y", renamed("x/y"), same("c:/x/y")},
        NameCase{"DriveWithoutSeparator", "C:name", renamed("name"), same("C:name")},
        NameCase{"OnlyDrive", "C:", kRefused, same("C:")}, NameCase{"DriveRoot", "Z:\\", kRefused, same("Z:")},
        NameCase{"DriveTwice", "C:D:/x", renamed("x"), same("C:D:/x")},
        NameCase{"DriveBehindSeparator", "/C:/x", renamed("x"), renamed("C:/x")},
        NameCase{"DriveAndUp", "C:..\\x", renamed("x"), same("C:../x")},
        NameCase{"LongPathPrefix", "\\\\?\\C:\\x", renamed("x"), renamed("?/C:/x")},
        NameCase{"LongPathPrefixWithSlashes", "//?/c:/x", renamed("x"), renamed("?/c:/x")},
        NameCase{"LongNetworkPrefix", "\\\\?\\UNC\\server\\share\\x", renamed("server/share/x"),
                 renamed("?/UNC/server/share/x")},
        NameCase{"LongNetworkPrefixSmall", "\\\\?\\unc\\s\\x", renamed("s/x"), renamed("?/unc/s/x")},
        NameCase{"PrefixOfPrefix", "\\\\.\\\\\\?\\C:x", renamed("x"), renamed("?/C:x")},
        NameCase{"PhysicalDrive", "\\\\.\\PhysicalDrive0", renamed("PhysicalDrive0"), renamed("PhysicalDrive0")},
        NameCase{"DeviceOfPrefix", "\\\\.\\CON", renamed("_CON"), renamed("CON")},
        NameCase{"DriveLaterOn", "a/C:/x", renamed("a/C_/x"), same("a/C:/x")},
        NameCase{"DriveBehindUp", "../C:/x", renamed("C_/x"), renamed("C:/x")},
        NameCase{"UncFolder", "UNC/x", same("UNC/x"), same("UNC/x")},
        NameCase{"UpWithBlank", "a/.. /b", renamed("a/___/b"), same("a/.. /b")},
        NameCase{"ThreeDots", "a/.../b", renamed("a/___/b"), same("a/.../b")},
        NameCase{"DotBlank", ". /x", renamed("__/x"), same(". /x")},
        NameCase{"UpWithStream", "..:$DATA/x", renamed(".._$DATA/x"), same("..:$DATA/x")}),
    titleOf);

NameCase device(const char* title, std::string_view given, std::string_view windows) {
    return {title, given, renamed(windows), same(given)};
}

INSTANTIATE_TEST_SUITE_P(
    Devices, TargetNames,
    testing::Values(device("Con", "CON", "_CON"), device("Prn", "prn", "_prn"), device("Aux", "Aux", "_Aux"),
                    device("Nul", "nUL", "_nUL"), device("Com0", "COM0", "_COM0"), device("Com1", "com1", "_com1"),
                    device("Com9", "COM9", "_COM9"), device("Lpt0", "lpt0", "_lpt0"), device("Lpt9", "LPT9", "_LPT9"),
                    device("ComSuperscript1", "COM\xC2\xB9", "_COM\xC2\xB9"),
                    device("ComSuperscript2", "com\xC2\xB2", "_com\xC2\xB2"),
                    device("LptSuperscript3", "LPT\xC2\xB3.txt", "_LPT\xC2\xB3.txt"),
                    device("ConsoleInput", "CONIN$", "_CONIN$"), device("ConsoleOutput", "conout$", "_conout$"),
                    device("Clock", "CLOCK$", "_CLOCK$"), device("Extension", "nul.txt", "_nul.txt"),
                    device("TwoExtensions", "aux.tar.gz", "_aux.tar.gz"), device("Blank", "nul .txt", "_nul .txt"),
                    device("Blanks", "com1   .txt", "_com1   .txt"), device("EndBlank", "nul ", "_nul_"),
                    device("EndDot", "nul.", "_nul_"), device("EndBlankDot", "nul .", "_nul__"),
                    device("Colon", "CON:", "_CON_"), device("Stream", "nul:x.txt", "_nul_x.txt"),
                    device("ColonBehindBlank", "nul :", "_nul _"), device("Folder", "con/x", "_con/x"),
                    device("InFolder", "a/lpt1/aux.c", "a/_lpt1/_aux.c")),
    titleOf);

INSTANTIATE_TEST_SUITE_P(
    NoDevices, TargetNames,
    testing::Values(bothWays("LongerWord", "console", same("console")), bothWays("Nullable", "null", same("null")),
                    bothWays("ComWithoutDigit", "com", same("com")), bothWays("Com10", "COM10", same("COM10")),
                    bothWays("ComLetter", "comA", same("comA")),
                    bothWays("ComSuperscript4", "COM\xE2\x81\xB4", same("COM\xE2\x81\xB4")),
                    bothWays("ComCent", "COM\xC2\xA2", same("COM\xC2\xA2")),
                    bothWays("ExtensionOnly", "a.nul", same("a.nul")), bothWays("DotNul", ".nul", same(".nul")),
                    bothWays("LeadingBlank", " nul", same(" nul")), bothWays("Underscore", "_nul", same("_nul")),
                    bothWays("ConsoleInputWithoutDollar", "conin", same("conin")),
                    bothWays("BlankWithin", "nu l", same("nu l"))),
    titleOf);

INSTANTIATE_TEST_SUITE_P(
    Characters, TargetNames,
    testing::Values(NameCase{"Stream", "a.txt:evil.exe", renamed("a.txt_evil.exe"), same("a.txt:evil.exe")},
                    NameCase{"DataStream", "a.txt::$DATA", renamed("a.txt__$DATA"), same("a.txt::$DATA")},
                    NameCase{"Forbidden", "a<b>c\"d|e?f*g", renamed("a_b_c_d_e_f_g"), same("a<b>c\"d|e?f*g")},
                    bothWays("Nul", "a\0b"sv, renamed("a_b")), bothWays("LineFeed", "a\nb", renamed("a_b")),
                    bothWays("LastControl", "a\x1F", renamed("a_")), bothWays("Escape", "\x1B[2J", renamed("_[2J")),
                    bothWays("Delete", "a\x7F", renamed("a_")), bothWays("NulHidesUp", "..\0/x"sv, renamed(".._/x")),
                    NameCase{"RightToLeftOverride", "a\xE2\x80\xAEgpj.exe", renamed("a_gpj.exe"),
                             same("a\xE2\x80\xAEgpj.exe")},
                    NameCase{"FirstEmbedding", "\xE2\x80\xAA", renamed("_"), same("\xE2\x80\xAA")},
                    NameCase{"FirstIsolate", "\xE2\x81\xA6", renamed("_"), same("\xE2\x81\xA6")},
                    NameCase{"LastIsolate", "x\xE2\x81\xA9y", renamed("x_y"), same("x\xE2\x81\xA9y")},
                    bothWays("BelowFirstEmbedding", "\xE2\x80\xA9", same("\xE2\x80\xA9")),
                    bothWays("AboveLastEmbedding", "\xE2\x80\xAF", same("\xE2\x80\xAF")),
                    bothWays("BelowFirstIsolate", "\xE2\x81\xA5", same("\xE2\x81\xA5")),
                    bothWays("AboveLastIsolate", "\xE2\x81\xAA", same("\xE2\x81\xAA")),
                    NameCase{"EndDot", "a.", renamed("a_"), same("a.")},
                    NameCase{"EndBlank", "a ", renamed("a_"), same("a ")},
                    NameCase{"EndMixed", "a. . .", renamed("a_____"), same("a. . .")},
                    NameCase{"EndDotOfFolder", "a./b", renamed("a_/b"), same("a./b")},
                    NameCase{"OnlyBlank", " ", renamed("_"), same(" ")}, bothWays("LeadingBlank", " a", same(" a")),
                    bothWays("BlankWithin", "a b/c d", same("a b/c d")),
                    bothWays("OtherScripts", "\xE3\x81\x82/\xC3\xA4.txt", same("\xE3\x81\x82/\xC3\xA4.txt")),
                    bothWays("BeyondFirstPlane", "\xF0\x9F\x98\x80", same("\xF0\x9F\x98\x80")),
                    bothWays("LoneByte", "a\xFF", renamed("a_")), bothWays("CutCharacter", "a\xE3\x81", renamed("a_")),
                    bothWays("OverlongSeparator", "..\xC0\xAFx", renamed("..__x")),
                    bothWays("OverlongDots", "\xC0\xAE\xC0\xAE/x", renamed("____/x")),
                    bothWays("Surrogate", "\xED\xA0\x80", renamed("___")), bothWays("TooHigh", "\xF5", renamed("_")),
                    bothWays("FullWidthSeparator", "..\xEF\xBC\x8Fx", same("..\xEF\xBC\x8Fx"))),
    titleOf);

struct WishCase {
    const char* title;
    NameWishes wishes;
    std::string_view given;
    Verdict windows;
};
constexpr NameWishes kFlat{true, false, false};
constexpr NameWishes kNoBlanks{false, true, false};
constexpr NameWishes kSmall{false, false, true};

class WishedNames : public testing::TestWithParam<WishCase> {};
TEST_P(WishedNames, AreMade) {
    expectVerdict(GetParam().given, NameRules::kWindows, GetParam().wishes, GetParam().windows);
}
INSTANTIATE_TEST_SUITE_P(
    Names, WishedNames,
    testing::Values(WishCase{"Flat", kFlat, "a/b/c.txt", same("c.txt")}, WishCase{"FlatAlone", kFlat, "c", same("c")},
                    WishCase{"FlatUp", kFlat, "../../c", same("c")}, WishCase{"FlatEndsUp", kFlat, "a/b/..", same("b")},
                    WishCase{"FlatOnlyUp", kFlat, "../..", kRefused}, WishCase{"FlatTarget", kFlat, "./", same("")},
                    WishCase{"FlatDrive", kFlat, "C:\\a\\b", same("b")},
                    WishCase{"FlatForgetsFoldersOfNoConcern", kFlat, "nul/a?/b", same("b")},
                    WishCase{"FlatDevice", kFlat, "a/nul", renamed("_nul")},
                    WishCase{"Blanks", kNoBlanks, "a b/ c .txt", same("a_b/_c_.txt")},
                    WishCase{"BlankAtTheEnd", kNoBlanks, "a ", same("a_")},
                    WishCase{"BlankBehindDevice", kNoBlanks, "nul .x", renamed("_nul_.x")},
                    WishCase{"BlankAndDot", kNoBlanks, "a .", renamed("a__")},
                    WishCase{"Small", kSmall, "Docs/README.TXT", same("docs/readme.txt")},
                    WishCase{"SmallOtherScripts", kSmall, "\xC3\x84\xD0\xAF", same("\xC3\xA4\xD1\x8F")},
                    WishCase{"SmallDevice", kSmall, "NUL", renamed("_nul")},
                    WishCase{"All", {true, true, true}, "A/B C", same("b_c")}),
    [](const auto& each) { return std::string(each.param.title); });

// The Kelvin sign has "k" as its small form on some systems and none on others.
TEST(WishedSmallNames, NameNoDevice) {
    const std::string made = targetNameOf("CLOC\xE2\x84\xAA$", kSmall, NameRules::kWindows).name;
    EXPECT_TRUE(made == "_clock$" || made == "cloc\xE2\x84\xAA$") << made;
}

TEST(TargetNameLength, OfAPartIsThatOfTheSystem) {
    const std::string longest(255, 'a');
    EXPECT_EQ(targetNameOf("x/" + longest, {}, NameRules::kWindows).name, "x/" + longest);
    EXPECT_EQ(targetNameOf("x/" + longest, {}, NameRules::kPosix).name, "x/" + longest);
    EXPECT_EQ(targetNameOf("x/" + longest + "a", {}, NameRules::kWindows).code, kLongFileName);
    EXPECT_EQ(targetNameOf("x/" + longest + "a", {}, NameRules::kPosix).code, kLongFileName);
    EXPECT_EQ(targetNameOf(longest + "a/x", {}, NameRules::kWindows).code, kLongFileName);
    EXPECT_EQ(targetNameOf(longest + "a/x", {}, NameRules::kWindows).name, "");
}

TEST(TargetNameLength, IsCountedInUnitsOrBytes) {
    std::string letters, emoji;
    for (int count = 0; count < 255; ++count) letters += "\xE3\x81\x82";
    for (int count = 0; count < 127; ++count) emoji += "\xF0\x9F\x98\x80";
    EXPECT_EQ(targetNameOf(letters, {}, NameRules::kWindows).code, kOk);
    EXPECT_EQ(targetNameOf(letters + "\xE3\x81\x82", {}, NameRules::kWindows).code, kLongFileName);
    EXPECT_EQ(targetNameOf(letters, {}, NameRules::kPosix).code, kLongFileName);
    EXPECT_EQ(targetNameOf(letters.substr(0, 255), {}, NameRules::kPosix).code, kOk);
    EXPECT_EQ(targetNameOf(emoji + "a", {}, NameRules::kWindows).code, kOk);
    EXPECT_EQ(targetNameOf(emoji + "\xF0\x9F\x98\x80", {}, NameRules::kWindows).code, kLongFileName);
}

TEST(TargetNameLength, CountsTheMarkOfADevice) {
    const std::string name = "nul." + std::string(251, 'a');
    EXPECT_EQ(targetNameOf(name, {}, NameRules::kWindows).code, kLongFileName);
    EXPECT_EQ(targetNameOf(name, {}, NameRules::kPosix).code, kOk);
}

TEST(TargetNameLength, OfTheWholeIsBounded) {
    for (const NameRules rules : {NameRules::kWindows, NameRules::kPosix}) {
        std::string name;
        for (int count = 0; count < 320; ++count) name += std::string(99, 'a') + "/";
        name += "b";  // 32,001
        EXPECT_EQ(targetNameOf(name, {}, rules).code, kLongFileName);
        name.erase(0, 1);
        EXPECT_EQ(targetNameOf(name, {}, rules).code, kOk);
        EXPECT_EQ(targetNameOf(name, {}, rules).name.size(), 32'000U);
    }
}

TEST(TargetNameLength, OfFoldersDoesNotCountWhenFlat) {
    const std::string name = std::string(300, 'a') + "/b";
    EXPECT_EQ(targetNameOf(name, kFlat, NameRules::kWindows).name, "b");
    EXPECT_EQ(targetNameOf("a/" + std::string(256, 'b'), kFlat, NameRules::kWindows).code, kLongFileName);
}

TEST(FoldedKey, IsOneForNamesThatDifferByCase) {
    EXPECT_EQ(foldedKey("Read.Me"), foldedKey("rEAD.mE"));
    EXPECT_EQ(foldedKey("\xC3\x84/x"), foldedKey("\xC3\xA4/X"));
    EXPECT_EQ(foldedKey("\xD0\xAF"), foldedKey("\xD1\x8F"));
}

TEST(FoldedKey, KeepsOtherNamesApart) {
    EXPECT_NE(foldedKey("a"), foldedKey("b"));
    EXPECT_NE(foldedKey("a/b"), foldedKey("a_b"));
    EXPECT_NE(foldedKey("\xC3\x84"), foldedKey("A\xCC\x88")) << "composed and decomposed";
    EXPECT_NE(foldedKey("\xFF"), foldedKey("\xFE"));
    EXPECT_EQ(foldedKey(""), "");
}

}  // namespace
}  // namespace archiver
