#include <gtest/gtest.h>

#include <array>
#include <cstdio>

#include "infozip32/support/zip_scene.h"

namespace archiver::test {
namespace {

/// What a program prints. @param code  its exit code
std::string outputOf(const std::string& line, int& code) {
    std::string output;
    FILE* const pipe = ::popen((line + " 2>&1").c_str(), "r");
    EXPECT_NE(pipe, nullptr);
    std::array<char, 4096> piece;
    while (const std::size_t got = std::fread(piece.data(), 1, piece.size(), pipe)) output.append(piece.data(), got);
    code = ::pclose(pipe);
    return output;
}

bool isThere(const char* program) {
    int code = 0;
    static_cast<void>(outputOf(std::string("command -v ") + program, code));
    return code == 0;
}

class Peers : public testing::TestWithParam<char> {
protected:
    void SetUp() override {
        for (const char* each : {"unzip", "zip", "7zz", "bsdtar", "zipinfo"}) {
            if (!isThere(each)) GTEST_SKIP() << each << " is not installed";
        }
        scene_.write("text.txt", textOfSize(300'000));
        scene_.write("empty.txt", "");
        scene_.write("noise.bin", noiseOfSize(70'000));
        scene_.write("large.txt", textOfSize(5 << 20));
        scene_.write("largenoise.bin", noiseOfSize(3 << 20));
        scene_.write(reinterpret_cast<const char*>(u8"d/дом-ü.txt"), "name");
        scene_.makeFolder("d/nothing");
        scene_.options.level = GetParam();
        scene_.options.recurse = 1;
    }
    void expectOk(const std::string& line) {
        int code = 0;
        const std::string output = outputOf(line, code);
        EXPECT_EQ(code, 0) << line << "\n" << output;
    }
    ZipScene scene_;
};

TEST_P(Peers, TakeTheArchiveAndUnpackTheSameFiles) {
    ASSERT_EQ(scene_.run({"*.*"}), 0);
    const std::string archive = scene_.archive.string();
    expectOk("unzip -tq " + archive);
    expectOk("zip -T -q " + archive);
    expectOk("7zz t -bd " + archive);
    expectOk("zipinfo -v " + archive);
    const TemporaryFolder target;
    const std::string out = target.path().string();
    expectOk("unzip -q " + archive + " -d " + out + "/unzip");
    expectOk("7zz x -bd -o" + out + "/7zz " + archive);
    expectOk("mkdir " + out + "/bsdtar && bsdtar -xf " + archive + " -C " + out + "/bsdtar");
    const std::string folder = scene_.archive.parent_path().string();
    for (const char* each : {"unzip", "7zz", "bsdtar"}) {
        expectOk("diff -r --exclude=made.zip " + folder + " " + out + "/" + each);
    }
}

TEST_P(Peers, TakeAnEncryptedArchive) {
    scene_.options.encrypt = 1;
    ASSERT_EQ(scene_.run({"*.*"}), 0);
    const std::string archive = scene_.archive.string();
    expectOk("unzip -P secret -tq " + archive);
    expectOk("7zz t -bd -psecret " + archive);
    expectOk("bsdtar --passphrase secret -xOf " + archive + " >/dev/null");
    int code = 0;
    static_cast<void>(outputOf("unzip -P wrong -tq " + archive, code));
    EXPECT_NE(code, 0);
}

INSTANTIATE_TEST_SUITE_P(Levels, Peers, testing::Values('0', '1', '6', '9'),
                         [](const auto& each) { return "Level" + std::string(1, each.param); });

TEST(PeerArchives, AreChangedAndStayWhole) {
    if (!isThere("zip") || !isThere("unzip") || !isThere("7zz")) GTEST_SKIP() << "not installed";
    ZipScene scene;
    scene.write("a.txt", textOfSize(10'000));
    scene.write("b.txt", "b");
    const std::string folder = scene.archive.parent_path().string();
    int code = 0;
    // From a pipe, zip does not know sizes in advance and writes them behind the data.
    static_cast<void>(outputOf("cd " + folder + " && zip -q - a.txt b.txt | cat >made.zip", code));
    ASSERT_EQ(code, 0);
    scene.write("b.txt", "changed", -100);
    scene.options.comment = 1;
    scene.newComment = "a comment";
    ASSERT_EQ(scene.run({"b.txt"}), 0);
    EXPECT_EQ(scene.members(),
              (std::map<std::string, std::string>{{"a.txt", textOfSize(10'000)}, {"b.txt", "changed"}}));
    const std::string tested = outputOf("unzip -tq " + scene.archive.string(), code);
    EXPECT_EQ(code, 0) << tested;
    EXPECT_NE(outputOf("unzip -z " + scene.archive.string(), code).find("a comment"), std::string::npos);
}

}  // namespace
}  // namespace archiver::test
