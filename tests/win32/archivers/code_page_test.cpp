// What 8-bit texts are in the process's code page: 1252, 932 or, by the program's manifest, UTF-8. The program is run
// under each; a test that is of one code page has nothing to say under another.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

#include "archivers/convention/text_codec.h"
#include "archivers/loaded_library.h"
#include "archivers/scratch_file.h"

namespace archiver {
namespace {

using testing::list;
using testing::ListedMember;
using testing::LoadedLibrary;
using testing::sample;

constexpr UINT kWestern = 1252;
constexpr UINT kJapanese = 932;

class CodePage : public ::testing::Test {
protected:
    static void SetUpTestSuite() { std::printf("Code page %u\n", ::GetACP()); }

    void SetUp() override {
        ASSERT_TRUE(library.loaded());
        const UINT page = ::GetACP();
        ASSERT_TRUE(page == kWestern || page == kJapanese || page == CP_UTF8) << page;
    }
    static const char* of(const char* western, const char* japanese, const char* utf8) {
        const UINT page = ::GetACP();
        return page == kWestern ? western : (page == kJapanese ? japanese : utf8);
    }
    [[nodiscard]] std::vector<std::string> names(const char* pattern) const {
        std::vector<std::string> found;
        const ArchiveHandle handle =
            library.call<fn::OpenArchive>("OpenArchive", nullptr, sample("names.zip").c_str(), 0U);
        IndividualInfo info{};
        for (std::int32_t code = library.call<fn::FindFirst>("FindFirst", handle, pattern, &info); code == 0;
             code = library.call<fn::FindNext>("FindNext", handle, &info)) {
            found.emplace_back(info.fileName);
            char name[600];
            EXPECT_EQ(library.call<fn::GetText>("GetFileName", handle, name, 600), 0);
            EXPECT_STREQ(name, info.fileName);
        }
        library.call<fn::CloseArchive>("CloseArchive", handle);
        return found;
    }
    static std::string encoded(const char* utf8, std::size_t size) {
        std::string buffer(size, '#');
        return buffer.substr(0, ansiCodec().encode(utf8, buffer.data(), size).length);
    }

