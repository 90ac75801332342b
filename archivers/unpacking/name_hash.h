#pragma once
#include <array>
#include <cstdint>
#include <string_view>

namespace archiver {

/// 64-bit hashes that nobody can foresee: an archive that is made to let two names fall together does not get far.
/// Source: J.-P. Aumasson and D. J. Bernstein, "SipHash: a fast short-input PRF" (SipHash-2-4)
class NameHash {
public:
    using Key = std::array<std::uint64_t, 2>;

    /// With a key of its own, by chance.
    NameHash();
    explicit NameHash(const Key& key) noexcept : key_(key) {}

    [[nodiscard]] std::uint64_t operator()(std::string_view text) const noexcept;

private:
    Key key_;
};

}  // namespace archiver
