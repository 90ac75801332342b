#include <gtest/gtest.h>

#include "infozip32/support/zip_scene.h"

namespace archiver::test {
namespace {

using Contents = std::map<std::string, std::string>;

class PasswordsAndComments : public testing::Test {
protected:
    PasswordsAndComments() { scene_.write("a.txt", "some text"); }
    ZipScene scene_;
};

TEST_F(PasswordsAndComments, AsksTwiceAndEncrypts) {
    scene_.options.encrypt = 1;
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_EQ(scene_.prompts, (std::vector<std::string>{"Enter password: ", "Verify password: "}));
    EXPECT_EQ(scene_.promptedNames[0], utf8OfPath(scene_.archive));
    EXPECT_EQ(scene_.members("secret"), (Contents{{"a.txt", "some text"}}));
    EXPECT_EQ(scene_.archiveBytes().find("some text"), std::string::npos);
}

TEST_F(PasswordsAndComments, EncryptsLargeFilesInParts) {
    const std::string large = textOfSize(5 << 20);
    const std::string noise = noiseOfSize(3 << 20);
    scene_.write("large.txt", large);
    scene_.write("noise.bin", noise);
    scene_.options.encrypt = 1;
    ASSERT_EQ(scene_.run({"large.txt", "noise.bin"}), 0);
    EXPECT_TRUE(scene_.members("secret") == (Contents{{"large.txt", large}, {"noise.bin", noise}}));
}

TEST_F(PasswordsAndComments, KeepsThemApartFromOthersWhenTheArchiveChanges) {
    scene_.write("large.txt", textOfSize(5 << 20));
    scene_.options.encrypt = 1;
    ASSERT_EQ(scene_.run({"large.txt"}), 0);
    scene_.options.encrypt = 0;
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_TRUE(scene_.members("secret") == (Contents{{"a.txt", "some text"}, {"large.txt", textOfSize(5 << 20)}}));
}

TEST_F(PasswordsAndComments, RefusesTwoPasswordsThatDiffer) {
    scene_.options.encrypt = 1;
    scene_.passwords = {"secret", "Secret"};
    EXPECT_EQ(scene_.run({"a.txt"}), 16);
    EXPECT_EQ(scene_.text(), "\nzip error: Invalid command arguments (password verification failed)\n");
    EXPECT_FALSE(std::filesystem::exists(scene_.archive));
}

TEST_F(PasswordsAndComments, RefusesAnEmptyPassword) {
    scene_.options.encrypt = 1;
    scene_.passwords = {""};
    EXPECT_EQ(scene_.run({"a.txt"}), 16);
    EXPECT_EQ(scene_.text(), "\nzip error: Invalid command arguments (zero length password not allowed)\n");
}

TEST_F(PasswordsAndComments, EndsWhenThereIsNoPassword) {
    scene_.options.encrypt = 1;
    scene_.passwordAnswer = 1;
    EXPECT_EQ(scene_.run({"a.txt"}), 9);
    EXPECT_FALSE(std::filesystem::exists(scene_.archive));
}

TEST_F(PasswordsAndComments, StoresTheCommentAndShowsTheOldOne) {
    scene_.options.comment = 1;
    scene_.newComment = "first";
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_EQ(scene_.oldComment, "");
    EXPECT_TRUE(scene_.archiveBytes().ends_with(std::string("\x05\0first", 7)));
    scene_.newComment = reinterpret_cast<const char*>(u8"zweiter: ü");
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_EQ(scene_.oldComment, "first");
    EXPECT_TRUE(scene_.archiveBytes().ends_with(scene_.newComment));
}

TEST_F(PasswordsAndComments, KeepsTheCommentWhenThereIsNoNewOne) {
    scene_.options.comment = 1;
    scene_.newComment = "stays";
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    scene_.newComment.clear();
    scene_.commentAnswer = -1;
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_TRUE(scene_.archiveBytes().ends_with("stays"));
    scene_.options.comment = 0;
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_TRUE(scene_.archiveBytes().ends_with("stays"));
    scene_.options.comment = 1;
    scene_.commentAnswer = 0;
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_TRUE(scene_.archiveBytes().ends_with(std::string("\0\0", 2)));
}

TEST_F(PasswordsAndComments, TakesTheLongestComment) {
    scene_.options.comment = 1;
    scene_.newComment = std::string(65'535, 'c');
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_TRUE(scene_.archiveBytes().ends_with("\xFF\xFF" + scene_.newComment));
    EXPECT_EQ(scene_.memberNames(), std::vector<std::string>{"a.txt"});
}

}  // namespace
}  // namespace archiver::test
