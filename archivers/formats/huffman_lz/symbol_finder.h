#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "archivers/formats/huffman_lz/match_tree.h"
#include "archivers/formats/huffman_lz/symbol_costs.h"

namespace archiver::huffman_lz {

/// Finds the cheapest literals and matches for some bytes: the shortest way through all that is possible, by what
/// symbols cost.
class SymbolFinder {
public:
    /// @param window  farthest distance; a power of two, at most 65536
    explicit SymbolFinder(std::size_t window) : tree_(window) {}

    /// @param bytes    at most 2 GiB
    /// @param history  so many of them at the beginning are only referred to
    /// @param symbols  gets those of the others, behind what it holds
    void find(std::span<const unsigned char> bytes, std::size_t history, std::vector<Symbol>& symbols);

private:
    /// A way to a place from an earlier one.
    struct Step {
        std::uint32_t cost;
        std::uint16_t length;  ///< 1 is a literal
        std::uint16_t distance;
    };

    void collect(std::size_t count);
    void takeSteps(const unsigned char* bytes, std::size_t count, const SymbolCosts& costs);
    void takeWay(const unsigned char* bytes, std::size_t count);

    MatchTree tree_;
    std::vector<Match> matches_;             ///< of all places of a page, one after the other
    std::vector<std::uint32_t> firstMatch_;  ///< of each place, and the end
    std::vector<Step> steps_;
    std::vector<Symbol> way_;  ///< through the page, backwards
};

}  // namespace archiver::huffman_lz
