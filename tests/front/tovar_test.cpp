#include "front/tovar.h"

#include "front/fakes/front_fixture.h"

namespace tovar {
namespace {

class Tovar : public test::FrontFixture {};

TEST_F(Tovar, LoadsTheSettingBeforeItComputesWhatMayBeUsed) {
    installUnZip();
    installTar();
    registry.masks[hive::kCurrentUser] = kind::kTar | kind::kRar;
    const TovarOperations object(ports());
    EXPECT_EQ(journal, test::Journal{L"read ArchiverSetting"});
    EXPECT_EQ(state.availability, kind::kZip | kind::kTar);
    EXPECT_EQ(state.effective, kind::kTar);
    EXPECT_EQ(state.versions.at(kind::kZip), L"5.52.1.7");
}

TEST_F(Tovar, AllowsEverythingWithoutASetting) {
    installUnZip();
    install(L"InfoZip32.dll");
    const TovarOperations object(ports());
    EXPECT_EQ(state.effective, 16U | 1U);
}

TEST_F(Tovar, StartsInTheSystemsTemporaryFolderAndCreatesNothing) {
    const TovarOperations object(ports());
    EXPECT_EQ(workFolder.path(), LR"(C:\Temp\)");
    EXPECT_TRUE(files.calls(L"createFolder").empty());
    EXPECT_TRUE(files.calls(L"writeFile").empty());
    EXPECT_TRUE(files.calls(L"setAttributes").empty());
}

TEST_F(Tovar, StartsWithoutAWorkFolderWhenTheSystemHasNone) {
    installUnZip();
    systemPaths.tempFolderError = 5;
    const TovarOperations object(ports());
    EXPECT_EQ(workFolder.path(), L"");
    EXPECT_EQ(state.effective, kind::kZip) << "the steps before are done";
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(Tovar, ComputesTheMasksAnewForEachObject) {
    const TovarOperations first(ports());
    EXPECT_EQ(state.effective, 0U);
    installUnZip();
    const TovarOperations second(ports());
    EXPECT_EQ(state.effective, kind::kZip);
}

TEST_F(Tovar, PutsTheWorkFolderBackForEachObject) {
    files.addFolder(LR"(C:\Work)");
    TovarOperations first(ports());
    first.SetTempDir(LR"(C:\Work)");
    EXPECT_EQ(workFolder.path(), LR"(C:\Work\)");
    const TovarOperations second(ports());
    EXPECT_EQ(workFolder.path(), LR"(C:\Temp\)");
}

TEST_F(Tovar, SavesTheSettingWhenItGoes) {
    {
        const TovarOperations object(ports());
        settings.setArchiverSetting(0x210);
        journal.clear();
    }
    EXPECT_EQ(journal, (test::Journal{L"write ArchiverSetting", L"write ArchiverSetting"}));
    EXPECT_EQ(registry.masks.at(hive::kCurrentUser), 0x210U);
    EXPECT_EQ(registry.masks.at(hive::kLocalMachine), 0x210U);
}

TEST_F(Tovar, SavesASettingThatNobodyChanged) {
    registry.masks[hive::kLocalMachine] = 1023;
    { const TovarOperations object(ports()); }
    EXPECT_EQ(registry.masks.at(hive::kCurrentUser), 1023U);
}

TEST_F(Tovar, IsNotBusyByItself) {
    const TovarOperations object(ports());
    EXPECT_FALSE(object.IsBusy());
}

TEST_F(Tovar, KeepsTheFontForTheWindowsToCome) {
    TovarOperations object(ports());
    object.SetFont(L"MS Gothic", test::windowNumber(0x8A0A0B0C));
    EXPECT_EQ(state.fontName, L"MS Gothic");
    EXPECT_EQ(state.hFont, test::windowNumber(0x8A0A0B0C));
    object.SetFont(L"", nullptr);
    EXPECT_EQ(state.fontName, L"");
    EXPECT_EQ(state.hFont, nullptr);
}

TEST_F(Tovar, SharesTheFontBetweenObjects) {
    TovarOperations first(ports());
    first.SetFont(L"Tahoma", nullptr);
    const TovarOperations second(ports());
    EXPECT_EQ(state.fontName, L"Tahoma");
}

TEST_F(Tovar, MovesTheWorkFolderToTheShortNameAndHidesIt) {
    TovarOperations object(ports());
    files.addFolder(LR"(C:\Temporary files)");
    systemPaths.shortNames[LR"(C:\Temporary files)"] = LR"(C:\TEMPOR~1)";
    files.addFolder(LR"(C:\TEMPOR~1)");
    files.clearLog();
    object.SetTempDir(LR"(C:\Temporary files)");
    EXPECT_EQ(workFolder.path(), LR"(C:\TEMPOR~1\)");
    EXPECT_EQ(files.find(LR"(C:\TEMPOR~1)")->status.attributes, attribute::kFolder | 3U);
}

TEST_F(Tovar, CreatesAWorkFolderThatIsNotThere) {
    TovarOperations object(ports());
    files.addFolder(LR"(C:\base)");
    object.SetTempDir(LR"(C:\base\new)");
    EXPECT_EQ(workFolder.path(), LR"(C:\base\new\)");
    ASSERT_NE(files.find(LR"(C:\base\new)"), nullptr);
    EXPECT_EQ(files.find(LR"(C:\base\new)")->status.attributes, attribute::kFolder | 3U);
}

TEST_F(Tovar, SaysNothingAboutAWorkFolderThatCannotBeMade) {
    TovarOperations object(ports());
    object.SetTempDir(LR"(C:\no\such\parent)");
    EXPECT_EQ(workFolder.path(), LR"(C:\no\such\parent\)");
    object.SetTempDir(L"");
    EXPECT_EQ(workFolder.path(), L"");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(Tovar, CanCreateWithTheZipCreatorAlone) {
    install(L"InfoZip32.dll");
    const TovarOperations object(ports());
    EXPECT_TRUE(object.CanCreateArchive());
}

TEST_F(Tovar, CannotCreateWithoutAnyCreator) {
    installUnZip();
    installTar();
    const TovarOperations object(ports());
    EXPECT_FALSE(object.CanCreateArchive());
}

TEST_F(Tovar, CannotCreateWhatTheUserSwitchedOff) {
    install(L"InfoZip32.dll");
    registry.masks[hive::kCurrentUser] = kind::kReading;
    const TovarOperations object(ports());
    EXPECT_FALSE(object.CanCreateArchive());
}

class CreationBit : public test::FrontFixture, public testing::WithParamInterface<ArchiveKind> {};

TEST_P(CreationBit, IsEnoughToCreate) {
    const TovarOperations object(ports());
    EXPECT_FALSE(object.CanCreateArchive());
    state.effective = GetParam();
    EXPECT_TRUE(object.CanCreateArchive());
    state.effective = ~kind::kCreating;
    EXPECT_FALSE(object.CanCreateArchive());
}

INSTANTIATE_TEST_SUITE_P(Bits, CreationBit, testing::Values(1U, 2U, 4U));

TEST_F(Tovar, ShowsTheConfigurationDialog) {
    TovarOperations object(ports());
    object.Configure();
    EXPECT_EQ(configuration.shown, 1);
    object.Configure();
    EXPECT_EQ(configuration.shown, 2);
    EXPECT_EQ(configuration.broughtToFront, 0);
}

TEST_F(Tovar, ShowsOneConfigurationDialogAtATime) {
    TovarOperations first(ports()), second(ports());
    configuration.whileShown = [&] { second.Configure(); };
    first.Configure();
    EXPECT_EQ(configuration.shown, 1);
    EXPECT_EQ(configuration.broughtToFront, 1);
}

TEST_F(Tovar, ShowsThePackDialogInPlaceOfTheConfiguration) {
    TovarOperations object(ports());
    creation.whileShown = [&] { object.Configure(); };
    EXPECT_FALSE(object.CreateArchive(LR"(C:\new.zip)", LR"(C:\Target)", L"a.txt", &host));
    EXPECT_EQ(configuration.shown, 0);
    EXPECT_EQ(creation.broughtToFront, 1);
    object.Configure();
    EXPECT_EQ(configuration.shown, 1);
}

TEST_F(Tovar, ClosesTheConfigurationWhenAnObjectGoes) {
    TovarOperations object(ports());
    configuration.whileShown = [&] {
        { const TovarOperations other(ports()); }
        EXPECT_EQ(configuration.closed, 1);
    };
    object.Configure();
    EXPECT_EQ(configuration.shown, 1);
}

TEST_F(Tovar, ObeysWhatWasConfigured) {
    install(L"InfoZip32.dll");
    installTar();
    TovarOperations object(ports());
    configuration.whileShown = [&] { state.effective = kind::kTar; };
    EXPECT_TRUE(object.CanCreateArchive());
    object.Configure();
    EXPECT_FALSE(object.CanCreateArchive());
}

}  // namespace
}  // namespace tovar
