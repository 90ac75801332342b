#include "archivers/formats/ace/cipher.h"

#include <algorithm>
#include <bit>

#include "archivers/formats/ace/blowfish_tables.h"
#include "archivers/formats/little_endian.h"

namespace archiver::ace {

Key keyOf(std::string_view password) noexcept {
    constexpr std::size_t kLongest = 50;
    constexpr char kEndMark = static_cast<char>(0x80);
    password = password.substr(0, kLongest);
    std::array<char, 64> block{};
    std::copy(password.begin(), password.end(), block.begin());
    block[password.size()] = kEndMark;

    std::array<std::uint32_t, 80> schedule{};
    for (std::size_t i = 0; i < 15; ++i) schedule[i] = little_endian::load32(block.data() + 4 * i);
    schedule[15] = static_cast<std::uint32_t>(8 * password.size());
    // Without the rotation that the later form of the hash has here.
    for (std::size_t i = 16; i < schedule.size(); ++i) {
        schedule[i] = schedule[i - 16] ^ schedule[i - 14] ^ schedule[i - 8] ^ schedule[i - 3];
    }

    Key key = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};
    auto [a, b, c, d, e] = key;
    for (std::size_t i = 0; i < schedule.size(); ++i) {
        std::uint32_t round = 0;
        if (i < 20) {
            round = ((b & c) | (~b & d)) + 0x5A827999;
        } else if (i < 40) {
            round = (b ^ c ^ d) + 0x6ED9EBA1;
        } else if (i < 60) {
            round = ((b & c) | (b & d) | (c & d)) + 0x8F1BBCDC;
        } else {
            round = (b ^ c ^ d) + 0xCA62C1D6;
        }
        const std::uint32_t next = std::rotl(a, 5) + round + e + schedule[i];
        e = d;
        d = c;
        c = std::rotl(b, 30);
        b = a;
        a = next;
    }
    key[0] += a;
    key[1] += b;
    key[2] += c;
    key[3] += d;
    key[4] += e;
    return key;
}

Cipher::Cipher(const Key& key) noexcept : subkeys_(kBlowfishSubkeys), boxes_(kBlowfishBoxes) {
    for (std::size_t i = 0; i < subkeys_.size(); ++i) subkeys_[i] ^= key[i % key.size()];
    std::uint32_t left = 0;
    std::uint32_t right = 0;
    const auto replace = [&](std::span<std::uint32_t> words) {
        for (std::size_t i = 0; i < words.size(); i += 2) {
            encrypt(left, right);
            words[i] = left;
            words[i + 1] = right;
        }
    };
    replace(subkeys_);
    for (auto& box : boxes_) replace(box);
}

std::uint32_t Cipher::mix(std::uint32_t half) const noexcept {
    return ((boxes_[0][half >> 24] + boxes_[1][half >> 16 & 0xFF]) ^ boxes_[2][half >> 8 & 0xFF]) +
           boxes_[3][half & 0xFF];
}

void Cipher::encrypt(std::uint32_t& left, std::uint32_t& right) const noexcept {
    std::uint32_t l = left;
    std::uint32_t r = right;
    for (std::size_t i = 0; i < 16; i += 2) {
        l ^= subkeys_[i];
        r ^= mix(l);
        r ^= subkeys_[i + 1];
        l ^= mix(r);
    }
    left = r ^ subkeys_[17];
    right = l ^ subkeys_[16];
}

void Cipher::decrypt(std::uint32_t& left, std::uint32_t& right) const noexcept {
    std::uint32_t l = left;
    std::uint32_t r = right;
    for (std::size_t i = 17; i > 1; i -= 2) {
        l ^= subkeys_[i];
        r ^= mix(l);
        r ^= subkeys_[i - 1];
        l ^= mix(r);
    }
    left = r ^ subkeys_[0];
    right = l ^ subkeys_[1];
}

void Decryption::decrypt(const Cipher& cipher, std::span<char> bytes) noexcept {
    for (; bytes.size() >= kBlock; bytes = bytes.subspan(kBlock)) {
        const std::uint32_t storedLeft = little_endian::load32(bytes.data());
        const std::uint32_t storedRight = little_endian::load32(bytes.data() + 4);
        std::uint32_t left = storedLeft;
        std::uint32_t right = storedRight;
        cipher.decrypt(left, right);
        little_endian::store32(bytes.data(), left ^ left_);
        little_endian::store32(bytes.data() + 4, right ^ right_);
        left_ = storedLeft;
        right_ = storedRight;
    }
}

}  // namespace archiver::ace
