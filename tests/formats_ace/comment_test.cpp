#include "archivers/formats/ace/comment.h"

#include <gtest/gtest.h>

#include "formats/support/listing.h"
#include "formats_ace/support/ace_builder.h"
#include "formats_ace/support/bit_writer.h"
#include "formats_ace/support/memory_disk.h"

namespace archiver::test {
namespace {

TEST(AceComment, CopiesFromBehindTheSamePair) {
    BitWriter bits;
    bits.put(9, 15);
    const auto codes = bits.putTree(flatTree({'a', 'b', 'c', 257}));
    // a b c a b: behind "ab" stood "c" at place 2; three bytes from there: "cab", then "c".
    for (const unsigned symbol : {'a', 'b', 'c', 'a', 'b'}) bits.put(codes[symbol]);
    bits.put(codes[257]).put(codes['c']);
    EXPECT_EQ(ace::unpackComment(bits.bytes()), "abcabcabc");
}

TEST(AceComment, CopyAtTheEndIsCutAndMayOverlap) {
    BitWriter bits;
    bits.put(30, 15);
    const auto codes = bits.putTree(flatTree({'a', 283}));
    bits.put(codes['a']).put(codes[283]).put(codes[283]);
    EXPECT_EQ(ace::unpackComment(bits.bytes()), std::string(30, 'a'));
}

TEST(AceComment, OfNoBytesIsEmpty) {
    BitWriter bits;
    bits.put(0, 15);
    bits.putTree(flatTree({'a'}));
    EXPECT_EQ(ace::unpackComment(bits.bytes()), "");
}

TEST(AceComment, DamageShows) {
    EXPECT_EQ(ace::unpackComment(""), std::nullopt);
    EXPECT_EQ(ace::unpackComment("comment"), std::nullopt);
    BitWriter copiesNothing;
    copiesNothing.put(5, 15);
    const auto codes = copiesNothing.putTree(flatTree({'a', 256}));
    copiesNothing.put(codes[256]);
    EXPECT_EQ(ace::unpackComment(copiesNothing.bytes()), std::nullopt);
    BitWriter tooShort;
    tooShort.put(32767, 15);
    tooShort.putTree(flatTree({'a', 'b'}));
    EXPECT_EQ(ace::unpackComment(tooShort.bytes()), std::nullopt);
    BitWriter noSymbol;
    noSymbol.put(5, 15);
    noSymbol.putTree(flatTree({'a'}));
    noSymbol.put(0xFFFFFFFF, 32);
    EXPECT_EQ(ace::unpackComment(noSymbol.bytes()), std::nullopt);
}

TEST(AceComment, ThatIsDamagedDoesNotHideTheArchive) {
    const auto reader =
        openBytes(aceArchive({.packedComment = "?"}, {{.name = "x", .content = "c", .packedComment = "?"}}));
    ASSERT_TRUE(reader);
    EXPECT_TRUE(reader->aceFacts().hasComment);
    EXPECT_EQ(reader->aceFacts().comment, std::nullopt);
    EXPECT_EQ(unpack(*reader, "x").bytes, "c");
    EXPECT_TRUE(reader->header().hasComment);
    EXPECT_EQ(reader->header().comment, std::nullopt);
}

}  // namespace
}  // namespace archiver::test
