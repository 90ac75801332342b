#include <gtest/gtest.h>

#include <clocale>

#include "archivers/formats/tar/tar_format.h"
#include "archivers/formats/utf8.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/tar_builder.h"

namespace archiver::test {
namespace {

using Names = std::vector<std::string>;

Names namesIn(const std::string& members) {
    const Listing listing = walk(openTar(inMemory(members + tarEnd()), "x.tar"));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    return listing.names();
}

TEST(TarNames, InUtf8PassAsTheyAre) {
    EXPECT_EQ(namesIn(tarMember("grün.txt", "") + tarMember("日本語.txt", "") + tarMember("😀.txt", "")),
              (Names{"grün.txt", "日本語.txt", "😀.txt"}));
}

TEST(TarNames, InTheAnsiCodePageAreFoundAmongThoseInUtf8) {
    if (!westernCodePages()) GTEST_SKIP() << "written for the code pages 437 and 1252";
    EXPECT_EQ(walk(openTar(dataFile("tar/latin.tar"))).names(),
              (Names{"plain.txt", "grün.txt", "grün.txt", "€uro.txt"}));
}

TEST(TarNames, InTheAnsiCodePageAreFoundInCompressedArchives) {
    if (!westernCodePages()) GTEST_SKIP() << "written for the code pages 437 and 1252";
    const std::string named = tarMember("gr\xFCn", "one") + tarMember("weiß", "two") + tarMember("\x80uro", "three");
    EXPECT_EQ(namesIn(named), (Names{"grün", "weiß", "€uro"}));
    const OpenResult opened = openTar(inMemory(named + tarEnd()), "x.tar");
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(unpack(*opened.reader, "€uro").bytes, "three");
    EXPECT_EQ(unpack(*opened.reader, "grün").bytes, "one");  // the walk starts again, and so do the names
}

TEST(TarNames, OfPaxHeadersAreUtf8) {
    if (!westernCodePages()) GTEST_SKIP() << "written for the code pages 437 and 1252";
    const std::string members = tarMember("pax", paxRecord("path", "日本語.txt"), 'x') + tarMember("x", "") +
                                tarMember("old\xFC", "") + tarMember("pax", paxRecord("path", "Ã¼.txt"), 'x') +
                                tarMember("y", "");
    EXPECT_EQ(namesIn(members), (Names{"日本語.txt", "oldü", "Ã¼.txt"}));
}

TEST(TarNames, OfPaxHeadersThatAreNoUtf8Survive) {
    if (!westernCodePages()) GTEST_SKIP() << "written for the code pages 437 and 1252";
    EXPECT_EQ(namesIn(tarMember("pax", paxRecord("path", "gr\xFCn.txt"), 'x') + tarMember("x", "")), Names{"grün.txt"});
}

TEST(TarNames, OfGnuLongNamesAreFoundToo) {
    if (!westernCodePages()) GTEST_SKIP() << "written for the code pages 437 and 1252";
    const std::string utf8 = std::string(150, 'u') + "ü";
    const std::string latin = std::string(150, 'l') + "\xFC";
    const std::string members = tarMember("././@LongLink", latin + '\0', 'L') + tarMember("x", "") +
                                tarMember("././@LongLink", utf8 + '\0', 'L') + tarMember("y", "");
    EXPECT_EQ(namesIn(members), (Names{std::string(150, 'l') + "ü", utf8}));
}

TEST(TarNames, OfFoldersEndWithASeparator) {
    if (!westernCodePages()) GTEST_SKIP() << "written for the code pages 437 and 1252";
    EXPECT_EQ(namesIn(tarMember("with/", "", '5') + tarMember("without", "", '5') + tarMember("gr\xFCn", "", '5')),
              (Names{"with/", "without/", "grün/"}));
}

TEST(TarNames, BadLinkTargetDoesNotTouchTheName) {
    std::string link = tarMember("grün", "", '2');
    // The target stands at 157; the checksum, at 148, is set right again.
    link[157] = '\xFF';
    unsigned sum = 8 * ' ';
    for (std::size_t index = 0; index < 512; ++index) {
        if (index < 148 || index >= 156) sum += static_cast<unsigned char>(link[index]);
    }
    char text[8];
    std::snprintf(text, sizeof(text), "%06o", sum);
    link.replace(148, 7, text, 7);
    EXPECT_EQ(namesIn(link), Names{"grün"});
}

TEST(TarNames, EveryByteValueSurvives) {
    if (!westernCodePages()) GTEST_SKIP() << "written for the code pages 437 and 1252";
    std::string members;
    for (int byte = 1; byte < 256; ++byte) members += tarMember(std::string("n") + static_cast<char>(byte) + "t", "");
    Names names = namesIn(members);
    ASSERT_EQ(names.size(), 255U);
    for (int byte = 1; byte < 0x80; ++byte) {
        EXPECT_EQ(names[static_cast<std::size_t>(byte - 1)], std::string("n") + static_cast<char>(byte) + "t");
    }
    for (const std::string& name : names) EXPECT_TRUE(isUtf8(name));
    std::sort(names.begin(), names.end());
    EXPECT_EQ(std::unique(names.begin(), names.end()), names.end());
}

TEST(TarNames, ProcessKeepsItsLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    EXPECT_EQ(walk(openTar(dataFile("tar/latin.tar"))).members.size(), 4U);
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
    // The thread's too: in the C locale a character beyond ASCII has no multibyte form.
    char bytes[16];
    EXPECT_EQ(std::wctomb(bytes, 0x65E5), -1);
}

}  // namespace
}  // namespace archiver::test
