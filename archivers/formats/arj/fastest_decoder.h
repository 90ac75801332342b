#pragma once
#include "archivers/formats/huffman_lz/bit_reader.h"
#include "archivers/formats/huffman_lz/output_window.h"

namespace archiver::arj {

/// Unpacks method 4: matches and literals with fixed codes, until the window is complete. Source: the published
/// technical notes of the format.
/// @return kOk, kHuffmanCode when a match makes no sense, kCannotRead, kUserCancel
ReturnCode decodeFastest(huffman_lz::BitReader& bits, huffman_lz::OutputWindow& window);

}  // namespace archiver::arj
