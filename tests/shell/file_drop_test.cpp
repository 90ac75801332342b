#include "shell/file_drop.h"

#include <gtest/gtest.h>

#include "shell/fakes/fake_text_codec.h"

namespace tovar::test {
namespace {

using Paths = std::vector<std::wstring>;

const FakeTextCodec kCodec;

/// A header: the list behind it, no point, and whether names are wide.
std::string header(char offset, char wide) {
    return {offset, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, wide, 0, 0, 0};
}
template <std::size_t N>
std::string bytes(const char (&text)[N]) {
    return {text, N - 1};
}

TEST(BuildFileDrop, WritesHeaderAndNames) {
    const std::string block = buildFileDrop({LR"(C:\W\a.txt)", LR"(C:\W\b.txt)"}, kCodec);
    EXPECT_EQ(block.size(), 43U);
    EXPECT_EQ(block, header(20, 0) + bytes("C:\\W\\a.txt\0C:\\W\\b.txt\0\0"));
}

TEST(BuildFileDrop, WritesAnEmptyList) { EXPECT_EQ(buildFileDrop({}, kCodec), header(20, 0) + bytes("\0")); }

TEST(BuildFileDrop, WritesNamesInTheCodePage) {
    EXPECT_EQ(buildFileDrop({L"C:\\\u00E9"}, kCodec), header(20, 0) + bytes("C:\\\xE9\0\0"));
}

TEST(BuildFileDrop, WritesAllNamesWideWhereOneHasNoOtherForm) {
    EXPECT_EQ(buildFileDrop({L"a", L"\u8868\U0001F4E6"}, kCodec),
              header(20, 1) + bytes("a\0\0\0\x68\x88\x3D\xD8\xE6\xDC\0\0\0\0"));
}

TEST(ReadFileDrop, ReadsWhatWasBuilt) {
    for (const Paths& paths : {Paths{L"C:\\a"}, Paths{L"C:\\\u00E9", L"D:\\b c"}, Paths{L"\u8868\U0001F4E6", L"x"}}) {
        EXPECT_EQ(readFileDrop(buildFileDrop(paths, kCodec), kCodec), paths);
    }
}

TEST(ReadFileDrop, ReadsNarrowNames) {
    EXPECT_EQ(readFileDrop(header(20, 0) + bytes("C:\\\xE9\0b\0\0"), kCodec), (Paths{L"C:\\\u00E9", L"b"}));
}

TEST(ReadFileDrop, ReadsWideNames) {
    EXPECT_EQ(readFileDrop(header(20, 1) + bytes("\x68\x88\0\0b\0\0\0\0\0"), kCodec), (Paths{L"\u8868", L"b"}));
}

TEST(ReadFileDrop, FindsAListBehindALargerHeader) {
    EXPECT_EQ(readFileDrop(header(24, 0) + bytes("????a\0\0"), kCodec), Paths{L"a"});
}

TEST(ReadFileDrop, LeavesOutWhatFollowsTheList) {
    EXPECT_EQ(readFileDrop(header(20, 0) + bytes("a\0\0b\0\0rest"), kCodec), Paths{L"a"});
}

TEST(ReadFileDrop, TakesAListWithoutItsLastNul) {
    EXPECT_EQ(readFileDrop(header(20, 0) + bytes("a\0b\0"), kCodec), (Paths{L"a", L"b"}));
    EXPECT_EQ(readFileDrop(header(20, 1) + bytes("a\0\0\0"), kCodec), Paths{L"a"});
}

TEST(ReadFileDrop, TakesNamesOfAnyLength) {
    const std::string name(5000, 'n');
    EXPECT_EQ(readFileDrop(header(20, 0) + name + bytes("\0\0"), kCodec), Paths{std::wstring(5000, L'n')});
}

TEST(ReadFileDrop, FindsNoNamesInAnEmptyList) {
    for (const std::string& list : {bytes(""), bytes("\0"), bytes("\0\0a\0\0")}) {
        EXPECT_EQ(readFileDrop(header(20, 0) + list, kCodec), Paths());
    }
    EXPECT_EQ(readFileDrop(header(20, 1) + bytes("\0\0"), kCodec), Paths());
}

struct DamagedCase {
    const char* name;
    std::string block;
};
class DamagedFileDrop : public testing::TestWithParam<DamagedCase> {};
TEST_P(DamagedFileDrop, IsNotRead) { EXPECT_EQ(readFileDrop(GetParam().block, kCodec), std::nullopt); }
INSTANTIATE_TEST_SUITE_P(
    Blocks, DamagedFileDrop,
    testing::Values(DamagedCase{"Nothing", ""}, DamagedCase{"HalfAHeader", header(20, 0).substr(0, 19)},
                    DamagedCase{"ListInTheHeader", header(19, 0) + bytes("a\0\0")},
                    DamagedCase{"ListBehindTheEnd", header(24, 0) + bytes("a\0\0")},
                    DamagedCase{"ListFarAway", std::string(4, '\xFF') + std::string(16, '\0') + bytes("a\0\0")},
                    DamagedCase{"NameWithoutEnd", header(20, 0) + bytes("a\0bc")},
                    DamagedCase{"WideNameWithoutEnd", header(20, 1) + bytes("a\0b\0\0")}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ReadFileDrop, ReadsNothingOutsideAnyPieceOfABlock) {
    const std::string whole = buildFileDrop({LR"(C:\W\a.txt)", L"\u8868"}, kCodec);
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const std::vector<char> piece(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        const auto paths = readFileDrop({piece.data(), piece.size()}, kCodec);
        EXPECT_LE(paths.value_or(std::vector<std::wstring>()).size(), 2U);
    }
}

}  // namespace
}  // namespace tovar::test
