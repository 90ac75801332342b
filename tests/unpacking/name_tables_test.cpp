#include <gtest/gtest.h>

#include <numeric>
#include <string>

#include "archivers/unpacking/link_target.h"
#include "archivers/unpacking/name_hash.h"
#include "archivers/unpacking/numbered_name.h"
#include "archivers/unpacking/taken_names.h"

namespace archiver::test {
namespace {

// The test vectors of the published reference: key 00 01 .. 0F, text 00 01 .. of each length.
TEST(NameHash, GivesThePublishedValues) {
    const NameHash hash(NameHash::Key{0x0706050403020100, 0x0F0E0D0C0B0A0908});
    std::string text(15, '\0');
    std::iota(text.begin(), text.end(), '\0');
    EXPECT_EQ(hash(text), 0xA129CA6149BE45E5U);
    EXPECT_EQ(hash(std::string_view(text).substr(0, 0)), 0x726FDB47DD0E0E31U);
    EXPECT_EQ(hash(std::string_view(text).substr(0, 8)), 0x93F5F5799A932462U);
}

TEST(NameHash, DiffersFromRunToRun) { EXPECT_NE(NameHash()("a"), NameHash()("a")); }

TEST(TakenNames, TellsTheSameNameFromTheSameFile) {
    TakenNames names;
    EXPECT_EQ(names.find(1, 16).use, NameUse::kFree);
    names.take(1, 16, NameUse::kPlanned);
    EXPECT_TRUE(names.find(1, 16).sameName);
    EXPECT_FALSE(names.find(1, 32).sameName);
    EXPECT_EQ(names.find(1, 32).use, NameUse::kPlanned);
    names.setUse(1, NameUse::kWritten);
    EXPECT_EQ(names.find(1, 16).use, NameUse::kWritten);
    EXPECT_EQ(names.find(65, 16).use, NameUse::kFree);
    names.setUse(65, NameUse::kWritten);
    EXPECT_EQ(names.find(65, 16).use, NameUse::kFree);
}

TEST(TakenNames, HoldsManyThatShareASlot) {
    TakenNames names;
    for (std::uint64_t name = 0; name < 1000; ++name) names.take(name << 20, name << 3, NameUse::kWritten);
    for (std::uint64_t name = 0; name < 1000; ++name) EXPECT_TRUE(names.find(name << 20, name << 3).sameName) << name;
    EXPECT_EQ(names.find(1, 0).use, NameUse::kFree);
}

TEST(NumberedName, PutsTheNumberInFrontOfTheEnding) {
    EXPECT_EQ(numberedName("a.txt", 2), "a (2).txt");
    EXPECT_EQ(numberedName("docs.d/a", 10), "docs.d/a (10)");
    EXPECT_EQ(numberedName("x/.profile", 2), "x/.profile (2)");
    EXPECT_EQ(numberedName("a.tar.gz", 3), "a.tar (3).gz");
}

TEST(NumberedName, ShortensWhatNoFileSystemTakes) {
    const std::string longest(251, 'x');
    EXPECT_EQ(numberedName(longest + ".txt", 2), std::string(247, 'x') + " (2).txt");
    // U+00E9 has two bytes: none of them stays alone.
    std::string accents = "x";
    for (int letter = 0; letter < 127; ++letter) accents += "\xC3\xA9";
    EXPECT_EQ(numberedName(accents, 2), accents.substr(0, 251) + " (2)");
    EXPECT_EQ(numberedName("xx" + accents.substr(1, 252), 2), "xx" + accents.substr(1, 248) + " (2)");
    const std::string sentence = "a. " + std::string(40, 'b');
    EXPECT_EQ(numberedName(sentence, 2), sentence + " (2)");
}

TEST(NameLinkedTo, GoesByTheNamesAlone) {
    EXPECT_EQ(nameLinkedTo("l", "a", NameRules::kPosix), "a");
    EXPECT_EQ(nameLinkedTo("x/y/l", "../a//./b", NameRules::kPosix), "x/a/b");
    EXPECT_EQ(nameLinkedTo("x/l", "..", NameRules::kPosix), "");
    EXPECT_EQ(nameLinkedTo("x/l", "..\\a", NameRules::kWindows), "a");
    EXPECT_EQ(nameLinkedTo("l", "c:a", NameRules::kPosix), "c:a");
}

TEST(NameLinkedTo, RefusesWhatLeadsOut) {
    for (const char* const target : {"", "/etc", "\\\\server\\share", "..", "a/../..", "../a"}) {
        EXPECT_EQ(nameLinkedTo("l", target, NameRules::kPosix), std::nullopt) << target;
    }
    EXPECT_EQ(nameLinkedTo("x/l", "../../a", NameRules::kPosix), std::nullopt);
    EXPECT_EQ(nameLinkedTo("l", "C:\\a", NameRules::kWindows), std::nullopt);
    EXPECT_EQ(nameLinkedTo("l", "c:a", NameRules::kWindows), std::nullopt);
}

TEST(RelativeWay, ClimbsOnlyAtItsStart) {
    EXPECT_EQ(relativeWay("l", "a"), "a");
    EXPECT_EQ(relativeWay("x/y/l", "x/a"), "../a");
    EXPECT_EQ(relativeWay("x/l", "y/a"), "../y/a");
    EXPECT_EQ(relativeWay("x/l", ""), "..");
    EXPECT_EQ(relativeWay("l", ""), ".");
    EXPECT_EQ(relativeWay("x/l", "x"), ".");
}

}  // namespace
}  // namespace archiver::test
