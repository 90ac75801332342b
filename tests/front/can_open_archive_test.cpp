#include "front/fakes/front_fixture.h"

namespace tovar {
namespace {

constexpr std::wstring_view kUnavailable =
    L"The necessary DLL is not properly installed.\r\nOr, the user turned off the use of DLL.\r\n\r\n"
    L"Check the configuration or install Vantrel again.";
constexpr std::wstring_view kRefused =
    L"The necessary DLL is properly installed.\r\nBut it can not be opened by Vantrel.\r\n\r\n"
    L"It might be corrupted archive.\r\nIt will be tried by external program !!!";

class CanOpenArchive : public test::FrontFixture {
protected:
    /// @return what nArcMode is afterwards; -77 when it was left alone
    std::int32_t modeFor(TovarOperations& object, std::wstring_view file, bool messages_ = false) {
        std::int32_t mode = -77;
        opened = object.CanOpenArchive(file, mode, messages_);
        return mode;
    }

    bool opened = false;
};

TEST_F(CanOpenArchive, AcceptsWhatTheDriverAccepts) {
    installUnZip();
    installTar();
    TovarOperations object(ports());
    EXPECT_EQ(modeFor(object, LR"(C:\a.zip)"), 16);
    EXPECT_TRUE(opened);
    for (const wchar_t* file : {LR"(C:\a.tar)", LR"(C:\a.tgz)", LR"(C:\a.gz)", LR"(C:\a.bz2)", LR"(C:\a.Z)"}) {
        EXPECT_EQ(modeFor(object, file), 512);
        EXPECT_TRUE(opened);
    }
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CanOpenArchive, HandsTheWholeNameToTheDriver) {
    installUnZip();
    TovarOperations object(ports());
    exports.calls.clear();
    EXPECT_EQ(modeFor(object, LR"(C:\a folder\b,c.zip)"), 16);
    EXPECT_EQ(exports.calls, (std::vector<std::string>{R"(CheckArchive C:\a folder\b,c.zip 0)"}));
}

TEST_F(CanOpenArchive, RefusesAnEmptyNameSilently) {
    installUnZip();
    TovarOperations object(ports());
    EXPECT_EQ(modeFor(object, L"", true), -77);
    EXPECT_FALSE(opened);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CanOpenArchive, RefusesWhatIsNoArchiveNameSilently) {
    installUnZip();
    TovarOperations object(ports());
    exports.calls.clear();
    for (const wchar_t* file : {L"a", L"a.", L"a.txt", L"a.gz.txt", LR"(C:\a.b\file)"}) {
        EXPECT_EQ(modeFor(object, file, true), -77);
        EXPECT_FALSE(opened);
    }
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(exports.calls.empty());
}

TEST_F(CanOpenArchive, RefusesEverythingSilentlyWhenNothingCanBeRead) {
    install(L"InfoZip32.dll");
    TovarOperations object(ports());
    EXPECT_EQ(modeFor(object, L"a.zip", true), -77);
    EXPECT_FALSE(opened);
    EXPECT_TRUE(messages.shown.empty()) << "no reading bit at all: not even the message";
}

TEST_F(CanOpenArchive, LoadsNothingForAnAllowMaskOfZero) {
    installUnZip();
    registry.masks[hive::kCurrentUser] = 0;
    TovarOperations object(ports());
    exports.calls.clear();
    EXPECT_EQ(modeFor(object, L"a.zip", true), -77);
    EXPECT_FALSE(object.CanCreateArchive());
    EXPECT_TRUE(exports.calls.empty());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CanOpenArchive, SaysThatAKindIsUnavailable) {
    installUnZip();
    TovarOperations object(ports());
    EXPECT_EQ(modeFor(object, LR"(C:\a folder\b.rar)", true), -77);
    EXPECT_FALSE(opened);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, kUnavailable);
    EXPECT_EQ(messages.shown[0].title, L"Open 'b.rar' by Vantrel");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Information);
    EXPECT_EQ(messages.shown[0].owner, nullptr);
}

