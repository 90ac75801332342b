#include <gtest/gtest.h>

#include <fstream>

#include "archivers/packing/source_system.h"
#include "formats/support/zip_builder.h"
#include "infozip32/support/zip_scene.h"

namespace archiver::test {
namespace {

using Names = std::vector<std::string>;

class BadInput : public testing::Test {
protected:
    ZipScene scene_;
};

TEST_F(BadInput, LeavesAnArchiveOfAnotherKindAsItIs) {
    scene_.write("a.txt", "a");
    const std::string other = "Rar!\x1A\x07 and so on, long enough to be looked at";
    scene_.write("made.zip", other);
    EXPECT_EQ(scene_.run({"a.txt"}), 3);
    EXPECT_EQ(scene_.archiveBytes(), other);
    EXPECT_EQ(scene_.text(), "\nzip error: Zip file structure invalid (" + utf8OfPath(scene_.archive) + ")\n");
}

TEST_F(BadInput, LeavesADamagedArchiveAsItIs) {
    scene_.write("a.txt", textOfSize(3000));
    scene_.write("b.txt", "b");
    ASSERT_EQ(scene_.run({"a.txt", "b.txt"}), 0);
    const std::string whole = scene_.archiveBytes();
    for (const std::size_t cut : {std::size_t{1}, std::size_t{10}, whole.size() / 2}) {
        const std::string damaged = whole.substr(cut);
        scene_.write("made.zip", damaged);
        const std::int32_t code = scene_.run({"b.txt"});
        if (code == 0) {
            EXPECT_EQ(scene_.members().at("b.txt"), "b");
        } else {
            EXPECT_EQ(code, 3);
            EXPECT_EQ(scene_.archiveBytes(), damaged);
        }
    }
    std::string overlapping = whole;
    const std::size_t second = overlapping.rfind("PK\x01\x02");
    overlapping[second + 42] = overlapping[second + 43] = '\0';  // both members are the first one's bytes
    scene_.write("made.zip", overlapping);
    EXPECT_EQ(scene_.run({"b.txt"}), 3);
    EXPECT_EQ(scene_.archiveBytes(), overlapping);
}

TEST_F(BadInput, TakesAnEmptyFileForANewArchive) {
    scene_.write("made.zip", "");
    scene_.write("a.txt", "a");
    EXPECT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_EQ(scene_.memberNames(), Names{"a.txt"});
    scene_.write("made.zip", "");
    scene_.options.deleteEntries = 1;
    EXPECT_EQ(scene_.run({"a.txt"}), 13);
}

TEST_F(BadInput, RunsNothingWithoutNames) {
    EXPECT_EQ(scene_.run({}), 12);
    EXPECT_FALSE(std::filesystem::exists(scene_.archive));
}

TEST_F(BadInput, LeavesItsOwnArchiveInThePackedFolderOut) {
    scene_.write("a.txt", "a");
    for (int turn = 0; turn < 3; ++turn) {
        ASSERT_EQ(scene_.run({"*.*"}), 0);
        EXPECT_EQ(scene_.memberNames(), Names{"a.txt"});
    }
}

TEST_F(BadInput, TakesThousandsOfNames) {
    constexpr std::size_t count = kSlowFiles ? 200 : 4000;
    Names names;
    for (std::size_t number = 0; number < count; ++number) {
        names.push_back(numbered("f", 10'000 + number));
        scene_.write(names.back(), std::to_string(number));
    }
    ASSERT_EQ(scene_.run(names), 0);
    EXPECT_EQ(scene_.memberNames(), names);
    EXPECT_EQ(scene_.serviced.size(), count);
}

TEST_F(BadInput, ReachesLongPaths) {
    std::string name;
    for (int level = 0; level < 8; ++level) name += std::string(40, static_cast<char>('a' + level)) + "/";
    const std::filesystem::path base = systemSources().absolute(scene_.path("x")).parent_path();
    std::filesystem::path deep = base;
    for (int level = 0; level < 8; ++level) {
        deep /= std::string(40, static_cast<char>('a' + level));
        std::filesystem::create_directory(deep);
    }
    std::ofstream(deep / "file.txt") << "deep";
    scene_.options.recurse = 1;
    scene_.options.noFolderEntries = 1;
    ASSERT_EQ(scene_.run({std::string(40, 'a') + "\\*.*"}), 0);
    EXPECT_EQ(scene_.memberNames(), Names{name + "file.txt"});
    std::error_code ignored;
    std::filesystem::remove_all(base / std::string(40, 'a'), ignored);
}

TEST_F(BadInput, StoresNamesInEveryScriptAndSaysSo) {
    const std::string name = reinterpret_cast<const char*>(u8"дом-家-ü.txt");
    scene_.write(name, "x");
    ASSERT_EQ(scene_.run({"*.txt"}), 0);
    EXPECT_EQ(scene_.memberNames(), Names{name});
    const std::string bytes = scene_.archiveBytes();
    const std::size_t directory = bytes.find("PK\x01\x02");
    EXPECT_EQ(bytes[directory + 9], 0x08) << "bit 11 of the flags";
}

TEST_F(BadInput, RefusesWhatItCannotDo) {
    scene_.write("a.txt", "a");
    scene_.options.level = 'x';
    EXPECT_EQ(scene_.run({"a.txt"}), 16);
    scene_.options.level = '6';
    scene_.options.shortNames = 1;
    EXPECT_EQ(scene_.run({"a.txt"}), 16);
    EXPECT_FALSE(std::filesystem::exists(scene_.archive));
}

TEST_F(BadInput, RefusesMissingRecordsAndCallbacks) {
    infozip::ZipCore core;
    EXPECT_EQ(core.init(nullptr), 0);
    zip_abi::Callbacks calls = ZipScene::callbacks();
    calls.comment = nullptr;
    EXPECT_EQ(core.init(&calls), 0);
    EXPECT_EQ(core.setOptions(nullptr), 0);
    EXPECT_EQ(core.archive({0, "x.zip", nullptr}), 5);
    calls = ZipScene::callbacks();
    calls.password = nullptr;
    calls.service = nullptr;
    EXPECT_EQ(core.init(&calls), 1);
}

}  // namespace
}  // namespace archiver::test
