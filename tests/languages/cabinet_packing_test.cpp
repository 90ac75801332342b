#include "archivers/cab32/cabinet_packing.h"

#include <gtest/gtest.h>

#include <utility>

#include "archivers/formats/cab/cab_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "packing/fakes/ending_files.h"
#include "packing/fakes/fake_sources.h"

namespace archiver::test {
namespace {

constexpr std::uint64_t kLongestFile = 0x7FFF8000;  // 65,535 blocks of 32,768 bytes

SourceFacts facts(SourceKind kind, std::uint64_t size) {
    SourceFacts result;
    result.kind = kind;
    result.size = size;
    return result;
}

/// Writes down what is told, and cancels at a certain call.
class Followed final : public ChangeEvents {
public:
    void total(std::uint64_t members, std::uint64_t bytes) override {
        told.push_back("total " + std::to_string(members) + " " + std::to_string(bytes));
    }
    bool beginMember(const SourceItem& item) override { return note("begin " + item.name); }
    bool taken(std::uint64_t bytes) override {
        takenBytes += bytes;
        return note("taken");
    }
    bool endMember(const PackedMember& member) override {
        return note("end " + member.name + " " + std::to_string(member.originalSize));
    }
    void warning(PackWarning kind, std::string_view name) override {
        told.push_back("warning " + std::to_string(static_cast<int>(kind)) + " " + std::string(name));
    }
    void deleted(const Member&) override { told.emplace_back("deleted"); }
    bool replacing() override { return note("replacing"); }

    std::vector<std::string> told;
    std::uint64_t takenBytes = 0;
    std::string cancelAt;  ///< the start of what is told then

private:
    bool note(const std::string& what) {
        if (what != "taken") told.push_back(what);
        return cancelAt.empty() || !what.starts_with(cancelAt);
    }
};

class CabinetPacking : public ::testing::Test {
protected:
    void SetUp() override {
        add("a.txt", "alpha");
        add("docs/b.txt", std::string(600000, 'b'));
    }
    void add(const std::string& name, const std::string& content, std::uint8_t attributes = 0) {
        sources.addFile("/base/" + name, content, attributes);
        const std::filesystem::path path = "/base/" + name;
        const std::optional<SourceFacts> found = sources.find(path);
        ASSERT_TRUE(found) << path;
        items.push_back({path, name, *found});
    }
    ReturnCode pack() { return packCabinet(archive, items, CabinetMethod::kMsZip, 2, sources, files, events); }
    [[nodiscard]] std::vector<std::string> members() const { return walk(openCab(archive)).names(); }
    [[nodiscard]] std::size_t filesThere() const {
        const std::filesystem::directory_iterator all(folder.path());
        return static_cast<std::size_t>(std::distance(begin(all), end(all)));
    }

