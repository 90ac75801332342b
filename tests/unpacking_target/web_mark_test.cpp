#include "archivers/unpacking/web_mark.h"

#include <gtest/gtest.h>

#include <string>

namespace archiver {
namespace {

using std::string_view_literals::operator""sv;

struct MarkCase {
    const char* title;
    std::string_view given, passed;
};

class WebMarks : public testing::TestWithParam<MarkCase> {};
TEST_P(WebMarks, ArePassedOn) { EXPECT_EQ(passedWebMark(GetParam().given), GetParam().passed); }

constexpr std::string_view kInternet = "[ZoneTransfer]\r\nZoneId=3\r\n";

INSTANTIATE_TEST_SUITE_P(
    Marks, WebMarks,
    testing::Values(
        MarkCase{"Internet", "[ZoneTransfer]\r\nZoneId=3\r\n", kInternet},
        MarkCase{"Restricted", "[ZoneTransfer]\r\nZoneId=4\r\n", "[ZoneTransfer]\r\nZoneId=4\r\n"},
        MarkCase{"Machine", "[ZoneTransfer]\r\nZoneId=0\r\n", ""},
        MarkCase{"Intranet", "[ZoneTransfer]\r\nZoneId=1\r\n", ""},
        MarkCase{"Trusted", "[ZoneTransfer]\r\nZoneId=2\r\nHostUrl=http://a/\r\n", ""},
        MarkCase{"Addresses",
                 "[ZoneTransfer]\r\nZoneId=3\r\nReferrerUrl=https://example.org/\r\n"
                 "HostUrl=https://example.org/a.zip?x=1\r\n",
                 "[ZoneTransfer]\r\nZoneId=3\r\nReferrerUrl=https://example.org/\r\n"
                 "HostUrl=https://example.org/a.zip?x=1\r\n"},
        MarkCase{"AddressesInAnotherOrder", "[ZoneTransfer]\nHostUrl=about:internet\nZoneId=3\n",
                 "[ZoneTransfer]\r\nZoneId=3\r\nHostUrl=about:internet\r\n"},
        MarkCase{"OtherLinesStay", "[ZoneTransfer]\r\nLastWriterPackageFamilyName=x\r\nZoneId=3\r\nAppZoneId=4\r\n",
                 kInternet},
        MarkCase{"OtherCaseAndBlanks", "[zonetransfer]\n zoneid = 3 \n", kInternet},
        MarkCase{"FirstCounts", "[ZoneTransfer]\nZoneId=3\nZoneId=0\n", kInternet},
        MarkCase{"NoLineEnd", "[ZoneTransfer]\nZoneId=3", kInternet},
        MarkCase{"OtherSection", "[Other]\nZoneId=3\n", ""},
        MarkCase{"SectionEnds", "[ZoneTransfer]\n[Other]\nZoneId=3\n", ""}, MarkCase{"NoSection", "ZoneId=3\r\n", ""},
        MarkCase{"NoZone", "[ZoneTransfer]\r\nHostUrl=http://a/\r\n", ""},
        MarkCase{"EmptyZone", "[ZoneTransfer]\r\nZoneId=\r\n", ""},
        MarkCase{"HugeZone", "[ZoneTransfer]\r\nZoneId=33\r\n", ""},
        MarkCase{"NegativeZone", "[ZoneTransfer]\r\nZoneId=-1\r\n", ""},
        MarkCase{"ZoneAndMore", "[ZoneTransfer]\r\nZoneId=3x\r\n", ""},
        MarkCase{"EmptyAddress", "[ZoneTransfer]\r\nZoneId=3\r\nHostUrl=\r\n", kInternet},
        MarkCase{"AddressWithControlCharacter", "[ZoneTransfer]\r\nZoneId=3\r\nHostUrl=a\x01z\r\n", kInternet},
        MarkCase{"AddressWithNul", "[ZoneTransfer]\r\nZoneId=3\r\nHostUrl=a\0z\r\n"sv, kInternet},
        MarkCase{"Empty", "", ""}, MarkCase{"Garbage", "\xFF\xFE[\0Z\0"sv, ""}, MarkCase{"OnlyBrackets", "[[[[", ""}),
    [](const auto& each) { return std::string(each.param.title); });

TEST(WebMark, LeavesLongAddressesOut) {
    const std::string start = "[ZoneTransfer]\r\nZoneId=3\r\nHostUrl=";
    const std::string longest(2083, 'a');
    EXPECT_EQ(passedWebMark(start + longest), start + longest + "\r\n");
    EXPECT_EQ(passedWebMark(start + longest + "a"), kInternet);
}

TEST(WebMark, IsNotLookedForFarBehind) {
    const std::string far = "[ZoneTransfer]\r\n" + std::string(65536, '\n') + "ZoneId=3\r\n";
    EXPECT_EQ(passedWebMark(far), "");
}

}  // namespace
}  // namespace archiver
