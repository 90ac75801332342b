#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/sha256.h"
#include "formats_ace/support/memory_disk.h"

/// A larger folder of archives with a list of what is in them; TOVAREX_SAMPLES names the folder above it.
namespace archiver::test {
namespace {

class AceSamples : public testing::Test {
protected:
    void SetUp() override {
        const char* const folder = std::getenv("TOVAREX_SAMPLES");
        if (folder == nullptr || *folder == '\0') GTEST_SKIP();
        folder_ = std::filesystem::path(folder) / "ace";
    }

    std::filesystem::path folder_;
};

/// Unpacks the archives that the list has.
/// @param encrypted  whether those with a password count, or the others
/// @return how many members there were
std::size_t expectAsListed(const std::filesystem::path& folder, bool encrypted) {
    std::istringstream manifest(readFile(folder / "manifest.txt"));
    std::unique_ptr<AceReader> reader;
    std::size_t members = 0;
    for (std::string line; std::getline(manifest, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        std::istringstream words(line);
        std::string first, second;
        words >> first;
        if (line.starts_with("archive ")) {
            std::string name;
            words >> name;
            AceOpenResult opened = openAceReader(folder / name);
            EXPECT_EQ(opened.code, kOk) << name;
            reader = std::move(opened.reader);
            if (reader) reader->setPassword("secret");
        } else if (reader && first.size() == 64 && words >> second && second == "size") {
            std::string word, name;
            while (words >> word) name = word;
            std::replace(name.begin(), name.end(), '/', '\\');
            Member member;
            while (reader->next(member) == kOk && member.name != name) continue;
            if (member.encrypted != encrypted) continue;
            const Unpacked unpacked = unpack(*reader);
            EXPECT_EQ(unpacked.code, kOk) << line;
            EXPECT_EQ(sha256(unpacked.bytes), first) << line;
            ++members;
        }
    }
    return members;
}

TEST_F(AceSamples, AreUnpacked) { EXPECT_GE(expectAsListed(folder_, false), 30U); }

TEST_F(AceSamples, ThatAreEncryptedAreUnpacked) { EXPECT_GE(expectAsListed(folder_, true), 3U); }

TEST_F(AceSamples, ThatAreDamagedComeToAnEnd) {
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
        if (entry.path().extension() != ".ace") continue;
        const std::string whole = readFile(entry.path());
        const auto exhaust = [&](const std::string& bytes) {
            MemoryDisk disk;
            disk.put("a.ace", bytes);
            const AceOpenResult opened = disk.open("a.ace");
            if (!opened.reader) return;
            Member member;
            while (opened.reader->next(member) == kOk)
                EXPECT_LE(unpack(*opened.reader).bytes.size(), member.originalSize);
        };
        for (std::size_t size = 0; size < whole.size(); size += 97) exhaust(whole.substr(0, size));
        for (std::size_t at = 0; at < whole.size(); at += 101) {
            std::string bytes = whole;
            bytes[at] = static_cast<char>(bytes[at] ^ 0xFF);
            exhaust(bytes);
        }
    }
}

}  // namespace
}  // namespace archiver::test
