#include <algorithm>
#include <ostream>

#include "formats/support/tar_builder.h"
#include "win32/system/support/stored_zip.h"
#include "win32/system/support/system_fixture.h"

namespace tovar::test {
namespace {

/// Files that are no good archives, or none at all, before the bundled libraries. Whatever comes, a message or nothing
/// is what the user gets, and the next archive opens.
class BadArchives : public SystemFixture {
protected:
    BadArchives() { libraries.bundled(); }
    void SetUp() override { create(); }
    void TearDown() override {
        boxes.seen.clear();
        EXPECT_TRUE(open(good));
        EXPECT_EQ(browser().names(), (Texts{L"folder", L"readme.txt"}));
        EXPECT_TRUE(boxes.seen.empty());
        SystemFixture::TearDown();
    }

    void expectRefused(const std::wstring& file) {
        boxes.seen.clear();
        EXPECT_FALSE(open(file));
        EXPECT_EQ(boxes.seen.size(), 1U);
        expectToldOf(std::filesystem::path(file).filename().native(), kRefused);
        EXPECT_FALSE(busy());
        EXPECT_FALSE(browser().isThere());
        EXPECT_EQ(kindOf(file), -5);
        EXPECT_EQ(boxes.seen.size(), 2U) << "told whatever the caller asked";
    }
    /// A library may take a damaged file for an archive as far as it goes.
    void expectRefusedOrShown(const std::wstring& file) {
        boxes.seen.clear();
        if (!open(file)) {
            EXPECT_EQ(boxes.seen.size(), 1U);
            expectToldOf(std::filesystem::path(file).filename().native(), kRefused);
            EXPECT_FALSE(busy());
            return;
        }
        EXPECT_TRUE(busy());
        EXPECT_TRUE(browser().isVisible());
        for (const MessageBoxWatch::Seen& each : boxes.seen) {
            EXPECT_EQ(each.text, L"Can not open '" + file + L"' (corrupted archive) !");
            EXPECT_TRUE(each.exclamation);
        }
        EXPECT_EQ(static_cast<int>(browser().names().size()), browser().rowCount());
        browser().close();
    }

    const std::wstring good = writeFile(folder, L"good.zip", kSmallZip);
};

struct ExtensionCase {
    const char* name;
    const wchar_t* file;
    bool readable;  ///< whether the bundled libraries read the kind
};
std::ostream& operator<<(std::ostream& stream, const ExtensionCase& each) { return stream << each.name; }
class EmptyFiles : public BadArchives, public testing::WithParamInterface<ExtensionCase> {};

TEST_P(EmptyFiles, AreNoArchivesOfAnyKind) {
    const std::wstring file = writeFile(folder, GetParam().file, "");
    if (GetParam().readable) {
        expectRefused(file);
        return;
    }
    EXPECT_FALSE(open(file));
    EXPECT_EQ(kindOf(file), -5);
    EXPECT_TRUE(boxes.seen.empty());
    EXPECT_EQ(kindOf(file, true), -5);
    EXPECT_EQ(boxes.seen.size(), 1U);
    expectToldOf(GetParam().file, kUnavailable);
}

INSTANTIATE_TEST_SUITE_P(Extensions, EmptyFiles,
                         testing::Values(ExtensionCase{"Zip", L"a.zip", true}, ExtensionCase{"Arj", L"a.arj", false},
                                         ExtensionCase{"Rar", L"a.rar", false}, ExtensionCase{"Lzh", L"a.lzh", false},
                                         ExtensionCase{"Cab", L"a.cab", false}, ExtensionCase{"Ace", L"a.ace", false},
                                         ExtensionCase{"Tar", L"a.tar", true}, ExtensionCase{"Tgz", L"a.tgz", true},
                                         ExtensionCase{"Bz2", L"a.bz2", true}, ExtensionCase{"Gz", L"a.gz", true},
                                         ExtensionCase{"Z", L"a.Z", true}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(BadArchives, ThatAreNoFilesAreRefused) {
    ASSERT_TRUE(::CreateDirectoryW((folder / L"folder.zip").c_str(), nullptr));
    ASSERT_TRUE(::CreateDirectoryW((folder / L"folder.tar").c_str(), nullptr));
    for (const wchar_t* const name : {L"missing.zip", L"missing.tgz", L"folder.zip", L"folder.tar", L"no\\such.zip"}) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(name)));
        expectRefused(folder / name);
    }
}

TEST_F(BadArchives, ThatAnotherProgramHoldsAreRefused) {
    for (const wchar_t* const name : {L"held.zip", L"held.tgz"}) {
        const std::wstring file = writeFile(folder, name, name[5] == L'z' ? kSmallZip : kSmallTarGz);
        const UniqueHandle held(adoptHandle(
            ::CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr)));
        ASSERT_NE(held, nullptr);
        expectRefused(file);
    }
}

