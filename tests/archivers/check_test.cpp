#include <gtest/gtest.h>

#include "archivers/loaded_library.h"
#include "archivers/scratch_file.h"

namespace archiver {
namespace {

using testing::bytesOf;
using testing::LoadedLibrary;
using testing::sample;
using testing::ScratchFile;

constexpr std::int32_t kRapid = 0;
constexpr std::int32_t kBasic = 1;
constexpr std::int32_t kFullCrc = 2;
constexpr std::int32_t kRecovery = 4;
constexpr std::int32_t kSfx = 8;
constexpr std::int32_t kModes[] = {kRapid, kBasic, kFullCrc};

class Check : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(zip_.loaded());
        ASSERT_TRUE(tar_.loaded());
        ASSERT_TRUE(rar_.loaded());
        ASSERT_TRUE(arj_.loaded());
    }
    std::int32_t zip(const std::string& file, std::int32_t mode) {
        return zip_.call<fn::CheckArchive>("CheckArchive", file.c_str(), mode);
    }
    std::int32_t tar(const std::string& file, std::int32_t mode) {
        return tar_.call<fn::CheckArchive>("CheckArchive", file.c_str(), mode);
    }

    std::int32_t rar(const std::string& file, std::int32_t mode) {
        return rar_.call<fn::CheckArchive>("CheckArchive", file.c_str(), mode);
    }
    std::int32_t arj(const std::string& file, std::int32_t mode) {
        return arj_.call<fn::CheckArchive>("CheckArchive", file.c_str(), mode);
    }
    std::int32_t lzh(const std::string& file, std::int32_t mode) {
        return lzh_.call<fn::CheckArchive>("CheckArchive", file.c_str(), mode);
    }
    std::int32_t cab(const std::string& file, std::int32_t mode) {
        return cab_.call<fn::CheckArchive>("CheckArchive", file.c_str(), mode);
    }

private:
    LoadedLibrary zip_{"UnZip32", "UnZip"};
    LoadedLibrary tar_{"Tar32", "Tar"};
    LoadedLibrary rar_{"UnRar32", "Unrar"};
    LoadedLibrary arj_{"UnArj32j", "Unarj"};
    LoadedLibrary lzh_{"UnLha32", "Unlha"};
    LoadedLibrary cab_{"Cab32", "Cab"};
};

TEST_F(Check, TakesGoodArchives) {
    for (const std::int32_t mode : kModes) {
        for (const char* name : {"listing.zip", "sfx.zip", "empty.zip", "names.zip", "encrypted.zip"}) {
            EXPECT_EQ(zip(sample(name), mode), 1) << name << ", mode " << mode;
        }
        for (const char* name :
             {"listing.tar", "listing.tgz", "listing.tar.Z", "listing.tar.bz2", "single.gz", "b.txt.bz2", "b.txt.Z"}) {
            EXPECT_EQ(tar(sample(name), mode), 1) << name << ", mode " << mode;
        }
    }
}

TEST_F(Check, TakesGoodArchivesOfRarAndArj) {
    for (const std::int32_t mode : kModes) {
        for (const char* name : {"../rar/rar.rar", "../rar/rar5_multiple_files_solid.rar",
                                 "../rar/rar_compress_best.rar", "../rar/rar_encryption_data.rar"}) {
            EXPECT_EQ(rar(sample(name), mode), 1) << name << ", mode " << mode;
        }
        for (const char* name : {"../arj/methods.arj", "../arj/garbled.arj"}) {
            EXPECT_EQ(arj(sample(name), mode), 1) << name << ", mode " << mode;
        }
    }
}

TEST_F(Check, TakesGoodArchivesOfLzhAndCab) {
    for (const std::int32_t mode : kModes) {
        for (const char* name : {"../lzh/lh1.lzh", "../lzh/unix-folders-level1.lzh", "../lzh/lz5.lzs"}) {
            EXPECT_EQ(lzh(sample(name), mode), 1) << name << ", mode " << mode;
        }
        for (const char* name : {"../cab/mszip_lzx_qtm.cab", "../cab/cabd_multi_basic_pt3.cab"}) {
            EXPECT_EQ(cab(sample(name), mode), 1) << name << ", mode " << mode;
        }
    }
}

TEST_F(Check, FindsDamagedDataOfLzhAndCabWhenItReadsThem) {
    std::string bytes = bytesOf(sample("../lzh/unix-folders-level1.lzh"));
    bytes[bytes.find("hello world")] = 'j';
    const ScratchFile lzhFile("data.lzh", bytes);
    bytes = bytesOf(sample("../cab/cabd_multi_basic_pt3.cab"));
    bytes[bytes.find("This is the data")] = 't';
    const ScratchFile cabFile("data.cab", bytes);
    for (const std::int32_t mode : kModes) {
        EXPECT_EQ(lzh(lzhFile.name(), mode), mode == kFullCrc ? 0 : 1);
        EXPECT_EQ(cab(cabFile.name(), mode), mode == kFullCrc ? 0 : 1);
    }
}

TEST_F(Check, TellsARarWithEncryptedHeaders) {
    for (const std::int32_t mode : kModes) {
        EXPECT_EQ(rar(sample("../rar/rar_encryption_header.rar"), mode), 0x800A);
    }
}

