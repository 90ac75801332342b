// Callbacks, and the two layouts of the record that an archive is opened by.

#include <cstring>

#include "unace/unace_fixture.h"

namespace archiver::test {
namespace {

/// What the callbacks saw; they get nothing else to know their test by.
struct Seen {
    std::string data;
    std::vector<std::string> volumes;
    std::int32_t answer = 1;
    std::string otherName;  ///< what a missing volume is called instead
    ArchiveHandle archive = nullptr;
    abi::fn::ReadHeader* readHeader = nullptr;
    std::int32_t innerCode = -1;
};
Seen seen;

std::int32_t ARCHIVER_CALL takeData(std::uint8_t* bytes, std::int32_t size) {
    seen.data.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size));
    if (seen.readHeader != nullptr) {
        abi::HeaderData header{};
        seen.innerCode = seen.readHeader(seen.archive, &header);
    }
    return seen.answer;
}

std::int32_t ARCHIVER_CALL takeVolume(char* name, std::int32_t mode) {
    const std::string path = name;
    seen.volumes.push_back((mode == 0 ? "wants " : "opened ") + path.substr(path.find_last_of("/\\") + 1));
    if (mode == 0 && !seen.otherName.empty()) {
        std::strcpy(name, seen.otherName.c_str());
        seen.otherName.clear();
        return 1;
    }
    return mode == 0 ? 0 : seen.answer;
}

class UnAceRecord : public UnAceFixture {
protected:
    UnAceRecord() { seen = {}; }

    /// Opens with both callbacks.
    template <class Record>
    ArchiveHandle openWith(const std::filesystem::path& file, Record& record) {
        name = text(file);
        record.archiveName = name.data();
        record.openMode = abi::kOpenExtract;
        record.changeVolume = &takeVolume;
        record.processData = &takeData;
        const ArchiveHandle archive = open(reinterpret_cast<abi::OpenArchiveData*>(&record));
        EXPECT_NE(archive, nullptr);
        EXPECT_EQ(+record.openResult, 0);
        return archive;
    }
    std::filesystem::path archiveOf(const std::vector<AceFile>& files) {
        write(folder / "x.ace", aceArchive({}, files));
        return folder / "x.ace";
    }
    std::string name;
};

TEST_F(UnAceRecord, PackedCallsBackWithTheData) {
    abi::OpenArchiveData record{};
    const ArchiveHandle archive = openWith(archiveOf({{.name = "a", .content = "hello"}}), record);
    header(archive);
    EXPECT_EQ(process(archive, abi::kTest, nullptr), 0);
    EXPECT_EQ(seen.data, "hello");
    close(archive);
}

TEST_F(UnAceRecord, PackedMayLieAnywhere) {
    alignas(16) char memory[sizeof(abi::OpenArchiveData) + 1] = {};
    abi::OpenArchiveData record{};
    name = text(archiveOf({{.name = "a", .content = "hello"}}));
    record.archiveName = name.data();
    record.processData = &takeData;
    std::memcpy(memory + 1, static_cast<const void*>(&record), sizeof record);
    const ArchiveHandle archive = open(reinterpret_cast<abi::OpenArchiveData*>(memory + 1));
    ASSERT_NE(archive, nullptr);
    header(archive);
    EXPECT_EQ(process(archive, abi::kTest, nullptr), 0);
    EXPECT_EQ(seen.data, "hello");
    close(archive);
}

#if defined(_WIN32)
// A layout that no caller has elsewhere.
TEST_F(UnAceRecord, NaturalCallsBackWithTheData) {
    abi::NaturalOpenArchiveData record{};
    char comment[16];
    record.commentBuffer = comment;
    record.commentBufferSize = sizeof comment;
    const ArchiveHandle archive = openWith(archiveOf({{.name = "a", .content = "hello"}}), record);
    EXPECT_EQ(+record.commentState, 255U);
    header(archive);
    EXPECT_EQ(process(archive, abi::kTest, nullptr), 0);
    EXPECT_EQ(seen.data, "hello");
    close(archive);
}

