#include "settings/registry_value.h"

#include <gtest/gtest.h>

namespace tovar {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(FromRaw, ReadsTexts) {
    const Bytes bytes = {'%', 0, 'a', 0, '%', 0, 0, 0};
    EXPECT_EQ(fromRaw({registry_type::kText, bytes}), RegistryValue(L"%a%"));
    EXPECT_EQ(fromRaw({registry_type::kExpandableText, bytes}), RegistryValue(L"%a%"));
}

TEST(FromRaw, ReadsNumbersLittleEndianAndSigned) {
    EXPECT_EQ(fromRaw({registry_type::kNumber, {0xFF, 0x03, 0, 0}}), RegistryValue(1023));
    EXPECT_EQ(fromRaw({registry_type::kNumber, {0xFF, 0xFF, 0xFF, 0xFF}}), RegistryValue(-1));
    EXPECT_EQ(fromRaw({registry_type::kNumber, {0, 0, 0, 0x80}}), RegistryValue(-2147483647 - 1));
}

TEST(FromRaw, RefusesNumbersOfAnotherLength) {
    EXPECT_EQ(fromRaw({registry_type::kNumber, {}}), std::nullopt);
    EXPECT_EQ(fromRaw({registry_type::kNumber, {1, 0}}), std::nullopt);
    EXPECT_EQ(fromRaw({registry_type::kNumber, {1, 0, 0, 0, 0}}), std::nullopt);
}

TEST(FromRaw, ReadsEverythingElseAsBytes) {
    EXPECT_EQ(fromRaw({registry_type::kBinary, {1, 2}}), RegistryValue(Bytes{1, 2}));
    EXPECT_EQ(fromRaw({0, {}}), RegistryValue(Bytes{}));
    EXPECT_EQ(fromRaw({11, {1, 0, 0, 0, 0, 0, 0, 0}}), RegistryValue(Bytes{1, 0, 0, 0, 0, 0, 0, 0}));
}

void expectRaw(const RegistryValue& value, RegistryType wanted, RegistryType type, const Bytes& bytes) {
    const auto raw = toRaw(value, wanted);
    ASSERT_TRUE(raw);
    EXPECT_EQ(raw->type, type);
    EXPECT_EQ(raw->bytes, bytes);
}

TEST(ToRaw, WritesTextsWithTheirNul) {
    expectRaw(std::wstring(L"ab"), registry_type::kText, registry_type::kText, {'a', 0, 'b', 0, 0, 0});
    expectRaw(std::wstring(), registry_type::kText, registry_type::kText, {0, 0});
    expectRaw({}, registry_type::kText, registry_type::kText, {0, 0});
    expectRaw(-12, registry_type::kText, registry_type::kText, {'-', 0, '1', 0, '2', 0, 0, 0});
}

TEST(ToRaw, MakesATextWithTwoPercentSignsExpandable) {
    expectRaw(std::wstring(L"%a%"), registry_type::kText, registry_type::kExpandableText,
              {'%', 0, 'a', 0, '%', 0, 0, 0});
    expectRaw(std::wstring(L"%1"), registry_type::kText, registry_type::kText, {'%', 0, '1', 0, 0, 0});
    expectRaw(std::wstring(L"a"), registry_type::kExpandableText, registry_type::kExpandableText, {'a', 0, 0, 0});
}

TEST(ToRaw, WritesNumbersInFourBytes) {
    expectRaw(1023, registry_type::kNumber, registry_type::kNumber, {0xFF, 0x03, 0, 0});
    expectRaw(-1, registry_type::kNumber, registry_type::kNumber, {0xFF, 0xFF, 0xFF, 0xFF});
    expectRaw({}, registry_type::kNumber, registry_type::kNumber, {0, 0, 0, 0});
}

TEST(ToRaw, WritesTextsOfNumbersAsNumbers) {
    expectRaw(std::wstring(L"258"), registry_type::kNumber, registry_type::kNumber, {2, 1, 0, 0});
    expectRaw(std::wstring(L"-2147483648"), registry_type::kNumber, registry_type::kNumber, {0, 0, 0, 0x80});
    for (const wchar_t* text : {L"", L"-", L"12a", L"2147483648", L"99999999999999999999", L" 1"}) {
        EXPECT_EQ(toRaw(std::wstring(text), registry_type::kNumber).has_value(), false) << text;
    }
}

TEST(ToRaw, WritesBytes) {
    expectRaw(Bytes{0, 1, 0xFF}, registry_type::kBinary, registry_type::kBinary, {0, 1, 0xFF});
    expectRaw({}, registry_type::kBinary, registry_type::kBinary, {});
}

TEST(ToRaw, RefusesValuesOfAnotherKind) {
    EXPECT_FALSE(toRaw(Bytes{1}, registry_type::kText));
    EXPECT_FALSE(toRaw(Bytes{1}, registry_type::kNumber));
    EXPECT_FALSE(toRaw(1, registry_type::kBinary));
    EXPECT_FALSE(toRaw(std::wstring(L"a"), registry_type::kBinary));
    EXPECT_FALSE(toRaw(1, 0));
    EXPECT_FALSE(toRaw(std::wstring(L"a"), 7));
}

TEST(ValueText, ShowsEveryKind) {
    EXPECT_EQ(valueText({}), L"");
    EXPECT_EQ(valueText(-5), L"-5");
    EXPECT_EQ(valueText(std::wstring(L"a b")), L"a b");
    EXPECT_EQ(valueText(Bytes{0x00, 0x1F, 0xFF}), L"00 1F FF");
}

}  // namespace
}  // namespace tovar
