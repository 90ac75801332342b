#include "archivers/commands/question_texts.h"

#include <gtest/gtest.h>

#include <ctime>

namespace archiver {
namespace {

/// 2026-11-20 14:03:05 local time, and so many seconds later.
Moment afternoon(int later = 0) {
    std::tm local{};
    local.tm_year = 2026 - 1900;
    local.tm_mon = 10;
    local.tm_mday = 20;
    local.tm_hour = 14;
    local.tm_min = 3;
    local.tm_sec = 5 + later;
    local.tm_isdst = -1;
    return {std::mktime(&local), 0};
}

Member memberOf(std::uint64_t size, std::optional<Moment> written) {
    Member member;
    member.name = "a.txt";
    member.originalSize = size;
    member.written = written;
    return member;
}

TEST(ReplaceFacts, TellOfBothFiles) {
    const Member member = memberOf(1'234'567, afternoon(10));
    const ReplaceFacts facts = factsOf({"folder/a.txt", 5, afternoon(), member});
    EXPECT_EQ(facts.path, "folder/a.txt");
    EXPECT_EQ(facts.existing, "5 bytes, 2026-11-20 14:03:05");
    EXPECT_EQ(facts.archived, "1,234,567 bytes (1.17 MB), 2026-11-20 14:03:15, newer");
}

TEST(ReplaceFacts, TellOfAnOlderMember) {
    const Member member = memberOf(5, afternoon());
    EXPECT_EQ(factsOf({"a.txt", 5, afternoon(3), member}).archived, "5 bytes, 2026-11-20 14:03:05, older");
}

TEST(ReplaceFacts, TakeTwoSecondsForTheSameTime) {
    const Member member = memberOf(5, afternoon(2));
    EXPECT_EQ(factsOf({"a.txt", 5, afternoon(), member}).archived, "5 bytes, 2026-11-20 14:03:07");
    EXPECT_EQ(factsOf({"a.txt", 5, afternoon(4), member}).archived, "5 bytes, 2026-11-20 14:03:07");
}

TEST(ReplaceFacts, FallBackToThePackedTime) {
    Member member = memberOf(5, std::nullopt);
    member.dosDate = (2026 - 1980) << 9 | 11 << 5 | 19;
    member.dosTime = 8 << 11 | 30 << 5 | 4 / 2;
    EXPECT_EQ(factsOf({"a.txt", 5, afternoon(), member}).archived, "5 bytes, 2026-11-19 08:30:04, older");
}

TEST(ReplaceFacts, DoWithoutTimes) {
    const Member member = memberOf(0, std::nullopt);
    const ReplaceFacts facts = factsOf({"a.txt", 0, std::nullopt, member});
    EXPECT_EQ(facts.existing, "0 bytes, unknown");
    EXPECT_EQ(facts.archived, "0 bytes, unknown");
}

TEST(ReplaceFacts, ShowNothingThatMisleads) {
    const Member member = memberOf(0, std::nullopt);
    EXPECT_EQ(factsOf({"a\nb", 0, std::nullopt, member}).path,
              "a\xEF\xBF\xBD"
              "b");
}

TEST(ProcessorChoices, ReachToWhatTheMachineHas) {
    EXPECT_EQ(processorChoices(4, 0), (std::vector<unsigned>{0, 1, 2, 3, 4}));
    EXPECT_EQ(processorChoices(1, 1), (std::vector<unsigned>{0, 1}));
    EXPECT_EQ(processorChoices(0, 0), (std::vector<unsigned>{0, 1}));  // the machine can not tell
    EXPECT_EQ(processorChoices(64, 0).back(), 16U);
}

TEST(ProcessorChoices, HoldWhatIsSet) {
    EXPECT_EQ(processorChoices(2, 8), (std::vector<unsigned>{0, 1, 2, 8}));
    EXPECT_EQ(processorChoices(2, 17), (std::vector<unsigned>{0, 1, 2}));
}

TEST(ProcessorText, IsTheNumberOrAll) {
    EXPECT_EQ(processorText(0), "All");
    EXPECT_EQ(processorText(12), "12");
}

/// The letters behind "&" in the texts of one window.
std::string mnemonics(std::initializer_list<std::string_view> labels) {
    std::string letters;
    for (const std::string_view label : labels) {
        const std::size_t mark = label.find('&');
        if (mark != label.npos) letters += static_cast<char>(std::tolower(label[mark + 1]));
    }
    return letters;
}

TEST(Mnemonics, AreDifferentInEachWindow) {
    using namespace texts;
    EXPECT_EQ(mnemonics({kYes, kNo, kYesToAll, kNoToAll, kRename, kCancel}), "ynaor");
    EXPECT_EQ(mnemonics({kPassword, kShowPassword, texts::kOk, kCancel}), "ps");
    EXPECT_EQ(mnemonics({kContinue, kCancel}), "o");
    EXPECT_EQ(mnemonics({kShowProgress, kProcessors, texts::kOk, kCancel}), "sp");
}

}  // namespace
}  // namespace archiver
