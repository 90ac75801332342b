// Work on archives without windows, through the bundled libraries.

#include "front/automation/automation.h"

#include <algorithm>

#include "automation/automation_fixture.h"
#include "front/automation/entry_facts.h"

namespace tovar {
namespace {

namespace fs = std::filesystem;
using End = AutomationResult::End;
using test::CountingListener;
using Paths = std::vector<std::wstring>;

using AutomationTest = test::AutomationFixture;

const std::map<std::string, std::string> kAll{
    {"a.txt", "alpha"}, {"docs/b c.txt", std::string(50000, 'b')}, {"docs/deep/d.txt", "delta"}};

class AutomationOfKind : public test::AutomationFixture, public testing::WithParamInterface<const wchar_t*> {
protected:
    std::wstring archive = std::wstring(L"made archive.") + GetParam();
};

TEST_P(AutomationOfKind, MakesListsTestsAndUnpacks) {
    const fs::path before = fs::current_path();
    ASSERT_TRUE(pack(archive).done()) << std::string(automation.lastErrorText().begin(),
                                                     automation.lastErrorText().end());
    bool good = false;
    EXPECT_TRUE(automation.test(path(archive), {}, good).done());
    EXPECT_TRUE(good);

    ListedArchive listed;
    ASSERT_TRUE(automation.list(path(archive), listed).done());
    std::map<std::wstring, double> sizes;
    for (std::uint32_t each = 0; each < listed->entries().size(); ++each) {
        if (entryIsFolder(*listed, each)) continue;
        sizes[entryPath(*listed, each)] = static_cast<double>(listed->entries().record(each).original);
    }
    EXPECT_EQ(sizes,
              (std::map<std::wstring, double>{{L"a.txt", 5}, {L"docs\\b c.txt", 50000}, {L"docs\\deep\\d.txt", 5}}));

    EXPECT_TRUE(automation.extract({.file = path(archive), .target = path("out")}).done());
    EXPECT_EQ(below("out"), kAll);
    EXPECT_EQ(automation.lastErrorText(), L"");
    EXPECT_EQ(fs::current_path(), before);
    EXPECT_FALSE(working);
}

TEST_P(AutomationOfKind, UnpacksChosenMembers) {
    ASSERT_TRUE(pack(archive).done());
    EXPECT_TRUE(
        automation.extract({.file = path(archive), .target = path("out"), .members = {L"docs\\b c.txt"}}).done());
    EXPECT_EQ(below("out"), (Files{{"docs/b c.txt", std::string(50000, 'b')}}));
    EXPECT_TRUE(automation.extract({.file = path(archive), .target = path("two"), .members = {L"docs/deep/", L"a.txt"}})
                    .done());
    EXPECT_EQ(below("two"), (Files{{"a.txt", "alpha"}, {"docs/deep/d.txt", "delta"}}));
    const AutomationResult none =
        automation.extract({.file = path(archive), .target = path("out"), .members = {L"gone.txt"}});
    EXPECT_EQ(none.end, End::Job);
    EXPECT_EQ(none.job, JobEnd::NoMember);
    EXPECT_EQ(none.text, path(archive) + L": no member is called so.");
}

TEST_P(AutomationOfKind, UnpacksANameWithoutFoldersFromEveryFolder) {
    write("src/docs/a.txt", "other");
    ASSERT_TRUE(pack(archive).done());
    EXPECT_TRUE(automation.extract({.file = path(archive), .target = path("out"), .members = {L"a.txt"}}).done());
    EXPECT_EQ(below("out"), (Files{{"a.txt", "alpha"}, {"docs/a.txt", "other"}}));
}

TEST_P(AutomationOfKind, KeepsFilesUnlessTold) {
    ASSERT_TRUE(pack(archive).done());
    write("out/a.txt", "mine");
    EXPECT_TRUE(automation.extract({.file = path(archive), .target = path("out")}).done());
    EXPECT_EQ(below("out").at("a.txt"), "mine");
    EXPECT_TRUE(automation.extract({.file = path(archive), .target = path("out"), .overwrite = true}).done());
    EXPECT_EQ(below("out").at("a.txt"), "alpha");
}

TEST_P(AutomationOfKind, TellsHowUnpackingGetsOn) {
    ASSERT_TRUE(pack(archive).done());
    const auto listener = std::make_shared<CountingListener>();
    automation.setListener(listener);
    ASSERT_TRUE(automation.extract({.file = path(archive), .target = path("out")}).done());
    ASSERT_FALSE(listener->done.empty());
    EXPECT_TRUE(std::is_sorted(listener->done.begin(), listener->done.end()));
    EXPECT_EQ(listener->done.back(), 50010);
    EXPECT_EQ(listener->totals, std::vector<double>(listener->totals.size(), 50010));
}

TEST_P(AutomationOfKind, IsCancelledByItsListener) {
    ASSERT_TRUE(pack(archive).done());
    const auto listener = std::make_shared<CountingListener>();
    listener->answer = ProgressListener::Answer::Cancel;
    automation.setListener(listener);
    const AutomationResult result = automation.extract({.file = path(archive), .target = path("out")});
    EXPECT_EQ(result.end, End::Cancelled);
    EXPECT_EQ(automation.lastErrorText(), L"The operation was cancelled.");
    EXPECT_EQ(listener->paths.size(), 1U);
    EXPECT_EQ(pack(L"second." + std::wstring(GetParam())).end, End::Cancelled);
    EXPECT_FALSE(fs::exists(folder / (L"second." + std::wstring(GetParam()))));
}

TEST_P(AutomationOfKind, IsCancelledByItself) {
    ASSERT_TRUE(pack(archive).done());
    const auto listener = std::make_shared<CountingListener>();
    listener->meanwhile = [this] { automation.cancel(); };
    automation.setListener(listener);
    EXPECT_EQ(automation.extract({.file = path(archive), .target = path("out")}).end, End::Cancelled);
    automation.setListener(nullptr);
    automation.cancel();
    EXPECT_TRUE(automation.extract({.file = path(archive), .target = path("out")}).done()) << "nothing went on";
}

TEST_P(AutomationOfKind, EndsWithAListenerThatFails) {
    ASSERT_TRUE(pack(archive).done());
    const auto listener = std::make_shared<CountingListener>();
    listener->answer = ProgressListener::Answer::Failed;
    automation.setListener(listener);
    const AutomationResult result = automation.extract({.file = path(archive), .target = path("out")});
    EXPECT_EQ(result.end, End::ListenerFailed);
    EXPECT_EQ(result.text, L"The progress handler failed: no paper");
}

TEST_P(AutomationOfKind, TurnsASecondOperationAway) {
    ASSERT_TRUE(pack(archive).done());
    const auto listener = std::make_shared<CountingListener>();
    ListedArchive listed;
    AutomationResult second;
    listener->meanwhile = [&] { second = automation.list(path(archive), listed); };
    automation.setListener(listener);
    EXPECT_TRUE(automation.extract({.file = path(archive), .target = path("out")}).done());
    EXPECT_EQ(second.end, End::Busy);
    EXPECT_EQ(second.text, L"Another operation is going on.");
    EXPECT_EQ(listed, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Kinds, AutomationOfKind, testing::Values(L"zip", L"lzh", L"cab"), [](const auto& each) {
    const std::wstring name = each.param;
    return std::string(name.begin(), name.end());
});

class AutomationOfChange : public AutomationOfKind {};

TEST_P(AutomationOfChange, AddsAndDeletes) {
    ASSERT_TRUE(pack(archive).done());
    write("more/a.txt", "another");
    write("more/e.txt", "epsilon");
    EXPECT_TRUE(
        automation.change(path(archive), path("more"), {.action = ArchiveChange::Action::Add, .names = {L"*.txt"}}, {})
            .done());
    EXPECT_TRUE(automation
                    .change(path(archive), {},
                            {.action = ArchiveChange::Action::Delete, .names = {L"docs\\deep\\", L"docs\\b c.txt"}}, {})
                    .done());
    ASSERT_TRUE(automation.extract({.file = path(archive), .target = path("out")}).done());
    EXPECT_EQ(below("out"), (Files{{"a.txt", "another"}, {"e.txt", "epsilon"}}));
}

TEST_P(AutomationOfChange, DeletesNoMemberOfTheSameNameElsewhere) {
    write("src/docs/a.txt", "other");
    ASSERT_TRUE(pack(archive).done());
    EXPECT_TRUE(automation.change(path(archive), {}, {.action = ArchiveChange::Action::Delete, .names = {L"a.txt"}}, {})
                    .done());
    ASSERT_TRUE(automation.extract({.file = path(archive), .target = path("out")}).done());
    EXPECT_EQ(below("out").count("a.txt"), 0U);
    EXPECT_EQ(below("out").at("docs/a.txt"), "other");
}

INSTANTIATE_TEST_SUITE_P(Kinds, AutomationOfChange, testing::Values(L"zip", L"lzh"), [](const auto& each) {
    const std::wstring name = each.param;
    return std::string(name.begin(), name.end());
});

TEST_F(AutomationTest, PacksFullPathsFromTheFolderOfTheFirst) {
    ASSERT_TRUE(
        automation.change(path("a.zip"), {}, {.names = {path("src/docs"), path("src/a.txt")}, .level = 0}, {}).done());
    ASSERT_TRUE(automation.extract({.file = path("a.zip"), .target = path("out")}).done());
    EXPECT_EQ(below("out"), kAll);
}

TEST_F(AutomationTest, UnpacksWithoutFolders) {
    ASSERT_TRUE(pack(L"a.zip").done());
    EXPECT_TRUE(automation.extract({.file = path("a.zip"), .target = path("out"), .keepFolders = false}).done());
    EXPECT_EQ(below("out"), (Files{{"a.txt", "alpha"}, {"b c.txt", std::string(50000, 'b')}, {"d.txt", "delta"}}));
    ASSERT_TRUE(pack(L"a.lzh").done());
    const AutomationResult lzh =
        automation.extract({.file = path("a.lzh"), .target = path("out"), .keepFolders = false});
    EXPECT_EQ(lzh.job, JobEnd::Unsupported);
    EXPECT_EQ(lzh.text, path("a.lzh") + L": archives of this kind unpack with their folders only.");
}

TEST_F(AutomationTest, NeedsThePasswordEachTime) {
    ASSERT_TRUE(pack(L"a.zip", L"Schl\x00FCssel").done());
    AutomationResult result = automation.extract({.file = path("a.zip"), .target = path("out")});
    EXPECT_EQ(result.job, JobEnd::NoPassword);
    EXPECT_EQ(result.text, path("a.zip") + L": a password is needed.");
    result = automation.extract({.file = path("a.zip"), .target = path("out"), .password = L"wrong"});
    EXPECT_EQ(result.job, JobEnd::NoPassword);
    EXPECT_EQ(result.text, path("a.zip") + L": the password is not the right one.");
    EXPECT_EQ(below("out"), Files{});
    EXPECT_TRUE(
        automation.extract({.file = path("a.zip"), .target = path("out"), .password = L"Schl\x00FCssel"}).done());
    EXPECT_EQ(below("out"), kAll);
    EXPECT_EQ(automation.extract({.file = path("a.zip"), .target = path("two")}).job, JobEnd::NoPassword)
        << "it is not remembered";
}

TEST_F(AutomationTest, TestsEncryptedMembersWithThePassword) {
    ASSERT_TRUE(pack(L"a.zip", L"secret").done());
    bool good = false;
    EXPECT_TRUE(automation.test(path("a.zip"), L"secret", good).done());
    EXPECT_TRUE(good);
    EXPECT_EQ(automation.test(path("a.zip"), L"wrong", good).job, JobEnd::NoPassword);
    EXPECT_FALSE(good);
}

TEST_F(AutomationTest, FindsDamage) {
    ASSERT_TRUE(pack(L"a.zip").done());
    ASSERT_TRUE(automation.change(path("b.zip"), path("src"), {.names = {L"docs"}, .level = 0}, {}).done());
    std::fstream file(folder / "b.zip", std::ios::binary | std::ios::in | std::ios::out);
    file.seekp(20000);
    file << "damage";
    file.close();
    bool good = true;
    const AutomationResult result = automation.test(path("b.zip"), {}, good);
    EXPECT_FALSE(good);
    EXPECT_EQ(result.job, JobEnd::BadArchive);
    EXPECT_EQ(result.text, path("b.zip") + L": the archive is damaged.");
    EXPECT_EQ(automation.extract({.file = path("b.zip"), .target = path("out")}).job, JobEnd::Failed);
}

struct RefusedCase {
    const char* name;
    std::wstring archive;
    ArchiveChange change;
    End end;
    JobEnd job;
    std::wstring text;  ///< "%" stands for the archive's path
};
class RefusedChange : public test::AutomationFixture, public testing::WithParamInterface<RefusedCase> {};

TEST_P(RefusedChange, IsTold) {
    write("there.zip", "precious");
    const std::wstring archive = GetParam().archive.empty() ? L"" : path(GetParam().archive);
    const AutomationResult result = automation.change(archive, path("src"), GetParam().change, {});
    EXPECT_EQ(result.end, GetParam().end);
    EXPECT_EQ(result.job, GetParam().job);
    const std::wstring& given = GetParam().text;
    const std::wstring text = given.starts_with(L"%") ? archive + given.substr(1) : given;
    EXPECT_EQ(result.text, text);
    EXPECT_EQ(automation.lastErrorText(), text);
}

INSTANTIATE_TEST_SUITE_P(
    Changes, RefusedChange,
    testing::Values(
        RefusedCase{"NoName", L"", {.names = {L"a.txt"}}, End::BadArgument, JobEnd::Done, L"The archive has no name."},
        RefusedCase{"NoFiles", L"a.zip", {}, End::BadArgument, JobEnd::Done, L"There are no files to pack."},
        RefusedCase{"NoMembers",
                    L"there.zip",
                    {.action = ArchiveChange::Action::Delete},
                    End::BadArgument,
                    JobEnd::Done,
                    L"There are no members to delete."},
        RefusedCase{"Level",
                    L"a.zip",
                    {.names = {L"a.txt"}, .level = 10},
                    End::BadArgument,
                    JobEnd::Done,
                    L"The level is not one of 0 to 9."},
        RefusedCase{
            "Kind", L"a.txt", {.names = {L"a.txt"}}, End::Job, JobEnd::NoKind, L"%: this is no archive's name."},
        RefusedCase{"Rar",
                    L"a.rar",
                    {.names = {L"a.txt"}},
                    End::Job,
                    JobEnd::Unsupported,
                    L"%: archives of this kind can only be read."},
        RefusedCase{
            "There", L"there.zip", {.names = {L"a.txt"}}, End::Job, JobEnd::Exists, L"%: this is there already."},
        RefusedCase{"Gone",
                    L"a.zip",
                    {.action = ArchiveChange::Action::Delete, .names = {L"a"}},
                    End::Job,
                    JobEnd::NoFile,
                    L"%: there is no such file."},
        RefusedCase{"Source",
                    L"a.zip",
                    {.names = {L"gone.txt"}},
                    End::Job,
                    JobEnd::NoSource,
                    L"gone.txt: there is no such file or folder."},
        RefusedCase{"Elsewhere",
                    L"a.zip",
                    {.names = {L"../there.zip"}},
                    End::Job,
                    JobEnd::BadName,
                    L"../there.zip: this lies outside of the folder that names count from."}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(AutomationTest, RespectsWhatIsSwitchedOffOrMissing) {
    ASSERT_TRUE(pack(L"a.zip").done());
    ListedArchive listed;
    uses[kind::kZip] = KindUse::SwitchedOff;
    EXPECT_EQ(automation.list(path("a.zip"), listed).job, JobEnd::SwitchedOff);
    EXPECT_EQ(automation.lastErrorText(), path("a.zip") + L": the use of UnZip32.dll is switched off.");
    uses[kind::kZip] = KindUse::Missing;
    EXPECT_EQ(automation.list(path("a.zip"), listed).job, JobEnd::NoLibrary);
    EXPECT_EQ(automation.lastErrorText(), path("a.zip") + L": the library UnZip32.dll is missing or too old.");
    uses[kind::kCreateZip] = KindUse::SwitchedOff;
    EXPECT_EQ(pack(L"b.zip").job, JobEnd::SwitchedOff);
    EXPECT_EQ(automation.lastErrorText(), path("b.zip") + L": the use of InfoZip32.dll is switched off.");
    uses[kind::kCreateLzh] = KindUse::SwitchedOff;
    EXPECT_EQ(pack(L"b.lzh").job, JobEnd::SwitchedOff);
    EXPECT_TRUE(pack(L"b.cab").done());
}

TEST_F(AutomationTest, TellsWhatIsNoArchive) {
    write("noise.zip", std::string(5000, 'x'));
    ListedArchive listed;
    EXPECT_EQ(automation.list(path("noise.zip"), listed).job, JobEnd::BadArchive);
    EXPECT_EQ(automation.lastErrorText(), path("noise.zip") + L": this is no good ZIP archive.");
    EXPECT_EQ(automation.list(path("none.zip"), listed).job, JobEnd::NoFile);
    EXPECT_EQ(automation.extract({.file = path("noise.zip"), .target = L""}).text, L"The target folder has no name.");
    EXPECT_EQ(automation.extract({.file = path("noise.zip"), .target = path("out"), .members = {L"a\"b"}}).job,
              JobEnd::BadArchive);
}

TEST_F(AutomationTest, TellsHowPackingGetsOn) {
    const auto listener = std::make_shared<CountingListener>();
    automation.setListener(listener);
    ASSERT_TRUE(pack(L"a.zip").done());
    ASSERT_FALSE(listener->done.empty());
    EXPECT_EQ(listener->paths.front(), L"a.txt");
    EXPECT_EQ(listener->done.back(), 50010);
    EXPECT_EQ(listener->totals.back(), 50010);
}

}  // namespace
}  // namespace tovar
