// Targets that cannot be written to, volumes that are not there and wrong passwords, through the exported functions.

#include <gtest/gtest.h>

#include "formats/support/zip_builder.h"
#include "formats_arj/support/arj_builder.h"
#include "languages/support/library_run.h"

namespace archiver::testing {
namespace {

using test::arjArchive;
using test::ArjFile;
using test::ZipBuilder;

constexpr char kFolder[] = "targets";

/// A library with an archive of another program's.
struct Library {
    const char* module;
    const char* prefix;
    const char* line;
    const char* archive;
};
const Library kLibraries[] = {
    {"UnZip32", "UnZip", "-x -o ARC ", "zip/zip.zip"},
    {"Tar32", "Tar", "-xvfo ARC ", "tar/ustar.tgz"},
    {"UnArj32j", "Unarj", "x -y+ ARC ", "arj/methods.arj"},
    {"UnLha32", "Unlha", "x ARC ", "lzh/lh7-level1.lzh"},
    {"Cab32", "Cab", "-x -k ARC ", "cab/mszip_lzx_qtm.cab"},
    {"UnRar32", "Unrar", "x ARC ", "rar/rar5_multiple_files.rar"},
};

class BadTarget : public ::testing::TestWithParam<Library> {
protected:
    void SetUp() override { run.archive = fixture(GetParam().archive); }
    /// Unpacks to a folder below the scratch folder.
    std::int32_t unpackTo(const char* folder) {
        const std::string target = (run.scratch.path() / folder / "").make_preferred().string();
        return run(GetParam().line + ('"' + target) + '"');
    }
    LibraryRun run{GetParam().module, GetParam().prefix, kFolder};
};

TEST_P(BadTarget, AFileStaysWhatItIs) {
    run.scratch.write("out", "mine");
    EXPECT_EQ(unpackTo("out"), 0x8012) << run.text();
    EXPECT_EQ(filesBelow(run.scratch.path()), (Files{{"out", "mine"}}));
    EXPECT_NE(run.text().find("rror"), std::string::npos) << run.text();
}

TEST_P(BadTarget, NothingIsMadeBelowAFile) {
    run.scratch.write("file", "mine");
    EXPECT_EQ(unpackTo("file/below/it"), 0x8012) << run.text();
    EXPECT_EQ(filesBelow(run.scratch.path()), (Files{{"file", "mine"}}));
    EXPECT_NE(run.text().find("rror"), std::string::npos) << run.text();
}

INSTANTIATE_TEST_SUITE_P(Libraries, BadTarget, ::testing::ValuesIn(kLibraries),
                         [](const auto& each) { return std::string(each.param.module); });

// A folder of the user's where a file is to go: its content is worth more than the member's name.
TEST(BadPlace, AFolderIsNotReplacedByAFile) {
    LibraryRun run("UnZip32", "UnZip", kFolder);
    const std::string bytes = ZipBuilder().add({.name = "a", .content = "1"}).build();
    run.archive = run.scratch.write("a.zip", bytes).string();
    run.scratch.write("out/a/mine", "mine");
    EXPECT_EQ(run("-x -o ARC OUT"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"a/mine", "mine"}, {"a (2)", "1"}}));
    EXPECT_NE(run.text().find(" extracting: a -> "), std::string::npos) << run.text();
}

// Volumes

TEST(MissingVolume, OfArjInTheMiddle) {
    LibraryRun run("UnArj32j", "Unarj", kFolder);
    const auto part = [](std::string content, std::uint8_t flags, std::uint32_t position) {
        return ArjFile{
            .name = "split", .content = std::move(content), .firstPart = 34, .flags = flags, .position = position};
    };
    run.archive =
        run.scratch
            .write("set.arj", arjArchive({.flags = 0x04}, {{.name = "one", .content = "1"}, part("ab", 0x14, 0)}))
            .string();
    run.scratch.write("set.a02", arjArchive({}, {part("ef", 0x18, 4), {.name = "two", .content = "2"}}));
    EXPECT_EQ(run("x -y+ ARC OUT"), 0x8018) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"one", "1"}}));
}

