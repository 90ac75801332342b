#include "lzh_packing/support/packing_fixture.h"

/// Members of all sizes, also such as are packed in several pieces.
namespace archiver::test {
namespace {

class LzhSizes : public LzhPackingTest, public testing::WithParamInterface<const char*> {
protected:
    void expectRoundTrip(const Contents& files) {
        for (const auto& [name, bytes] : files) source(name, bytes);
        ASSERT_EQ(run("a -r2 -x1 -jm" + std::string(GetParam()) + " ARC BASE *.*"), kOk);
        const Contents found = contents();
        ASSERT_EQ(found.size(), files.size());
        for (const auto& [name, bytes] : files) EXPECT_TRUE(found.at(name) == bytes) << name;
    }
};

TEST_P(LzhSizes, AtTheEdges) {
    Contents files;
    const std::string text = textOf(70000);
    for (const std::size_t size :
         {0, 1, 2, 3, 255, 256, 257, 8191, 8192, 8193, 32767, 32768, 32769, 65535, 65536, 65537}) {
        files["text" + std::to_string(size)] = text.substr(0, size);
        files["equal" + std::to_string(size)] = std::string(size, 'e');
        files["random" + std::to_string(size)] = randomBytes(size);
    }
    expectRoundTrip(files);
}

TEST_P(LzhSizes, OfSeveralPieces) {
    std::string halves = randomBytes(600'000) + std::string(600'000, ' ');
    expectRoundTrip({{"text", textOf(1'200'000)}, {"random", randomBytes(1'100'000)}, {"halves", halves}});
    EXPECT_EQ(member("random").method, "-lh0-") << "read a second time";
    EXPECT_EQ(member("random").packedSize, 1'100'000U);
    EXPECT_NE(member("text").method, "-lh0-");
    EXPECT_LT(member("halves").packedSize, 610'000U);
}

TEST_P(LzhSizes, AtTheEdgesOfPieces) {
    Contents files;
    // 16 windows make a piece, but for at least 256 KiB.
    const std::size_t piece = std::size_t{64 << 10} << (GetParam()[0] - '0');
    for (const std::size_t size : {piece - 1, piece, piece + 1}) files["text" + std::to_string(size)] = textOf(size);
    expectRoundTrip(files);
}

INSTANTIATE_TEST_SUITE_P(Methods, LzhSizes, testing::Values("2", "3", "4"),
                         [](const auto& each) { return std::string("Jm") + each.param; });

}  // namespace
}  // namespace archiver::test
