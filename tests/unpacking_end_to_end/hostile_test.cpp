// Archives that want to write where they should not, one for each way, through the exported functions.

#include <gtest/gtest.h>

#include "formats/support/tar_builder.h"
#include "formats/support/zip_builder.h"
#include "languages/support/library_run.h"

namespace archiver::testing {
namespace {

using test::BuiltMember;
using test::paxRecord;
using test::tarEnd;
using test::tarHeader;
using test::tarMember;
using test::ZipBuilder;

#ifdef _WIN32
constexpr bool kOnWindows = true;
#else
constexpr bool kOnWindows = false;
#endif

constexpr std::int32_t kDone = 0;
constexpr std::int32_t kFolderInTheWay = 0x8012;
constexpr std::int32_t kNoSuchMember = 0x800F;
constexpr std::int32_t kHeaderIsBroken = 0x8017;
constexpr std::int32_t kNoName = 0x802B;

/// A target folder beside a file and a folder that are none of an archive's business.
class Hostile {
public:
    explicit Hostile(bool zip) : zip_(zip) {
        run_.scratch.write("secret", "secret");
        run_.scratch.write("outside/kept", "kept");
        std::filesystem::create_directory(run_.target());
    }

    std::int32_t unpack(const std::string& bytes) {
        run_.archive = run_.scratch.write("archive", bytes).string();
        if (zip_) std::filesystem::rename(run_.archive, run_.archive + ".zip");
        if (zip_) run_.archive += ".zip";
        const Files before = outside();
        const std::int32_t code = run_(zip_ ? "-x -o ARC OUT" : "-xvfo ARC OUT");
        EXPECT_EQ(outside(), before);
        return code;
    }
    [[nodiscard]] Files files() const { return run_.unpacked(); }
    [[nodiscard]] const std::string& output() const { return run_.text(); }
    [[nodiscard]] bool isNamedBad(const std::string& name) const {
        const std::string line = zip_ ? "error:  " + name + "  " : name + " : TAR32 Error(0x";
        return ("\n" + run_.text()).find("\n" + line) != std::string::npos;
    }
    [[nodiscard]] std::filesystem::path target() const { return run_.target(); }

private:
    /// All that lies beside the target, and the names in it that are not below it.
    [[nodiscard]] Files outside() const {
        Files files = filesBelow(run_.scratch.path());
        std::erase_if(files, [](const auto& each) { return each.first.starts_with("out/"); });
        return files;
    }

