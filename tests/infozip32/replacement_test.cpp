#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "archivers/formats/zip/zip_reader.h"
#include "archivers/infozip32/zip_run.h"
#include "formats/support/files.h"
#include "infozip32/support/zip_scene.h"
#include "packing/fakes/ending_files.h"
#include "packing/fakes/fake_sources.h"

namespace archiver::test {
namespace {

std::uint32_t ARCHIVER_CALL ignoreMessage(const char*, std::uint32_t length) { return length; }

/// One update of an archive, with ports of the test's own: one member goes, one is replaced, one stays, some are new.
class Update {
public:
    static constexpr std::size_t kMany = 20;

    Update() {
        sources_.addFile("/base/replaced.txt", textOfSize(600));
        sources_.addFile("/base/new/one.txt", "one");
        sources_.addFile("/base/new/two.txt", noiseOfSize(300));
        for (std::size_t size = 0; size < kMany; ++size) {
            sources_.addFile(numbered("/base/many/", size), noiseOfSize(size));
        }
    }

    std::int32_t run(PackingFiles& files, bool move = false) {
        infozip::ZipTask task;
        task.archive = archive_;
        task.base = "/base";
        task.names = {"replaced.txt", "new/*.*", "many/*.*"};
        task.move = move;
        infozip::ZipConsole console({&ignoreMessage, nullptr, nullptr, nullptr}, utf8Codec());
        const infozip::ZipSystems systems{both_, files, buffer, [] {}};
        return infozip::ZipRun(std::move(task), console, systems).run();
    }

    /// The archive lies in the real file system, the sources do not.
    class Both final : public SourceSystem {
    public:
        explicit Both(FakeSources& fake) : fake_(fake) {}
        [[nodiscard]] std::filesystem::path absolute(const std::filesystem::path& path) override {
            return path.generic_string().starts_with("/base") ? fake_.absolute(path) : systemSources().absolute(path);
        }
        [[nodiscard]] bool ignoresCase() const noexcept override { return false; }
        [[nodiscard]] std::optional<SourceFacts> find(const std::filesystem::path& path) override {
            return path.generic_string().starts_with("/base") ? fake_.find(path) : systemSources().find(path);
        }
        ReturnCode list(const std::filesystem::path& folder, std::vector<ListedSource>& names) override {
            return fake_.list(folder, names);
        }
        [[nodiscard]] InputFileResult open(const std::filesystem::path& file) override {
            return vanished.contains(file.filename().string()) ? InputFileResult{nullptr, kNotFindArcFile}
                                                               : fake_.open(file);
        }
        bool removeFile(const std::filesystem::path& file) override { return fake_.removeFile(file); }
        bool removeFolder(const std::filesystem::path& folder) override { return fake_.removeFolder(folder); }
        std::set<std::string> vanished;

    private:
        FakeSources& fake_;
    };

    TemporaryFolder folder_;
    std::filesystem::path archive_ = folder_.path() / "made.zip";
    FakeSources sources_;
    Both both_{sources_};
    std::size_t buffer = 24;
};

std::map<std::string, std::string> contentsOf(const std::filesystem::path& archive) {
    std::map<std::string, std::string> found;
    const OpenResult opened = openZip(archive);
    Member member;
    while (opened.reader && opened.reader->next(member) == kOk) {
        std::string& content = found[member.name];
        if (member.kind == MemberKind::kFolder) continue;
        const ReturnCode code = opened.reader->read([&](const char* bytes, std::size_t size) {
            content.append(bytes, size);
            return true;
        });
        if (code != kOk) content = "damaged";
    }
    return found;
}

void clearStrays(const std::filesystem::path& folder) {
    for (const auto& each : std::filesystem::directory_iterator(folder)) {
        if (each.path().filename().string().starts_with("~")) std::filesystem::remove(each.path());
    }
}

/// Points at which the process ends: some hundred, or as many as the environment asks for.
long pointsWanted() {
    const char* const wanted = std::getenv("TOVAREX_KILL_POINTS");
    return wanted == nullptr ? (kSlowFiles ? 20 : 300) : std::atol(wanted);
}

class Replacement : public testing::Test {
protected:
    Replacement() {
        ZipScene scene;
        scene.write("stays.txt", "stays as it is");
        scene.write("replaced.txt", "old contents", 5000);
        EXPECT_EQ(scene.run({"stays.txt", "replaced.txt"}), 0);
        old_ = scene.archiveBytes();
    }
    void reset() const { std::ofstream(update_.archive_, std::ios::binary) << old_; }

