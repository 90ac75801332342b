#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

namespace archiver::huffman_lz {

/// Finds the lengths of Huffman codes of at most kLongestCode bits. The codes of two symbols and more fill the whole
/// space of codes.
/// @param counts   how often each symbol occurs; at most 512 symbols, each at most 65535 times
/// @param lengths  as many; 0 for a symbol that does not occur
/// @return how many symbols occur; with none or a single one all lengths are 0
/// Source: A. Moffat, J. Katajainen, "In-place calculation of minimum-redundancy codes" (1995)
std::size_t findCodeLengths(std::span<const std::uint32_t> counts, std::span<std::uint8_t> lengths);

/// Canonical codes for the lengths: shorter codes first, equal lengths in the order of their symbols, the first code
/// all zeros.
void findCodes(std::span<const std::uint8_t> lengths, std::span<std::uint16_t> codes) noexcept;

}  // namespace archiver::huffman_lz
