// Archives by other programs are those of tests/data/archivers and of samples.
#include "archivers/command_test.h"
#include "archivers/scratch_file.h"
#include "formats/support/zip_builder.h"

namespace archiver {
namespace {

using test::BuiltMember;
using test::ZipBuilder;
using testing::Answer;

constexpr std::uint16_t kDeflated = 8;

class ZipCommand : public testing::CommandTest {
protected:
    ZipCommand() : CommandTest("UnZip32", "UnZip") {}

    void make(const char* name, const std::vector<BuiltMember>& members, const char* comment = "") {
        ZipBuilder builder;
        for (const BuiltMember& member : members) builder.add(member);
        folder.write(name, builder.comment(comment).build());
    }
    /// Two folders and three files.
    void makeTree(const char* name) {
        make(name, {{.name = "docs/", .externalAttributes = 0x10},
                    {.name = "docs/a.txt", .content = "hello"},
                    {.name = "docs/sub/b.txt", .content = "deep"},
                    {.name = "c.txt", .content = "top"}});
    }
};

struct Expected {
    const char8_t* name;
    std::size_t size;
    std::uint32_t crc;
};

// As other programs list them.
constexpr Expected kWelcome[] = {
    {u8"pictures/sky.bmp", 192138, 0x7F6939B7},
    {u8"pictures/moon.png", 3016, 0xCB0B2539},
    {u8"Read me first.txt", 224, 0x7297CB8F},
    {u8"program/Makefile", 11, 0xD71989F0},
    {u8"program/source/hello.c", 96, 0x54721C9D},
    {u8"names/Größe.txt", 61, 0xA8F665D3},
    {u8"names/Ελληνικά.txt", 61, 0xA8F665D3},
    {u8"names/表.txt", 61, 0xA8F665D3},
    {u8"data/zeros.bin", 65536, 0xD7978EEB},
    {u8"data/empty.txt", 0, 0},
    {u8"data/a folder with blanks/numbers, in order.csv", 108894, 0x45C35897},
    {u8"docs/Keyboard.txt", 70, 0xD72D0B73},
    {u8"docs/Archive kinds.txt", 90, 0x622B54C1},
};

TEST_F(ZipCommand, ExtractsTheWelcomeArchive) {
    take("../samples/welcome.zip");
    ASSERT_EQ(library.call<fn::SetBool>("SetUnicodeMode", 1), 1);
    const Answer answer = run(" -x -i --j welcome.zip out\\ *.*");
    EXPECT_EQ(answer.code, 0);
    EXPECT_NE(answer.output.find("   creating: pictures/\n  inflating: pictures/sky.bmp\n"), std::string::npos)
        << answer.output;
    EXPECT_NE(answer.output.find(" extracting: names/\xE8\xA1\xA8.txt\n"), std::string::npos);
    for (const Expected& expected : kWelcome) {
        const auto content = bytes(std::filesystem::path("out") / expected.name);
        ASSERT_TRUE(content) << std::filesystem::path(expected.name);
        EXPECT_EQ(content->size(), expected.size);
        EXPECT_EQ(ZipBuilder::crcOf(*content), expected.crc);
    }
    EXPECT_EQ(countBelow("out"), 20U);
}

TEST_F(ZipCommand, ExtractsFlat) {
    makeTree("a.zip");
    EXPECT_EQ(run(" -x -i -j a.zip out/ *.*").code, 0);
    EXPECT_EQ(bytes("out/a.txt"), "hello");
    EXPECT_EQ(bytes("out/b.txt"), "deep");
    EXPECT_EQ(bytes("out/c.txt"), "top");
    EXPECT_EQ(countBelow("out"), 3U);
}

TEST_F(ZipCommand, SaysWhatItDoes) {
    makeTree("a.zip");
    const std::string archive = (std::filesystem::current_path() / "a.zip").string();
    EXPECT_EQ(run("-x a.zip out/").output, "Archive:  " + archive +
                                               "\n"
                                               "   creating: docs/\n"
                                               " extracting: docs/a.txt\n"
                                               "   creating: docs/sub/\n"
                                               " extracting: docs/sub/b.txt\n"
                                               " extracting: c.txt\n");
}

TEST_F(ZipCommand, ExtractsToTheCurrentFolder) {
    makeTree("a.zip");
    EXPECT_EQ(run("-x a.zip").code, 0);
    EXPECT_EQ(bytes("docs/a.txt"), "hello");
}

TEST_F(ZipCommand, MakesItsTargetAndKnowsBlanks) {
    make("my files.zip", {{.name = "a b.txt", .content = "x"}, {.name = "c.txt", .content = "y"}});
    EXPECT_EQ(run(R"( -x -i --j -o "my files.zip" "new folder/and below\" "a b.txt")").code, 0);
    EXPECT_EQ(bytes("new folder/and below/a b.txt"), "x");
    EXPECT_EQ(countBelow("new folder/and below"), 1U);
}

TEST_F(ZipCommand, KeepsWhatIsThereUnlessTold) {
    make("a.zip", {{.name = "a.txt", .content = "new"}, {.name = "b.txt", .content = "other"}});
    folder.write("out/a.txt", "old");
    const Answer skipped = run(" -x -i --j a.zip out/ *.*");
    EXPECT_EQ(skipped.code, 0) << "there is no window to ask in";
    EXPECT_NE(skipped.output.find("   skipping: a.txt"), std::string::npos) << skipped.output;
    EXPECT_EQ(bytes("out/a.txt"), "old");
    EXPECT_EQ(bytes("out/b.txt"), "other");
    EXPECT_EQ(run("-x -n -o a.zip out/").code, 0);
    EXPECT_EQ(bytes("out/a.txt"), "old");
    EXPECT_EQ(run(" -x -i --j -o a.zip out/ *.*").code, 0);
    EXPECT_EQ(bytes("out/a.txt"), "new");
}

TEST_F(ZipCommand, FreshensOlderFilesOnly) {
    make("a.zip", {{.name = "a.txt", .content = "new"}, {.name = "b.txt", .content = "other"}});
    folder.write("out/a.txt", "newer than the member, which is of 2001");
    EXPECT_EQ(run("-f -o a.zip out/").code, 0);
    EXPECT_EQ(bytes("out/a.txt"), "newer than the member, which is of 2001");
    EXPECT_EQ(bytes("out/b.txt"), std::nullopt);
    EXPECT_EQ(run("-u -o a.zip out/").code, 0);
    EXPECT_EQ(bytes("out/a.txt"), "newer than the member, which is of 2001");
    EXPECT_EQ(bytes("out/b.txt"), "other");
}

TEST_F(ZipCommand, ExtractsAList) {
    makeTree("a.zip");
    folder.write("VTL1.tmp", "docs/*.*\r\n");
    EXPECT_EQ(run(" -x -i --j a.zip out/ @VTL1.tmp").code, 0);
    EXPECT_EQ(bytes("out/docs/a.txt"), "hello");
    EXPECT_EQ(bytes("out/docs/sub/b.txt"), "deep");
    EXPECT_EQ(bytes("out/c.txt"), std::nullopt);
}

TEST_F(ZipCommand, ExtractsByUtf8Names) {
    make("a.zip", {{.name = "\xE8\xA1\xA8.txt", .content = "x", .flags = 0x800}, {.name = "b.txt", .content = "y"}});
    ASSERT_EQ(library.call<fn::SetBool>("SetUnicodeMode", 1), 1);
    EXPECT_EQ(run("-x a.zip one/ \xE8\xA1\xA8.txt").code, 0);
    EXPECT_EQ(bytes(std::filesystem::path("one") / u8"表.txt"), "x");
    EXPECT_EQ(countBelow("one"), 1U);
    folder.write("list", "\xE8\xA1\xA8.txt\r\n");
    EXPECT_EQ(run("-x a.zip two/ @list").code, 0);
    EXPECT_EQ(countBelow("two"), 1U);
    ASSERT_EQ(library.call<fn::SetBool>("SetUnicodeMode", 0), 1);
    folder.write("marked", "\xEF\xBB\xBF\xE8\xA1\xA8.txt\r\n");
    EXPECT_EQ(run("-x a.zip three/ @marked").code, 0);
    EXPECT_EQ(countBelow("three"), 1U);
}

TEST_F(ZipCommand, ListsATable) {
    take("listing.zip");
    const Answer answer = run("-l listing.zip");
    EXPECT_EQ(answer.code, 0);
    EXPECT_EQ(answer.output,
              "  Name          Original    Packed  Ratio   Date     Time   Attr Method   CRC-32\n"
              "--------------  --------  -------- ------ -------- -------- ---- -------- --------\n"
              "docs/                  0         0   0.0% 01-05-17  17:30:58 d--w Stored  00000000\n"
              "docs/empty/            0         0   0.0% 01-05-17  17:30:58 d--w Stored  00000000\n"
              "docs/a.txt             5         5   0.0% 01-05-17  17:30:58 ---- Stored  3610a686\n"
              "b.txt               1000        21  97.9% 01-05-17  17:30:58 ---w Deflate 7c858ff1\n"
              "--------------  --------  -------- ------ --------\n"
              "     4 files        1005        26   97.4%\n");
}

TEST_F(ZipCommand, ListsAnArchiveWithoutQuotes) {
    makeTree("my own files.zip");
    const Answer answer = run("-l my own files.zip");
    EXPECT_EQ(answer.code, 0);
    EXPECT_NE(answer.output.find("\nc.txt                  3 "), std::string::npos) << answer.output;
}

TEST_F(ZipCommand, PrintsMembers) {
    make("a.zip", {{.name = "a.txt", .content = std::string("one\xFF\r\n")}, {.name = "b.txt", .content = "two"}});
    EXPECT_EQ(run("-p a.zip").output, "one\xFF\r\ntwo") << "bytes as they are";
    EXPECT_EQ(run("-p a.zip out/ b.txt").output, "two");
    const std::string archive = (std::filesystem::current_path() / "a.zip").string();
    EXPECT_EQ(run("-c a.zip").output,
              "Archive:  " + archive + "\n  inflating: a.txt\none\xFF\r\n  inflating: b.txt\ntwo");
    const Answer cut = run("-p a.zip", 3);
    EXPECT_EQ(cut.code, 0);
    EXPECT_EQ(cut.output, "on");
    EXPECT_EQ(countBelow("out"), 0U);
}

TEST_F(ZipCommand, TestsMembers) {
    makeTree("a.zip");
    const Answer good = run("-t a.zip");
    EXPECT_EQ(good.code, 0);
    EXPECT_NE(good.output.find("    testing: docs/a.txt   OK\n"), std::string::npos) << good.output;
    make("b.zip", {{.name = "bad.txt", .content = "x", .crc = 1}, {.name = "good.txt", .content = "y"}});
    const Answer bad = run("-t b.zip");
    EXPECT_EQ(bad.code, 0x800C);
    EXPECT_NE(bad.output.find("error:  bad.txt  the checksum is wrong\n    testing: good.txt   OK\n"),
              std::string::npos)
        << bad.output;
}

TEST_F(ZipCommand, KeepsTheGoodMembersOfADamagedArchive) {
    make("a.zip", {{.name = "bad.txt", .content = "x", .crc = 1}, {.name = "good.txt", .content = "y"}});
    folder.write("out/bad.txt", "there before");
    EXPECT_EQ(run("-x -o a.zip out/").code, 0x800C);
    EXPECT_EQ(bytes("out/bad.txt"), "there before");
    EXPECT_EQ(bytes("out/good.txt"), "y");
    EXPECT_EQ(countBelow("out"), 2U);
}

TEST_F(ZipCommand, WritesNothingOutsideItsTarget) {
    make("a.zip", {{.name = "../evil.txt", .content = "x"},
                   {.name = "good.txt", .content = "y"},
                   {.name = "docs/../../evil.txt", .content = "x"}});
    run("-x -o a.zip in/out/");
    EXPECT_EQ(bytes("in/out/good.txt"), "y");
    EXPECT_EQ(bytes("in/evil.txt"), std::nullopt);
    EXPECT_EQ(bytes("evil.txt"), std::nullopt);
}

TEST_F(ZipCommand, TellsWhatIsWrong) {
    makeTree("a.zip");
    folder.write("text.zip", "no archive at all");
    const std::pair<const char*, std::int32_t> lines[] = {
        {"", 0x8019},
        {"-x", 0x8019},
        {"-y a.zip", 0x801C},
        {"-x none.zip out/", 0x8029},
        {"-x text.zip out/", 0x801B},
        {"-x a.zip out/ nothing.txt", 0x800F},
        {"-l a.zip nothing.txt", 0x800F},
        {"-t a.zip nothing.txt", 0x800F},
        {"-p a.zip nothing.txt", 0x800F},
        {"-x a.zip out/ @none", 0x802A},
        {"-x a.zip a.zip/", 0x8012},
    };
    for (const auto& [line, code] : lines) {
        const Answer answer = run(line);
        EXPECT_EQ(answer.code, code) << line;
        EXPECT_NE(answer.output, "") << line;
    }
    EXPECT_FALSE(isFolder("out"));
}

TEST_F(ZipCommand, SaysSomethingOnSuccess) {
    makeTree("a.zip");
    EXPECT_EQ(run("-x -qq a.zip out/").output, "\r\n");
    make("empty.zip", {{.name = "none.txt"}});
    EXPECT_EQ(run("-p empty.zip").output, "\r\n");
}

TEST_F(ZipCommand, FindsNothingToDoInAnEmptyArchive) {
    make("a.zip", {});
    EXPECT_EQ(run("-x a.zip out/ *.*").code, 0);
    EXPECT_EQ(run("-l a.zip").code, 0);
    EXPECT_EQ(run("-t a.zip").code, 0);
    EXPECT_EQ(run("-x a.zip out/ b.txt").code, 0x800F);
}

TEST_F(ZipCommand, ShowsTheComment) {
    make("a.zip", {{.name = "a.txt", .content = "x"}}, "Two\nlines");
    const std::string archive = (std::filesystem::current_path() / "a.zip").string();
    EXPECT_EQ(run("-z a.zip").output, "Archive:  " + archive + "\nTwo\nlines\n");
    EXPECT_EQ(run("-Z a.zip").code, 0);
}

TEST_F(ZipCommand, AsksForNoPasswordWithoutAWindow) {
    take("encrypted.zip");
    EXPECT_EQ(run("-x encrypted.zip out/").code, 0x800A);
    const Answer wrong = run("-x -Pnonsense encrypted.zip out/");
    EXPECT_EQ(wrong.code, 0x800A);
    EXPECT_EQ(wrong.output.find("nonsense"), std::string::npos);
    EXPECT_EQ(bytes("out/b.txt"), std::nullopt);
}

TEST_F(ZipCommand, RemembersThePasswordOfTheArchive) {
    take("encrypted.zip");
    const Answer answer = run("-x -Psecret encrypted.zip out/");
    EXPECT_EQ(answer.code, 0);
    EXPECT_EQ(answer.output.find("secret"), std::string::npos);
    ASSERT_TRUE(bytes("out/b.txt"));
    EXPECT_EQ(bytes("out/b.txt")->size(), 1000U);
    EXPECT_EQ(run("-x encrypted.zip again/").code, 0);
    EXPECT_EQ(countBelow("again"), 1U);
    std::filesystem::copy_file("encrypted.zip", "other.zip");
    EXPECT_EQ(run("-x other.zip other/").code, 0x800A) << "not of another archive";
}

TEST_F(ZipCommand, UnpacksIntoMemory) {
    makeTree("a.zip");
    std::uint8_t buffer[8] = "#######";
    std::int32_t time = -7;
    std::uint16_t attribute = 77;
    std::uint32_t written = 77;
    const auto extract = [&](const char* line, std::uint32_t size) {
        return library.call<fn::ExtractMem>("ExtractMem", nullptr, line, buffer, size, &time, &attribute, &written);
    };
    EXPECT_EQ(extract("a.zip docs/a.txt", 8), 0);
    EXPECT_EQ(written, 5U);
    EXPECT_STREQ(reinterpret_cast<const char*>(buffer), "hello##");
    EXPECT_NE(time, -7);
    EXPECT_EQ(attribute & 0x10, 0);
    EXPECT_EQ(extract("a.zip", 8), 0) << "the first file of several";
    EXPECT_EQ(written, 5U);
    EXPECT_EQ(extract("-x -o a.zip out/ c.txt", 8), 0) << "whatever the line commands";
    EXPECT_EQ(written, 3U);
    EXPECT_FALSE(isFolder("out"));
    EXPECT_EQ(extract("a.zip docs/a.txt", 2), 0x801E) << "too small";
    EXPECT_EQ(written, 2U);
    EXPECT_EQ(extract("a.zip nothing.txt", 8), 0x800F);
    EXPECT_EQ(written, 0U);
    EXPECT_EQ(extract("none.zip a", 8), 0x8029);
}

TEST_F(ZipCommand, IsListedAsImplemented) {
    EXPECT_EQ(library.call<fn::QueryFunctionList>("QueryFunctionList", 0), 1);
    EXPECT_EQ(library.call<fn::QueryFunctionList>("QueryFunctionList", 17), 1);
}

// The progress callback.

struct Seen {
    std::vector<std::uint32_t> states;
    std::vector<std::string> names;
    std::int32_t cancelAt = -1;  ///< the state that is answered with "cancel"
    const testing::LoadedLibrary* library = nullptr;
    std::int32_t secondCode = 0;
};
Seen seen;

Bool ARCHIVER_CALL watch(WindowHandle, std::uint32_t, std::uint32_t state, ExtractingInfoEx* info) {
    seen.states.push_back(state);
    if (state == 0) seen.names.emplace_back(info->info.sourceFileName);
    if (seen.library != nullptr) {
        seen.secondCode = seen.library->call<fn::Run>("", nullptr, "-l a.zip", nullptr, 0U);
        EXPECT_EQ(seen.library->call<fn::GetBool>("GetRunning"), 1);
    }
    return static_cast<std::int32_t>(state) == seen.cancelAt ? 1 : 0;
}

class ZipProgress : public ZipCommand {
protected:
    void SetUp() override {
        ZipCommand::SetUp();
        seen = {};
        makeTree("a.zip");
        ASSERT_EQ(library.call<fn::SetOwnerWindowEx>("SetOwnerWindowEx", this, &watch), 1);
    }
};

TEST_F(ZipProgress, IsTold) {
    EXPECT_EQ(run("-x a.zip out/").code, 0);
    ASSERT_GE(seen.states.size(), 5U);
    EXPECT_EQ(seen.states.front(), 3U) << "the archive is open";
    EXPECT_EQ(seen.states.back(), 2U) << "the end";
    EXPECT_EQ(seen.names, (std::vector<std::string>{"docs/a.txt", "docs/sub/b.txt", "c.txt"}));
}

TEST_F(ZipProgress, CancelsBetweenMembers) {
    seen.cancelAt = 0;
    const Answer answer = run("-x a.zip out/");
    EXPECT_EQ(answer.code, 0x8020);
    EXPECT_NE(answer.output, "");
    EXPECT_EQ(bytes("out/docs/a.txt"), std::nullopt);
    EXPECT_EQ(seen.states.back(), 2U);
}

TEST_F(ZipProgress, CancelsAtTheBeginning) {
    seen.cancelAt = 3;
    EXPECT_EQ(run("-x a.zip out/").code, 0x8020);
    EXPECT_FALSE(isFolder("out"));
}

TEST_F(ZipProgress, TurnsAwayASecondCommand) {
    seen.library = &library;
    EXPECT_EQ(run("-x a.zip out/").code, 0);
    EXPECT_EQ(seen.secondCode, 0x801F);
    EXPECT_EQ(bytes("out/c.txt"), "top");
}

}  // namespace
}  // namespace archiver
