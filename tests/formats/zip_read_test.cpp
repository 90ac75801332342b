#include <gtest/gtest.h>

#include "archivers/formats/zip/zip_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/zip_builder.h"

namespace archiver::test {
namespace {

std::string againText() {
    std::string text;
    for (int line = 0; line < 40; ++line) text += "The same line again and again.\n";
    return text;
}

std::string pythonText() {
    std::string text;
    for (int line = 0; line < 20; ++line) text += "Python wrote this. ";
    return text;
}

void expectContent(ArchiveReader& reader, std::string_view name, std::string_view content) {
    const Unpacked member = unpack(reader, name);
    EXPECT_EQ(member.code, kOk) << name;
    EXPECT_EQ(member.bytes, content) << name;
}

TEST(ZipRead, UnpacksWhatZipPacked) {
    for (const char* archive : {"zip", "zip64", "stream", "prefixed", "adjusted", "trailing"}) {
        const OpenResult opened = openZip(dataFile(std::string("zip/") + archive + ".zip"));
        ASSERT_TRUE(opened.reader) << archive;
        expectContent(*opened.reader, "readme.txt", "Hello, archive.\n");
        expectContent(*opened.reader, "docs/again.txt", againText());
        expectContent(*opened.reader, "docs/empty.txt", "");
        expectContent(*opened.reader, "docs/old notes/", "");
        expectContent(*opened.reader, "docs/old notes/my file.txt", "A name with blanks.\n");
    }
}

TEST(ZipRead, UnpacksWhatOthersPacked) {
    const OpenResult seven = openZip(dataFile("zip/7zz.zip"));
    ASSERT_TRUE(seven.reader);
    expectContent(*seven.reader, "docs/again.txt", againText());
    const OpenResult python = openZip(dataFile("zip/python.zip"));
    ASSERT_TRUE(python.reader);
    for (const char* name : {"stored.txt", "deflated.txt", "bzip2.txt"}) {
        expectContent(*python.reader, name, pythonText());
    }
    const OpenResult methods = openZip(dataFile("zip/methods.zip"));
    ASSERT_TRUE(methods.reader);
    expectContent(*methods.reader, "BZip2.txt", againText());
}

TEST(ZipRead, RefusesMethodsThatAreNotSupported) {
    const OpenResult opened = openZip(dataFile("zip/methods.zip"));
    ASSERT_TRUE(opened.reader);
    for (const char* name : {"Deflate64.txt", "PPMd.txt"}) {
        const Unpacked member = unpack(*opened.reader, name);
        EXPECT_EQ(member.code, kMethod) << name;
        EXPECT_EQ(member.bytes, "");
    }
}

TEST(ZipRead, AsksForAPassword) {
    for (const char* archive : {"zip/zipcrypto.zip", "zip/aes.zip"}) {
        const OpenResult opened = openZip(dataFile(archive));
        ASSERT_TRUE(opened.reader) << archive;
        const Unpacked member = unpack(*opened.reader, "docs/again.txt");
        EXPECT_EQ(member.code, kPasswordFile) << archive;
        EXPECT_EQ(member.bytes, "");
    }
}

TEST(ZipRead, AnotherMembersOddHeaderDoesNoHarm) {
    // Its flag promises UTF-8 and its extra field reaches too far: reasons to refuse a whole archive, for some.
    const std::string odd = ZipBuilder::number16(0x9901) + ZipBuilder::number16(99) + "x";
    const OpenResult opened = openZip(inMemory(ZipBuilder()
                                                   .add({.name = "\xFF\xFE", .flags = 0x800, .extra = odd})
                                                   .add({.name = "good.txt", .content = "good content"})
                                                   .build()));
    ASSERT_TRUE(opened.reader);
    expectContent(*opened.reader, "good.txt", "good content");
}

TEST(ZipRead, StoredArchiveInsideAnArchiveComesOutWhole) {
    const std::string inner =
        ZipBuilder().add({.name = "inner.txt", .content = "x"}).comment("the inner comment").build();
    const OpenResult opened = openZip(inMemory(ZipBuilder().add({.name = "inner.zip", .content = inner}).build()));
    ASSERT_TRUE(opened.reader);
    expectContent(*opened.reader, "inner.zip", inner);
}

TEST(ZipRead, LargeMemberComesInPieces) {
    std::string content;
    for (int index = 0; index < 100000; ++index) content += std::to_string(index) + ' ';
    const OpenResult opened = openZip(inMemory(ZipBuilder().add({.name = "large", .content = content}).build()));
    ASSERT_TRUE(opened.reader);
    expectContent(*opened.reader, "large", content);
}

TEST(ZipRead, FindsAWrongChecksum) {
    std::string bytes = ZipBuilder().add({.name = "a", .content = "content"}).build();
    bytes[bytes.find("content")] = 'C';
    const OpenResult opened = openZip(inMemory(bytes));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(unpack(*opened.reader, "a").code, kFileCrc);
}

TEST(ZipRead, FindsDamageInDeflatedData) {
    const std::string good = readFile(dataFile("zip/zip.zip"));
    const std::size_t name = good.find("docs/again.txt");
    const std::size_t extraSize = static_cast<unsigned char>(good[name - 2]);
    const std::size_t data = name + 14 + extraSize;
    for (std::size_t index = 0; index < 40; ++index) {  // its packed size
        std::string bytes = good;
        bytes[data + index] = static_cast<char>(bytes[data + index] ^ 0x10);
        const OpenResult opened = openZip(inMemory(bytes));
        ASSERT_TRUE(opened.reader);
        const Unpacked member = unpack(*opened.reader, "docs/again.txt");
        if (index == 39 && member.code == kOk) {
            EXPECT_EQ(member.bytes, againText());  // a bit behind the data's last one
            continue;
        }
        EXPECT_TRUE(member.code == kFileCrc || member.code == kCannotRead) << index << " " << member.code;
    }
}

TEST(ZipRead, SizeThatIsTooLargeOrTooSmallIsFound) {
    for (const std::uint64_t size : {6, 8}) {
        const OpenResult opened =
            openZip(inMemory(ZipBuilder().add({.name = "a", .content = "content", .originalSize = size}).build()));
        ASSERT_TRUE(opened.reader);
        EXPECT_EQ(unpack(*opened.reader, "a").code, size < 7 ? kFileCrc : kCannotRead);
    }
}

TEST(ZipRead, ClaimedSizeTakesNoMemory) {
    constexpr std::uint64_t kClaimed = std::uint64_t{1} << 46;
    const BuiltMember member{.name = "a", .content = "content", .sizesInZip64 = true, .originalSize = kClaimed};
    const OpenResult opened = openZip(inMemory(ZipBuilder().add(member).build()));
    ASSERT_TRUE(opened.reader);
    Member listed;
    ASSERT_EQ(opened.reader->next(listed), kOk);
    EXPECT_EQ(listed.originalSize, kClaimed);
    EXPECT_EQ(unpack(*opened.reader, "a").code, kCannotRead);
}

TEST(ZipRead, DataThatIsNotThereIsAnError) {
    const std::string good = ZipBuilder().add({.name = "a", .content = "content"}).build();
    const std::size_t header = good.find("PK\x01\x02");
    std::string longer = good;
    longer[header + 22] = 1;  // 65536 packed bytes more
    const OpenResult cut = openZip(inMemory(longer));
    ASSERT_TRUE(cut.reader);
    EXPECT_EQ(unpack(*cut.reader, "a").code, kCannotRead);

    std::string elsewhere = good;
    elsewhere[header + 42] = 3;
    const OpenResult wrong = openZip(inMemory(elsewhere));
    ASSERT_TRUE(wrong.reader);
    EXPECT_EQ(unpack(*wrong.reader, "a").code, kHeaderBroken);

    std::string outside = good;
    outside[header + 45] = '\x7F';
    const OpenResult far = openZip(inMemory(outside));
    ASSERT_TRUE(far.reader);
    EXPECT_EQ(unpack(*far.reader, "a").code, kHeaderBroken);
}

TEST(ZipRead, SinkCanStop) {
    const OpenResult opened = openZip(dataFile("zip/zip.zip"));
    ASSERT_TRUE(opened.reader);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(opened.reader->read([](const char*, std::size_t) { return false; }), kUserCancel);
    EXPECT_EQ(opened.reader->next(member), kOk);  // and the walk goes on
}

TEST(ZipRead, RefusesMethodsByTheirNumbers) {
    for (const std::uint16_t method : {1, 6, 9, 14, 18, 19, 93, 95, 96, 97, 98, 1000}) {
        const OpenResult opened =
            openZip(inMemory(ZipBuilder().add({.name = "a", .content = "content", .method = method}).build()));
        ASSERT_TRUE(opened.reader);
        EXPECT_EQ(unpack(*opened.reader, "a").code, kMethod) << method;
    }
}

BuiltMember deflatedMember(const std::string& content) {
    return {.name = "a",
            .content = ZipBuilder::deflateStored(content),
            .method = 8,
            .originalSize = content.size(),
            .crc = ZipBuilder::crcOf(content)};
}

TEST(ZipRead, DeflatedMemberOfAnySizeComesOutWhole) {
    for (const std::size_t size : {0U, 1U, 65535U, 65536U, 3U << 20, 20U << 20}) {  // the last one in pieces
        std::string content(size, 'x');
        for (std::size_t index = 0; index < size; index += 1000) content[index] = static_cast<char>(index >> 10);
        const OpenResult opened = openZip(inMemory(ZipBuilder().add(deflatedMember(content)).build()));
        ASSERT_TRUE(opened.reader);
        const Unpacked member = unpack(*opened.reader, "a");
        EXPECT_EQ(member.code, kOk) << size;
        EXPECT_TRUE(member.bytes == content) << size;
    }
}

TEST(ZipRead, DeflatedDataThatDoesNotKeepItsPromisesIsRefused) {
    const std::string content(100, 'x');
    const auto codeOf = [](const BuiltMember& member) {
        const OpenResult opened = openZip(inMemory(ZipBuilder().add(member).build()));
        return opened.reader ? unpack(*opened.reader, "a").code : opened.code;
    };
    for (const std::size_t size : {std::size_t{100}, std::size_t{20} << 20}) {  // in memory, and in pieces
        const std::string original(size, 'x');
        BuiltMember member = deflatedMember(original);
        EXPECT_EQ(codeOf(member), kOk);
        member.originalSize = size - 1;
        EXPECT_EQ(codeOf(member), kFileCrc);
        member.originalSize = size + 1;
        EXPECT_EQ(codeOf(member), kCannotRead);
        member.originalSize = size;
        member.crc = *member.crc ^ 1;
        EXPECT_EQ(codeOf(member), kFileCrc);
        member = deflatedMember(original);
        member.content[0] = '\x07';  // a block type that does not exist
        EXPECT_EQ(codeOf(member), kFileCrc);
        member = deflatedMember(original);
        member.content.resize(member.content.size() - 1);
        EXPECT_TRUE(codeOf(member) == kCannotRead || codeOf(member) == kFileCrc) << codeOf(member);
        member = deflatedMember(original);
        member.content += "foreign bytes";
        EXPECT_EQ(codeOf(member), kOk);
    }
}

TEST(ZipRead, SinkCanStopALargeMember) {
    const std::string content(20U << 20, 'x');
    const OpenResult opened = openZip(inMemory(ZipBuilder().add(deflatedMember(content)).build()));
    ASSERT_TRUE(opened.reader);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    int calls = 0;
    EXPECT_EQ(opened.reader->read([&](const char*, std::size_t) { return ++calls < 3; }), kUserCancel);
    EXPECT_EQ(calls, 3);
}

TEST(ZipRead, NeedsACurrentMember) {
    const OpenResult opened = openZip(dataFile("zip/zip.zip"));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(unpack(*opened.reader).code, kNotSearchMode);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(unpack(*opened.reader).code, kOk);
    EXPECT_EQ(unpack(*opened.reader).code, kNotSearchMode);  // once a member
}

}  // namespace
}  // namespace archiver::test
