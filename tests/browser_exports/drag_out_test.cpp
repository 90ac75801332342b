#include "browser/drag_out.h"

#include "browser_exports/export_fixture.h"

namespace tovar {
namespace {

using Names = std::vector<std::wstring>;

/// Agrees or declines, and remembers what it was asked.
class Answers final : public Confirmations {
public:
    bool agrees = true;
    std::function<void()> whileAsked;
    Names messages, captions, yes, no;
    std::vector<WindowHandle> owners;
    WindowHandle declinedOver = nullptr;
    int window = 0;

    bool ask(WindowHandle owner, const Confirmation& confirmation, const Work& work) override {
        owners.push_back(owner);
        messages.push_back(confirmation.message());
        captions.push_back(confirmation.progress);
        yes.push_back(confirmation.yes);
        no.push_back(confirmation.no);
        if (whileAsked) whileAsked();
        if (agrees) work(&window);
        return agrees;
    }
    void decline(WindowHandle owner) noexcept override {
        agrees = false;
        declinedOver = owner;
    }
};

/// The user's hand.
class Hand final : public DragSource {
public:
    bool takes = true;
    std::function<void(DragContents& contents)> whileDragging;
    std::shared_ptr<DragContents> contents;  ///< a target may keep them
    std::vector<DragButton> buttons;

    bool drag(const std::shared_ptr<DragContents>& dragged, DragButton button) override {
        contents = dragged;
        buttons.push_back(button);
        if (whileDragging) whileDragging(*dragged);
        return takes;
    }
};

class DragOutTest : public test::ExportFixture {
protected:
    DragOutTest() { list<cUnZip>({"docs/a.txt", "b c.txt"}); }

    void drag(const std::vector<ArchiveMember>& members = {{.folder = {}, .entry = 1}}) {
        out.drag(scene(), members, DragButton::Left);
    }
    /// A shell folder takes the placeholder and tells of it.
    void dropInto(const std::wstring& folder) {
        const std::wstring path = folder + L'\\' + test::kFirstName;
        shell.files.addFile(path);
        out.onShellNotify(path, L"");
    }
    /// The members of the command line, and where they went; empty when there was none.
    [[nodiscard]] std::wstring lineWithoutList() const {
        const std::wstring whole = line();
        return whole.substr(0, whole.find(L'@'));
    }
    [[nodiscard]] std::wstring placeholder() const { return std::wstring(LR"(C:\Temp\)") + test::kFirstName; }

