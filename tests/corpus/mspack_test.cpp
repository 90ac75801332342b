#include <gtest/gtest.h>

#include "archivers/formats/cab/cab_reader.h"
#include "corpus/support/corpus.h"
#include "formats/support/listing.h"
#include "formats/support/sha256.h"

/// The cabinets that libmspack is tested with: what its own tests expect of each.
namespace archiver::test {
namespace {

namespace fs = std::filesystem;

enum class Verdict {
    kRefused,  ///< does not open, or does not list to its end
    kDamaged,  ///< lists; no member unpacks
    kPartly,   ///< all members but one unpack
    kListed,   ///< lists; libmspack tests no more than that
    kGood,
};

struct CabinetCase {
    const char* name;
    Verdict verdict;
    std::size_t members = 0;
    const char* sha256 = "";  ///< of all contents in their order, as cabextract gives them
};

constexpr const char* kHelloAndWelcome = "0187d1e1e7e6c849a7001f328e79dad05e1861501c45529f0380f2a4b9c01888";
constexpr const char* kReserved = "a68fc87356f861426bc8acab7ec38fc8e9bd5aaab4c106b03ba9d54ca7a45d61";

constexpr CabinetCase kCabinets[] = {
    {"bad_folderindex", Verdict::kRefused},
    {"bad_nofiles", Verdict::kRefused},
    {"bad_nofolders", Verdict::kRefused},
    {"bad_signature", Verdict::kRefused},
    {"cve-2010-2800-mszip-infinite-loop", Verdict::kDamaged},
    {"cve-2014-9556-qtm-infinite-loop", Verdict::kDamaged},
    {"cve-2014-9732-folders-segfault", Verdict::kPartly, 3},
    {"cve-2015-4470-mszip-over-read", Verdict::kDamaged},
    {"cve-2015-4471-lzx-under-read", Verdict::kDamaged},
    {"cve-2017-11423-fname-overread", Verdict::kRefused},
    {"cve-2018-18584-qtm-max-size-block", Verdict::kDamaged},
    {"filename-read-violation-1", Verdict::kRefused},
    {"filename-read-violation-2", Verdict::kDamaged},
    {"filename-read-violation-3", Verdict::kDamaged},
    {"filename-read-violation-4", Verdict::kDamaged},
    {"lzx-main-tree-no-lengths", Verdict::kDamaged},
    {"lzx-premature-matches", Verdict::kDamaged},
    {"mszip_lzx_qtm", Verdict::kGood, 3, "de1003c9bf7e769dbf277d265583a812239391b4b12902dae7ab89f11c54bd8d"},
    {"multi_basic_pt1", Verdict::kListed, 3},
    {"multi_basic_pt2", Verdict::kListed, 3},
    {"multi_basic_pt3", Verdict::kListed, 3},
    {"multi_basic_pt4", Verdict::kListed, 3},
    {"multi_basic_pt5", Verdict::kListed, 3},
    {"normal_255c_filename", Verdict::kGood, 1, "b22b009134622b6508d756f1062455d71a7026594eacb0badf81f4f677929ebe"},
    {"normal_2files_1folder", Verdict::kGood, 2, kHelloAndWelcome},
    {"normal_2files_2folders", Verdict::kGood, 4, "446a45ce3bb5d0986303d56935eb1c11fb08ed95e4246241ada83f4ec9ec9b7f"},
    {"partial_nodata", Verdict::kDamaged},
    {"partial_nofiles", Verdict::kRefused},
    {"partial_nofolder", Verdict::kRefused},
    {"partial_shortextheader", Verdict::kRefused},
    {"partial_shortfile1", Verdict::kRefused},
    {"partial_shortfile2", Verdict::kRefused},
    {"partial_shortfolder", Verdict::kRefused},
    {"partial_shortheader", Verdict::kRefused},
    {"partial_str_nofname", Verdict::kRefused},
    {"partial_str_noninfo", Verdict::kRefused},
    {"partial_str_nonname", Verdict::kRefused},
    {"partial_str_nopinfo", Verdict::kRefused},
    {"partial_str_nopname", Verdict::kRefused},
    {"partial_str_shortfname", Verdict::kRefused},
    {"partial_str_shortninfo", Verdict::kRefused},
    {"partial_str_shortnname", Verdict::kRefused},
    {"partial_str_shortpinfo", Verdict::kRefused},
    {"partial_str_shortpname", Verdict::kRefused},
    {"reserve_---", Verdict::kGood, 2, kReserved},
    {"reserve_--D", Verdict::kGood, 2, kReserved},
    {"reserve_-F-", Verdict::kGood, 2, kReserved},
    {"reserve_-FD", Verdict::kGood, 2, kReserved},
    {"reserve_H--", Verdict::kGood, 2, kReserved},
    {"reserve_H-D", Verdict::kGood, 2, kReserved},
    {"reserve_HF-", Verdict::kGood, 2, kReserved},
    {"reserve_HFD", Verdict::kGood, 2, kReserved},
    // Several cabinets in one file: the first good one counts here.
    {"search_basic", Verdict::kGood, 2, kHelloAndWelcome},
    {"search_tricky1", Verdict::kGood, 2, kHelloAndWelcome},
};

struct Outcome {
    ReturnCode opened = kOk;
    ReturnCode end = kNoMoreEntries;
    std::vector<Unpacked> members;

