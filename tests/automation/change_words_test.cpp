#include "front/automation/change_words.h"

#include <gtest/gtest.h>

namespace tovar {
namespace {

using Action = ArchiveChange::Action;
using Sources = ArchiveChange::Sources;

struct WordsCase {
    const char* name;
    ArchiveChange change;
    std::wstring zip, lha;
};
class ChangeWords : public testing::TestWithParam<WordsCase> {};

TEST_P(ChangeWords, SayWhatIsWanted) {
    EXPECT_EQ(zipWords(GetParam().change), GetParam().zip);
    EXPECT_EQ(lhaWords(GetParam().change), GetParam().lha);
}

INSTANTIATE_TEST_SUITE_P(
    Changes, ChangeWords,
    testing::Values(WordsCase{"Create", {}, L"a -r -l6", L"a -r2 -x1"},
                    WordsCase{"Stored", {.action = Action::Add, .level = 0}, L"a -r -l0", L"a -r2 -jm0 -x1"},
                    WordsCase{"NoFolders", {.level = 9, .recurse = false}, L"a -l9", L"a -x1"},
                    WordsCase{"Newer", {.sources = Sources::Newer, .hidden = true}, L"u -r -s -l6", L"u -r2 -a1 -x1"},
                    WordsCase{"Freshen", {.sources = Sources::NewerAndThere}, L"f -r -l6", L"f -r2 -x1"},
                    WordsCase{"Move", {.move = true}, L"m -r -l6", L"m -r2 -x1"},
                    WordsCase{"Encrypted", {.encrypt = true}, L"a -r -p -l6", L"a -r2 -x1"},
                    WordsCase{"Delete", {.action = Action::Delete, .level = 3}, L"d", L"d -p1"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(CabinetWords, KnowOnlyStoredAndPacked) {
    EXPECT_EQ(cabWords({}), L"-a -mz -k -r");
    EXPECT_EQ(cabWords({.level = 0, .recurse = false}), L"-a -mn -k");
}

TEST(Refusal, IsWhatAKindCannotDo) {
    EXPECT_EQ(refusalOf({}, kind::kZip), L"");
    EXPECT_EQ(refusalOf({.action = Action::Delete}, kind::kLzh), L"");
    EXPECT_EQ(refusalOf({}, kind::kCab), L"");
    EXPECT_EQ(refusalOf({}, kind::kRar), L"archives of this kind can only be read");
    EXPECT_EQ(refusalOf({.action = Action::Add}, kind::kCab), L"cabinets cannot be changed");
    EXPECT_EQ(refusalOf({.move = true}, kind::kCab), L"files are not moved into cabinets");
    EXPECT_EQ(refusalOf({.encrypt = true}, kind::kLzh), L"archives of this kind cannot be encrypted");
    EXPECT_EQ(refusalOf({.encrypt = true}, kind::kZip), L"");
}

}  // namespace
}  // namespace tovar
