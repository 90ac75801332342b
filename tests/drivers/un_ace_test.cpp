#include "drivers/un_ace.h"

#include <gtest/gtest.h>

#include <deque>

#include "drivers/fakes/fake_ace_library.h"
#include "shell/fakes/fake_file_system.h"
#include "shell/fakes/fake_message_boxes.h"

namespace tovar {
namespace {

using Calls = std::vector<std::wstring>;
constexpr std::uint32_t kEncrypted = 0x4000;

struct FakePasswords final : PasswordSource {
    std::deque<std::wstring> given;
    std::vector<std::wstring> askedFor;
    std::vector<WindowHandle> owners;
    std::optional<std::wstring> ask(WindowHandle owner, std::wstring_view archive) override {
        owners.push_back(owner);
        askedFor.emplace_back(archive);
        if (given.empty()) return std::nullopt;
        std::wstring password = given.front();
        given.pop_front();
        return password;
    }
};

class UnAce : public testing::Test {
protected:
    UnAce() {
        files.addFolder(L"C:\\out");
        library.unpacks = [this](const AceMember& member, const std::wstring& file) {
            files.addFile(file, "of " + std::to_string(member.original));
        };
    }

    /// The texts of the message boxes, all of which have to be the driver's own.
    std::vector<std::wstring> told() const {
        std::vector<std::wstring> texts;
        for (const auto& shown : messages.shown) {
            EXPECT_EQ(shown.title, L"ACE Message");
            EXPECT_EQ(shown.icon, MessageIcon::Exclamation);
            texts.push_back(shown.text);
        }
        return texts;
    }
    bool isFile(const std::wstring& path) const {
        const auto attributes = files.attributes(path);
        return attributes && (*attributes & attribute::kFolder) == 0;
    }
    bool isFolder(const std::wstring& path) const {
        const auto attributes = files.attributes(path);
        return attributes && (*attributes & attribute::kFolder) != 0;
    }
    bool extract(const std::wstring& members = L"*.*", bool keepFolders = true) {
        return ace.ACEExtract(L"C:\\a.ace", L"C:\\out", members, keepFolders);
    }

