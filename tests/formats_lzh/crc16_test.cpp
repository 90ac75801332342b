#include "archivers/formats/lzh/crc16.h"

#include <gtest/gtest.h>

#include "formats_lzh/support/lzh_builder.h"

namespace archiver::test {
namespace {

TEST(LzhCrc16, IsTheOneThatIsPublished) {
    EXPECT_EQ(lzh::crc16Of("123456789"), 0xBB3D);
    EXPECT_EQ(lzh::crc16Of(""), 0);
}

TEST(LzhCrc16, GoesOnFromAnyPlace) {
    std::string text;
    for (int index = 0; index < 50; ++index) text += static_cast<char>(index * 37 + 11);
    const std::string_view view(text);
    for (std::size_t size = 0; size <= view.size(); ++size) {
        const std::uint16_t expected = crc16OneBitAtATime(view.substr(0, size));
        for (std::size_t first = 0; first <= size; ++first) {
            const std::uint16_t sum = lzh::crc16Of(view.substr(0, first));
            EXPECT_EQ(lzh::crc16Of(view.substr(first, size - first), sum), expected) << first << ' ' << size;
        }
    }
}

}  // namespace
}  // namespace archiver::test
