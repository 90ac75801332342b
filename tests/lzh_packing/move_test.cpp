#include "lzh_packing/support/packing_fixture.h"

/// Sources that go once they are safe.
namespace archiver::test {
namespace {

using Names = std::vector<std::string>;

TEST_F(LzhPackingTest, RemovesWhatItMoved) {
    source("a.txt", textOf(3000));
    source("docs/b.txt", "b");
    source("docs/deep/c.txt", "");
    source("stays.txt", "s");
    EXPECT_EQ(run("m -r2 -a1 -x1  ARC BASE a.txt docs"), kOk);
    EXPECT_EQ(contents(), (Contents{{"a.txt", textOf(3000)}, {"docs/b.txt", "b"}, {"docs/deep/c.txt", ""}}));
    EXPECT_EQ(sources(), Names{"stays.txt"});
}

TEST_F(LzhPackingTest, KeepsFoldersThatHoldWhatWasNotMoved) {
    source("docs/a.txt", "a");
    std::filesystem::create_directories(base_ / "docs" / "empty");
    EXPECT_EQ(run("m -r2 -a1 -x1  ARC BASE docs"), kOk);
    EXPECT_EQ(sources(), (Names{"docs/", "docs/empty/"})) << "it is no member";
    source("docs/a.txt", "a");
    EXPECT_EQ(run("m -r2 -a2 -x1  ARC BASE docs"), kOk);
    EXPECT_EQ(sources(), Names{}) << "now it is one";
    EXPECT_EQ(names(), (Names{"docs/a.txt", "docs/", "docs/empty/"}));
}

TEST_F(LzhPackingTest, KeepsTheFoldersOfAFileThatIsNamedItself) {
    source("docs/a.txt", "a");
    EXPECT_EQ(run("m -x1 ARC BASE docs/a.txt"), kOk);
    EXPECT_EQ(sources(), Names{"docs/"});
}

TEST_F(LzhPackingTest, KeepsSourcesWhenTheArchiveIsNotMade) {
    source("a.txt", "a");
    files_.failWrites(kDiskSpace);
    EXPECT_EQ(run("m ARC BASE a.txt"), kDiskSpace);
    EXPECT_EQ(sources(), Names{"a.txt"});
    EXPECT_EQ(beside(), Names{"base"});
}

/// A file changes between its packing and its removal.
class ChangingSources final : public SourceSystem {
public:
    explicit ChangingSources(std::filesystem::path file) : file_(std::move(file)) {}
    std::filesystem::path absolute(const std::filesystem::path& path) override { return system_.absolute(path); }
    bool ignoresCase() const noexcept override { return system_.ignoresCase(); }
    std::optional<SourceFacts> find(const std::filesystem::path& path) override {
        std::optional<SourceFacts> facts = system_.find(path);
        if (opened_ && facts && path.filename() == file_) ++facts->size;
        return facts;
    }
    ReturnCode list(const std::filesystem::path& folder, std::vector<ListedSource>& names) override {
        return system_.list(folder, names);
    }
    InputFileResult open(const std::filesystem::path& file) override {
        opened_ = true;
        return system_.open(file);
    }
    bool removeFile(const std::filesystem::path& file) override { return system_.removeFile(file); }
    bool removeFolder(const std::filesystem::path& folder) override { return system_.removeFolder(folder); }

private:
    std::filesystem::path file_;
    SourceSystem& system_ = systemSources();
    bool opened_ = false;
};

TEST_F(LzhPackingTest, KeepsWhatWasWrittenToMeanwhile) {
    ChangingSources changing("b.txt");
    sources_ = &changing;
    source("a.txt", "a");
    source("b.txt", "b");
    EXPECT_EQ(run("m ARC BASE a.txt b.txt"), kOk);
    EXPECT_EQ(sources(), Names{"b.txt"});
    EXPECT_EQ(events_.lines.back(), "warning b.txt: it is packed, but cannot be removed");
}

/// The new archive is damaged on its way to the disk.
class DamagingFiles final : public PackingFiles {
public:
    std::filesystem::path resolve(const std::filesystem::path& archive) override { return files_.resolve(archive); }
    ReturnCode checkReplaceable(const std::filesystem::path& archive) override {
        return files_.checkReplaceable(archive);
    }
    ReturnCode create(const std::filesystem::path& file, std::unique_ptr<NewFile>& made) override {
        std::unique_ptr<NewFile> inner;
        const ReturnCode code = files_.create(file, inner);
        if (code == kOk) made = std::make_unique<File>(std::move(inner));
        return code;
    }
    void keepAttributes(const std::filesystem::path& from, const std::filesystem::path& to) override {
        files_.keepAttributes(from, to);
    }
    ReturnCode rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
        return files_.rename(from, to);
    }
    ReturnCode remove(const std::filesystem::path& file) override { return files_.remove(file); }

private:
    class File final : public NewFile {
    public:
        explicit File(std::unique_ptr<NewFile> file) : file_(std::move(file)) {}
        ReturnCode write(std::uint64_t offset, std::span<const char> bytes) override {
            std::string damaged(bytes.begin(), bytes.end());
            damaged[damaged.size() / 2] ^= 1;
            return file_->write(offset, damaged);
        }
        ReturnCode cut(std::uint64_t size) override { return file_->cut(size); }
        ReturnCode flush() override { return file_->flush(); }

    private:
        std::unique_ptr<NewFile> file_;
    };
    PackingFiles& files_ = systemPackingFiles();
};

TEST_F(LzhPackingTest, KeepsSourcesOfAnArchiveThatIsNotAsItWasWritten) {
    source("a.txt", randomBytes(5000));
    DamagingFiles damaging;
    Command command;
    command.action = Command::Action::kPack;
    command.archive = archive_;
    command.pack.move = true;
    command.pack.base = base_;
    command.pack.names = {"a.txt"};
    command.pack.method = lzh_method::kLh5;
    command.pack.headerLevel = 2;
    EXPECT_EQ(changeLzh(command, 1, events_, systemSources(), damaging), kFileCrc);
    EXPECT_EQ(sources(), Names{"a.txt"});
    EXPECT_EQ(beside(), Names{"base"});
}

}  // namespace
}  // namespace archiver::test
