#include "browser/clipboard_copies.h"

#include "browser_exports/export_fixture.h"

namespace tovar {
namespace {

class ClipboardCopiesTest : public test::ExportFixture {
protected:
    /// Copies with a file "a.txt" in them.
    std::shared_ptr<const MemberCopies> make() {
        auto copies = std::make_shared<const MemberCopies>(copyPorts, items.makeFolder());
        shell.files.addFile(copies->folder() + L"a.txt");
        return copies;
    }
    bool put(const std::shared_ptr<const MemberCopies>& copies) {
        return onClipboard->put(copies, {copies->folder() + L"a.txt"});
    }
    void changed() {
        ASSERT_TRUE(watch.onChanged);
        const auto callback = watch.onChanged;
        callback();
    }

    test::FakeClipboard clipboard;
    test::FakeClipboardWatch watch;
    test::FakeTextCodec codec;
    std::unique_ptr<ClipboardCopies> onClipboard = std::make_unique<ClipboardCopies>(clipboard, codec, watch);
};

TEST_F(ClipboardCopiesTest, StayAsLongAsTheirNamesAreThere) {
    EXPECT_TRUE(put(make()));
    EXPECT_EQ(clipboard.names(), R"(C:\Temp\TovarEx-0000001a-00000000000000000000000000000001\a.txt||)");
    changed();  // the component's own change is told of, too
    EXPECT_EQ(namesIn(LR"(C:\Temp)").size(), 1U);
    EXPECT_TRUE(watch.onChanged);
}

TEST_F(ClipboardCopiesTest, GoWhenSomethingElseIsCopied) {
    put(make());
    clipboard.files.reset();
    changed();
    expectClean();
    EXPECT_FALSE(watch.onChanged);
}

TEST_F(ClipboardCopiesTest, GoWhenOtherFilesAreCopied) {
    put(make());
    clipboard.files = std::string{20} + std::string(19, '\0') + std::string("C:\\x\0\0", 6);
    changed();
    expectClean();
    onClipboard.reset();
    EXPECT_TRUE(clipboard.files.has_value()) << "others' list is not theirs to clear";
}

TEST_F(ClipboardCopiesTest, GoWhenAListOfNoFilesIsThere) {
    put(make());
    clipboard.files = std::string{20} + std::string(20, '\0');
    changed();
    expectClean();
}

TEST_F(ClipboardCopiesTest, StayWhileAnotherProgramHoldsTheClipboard) {
    put(make());
    clipboard.locked = true;
    changed();
    EXPECT_EQ(namesIn(LR"(C:\Temp)").size(), 1U);
}

TEST_F(ClipboardCopiesTest, GoWithTheComponentAndTakeTheirNamesAlong) {
    put(make());
    onClipboard.reset();
    EXPECT_FALSE(clipboard.files.has_value());
    EXPECT_FALSE(watch.onChanged);
    expectClean();
}

TEST_F(ClipboardCopiesTest, AreReplacedByTheNext) {
    put(make());
    put(make());
    EXPECT_EQ(namesIn(LR"(C:\Temp)"), std::vector<std::wstring>{test::kSecondName});
}

TEST_F(ClipboardCopiesTest, StayWhenTheNextCannotBePutThere) {
    put(make());
    clipboard.locked = true;
    EXPECT_FALSE(put(make()));
    EXPECT_EQ(namesIn(LR"(C:\Temp)"), std::vector<std::wstring>{test::kFirstName});
    clipboard.locked = false;
    EXPECT_TRUE(clipboard.names().find("1\\a.txt") != std::string::npos);
}

TEST_F(ClipboardCopiesTest, GoAtOnceWhenTheyCannotBePutThere) {
    clipboard.locked = true;
    EXPECT_FALSE(put(make()));
    expectClean();
    EXPECT_FALSE(watch.onChanged);
}

}  // namespace
}  // namespace tovar
