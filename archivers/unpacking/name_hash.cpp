#include "archivers/unpacking/name_hash.h"

#include <bit>
#include <chrono>
#include <cstddef>
#include <random>

namespace archiver {
namespace {

struct State {
    std::uint64_t a, b, c, d;

    void round() noexcept {
        a += b;
        b = std::rotl(b, 13) ^ a;
        a = std::rotl(a, 32);
        c += d;
        d = std::rotl(d, 16) ^ c;
        a += d;
        d = std::rotl(d, 21) ^ a;
        c += b;
        b = std::rotl(b, 17) ^ c;
        c = std::rotl(c, 32);
    }

    void mix(std::uint64_t word) noexcept {
        d ^= word;
        round();
        round();
        a ^= word;
    }
};

std::uint64_t wordOf(std::string_view bytes) noexcept {
    std::uint64_t word = 0;
    for (std::size_t at = bytes.size(); at-- > 0;) word = word << 8 | static_cast<unsigned char>(bytes[at]);
    return word;
}

/// The clock and an address stand in for a system without a source of chance.
NameHash::Key chanceKey() {
    try {
        std::random_device chance;
        const auto word = [&chance] { return std::uint64_t{chance()} << 32 | chance(); };
        const std::uint64_t first = word();
        return {first, word()};
    } catch (const std::exception&) {
        static const int place = 0;
        return {static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()),
                static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&place))};
    }
}

}  // namespace

NameHash::NameHash() : key_(chanceKey()) {}

std::uint64_t NameHash::operator()(std::string_view text) const noexcept {
    State state{key_[0] ^ 0x736F6D6570736575, key_[1] ^ 0x646F72616E646F6D, key_[0] ^ 0x6C7967656E657261,
                key_[1] ^ 0x7465646279746573};
    const auto length = static_cast<std::uint64_t>(text.size());
    for (; text.size() >= 8; text.remove_prefix(8)) state.mix(wordOf(text.substr(0, 8)));
    state.mix(length << 56 | wordOf(text));
    state.c ^= 0xFF;
    for (int round = 0; round < 4; ++round) state.round();
    return state.a ^ state.b ^ state.c ^ state.d;
}

}  // namespace archiver
