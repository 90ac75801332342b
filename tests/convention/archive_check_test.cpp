#include "archivers/convention/archive_check.h"

#include <gtest/gtest.h>

#include "convention/fake_library.h"

namespace archiver {
namespace {

using testing::file;

constexpr std::int32_t kRapid = 0;
constexpr std::int32_t kBasic = 1;
constexpr std::int32_t kFullCrc = 2;
constexpr std::int32_t kRecovery = 4;
constexpr std::int32_t kSfx = 8;
constexpr std::int32_t kAllFlags = 16 | 32 | 64;

class CheckArchive : public testing::LibraryTest {
protected:
    CheckArchive() {
        archive.members.clear();
        for (const char* name : {"a", "b", "c", "d", "e"}) {
            archive.members.push_back(file(name));
        }
    }
    std::int32_t check(std::int32_t mode) {
        disk.nextCalls = 0;
        disk.readCalls = 0;
        const std::int32_t answer = library.checkArchive("a.zip", mode);
        EXPECT_EQ(disk.readers, 0);
        return answer;
    }
};

TEST_F(CheckArchive, LooksAtThreeHeadersWhenInHaste) {
    EXPECT_EQ(check(kRapid), 1);
    EXPECT_EQ(disk.nextCalls, 3);
    EXPECT_EQ(disk.readCalls, 0);
}

TEST_F(CheckArchive, UnpacksNoLargeMemberInHaste) {
    archive.facts.listedByHeaders = false;
    archive.members[1].member.packedSize = std::uint64_t{1} << 20;
    EXPECT_EQ(check(kRapid), 1);
    EXPECT_EQ(disk.nextCalls, 3);
    archive.members[1].member.packedSize += 1;
    EXPECT_EQ(check(kRapid), 1);
    EXPECT_EQ(disk.nextCalls, 2);
    EXPECT_EQ(check(kBasic), 1);
    EXPECT_EQ(disk.nextCalls, 6);
    archive.facts.listedByHeaders = true;
    EXPECT_EQ(check(kRapid), 1);
    EXPECT_EQ(disk.nextCalls, 3) << "the member can be passed over";
}

TEST_F(CheckArchive, LooksAtAllHeaders) {
    EXPECT_EQ(check(kBasic), 1);
    EXPECT_EQ(disk.nextCalls, 6);
    EXPECT_EQ(disk.readCalls, 0);
}

TEST_F(CheckArchive, ReadsAllData) {
    archive.members[1].member.attributes = attribute::kFolder;
    EXPECT_EQ(check(kFullCrc), 1);
    EXPECT_EQ(disk.readCalls, 4) << "a folder has none";
}

TEST_F(CheckArchive, TakesTheUnknownDepthAsTheDeepest) {
    EXPECT_EQ(check(3), 1);
    EXPECT_EQ(disk.readCalls, 5);
}

TEST_F(CheckArchive, FindsADamagedHeaderWithinItsDepth) {
    archive.endCode = kHeaderBroken;
    EXPECT_EQ(check(kRapid), 1) << "behind the third header";
    EXPECT_EQ(check(kBasic), 0);
    EXPECT_EQ(check(kFullCrc), 0);
    archive.members.resize(2);
    EXPECT_EQ(check(kRapid), 0);
}

TEST_F(CheckArchive, TakesWhatStandsBeforeTheDamage) {
    archive.endCode = kHeaderBroken;
    EXPECT_EQ(check(kBasic | kRecovery), 1);
    EXPECT_EQ(check(kFullCrc | kRecovery), 1);
    archive.members.clear();
    EXPECT_EQ(check(kBasic | kRecovery), 0) << "nothing stands there";
}

TEST_F(CheckArchive, FindsDamagedDataWhenItReadsThem) {
    archive.members[4].readCode = kFileCrc;
    EXPECT_EQ(check(kRapid), 1);
    EXPECT_EQ(check(kBasic), 1);
    EXPECT_EQ(check(kFullCrc), 0);
    EXPECT_EQ(check(kFullCrc | kRecovery), 0) << "the flag is about headers";
}

TEST_F(CheckArchive, CanNotVouchForAnUnknownMethod) {
    archive.members[0].readCode = kMethod;
    EXPECT_EQ(check(kBasic), 1);
    EXPECT_EQ(check(kFullCrc), 0);
}

TEST_F(CheckArchive, SkipsWhatNeedsAPassword) {
    archive.members[0].member.encrypted = true;
    archive.members[0].readCode = kFileCrc;
    archive.members[1].readCode = kPasswordFile;
    EXPECT_EQ(check(kFullCrc), 1);
    EXPECT_EQ(disk.readCalls, 4);
}

TEST_F(CheckArchive, TakesAnArchiveWithoutMembers) {
    archive.members.clear();
    EXPECT_EQ(check(kRapid), 1);
    EXPECT_EQ(check(kBasic), 1);
    EXPECT_EQ(check(kFullCrc), 1);
}

TEST_F(CheckArchive, TellsASelfExtractorWhenAsked) {
    EXPECT_EQ(check(kBasic | kSfx), 1);
    archive.facts.selfExtracting = true;
    EXPECT_EQ(check(kBasic | kSfx), 0x8001);
    EXPECT_EQ(check(kBasic), 1);
    archive.endCode = kHeaderBroken;
    EXPECT_EQ(check(kBasic | kSfx), 0);
}

TEST_F(CheckArchive, AnswersTheSameWithTheOtherFlags) {
    EXPECT_EQ(check(kFullCrc | kAllFlags), 1);
    archive.endCode = kHeaderBroken;
    EXPECT_EQ(check(kFullCrc | kAllFlags), 0);
}

TEST_F(CheckArchive, RefusesWhatIsNoArchive) {
    disk.add("text.zip").openCode = kFileStyle;
    disk.add("locked.zip").openCode = kArcFileOpen;
    for (const std::int32_t mode : {kRapid, kBasic, kFullCrc, kFullCrc | kRecovery | kSfx | kAllFlags}) {
        EXPECT_EQ(library.checkArchive("text.zip", mode), 0);
        EXPECT_EQ(library.checkArchive("locked.zip", mode), 0);
        EXPECT_EQ(library.checkArchive("missing.zip", mode), 0);
        EXPECT_EQ(library.checkArchive("", mode), 0);
        EXPECT_EQ(library.checkArchive(nullptr, mode), 0);
    }
}

TEST_F(CheckArchive, TellsEncryptedHeaders) {
    archive.openCode = kPasswordFile;
    EXPECT_EQ(check(kBasic), 0x800A);
}

TEST_F(CheckArchive, SurvivesTheEndOfMemory) {
    archive.throwOnNext = true;
    EXPECT_EQ(check(kBasic), 0);
}

}  // namespace
}  // namespace archiver
