#include "unpacking_end_to_end/support/sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

namespace archiver::testing {

namespace {

constexpr std::size_t kFewest = 40;
#ifdef _WIN32
constexpr std::size_t kMost = 50;  ///< files cost more there, and the libraries do the same on both systems
#else
constexpr std::size_t kMost = 75;
#endif
constexpr std::chrono::seconds kLongest{10};

/// Between positions: at least kFewest and at most kMost of them where the archive has as many bytes.
std::size_t stepFor(std::size_t size, std::size_t wanted) {
    return std::max({std::min(wanted, size / kFewest), size / kMost, std::size_t{1}});
}

/// Whether the output has a line that tells of the member and does not end in success.
bool isNamedBad(const std::string& output, std::string name) {
    std::string told = output;
    std::replace(told.begin(), told.end(), '\\', '/');
    for (std::size_t at = told.find(name); at != std::string::npos; at = told.find(name, at + 1)) {
        const std::size_t begin = told.rfind('\n', at) + 1;
        const std::string line = told.substr(begin, told.find_first_of("\r\n", at) - begin);
        if (line.find("rror") != std::string::npos || line.find("damaged") != std::string::npos) return true;
    }
    return false;
}

bool isWhole(const Evidence& evidence, const std::string& expected, const Unpacked& unpacked,
             const std::string& content) {
    if (!evidence.sizes || content == expected) return true;
    const bool told = unpacked.code != 0 && unpacked.output.find("rror") != std::string::npos;
    const bool canDiffer =
        evidence.sums == Evidence::Sums::kNone || (evidence.sums == Evidence::Sums::kOfTheWhole && told);
    return canDiffer && content.size() == expected.size();
}

void expectWholeOrNamed(const Sweep& sweep, const Unpacked& unpacked) {
    for (const auto& [name, content] : unpacked.files) {
        EXPECT_FALSE(isTemporary(name)) << name;
        if (name.ends_with('/')) continue;
        const auto member = sweep.members.find(name);
        const bool whole = member != sweep.members.end()
                               ? isWhole(sweep.evidence, member->second, unpacked, content)
                               : !sweep.evidence.names && std::ranges::any_of(sweep.members, [&](const auto& each) {
                                     return isWhole(sweep.evidence, each.second, unpacked, content);
                                 });
        if (whole) continue;
        EXPECT_NE(unpacked.code, 0) << name;
        EXPECT_TRUE(isNamedBad(unpacked.output, name)) << name << " is neither whole nor named in " << unpacked.output;
    }
}

void expectAll(const Sweep& sweep, const Unpacked& unpacked) {
    std::size_t missing = 0, others = 0;
    for (const auto& [name, content] : sweep.members) missing += unpacked.files.count(name) == 0 ? 1 : 0;
    for (const auto& [name, content] : unpacked.files) others += sweep.members.count(name) == 0 ? 1 : 0;
    EXPECT_LE(missing, sweep.evidence.names ? 0 : others) << unpacked.output;
}

void tryOne(const Sweep& sweep, const std::string& bytes) {
    const bool cut = bytes.size() < sweep.bytes.size();
    const auto begin = std::chrono::steady_clock::now();
    const Unpacked unpacked = sweep.unpack(bytes);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kLongest);
    EXPECT_TRUE(sweep.isKnownCode(unpacked.code)) << std::hex << unpacked.code;
    const bool instead = unpacked.files.size() == 1 && unpacked.files.begin()->first == sweep.evidence.instead;
    if (instead) return;
    expectWholeOrNamed(sweep, unpacked);
    if (unpacked.code == 0 && (sweep.evidence.end || !cut)) expectAll(sweep, unpacked);
}

}  // namespace

bool isTemporary(const std::string& name) {
    return name.find("tovarex-") != std::string::npos && name.ends_with(".tmp");
}

void removeFolder(const std::filesystem::path& folder) {
    if (!std::filesystem::exists(folder)) return;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        std::error_code ignored;
        std::filesystem::permissions(entry.path(), std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::add | std::filesystem::perm_options::nofollow,
                                     ignored);
    }
    std::filesystem::remove_all(folder);
}

void sweep(const Sweep& sweep) {
    const std::size_t size = sweep.bytes.size();
    std::size_t tried = 0;
    for (std::size_t at = 0; at < size; at += stepFor(size, 97), ++tried) {
        SCOPED_TRACE("cut at " + std::to_string(at));
        tryOne(sweep, sweep.bytes.substr(0, at));
        if (::testing::Test::HasFailure()) return;
    }
    EXPECT_GE(tried, kFewest);
    // All bits of a byte, and in turn a single one, which leaves more of the meaning.
    for (std::size_t at = 0, number = 0; at < size; at += stepFor(size, 101), ++number) {
        SCOPED_TRACE("spoilt at " + std::to_string(at));
        std::string bytes = sweep.bytes;
        const unsigned bits = number % 2 == 0 ? 0xFF : 1U << (number / 2 % 8);
        bytes[at] = static_cast<char>(static_cast<unsigned char>(bytes[at]) ^ bits);
        tryOne(sweep, bytes);
        if (::testing::Test::HasFailure()) return;
    }
}

}  // namespace archiver::testing
