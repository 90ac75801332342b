#include "formats_ace/support/sha256.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace archiver::test {
namespace {

/// The first 64 primes.
constexpr std::array<int, 64> kPrimes = [] {
    std::array<int, 64> primes{};
    int candidate = 2;
    for (std::size_t found = 0; found < primes.size(); ++candidate) {
        bool prime = true;
        for (int divisor = 2; divisor * divisor <= candidate; ++divisor) prime = prime && candidate % divisor != 0;
        if (prime) primes[found++] = candidate;
    }
    return primes;
}();

/// The first 32 bits of a root's fraction.
std::uint32_t fraction(long double root) {
    return static_cast<std::uint32_t>((root - std::floor(root)) * 4294967296.0L);
}

using State = std::array<std::uint32_t, 8>;

const std::array<std::uint32_t, 64> kConstants = [] {
    std::array<std::uint32_t, 64> constants;
    for (std::size_t i = 0; i < constants.size(); ++i) {
        constants[i] = fraction(std::cbrt(static_cast<long double>(kPrimes[i])));
    }
    return constants;
}();

void addBlock(State& state, const unsigned char* block) {
    std::array<std::uint32_t, 64> words;
    for (std::size_t i = 0; i < 16; ++i) {
        words[i] = std::uint32_t{block[4 * i]} << 24 | std::uint32_t{block[4 * i + 1]} << 16 |
                   std::uint32_t{block[4 * i + 2]} << 8 | block[4 * i + 3];
    }
    for (std::size_t i = 16; i < words.size(); ++i) {
        const std::uint32_t early = words[i - 15];
        const std::uint32_t late = words[i - 2];
        words[i] = words[i - 16] + words[i - 7] + (std::rotr(early, 7) ^ std::rotr(early, 18) ^ early >> 3) +
                   (std::rotr(late, 17) ^ std::rotr(late, 19) ^ late >> 10);
    }
    auto [a, b, c, d, e, f, g, h] = state;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::uint32_t first = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) + ((e & f) ^ (~e & g)) +
                                    kConstants[i] + words[i];
        const std::uint32_t second =
            (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + first;
        d = c;
        c = b;
        b = a;
        a = first + second;
    }
    const State worked = {a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < state.size(); ++i) state[i] += worked[i];
}

}  // namespace

std::string sha256(std::string_view bytes) {
    State state;
    for (std::size_t i = 0; i < state.size(); ++i) state[i] = fraction(std::sqrt(static_cast<long double>(kPrimes[i])));
    std::string padded(bytes);
    padded += static_cast<char>(0x80);
    while (padded.size() % 64 != 56) padded += '\0';
    for (int shift = 56; shift >= 0; shift -= 8) {
        padded += static_cast<char>(std::uint64_t{bytes.size()} * 8 >> shift & 0xFF);
    }
    for (std::size_t at = 0; at < padded.size(); at += 64) {
        addBlock(state, reinterpret_cast<const unsigned char*>(padded.data()) + at);
    }
    std::string text;
    for (const std::uint32_t word : state) {
        char digits[9];
        std::snprintf(digits, sizeof digits, "%08x", static_cast<unsigned>(word));
        text += digits;
    }
    return text;
}

}  // namespace archiver::test
