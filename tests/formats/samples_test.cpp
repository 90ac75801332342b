#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "archivers/formats/tar/tar_format.h"
#include "archivers/formats/zip/zip_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/zip_builder.h"

/// A folder of archives of one content tree, made with public tools; TOVAREX_SAMPLES names the folder above it.
namespace archiver::test {
namespace {

class Samples : public testing::Test {
protected:
    void SetUp() override {
        const char* const folder = std::getenv("TOVAREX_SAMPLES");
        if (folder == nullptr || *folder == '\0') GTEST_SKIP();
        folder_ = std::filesystem::path(folder) / "made";
    }

    [[nodiscard]] std::filesystem::path sample(const char* name) const { return folder_ / name; }

    /// Name, size and checksum of every file with content; a leading "./" is left out.
    static std::vector<std::string> contents(OpenResult opened, std::string_view password = {}) {
        std::vector<std::string> result;
        if (!opened.reader) return result;
        opened.reader->setPassword(password);
        Member member;
        ReturnCode code = kOk;
        while ((code = opened.reader->next(member)) == kOk) {
            if ((member.attributes & attribute::kFolder) != 0) continue;
            const Unpacked unpacked = unpack(*opened.reader);
            EXPECT_EQ(unpacked.code, kOk) << member.name;
            const std::string name = member.name.starts_with("./") ? member.name.substr(2) : member.name;
            char crc[16];
            std::snprintf(crc, sizeof(crc), "%08x", static_cast<unsigned>(ZipBuilder::crcOf(unpacked.bytes)));
            result.push_back(name + " " + std::to_string(unpacked.bytes.size()) + " " + crc);
        }
        EXPECT_EQ(code, kNoMoreEntries);
        std::sort(result.begin(), result.end());
        return result;
    }

    /// As unzip lists plain.zip.
    const std::vector<std::string> expected_{"docs/a,b.txt 19 68b36e1a",
                                             "docs/my file.txt 18 bea93d61",
                                             "docs/old notes/novel.txt 387180 3c836193",
                                             "empty.txt 0 00000000",
                                             "readme.txt 29 9da46e34",
                                             "src/lib/noise.bin 70000 d1e384e1",
                                             "src/lib/zeros.bin 300000 f6b2e2fb",
                                             "src/main.c 1160 c28acd00"};

private:
    std::filesystem::path folder_;
};

TEST_F(Samples, OfZipAreRead) {
    EXPECT_EQ(contents(openZip(sample("plain.zip"))), expected_);
    EXPECT_EQ(contents(openZip(sample("stored.zip"))), expected_);
}

TEST_F(Samples, OfTarAreRead) {
    for (const char* name : {"plain.tar", "plain.tar.gz", "plain.tar.bz2", "plain.tar.Z"}) {
        EXPECT_EQ(contents(openTar(sample(name))), expected_) << name;
    }
}

TEST_F(Samples, OfASingleFileAreRead) {
    EXPECT_EQ(contents(openTar(sample("single.gz"))), std::vector<std::string>{"readme.txt 29 9da46e34"});
}

TEST_F(Samples, ThatAreEncryptedAreRead) {
    for (const char* name : {"encrypted-zipcrypto.zip", "encrypted-aes256.zip"}) {
        const OpenResult opened = openZip(sample(name));
        ASSERT_TRUE(opened.reader) << name;
        const Listing listing = walk(*opened.reader);
        EXPECT_EQ(listing.end, kNoMoreEntries);
        EXPECT_EQ(listing.members.size(), 6U);
        EXPECT_EQ(unpack(*opened.reader, "docs/old notes/novel.txt").code, kPasswordFile);
        for (const std::string& line : contents(openZip(sample(name)), "secret")) {
            EXPECT_NE(std::find(expected_.begin(), expected_.end(), line), expected_.end()) << name << ": " << line;
        }
    }
}

}  // namespace
}  // namespace archiver::test
