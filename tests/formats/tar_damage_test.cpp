#include <gtest/gtest.h>

#include <random>

#include "archivers/formats/tar/tar_format.h"
#include "archivers/formats/utf8.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/tar_builder.h"
#include "formats/support/zip_builder.h"

/// Archives that are none, or no longer.
namespace archiver::test {
namespace {

struct Outcome {
    ReturnCode open = kOk;
    ReturnCode end = kOk;   ///< of the walk
    ReturnCode read = kOk;  ///< the first that was not kOk
};

/// Lists and unpacks everything; whatever the bytes are, it ends with a code that says something.
Outcome exhaust(const std::string& bytes) {
    Outcome outcome;
    const OpenResult opened = openTar(inMemory(bytes), "x.gz");
    outcome.open = opened.code;
    EXPECT_EQ(opened.reader == nullptr, opened.code != kOk);
    if (!opened.reader) return outcome;
    Member member;
    while ((outcome.end = opened.reader->next(member)) == kOk) {
        EXPECT_TRUE(isUtf8(member.name));
        std::uint64_t total = 0;
        const ReturnCode code = opened.reader->read([&](const char*, std::size_t size) {
            total += size;
            return total < (std::uint64_t{1} << 24);  // a sparse file may claim to be as large as it likes
        });
        if (outcome.read == kOk) outcome.read = code;
    }
    return outcome;
}

TEST(TarDamage, EmptyFileIsNoArchive) {
    EXPECT_EQ(exhaust("").open, kFileStyle);
    const TemporaryFolder folder;
    EXPECT_EQ(openTar(folder.write("empty.tar", "")).code, kFileStyle);
}

TEST(TarDamage, OtherFilesAreNoArchives) {
    EXPECT_EQ(exhaust("Some text.").open, kFileStyle);
    EXPECT_EQ(exhaust(std::string(600, 'x')).open, kFileStyle);
    EXPECT_EQ(exhaust(readFile(dataFile("zip/zip.zip"))).open, kFileStyle);
    EXPECT_EQ(exhaust("BZhello").open, kFileStyle);
    EXPECT_EQ(exhaust("BZh9 is not enough").open, kFileStyle);
}

TEST(TarDamage, ZerosAloneAreNoArchiveUnlessTheyEndOne) {
    EXPECT_EQ(exhaust(std::string(512, '\0')).open, kFileStyle);
    EXPECT_EQ(exhaust(std::string(1000, '\0')).open, kFileStyle);
    EXPECT_EQ(exhaust(std::string(1025, '\0')).open, kFileStyle);
    EXPECT_EQ(exhaust(std::string((1 << 20) + 512, '\0')).open, kFileStyle);
    EXPECT_EQ(exhaust(std::string(32768, '\0') + "a disk image").open, kFileStyle);
}

TEST(TarDamage, RandomBytesAreNoArchive) {
    std::mt19937 random(12345);
    for (int round = 0; round < 20; ++round) {
        std::string bytes(static_cast<std::size_t>(random() % 100000), '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        EXPECT_EQ(exhaust(bytes).open, kFileStyle);
    }
}

TEST(TarDamage, RandomBytesBehindAMagicAreRefusedOrUnreadable) {
    std::mt19937 random(4711);
    for (const char* magic : {"\x1F\x8B\x08", "\x1F\x9D\x90", "BZh91AY&SY"}) {
        for (int round = 0; round < 20; ++round) {
            std::string bytes(static_cast<std::size_t>(random() % 10000), '\0');
            for (char& byte : bytes) byte = static_cast<char>(random());
            const Outcome outcome = exhaust(magic + bytes);
            if (magic[1] == '\x9D') continue;  // anything can be a compress file
            EXPECT_TRUE(outcome.open != kOk || outcome.read != kOk);
        }
    }
}

TEST(TarDamage, FolderIsNoArchive) {
    const TemporaryFolder folder;
    EXPECT_EQ(openTar(folder.path()).code, kArcFileOpen);
    EXPECT_EQ(openTar(folder.path() / "missing.tar").code, kNotFindArcFile);
}

TEST(TarDamage, CutTarSaysSo) {
    const std::string whole = readFile(dataFile("tar/ustar.tar"));
    const std::size_t endBlocks = whole.size() - 1024;
    for (std::size_t size = 1; size < whole.size(); ++size) {
        const Outcome outcome = exhaust(whole.substr(0, size));
        if (size < 512) {
            EXPECT_EQ(outcome.open, kFileStyle) << size;
            continue;
        }
        EXPECT_EQ(outcome.open, kOk) << size;
        if (size >= endBlocks + 512) {
            EXPECT_EQ(outcome.end, kNoMoreEntries) << size;
        } else if (size % 512 != 0) {
            EXPECT_EQ(outcome.end, kHeaderBroken) << size;
        } else {
            // Between two members nothing is seen to be missing: the end blocks are not always written.
            EXPECT_TRUE(outcome.end == kHeaderBroken || outcome.end == kNoMoreEntries) << size;
        }
    }
}

TEST(TarDamage, CutInsideAMemberIsFoundByTheWalkAndByReading) {
    const std::string cut = (tarMember("a", std::string(3000, 'x')) + tarEnd()).substr(0, 1500);
    const Listing listing = walk(openTar(inMemory(cut), "x.tar"));
    EXPECT_EQ(listing.names(), std::vector<std::string>{"a"});
    EXPECT_EQ(listing.end, kHeaderBroken);
    const OpenResult opened = openTar(inMemory(cut), "x.tar");
    ASSERT_TRUE(opened.reader);
    const Unpacked member = unpack(*opened.reader, "a");
    EXPECT_EQ(member.code, kCannotRead);
    EXPECT_EQ(member.bytes, std::string(1500 - 512, 'x'));
}

TEST(TarDamage, DamagedHeaderEndsTheWalkBehindTheGoodMembers) {
    std::string bytes = tarMember("a", "x") + tarMember("b", "x") + tarEnd();
    bytes[1024 + 3] = 'X';
    const Listing listing = walk(openTar(inMemory(bytes), "x.tar"));
    EXPECT_EQ(listing.names(), std::vector<std::string>{"a"});
    EXPECT_EQ(listing.end, kHeaderBroken);
}

TEST(TarDamage, CutGzipSaysSo) {
    for (const char* name : {"tar/ustar.tgz", "tar/named.gz"}) {
        const std::string whole = readFile(dataFile(name));
        for (std::size_t size = 2; size < whole.size(); ++size) {
            const Outcome outcome = exhaust(whole.substr(0, size));
            EXPECT_TRUE(outcome.open == kHeaderBroken || outcome.end == kCannotRead || outcome.read == kCannotRead)
                << name << " " << size;
        }
    }
}

TEST(TarDamage, CutBzip2SaysSo) {
    for (const char* name : {"tar/ustar.tbz", "tar/again.txt.bz2"}) {
        const std::string whole = readFile(dataFile(name));
        for (std::size_t size = 3; size < whole.size(); ++size) {
            const Outcome outcome = exhaust(whole.substr(0, size));
            EXPECT_TRUE(outcome.open != kOk || outcome.end == kCannotRead || outcome.read == kCannotRead)
                << name << " " << size << " " << outcome.end << " " << outcome.read;
        }
    }
}

TEST(TarDamage, CutCompressDoesNoHarm) {
    for (const char* name : {"tar/ustar.taz", "tar/again.txt.Z"}) {
        const std::string whole = readFile(dataFile(name));
        for (std::size_t size = 2; size < whole.size(); ++size) exhaust(whole.substr(0, size));
    }
}

TEST(TarDamage, GzipChecksumIsLookedAt) {
    for (const char* name : {"tar/named.gz", "tar/ustar.tgz"}) {
        for (const std::size_t fromEnd : {8U, 4U}) {  // the checksum, the length
            std::string bytes = readFile(dataFile(name));
            bytes[bytes.size() - fromEnd] = static_cast<char>(bytes[bytes.size() - fromEnd] ^ 1);
            const Outcome outcome = exhaust(bytes);
            EXPECT_EQ(outcome.open, kOk);
            // A member of a tar is good as far as one can tell; the file as a whole is not.
            EXPECT_EQ(std::string_view(name) == "tar/named.gz" ? outcome.read : outcome.end, kFileCrc) << name;
        }
    }
}

TEST(TarDamage, Bzip2ChecksumIsLookedAt) {
    std::string bytes = readFile(dataFile("tar/again.txt.bz2"));
    bytes[10] = static_cast<char>(bytes[10] ^ 1);  // of the first block
    const Outcome outcome = exhaust(bytes);
    EXPECT_EQ(outcome.open, kOk);
    EXPECT_EQ(outcome.read, kFileCrc);
}

TEST(TarDamage, ABitOfAnyByteMayBeWrong) {
    for (const char* name :
         {"tar/v7.tar", "tar/ustar.tgz", "tar/ustar.taz", "tar/ustar.tbz", "tar/named.gz", "tar/again.txt.Z"}) {
        const std::string good = readFile(dataFile(name));
        for (std::size_t index = 0; index < good.size(); ++index) {
            std::string bytes = good;
            bytes[index] = static_cast<char>(bytes[index] ^ 1 << index % 8);
            exhaust(bytes);
        }
    }
}

TEST(TarDamage, AnyBytesMayBeWrong) {
    std::mt19937 random(54321);
    for (const char* name : {"tar/gnu.tar", "tar/pax.tar", "tar/latin.tar"}) {
        const std::string good = readFile(dataFile(name));
        for (int round = 0; round < 1000; ++round) {
            std::string bytes = good;
            for (int change = 0; change < 3; ++change) bytes[random() % bytes.size()] = static_cast<char>(random());
            exhaust(bytes);
        }
    }
}

TEST(TarDamage, FileThatWasCompressedTwiceByCompressIsRefused) {
    const OpenResult opened = openTar(dataFile("tar/twice.Z"));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(unpack(*opened.reader, "twice").code, kNotSupport);
}

TEST(GzipDamage, InAnyByteOfTheTrailerIsFound) {
    // Once longer than what is unpacked at a time, and two parts behind each other.
    for (const std::size_t size : {std::size_t{10}, std::size_t{1000000}}) {
        const std::string content(size, 'x');
        const std::string header("\x1F\x8B\x08\0\0\0\0\0\0\x03", 10);
        const std::string part = header + ZipBuilder::deflateStored(content) +
                                 ZipBuilder::number32(ZipBuilder::crcOf(content)) + ZipBuilder::number32(size);
        const std::string good = part + part;
        const auto codeOf = [](std::string bytes) {
            const OpenResult opened = openTar(inMemory(std::move(bytes)), "x.gz");
            if (!opened.reader) return opened.code;
            Member member;
            if (const ReturnCode code = opened.reader->next(member); code != kOk) return code;
            return unpack(*opened.reader).code;
        };
        EXPECT_EQ(codeOf(good), kOk);
        for (const std::size_t end : {part.size(), good.size()}) {
            for (std::size_t back = 1; back <= 8; ++back) {
                std::string bytes = good;
                bytes[end - back] = static_cast<char>(bytes[end - back] ^ 1);
                EXPECT_EQ(codeOf(bytes), kFileCrc) << size << " " << end << " " << back;
            }
        }
    }
}

}  // namespace
}  // namespace archiver::test
