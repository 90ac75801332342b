#include "drivers/extract_lines.h"

#include <gtest/gtest.h>

#include "drivers/fakes/driver_fixture.h"
#include "drivers/un_arj.h"
#include "drivers/un_cab.h"
#include "drivers/un_lha.h"
#include "drivers/un_rar.h"
#include "drivers/un_tar.h"
#include "drivers/un_zip.h"

namespace tovar {
namespace {

struct CommandCase {
    const char* name;
    const DriverDescription& description;
    std::wstring_view keep, flat, overwrite, flatOverwrite, listed;
};
class ExtractCommand : public testing::TestWithParam<CommandCase> {
protected:
    static std::wstring command(const ExtractOptions& options) {
        return extractCommand(GetParam().description.extract, options);
    }
};
TEST_P(ExtractCommand, IsThatOfTheKind) {
    EXPECT_EQ(command({}), GetParam().keep);
    EXPECT_EQ(command({.keepFolders = false}), GetParam().flat);
    EXPECT_EQ(command({.existing = ExistingFiles::Overwrite}), GetParam().overwrite);
    EXPECT_EQ(command({.keepFolders = false, .existing = ExistingFiles::Overwrite}), GetParam().flatOverwrite);
    EXPECT_EQ(command({.listed = true}), GetParam().listed);
    EXPECT_EQ(unpacksFlat(GetParam().description.extract), GetParam().keep != GetParam().flat);
}
INSTANTIATE_TEST_SUITE_P(
    Kinds, ExtractCommand,
    testing::Values(
        CommandCase{"Zip", cUnZip::kDescription, L" -x -i --j", L" -x -i -j", L" -x -i --j -o", L" -x -i -j -o",
                    L" -x -i --j"},
        CommandCase{"Arj", cUnARJ::kDescription, L" x -i- -y+ -!@", L" e -i- -y+ -!@", L" x -i- -y+ -!@ -y+",
                    L" e -i- -y+ -!@ -y+", L" x -i- -y+ -!@"},
        CommandCase{"Rar", cUnRAR::kDescription, L" -x -u ", L" -e -u ", L" -x -u  -y", L" -e -u  -y", L" -x -u "},
        CommandCase{"Lzh", cUnLHA::kDescription, L" x -a1 -c1 -f1 -jp1 -+", L" x -a1 -c1 -f1 -jp1 -+",
                    L" x -a1 -c1 -f1 -jp1 -+ -m1", L" x -a1 -c1 -f1 -jp1 -+ -m1", L" x -a1 -c1 -f1 -jp1 -+"},
        CommandCase{"Cab", cUnCab::kDescription, L" -x -v", L" -x -v -j", L" -x -v -o", L" -x -v -j -o", L" -x -v"},
        CommandCase{"Tar", cUnTar::kDescription, L" xvfo", L" xvfo", L" xvfo", L" xvfo", L" xvfoa"}),
    [](const auto& each) { return std::string(each.param.name); });

struct ExistingCase {
    const char* name;
    const DriverDescription& description;
    std::wstring_view skip, ask;
};
class ExistingWords : public testing::TestWithParam<ExistingCase> {};
TEST_P(ExistingWords, FollowTheCommand) {
    const ExtractWords& words = GetParam().description.extract;
    EXPECT_EQ(extractCommand(words, {.existing = ExistingFiles::Skip}), GetParam().skip);
    EXPECT_EQ(extractCommand(words, {.existing = ExistingFiles::Ask}), GetParam().ask);
}
INSTANTIATE_TEST_SUITE_P(Kinds, ExistingWords,
                         testing::Values(ExistingCase{"Zip", cUnZip::kDescription, L" -x -i --j -n", L" -x -i --j"},
                                         ExistingCase{"Arj", cUnARJ::kDescription, L" x -i- -y+ -!@ -y-",
                                                      L" x -i- -y+ -!@ -y-"},
                                         ExistingCase{"Rar", cUnRAR::kDescription, L" -x -u  -o-", L" -x -u "},
                                         ExistingCase{"Lzh", cUnLHA::kDescription, L" x -a1 -c1 -f1 -jp1 -+ -jn1",
                                                      L" x -a1 -c1 -f1 -jp1 -+ -m0"},
                                         ExistingCase{"Cab", cUnCab::kDescription, L" -x -v", L" -x -v"},
                                         ExistingCase{"Tar", cUnTar::kDescription, L" xvfo --confirm-overwrite=1",
                                                      L" xvfo --confirm-overwrite=1"}),
                         [](const auto& each) { return std::string(each.param.name); });

struct LineCase {
    const char* name;
    std::wstring archive, folder, members, line;
};
class ExtractLine : public testing::TestWithParam<LineCase> {};
TEST_P(ExtractLine, JoinsItsParts) {
    const LineCase& each = GetParam();
    EXPECT_EQ(extractLine({.command = L" -x", .archive = each.archive, .folder = each.folder, .members = each.members}),
              each.line);
}
INSTANTIATE_TEST_SUITE_P(
    Lines, ExtractLine,
    testing::Values(
        LineCase{"Plain", L"C:\\a.zip", L"C:\\out", L"*.*", L" -x C:\\a.zip C:\\out\\ *.*"},
        LineCase{"Separator", L"C:\\a.zip", L"C:\\out\\", L"*.*", L" -x C:\\a.zip C:\\out\\ *.*"},
        LineCase{"Blanks", L"C:\\a b.zip", L"C:\\my out", L"*.*", L" -x \"C:\\a b.zip\" \"C:\\my out\\\" *.*"},
        LineCase{"Commas", L"C:\\a,b.zip", L"C:\\out,", L"*.*", L" -x \"C:\\a,b.zip\" \"C:\\out,\\\" *.*"},
        LineCase{"BlanksAroundTheFolder", L"C:\\a.zip", L"  C:\\out ", L"*.*", L" -x C:\\a.zip C:\\out\\ *.*"},
        LineCase{"Slashes", L"/a.zip", L"/out", L"*.*", L" -x /a.zip /out/ *.*"},
        LineCase{"FolderWithoutSeparator", L"a.zip", L"out", L"*.*", L" -x a.zip out\\ *.*"},
        LineCase{"ListFile", L"C:\\a.zip", L"C:\\out", L"@C:\\my list", L" -x C:\\a.zip C:\\out\\ @C:\\my list"},
        LineCase{"PatternWithBlanks", L"C:\\a.zip", L"C:\\out", L"  *.txt", L" -x C:\\a.zip C:\\out\\   *.txt"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(MemberArgument, IsARowOfAListFile) {
    EXPECT_EQ(memberArgument(L"\\docs\\"), L"docs/*.*");
    EXPECT_EQ(memberArgument(L"docs\\a.txt"), L"docs/a.txt");
    EXPECT_EQ(memberArgument(L"a b\\c.txt"), L"\"a b/c.txt\"");
    EXPECT_EQ(memberArgument(L"a,b"), L"\"a,b\"");
    EXPECT_EQ(memberArgument(L""), L"");
}

class Extract : public testing::Test, protected test::DriverFixture {};

TEST_F(Extract, RunsTheLineAsTheBrowserWantsIt) {
    library.written = "done\r\n";
    const ExtractResult result = driver.extract(
        {.owner = owner, .command = L" -x", .archive = L"C:\\a.zip", .folder = L"C:\\out", .members = L"*.*"});
    EXPECT_EQ(library.calls, (Calls{L"setCursorMode 0", L"setBackGroundMode 1", L"run  -x C:\\a.zip C:\\out\\ *.*"}));
    EXPECT_EQ(library.owners.back(), owner);
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.message, L"");
    EXPECT_EQ(result.text, L"done\r\n");
    EXPECT_FALSE(result.cut);
    EXPECT_FALSE(result.nothingChosen);
}

TEST_F(Extract, TellsOfAFailureWithWhatTheLibraryWrote) {
    library.runAnswer = 0x800C;
    library.written = "bad: a.txt\n";
    const ExtractResult result =
        driver.extract({.command = L" -x", .archive = L"a.zip", .folder = L"C:\\", .members = L"a"});
    EXPECT_EQ(result.code, 0x800C);
    EXPECT_EQ(result.message, L"Archive file CRC error");
    EXPECT_EQ(result.text, L"bad: a.txt\n");
    EXPECT_EQ(driver.OutPut(), L"") << "as after every command that failed";
}

TEST_F(Extract, KnowsWhenNoMemberWasMeant) {
    library.runAnswer = 0x800F;
    EXPECT_TRUE(
        driver.extract({.command = L" -x", .archive = L"a.zip", .folder = L"C:\\", .members = L"x"}).nothingChosen);
}

TEST_F(Extract, SaysWhenTheTextWasCut) {
    driver.setMaxFileCount(0);
    library.written = std::string(400, 'x');
    library.written.resize(324);
    const ExtractResult result =
        driver.extract({.command = L" -x", .archive = L"a.zip", .folder = L"C:\\", .members = L"x"});
    EXPECT_TRUE(result.cut);
    EXPECT_EQ(result.text, std::wstring(324, L'x'));
}

TEST_F(Extract, NeverCallsACursorFunctionForCabinets) {
    cUnCab cab(library, messages, regional);
    static_cast<void>(cab.extract({.command = L" -x -v", .archive = L"a.cab", .folder = L"C:\\", .members = L"*.*"}));
    EXPECT_EQ(library.calls, (Calls{L"setBackGroundMode 1", L"run  -x -v a.cab C:\\ *.*"}));
}

}  // namespace
}  // namespace tovar
