#include <gtest/gtest.h>

#include "archivers/formats/arj/arj_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/arj_builder.h"

/// Archives that keep what was replaced or deleted.
namespace archiver::test {
namespace {

using Names = std::vector<std::string>;

class ArjChapters : public testing::Test {
protected:
    const OpenResult opened_ =
        openArj(inMemory(arjArchive({.lastChapter = 3},
                                    {{.name = "CHAPTER1", .type = 5},
                                     {.name = "kept", .content = "kept", .firstChapter = 1, .lastChapter = 3},
                                     {.name = "replaced", .content = "old", .firstChapter = 1, .lastChapter = 1},
                                     {.name = "deleted", .content = "gone", .firstChapter = 1, .lastChapter = 2},
                                     {.name = "CHAPTER2", .type = 5},
                                     {.name = "replaced", .content = "newer", .firstChapter = 2, .lastChapter = 2},
                                     {.name = "replaced", .content = "newest", .firstChapter = 3, .lastChapter = 3},
                                     {.name = "without", .content = "without"}})),
                {});
    ArjArchive& reader_ = static_cast<ArjArchive&>(*opened_.reader);
};

TEST_F(ArjChapters, ShowTheNewestState) {
    const Listing listing = walk(reader_);
    EXPECT_EQ(listing.names(), (Names{"kept", "replaced", "without"}));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    EXPECT_EQ(unpack(reader_, "replaced").bytes, "newest");
}

TEST_F(ArjChapters, ShowEverythingWhenAsked) {
    reader_.setChapters(ArjArchive::Chapters::kAll);
    EXPECT_EQ(walk(reader_).names(), (Names{"kept", "replaced", "deleted", "replaced", "replaced", "without"}));
    EXPECT_EQ(unpack(reader_, "replaced").bytes, "old");
}

TEST(ArjWithoutChapters, ShowsEverything) {
    const OpenResult opened =
        openArj(inMemory(arjArchive({}, {{.name = "a", .firstChapter = 1, .lastChapter = 1}, {.name = "b"}})), {});
    EXPECT_EQ(walk(*opened.reader).names(), (Names{"a", "b"}));
}

}  // namespace
}  // namespace archiver::test
