// Archives of every kind, damaged in every way that a transfer damages them, through the exported functions.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "formats/support/sha256.h"
#include "unpacking_end_to_end/support/sweep.h"

namespace archiver::testing {
namespace {

struct Kind {
    const char* title;
    const char* module;
    const char* prefix;
    const char* line;
    const char* archive;
    std::map<std::string, const char*> members;  ///< SHA-256 of what another program unpacks
    Evidence evidence = {};
    std::size_t links = 0;  ///< symbolic ones, which are further files: copies where there are none
};

constexpr char kEmpty[] = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
constexpr char kAgain[] = "57cdabf4ca695c9629a4c5ce60fd5f23b1b889c786a8cab3ab561f09afcbc036";
constexpr char kReadme[] = "568c2a79c58ffc5dff3eae46d070f039f748b0f08c856ea086a505eafc454c4e";
constexpr char kMyFile[] = "078a29f2acf13c3a1d93e2066aa05abded65c536fafb6075fab1bb09f12e2d22";
constexpr char kThousand[] = "ab6c5f3237f551d208fc2ca5225a4cca20b3fd638794a804f0ed5549d5041734";
constexpr char kLicence[] = "8177f97513213526df2cf6184d8ff986c675afb514d4e68a404010521b880643";
constexpr char kMainC[] = "6356dbe6fe8554405cdc61e7cf66d311c0b14f08c7d135ab6e5ae15dd05919cb";
constexpr char kPage[] = "ee16390e87152d7dec632ae2b37566da6135966e46b5166e6f40a1c827fa61ad";

const std::map<std::string, const char*> kTarMembers = {{"readme.txt", kReadme},
                                                        {"empty folder/", kEmpty},
                                                        {"docs/again.txt", kAgain},
                                                        {"docs/old notes/my file.txt", kMyFile},
                                                        {"docs/empty.txt", kEmpty}};

constexpr char kTarLine[] = "-xvfo ARC OUT";

// tar has sums of its headers only; the one of gzip is of the whole stream. bzip2 has one for each block, which here is
// the whole as well. compress has none at all, nor a length, so that only tar's own blocks tell of a cut; what is no
// tar any more is a file of the archive's name to it. A cabinet has none of its names.
// Headers of LZH are summed up in 8 bits or not at all.
// The block at the end of a RAR archive came with RAR 3: without it, one cut between members is taken for older.
constexpr Evidence kHeadersOnly{.sums = Evidence::Sums::kNone};
constexpr Evidence kWholeStream{.sums = Evidence::Sums::kOfTheWhole};
const Evidence kTarOrNot{.sums = Evidence::Sums::kNone, .end = false, .instead = "ustar.tar"};
constexpr Evidence kNothing{.sums = Evidence::Sums::kNone, .sizes = false, .names = false};
constexpr Evidence kNoEnd{.end = false};
constexpr Evidence kContentOnly{.names = false};

const Kind kKinds[] = {
    {"Zip", "UnZip32", "UnZip", "-x -o ARC OUT", "zip/zip.zip", kTarMembers},
    {"Tar", "Tar32", "Tar", kTarLine, "tar/ustar.tar", kTarMembers, kHeadersOnly},
    {"TarGzip", "Tar32", "Tar", kTarLine, "tar/ustar.tgz", kTarMembers, kWholeStream},
    {"TarBzip2", "Tar32", "Tar", kTarLine, "tar/ustar.tbz", kTarMembers, kWholeStream},
    {"TarCompress", "Tar32", "Tar", kTarLine, "tar/ustar.taz", kTarMembers, kTarOrNot},
    {"Bzip2", "Tar32", "Tar", kTarLine, "archivers/b.txt.bz2", {{"b.txt", kThousand}}},
    {"Compress", "Tar32", "Tar", kTarLine, "archivers/b.txt.Z", {{"b.txt", kThousand}}, kNothing},
    {"Arj",
     "UnArj32j",
     "Unarj",
     " x -i- -y+ -!@ ARC OUT *.*",
     "arj/methods.arj",
     {{"method1/novel.txt", "7aab1f36d08116d18ed82454e588918cd585b869200311265e992660264d9976"},
      {"method2/main.c", kMainC},
      {"method3/zeros.bin", "886715e4051e827f4fe215df3053af3f85ad0d352db2c829c7487af6d78efe30"},
      {"method4/main.c", kMainC},
      {"method4/novel.txt", "5086dc64661c015d3bdc14cf2e241d8dc4862e1a9d1b23315f2e66a9bd125c46"},
      {"stored/empty.txt", kEmpty},
      {"stored/readme.txt", "81f3ce24339c4229cdb72e8a0c6732ff44c4bd1c4604bf9c94cca8d36cbeb0fe"}}},
    {"LzhLevel1", "UnLha32", "Unlha", "x ARC OUT", "lzh/lh7-level1.lzh", {{"gpl-2", kLicence}}, kContentOnly},
    {"LzhLevel3", "UnLha32", "Unlha", "x ARC OUT", "lzh/lh5-level3.lzh", {{"GPL-2", kLicence}}, kContentOnly},
    {"CabOfEveryMethod",
     "Cab32",
     "Cab",
     "-x -k ARC OUT",
     "cab/mszip_lzx_qtm.cab",
     {{"lzx.txt", "e978598104671296857e0543f4280f4d4e0506dd3cad5162e9f2a4f604fafc78"},
      {"mszip.txt", "6a2d9536b995c42a9b9daa2c2eaabf9a1e13e594669a420f8d3e66150af33cff"},
      {"qtm.txt", "bdcfdaf09e54d61f950b165b201d4ad5f5acfdecff1fc5641e382aa382c74b45"}},
     kContentOnly},
    {"Rar4",
     "UnRar32",
     "Unrar",
     "x ARC OUT",
     "rar/rar_compress_normal.rar",
     {{"LibarchiveAddingTest.html", kPage},
      {"testdir/LibarchiveAddingTest.html", kPage},
      {"testdir/test.txt", "5a5f16e01faf8adf92eb4499a2d3e93010c4b41dbb7f698f4a8466d9f58e6dd2"}},
     kNoEnd,
     2},
    {"Rar5",
     "UnRar32",
     "Unrar",
     "x ARC OUT",
     "rar/rar5_multiple_files.rar",
     {{"test1.bin", "7d89f86f9f69d744ffff3fc043e15bf89fc3ffc134ffcbb31d164a99bb8b67b0"},
      {"test2.bin", "f81e6fceeeab366306b23466bf6bb3aac2875e0906dc20a8652be0696ceb15a2"},
      {"test3.bin", "5e621f2b6ce8fed758c3df8221f994eda55d1e432c7cc4349c34a30ec2e1c43d"},
      {"test4.bin", "2627f40180217252956edb9a426e8d3e344adaf89019d3bccbe04f6c3416dcdd"}}},
};

std::string bytesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

class DamagedArchive : public ::testing::TestWithParam<Kind> {
protected:
    DamagedArchive() {
        run_.archive = (run_.scratch.path() / std::filesystem::path(GetParam().archive).filename()).string();
    }

