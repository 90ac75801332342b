#include <gtest/gtest.h>

#include "archivers/formats/rar/rar_reader.h"
#include "archivers/formats/rar/volume_name.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/sha256.h"
#include "formats_rar/support/rar_builder.h"

/// Sets of several volumes.
namespace archiver::test {
namespace {

using Names = std::vector<std::string>;

constexpr std::uint16_t kVolume = 0x0001;
constexpr std::uint16_t kNewNames = 0x0010;
constexpr std::uint16_t kBefore = 0x0001;
constexpr std::uint16_t kAfter = 0x0002;
constexpr std::uint64_t kNewBefore = 0x08;
constexpr std::uint64_t kNewAfter = 0x10;

struct NameCase {
    const char* name;
    const char* first;
    std::size_t index;
    bool newNames;
    const char* expected;
};
class RarVolumeNames : public testing::TestWithParam<NameCase> {};

TEST_P(RarVolumeNames, CountOn) {
    EXPECT_EQ(rar::volumePath(GetParam().first, GetParam().index, GetParam().newNames), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Names, RarVolumeNames,
    testing::Values(
        NameCase{"First", "a.part1.rar", 0, true, "a.part1.rar"},
        NameCase{"Second", "a.part1.rar", 1, true, "a.part2.rar"},
        NameCase{"Grows", "a.part1.rar", 9, true, "a.part10.rar"},
        NameCase{"Padded", "a.part09.rar", 1, true, "a.part10.rar"},
        NameCase{"Carries", "a.part099.rar", 1, true, "a.part100.rar"},
        NameCase{"LastNumberCounts", "2001.part1.of3.rar", 1, true, "2001.part1.of4.rar"},
        NameCase{"BehindTheNumber", "a.part1x.rar", 1, true, "a.part2x.rar"},
        NameCase{"Program", "a.part1.exe", 1, true, "a.part2.rar"},
        NameCase{"UpperCase", "A.PART1.RAR", 1, true, "A.PART2.RAR"}, NameCase{"NoNumber", "a.rar", 1, true, ""},
        NameCase{"Nothing", "", 1, true, ""}, NameCase{"TooMany", "a.part1.rar", 100001, true, ""},
        NameCase{"InAFolder", "dir7/a.part1.rar", 1, true, "dir7/a.part2.rar"},
        NameCase{"OldSecond", "a.rar", 1, false, "a.r00"}, NameCase{"OldThird", "a.rar", 2, false, "a.r01"},
        NameCase{"OldHundredth", "a.rar", 101, false, "a.s00"},
        NameCase{"OldFromALaterOne", "a.r99", 1, false, "a.s00"}, NameCase{"OldLast", "a.z98", 1, false, "a.z99"},
        NameCase{"OldBehindTheLast", "a.z99", 1, false, ""}, NameCase{"OldProgram", "a.exe", 1, false, "a.r00"},
        NameCase{"OldUpperCase", "A.RAR", 1, false, "A.R00"}),
    [](const auto& each) { return std::string(each.param.name); });

/// "one", then "split" over three volumes, then "two"; "end" in a volume of its own.
class RarVolumes : public testing::TestWithParam<bool> {
protected:
    [[nodiscard]] static bool isNew() { return GetParam(); }
    static const char* nameOf(int index) {
        static const char* const old[] = {"set.rar", "set.r00", "set.r01", "set.r02"};
        static const char* const latest[] = {"set.part1.rar", "set.part2.rar", "set.part3.rar", "set.part4.rar"};
        return isNew() ? latest[index] : old[index];
    }
    void SetUp() override {
        const std::string whole = "abcdefghi";
        if (isNew()) {
            const auto part = [&whole](std::string packed, std::uint64_t flags) {
                return NewRarFile{.name = "split", .content = whole, .packed = std::move(packed), .blockFlags = flags};
            };
            write(0, newRar({{.name = "one", .content = "1"}, part("abc", kNewAfter)}, 1, 0, true));
            write(1, newRar({part("defg", kNewBefore | kNewAfter)}, 1, 1, true));
            write(2, newRar({part("hi", kNewBefore), {.name = "two", .content = "2"}}, 1, 2, true));
            write(3, newRar({{.name = "end", .content = "4"}}, 1, 3));
        } else {
            const auto part = [&whole](std::string packed, std::uint16_t flags) {
                return OldRarFile{.name = "split", .content = whole, .packed = std::move(packed), .flags = flags};
            };
            write(0, oldRar({{.name = "one", .content = "1"}, part("abc", kAfter)}, kVolume, true));
            write(1, oldRar({part("defg", kBefore | kAfter)}, kVolume, true));
            write(2, oldRar({part("hi", kBefore), {.name = "two", .content = "2"}}, kVolume, true));
            write(3, oldRar({{.name = "end", .content = "4"}}, kVolume));
        }
    }
    void write(int index, std::string_view bytes) const { folder_.write(nameOf(index), bytes); }
    void remove(int index) const { std::filesystem::remove(folder_.path() / nameOf(index)); }
    [[nodiscard]] OpenResult open(int index = 0) const { return openRar(folder_.path() / nameOf(index)); }

    const TemporaryFolder folder_;
};

TEST_P(RarVolumes, AreOneArchive) {
    const OpenResult archive = open();
    ASSERT_TRUE(archive.reader);
    const Listing listing = walk(*archive.reader);
    EXPECT_EQ(listing.names(), (Names{"one", "split", "two", "end"}));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    EXPECT_EQ(listing.members[1].packedSize, 9U);
    EXPECT_EQ(listing.members[1].originalSize, 9U);
    for (const auto& [name, content] : {std::pair{"one", "1"}, {"split", "abcdefghi"}, {"two", "2"}, {"end", "4"}}) {
        const Unpacked unpacked = unpack(*archive.reader, name);
        EXPECT_EQ(unpacked.code, kOk) << name;
        EXPECT_EQ(unpacked.bytes, content);
    }
}

TEST_P(RarVolumes, ThatAreMissingHaveACode) {
    remove(1);
    const OpenResult archive = open();
    ASSERT_TRUE(archive.reader);
    const Listing listing = walk(*archive.reader);
    EXPECT_EQ(listing.names(), (Names{"one", "split"}));
    EXPECT_EQ(listing.end, kArcFileOpen);
    EXPECT_EQ(unpack(*archive.reader, "one").code, kOk);
    EXPECT_EQ(unpack(*archive.reader, "split").code, kArcFileOpen);
}

TEST_P(RarVolumes, ThatAreMissingAtTheEndHaveACode) {
    remove(3);
    const Listing listing = walk(open());
    EXPECT_EQ(listing.names(), (Names{"one", "split", "two"}));
    EXPECT_EQ(listing.end, kArcFileOpen);
}

TEST_P(RarVolumes, CanBeginInTheMiddle) {
    const OpenResult archive = open(1);
    ASSERT_TRUE(archive.reader);
    EXPECT_EQ(walk(*archive.reader).names(), (Names{"split", "two", "end"}));
    EXPECT_EQ(unpack(*archive.reader, "split").code, kCannotRead);
    EXPECT_EQ(unpack(*archive.reader, "end").bytes, "4");
}

TEST_P(RarVolumes, OfAnotherKindAreNone) {
    write(1, isNew() ? oldRar({}, kVolume) : newRar({}, 1, 1));
    EXPECT_EQ(walk(open()).end, kArcFileOpen);
    write(1, "no archive at all");
    EXPECT_EQ(walk(open()).end, kArcFileOpen);
    write(1, isNew() ? newRar({}) : oldRar({}));
    EXPECT_EQ(walk(open()).end, kArcFileOpen) << "an archive of its own";
}

TEST_P(RarVolumes, OfAnotherSetHaveTheirMembersTold) {
    if (isNew())
        write(1, newRar({{.name = "other", .content = "o"}}, 1, 1));
    else
        write(1, oldRar({{.name = "other", .content = "o"}}, kVolume));
    const OpenResult archive = open();
    ASSERT_TRUE(archive.reader);
    EXPECT_EQ(walk(*archive.reader).names(), (Names{"one", "split", "other"}));
    EXPECT_EQ(unpack(*archive.reader, "split").code, kArcFileOpen);
    EXPECT_EQ(unpack(*archive.reader, "other").bytes, "o");
}

TEST_P(RarVolumes, WithoutANameHaveNoOthers) {
    const OpenResult archive = openRar(inMemory(readFile(folder_.path() / nameOf(0))), {});
    ASSERT_TRUE(archive.reader);
    EXPECT_EQ(walk(*archive.reader).end, kArcFileOpen);
}

INSTANTIATE_TEST_SUITE_P(Layouts, RarVolumes, testing::Bool(),
                         [](const auto& each) { return each.param ? "New" : "Old"; });

TEST(RarVolumeNumbers, AreCompared) {
    const TemporaryFolder folder;
    const std::filesystem::path first = folder.write("a.part1.rar", newRar({}, 1, 0, true));
    folder.write("a.part2.rar", newRar({{.name = "b"}}, 1, 2));
    EXPECT_EQ(walk(openRar(first)).end, kArcFileOpen);
    folder.write("a.part2.rar", newRar({{.name = "b"}}, 1, 1));
    EXPECT_EQ(walk(openRar(first)).names(), Names{"b"});
}

TEST(RarVolumeNumbers, OfTheOldLayoutCanStandInTheName) {
    const TemporaryFolder folder;
    const std::filesystem::path first = folder.write("a.part01.rar", oldRar({}, kVolume | kNewNames, true));
    folder.write("a.part02.rar", oldRar({{.name = "b"}}, kVolume | kNewNames));
    EXPECT_EQ(walk(openRar(first)).names(), Names{"b"});
}

TEST(RarVolumePrograms, HaveTheOthersBesideThem) {
    const TemporaryFolder folder;
    const std::filesystem::path first = folder.write("a.exe", std::string("MZ program") + oldRar({}, kVolume, true));
    folder.write("a.r00", oldRar({{.name = "b"}}, kVolume));
    EXPECT_EQ(walk(openRar(first)).names(), Names{"b"});
}

TEST(RarVolumeParts, OfPackedMembersAreJoined) {
    // The packed bytes of another program's archive, cut in three.
    const std::string whole = readFile(dataFile("rar/rar5_compressed.rar"));
    const std::size_t header = whole.find("test.bin");
    ASSERT_NE(header, std::string::npos);
    const std::size_t size = 361;
    const std::string packed = whole.substr(whole.size() - 8 - size, size);
    const auto part = [&packed](std::size_t at, std::size_t count, std::uint64_t flags) {
        return NewRarFile{.name = "test.bin",
                          .packed = packed.substr(at, count),
                          .blockFlags = flags,
                          .compression = 5 << 7,
                          .originalSize = 1200,
                          .crc = 0x7CCA70CD};
    };
    const TemporaryFolder folder;
    const std::filesystem::path first = folder.write("a.part1.rar", newRar({part(0, 1, kNewAfter)}, 1, 0, true));
    folder.write("a.part2.rar", newRar({part(1, 200, kNewBefore | kNewAfter)}, 1, 1, true));
    folder.write("a.part3.rar", newRar({part(201, 160, kNewBefore)}, 1, 2));
    const OpenResult archive = openRar(first);
    ASSERT_TRUE(archive.reader);
    const Unpacked unpacked = unpack(*archive.reader, "test.bin");
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(sha256(unpacked.bytes), "588870a2dade35c2650fbb7898c9a9c7f21fce7c281198604e8d0c9737f2c375");
    EXPECT_EQ(unpack(*openRar(first).reader, "test.bin").code, kOk);
    const std::string last = newRar({part(201, 160, kNewBefore)}, 1, 2);
    folder.write("a.part3.rar", last.substr(0, last.size() - 50));
    const OpenResult cut = openRar(first);
    EXPECT_EQ(unpack(*cut.reader, "test.bin").code, kCannotRead);
}

}  // namespace
}  // namespace archiver::test