    bool zip_;
    LibraryRun run_{zip_ ? "UnZip32" : "Tar32", zip_ ? "UnZip" : "Tar", "hostile"};
};

std::string zipOf(const std::vector<BuiltMember>& members) {
    ZipBuilder builder;
    for (const BuiltMember& member : members) builder.add(member);
    return builder.build();
}

struct NameCase {
    const char* title;
    std::string name;
    std::string posix, windows;  ///< where the member goes; empty: nowhere
};

class HostileName : public ::testing::TestWithParam<NameCase> {
protected:
    static void expectVerdict(Hostile& hostile, std::int32_t code) {
        const std::string place = kOnWindows ? GetParam().windows : GetParam().posix;
        EXPECT_EQ(code, place.empty() ? kNoName : kDone) << hostile.output();
        EXPECT_EQ(hostile.files(), place.empty() ? Files{} : (Files{{place, "x"}}));
        EXPECT_EQ(hostile.isNamedBad(GetParam().name), place.empty()) << hostile.output();
        const bool renamed = hostile.output().find(" -> ") != std::string::npos;
        EXPECT_EQ(renamed, !place.empty() && place != GetParam().name) << hostile.output();
    }
};

TEST_P(HostileName, OfAZipMember) {
    Hostile hostile(true);
    const std::string bytes = zipOf({{.name = GetParam().name, .content = "x", .flags = 0x0800}});
    expectVerdict(hostile, hostile.unpack(bytes));
}

TEST_P(HostileName, OfATarMember) {
    Hostile hostile(false);
    const std::string bytes =
        tarMember("PaxHeader", paxRecord("path", GetParam().name), 'x') + tarMember("y", "x") + tarEnd();
    expectVerdict(hostile, hostile.unpack(bytes));
}

NameCase both(const char* title, std::string name, std::string place) { return {title, std::move(name), place, place}; }
NameCase onWindows(const char* title, std::string name, std::string place) {
    return {title, name, name, std::move(place)};
}

INSTANTIATE_TEST_SUITE_P(Rules, HostileName,
                         ::testing::Values(both("Up", "../x", "x"), both("UpFromWithin", "a/../../../x", "a/x"),
                                           both("Absolute", "/tmp/x", "tmp/x"),
                                           both("NetworkPath", "//server/share/x", "server/share/x"),
                                           onWindows("Drive", "C:/dir/x", "dir/x"), onWindows("Device", "NUL", "_NUL"),
                                           onWindows("DeviceWithEnding", "con.txt", "_con.txt"),
                                           onWindows("DeviceInAFolder", "a/lpt1 .c", "a/_lpt1 .c"),
                                           onWindows("Stream", "a.txt:hidden", "a.txt_hidden"),
                                           onWindows("TrailingDot", "a.", "a_"),
                                           onWindows("TrailingBlank", "dir /a", "dir_/a"),
                                           both("ControlCharacter", "a\x01z", "a_z"), both("NothingLeft", "..", "")),
                         [](const auto& each) { return std::string(each.param.title); });

/// An archive with what becomes of it.
struct Verdict {
    std::int32_t code = kDone;
    Files files = {};
    std::vector<std::string> bad = {};  ///< members that the output must name
};
struct ArchiveCase {
    const char* title;
    bool zip;
    std::string bytes;
    Verdict posix, windows;
};

class HostileArchive : public ::testing::TestWithParam<ArchiveCase> {};

TEST_P(HostileArchive, IsKeptInItsPlace) {
    Hostile hostile(GetParam().zip);
    const Verdict& expected = kOnWindows ? GetParam().windows : GetParam().posix;
    EXPECT_EQ(hostile.unpack(GetParam().bytes), expected.code) << hostile.output();
    EXPECT_EQ(hostile.files(), expected.files) << hostile.output();
    for (const std::string& name : expected.bad) {
        EXPECT_TRUE(hostile.isNamedBad(name)) << name << " is not named in " << hostile.output();
    }
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

constexpr char kSymbolic = '2';
constexpr char kHard = '1';

std::string tarOf(const std::string& members) { return members + tarMember("good", "g") + tarEnd(); }

BuiltMember zipLink(const std::string& name, const std::string& target) {
    return {.name = name, .content = target, .externalAttributes = 0120777U << 16};
}

/// The second member lies within the stored bytes of the first.
std::string overlappingZip() {
    const std::string inner = zipOf({{.name = "b", .content = "inner"}});
    constexpr std::size_t kLocalHeader = 30 + 1;
    return zipOf({{.name = "a", .content = inner.substr(0, kLocalHeader + 5)},
                  {.name = "b", .content = "inner", .offset = kLocalHeader}});
}

ArchiveCase same(const char* title, bool zip, std::string bytes, const Verdict& verdict) {
    return {title, zip, std::move(bytes), verdict, verdict};
}

const Files kGood = {{"good", "g"}};

const ArchiveCase kArchives[] = {
    same("TarLinkOut", false, tarOf(tarLink("d", "../outside", kSymbolic) + tarMember("d/x", "1")),
         {kNoName, kGood, {"d", "d/x"}}),
    same("TarLinkToAnAbsolutePath", false, tarOf(tarLink("p", "/etc/passwd", kSymbolic)), {kNoName, kGood, {"p"}}),
    {"TarMemberThroughALink",
     false,
     tarOf(tarLink("d", "e", kSymbolic) + tarMember("d/x", "1")),
     {kNoName, {{"good", "g"}, {"d", "link to e"}}, {"d/x"}},
     {kNoName, kGood, {"d/x"}}},
    same("TarHardLinkOut", false, tarOf(tarLink("h", "../secret", kHard)), {kNoSuchMember, kGood, {"h"}}),
    same("TarHardLinkToAnAbsolutePath", false, tarOf(tarLink("h", "/etc/passwd", kHard)),
         {kNoSuchMember, kGood, {"h"}}),
    same("ZipLinkOut", true,
         zipOf({zipLink("up", "../.."), {.name = "up/x", .content = "1"}, {.name = "good", .content = "g"}}),
         {kNoName, kGood, {"up", "up/x"}}),
    same("ZipLinkToAnAbsolutePath", true, zipOf({zipLink("etc", "/etc"), {.name = "good", .content = "g"}}),
         {kNoName, kGood, {"etc"}}),
    same("ZipBackslashes", true, zipOf({{.name = "..\\..\\x", .content = "1", .flags = 0x0800}}),
         {kDone, {{"x", "1"}}}),
    same("AFolderThenAFileOfItsName", true, zipOf({{.name = "a/b", .content = "1"}, {.name = "a", .content = "2"}}),
         {kDone, {{"a/b", "1"}, {"a (2)", "2"}}}),
    same("AFileThenAFolderOfItsName", true, zipOf({{.name = "a", .content = "2"}, {.name = "a/b", .content = "1"}}),
         {kFolderInTheWay, {{"a", "2"}}, {"a/b"}}),
    {"NamesEqualButForCase",
     true,
     zipOf({{.name = "a.txt", .content = "1"}, {.name = "A.TXT", .content = "2"}}),
     {kDone, {{"a.txt", "1"}, {"A.TXT", "2"}}},
     {kDone, {{"a.txt", "1"}, {"A (2).TXT", "2"}}}},
    same("OverlappingMembers", true, overlappingZip(), {kHeaderIsBroken, {{"b", "inner"}}, {"a"}}),
    same("TwoMembersAtOnePlace", true,
         zipOf({{.name = "a", .content = "1"}, {.name = "a", .content = "1", .offset = 0}}),
         {kHeaderIsBroken, {}, {"a"}}),
    same("LocalHeaderOfAnotherName", true,
         zipOf({{.name = "a", .content = "1", .local = {.name = "../b"}}, {.name = "good", .content = "g"}}),
         {kHeaderIsBroken, kGood, {"a"}}),
    same("LocalHeaderOfAnotherSize", true,
         zipOf({{.name = "a", .content = "1", .local = {.packedSize = 7}}, {.name = "good", .content = "g"}}),
         {kHeaderIsBroken, kGood, {"a"}}),
};

INSTANTIATE_TEST_SUITE_P(Rules, HostileArchive, ::testing::ValuesIn(kArchives),
                         [](const auto& each) { return std::string(each.param.title); });

// It is the user's own, but a member is not to follow it.
TEST(HostileTarget, ALinkThatWasThereIsNotFollowed) {
    for (const bool zip : {true, false}) {
        Hostile hostile(zip);
        std::error_code none;
        std::filesystem::create_directory_symlink(std::filesystem::path("..") / "outside", hostile.target() / "d",
                                                  none);
        if (none) GTEST_SKIP() << "no links here: " << none.message();
        const std::string bytes = zip ? zipOf({{.name = "d/x", .content = "1"}, {.name = "good", .content = "g"}})
                                      : tarOf(tarMember("d/x", "1"));
        EXPECT_EQ(hostile.unpack(bytes), kFolderInTheWay) << hostile.output();
        EXPECT_EQ(hostile.files(), (Files{{"d", "link to ../outside"}, {"good", "g"}}));
        EXPECT_TRUE(hostile.isNamedBad("d/x")) << hostile.output();
    }
}

}  // namespace
}  // namespace archiver::testing