TEST_F(BadArchives, WithPathsNoSystemHasAreRefused) {
    const std::wstring tooLong = L"C:\\" + std::wstring(32000, L'x') + L".zip";
    const std::wstring manyFolders = [] {
        std::wstring path = L"C:";
        while (path.size() < 32000) path += L"\\folder";
        return path + L"\\a.tar";
    }();
    for (const std::wstring& file : {tooLong, manyFolders, std::wstring(L"Q:\\a.zip"), std::wstring(L"\\\\?\\a.zip"),
                                     folder / L"a\x0001|*?.zip", std::wstring(L".zip")}) {
        SCOPED_TRACE(file.size());
        expectRefused(file);
    }
}

TEST_F(BadArchives, WithAZeroInTheirNameAreNotTakenForTheShorterName) {
    EXPECT_FALSE(open(good + std::wstring(L"\0.zip", 5)));
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, kRefused);
    EXPECT_FALSE(busy());
}

TEST_F(BadArchives, WithAPathBeyondTheUsualLengthAreRefusedOrShown) {
    std::wstring path = L"\\\\?\\" + folder.path();
    while (path.size() < 400) {
        path += L"\\a folder with quite a long name, to come far";
        ASSERT_TRUE(::CreateDirectoryW(path.c_str(), nullptr));
    }
    path += L"\\deep.zip";
    ASSERT_TRUE(::CopyFileW(good.c_str(), path.c_str(), TRUE));
    expectRefusedOrShown(path);
    expectRefusedOrShown(path.substr(4));
}

TEST_F(BadArchives, CutAnywhereAreRefusedOrShown) {
    const struct {
        const wchar_t* name;
        std::string_view bytes;
    } archives[] = {{L"cut.zip", kSmallZip}, {L"cut.tgz", kSmallTarGz}};
    for (const auto& each : archives) {
        for (std::size_t length = 1; length < each.bytes.size(); length += 9) {
            SCOPED_TRACE(length);
            expectRefusedOrShown(writeFile(folder, each.name, each.bytes.substr(0, length)));
        }
    }
}

TEST_F(BadArchives, WithoutItsEndAZipIsRefused) {
    for (const std::size_t missing : {1, 10, 22, 23, 100}) {
        SCOPED_TRACE(missing);
        expectRefused(writeFile(folder, L"cut.zip", kSmallZip.substr(0, kSmallZip.size() - missing)));
    }
}

TEST_F(BadArchives, OfRandomBytesAreRefusedOrShown) {
    std::uint32_t state = 20010517;
    const auto next = [&state] { return static_cast<char>((state = state * 1664525 + 1013904223) >> 24); };
    const struct {
        const wchar_t* name;
        std::string start;  ///< what makes it look right
    } files[] = {{L"r.zip", ""},           {L"r.zip", "PK\x03\x04"},   {L"r.zip", std::string("PK\x05\x06")},
                 {L"r.tar", ""},           {L"r.tgz", "\x1F\x8B\x08"}, {L"r.gz", std::string("\x1F\x8B\x08\0", 4)},
                 {L"r.bz2", "BZh91AY&SY"}, {L"r.Z", "\x1F\x9D\x90"}};
    for (const auto& each : files) {
        for (const std::size_t length : {1U, 21U, 600U, 70000U}) {
            SCOPED_TRACE(testing::Message() << testing::PrintToString(std::wstring(each.name)) << ' ' << length);
            std::string bytes = each.start;
            while (bytes.size() < length) bytes += next();
            expectRefusedOrShown(writeFile(folder, each.name, bytes));
        }
    }
}

