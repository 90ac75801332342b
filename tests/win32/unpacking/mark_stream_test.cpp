#include "archivers/unpacking/win32/mark_stream.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "unpacking_target/support/scratch.h"

namespace archiver {
namespace {

using test::openTarget;
using test::Scratch;
using test::writeFile;

constexpr std::string_view kMark = "[ZoneTransfer]\r\nZoneId=3\r\nHostUrl=https://example.org/a.zip\r\n";

/// Where files have no streams, a file of that name stands for one in these tests.
void mark(const Scratch& scratch, const char* file, std::string_view text) {
    scratch.write(std::string(file) + ":Zone.Identifier", text);
}

TEST(WebMarkStream, IsReadFromTheArchive) {
    const Scratch scratch;
    scratch.write("a.zip", "x");
    EXPECT_EQ(systemTarget().webMark(scratch.path() / "a.zip"), "");
    mark(scratch, "a.zip", "[ZoneTransfer]\r\nHostUrl=https://example.org/a.zip\r\nOther=1\r\nZoneId=3\r\n");
    EXPECT_EQ(systemTarget().webMark(scratch.path() / "a.zip"), kMark);
    mark(scratch, "a.zip", "[ZoneTransfer]\r\nZoneId=0\r\n");
    EXPECT_EQ(systemTarget().webMark(scratch.path() / "a.zip"), "");
    mark(scratch, "a.zip", "[ZoneTransfer]\r\n" + std::string(100'000, '\n') + "ZoneId=3\r\n");
    EXPECT_EQ(systemTarget().webMark(scratch.path() / "a.zip"), "");
    EXPECT_EQ(systemTarget().webMark(scratch.path() / "none.zip"), "");
    EXPECT_EQ(systemTarget().webMark({}), "");
}

TEST(WebMarkStream, IsGivenToFilesOrToNothingElse) {
    const Scratch scratch;
    const auto target = openTarget(scratch.path());
    ItemProperties properties;
    properties.webMark = kMark;
    properties.written = Moment{1234567890, 0};
    ASSERT_EQ(writeFile(*target, "a", "x", false, properties), kOk);
    scratch.write("b", "old");
    ASSERT_EQ(writeFile(*target, "b", "x", true, properties), kOk);
    EXPECT_EQ(scratch.names(), (std::vector<std::string>{"a", "b"})) << "a stream is no file of its own";
    EXPECT_EQ(scratch.seconds("a"), 1234567890);
    const std::string_view expected = keepsStreams(scratch.path().native()) ? kMark : std::string_view();
    EXPECT_EQ(systemTarget().webMark(scratch.path() / "a"), expected);
    EXPECT_EQ(systemTarget().webMark(scratch.path() / "b"), expected);
}

TEST(WebMarkStream, IsWrittenAsItIs) {
    const Scratch scratch;
    scratch.write("a", "x");
    writeWebMark((scratch.path() / "a").native(), kMark);
    EXPECT_EQ(scratch.read("a:Zone.Identifier"), kMark);
    EXPECT_EQ(scratch.read("a"), "x");
}

}  // namespace
}  // namespace archiver