TEST_F(CanOpenArchive, SaysNothingOfAnUnavailableKindUnlessAsked) {
    installUnZip();
    TovarOperations object(ports());
    EXPECT_EQ(modeFor(object, LR"(C:\b.rar)", false), -77);
    EXPECT_FALSE(opened);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CanOpenArchive, TakesASwitchedOffKindForUnavailable) {
    installUnZip();
    installTar();
    registry.masks[hive::kCurrentUser] = kind::kTar;
    TovarOperations object(ports());
    exports.calls.clear();
    EXPECT_EQ(modeFor(object, L"b.ZIP", true), -77);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, kUnavailable);
    EXPECT_EQ(messages.shown[0].title, L"Open 'b.ZIP' by Vantrel");
    EXPECT_TRUE(exports.calls.empty()) << "the library is not asked";
}

TEST_F(CanOpenArchive, TakesATooOldLibraryForUnavailable) {
    installUnZip();
    installTar();
    exports.versionRegister = 60;
    TovarOperations object(ports());
    EXPECT_EQ(modeFor(object, L"b.zip", true), -77);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, kUnavailable);
}

TEST_F(CanOpenArchive, TellsOfARefusedFileWhateverTheCallerAsked) {
    installUnZip();
    exports.checkAnswer = 0;
    TovarOperations object(ports());
    for (const bool asked : {false, true}) {
        messages.shown.clear();
        EXPECT_EQ(modeFor(object, LR"(C:\a\broken.zip)", asked), -77);
        EXPECT_FALSE(opened);
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_EQ(messages.shown[0].text, kRefused);
        EXPECT_EQ(messages.shown[0].title, L"Open 'broken.zip' by Vantrel");
        EXPECT_EQ(messages.shown[0].icon, MessageIcon::Information);
    }
}

TEST_F(CanOpenArchive, TakesANegativeAnswerForARefusal) {
    installUnZip();
    exports.checkAnswer = -1;
    TovarOperations object(ports());
    EXPECT_EQ(modeFor(object, L"a.zip"), -77);
    EXPECT_FALSE(opened);
}

TEST_F(CanOpenArchive, NamesAFolderByItsEmptyFileNamePart) {
    installUnZip();
    exports.checkAnswer = 0;
    TovarOperations object(ports());
    EXPECT_EQ(modeFor(object, LR"(C:\folder.zip\)"), -77);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, L"Open '' by Vantrel");
}

TEST_F(CanOpenArchive, KeepsTheKindsApart) {
    installUnZip();
    TovarOperations object(ports());
    for (const wchar_t* file : {L"a.arj", L"a.rar", L"a.lzh", L"a.cab", L"a.ace", L"a.tar"}) {
        EXPECT_EQ(modeFor(object, file, true), -77) << file;
    }
    EXPECT_EQ(messages.shown.size(), 6U);
}

TEST_F(CanOpenArchive, RefusesANameThatIsTooLongForTheLibrary) {
    installUnZip();
    TovarOperations object(ports());
    exports.calls.clear();
    const std::wstring name = std::wstring(32000, L'x') + L".zip";
    EXPECT_EQ(modeFor(object, LR"(C:\)" + name), -77);
    EXPECT_TRUE(exports.calls.empty());
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, kRefused);
    EXPECT_EQ(messages.shown[0].title, L"Open '" + name + L"' by Vantrel");
}

TEST_F(CanOpenArchive, WorksWhileAnArchiveIsShown) {
    installUnZip();
    TovarOperations object(ports());
    ASSERT_TRUE(object.OpenArchive(LR"(C:\a.zip)", L"", &host));
    EXPECT_EQ(modeFor(object, LR"(C:\b.zip)"), 16);
    EXPECT_TRUE(object.IsBusy());
    EXPECT_EQ(state.archiveFile, LR"(C:\a.zip)");
}

}  // namespace
}  // namespace tovar