    test::FakeAceLibrary library;
    test::FakeMessageBoxes messages;
    RegionalSettings regional;
    test::FakeFileSystem files;
    FakePasswords passwords;
    cUnAce ace{library, messages, regional, files, passwords};
    int window = 0;
};

TEST_F(UnAce, IsDescribed) {
    const DriverDescription& unAce = ace.description();
    EXPECT_EQ(&unAce, &cUnAce::kDescription);
    EXPECT_EQ(unAce.library, L"UnAce.dll");
    EXPECT_EQ(unAce.messageTitle, L"ACE Message");
    EXPECT_FALSE(unAce.changeable);
    EXPECT_FALSE(unAce.columns.attributes);
    EXPECT_TRUE(unAce.columns.packed);
    EXPECT_TRUE(unAce.columns.ratio);
    EXPECT_TRUE(unAce.columns.type);
    EXPECT_TRUE(unAce.columns.crc);
    EXPECT_EQ(unAce.columns.crcHeader, L"CRC");
    EXPECT_FALSE(unAce.extract.overwriteOption);
    EXPECT_EQ(extractCommand(unAce.extract, {}), L"-d");
    EXPECT_EQ(extractCommand(unAce.extract, {.keepFolders = false}), L"");
    EXPECT_EQ(extractCommand(unAce.extract, {.existing = ExistingFiles::Overwrite}), L"-d");
}

// Checking

TEST_F(UnAce, TakesAFileForAnArchiveThatOpens) {
    EXPECT_TRUE(ace.CheckArchive(L"C:\\a.ace"));
    EXPECT_EQ(library.calls, (Calls{L"open C:\\a.ace 0", L"close"}));
    library.openResult = 5;
    EXPECT_FALSE(ace.CheckArchive(L"C:\\a.ace"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(UnAce, TestsEveryMemberButEncryptedOnes) {
    library.members = {{.name = L"a"}, {.name = L"b", .flags = kEncrypted}, {.name = L"c"}};
    EXPECT_TRUE(ace.TestArchive(L"C:\\a.ace"));
    EXPECT_EQ(library.calls, (Calls{L"open C:\\a.ace 1", L"readHeader", L"test", L"readHeader", L"skip", L"readHeader",
                                    L"test", L"readHeader", L"close"}));
    library.answers[L"c"] = 9;
    EXPECT_FALSE(ace.TestArchive(L"C:\\a.ace"));
    library.answers.clear();
    library.endCode = 6;
    EXPECT_FALSE(ace.TestArchive(L"C:\\a.ace")) << "an archive that breaks off";
    library.openResult = 5;
    EXPECT_FALSE(ace.TestArchive(L"C:\\a.ace"));
}

// Listing

TEST_F(UnAce, GivesTheTenFields) {
    library.members = {{.name = L"docs\\read me.txt",
                        .packed = 524691,
                        .original = 1234567,
                        .crc = 0x1A2B3C4D,
                        .time = 0x2AB18BDD,
                        .method = 1,
                        .attributes = 0x20}};
    ASSERT_EQ(ace.SetArcFile(L"C:\\a.ace"), 1U);
    EXPECT_EQ(ace.FileName(0), L"read me.txt");
    EXPECT_EQ(ace.FilePath(0), L"docs\\");
    EXPECT_EQ(ace.FileOriginal(0), L"1,234,567");
    EXPECT_EQ(ace.FilePacked(0), L"524,691");
    EXPECT_EQ(ace.FileRatio(0), L"42.5%");
    EXPECT_EQ(ace.FileDate(0), L"01/05/17");
    EXPECT_EQ(ace.FILETIME(0), L"17:30:29");
    EXPECT_EQ(ace.FileAttr(0), L"a--w");
    EXPECT_EQ(ace.FileType(0), L"LZ77");
    EXPECT_EQ(ace.FileCRC(0), L"3C4D");
    EXPECT_TRUE(ace.listingComplete());
    EXPECT_EQ(library.calls, (Calls{L"open C:\\a.ace 0", L"readHeader", L"skip", L"readHeader", L"close"}));
}

struct MethodCase {
    std::uint32_t method;
    std::wstring_view text;
};
class UnAceMethod : public UnAce, public testing::WithParamInterface<MethodCase> {};
TEST_P(UnAceMethod, HasAName) {
    library.members = {{.name = L"a", .method = GetParam().method}};
    ASSERT_EQ(ace.SetArcFile(L"C:\\a.ace"), 1U);
    EXPECT_EQ(ace.FileType(0), GetParam().text);
}
INSTANTIATE_TEST_SUITE_P(Methods, UnAceMethod,
                         testing::Values(MethodCase{0, L"STORED"}, MethodCase{1, L"LZ77"}, MethodCase{2, L"LZ77"}),
                         [](const auto& each) { return std::to_string(each.param.method); });

struct RatioCase {
    const char* name;
    std::uint32_t packed, original;
    std::wstring_view text;
};
class UnAceRatio : public UnAce, public testing::WithParamInterface<RatioCase> {};
TEST_P(UnAceRatio, IsOfPackedToOriginal) {
    library.members = {{.name = L"a", .packed = GetParam().packed, .original = GetParam().original}};
    ASSERT_EQ(ace.SetArcFile(L"C:\\a.ace"), 1U);
    EXPECT_EQ(ace.FileRatio(0), GetParam().text);
}
INSTANTIATE_TEST_SUITE_P(Ratios, UnAceRatio,
                         testing::Values(RatioCase{"Half", 1, 2, L"50.0%"}, RatioCase{"Third", 1, 3, L"33.3%"},
                                         RatioCase{"Empty", 0, 0, L"100.0%"}, RatioCase{"Stored", 10, 10, L"100.0%"},
                                         RatioCase{"Larger", 12, 10, L"100.0%"}, RatioCase{"Nothing", 0, 10, L"0.0%"},
                                         RatioCase{"Huge", 0x7FFFFFFF, 0xFFFFFFFF, L"49.9%"}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(UnAce, ShowsNothingForASizeOfZero) {
    library.members = {{.name = L"a"}};
    ASSERT_EQ(ace.SetArcFile(L"C:\\a.ace"), 1U);
    EXPECT_EQ(ace.FileOriginal(0), L"");
    EXPECT_EQ(ace.FilePacked(0), L"");
    EXPECT_EQ(ace.FilePath(0), L"\\");
}

TEST_F(UnAce, ListsFoldersWithoutAName) {
    library.members = {{.name = L"docs", .attributes = 0x10}, {.name = L"docs\\a", .attributes = 0x27}};
    ASSERT_EQ(ace.SetArcFile(L"C:\\a.ace"), 2U);
    EXPECT_EQ(ace.FileName(0), L"");
    EXPECT_EQ(ace.FilePath(0), L"docs\\");
    EXPECT_EQ(ace.FileAttr(0), L"d--w");
    EXPECT_EQ(ace.FileAttr(1), L"ash-");
}

TEST_F(UnAce, TellsOfAnArchiveThatCannotBeOpened) {
    library.openResult = 5;
    EXPECT_EQ(ace.SetArcFile(L"C:\\a.ace"), 0U);
    EXPECT_EQ(told(), (Calls{L"Can not open 'C:\\a.ace' (corrupted archive) !"}));
    EXPECT_FALSE(ace.listingComplete());
}

TEST_F(UnAce, KeepsWhatWasListedBeforeAnError) {
    library.members = {{.name = L"a"}, {.name = L"b"}};
    library.endCode = 6;
    EXPECT_EQ(ace.SetArcFile(L"C:\\a.ace"), 2U);
    EXPECT_FALSE(ace.listingComplete());
    library.members = {{.name = L"a"}};
    library.endCode = 128;
    EXPECT_EQ(ace.SetArcFile(L"C:\\a.ace"), 1U) << "and appends nothing to it";
    EXPECT_TRUE(ace.listingComplete());
    EXPECT_THROW(static_cast<void>(ace.FileName(1)), std::out_of_range);
}

// Unpacking

TEST_F(UnAce, UnpacksEachMemberIntoAFileOfItsOwn) {
    library.members = {{.name = L"a.txt", .original = 1},
                       {.name = L"docs", .attributes = 0x10},
                       {.name = L"docs\\deep\\b.txt", .original = 2}};
    EXPECT_TRUE(extract());
    EXPECT_EQ(library.calls,
              (Calls{L"open C:\\a.ace 1", L"readHeader", L"extract C:\\out\\a.txt", L"readHeader", L"skip",
                     L"readHeader", L"extract C:\\out\\docs\\deep\\b.txt", L"readHeader", L"close"}));
    EXPECT_TRUE(isFile(L"C:\\out\\a.txt"));
    EXPECT_TRUE(isFolder(L"C:\\out\\docs"));
    EXPECT_TRUE(isFile(L"C:\\out\\docs\\deep\\b.txt"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(UnAce, LeavesFoldersOutWhenToldSo) {
    library.members = {{.name = L"docs", .attributes = 0x10}, {.name = L"docs\\deep\\b.txt"}};
    EXPECT_TRUE(extract(L"*.*", false));
    EXPECT_TRUE(isFile(L"C:\\out\\b.txt"));
    EXPECT_FALSE(isFolder(L"C:\\out\\docs"));
}

TEST_F(UnAce, MakesTheOutputFolder) {
    library.members = {{.name = L"a"}};
    EXPECT_TRUE(ace.ACEExtract(L"C:\\a.ace", L"  C:\\new\\deep\\ ", L"*.*", true));
    EXPECT_TRUE(isFile(L"C:\\new\\deep\\a"));
}

TEST_F(UnAce, KeepsFoldersForTheCommandDOnly) {
    library.members = {{.name = L"docs\\b.txt"}};
    for (const wchar_t* command : {L"", L"-d -x", L" -d", L"-e"}) {
        library.calls.clear();
        ace.extract({.command = command, .archive = L"C:\\a.ace", .folder = L"C:\\out", .members = L"*.*"});
        EXPECT_EQ(library.calls.at(2), L"extract C:\\out\\b.txt") << command;
    }
    for (const wchar_t* command : {L"-d", L"-D"}) {
        library.calls.clear();
        ace.extract({.command = command, .archive = L"C:\\a.ace", .folder = L"C:\\out", .members = L"*.*"});
        EXPECT_EQ(library.calls.at(2), L"extract C:\\out\\docs\\b.txt") << command;
    }
}

TEST_F(UnAce, UnpacksTheMembersOfAListFile) {
    library.members = {{.name = L"docs\\a.txt"}, {.name = L"docs\\deep\\b"}, {.name = L"my file.txt"}, {.name = L"c"}};
    files.addFile(L"C:\\list.tmp", "docs/*.*\r\n\"my file.txt\"\r\n");
    EXPECT_TRUE(extract(L"@C:\\list.tmp"));
    EXPECT_TRUE(isFile(L"C:\\out\\docs\\a.txt"));
    EXPECT_TRUE(isFile(L"C:\\out\\docs\\deep\\b"));
    EXPECT_TRUE(isFile(L"C:\\out\\my file.txt"));
    EXPECT_FALSE(isFile(L"C:\\out\\c"));
}

TEST_F(UnAce, TellsOfAListFileThatCannotBeRead) {
    library.members = {{.name = L"a"}};
    EXPECT_FALSE(extract(L"@C:\\none.tmp"));
    EXPECT_EQ(told(), (Calls{L"Can not open 'C:\\none.tmp' !"}));
    EXPECT_TRUE(library.calls.empty());
}

TEST_F(UnAce, KnowsWhenNoMemberWasMeant) {
    library.members = {{.name = L"a"}};
    EXPECT_FALSE(extract(L"b"));
    EXPECT_TRUE(
        ace.extract({.command = L"-d", .archive = L"C:\\a.ace", .folder = L"C:\\out", .members = L"b"}).nothingChosen);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(UnAce, TellsOfAnArchiveThatCannotBeUnpacked) {
    library.openResult = 5;
    EXPECT_FALSE(extract());
    EXPECT_EQ(told(), (Calls{L"Can not open 'C:\\a.ace' (corrupted archive) !"}));
}

// Names

struct HostileCase {
    const char* name;
    std::wstring_view stored;
};
class UnAceHostile : public UnAce, public testing::WithParamInterface<HostileCase> {};
TEST_P(UnAceHostile, NamesAreRefusedAndTheRestGoesOn) {
    library.members = {{.name = std::wstring(GetParam().stored)}, {.name = L"good"}};
    EXPECT_FALSE(extract());
    EXPECT_EQ(library.calls, (Calls{L"open C:\\a.ace 1", L"readHeader", L"skip", L"readHeader",
                                    L"extract C:\\out\\good", L"readHeader", L"close"}));
    EXPECT_EQ(told(), (Calls{L"Can not extract:\r\n" + std::wstring(GetParam().stored)}));
}
INSTANTIATE_TEST_SUITE_P(
    Names, UnAceHostile,
    testing::Values(HostileCase{"Parent", L"..\\evil"}, HostileCase{"ParentInside", L"a\\..\\..\\evil"},
                    HostileCase{"Current", L".\\evil"}, HostileCase{"Root", L"\\evil"}, HostileCase{"Slash", L"/evil"},
                    HostileCase{"SlashParent", L"../evil"}, HostileCase{"Drive", L"C:\\evil"},
                    HostileCase{"DriveRelative", L"C:evil"}, HostileCase{"Server", L"\\\\server\\share\\evil"},
                    HostileCase{"Stream", L"file:stream"}, HostileCase{"Device", L"NUL"},
                    HostileCase{"DeviceInFolder", L"docs\\con"}, HostileCase{"DeviceFolder", L"aux\\a.txt"},
                    HostileCase{"DeviceExtension", L"Com1.txt"}, HostileCase{"DeviceBlank", L"nul .txt"},
                    HostileCase{"DeviceSuperscript", L"LPT\xB2"}, HostileCase{"ConsoleInput", L"conin$"},
                    HostileCase{"DotAtEnd", L"evil."}, HostileCase{"BlankAtEnd", L"evil "},
                    HostileCase{"DotsAtEnd", L"a...\\evil"}, HostileCase{"Control", L"a\x01z"},
                    HostileCase{"Newline", L"a\nb"}, HostileCase{"Star", L"a*b"}, HostileCase{"Question", L"a?"},
                    HostileCase{"Quote", L"a\"b"}, HostileCase{"Pipe", L"a|b"}, HostileCase{"EmptyPart", L"a\\\\b"},
                    HostileCase{"NoName", L""}, HostileCase{"SeparatorAtEnd", L"a\\"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(UnAce, JudgesTheLastPartOnlyWithoutFolders) {
    library.members = {{.name = L"..\\..\\a"}, {.name = L"C:\\x\\b"}, {.name = L"docs\\nul"}, {.name = L"docs\\.."}};
    EXPECT_FALSE(extract(L"*.*", false));
    EXPECT_TRUE(isFile(L"C:\\out\\a"));
    EXPECT_TRUE(isFile(L"C:\\out\\b"));
    EXPECT_EQ(told(), (Calls{L"Can not extract:\r\ndocs\\nul\r\ndocs\\.."}));
}

TEST_F(UnAce, RefusesAPartThatIsTooLong) {
    library.members = {{.name = std::wstring(255, L'a')}, {.name = std::wstring(256, L'b')}};
    EXPECT_FALSE(extract());
    EXPECT_TRUE(isFile(L"C:\\out\\" + std::wstring(255, L'a')));
    EXPECT_FALSE(isFile(L"C:\\out\\" + std::wstring(256, L'b')));
}

TEST_F(UnAce, RefusesAHostileFolder) {
    library.members = {{.name = L"..\\made", .attributes = 0x10}};
    EXPECT_FALSE(extract());
    EXPECT_FALSE(isFolder(L"C:\\made"));
}

TEST_F(UnAce, NeverNamesAFolderAsTheFile) {
    files.addFolder(L"C:\\out\\docs");
    library.members = {{.name = L"docs"}};
    EXPECT_FALSE(extract());
    EXPECT_EQ(library.calls, (Calls{L"open C:\\a.ace 1", L"readHeader", L"skip", L"readHeader", L"close"}));
}

TEST_F(UnAce, MakesNoFolderWhereAFileStands) {
    files.addFile(L"C:\\out\\docs", "mine");
    library.members = {{.name = L"docs\\a"}, {.name = L"docs", .attributes = 0x10}, {.name = L"b"}};
    EXPECT_FALSE(extract());
    EXPECT_TRUE(isFile(L"C:\\out\\docs"));
    EXPECT_TRUE(isFile(L"C:\\out\\b"));
}

// Files that are there

TEST_F(UnAce, ReplacesFilesUnlessToldOtherwise) {
    files.addFile(L"C:\\out\\a", "mine");
    library.members = {{.name = L"a", .original = 3}, {.name = L"b", .original = 4}};
    const ExtractResult kept = ace.extract(
        {.command = L"-d", .archive = L"C:\\a.ace", .folder = L"C:\\out", .members = L"*.*", .keepExisting = true});
    EXPECT_EQ(kept.code, 0);
    EXPECT_EQ(kept.text, L"Skipping a\r\nExtracting b\r\n");
    std::string bytes;
    EXPECT_EQ(files.readFile(L"C:\\out\\a", bytes), 0U);
    EXPECT_EQ(bytes, "mine");
    EXPECT_TRUE(extract());
    EXPECT_EQ(files.readFile(L"C:\\out\\a", bytes), 0U);
    EXPECT_EQ(bytes, "of 3");
}

TEST_F(UnAce, LeavesNoHalfFileBehindAndNamesTheMember) {
    files.addFile(L"C:\\out\\old", "mine");
    library.members = {{.name = L"new"}, {.name = L"old"}, {.name = L"good"}};
    library.answers = {{L"new", 9}, {L"old", 9}};
    const ExtractResult result =
        ace.extract({.command = L"-d", .archive = L"C:\\a.ace", .folder = L"C:\\out", .members = L"*.*"});
    EXPECT_EQ(result.code, 9);
    EXPECT_EQ(result.text, L"Not extracted: new\r\nNot extracted: old\r\nExtracting good\r\n");
    EXPECT_FALSE(isFile(L"C:\\out\\new"));
    EXPECT_TRUE(isFile(L"C:\\out\\old")) << "what was there is not taken away";
    EXPECT_EQ(told(), (Calls{L"Can not extract:\r\nnew\r\nold"}));
}

TEST_F(UnAce, NamesTheFirstTenMembersThatFailed) {
    for (int member = 0; member < 11; ++member) {
        library.members.push_back({.name = std::wstring(L"m").append(std::to_wstring(member))});
        library.answers[library.members.back().name] = 9;
    }
    EXPECT_FALSE(extract());
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(messages.shown[0].text.ends_with(L"m8\r\nm9\r\n...")) << "and no more";
}

TEST_F(UnAce, TellsOfAnUnknownMethodOnce) {
    library.members = {{.name = L"a"}, {.name = L"b"}};
    library.answers = {{L"a", 132}, {L"b", 132}};
    EXPECT_FALSE(extract());
    EXPECT_EQ(told(), (Calls{L"Unknown compression method !", L"Can not extract:\r\na\r\nb"}));
}

TEST_F(UnAce, SaysThatTheArchiveBrokeOff) {
    library.members = {{.name = L"a"}};
    library.endCode = 6;
    EXPECT_FALSE(extract());
    EXPECT_TRUE(isFile(L"C:\\out\\a"));
}

// Passwords

TEST_F(UnAce, AsksForThePasswordOnce) {
    library.members = {{.name = L"plain"}, {.name = L"a", .flags = kEncrypted}, {.name = L"b", .flags = kEncrypted}};
    library.password = L"secret";
    passwords.given = {L"secret"};
    ace.setHWnd(&window);
    EXPECT_TRUE(extract());
    EXPECT_EQ(passwords.askedFor, (Calls{L"C:\\a.ace"}));
    EXPECT_EQ(passwords.owners, (std::vector<WindowHandle>{&window}));
    EXPECT_EQ(library.calls, (Calls{L"open C:\\a.ace 1", L"readHeader", L"extract C:\\out\\plain", L"readHeader",
                                    L"setPassword secret", L"extract C:\\out\\a", L"readHeader", L"setPassword secret",
                                    L"extract C:\\out\\b", L"readHeader", L"close"}));
}

class UnAceRefusal : public UnAce, public testing::WithParamInterface<std::int32_t> {};
TEST_P(UnAceRefusal, AsksAgainForAPasswordThatIsWrong) {
    library.members = {{.name = L"plain"}, {.name = L"a", .flags = kEncrypted}};
    library.password = L"secret";
    library.wrongPassword = GetParam();
    passwords.given = {L"wrong", L"secret"};
    EXPECT_TRUE(extract());
    EXPECT_EQ(told(), (Calls{L"Password is not correct ! Try it again."}));
    EXPECT_EQ(library.calls, (Calls{L"open C:\\a.ace 1", L"readHeader", L"extract C:\\out\\plain", L"readHeader",
                                    L"setPassword wrong", L"extract C:\\out\\a",
                                    // the archive anew, up to the member
                                    L"close", L"open C:\\a.ace 1", L"readHeader", L"skip", L"readHeader",
                                    L"setPassword secret", L"extract C:\\out\\a", L"readHeader", L"close"}));
}
INSTANTIATE_TEST_SUITE_P(Answers, UnAceRefusal, testing::Values(9, 131),
                         [](const auto& each) { return std::to_string(each.param); });

TEST_F(UnAce, AsksUntilThePasswordIsRight) {
    library.members = {{.name = L"a", .flags = kEncrypted}, {.name = L"b", .flags = kEncrypted}, {.name = L"plain"}};
    library.password = L"secret";
    passwords.given = {L"1", L"2", L"3", L"4", L"5", L"secret"};
    EXPECT_TRUE(extract());
    EXPECT_EQ(passwords.askedFor.size(), 6U);
    EXPECT_EQ(told(), Calls(5, L"Password is not correct ! Try it again."));
    EXPECT_TRUE(isFile(L"C:\\out\\b"));
}

TEST_F(UnAce, AsksAgainForAPasswordThatTheLibraryCannotBeTold) {
    library.members = {{.name = L"a", .flags = kEncrypted}};
    library.password = L"secret";
    passwords.given = {library.unspeakable, L"secret"};
    EXPECT_TRUE(extract());
    EXPECT_EQ(told(), (Calls{L"Password is not correct ! Try it again."}));
    EXPECT_EQ(library.calls,
              (Calls{L"open C:\\a.ace 1", L"readHeader", L"setPassword \x2603", L"close", L"open C:\\a.ace 1",
                     L"readHeader", L"setPassword secret", L"extract C:\\out\\a", L"readHeader", L"close"}));
}

TEST_F(UnAce, AsksUntilTheUserGivesUp) {
    library.members = {{.name = L"a", .flags = kEncrypted}, {.name = L"b", .flags = kEncrypted}, {.name = L"plain"}};
    library.password = L"secret";
    passwords.given = {L"1", L"2", L"3", L"4"};
    EXPECT_FALSE(extract());
    EXPECT_EQ(passwords.askedFor.size(), 5U);
    Calls expected(4, L"Password is not correct ! Try it again.");
    expected.push_back(L"Can not extract:\r\na\r\nb");
    EXPECT_EQ(told(), expected);
    EXPECT_TRUE(isFile(L"C:\\out\\plain"));
}

TEST_F(UnAce, AsksNobodyAnyMoreWhoHasNoPassword) {
    library.members = {{.name = L"a", .flags = kEncrypted}, {.name = L"b", .flags = kEncrypted}, {.name = L"plain"}};
    EXPECT_FALSE(extract());
    EXPECT_EQ(passwords.askedFor.size(), 1U);
    EXPECT_EQ(told(), (Calls{L"Can not extract:\r\na\r\nb"}));
    EXPECT_TRUE(isFile(L"C:\\out\\plain"));
}

TEST_F(UnAce, TakesAMemberForDamagedWhenThePasswordOpenedAnother) {
    library.members = {{.name = L"a", .flags = kEncrypted}, {.name = L"b", .flags = kEncrypted}};
    library.password = L"secret";
    library.answers = {{L"b", 9}};
    passwords.given = {L"secret", L"more"};
    EXPECT_FALSE(extract());
    EXPECT_EQ(passwords.askedFor.size(), 1U);
    EXPECT_EQ(told(), (Calls{L"Can not extract:\r\nb"}));
}

// Progress

TEST_F(UnAce, TellsWhichMemberItIsAtAndCanBeCancelled) {
    library.members = {{.name = L"a", .original = 5}, {.name = L"b"}, {.name = L"c"}};
    std::vector<std::wstring> seen;
    ace.setProgress([&](const ExtractProgress& progress) {
        EXPECT_EQ(progress.state, ExtractProgress::State::Begin);
        seen.push_back(progress.member + L" " + progress.file + L" " + std::to_wstring(progress.size));
        return seen.size() < 2;
    });
    const ExtractResult result =
        ace.extract({.command = L"-d", .archive = L"C:\\a.ace", .folder = L"C:\\out", .members = L"*.*"});
    EXPECT_EQ(seen, (Calls{L"a C:\\out\\a 5", L"b C:\\out\\b 0"}));
    EXPECT_EQ(result.code, 255);
    EXPECT_TRUE(isFile(L"C:\\out\\a"));
    EXPECT_FALSE(isFile(L"C:\\out\\b"));
}

TEST_F(UnAce, TellsHowFarItIsInAllChosenMembers) {
    library.members = {{.name = L"a", .original = 30},
                       {.name = L"left.out", .original = 500},
                       {.name = L"b", .original = 12},
                       {.name = L"docs", .attributes = 0x10}};
    library.pieces = {10, 10};
    Calls seen;
    ace.setProgress([&](const ExtractProgress& progress) {
        const bool begins = progress.state == ExtractProgress::State::Begin;
        seen.push_back(progress.member + (begins ? L" begins " : L" ") + std::to_wstring(progress.written) + L", " +
                       std::to_wstring(progress.done) + L" of " + std::to_wstring(progress.total));
        return true;
    });
    EXPECT_EQ(
        ace.extract({.command = L"-d", .archive = L"C:\\a.ace", .folder = L"C:\\out", .members = L"a b docs"}).code, 0);
    EXPECT_EQ(seen, (Calls{L"a begins 0, 0 of 42", L"a 10, 10 of 42", L"a 20, 20 of 42", L"b begins 0, 30 of 42",
                           L"b 10, 40 of 42", L"b 12, 42 of 42"}))
        << "no member is larger than its header says";
}

TEST_F(UnAce, CanBeCancelledInsideAMember) {
    library.members = {{.name = L"a", .original = 30}, {.name = L"b"}};
    library.pieces = {10, 10, 10};
    ace.setProgress([](const ExtractProgress& progress) { return progress.written < 20; });
    const ExtractResult result =
        ace.extract({.command = L"-d", .archive = L"C:\\a.ace", .folder = L"C:\\out", .members = L"*.*"});
    EXPECT_EQ(result.code, 255);
    EXPECT_FALSE(isFile(L"C:\\out\\a")) << "half a file";
    EXPECT_FALSE(isFile(L"C:\\out\\b"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(UnAce, CanBeCancelledWhileItCounts) {
    library.members.assign(256, {.name = L"a", .original = 30});
    int calls = 0;
    ace.setProgress([&](const ExtractProgress& progress) {
        EXPECT_EQ(progress.state, ExtractProgress::State::Open);
        return ++calls > 1;
    });
    EXPECT_EQ(ace.extract({.command = L"-d", .archive = L"C:\\a.ace", .folder = L"C:\\out", .members = L"*.*"}).code,
              255);
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(isFile(L"C:\\out\\a"));
}

TEST_F(UnAce, EndsWhenTheLibraryWasCancelled) {
    library.members = {{.name = L"a"}, {.name = L"b"}};
    library.answers = {{L"a", 255}};
    EXPECT_FALSE(extract());
    EXPECT_FALSE(isFile(L"C:\\out\\a"));
    EXPECT_FALSE(isFile(L"C:\\out\\b"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(UnAce, TakesSlashesForAFolderWithSlashes) {
    files.addFolder(L"/out");
    library.members = {{.name = L"docs\\a"}};
    EXPECT_TRUE(ace.ACEExtract(L"/a.ace", L"/out", L"*.*", true));
    EXPECT_EQ(library.calls.at(2), L"extract /out/docs/a");
}

}  // namespace
}  // namespace tovar
