#include "archivers/formats/ace/cipher.h"

#include <gtest/gtest.h>

#include <string>

namespace archiver::test {
namespace {

TEST(AceKey, IsThatOfTheFormat) {
    // From the description of the format.
    EXPECT_EQ(ace::keyOf("123456789"), (ace::Key{3071200156, 3325860325, 4058316933, 1308772094, 896611998}));
}

TEST(AceKey, EndsAtFiftyBytes) {
    const std::string password(50, 'p');
    EXPECT_EQ(ace::keyOf(password + "more"), ace::keyOf(password));
    EXPECT_NE(ace::keyOf(password.substr(1)), ace::keyOf(password));
}

TEST(AceCipher, IsBlowfish) {
    // Vectors that were published with the cipher; the keys are all zeros and all ones.
    std::uint32_t left = 0x4EF99745, right = 0x6198DD78;
    ace::Cipher(ace::Key{}).decrypt(left, right);
    EXPECT_EQ(left, 0U);
    EXPECT_EQ(right, 0U);
    left = 0x51866FD5, right = 0xB85ECB8A;
    ace::Cipher(ace::Key{0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF}).decrypt(left, right);
    EXPECT_EQ(left, 0xFFFFFFFFU);
    EXPECT_EQ(right, 0xFFFFFFFFU);
}

}  // namespace
}  // namespace archiver::test
