#include "archivers/formats/utf8.h"
#include "lzh_packing/support/packing_fixture.h"
#include "packing/fakes/fake_sources.h"

/// Archives that are made.
namespace archiver::test {
namespace {

using Names = std::vector<std::string>;

TEST_F(LzhPackingTest, PacksAFolderWithAllThatLiesBelow) {
    source("readme.txt", "hello");
    source("docs/a.txt", textOf(5000));
    source("docs/deep/b.bin", randomBytes(3000));
    source("docs/empty", "");
    EXPECT_EQ(run("a -r2 -x1  ARC BASE readme.txt docs"), kOk);
    EXPECT_EQ(contents(), (Contents{{"readme.txt", "hello"},
                                    {"docs/a.txt", textOf(5000)},
                                    {"docs/deep/b.bin", randomBytes(3000)},
                                    {"docs/empty", ""}}));
    EXPECT_EQ(names().front(), "readme.txt") << "in the order of the names";
    EXPECT_EQ(member("readme.txt").method, "-lh0-") << "it would not become smaller";
    EXPECT_EQ(member("docs/a.txt").method, "-lh5-");
    EXPECT_EQ(member("docs/deep/b.bin").method, "-lh0-");
    EXPECT_EQ(member("docs/empty").method, "-lh0-");
    EXPECT_EQ(beside(), (Names{"a.lzh", "base"}));
}

TEST_F(LzhPackingTest, TellsWhatItDoes) {
    source("a", "aaaa");
    source("b", "bb");
    EXPECT_EQ(run("a ARC BASE a b"), kOk);
    EXPECT_EQ(events_.members, 2U);
    EXPECT_EQ(events_.bytes, 6U);
    EXPECT_EQ(events_.takenBytes, 6U);
    EXPECT_EQ(events_.lines, (Names{"begin a", "begin b", "end a", "end b"}));
}

TEST_F(LzhPackingTest, TakesNoFoldersWithoutBeingTold) {
    source("a/b/c.txt", "c");
    EXPECT_EQ(run("a ARC BASE a/b/c.txt"), kOk);
    EXPECT_EQ(names(), Names{"c.txt"});
    EXPECT_EQ(run("a -x1 ARC BASE a/b/c.txt"), kOk);
    EXPECT_EQ(names(), (Names{"c.txt", "a/b/c.txt"}));
}

TEST_F(LzhPackingTest, PacksOneOfTwoFilesThatWouldGetOneName) {
    source("a/x", "first");
    source("b/x", "second");
    EXPECT_EQ(run("a ARC BASE a/x b/x"), kSameNameFile);
    EXPECT_EQ(contents(), (Contents{{"x", "first"}}));
}

TEST_F(LzhPackingTest, PacksWhatPatternsChoose) {
    source("a.txt", "a");
    source("b.txt", "b");
    source("c.bin", "c");
    source("sub/d.txt", "d");
    source("sub/e.bin", "e");
    EXPECT_EQ(run("a -x1 ARC BASE *.txt"), kOk);
    EXPECT_EQ(names(), (Names{"a.txt", "b.txt"}));
    std::filesystem::remove(archive_);
    EXPECT_EQ(run("a -x1 -r1 ARC BASE *.txt"), kOk);
    EXPECT_EQ(names(), (Names{"a.txt", "b.txt", "sub/d.txt"}));
    std::filesystem::remove(archive_);
    EXPECT_EQ(run("a -x1 -r1 ARC BASE d.txt"), kOk) << "looked for in every folder";
    EXPECT_EQ(names(), Names{"sub/d.txt"});
    std::filesystem::remove(archive_);
    EXPECT_EQ(run("a -x1 ARC BASE sub/*.*"), kOk);
    EXPECT_EQ(names(), (Names{"sub/d.txt", "sub/e.bin"}));
    std::filesystem::remove(archive_);
    EXPECT_EQ(run("a -d1 -jx*.txt ARC BASE"), kOk) << "all there is, but for what is excluded";
    EXPECT_EQ(names(), (Names{"c.bin", "sub/", "sub/e.bin"}));
}

TEST_F(LzhPackingTest, MakesMembersOfFoldersWhenTold) {
    source("docs/a.txt", "a");
    std::filesystem::create_directories(base_ / "docs" / "empty");
    EXPECT_EQ(run("a -r2 -a1 -x1 ARC BASE docs"), kOk);
    EXPECT_EQ(names(), Names{"docs/a.txt"});
    EXPECT_EQ(run("a -r2 -a2 -x1 ARC BASE docs"), kOk);
    EXPECT_EQ(names(), (Names{"docs/a.txt", "docs/", "docs/empty/"}));
    EXPECT_EQ(member("docs/empty/").method, "-lhd-");
    EXPECT_EQ(member("docs/empty/").kind, MemberKind::kFolder);
}

TEST_F(LzhPackingTest, LeavesHiddenFilesUnlessTold) {
    FakeSources fake;
    fake.addFile("/base/plain", "p", attribute::kArchive);
    fake.addFile("/base/hidden", "h", attribute::kHidden);
    fake.addFile("/base/system", "s", attribute::kSystem | attribute::kReadOnly);
    sources_ = &fake;
    base_ = "/base";
    const auto packed = [&](const std::string& line) {
        std::filesystem::remove(archive_);
        auto parsed = run(line);
        EXPECT_EQ(parsed, kOk);
        return names();
    };
    EXPECT_EQ(packed("a -r2 ARC /base/ *.*"), Names{"plain"});
    EXPECT_EQ(packed("a -r2 ARC /base/ hidden plain system"), Names{"plain"}) << "nor when they are named";
    EXPECT_EQ(events_.lines, (Names{"begin plain", "end plain", "warning hidden: hidden or system file",
                                    "warning system: hidden or system file", "begin plain", "end plain"}));
    std::filesystem::remove(archive_);
    EXPECT_EQ(run("a -r2 ARC /base/ hidden"), kNotExist);
    EXPECT_FALSE(std::filesystem::exists(archive_));
    EXPECT_EQ(packed("a -r2 -a1 ARC /base/ hidden"), Names{"hidden"});
    EXPECT_EQ(packed("a -r2 -a1 ARC /base/ *.*"), (Names{"hidden", "plain", "system"}));
    EXPECT_EQ(member("hidden").attributes, attribute::kHidden);
    EXPECT_EQ(member("system").attributes, attribute::kSystem | attribute::kReadOnly);
    EXPECT_EQ(member("plain").attributes, attribute::kArchive);
    EXPECT_EQ(member("plain").written->seconds, 1'000'000'000);
}

TEST_F(LzhPackingTest, PacksByEveryMethod) {
    source("t", textOf(200000));
    std::uint64_t last = 200000;
    for (const auto& [number, method] :
         {std::pair{"0", "-lh0-"}, {"1", "-lh5-"}, {"2", "-lh5-"}, {"3", "-lh6-"}, {"4", "-lh7-"}}) {
        SCOPED_TRACE(method);
        EXPECT_EQ(run(std::string("a -jm") + number + " ARC BASE t"), kOk);
        EXPECT_EQ(member("t").method, method);
        EXPECT_EQ(contents(), (Contents{{"t", textOf(200000)}}));
        EXPECT_LE(member("t").packedSize, last) << "a larger window finds more";
        last = member("t").packedSize;
    }
}

TEST_F(LzhPackingTest, KeepsNamesOfAllScripts) {
    const Names all = {"\xE8\xAA\xAD\xE3\x82\x80.txt", "\xC3\xBF/\xC3\xA4.txt", "\xF0\x9F\x98\x80.txt", "plain.txt",
                       "\xE8\xA1\xA8/\xE3\x82\xBD.txt"};
    for (const std::string& name : all) source(name, name);
    for (const char* level : {"0", "1", "2"}) {
        SCOPED_TRACE(level);
        std::filesystem::remove(archive_);
        EXPECT_EQ(run(std::string("a -r2 -x1 -h") + level + " ARC BASE *.*"), kOk);
        Contents expected;
        for (const std::string& name : all) expected.emplace(name, name);
        EXPECT_EQ(contents(), expected);
    }
}

TEST_F(LzhPackingTest, IsNotPackedItself) {
    archive_ = base_ / "a.lzh";
    source("x", "x");
    EXPECT_EQ(run("a -r2 -x1 ARC BASE *.*"), kOk);
    EXPECT_EQ(run("a -r2 -x1 ARC BASE *.*"), kOk);
    EXPECT_EQ(names(), Names{"x"});
}

TEST_F(LzhPackingTest, PacksTheOthersWhenANameIsMissing) {
    source("there", "t");
    EXPECT_EQ(run("a ARC BASE gone there"), kNotExist);
    EXPECT_EQ(names(), Names{"there"});
    EXPECT_EQ(events_.lines, (Names{"warning gone: not found", "begin there", "end there"}));
}

TEST_F(LzhPackingTest, MakesNoArchiveOfNothing) {
    EXPECT_EQ(run("a ARC BASE gone"), kNotExist);
    std::filesystem::create_directories(base_ / "empty");
    EXPECT_EQ(run("a -r2 -x1 ARC BASE empty"), kNotExist);
    EXPECT_EQ(beside(), Names{"base"});
}

/// Some of the files vanish when they are to be opened.
class VanishingSources final : public SourceSystem {
public:
    std::filesystem::path absolute(const std::filesystem::path& path) override { return system_.absolute(path); }
    bool ignoresCase() const noexcept override { return system_.ignoresCase(); }
    std::optional<SourceFacts> find(const std::filesystem::path& path) override { return system_.find(path); }
    ReturnCode list(const std::filesystem::path& folder, std::vector<ListedSource>& names) override {
        return system_.list(folder, names);
    }
    InputFileResult open(const std::filesystem::path& file) override {
        if (file.filename() == "gone") std::filesystem::remove(file);
        return system_.open(file);
    }
    bool removeFile(const std::filesystem::path& file) override { return system_.removeFile(file); }
    bool removeFolder(const std::filesystem::path& folder) override { return system_.removeFolder(folder); }

private:
    SourceSystem& system_ = systemSources();
};

TEST_F(LzhPackingTest, LeavesOutWhatVanishes) {
    VanishingSources vanishing;
    sources_ = &vanishing;
    source("a", "a");
    source("gone", "old");
    source("z", "z");
    EXPECT_EQ(run("a ARC BASE a gone z"), kFileOpen);
    EXPECT_EQ(contents(), (Contents{{"a", "a"}, {"z", "z"}}));
    EXPECT_EQ(events_.lines.back(), "end z");

    sources_ = &systemSources();
    source("gone", "old");
    EXPECT_EQ(run("a ARC BASE gone"), kOk);
    sources_ = &vanishing;
    source("gone", "new");
    EXPECT_EQ(run("a ARC BASE a gone"), kFileOpen);
    EXPECT_EQ(contents(), (Contents{{"a", "a"}, {"z", "z"}, {"gone", "old"}})) << "what was there stays";
    source("gone", "new");
    std::filesystem::remove(archive_);
    EXPECT_EQ(run("a ARC BASE gone"), kFileOpen);
    EXPECT_EQ(beside(), Names{"base"}) << "nothing could be packed";
}

TEST_F(LzhPackingTest, GivesTheSameBytesOnAnyNumberOfThreads) {
    FakeSources fake;
    sources_ = &fake;
    base_ = "/base";
    for (int index = 0; index < 40; ++index) {
        fake.addFile("/base/f" + std::to_string(index), textOf(static_cast<std::size_t>(index) * 97));
    }
    fake.addFile("/base/large", textOf(300000) + randomBytes(30000));
    fake.addFile("/base/random", randomBytes(280000));
    EXPECT_EQ(run("a -r2 -x1 ARC BASE *.*", 1), kOk);
    const std::string one = archiveBytes();
    for (const unsigned threads : {2U, 7U}) {
        std::filesystem::remove(archive_);
        EXPECT_EQ(run("a -r2 -x1 ARC BASE *.*", threads), kOk);
        EXPECT_TRUE(archiveBytes() == one) << threads;
    }
    EXPECT_EQ(contents().size(), 42U);
}

}  // namespace
}  // namespace archiver::test
