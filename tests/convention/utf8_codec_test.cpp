#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "archivers/convention/text_codec.h"

namespace archiver {
namespace {

using std::string_view_literals::operator""sv;

/// Encodes into a buffer of `size` bytes and looks that nothing behind it is touched.
std::string encoded(const TextCodec& codec, std::string_view utf8, std::size_t size, bool& whole) {
    std::string buffer(size + 8, '#');
    const TextCodec::Written written = codec.encode(utf8, buffer.data(), size);
    EXPECT_LT(written.length, size);
    EXPECT_EQ(buffer[written.length], '\0');
    EXPECT_EQ(buffer.substr(size), "########");
    whole = written.whole;
    return buffer.substr(0, written.length);
}

struct EncodeCase {
    const char* name;
    std::string_view text;
    std::size_t size;
    std::string_view expected;
    bool whole;
};

class EncodeUtf8 : public ::testing::TestWithParam<EncodeCase> {};

TEST_P(EncodeUtf8, CutsAtACharacter) {
    bool whole = !GetParam().whole;
    EXPECT_EQ(encoded(utf8Codec(), GetParam().text, GetParam().size, whole), GetParam().expected);
    EXPECT_EQ(whole, GetParam().whole);
}

INSTANTIATE_TEST_SUITE_P(Texts, EncodeUtf8,
                         ::testing::Values(EncodeCase{"Empty", "", 1, "", true},
                                           EncodeCase{"EmptyView", std::string_view(), 1, "", true},
                                           EncodeCase{"NoRoom", "a", 1, "", false},
                                           EncodeCase{"JustFits", "abc", 4, "abc", true},
                                           EncodeCase{"OneTooLong", "abcd", 4, "abc", false},
                                           EncodeCase{"WideJustFits", "a\xE8\xA1\xA8", 5, "a\xE8\xA1\xA8", true},
                                           EncodeCase{"WideCutTwoBytesIn", "a\xE8\xA1\xA8", 4, "a", false},
                                           EncodeCase{"WideCutOneByteIn", "a\xE8\xA1\xA8", 3, "a", false},
                                           EncodeCase{"FourBytesCut", "\xF0\x9F\x98\x80", 4, "", false},
                                           EncodeCase{"NulInside", "a\0b"sv, 9, "a_b", true},
                                           EncodeCase{"NoCharacter",
                                                      "a\xFF"
                                                      "b",
                                                      9, "a_b", true},
                                           EncodeCase{"Truncated", "a\xE8\xA1", 9, "a_", true}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(DecodeUtf8, ReplacesWhatIsNoCharacter) {
    EXPECT_EQ(utf8Codec().decode("a\xE8\xA1\xA8"), "a\xE8\xA1\xA8");
    EXPECT_EQ(utf8Codec().decode("a\xFF"
                                 "b"),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(utf8Codec().decode(""), "");
}

TEST(DecodeUtf8, NamesFilesByTheirCharacters) {
    EXPECT_EQ(utf8Codec().decodePath("d/\xE8\xA1\xA8.zip"), std::filesystem::path(u8"d/\u8868.zip"));
}

}  // namespace
}  // namespace archiver