    const TemporaryFolder folder;
    std::filesystem::path archive = folder.path() / "new.cab";
    FakeSources sources;
    EndingFiles files;
    Followed events;
    std::vector<SourceItem> items;
};

TEST_F(CabinetPacking, TellsWhatItDoes) {
    EXPECT_EQ(pack(), kOk);
    EXPECT_EQ(events.told, (std::vector<std::string>{"total 2 600005", "begin a.txt", "end a.txt 5", "begin docs/b.txt",
                                                     "end docs\\b.txt 600000", "replacing"}));
    EXPECT_EQ(events.takenBytes, 600005u);
    EXPECT_EQ(members(), (std::vector<std::string>{"a.txt", "docs\\b.txt"}));
    const OpenResult opened = openCab(archive);
    EXPECT_EQ(unpack(*opened.reader, "docs\\b.txt").bytes, std::string(600000, 'b'));
}

TEST_F(CabinetPacking, KeepsAttributesAndTime) {
    items.clear();
    add("c.txt", "x", attribute::kReadOnly | attribute::kHidden);
    items[0].facts.written = momentOfDosStamp({.date = 0x2AB1, .time = 0x8BDD});
    EXPECT_EQ(pack(), kOk);
    const Member member = walk(openCab(archive)).members.at(0);
    EXPECT_EQ(member.attributes, attribute::kReadOnly | attribute::kHidden);
    EXPECT_EQ(member.dosDate, 0x2AB1);
    EXPECT_EQ(member.dosTime, 0x8BDD);
}

TEST_F(CabinetPacking, PassesOverFolders) {
    items.push_back({"/base/docs", "docs/", facts(SourceKind::kFolder, 0)});
    EXPECT_EQ(pack(), kOk);
    EXPECT_EQ(members(), (std::vector<std::string>{"a.txt", "docs\\b.txt"}));
    items.erase(items.begin(), items.begin() + 2);
    EXPECT_EQ(pack(), kNotExist);
}

TEST_F(CabinetPacking, NamesNoFolderThatIsNone) {
    items[1].name = "back\\slash.txt";
    EXPECT_EQ(pack(), kOk);
    EXPECT_EQ(members().back(), "back_slash.txt");
}

TEST_F(CabinetPacking, LeavesOutWhatCannotBeOpened) {
    items.insert(items.begin(), {"/base/gone.txt", "gone.txt", facts(SourceKind::kFile, 10)});
    EXPECT_EQ(pack(), kFileOpen);
    EXPECT_EQ(events.told.at(2), "warning 1 gone.txt");
    EXPECT_EQ(members(), (std::vector<std::string>{"a.txt", "docs\\b.txt"}));
}

TEST_F(CabinetPacking, ChangesNothingWhenNothingCanBeOpened) {
    ASSERT_EQ(pack(), kOk);
    items = {{"/base/gone.txt", "gone.txt", facts(SourceKind::kFile, 10)}};
    EXPECT_EQ(pack(), kFileOpen);
    EXPECT_EQ(members(), (std::vector<std::string>{"a.txt", "docs\\b.txt"}));
    EXPECT_EQ(filesThere(), 1u);
}

TEST_F(CabinetPacking, StoresFilesThatGrewAsTheyWereFound) {
    items[0].facts.size = 3;
    EXPECT_EQ(pack(), kOk);
    EXPECT_EQ(unpack(*openCab(archive).reader, "a.txt").bytes, "alp");
}

TEST_F(CabinetPacking, TellsOfFilesThatBecameShorter) {
    items[0].facts.size = 10;
    EXPECT_EQ(pack(), kOk);
    EXPECT_EQ(events.told.at(2), "warning 2 a.txt");
    EXPECT_EQ(unpack(*openCab(archive).reader, "a.txt").bytes, "alpha");
}

TEST_F(CabinetPacking, RefusesAtOnceWhatNoCabinetHolds) {
    const std::vector<SourceItem> good = items;
    items[1].facts.size = kLongestFile + 1;
    EXPECT_EQ(pack(), kTooBig);
    items[1].facts.size = 1;
    items[1].name = std::string(256, 'n');
    EXPECT_EQ(pack(), kLongFileName);
    items = std::vector<SourceItem>(65536, good[0]);
    EXPECT_EQ(pack(), kTooManyFiles);
    EXPECT_EQ(events.told, std::vector<std::string>{}) << "before anything was begun";
    EXPECT_EQ(filesThere(), 0u);
}

TEST_F(CabinetPacking, CanBeCancelledAtEveryStage) {
    for (const char* const stage : {"begin a", "taken", "end a", "begin docs", "end docs", "replacing"}) {
        events.cancelAt = stage;
        EXPECT_EQ(pack(), kUserCancel) << stage;
        EXPECT_EQ(filesThere(), 0u) << stage;
    }
}

TEST_F(CabinetPacking, TellsOfAFullDisk) {
    files.failWrites(kDiskSpace);
    EXPECT_EQ(pack(), kDiskSpace);
    EXPECT_EQ(filesThere(), 0u);
}

TEST_F(CabinetPacking, LeavesTheOldCabinetOrTheNewOneWhereverItEnds) {
    items.resize(1);
    ASSERT_EQ(pack(), kOk);
    add("c.txt", "gamma");
    EndingFiles counted;
    ASSERT_EQ(packCabinet(archive, items, CabinetMethod::kMsZip, 1, sources, counted, events), kOk);
    ASSERT_GT(counted.done(), 2);
    for (long step = 0; step <= counted.done(); ++step) {
        items.resize(1);
        ASSERT_EQ(pack(), kOk);
        items.clear();
        add("a.txt", "alpha");
        add("c.txt", "gamma");
        EndingFiles ending(step);
        static_cast<void>(packCabinet(archive, items, CabinetMethod::kMsZip, 1, sources, ending, events));
        const std::vector<std::string> there = members();
        EXPECT_TRUE(there == std::vector<std::string>{"a.txt"} || there == (std::vector<std::string>{"a.txt", "c.txt"}))
            << step;
        EXPECT_TRUE(ending.ended() || there.size() == 2) << step;
    }
}

}  // namespace
}  // namespace archiver::test
