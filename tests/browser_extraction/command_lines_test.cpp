// The command lines that the extraction dialog makes, for each kind and each of its options, to the character.

#include <gtest/gtest.h>

#include "browser_extraction/fakes/extraction_fixture.h"

namespace tovar {
namespace {

using Fixture = test::ExtractionFixture;

struct KindCase {
    const char* name;
    ArchiveDriver& (*drive)(Fixture& fixture);
    std::wstring_view keep, flat, keepOver, flatOver;  ///< for all members
    std::wstring_view letter{};                        ///< behind the base with a list of members
};

template <class Driver>
ArchiveDriver& with(Fixture& fixture) {
    return fixture.drive<Driver>();
}

const KindCase kKinds[] = {
    {"Zip", &with<cUnZip>, L" -x -i --j", L" -x -i -j", L" -x -i --j -o", L" -x -i -j -o"},
    {"Arj", &with<cUnARJ>, L" x -i- -y+ -!@", L" e -i- -y+ -!@", L" x -i- -y+ -!@ -y+", L" e -i- -y+ -!@ -y+"},
    {"Rar", &with<cUnRAR>, L" -x -u ", L" -e -u ", L" -x -u  -y", L" -e -u  -y"},
    {"Lzh", &with<cUnLHA>, L" x -a1 -c1 -f1 -jp1 -+", L" x -a1 -c1 -f1 -jp1 -+", L" x -a1 -c1 -f1 -jp1 -+ -m1",
     L" x -a1 -c1 -f1 -jp1 -+ -m1"},
    {"Cab", &with<cUnCab>, L" -x -v", L" -x -v -j", L" -x -v -o", L" -x -v -j -o"},
    {"Tar", &with<cUnTar>, L" xvfo", L" xvfo", L" xvfo", L" xvfo", L"a"},
};

class DialogLine : public Fixture, public testing::WithParamInterface<std::tuple<KindCase, bool, bool>> {
protected:
    [[nodiscard]] const KindCase& kind() const { return std::get<0>(GetParam()); }
    [[nodiscard]] bool keepsFolders() const { return std::get<1>(GetParam()); }
    [[nodiscard]] bool overwrites() const { return std::get<2>(GetParam()); }
    [[nodiscard]] std::wstring command() const {
        return std::wstring(keepsFolders() ? (overwrites() ? kind().keepOver : kind().keep)
                                           : (overwrites() ? kind().flatOver : kind().flat));
    }

    void run(MemberScope scope, std::wstring_view members, std::wstring_view pattern = L"") {
        const UnpackJob job{owner,      kind().drive(*this), archive,     extraction,
                            workFolder, shell.operations,    shell.files, shell.messages};
        test::FakeUnpackView view;
        UnpackPresenter presenter(view, job);
        view.onTree = [&](const std::wstring& folder) { presenter.onFolderSelected(folder); };
        presenter.SetFolder(target);
        presenter.SetFiles(members);
        presenter.onLoad();
        presenter.onKeepFolders(keepsFolders());
        presenter.onOverwrite(overwrites());
        presenter.onScope(scope);
        if (!pattern.empty()) presenter.onPattern(pattern);
        presenter.onOk();
        EXPECT_TRUE(view.closed);
        EXPECT_TRUE(shell.messages.shown.empty());
    }

    std::wstring target = LR"(C:\out)";
};

TEST_P(DialogLine, NamesAllMembers) {
    run(MemberScope::All, L"a.txt\r\n");
    EXPECT_EQ(line(), command() + LR"( C:\a.xyz C:\out\ *.*)");
}

TEST_P(DialogLine, NamesThePatternAsTyped) {
    run(MemberScope::Matching, L"", L"  *.txt ");
    EXPECT_EQ(line(), command() + LR"( C:\a.xyz C:\out\   *.txt )");
}

TEST_P(DialogLine, NamesTheListOfTheSelectedMembers) {
    run(MemberScope::Selected, L"docs/*.*\r\n\"a b/c.txt\"\r\n\"x,y\"\r\n");
    EXPECT_EQ(line(), command() + std::wstring(kind().letter) + LR"( C:\a.xyz C:\out\ @C:\Temp\VTL1.TMP)");
    EXPECT_EQ(listed, "docs/*.*\r\n\"a b/c.txt\"\r\n\"x,y\"\r\n\r\n");
    EXPECT_EQ(shell.files.find(LR"(C:\Temp\VTL1.TMP)"), nullptr) << "gone once the library has returned";
}

TEST_P(DialogLine, QuotesPathsWithBlanksAndCommas) {
    archive = LR"(C:\my files\a.xyz)";
    target = LR"(C:\out,put)";
    shell.files.addFolder(target);
    run(MemberScope::All, L"");
    EXPECT_EQ(line(), command() + LR"( "C:\my files\a.xyz" "C:\out,put\" *.*)");
}

TEST_P(DialogLine, KeepsTheRootOfADriveWhole) {
    target = LR"(C:\)";
    run(MemberScope::All, L"");
    EXPECT_EQ(line(), command() + LR"( C:\a.xyz C:\ *.*)");
}

INSTANTIATE_TEST_SUITE_P(Kinds, DialogLine,
                         testing::Combine(testing::ValuesIn(kKinds), testing::Bool(), testing::Bool()),
                         [](const auto& each) {
                             return std::string(std::get<0>(each.param).name) +
                                    (std::get<1>(each.param) ? "Keep" : "Flat") +
                                    (std::get<2>(each.param) ? "Overwrite" : "");
                         });

}  // namespace
}  // namespace tovar