    Unpacked unpack(const std::string& bytes) {
        removeFolder(run_.target());
        run_.scratch.write(run_.archive, bytes);
        Unpacked unpacked;
        unpacked.code = run_(GetParam().line);
        unpacked.output = run_.text();
        unpacked.files = run_.unpacked();
        expectNothingBeside();
        expectCheckAgrees(unpacked.code);
        return unpacked;
    }

private:
    void expectNothingBeside() const {
        for (const auto& entry : std::filesystem::directory_iterator(run_.scratch.path())) {
            EXPECT_TRUE(entry.path() == run_.archive || entry.path() == run_.target()) << entry.path();
        }
    }
    /// A test of all checksums comes to the same verdict as unpacking; quicker looks may see less.
    void expectCheckAgrees(std::int32_t code) const {
        constexpr std::int32_t kRapid = 0, kBasic = 1, kFull = 2;
        const auto isGood = [this](std::int32_t mode) {
            return run_.library().call<fn::CheckArchive>("CheckArchive", run_.archive.c_str(), mode);
        };
        EXPECT_EQ(isGood(kFull), code == 0 ? 1 : 0) << std::hex << code << ' ' << run_.text();
        for (const std::int32_t mode : {kRapid, kBasic}) {
            const std::int32_t good = isGood(mode);
            EXPECT_TRUE(good == 0 || good == 1) << good;
            EXPECT_TRUE(code != 0 || good == 1) << "mode " << mode;
        }
    }

    LibraryRun run_{GetParam().module, GetParam().prefix, "end-to-end"};
};

TEST_P(DamagedArchive, LeavesOnlyWhatIsWhole) {
    const std::string bytes = bytesOf(fixture(GetParam().archive));
    ASSERT_FALSE(bytes.empty());
    const Unpacked whole = unpack(bytes);
    ASSERT_EQ(whole.code, 0) << whole.output;
    ASSERT_EQ(whole.files.size(), GetParam().members.size() + GetParam().links);
    for (const auto& [name, digest] : GetParam().members) {
        ASSERT_EQ(whole.files.count(name), 1U) << name;
        ASSERT_EQ(test::sha256(whole.files.at(name)), digest) << name;
    }
    sweep({.bytes = bytes,
           .members = whole.files,
           .evidence = GetParam().evidence,
           .isKnownCode = [](std::int32_t code) { return code == 0 || (code >= 0x8005 && code <= 0x804F); },
           .unpack = [this](const std::string& damaged) { return unpack(damaged); }});
}

INSTANTIATE_TEST_SUITE_P(Kinds, DamagedArchive, ::testing::ValuesIn(kKinds),
                         [](const auto& each) { return std::string(each.param.title); });

}  // namespace
}  // namespace archiver::testing
