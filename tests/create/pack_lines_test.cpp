#include "create/pack_lines.h"

#include <gtest/gtest.h>

#include <string>

namespace tovar {
namespace {

constexpr std::array<bool, 5> kNone{}, kAll{true, true, true, true, true};

struct LineCase {
    const char* name;
    PackChoice choice;
    std::wstring_view zip, lha, cab;
};
class PackLine : public testing::TestWithParam<LineCase> {};
TEST_P(PackLine, FollowsTheChoice) {
    EXPECT_EQ(zipPackLine(GetParam().choice), GetParam().zip);
    EXPECT_EQ(lhaSwitches(GetParam().choice), GetParam().lha);
    EXPECT_EQ(cabSwitches(GetParam().choice), GetParam().cab);
}
INSTANTIATE_TEST_SUITE_P(
    Choices, PackLine,
    testing::Values(
        LineCase{"Add", {0, 6, kNone}, L"a -l6", L"a -x1 ", L"-a -mz -k "},
        LineCase{"Update", {1, 9, kNone}, L"u -l9", L"u -x1 ", L"-a -mz -k "},
        LineCase{"Freshen", {2, 0, kNone}, L"f -l0", L"f -x1 ", L"-a -mz -k "},
        LineCase{"Move", {3, 6, kNone}, L"m -l6", L"m -x1 ", L"-a -mz -k "},
        LineCase{"Recurse", {0, 6, {true}}, L"a -r -l6", L"a -r2 -x1 ", L"-a -mz -k -r "},
        LineCase{"FolderInfo", {0, 6, {false, true}}, L"a -d -l6", L"a -x1 ", L"-a -mz -k "},
        LineCase{"Password", {0, 6, {false, false, true}}, L"a -p -l6", L"a -x1 ", L"-a -mz -k "},
        LineCase{"System", {0, 6, {false, false, false, true}}, L"a -s -l6", L"a -a1 -x1 ", L"-a -mz -k "},
        LineCase{"FullMessage", {0, 6, {false, false, false, false, true}}, L"a -v -l6", L"a -x1 ", L"-a -mz -k "},
        LineCase{"HighWithFoldersAndMessages",
                 {0, 9, {true, false, false, false, true}},
                 L"a -r -v -l9",
                 L"a -r2 -x1 ",
                 L"-a -mz -k -r "},
        LineCase{"All", {3, 0, kAll}, L"m -r -d -p -s -v -l0", L"m -r2 -a1 -x1 ", L"-a -mz -k -r "}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(WholePackLine, HasTwoBlanksBeforeTheArchive) {
    EXPECT_EQ(packLine(L"a -r2 -x1 ", LR"(C:\out\new.lzh)", LR"(C:\base)", LR"(@C:\Temp\VTL1.TMP)"),
              LR"(a -r2 -x1  C:\out\new.lzh C:\base\ @C:\Temp\VTL1.TMP)");
}

TEST(WholePackLine, QuotesWhatNeedsIt) {
    EXPECT_EQ(packLine(L"-a -mz -k ", LR"(C:\o ut\a,b.cab)", LR"(C:\b ase)", L"@x"),
              LR"(-a -mz -k  "C:\o ut\a,b.cab" "C:\b ase\" @x)");
}

struct ExtensionCase {
    const char* name;
    Packer packer;
    std::wstring_view path, expected;
};
class PackExtension : public testing::TestWithParam<ExtensionCase> {};
TEST_P(PackExtension, IsSwapped) {
    EXPECT_EQ(withExtensionOf(GetParam().packer, GetParam().path), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Paths, PackExtension,
    testing::Values(ExtensionCase{"ZipToCab", Packer::Cab, LR"(C:\o\pack.zip)", LR"(C:\o\pack.cab)"},
                    ExtensionCase{"CabToLzh", Packer::Lha, LR"(C:\o\pack.cab)", LR"(C:\o\pack.lzh)"},
                    ExtensionCase{"ToZip", Packer::Zip, LR"(C:\o\pack.lzh)", LR"(C:\o\pack.zip)"},
                    ExtensionCase{"NoExtension", Packer::Zip, LR"(C:\o\pack)", LR"(C:\o\pack.zip)"},
                    ExtensionCase{"OnlyTheLast", Packer::Zip, LR"(C:\o\pack.tar.gz)", LR"(C:\o\pack.tar.zip)"},
                    ExtensionCase{"DotInFolder", Packer::Zip, LR"(C:\o.d\pack)", LR"(C:\o.d\pack.zip)"},
                    ExtensionCase{"NoFolder", Packer::Cab, L"pack.zip", L"pack.zip"},
                    ExtensionCase{"NoName", Packer::Cab, LR"(C:\o\)", LR"(C:\o\)"},
                    ExtensionCase{"Empty", Packer::Cab, L"", L""},
                    ExtensionCase{"NoPacker", Packer::None, LR"(C:\o\pack.zip)", LR"(C:\o\pack.zip)"}),
    [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace tovar
