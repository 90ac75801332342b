// Members that are copied to the clipboard.

#include "browser/archive_exports.h"
#include "browser_exports/export_fixture.h"

namespace tovar {
namespace {

class NoConfirmations final : public Confirmations {
public:
    bool ask(WindowHandle, const Confirmation&, const Work&) override { return false; }
    void decline(WindowHandle) noexcept override {}
};

class NoDrags final : public DragSource {
public:
    bool drag(const std::shared_ptr<DragContents>&, DragButton) override { return false; }
};

class CopyMembers : public test::ExportFixture {
protected:
    [[nodiscard]] static std::wstring in(const std::wstring& path) {
        return std::wstring(LR"(C:\Temp\)") + test::kFirstName + L'\\' + path;
    }
    [[nodiscard]] static std::string onClipboard(const std::string& path) {
        return R"(C:\Temp\TovarEx-0000001a-00000000000000000000000000000001\)" + path + '|';
    }

    NoConfirmations confirmations;
    NoDrags drags;
    test::FakeClipboard clipboard;
    test::FakeClipboardWatch watch;
    test::FakeTextCodec codec;
    ClipboardCopies copies{clipboard, codec, watch};
    ArchiveExports exports{{{copyPorts, confirmations, drags, {}}, copies}};
};

TEST_F(CopyMembers, PutsWhatWasSelectedOnTheClipboard) {
    list<cUnZip>({"docs/sub/a.txt", "docs/b.txt"});
    unpacks({in(LR"(docs\sub\a.txt)"), in(LR"(docs\b.txt)")});
    exports.copy(scene(L"\\docs\\"), {folder(L"\\docs\\sub\\"), file(1)});
    const std::wstring whole = line();
    EXPECT_EQ(whole.substr(0, whole.find(L'@')),
              std::wstring(LR"( -x -i --j C:\a.xyz C:\Temp\)") + test::kFirstName + LR"(\ )");
    EXPECT_EQ(listed, "docs/sub/*.*\r\ndocs/b.txt\r\n\r\n") << "files of text end with a line end of their own";
    EXPECT_EQ(library.owners.back(), owner);
    EXPECT_EQ(clipboard.names(), onClipboard(R"(docs\sub)") + onClipboard(R"(docs\b.txt)") + '|');
    EXPECT_TRUE(isThere(in(LR"(docs\b.txt)")));
    EXPECT_TRUE(shell.messages.shown.empty());
}

TEST_F(CopyMembers, LeavesOutWhatIsNotThere) {
    list<cUnZip>({"a.txt", "b.txt"});
    library.runAnswer = 0x8020;
    unpacks({in(L"a.txt")});
    exports.copy(scene(), {file(0), file(1)});
    EXPECT_EQ(clipboard.names(), onClipboard("a.txt") + '|');
    EXPECT_EQ(shell.messages.shown.size(), 1U) << "the library's own message";
}

TEST_F(CopyMembers, LeavesTheClipboardAloneWhenNothingIsThere) {
    list<cUnZip>({"a.txt"});
    clipboard.files = "something";
    exports.copy(scene(), {file(0)});
    EXPECT_EQ(clipboard.files, "something");
    expectClean();
}

TEST_F(CopyMembers, FindsTheFormWithUnderscores) {
    list<cUnZip>({"my notes/a b.txt"});
    unpacks({in(LR"(my_notes\a_b.txt)")});
    exports.copy(scene(), {folder(L"\\my notes\\")});
    EXPECT_EQ(clipboard.names(), onClipboard("my_notes") + '|');
}

TEST_F(CopyMembers, OfUnusualNames) {
    list<cUnTar>({"@list", "-x", "a b,c"});
    unpacks({in(L"@list"), in(L"-x"), in(L"a b,c")});
    exports.copy(scene(), {file(0), file(1), file(2)});
    EXPECT_EQ(listed, "@list\r\n-x\r\n\"a b,c\"\r\n\r\n");
    EXPECT_EQ(clipboard.names(), onClipboard("@list") + onClipboard("-x") + onClipboard("a b,c") + '|');
}

TEST_F(CopyMembers, LeavesOutWhatCouldLeadElsewhere) {
    list<cUnZip>({"../up.txt", "a.txt"});
    shell.files.addFile(LR"(C:\Temp\up.txt)");
    unpacks({in(L"a.txt")});
    exports.copy(scene(), {folder(L"\\..\\"), file(1)});
    EXPECT_EQ(clipboard.names(), onClipboard("a.txt") + '|');
}

TEST_F(CopyMembers, SaysSoWhenAnotherProgramHoldsTheClipboard) {
    list<cUnZip>({"a.txt"});
    unpacks({in(L"a.txt")});
    clipboard.locked = true;
    exports.copy(scene(), {file(0)});
    ASSERT_EQ(shell.messages.shown.size(), 1U);
    EXPECT_EQ(shell.messages.shown[0].text, L"Another program uses the clipboard. Try it again.");
    EXPECT_EQ(shell.messages.shown[0].title, L"Extraction Message");
    expectClean();
}

TEST_F(CopyMembers, PutsNothingThereWhenTheWindowGoesMeanwhile) {
    list<cUnZip>({"a.txt"});
    library.whileRunning = [&] {
        shell.files.addFile(in(L"a.txt"), "content");
        extraction.cancel();
    };
    exports.copy(scene(), {file(0)});
    EXPECT_FALSE(clipboard.files.has_value());
    expectClean();
}

TEST_F(CopyMembers, CopiesNothingWhileALibraryRuns) {
    list<cUnZip>({"a.txt"});
    library.whileRunning = [&] { exports.copy(scene(), {file(0)}); };
    extraction.RunExtract(*driver, {.command = L" -x", .archive = archive, .folder = LR"(C:\out)", .members = L"*.*"});
    EXPECT_FALSE(clipboard.files.has_value());
    expectClean();
}

TEST_F(CopyMembers, TellsWhenThereIsNoFolderForTheCopies) {
    list<cUnZip>({"a.txt"});
    shell.files.fail(L"createFolder", std::wstring(LR"(C:\Temp\)") + test::kFirstName, 5);
    exports.copy(scene(), {file(0)});
    EXPECT_EQ(shell.messages.shown.size(), 1U);
    EXPECT_EQ(line(), L"");
}

}  // namespace
}  // namespace tovar
