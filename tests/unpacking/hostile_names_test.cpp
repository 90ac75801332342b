#include <gtest/gtest.h>

#include "unpacking/support/real_scene.h"

namespace archiver::test {
namespace {

/// One hostile name in a real archive, with what becomes of it. The target lies in a folder of its own, of which
/// nothing else may be touched.
struct HostileName {
    const char* title;
    std::string name;
    std::string posix;    ///< the report
    std::string windows;  ///< the report
};

class HostileNames : public testing::TestWithParam<HostileName> {
protected:
    static void expectVerdict(RealScene& scene) {
        scene.unpack();
        ASSERT_FALSE(scene.events.reports.empty());
        EXPECT_EQ(scene.events.reports.back(), kOnWindows ? GetParam().windows : GetParam().posix);
        EXPECT_TRUE(scene.isOutsideUntouched());
    }
};

TEST_P(HostileNames, OfZipMembers) {
    RealScene scene(zipOf({{.name = GetParam().name, .content = "x", .flags = 0x0800}}));
    expectVerdict(scene);
}

TEST_P(HostileNames, OfTarMembers) {
    RealScene scene(tarMember("PaxHeader", paxRecord("path", GetParam().name), 'x') + tarMember("x", "x") + tarEnd());
    expectVerdict(scene);
}

HostileName both(const char* title, const std::string& name, const std::string& file) {
    const std::string report = "unpacked " + name + " > " + file + " renamed";
    return {title, name, report, report};
}

HostileName windowsOnly(const char* title, const std::string& name, const std::string& file) {
    return {title, name, "unpacked " + name + " > " + name, "unpacked " + name + " > " + file + " renamed"};
}

INSTANTIATE_TEST_SUITE_P(
    Names, HostileNames,
    testing::Values(both("Up", "../x", "x"), both("UpFromWithin", "a/../../../x", "a/x"),
                    both("Absolute", "/tmp/x", "tmp/x"), both("NetworkPath", "//server/share/x", "server/share/x"),
                    both("ControlCharacter", "a\nb", "a_b"), windowsOnly("Drive", "C:/dir/x", "dir/x"),
                    windowsOnly("Device", "NUL", "_NUL"), windowsOnly("DeviceWithEnding", "con.txt", "_con.txt"),
                    windowsOnly("DeviceOfManyDigits", "COM\xC2\xB9", "_COM\xC2\xB9"),
                    windowsOnly("DeviceInFolder", "a/lpt1 .c", "a/_lpt1 .c"),
                    windowsOnly("Stream", "a.txt:hidden", "a.txt_hidden"), windowsOnly("TrailingDot", "a.", "a_"),
                    windowsOnly("TrailingBlank", "dir /a", "dir_/a"),
                    HostileName{"NothingLeft", "..", "refused .. 802B", "refused .. 802B"}),
    [](const auto& each) { return std::string(each.param.title); });

// Readers take "\" for a separator before names come here.
TEST(HostileZip, BackslashesDoNotHideTheWayUp) {
    RealScene scene(zipOf({{.name = "..\\..\\x", .content = "x", .flags = 0x0800}}));
    scene.unpack();
    EXPECT_EQ(scene.read("x"), "x");
    EXPECT_TRUE(scene.isOutsideUntouched());
}

TEST(HostileZip, AFileAndAFolderOfOneName) {
    RealScene scene(zipOf({{.name = "a/b", .content = "1"}, {.name = "a", .content = "2"}}));
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.read("a/b"), "1");
    EXPECT_EQ(scene.read("a (2)"), "2");
    RealScene other(zipOf({{.name = "a", .content = "2"}, {.name = "a/b", .content = "1"}}));
    EXPECT_EQ(other.unpack(), kMakeDirectory);
    EXPECT_EQ(other.events.reports, (Lines{"unpacked a > a", "failed a/b > a/b 8012"}));
}

TEST(HostileZip, NamesEqualButForCase) {
    RealScene scene(zipOf({{.name = "a.txt", .content = "1"}, {.name = "A.TXT", .content = "2"}}));
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.read("a.txt"), "1");
    EXPECT_EQ(scene.read(kOnWindows ? "A (2).TXT" : "A.TXT"), "2");
}

