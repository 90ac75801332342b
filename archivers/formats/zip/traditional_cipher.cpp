#include "archivers/formats/zip/traditional_cipher.h"

#include <zlib.h>

#include <random>

namespace archiver::zip {
namespace {

std::uint32_t crcStep(std::uint32_t crc, std::uint8_t byte) noexcept {
    static const z_crc_t* const table = ::get_crc_table();
    return static_cast<std::uint32_t>(table[(crc ^ byte) & 0xFF]) ^ crc >> 8;
}

}  // namespace

TraditionalCipher::TraditionalCipher(std::string_view password) noexcept {
    for (const char each : password) update(static_cast<std::uint8_t>(each));
}

TraditionalCipher::Header TraditionalCipher::header(std::uint8_t check) {
    Header header;
    std::random_device chance;
    for (char& each : header) each = static_cast<char>(chance() & 0xFF);
    header.back() = static_cast<char>(check);
    encrypt(header);
    return header;
}

void TraditionalCipher::encrypt(std::span<char> bytes) noexcept {
    for (char& each : bytes) {
        const auto plain = static_cast<std::uint8_t>(each);
        each = static_cast<char>(plain ^ next());
        update(plain);
    }
}

void TraditionalCipher::update(std::uint8_t plain) noexcept {
    keys_[0] = crcStep(keys_[0], plain);
    keys_[1] = (keys_[1] + (keys_[0] & 0xFF)) * 134775813U + 1;
    keys_[2] = crcStep(keys_[2], static_cast<std::uint8_t>(keys_[1] >> 24));
}

std::uint8_t TraditionalCipher::next() const noexcept {
    const std::uint32_t word = (keys_[2] & 0xFFFF) | 2;
    return static_cast<std::uint8_t>((word * (word ^ 1)) >> 8);
}

}  // namespace archiver::zip
