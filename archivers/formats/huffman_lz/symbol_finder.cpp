#include "archivers/formats/huffman_lz/symbol_finder.h"

#include <algorithm>
#include <array>
#include <limits>

namespace archiver::huffman_lz {
namespace {

/// Bytes that a way is found for at once.
constexpr std::size_t kPage = std::size_t{32} << 10;
/// A match as long as this is taken whole: what could be gained is not worth the time on data that repeats itself.
constexpr std::size_t kLongEnough = 128;
constexpr std::uint32_t kUnreached = std::numeric_limits<std::uint32_t>::max();

SymbolCounts counted(std::span<const Symbol> symbols) noexcept {
    SymbolCounts counts;
    for (const Symbol& symbol : symbols) counts.add(symbol);
    return counts;
}

}  // namespace

void SymbolFinder::find(std::span<const unsigned char> bytes, std::size_t history, std::vector<Symbol>& symbols) {
    tree_.start(bytes);
    tree_.skip(history);
    SymbolCosts costs(bytes.subspan(history, std::min(kPage, bytes.size() - history)));
    bool known = false;
    for (std::size_t at = history; at < bytes.size();) {
        const std::size_t count = std::min(kPage, bytes.size() - at);
        collect(count);
        // What symbols cost is known when they are chosen: a first way tells for a second one.
        for (int more = known ? 1 : 2; more >= 0; --more) {
            takeSteps(bytes.data() + at, count, costs);
            takeWay(bytes.data() + at, count);
            costs.learn(counted(way_));
        }
        known = true;
        symbols.insert(symbols.end(), way_.rbegin(), way_.rend());
        at += count;
    }
}

/// Fills matches_ with those of the next places.
void SymbolFinder::collect(std::size_t count) {
    matches_.clear();
    firstMatch_.clear();
    std::array<Match, kLongestMatch> found;
    while (firstMatch_.size() < count) {
        const std::size_t left = count - firstMatch_.size();
        firstMatch_.push_back(static_cast<std::uint32_t>(matches_.size()));
        const std::size_t foundCount = tree_.find(found.data());
        if (foundCount == 0) continue;
        const Match& longest = found[foundCount - 1];
        if (longest.length < kLongEnough) {
            matches_.insert(matches_.end(), found.begin(), found.begin() + static_cast<std::ptrdiff_t>(foundCount));
            continue;
        }
        matches_.push_back(longest);
        const std::size_t inside = std::min<std::size_t>(longest.length, left) - 1;
        firstMatch_.insert(firstMatch_.end(), inside, static_cast<std::uint32_t>(matches_.size()));
        tree_.skip(inside);
    }
    firstMatch_.push_back(static_cast<std::uint32_t>(matches_.size()));
}

/// Finds the cheapest step to each place of a page.
void SymbolFinder::takeSteps(const unsigned char* bytes, std::size_t count, const SymbolCosts& costs) {
    steps_.assign(count + 1, {kUnreached, 1, 0});
    steps_[0].cost = 0;
    for (std::size_t at = 0; at < count; ++at) {
        const std::uint32_t here = steps_[at].cost;
        const std::uint32_t literal = here + costs.ofCode(bytes[at]);
        if (literal < steps_[at + 1].cost) steps_[at + 1] = {literal, 1, 0};
        std::size_t length = kShortestMatch;
        for (std::uint32_t index = firstMatch_[at]; index < firstMatch_[at + 1]; ++index) {
            const Match match = matches_[index];
            const std::size_t longest = std::min<std::size_t>(match.length, count - at);
            const std::uint32_t start = here + costs.ofDistance(match.distance);
            if (match.length >= kLongEnough) length = std::max(length, longest);
            for (; length <= longest; ++length) {
                const std::uint32_t cost = start + costs.ofCode(kFirstMatch + length - kShortestMatch);
                Step& step = steps_[at + length];
                if (cost < step.cost) step = {cost, static_cast<std::uint16_t>(length), match.distance};
            }
        }
    }
}

void SymbolFinder::takeWay(const unsigned char* bytes, std::size_t count) {
    way_.clear();
    for (std::size_t at = count; at > 0;) {
        const Step& step = steps_[at];
        at -= step.length;
        if (step.length == 1) {
            way_.push_back({bytes[at], 0});
        } else {
            const std::size_t code = kFirstMatch + step.length - kShortestMatch;
            way_.push_back({static_cast<std::uint16_t>(code), step.distance});
        }
    }
}

}  // namespace archiver::huffman_lz
