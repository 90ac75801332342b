#include "archivers/formats/ace/volumes.h"

#include <gtest/gtest.h>

#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/sha256.h"
#include "formats_ace/support/ace_builder.h"
#include "formats_ace/support/expected.h"
#include "formats_ace/support/memory_disk.h"

namespace archiver::test {
namespace {

constexpr std::uint16_t kMulti = 0x0900;
constexpr std::uint16_t kWhole = 0x0001, kFirst = 0x2001, kMiddle = 0x3001, kLast = 0x1001;

std::string volume(std::uint8_t number, const std::vector<AceFile>& files) {
    return aceArchive({.flags = kMulti, .volume = number}, files);
}

/// A part of a stored member.
AceFile part(std::string name, std::string bytes, std::string_view whole, std::uint16_t flags) {
    return {.name = std::move(name),
            .packed = std::move(bytes),
            .flags = flags,
            .originalSize = whole.size(),
            .checksum = (flags & 0x2000) != 0 ? 0x12345678 : aceChecksum(whole)};
}

/// "a" in the first volume, "split" in all three, "c" in the last.
MemoryDisk threeVolumes() {
    MemoryDisk disk;
    disk.put("set.ace", volume(0, {{.name = "a", .content = "first"}, part("split", "one-", "one-two-three", kFirst)}));
    disk.put("set.c00", volume(1, {part("split", "two-", "one-two-three", kMiddle)}));
    disk.put("set.c01", volume(2, {part("split", "three", "one-two-three", kLast), {.name = "c", .content = "last"}}));
    return disk;
}

TEST(AceVolumes, AreReadAsOne) {
    const MemoryDisk disk = threeVolumes();
    const AceOpenResult opened = disk.open("set.ace");
    ASSERT_EQ(opened.code, kOk);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(unpack(*opened.reader).bytes, "first");
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(member.name, "split");
    EXPECT_EQ(member.packedSize, 13U);
    EXPECT_EQ(member.originalSize, 13U);
    EXPECT_EQ(member.crc, ~aceChecksum("one-two-three"));
    EXPECT_EQ(opened.reader->header().checksum, aceChecksum("one-two-three"));
    EXPECT_EQ(opened.reader->currentVolume(), "set.ace");
    const Unpacked unpacked = unpack(*opened.reader);
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes, "one-two-three");
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(opened.reader->currentVolume(), "set.c01");
    EXPECT_EQ(unpack(*opened.reader).bytes, "last");
    EXPECT_EQ(opened.reader->next(member), kNoMoreEntries);
}

TEST(AceVolumes, CanEndBetweenMembers) {
    MemoryDisk disk;
    disk.put("set.ace", volume(0, {{.name = "a"}}));
    disk.put("set.c00", volume(1, {}));
    disk.put("set.c01", volume(2, {{.name = "b", .content = "b"}}));
    const AceOpenResult opened = disk.open("set.ace");
    const Listing listing = walk(*opened.reader);
    EXPECT_EQ(listing.names(), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    ASSERT_EQ(opened.reader->restart(), kOk);
    EXPECT_EQ(unpack(*opened.reader, "b").bytes, "b");
}

TEST(AceVolumes, OfAPackedMemberAreOneStreamOfBits) {
    // A folder of the test's own: the names of the volumes in any case.
    const TemporaryFolder folder;
    for (const auto& [first, second] :
         {std::pair{"x.ace", "x.c00"}, {"x.ACE", "x.C00"}, {"x.ace", "x.C00"}, {"x.EXE", "x.c00"}}) {
        const auto file = folder.write(first, readFile(dataFile("ace/volume.ace")));
        const auto next = folder.write(second, readFile(dataFile("ace/volume.c00")));
        const AceOpenResult opened = openAceReader(file);
        ASSERT_EQ(opened.code, kOk);
        const Unpacked unpacked = unpack(*opened.reader, "split.txt");
        EXPECT_EQ(unpacked.code, kOk);
        EXPECT_EQ(sha256(unpacked.bytes), expectedArchive("volume.ace").members[0].sha256);
    }
}

TEST(AceVolumes, ThatAreMissingAreTold) {
    const TemporaryFolder folder;
    const auto file = folder.write("x.ace", readFile(dataFile("ace/volume.ace")));
    const AceOpenResult opened = openAceReader(file);
    ASSERT_EQ(opened.code, kOk);
    EXPECT_TRUE(opened.reader->missingVolume().empty());
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);  // the listing has it all the same
    EXPECT_EQ(member.name, "split.txt");
    EXPECT_EQ(member.originalSize, 20000U);
    EXPECT_EQ(unpack(*opened.reader).code, kArcFileOpen);
    EXPECT_EQ(opened.reader->missingVolume(), folder.path() / "x.c00");
    EXPECT_EQ(opened.reader->next(member), kArcFileOpen);
}

TEST(AceVolumes, ThatComeLaterAreFound) {
    MemoryDisk disk = threeVolumes();
    const std::string second = volume(1, {part("split", "two-", "one-two-three", kMiddle)});
    disk.put("set.c00", "");
    const AceOpenResult opened = disk.open("set.ace");
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(unpack(*opened.reader).code, kArcFileOpen);
    EXPECT_EQ(opened.reader->next(member), kArcFileOpen);
    disk.put("set.c00", second);
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(member.name, "c");
}

TEST(AceVolumes, ThatAreNoNextOnesCountAsMissing) {
    const std::vector<AceFile> files = {part("split", "two-", "one-two-three", kMiddle)};
    for (const std::string& wrong :
         {std::string("no archive"), volume(2, files), volume(0, files), aceArchive({.volume = 1}, files)}) {
        MemoryDisk disk = threeVolumes();
        disk.put("set.c00", wrong);
        EXPECT_EQ(unpack(*disk.open("set.ace").reader, "split").code, kArcFileOpen);
    }
}

TEST(AceVolumes, ThatBeginWithAnotherMemberAreDamaged) {
    for (const std::vector<AceFile>& files : {std::vector<AceFile>{},
                                              {part("other", "two-", "one-two-three", kMiddle)},
                                              {part("split", "two-", "one-two-three", kWhole)}}) {
        MemoryDisk disk = threeVolumes();
        disk.put("set.c00", volume(1, files));
        const AceOpenResult opened = disk.open("set.ace");
        EXPECT_EQ(unpack(*opened.reader, "split").code, kHeaderBroken);
        Member member;
        EXPECT_EQ(opened.reader->next(member), kHeaderBroken);
    }
}

TEST(AceVolumes, OpenedInTheMiddleBeginAtTheFirst) {
    const MemoryDisk disk = threeVolumes();
    const AceOpenResult opened = disk.open("set.c01");
    ASSERT_EQ(opened.code, kOk);
    EXPECT_EQ(walk(*opened.reader).names(), (std::vector<std::string>{"a", "split", "c"}));
    EXPECT_EQ(opened.reader->aceFacts().volume, 0);
}

TEST(AceVolumes, OpenedInTheMiddleWithoutTheFirstStandAlone) {
    MemoryDisk disk = threeVolumes();
    disk.put("set.ace", volume(3, {}));  // of another set
    const AceOpenResult opened = disk.open("set.c01");
    ASSERT_EQ(opened.code, kOk);
    EXPECT_EQ(opened.reader->aceFacts().volume, 2);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(member.name, "split");
    EXPECT_EQ(unpack(*opened.reader).code, kArcFileOpen);
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(unpack(*opened.reader).bytes, "last");
}

TEST(AceVolumes, AreAskedForAndTold) {
    MemoryDisk disk = threeVolumes();
    const std::string second = volume(1, {part("split", "two-", "one-two-three", kMiddle)});
    disk.put("set.c00", "");
    const AceOpenResult opened = disk.open("set.ace");
    std::vector<std::string> calls;
    opened.reader->setVolumeCallback([&](std::filesystem::path& path, AceVolumeEvent event) {
        calls.push_back((event == AceVolumeEvent::kRequest ? "request " : "opened ") + path.string());
        if (calls.size() == 2) disk.put("set.c00", second);
        return true;
    });
    const Unpacked unpacked = unpack(*opened.reader, "split");
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes, "one-two-three");
    EXPECT_EQ(calls,
              (std::vector<std::string>{"request set.c00", "request set.c00", "opened set.c00", "opened set.c01"}));
}

