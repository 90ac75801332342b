#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "create/zip_names.h"
#include "create/zip_options.h"
#include "create/zip_results.h"

namespace tovar {
namespace {

using archiver::zip_abi::Command;
using archiver::zip_abi::Options;

/// Which of the 32-bit fields between the texts and the level are set, by their order: 0 is useTemporaryFolder.
std::vector<int> fieldsSet(const Options& record) {
    std::vector<int> set;
    const auto* const first = reinterpret_cast<const char*>(&record.useTemporaryFolder);
    for (int field = 0; field < 28; ++field) {
        std::int32_t value = 0;
        std::memcpy(&value, first + 4 * field, sizeof value);
        if (value != 0) set.push_back(value == 1 ? field : -field);
    }
    return set;
}

TEST(ZipOptionRecord, IsEmptyButForFoldersAndLevel) {
    const ZipOptions options({}, R"(C:\base)", R"(C:\Temp\)");
    EXPECT_EQ(fieldsSet(options.record()), std::vector<int>{});
    EXPECT_STREQ(options.record().date, "");
    EXPECT_STREQ(options.record().rootFolder, R"(C:\base)");
    EXPECT_STREQ(options.record().temporaryFolder, R"(C:\Temp\)");
    EXPECT_EQ(options.record().level, '6');
}

struct FieldCase {
    const char* name;
    ZipCommand command;
    int offset;  ///< in the 32-bit record
};
class ZipOptionField : public testing::TestWithParam<FieldCase> {};
TEST_P(ZipOptionField, IsTheOnlyOneSet) {
    const ZipOptions options(GetParam().command, "", "");
    EXPECT_EQ(fieldsSet(options.record()), std::vector<int>{(GetParam().offset - 12) / 4});
}
INSTANTIATE_TEST_SUITE_P(Options, ZipOptionField,
                         testing::Values(FieldCase{"Encrypt", {.encrypt = true}, 20},
                                         FieldCase{"SystemAndHidden", {.systemAndHidden = true}, 24},
                                         FieldCase{"Verbose", {.verbose = true}, 48},
                                         FieldCase{"Move", {.action = ZipAction::Move}, 76},
                                         FieldCase{"Delete", {.action = ZipAction::Delete}, 80},
                                         FieldCase{"Update", {.action = ZipAction::Update}, 84},
                                         FieldCase{"Freshen", {.action = ZipAction::Freshen}, 88},
                                         FieldCase{"Comment", {.comment = true}, 100},
                                         FieldCase{"Recurse", {.recurse = true}, 116},
                                         FieldCase{"Repair", {.action = ZipAction::Repair}, 120}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(ZipOptionRecord, HasTheLevelAsADigit) {
    EXPECT_EQ(ZipOptions({.level = '0'}, "", "").record().level, 0x30);
    EXPECT_EQ(ZipOptions({.level = '9'}, "", "").record().level, 0x39);
    EXPECT_EQ(fieldsSet(ZipOptions({.folderInfo = true}, "", "").record()), std::vector<int>{});
}

std::vector<std::string> numbered(std::size_t count) {
    std::vector<std::string> names;
    for (std::size_t each = 1; each <= count; ++each) names.push_back(std::string("n").append(std::to_string(each)));
    return names;
}

TEST(ZipNameList, RepeatsTheFirstName) {
    const std::string archive = "new.zip";
    const std::vector<std::string> one = numbered(1), three = numbered(3);
    const ZipNames single(archive, one);
    EXPECT_EQ(single.record().count, 2);
    EXPECT_STREQ(single.record().archive, "new.zip");
    EXPECT_STREQ(single.record().names[0], "n1");
    EXPECT_STREQ(single.record().names[1], "n1");
    EXPECT_EQ(single.record().names[2], nullptr);
    const ZipNames several(archive, three);
    EXPECT_EQ(several.record().count, 4);
    EXPECT_STREQ(several.record().names[0], "n1");
    EXPECT_STREQ(several.record().names[3], "n3");
}

TEST(ZipNameList, CountsNothingWithoutNames) {
    const std::string archive = "new.zip";
    const ZipNames none(archive, {});
    EXPECT_EQ(none.record().count, 0);
    EXPECT_EQ(none.record().names[0], nullptr);
}

TEST(ZipNameList, HasRoomForFourThousandNames) {
    const std::string archive = "new.zip";
    const std::vector<std::string> names = numbered(4005);
    const ZipNames full(archive, names);
    EXPECT_EQ(full.record().count, 4001);
    EXPECT_STREQ(full.record().names[4000], "n4000");
}

struct ResultCase {
    std::int32_t code;
    std::wstring_view text;
};
class ZipResult : public testing::TestWithParam<ResultCase> {};
TEST_P(ZipResult, HasItsText) { EXPECT_EQ(zipResultText(GetParam().code), GetParam().text); }
INSTANTIATE_TEST_SUITE_P(
    Codes, ZipResult,
    testing::Values(ResultCase{0, L""}, ResultCase{1, L""}, ResultCase{2, L"Unexpected End Of Zip File Error"},
                    ResultCase{3, L"Zip File Structure Error"}, ResultCase{4, L"Out Of Memory Error"},
                    ResultCase{5, L"Internal Logic Error"}, ResultCase{6, L"Entry Too Large To Split Error"},
                    ResultCase{7, L"Invalid Comment Format Error"},
                    ResultCase{8, L"Zip Test (-T) Failed Or Out Of Memory Error"},
                    ResultCase{9, L"User Interrupted Or Abnormal Termination"},
                    ResultCase{10, L"Error Using A Temp File"}, ResultCase{11, L"Read Or Seek Error"},
                    ResultCase{12, L"Nothing To Do"}, ResultCase{13, L"Missing Or Empty Zip File Error"},
                    ResultCase{14, L"Error Writing To A File"}, ResultCase{15, L"Could't Open To Write Error"},
                    ResultCase{16, L"Bad Command Line Argument Error"}, ResultCase{17, L""},
                    ResultCase{18, L"Could Not Open A Specified File To Read Error"}, ResultCase{19, L""},
                    ResultCase{-1, L""}),
    [](const auto& each) { return std::string("Code").append(std::to_string(each.index)); });

}  // namespace
}  // namespace tovar
