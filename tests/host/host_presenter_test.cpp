#include "host/sample/host_presenter.h"

#include <gtest/gtest.h>

#include <map>

namespace tovar::host {
namespace {

struct FakeView final : HostView {
    void showFolder(const std::wstring& path, const std::vector<FolderItem>& shown) override {
        folder = path;
        items = shown;
    }
    void showStatus(const std::wstring& text) override { status = text; }
    std::wstring folder, status;
    std::vector<FolderItem> items;
};

struct FakeComponent final : ArchiveComponent {
    bool isBusy() override { return busy; }
    void setFont(const std::wstring&, void*) override {}
    void configure() override { ++configured; }
    bool canCreateArchive() override { return creates; }
    void createArchive(const std::wstring& file, const std::wstring& folder, const std::wstring& list) override {
        created = file + L"|" + folder + L"|" + list;
    }
    bool openArchive(const std::wstring& file, const std::wstring& folder) override {
        opened = file + L"|" + folder;
        return opens;
    }
    bool canOpenArchive(const std::wstring&, bool withMessages) override {
        askedWithMessages = withMessages;
        return accepts;
    }
    void setTempDir(const std::wstring&) override {}
    bool busy = false, creates = true, opens = true, accepts = true, askedWithMessages = false;
    int configured = 0;
    std::wstring opened, created;
};

struct FakeReader final : FolderReader {
    bool read(const std::filesystem::path& folder, std::vector<FolderItem>& items) override {
        const auto found = folders.find(folder);
        if (found == folders.end()) return false;
        items = found->second;
        return true;
    }
    std::map<std::filesystem::path, std::vector<FolderItem>> folders;
};

class HostPresenterTest : public testing::Test {
protected:
    HostPresenterTest() {
        reader.folders[root] = {{L"b.zip", false, 10}, {L"a b.txt", false, 5}, {L"sub", true, 0}};
        reader.folders[root / L"sub"] = {};
        presenter.showFolder(root);
    }
    const std::filesystem::path root = std::filesystem::path("/") / "base";
    FakeView view;
    FakeComponent component;
    FakeReader reader;
    HostPresenter presenter{view, component, reader};
};

TEST_F(HostPresenterTest, ShowsFoldersBeforeFilesByName) {
    ASSERT_EQ(view.items.size(), 3u);
    EXPECT_EQ(view.items[0].name, L"sub");
    EXPECT_EQ(view.items[1].name, L"a b.txt");
    EXPECT_EQ(view.items[2].name, L"b.zip");
    EXPECT_EQ(view.status, L"3 items");
}

TEST_F(HostPresenterTest, KeepsTheFolderWhenAnotherCannotBeRead) {
    EXPECT_FALSE(presenter.showFolder(root / L"gone"));
    EXPECT_EQ(presenter.folder(), root);
    EXPECT_EQ(view.status, L"The folder " + (root / L"gone").wstring() + L" cannot be read.");
}

TEST_F(HostPresenterTest, EntersAFolderAndComesBack) {
    presenter.open(0);
    EXPECT_EQ(presenter.folder(), root / L"sub");
    presenter.goUp();
    EXPECT_EQ(presenter.folder(), root);
}

TEST_F(HostPresenterTest, HandsAFileWithItsFolderToTheComponent) {
    presenter.open(2);
    EXPECT_EQ(component.opened, (root / L"b.zip").wstring() + L"|" + root.wstring());
    EXPECT_TRUE(component.askedWithMessages);
    EXPECT_EQ(view.status, L"b.zip is open.");
}

TEST_F(HostPresenterTest, OpensNothingWhileTheComponentIsBusy) {
    component.busy = true;
    presenter.open(2);
    EXPECT_EQ(component.opened, L"");
    EXPECT_EQ(view.status, L"Close the archive that is open first.");
}

TEST_F(HostPresenterTest, SaysThatAFileIsRefused) {
    component.accepts = false;
    presenter.open(1);
    EXPECT_EQ(component.opened, L"");
    EXPECT_EQ(view.status, L"a b.txt is not opened as an archive.");
}

TEST_F(HostPresenterTest, SaysThatAnArchiveCouldNotBeOpened) {
    component.opens = false;
    presenter.open(2);
    EXPECT_EQ(view.status, L"b.zip could not be opened.");
}

TEST_F(HostPresenterTest, IgnoresAnItemThatIsNotThere) {
    presenter.open(3);
    EXPECT_EQ(component.opened, L"");
}

TEST_F(HostPresenterTest, CompressesTheSelectedItemsAsALinePerName) {
    presenter.compress({1, 0});
    EXPECT_EQ(component.created, (root / L"a b.zip").wstring() + L"|" + root.wstring() + L"|a b.txt\r\nsub");
}

TEST_F(HostPresenterTest, CompressesNothingWithoutASelection) {
    presenter.compress({});
    EXPECT_EQ(component.created, L"");
    EXPECT_EQ(view.status, L"Select the files to compress first.");
}

TEST_F(HostPresenterTest, SaysThatNothingCanBeCreated) {
    component.creates = false;
    presenter.compress({1});
    EXPECT_EQ(component.created, L"");
    EXPECT_EQ(view.status, L"No library that creates archives is there.");
}

TEST_F(HostPresenterTest, ConfiguresTheComponent) {
    presenter.configure();
    EXPECT_EQ(component.configured, 1);
}

}  // namespace
}  // namespace tovar::host