TEST(AceVolumes, CanBeElsewhere) {
    MemoryDisk disk = threeVolumes();
    disk.put("disk2", volume(1, {part("split", "two-", "one-two-three", kMiddle)}));
    disk.put("disk2.c00", volume(2, {part("split", "three", "one-two-three", kLast)}));
    disk.put("set.c00", "");
    const AceOpenResult opened = disk.open("set.ace");
    opened.reader->setVolumeCallback([&](std::filesystem::path& path, AceVolumeEvent event) {
        if (event == AceVolumeEvent::kRequest) path = "disk2";
        return true;
    });
    EXPECT_EQ(unpack(*opened.reader, "split").bytes, "one-two-three");
}

TEST(AceVolumes, ThatAreRefusedStopTheWork) {
    for (const AceVolumeEvent refused : {AceVolumeEvent::kRequest, AceVolumeEvent::kOpened}) {
        MemoryDisk disk = threeVolumes();
        if (refused == AceVolumeEvent::kRequest) disk.put("set.c00", "");
        const AceOpenResult opened = disk.open("set.ace");
        opened.reader->setVolumeCallback(
            [&](std::filesystem::path&, AceVolumeEvent event) { return event != refused; });
        EXPECT_EQ(unpack(*opened.reader, "split").code, kUserCancel);
    }
}