    std::string old_;
    Update update_;
    const std::map<std::string, std::string> changed_ = [] {
        std::map<std::string, std::string> changed{{"stays.txt", "stays as it is"},
                                                   {"replaced.txt", textOfSize(600)},
                                                   {"new/one.txt", "one"},
                                                   {"new/two.txt", noiseOfSize(300)}};
        for (std::size_t size = 0; size < Update::kMany; ++size) {
            changed[numbered("many/", size)] = noiseOfSize(size);
        }
        return changed;
    }();
};

TEST_F(Replacement, LeavesTheOldOrTheNewArchiveWhereverTheProcessEnds) {
    long done = 0;
    bool whole = false;
    int turns = 0;
    // Through every step, and again with the steps in other places.
    for (const long wanted = pointsWanted(); done < wanted || !whole;) {
        whole = false;
        for (long point = 0; !whole; ++point) {
            reset();
            EndingFiles files(point);
            const std::int32_t code = update_.run(files);
            whole = !files.ended();
            EXPECT_EQ(code == 0, whole) << "the result does not lie";
            const std::string found = readFile(update_.archive_);
            ASSERT_TRUE(found == old_ || contentsOf(update_.archive_) == changed_) << "after " << point << " steps";
            clearStrays(update_.folder_.path());
            ++done;
        }
        ++turns;
        update_.buffer = 24 + static_cast<std::size_t>(turns) * 13 % 200;
    }
    EXPECT_EQ(contentsOf(update_.archive_), changed_);
    EXPECT_GE(done / turns, 20) << "each write is a point";
}

TEST_F(Replacement, NeverLosesAFileThatIsMoved) {
    bool whole = false;
    for (long point = 0; !whole; ++point) {
        if (kSlowFiles && point % 4 != 3) continue;
        reset();
        Update update;
        std::ofstream(update.archive_, std::ios::binary) << old_;
        EndingFiles files(point);
        static_cast<void>(update.run(files, true));
        whole = !files.ended();
        const auto inArchive = contentsOf(update.archive_);
        for (const char* name : {"replaced.txt", "new/one.txt", "new/two.txt"}) {
            const bool isSource = update.both_.find(std::string("/base/") + name).has_value();
            const auto member = inArchive.find(name);
            const bool isMember = member != inArchive.end() && member->second == changed_.at(name);
            ASSERT_TRUE(isSource || isMember) << name << " after " << point << " steps";
            EXPECT_FALSE(whole && isSource);
        }
    }
}

TEST_F(Replacement, KeepsTheOldArchiveOnAFullDisk) {
    reset();
    EndingFiles files;
    files.failWrites(kDiskSpace);
    EXPECT_EQ(update_.run(files), 14);
    EXPECT_EQ(readFile(update_.archive_), old_);
}

TEST_F(Replacement, StoresTheRestWhenAFileVanishes) {
    reset();
    update_.both_.vanished = {"one.txt", "replaced.txt"};
    EndingFiles files;
    EXPECT_EQ(update_.run(files, true), 18);
    auto expected = changed_;
    expected["replaced.txt"] = "old contents";
    expected.erase("new/one.txt");
    EXPECT_EQ(contentsOf(update_.archive_), expected);
    EXPECT_TRUE(update_.both_.find("/base/new/two.txt").has_value()) << "nothing is removed when not all went well";
}

TEST_F(Replacement, MakesNoArchiveOfFilesThatAllVanish) {
    update_.both_.vanished = {"one.txt", "two.txt", "replaced.txt"};
    for (std::size_t size = 0; size < Update::kMany; ++size) update_.both_.vanished.insert(std::to_string(size));
    EndingFiles files;
    EXPECT_EQ(update_.run(files), 18);
    EXPECT_FALSE(std::filesystem::exists(update_.archive_));
}

TEST_F(Replacement, RefusesAWriteProtectedArchive) {
    reset();
    std::filesystem::permissions(update_.archive_,
                                 std::filesystem::perms::owner_write | std::filesystem::perms::group_write |
                                     std::filesystem::perms::others_write,
                                 std::filesystem::perm_options::remove);
    EndingFiles files;
    EXPECT_EQ(update_.run(files), 15);
    EXPECT_EQ(readFile(update_.archive_), old_);
    std::filesystem::permissions(update_.archive_, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
}

/// A file that has become longer, or shorter, since it was found.
class Changing final : public InputFile {
public:
    Changing(std::string bytes, std::uint64_t size) : bytes_(std::move(bytes)), size_(size) {}
    [[nodiscard]] std::uint64_t size() const noexcept override { return size_; }
    [[nodiscard]] Moment modified() const noexcept override { return {}; }
    [[nodiscard]] std::optional<std::size_t> readAt(std::uint64_t offset,
                                                    std::span<char> into) const noexcept override {
        if (offset >= bytes_.size()) return 0;
        const std::size_t count = std::min<std::size_t>(into.size(), bytes_.size() - static_cast<std::size_t>(offset));
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(offset), count, into.begin());
        return count;
    }

private:
    std::string bytes_;
    std::uint64_t size_;
};

class ChangingSources final : public SourceSystem {
public:
    ChangingSources(std::uint64_t found, std::string bytes) : found_(found), bytes_(std::move(bytes)) {}
    [[nodiscard]] std::filesystem::path absolute(const std::filesystem::path& path) override {
        return systemSources().absolute(path);
    }
    [[nodiscard]] bool ignoresCase() const noexcept override { return false; }
    [[nodiscard]] std::optional<SourceFacts> find(const std::filesystem::path& path) override {
        if (path.filename() != "log") return std::nullopt;
        SourceFacts facts;
        facts.size = found_;
        return facts;
    }
    ReturnCode list(const std::filesystem::path&, std::vector<ListedSource>&) override { return kNotExist; }
    [[nodiscard]] InputFileResult open(const std::filesystem::path&) override {
        return {std::make_unique<Changing>(bytes_, bytes_.size()), kOk};
    }
    bool removeFile(const std::filesystem::path&) override { return false; }
    bool removeFolder(const std::filesystem::path&) override { return false; }

private:
    std::uint64_t found_;
    std::string bytes_;
};

TEST(ChangingFiles, ArePackedAsFarAsTheyWereFound) {
    for (const std::size_t found : {1000U, 3U << 20}) {
        for (const std::size_t now : {found / 2, found, found * 2}) {
            const TemporaryFolder folder;
            ChangingSources sources(found, textOfSize(now));
            infozip::ZipTask task;
            task.archive = folder.path() / "made.zip";
            task.base = folder.path();
            task.names = {"log"};
            infozip::ZipConsole console({&ignoreMessage, nullptr, nullptr, nullptr}, utf8Codec());
            const infozip::ZipSystems systems{sources, systemPackingFiles()};
            const std::filesystem::path archive = task.archive;
            EXPECT_EQ(infozip::ZipRun(std::move(task), console, systems).run(), 0);
            EXPECT_TRUE(contentsOf(archive).at("log") == textOfSize(std::min(now, found))) << found << ", " << now;
        }
    }
}

}  // namespace
}  // namespace archiver::test