    LoadedLibrary library{"UnZip32", "UnZip"};
};

TEST_F(CodePage, HasNamesOrMarksWhereACharacterIsMissing) {
    const std::vector<std::string> found = names("*.*");
    ASSERT_EQ(found.size(), 6U);
    EXPECT_EQ(found[0], of("_/__.txt", "\x95\x5C/\x83\x5C\x94\x5C.txt", "\xE8\xA1\xA8/\xE3\x82\xBD\xE8\x83\xBD.txt"));
    EXPECT_EQ(found[1], of("\xC4pfel.txt", "_pfel.txt", "\xC3\x84pfel.txt"));
    EXPECT_EQ(found[2], of("__.txt", "__.txt", "\xED\x95\x9C\xEA\xB8\x80.txt"));
    EXPECT_EQ(found[3], of("_.txt", "_.txt", "\xF0\x9F\x98\x80.txt"));
    EXPECT_EQ(found[5], of("_.txt", "\xB1.txt", "\xEF\xBD\xB1.txt"));
}

// A yen sign, a division slash, a full-width backslash and a fraction slash: tables of look-alikes turn each of them
// into a separator in one code page or another.
TEST_F(CodePage, MakesNoSeparatorOfALookAlike) {
    const std::vector<std::string> found = names("*.*");
    ASSERT_EQ(found.size(), 6U);
    EXPECT_EQ(found[4], of("a\xA5"
                           "b_c_d_e.txt",
                           "a_b_c\x81\x5F"
                           "d_e.txt",
                           "a\xC2\xA5"
                           "b\xE2\x88\x95"
                           "c\xEF\xBC\xBC"
                           "d\xE2\x81\x84"
                           "e.txt"));
}

TEST_F(CodePage, HasEveryNameInUnicodeMode) {
    ASSERT_EQ(library.call<fn::SetBool>("SetUnicodeMode", 1), 1);
    const std::vector<std::string> found = names("*.*");
    ASSERT_EQ(found.size(), 6U);
    EXPECT_EQ(found[0], "\xE8\xA1\xA8/\xE3\x82\xBD\xE8\x83\xBD.txt");
    EXPECT_EQ(found[2], "\xED\x95\x9C\xEA\xB8\x80.txt");
    EXPECT_EQ(found[3], "\xF0\x9F\x98\x80.txt");
    EXPECT_EQ(names("\xE8\xA1\xA8/\xE3\x82\xBD*").size(), 1U);
}

TEST_F(CodePage, ReadsPatterns) {
    const char* path = of("?/??.txt", "\x95\x5C/\x83\x5C\x94\x5C.txt", "\xE8\xA1\xA8/\xE3\x82\xBD\xE8\x83\xBD.txt");
    EXPECT_EQ(names(path).size(), 1U);
    EXPECT_EQ(names(of("\xE4PFEL.TXT", "?PFEL.TXT", "\xC3\xA4PFEL.TXT")).size(), 1U);
    // In code page 932 the second byte of this letter is that of a backslash: it parts no folders.
    EXPECT_EQ(names(of("??.TXT", "\x83\x5C*", "\xE3\x82\xBD*")).size(), ::GetACP() == kWestern ? 2U : 1U);
}

TEST_F(CodePage, NamesArchives) {
    const wchar_t* wide = ::GetACP() == kWestern ? L"tovarex-\u00C4.zip" : L"tovarex-\u30BD\u8868.zip";
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    std::filesystem::copy_file(sample("listing.zip"), folder / wide, std::filesystem::copy_options::overwrite_existing);
    const std::string name =
        folder.string() + "\\" +
        of("tovarex-\xC4.zip", "tovarex-\x83\x5C\x95\x5C.zip", "tovarex-\xE3\x82\xBD\xE8\xA1\xA8.zip");
    EXPECT_EQ(library.call<fn::CheckArchive>("CheckArchive", name.c_str(), 2), 1);
    EXPECT_EQ(library.call<fn::GetFileCount>("GetFileCount", name.c_str()), 4);
    const ArchiveHandle handle = library.call<fn::OpenArchive>("OpenArchive", nullptr, name.c_str(), 0U);
    EXPECT_NE(handle, nullptr);
    char told[600] = "";
    EXPECT_EQ(library.call<fn::GetText>("GetArcFileName", handle, told, 600), 0);
    EXPECT_EQ(std::string(told).substr(std::string(told).size() - 12), name.substr(name.size() - 12));
    EXPECT_EQ(library.call<fn::CloseArchive>("CloseArchive", handle), 0);
    std::filesystem::remove(folder / wide);
}

TEST_F(CodePage, CutsAtACharacter) {
    const char* text = "a\xE8\xA1\xA8";
    EXPECT_EQ(encoded(text, 3), of("a_", "a", "a"));
    EXPECT_EQ(encoded(text, 4), of("a_", "a\x95\x5C", "a"));
    EXPECT_EQ(encoded(text, 5), of("a_", "a\x95\x5C", text));
    EXPECT_EQ(encoded(text, 1), "");
}

TEST_F(CodePage, CutsALongTextAtACharacter) {
    std::string utf8;
    for (int count = 0; count < 300; ++count) {
        utf8 += "\xE8\xA1\xA8";
    }
    const std::string told = encoded(utf8.c_str(), 513);
    EXPECT_EQ(told.size(), ::GetACP() == kWestern ? 300U : (::GetACP() == kJapanese ? 512U : 510U));
    EXPECT_EQ(encoded((utf8 + "n").c_str(), 512).size(),
              ::GetACP() == kWestern ? 301U : (::GetACP() == kJapanese ? 510U : 510U));
}

TEST_F(CodePage, DecodesToUtf8) {
    EXPECT_EQ(ansiCodec().decode(of("\xC4/\x80", "\x95\x5C/\xB1", "\xE8\xA1\xA8/\xC4\xB1")),
              of("\xC3\x84/\xE2\x82\xAC", "\xE8\xA1\xA8/\xEF\xBD\xB1", "\xE8\xA1\xA8/\xC4\xB1"));
    EXPECT_EQ(ansiCodec().decode(""), "");
}

TEST_F(CodePage, NamesFilesByTheirCharacters) {
    EXPECT_EQ(ansiCodec().decodePath(of("\xC4", "\x95\x5C", "\xE8\xA1\xA8")).native(),
              ::GetACP() == kWestern ? L"\u00C4" : L"\u8868");
    EXPECT_EQ(utf8Codec().decodePath("\xF0\x9F\x98\x80").native(), L"\U0001F600");
}

}  // namespace
}  // namespace archiver
