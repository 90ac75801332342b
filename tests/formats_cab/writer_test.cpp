#include "archivers/formats/cab/cabinet_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "archivers/formats/cab/block_packer.h"
#include "archivers/formats/cab/cab_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_cab/support/cab_builder.h"

namespace archiver::test {
namespace {

constexpr DosStamp kStamp{.date = 0x2AB1, .time = 0x8BDD};  // 2001-05-17 17:30:58
constexpr std::uint64_t kLongestFolder = 0x7FFF8000;        // 65,535 blocks of 32,768 bytes

class MemoryOutput final : public CabinetOutput {
public:
    ReturnCode append(std::span<const char> more) override {
        if (bytes.size() + more.size() > room) return kDiskSpace;
        bytes.append(more.begin(), more.end());
        return kOk;
    }
    ReturnCode patch(std::uint64_t offset, std::span<const char> instead) override {
        if (patchFails) return kCannotWrite;
        EXPECT_LE(offset + instead.size(), bytes.size());
        std::copy(instead.begin(), instead.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
        return kOk;
    }
    std::string bytes;
    std::size_t room = std::size_t{1} << 30;
    bool patchFails = false;
};

struct Source {
    std::string name;
    std::string content = {};
    std::uint8_t attributes = attribute::kArchive;
};

std::vector<CabinetMember> membersOf(const std::vector<Source>& sources) {
    std::vector<CabinetMember> members;
    for (const Source& source : sources) {
        members.push_back({source.name, source.content.size(), kStamp, source.attributes});
    }
    return members;
}

ReturnCode writeAll(CabinetWriter& writer, const std::vector<Source>& sources) {
    ReturnCode code = writer.begin(membersOf(sources));
    for (std::size_t i = 0; code == kOk && i < sources.size(); ++i) {
        code = writer.member(i);
        if (code == kOk) code = writer.write(sources[i].content);
    }
    return code == kOk ? writer.finish() : code;
}

std::string cabinetOf(const std::vector<Source>& sources, CabinetMethod method = CabinetMethod::kMsZip,
                      unsigned threads = 1) {
    MemoryOutput output;
    CabinetWriter writer(output, method, threads);
    EXPECT_EQ(writeAll(writer, sources), kOk);
    EXPECT_EQ(writer.bytes(), output.bytes.size());
    return output.bytes;
}

std::string noise(std::size_t size, unsigned seed = 1) {
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    return bytes;
}

std::string sentences(std::size_t size) {
    std::string text;
    for (unsigned line = 0; text.size() < size; ++line) {
        text += "Line " + std::to_string(line * 7919 % 10007) + " of a text that goes on and on.\r\n";
    }
    text.resize(size);
    return text;
}

void expectHolds(const std::string& cabinet, const std::vector<Source>& sources) {
    OpenResult opened = openCab(inMemory(cabinet), {});
    ASSERT_EQ(opened.code, kOk);
    for (const Source& source : sources) {
        Member member;
        ASSERT_EQ(opened.reader->next(member), kOk);
        EXPECT_EQ(member.name, source.name);
        EXPECT_EQ(member.originalSize, source.content.size());
        const Unpacked unpacked = unpack(*opened.reader);
        EXPECT_EQ(unpacked.code, kOk) << source.name;
        EXPECT_TRUE(unpacked.bytes == source.content) << source.name;
    }
    Member member;
    EXPECT_EQ(opened.reader->next(member), kNoMoreEntries);
}

TEST(CabWriter, WritesEveryFieldWhereItBelongs) {
    EXPECT_EQ(
        cabinetOf({{"a.txt", "first"}, {"docs\\b.txt", "second!", 0x27}}, CabinetMethod::kStored),
        cabinetBytes({.folders = {{.members = {{.name = "a.txt", .content = "first"},
                                               {.name = "docs\\b.txt", .content = "second!", .attributes = 0x27}}}},
                      .setId = 0}));
}

TEST(CabWriter, StoresBlocksOfTheirFullSize) {
    const std::string content = noise(100000);
    EXPECT_EQ(cabinetOf({{"a", content}}, CabinetMethod::kStored),
              cabinetBytes({.folders = {{.members = {{.name = "a", .content = content}}}}, .setId = 0}));
}

TEST(CabWriter, StoresInsideMsZipWhatDoesNotShrink) {
    const std::string content = noise(32768 + 100);
    const std::vector<CabBlock> blocks{mszipBlock(content.substr(0, 32768)), mszipBlock(content.substr(32768))};
    EXPECT_EQ(
        cabinetOf({{"a", content}}),
        cabinetBytes({.folders = {{.members = {{.name = "a", .content = content}}, .method = 1, .blocks = blocks}},
                      .setId = 0}));
}

TEST(CabWriter, MarksNamesThatAreUtf8) {
    const std::string cabinet =
        cabinetOf({{"Gr\xC3\xB6\xC3\x9F"
                    "e.txt",
                    "x"}});
    // Behind the header of 36 bytes and the row of the only folder; the attributes stand at byte 14 of the row.
    EXPECT_EQ(cabinet[36 + 8 + 14], static_cast<char>(0xA0));
    EXPECT_EQ(cabinetOf({{"plain", "x"}})[36 + 8 + 14], 0x20);
    expectHolds(cabinet, {{"Gr\xC3\xB6\xC3\x9F"
                           "e.txt",
                           "x"}});
}

TEST(CabWriter, KeepsTheAttributesThatACabinetHas) {
    EXPECT_EQ(cabinetOf({{"a", "x", 0xFF}})[36 + 8 + 14], 0x27) << "neither folder nor label, device or temporary";
}

TEST(CabWriter, PacksMembersOfAllSizes) {
    std::vector<Source> sources;
    for (const std::size_t size : {0u, 1u, 100u, 32767u, 32768u, 32769u, 65536u, 300000u}) {
        sources.push_back({"text" + std::to_string(size), sentences(size)});
        sources.push_back({"noise" + std::to_string(size), noise(size)});
    }
    for (const unsigned threads : {1u, 4u}) expectHolds(cabinetOf(sources, CabinetMethod::kMsZip, threads), sources);
    expectHolds(cabinetOf(sources, CabinetMethod::kStored), sources);
}

TEST(CabWriter, GivesTheSameBytesWithAnyNumberOfThreads) {
    const std::vector<Source> sources{{"a", sentences(3000000)}, {"b", noise(200000)}};
    const std::string one = cabinetOf(sources, CabinetMethod::kMsZip, 1);
    EXPECT_TRUE(one == cabinetOf(sources, CabinetMethod::kMsZip, 2));
    EXPECT_TRUE(one == cabinetOf(sources, CabinetMethod::kMsZip, 7));
}

TEST(CabWriter, FindsInABlockWhatTheBlockBeforeHolds) {
    const std::string once = noise(32000);
    const std::string content = once + once;
    EXPECT_LT(cabinetOf({{"a", content}}).size(), 34000u) << "the second half as a copy of the first";
}

TEST(CabWriter, PacksListsOfNumbersAsTightlyAsWithoutABlockBefore) {
    std::string list;
    for (int number = 1; number <= 100000; ++number) list += std::to_string(number) + '\n';
    const std::vector<Source> sources{{"numbers", list}};
    const std::string cabinet = cabinetOf(sources);
    // Deflated by itself each block of this list takes 204,993 bytes in all, as `gcab -c -z` does it.
    EXPECT_LT(cabinet.size(), 204993u);
    expectHolds(cabinet, sources);
    EXPECT_TRUE(cabinet == cabinetOf(sources, CabinetMethod::kMsZip, 3));
}

TEST(CabWriter, PacksOrderlessNumbers) {
    std::string digits = noise(70000);
    for (char& byte : digits) byte = static_cast<char>('0' + (byte & 7));
    expectHolds(cabinetOf({{"digits", digits}}), {{"digits", digits}});
}

TEST(CabWriter, WritesACabinetWithoutMembers) {
    const std::string cabinet = cabinetOf({});
    EXPECT_EQ(cabinet, cabinetBytes({.folders = {}, .setId = 0}));
    EXPECT_EQ(cabinet.size(), 36u);
}

TEST(CabWriter, WritesACabinetOfEmptyMembers) { expectHolds(cabinetOf({{"a"}, {"b"}}), {{"a"}, {"b"}}); }

TEST(CabWriter, LeavesOutMembersThatAreNotBegun) {
    MemoryOutput output;
    CabinetWriter writer(output, CabinetMethod::kMsZip, 1);
    ASSERT_EQ(writer.begin(membersOf({{"a", "gone"}, {"b", "here"}, {"c", "gone"}})), kOk);
    ASSERT_EQ(writer.member(1), kOk);
    ASSERT_EQ(writer.write(std::string_view("here")), kOk);
    ASSERT_EQ(writer.finish(), kOk);
    expectHolds(output.bytes, {{"b", "here"}});
}

TEST(CabWriter, DropsAMemberThatWasBegun) {
    MemoryOutput output;
    CabinetWriter writer(output, CabinetMethod::kMsZip, 1);
    const std::string half = sentences(40000);
    ASSERT_EQ(writer.begin(membersOf({{"a", sentences(80000)}, {"b", "here"}})), kOk);
    ASSERT_EQ(writer.member(0), kOk);
    ASSERT_EQ(writer.write(half), kOk);
    writer.drop();
    ASSERT_EQ(writer.member(1), kOk);
    ASSERT_EQ(writer.write(std::string_view("here")), kOk);
    ASSERT_EQ(writer.finish(), kOk);
    expectHolds(output.bytes, {{"b", "here"}});
}

TEST(CabWriter, StoresAFileThatGrowsAsItWasFound) {
    MemoryOutput output;
    CabinetWriter writer(output, CabinetMethod::kMsZip, 1);
    ASSERT_EQ(writer.begin(membersOf({{"log", "12345"}, {"b", "here"}})), kOk);
    ASSERT_EQ(writer.member(0), kOk);
    ASSERT_EQ(writer.write(std::string_view("123")), kOk);
    ASSERT_EQ(writer.write(std::string_view("45678")), kOk);
    EXPECT_EQ(writer.memberBytes(), 5u);
    ASSERT_EQ(writer.write(std::string_view("9")), kOk);
    ASSERT_EQ(writer.member(1), kOk);
    ASSERT_EQ(writer.write(std::string_view("here")), kOk);
    ASSERT_EQ(writer.finish(), kOk);
    expectHolds(output.bytes, {{"log", "12345"}, {"b", "here"}});
}

TEST(CabWriter, StoresAFileThatShrinksAsItIs) {
    MemoryOutput output;
    CabinetWriter writer(output, CabinetMethod::kMsZip, 1);
    ASSERT_EQ(writer.begin(membersOf({{"log", "12345"}, {"b", "here"}})), kOk);
    ASSERT_EQ(writer.member(0), kOk);
    ASSERT_EQ(writer.write(std::string_view("12")), kOk);
    ASSERT_EQ(writer.member(1), kOk);
    ASSERT_EQ(writer.write(std::string_view("here")), kOk);
    ASSERT_EQ(writer.finish(), kOk);
    expectHolds(output.bytes, {{"log", "12"}, {"b", "here"}});
}

TEST(CabWriter, BeginsAFolderWhereTheLastOneIsFull) {
    MemoryOutput output;
    CabinetWriter writer(output, CabinetMethod::kMsZip, 2);
    // Sizes as they were found; the files have become short since.
    ASSERT_EQ(writer.begin({{"a", kLongestFolder, kStamp, 0x20}, {"b", 10, kStamp, 0x20}, {"c", 5, kStamp, 0x20}}),
              kOk);
    const std::vector<Source> sources{{"a", sentences(50000)}, {"b", "second"}, {"c", "third"}};
    for (std::size_t i = 0; i < sources.size(); ++i) {
        ASSERT_EQ(writer.member(i), kOk);
        ASSERT_EQ(writer.write(sources[i].content), kOk);
    }
    ASSERT_EQ(writer.finish(), kOk);
    EXPECT_EQ(output.bytes[26], 2) << "folders";
    expectHolds(output.bytes, sources);
}

TEST(CabWriter, GivesEveryBlockItsChecksum) {
    std::string cabinet = cabinetOf({{"a", "something"}});
    cabinet.back() ^= 1;
    const OpenResult opened = openCab(inMemory(cabinet), {});
    EXPECT_EQ(unpack(*opened.reader, "a").code, kFileCrc);
}

TEST(CabWriter, EndsAtTheLongestCabinet) {
    const std::vector<Source> sources{{"a", noise(100)}};
    const std::size_t size = cabinetOf(sources, CabinetMethod::kStored).size();
    MemoryOutput output;
    CabinetWriter fits(output, CabinetMethod::kStored, 1, size);
    EXPECT_EQ(writeAll(fits, sources), kOk);
    CabinetWriter tooLong(output, CabinetMethod::kStored, 1, size - 1);
    EXPECT_EQ(writeAll(tooLong, sources), kTooBig);
    CabinetWriter noTables(output, CabinetMethod::kStored, 1, 40);
    EXPECT_EQ(writeAll(noTables, sources), kTooBig);
}

TEST(CabWriter, TellsWhatTheOutputSays) {
    const std::vector<Source> sources{{"a", noise(3000000)}};
    for (const std::size_t room : {10u, 1000u, 1000000u}) {
        MemoryOutput output;
        output.room = room;
        CabinetWriter writer(output, CabinetMethod::kMsZip, 3);
        EXPECT_EQ(writeAll(writer, sources), kDiskSpace);
    }
    MemoryOutput output;
    output.patchFails = true;
    CabinetWriter writer(output, CabinetMethod::kMsZip, 3);
    EXPECT_EQ(writeAll(writer, sources), kCannotWrite);
}

TEST(CabWriter, CanBeLeftAtAnyTime) {
    MemoryOutput output;
    CabinetWriter unused(output);
    CabinetWriter writer(output, CabinetMethod::kMsZip, 4);
    const std::string content = sentences(2000000);
    ASSERT_EQ(writer.begin(membersOf({{"a", content}})), kOk);
    ASSERT_EQ(writer.member(0), kOk);
    EXPECT_EQ(writer.write(content), kOk);
}

TEST(CabLayout, FillsFoldersToTheirLastBlock) {
    cab::CabinetLayout layout;
    EXPECT_EQ(cab::layOut({{"a", kLongestFolder - 1, {}, 0},
                           {"b", 1, {}, 0},
                           {"c", 1, {}, 0},
                           {"d", kLongestFolder, {}, 0},
                           {"e", 0, {}, 0}},
                          layout),
              kOk);
    EXPECT_EQ(layout.folders, (std::vector<std::uint16_t>{0, 0, 1, 2, 2}));
    EXPECT_EQ(layout.folderCount, 3);
    EXPECT_EQ(layout.frontBytes, 36u + 3 * 8 + 5 * (16 + 2));
}

TEST(CabLayout, RefusesWhatNoCabinetHolds) {
    cab::CabinetLayout layout;
    EXPECT_EQ(cab::layOut({{"a", kLongestFolder + 1, {}, 0}}, layout), kTooBig);
    EXPECT_EQ(cab::layOut({{std::string(255, 'a'), 0, {}, 0}}, layout), kOk);
    EXPECT_EQ(cab::layOut({{std::string(256, 'a'), 0, {}, 0}}, layout), kLongFileName);
    EXPECT_EQ(cab::layOut({{"", 0, {}, 0}}, layout), kNotFilename);
    EXPECT_EQ(cab::layOut({{std::string("a\0b", 3), 0, {}, 0}}, layout), kNotFilename);
    std::vector<CabinetMember> members(65535, {"a", 0, {}, 0});
    EXPECT_EQ(cab::layOut(members, layout), kOk);
    members.push_back({"a", 0, {}, 0});
    EXPECT_EQ(cab::layOut(members, layout), kTooManyFiles);
}

TEST(CabBlock, HasTheChecksumThatTheFormatDescribes) {
    EXPECT_EQ(cab::blockChecksum(std::string_view(""), 0), 0u);
    EXPECT_EQ(cab::blockChecksum(std::string_view("\x01\x02\x03\x04", 4), 0), 0x04030201u);
    EXPECT_EQ(cab::blockChecksum(std::string_view("\x01\x02\x03\x04\x10\x20\x30\x40", 8), 0), 0x44332211u);
    EXPECT_EQ(cab::blockChecksum(std::string_view("\x01", 1), 0), 0x01u);
    EXPECT_EQ(cab::blockChecksum(std::string_view("\x01\x02", 2), 0), 0x0102u);
    EXPECT_EQ(cab::blockChecksum(std::string_view("\x01\x02\x03", 3), 0), 0x010203u);
    EXPECT_EQ(cab::blockChecksum(std::string_view("\x01\x02\x03\x04", 4), 0xFF000000u), 0xFB030201u);
}

}  // namespace
}  // namespace archiver::test
