#include "archivers/packing/verify_members.h"

#include <gtest/gtest.h>

#include "archivers/formats/zip/zip_reader.h"
#include "formats/support/files.h"
#include "formats/support/zip_builder.h"

namespace archiver::test {
namespace {

const std::function<bool()> kGoOn = [] { return true; };

class VerifyMembersTest : public testing::Test {
protected:
    VerifyMembersTest() {
        ZipBuilder builder;
        builder.add({.name = "a.txt", .content = "123456789"});
        builder.add({.name = "folder/"});
        builder.add({.name = "other.txt", .content = "other", .crc = 1});
        archive_ = folder_.write("a.zip", builder.build());
    }
    ReturnCode verify(const std::vector<ExpectedMember>& members) {
        return verifyMembers(static_cast<OpenFunction>(openZip), archive_, members, {}, kGoOn);
    }

    TemporaryFolder folder_;
    std::filesystem::path archive_;
};

TEST_F(VerifyMembersTest, FindsMembersWholeAndPassesOthersOver) {
    EXPECT_EQ(verify({{"a.txt", 9, 0xCBF43926}, {"folder/", 0, 0}}), kOk);
    EXPECT_EQ(verify({{"a.txt", 9, std::nullopt}}), kOk);
}

TEST_F(VerifyMembersTest, TellsAMemberThatIsDifferent) {
    EXPECT_EQ(verify({{"a.txt", 9, 0xCBF43927}}), kFileCrc);
    EXPECT_EQ(verify({{"a.txt", 8, 0xCBF43926}}), kFileCrc);
    EXPECT_EQ(verify({{"other.txt", 5, std::nullopt}}), kFileCrc);
}

TEST_F(VerifyMembersTest, TellsAMemberThatIsMissing) { EXPECT_EQ(verify({{"b.txt", 0, 0}}), kNotExist); }

TEST_F(VerifyMembersTest, TellsAnArchiveThatCannotBeOpened) {
    archive_ = folder_.write("bad.zip", "not an archive at all");
    EXPECT_EQ(verify({{"a.txt", 9, 0}}), kFileStyle);
}

TEST_F(VerifyMembersTest, EndsWhenTheUserCancels) {
    const std::vector<ExpectedMember> members{{"a.txt", 9, 0xCBF43926}};
    EXPECT_EQ(verifyMembers(static_cast<OpenFunction>(openZip), archive_, members, {}, [] { return false; }),
              kUserCancel);
}

}  // namespace
}  // namespace archiver::test