TEST(AceVolumes, ThatNeverComeAreNotWaitedForForEver) {
    MemoryDisk disk = threeVolumes();
    disk.put("set.c00", "");
    const AceOpenResult opened = disk.open("set.ace");
    int calls = 0;
    opened.reader->setVolumeCallback([&](std::filesystem::path&, AceVolumeEvent) { return ++calls != 0; });
    EXPECT_EQ(unpack(*opened.reader, "split").code, kArcFileOpen);
    EXPECT_EQ(calls, 100);
}

struct NameCase {
    const char* name;
    std::optional<const char*> following;
};
class AceVolumeNames : public testing::TestWithParam<NameCase> {};
TEST_P(AceVolumeNames, FollowEachOther) {
    const auto following = ace::nextVolumeName(GetParam().name);
    ASSERT_EQ(following.has_value(), GetParam().following.has_value());
    if (following) {
        EXPECT_EQ(following->string(), *GetParam().following);
    }
}
INSTANTIATE_TEST_SUITE_P(Names, AceVolumeNames,
                         testing::Values(NameCase{"a.ace", "a.c00"}, NameCase{"A.ACE", "A.C00"},
                                         NameCase{"a.c00", "a.c01"}, NameCase{"a.C09", "a.C10"},
                                         NameCase{"a.c99", "a.d00"}, NameCase{"a.z99", std::nullopt},
                                         NameCase{"a.exe", "a.c00"}, NameCase{"dir.c00/a", "dir.c00/a.c00"},
                                         NameCase{"a", "a.c00"}, NameCase{"a.b.c00", "a.b.c01"},
                                         NameCase{"a.cxx", "a.c00"}));

TEST(AceVolumeName, HasAnotherCase) {
    EXPECT_EQ(ace::otherCase("Dir/Name.c00"), "Dir/Name.C00");
    EXPECT_EQ(ace::otherCase("Dir/Name.C00"), "Dir/Name.c00");
    EXPECT_EQ(ace::otherCase("Dir/Name"), "Dir/Name");
}

}  // namespace
}  // namespace archiver::test