TEST_F(BadArchives, DamagedAnywhereAreRefusedOrShown) {
    for (std::size_t place = 0; place < kSmallZip.size(); place += 7) {
        SCOPED_TRACE(place);
        std::string bytes(kSmallZip);
        bytes[place] = static_cast<char>(bytes[place] ^ 0xFF);
        expectRefusedOrShown(writeFile(folder, L"damaged.zip", bytes));
    }
}

TEST_F(BadArchives, WithEveryByteInANameAreShown) {
    const std::wstring file = folder / L"bytes.zip";
    {
        StoredZip zip(file);
        for (int byte = 0; byte < 256; ++byte) zip.add(std::string{'b', static_cast<char>(byte), '.', 'e'}, "x");
        zip.finish();
    }
    ASSERT_TRUE(open(file));
    EXPECT_TRUE(boxes.seen.empty());
    EXPECT_TRUE(browser().status().starts_with(L"Archive has 256 files "));
    const Texts names = browser().names();
    // Either separator makes a folder, a colon ends what is no part of the name, and a zero is no part of any name.
    EXPECT_EQ(names.size(), 1U + 254U);
    EXPECT_EQ(browser().folders(), Texts{L"b"});
    EXPECT_EQ(std::count(names.begin(), names.end(), L".e"), 1);
    EXPECT_EQ(std::count(names.begin(), names.end(), L"b_.e"), 2);
    for (const wchar_t letter : {L'\x01', L'\x1F', L' ', L'"', L'*', L'?', L'|', L'A', L'~'}) {
        EXPECT_EQ(std::count(names.begin(), names.end(), std::wstring{L'b', letter, L'.', L'e'}), 1)
            << static_cast<int>(letter);
    }
    if (::GetOEMCP() == 437) {
        for (int byte = 0x80; byte < 0x100; ++byte) {
            const char narrow = static_cast<char>(byte);
            wchar_t wide = 0;
            ASSERT_EQ(::MultiByteToWideChar(437, 0, &narrow, 1, &wide, 1), 1);
            EXPECT_EQ(std::count(names.begin(), names.end(), std::wstring{L'b', wide, L'.', L'e'}), 1) << byte;
        }
    }
    browser().openRow(0);
    EXPECT_EQ(browser().names(), (Texts{L".e", L".e"}));
}

TEST_F(BadArchives, WithEveryByteInANameOfATarAreShown) {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) {
        bytes += archiver::test::tarMember({'b', static_cast<char>(byte), '.', 'e'}, "x");
    }
    ASSERT_TRUE(open(writeFile(folder, L"bytes.tar", bytes + archiver::test::tarEnd())));
    EXPECT_TRUE(boxes.seen.empty());
    EXPECT_TRUE(browser().status().starts_with(L"Archive has 255 files "))
        << testing::PrintToString(browser().status());
    EXPECT_EQ(browser().rowCount(), 1 + 253);
    EXPECT_EQ(browser().folders(), Texts{L"b"});
}

TEST_F(BadArchives, ThatGoWhileTheyAreShownStayListed) {
    const std::wstring file = writeFile(folder, L"gone.zip", kSmallZip);
    ASSERT_TRUE(open(file));
    ASSERT_TRUE(::DeleteFileW(file.c_str())) << "an archive that is shown is not held";
    browser().openRow(0);
    EXPECT_EQ(browser().names(), Texts{L"inner.txt"});
}

}  // namespace
}  // namespace tovar::test
