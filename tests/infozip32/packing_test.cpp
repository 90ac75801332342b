#include <gtest/gtest.h>
#include <zlib.h>

#include "archivers/formats/little_endian.h"
#include "archivers/formats/zip/deflater.h"
#include "archivers/formats/zip/header_writer.h"
#include "archivers/packing/source_system.h"
#include "formats/support/zip_builder.h"
#include "infozip32/support/zip_scene.h"

namespace archiver::test {
namespace {

std::string inflated(const std::string& packed, std::size_t size) {
    std::string plain(size + 1, '\0');
    z_stream stream{};
    EXPECT_EQ(::inflateInit2(&stream, -15), Z_OK);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(plain.data());
    stream.avail_out = static_cast<uInt>(plain.size());
    EXPECT_EQ(::inflate(&stream, Z_FINISH), Z_STREAM_END);
    EXPECT_EQ(stream.avail_in, 0U) << "nothing lies behind the end";
    plain.resize(plain.size() - stream.avail_out);
    ::inflateEnd(&stream);
    return plain;
}

TEST(Deflater, JoinsPartsOfEverySizeIntoOneText) {
    for (const int level : {1, 6, 9}) {
        zip::Deflater deflater(level);
        for (const std::size_t part : {1U, 2U, 3U, 7U, 100U, 1000U, 4096U, 70'000U}) {
            const std::string plain = textOfSize(part * 5 + 1) + noiseOfSize(part) + std::string(part, 'z');
            std::string packed;
            for (std::size_t at = 0; at < plain.size(); at += part) {
                const std::size_t size = std::min(part, plain.size() - at);
                const auto piece = deflater.pack(std::string_view(plain).substr(at, size), at + size == plain.size());
                packed.append(piece.data(), piece.size());
            }
            EXPECT_TRUE(inflated(packed, plain.size()) == plain) << level << ", " << part;
        }
    }
}

TEST(Deflater, CombinesChecksums) {
    EXPECT_EQ(zip::crcOf(0, std::string_view("123456789")), 0xCBF43926U);
    const std::uint32_t first = zip::crcOf(0, std::string_view("1234"));
    const std::uint32_t second = zip::crcOf(0, std::string_view("56789"));
    EXPECT_EQ(zip::combinedCrc(first, second, 5), 0xCBF43926U);
    EXPECT_EQ(zip::combinedCrc(first, 0, 0), first);
}

TEST(HeaderWriter, WritesSizesBeyondFourGiB) {
    zip::NewMember member;
    member.name = "x";
    member.originalSize = 0x1'2345'6789;
    member.packedSize = 0x1'0000'0000;
    member.localOffset = 0x2'0000'0001;
    member.crc = 0x11223344;
    member.large = true;
    const std::string local = zip::localHeaderOf(member);
    ASSERT_EQ(local.size(), 30U + 1 + 20);
    EXPECT_EQ(local.substr(4, 2), std::string("\x2D\0", 2)) << "needs version 4.5";
    EXPECT_EQ(local.substr(18, 8), std::string(8, '\xFF'));
    EXPECT_EQ(local.substr(31), std::string("\x01\0\x10\0\x89\x67\x45\x23\x01\0\0\0\0\0\0\0\x01\0\0\0", 20));
    const std::string central = zip::centralHeaderOf(member);
    ASSERT_EQ(central.size(), 46U + 1 + 28);
    EXPECT_EQ(central.substr(47), std::string("\x01\0\x18\0\x89\x67\x45\x23\x01\0\0\0\0\0\0\0\x01\0\0\0"
                                              "\x01\0\0\0\x02\0\0\0",
                                              28));
}

TEST(HeaderWriter, MovesHeadersAcrossFourGiBAndBack) {
    zip::NewMember member;
    member.name = "x";
    member.originalSize = member.packedSize = 5;
    member.localOffset = 7;
    const std::string near = zip::centralHeaderOf(member);
    const std::string far = zip::movedHeader(near, 0x1'0000'0002);
    ASSERT_EQ(far.size(), near.size() + 12);
    EXPECT_EQ(far.substr(42, 4), std::string(4, '\xFF'));
    EXPECT_EQ(far.substr(47), std::string("\x01\0\x08\0\x02\0\0\0\x01\0\0\0", 12));
    std::string back = zip::movedHeader(far, 7);
    EXPECT_EQ(little_endian::load32(back.data() + 42), 7U);
    EXPECT_EQ(back.size(), near.size());
}

TEST(HeaderWriter, WritesZip64EndRecordsOnlyWhereNeeded) {
    EXPECT_EQ(zip::endRecordsOf(3, 100, 200, "hi"),
              std::string("PK\x05\x06\0\0\0\0\x03\0\x03\0\xC8\0\0\0\x64\0\0\0\x02\0hi", 24));
    const std::string many = zip::endRecordsOf(65'535, 100, 200, {});
    ASSERT_EQ(many.size(), 56U + 20 + 22);
    EXPECT_TRUE(many.starts_with(std::string("PK\x06\x06\x2C\0\0\0\0\0\0\0", 12)));
    EXPECT_EQ(little_endian::load64(many.data() + 32), 65'535U);
    EXPECT_EQ(many.substr(56, 4), "PK\x06\x07");
    EXPECT_EQ(little_endian::load64(many.data() + 64), 300U) << "where the record is";
}

class Packing : public testing::Test {
protected:
    [[nodiscard]] std::uint16_t methodOfFirst() const {
        return little_endian::load16(scene_.archiveBytes().substr(8, 2).data());
    }
    ZipScene scene_;
};

TEST_F(Packing, PacksAtEveryLevel) {
    const std::string text = textOfSize(200'000);
    scene_.write("a.txt", text);
    for (const char level : std::string("0169")) {
        std::filesystem::remove(scene_.archive);
        scene_.options.level = level;
        ASSERT_EQ(scene_.run({"a.txt"}), 0);
        EXPECT_EQ(methodOfFirst(), level == '0' ? 0 : 8);
        EXPECT_TRUE(scene_.members().at("a.txt") == text);
        const std::size_t size = scene_.archiveBytes().size();
        EXPECT_TRUE(level == '0' ? size > text.size() : size < text.size() / 3) << level << ": " << size;
    }
}

TEST_F(Packing, PacksLargeFilesInPartsOfAnySize) {
    std::map<std::string, std::string> expected;
    for (const std::size_t size :
         {(2U << 20) - 1, 2U << 20, (2U << 20) + 1, (3U << 20) - 1, 3U << 20, (4U << 20) + 5}) {
        const std::string name = numbered("f", size);
        expected[name] = textOfSize(size);
        scene_.write(name, expected[name]);
    }
    ASSERT_EQ(scene_.run({"*.*"}), 0);
    EXPECT_TRUE(scene_.members() == expected);
}

TEST_F(Packing, StoresWhatDoesNotShrinkAtAnySize) {
    for (const std::size_t size : {0U, 1U, 1000U, 3U << 20}) {
        std::filesystem::remove(scene_.archive);
        scene_.write("noise", noiseOfSize(size));
        ASSERT_EQ(scene_.run({"noise"}), 0);
        EXPECT_EQ(methodOfFirst(), 0) << size;
        EXPECT_TRUE(scene_.members().at("noise") == noiseOfSize(size));
        EXPECT_LT(scene_.archiveBytes().size(), size + 200);
    }
}

TEST_F(Packing, StoresPackedFilesByTheirNamesUnlessAtTheHighestLevel) {
    scene_.write("a.LZH", textOfSize(1000));
    ASSERT_EQ(scene_.run({"a.LZH"}), 0);
    EXPECT_EQ(methodOfFirst(), 0);
    scene_.options.level = '9';
    ASSERT_EQ(scene_.run({"a.LZH"}), 0);
    EXPECT_EQ(methodOfFirst(), 8);
}

TEST_F(Packing, KeepsTheTimeToTheSecond) {
    scene_.write("a.txt", "a", 12'345);
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    const std::string bytes = scene_.archiveBytes();
    const std::size_t extra = 30 + 5;
    EXPECT_EQ(bytes.substr(extra, 5), std::string("UT\x05\0\x01", 5));
    const auto expected = systemSources().find(systemSources().absolute(scene_.path("a.txt")))->written->seconds;
    EXPECT_EQ(little_endian::load32(bytes.data() + extra + 5), static_cast<std::uint32_t>(expected));
    scene_.options.excludeExtra = 1;
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_EQ(scene_.archiveBytes().find("UT\x05"), std::string::npos);
}

}  // namespace
}  // namespace archiver::test