TEST(HostileZip, TheLastOfOneNameWins) {
    RealScene scene(zipOf({{.name = "a", .content = "1"}, {.name = "a", .content = "2"}}));
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.read("a"), "2");
}

BuiltMember zipLink(const std::string& name, const std::string& target) {
    return {.name = name, .content = target, .externalAttributes = 0120777U << 16};
}

TEST(HostileZip, LinksThatLeadOutAndMembersThroughThem) {
    RealScene scene(zipOf({zipLink("up", "../.."),
                           {.name = "up/x", .content = "1"},
                           zipLink("etc", "/etc"),
                           {.name = "etc/x", .content = "2"},
                           {.name = "good", .content = "3"}}));
    EXPECT_EQ(scene.unpack(), kNotFilename);
    EXPECT_EQ(scene.events.reports, (Lines{"refused up 802B", "refused up/x 802B", "refused etc 802B",
                                           "refused etc/x 802B", "unpacked good > good"}));
    EXPECT_EQ(scene.names(), Lines{"good"});
    EXPECT_TRUE(scene.isOutsideUntouched());
}

/// The header has room for 100 bytes of the target, from byte 157 on, and the sum of its bytes from byte 148 on.
std::string tarLink(const std::string& name, const std::string& target, char type) {
    std::string header = tarHeader(name, 0, type);
    header.replace(157, target.size(), target);
    header.replace(148, 8, 8, ' ');
    unsigned sum = 0;
    for (const char byte : header) sum += static_cast<unsigned char>(byte);
    for (std::size_t digit = 6; digit-- > 0; sum /= 8) header[148 + digit] = static_cast<char>('0' + sum % 8);
    header[154] = '\0';
    return header;
}

TEST(HostileTar, LinksThatLeadOutAndMembersThroughThem) {
    RealScene scene(tarLink("d", "../outside", '2') + tarMember("d/x", "1") + tarLink("h", "../secret", '1') +
                    tarLink("p", "/etc/passwd", '1') + tarMember("good", "2") + tarEnd());
    EXPECT_EQ(scene.unpack(), kNotFilename);
    EXPECT_EQ(scene.events.reports, (Lines{"refused d 802B", "refused d/x 802B", "refused h 800F", "refused p 800F",
                                           "unpacked good > good"}));
    EXPECT_EQ(scene.names(), Lines{"good"});
    EXPECT_TRUE(scene.isOutsideUntouched());
}

TEST(HostileTar, LinksInsideAreMadeOrCopied) {
    RealScene scene(tarMember("x/a", "1") + tarLink("s", "x/a", '2') + tarLink("h", "x/a", '1') + tarEnd());
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.read("s"), "1");
    EXPECT_EQ(scene.read("h"), "1");
}

// The folder was a link before the archive came: it is the user's, but members are not to follow it.
TEST(HostileTar, DoNotFollowLinksThatWereThere) {
    RealScene scene(tarMember("d/x", "1") + tarEnd());
    if (!scene.linkTo("d", "outside")) GTEST_SKIP() << "no links here";
    EXPECT_EQ(scene.unpack(), kMakeDirectory);
    EXPECT_EQ(scene.events.reports, Lines{"failed d/x > d/x 8012"});
    EXPECT_TRUE(scene.isOutsideUntouched());
}

TEST(HostileTar, DevicesAndPipesAreRefused) {
    RealScene scene(tarMember("tty", "", '3') + tarMember("pipe", "", '6') + tarEnd());
    EXPECT_EQ(scene.unpack(), kUnknownType);
    EXPECT_EQ(scene.events.reports, (Lines{"refused tty 8008", "refused pipe 8008"}));
}

}  // namespace
}  // namespace archiver::test