// All of the set's data are a single block, so that nothing can be read without each of its parts.
TEST(MissingVolume, OfACabinetSetInTheMiddle) {
    LibraryRun run("Cab32", "Cab", kFolder);
    for (const int part : {1, 2, 4, 5}) {
        const std::string name = "cabd_multi_basic_pt" + std::to_string(part) + ".cab";
        std::filesystem::copy_file(fixture(("cab/" + name).c_str()), run.scratch.path() / name);
    }
    run.archive = (run.scratch.path() / "cabd_multi_basic_pt1.cab").string();
    EXPECT_EQ(run("-x -k ARC OUT"), 0x8018) << run.text();
    EXPECT_EQ(run.unpacked(), Files{});
    for (const char* name : {"test1.txt", "test2.txt", "test3.txt"}) {
        const std::string line = std::string("Extracting ") + name + "   the archive cannot be opened\r\n";
        EXPECT_NE(run.text().find(line), std::string::npos) << run.text();
    }
}

// Passwords

struct PasswordCase {
    const char* title;
    const char* module;
    const char* prefix;
    const char* line;
    const char* archive;
    Files kept;  ///< members that need no password
};
class WrongPassword : public ::testing::TestWithParam<PasswordCase> {};

TEST_P(WrongPassword, OpensNothing) {
    LibraryRun run(GetParam().module, GetParam().prefix, kFolder);
    run.archive = fixture(GetParam().archive);
    EXPECT_EQ(run(GetParam().line), 0x800A) << run.text();
    Files files = run.unpacked();
    std::erase_if(files, [](const auto& each) { return each.first.ends_with('/'); });
    EXPECT_EQ(files, GetParam().kept);
    EXPECT_NE(run.text().find("password"), std::string::npos) << run.text();
    EXPECT_EQ(run.text().find("nonsense"), std::string::npos) << run.text();
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, WrongPassword,
    ::testing::Values(
        PasswordCase{
            "ZipTraditional", "UnZip32", "UnZip", "-x -o -Pnonsense ARC OUT", "zip_members/traditional.zip", {}},
        PasswordCase{
            "ZipTraditionalWithoutAny", "UnZip32", "UnZip", "-x -o ARC OUT", "zip_members/traditional.zip", {}},
        PasswordCase{"ZipAes128", "UnZip32", "UnZip", "-x -o -Pnonsense ARC OUT", "zip_members/aes128.zip", {}},
        PasswordCase{"ZipAes256", "UnZip32", "UnZip", "-x -o -Pnonsense ARC OUT", "zip_members/aes256.zip", {}},
        PasswordCase{"Arj", "UnArj32j", "Unarj", "x -y+ -gnonsense ARC OUT", "arj/garbled.arj", {}}),
    [](const auto& each) { return std::string(each.param.title); });

TEST(WrongPasswordForOne, KeepsTheOtherMembers) {
    constexpr std::uint16_t kEncrypted = 1;
    LibraryRun run("UnZip32", "UnZip", kFolder);
    run.archive = run.scratch
                      .write("a.zip", ZipBuilder()
                                          .add({.name = "first", .content = "1"})
                                          .add({.name = "locked", .content = "nobody can read it", .flags = kEncrypted})
                                          .add({.name = "last", .content = "2"})
                                          .build())
                      .string();
    EXPECT_EQ(run("-x -o -Pnonsense ARC OUT"), 0x800A) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"first", "1"}, {"last", "2"}}));
    EXPECT_NE(run.text().find("error:  locked  the password is missing or wrong"), std::string::npos) << run.text();
}

TEST(WrongPasswordForOne, KeepsTheOtherMembersOfArj) {
    constexpr std::uint8_t kGarbled = 0x11;
    LibraryRun run("UnArj32j", "Unarj", kFolder);
    run.archive = run.scratch
                      .write("a.arj", arjArchive({}, {{.name = "first", .content = "1"},
                                                      {.name = "locked",
                                                       .content = "hidden",
                                                       .packed = test::garbled("hidden", "secret", 7),
                                                       .flags = kGarbled,
                                                       .modifier = 7},
                                                      {.name = "last", .content = "2"}}))
                      .string();
    EXPECT_EQ(run("x -y+ -gnonsense ARC OUT"), 0x800A) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"first", "1"}, {"last", "2"}}));
    EXPECT_NE(run.text().find("Extracting locked   the password is missing or wrong"), std::string::npos) << run.text();
}

}  // namespace
}  // namespace archiver::testing
