// The console host's commands on real archives, through the bundled libraries.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/console/console.h"
#include "recording/session.h"

namespace tovar::host {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::wstring>;
using Names = std::vector<std::string>;

struct Recorder final : ConsoleOutput {
    std::string out, errors;
    void write(std::string_view text) override { out += text; }
    void writeError(std::string_view text) override { errors += text; }
    bool errorsAreSeen() const override { return true; }
};

class ConsoleRun : public testing::Test {
protected:
    ConsoleRun() : folder(recording::makeTemporaryFolder()), out(folder / "out") {}
    ~ConsoleRun() override {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }

    static std::wstring sample(const std::string& name) {
        return (recording::programFolder() / "data" / name).wstring();
    }
    int run(const Words& words) {
        output = {};
        ConsoleMessages messages(output);
        SystemServices system(messages);
        return Console(output, system).run(parseArguments(words));
    }
    int extract(const std::string& archive, const Words& members = {}, const Words& options = {}) {
        Words words = {L"extract", L"--to", out.wstring()};
        words.insert(words.end(), options.begin(), options.end());
        words.push_back(sample(archive));
        words.insert(words.end(), members.begin(), members.end());
        return run(words);
    }
    /// Files below the output folder, sorted.
    Names files() const {
        Names names;
        if (!fs::exists(out)) return names;
        for (const auto& each : fs::recursive_directory_iterator(out)) {
            if (each.is_regular_file()) names.push_back(each.path().lexically_relative(out).generic_string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    std::string read(const std::string& name) const {
        std::ifstream file(out / name, std::ios::binary);
        EXPECT_TRUE(file.is_open()) << name;
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    void write(const fs::path& file, const std::string& bytes) const {
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
    }

    fs::path folder, out;
    Recorder output;
};

struct KindCase {
    const char* name;
    const char* archive;
    Names files;
    const char* file;  ///< one of them, which has a folder unless the archive has none
    std::string bytes;
    bool flat;  ///< can be unpacked without folders
};
class ConsoleKind : public ConsoleRun, public testing::WithParamInterface<KindCase> {
protected:
    std::string lastPart() const {
        const std::string name = GetParam().file;
        return name.substr(name.rfind('/') + 1);
    }
};

TEST_P(ConsoleKind, IsUnpackedWhole) {
    EXPECT_EQ(extract(GetParam().archive), kGood) << output.errors;
    EXPECT_EQ(files(), GetParam().files);
    EXPECT_EQ(read(GetParam().file), GetParam().bytes);
    EXPECT_NE(output.out.find(lastPart()), std::string::npos) << "members are named";
}

TEST_P(ConsoleKind, KeepsFilesThatAreThere) {
    write(out / GetParam().file, "mine");
    EXPECT_EQ(extract(GetParam().archive), kGood) << output.errors;
    EXPECT_EQ(read(GetParam().file), "mine");
    EXPECT_EQ(files(), GetParam().files);
    EXPECT_EQ(extract(GetParam().archive, {}, {L"--skip"}), kGood) << output.errors;
    EXPECT_EQ(read(GetParam().file), "mine");
}

TEST_P(ConsoleKind, ReplacesFilesWhenToldSo) {
    write(out / GetParam().file, "mine");
    EXPECT_EQ(extract(GetParam().archive, {}, {L"--overwrite"}), kGood) << output.errors;
    EXPECT_EQ(read(GetParam().file), GetParam().bytes);
}

TEST_P(ConsoleKind, UnpacksOneMember) {
    const std::string name = GetParam().file;
    EXPECT_EQ(extract(GetParam().archive, {std::wstring(name.begin(), name.end())}), kGood) << output.errors;
    EXPECT_EQ(files(), (Names{name}));
}

TEST_P(ConsoleKind, UnpacksMembersOfAListFile) {
    const std::string name = GetParam().file;
    EXPECT_EQ(extract(GetParam().archive, {std::wstring(name.begin(), name.end()), L"no such member"}), kGood)
        << output.errors;
    EXPECT_EQ(files(), (Names{name}));
}

TEST_P(ConsoleKind, KnowsWhenNoMemberIsCalledSo) {
    EXPECT_EQ(extract(GetParam().archive, {L"nosuch.txt"}), kNoMember);
    EXPECT_EQ(files(), Names{});
    EXPECT_NE(output.errors.find("no member is called so"), std::string::npos) << output.errors;
}

TEST_P(ConsoleKind, UnpacksWithoutFoldersWhereItCan) {
    if (!GetParam().flat) {
        EXPECT_EQ(extract(GetParam().archive, {}, {L"--flat"}), kBadLine);
        EXPECT_EQ(files(), Names{});
        return;
    }
    EXPECT_EQ(extract(GetParam().archive, {}, {L"--flat"}), kGood) << output.errors;
    EXPECT_EQ(read(lastPart()), GetParam().bytes);
    for (const std::string& name : files()) EXPECT_EQ(name.find('/'), std::string::npos) << name;
}

TEST_P(ConsoleKind, IsListedAndTested) {
    EXPECT_EQ(run({L"list", L"--json", sample(GetParam().archive)}), kGood) << output.errors;
    EXPECT_NE(output.out.find("\"complete\":true"), std::string::npos);
    EXPECT_NE(output.out.find("\"name\":\"" + lastPart() + '"'), std::string::npos);
    EXPECT_EQ(run({L"test", sample(GetParam().archive)}), kGood) << output.errors;
    EXPECT_NE(output.out.find("all members are good"), std::string::npos);
}

TEST_P(ConsoleKind, ReportsAsJson) {
    EXPECT_EQ(extract(GetParam().archive, {}, {L"--json"}), kGood);
    EXPECT_EQ(output.out.find("{\"archive\":"), 0U);
    EXPECT_NE(output.out.find("\"good\":true,\"code\":0,\"message\":\"\""), std::string::npos) << output.out;
}

TEST_P(ConsoleKind, FailsWhereTheFolderIsAFile) {
    write(out, "mine");
    EXPECT_EQ(extract(GetParam().archive, {}, {L"--overwrite"}), kBadArchive);
    EXPECT_TRUE(fs::is_regular_file(out));
}

std::string digits() {
    std::string text;
    for (int i = 0; i < 100; ++i) text += "0123456789";
    return text;
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ConsoleKind,
    testing::Values(
        KindCase{"Zip", "archivers/listing.zip", {"b.txt", "docs/a.txt"}, "docs/a.txt", "hello", true},
        KindCase{"Tar", "archivers/listing.tar", {"b.txt", "docs/a.txt"}, "docs/a.txt", "hello", false},
        KindCase{"Tgz", "archivers/listing.tgz", {"b.txt", "docs/a.txt"}, "docs/a.txt", "hello", false},
        KindCase{"Bz2", "archivers/listing.tar.bz2", {"b.txt", "docs/a.txt"}, "docs/a.txt", "hello", false},
        KindCase{"Z", "archivers/listing.tar.Z", {"b.txt", "docs/a.txt"}, "docs/a.txt", "hello", false},
        KindCase{"Single", "archivers/b.txt.bz2", {"b.txt"}, "b.txt", digits(), false},
        KindCase{"Arj",
                 "arj/methods.arj",
                 {"method1/novel.txt", "method2/main.c", "method3/zeros.bin", "method4/main.c", "method4/novel.txt",
                  "stored/empty.txt", "stored/readme.txt"},
                 "method3/zeros.bin",
                 std::string(300'000, '\0'),
                 true},
        KindCase{
            "Rar", "rar/rar5_stored.rar", {"helloworld.txt"}, "helloworld.txt", "hello libarchive test suite!\n", true},
        KindCase{"Lzh",
                 "lzh/unix-folders-level1.lzh",
                 {"subdir/subdir2/hello.txt"},
                 "subdir/subdir2/hello.txt",
                 "hello world\n",
                 false},
        KindCase{"Cab",
                 "cab/normal_2files_2folders.cab",
                 {"lzx1.txt", "lzx2.txt", "mszip1.txt", "mszip2.txt"},
                 "mszip1.txt",
                 "This is compressed with MS-ZIP\n",
                 true},
        KindCase{"Ace", "ace/tiny-folder.ace", {"t/t.txt"}, "t/t.txt", "42", true}),
    [](const auto& each) { return std::string(each.param.name); });

// What goes wrong

TEST_F(ConsoleRun, TellsOfWhatIsNoArchive) {
    EXPECT_EQ(extract("archivers/none.zip"), kBadArchive);
    EXPECT_NE(output.errors.find("there is no such file"), std::string::npos);
    write(folder / "a.txt", "text");
    EXPECT_EQ(run({L"extract", (folder / "a.txt").wstring()}), kBadArchive);
    EXPECT_NE(output.errors.find("this is no archive's name"), std::string::npos);
    for (const char* name : {"a.zip", "a.rar", "a.arj", "a.lzh", "a.cab", "a.tar", "a.ace"}) {
        write(folder / name, "this is no archive");
        EXPECT_EQ(run({L"extract", L"--to", out.wstring(), (folder / name).wstring()}), kBadArchive) << name;
        EXPECT_NE(output.errors.find("archive"), std::string::npos) << name;
    }
    EXPECT_EQ(files(), Names{});
}

TEST_F(ConsoleRun, FailsForEncryptedMembersWithoutAPassword) {
    for (const char* archive : {"archivers/encrypted.zip", "arj/garbled.arj", "ace/encrypted.ace"}) {
        EXPECT_EQ(extract(archive), kBadArchive) << archive;
        EXPECT_EQ(files(), Names{}) << archive;
        EXPECT_NE(output.errors, "") << archive;
    }
}

TEST_F(ConsoleRun, KeepsTheGoodMembersOfADamagedArchive) {
    std::ifstream file(fs::path(sample("archivers/listing.tar")), std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    ASSERT_GT(bytes.size(), 3000U);
    write(folder / "cut.tar", bytes.substr(0, 2560));  // within the header's neighbour: b.txt is cut short
    EXPECT_EQ(run({L"extract", L"--to", out.wstring(), (folder / "cut.tar").wstring()}), kBadArchive);
    EXPECT_EQ(read("docs/a.txt"), "hello");
    EXPECT_FALSE(fs::exists(out / "b.txt")) << "nothing half written stays";
    EXPECT_EQ(run({L"list", (folder / "cut.tar").wstring()}), kBadArchive);
    EXPECT_NE(output.errors.find("the listing breaks off here"), std::string::npos) << output.errors;
}

TEST_F(ConsoleRun, TellsOfOptionsItDoesNotKnow) {
    EXPECT_EQ(run({L"extract", L"-x", L"a.zip"}), kBadLine);
    EXPECT_EQ(output.errors, "tovar: unknown option -x; tovar --help tells what there is\n");
}

TEST_F(ConsoleRun, UnpacksAFolderOfMembers) {
    EXPECT_EQ(extract("archivers/listing.zip", {L"docs/"}), kGood) << output.errors;
    EXPECT_EQ(files(), (Names{"docs/a.txt"}));
}

TEST_F(ConsoleRun, UnpacksMembersByAPattern) {
    EXPECT_EQ(extract("archivers/listing.zip", {L"b.*"}), kGood) << output.errors;
    EXPECT_EQ(files(), (Names{"b.txt"}));
    EXPECT_EQ(read("b.txt"), digits());
}

}  // namespace
}  // namespace tovar::host
