#include <stdexcept>

#include "front/fakes/front_fixture.h"

namespace tovar {
namespace {

class OpenArchive : public test::FrontFixture {
protected:
    OpenArchive() {
        installUnZip();
        installTar();
    }

    bool open(TovarOperations& object, std::wstring_view file = LR"(C:\Archives\a.zip)",
              std::wstring_view folder = LR"(D:\Place)") {
        journal.clear();
        return object.OpenArchive(file, folder, &host);
    }

    static test::Journal shownAs(const std::wstring& window) {
        return {L"pointer 11",
                L"create " + window,
                L"parent of " + window + L" is 7",
                L"move " + window + L" to 200,140 size 600x420",
                L"painting off",
                LR"(fill \)",
                L"painting on",
                L"show",
                L"pointer 0"};
    }
};

TEST_F(OpenArchive, ShowsTheBrowserInTheHost) {
    TovarOperations object(ports());
    EXPECT_TRUE(open(object));
    EXPECT_EQ(journal, shownAs(L"101"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(OpenArchive, WaitsForWorkWithoutWindows) {
    TovarOperations object(ports());
    state.working = true;
    EXPECT_TRUE(object.IsBusy());
    EXPECT_FALSE(open(object));
    EXPECT_FALSE(object.CreateArchive(LR"(C:\Archives\a.zip)", LR"(C:\Archives)", L"a.txt", &host));
    EXPECT_TRUE(journal.empty());
    state.working = false;
    EXPECT_FALSE(object.IsBusy());
    EXPECT_TRUE(open(object));
}

TEST_F(OpenArchive, StoresTheArchiveForAll) {
    TovarOperations object(ports());
    ASSERT_TRUE(open(object, LR"(C:\Archives\b.tar.gz)"));
    EXPECT_EQ(state.archiveFile, LR"(C:\Archives\b.tar.gz)");
    EXPECT_EQ(state.archiveFolder, LR"(D:\Place)");
    EXPECT_EQ(state.archiveKind, kind::kTar);
}

TEST_F(OpenArchive, KnowsNoKindOnceTheBrowserIsGone) {
    TovarOperations object(ports());
    ASSERT_TRUE(open(object));
    EXPECT_EQ(state.archiveKind, kind::kZip);
    browsers.alive.at(0)->vanish();
    EXPECT_EQ(state.archiveKind, kind::kNone);
}

TEST_F(OpenArchive, TakesTheArchivesFolderForAnEmptyOne) {
    TovarOperations object(ports());
    ASSERT_TRUE(open(object, LR"(C:\Archives\a.zip)", L""));
    EXPECT_EQ(state.archiveFolder, LR"(C:\Archives\)");
}

TEST_F(OpenArchive, TellsTheBrowserWhatItNeeds) {
    TovarOperations object(ports());
    object.SetFont(L"Tahoma", nullptr);
    ASSERT_TRUE(open(object));
    const BrowserRequest& request = browsers.alive.at(0)->request;
    EXPECT_EQ(request.archiveFile, LR"(C:\Archives\a.zip)");
    EXPECT_EQ(request.workFolder, LR"(C:\Temp\)");
    EXPECT_EQ(request.fontName, L"Tahoma");
    EXPECT_EQ(request.driver->description().library, L"UnZip32.dll");
}

TEST_F(OpenArchive, IsBusyUntilTheBrowserIsGone) {
    TovarOperations object(ports());
    const TovarOperations second(ports());
    ASSERT_TRUE(open(object));
    EXPECT_TRUE(object.IsBusy());
    EXPECT_TRUE(second.IsBusy()) << "objects share the state";
    browsers.alive.at(0)->vanish();
    EXPECT_FALSE(object.IsBusy());
    EXPECT_FALSE(second.IsBusy());
}

TEST_F(OpenArchive, IsNotBusyBeforeTheBrowserIsShown) {
    TovarOperations object(ports());
    bool busyWhileFilling = true, busyWhileShowing = false;
    browsers.whileFilling = [&](test::FakeBrowser&) { busyWhileFilling = object.IsBusy(); };
    browsers.whileShowing = [&](test::FakeBrowser&) { busyWhileShowing = object.IsBusy(); };
    ASSERT_TRUE(open(object));
    EXPECT_FALSE(busyWhileFilling);
    EXPECT_TRUE(busyWhileShowing) << "the flag is set, then the window is shown";
}

TEST_F(OpenArchive, LeavesThePointerAloneForAnEmptyName) {
    TovarOperations object(ports());
    EXPECT_FALSE(open(object, L""));
    EXPECT_EQ(journal, test::Journal{});
}

TEST_F(OpenArchive, ReturnsFalseSilentlyForASwitchedOffKind) {
    registry.masks[hive::kCurrentUser] = kind::kTar;
    TovarOperations object(ports());
    EXPECT_FALSE(open(object));
    EXPECT_EQ(journal, (test::Journal{L"pointer 11", L"pointer 0"}));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_FALSE(object.IsBusy());
}

TEST_F(OpenArchive, ReturnsFalseSilentlyForWhatIsNoArchive) {
    TovarOperations object(ports());
    EXPECT_FALSE(open(object, LR"(C:\a.txt)"));
    EXPECT_EQ(journal, (test::Journal{L"pointer 11", L"pointer 0"}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(OpenArchive, TellsOfACorruptArchiveInFrontOfTheHost) {
    exports.checkAnswer = 0;
    TovarOperations object(ports());
    EXPECT_FALSE(open(object));
    EXPECT_EQ(journal, (test::Journal{L"pointer 11", L"pointer 0"}));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text,
              L"The necessary DLL is properly installed.\r\nBut it can not be opened by Vantrel.\r\n\r\n"
              L"It might be corrupted archive.\r\nIt will be tried by external program !!!");
    EXPECT_EQ(messages.shown[0].title, L"Open 'a.zip' by Vantrel");
    EXPECT_EQ(messages.shown[0].owner, hostWindow);
}

TEST_F(OpenArchive, WorksWithoutAHost) {
    TovarOperations object(ports());
    EXPECT_TRUE(object.OpenArchive(LR"(C:\a.zip)", L"", nullptr));
    EXPECT_EQ(windows.sizes.at(test::windowNumber(101)), (PixelSize{500, 300})) << "left as it was made";
    EXPECT_TRUE(object.IsBusy());
}

TEST_F(OpenArchive, WorksWithAHostThatHasNoWindow) {
    TovarOperations object(ports());
    host.window = test::windowNumber(4711);  // of no window
    EXPECT_TRUE(open(object));
    EXPECT_EQ(journal, (test::Journal{L"pointer 11", L"create 101", L"painting off", LR"(fill \)", L"painting on",
                                      L"show", L"pointer 0"}));
    exports.checkAnswer = 0;
    EXPECT_FALSE(open(object));
    EXPECT_EQ(messages.shown.at(0).owner, nullptr);
}

TEST_F(OpenArchive, UnloadsTheBrowserBeforeAnotherArchiveIsShown) {
    TovarOperations object(ports());
    ASSERT_TRUE(open(object));
    ASSERT_TRUE(open(object, LR"(C:\Archives\b.tar)"));
    test::Journal expected = shownAs(L"102");
    expected.insert(expected.begin() + 1, L"unload 101");
    EXPECT_EQ(journal, expected);
    ASSERT_EQ(browsers.alive.size(), 1U);
    EXPECT_EQ(browsers.alive[0]->request.archiveFile, LR"(C:\Archives\b.tar)");
    EXPECT_TRUE(object.IsBusy());
}

TEST_F(OpenArchive, KeepsTheShownArchiveWhenTheNextIsRefused) {
    TovarOperations object(ports());
    ASSERT_TRUE(open(object));
    exports.checkAnswer = 0;
    EXPECT_FALSE(open(object, LR"(C:\Archives\broken.zip)"));
    EXPECT_EQ(browsers.alive.size(), 1U);
    EXPECT_TRUE(object.IsBusy());
    EXPECT_EQ(state.archiveFile, LR"(C:\Archives\a.zip)");
}

TEST_F(OpenArchive, LetsASecondObjectTakeTheBrowserOver) {
    TovarOperations first(ports()), second(ports());
    ASSERT_TRUE(open(first));
    ASSERT_TRUE(open(second, LR"(C:\Archives\b.zip)"));
    ASSERT_EQ(browsers.alive.size(), 1U);
    EXPECT_EQ(browsers.alive[0]->request.archiveFile, LR"(C:\Archives\b.zip)");
    EXPECT_TRUE(first.IsBusy());
}

TEST_F(OpenArchive, OpensAgainAfterTheUserClosedTheBrowser) {
    TovarOperations object(ports());
    ASSERT_TRUE(open(object));
    browsers.alive.at(0)->vanish();
    EXPECT_TRUE(open(object));
    EXPECT_TRUE(object.IsBusy());
    EXPECT_EQ(browsers.alive.size(), 1U);
}

TEST_F(OpenArchive, KeepsOneDriverAKind) {
    TovarOperations object(ports());
    ASSERT_TRUE(open(object));
    ArchiveDriver* const zip = browsers.alive.at(0)->request.driver;
    ASSERT_TRUE(open(object, LR"(C:\Archives\b.tar)"));
    ArchiveDriver* const tar = browsers.alive.at(0)->request.driver;
    ASSERT_TRUE(open(object, LR"(C:\Archives\c.zip)"));
    EXPECT_EQ(browsers.alive.at(0)->request.driver, zip);
    EXPECT_NE(tar, zip);
    ASSERT_TRUE(open(object, LR"(C:\Archives\d.bz2)"));
    EXPECT_EQ(browsers.alive.at(0)->request.driver, tar) << "one for the whole family";
}

TEST_F(OpenArchive, GivesEachObjectItsOwnDrivers) {
    TovarOperations first(ports()), second(ports());
    ASSERT_TRUE(open(first));
    ArchiveDriver* const driver = browsers.alive.at(0)->request.driver;
    ASSERT_TRUE(open(second));
    EXPECT_NE(browsers.alive.at(0)->request.driver, driver);
}

TEST_F(OpenArchive, ForgetsTheOwnerOfTheDriversWindowsWithTheBrowser) {
    TovarOperations object(ports());
    browsers.whileFilling = [](test::FakeBrowser& browser) { browser.request.driver->setHWnd(browser.hWnd()); };
    ASSERT_TRUE(open(object));
    ArchiveDriver& driver = *browsers.alive.at(0)->request.driver;
    ASSERT_NE(driver.hWnd(), nullptr);
    browsers.alive.at(0)->vanish();
    EXPECT_EQ(driver.hWnd(), nullptr);
}

TEST_F(OpenArchive, ShowsAnArchiveThatListsNothing) {
    exports.members.clear();
    TovarOperations object(ports());
    EXPECT_TRUE(open(object));
    EXPECT_TRUE(object.IsBusy());
}

TEST_F(OpenArchive, ShowsAnArchiveWhoseListingFailed) {
    exports.handle = nullptr;
    TovarOperations object(ports());
    EXPECT_TRUE(open(object));
    ASSERT_EQ(messages.shown.size(), 1U) << "the driver's";
    EXPECT_EQ(messages.shown[0].title, L"ZIP Message");
}

TEST_F(OpenArchive, ReturnsFalseWhenNoWindowCanBeCreated) {
    browsers.fails = true;
    TovarOperations object(ports());
    EXPECT_FALSE(open(object));
    EXPECT_EQ(journal, (test::Journal{L"pointer 11", L"pointer 0"}));
    EXPECT_FALSE(object.IsBusy());
}

TEST_F(OpenArchive, ReturnsFalseWhenTheHostDiesMeanwhile) {
    TovarOperations object(ports());
    browsers.whileFilling = [](test::FakeBrowser& browser) { browser.vanish(); };
    EXPECT_FALSE(open(object));
    EXPECT_FALSE(object.IsBusy());
    EXPECT_EQ(journal.back(), L"pointer 0");
    browsers.whileFilling = nullptr;
    EXPECT_TRUE(open(object));
    EXPECT_EQ(browsers.alive.size(), 1U);
}

TEST_F(OpenArchive, ReturnsFalseWhenTheBrowserIsClosedAsItIsShown) {
    TovarOperations object(ports());
    browsers.whileShowing = [](test::FakeBrowser& browser) { browser.vanish(); };
    EXPECT_FALSE(open(object));
    EXPECT_FALSE(object.IsBusy());
}

TEST_F(OpenArchive, EndsAtAnErrorAndCleansUp) {
    TovarOperations object(ports());
    browsers.whileFilling = [](test::FakeBrowser&) { throw std::runtime_error("scripted"); };
    EXPECT_FALSE(open(object));
    EXPECT_EQ(journal.back(), L"pointer 0");
    EXPECT_FALSE(object.IsBusy());
    EXPECT_TRUE(browsers.alive.empty());
    browsers.whileFilling = nullptr;
    EXPECT_TRUE(open(object)) << "nothing is left behind";
}

TEST_F(OpenArchive, TurnsAwayAnArchiveWhileOneIsBeingOpened) {
    TovarOperations object(ports()), other(ports());
    bool inner = true, otherInner = true;
    browsers.whileFilling = [&](test::FakeBrowser&) {
        inner = object.OpenArchive(LR"(C:\Archives\b.zip)", L"", &host);
        otherInner = other.OpenArchive(LR"(C:\Archives\b.zip)", L"", &host);
    };
    EXPECT_TRUE(open(object));
    EXPECT_FALSE(inner);
    EXPECT_FALSE(otherInner);
    EXPECT_EQ(browsers.alive.size(), 1U);
    EXPECT_EQ(browsers.alive[0]->request.archiveFile, LR"(C:\Archives\a.zip)");
    EXPECT_EQ(messages.shown.size(), 0U);
}

TEST_F(OpenArchive, UnloadsTheBrowserWithItsObject) {
    {
        TovarOperations object(ports());
        ASSERT_TRUE(open(object));
        journal.clear();
    }
    EXPECT_EQ(journal, (test::Journal{L"write ArchiverSetting", L"write ArchiverSetting", L"unload 101"}));
    EXPECT_TRUE(browsers.alive.empty());
    EXPECT_FALSE(state.busy);
}

TEST_F(OpenArchive, UnloadsEveryWindowWithAnyObject) {
    TovarOperations first(ports());
    {
        const TovarOperations second(ports());
        ASSERT_TRUE(open(first));
    }
    EXPECT_TRUE(browsers.alive.empty());
    EXPECT_FALSE(first.IsBusy());
    EXPECT_TRUE(open(first)) << "and the first goes on";
}

TEST_F(OpenArchive, DoesNotUnloadWhileAnotherDestructionDoes) {
    auto second = std::make_unique<TovarOperations>(ports());
    {
        TovarOperations first(ports());
        ASSERT_TRUE(open(first));
        journal.clear();
        browsers.whileUnloading = [&](test::FakeBrowser&) { second.reset(); };
    }
    EXPECT_EQ(std::ranges::count(journal, L"unload 101"), 1);
    EXPECT_TRUE(browsers.alive.empty());
    EXPECT_FALSE(state.unloading);
}

TEST_F(OpenArchive, KeepsTheDriverUntilTheBrowserIsGone) {
    auto opener = std::make_unique<TovarOperations>(ports());
    ASSERT_TRUE(open(*opener));
    state.unloading = true;  // a destruction that is under way elsewhere
    opener.reset();
    ASSERT_EQ(browsers.alive.size(), 1U);
    EXPECT_EQ(browsers.alive[0]->request.driver->description().library, L"UnZip32.dll");
    browsers.alive[0]->vanish();
    EXPECT_FALSE(state.busy);
}

TEST_F(OpenArchive, FreesTheBrowserWhenItsUserClosesIt) {
    TovarOperations object(ports());
    ASSERT_TRUE(open(object));
    browsers.alive.at(0)->vanish();
    EXPECT_TRUE(browsers.alive.empty());
    EXPECT_EQ(state.session, nullptr);
}

TEST_F(OpenArchive, LeavesTheBrowserUntilItsLastMessageIsDone) {
    auto object = std::make_unique<TovarOperations>(ports());
    ASSERT_TRUE(open(*object));
    const std::weak_ptr<int> kept = surroundings;
    windows.enter(test::windowNumber(101));
    object.reset();
    surroundings.reset();
    EXPECT_FALSE(state.busy);
    ASSERT_EQ(browsers.alive.size(), 1U) << "the window's code is still running";
    EXPECT_FALSE(kept.expired());
    windows.leave(test::windowNumber(101));
    EXPECT_TRUE(browsers.alive.empty());
    EXPECT_TRUE(kept.expired());
}

TEST_F(OpenArchive, OpensAnotherArchiveFromAMessageOfTheFirst) {
    TovarOperations object(ports());
    ASSERT_TRUE(open(object));
    windows.enter(test::windowNumber(101));
    EXPECT_TRUE(open(object, LR"(C:\Archives\b.tar)"));
    EXPECT_EQ(browsers.alive.size(), 2U);
    windows.leave(test::windowNumber(101));
    ASSERT_EQ(browsers.alive.size(), 1U);
    EXPECT_EQ(browsers.alive[0]->request.archiveFile, LR"(C:\Archives\b.tar)");
    EXPECT_TRUE(object.IsBusy());
}

TEST_F(OpenArchive, ReturnsFalseWhenTheWindowCannotBeWatched) {
    windows.refusesWatches = true;
    TovarOperations object(ports());
    EXPECT_FALSE(open(object));
    EXPECT_TRUE(browsers.alive.empty());
    EXPECT_FALSE(object.IsBusy());
    EXPECT_EQ(journal.back(), L"pointer 0");
}

TEST_F(OpenArchive, SurvivesItsWindowGoingBeforeTheObject) {
    {
        TovarOperations object(ports());
        ASSERT_TRUE(open(object));
        browsers.alive.at(0)->vanish();
        journal.clear();
    }
    EXPECT_TRUE(browsers.alive.empty());
    EXPECT_FALSE(state.busy);
}

}  // namespace
}  // namespace tovar
