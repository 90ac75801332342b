#include <stdexcept>

#include "front/fakes/front_fixture.h"

namespace tovar {
namespace {

class FakeCreationWindows final : public CreationWindows {
public:
    FakeCreationWindows(test::Journal& log, test::FakeWindowSystem& system) : journal_(log), windows_(system) {}

    bool hasProgress = true;
    WindowHandle owner = nullptr;
    int closed = 0;
    std::function<void()> whileShown;

    std::unique_ptr<ProgressWindow> createProgress() override {
        if (!hasProgress) return nullptr;
        journal_.push_back(L"create progress");
        windows_.sizes[test::windowNumber(50)] = {400, 100};
        return std::make_unique<Progress>(journal_);
    }
    void preparePackDialog(int argument, WindowHandle window) override {
        journal_.push_back(L"prepare " + std::to_wstring(argument));
        owner = window;
    }
    void close() noexcept override { ++closed; }
    void showPackDialog() override {
        journal_.push_back(L"pack");
        if (whileShown) whileShown();
    }

private:
    class Progress final : public ProgressWindow {
    public:
        explicit Progress(test::Journal& journal) : journal_(journal) {}
        ~Progress() override { journal_.push_back(L"destroy progress"); }
        [[nodiscard]] WindowHandle hWnd() const override { return test::windowNumber(50); }

    private:
        test::Journal& journal_;
    };

    test::Journal& journal_;
    test::FakeWindowSystem& windows_;
};

class CreateArchive : public test::FrontFixture {
protected:
    TovarPorts withDialogs() {
        TovarPorts result = ports();
        result.creation = &creation;
        return result;
    }

    bool create(TovarOperations& object) {
        journal.clear();
        return object.CreateArchive(LR"(C:\new.zip)", LR"(C:\Target)", L"a.txt\r\nb.txt", &host);
    }

    FakeCreationWindows creation{journal, windows};
};

TEST_F(CreateArchive, ShowsThePackDialogAndReturnsFalse) {
    TovarOperations object(withDialogs());
    EXPECT_FALSE(create(object));
    EXPECT_EQ(journal, (test::Journal{L"messages", L"create progress", L"parent of 50 is 7",
                                      L"move 50 to 300,300 size 400x100", L"prepare 0", L"pack", L"destroy progress"}));
}

TEST_F(CreateArchive, StoresWhatIsToBeCreated) {
    TovarOperations object(withDialogs());
    EXPECT_FALSE(create(object));
    EXPECT_EQ(state.archiveFile, LR"(C:\new.zip)");
    EXPECT_EQ(state.archiveFolder, LR"(C:\Target)");
    EXPECT_EQ(state.fileList, L"a.txt\r\nb.txt");
    EXPECT_FALSE(object.IsBusy());
}

TEST_F(CreateArchive, LetsMessagesRunBeforeItStoresAnything) {
    TovarOperations object(withDialogs());
    std::wstring fileMeanwhile = L"unset";
    pump.whilePending = [&] { fileMeanwhile = state.archiveFile; };
    EXPECT_FALSE(create(object));
    EXPECT_EQ(fileMeanwhile, L"");
}

TEST_F(CreateArchive, DoesNothingWithoutAFileOrAFolder) {
    TovarOperations object(withDialogs());
    journal.clear();
    EXPECT_FALSE(object.CreateArchive(LR"(C:\new.zip)", L"", L"a.txt", &host));
    EXPECT_FALSE(object.CreateArchive(L"", LR"(C:\Target)", L"a.txt", &host));
    EXPECT_EQ(journal, test::Journal{});
    EXPECT_EQ(state.archiveFile, L"");
    EXPECT_EQ(state.fileList, L"");
}

TEST_F(CreateArchive, TakesAnEmptyList) {
    TovarOperations object(withDialogs());
    journal.clear();
    EXPECT_FALSE(object.CreateArchive(LR"(C:\new.zip)", LR"(C:\Target)", L"", nullptr));
    EXPECT_EQ(journal, (test::Journal{L"messages", L"create progress", L"prepare 0", L"pack", L"destroy progress"}));
}

TEST_F(CreateArchive, GoesOnWithoutAProgressWindow) {
    creation.hasProgress = false;
    TovarOperations object(withDialogs());
    EXPECT_FALSE(create(object));
    EXPECT_EQ(journal, (test::Journal{L"messages", L"prepare 0", L"pack"}));
}

TEST_F(CreateArchive, ShowsNothingWhereThereAreNoDialogs) {
    TovarOperations object(ports());
    EXPECT_FALSE(create(object));
    EXPECT_EQ(journal, test::Journal{L"messages"});
    EXPECT_EQ(state.fileList, L"a.txt\r\nb.txt");
}

TEST_F(CreateArchive, ShowsTheDialogOverTheHost) {
    TovarOperations object(withDialogs());
    EXPECT_FALSE(create(object));
    EXPECT_EQ(creation.owner, host.window);
    host.window = nullptr;
    EXPECT_FALSE(create(object));
    EXPECT_EQ(creation.owner, nullptr);
}

TEST_F(CreateArchive, IsBusyMeanwhile) {
    TovarOperations object(withDialogs());
    bool busy = false;
    creation.whileShown = [&] { busy = object.IsBusy(); };
    EXPECT_FALSE(create(object));
    EXPECT_TRUE(busy);
    EXPECT_FALSE(object.IsBusy());
}

TEST_F(CreateArchive, ClosesItsDialogWhenAnObjectGoes) {
    TovarOperations object(withDialogs());
    creation.whileShown = [&] { const TovarOperations other(withDialogs()); };
    EXPECT_FALSE(create(object));
    EXPECT_EQ(creation.closed, 1);
}

TEST_F(CreateArchive, CreatesOneArchiveAtATime) {
    TovarOperations object(withDialogs()), other(withDialogs());
    creation.whileShown = [&] {
        creation.whileShown = nullptr;
        EXPECT_FALSE(other.CreateArchive(LR"(C:\second.zip)", LR"(C:\Target)", L"c.txt", &host));
    };
    EXPECT_FALSE(create(object));
    EXPECT_EQ(std::ranges::count(journal, L"pack"), 1);
    EXPECT_EQ(state.archiveFile, LR"(C:\new.zip)");
}

}  // namespace
}  // namespace tovar
