#include "front/library_check.h"

#include "drivers/un_zip.h"
#include "front/fakes/front_fixture.h"

namespace tovar {
namespace {

class LibraryCheck : public test::FrontFixture {
protected:
    std::wstring check(std::uint16_t version, std::uint16_t minimum) {
        exports.versionRegister = version;
        cUnZip driver(libraries.getOrMissing(cUnZip::kDescription), messages, regional);
        return CheckLibrary(L"UnZip32.dll", driver, minimum, libraries, paths);
    }

    LibraryVersions checkAll() { return CheckArchiverLibraries(services(), paths); }
    ArchiveKind available() { return availabilityMask(checkAll()); }
};

TEST_F(LibraryCheck, GivesTheFileVersionOfAUsableLibrary) {
    installUnZip();
    EXPECT_EQ(check(78, 78), L"5.52.1.7");
    EXPECT_EQ(check(540, 78), L"5.52.1.7");
}

TEST_F(LibraryCheck, GivesNothingForAnOlderLibrary) {
    installUnZip();
    EXPECT_EQ(check(77, 78), L"");
    EXPECT_EQ(check(0, 78), L"");
}

TEST_F(LibraryCheck, TakesVersionOneAsUnusableWhateverTheMinimum) {
    installUnZip();
    EXPECT_EQ(check(1, 0), L"");
    EXPECT_EQ(check(1, 1), L"");
    EXPECT_EQ(check(0, 0), L"5.52.1.7") << "only exactly 1 is";
    EXPECT_EQ(check(2, 0), L"5.52.1.7");
}

TEST_F(LibraryCheck, GivesNothingForAMissingLibrary) { EXPECT_EQ(check(540, 0), L""); }

TEST_F(LibraryCheck, GivesNothingForALibraryThatCannotBeLoaded) {
    install(L"UnZip32.dll");
    EXPECT_EQ(check(540, 0), L"");
}

TEST_F(LibraryCheck, ReadsTheVersionAsSixteenBits) {
    installUnZip();
    exports.versionRegister = 0xABCD0000 | 540;
    EXPECT_EQ(checkAll().at(kind::kZip), L"5.52.1.7");
    exports.versionRegister = 0x00010000 | 77;
    EXPECT_EQ(checkAll().at(kind::kZip), L"");
}

TEST_F(LibraryCheck, HasNothingAvailableWithoutLibraries) {
    EXPECT_EQ(available(), 0U);
    EXPECT_TRUE(loader.loaded.empty());
    EXPECT_TRUE(messages.shown.empty()) << "a missing library is no error";
}

TEST_F(LibraryCheck, SetsTheBitOfEachUsableLibrary) {
    installUnZip();
    EXPECT_EQ(available(), 16U);
    installTar();
    EXPECT_EQ(available(), 16U | 512U);
}

TEST_F(LibraryCheck, AsksEachKindForItsOwnMinimum) {
    installUnZip();
    installTar();
    exports.versionRegister = 78;
    EXPECT_EQ(available(), 16U | 512U);
    exports.versionRegister = 77;
    EXPECT_EQ(available(), 512U) << "too old for ZIP, not for TAR";
    exports.versionRegister = 53;
    EXPECT_EQ(available(), 512U);
    exports.versionRegister = 52;
    EXPECT_EQ(available(), 0U);
}

TEST_F(LibraryCheck, TakesThePresenceOfTheZipCreatorForEnough) {
    install(L"InfoZip32.dll");
    EXPECT_EQ(available(), 1U) << "ZIP archives can be created but not opened";
    EXPECT_EQ(checkAll().at(kind::kCreateZip), L"5.52.1.7");
    EXPECT_TRUE(loader.loaded.empty());
}

TEST_F(LibraryCheck, TakesLibrariesWithoutAVersionResource) {
    install(L"InfoZip32.dll");
    installUnZip();
    information.versions.clear();
    EXPECT_EQ(available(), 16U | 1U);
    EXPECT_EQ(checkAll().at(kind::kZip), L"0.0.0.0");
    EXPECT_EQ(checkAll().at(kind::kCreateZip), L"0.0.0.0");
}

TEST_F(LibraryCheck, LeavesALibraryAsideWhoseVersionHasNoText) {
    install(L"UnZip32.dll", "UnZip", {1, 0x8000});
    EXPECT_EQ(available(), 0U);
    install(L"UnZip32.dll", "UnZip", {1, 0x7FFF});
    EXPECT_EQ(available(), 16U);
}

TEST_F(LibraryCheck, TakesThePresenceOfTheAceLibraryForEnough) {
    install(L"UnAce.dll");
    EXPECT_EQ(available(), 1024U);
    EXPECT_EQ(checkAll().at(kind::kAce), L"5.52.1.7");
    EXPECT_TRUE(loader.loaded.empty()) << "it is not even loaded";
}

TEST_F(LibraryCheck, TakesAnyRarLibraryButThatOfVersionOne) {
    install(L"UnRar32.dll", "Unrar");
    for (const std::uint32_t version : {0U, 2U, 40U}) {
        exports.versionRegister = version;
        EXPECT_EQ(available(), 32U) << version;
    }
    exports.versionRegister = 1;
    EXPECT_EQ(available(), 0U);
}

TEST_F(LibraryCheck, TakesAnArjLibraryFromVersion12On) {
    install(L"UnArj32j.dll", "Unarj");
    exports.versionRegister = 11;
    EXPECT_EQ(available(), 0U);
    exports.versionRegister = 12;
    EXPECT_EQ(available(), 64U);
}

TEST_F(LibraryCheck, TakesAnLzhLibraryFromVersion87OnAndItsCreationWithIt) {
    install(L"UnLha32.dll", "Unlha");
    exports.versionRegister = 86;
    EXPECT_EQ(available(), 0U);
    exports.versionRegister = 87;
    EXPECT_EQ(available(), 128U | 2U);
    const LibraryVersions found = checkAll();
    EXPECT_EQ(found.at(kind::kLzh), L"5.52.1.7");
    EXPECT_EQ(found.at(kind::kCreateLzh), L"5.52.1.7");
}

TEST_F(LibraryCheck, TakesACabLibraryFromVersion65OnAndItsCreationWithIt) {
    install(L"Cab32.dll", "Cab");
    exports.versionRegister = 64;
    EXPECT_EQ(available(), 0U);
    exports.versionRegister = 65;
    EXPECT_EQ(available(), 256U | 4U);
    EXPECT_EQ(checkAll().at(kind::kCreateCab), L"5.52.1.7");
}

TEST_F(LibraryCheck, GivesCreationItsOwnTextsAndBits) {
    const LibraryVersions versions = {{kind::kLzh, L"2.5.0.0"},
                                      {kind::kCreateLzh, L"2.5.0.0"},
                                      {kind::kCab, L""},
                                      {kind::kCreateCab, L""},
                                      {kind::kCreateZip, L"5.0.0.0"}};
    EXPECT_EQ(availabilityMask(versions), 128U | 2U | 1U);
    const LibraryVersions found = checkAll();
    EXPECT_TRUE(found.contains(kind::kCreateLzh));
    EXPECT_TRUE(found.contains(kind::kCreateCab));
}

// Both say which library it is and how old it may be.
TEST_F(LibraryCheck, RowsAndTheirDriversAgree) {
    int drivers = 0;
    for (const KindRow& row : kindTable()) {
        if (row.makeDriver == nullptr) continue;
        ++drivers;
        const DriverDescription& driver = row.makeDriver(services())->description();
        EXPECT_EQ(driver.library, row.library);
        EXPECT_EQ(driver.minimumVersion, row.minimumVersion.value_or(0));
    }
    EXPECT_EQ(drivers, 7);
}

TEST_F(LibraryCheck, LoadsTheLibraryOfTheFoundPath) {
    installUnZip();
    installTar();
    EXPECT_EQ(available(), 16U | 512U);
    EXPECT_EQ(loader.loaded, (std::vector<std::wstring>{pathOf(L"UnZip32.dll"), pathOf(L"Tar32.dll")}));
}

}  // namespace
}  // namespace tovar