    Answers answers;
    Hand hand;
    DragOut out{{copyPorts, answers, hand, [](const CalendarDate&, const ClockTime&) { return std::uint64_t{0}; }}};
};

TEST_F(DragOutTest, OffersAPlaceholderInTheWorkFolder) {
    hand.whileDragging = [&](DragContents& contents) {
        EXPECT_EQ(contents.placeholder(), placeholder());
        EXPECT_TRUE(isThere(placeholder()));
        EXPECT_FALSE(contents.isCancelled());
    };
    hand.takes = false;
    drag();
    EXPECT_EQ(hand.buttons, std::vector<DragButton>{DragButton::Left});
    expectClean();
}

TEST_F(DragOutTest, UnpacksWhereThePlaceholderWasDropped) {
    hand.whileDragging = [&](DragContents&) {
        dropInto(LR"(C:\target)");
        EXPECT_TRUE(answers.messages.empty()) << "not while the target is at it";
    };
    drag({folder(L"\\docs\\"), file(1)});
    ASSERT_EQ(answers.messages.size(), 1U);
    EXPECT_EQ(answers.messages[0],
              L"Extract following files and folders ?\r\ndocs/*.*\r\n\"b c.txt\"\r\n\r\n"
              L"If files already exist, they will be overwritten.");
    EXPECT_EQ(answers.captions, Names{L"Extracting..."});
    EXPECT_EQ(answers.yes, Names{L"&Yes"});
    EXPECT_EQ(answers.no, Names{L"&No"});
    EXPECT_EQ(answers.owners[0], owner);
    EXPECT_EQ(lineWithoutList(), LR"( -x -i --j C:\a.xyz C:\target\ )");
    EXPECT_EQ(listed, "docs/*.*\r\n\"b c.txt\"\r\n\r\n");
    EXPECT_EQ(library.owners.back(), &answers.window);
    EXPECT_FALSE(out.awaitsDrop());
    EXPECT_FALSE(out.hasDrop());
    expectClean();
}

TEST_F(DragOutTest, GivesTheDriverItsWindowBack) {
    driver->setHWnd(owner);
    hand.whileDragging = [&](DragContents&) { dropInto(LR"(C:\target)"); };
    drag();
    EXPECT_EQ(driver->hWnd(), owner);
}

TEST_F(DragOutTest, TellsWhatTheLibraryTells) {
    library.runAnswer = 0x8020;
    hand.whileDragging = [&](DragContents&) { dropInto(LR"(C:\target)"); };
    drag();
    ASSERT_EQ(shell.messages.shown.size(), 1U);
    EXPECT_EQ(shell.messages.shown[0].title, L"Extraction Message");
    expectClean();
}

TEST_F(DragOutTest, UnpacksNothingWhenTheUserDeclines) {
    answers.agrees = false;
    hand.whileDragging = [&](DragContents&) { dropInto(LR"(C:\target)"); };
    drag();
    EXPECT_EQ(answers.messages.size(), 1U);
    EXPECT_EQ(line(), L"");
    expectClean();
}

TEST_F(DragOutTest, WaitsForAShellThatTellsLater) {
    drag();
    EXPECT_TRUE(out.awaitsDrop());
    EXPECT_FALSE(out.hasDrop());
    EXPECT_TRUE(isThere(placeholder())) << "the shell may still be copying it";
    dropInto(LR"(C:\target)");
    EXPECT_FALSE(out.awaitsDrop());
    EXPECT_TRUE(out.hasDrop());
    EXPECT_TRUE(answers.messages.empty());
    out.finish(scene());
    EXPECT_EQ(lineWithoutList(), LR"( -x -i --j C:\a.xyz C:\target\ )");
    EXPECT_FALSE(out.hasDrop());
    expectClean();
}

TEST_F(DragOutTest, IgnoresOtherFiles) {
    drag();
    shell.files.addFile(LR"(C:\target\other.txt)");
    out.onShellNotify(LR"(C:\target\other.txt)", L"");
    EXPECT_TRUE(out.awaitsDrop());
    EXPECT_TRUE(isThere(LR"(C:\target\other.txt)"));
}

TEST_F(DragOutTest, IgnoresTheShellWithoutADrag) {
    dropInto(LR"(C:\target)");
    EXPECT_FALSE(out.hasDrop());
    out.finish(scene());
    EXPECT_TRUE(answers.messages.empty());
}

TEST_F(DragOutTest, UnpacksNothingIntoTheRecycleBin) {
    shell.files.addFolder(LR"(C:\RECYCLED)");
    hand.whileDragging = [&](DragContents&) { dropInto(LR"(C:\RECYCLED)"); };
    drag();
    EXPECT_TRUE(answers.messages.empty());
    EXPECT_EQ(line(), L"");
    EXPECT_EQ(namesIn(LR"(C:\RECYCLED)"), Names{}) << "the placeholder is nothing to bring back";
    EXPECT_FALSE(out.awaitsDrop());
    expectClean();
}

TEST_F(DragOutTest, UnpacksNothingIntoARecycleBinThatIsToldOfLater) {
    shell.files.addFolder(LR"(D:\$RECYCLE.BIN\S-1-5)");
    drag();
    dropInto(LR"(D:\$RECYCLE.BIN\S-1-5)");
    EXPECT_FALSE(out.hasDrop());
    EXPECT_FALSE(out.awaitsDrop());
    expectClean();
}

TEST_F(DragOutTest, TakesTheFirstFolderThatIsToldOf) {
    hand.whileDragging = [&](DragContents&) {
        dropInto(LR"(C:\target)");
        dropInto(LR"(C:\out)");
    };
    drag();
    EXPECT_EQ(answers.messages.size(), 1U);
    EXPECT_EQ(lineWithoutList(), LR"( -x -i --j C:\a.xyz C:\target\ )");
    EXPECT_EQ(namesIn(LR"(C:\out)"), Names{});
    expectClean();
}

TEST_F(DragOutTest, SaysSoWhenTheFolderHasVanishedBeforeTheAnswer) {
    hand.whileDragging = [&](DragContents&) { dropInto(LR"(C:\target)"); };
    answers.whileAsked = [&] { shell.files.removeFolder(LR"(C:\target)"); };
    drag();
    EXPECT_EQ(line(), L"");
    ASSERT_EQ(shell.messages.shown.size(), 1U);
    EXPECT_EQ(shell.messages.shown[0].text, L"The folder is not there any more.");
    EXPECT_EQ(shell.messages.shown[0].title, L"Extraction Message");
    EXPECT_FALSE(isThere(LR"(C:\target)"));
    EXPECT_EQ(namesIn(LR"(C:\Temp)"), Names{});
}

TEST_F(DragOutTest, TakesThePlaceholderBackAlsoWhereItIsInUseForAWhile) {
    const std::wstring dropped = std::wstring(LR"(C:\target\)") + test::kFirstName;
    shell.files.fail(L"deleteFile", dropped, 32);
    hand.whileDragging = [&](DragContents&) { dropInto(LR"(C:\target)"); };
    answers.whileAsked = [&] {
        EXPECT_TRUE(isThere(dropped));
        shell.files.fail(L"deleteFile", dropped, 0);
    };
    drag();
    EXPECT_FALSE(isThere(dropped));
    expectClean();
}

TEST_F(DragOutTest, TakesAPlaceholderBackLaterThatIsInUseAllTheTime) {
    const std::wstring dropped = std::wstring(LR"(C:\target\)") + test::kFirstName;
    shell.files.fail(L"deleteFile", dropped, 32);
    hand.whileDragging = [&](DragContents&) { dropInto(LR"(C:\target)"); };
    drag();
    EXPECT_TRUE(isThere(dropped));
    shell.files.fail(L"deleteFile", dropped, 0);
    items.removeLeftOver();
    expectClean();
}

TEST_F(DragOutTest, EndsWithEscape) {
    hand.takes = false;
    drag();
    EXPECT_FALSE(out.awaitsDrop());
    dropInto(LR"(C:\target)");
    EXPECT_FALSE(out.hasDrop()) << "that is a file of somebody else";
    EXPECT_EQ(line(), L"");
}

TEST_F(DragOutTest, ForgetsADropThatNeverCameWithTheNextDrag) {
    drag();
    ASSERT_TRUE(isThere(placeholder()));
    hand.takes = false;
    drag();
    expectClean();
}

TEST_F(DragOutTest, TakesEverythingBackWhenTheWindowGoes) {
    drag();
    out.cancel();
    EXPECT_FALSE(out.awaitsDrop());
    expectClean();
    drag();
    EXPECT_EQ(hand.buttons.size(), 1U) << "no drag begins any more";
}

TEST_F(DragOutTest, EndsTheDragWhenTheWindowGoes) {
    hand.whileDragging = [&](DragContents& contents) {
        out.cancel();
        EXPECT_TRUE(contents.isCancelled());
        dropInto(LR"(C:\target)");
    };
    drag();
    EXPECT_TRUE(answers.messages.empty());
    expectClean();
}

TEST_F(DragOutTest, UnpacksNothingWhenTheWindowGoesBeforeTheAnswer) {
    hand.whileDragging = [&](DragContents&) { dropInto(LR"(C:\target)"); };
    answers.whileAsked = [&] { out.cancel(); };
    drag();
    EXPECT_EQ(answers.declinedOver, owner);
    EXPECT_EQ(line(), L"");
    expectClean();
}

TEST_F(DragOutTest, UnpacksNothingForAnAnswerThatComesAfterTheWindowWent) {
    hand.whileDragging = [&](DragContents&) { dropInto(LR"(C:\target)"); };
    answers.whileAsked = [&] {
        out.cancel();
        answers.agrees = true;
    };
    drag();
    EXPECT_EQ(line(), L"");
    expectClean();
}

TEST_F(DragOutTest, DeclinesNothingWhenNothingIsAsked) {
    hand.whileDragging = [&](DragContents&) { dropInto(LR"(C:\target)"); };
    drag();
    out.cancel();
    EXPECT_EQ(answers.declinedOver, nullptr);
}

TEST_F(DragOutTest, GoesWithItsBrowser) {
    {
        DragOut other({copyPorts, answers, hand, {}});
        other.drag(scene(), {file(1)}, DragButton::Right);
        ASSERT_TRUE(isThere(placeholder()));
        EXPECT_EQ(hand.buttons.back(), DragButton::Right);
    }
    expectClean();
}

TEST_F(DragOutTest, TellsWhenThereIsNoRoomForThePlaceholder) {
    shell.files.fail(L"writeFile", placeholder(), 112);
    drag();
    EXPECT_TRUE(hand.buttons.empty());
    EXPECT_EQ(shell.messages.shown.size(), 1U);
    EXPECT_FALSE(out.awaitsDrop());
}

TEST_F(DragOutTest, DragsNothingWithoutMembersOrWhileALibraryRuns) {
    drag({});
    library.whileRunning = [&] { drag(); };
    extraction.RunExtract(*driver, {.command = L" -x", .archive = archive, .folder = LR"(C:\out)", .members = L"*.*"});
    EXPECT_TRUE(hand.buttons.empty());
}

TEST_F(DragOutTest, LeavesNothingWhenTheDragFails) {
    hand.whileDragging = [](DragContents&) { throw std::bad_alloc(); };
    EXPECT_THROW(drag(), std::bad_alloc);
    EXPECT_FALSE(out.awaitsDrop());
    expectClean();
}

TEST_F(DragOutTest, UsesTheKindsCommandWithoutOverwriting) {
    library.members.clear();
    list<cUnTar>({"a.txt"});
    hand.whileDragging = [&](DragContents&) { dropInto(LR"(C:\target)"); };
    drag({file(0)});
    EXPECT_EQ(lineWithoutList(), LR"( xvfoa C:\a.xyz C:\target\ )");
}

// Streams

TEST_F(DragOutTest, UnpacksForStreamsOnlyAfterTheDrop) {
    unpacks({std::wstring(LR"(C:\Temp\)") + test::kSecondName + LR"(\b c.txt)"});
    hand.whileDragging = [&](DragContents& contents) {
        EXPECT_TRUE(contents.descriptors().has_value());
        EXPECT_FALSE(contents.file(0).has_value());
        EXPECT_EQ(line(), L"");
        contents.onDropped();
        const auto held = contents.file(0);
        ASSERT_TRUE(held.has_value());
        EXPECT_EQ(held->path, std::wstring(LR"(C:\Temp\)") + test::kSecondName + LR"(\b c.txt)");
        EXPECT_EQ(lineWithoutList(), std::wstring(LR"( -x -i --j C:\a.xyz C:\Temp\)") + test::kSecondName + LR"(\ )");
    };
    drag();
    EXPECT_TRUE(answers.messages.empty()) << "the target knows best where the files go";
    EXPECT_FALSE(out.awaitsDrop());
    hand.contents.reset();
    expectClean();
}

TEST_F(DragOutTest, UnpacksOnceForAllStreams) {
    unpacks({std::wstring(LR"(C:\Temp\)") + test::kSecondName + LR"(\docs\a.txt)",
             std::wstring(LR"(C:\Temp\)") + test::kSecondName + LR"(\b_c.txt)"});
    hand.whileDragging = [&](DragContents& contents) {
        contents.onDropped();
        EXPECT_FALSE(contents.file(0).has_value()) << "a folder";
        EXPECT_TRUE(contents.file(1).has_value());
        EXPECT_TRUE(contents.file(2).has_value()) << "some libraries write blanks so";
        EXPECT_TRUE(contents.file(1).has_value());
        EXPECT_FALSE(contents.file(3).has_value());
    };
    drag({folder(L"\\docs\\"), file(1)});
    EXPECT_EQ(std::ranges::count_if(library.calls, [](const auto& call) { return call.starts_with(L"run "); }), 1);
    hand.contents.reset();
    expectClean();
}

TEST_F(DragOutTest, KeepsTheFilesAsLongAsSomebodyReadsThem) {
    const std::wstring path = std::wstring(LR"(C:\Temp\)") + test::kSecondName + LR"(\b c.txt)";
    unpacks({path});
    std::optional<HeldFile> held;
    hand.whileDragging = [&](DragContents& contents) {
        contents.onDropped();
        held = contents.file(0);
    };
    drag();
    EXPECT_TRUE(hand.contents->file(0).has_value()) << "some targets go on after the drag";
    hand.contents.reset();
    EXPECT_TRUE(isThere(path));
    held.reset();
    expectClean();
}

TEST_F(DragOutTest, UnpacksNothingForWhoAsksOnlyAfterTheDrag) {
    hand.whileDragging = [](DragContents& contents) { contents.onDropped(); };
    drag();
    EXPECT_FALSE(hand.contents->file(0).has_value());
    EXPECT_EQ(hand.contents->descriptors(), std::nullopt);
    EXPECT_EQ(line(), L"");
}

TEST_F(DragOutTest, GoesOnlyOnceWhereStreamsCameFirst) {
    unpacks({std::wstring(LR"(C:\Temp\)") + test::kSecondName + LR"(\b c.txt)"});
    hand.whileDragging = [&](DragContents& contents) {
        contents.onDropped();
        EXPECT_TRUE(contents.file(0).has_value());
        dropInto(LR"(C:\target)");
    };
    drag();
    EXPECT_TRUE(answers.messages.empty());
    EXPECT_FALSE(out.hasDrop());
    hand.contents.reset();
    expectClean();
}

TEST_F(DragOutTest, GoesOnlyOnceWhereThePlaceholderCameFirst) {
    hand.whileDragging = [&](DragContents& contents) {
        contents.onDropped();
        dropInto(LR"(C:\target)");
        EXPECT_FALSE(contents.file(0).has_value());
    };
    drag();
    EXPECT_EQ(answers.messages.size(), 1U);
    EXPECT_EQ(lineWithoutList(), LR"( -x -i --j C:\a.xyz C:\target\ )");
    expectClean();
}

TEST_F(DragOutTest, HasNoStreamsOfMembersThatALibraryLeavesOut) {
    library.runAnswer = 0x8020;
    hand.whileDragging = [&](DragContents& contents) {
        contents.onDropped();
        EXPECT_FALSE(contents.file(0).has_value());
        EXPECT_FALSE(contents.file(0).has_value());
    };
    drag();
    EXPECT_EQ(shell.messages.shown.size(), 1U) << "told once";
    hand.contents.reset();
    expectClean();
}

}  // namespace
}  // namespace tovar