TEST_F(UnAceRecord, OfRubbishIsTakenWithoutCallbacks) {
    abi::NaturalOpenArchiveData record;
    std::memset(static_cast<void*>(&record), 0x5A, sizeof record);
    name = text(archiveOf({{.name = "a", .content = "hello"}}));
    record.archiveName = name.data();
    record.openMode = 1;
    const ArchiveHandle archive = open(reinterpret_cast<abi::OpenArchiveData*>(&record));
    ASSERT_NE(archive, nullptr);
    header(archive);
    EXPECT_EQ(process(archive, abi::kTest, nullptr), 0);
    EXPECT_EQ(+record.commentState, 0x5A5A5A5AU);
    close(archive);
}
#endif

TEST_F(UnAceRecord, EndsWithTheDataCallback) {
    abi::OpenArchiveData record{};
    const ArchiveHandle archive = openWith(archiveOf({{.name = "a", .content = "hello"}}), record);
    header(archive);
    seen.answer = 0;
    EXPECT_EQ(process(archive, abi::kTest, nullptr), 255);
    EXPECT_EQ(process(archive, abi::kExtract, text(out / "a").c_str()), 255);
    EXPECT_EQ(tree(out), (std::vector<std::string>{})) << "no half file stays";
    close(archive);
}

TEST_F(UnAceRecord, KeepsACallbackOutOfItsOwnArchive) {
    abi::OpenArchiveData record{};
    const ArchiveHandle archive = openWith(archiveOf({{.name = "a", .content = "hello"}, {.name = "b"}}), record);
    header(archive);
    seen.archive = archive;
    seen.readHeader = readHeader;
    EXPECT_EQ(process(archive, abi::kTest, nullptr), 0);
    EXPECT_EQ(seen.innerCode, 129);
    seen.readHeader = nullptr;
    EXPECT_STREQ(header(archive).fileName, "b") << "the walk is where it was";
    close(archive);
}

class UnAceVolumes : public UnAceRecord {
protected:
    UnAceVolumes() {
        const std::string content = "The quick brown fox";
        write(folder / "x.ace",
              aceArchive(
                  {.flags = 0x0900},
                  {{.name = "fox", .packed = content.substr(0, 5), .flags = 0x2001, .originalSize = content.size()}}));
        second = aceArchive({.flags = 0x0900, .volume = 1},
                            {{.name = "fox", .content = content, .packed = content.substr(5), .flags = 0x1001}});
    }
    std::string second;
};

TEST_F(UnAceVolumes, AreTold) {
    write(folder / "x.c00", second);
    abi::OpenArchiveData record{};
    const ArchiveHandle archive = openWith(folder / "x.ace", record);
    const abi::HeaderData fox = header(archive);
    EXPECT_EQ(+fox.packedSize, 19U) << "of both parts";
    EXPECT_EQ(+fox.flags, 0x2001U);
    EXPECT_EQ(process(archive, abi::kTest, nullptr), 0);
    EXPECT_EQ(seen.data, "The quick brown fox");
    ASSERT_FALSE(seen.volumes.empty());
    EXPECT_EQ(seen.volumes.back(), "opened x.c00");
    close(archive);
}

TEST_F(UnAceVolumes, AreAskedFor) {
    abi::OpenArchiveData record{};
    const ArchiveHandle archive = openWith(folder / "x.ace", record);
    header(archive);
    EXPECT_EQ(process(archive, abi::kTest, nullptr), 255);
    EXPECT_EQ(seen.volumes, (std::vector<std::string>{"wants x.c00"}));
    close(archive);
}

TEST_F(UnAceVolumes, MayHaveOtherNames) {
    write(folder / "elsewhere", second);
    abi::OpenArchiveData record{};
    const ArchiveHandle archive = openWith(folder / "x.ace", record);
    header(archive);
    seen.otherName = text(folder / "elsewhere");
    EXPECT_EQ(process(archive, abi::kTest, nullptr), 0);
    EXPECT_EQ(seen.data, "The quick brown fox");
    close(archive);
}

TEST_F(UnAceVolumes, AreMissedWithoutACallback) {
    std::int32_t result = -1;
    const ArchiveHandle archive = openFile(folder / "x.ace", result);
    header(archive);
    EXPECT_EQ(process(archive, abi::kTest, nullptr), 5);
    abi::HeaderData data{};
    EXPECT_EQ(readHeader(archive, &data), 5);
}

}  // namespace
}  // namespace archiver::test
