#include <stdexcept>

#include "front/fakes/front_fixture.h"

namespace tovar {
namespace {

class CreateArchive : public test::FrontFixture {
protected:
    bool create(TovarOperations& object) {
        journal.clear();
        return object.CreateArchive(LR"(C:\new.zip)", LR"(C:\Target)", L"a.txt\r\nb.txt", &host);
    }
};

TEST_F(CreateArchive, ShowsThePackDialogAndReturnsFalse) {
    TovarOperations object(ports());
    EXPECT_FALSE(create(object));
    EXPECT_EQ(journal, (test::Journal{L"messages", L"create progress", L"parent of 50 is 7",
                                      L"move 50 to 300,300 size 400x100", L"prepare 0", L"pack", L"destroy progress"}));
}

TEST_F(CreateArchive, StoresWhatIsToBeCreated) {
    TovarOperations object(ports());
    EXPECT_FALSE(create(object));
    EXPECT_EQ(state.archiveFile, LR"(C:\new.zip)");
    EXPECT_EQ(state.archiveFolder, LR"(C:\Target)");
    EXPECT_EQ(state.fileList, L"a.txt\r\nb.txt");
    EXPECT_FALSE(object.IsBusy());
}

TEST_F(CreateArchive, LetsMessagesRunBeforeItStoresAnything) {
    TovarOperations object(ports());
    std::wstring fileMeanwhile = L"unset";
    pump.whilePending = [&] { fileMeanwhile = state.archiveFile; };
    EXPECT_FALSE(create(object));
    EXPECT_EQ(fileMeanwhile, L"");
}

TEST_F(CreateArchive, DoesNothingWithoutAFileOrAFolder) {
    TovarOperations object(ports());
    journal.clear();
    EXPECT_FALSE(object.CreateArchive(LR"(C:\new.zip)", L"", L"a.txt", &host));
    EXPECT_FALSE(object.CreateArchive(L"", LR"(C:\Target)", L"a.txt", &host));
    EXPECT_EQ(journal, test::Journal{});
    EXPECT_EQ(state.archiveFile, L"");
    EXPECT_EQ(state.fileList, L"");
}

TEST_F(CreateArchive, TakesAnEmptyList) {
    TovarOperations object(ports());
    journal.clear();
    EXPECT_FALSE(object.CreateArchive(LR"(C:\new.zip)", LR"(C:\Target)", L"", nullptr));
    EXPECT_EQ(journal, (test::Journal{L"messages", L"create progress", L"prepare 0", L"pack", L"destroy progress"}));
}

TEST_F(CreateArchive, GoesOnWithoutAProgressWindow) {
    creation.hasProgress = false;
    TovarOperations object(ports());
    EXPECT_FALSE(create(object));
    EXPECT_EQ(journal, (test::Journal{L"messages", L"prepare 0", L"pack"}));
}

TEST_F(CreateArchive, ShowsTheDialogOverTheHost) {
    TovarOperations object(ports());
    EXPECT_FALSE(create(object));
    EXPECT_EQ(creation.owner, host.window);
    host.window = nullptr;
    EXPECT_FALSE(create(object));
    EXPECT_EQ(creation.owner, nullptr);
}

TEST_F(CreateArchive, IsBusyMeanwhile) {
    TovarOperations object(ports());
    bool busy = false;
    creation.whileShown = [&] { busy = object.IsBusy(); };
    EXPECT_FALSE(create(object));
    EXPECT_TRUE(busy);
    EXPECT_FALSE(object.IsBusy());
}

TEST_F(CreateArchive, ClosesItsDialogWhenAnObjectGoes) {
    TovarOperations object(ports());
    creation.whileShown = [&] { const TovarOperations other(ports()); };
    EXPECT_FALSE(create(object));
    EXPECT_EQ(creation.closed, 1);
}

TEST_F(CreateArchive, CreatesOneArchiveAtATime) {
    TovarOperations object(ports()), other(ports());
    creation.whileShown = [&] {
        creation.whileShown = nullptr;
        EXPECT_FALSE(other.CreateArchive(LR"(C:\second.zip)", LR"(C:\Target)", L"c.txt", &host));
    };
    EXPECT_FALSE(create(object));
    EXPECT_EQ(std::ranges::count(journal, L"pack"), 1);
    EXPECT_EQ(creation.broughtToFront, 1);
    EXPECT_EQ(state.archiveFile, LR"(C:\new.zip)");
}

TEST_F(CreateArchive, WaitsForTheConfigurationToBeClosed) {
    TovarOperations object(ports());
    configuration.whileShown = [&] { EXPECT_FALSE(create(object)); };
    object.Configure();
    EXPECT_EQ(journal, test::Journal{}) << "the packers that are offered may change";
    EXPECT_EQ(configuration.broughtToFront, 1);
    EXPECT_EQ(creation.broughtToFront, 0);
    EXPECT_EQ(state.archiveFile, L"");
    EXPECT_FALSE(create(object));
    EXPECT_EQ(std::ranges::count(journal, L"pack"), 1);
}

}  // namespace
}  // namespace tovar
