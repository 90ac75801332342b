#include "create/fakes/pack_fixture.h"

namespace tovar::test {
namespace {

using Names = std::vector<std::wstring>;

class PackDialog : public PackFixture {};

TEST_F(PackDialog, OpensWithItsDefaults) {
    load();
    EXPECT_EQ(view.packers, (Names{L"Zip", L"Lha", L"Cab"}));
    EXPECT_EQ(view.actions, (Names{L"Add Files (add/replace)", L"Update Files (add/update)", L"Freshen Existing Files",
                                   L"Move Files"}));
    ASSERT_EQ(view.levels.size(), 3U);
    EXPECT_EQ(view.levels[0].text, L"High Level");
    EXPECT_EQ(view.levels[0].level, 9);
    EXPECT_EQ(view.levels[1].text, L"Medium Level");
    EXPECT_EQ(view.levels[1].level, 6);
    EXPECT_EQ(view.levels[2].text, L"Low Level (just copy)");
    EXPECT_EQ(view.levels[2].level, 0);
    EXPECT_EQ(view.packer, 0);
    EXPECT_EQ(view.action, 0);
    EXPECT_EQ(view.level, 1);
    EXPECT_EQ(view.archive, LR"(C:\out\new.zip)");
    EXPECT_EQ(view.names, (Names{L"a.txt", L"b.txt"}));
    EXPECT_EQ(view.checked, (std::map<PackOption, bool>{{PackOption::Recurse, false}}));
}

TEST_F(PackDialog, RecursesByDefaultWhenAFolderIsPacked) {
    list = L"a.txt\r\ndir";
    load();
    EXPECT_TRUE(view.checked[PackOption::Recurse]);
    presenter.onOk();
    EXPECT_EQ(library.calls.at(0).options.recurse, 1);
}

TEST_F(PackDialog, OffersWhatCanBeCreated) {
    load(kind::kCreateLzh | kind::kCreateCab | kind::kZip);
    EXPECT_EQ(view.packers, (Names{L"Lha", L"Cab"}));
    EXPECT_EQ(view.packer, 0);
    EXPECT_EQ(view.archive, LR"(C:\out\new.lzh)") << "the default packer is Lha";
    EXPECT_EQ(view.usable(), "03");
    presenter.onPacker(1);
    EXPECT_EQ(view.usable(), "0") << "the second one is Cab, not Lha";
    EXPECT_EQ(view.archive, LR"(C:\out\new.cab)");
}

TEST_F(PackDialog, DoesNothingWithoutAPacker) {
    load(kind::kNone);
    EXPECT_EQ(view.packers, Names{});
    EXPECT_EQ(view.packer, -1);
    EXPECT_EQ(view.usable(), "");
    EXPECT_FALSE(view.actionEnabled);
    EXPECT_FALSE(view.levelEnabled);
    presenter.onOk();
    presenter.onBrowse();
    EXPECT_EQ(view.log, Names{});
    EXPECT_TRUE(library.calls.empty());
    presenter.onCancel();
    EXPECT_EQ(view.log, Names{L"close"});
}

struct PackerCase {
    const char* name;
    int index;
    bool action, level;
    const char* boxes;
    std::wstring_view archive;
};
class PackerChange : public PackFixture, public testing::WithParamInterface<PackerCase> {};
TEST_P(PackerChange, EnablesWhatThePackerKnows) {
    load();
    presenter.onPacker(GetParam().index);
    EXPECT_EQ(view.action, 0);
    EXPECT_EQ(view.actionEnabled, GetParam().action);
    EXPECT_EQ(view.levelEnabled, GetParam().level);
    EXPECT_EQ(view.usable(), GetParam().boxes);
    EXPECT_EQ(view.archive, GetParam().archive);
}
INSTANTIATE_TEST_SUITE_P(Packers, PackerChange,
                         testing::Values(PackerCase{"Zip", 0, true, true, "01234", LR"(C:\out\new.zip)"},
                                         PackerCase{"Lha", 1, true, false, "03", LR"(C:\out\new.lzh)"},
                                         PackerCase{"Cab", 2, false, false, "0", LR"(C:\out\new.cab)"}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(PackDialog, GoesBackToTheFirstActionWithThePacker) {
    load();
    presenter.onAction(3);
    presenter.onPacker(1);
    presenter.onOk();
    EXPECT_TRUE(linesOf(lhaLibrary).at(0).starts_with(L"a "));
}

TEST_F(PackDialog, KeepsTheExtensionOfAPathWithoutAFolder) {
    archive = L"pack.zip";
    load();
    presenter.onPacker(2);
    EXPECT_EQ(view.archive, L"pack.zip");
}

TEST_F(PackDialog, SwapsTheExtensionOfWhatWasTyped) {
    load();
    presenter.onArchive(LR"(D:\other\my.zip)");
    presenter.onPacker(2);
    EXPECT_EQ(view.archive, LR"(D:\other\my.cab)");
}

TEST_F(PackDialog, ChoosesThePackerByTheExtension) {
    archive = LR"(C:\out\new.LzH)";
    load();
    EXPECT_EQ(view.packer, 1);
    EXPECT_EQ(view.usable(), "03");
}

TEST_F(PackDialog, ChoosesTheFirstPackerForAnExtensionThatIsNotThere) {
    archive = LR"(C:\out\new.cab)";
    load(kind::kCreateZip | kind::kCreateLzh);
    EXPECT_EQ(view.packer, 0);
    EXPECT_EQ(view.archive, LR"(C:\out\new.zip)");
}

TEST_F(PackDialog, BrowsesForAnArchiveOfItsKind) {
    load();
    presenter.onBrowse();
    presenter.onPacker(1);
    presenter.onBrowse();
    presenter.onPacker(2);
    view.archiveAnswer = LR"(D:\x\chosen.cab)";
    presenter.onBrowse();
    EXPECT_EQ(view.log,
              (Names{LR"(Create Zip File; All Files (*.*)|*.*|Zip Files (*.zip)|*.zip; zip; C:\out\new.zip)",
                     LR"(Create LHA File; All Files (*.*)|*.*|LHA Files (*.lzh)|*.lzh; lzh; C:\out\new.lzh)",
                     LR"(Create CAB File; All Files (*.*)|*.*|CAB Files (*.cab)|*.cab; cab; C:\out\new.cab)"}));
    EXPECT_EQ(view.archive, LR"(D:\x\chosen.cab)");
}

TEST_F(PackDialog, PicksMoreNames) {
    view.namesAnswer = {LR"(C:\base\dir\c.txt)", LR"(c:\BASE\z.txt)", LR"(C:\base\a.txt)"};
    load();
    presenter.onPickNames();
    EXPECT_EQ(view.log, Names{LR"(names in C:\base)"});
    EXPECT_EQ(view.names, (Names{L"a.txt", L"b.txt", LR"(dir\c.txt)", L"z.txt"}));
    EXPECT_EQ(boxes(), L"");
    view.namesAnswer = {LR"(C:\elsewhere\x.txt)", LR"(C:\baseball\x.txt)"};
    presenter.onPickNames();
    EXPECT_EQ(view.names.size(), 4U);
    EXPECT_EQ(boxes(), L"[Compress Files|Only files in this folder and below it can be added:\r\nC:\\base]");
}

TEST_F(PackDialog, TakesNamesOut) {
    list = L"a.txt\r\nb.txt\r\ndir";
    load();
    presenter.onRemoveNames({0, 2});
    EXPECT_EQ(view.names, Names{L"b.txt"});
    presenter.onOk();
    EXPECT_EQ(library.calls.at(0).slots, (std::vector<std::string>{"b.txt", "b.txt"}));
    EXPECT_EQ(list, L"b.txt");
}

TEST_F(PackDialog, CancelsWithoutRunningAnything) {
    load();
    presenter.onCancel();
    EXPECT_EQ(view.log, Names{L"close"});
    EXPECT_TRUE(library.calls.empty());
    EXPECT_EQ(list, L"a.txt\r\nb.txt\r\n");
}

TEST_F(PackDialog, CreatesAZip) {
    load();
    presenter.onLevel(0);
    presenter.onOption(PackOption::Recurse, true);
    presenter.onOption(PackOption::FullMessage, true);
    library.whileRunning = [&](ZipEvents& events) {
        EXPECT_EQ(view.log, Names{L"hide"});
        events.message("adding: a.txt\n");
    };
    presenter.onOk();
    ASSERT_EQ(library.calls.size(), 1U);
    EXPECT_EQ(library.calls[0].options.level, '9');
    EXPECT_EQ(library.calls[0].options.recurse, 1);
    EXPECT_EQ(library.calls[0].options.verbose, 1);
    EXPECT_EQ(library.calls[0].slots, (std::vector<std::string>{"a.txt", "a.txt", "b.txt"}));
    EXPECT_EQ(library.calls[0].archive, R"(C:\out\new.zip)");
    EXPECT_EQ(view.log, (Names{L"hide", L"close"}));
    EXPECT_EQ(list, L"a.txt\r\nb.txt") << "the line end behind the last name is cut";
    EXPECT_EQ(view.messagesShown,
              Names{L"adding: a.txt\r\n1 files are added\r\n0 files are updated\r\n0 files are deleted"});
}

TEST_F(PackDialog, StoresAtTheLowLevel) {
    load();
    presenter.onLevel(2);
    presenter.onOk();
    EXPECT_EQ(library.calls.at(0).options.level, '0');
}

TEST_F(PackDialog, WritesBackWhatHasBeenCreated) {
    load();
    presenter.onArchive(LR"(C:\out\typed.zip)");
    presenter.onOk();
    EXPECT_EQ(archive, LR"(C:\out\typed.zip)");
    EXPECT_EQ(base, LR"(C:\base)");
    library.answers = {0, 10};
    presenter.onArchive(LR"(C:\out\failed.zip)");
    presenter.onOk();
    EXPECT_EQ(archive, LR"(C:\out\typed.zip)");
    EXPECT_EQ(progress.open, 0);
}

TEST_F(PackDialog, ShowsTheMessagesOfAFailedRunToo) {
    library.answers = {14};
    pack(0, {PackOption::FullMessage});
    EXPECT_EQ(boxes(), L"[Compression Error|Error Writing To A File]");
    EXPECT_EQ(view.messagesShown, Names{L"Error Writing To A File"});
    EXPECT_EQ(view.log.back(), L"close");
}

TEST_F(PackDialog, ShowsNoMessagesWithoutARun) {
    list = L"";
    pack(0, {PackOption::FullMessage});
    EXPECT_EQ(view.messagesShown, Names{});
    EXPECT_TRUE(library.calls.empty());
    EXPECT_EQ(view.log, (Names{L"hide", L"close"}));
}

TEST_F(PackDialog, CreatesAnLzh) {
    list = L"a.txt\r\n dir \r\ngone.txt\r\n";
    pack(1, {PackOption::Recurse, PackOption::SystemAndHidden, PackOption::FolderInfo});
    EXPECT_EQ(linesOf(lhaLibrary), Names{LR"(a -r2 -a1 -x1  C:\out\new.lzh C:\base\ @C:\Temp\VTL1.TMP)"});
    EXPECT_EQ(listBytes, "a.txt\r\ndir\r\n");
    EXPECT_EQ(lhaLibrary.owners.back(), owner);
    EXPECT_EQ(currentFolder, LR"(C:\base)");
    EXPECT_EQ(system.currentFolder(), LR"(C:\before)");
    EXPECT_EQ(files.find(LR"(C:\Temp\VTL1.TMP)"), nullptr) << "the response file goes";
    EXPECT_EQ(archive, LR"(C:\out\new.lzh)");
    EXPECT_EQ(boxes(), L"");
    EXPECT_TRUE(cabLibrary.calls.empty());
}

TEST_F(PackDialog, CreatesACab) {
    list = L"a.txt\r\ndir";
    pack(2, {PackOption::Recurse, PackOption::Password});
    EXPECT_EQ(linesOf(cabLibrary), Names{LR"(-a -mz -k -r  C:\out\new.cab C:\base\ @C:\Temp\VTL1.TMP)"});
    EXPECT_EQ(listBytes, "a.txt\r\ndir\\\r\n");
    EXPECT_EQ(archive, LR"(C:\out\new.cab)");
}

TEST_F(PackDialog, SaysWhyALibraryHasFailed) {
    lhaLibrary.runAnswer = 0x8011;
    pack(1);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, L"LHA Message");
    EXPECT_EQ(messages.shown[0].text, lhaDriver.ErrString());
    EXPECT_NE(messages.shown[0].text, L"");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(messages.shown[0].owner, owner);
    EXPECT_EQ(list, L"a.txt\r\nb.txt\r\n") << "nothing is written back";
    EXPECT_EQ(view.log.back(), L"close");
    cabLibrary.runAnswer = 0x8020;
    presenter.onPacker(2);
    presenter.onOk();
    EXPECT_EQ(messages.shown.at(1).title, L"CAB Message");
}

TEST_F(PackDialog, DoesNotHandAnEmptyListToALibrary) {
    list = L"gone.txt\r\n";
    information.errorTexts[2] = L"not found";
    pack(1);
    EXPECT_EQ(linesOf(lhaLibrary), Names{});
    EXPECT_EQ(boxes(), L"[LHA Message|not found]");
}

TEST_F(PackDialog, CreatesTheFolderOfTheArchive) {
    archive = LR"(C:\one\two\new.zip)";
    pack(0);
    EXPECT_NE(files.find(LR"(C:\one\two)"), nullptr);
    EXPECT_EQ(boxes(), L"");
}

TEST_F(PackDialog, LeavesAFolderThatCannotBeCreatedToTheLibrary) {
    archive = LR"(C:\one\new.zip)";
    files.fail(L"createFolder", LR"(C:\one)", 5);
    library.answers = {15};
    pack(0);
    EXPECT_EQ(boxes(), L"[Compression Error|Could't Open To Write Error]");
}

TEST_F(PackDialog, CreatesNoFolderForAPathWithoutOne) {
    archive = L"pack.zip";
    files.clearLog();
    pack(0);
    EXPECT_EQ(files.calls(L"createFolder"), Names{});
    EXPECT_EQ(library.calls.at(0).archive, "pack.zip");
}

TEST_F(PackDialog, RunsOnceAtATime) {
    load();
    library.whileRunning = [&](ZipEvents&) { presenter.onOk(); };
    presenter.onOk();
    EXPECT_EQ(library.calls.size(), 1U);
    EXPECT_EQ(view.log, (Names{L"hide", L"close"}));
}

}  // namespace
}  // namespace tovar::test
