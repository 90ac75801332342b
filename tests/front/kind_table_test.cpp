#include "front/kind_table.h"

#include <gtest/gtest.h>

namespace tovar {
namespace {

struct NameCase {
    const char* name;
    std::wstring_view file;
    ArchiveKind bit;  ///< 0: no archive name
};
class KindByName : public testing::TestWithParam<NameCase> {};

TEST_P(KindByName, GoesByTheExtension) {
    const KindRow* const row = kindByName(GetParam().file);
    EXPECT_EQ(row == nullptr ? 0 : row->bit, GetParam().bit);
    EXPECT_EQ(IsArchiveName(GetParam().file), GetParam().bit != 0);
}

INSTANTIATE_TEST_SUITE_P(
    Names, KindByName,
    testing::Values(
        NameCase{"Zip", LR"(C:\a.ZIP)", 16}, NameCase{"Arj", LR"(C:\a.ARJ)", 64}, NameCase{"Rar", LR"(C:\a.RAR)", 32},
        NameCase{"Lzh", LR"(C:\a.LZH)", 128}, NameCase{"Cab", LR"(C:\a.CAB)", 256},
        NameCase{"Ace", LR"(C:\a.ACE)", 1024}, NameCase{"Tar", LR"(C:\a.TAR)", 512},
        NameCase{"Tgz", LR"(C:\a.TGZ)", 512}, NameCase{"Bz2", LR"(C:\a.BZ2)", 512}, NameCase{"Gz", LR"(C:\a.GZ)", 512},
        NameCase{"Z", LR"(C:\a.Z)", 512}, NameCase{"LowerCase", LR"(C:\a.zip)", 16},
        NameCase{"MixedCase", LR"(C:\a.lZh)", 128}, NameCase{"TarGz", L"archive.tar.gz", 512},
        NameCase{"TarZ", L"x.tar.Z", 512}, NameCase{"UpperTgz", L"ARCHIVE.TGZ", 512},
        NameCase{"GzTxt", L"archive.gz.txt", 0}, NameCase{"NoDot", L"archive", 0}, NameCase{"DotAtEnd", L"archive.", 0},
        NameCase{"Empty", L"", 0}, NameCase{"DotZip", L".zip", 16}, NameCase{"DotInFolder", LR"(C:\a.b\file)", 0},
        NameCase{"ZipInFolderName", LR"(C:\a.zip\file)", 0}, NameCase{"FolderNamedZip", LR"(C:\folder.zip)", 16},
        NameCase{"FolderNamedZipWithSeparator", LR"(C:\folder.zip\)", 16}, NameCase{"LongerExtension", L"a.zipx", 0},
        NameCase{"ShorterExtension", L"a.zi", 0}, NameCase{"BlankBehind", L"a.zip ", 0},
        NameCase{"SevenZip", L"a.7z", 0}, NameCase{"Lha", L"a.lha", 0}, NameCase{"Unix", L"/home/a/b.tar", 512},
        NameCase{"DotlessI", L"a.z\x0131p", 0}),
    [](const auto& each) { return std::string(each.param.name); });

struct RowCase {
    const char* name;
    ArchiveKind bit;
    std::wstring_view library;
    std::optional<std::uint16_t> minimumVersion;
    ArchiveKind creationBit;
};
class KindTable : public testing::TestWithParam<RowCase> {};

TEST_P(KindTable, KnowsEachLibrary) {
    const RowCase& expected = GetParam();
    int found = 0;
    for (const KindRow& row : kindTable()) {
        if (row.bit != expected.bit) continue;
        ++found;
        EXPECT_EQ(row.library, expected.library);
        EXPECT_EQ(row.minimumVersion, expected.minimumVersion);
        EXPECT_EQ(row.creationBit, expected.creationBit);
    }
    EXPECT_EQ(found, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, KindTable,
    testing::Values(RowCase{"CreateZip", 1, L"InfoZip32.dll", std::nullopt, 0},
                    RowCase{"Zip", 16, L"UnZip32.dll", 78, 0}, RowCase{"Rar", 32, L"UnRar32.dll", 0, 0},
                    RowCase{"Arj", 64, L"UnArj32j.dll", 12, 0}, RowCase{"Lzh", 128, L"UnLha32.dll", 87, 2},
                    RowCase{"Cab", 256, L"Cab32.dll", 65, 4}, RowCase{"Tar", 512, L"Tar32.dll", 53, 0},
                    RowCase{"Ace", 1024, L"UnAce.dll", std::nullopt, 0}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(KindTableOrder, ComparesExtensionsInTheOrderOfTheTable) {
    std::vector<std::wstring_view> extensions;
    for (const KindRow& row : kindTable()) {
        extensions.insert(extensions.end(), row.extensions.begin(), row.extensions.end());
    }
    EXPECT_EQ(extensions, (std::vector<std::wstring_view>{L"ZIP", L"ARJ", L"RAR", L"LZH", L"CAB", L"ACE", L"TAR",
                                                          L"TGZ", L"BZ2", L"GZ", L"Z"}));
}

TEST(KindMasks, HaveTheirPublishedValues) {
    EXPECT_EQ(kind::kCreating, 7U);
    EXPECT_EQ(kind::kReading, 0x7F0U);
    ArchiveKind all = 0;
    for (const KindRow& row : kindTable()) all |= row.bit | row.creationBit;
    EXPECT_EQ(all, 0x7F7U) << "every bit has a row, and bit 8 is never used";
}

}  // namespace
}  // namespace tovar
