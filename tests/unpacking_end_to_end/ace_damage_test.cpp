// The same for ACE, whose library has an interface of its own.

#include <fstream>

#include "formats/support/sha256.h"
#include "unace/unace_fixture.h"
#include "unpacking_end_to_end/support/sweep.h"

namespace archiver::test {
namespace {

class DamagedAce : public UnAceFixture {
protected:
    testing::Unpacked unpack(const std::string& bytes) {
        testing::removeFolder(out);
        const std::filesystem::path file = folder / "archive.ace";
        write(file, bytes);
        testing::Unpacked unpacked;
        const ArchiveHandle archive = openFile(file, unpacked.code);
        if (archive == nullptr) return unpacked;
        abi::HeaderData header{};
        std::int32_t ended = readHeader(archive, &header);
        for (; ended == 0; ended = readHeader(archive, &header)) {
            const std::int32_t code = process(archive, abi::kExtract, (text(out) + "/").c_str());
            if (code == 0) continue;
            unpacked.output += std::string(header.fileName) + " has an error\n";
            unpacked.code = code;
        }
        if (ended != abi::result::kEnd) unpacked.code = ended;
        close(archive);
        unpacked.files = testing::filesBelow(out);
        return unpacked;
    }
};

// The sums of headers and contents are of 16 and of 32 bits.
TEST_F(DamagedAce, LeavesOnlyWhatIsWhole) {
    std::ifstream stream(testing::fixture("ace/stored.ace"), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    const testing::Unpacked whole = unpack(bytes);
    ASSERT_EQ(whole.code, 0);
    ASSERT_EQ(whole.files.size(), 2U);
    ASSERT_EQ(sha256(whole.files.at("docs/a.txt")), "a56278e46a013875794b2d533e0cdc5e793e52b5afa352cd4e0dbedf8ddaf2ff");
    ASSERT_EQ(whole.files.at("empty.txt"), "");
    testing::sweep({.bytes = bytes,
                    .members = whole.files,
                    .evidence = {},
                    .isKnownCode = [](std::int32_t code) { return (code >= 0 && code <= 11) || code == 132; },
                    .unpack = [this](const std::string& damaged) { return unpack(damaged); }});
}

// volume.ace alone: its member goes on in a volume that is not there.
TEST_F(DamagedAce, LeavesNothingOfAMemberWhoseVolumeIsMissing) {
    std::ifstream stream(testing::fixture("ace/volume.ace"), std::ios::binary);
    const testing::Unpacked unpacked = unpack({std::istreambuf_iterator<char>(stream), {}});
    EXPECT_EQ(unpacked.code, abi::result::kOpen) << unpacked.output;
    EXPECT_EQ(unpacked.files, testing::Files{});
}

}  // namespace
}  // namespace archiver::test