    [[nodiscard]] std::string content() const {
        std::string all;
        for (const Unpacked& member : members) all += member.bytes;
        return all;
    }
    [[nodiscard]] std::size_t good() const {
        return static_cast<std::size_t>(
            std::count_if(members.begin(), members.end(), [](const Unpacked& each) { return each.code == kOk; }));
    }
};

Outcome read(const fs::path& file) {
    const OpenResult opened = openCab(file);
    Outcome outcome;
    outcome.opened = opened.code;
    if (opened.reader == nullptr) return outcome;
    Member member;
    while ((outcome.end = opened.reader->next(member)) == kOk) outcome.members.push_back(unpack(*opened.reader));
    return outcome;
}

void check(const CabinetCase& expected, const Outcome& outcome) {
    if (expected.verdict == Verdict::kRefused) {
        EXPECT_TRUE(outcome.opened != kOk || outcome.end != kNoMoreEntries);
        EXPECT_EQ(outcome.good(), 0U);
        return;
    }
    ASSERT_EQ(outcome.opened, kOk);
    EXPECT_EQ(outcome.end, kNoMoreEntries);
    switch (expected.verdict) {
        case Verdict::kDamaged:
            EXPECT_FALSE(outcome.members.empty());
            EXPECT_EQ(outcome.good(), 0U);
            break;
        case Verdict::kPartly:
            EXPECT_EQ(outcome.members.size(), expected.members);
            EXPECT_EQ(outcome.good(), expected.members - 1);
            break;
        case Verdict::kListed:
            EXPECT_EQ(outcome.members.size(), expected.members);
            break;
        default:
            EXPECT_EQ(outcome.good(), expected.members);
            EXPECT_EQ(outcome.members.size(), expected.members);
            EXPECT_EQ(sha256(outcome.content()), expected.sha256);
    }
}

TEST(MspackCorpus, IsReadAsExpected) {
    const fs::path cabinets = corpus("libmspack") / "test" / "test_files" / "cabd";
    if (!fs::is_directory(cabinets)) GTEST_SKIP() << "TOVAREX_CORPUS names no folder with libmspack's sources";
    const auto files = filesBelow(cabinets);
    EXPECT_EQ(
        std::count_if(files.begin(), files.end(), [](const fs::path& each) { return each.extension() == ".cab"; }),
        std::ssize(kCabinets));
    int good = 0, damaged = 0, refused = 0;
    for (const CabinetCase& each : kCabinets) {
        SCOPED_TRACE(each.name);
        check(each, read(cabinets / (std::string(each.name) + ".cab")));
        const bool isGood = each.verdict == Verdict::kGood || each.verdict == Verdict::kListed;
        ++(isGood ? good : each.verdict == Verdict::kRefused ? refused : damaged);
    }
    std::cout << "[ COUNT    ] libmspack: " << std::size(kCabinets) << " cabinets, " << good << " good, " << damaged
              << " damaged, " << refused << " refused\n";
}

}  // namespace
}  // namespace archiver::test
