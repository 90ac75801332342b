#include <gtest/gtest.h>

#include "archivers/formats/arj/arj_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/arj_builder.h"

/// Members with a password.
namespace archiver::test {
namespace {

constexpr std::uint8_t kGarbled = 0x11;

ArjFile garbledFile(std::string name, const std::string& content, std::string_view password, std::uint8_t modifier) {
    return {.name = std::move(name),
            .content = content,
            .packed = garbled(content, password, modifier),
            .flags = kGarbled,
            .modifier = modifier};
}

Unpacked readWith(const std::string& bytes, std::string password, std::string_view name) {
    const OpenResult archive = openArj(inMemory(bytes), {});
    static_cast<ArjArchive&>(*archive.reader).setPassword(std::move(password));
    return unpack(*archive.reader, name);
}

TEST(ArjGarble, IsTakenOffWithThePassword) {
    const std::string text = "The garble combines each byte with one of the password.";
    std::string longText;
    while (longText.size() < 500000) longText += text;
    const std::string bytes = arjArchive({.encryption = 1}, {garbledFile("short", text, "secret", 0),
                                                             garbledFile("modified", text, "secret", 0xBA),
                                                             garbledFile("long", longText, "secret", 200),
                                                             {.name = "open", .content = text}});
    for (const char* name : {"short", "modified", "open"}) {
        const Unpacked unpacked = readWith(bytes, "secret", name);
        EXPECT_EQ(unpacked.code, kOk) << name;
        EXPECT_EQ(unpacked.bytes, text) << name;
    }
    EXPECT_TRUE(readWith(bytes, "secret", "long").bytes == longText);
}

TEST(ArjGarble, TakesPasswordsOfAnyLength) {
    const std::string text = "Any text.";
    for (const std::string& password : {std::string("x"), std::string(3000, 'y'), std::string("\xFF\x80", 2)}) {
        const std::string bytes = arjArchive({}, {garbledFile("a", text, password, 255)});
        EXPECT_EQ(readWith(bytes, password, "a").bytes, text);
    }
}

TEST(ArjGarble, NeedsThePassword) {
    const std::string bytes = arjArchive({}, {garbledFile("a", "text", "secret", 3), {.name = "open", .content = "1"}});
    const Unpacked without = readWith(bytes, "", "a");
    EXPECT_EQ(without.code, kPasswordFile);
    EXPECT_EQ(without.bytes, "");
    EXPECT_EQ(readWith(bytes, "Secret", "a").code, kPasswordFile);
    EXPECT_EQ(readWith(bytes, "", "open").code, kOk);
}

TEST(ArjGarble, MayBeTriedAgain) {
    const OpenResult archive = openArj(inMemory(arjArchive({}, {garbledFile("a", "text", "secret", 3)})), {});
    auto& reader = static_cast<ArjArchive&>(*archive.reader);
    reader.setPassword("wrong");
    EXPECT_EQ(unpack(reader, "a").code, kPasswordFile);
    reader.setPassword("secret");
    EXPECT_EQ(unpack(reader, "a").bytes, "text");
    reader.setPassword("");
    EXPECT_EQ(unpack(reader, "a").code, kPasswordFile);
}

TEST(ArjGarble, ShowsInTheListing) {
    const Listing listing =
        walk(openArj(inMemory(arjArchive({}, {garbledFile("a", "text", "secret", 3), {.name = "open"}})), {}));
    ASSERT_EQ(listing.members.size(), 2U);
    EXPECT_TRUE(listing.members[0].encrypted);
    EXPECT_FALSE(listing.members[1].encrypted);
}

TEST(ArjGarble, OfLaterKindsIsRefused) {
    for (const std::uint8_t encryption : {2, 3, 4}) {
        const std::string bytes = arjArchive({.encryption = encryption},
                                             {garbledFile("a", "text", "secret", 3), {.name = "open", .content = "1"}});
        EXPECT_EQ(readWith(bytes, "secret", "a").code, kMethod) << int{encryption};
        EXPECT_EQ(readWith(bytes, "", "a").code, kMethod) << int{encryption};
        EXPECT_EQ(readWith(bytes, "", "open").bytes, "1");
    }
}

TEST(ArjGarble, DoesNotHideACutFile) {
    const std::string whole = arjArchive({}, {garbledFile("a", std::string(100, 'x'), "secret", 3)});
    EXPECT_EQ(readWith(whole.substr(0, whole.size() - 20), "secret", "a").code, kCannotRead);
}

}  // namespace
}  // namespace archiver::test