TEST_F(Check, FindsDamagedDataOfRarAndArjWhenItReadsThem) {
    std::string bytes = bytesOf(sample("../rar/rar.rar"));
    bytes[bytes.find("test text")] = 'b';
    const ScratchFile rarFile("data.rar", bytes);
    bytes = bytesOf(sample("../arj/methods.arj"));
    bytes[bytes.find("A short text")] = 'B';
    const ScratchFile arjFile("data.arj", bytes);
    for (const std::int32_t mode : kModes) {
        EXPECT_EQ(rar(rarFile.name(), mode), mode == kFullCrc ? 0 : 1);
        EXPECT_EQ(arj(arjFile.name(), mode), mode == kFullCrc ? 0 : 1);
    }
}

TEST_F(Check, RefusesOtherKinds) {
    for (const std::int32_t mode : kModes) {
        EXPECT_EQ(zip(sample("listing.tar"), mode), 0);
        EXPECT_EQ(tar(sample("listing.zip"), mode), 0);
        EXPECT_EQ(rar(sample("../arj/methods.arj"), mode), 0);
        EXPECT_EQ(arj(sample("../rar/rar.rar"), mode), 0);
        EXPECT_EQ(lzh(sample("../cab/mszip_lzx_qtm.cab"), mode), 0);
        EXPECT_EQ(cab(sample("../lzh/lh1.lzh"), mode), 0);
    }
}

TEST_F(Check, RefusesWhatIsNotThere) {
    const std::string folder = testing::programFolder().string();
    for (const std::int32_t mode : kModes) {
        for (const std::string& name : {folder + "/no such file", folder, folder + "/", std::string(40000, 'n')}) {
            EXPECT_EQ(zip(name, mode), 0) << name;
            EXPECT_EQ(tar(name, mode), 0) << name;
        }
    }
}

TEST_F(Check, RefusesFilesWithoutContent) {
    const ScratchFile empty("empty", "");
    const ScratchFile zeros("zeros", std::string(5000, '\0'));
    const ScratchFile text("text", std::string(5000, 'x'));
    for (const std::int32_t mode : kModes) {
        for (const ScratchFile* file : {&empty, &text}) {
            EXPECT_EQ(zip(file->name(), mode), 0) << file->name();
            EXPECT_EQ(tar(file->name(), mode), 0) << file->name();
        }
        EXPECT_EQ(zip(zeros.name(), mode), 0);
    }
}

TEST_F(Check, RefusesATruncatedZip) {
    const std::string whole = bytesOf(sample("listing.zip"));
    for (const std::size_t length : {whole.size() - 1, whole.size() - 22, whole.size() / 2, std::size_t{30}}) {
        const ScratchFile file("truncated.zip", whole.substr(0, length));
        for (const std::int32_t mode : kModes) {
            EXPECT_EQ(zip(file.name(), mode), 0) << length;
        }
    }
}

// The directory is read to the end of its first three members in haste, to its end otherwise.
TEST_F(Check, FindsADamagedDirectoryEntryWithinItsDepth) {
    std::string bytes = bytesOf(sample("listing.zip"));
    const std::size_t last = bytes.rfind("PK\x01\x02");
    ASSERT_NE(last, std::string::npos);
    bytes[last] = 'X';
    const ScratchFile file("directory.zip", bytes);
    EXPECT_EQ(zip(file.name(), kRapid), 1);
    EXPECT_EQ(zip(file.name(), kBasic), 0);
    EXPECT_EQ(zip(file.name(), kFullCrc), 0);
    EXPECT_EQ(zip(file.name(), kBasic | kRecovery), 1);
}

TEST_F(Check, FindsDamagedDataOfAZipWhenItReadsThem) {
    std::string bytes = bytesOf(sample("listing.zip"));
    const std::size_t data = bytes.find("hello");
    ASSERT_NE(data, std::string::npos);
    bytes[data] = 'j';
    const ScratchFile file("data.zip", bytes);
    EXPECT_EQ(zip(file.name(), kRapid), 1);
    EXPECT_EQ(zip(file.name(), kBasic), 1);
    EXPECT_EQ(zip(file.name(), kFullCrc), 0);
}

TEST_F(Check, FindsDamagedDataOfAGzipWhenItReadsThem) {
    std::string bytes = bytesOf(sample("single.gz"));
    bytes[bytes.size() - 8] = static_cast<char>(bytes[bytes.size() - 8] ^ 1);  // the checksum's first byte
    const ScratchFile file("checksum.gz", bytes);
    EXPECT_EQ(tar(file.name(), kRapid), 1);
    EXPECT_EQ(tar(file.name(), kFullCrc), 0);
}

TEST_F(Check, FindsATruncatedTarWithinItsDepth) {
    const std::string whole = bytesOf(sample("listing.tar"));
    // Headers stand at 0, 512, 1024 and 2048; data of the third at 1536.
    const ScratchFile inLastHeader("header.tar", whole.substr(0, 2300));
    EXPECT_EQ(tar(inLastHeader.name(), kRapid), 1);
    EXPECT_EQ(tar(inLastHeader.name(), kBasic), 0);
    EXPECT_EQ(tar(inLastHeader.name(), kBasic | kRecovery), 1);
    const ScratchFile inLastData("data.tar", whole.substr(0, 2600));
    EXPECT_EQ(tar(inLastData.name(), kRapid), 1);
    EXPECT_EQ(tar(inLastData.name(), kFullCrc), 0);
}

TEST_F(Check, TellsASelfExtractorWhenAsked) {
    EXPECT_EQ(zip(sample("sfx.zip"), kBasic | kSfx), 0x8001);
    EXPECT_EQ(zip(sample("listing.zip"), kBasic | kSfx), 1);
}

}  // namespace
}  // namespace archiver
