#include "archivers/command_test.h"
#include "formats/support/zip_builder.h"

namespace archiver {
namespace {

using testing::Answer;

class TarCommand : public testing::CommandTest {
protected:
    TarCommand() : CommandTest("Tar32", "Tar") {}
};

TEST_F(TarCommand, ExtractsTheWelcomeArchive) {
    take("../samples/welcome.tar.gz");
    ASSERT_EQ(library.call<fn::SetBool>("SetUnicodeMode", 1), 1);
    const Answer answer = run(" xvfo welcome.tar.gz out\\ *.*");
    EXPECT_EQ(answer.code, 0);
    EXPECT_EQ(answer.output.substr(0, 19), "Read me first.txt\r\n");
    EXPECT_NE(answer.output.find("\r\nnames/\xE8\xA1\xA8.txt\r\n"), std::string::npos) << answer.output;
    const auto sky = bytes("out/pictures/sky.bmp");
    ASSERT_TRUE(sky);
    EXPECT_EQ(sky->size(), 192138U);
    EXPECT_EQ(test::ZipBuilder::crcOf(*sky), 0x7F6939B7U);
    EXPECT_EQ(bytes("out/data/empty.txt"), "");
    EXPECT_TRUE(bytes(std::filesystem::path("out") / u8"names/Ελληνικά.txt"));
    EXPECT_EQ(countBelow("out"), 20U);
}

TEST_F(TarCommand, ExtractsEveryCompression) {
    for (const char* name : {"listing.tar", "listing.tgz", "listing.tar.Z", "listing.tar.bz2"}) {
        take(name);
        const std::string out = std::string("out of ") + name;
        EXPECT_EQ(run(std::string("xvfo ") + name + " \"" + out + "/\" *.*").code, 0) << name;
        EXPECT_EQ(bytes(out + "/docs/a.txt"), "hello") << name;
        EXPECT_TRUE(isFolder(out + "/docs/empty")) << name;
        EXPECT_EQ(countBelow(out), 4U) << name;
    }
}

TEST_F(TarCommand, ExtractsASingleFile) {
    take("single.gz");
    EXPECT_EQ(run("xvfo single.gz out/ *.*").code, 0);
    ASSERT_EQ(countBelow("out"), 1U);
    ASSERT_TRUE(bytes("out/b.txt"));
    EXPECT_EQ(bytes("out/b.txt")->substr(0, 12), "012345678901");
}

TEST_F(TarCommand, ReplacesFilesUnlessToldToAsk) {
    take("listing.tar");
    folder.write("out/docs/a.txt", "old");
    EXPECT_EQ(run("--confirm-overwrite=1 xvfo listing.tar out/ *.*").code, 0);
    EXPECT_EQ(bytes("out/docs/a.txt"), "old") << "there is no window to ask in";
    EXPECT_EQ(run(" xvfo listing.tar out/ *.*").code, 0);
    EXPECT_EQ(bytes("out/docs/a.txt"), "hello");
}

TEST_F(TarCommand, ExtractsChosenMembers) {
    take("listing.tar");
    folder.write("VTL1.tmp", "docs/*.*\r\n");
    EXPECT_EQ(run(" xvfoa listing.tar list/ @VTL1.tmp").code, 0);
    EXPECT_EQ(bytes("list/docs/a.txt"), "hello");
    EXPECT_EQ(bytes("list/b.txt"), std::nullopt);
    EXPECT_EQ(run(" xvfo listing.tar one/ docs/a.txt").code, 0);
    EXPECT_EQ(countBelow("one"), 2U);
    EXPECT_EQ(run("--use-directory=0 xvfo listing.tar flat/ *.*").code, 0);
    EXPECT_EQ(bytes("flat/a.txt"), "hello");
    EXPECT_EQ(countBelow("flat"), 2U);
}

TEST_F(TarCommand, ExtractsToSeveralFolders) {
    take("listing.tgz");
    EXPECT_EQ(run("xf listing.tgz one/ a.txt two/ b.txt").code, 0);
    EXPECT_EQ(bytes("one/docs/a.txt"), "hello");
    EXPECT_EQ(bytes("one/b.txt"), std::nullopt);
    ASSERT_TRUE(bytes("two/b.txt"));
    EXPECT_EQ(bytes("two/b.txt")->size(), 1000U);
    EXPECT_EQ(run("xf listing.tgz one/ a.txt three/ nothing.txt").code, 0x800F);
}

TEST_F(TarCommand, Lists) {
    take("listing.tgz");
    const Answer answer = run("tvf listing.tgz");
    EXPECT_EQ(answer.code, 0);
    EXPECT_EQ(answer.output,
              "filename\tfilesize\r\n"
              "docs/\t0\r\n"
              "docs/empty/\t0\r\n"
              "docs/a.txt\t5\r\n"
              "b.txt\t1000\r\n");
    EXPECT_EQ(run("lf listing.tgz b.*").output, "filename\tfilesize\r\nb.txt\t1000\r\n");
}

TEST_F(TarCommand, Prints) {
    take("listing.tar");
    EXPECT_EQ(run("pf listing.tar a.txt").output, "hello");
}

TEST_F(TarCommand, TellsWhatIsWrong) {
    take("listing.tar");
    folder.write("text.tar", "no archive at all");
    const std::pair<const char*, std::int32_t> lines[] = {
        {"", 0x801C},
        {"xvfo", 0x8019},
        {"xkf listing.tar", 0x801C},
        {"cvf new.tar listing.tar", 0x8023},
        {"xvfo none.tar out/ *.*", 0x8029},
        {"xvfo text.tar out/ *.*", 0x801B},
        {"xvfo listing.tar out/ nothing", 0x800F},
        {"xvfo listing.tar out/ @none", 0x802A},
    };
    for (const auto& [line, code] : lines) {
        const Answer answer = run(line);
        EXPECT_EQ(answer.code, code) << line;
        EXPECT_EQ(answer.output.substr(0, 16), "TAR32 Error(0x80") << line;
    }
    EXPECT_FALSE(isFolder("out"));
    EXPECT_EQ(run("xkf listing.tar").output.substr(0, 58),
              "TAR32 Error(0x801c): unknown command or switch\r\nusage: [-]");
}

}  // namespace
}  // namespace archiver
