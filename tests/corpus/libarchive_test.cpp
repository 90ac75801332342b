#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "archivers/formats/cab/cab_reader.h"
#include "archivers/formats/lzh/lzh_reader.h"
#include "archivers/formats/tar/tar_format.h"
#include "archivers/formats/zip/zip_reader.h"
#include "corpus/support/corpus.h"
#include "corpus/support/uudecode.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/sha256.h"

/// The archives that libarchive is tested with. tests/data/corpus/libarchive.txt tells what it finds in each.
namespace archiver::test {
namespace {

namespace fs = std::filesystem;

struct Expected {
    std::string archive, password, members, sha256;
    std::size_t contents = 0;
    [[nodiscard]] bool bad() const { return members == "bad"; }
};

std::vector<Expected> readExpected(const fs::path& file) {
    std::vector<Expected> all;
    std::istringstream text(contentOf(file));
    for (std::string line; std::getline(text, line);) {
        if (line.starts_with('#')) continue;
        Expected each;
        std::istringstream(line) >> each.archive >> each.password >> each.members >> each.contents >> each.sha256;
        all.push_back(each);
    }
    return all;
}

OpenResult open(const std::string& name, const fs::path& file) {
    if (name.find(".lzh") != std::string::npos) return openLzh(file);
    if (name.find(".cab") != std::string::npos) return openCab(file);
    if (name.find("zip") != std::string::npos && name.find("gzip") == std::string::npos &&
        name.find("bzip2_1.t") == std::string::npos && name.find("bzip2_2.t") == std::string::npos)
        return openZip(file);
    return openTar(file);
}

constexpr std::uint64_t kNotRead = std::uint64_t{64} << 20;  ///< claims of holes, which are there to be walked past

struct Found {
    ReturnCode code = kOk;  ///< the first one that was not good
    std::size_t members = 0;
    std::set<std::string> contents;

    void note(ReturnCode next) {
        if (code == kOk) code = next;
    }
    [[nodiscard]] std::string hash() const {
        std::string sums;
        for (const std::string& each : contents) sums += each + '\n';
        return sha256(sums);
    }
};

Found read(const Expected& expected, const fs::path& file) {
    Found found;
    const OpenResult opened = open(expected.archive, file);
    found.note(opened.code);
    if (opened.reader == nullptr) return found;
    if (expected.password != "-") opened.reader->setPassword(expected.password);
    Member member;
    ReturnCode code = kOk;
    while ((code = opened.reader->next(member)) == kOk) {
        ++found.members;
        if (member.kind != MemberKind::kFile || member.originalSize >= kNotRead) continue;
        const Unpacked unpacked = unpack(*opened.reader);
        found.note(unpacked.code);
        if (!unpacked.bytes.empty()) found.contents.insert(sha256(unpacked.bytes));
    }
    if (code != kNoMoreEntries) found.note(code);
    return found;
}

TEST(LibarchiveCorpus, IsReadAsExpected) {
    const fs::path archives = corpus("libarchive") / "libarchive" / "test";
    if (!fs::is_directory(archives)) GTEST_SKIP() << "TOVAREX_CORPUS names no folder with libarchive's sources";
    const auto all = readExpected(dataFile("corpus/libarchive.txt"));
    ASSERT_GT(all.size(), 100U);
    const TemporaryFolder folder;
    int good = 0, refused = 0;
    for (const Expected& each : all) {
        SCOPED_TRACE(each.archive);
        const fs::path file = folder.write(each.archive, uudecode(contentOf(archives / (each.archive + ".uu"))));
        const Found found = read(each, file);
        if (each.bad()) {
            ++refused;
            EXPECT_NE(found.code, kOk);
        } else {
            ++good;
            EXPECT_EQ(found.code, kOk) << std::hex << found.code;
            EXPECT_EQ(std::to_string(found.members), each.members);
            EXPECT_EQ(found.hash(), each.sha256) << found.contents.size() << " contents, expected " << each.contents;
        }
        fs::remove(file);
    }
    std::cout << "[ COUNT    ] libarchive: " << all.size() << " archives, " << good << " good, " << refused
              << " refused\n";
}

}  // namespace
}  // namespace archiver::test
